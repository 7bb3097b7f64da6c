#include "desktop/senales.h"

#include <sys/socket.h>
#include <unistd.h>

#include <QSocketNotifier>
#include <cerrno>
#include <csignal>
#include <utility>

namespace vista {

namespace {

int avisos[2] = {-1, -1};  // a handler may do no more than write

void Anota(int) {
  const int error = errno;
  const char aviso = 1;
  [[maybe_unused]] const auto escritos = write(avisos[0], &aviso, sizeof aviso);
  errno = error;
}

void Arma() {
  struct sigaction accion {};
  accion.sa_handler = Anota;
  accion.sa_flags = SA_RESTART | static_cast<int>(SA_RESETHAND);
  for (const int senal : {SIGTERM, SIGHUP, SIGINT}) {
    struct sigaction antes {};
    sigaction(senal, nullptr, &antes);
    if (antes.sa_handler != SIG_IGN) sigaction(senal, &accion, nullptr);  // whoever started it may have it ignored
  }
}

}  // namespace

void AtiendeSenales(QObject* dueno, std::function<void()> alPedirFin) {
  if (avisos[0] < 0 && socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, avisos) != 0) return;
  auto* lectura = new QSocketNotifier(avisos[1], QSocketNotifier::Read, dueno);
  QObject::connect(lectura, &QSocketNotifier::activated, dueno, [lectura, alPedirFin = std::move(alPedirFin)] {
    char aviso = 0;
    if (read(avisos[1], &aviso, sizeof aviso) != sizeof aviso) return;
    lectura->setEnabled(false);
    alPedirFin();
    // A session that closes sends several; they have been answered.
    while (recv(avisos[1], &aviso, sizeof aviso, MSG_DONTWAIT) > 0) {
    }
    lectura->setEnabled(true);
    Arma();
  });
  Arma();
}

}  // namespace vista
