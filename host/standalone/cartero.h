// Delivers the outbox: once, or as a thread with a connection of its own.
#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <thread>

#include "host/standalone/conexion.h"
#include "host/standalone/smtp.h"

namespace autonomo {

// How many mails a round dealt with.
struct Ronda {
  int enviados = 0;
  int pendientes = 0;  // to be tried again
  int fallidos = 0;    // refused, waited too long, or nobody knows
  std::string falla;   // what became of the first of those, in Spanish
};
// Tries each mail whose time has come, while sigue says so. Letters are drawn: needs a QGuiApplication.
Ronda Reparte(Conexion& conexion, const Reloj& reloj, const ServidorCorreo& servidor,
              const std::function<bool()>& sigue);

class Cartero {
 public:
  struct Opciones {
    OpcionesConexion base;
    Reloj reloj;
    std::optional<std::string> contrasena;  // file of the password (servidor_correo.h)
    // What is to be known about the database (ConexionDeMotor::TomaAvisos), and of mails that nobody tries again;
    // called in the thread.
    std::function<void(const std::string&)> avisa;
    // What else is to be queued before a round, by whoever is to do it; a failure keeps no mail back, and it is not
    // called again for an hour.
    std::function<void(const std::shared_ptr<Conexion>&, com::Fecha ahora)> antes;
  };
  // Begins to deliver. A failure (no server configured, database gone) is noted in the log, and tried again.
  explicit Cartero(Opciones opciones);
  // Ends after the mail that is being sent.
  ~Cartero();
  Cartero(const Cartero&) = delete;
  Cartero& operator=(const Cartero&) = delete;

  // Why nothing leaves, in Spanish; "" when nothing keeps it.
  std::string Impedimento() const;

 private:
  void Trabaja();
  void Vuelta(std::shared_ptr<Conexion>& conexion);
  void EncolaAntes(const std::shared_ptr<Conexion>& conexion);
  void Apunta(const std::string& impedimento);
  bool Espera();

  Opciones opciones_;
  mutable std::mutex candado_;
  std::condition_variable aviso_;
  bool termina_ = false;
  std::string impedimento_;
  std::chrono::steady_clock::time_point antesDeNuevo_;
  std::thread hilo_;
};

}  // namespace autonomo
