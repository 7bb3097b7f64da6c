#include "platform/listado/listado.h"

#include <cmath>
#include <cstdio>

#include "platform/regional/regional.h"

namespace listado {

namespace {

// A word in a column of numbers or dates stands as it is.
Clase ClaseDe(Clase columna, const com::Variant& valor) { return valor.EsTexto() ? Clase::Texto : columna; }

bool Falta(const com::Variant& valor) { return valor.EsVacio() || valor.EsNulo(); }

// With that many decimals and no grouping, whatever the process locale.
std::string Numero(double valor, int decimales, char decimal) {
  const double factor = std::pow(10.0, decimales);
  const auto entero = static_cast<long long>(std::llround(com::Redondea(std::abs(valor), decimales) * factor));
  std::string texto = std::to_string(entero);
  const auto detras = static_cast<std::size_t>(decimales);
  if (texto.size() <= detras) texto.insert(0, detras + 1 - texto.size(), '0');
  if (decimales > 0) texto.insert(texto.size() - detras, 1, decimal);
  return valor < 0 && entero != 0 ? "-" + texto : texto;
}

// What makes a spreadsheet take a text for a formula; the full-width forms too.
bool PareceFormula(std::string_view texto) {
  if (texto.empty()) return false;
  std::size_t i = 0;
  const char32_t primera = com::LeeUtf8(texto, i);
  constexpr std::u32string_view kInicios = U"=+-@＝＋－＠";
  return primera < U' ' || kInicios.find(primera) != std::u32string_view::npos;
}

std::string Campo(const std::string& texto, char separador) {
  const bool llano = texto.find_first_of("\"\r\n") == std::string::npos && texto.find(separador) == std::string::npos &&
                     (texto.empty() || (texto.front() != ' ' && texto.back() != ' '));
  if (llano) return texto;
  std::string campo = "\"";
  for (const char c : texto) campo.append(c == '"' ? 2 : 1, c);
  return campo + '"';
}

std::string Celda(Clase clase, const com::Variant& valor, FormatoCsv formato) {
  if (Falta(valor)) return "";
  switch (ClaseDe(clase, valor)) {
    case Clase::Entero:
      return std::to_string(com::CLng(valor));
    case Clase::Importe:
      return Numero(com::CDbl(valor), 2, formato.decimal);
    case Clase::PorCiento:
      return Numero(com::CDbl(valor) * 100, 1, formato.decimal);
    case Clase::Fecha:
      return com::AIso(com::SoloFecha(com::CDate(valor)));
    case Clase::Momento:
      return com::AIso(com::CDate(valor));
    case Clase::Texto:
      break;
  }
  const std::string texto = com::TextoDe(valor);
  return Campo(PareceFormula(texto) ? "'" + texto : texto, formato.separador);
}

}  // namespace

bool ALaDerecha(Clase clase) { return clase == Clase::Entero || clase == Clase::Importe || clase == Clase::PorCiento; }

std::string Texto(Clase clase, const com::Variant& valor) {
  if (Falta(valor)) return "";
  switch (ClaseDe(clase, valor)) {
    case Clase::Importe:
      return regional::Moneda(com::CDbl(valor));
    case Clase::PorCiento:
      return Numero(com::CDbl(valor) * 100, 1, regional::Actual().separadorDecimal) + " %";
    case Clase::Fecha:
      return regional::FechaCorta(com::CDate(valor));
    case Clase::Momento:
      return regional::TextoFecha(com::CDate(valor));
    case Clase::Entero:
    case Clase::Texto:
      break;
  }
  return com::TextoDe(valor);
}

std::string Csv(const Listado& lista, FormatoCsv formato) {
  std::string csv = "\xEF\xBB\xBF";
  const auto linea = [&](auto&& campoDe) {
    for (std::size_t c = 0; c < lista.columnas.size(); ++c) {
      if (c > 0) csv += formato.separador;
      csv += campoDe(c);
    }
    csv += "\r\n";
  };
  linea([&](std::size_t c) {
    const Columna& columna = lista.columnas[c];
    return Campo(columna.clase == Clase::PorCiento ? columna.titulo + " %" : columna.titulo, formato.separador);
  });
  for (const auto& fila : lista.filas) {
    linea([&](std::size_t c) {
      return c < fila.size() ? Celda(lista.columnas[c].clase, fila[c], formato) : std::string();
    });
  }
  return csv;
}

}  // namespace listado
