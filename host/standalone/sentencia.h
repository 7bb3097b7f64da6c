// A prepared statement on SQLite's own interface.
//
// QtSql opens and closes the database; the handle is the driver's own. Its queries are not used: they carry every text
// as QVariant and UTF-16, and the board's 27,000 small counts took 1.2 to 1.7 times as long through a prepared
// QSqlQuery as through SQLite's interface, before any work of ours. Through the connection, splitting and record sets
// included, they take 1.1 to 1.3 times as long.
#pragma once

#include <sqlite3.h>

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/ado/ado.h"

namespace autonomo {

class Sentencia {
 public:
  // sql: engine text, one statement; fechas: further column names (case-blind) that hold dates, beside the schema's.
  // original: the text that errors carry. resto, when given, takes what follows the statement.
  Sentencia(sqlite3* base, std::string_view sql, std::vector<std::string> fechas, std::string_view original,
            std::string_view* resto = nullptr);

  // Value of parameter i, from 1. The text of the first form must live until Corre has returned.
  void Liga(int i, std::string_view texto);
  void LigaCopia(int i, std::string_view texto);
  // Empty and NULL bind NULL; Error kTipos for an object.
  void Liga(int i, const com::Variant& valor);
  // Whether it changes nothing in the database.
  bool SoloLee() const { return sqlite3_stmt_readonly(s_.get()) != 0; }
  int Parametros() const { return sqlite3_bind_parameter_count(s_.get()); }

  // Runs it, reads all rows and leaves it ready to be bound again. Dates come as dates, whole numbers of 32 bits as
  // such, others as doubles, the rest as text. com::Error with the original.
  ado::RecordsetPtr Corre(std::string_view original);

 private:
  struct Cierra {
    void operator()(sqlite3_stmt* s) const { sqlite3_finalize(s); }
  };
  void LeeColumnas();
  void AgregaRenglon(std::vector<com::Variant>& celdas) const;
  com::Variant Celda(int i) const;

  sqlite3* base_;
  std::vector<std::string> fechas_;
  std::unique_ptr<sqlite3_stmt, Cierra> s_;
  std::shared_ptr<const ado::Recordset::Columnas> columnas_;
  std::vector<bool> esFecha_;
  std::size_t ultimas_ = 0;  // values that the last run gave
};

// Runs statements that give no rows and take no values; com::Error with the statement.
void Corre(sqlite3* base, const std::string& sql);
// First value of a query, as a number.
std::int64_t Entero(sqlite3* base, std::string_view sql);

}  // namespace autonomo
