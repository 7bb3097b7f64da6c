// Runs the programs under test as processes of their own, in folders of their own.
#pragma once

#include <sys/types.h>

#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace pruebas {

struct Salida {
  int estado = -1;  // exit status, -1 when it was killed
  std::string texto, errores;
};

// A folder that is removed at the end.
class Carpeta {
 public:
  Carpeta();
  ~Carpeta();
  Carpeta(const Carpeta&) = delete;
  Carpeta& operator=(const Carpeta&) = delete;
  std::string Ruta(const std::string& nombre) const { return (ruta_ / nombre).string(); }
  // Writes a file and gives its path.
  std::string Escribe(const std::string& nombre, const std::string& contenido) const;

 private:
  std::filesystem::path ruta_;
};

// argumentos: the program first. matarMs: kill -9 after so many milliseconds; -1 never.
Salida Corre(const std::vector<std::string>& argumentos, const std::string& entrada = {}, int matarMs = -1);

// A program that is talked to through pipes, line by line.
class Dialogo {
 public:
  explicit Dialogo(const std::vector<std::string>& argumentos);
  ~Dialogo();
  Dialogo(const Dialogo&) = delete;
  Dialogo& operator=(const Dialogo&) = delete;
  void Di(const std::string& linea);
  // The next line; "" when none comes within ten seconds.
  std::string Oye();
  // Closes its input and gives its exit status.
  int Termina();

 private:
  pid_t pid_ = -1;
  int haciaEl_ = -1, desdeEl_ = -1;
  std::string sobrante_;
};

// The content of every table of a SQLite file: rows as text, sorted.
std::map<std::string, std::vector<std::string>> Tablas(const std::string& ruta);
// Runs a statement on a SQLite file; gives the first column of its rows.
std::vector<std::string> Sql(const std::string& ruta, const std::string& sentencia);

std::string Lee(const std::string& ruta);

}  // namespace pruebas
