// The board as the clerk works it: columns, colours, marks, filters, the two views, failures and layout.
#include <gtest/gtest.h>

#include "availability/ocupacion.h"
#include "tests/availability/tablero_prueba.h"

namespace pruebas {
namespace {

using kv207::EstadoCelda;
using kv207::ModoVista;
namespace tecla = controles::tecla;

const com::Fecha kMiercoles = com::FechaDe(2026, 3, 11);

// Three rooms of two types; on the second night 101 is reserved, 102 occupied, 103 blocked.
class Tablero : public TableroPrueba {
 protected:
  Tablero() {
    Tipo("SEN", "Sencilla");
    Tipo("DOB", "Doble");
    Sql("INSERT INTO Grupo_Habitacion (Ghb_Cve_Grupo_Habitacion, Ghb_Descripcion) VALUES ('0002', 'Playa')");
    Sql("INSERT INTO Area_Habitacion (Ah_Cve_Area_Habitacion, Ah_Descripcion) VALUES ('0003', 'Norte')");
    Habitacion("101", "SEN");
    Habitacion("102", "SEN", "0002", "0003");
    Habitacion("103", "DOB");
    Reserva("R1", "101", "2026-03-12", "2026-03-13");
    Estancia("C1", "102", "2026-03-12", "2026-03-13");
    Bloqueo("103", "2026-03-12", "2026-03-12");
  }

  void AbrePorHabitacion(int noches = 3) {
    ASSERT_TRUE(Abre(kMiercoles, noches)) << tablero.MensajeError;
    tablero.opHabitacion.Pulsa();
    ASSERT_EQ(tablero.NumeroFilas, 3);
  }
  std::vector<std::string> Titulos() const {
    std::vector<std::string> titulos;
    titulos.reserve(static_cast<std::size_t>(tablero.ssDisponibilidad.NumColumnas()));
    for (int c = 0; c < tablero.ssDisponibilidad.NumColumnas(); ++c) {
      titulos.push_back(tablero.ssDisponibilidad.columna(c).titulo);
    }
    return titulos;
  }
  std::vector<EstadoCelda> Estados(int fila) const {
    std::vector<EstadoCelda> estados;
    estados.reserve(static_cast<std::size_t>(tablero.Estados.Dias()));
    for (int d = 0; d < tablero.Estados.Dias(); ++d) estados.push_back(tablero.Estados(d, fila));
    return estados;
  }
};

TEST_F(Tablero, LasColumnasSonLasNoches) {
  ASSERT_TRUE(Abre(kMiercoles, 7));
  EXPECT_EQ(Titulos(),
            (std::vector<std::string>{"Clave", "Tipo habitación", "MIE", "JUE", "VIE", "SAB", "DOM", "LUN", "MAR"}));
  const controles::Columna& ultima = tablero.ssDisponibilidad.columna(8);
  EXPECT_EQ(ultima.fecha, com::FechaDe(2026, 3, 17));
  EXPECT_EQ(ultima.ancho, 800);
  EXPECT_TRUE(ultima.bloqueada);
  EXPECT_EQ(tablero.ssDisponibilidad.columna("Clave").ancho, 650);
  EXPECT_EQ(tablero.ssDisponibilidad.columna("Nombre").ancho, escritorio.AnchoTexto(tablero, "Sencilla") + 200);

  ASSERT_TRUE(Abre(com::FechaDe(2026, 2, 28), 2));
  EXPECT_EQ(Titulos(), (std::vector<std::string>{"Clave", "Tipo habitación", "SAB", "DOM"}));
  EXPECT_EQ(tablero.ssDisponibilidad.columna(3).fecha, com::FechaDe(2026, 3, 1));
}

TEST_F(Tablero, SoloSeMarcaLoLibreYSoloPorHabitacion) {
  ASSERT_TRUE(Abre(kMiercoles, 3));
  const std::vector<FilaVista> porTipo = Vista();
  Clic(0, 0);
  tablero.ssDisponibilidad.SeleccionaFila(0);
  EXPECT_EQ(Vista(), porTipo);

  tablero.opHabitacion.Pulsa();
  const std::vector<FilaVista> sinMarcas = Vista();
  for (int fila = 0; fila < 3; ++fila) Clic(fila, 1);
  EXPECT_EQ(Vista(), sinMarcas);
  EXPECT_FALSE(tablero.HaySeleccion);

  Clic(1, 0);
  Clic(2, 2);
  EXPECT_EQ(Estados(1)[0], EstadoCelda::Ocupando);
  EXPECT_EQ(Vista()[1].celdas[0], (CeldaVista{"1", "OCUPANDO", 3}));
  Clic(1, 0);
  EXPECT_TRUE(tablero.HaySeleccion);
  Clic(2, 2);
  EXPECT_FALSE(tablero.HaySeleccion);
  EXPECT_EQ(Vista(), sinMarcas);
  // The name is no night.
  tablero.ssDisponibilidad.ClicCelda(0, 1);
  EXPECT_EQ(Vista(), sinMarcas);
}

TEST_F(Tablero, LaFilaEnteraSeMarcaYSeDesmarca) {
  AbrePorHabitacion();
  const auto libre = EstadoCelda::Disponible, marcada = EstadoCelda::Ocupando, reservada = EstadoCelda::Reservado;
  Clic(0, 2);
  tablero.ssDisponibilidad.SeleccionaFila(0);
  EXPECT_EQ(Estados(0), (std::vector<EstadoCelda>{libre, reservada, libre}));
  EXPECT_FALSE(tablero.HaySeleccion);
  tablero.ssDisponibilidad.SeleccionaFila(0);
  EXPECT_EQ(Estados(0), (std::vector<EstadoCelda>{marcada, reservada, marcada}));
  EXPECT_TRUE(tablero.HaySeleccion);
  tablero.ssDisponibilidad_SelChange(1);  // a column: nothing
  EXPECT_TRUE(tablero.HaySeleccion);
}

TEST_F(Tablero, ElTecladoHaceLoQueElRaton) {
  AbrePorHabitacion();
  controles::Grid& grid = tablero.ssDisponibilidad;
  grid.VaA(0, 2);
  grid.PulsaTecla(tecla::kEspacio);
  grid.PulsaCaracter(U' ');
  EXPECT_EQ(Estados(0)[0], EstadoCelda::Ocupando);
  EXPECT_EQ(grid.Texto(0, 2), "1");
  grid.PulsaTecla(tecla::kEspacio, 1);
  EXPECT_FALSE(tablero.HaySeleccion);
  grid.PulsaTecla(tecla::kEspacio, 1);
  EXPECT_EQ(Estados(0)[2], EstadoCelda::Ocupando);
  // Enter has moved on as a key; the character that comes with it is nobody's. Others are whose they were.
  for (const auto& [caracter, queda] : {std::pair(tecla::kEnter, 0), std::pair(int{'a'}, int{'a'})}) {
    int dado = caracter;
    grid.KeyPress(dado);
    EXPECT_EQ(dado, queda) << caracter;
  }
  grid.PulsaTecla(tecla::kEnter);
  EXPECT_EQ(grid.fila(), 0);
  EXPECT_EQ(grid.columna(), 3);
  EXPECT_TRUE(tablero.visible());
  grid.PulsaTecla(tecla::kEnter, 2);
  EXPECT_FALSE(tablero.visible());
  EXPECT_TRUE(tablero.HaySeleccion);
  EXPECT_TRUE(escritorio.Mensajes().empty());
}

TEST_F(Tablero, AceptarPideUnaMarcaYCancelarLaOlvida) {
  AbrePorHabitacion();
  tablero.Controles.Pulsa(controles::Accion::Aceptar);
  ASSERT_EQ(escritorio.Mensajes().size(), 1U);
  const controles::CajaMensaje& caja = escritorio.Mensajes()[0];
  EXPECT_EQ(caja.id, "ERR-ID:7500055");
  EXPECT_EQ(caja.texto, "Debe seleccionar al menos una habitación");
  EXPECT_EQ(caja.ventana, tablero.ventana());
  EXPECT_TRUE(tablero.visible());
  tablero.HaySeleccion = true;  // says so, but nothing is marked
  tablero.Controles.Pulsa(controles::Accion::Aceptar);
  EXPECT_TRUE(tablero.visible());
  EXPECT_EQ(escritorio.Mensajes().size(), 2U);
  Clic(1, 0);
  tablero.Controles.Pulsa(controles::Accion::Aceptar);
  EXPECT_FALSE(tablero.visible());
  EXPECT_TRUE(tablero.HaySeleccion);

  tablero.Muestra();
  tablero.PulsaTecla(tecla::kEsc);
  EXPECT_FALSE(tablero.visible());
  EXPECT_FALSE(tablero.HaySeleccion);
  EXPECT_EQ(Estados(1)[0], EstadoCelda::Ocupando);
  // What counts are the rows of the load, shown or not.
  tablero.ssDisponibilidad.QuitaTodas();
  tablero.ActualizarSeleccion();
  EXPECT_TRUE(tablero.HaySeleccion);
}

TEST_F(Tablero, UnFiltroVacioEsTodos) {
  AbrePorHabitacion();
  tablero.txtGrupo_Habitacion.Teclea("2");
  tablero.txtGrupo_Habitacion.Confirma();
  EXPECT_EQ(tablero.txtGrupo_Habitacion.text(), "0002");
  EXPECT_EQ(tablero.NumeroFilas, 1);
  tablero.txtArea.Teclea("0003");
  tablero.txtArea.Confirma();
  EXPECT_EQ(tablero.NumeroFilas, 1);
  tablero.txtGrupo_Habitacion.Teclea("");
  EXPECT_EQ(tablero.txtGrupo_Habitacion.text(), "%");
  EXPECT_EQ(tablero.txtNGrupo_Habitacion.text(), "Todos");
  EXPECT_EQ(tablero.NumeroFilas, 1);
  tablero.txtGrupo_Habitacion.Confirma();
  EXPECT_EQ(tablero.txtNGrupo_Habitacion.text(), "Todos");
  tablero.txtArea.Teclea("");
  EXPECT_EQ(tablero.txtNArea.text(), "Todas");
  tablero.txtArea.Confirma();
  EXPECT_EQ(tablero.NumeroFilas, 3);

  // A key that was typed and not confirmed does not filter.
  tablero.txtGrupo_Habitacion.Teclea("2");
  ASSERT_TRUE(tablero.CargarDatos());
  EXPECT_EQ(tablero.NumeroFilas, 3);

  // An unknown key loads nothing, even with rows waiting.
  Habitacion("104", "SEN");
  tablero.txtTipo_Habitacion.Teclea("zzz");
  tablero.txtTipo_Habitacion.Confirma();
  EXPECT_EQ(tablero.txtTipo_Habitacion.text(), "ZZZ");
  EXPECT_EQ(tablero.txtNTipo_Habitacion.text(), "");
  EXPECT_EQ(tablero.NumeroFilas, 3);
  tablero.txtTipo_Habitacion.Teclea("sen");
  tablero.txtTipo_Habitacion.Confirma();
  EXPECT_EQ(tablero.NumeroFilas, 3);  // 101, 102, 104
  EXPECT_EQ(Celda("104", 0).texto, "1");
}

TEST_F(Tablero, UnaCargaVuelveALaVistaPorTipoSalvoQueSeConserve) {
  AbrePorHabitacion();
  ASSERT_TRUE(tablero.CargarDatos());
  EXPECT_EQ(tablero.Modo(), ModoVista::PorHabitacion);
  tablero.ConservarVista = false;
  ASSERT_TRUE(tablero.CargarDatos());
  EXPECT_EQ(tablero.Modo(), ModoVista::PorTipo);
  EXPECT_EQ(tablero.ssDisponibilidad.columna("Nombre").titulo, "Tipo habitación");
  EXPECT_TRUE(tablero.ssDisponibilidad.columna("Clave").visible);
  EXPECT_EQ(tablero.NumeroFilas, 2);

  // With marks the question comes first; refused, the load goes on in the view that stays.
  tablero.opHabitacion.Pulsa();
  Clic(1, 0);
  tablero.ConservarVista = false;
  escritorio.Responde("ERR-ID:7500061", controles::kNo);
  ASSERT_TRUE(tablero.CargarDatos());
  EXPECT_EQ(tablero.Modo(), ModoVista::PorHabitacion);
  EXPECT_EQ(tablero.NumeroFilas, 3);
  EXPECT_FALSE(tablero.HaySeleccion);
  EXPECT_TRUE(tablero.OpcionesActivas);
}

TEST_F(Tablero, UnCambioDeVistaQueFallaNoDejaMarcas) {
  AbrePorHabitacion();
  Clic(1, 0);
  conexion->Falla("as Total");
  escritorio.Responde("ERR-ID:7500061", controles::kSi);
  tablero.opTipoHabitacion.Pulsa();
  EXPECT_EQ(escritorio.Ids(), (std::vector<std::string>{"ERR-ID:7500061", "ERR-ID:7500057"}));
  EXPECT_FALSE(tablero.HaySeleccion);
  // There is no row to hand over.
  tablero.Controles.Pulsa(controles::Accion::Aceptar);
  EXPECT_EQ(escritorio.Ids().back(), "ERR-ID:7500055");

  // The view change that a load begins with fails; the load itself does not.
  ASSERT_TRUE(tablero.CargarDatos());
  tablero.opHabitacion.Pulsa();
  escritorio.Olvida();
  tablero.ConservarVista = false;
  conexion->Falla("as Total");
  EXPECT_TRUE(tablero.CargarDatos());
  EXPECT_EQ(escritorio.Ids(), (std::vector<std::string>{"ERR-ID:7500057"}));
  EXPECT_EQ(tablero.MensajeError, "");
  EXPECT_TRUE(tablero.frFrame.enabled());
}

TEST_F(Tablero, CadaFuenteQueFallaDejaElMarcoApagadoYNadaMarcable) {
  for (const bool conjuntos : {true, false}) {
    for (const char* fuente : {"FROM Tipo_Habitacion THb", "Rsd_Fecha_Fin", "CI.Ci_Salida", "Hbb_Fecha_Fin"}) {
      conexion->conjuntos = conjuntos;
      ASSERT_TRUE(Abre(kMiercoles, 3));
      conexion->Falla(fuente);
      EXPECT_FALSE(tablero.CargarDatos()) << fuente;
      EXPECT_EQ(tablero.MensajeError, "frmDisponibilidad.CargarDatos() - falla inyectada");
      EXPECT_FALSE(tablero.frFrame.enabled());
    }
  }
  // Two whole rows and a part of the third: they stay, the part cannot be marked.
  AbrePorHabitacion();
  Clic(1, 0);
  conexion->conjuntos = false;
  conexion->Falla("Hbb_Fecha_Fin", com::error::kInyectada, 8);
  EXPECT_FALSE(tablero.CargarDatos());
  EXPECT_EQ(tablero.NumeroFilas, 2);
  EXPECT_EQ(tablero.ssDisponibilidad.Filas(), 3);
  EXPECT_EQ(Estados(2)[0], EstadoCelda::Disponible);
  Clic(2, 0);
  EXPECT_EQ(Estados(2)[0], EstadoCelda::Disponible);
  EXPECT_FALSE(tablero.HaySeleccion);
  Clic(1, 0);
  EXPECT_TRUE(tablero.HaySeleccion);
}

TEST_F(Tablero, UnRangoQueNoCabeEnLasColumnasFalla) {
  ASSERT_TRUE(Abre(kMiercoles, 3));
  tablero.txtAL.text(com::Variant(com::MasDias(kMiercoles, 4)));
  EXPECT_FALSE(tablero.CargarDatos());
  EXPECT_EQ(tablero.MensajeError,
            "frmDisponibilidad.CargarDatos() - El tablero tiene menos columnas de día (3) que noches (4)");
  tablero.ssDisponibilidad.antesDeCambiar = [] { throw com::Error(com::error::kInyectada, "falla del grid"); };
  tablero.txtAL.text(com::Variant(com::MasDias(kMiercoles, 3)));
  EXPECT_FALSE(tablero.CargarDatos());
  EXPECT_EQ(tablero.MensajeError, "frmDisponibilidad.CargarDatos() - falla del grid");
}

TEST_F(Tablero, MarcarSinFilasOConColumnasNuevasNoHaceNada) {
  AbrePorHabitacion(2);
  Clic(1, 0);
  ASSERT_TRUE(tablero.Agregar_Columnas(4));  // the rows are still those of two nights
  tablero.PintarCeldas();
  EXPECT_TRUE(tablero.HaySeleccion);
  for (const int noche : {2, 3}) {
    Clic(0, noche);
    EXPECT_EQ(tablero.ssDisponibilidad.estilo(0, noche + 2), -1);
  }
  EXPECT_TRUE(tablero.HaySeleccion);
  ASSERT_TRUE(tablero.Agregar_Columnas(0));
  tablero.ssDisponibilidad.SeleccionaFila(1);
  EXPECT_FALSE(tablero.HaySeleccion);
  tablero.ssDisponibilidad.QuitaTodas();
  tablero.MarcarCelda();
  tablero.MarcarFila();
  EXPECT_FALSE(tablero.HaySeleccion);
}

TEST_F(Tablero, VolverACargarLaPantallaEmpiezaComoSeDiseno) {
  for (const controles::Control* c : tablero.controles()) {
    if (dynamic_cast<const controles::LookupField*>(c) == nullptr) continue;
    EXPECT_FALSE(c->descripcion().empty()) << c->nombre() << " without what a screen reader says";
  }
  AbrePorHabitacion();
  Clic(1, 0);
  tablero.FolioExcluido = "R1";
  tablero.txtGrupo_Habitacion.Teclea("2");
  tablero.Descarga();
  host.Parametro("FTO_GRUPO_HABITACION", "000");
  conexion->sentencias.clear();
  tablero.Carga();
  EXPECT_EQ(tablero.Modo(), ModoVista::PorTipo);
  EXPECT_FALSE(tablero.HaySeleccion);
  EXPECT_FALSE(tablero.ConservarVista);
  EXPECT_EQ(tablero.FolioExcluido, "");
  EXPECT_EQ(tablero.txtGrupo_Habitacion.text(), "%");
  EXPECT_EQ(tablero.txtNGrupo_Habitacion.text(), "Todos");
  EXPECT_EQ(tablero.txtNArea.text(), "Todas");
  EXPECT_EQ(tablero.txtGrupo_Habitacion.formato(), "000");
  EXPECT_TRUE(tablero.ssDisponibilidad.columna("Clave").visible);
  for (const std::string& s : conexion->sentencias) EXPECT_EQ(s.find("COUNT"), std::string::npos) << s;
  // Nights without rows: what was marked before does not count for them.
  ASSERT_TRUE(tablero.Agregar_Columnas(3));
  tablero.Controles.Pulsa(controles::Accion::Aceptar);
  EXPECT_EQ(escritorio.Ids(), (std::vector<std::string>{"ERR-ID:7500055"}));
}

TEST(CeldaTablero, LasLibresTienenQueCaberEnDieciseisBits) {
  EXPECT_EQ(kv207::CalculaCelda(ModoVista::PorHabitacion, 1, {0, 0, 32769}).libres, -32768);
  EXPECT_THROW(static_cast<void>(kv207::CalculaCelda(ModoVista::PorHabitacion, 1, {0, 0, 32770})), com::Error);
}

}  // namespace
}  // namespace pruebas
