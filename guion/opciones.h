// Command lines: how all programs read their arguments, and what the programs that run scripts take.
#pragma once

#include <QCommandLineParser>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/standalone/anfitrion.h"

namespace guion {

// An option of a program, without its dashes.
struct Opcion {
  const char* nombre = nullptr;
  bool conValor = false;
};

// Arguments without the program's name: "--nombre valor" or "--nombre=valor" in any order, what stands alone, "--"
// before what only looks like an option. Every program also takes --ayuda (-h, --help), --version and --registro.
class Argumentos {
 public:
  // Error kArgumento for an option that is not there, one without its value, or more than `sueltos` words that stand
  // alone; none of these when help or version is asked for.
  Argumentos(const std::vector<std::string>& argumentos, const std::vector<Opcion>& opciones, int sueltos);

  bool Hay(const char* nombre) const { return lector_.isSet(QString::fromUtf8(nombre)); }
  // The last value given; nothing without the option.
  std::optional<std::string> Valor(const char* nombre) const;
  // The words that stand alone.
  std::vector<std::string> Sueltos() const;
  bool PideAyuda() const { return Hay("ayuda"); }
  bool PideVersion() const { return Hay("version"); }

 private:
  QCommandLineParser lector_;
};

extern const char* const kUsoGuion;

// What a program ends with.
inline constexpr int kTodoBien = 0, kConFallas = 1, kUsoErroneo = 2;
// The command line was not understood: com::Error kArgumento.
[[noreturn]] void UsoErroneo(const std::string& motivo);

// Whether an argument asks for the usage or the version: nobody needs to look on.
[[nodiscard]] bool PideTexto(std::string_view argumento);

// The database that --base or --conexion names, with a terminal to ask for its password. Error kArgumento for both, and
// for an address with a password in it.
autonomo::OpcionesConexion LeeBase(const Argumentos& argumentos);
// The database in the user's data folder, where no other is named.
std::string RutaBaseDelUsuario();

// A password, not shown while it is typed; nothing without a terminal.
[[nodiscard]] std::optional<std::string> PideEnLaTerminal(const std::string& pregunta);
// A user's password from the environment (RESERVAS_CONTRASENA) or from the first line of a file; never from the command
// line, which others can read. com::Error kArgumento, saying where to put it, when there is none, kSoloLectura for a
// file that cannot be read, or that others than its owner may read.
[[nodiscard]] std::string LeeContrasenaDeUsuario(const std::optional<std::string>& archivo);
// Who works on a base whose users have passwords, for a program that asks nobody.
std::function<std::string(autonomo::Conexion&)> Identifica(const std::string& usuario,
                                                           const std::optional<std::string>& archivo);

// Tells on the standard error what is to be known about the database that was opened.
void DiceAvisos(const char* programa, autonomo::ConexionDeMotor& conexion);

// The options of a host: base, conexion, demo, ahora, usuario, contrasena-de, por-celda.
std::vector<Opcion> OpcionesDeAnfitrion();
// Error kArgumento for wrong usage.
autonomo::Opciones LeeAnfitrion(const Argumentos& argumentos);

}  // namespace guion
