#include "guion/json.h"

#include <charconv>
#include <cmath>

#include "guion/lineas.h"

namespace guion {

namespace {

void EscribeTexto(std::string& salida, const std::string& texto) {
  static constexpr char kHex[] = "0123456789abcdef";
  salida += '"';
  for (const char c : Utf8Saneado(texto)) {
    switch (c) {
      case '"':
        salida += "\\\"";
        break;
      case '\\':
        salida += "\\\\";
        break;
      case '\b':
        salida += "\\b";
        break;
      case '\f':
        salida += "\\f";
        break;
      case '\n':
        salida += "\\n";
        break;
      case '\r':
        salida += "\\r";
        break;
      case '\t':
        salida += "\\t";
        break;
      default:
        if (const auto u = static_cast<unsigned char>(c); u < 0x20) {
          salida += "\\u00";
          salida += kHex[u >> 4];
          salida += kHex[u & 15];
        } else {
          salida += c;
        }
    }
  }
  salida += '"';
}

void EscribeNumero(std::string& salida, double v) {
  if (!std::isfinite(v)) {
    salida += "null";
    return;
  }
  char espacio[40];
  const auto fin = std::to_chars(espacio, espacio + sizeof espacio, v == 0 ? 0.0 : v);
  salida.append(espacio, fin.ptr);
}

}  // namespace

Json::Json(const com::Variant& v) {
  struct Convierte {
    Valor operator()(com::Variant::Vacio) const { return {}; }
    Valor operator()(com::Variant::Nulo) const { return {}; }
    Valor operator()(bool b) const { return b; }
    Valor operator()(std::int32_t i) const { return i; }
    Valor operator()(double d) const { return d; }
    Valor operator()(com::Fecha f) const { return com::AIso(f); }
    Valor operator()(const std::string& s) const { return s; }
    Valor operator()(const com::Ptr<com::Desconocido>&) const { return {}; }
  };
  v_ = std::visit(Convierte{}, v.Contenido());
}

Json& Json::Agrega(Json v) {
  std::get<Lista>(v_).push_back(std::move(v));
  return *this;
}

Json& Json::Pon(std::string_view clave, Json v) {
  std::get<Miembros>(v_).emplace_back(clave, std::move(v));
  return *this;
}

std::string Json::Texto() const {
  std::string salida;
  Escribe(salida);
  return salida;
}

void Json::Escribe(std::string& salida) const {
  if (const auto* b = std::get_if<bool>(&v_)) {
    salida += *b ? "true" : "false";
  } else if (const auto* i = std::get_if<int>(&v_)) {
    salida += std::to_string(*i);
  } else if (const auto* d = std::get_if<double>(&v_)) {
    EscribeNumero(salida, *d);
  } else if (const auto* s = std::get_if<std::string>(&v_)) {
    EscribeTexto(salida, *s);
  } else if (const auto* lista = std::get_if<Lista>(&v_)) {
    salida += '[';
    for (const Json& v : *lista) {
      if (&v != &lista->front()) salida += ',';
      v.Escribe(salida);
    }
    salida += ']';
  } else if (const auto* miembros = std::get_if<Miembros>(&v_)) {
    salida += '{';
    for (const auto& [clave, v] : *miembros) {
      if (&clave != &miembros->front().first) salida += ',';
      EscribeTexto(salida, clave);
      salida += ':';
      v.Escribe(salida);
    }
    salida += '}';
  } else {
    salida += "null";
  }
}

}  // namespace guion
