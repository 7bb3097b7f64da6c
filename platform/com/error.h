// The one exception type of the system.
//
// Every failure that a clerk may see is an Error: a number (the platform's own numbers below, or a database number), a
// description in Spanish that can be shown as it stands, and, for database failures, the statement that failed. The
// statement never reaches the screen; it is for the host's log.
#pragma once

#include <stdexcept>
#include <string>
#include <utility>

namespace com {

// Numbers that the platform's conversions, objects and record sets raise.
namespace error {
inline constexpr int kArgumento = 5;       // "Argumento o llamada a procedimiento no válidos"
inline constexpr int kDesbordamiento = 6;  // value out of the target type's range
inline constexpr int kSubindice = 9;       // row or column that does not exist
inline constexpr int kTipos = 13;          // value cannot be converted
inline constexpr int kSinObjeto = 91;      // object reference is not set
inline constexpr int kUsoDeNulo = 94;      // NULL where a value is needed
inline constexpr int kTamanio = 380;       // property value that a control refuses (negative size, ...)
inline constexpr int kMiembro = 438;       // late-bound member that does not exist
inline constexpr int kElemento = 3265;     // column that is not in the record set
inline constexpr int kCerrado = 3704;      // record set already closed
inline constexpr int kTransaccion = 3246;  // transaction call that does not fit the connection's state
inline constexpr int kSentencia = 102;     // statement refused before it ran (bad literal, untranslatable)
inline constexpr int kOcupada = 3006;      // database locked by another program
inline constexpr int kSoloLectura = 3027;  // database cannot be written
inline constexpr int kLlena = 3183;        // disk full
inline constexpr int kAjena = 3343;        // file is not a database of this system
inline constexpr int kDanada = 3049;       // database damaged, or its log lost: not worked in
inline constexpr int kRestriccion = 3022;  // constraint: duplicate key, room already held, ...
inline constexpr int kBaseDatos = 3146;    // any other database failure
inline constexpr int kEnDuda = 3151;       // a commit that nobody answered: whether it was done is not known
inline constexpr int kClase = 429;         // object cannot be created
inline constexpr int kInyectada = 9999;    // fault injected by a test script
}  // namespace error

class Error : public std::runtime_error {
 public:
  Error(int numero, const std::string& descripcion, std::string sentencia = {})
      : std::runtime_error(descripcion), numero_(numero), sentencia_(std::move(sentencia)) {}

  int Numero() const { return numero_; }
  // Spanish, UTF-8, fit for the clerk.
  std::string Descripcion() const { return what(); }
  // Empty unless a database statement failed.
  const std::string& Sentencia() const { return sentencia_; }

 private:
  int numero_;
  std::string sentencia_;
};

}  // namespace com
