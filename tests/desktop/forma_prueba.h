// A small form with one control of each kind, shown in a real window.
#pragma once

#include <QApplication>
#include <QCheckBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <QToolButton>
#include <string>
#include <vector>

#include "desktop/escritorio_qt.h"
#include "desktop/vista_barra.h"
#include "desktop/vista_campos.h"
#include "desktop/vista_grid.h"
#include "platform/controls/barra.h"
#include "platform/controls/grid.h"

namespace pruebas {

inline controles::DisenoLookup Diseno(bool mayusculas, int largo) {
  controles::DisenoLookup d;
  d.idconsulta = "CLIENTE";
  d.mayusculas = mayusculas;
  d.largo = largo;
  return d;
}

inline controles::DisenoLookup SoloMuestra(controles::TipoDato tipo = controles::TipoDato::Texto) {
  controles::DisenoLookup d;
  d.locked = true;
  d.tipo = tipo;
  return d;
}

inline std::vector<controles::Columna> Columnas() {
  std::vector<controles::Columna> columnas;
  const auto agrega = [&](const char* clave, controles::TipoColumna tipo, int ancho, bool bloqueada) {
    controles::Columna c;
    c.clave = c.titulo = clave;
    c.tipo = tipo;
    c.ancho = ancho;
    c.bloqueada = bloqueada;
    columnas.push_back(c);
  };
  agrega("Clave", controles::TipoColumna::Texto, 1164, false);
  agrega("Nombre", controles::TipoColumna::Texto, 2000, true);
  agrega("FECHAI", controles::TipoColumna::Fecha, 2000, false);
  agrega("Adultos", controles::TipoColumna::Entero, 1200, false);
  agrega("Total", controles::TipoColumna::Doble, 2000, true);
  return columnas;
}

class Forma : public controles::Formulario {
 public:
  Forma() : Formulario("frmPrueba", "Prueba", 12000, 7500) {
    opDos.contenedor(marco);
    opUno.contenedor(marco);
    dpFechaGrid.contenedor(pcFecha);
    pcFecha.visible(false);
    txtClave.descripcion("Cliente que paga");
    ssRenglones.descripcion("Habitaciones");
  }

  controles::ScreenToolbar Controles{
      *this,
      "Controles",
      {0, 0, 12000, 600},
      {controles::Accion::Nuevo, controles::Accion::Aceptar, controles::Accion::Limpiar}};
  controles::LookupField txtClave{*this, "txtClave", {150, 750, 1800, 330}, Diseno(true, 6)};
  controles::LookupField txtNombre{*this, "txtNombre", {2100, 750, 3000, 330}, SoloMuestra()};
  controles::LookupField txtTotal{*this, "txtTotal", {5250, 750, 1800, 330}, SoloMuestra(controles::TipoDato::Numero)};
  controles::DateField dpFecha{*this, "dpFecha", {7200, 750, 1800, 330}};
  controles::CampoNotas txtNotas{*this, "txtNotas", {150, 1200, 3000, 900}};
  controles::Boton cmdBoton{*this, "cmdBoton", {3300, 1200, 1500, 330}, "Púlsame"};
  controles::Casilla chkCasilla{*this, "chkCasilla", {3300, 1650, 1500, 330}, "Casilla"};
  controles::Marco marco{*this, "marco", {5250, 1200, 4500, 900}, "Opciones"};
  controles::Opcion opUno{*this, "opUno", {150, 400, 1500, 330}, "Uno", true};
  controles::Opcion opDos{*this, "opDos", {1800, 400, 1500, 330}, "Dos"};
  controles::Etiqueta lblOcupado{*this, "lblOcupado", {9900, 1200, 900, 255}, "Ocupado:", "OCUPADO"};
  controles::Etiqueta muestraOcupado{*this, "muestraOcupado", {10900, 1200, 480, 255}, ""};
  controles::Grid ssRenglones{*this, "ssRenglones", {150, 2250, 11700, 4000}, Columnas()};
  controles::Marco pcFecha{*this, "pcFecha", {0, 0, 2000, 265}};
  controles::DateField dpFechaGrid{*this, "dpFechaGrid", {0, 0, 2000, 298}};
};

// The form on the screen.
class EnPantalla {
 public:
  EnPantalla() {
    controles::FijaEscritorio(&escritorio);
    forma.Muestra();
    static_cast<void>(QTest::qWaitForWindowActive(escritorio.ventana(forma)));
  }
  ~EnPantalla() {
    forma.Descarga();
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    controles::FijaEscritorio(nullptr);
  }

  vista::Ventana& ventana() { return *escritorio.ventana(forma); }
  template <class W>
  W* widget(const controles::Control& control) {
    return qobject_cast<W*>(ventana().vista(control)->foco());
  }
  vista::VistaGrid& renglones() { return dynamic_cast<vista::VistaGrid&>(*ventana().vista(forma.ssRenglones)); }

  vista::EscritorioQt escritorio;
  Forma forma;
};

}  // namespace pruebas
