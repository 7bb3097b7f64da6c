// A bridge between a client and the tests' server: counts round trips, and breaks down when it is told to.
#pragma once

#include <atomic>
#include <filesystem>
#include <mutex>
#include <optional>
#include <string>
#include <thread>

namespace pruebas {

// direccion: the address of a database at a socket of this machine.
class Puente {
 public:
  explicit Puente(const std::string& direccion);
  ~Puente();
  Puente(const Puente&) = delete;
  Puente& operator=(const Puente&) = delete;

  // The same database over the bridge.
  const std::string& direccion() const { return direccion_; }
  // How often the client has waited for the server since the last time.
  int Viajes() { return viajes_.exchange(0); }

  // The same of the last transaction that was committed, begin and commit counted.
  int ViajesDeTransaccion() const { return enTransaccion_; }

  enum class Lado { Cliente, Servidor };
  // Breaks the connection down at the client's next message that holds the text: before the server gets it, or when it
  // has answered and the client has not heard it. Once; "" any message.
  void Corta(const std::string& texto, Lado antesDe);
  // Whether new connections are let through.
  void Abre(bool abierto) { abierto_ = abierto; }

 private:
  void Atiende();
  void Pasa(int cliente);
  void Cuenta(const std::string& mensaje);
  // Whether the message is the one to break down at; then no other is.
  bool EsElCorte(const std::string& mensaje);

  std::filesystem::path carpeta_;
  std::string direccion_, puerto_, servidor_;
  int puerta_;
  std::atomic<bool> termina_{false}, abierto_{true};
  std::atomic<int> viajes_{0}, enTransaccion_{0};
  std::mutex candado_;  // of the next two
  std::optional<std::string> corte_;
  Lado antesDe_ = Lado::Servidor;
  int abierta_ = 0;  // round trips of the open transaction
  std::thread hilo_;
};

}  // namespace pruebas
