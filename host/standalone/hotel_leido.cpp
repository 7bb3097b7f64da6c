#include "host/standalone/hotel_leido.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <set>

#include "host/standalone/impuestos.h"
#include "host/standalone/tecleado.h"
#include "platform/com/error.h"
#include "platform/com/texto.h"
#include "platform/com/variant.h"
#include "schema/esquema.h"

namespace autonomo::leido {

namespace {

constexpr int kPersonasMaximas = 99;

[[noreturn]] void Error(const std::string& motivo) { throw com::Error(com::error::kArgumento, motivo); }

// vacio holds where nothing was typed.
double ImporteO(const char* titulo, const std::string& texto, double vacio) {
  return Texto(texto).empty() ? vacio : Importe(titulo, texto);
}

int Personas(const char* titulo, const std::string& texto) {
  const std::string cifras = Obligado(titulo, texto);
  int personas = 0;
  const auto [fin, error] = std::from_chars(cifras.data(), cifras.data() + cifras.size(), personas);
  const bool entero = error == std::errc{} && fin == cifras.data() + cifras.size();
  if (!entero || personas < 1 || personas > kPersonasMaximas) {
    Error("«" + std::string(titulo) + "» lleva un número entero de 1 a " + std::to_string(kPersonasMaximas));
  }
  return personas;
}

}  // namespace

std::string Texto(const std::string& texto) { return com::Recorta(texto); }

std::string Obligado(const char* titulo, const std::string& texto) {
  std::string recortado = Texto(texto);
  if (recortado.empty()) Error("Falta «" + std::string(titulo) + "»");
  if (const std::string motivo = MotivoNombre(titulo, recortado); !motivo.empty()) Error(motivo);
  return recortado;
}

std::string ClaveMoneda(const char* titulo, const std::string& texto) {
  std::string clave = com::Mayusculas(Obligado(titulo, texto));
  if (clave.size() > esquema::kLargoClave || clave.find_first_of("'% ") != std::string::npos) {
    Error("«" + std::string(titulo) + "» es una clave corta, como MXN o USD");
  }
  return clave;
}

double Importe(const char* titulo, const std::string& texto) {
  double importe = 0;
  try {
    importe = com::CDbl(Texto(texto));
  } catch (const com::Error&) {
    Error("«" + std::string(titulo) + "» no admite «" + texto + "»: escriba una cantidad");
  }
  if (!std::isfinite(importe) || importe < 0) Error("«" + std::string(titulo) + "» no puede ser negativo");
  if (importe > kImporteMaximo) Error("«" + std::string(titulo) + "» es demasiado grande");
  return importe;
}

bool SinTexto(const TipoNuevo& t) {
  const auto textos = {&t.nombre, &t.precio, &t.adultoExtra, &t.menorExtra, &t.habitaciones};
  return std::ranges::all_of(textos, [](const std::string* texto) { return Texto(*texto).empty(); });
}
bool SinTexto(const UsuarioNuevo& u) {
  return Texto(u.clave).empty() && Texto(u.nombre).empty() && u.contrasena.empty();
}

TipoLeido LeeTipo(const TipoNuevo& t, Sitio& sitio) {
  TipoLeido leido;
  sitio.campo = "nombre";
  leido.nombre = Obligado("Tipo", t.nombre);
  sitio.campo = "incluidas";
  leido.incluidas = Personas("Personas incluidas", t.incluidas);
  sitio.campo = "maximo";
  leido.maximo = Personas("Máximo de personas", t.maximo);
  if (leido.incluidas > leido.maximo) Error("«Personas incluidas» es mayor que «Máximo de personas»");
  sitio.campo = "precio";
  if (!Texto(t.precio).empty()) leido.precio = Importe("Precio por noche", t.precio);
  sitio.campo = "adultoExtra";
  leido.adultoExtra = ImporteO("Adulto extra", t.adultoExtra, 0);
  sitio.campo = "menorExtra";
  leido.menorExtra = ImporteO("Menor extra", t.menorExtra, 0);
  if (!leido.precio && (leido.adultoExtra > 0 || leido.menorExtra > 0)) {
    sitio.campo = "precio";
    Error("Falta «Precio por noche»: lo que paga una persona extra se suma a él");
  }
  return leido;
}

std::string MascaraDeHabitacion(const HotelNuevo& hotel) {
  std::set<std::size_t> largos;
  for (const TipoNuevo& tipo : hotel.tipos) {
    for (const std::string& clave : HabitacionesDe(tipo.habitaciones)) {
      if (com::SoloDigitos(clave)) largos.insert(clave.size());
    }
  }
  return largos.size() > 1 ? std::string(*largos.rbegin(), '0') : "";
}

}  // namespace autonomo::leido
