#include "guion/lineas.h"

#include "platform/com/error.h"
#include "platform/com/texto.h"

namespace guion {

namespace {

bool EsBlanco(char c) { return c == ' ' || c == '\t' || c == '\r'; }

[[noreturn]] void Rechaza(const std::string& motivo) { throw com::Error(com::error::kArgumento, motivo); }

// pos stands on the opening quote; afterwards behind the closing one.
std::string LeeEntreComillas(std::string_view linea, std::size_t& pos) {
  std::string palabra;
  for (++pos; pos < linea.size(); ++pos) {
    const char c = linea[pos];
    if (c == '"') {
      ++pos;
      if (pos < linea.size() && !EsBlanco(linea[pos])) Rechaza("Falta un blanco después de las comillas");
      return palabra;
    }
    if (c != '\\') {
      palabra += c;
      continue;
    }
    const char siguiente = pos + 1 < linea.size() ? linea[++pos] : '\0';
    if (siguiente == 'n') {
      palabra += '\n';
    } else if (siguiente == '"' || siguiente == '\\') {
      palabra += siguiente;
    } else {
      Rechaza("Entre comillas sólo se aceptan \\\", \\\\ y \\n");
    }
  }
  Rechaza("Faltan las comillas de cierre");
}

// End of a statement without quotes: the line's end, or a comment that does not stand in one of its own literals.
std::size_t FinDeSentencia(std::string_view linea, std::size_t inicio) {
  bool literal = false;
  for (std::size_t i = inicio; i < linea.size(); ++i) {
    if (linea[i] == '\'') literal = !literal;
    if (linea[i] == '#' && !literal && EsBlanco(linea[i - 1])) return i;
  }
  return linea.size();
}

std::string_view SinBlancosFinales(std::string_view texto) {
  while (!texto.empty() && EsBlanco(texto.back())) texto.remove_suffix(1);
  return texto;
}

}  // namespace

Linea DivideLinea(std::string_view linea) {
  Linea resultado;
  std::size_t pos = 0;
  std::size_t inicio = std::string_view::npos;
  std::size_t fin = 0;
  while (true) {
    while (pos < linea.size() && EsBlanco(linea[pos])) ++pos;
    if (pos == linea.size() || linea[pos] == '#') break;
    if (inicio == std::string_view::npos) inicio = pos;
    if (linea[pos] == '"') {
      resultado.palabras.push_back(LeeEntreComillas(linea, pos));
    } else if (resultado.palabras.size() == 1 && resultado.palabras[0] == "sql") {
      const std::size_t hasta = FinDeSentencia(linea, pos);
      resultado.palabras.emplace_back(SinBlancosFinales(linea.substr(pos, hasta - pos)));
      fin = pos + resultado.palabras.back().size();
      break;
    } else {
      const std::size_t desde = pos;
      while (pos < linea.size() && !EsBlanco(linea[pos])) ++pos;
      resultado.palabras.emplace_back(linea.substr(desde, pos - desde));
    }
    fin = pos;
  }
  if (inicio != std::string_view::npos) resultado.texto = linea.substr(inicio, fin - inicio);
  return resultado;
}

bool EsUtf8(std::string_view texto) {
  while (!texto.empty()) {
    const std::size_t largo = com::LargoDeSecuencia(texto);
    if (largo == 0) return false;
    texto.remove_prefix(largo);
  }
  return true;
}

std::string Utf8Saneado(std::string_view texto) {
  std::string salida;
  salida.reserve(texto.size());
  while (!texto.empty()) {
    const std::size_t largo = com::LargoDeSecuencia(texto);
    if (largo == 0) {
      salida += "\xEF\xBF\xBD";
      texto.remove_prefix(1);
    } else {
      salida += texto.substr(0, largo);
      texto.remove_prefix(largo);
    }
  }
  return salida;
}

std::u32string CodigosDe(std::string_view texto) {
  if (!EsUtf8(texto)) throw com::Error(com::error::kArgumento, "El texto no es UTF-8 válido");
  std::u32string codigos;
  for (std::size_t i = 0; i < texto.size();) codigos += com::LeeUtf8(texto, i);
  return codigos;
}

}  // namespace guion
