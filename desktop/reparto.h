// Mails leave while the program runs, once the hotel has a mail server.
#pragma once

#include <QObject>
#include <memory>

#include "host/standalone/anfitrion.h"
#include "host/standalone/cartero.h"

namespace vista {

// Starts the thread that delivers as soon as the parameter CORREO_SERVIDOR is set; looks at it from time to time. Not
// for a database in memory, which no thread of its own can open.
class Reparto : public QObject {
 public:
  Reparto(autonomo::Anfitrion& anfitrion, const autonomo::OpcionesConexion& base);

 private:
  void Revisa();

  autonomo::Anfitrion& anfitrion_;
  autonomo::OpcionesConexion base_;
  std::unique_ptr<autonomo::Cartero> cartero_;
};

}  // namespace vista
