#include "host/standalone/dialecto.h"

#include <algorithm>
#include <array>

namespace autonomo {

namespace {

using esquema::Motor;

constexpr std::size_t kCuantos = 64;
constexpr std::array kFunciones{
    Funcion{"COUNT", 1, 1, Valor::Numero, {}, {}, {}},
    Funcion{"SUM", 1, 1, Valor::Numero, {}, {}, {}},
    Funcion{"AVG", 1, 1, Valor::Numero, {}, {}, {}},
    Funcion{"MIN", 1, 1, Valor::DelPrimero, {}, {}, {}},
    Funcion{"MAX", 1, 1, Valor::DelPrimero, {}, {}, {}},
    Funcion{"ISNULL", 2, 2, Valor::DelPrimero, {"IFNULL"}, {"COALESCE"}, {}},
    Funcion{"COALESCE", 2, kCuantos, Valor::DelPrimero, {}, {}, {}},
    Funcion{"NULLIF", 2, 2, Valor::DelPrimero, {}, {}, {}},
    Funcion{"UPPER", 1, 1, Valor::Texto, {}, {}, {}},
    Funcion{"LOWER", 1, 1, Valor::Texto, {}, {}, {}},
    Funcion{"LTRIM", 1, 1, Valor::Texto, {}, {}, {}},
    Funcion{"RTRIM", 1, 1, Valor::Texto, {}, {}, {}},
    Funcion{"SUBSTRING", 3, 3, Valor::Texto, {"SUBSTR"}, {}, {}},
    // The server does not count blanks at the end.
    Funcion{"LEN", 1, 1, Valor::Numero, {"LENGTH(RTRIM", "))"}, {"LENGTH(RTRIM", "))"}, {}},
    Funcion{"ABS", 1, 1, Valor::Numero, {}, {}, {}},
    Funcion{"ROUND", 2, 2, Valor::Numero, {}, {}, {}},
    Funcion{"GETDATE", 0, 0, Valor::Fecha, {}, {}, {}},
};

constexpr Dialecto kSqlite{
    &Funcion::sqlite,  "?", "||", "LIKE", "NOT LIKE", true, false, false, " COLLATE ESPANOL", " COLLATE FECHA",
    "CHECK_IN_DETALLE"};
// Its LIKE knows neither sets nor the columns' collation: the schema has operators that do.
constexpr Dialecto kPostgres{
    &Funcion::postgres, "CAST(? AS timestamp)", "||", "~@", "!~@", true, false, true, "::bpchar", "", ""};
constexpr Dialecto kSqlServer{
    &Funcion::sqlServer, "CAST(? AS datetime)", "+", "LIKE", "NOT LIKE", false, true, false, "", "", ""};

}  // namespace

const Funcion* BuscaFuncion(std::string_view nombre) {
  const auto it = std::ranges::find(kFunciones, nombre, &Funcion::nombre);
  return it == kFunciones.end() ? nullptr : &*it;
}

const Dialecto& DialectoDe(Motor motor) { return esquema::DelMotor(motor, kSqlite, kPostgres, kSqlServer); }

}  // namespace autonomo
