// Drafts of what users had in capture, kept in files of their state folder until the capture is stored or given up:
// what a program that was killed leaves behind.
//
// Each program has a file of its own, kept by a lock that ends with the program, so that two programs of one user never
// write one draft. A file is replaced whole and forced to disk; a checksum tells one that was damaged.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/com/fecha.h"

namespace autonomo {

struct BorradorHallado {
  std::string ruta;
  std::string contenido;  // "" for one that cannot be read
  com::Fecha cuando{};    // when it was written
  int esquema = 0;        // version of the database's definition then
  std::string motivo;     // why it cannot be read, in Spanish
};

class Borradores {
 public:
  // base: what the database is called, its path or address; usuario: the login. carpeta is made when it is needed.
  Borradores(std::string base, std::string usuario, std::string carpeta);
  ~Borradores();
  Borradores(const Borradores&) = delete;
  Borradores& operator=(const Borradores&) = delete;

  // Replaces this program's draft. com::Error kSoloLectura or kLlena when it cannot be written; the former one stays.
  void Guarda(std::string_view contenido, com::Fecha cuando);
  // This program's draft goes.
  void Olvida();
  // The next draft that a program which is gone left behind; it is this program's own from then on. One that cannot be
  // read is set aside under the name that it is given with, and is no longer found. Nothing when there are no more.
  [[nodiscard]] std::optional<BorradorHallado> Toma();
  // Sets the draft taken last aside, like one that cannot be read; gives its new name.
  [[nodiscard]] std::string ApartaIlegible();
  // The draft taken last stays for another session.
  void Suelta();

 private:
  [[nodiscard]] std::string Duenos() const;  // the database's and the user's names, a line each
  [[nodiscard]] std::string Ruta(int numero) const;
  [[nodiscard]] bool Ocupa(int numero);  // locks the place; false when another program has it

  std::string base_, usuario_, carpeta_, nombre_;
  int siguiente_ = 1;  // where Toma goes on
  int numero_ = 0;     // own place, 0 none
  int candado_ = -1;
};

}  // namespace autonomo
