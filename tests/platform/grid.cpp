// The grid: what the user's moves and edits raise, what a program's changes do not, and what cells hold.
#include "platform/controls/grid.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "platform/com/error.h"
#include "platform/controls/formulario.h"
#include "tests/comun/error_de.h"
#include "tests/comun/escritorio_prueba.h"

namespace {

using pruebas::ErrorDe;

using namespace controles;
using com::FechaDe;
using com::Variant;
using Traza = std::vector<std::string>;

class PruebaGrid : public testing::Test {
 protected:
  PruebaGrid() {
    grid.BeforeRowColChange = [this](bool& cancela) {
      Anota("sale");
      cancela = retiene;
    };
    grid.RowColChange = [this] { Anota("entra"); };
    grid.Change = [this] { Anota("cambia"); };
    grid.RowCommitted = [this] {
      Anota("compromete");
      grid.Update();
    };
    for (int i = 0; i < 3; ++i) grid.AgregaFila();
    grid.Update();
    forma.Muestra();
  }

  void Anota(const std::string& que) {
    traza.push_back(que + " " + std::to_string(grid.fila()) + "," + std::to_string(grid.columna()));
  }
  Traza Toma() { return std::exchange(traza, {}); }

  pruebas::EscritorioPrueba escritorio;
  Formulario forma{"forma", "Forma", 10000, 8000};
  LookupField antes{forma, "antes", {}};
  Grid grid{forma,
            "grid",
            {},
            {{.clave = "Clave", .ancho = 1000},
             {.clave = "Oculta", .tipo = TipoColumna::Doble, .ancho = 500, .visible = false},
             {.clave = "Fecha", .tipo = TipoColumna::Fecha, .ancho = 800},
             {.clave = "Personas", .tipo = TipoColumna::Entero, .bloqueada = true},
             {.clave = "Precio", .tipo = TipoColumna::Doble, .formato = "$#,##0.00##"}}};
  LookupField despues{forma, "despues", {}};
  bool retiene = false;
  Traza traza;
};

TEST_F(PruebaGrid, ElProgramaNoDisparaNada) {
  grid.celda(0, "Clave", "0001");
  grid.fila(1);
  grid.columnaActual(2);
  grid.QuitaFila(0);
  grid.MuevePrimera();
  grid.QuitaTodas();
  EXPECT_TRUE(Toma().empty());
  EXPECT_EQ(grid.fila(), -1);
  EXPECT_EQ(grid.columna(), -1);
  EXPECT_EQ(grid.ClaveColumna(), "");
}

TEST_F(PruebaGrid, SaleYEntraEnOrden) {
  grid.columnaActual(-1);
  EXPECT_TRUE(grid.VaA(0, 0));
  EXPECT_EQ(Toma(), Traza{"entra 0,0"}) << "there was no cell to leave";
  EXPECT_TRUE(grid.VaA(0, 0));
  EXPECT_TRUE(Toma().empty());
  EXPECT_TRUE(grid.VaA(1, 2));
  EXPECT_EQ(Toma(), (Traza{"sale 0,0", "entra 1,2"}));
  EXPECT_EQ(forma.foco(), &grid);
  retiene = true;
  EXPECT_FALSE(grid.VaA(0, 0));
  EXPECT_FALSE(grid.Deja());
  EXPECT_EQ(Toma(), (Traza{"sale 1,2", "sale 1,2"}));
  EXPECT_EQ(ErrorDe([&] { grid.VaA(3, 0); }), com::error::kSubindice);
  EXPECT_EQ(ErrorDe([&] { grid.VaA(0, 5); }), com::error::kSubindice);
  EXPECT_EQ(ErrorDe([&] { grid.VaA(0, 1); }), com::error::kElemento);
  EXPECT_TRUE(Toma().empty());
}

TEST_F(PruebaGrid, UnaCeldaTecleadaComprometeSuRenglonAlDejarla) {
  grid.VaA(0, 0);
  Toma();
  grid.Teclea("0001");
  EXPECT_TRUE(grid.Tecleada() && grid.Pendiente());
  EXPECT_EQ(Toma(), Traza{"cambia 0,0"});
  grid.VaA(0, 2);
  EXPECT_FALSE(grid.Tecleada() || grid.Pendiente());
  EXPECT_EQ(Toma(), (Traza{"sale 0,0", "compromete 0,0", "entra 0,2"})) << "within the row too: totals follow";
  grid.VaA(1, 2);
  EXPECT_EQ(Toma(), (Traza{"sale 0,2", "entra 1,2"}));
  grid.Teclea("10/03/2026");
  EXPECT_TRUE(grid.Deja());
  EXPECT_EQ(Toma(), (Traza{"cambia 1,2", "sale 1,2", "compromete 1,2"}));
  EXPECT_TRUE(grid.Deja());
  EXPECT_EQ(Toma(), Traza{"sale 1,2"});
  EXPECT_EQ(grid.fila(), 1);
  retiene = true;
  grid.Teclea("11/03/2026");
  EXPECT_FALSE(grid.Deja());
  EXPECT_TRUE(grid.Tecleada() && grid.Pendiente());
}

TEST_F(PruebaGrid, LaEdicionPendienteAcabaConSuRenglonOAlComprometer) {
  grid.RowCommitted = nullptr;
  grid.VaA(0, 0);
  grid.Teclea("0001");
  grid.QuitaFila(2);
  EXPECT_TRUE(grid.Pendiente());
  grid.QuitaFila(0);
  EXPECT_FALSE(grid.Pendiente() || grid.Tecleada());
  grid.Teclea("0002");
  grid.Deja();
  EXPECT_FALSE(grid.Pendiente());
}

TEST_F(PruebaGrid, SoloSeTecleaDondeSePuede) {
  EXPECT_EQ(ErrorDe([&] { grid.Teclea("x"); }), com::error::kTamanio);
  grid.VaA(0, 3);
  EXPECT_EQ(ErrorDe([&] { grid.Teclea("2"); }), com::error::kTamanio);
  grid.PulsaCaracter(U'2');
  EXPECT_TRUE(grid.celda(0, 3).EsVacio());
  grid.bloqueada("Personas", false);
  grid.Teclea("2");
  EXPECT_EQ(grid.celda(0, 3), Variant(2));
  grid.enabled(false);
  EXPECT_EQ(ErrorDe([&] { grid.Teclea("3"); }), com::error::kTamanio);
}

TEST_F(PruebaGrid, LasCeldasGuardanElTipoDeSuColumna) {
  const Variant fecha = FechaDe(2026, 3, 10);
  struct Caso {
    const char* columna;
    Variant dado, guardado;
  };
  const std::vector<Caso> casos = {{"Fecha", "10/03/2026", fecha},
                                   {"Fecha", "2026-03-10", fecha},
                                   {"Fecha", fecha, fecha},
                                   {"Fecha", "mañana", "mañana"},
                                   {"Fecha", "", Variant()},
                                   {"Personas", " 2 ", 2},
                                   {"Personas", 2.0, 2},
                                   {"Personas", "dos", "dos"},
                                   {"Personas", "9999999999", "9999999999"},
                                   {"Precio", "$1,234.50", 1234.5},
                                   {"Precio", 3, 3},
                                   {"Precio", Variant::Null(), Variant()},
                                   {"Clave", 7, "7"},
                                   {"Clave", "", ""},
                                   {"Clave", fecha, "10/03/2026"}};
  for (const auto& c : casos) {
    grid.celda(0, c.columna, c.dado);
    EXPECT_EQ(grid.celda(0, c.columna), c.guardado) << c.columna;
  }
  grid.celda(0, "Precio", 1234.5678);
  EXPECT_EQ(grid.Texto(0, "Precio"), "$1,234.5678");
  EXPECT_EQ(grid.Texto(1, "Precio"), "");
  EXPECT_EQ(ErrorDe([&] { grid.celda(0, "clave", 1); }), com::error::kElemento);
  EXPECT_EQ(ErrorDe([&] { grid.celda(-1, 0, 1); }), com::error::kSubindice);
}

TEST_F(PruebaGrid, CaracteresReemplazanYLuegoAgregan) {
  grid.celda(0, "Precio", 90);
  grid.VaA(0, 4);
  for (const char32_t c : std::u32string(U"12.5")) grid.PulsaCaracter(c);
  EXPECT_EQ(grid.celda(0, 4), Variant(12.5));
  grid.PulsaTecla(tecla::kRetroceso);
  EXPECT_EQ(grid.celda(0, 4), Variant(12.0));
  grid.PulsaCaracter(U'7');
  EXPECT_EQ(grid.celda(0, 4), Variant(12.7)) << "the point typed before is still there";
  grid.VaA(0, 0);
  grid.KeyPress = [](int& c) {
    if (c < '0' || c > '9') c = 0;
  };
  for (const char32_t c : std::u32string(U"1a2")) grid.PulsaCaracter(c);
  EXPECT_EQ(grid.celda(0, 0), Variant("12"));
  grid.celda(0, 0, "0012");
  grid.PulsaCaracter(U'3');
  EXPECT_EQ(grid.celda(0, 0), Variant("00123")) << "what the program wrote meanwhile is kept";
}

TEST_F(PruebaGrid, UnCambioQueQuitaElRenglonTambienLoCompleta) {
  grid.VaA(1, 0);
  grid.celda(2, "Clave", "C");
  grid.Change = [&] { grid.QuitaFila(grid.fila()); };
  Toma();
  grid.Teclea("");
  EXPECT_EQ(Toma(), Traza{"compromete 1,0"});
  EXPECT_EQ(grid.Filas(), 2);
  EXPECT_EQ(grid.celda(1, "Clave"), Variant("C"));
  EXPECT_FALSE(grid.Pendiente() || grid.Tecleada());
  grid.Teclea("");
  EXPECT_EQ(grid.fila(), 0);
  grid.Teclea("");
  EXPECT_EQ(grid.fila(), -1);
  EXPECT_EQ(grid.columna(), -1);
}

TEST_F(PruebaGrid, BorrarPreguntaQuitaYCompromete) {
  grid.VaA(0, 0);
  Toma();
  bool cancelar = true;
  grid.BeforeDelete = [&](bool& cancela, bool& pregunta) {
    Anota("antes");
    cancela = cancelar;
    pregunta = false;
  };
  grid.AfterDelete = [&](bool& muestra) {
    Anota("despues");
    muestra = false;
  };
  EXPECT_FALSE(grid.Borra(2));
  EXPECT_EQ(Toma(), Traza{"antes 2,0"});
  EXPECT_EQ(grid.Filas(), 3);
  cancelar = false;
  EXPECT_TRUE(grid.Borra(2));
  EXPECT_EQ(Toma(), (Traza{"antes 2,0", "despues 1,0", "compromete 1,0"}));
  EXPECT_EQ(ErrorDe([&] { grid.Borra(2); }), com::error::kSubindice);
  forma.Enfoca(grid);
  forma.PulsaTecla(tecla::kSupr);
  EXPECT_EQ(grid.Filas(), 2);
  forma.PulsaTecla(tecla::kSupr, 2);
  EXPECT_EQ(grid.Filas(), 1);
}

TEST_F(PruebaGrid, FallasAlComprometer) {
  grid.VaA(0, 0);
  grid.RowCommitted = [] { throw com::Error(com::error::kBaseDatos, "sin base"); };
  grid.Teclea("1");
  EXPECT_EQ(ErrorDe([&] { grid.Deja(); }), com::error::kBaseDatos);
  int visto = 0;
  grid.UpdateError = [&](int& codigo) { visto = std::exchange(codigo, 0); };
  EXPECT_TRUE(grid.Deja());
  EXPECT_EQ(visto, com::error::kBaseDatos);
}

TEST_F(PruebaGrid, TabRecorreLoVisibleYSaleAlFinal) {
  forma.Enfoca(grid);
  grid.fila(2);
  grid.columnaActual(-1);
  Traza camino;
  for (int i = 0; i < 4; ++i) {
    forma.PulsaTecla(tecla::kTab);
    camino.push_back(grid.ClaveColumna());
  }
  EXPECT_EQ(camino, (Traza{"Clave", "Fecha", "Personas", "Precio"}));
  grid.Teclea("5");
  Toma();
  forma.PulsaTecla(tecla::kTab);
  EXPECT_EQ(forma.foco(), &despues);
  EXPECT_EQ(Toma(), (Traza{"sale 2,4", "compromete 2,4"}));
  EXPECT_EQ(grid.fila(), 2);
  EXPECT_FALSE(grid.Siguiente());

  grid.VaA(1, 0);
  forma.PulsaTecla(tecla::kTab, 1);
  EXPECT_EQ(grid.fila(), 0);
  EXPECT_EQ(grid.ClaveColumna(), "Precio");
  grid.VaA(0, 0);
  forma.PulsaTecla(tecla::kTab, 1);
  EXPECT_EQ(forma.foco(), &antes);

  grid.VaA(2, 4);
  retiene = true;
  forma.PulsaTecla(tecla::kTab);
  EXPECT_EQ(forma.foco(), &grid) << "held in the last cell";
}

TEST_F(PruebaGrid, EnterConvertidoEnTabAvanzaUnaCelda) {
  grid.KeyDown = [&](int codigo, int) {
    if (codigo == tecla::kEnter) escritorio.EnviaTeclas("\t");
  };
  grid.KeyPress = [](int& c) {
    if (c == tecla::kEnter) c = 0;
  };
  grid.VaA(0, 0);
  forma.PulsaTecla(tecla::kEnter);
  EXPECT_EQ(grid.ClaveColumna(), "Fecha");
  EXPECT_TRUE(grid.celda(0, "Fecha").EsVacio());
}

TEST_F(PruebaGrid, FlechasEntreCeldasVisibles) {
  grid.VaA(0, 0);
  grid.PulsaTecla(tecla::kDerecha);
  grid.PulsaTecla(tecla::kAbajo);
  EXPECT_EQ(grid.fila(), 1);
  EXPECT_EQ(grid.ClaveColumna(), "Fecha");
  grid.PulsaTecla(tecla::kIzquierda);
  grid.PulsaTecla(tecla::kIzquierda);
  grid.PulsaTecla(tecla::kArriba);
  grid.PulsaTecla(tecla::kArriba);
  EXPECT_EQ(grid.fila(), 0);
  EXPECT_EQ(grid.ClaveColumna(), "Clave");
}

TEST_F(PruebaGrid, RenglonNuevoDelUsuario) {
  EXPECT_TRUE(grid.NuevaFila());
  EXPECT_EQ(Toma(), Traza{"entra 3,0"});
  EXPECT_EQ(grid.Filas(), 4);
  // Left untouched it goes away, whichever way it is left.
  EXPECT_TRUE(grid.VaA(0, 0));
  EXPECT_EQ(grid.Filas(), 3);
  EXPECT_EQ(grid.fila(), 0);
  grid.NuevaFila();
  grid.Deja();
  EXPECT_EQ(grid.Filas(), 3);
  // Written in, by the user or by the program, it stays.
  grid.NuevaFila();
  grid.Teclea("0001");
  grid.NuevaFila();
  grid.celda(4, "Clave", "0002");
  grid.Deja();
  EXPECT_EQ(grid.Filas(), 5);
  retiene = true;
  EXPECT_FALSE(grid.NuevaFila());
  retiene = false;
  for (int c = 0; c < grid.NumColumnas(); ++c) grid.bloqueada(c, true);
  EXPECT_EQ(ErrorDe([&] { grid.NuevaFila(); }), com::error::kTamanio);
  EXPECT_EQ(grid.Filas(), 5);
}

TEST_F(PruebaGrid, LaRevisionDeSalidaNoSeAnida) {
  grid.VaA(0, 0);
  int revisiones = 0;
  grid.BeforeRowColChange = [&](bool&) {
    ++revisiones;
    EXPECT_FALSE(grid.Deja()) << "a message box takes the focus in the middle of the check";
  };
  EXPECT_TRUE(grid.VaA(1, 0));
  EXPECT_EQ(revisiones, 1);
  grid.BeforeRowColChange = [](bool&) { throw com::Error(com::error::kTipos, "mal"); };
  EXPECT_EQ(ErrorDe([&] { grid.VaA(0, 0); }), com::error::kTipos);
  EXPECT_EQ(grid.fila(), 1);
  grid.BeforeRowColChange = nullptr;
  EXPECT_TRUE(grid.VaA(0, 0));
}

TEST_F(PruebaGrid, ClicsYSeleccion) {
  grid.Click = [&] { Anota("clic"); };
  grid.SelChange = [&](int tipo) { Anota("seleccion" + std::to_string(tipo)); };
  grid.ClicCelda(1, 2);
  grid.ClicCelda(1, 2);
  EXPECT_EQ(Toma(), (Traza{"entra 1,2", "clic 1,2", "clic 1,2"}));
  grid.SeleccionaFila(2);
  EXPECT_EQ(Toma(), (Traza{"sale 1,2", "entra 2,2", "seleccion2 2,2"}));
  retiene = true;
  grid.ClicCelda(0, 0);
  EXPECT_EQ(Toma(), Traza{"sale 2,2"});
}

TEST_F(PruebaGrid, ColumnasQueVanYVienen) {
  grid.celda(0, "Precio", 5);
  grid.AgregaColumna({.clave = "Dia", .fecha = com::FechaDe(2026, 3, 10)});
  EXPECT_TRUE(grid.celda(0, "Dia").EsVacio());
  grid.VaA(0, 4);
  grid.QuitaColumna(0);
  EXPECT_EQ(grid.ClaveColumna(), "Precio");
  EXPECT_EQ(grid.celda(0, "Precio"), Variant(5));
  grid.QuitaColumna(grid.IndiceColumna("Precio"));
  EXPECT_EQ(grid.columna(), -1);
  EXPECT_EQ(grid.IndiceColumna("Precio"), -1);
  EXPECT_EQ(ErrorDe([&] { grid.QuitaColumna(9); }), com::error::kSubindice);
  EXPECT_EQ(ErrorDe([&] { grid.ancho("Fecha", -1); }), com::error::kTamanio);
  EXPECT_EQ(ErrorDe([&] { static_cast<void>(grid.columna("Precio")); }), com::error::kElemento);
}

TEST_F(PruebaGrid, EstilosConNombre) {
  grid.DefineEstilo("DISPONIBLE", 0x0000FF00);
  grid.DefineEstilo("OCUPADO", 0x000000FF);
  grid.DefineEstilo("DISPONIBLE", 0x00123456);
  EXPECT_EQ(grid.Estilos().size(), 2U);
  EXPECT_EQ(grid.estilo(0, 0), -1);
  grid.estilo(0, 0, "OCUPADO");
  EXPECT_EQ(grid.estilo(0, 0), 1);
  EXPECT_EQ(grid.Estilos()[0].fondo, 0x00123456);
  EXPECT_EQ(ErrorDe([&] { grid.estilo(0, 0, "Otro"); }), com::error::kElemento);
  EXPECT_EQ(ErrorDe([&] { grid.estilo(0, 0, 2); }), com::error::kSubindice);
}

TEST_F(PruebaGrid, LaVistaOyeUnaVezAlTerminarLaPausa) {
  std::vector<CambioGrid> cambios;
  int cargadas = 0;
  grid.alCambiar = [&](CambioGrid c, int, int) { cambios.push_back(c); };
  grid.RowLoaded = [&] { ++cargadas; };
  grid.Refresca();
  cambios.clear();
  cargadas = 0;
  Grid::Pausa pausa(grid);
  grid.celda(grid.AgregaFila(), "Clave", "1");
  Grid::Pausa(grid).Termina();
  EXPECT_TRUE(cambios.empty()) << "the outer pause goes on";
  pausa.Termina();
  EXPECT_EQ(cambios, std::vector<CambioGrid>{CambioGrid::Todo});
  EXPECT_EQ(cargadas, 1);
  grid.Refresca();
  EXPECT_EQ(cargadas, 1) << "no new rows";
  grid.celda(0, "Clave", "2");
  EXPECT_EQ(cambios.back(), CambioGrid::Celda);
}

TEST_F(PruebaGrid, UnaVistaQueFallaSeOyeYElProgramaSigue) {
  grid.alCambiar = [](CambioGrid, int, int) { throw com::Error(com::error::kInyectada, "sin lienzo"); };
  EXPECT_EQ(ErrorDe([&] { Grid::Pausa(grid).Termina(); }), com::error::kInyectada);
  const auto falla = [&] {
    const Grid::Pausa pausa(grid);
    grid.celda(99, 0, "1");
  };
  EXPECT_EQ(ErrorDe(falla), com::error::kSubindice) << "the first failure is the one to report";
  int cambios = 0;
  grid.alCambiar = [&](CambioGrid, int, int) { ++cambios; };
  grid.celda(0, "Clave", "1");
  EXPECT_EQ(cambios, 1) << "the pauses are over";
}

TEST_F(PruebaGrid, UnaFallaInyectadaNoCambiaNada) {
  grid.celda(0, "Clave", "1");
  grid.antesDeCambiar = [] { throw com::Error(com::error::kInyectada, "falla inyectada"); };
  EXPECT_EQ(ErrorDe([&] { grid.AgregaFila(); }), com::error::kInyectada);
  EXPECT_EQ(ErrorDe([&] { grid.QuitaFila(0); }), com::error::kInyectada);
  EXPECT_EQ(ErrorDe([&] { grid.celda(0, "Clave", "2"); }), com::error::kInyectada);
  EXPECT_EQ(ErrorDe([&] { grid.QuitaTodas(); }), com::error::kInyectada);
  EXPECT_EQ(grid.Filas(), 3);
  EXPECT_EQ(grid.celda(0, "Clave"), Variant("1"));
  grid.VaA(0, 0);
  grid.Teclea("3");
  EXPECT_EQ(grid.celda(0, "Clave"), Variant("3")) << "the user's own changes are not the screen's";
}

TEST_F(PruebaGrid, LugarDeUnaCelda) {
  const Lugar l = grid.LugarCelda(1, 2);
  EXPECT_EQ(l.left, 1000) << "hidden columns take no place";
  EXPECT_EQ(l.top, Grid::kAltoTitulos + Grid::kAltoFila);
  EXPECT_EQ(l.width, 800);
}

}  // namespace
