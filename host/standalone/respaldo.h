// Copies of a hotel's SQLite file: made while clerks work in it, kept by day, put back when it is damaged.
#pragma once

#include <atomic>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace autonomo {

struct OpcionesRespaldo {
  bool sustituye = false;                      // a file that is there already gives way
  bool despacio = false;                       // leaves the disk to others between its steps
  const std::atomic<bool>* termina = nullptr;  // once another thread sets it the copy fails, and leaves nothing
};

struct Respaldo {
  std::string ruta;
  std::int64_t reservaciones = 0, filas = 0;  // rows of all tables
};

// Copies the hotel as it stands when the copy begins, with all that is committed, also what is still in the log; who
// works in it is not held up. The copy appears under its name when it is whole: its pages checked, each table's rows
// counted against the hotel's; those may read it who may read the hotel's file. com::Error kArgumento when the name is
// taken, kDanada for a hotel that is damaged, kAjena for another file, kLlena, kSoloLectura, kBaseDatos otherwise.
Respaldo Respalda(const std::string& hotel, const std::string& copia, const OpcionesRespaldo& opciones);

// --- the hotel's folder of copies

// Where the hotel's copies are kept: parameter HT_RESPALDO_CARPETA, from the hotel's own folder on; its default when
// the hotel cannot be read.
std::string CarpetaDeCopias(const std::string& hotel);
// This desk's date and time, "AAAA-MM-DD_HHMMSS"; the real one: a clock that is set otherwise to try something would
// put its copies before or behind all others.
std::string Momento();
// A new copy there; momento, which its name holds: a date for the day's own copy, or one of Momento. Errors of
// Respalda.
Respaldo RespaldaEnSuCarpeta(const std::string& hotel, std::string_view momento, const OpcionesRespaldo& opciones);
// The copies there, the newest first.
std::vector<std::string> Copias(const std::string& hotel);
// The newest that is whole; nothing without one.
std::optional<std::string> UltimaBuena(const std::string& hotel);
// What follows an error's text: which copy is the last good one, and how to put it back.
std::string ComoVolver(const std::string& hotel);

// Makes the day's copy, "AAAA-MM-DD", unless there is one, and then removes those beyond the days that parameter
// HT_RESPALDO_DIAS keeps, the oldest first. Nothing when there is nothing to do. Errors of Respalda.
std::optional<Respaldo> RespaldaDia(const std::string& hotel, std::string_view dia, const OpcionesRespaldo& opciones);

struct Repuesto {
  Respaldo respaldo;
  std::vector<std::string> apartados;  // files that were there before, under their new names
};
// Puts a copy in the hotel's place, with the rights of the file that was there; that one, damaged or not, is kept
// beside it. com::Error kOcupada while a program has the hotel open; those of Respalda.
Repuesto Repone(const std::string& hotel, const std::string& copia);

}  // namespace autonomo
