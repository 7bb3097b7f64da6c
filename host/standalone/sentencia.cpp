#include "host/standalone/sentencia.h"

#include <algorithm>
#include <limits>

#include "host/standalone/errores.h"
#include "platform/com/error.h"
#include "platform/com/fecha.h"
#include "schema/esquema.h"

namespace autonomo {
namespace {

bool EsBlancoOFin(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n' || c == ';'; }

// Whether a result column holds dates: by its name, by the column that it comes from, or because the translator saw it.
bool EsColumnaDeFecha(sqlite3_stmt* s, int i, const std::string& nombre, const std::vector<std::string>& fechas) {
  const auto* columna = esquema::BuscaColumna(nombre);
  if (columna != nullptr && (columna->tipo == esquema::Tipo::Fecha || columna->tipo == esquema::Tipo::FechaHora))
    return true;
  const char* tipo = sqlite3_column_decltype(s, i);
  if (tipo != nullptr && std::string_view(tipo).starts_with("FECHA")) return true;
  return std::ranges::any_of(fechas, [&](const std::string& f) { return com::IgualSinCaja(f, nombre); });
}

// Leaves the statement ready for the next run, also when the run fails.
class Reinicio {
 public:
  explicit Reinicio(sqlite3_stmt* s) : s_(s) {}
  Reinicio(const Reinicio&) = delete;
  Reinicio& operator=(const Reinicio&) = delete;
  ~Reinicio() {
    sqlite3_reset(s_);
    sqlite3_clear_bindings(s_);
  }

 private:
  sqlite3_stmt* s_;
};

}  // namespace

Sentencia::Sentencia(sqlite3* base, std::string_view sql, std::vector<std::string> fechas, std::string_view original,
                     std::string_view* resto)
    : base_(base), fechas_(std::move(fechas)) {
  sqlite3_stmt* s = nullptr;
  const char* fin = nullptr;
  const int rc =
      sqlite3_prepare_v3(base, sql.data(), static_cast<int>(sql.size()), SQLITE_PREPARE_PERSISTENT, &s, &fin);
  s_.reset(s);
  if (rc != SQLITE_OK) throw ErrorSqlite(base, rc, original);
  if (s == nullptr) throw com::Error(com::error::kSentencia, "La sentencia está vacía", std::string(original));
  if (resto != nullptr) {
    *resto = sql.substr(static_cast<std::size_t>(fin - sql.data()));
    while (!resto->empty() && EsBlancoOFin(resto->front())) resto->remove_prefix(1);
  }
  LeeColumnas();
}

void Sentencia::LeeColumnas() {
  auto nombres = std::make_shared<ado::Recordset::Columnas>();
  esFecha_.clear();
  for (int i = 0; i < sqlite3_column_count(s_.get()); ++i) {
    nombres->emplace_back(sqlite3_column_name(s_.get(), i));
    esFecha_.push_back(EsColumnaDeFecha(s_.get(), i, nombres->back(), fechas_));
  }
  columnas_ = std::move(nombres);
}

void Sentencia::Liga(int i, std::string_view texto) {
  sqlite3_bind_text(s_.get(), i, texto.data(), static_cast<int>(texto.size()), SQLITE_STATIC);
}

void Sentencia::LigaCopia(int i, std::string_view texto) {
  sqlite3_bind_text(s_.get(), i, texto.data(), static_cast<int>(texto.size()), SQLITE_TRANSIENT);
}

void Sentencia::Liga(int i, const com::Variant& valor) {
  const auto& v = valor.Contenido();
  if (const auto* logico = std::get_if<bool>(&v)) {
    sqlite3_bind_int(s_.get(), i, *logico ? 1 : 0);
  } else if (const auto* entero = std::get_if<std::int32_t>(&v)) {
    sqlite3_bind_int(s_.get(), i, *entero);
  } else if (const auto* numero = std::get_if<double>(&v)) {
    sqlite3_bind_double(s_.get(), i, *numero);
  } else if (const auto* fecha = std::get_if<com::Fecha>(&v)) {
    LigaCopia(i, com::AIso(*fecha));
  } else if (const auto* texto = std::get_if<std::string>(&v)) {
    LigaCopia(i, *texto);
  } else if (valor.EsObjeto()) {
    throw com::Error(com::error::kTipos, "Un objeto no puede ser parámetro de una sentencia");
  } else {
    sqlite3_bind_null(s_.get(), i);
  }
}

// Through the value itself: each sqlite3_column call would look it up again. One thread alone uses the connection.
com::Variant Sentencia::Celda(int i) const {
  sqlite3_value* v = sqlite3_column_value(s_.get(), i);
  switch (sqlite3_value_type(v)) {
    case SQLITE_NULL:
      return com::Variant::Null();
    case SQLITE_INTEGER: {
      const std::int64_t n = sqlite3_value_int64(v);
      const bool cabe = n >= std::numeric_limits<std::int32_t>::min() && n <= std::numeric_limits<std::int32_t>::max();
      return cabe ? com::Variant(static_cast<std::int32_t>(n)) : com::Variant(static_cast<double>(n));
    }
    case SQLITE_FLOAT:
      return {sqlite3_value_double(v)};
    default:
      break;
  }
  const auto* p = static_cast<const char*>(sqlite3_value_blob(v));
  const std::string_view texto(p == nullptr ? "" : p, static_cast<std::size_t>(sqlite3_value_bytes(v)));
  if (esFecha_[static_cast<std::size_t>(i)])
    if (const auto fecha = com::DeIso(texto)) return {*fecha};
  return {texto};
}

void Sentencia::AgregaRenglon(std::vector<com::Variant>& celdas) const {
  for (int i = 0; i < static_cast<int>(esFecha_.size()); ++i) celdas.push_back(Celda(i));
}

ado::RecordsetPtr Sentencia::Corre(std::string_view original) {
  const Reinicio reinicio(s_.get());
  std::vector<com::Variant> celdas;
  celdas.reserve(ultimas_);
  int rc = sqlite3_step(s_.get());
  // A changed table makes the engine prepare "*" anew.
  if (static_cast<std::size_t>(sqlite3_column_count(s_.get())) != esFecha_.size()) LeeColumnas();
  for (; rc == SQLITE_ROW; rc = sqlite3_step(s_.get())) AgregaRenglon(celdas);
  if (rc != SQLITE_DONE) throw ErrorSqlite(base_, rc, original);
  ultimas_ = celdas.size();
  return std::make_shared<ado::Recordset>(columnas_, std::move(celdas));
}

void Corre(sqlite3* base, const std::string& sql) {
  const int rc = sqlite3_exec(base, sql.c_str(), nullptr, nullptr, nullptr);
  if (rc != SQLITE_OK) throw ErrorSqlite(base, rc, sql);
}

std::int64_t Entero(sqlite3* base, std::string_view sql) {
  auto r = Sentencia(base, sql, {}, sql).Corre(sql);
  return r->Eof() ? 0 : com::CLng(r->Fields(0).Value());
}

}  // namespace autonomo
