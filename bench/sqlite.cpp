#include "bench/sqlite.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <iostream>

namespace banco {

namespace {

unsigned char Pliega(unsigned char c) { return c >= 'a' && c <= 'z' ? static_cast<unsigned char>(c - 32) : c; }

// Case-blind, trailing blanks ignored. The measured hotel's keys are digits and capitals, most of one length with a
// long common beginning: eight bytes are skipped at a time.
int ComparaClave(void*, int na, const void* pa, int nb, const void* pb) {
  const auto* a = static_cast<const unsigned char*>(pa);
  const auto* b = static_cast<const unsigned char*>(pb);
  while (na > 0 && a[na - 1] == ' ') --na;
  while (nb > 0 && b[nb - 1] == ' ') --nb;
  const int n = std::min(na, nb);
  int i = 0;
  for (std::uint64_t x = 0, y = 0; i + 8 <= n; i += 8) {
    std::memcpy(&x, a + i, sizeof x);
    std::memcpy(&y, b + i, sizeof y);
    if (x != y) break;
  }
  for (; i < n; ++i) {
    if (a[i] == b[i]) continue;
    const int d = static_cast<int>(Pliega(a[i])) - static_cast<int>(Pliega(b[i]));
    if (d != 0) return d;
  }
  return na - nb;
}

// Dates as text of one form compare byte by byte.
int ComparaFecha(void*, int na, const void* pa, int nb, const void* pb) {
  const int d = std::char_traits<char>::compare(static_cast<const char*>(pa), static_cast<const char*>(pb),
                                                static_cast<std::size_t>(std::min(na, nb)));
  return d != 0 ? d : na - nb;
}

void NoRechaza(sqlite3_context* contexto, int, sqlite3_value**) { sqlite3_result_int(contexto, 0); }

}  // namespace

void Falla(const std::string& texto) {
  std::cerr << texto << '\n';
  std::exit(1);
}

Base::Base(const std::string& ruta) {
  constexpr int kModo = SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX;
  if (sqlite3_open_v2(ruta.c_str(), &db_, kModo, nullptr) != SQLITE_OK) Falla(ruta + ": " + sqlite3_errmsg(db_));
  sqlite3_create_collation_v2(db_, "ESPANOL", SQLITE_UTF8, nullptr, ComparaClave, nullptr);
  sqlite3_create_collation_v2(db_, "FECHA", SQLITE_UTF8, nullptr, ComparaFecha, nullptr);
  sqlite3_create_function_v2(db_, "rechaza", 1, SQLITE_UTF8, nullptr, NoRechaza, nullptr, nullptr, nullptr);
  Ejecuta("PRAGMA cache_size=-16000");
}

void Base::Ejecuta(const char* sentencia) const {
  if (sqlite3_exec(db_, sentencia, nullptr, nullptr, nullptr) != SQLITE_OK) {
    Falla(std::string(sqlite3_errmsg(db_)) + "\n" + sentencia);
  }
}

Preparada::Preparada(const Base& base, std::string_view sentencia) : db_(base.get()) {
  if (sqlite3_prepare_v3(db_, sentencia.data(), static_cast<int>(sentencia.size()), SQLITE_PREPARE_PERSISTENT, &st_,
                         nullptr) != SQLITE_OK) {
    Falla(std::string(sqlite3_errmsg(db_)) + "\n" + std::string(sentencia));
  }
}

Preparada& Preparada::Texto(int parametro, std::string_view valor) {
  sqlite3_bind_text(st_, parametro, valor.data(), static_cast<int>(valor.size()), SQLITE_STATIC);
  return *this;
}

Preparada& Preparada::Entero(int parametro, std::int64_t valor) {
  sqlite3_bind_int64(st_, parametro, valor);
  return *this;
}

Preparada& Preparada::Real(int parametro, double valor) {
  sqlite3_bind_double(st_, parametro, valor);
  return *this;
}

bool Preparada::Fila() {
  const int r = sqlite3_step(st_);
  if (r == SQLITE_ROW) return true;
  if (r != SQLITE_DONE) Falla(std::string(sqlite3_errmsg(db_)) + "\n" + sqlite3_sql(st_));
  sqlite3_reset(st_);
  return false;
}

void Preparada::Corre() {
  while (Fila()) {
  }
}

}  // namespace banco
