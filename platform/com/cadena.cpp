#include "platform/com/cadena.h"

#include <deque>
#include <utility>
#include <vector>

#include "platform/com/objeto.h"

namespace com {
namespace {

// Texts by handle; a deque, so that a text stays where it is while others come. Handle 0 is the empty text.
struct Tabla {
  std::deque<std::string> textos{std::string()};
  std::vector<std::uint32_t> libres;
};

// Lives as long as the process: handles may outlive any other static object.
Tabla& LaTabla() {
  AfirmaApartamento();
  static Tabla& tabla = *new Tabla;
  return tabla;
}

std::uint32_t Guarda(std::string_view texto) {
  if (texto.empty()) return 0;
  Tabla& t = LaTabla();
  if (t.libres.empty()) {
    t.textos.emplace_back(texto);
    return static_cast<std::uint32_t>(t.textos.size() - 1);
  }
  const std::uint32_t indice = t.libres.back();
  t.textos[indice] = texto;
  t.libres.pop_back();
  return indice;
}

void Suelta(std::uint32_t indice) {
  if (indice == 0) return;
  Tabla& t = LaTabla();
  t.textos[indice] = std::string();
  t.libres.push_back(indice);
}

}  // namespace

Cadena::Cadena(std::string_view texto) : indice_(Guarda(texto)) {}
Cadena::Cadena(const Cadena& otra) : indice_(Guarda(otra.Texto())) {}
Cadena::Cadena(Cadena&& otra) noexcept : indice_(std::exchange(otra.indice_, 0)) {}

Cadena& Cadena::operator=(const Cadena& otra) {
  if (this != &otra) *this = std::string_view(otra.Texto());
  return *this;
}

Cadena& Cadena::operator=(Cadena&& otra) noexcept {
  std::swap(indice_, otra.indice_);
  return *this;
}

Cadena& Cadena::operator=(std::string_view texto) {
  const std::uint32_t nuevo = Guarda(texto);
  Suelta(indice_);
  indice_ = nuevo;
  return *this;
}

Cadena::~Cadena() { Suelta(indice_); }

const std::string& Cadena::Texto() const { return LaTabla().textos[indice_]; }

std::size_t Cadena::EnUso() { return LaTabla().textos.size() - 1 - LaTabla().libres.size(); }

}  // namespace com
