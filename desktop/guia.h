// A first call, told and done: the tour of the demo hotel. Each step points at the real control, says what it is for
// and on "Siguiente" does it through the screens' own handlers, as a clerk would. While a step is shown nothing else
// can be touched; whoever skips the rest is left without a capture.
#pragma once

#include <QPointer>
#include <QRect>
#include <QString>
#include <functional>
#include <string>
#include <vector>

#include "desktop/escritorio_qt.h"

namespace vista {

class Velo;

class Guia {
 public:
  explicit Guia(EscritorioQt& escritorio) : escritorio_(escritorio) {}
  ~Guia();
  Guia(const Guia&) = delete;
  Guia& operator=(const Guia&) = delete;
  // Begins with the first step; nothing when a capture is open that the person wants to keep.
  void Empieza();
  bool EnMarcha() const { return viva_; }

 private:
  struct Paso {
    QString texto;
    std::function<QRect()> donde;  // in the window; null for none
    std::function<void()> hace;    // what "Siguiente" does
    bool enTablero = false;        // it is shown over the board, and hides it
  };

  void CreaPasos();
  void Muestra();
  void Sigue();
  void Salta();
  void Quita();
  void DejaSinCaptura();

  controles::Formulario& Principal() const { return *escritorio_.Principal(); }
  Ventana* VentanaDelPaso() const;
  QRect ZonaDe(const char* control) const;
  QRect ZonaDe(controles::Accion accion) const;
  QRect ZonaDelMenu() const;
  QRect ZonaDeCeldas(controles::Formulario& forma, int fila, int desde, int hasta) const;
  QRect ZonaDeNoches() const;  // on the board, of the room that was chosen
  QRect ZonaDeAdultos() const;
  // The first room that is free from tomorrow on; false when there is none.
  bool EligeHabitacion();
  int FilaEnTablero() const;  // of that room; -1 not shown
  void Comienza();
  void Teclea(const char* campo, const std::string& texto) const;
  void AbreTablero();
  void MarcaNoches();
  void CapturaAdultos() const;
  void Acepta();

  EscritorioQt& escritorio_;
  std::vector<Paso> pasos_;
  std::size_t actual_ = 0;
  bool viva_ = false;
  QPointer<Velo> velo_;
  controles::Formulario* tablero_ = nullptr;  // while it is shown
  com::Fecha llegada_, salida_;
  std::string habitacion_;
};

}  // namespace vista
