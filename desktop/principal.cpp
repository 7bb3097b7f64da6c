// reservas: the reservation screen on the desktop, with the stand-alone host behind it.
#include <QApplication>

#include "desktop/programa.h"
#include "host/standalone/proceso.h"

int main(int argc, char** argv) {
  autonomo::ProtegeMemoria();
  if (const int codigo = vista::RevisaPantalla(argc, argv); codigo != 0) return codigo;
  QApplication aplicacion(argc, argv);
  QApplication::setApplicationName(QStringLiteral("reservas"));
  QApplication::setApplicationDisplayName(QStringLiteral("Reservaciones"));
  return vista::Programa(aplicacion).Corre();
}
