#include "host/standalone/tarjetas_sql.h"

#include <algorithm>
#include <optional>
#include <span>
#include <string>
#include <utility>

#include "host/standalone/palabras.h"
#include "platform/com/error.h"
#include "platform/com/texto.h"
#include "schema/esquema.h"

namespace autonomo {

namespace {

constexpr ColumnaDeTarjeta kColumnas[] = {
    {"Cliente", "Cl_Cve_Cliente", "Cl_Tarjeta_Numero", Llave::Clase::Numero},
    {"Reservacion_Datos_Tarjeta", "Rs_Folio", "Rdt_Numero", Llave::Clase::Numero},
    {"Cliente", "Cl_Cve_Cliente", "Cl_Tarjeta_Codigo_Seguridad", Llave::Clase::Codigo},
    {"Reservacion_Datos_Tarjeta", "Rs_Folio", "Rdt_Codigo_Seguridad", Llave::Clase::Codigo},
};

// A word, a sign, or a value; names lose their quotes and the table before them.
struct Ficha {
  std::string texto;
  std::optional<std::size_t> valor;  // which of the statement's values it stands for
};
using Fichas = std::span<const Ficha>;

// With the table before the column.
bool EsDeRuta(char c) { return EsDeNombre(c) || c == '.'; }

std::vector<Ficha> FichasDe(std::string_view plantilla) {
  constexpr std::string_view kBlancos = " \t\r\n\"[]`";
  std::vector<Ficha> fichas;
  std::size_t valores = 0;
  for (std::size_t i = 0; i < plantilla.size();) {
    const char c = plantilla[i];
    if (kBlancos.find(c) != std::string_view::npos) {
      ++i;
    } else if (EsDeRuta(c)) {
      const std::size_t desde = i;
      while (i < plantilla.size() && EsDeRuta(plantilla[i])) ++i;
      const std::string_view palabra = plantilla.substr(desde, i - desde);
      fichas.push_back({std::string(palabra.substr(palabra.rfind('.') + 1)), std::nullopt});
    } else {
      const bool valor = EsMarcaDeValor(c);
      fichas.push_back({std::string(1, c), valor ? std::optional(valores) : std::nullopt});
      if (valor) ++valores;
      ++i;
    }
  }
  return fichas;
}

bool Es(Fichas fichas, std::size_t i, std::string_view palabra) {
  return i < fichas.size() && com::IgualSinCaja(fichas[i].texto, palabra);
}

// What stands between commas, up to the parenthesis that closes it or one of the words.
std::vector<Fichas> Partes(Fichas& fichas, std::initializer_list<std::string_view> fin) {
  std::vector<Fichas> partes;
  int abiertas = 0;
  std::size_t desde = 0, i = 0;
  for (; i < fichas.size(); ++i) {
    if (Es(fichas, i, "(")) ++abiertas;
    if (Es(fichas, i, ")") && abiertas-- == 0) break;
    if (abiertas != 0) continue;
    if (std::ranges::any_of(fin, [&](std::string_view palabra) { return Es(fichas, i, palabra); })) break;
    if (!Es(fichas, i, ",")) continue;
    partes.push_back(fichas.subspan(desde, i - desde));
    desde = i + 1;
  }
  partes.push_back(fichas.subspan(desde, i - desde));
  fichas = fichas.subspan(std::min(i + 1, fichas.size()));
  return partes;
}

struct Asignacion {
  std::string columna;
  Fichas expresion;
  std::size_t fila = 0;  // of an INSERT
};

const ColumnaDeTarjeta* BuscaColumna(std::string_view columna) {
  const auto* conocida =
      std::ranges::find_if(kColumnas, [&](const auto& c) { return com::IgualSinCaja(c.columna, columna); });
  return conocida == std::end(kColumnas) ? nullptr : conocida;
}

// The value alone that is assigned; nothing for an expression.
std::optional<std::size_t> Valor(const Asignacion& a) {
  return a.expresion.size() == 1 ? a.expresion[0].valor : std::nullopt;
}

std::vector<Asignacion> DeUpdate(Fichas resto) {
  const auto set = std::ranges::find_if(resto, [](const Ficha& f) { return com::IgualSinCaja(f.texto, "SET"); });
  resto = resto.subspan(static_cast<std::size_t>(std::min(set - resto.begin() + 1, std::ssize(resto))));
  std::vector<Asignacion> asignaciones;
  for (const Fichas& parte : Partes(resto, {"WHERE", "FROM"})) {
    if (parte.size() > 2 && Es(parte, 1, "=")) asignaciones.push_back({parte[0].texto, parte.subspan(2)});
  }
  return asignaciones;
}

std::vector<Asignacion> DeInsert(Fichas resto) {
  const std::size_t into = Es(resto, 1, "INTO") ? 2 : Es(resto, 3, "INTO") ? 4 : 1;
  if (into >= resto.size()) return {};
  std::vector<std::string> columnas;
  const esquema::Tabla* tabla = esquema::BuscaTabla(resto[into].texto);
  resto = resto.subspan(into + 1);
  if (Es(resto, 0, "(")) {
    resto = resto.subspan(1);
    for (const Fichas& parte : Partes(resto, {})) columnas.push_back(parte.empty() ? "" : parte[0].texto);
  } else if (tabla != nullptr) {
    for (const esquema::Columna& c : tabla->columnas) columnas.emplace_back(c.nombre);
  }
  std::vector<Asignacion> asignaciones;
  if (!Es(resto, 0, "VALUES")) {  // SELECT
    for (const std::string& columna : columnas) asignaciones.push_back({columna, resto});
    return asignaciones;
  }
  resto = resto.subspan(1);
  for (std::size_t fila = 0; Es(resto, 0, "("); ++fila) {
    resto = resto.subspan(1);
    const std::vector<Fichas> partes = Partes(resto, {});
    for (std::size_t i = 0; i < std::min(columnas.size(), partes.size()); ++i)
      asignaciones.push_back({columnas[i], partes[i], fila});
    if (Es(resto, 0, ",")) resto = resto.subspan(1);
  }
  return asignaciones;
}

bool EsUna(Fichas fichas, std::size_t i, std::initializer_list<std::string_view> palabras) {
  return std::ranges::any_of(palabras, [&](std::string_view palabra) { return Es(fichas, i, palabra); });
}

bool TieneUna(Fichas fichas, std::initializer_list<std::string_view> palabras) {
  for (std::size_t i = 0; i < fichas.size(); ++i)
    if (EsUna(fichas, i, palabras)) return true;
  return false;
}

// Where the word stands first; the end where it does not.
std::size_t Lugar(Fichas fichas, std::string_view palabra) {
  std::size_t i = 0;
  while (i < fichas.size() && !Es(fichas, i, palabra)) ++i;
  return i;
}

// A column of the one table that a statement is of, by what stands before its WHERE; null for another table or several:
// keys have the same name in many.
const ColumnaDeTarjeta* DeUnaTabla(Fichas antes) {
  const bool actualiza = Es(antes, 0, "UPDATE");
  const Fichas tablas = antes.subspan(std::min((actualiza ? 0 : Lugar(antes, "FROM")) + 1, antes.size()));
  if (TieneUna(tablas, {"FROM", "JOIN"}) || (!actualiza && TieneUna(tablas, {","}))) return nullptr;
  const auto* suya = std::ranges::find_if(kColumnas, [&](const auto& c) { return Es(tablas, 0, c.tabla); });
  return suya == std::end(kColumnas) ? nullptr : suya;
}

// The value that one of the conditions behind a WHERE, all of which must hold, compares the key with. What stands
// between parentheses may be denied outside of them.
std::optional<std::size_t> ValorDeLlave(Fichas condiciones, std::string_view llave) {
  if (TieneUna(condiciones, {"OR", "CASE", "SELECT"})) return std::nullopt;
  int abiertas = 0;
  for (std::size_t i = 0; i + 2 < condiciones.size(); ++i) {
    if (Es(condiciones, i, "(")) ++abiertas;
    if (Es(condiciones, i, ")")) --abiertas;
    const bool empieza = abiertas == 0 && (i == 0 || Es(condiciones, i - 1, "AND"));
    if (!empieza || !Es(condiciones, i, llave) || !Es(condiciones, i + 1, "=")) continue;
    // Not part of a longer expression.
    const bool acaba = i + 3 == condiciones.size() || EsUna(condiciones, i + 3, {"AND", "ORDER", ";"});
    if (acaba && condiciones[i + 2].valor) return condiciones[i + 2].valor;
  }
  return std::nullopt;
}

// Whether a SELECT's list has the column that holds that of a card, or all of them; an expression may not show it.
bool Pide(Fichas lista, std::string_view tabla, Llave::Clase clase) {
  for (std::size_t i = 1; i < lista.size(); ++i) {
    if (i + 1 < lista.size() && !EsUna(lista, i + 1, {",", "AS"})) continue;
    if (Es(lista, i, "*")) return true;
    const ColumnaDeTarjeta* columna = EsUna(lista, i - 1, {"SELECT", ","}) ? BuscaColumna(lista[i].texto) : nullptr;
    if (columna != nullptr && columna->tabla == tabla && columna->clase == clase) return true;
  }
  return false;
}

}  // namespace

std::span<const ColumnaDeTarjeta> ColumnasDeTarjeta() { return kColumnas; }

std::optional<Llave::Clase> ClaseDeColumna(std::string_view columna) {
  const ColumnaDeTarjeta* conocida = BuscaColumna(columna);
  return conocida == nullptr ? std::nullopt : std::optional(conocida->clase);
}

std::vector<ValorDeTarjeta> ValoresDeTarjeta(std::string_view sentencia, const Partida& partida) {
  const std::vector<Ficha> fichas = FichasDe(partida.plantilla);
  const bool actualiza = Es(fichas, 0, "UPDATE");
  if (!actualiza && !Es(fichas, 0, "INSERT") && !Es(fichas, 0, "REPLACE")) return {};
  const std::vector<Asignacion> asignaciones = actualiza ? DeUpdate(fichas) : DeInsert(fichas);
  const auto llaveDe = [&](const ColumnaDeTarjeta& columna, std::size_t fila) -> std::optional<std::size_t> {
    if (actualiza) {
      const auto nombrada = FilaDe(partida);
      return nombrada && nombrada->tabla == columna.tabla ? std::optional(nombrada->llave) : std::nullopt;
    }
    const auto llave = std::ranges::find_if(asignaciones, [&](const Asignacion& a) {
      return a.fila == fila && com::IgualSinCaja(a.columna, columna.llave);
    });
    return llave == asignaciones.end() ? std::nullopt : Valor(*llave);
  };
  std::vector<ValorDeTarjeta> valores;
  for (const Asignacion& a : asignaciones) {
    const ColumnaDeTarjeta* columna = BuscaColumna(a.columna);
    if (columna == nullptr || (a.expresion.size() == 1 && Es(a.expresion, 0, "NULL"))) continue;
    const std::optional<std::size_t> valor = Valor(a);
    if (!valor)
      throw com::Error(com::error::kSentencia, "El número y el código de una tarjeta se escriben entre comillas",
                       std::string(sentencia));
    valores.push_back({*valor, columna, a.fila, llaveDe(*columna, a.fila)});
  }
  return valores;
}

std::optional<FilaNombrada> FilaDe(const Partida& partida) {
  for (const std::string_view comentario : {"--", "/*"})
    if (partida.plantilla.find(comentario) != std::string::npos) return std::nullopt;
  const std::vector<Ficha> todas = FichasDe(partida.plantilla);
  const Fichas fichas(todas);
  const std::size_t donde = Lugar(fichas, "WHERE");
  const ColumnaDeTarjeta* tabla = DeUnaTabla(fichas.first(donde));
  if (tabla == nullptr || donde == fichas.size()) return std::nullopt;
  const std::optional<std::size_t> valor = ValorDeLlave(fichas.subspan(donde + 1), tabla->llave);
  if (!valor) return std::nullopt;
  const Fichas lista = Es(fichas, 0, "SELECT") ? fichas.first(Lugar(fichas, "FROM")) : Fichas();
  return FilaNombrada{tabla->tabla, *valor, Pide(lista, tabla->tabla, Llave::Clase::Numero),
                      Pide(lista, tabla->tabla, Llave::Clase::Codigo)};
}

bool CancelaReservacion(const Partida& partida) {
  const std::vector<Ficha> fichas = FichasDe(partida.plantilla);
  if (!Es(fichas, 0, "UPDATE") || !Es(fichas, 1, "Reservacion")) return false;
  return std::ranges::any_of(DeUpdate(fichas), [&](const Asignacion& a) {
    if (!com::IgualSinCaja(a.columna, "Es_Cve_Estado") || a.expresion.size() != 1 || !a.expresion[0].valor)
      return false;
    const ValorPartido& valor = partida.valores[*a.expresion[0].valor];
    return valor.pregunta || com::IgualSinCaja(com::Recorta(valor.texto), esquema::kCancelada);
  });
}

}  // namespace autonomo
