#include "host/standalone/postgres_valores.h"

#include <array>
#include <charconv>
#include <cstdint>
#include <limits>
#include <vector>

#include "host/standalone/postgres_errores.h"
#include "platform/com/fecha.h"
#include "platform/com/variant.h"

namespace autonomo {
namespace {

// Types as the server numbers them.
enum TipoPg : Oid {
  kBool = 16,
  kInt8 = 20,
  kInt2 = 21,
  kInt4 = 23,
  kFloat4 = 700,
  kFloat8 = 701,
  kDate = 1082,
  kTimestamp = 1114,
  kTimestamptz = 1184,
  kNumeric = 1700
};

com::Variant Entero(std::string_view texto) {
  std::int64_t n = 0;
  std::from_chars(texto.data(), texto.data() + texto.size(), n);
  const bool cabe = n >= std::numeric_limits<std::int32_t>::min() && n <= std::numeric_limits<std::int32_t>::max();
  return cabe ? com::Variant(static_cast<std::int32_t>(n)) : com::Variant(static_cast<double>(n));
}

com::Variant Numero(std::string_view texto) {
  double d = 0;
  std::from_chars(texto.data(), texto.data() + texto.size(), d);
  return {d};
}

com::Variant Celda(const PGresult* r, int fila, int columna) {
  if (PQgetisnull(r, fila, columna) != 0) return com::Variant::Null();
  const std::string_view texto(PQgetvalue(r, fila, columna), static_cast<std::size_t>(PQgetlength(r, fila, columna)));
  switch (PQftype(r, columna)) {
    case kBool:
      return com::Variant(std::int32_t{texto == "t" ? 1 : 0});
    case kInt2:
    case kInt4:
    case kInt8:
      return Entero(texto);
    case kFloat4:
    case kFloat8:
    case kNumeric:
      return Numero(texto);
    case kDate:
    case kTimestamp:
    case kTimestamptz:
      if (const auto fecha = com::DeIso(texto.substr(0, 19))) return {*fecha};
      return {texto};
    default:
      return {texto};
  }
}

}  // namespace

std::optional<std::string> ComoParametro(std::string texto) {
  if (texto.find('\0') != std::string::npos)
    throw com::Error(com::error::kTipos, "El texto tiene caracteres que la base de datos no admite");
  return texto;
}

std::optional<std::string> ComoParametro(const com::Variant& valor) {
  const auto& v = valor.Contenido();
  if (const auto* logico = std::get_if<bool>(&v)) return *logico ? "1" : "0";
  if (const auto* entero = std::get_if<std::int32_t>(&v)) return std::to_string(*entero);
  if (const auto* fecha = std::get_if<com::Fecha>(&v)) return com::AIso(*fecha);
  if (const auto* texto = std::get_if<std::string>(&v)) return ComoParametro(*texto);
  if (const auto* numero = std::get_if<double>(&v)) {
    std::array<char, 64> cifras{};
    const auto fin = std::to_chars(cifras.begin(), cifras.end(), *numero);
    return std::string(cifras.begin(), fin.ptr);
  }
  if (valor.EsObjeto()) throw com::Error(com::error::kTipos, "Un objeto no puede ser parámetro de una sentencia");
  return std::nullopt;
}

std::string ConDolares(const std::string& texto) {
  std::string salida;
  int n = 0;
  for (const char c : texto) {
    if (c == '?') {
      salida += " $" + std::to_string(++n) + " ";  // words may stand right beside a literal
    } else {
      salida += c;
    }
  }
  return salida;
}

ado::RecordsetPtr Filas(const PGresult* r, std::shared_ptr<const ado::Recordset::Columnas>& columnas,
                        std::string_view sentencia) {
  const int n = PQnfields(r), filas = PQntuples(r);
  if (columnas == nullptr || columnas->size() != static_cast<std::size_t>(n)) {
    auto nombres = std::make_shared<ado::Recordset::Columnas>();
    for (int i = 0; i < n; ++i) nombres->push_back(NombreDe(PQfname(r, i), sentencia));
    columnas = std::move(nombres);
  }
  std::vector<com::Variant> celdas;
  celdas.reserve(static_cast<std::size_t>(filas) * static_cast<std::size_t>(n));
  for (int f = 0; f < filas; ++f)
    for (int i = 0; i < n; ++i) celdas.push_back(Celda(r, f, i));
  return std::make_shared<ado::Recordset>(columnas, std::move(celdas));
}

}  // namespace autonomo
