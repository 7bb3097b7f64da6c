// A program of one's own with the reservation screen in it: a host gives the services, the desktop the windows, the
// component the screens. With a path as its argument it leaves a picture of the window there and ends.
#include <QApplication>
#include <QWidget>

#include "desktop/escritorio_qt.h"
#include "guion/componente.h"
#include "host/standalone/anfitrion.h"

int main(int argc, char** argv) {
  const QApplication programa(argc, argv);
  autonomo::Opciones opciones;
  opciones.demo = true;
  autonomo::Anfitrion anfitrion(opciones);  // or services of one's own, as host/contract/servicios.h asks for them
  anfitrion.RegistraClases();
  vista::EscritorioQt escritorio;
  controles::FijaEscritorio(&escritorio);
  escritorio.alTerminar = [] { QApplication::quit(); };
  guion::Componente componente;
  componente.Abre(anfitrion.Padre());
  if (argc > 1) return escritorio.Frente()->grab().save(QString::fromLocal8Bit(argv[1])) ? 0 : 1;
  return QApplication::exec();
}
