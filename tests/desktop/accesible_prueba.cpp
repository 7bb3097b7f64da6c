// What a screen reader finds: both screens walked as it walks them.
#include <gtest/gtest.h>

#include <QAccessible>
#include <QAction>
#include <QApplication>
#include <QKeySequence>
#include <QMenu>
#include <QSet>
#include <QTableView>
#include <QTest>
#include <QTimer>
#include <memory>
#include <string>

#include "desktop/conexiones.h"
#include "desktop/escritorio_qt.h"
#include "desktop/mostrador.h"
#include "desktop/vista_grid.h"
#include "guion/componente.h"
#include "host/standalone/anfitrion.h"
#include "publico/publico.h"

namespace pruebas {
namespace {

class AccesiblePrueba : public testing::Test {
 protected:
  AccesiblePrueba() : anfitrion_(Hotel()) {
    anfitrion_.RegistraClases();
    controles::FijaEscritorio(&escritorio_);
    vista::ConectaAnfitrion(escritorio_, anfitrion_, mostrador_);
    componente_ = std::make_unique<guion::Componente>();
    componente_->Abre(anfitrion_.Padre());
    static_cast<void>(QTest::qWaitForWindowActive(&Principal()));
  }
  ~AccesiblePrueba() override {
    componente_.reset();
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    publico::Olvida();
    anfitrion_.QuitaClases();
    controles::FijaEscritorio(nullptr);
  }

  static autonomo::Opciones Hotel() {
    autonomo::Opciones opciones;
    opciones.demo = true;
    opciones.ahora = com::DeIso("2026-03-09T10:00");
    return opciones;
  }
  vista::Ventana& Principal() { return *escritorio_.ventana(componente_->formulario()); }
  void Teclea(const QList<Qt::Key>& teclas, Qt::KeyboardModifiers m = Qt::NoModifier) {
    for (const Qt::Key tecla : teclas) QTest::keyClick(QApplication::focusWidget(), tecla, m);
    QApplication::processEvents();
  }

  autonomo::Anfitrion anfitrion_;
  vista::EscritorioQt escritorio_;
  vista::Mostrador mostrador_{escritorio_};
  std::unique_ptr<guion::Componente> componente_;
};

// Roles that say nothing of what a thing is for.
bool Mudo(QAccessible::Role papel) { return papel == QAccessible::Client || papel == QAccessible::NoRole; }

// Everything that can be seen and have the keyboard says what it is and what it is for.
int Recorre(QAccessibleInterface& cosa) {
  constexpr int kHijos = 80;  // of a table with thousands of cells
  int enfocables = 0;
  for (int i = 0; i < std::min(cosa.childCount(), kHijos); ++i) {
    QAccessibleInterface* hijo = cosa.child(i);
    if (hijo == nullptr || hijo->state().invisible) continue;
    if (hijo->state().focusable) {
      ++enfocables;
      EXPECT_FALSE(hijo->text(QAccessible::Name).trimmed().isEmpty())
          << "role " << hijo->role() << " in " << cosa.text(QAccessible::Name).toStdString() << ": "
          << (hijo->object() == nullptr ? std::string() : hijo->object()->objectName().toStdString());
      EXPECT_FALSE(Mudo(hijo->role())) << hijo->text(QAccessible::Name).toStdString();
    }
    enfocables += Recorre(*hijo);
  }
  return enfocables;
}

QAccessibleInterface* Busca(QWidget& ventana, const char* nombre) {
  auto* w = ventana.findChild<QWidget*>(QString::fromUtf8(nombre));
  return w == nullptr ? nullptr : QAccessible::queryAccessibleInterface(w);
}

// What the cell with the keyboard says; empty when no cell of the table has it.
std::string CeldaActual(QTableView& tabla) {
  static_cast<vista::ModeloGrid*>(tabla.model())->Sincroniza();
  const QModelIndex actual = tabla.currentIndex();
  if (!actual.isValid()) return {};
  auto* celdas = QAccessible::queryAccessibleInterface(&tabla)->tableInterface();
  QAccessibleInterface* celda = celdas->cellAt(actual.row(), actual.column());
  return celda == nullptr ? std::string() : celda->text(QAccessible::Name).toStdString();
}

TEST_F(AccesiblePrueba, LaPantallaDeReservaciones) {
  Teclea({Qt::Key_N}, Qt::ControlModifier);
  QAccessibleInterface* ventana = QAccessible::queryAccessibleInterface(&Principal());
  EXPECT_EQ(ventana->role(), QAccessible::Window);
  EXPECT_EQ(ventana->text(QAccessible::Name), QStringLiteral("Reservaciones"));
  EXPECT_GT(Recorre(*ventana), 25);
  EXPECT_EQ(Busca(Principal(), "Controles")->role(), QAccessible::ToolBar);
  QAccessibleInterface* llegada = Busca(Principal(), "dpFecha_llegada");
  EXPECT_EQ(llegada->text(QAccessible::Name), QStringLiteral("Fecha de llegada"));
  EXPECT_EQ(llegada->text(QAccessible::Value), QStringLiteral("10/03/2026"));
}

// A letter that two entries share chooses neither.
TEST_F(AccesiblePrueba, CadaEntradaDelMenuTieneSuLetra) {
  int letras = 0;
  for (const QMenu* menu : Principal().findChildren<QMenu*>()) {
    QSet<QKeySequence> vistas;
    for (const QAction* entrada : menu->actions()) {
      const QKeySequence letra = QKeySequence::mnemonic(entrada->text());
      if (letra.isEmpty()) continue;
      EXPECT_FALSE(vistas.contains(letra)) << entrada->text().toStdString();
      vistas.insert(letra);
      ++letras;
    }
  }
  EXPECT_GT(letras, 15);
}

TEST_F(AccesiblePrueba, ElTableroSeLeeCeldaPorCelda) {
  Teclea({Qt::Key_N}, Qt::ControlModifier);
  bool visto = false;
  QTimer::singleShot(0, [&] {
    QWidget& tablero = *escritorio_.ventana(componente_->tablero());
    static_cast<void>(QTest::qWaitForWindowActive(&tablero));
    QAccessibleInterface* ventana = QAccessible::queryAccessibleInterface(&tablero);
    EXPECT_EQ(ventana->role(), QAccessible::Dialog);
    EXPECT_GT(Recorre(*ventana), 12);
    QAccessibleInterface* porHabitacion = Busca(tablero, "opHabitacion");
    EXPECT_EQ(porHabitacion->role(), QAccessible::RadioButton);
    EXPECT_FALSE(porHabitacion->state().checked);
    porHabitacion->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_TRUE(porHabitacion->state().checked);

    auto* noches = tablero.findChild<QTableView*>(QStringLiteral("ssDisponibilidad_foco"));
    auto& grid = dynamic_cast<controles::Grid&>(*componente_->tablero().Busca("ssDisponibilidad"));
    grid.VaA(1, 2);
    EXPECT_EQ(CeldaActual(*noches), "Sencilla / 102 Jardín, martes 10 de marzo de 2026: 1, disponible");
    grid.ClicCelda(1, 2);
    EXPECT_EQ(CeldaActual(*noches), "Sencilla / 102 Jardín, martes 10 de marzo de 2026: 1, reservando");
    visto = true;
    componente_->tablero().Oculta();
  });
  Teclea({Qt::Key_F6});
  EXPECT_TRUE(visto);
}

TEST_F(AccesiblePrueba, LosRenglonesSeLeenTambienEnLasColumnasFijas) {
  Teclea({Qt::Key_N}, Qt::ControlModifier);
  auto& grid = dynamic_cast<controles::Grid&>(*componente_->formulario().Busca("ssReservaciones"));
  auto* renglones = Principal().findChild<QTableView*>(QStringLiteral("ssReservaciones_foco"));
  auto* fijas = Principal().findChild<QTableView*>(QStringLiteral("ssReservaciones_fijas"));
  grid.AgregaFila();
  grid.VaA(0, 0);
  EXPECT_EQ(CeldaActual(*fijas), "Clave: vacío");
  EXPECT_EQ(CeldaActual(*renglones), "") << "one cell at a time";
  grid.celda(0, 4, 2);
  grid.VaA(0, 4);
  EXPECT_EQ(CeldaActual(*fijas), "");
  EXPECT_EQ(CeldaActual(*renglones), "Renglón 1, Adultos: 2");
}

}  // namespace
}  // namespace pruebas
