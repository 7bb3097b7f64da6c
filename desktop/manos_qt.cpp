#include "desktop/manos_qt.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPlainTextEdit>
#include <QPointer>

#include "desktop/escala.h"
#include "desktop/guarda.h"
#include "desktop/teclas.h"
#include "desktop/vista_barra.h"
#include "desktop/vista_grid.h"
#include "guion/usable.h"
#include "platform/com/error.h"
#include "platform/regional/regional.h"

namespace vista {

using controles::Clase;

namespace {

[[noreturn]] void NoSirve(const controles::Control& control, const char* motivo) {
  throw com::Error(com::error::kArgumento, "«" + control.nombre() + "» " + motivo);
}

}  // namespace

Ventana& ManosQt::VentanaDe(const controles::Formulario& formulario) const {
  Ventana* v = escritorio_.ventana(formulario);
  if (v == nullptr) {
    throw com::Error(com::error::kArgumento, "La ventana «" + formulario.nombre() + "» no está a la vista");
  }
  return *v;
}

Vista& ManosQt::VistaDe(const controles::Control& control) const {
  Vista* v = VentanaDe(control.formulario()).vista(control);
  if (v == nullptr) NoSirve(control, "no está a la vista");
  return *v;
}

VistaGrid& ManosQt::VistaDe(const controles::Grid& grid) const {
  auto* v = Como<VistaGrid>(&VistaDe(static_cast<const controles::Control&>(grid)));
  if (v == nullptr) NoSirve(grid, "no se muestra en renglones");
  return *v;
}

void ManosQt::Haz(const std::function<void()>& accion) const {
  for (QDialog* ventana : Mostrador()) ventana->hide();
  HazAlFrente(accion);
}

void ManosQt::TerminaEdicion(controles::Formulario& formulario, const controles::Control* destino) const {
  if (VentanaDe(formulario).TerminaEdicion(destino)) return;
  const controles::Control* foco = formulario.foco();
  if (const auto* grid = controles::Como<controles::Grid>(foco)) guion::RechazaSalida(*grid);
  throw com::Error(com::error::kTamanio, "«" + (foco == nullptr ? formulario.nombre() : foco->nombre()) +
                                             "» tiene una fecha que no se puede leer");
}

void ManosQt::Enfoca(controles::Control& control) {
  Haz([&] {
    TerminaEdicion(control.formulario(), &control);
    control.formulario().Enfoca(control);
  });
}

void ManosQt::Texto(controles::Control& control, const std::string& texto) {
  guion::RevisaEntrada(control);
  Enfoca(control);
  if (control.clase() != Clase::LookupField && control.clase() != Clase::CampoNotas) {
    NoSirve(control, "no es un campo de texto");
  }
  Haz([&] {
    QWidget* w = VistaDe(control).foco();
    PreparaTexto(w, true);
    EnviaTexto(w, Q(texto));
  });
}

void ManosQt::Confirma(controles::Control& control) {
  guion::RevisaEntrada(control);
  Enfoca(control);
  Tecla(control.formulario(), controles::tecla::kEnter, 0);
}

void ManosQt::PonFecha(controles::DateField& control, com::Fecha fecha) {
  guion::RevisaEntrada(control);
  Enfoca(control);
  Haz([&] {
    Vista& v = VistaDe(control);
    PreparaTexto(v.foco(), true);
    EnviaTexto(v.foco(), Q(regional::FechaCorta(fecha)));
    v.Entrega();
  });
}

void ManosQt::Clic(controles::Control& control) {
  guion::RevisaUsable(control);
  Enfoca(control);
  if (control.clase() != Clase::Boton && control.clase() != Clase::Casilla && control.clase() != Clase::Opcion) {
    NoSirve(control, "no es un botón, una opción ni una casilla");
  }
  Haz([&] {
    QWidget* w = VistaDe(control).foco();
    EnviaClic(w, QPoint(w->height() / 2, w->height() / 2));
  });
}

void ManosQt::Tecla(controles::Formulario& formulario, int codigo, int mayus) {
  Haz([&] {
    Ventana& ventana = VentanaDe(formulario);
    controles::Control* foco = formulario.foco();
    if (foco == nullptr || !foco->PuedeEnfocarse()) {
      return EnviaTecla(&ventana, TeclaQt(codigo), ModificadoresDe(mayus));
    }
    const bool borra = codigo == controles::tecla::kSupr || codigo == controles::tecla::kRetroceso;
    if (borra && foco->clase() == Clase::DateField) return;  // it takes whole dates only
    QWidget* w = VistaDe(*foco).foco();
    // A key of a script works on the whole text, or on its end.
    PreparaTexto(w, codigo == controles::tecla::kSupr && foco->clase() == Clase::LookupField);
    const QString texto =
        foco->clase() == Clase::CampoNotas && codigo == controles::tecla::kEnter ? QStringLiteral("\r") : QString();
    EnviaTecla(w, TeclaQt(codigo), ModificadoresDe(mayus), texto);
  });
}

void ManosQt::Caracter(controles::Formulario& formulario, char32_t caracter) {
  if (caracter < 32) return Tecla(formulario, static_cast<int>(caracter), 0);
  controles::Control* foco = formulario.foco();
  // A date field takes whole dates only.
  if (foco == nullptr || !foco->PuedeEnfocarse() || foco->clase() == Clase::DateField) return;
  Haz([&] {
    QWidget* w = VistaDe(*foco).foco();
    PreparaTexto(w, false);
    EnviaTecla(w, caracter == U' ' ? Qt::Key_Space : Qt::Key_unknown, Qt::NoModifier, QString::fromUcs4(&caracter, 1));
  });
}

void ManosQt::Accion(controles::ScreenToolbar& barra, controles::Accion accion) {
  guion::RevisaUsable(barra);
  if (!controles::Abandona(accion)) TerminaEdicion(barra.formulario(), nullptr);
  if (!barra.Ofrece(accion)) return barra.Pulsa(accion);  // says why not
  Haz([&] {
    const auto* vista = Como<VistaBarra>(&VistaDe(barra));
    QToolButton* boton = vista == nullptr ? nullptr : vista->boton(accion);
    if (boton == nullptr) NoSirve(barra, "no tiene ese botón");
    EnviaClic(boton, boton->rect().center());
  });
}

void ManosQt::PulsaCelda(VistaGrid& vista, int fila, int columna) const {
  const QRect zona = vista.ZonaCelda(fila, columna);
  QWidget* tabla = vista.tabla(columna)->viewport();
  EnviaClic(tabla, tabla->mapFrom(vista.widget(), zona.center()));
}

bool ManosQt::Celda(controles::Grid& grid, int fila, int columna, const std::string& valor) {
  guion::RevisaUsable(grid);
  guion::RevisaCeldaEscribible(grid, fila, columna);
  Enfoca(grid);
  VistaGrid& vista = VistaDe(grid);
  bool libre = false;
  Haz([&] {
    if (fila < 0) {
      if (!grid.NuevaFila()) return;
      fila = grid.Filas() - 1;
    }
    PulsaCelda(vista, fila, columna);
    if (grid.fila() != fila || grid.columna() != columna) return;
    grid.formulario().Enfoca(grid);  // the cell itself, not what the screen may have laid over it
    EnviaTecla(vista.foco(), Qt::Key_A, Qt::ControlModifier);
    EnviaTexto(vista.foco(), Q(valor));
    libre = grid.Deja();
  });
  return libre;
}

bool ManosQt::Ve(controles::Grid& grid, int fila, int columna) {
  guion::RevisaUsable(grid);
  guion::RevisaCelda(grid, fila, columna);
  Enfoca(grid);
  bool llego = false;
  // By the keyboard: a click would mark a night of the board.
  Haz([&] { llego = grid.VaA(fila, columna); });
  return llego;
}

bool ManosQt::Borra(controles::Grid& grid, int fila) {
  guion::RevisaUsable(grid);
  Enfoca(grid);
  const int antes = grid.Filas();
  Haz([&] {
    if (grid.fila() == fila) {
      EnviaTecla(VistaDe(grid).foco(), Qt::Key_Delete, Qt::ControlModifier);
    } else {
      grid.Borra(fila);
    }
  });
  return grid.Filas() < antes;
}

void ManosQt::ClicCelda(controles::Grid& grid, int fila, int columna) {
  guion::RevisaUsable(grid);
  guion::RevisaCelda(grid, fila, columna);
  Enfoca(grid);
  Haz([&] { PulsaCelda(VistaDe(grid), fila, columna); });
}

void ManosQt::SeleccionaFila(controles::Grid& grid, int fila) {
  guion::RevisaUsable(grid);
  Enfoca(grid);
  Haz([&] {
    VistaGrid& vista = VistaDe(grid);
    const QRect zona = vista.ZonaEncabezado(fila);
    if (zona.isEmpty()) return grid.SeleccionaFila(fila);  // says why not
    EnviaClic(vista.encabezadoFilas(), zona.center());
  });
}

void ManosQt::Tamano(controles::Formulario& formulario, int ancho, int alto) {
  Haz([&] { VentanaDe(formulario).FijaTamano(ancho, alto); });
}

void ManosQt::Foto(controles::Formulario& formulario, const std::string& ruta) {
  HazAlFrente([&] {
    QWidget* encima = nullptr;
    for (QDialog* ventana : Mostrador()) {
      if (ventana->isVisible()) encima = ventana;
    }
    QWidget& v = encima != nullptr ? *encima : VentanaDe(formulario);
    QApplication::processEvents();
    if (!v.grab().save(Q(ruta), "PNG")) {
      throw com::Error(com::error::kArgumento, "No se pudo escribir la imagen " + ruta);
    }
  });
}

}  // namespace vista
