#include "guion/lineas.h"

#include "platform/com/error.h"

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

// Length of the UTF-8 sequence at the start, 0 when there is none.
std::size_t LargoDeSecuencia(std::string_view s) {
  const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(s[i]); };
  const unsigned char b = byte(0);
  if (b < 0x80) return 1;
  const std::size_t largo = b >= 0xF0 && b <= 0xF4 ? 4 : b >= 0xE0 && b < 0xF0 ? 3 : b >= 0xC2 && b < 0xE0 ? 2 : 0;
  if (largo == 0 || s.size() < largo) return 0;
  for (std::size_t i = 1; i < largo; ++i) {
    if ((byte(i) & 0xC0) != 0x80) return 0;
  }
  const bool fueraDeOrden = (b == 0xE0 && byte(1) < 0xA0) || (b == 0xED && byte(1) >= 0xA0) ||
                            (b == 0xF0 && byte(1) < 0x90) || (b == 0xF4 && byte(1) >= 0x90);
  return fueraDeOrden ? 0 : largo;
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
    const std::size_t largo = LargoDeSecuencia(texto);
    if (largo == 0) return false;
    texto.remove_prefix(largo);
  }
  return true;
}

std::string Utf8Saneado(std::string_view texto) {
  std::string salida;
  salida.reserve(texto.size());
  while (!texto.empty()) {
    const std::size_t largo = LargoDeSecuencia(texto);
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
  std::u32string codigos;
  while (!texto.empty()) {
    const std::size_t largo = LargoDeSecuencia(texto);
    if (largo == 0) throw com::Error(com::error::kArgumento, "El texto no es UTF-8 válido");
    const auto primero = static_cast<unsigned char>(texto[0]);
    char32_t codigo = largo == 1 ? primero : primero & (0xFFU >> (largo + 1));
    for (std::size_t i = 1; i < largo; ++i) codigo = codigo << 6 | (static_cast<unsigned char>(texto[i]) & 0x3FU);
    codigos += codigo;
    texto.remove_prefix(largo);
  }
  return codigos;
}

std::string Utf8De(char32_t codigo) {
  std::string s;
  const auto cola = [&](int corrimiento) { s += static_cast<char>(0x80U | ((codigo >> corrimiento) & 0x3FU)); };
  if (codigo < 0x80) {
    s += static_cast<char>(codigo);
  } else if (codigo < 0x800) {
    s += static_cast<char>(0xC0U | codigo >> 6);
    cola(0);
  } else if (codigo < 0x10000) {
    s += static_cast<char>(0xE0U | codigo >> 12);
    cola(6), cola(0);
  } else {
    s += static_cast<char>(0xF0U | codigo >> 18);
    cola(12), cola(6), cola(0);
  }
  return s;
}

}  // namespace guion
