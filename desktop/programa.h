// The program `reservas`: command line, database, host, component, desktop.
#pragma once

#include <QApplication>
#include <QString>
#include <optional>
#include <string>

#include "desktop/estilo.h"
#include "host/standalone/anfitrion.h"
#include "platform/controls/formulario.h"

namespace vista {

// Exit statuses.
inline constexpr int kBien = 0, kFalla = 1, kMalUso = 2;

struct OpcionesPrograma {
  autonomo::Opciones anfitrion;
  std::optional<std::string> guion;
  std::optional<std::string> registro;
  Tema tema = Tema::Sistema;
  bool elegido = false;  // the hotel was chosen in the menu: it is the one that opens next time
};

// Whether there is a display to draw on; says why not and gives an exit status otherwise. Before QApplication, which
// aborts without one.
int RevisaPantalla(int argc, char** argv);

// Path of the database in the user's data folder; the folder is made. com::Error kSoloLectura when it cannot be.
std::string BaseDelUsuario();

class EscritorioQt;
class Mostrador;
// Gives the windows what the host offers beside the screens: searches, catalogues, records, printed confirmations, and
// the front desk.
void ConectaAnfitrion(EscritorioQt& escritorio, autonomo::Anfitrion& anfitrion, Mostrador& mostrador);

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
  int CorreVentana(OpcionesPrograma opciones);
  // Ends the session for one at the hotel that the person wants, once an open capture may go.
  void VaAOtroHotel(bool nuevo, const std::string& abierto, EscritorioQt& escritorio);
  int CorreGuion(const OpcionesPrograma& opciones);

  QApplication& aplicacion_;
  std::optional<std::string> otroHotel_;  // where the next session is to be
};

}  // namespace vista
