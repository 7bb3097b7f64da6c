#include "recepcion/plano.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "platform/com/texto.h"

namespace recepcion {

namespace {

// The longest number without the code of a country.
constexpr std::size_t kLocal = 10;
std::string_view Local(std::string_view digitos) {
  return digitos.size() > kLocal ? digitos.substr(digitos.size() - kLocal) : digitos;
}
constexpr std::string_view kApostrofos = "'`";

}  // namespace

// Plain text has no small ASCII letters; what is not ASCII in it is a letter of some alphabet.
bool EsDePalabra(char c) {
  return com::EsDigito(c) || (c >= 'A' && c <= 'Z') || (static_cast<unsigned char>(c) & 0x80U) != 0;
}

std::string Plano(std::string_view texto, SinAcento sinAcento) {
  std::string plano;
  plano.reserve(texto.size());
  for (std::size_t i = 0; i < texto.size();) {
    const char c = texto[i];
    if ((static_cast<unsigned char>(c) & 0x80U) == 0) {
      plano += c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
      ++i;
    } else if (const char32_t letra = sinAcento(com::LeeUtf8(texto, i)); letra != 0) {
      com::AgregaUtf8(plano, com::LetraPlegada(letra));
    }
  }
  return plano;
}

std::vector<std::string> Palabras(std::string_view plano) {
  std::vector<std::string> palabras;
  std::string palabra;
  for (const char c : plano) {
    if (EsDePalabra(c)) {
      palabra += c;
    } else if (!palabra.empty()) {
      palabras.push_back(std::exchange(palabra, {}));
    }
  }
  if (!palabra.empty()) palabras.push_back(palabra);
  return palabras;
}

std::string SinApostrofos(std::string_view plano) {
  const auto dentro = [&](std::size_t i) {
    return i > 0 && i + 1 < plano.size() && EsDePalabra(plano[i - 1]) && EsDePalabra(plano[i + 1]);
  };
  std::string sin;
  sin.reserve(plano.size());
  for (std::size_t i = 0; i < plano.size(); ++i) {
    if (kApostrofos.find(plano[i]) == std::string_view::npos || !dentro(i)) sin += plano[i];
  }
  return sin;
}

std::vector<std::string> PalabrasBuscadas(std::string_view plano) {
  std::vector<std::string> palabras = Palabras(plano);
  if (plano.find_first_of(kApostrofos) == std::string_view::npos) return palabras;
  const std::string sin = SinApostrofos(plano);
  const std::size_t suyas = palabras.size();
  for (std::string& palabra : Palabras(sin)) {
    const auto fin = palabras.begin() + static_cast<std::ptrdiff_t>(suyas);
    if (std::find(palabras.begin(), fin, palabra) == fin) palabras.push_back(std::move(palabra));
  }
  return palabras;
}

std::string_view SinCeros(std::string_view clave) {
  const std::size_t primera = clave.find_first_not_of('0');
  if (primera == std::string_view::npos) return clave.empty() ? clave : clave.substr(clave.size() - 1);
  return clave.substr(primera);
}

std::string Digitos(std::string_view texto) {
  std::string digitos;
  std::ranges::copy_if(texto, std::back_inserter(digitos), com::EsDigito);
  return digitos;
}

bool EsParteDeTelefono(std::string_view palabra) {
  constexpr std::size_t kMinimo = 4;
  return com::SoloDigitos(palabra) && palabra.size() >= kMinimo;
}

bool EsTelefono(std::string_view digitos) {
  constexpr std::size_t kMinimo = 7;
  return digitos.size() >= kMinimo;
}

bool MismoTelefono(std::string_view digitos, std::string_view otros) {
  return EsTelefono(digitos) && EsTelefono(otros) && Local(digitos) == Local(otros);
}

bool TieneTelefono(std::string_view digitos, std::string_view otros) {
  if (!EsTelefono(digitos) || !EsTelefono(otros)) return false;
  if (otros.size() > kLocal && otros.ends_with(digitos)) return true;
  return digitos.find(Local(otros)) != std::string_view::npos;
}

}  // namespace recepcion
