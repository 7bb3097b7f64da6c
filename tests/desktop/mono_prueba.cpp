// A monkey at the real widgets: keys, texts and clicks at random, on the main window, the board and whatever comes up.
// It must never find a failure that no handler foresaw, nor anything that the sanitizers object to. MONO_SEMILLA and
// MONO_PASOS choose another run, or a longer one.
#include <QMenu>
#include <random>

#include "tests/desktop/recorrido.h"

namespace pruebas {
namespace {

unsigned DelAmbiente(const char* variable, unsigned defecto) {
  bool bien = false;
  const unsigned valor = qEnvironmentVariable(variable).toUInt(&bien);
  return bien ? valor : defecto;
}

class MonoPrueba : public RecorridoPrueba {
 protected:
  static constexpr unsigned kPasos = 400, kSemilla = 20260309;

  unsigned Azar(unsigned cuantos) { return static_cast<unsigned>(azar_() % cuantos); }
  template <class Lista>
  const auto& Alguno(const Lista& lista) {
    return lista[Azar(static_cast<unsigned>(std::size(lista)))];
  }

  void Corre() {
    semilla_ = DelAmbiente("MONO_SEMILLA", kSemilla);
    const unsigned pasos = DelAmbiente("MONO_PASOS", kPasos);
    azar_.seed(semilla_);
    std::cout << "MONO_SEMILLA=" << semilla_ << " MONO_PASOS=" << pasos << std::endl;
    for (paso_ = 0; paso_ < pasos && !HasFailure(); ++paso_) {
      if (!Forma().cargado()) componente_->Abre(anfitrion_.Padre());
      Paso(*escritorio_.ventana(Forma()));
      QApplication::processEvents();
    }
  }

  void Paso(vista::Ventana& ventana) {
    QWidget* foco = Foco(ventana);
    switch (Azar(8)) {
      case 0:
      case 1:
      case 2:
        return Pulsa(*foco);
      case 3:
      case 4: {
        constexpr const char* kTextos[] = {"1",          "2",     "5",     "9999", "101",     "0210", "15/3", "+3",
                                           "31/12/9999", "40000", "1.2.3", "%",    "O'Brien", "0",    "3"};
        const char* texto = Alguno(kTextos);
        Hace(std::string("types ") + texto);
        return QTest::keyClicks(foco, QString::fromUtf8(texto));
      }
      case 5:
        // Where reservations begin.
        if (Azar(4) == 0) {
          Hace("captures");
          QTest::keyClick(foco, Qt::Key_N, Qt::ControlModifier);
          for (const char* campo : {"txtHuesped", "txtForma_Pago"}) {
            Forma().Enfoca(*Forma().Busca(campo));
            QTest::keyClicks(Foco(ventana), QStringLiteral("1"));
          }
          return;
        }
        [[fallthrough]];
      default:
        return Raton(ventana);
    }
  }

  static QWidget* Foco(vista::Ventana& ventana) {
    QWidget* foco = QApplication::focusWidget();
    if (foco == nullptr || foco->window() != &ventana) foco = ventana.focusWidget();
    return foco == nullptr ? &ventana : foco;
  }

  void Pulsa(QWidget& foco) {
    struct Tecla {
      Qt::Key tecla = Qt::Key_unknown;
      Qt::KeyboardModifiers con;
    };
    const Tecla teclas[] = {
        {Qt::Key_Tab, {}},
        {Qt::Key_Return, {}},
        {Qt::Key_Enter, Qt::KeypadModifier},
        {Qt::Key_Escape, {}},
        {Qt::Key_Up, {}},
        {Qt::Key_Down, {}},
        {Qt::Key_Left, {}},
        {Qt::Key_Right, {}},
        {Qt::Key_Home, {}},
        {Qt::Key_End, {}},
        {Qt::Key_PageDown, {}},
        {Qt::Key_PageUp, {}},
        {Qt::Key_Insert, {}},
        {Qt::Key_Delete, {}},
        {Qt::Key_Backspace, {}},
        {Qt::Key_Space, {}},
        {Qt::Key_F2, {}},
        {Qt::Key_F3, {}},
        {Qt::Key_F4, {}},
        {Qt::Key_F6, {}},
        {Qt::Key_F6, {}},
        {Qt::Key_F10, {}},
        {Qt::Key_Backtab, Qt::ShiftModifier},
        {Qt::Key_Space, Qt::ShiftModifier},
        {Qt::Key_Right, Qt::ShiftModifier},
        {Qt::Key_Down, Qt::ShiftModifier},
        {Qt::Key_Delete, Qt::ControlModifier},
        {Qt::Key_A, Qt::ControlModifier},
        {Qt::Key_V, Qt::ControlModifier},
        {Qt::Key_Return, Qt::ControlModifier},
        {Qt::Key_E, Qt::ControlModifier},
        {Qt::Key_L, Qt::ControlModifier},
        {Qt::Key_K, Qt::ControlModifier},
        {Qt::Key_P, Qt::ControlModifier},
        {Qt::Key_Q, Qt::ControlModifier},
        {Qt::Key_Return, Qt::AltModifier},
    };
    const Tecla& t = Alguno(teclas);
    Hace("presses " + QKeySequence(QKeyCombination(t.con, t.tecla)).toString().toStdString());
    QTest::keyClick(&foco, t.tecla, t.con);
  }

  void Raton(vista::Ventana& ventana) {
    const auto hijos = ventana.findChildren<QWidget*>();
    QWidget* donde = nullptr;
    for (int intento = 0; intento < 50 && (donde == nullptr || !donde->isVisible()); ++intento) donde = Alguno(hijos);
    if (!donde->isVisible() || donde->size().isEmpty()) return;
    const auto punto = [&] {
      return QPoint(static_cast<int>(Azar(static_cast<unsigned>(donde->width()))),
                    static_cast<int>(Azar(static_cast<unsigned>(donde->height()))));
    };
    Hace("clicks " + donde->objectName().toStdString() + " of " + donde->parentWidget()->objectName().toStdString());
    const QPointer<QWidget> vivo(donde);
    const Qt::MouseButton boton = Azar(6) == 0 ? Qt::RightButton : Qt::LeftButton;
    if (Azar(5) > 0) return QTest::mouseClick(donde, boton, {}, punto());
    QTest::mousePress(donde, Qt::LeftButton, {}, punto());
    for (int i = 0; i < 3 && vivo; ++i) QTest::mouseMove(donde, punto());
    if (vivo) QTest::mouseRelease(donde, Qt::LeftButton, {}, punto());
  }

  void Hace(std::string que) {
    constexpr std::size_t kRecuerda = 12;
    hechos_.push_back(std::move(que));
    if (hechos_.size() > kRecuerda) hechos_.pop_front();
  }
  std::string Pasado() const {
    std::string todo;
    for (const std::string& hecho : hechos_) todo += " | " + hecho;
    return todo;
  }

  void AtiendeModal(QWidget& modal) override {
    if (auto* caja = qobject_cast<QMessageBox*>(&modal)) {
      // A quote in a key breaks its statement, which is told as it is.
      const bool dicho = caja->text().startsWith(QStringLiteral("Comilla sin cerrar"));
      EXPECT_FALSE(caja->windowTitle() == QStringLiteral("Error inesperado") && !dicho)
          << "step " << paso_ << " after" << Pasado() << ": " << caja->text().toStdString();
      return QTest::mouseClick(Alguno(caja->buttons()), Qt::LeftButton);
    }
    auto* ventana = qobject_cast<vista::Ventana*>(&modal);
    for (unsigned pasos = Azar(15); ventana != nullptr && pasos > 0 && modal.isVisible() && !HasFailure(); --pasos) {
      Paso(*ventana);
      QApplication::processEvents();
    }
    if (modal.isVisible()) QTest::keyClick(&modal, Qt::Key_Escape);
    if (modal.isVisible()) modal.close();
  }

  void AtiendeEmergente(QWidget& emergente) override {
    constexpr Qt::Key kTeclas[] = {Qt::Key_Escape, Qt::Key_Down, Qt::Key_Return};
    QWidget* foco = emergente.focusWidget() != nullptr ? emergente.focusWidget() : &emergente;
    QTest::keyClick(foco, Alguno(kTeclas));
  }

 private:
  std::mt19937 azar_;
  unsigned semilla_ = 0, paso_ = 0;
  std::deque<std::string> hechos_;
};

TEST_F(MonoPrueba, NadaDeLoQueHaceSeQuedaSinPrever) { Corre(); }

}  // namespace
}  // namespace pruebas
