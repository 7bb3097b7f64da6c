// What is looked at when a SQLite database is opened, before work goes on in it: its log, its definition, its pages.
#pragma once

#include <atomic>
#include <cstdint>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "platform/ado/ado.h"

struct sqlite3;

namespace autonomo {

// Marks of a file of this system (application_id): "KV07", closed whole in one file; "KV08", in use, what the file says
// while part of it is in the log beside it; "KV09", what the log says. So a file that says "KV08" without a log has
// lost it, and one to which another tool has brought the whole log says "KV09". "KV0:" is a copy (respaldo.h).
inline constexpr std::int64_t kMarca = 0x4B563037, kMarcaEnUso = 0x4B563038, kMarcaBitacora = 0x4B563039,
                              kMarcaCopia = 0x4B56303A;
// Whether the file is a hotel of this system, of any version.
bool EsHotel(sqlite3* base);

// Marks a file that is now used, and keeps the marks right when the log is brought into the file from time to time.
// Closed whole again by QuitaMarcas.
void Marca(sqlite3* base, int esperaMs);
void QuitaMarcas(sqlite3* base);

// com::Error kDanada when the log holds committed work behind a place that cannot be read: the engine would pass
// over it without a word. ruta: the database's file, not open in this process yet, or open elsewhere too.
void RevisaBitacora(const std::string& ruta);

// com::Error kDanada when the open file is one in use whose log is gone or empty.
void ExigeBitacora(sqlite3* base);

// com::Error kDanada when a table or a column of the present version is missing. Only reads.
void ExigeTablas(sqlite3* base);

// Brings a database of an earlier version up to the present one; puts back guards and indexes that are missing or were
// changed. Gives what the clerk is to know. com::Error kDanada as ExigeTablas, or when what was brought forward is not
// whole.
std::vector<std::string> Completa(sqlite3* base);

// What is told of guards that somebody dropped, on any engine: which; and that they are back.
std::string FaltabanGuardas(const std::vector<std::string>& guardas);
std::string GuardasPuestas(const std::vector<std::string>& guardas);

// Rooms that two live reservations hold on one night, ten at most, on any engine; their list, a line each, "" without.
extern const std::string_view kNochesDobles;
std::string ListaNochesDobles(ado::Recordset& filas);

// The engine's own check of the pages, with the indexes: the first thing that is wrong, "" nothing. The indexes of an
// earlier version are left out: they are ordered anew when it is brought forward.
std::string RevisaPaginas(sqlite3* base);

// What is checked of the pages when a file is opened, before anything is written to it: its checksums; without any (it
// was left open, another program is or was in it) each page and index by the engine, a large file behind the clerk's
// back.
class RevisionDePaginas {
 public:
  // base: not in a transaction, nothing written yet. remedio: what is added to the error of a large file.
  // com::Error kDanada when it is damaged.
  RevisionDePaginas(sqlite3* base, std::string ruta, std::string (*remedio)(const std::string& ruta));
  ~RevisionDePaginas();
  RevisionDePaginas(const RevisionDePaginas&) = delete;
  RevisionDePaginas& operator=(const RevisionDePaginas&) = delete;

  // A large one from now on, in a thread. What it finds is noted beside the file.
  void Sigue();
  // Ends that thread, at once.
  void Termina();
  // com::Error kDanada once the check has found damage.
  void Exige() const;
  bool Danada() const { return danada_; }
  // Whether all of the file was found whole.
  bool Entera() const { return entera_; }

 private:
  void Recorre(sqlite3* base);

  std::string ruta_;
  std::string (*remedioDe_)(const std::string& ruta);
  std::atomic<bool> termina_ = false;
  std::atomic<bool> danada_ = false;
  std::atomic<bool> entera_ = false;
  std::string remedio_;  // stands before danada_ is set
  std::thread hilo_;
};

}  // namespace autonomo
