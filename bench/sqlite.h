// The engine's own interface, as thin as it can be held: what the screens are measured against.
#pragma once

#include <sqlite3.h>

#include <cstdint>
#include <string>
#include <string_view>

namespace banco {

// Connection to a hotel's file with the collations and functions that its schema names. Aborts the program with the
// engine's text on any failure: a figure of a failed run is worth nothing.
class Base {
 public:
  explicit Base(const std::string& ruta);
  ~Base() { sqlite3_close(db_); }
  Base(const Base&) = delete;
  Base& operator=(const Base&) = delete;
  sqlite3* get() const { return db_; }
  void Ejecuta(const char* sentencia) const;

 private:
  sqlite3* db_ = nullptr;
};

// A prepared statement. Parameters count from 1, columns from 0.
class Preparada {
 public:
  Preparada(const Base& base, std::string_view sentencia);
  ~Preparada() { sqlite3_finalize(st_); }
  Preparada(const Preparada&) = delete;
  Preparada& operator=(const Preparada&) = delete;

  // The text must live until the statement is reset.
  Preparada& Texto(int parametro, std::string_view valor);
  Preparada& Entero(int parametro, std::int64_t valor);
  Preparada& Real(int parametro, double valor);
  // False after the last row; the statement is then reset.
  bool Fila();
  // Runs a statement without rows.
  void Corre();
  void Reinicia() { sqlite3_reset(st_); }

  std::string_view Texto(int columna) const {
    return {reinterpret_cast<const char*>(sqlite3_column_text(st_, columna)),
            static_cast<std::size_t>(sqlite3_column_bytes(st_, columna))};
  }
  std::int64_t Entero(int columna) const { return sqlite3_column_int64(st_, columna); }
  int Columnas() const { return sqlite3_column_count(st_); }
  double Real(int columna) const { return sqlite3_column_double(st_, columna); }

 private:
  sqlite3* db_;
  sqlite3_stmt* st_ = nullptr;
};

// Stops the program with the text.
[[noreturn]] void Falla(const std::string& texto);

}  // namespace banco
