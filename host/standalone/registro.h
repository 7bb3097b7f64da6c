// The program's log: what support staff read to answer "what happened at 10:42". Starts, messages by their identifier,
// operations of the host and statements that failed, what was written and what was slow. Never a value of a statement
// nor the text of a message: either may hold a guest's or a card's data.
//
// One log for the process. Its lines are whole even when several programs write to one file.
#pragma once

#include <chrono>
#include <exception>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>

#include "platform/ado/texto_sql.h"

namespace autonomo::registro {

// Where the user's programs keep what is no data: this log, drafts.
std::string CarpetaDeEstado();

// Appends to the file from now on; a file that has grown past a megabyte is first set aside as ".1", the three before
// it as ".2" to ".4". com::Error kSoloLectura for one that cannot be written.
void Abre(const std::string& ruta);
// The file in the user's state folder. Where it cannot be made the program goes on without a log.
void AbreDelUsuario();
void Cierra();
bool Abierto();

// From Comienza to its end the program's run stands in the log: how it began, and that it ended.
class Sesion {
 public:
  Sesion() = default;
  ~Sesion();
  Sesion(const Sesion&) = delete;
  Sesion& operator=(const Sesion&) = delete;
  // ruta: the log that was asked for; without one it is the user's, and none for a database in memory. Errors of Abre.
  void Comienza(const std::string& programa, const std::string& base, const std::optional<std::string>& ruta);
};

// One line, with date, time and process before it; nothing without a log. Line breaks become blanks.
void Anota(std::string_view texto);

// The statement with "?" for each literal and number; where it is known which parts are values, for these whatever they
// hold.
std::string SinValores(std::string_view sentencia);
std::string SinValores(const ado::TextoSQL& sentencia);

using Instante = std::chrono::steady_clock::time_point;
// Sentencia: std::string_view or ado::TextoSQL.
template <class Sentencia>
void AnotaSentencia(const Sentencia& sentencia, Instante desde);
template <class Sentencia>
void AnotaFalla(const Sentencia& sentencia, Instante desde, const std::exception& falla);
// A failure that nothing trapped.
void AnotaFalla(const std::exception& falla);
// What the engine itself says of a failure, by its own codes.
void AnotaMotor(std::string_view codigo);

// " por la falla N" inside the handler of a failure, else "".
std::string PorLaFalla();

template <class Sentencia, class Accion>
auto MideUna(const Sentencia& sentencia, Accion&& accion) {
  if (!Abierto()) return accion();
  const Instante desde = std::chrono::steady_clock::now();
  try {
    if constexpr (std::is_void_v<decltype(accion())>) {
      accion();
      AnotaSentencia(sentencia, desde);
    } else {
      auto resultado = accion();
      AnotaSentencia(sentencia, desde);
      return resultado;
    }
  } catch (const std::exception& e) {
    AnotaFalla(sentencia, desde, e);
    throw;
  }
}

// Runs what a statement asks for, and notes it when it fails, writes or takes long.
template <class Accion>
auto Mide(std::string_view sentencia, Accion&& accion) {
  return MideUna(sentencia, accion);
}
template <class Accion>
auto Mide(const ado::TextoSQL& sentencia, Accion&& accion) {
  return MideUna(sentencia, accion);
}

// Stands at the beginning of an operation of the host; notes its name when an error leaves it, and when it refuses what
// it was asked for.
class Operacion {
 public:
  explicit Operacion(const char* nombre) : nombre_(nombre) {}
  ~Operacion();
  Operacion(const Operacion&) = delete;
  Operacion& operator=(const Operacion&) = delete;
  void AnotaRechazo() const;

 private:
  const char* nombre_;
  int antes_ = std::uncaught_exceptions();
};

}  // namespace autonomo::registro
