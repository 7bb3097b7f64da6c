// What is captured survives its program, and room lines a change of nights, at the windows.
#include <QDir>
#include <QTemporaryDir>

#include "desktop/cuida_captura.h"
#include "tests/desktop/recorrido.h"

namespace pruebas {
namespace {

class CapturaPrueba : public RecorridoPrueba {
 protected:
  static constexpr int kNunca = 3600000;  // ms: the test says when
  std::unique_ptr<vista::CuidaCaptura> Cuida() {
    return std::make_unique<vista::CuidaCaptura>(escritorio_, anfitrion_, mostrador_.quitados(),
                                                 carpeta_.path().toStdString(), kNunca);
  }
  QStringList Borradores() const { return QDir(carpeta_.path()).entryList({QStringLiteral("*.borrador")}); }
  std::string Texto(const char* campo) { return Control<controles::LookupField>(Forma(), campo).text(); }
  controles::Grid& Renglones() { return Control<controles::Grid>(Forma(), "ssReservaciones"); }
  void Limpia() {
    EsperaMensaje("en captura", "Sí");
    Tecla(Qt::Key_L, Qt::ControlModifier);
  }

  QTemporaryDir carpeta_;
};

// The program that had it is gone; the next one offers it, and its draft goes with Accept.
TEST_F(CapturaPrueba, LoCapturadoSeOfreceVuelveYSeAcepta) {
  auto cuida = Cuida();
  CapturaEncabezado();
  Espera("frmDisponibilidad", [this](QWidget& w) { MarcaDosNoches(w); });
  Tecla(Qt::Key_F6);
  CapturaPersonas("2");
  cuida->Guarda();
  EXPECT_EQ(Borradores().size(), 1);
  const std::string total = Texto("txtTotal");
  cuida.reset();
  Limpia();

  cuida = Cuida();
  EsperaMensaje("Quedó una captura sin guardar, del 09/03/2026", "Después");
  EXPECT_FALSE(cuida->Ofrece());
  EXPECT_EQ(Borradores().size(), 1);
  cuida = Cuida();
  EsperaMensaje("11/03/2026 – 14/03/2026, 1 habitación", "Sí");
  EXPECT_TRUE(cuida->Ofrece());
  EXPECT_EQ(Texto("txtHuesped"), "0000000002");
  EXPECT_EQ(Texto("txtTotal"), total);
  EXPECT_EQ(Renglones().Texto(0, "Clave"), habitacion_);
  cuida->Guarda();
  EXPECT_EQ(Borradores().size(), 1);
  EsperaMensaje("¿Desea enviar", "No");
  EsperaImpreso();
  Tecla(Qt::Key_Return, Qt::ControlModifier);
  cuida->Guarda();
  EXPECT_EQ(Borradores().size(), 0);

  // Stored just before the program died: the offer says so, and No forgets it.
  CapturaEncabezado();
  cuida->Guarda();
  cuida.reset();
  Limpia();
  cuida = Cuida();
  EsperaMensaje("la 0000000046: puede que se haya guardado", "No");
  EXPECT_FALSE(cuida->Ofrece());
  EXPECT_EQ(Borradores().size(), 0);
}

// Nothing entered, nothing kept; what cannot be edited any more stays for another time.
TEST_F(CapturaPrueba, SinCapturaNoHayBorradorYLoQueNoSePuedeSeConserva) {
  auto cuida = Cuida();
  Tecla(Qt::Key_N, Qt::ControlModifier);
  cuida->Guarda();
  EXPECT_EQ(Borradores().size(), 0);
  Tecla(Qt::Key_L, Qt::ControlModifier);
  Carga("0000000016");
  Tecla(Qt::Key_E, Qt::ControlModifier);
  Control<controles::LookupField>(Forma(), "txtReferencia").Teclea("x");
  cuida->Guarda();
  EXPECT_EQ(Borradores().size(), 1);
  cuida.reset();
  Limpia();
  Sql("UPDATE Reservacion SET Es_Cve_Estado = 'CA' WHERE Rs_Folio = '0000000016'");
  cuida = Cuida();
  EsperaMensaje("Reservación 0000000016, Francisco", "Sí");
  EsperaMensaje("ya no se puede editar", "Aceptar");
  EXPECT_FALSE(cuida->Ofrece());
  EXPECT_EQ(Borradores().size(), 1);
}

// By the menu of the main window.
TEST_F(CapturaPrueba, LasHabitacionesQuitadasVuelvenPorElMenu) {
  mostrador_.Vigila(Forma());
  const auto menu = [this](const char* titulo) {
    for (const auto& opcion : escritorio_.contexto().menu) {
      if (opcion.titulo == QString::fromUtf8(titulo)) return opcion.abre();
    }
    ADD_FAILURE();
  };
  EsperaMensaje("No hay habitaciones que reponer", "Aceptar");
  menu("Repon&er habitaciones");
  CapturaEncabezado();
  Espera("frmDisponibilidad", [this](QWidget& w) { MarcaDosNoches(w); });
  Tecla(Qt::Key_F6);
  CapturaPersonas("2");
  Forma().Enfoca(*Forma().Busca("dpFecha_salida"));
  Enter("13/3");
  EXPECT_EQ(Renglones().Filas(), 0);
  menu("Repon&er habitaciones");
  ASSERT_EQ(Renglones().Filas(), 1);
  EXPECT_EQ(Renglones().Texto(0, "Clave") + Renglones().Texto(0, "FECHAF"), habitacion_ + "13/03/2026");
  EXPECT_EQ(Renglones().Texto(0, "Adultos"), "2");
}

}  // namespace
}  // namespace pruebas
