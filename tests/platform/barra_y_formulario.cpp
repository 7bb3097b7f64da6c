// The toolbar's rules, and the life, focus and keys of a form.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/com/error.h"
#include "platform/controls/barra.h"
#include "platform/controls/formulario.h"
#include "platform/controls/grid.h"
#include "tests/comun/error_de.h"
#include "tests/comun/escritorio_prueba.h"

namespace {

using pruebas::ErrorDe;

using namespace controles;
using Traza = std::vector<std::string>;

const std::vector<Accion> kTodas = {Accion::Nuevo,  Accion::Editar,    Accion::Aceptar,  Accion::Limpiar,
                                    Accion::Cerrar, Accion::Confirmar, Accion::Eliminar, Accion::Reactivar,
                                    Accion::Correo, Accion::Registro};

Traza Ofrecidas(const ScreenToolbar& barra) {
  Traza nombres;
  for (const Accion a : barra.Acciones()) {
    if (barra.Ofrece(a)) nombres.emplace_back(NombreAccion(a));
  }
  return nombres;
}

TEST(Barra, OfreceSegunPermisosClaveYModo) {
  Formulario forma{"forma", "", 1, 1};
  ScreenToolbar barra{forma, "Controles", {}, kTodas};
  EXPECT_EQ(Ofrecidas(barra), (Traza{"limpiar", "cerrar"}));
  barra.PermiteAccion6(true);
  EXPECT_EQ(Ofrecidas(barra), (Traza{"nuevo", "limpiar", "cerrar"}));
  barra.PermiteAccion1(true);
  barra.PermiteAccion2(true);
  barra.PermiteAccion4(true);
  barra.PermiteAccion5(true);
  barra.PermiteReactivar(true);
  barra.TituloConfirmar("Confirmar reservación");
  EXPECT_EQ(Ofrecidas(barra), (Traza{"nuevo", "limpiar", "cerrar"})) << "there is no record yet";
  barra.CargaClave("0000007");
  EXPECT_EQ(barra.ClaveActual(), "0000007");
  EXPECT_EQ(Ofrecidas(barra), (Traza{"nuevo", "editar", "limpiar", "cerrar", "confirmar", "eliminar", "reactivar",
                                     "correo", "registro"}));
  EXPECT_EQ(barra.Titulo(Accion::Confirmar), "Confirmar reservación");
  EXPECT_EQ(ErrorDe([&] { barra.Pulsa(Accion::Aceptar); }), com::error::kTamanio);
  for (const Accion a : kTodas) EXPECT_EQ(AccionDe(NombreAccion(a)), a);
  EXPECT_FALSE(AccionDe("borrar"));
}

TEST(Barra, EntraEnEdicionAntesDelEventoYSaleAlConcluir) {
  Formulario forma{"forma", "", 1, 1};
  ScreenToolbar barra{forma, "Controles", {}, kTodas};
  barra.PermiteAccion6(true);
  barra.PermiteAccion4(true);
  barra.ClaveActual("7");
  Traza eventos;
  const auto anota = [&](const char* que) {
    eventos.push_back(std::string(que) + (barra.EnEdicion() ? barra.EsNuevo() ? " nuevo" : " edita" : " fuera"));
  };
  barra.Nuevo = [&] { anota("Nuevo"); };
  barra.Editar = [&] { anota("Editar"); };
  barra.Limpiar = [&] { anota("Limpiar"); };
  barra.Aceptar = [&](bool nuevo) {
    anota(nuevo ? "Aceptar(1)" : "Aceptar(0)");
    barra.RechazaAceptar();
  };
  barra.Pulsa(Accion::Nuevo);
  barra.Pulsa(Accion::Aceptar);
  EXPECT_TRUE(barra.EnEdicion());
  barra.Pulsa(Accion::Limpiar);
  barra.Pulsa(Accion::Editar);
  barra.Aceptar = [&](bool nuevo) {
    anota(nuevo ? "Aceptar(1)" : "Aceptar(0)");
    barra.ConcluyeAceptar();
  };
  barra.Pulsa(Accion::Aceptar);
  EXPECT_EQ(eventos, (Traza{"Nuevo nuevo", "Aceptar(1) nuevo", "Limpiar fuera", "Editar edita", "Aceptar(0) edita"}));
  EXPECT_FALSE(barra.EnEdicion());
  EXPECT_EQ(barra.ClaveActual(), "7");

  barra.Nuevo = [] { throw com::Error(com::error::kBaseDatos, "falla"); };
  EXPECT_EQ(ErrorDe([&] { barra.Pulsa(Accion::Nuevo); }), com::error::kBaseDatos);
  EXPECT_TRUE(barra.EnEdicion() && barra.EsNuevo());
  barra.Reinicia();
  EXPECT_TRUE(!barra.EnEdicion() && barra.ClaveActual().empty());
}

TEST(Barra, UnDialogoAceptaYCancelaSiempre) {
  Formulario forma{"forma", "", 1, 1};
  ScreenToolbar barra{forma, "Controles", {}, {Accion::Aceptar, Accion::Cancelar}, true};
  int aceptados = 0, cancelados = 0;
  barra.Aceptar = [&](bool) { ++aceptados; };
  barra.Cancelar = [&] { ++cancelados; };
  barra.Pulsa(Accion::Aceptar);
  barra.Pulsa(Accion::Cancelar);
  EXPECT_EQ(aceptados, 1);
  EXPECT_EQ(cancelados, 1);
  EXPECT_EQ(ErrorDe([&] { barra.Pulsa(Accion::Cerrar); }), com::error::kTamanio);
}

// Two fields, a button and a grid.
struct FormaDePrueba : Formulario {
  FormaDePrueba() : Formulario("forma", "Forma", 10000, 8000) {
    Load = [this] { traza.push_back("Load"); };
    Unload = [this] { traza.push_back("Unload"); };
    Activate = [this] { traza.push_back("Activate"); };
    Resize = [this] { traza.push_back("Resize " + std::to_string(width())); };
    grid.InitColumnProps = [this] { traza.push_back("InitColumnProps"); };
    KeyUp = [this](int codigo, int) { traza.push_back("KeyUp " + std::to_string(codigo)); };
    grid.KeyDown = [this](int codigo, int) { traza.push_back("grid abajo " + std::to_string(codigo)); };
    grid.KeyUp = [this](int codigo, int) { traza.push_back("grid arriba " + std::to_string(codigo)); };
    uno.Enter = [this] { traza.push_back("Enter " + uno.text()); };
    boton.Click = [this] { traza.push_back("Click"); };
    letrero.tabStop(false);
  }
  Traza traza;
  LookupField uno{*this, "uno", {}};
  LookupField letrero{*this, "letrero", {}};
  Boton boton{*this, "boton", {}, "Botón"};
  Marco marco{*this, "marco", {}};
  LookupField dentro{*this, "dentro", {}};
  CampoNotas notas{*this, "notas", {}};
  Grid grid{*this, "grid", {}, {{.clave = "A"}, {.clave = "B"}}};
};

TEST(Forma, VidaDeLaForma) {
  pruebas::EscritorioPrueba escritorio;
  FormaDePrueba f;
  f.Descarga();
  EXPECT_TRUE(f.traza.empty());
  f.Muestra();
  f.Muestra();
  EXPECT_EQ(f.traza, (Traza{"Load", "InitColumnProps", "Activate", "Activate"}));
  EXPECT_EQ(f.foco(), &f.uno);
  EXPECT_EQ(escritorio.Activo(), &f);
  f.Oculta();
  EXPECT_TRUE(f.cargado() && !f.visible());
  EXPECT_EQ(escritorio.Activo(), nullptr);
  f.traza.clear();
  f.Descarga();
  f.Descarga();
  EXPECT_EQ(f.traza, Traza{"Unload"});
  f.Muestra();
  f.Redimensiona(5000, 10);
  EXPECT_EQ(f.traza, (Traza{"Unload", "Load", "InitColumnProps", "Activate", "Resize 5000"}));
  FormaDePrueba otra;
  EXPECT_NE(f.ventana(), otra.ventana());
  EXPECT_EQ(f.Busca("boton"), &f.boton);
  EXPECT_EQ(f.Busca("Boton"), nullptr);
}

TEST(Forma, UnaCargaFallidaSeIntentaDeNuevo) {
  pruebas::EscritorioPrueba escritorio;
  FormaDePrueba f;
  bool falla = true;
  f.Load = [&] {
    if (falla) throw com::Error(com::error::kBaseDatos, "sin base");
  };
  EXPECT_EQ(ErrorDe([&] { f.Muestra(); }), com::error::kBaseDatos);
  EXPECT_FALSE(f.cargado() || f.visible());
  falla = false;
  f.Muestra();
  EXPECT_TRUE(f.cargado());
}

TEST(Forma, DescargarseDesdeSuPropioUnloadNoSeRepite) {
  pruebas::EscritorioPrueba escritorio;
  FormaDePrueba f;
  int veces = 0;
  f.Unload = [&] {
    ++veces;
    f.Descarga();
  };
  f.Muestra();
  f.Descarga();
  EXPECT_EQ(veces, 1);
  f.Muestra();
  f.Unload = [] { throw com::Error(com::error::kBaseDatos, "falla"); };
  EXPECT_NE(ErrorDe([&] { f.Descarga(); }), 0);
  EXPECT_FALSE(f.cargado() || f.visible());
}

TEST(Forma, ModalHastaQueSeOculta) {
  pruebas::EscritorioPrueba escritorio;
  FormaDePrueba f, g;
  f.Muestra();
  escritorio.alModal = [&](Formulario& modal) {
    EXPECT_EQ(escritorio.Activo(), &modal);
    modal.Oculta();
  };
  g.MuestraModal();
  EXPECT_FALSE(g.visible());
  EXPECT_EQ(escritorio.Activo(), &f);
  EXPECT_EQ(escritorio.Modales(), std::vector<Formulario*>{&g});
}

TEST(Forma, ElFocoSaltaLoQueNoPuedeTenerlo) {
  pruebas::EscritorioPrueba escritorio;
  FormaDePrueba f;
  f.Enfoca(f.boton);
  EXPECT_EQ(f.foco(), nullptr) << "a form that is not shown";
  f.Muestra();
  f.marco.visible(false);
  f.dentro.contenedor(f.marco);
  f.notas.enabled(false);
  Traza camino;
  for (int i = 0; i < 3; ++i) {
    f.EnfocaSiguiente();
    camino.push_back(f.foco()->nombre());
  }
  f.EnfocaSiguiente(-1);
  camino.push_back(f.foco()->nombre());
  EXPECT_EQ(camino, (Traza{"boton", "grid", "uno", "grid"}));
  f.Enfoca(f.dentro);
  EXPECT_EQ(f.foco(), &f.grid);
  f.Enfoca(f.letrero);
  EXPECT_EQ(f.foco(), &f.letrero) << "no tab stop, but it may be sent there";
}

TEST(Forma, EnterConfirmaYPasaTabSoloLoTecleado) {
  pruebas::EscritorioPrueba escritorio;
  FormaDePrueba f;
  f.Muestra();
  f.traza.clear();
  f.PulsaTecla(tecla::kEnter);
  EXPECT_EQ(f.traza, (Traza{"Enter ", "KeyUp 13"}));
  EXPECT_EQ(f.foco(), &f.boton);
  f.PulsaTecla(tecla::kTab, 1);
  EXPECT_EQ(f.foco(), &f.uno);
  f.traza.clear();
  f.PulsaTecla(tecla::kTab);
  EXPECT_EQ(f.traza, Traza{"KeyUp 9"});
  f.Enfoca(f.uno);
  f.PulsaCaracter(U'ñ');
  f.PulsaCaracter(U'x');
  f.PulsaTecla(tecla::kRetroceso);
  EXPECT_EQ(f.uno.text(), "ñ");
  f.traza.clear();
  f.PulsaTecla(tecla::kTab);
  EXPECT_EQ(f.traza, (Traza{"Enter ñ", "KeyUp 9"}));
  // A handler that sends the focus elsewhere keeps it there.
  f.uno.Enter = [&] { f.Enfoca(f.notas); };
  f.Enfoca(f.uno);
  f.PulsaTecla(tecla::kEnter);
  EXPECT_EQ(f.foco(), &f.notas);
  f.PulsaTecla(tecla::kEnter);
  EXPECT_EQ(f.notas.text(), "\n");
}

TEST(Forma, LaFormaVeLaTeclaAntesQueElGrid) {
  pruebas::EscritorioPrueba escritorio;
  FormaDePrueba f;
  f.Muestra();
  f.Enfoca(f.grid);
  f.traza.clear();
  f.PulsaTecla(tecla::kF6);
  EXPECT_EQ(f.traza, (Traza{"grid abajo 117", "KeyUp 117", "grid arriba 117"}));
  f.Enfoca(f.boton);
  f.traza.clear();
  f.PulsaTecla(tecla::kEspacio);
  f.PulsaTecla(tecla::kEnter);
  f.PulsaTecla(tecla::kEsc);
  EXPECT_EQ(f.traza, (Traza{"Click", "KeyUp 32", "Click", "KeyUp 13", "KeyUp 27"}));
  f.boton.enabled(false);
  f.traza.clear();
  f.PulsaTecla(tecla::kEnter);
  EXPECT_EQ(f.traza, Traza{"KeyUp 13"});
}

}  // namespace
