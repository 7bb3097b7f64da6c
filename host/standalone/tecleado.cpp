#include "host/standalone/tecleado.h"

#include <algorithm>
#include <charconv>
#include <set>

#include "platform/com/error.h"
#include "platform/com/texto.h"
#include "platform/com/variant.h"
#include "schema/esquema.h"

namespace autonomo {

namespace {

[[noreturn]] void Error(const std::string& motivo) { throw com::Error(com::error::kArgumento, motivo); }

// "A01" is the prefix "A" and the digits "01".
struct Numerada {
  std::string_view prefijo, cifras;
};
Numerada Divide(std::string_view clave) {
  std::size_t i = clave.size();
  while (i > 0 && com::EsDigito(clave[i - 1])) --i;
  return {clave.substr(0, i), clave.substr(i)};
}

std::string Reemplaza(const std::string& texto, std::string_view que, std::string_view por) {
  std::string otro;
  std::size_t desde = 0;
  for (std::size_t i = texto.find(que); i != std::string::npos; i = texto.find(que, desde)) {
    otro.append(texto, desde, i - desde).append(por);
    desde = i + que.size();
  }
  return otro.append(texto, desde);
}

// The words between commas, semicolons and blanks; a range is one word however it is written.
std::vector<std::string> Palabras(std::string_view texto) {
  std::string todo = com::Mayusculas(std::string(texto));
  for (const char* espacio : {"\n", "\r", "\t"}) todo = Reemplaza(todo, espacio, " ");
  for (const char* raya : {"–", "—", " A ", " AL "}) todo = Reemplaza(todo, raya, "-");
  while (todo.find(" -") != std::string::npos) todo = Reemplaza(todo, " -", "-");
  while (todo.find("- ") != std::string::npos) todo = Reemplaza(todo, "- ", "-");
  std::vector<std::string> palabras;
  for (std::size_t i = 0; i < todo.size();) {
    const std::size_t fin = std::min(todo.find_first_of(" ,;", i), todo.size());
    if (fin > i) palabras.push_back(todo.substr(i, fin - i));
    i = fin + 1;
  }
  return palabras;
}

void AgregaRango(const std::string& palabra, std::size_t raya, std::vector<std::string>& claves) {
  const std::string de = palabra.substr(0, raya), a = palabra.substr(raya + 1);
  const Numerada primera = Divide(de), ultima = Divide(a);
  constexpr std::size_t kCifras = 8;
  // "A1-9" goes on with the prefix of the first.
  const bool bien = !primera.cifras.empty() && !ultima.cifras.empty() && primera.cifras.size() <= kCifras &&
                    ultima.cifras.size() <= kCifras && (ultima.prefijo.empty() || ultima.prefijo == primera.prefijo);
  if (!bien) Error("«" + palabra + "» no es un rango de habitaciones; se escribe 101-125");
  int desde = 0, hasta = 0;
  std::from_chars(primera.cifras.data(), primera.cifras.data() + primera.cifras.size(), desde);
  std::from_chars(ultima.cifras.data(), ultima.cifras.data() + ultima.cifras.size(), hasta);
  if (hasta < desde) Error("El rango " + palabra + " va al revés: escriba primero la menor");
  if (hasta - desde >= kHabitacionesMaximas) Error("El rango " + palabra + " tiene demasiadas habitaciones");
  for (int n = desde; n <= hasta; ++n) {
    std::string cifras = std::to_string(n);
    if (cifras.size() < primera.cifras.size()) cifras.insert(0, primera.cifras.size() - cifras.size(), '0');
    claves.push_back(std::string(primera.prefijo) + cifras);
  }
}

}  // namespace

std::vector<std::string> HabitacionesDe(std::string_view texto) {
  std::vector<std::string> claves;
  for (const std::string& palabra : Palabras(texto)) {
    if (const std::size_t raya = palabra.find('-'); raya != std::string::npos) {
      AgregaRango(palabra, raya, claves);
    } else {
      claves.push_back(palabra);
    }
    if (claves.size() > static_cast<std::size_t>(kHabitacionesMaximas)) {
      Error("Son más de " + std::to_string(kHabitacionesMaximas) + " habitaciones");
    }
  }
  std::set<std::string> vistas;
  for (const std::string& clave : claves) {
    if (const std::string motivo = MotivoHabitacion(clave); !motivo.empty()) Error(motivo);
    if (!vistas.insert(clave).second) Error("La habitación " + clave + " se repite");
  }
  return claves;
}

std::string MotivoHabitacion(const std::string& clave) {
  if (com::LargoUtf8(clave) > esquema::kLargoClave) {
    return "La habitación «" + clave + "» lleva más de " + std::to_string(esquema::kLargoClave) + " caracteres";
  }
  if (clave.find_first_of("'%\"") == std::string::npos) return {};
  return "La habitación «" + clave + "» no puede llevar comillas ni el signo %";
}

std::string MotivoNombre(std::string_view titulo, const std::string& texto) {
  if (com::LargoUtf8(texto) <= esquema::kLargoTexto) return {};
  return "«" + std::string(titulo) + "» admite " + std::to_string(esquema::kLargoTexto) + " caracteres";
}

std::string PisoDe(std::string_view habitacion) {
  constexpr std::size_t kDeHabitacion = 2;  // digits that number a room on its floor
  const Numerada n = Divide(habitacion);
  // "301A" is on the third floor too.
  std::string_view cifras = n.cifras;
  if (cifras.empty()) {
    const std::size_t fin = habitacion.find_last_of("0123456789");
    cifras = fin == std::string_view::npos ? cifras : Divide(habitacion.substr(0, fin + 1)).cifras;
  }
  if (cifras.size() <= kDeHabitacion) return "General";
  std::string piso(cifras.substr(0, cifras.size() - kDeHabitacion));
  piso.erase(0, std::min(piso.find_first_not_of('0'), piso.size()));
  return piso.empty() ? "Planta baja" : "Piso " + piso;
}

double LeePorCiento(std::string_view titulo, std::string_view texto) {
  const std::string campo = "«" + std::string(titulo) + "»";
  std::string numero = com::Recorta(texto);
  if (numero.empty()) Error("Falta " + campo);
  const bool conSigno = numero.ends_with('%');
  if (conSigno) numero = com::Recorta(std::string_view(numero).substr(0, numero.size() - 1));
  double porciento = 0;
  try {
    porciento = com::CDbl(numero);
  } catch (const com::Error&) {
    Error(campo + " no admite «" + std::string(texto) + "»");
  }
  if (!conSigno && porciento > 0 && porciento < 1) {
    Error(campo + " va en por ciento: 16 es 16 %; si es menor que uno, escríbalo con el signo: " + numero + " %");
  }
  if (porciento < 0) Error(campo + " no puede ser negativo");
  if (!(porciento < 100)) Error(campo + " debe ser menor que 100");
  return porciento / 100;
}

}  // namespace autonomo
