// The program `reservas`: command line, database, host, component, desktop.
#pragma once

#include <QApplication>
#include <optional>
#include <string>

#include "desktop/opciones.h"

namespace autonomo {
class Anfitrion;
}  // namespace autonomo

namespace vista {

// Exit statuses.
inline constexpr int kBien = 0, kFalla = 1, kMalUso = 2;

// Whether there is a display to draw on; says why not and gives an exit status otherwise. Before QApplication, which
// aborts without one.
int RevisaPantalla(int argc, char** argv);

class EscritorioQt;
class Guia;

class Programa {
 public:
  explicit Programa(QApplication& aplicacion) : aplicacion_(aplicacion) {}
  // Runs the program to its end; gives its exit status.
  int Corre();

 private:
  void Viste(const OpcionesPrograma& opciones);  // size and colours, for the screen that there is
  // Under the log, with a failure told.
  int CorreAnotando(const OpcionesPrograma& opciones);
  // Sessions one after the other: of another user, or at another hotel.
  int CorreSesiones(const OpcionesPrograma& opciones);
  // One session and its windows; gives why it ended: an exit status, kOtraSesion or kOtroUsuario. What is raised comes
  // before the windows are up: there was no session.
  int CorreVentana(OpcionesPrograma opciones);
  // What a session alone offers: other hotels; at the one to practise in, the tour.
  void AmpliaMenu(autonomo::Anfitrion& anfitrion, EscritorioQt& escritorio, Guia& guia);
  // Ends the session for one at the hotel that the person wants, once an open capture may go.
  void VaAOtroHotel(bool nuevo, const std::string& abierto, EscritorioQt& escritorio);
  int CorreGuion(const OpcionesPrograma& opciones);

  QApplication& aplicacion_;
  std::optional<std::string> otroHotel_;  // where the next session is to be
};

}  // namespace vista
