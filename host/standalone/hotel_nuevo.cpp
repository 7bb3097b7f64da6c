#include "host/standalone/hotel_nuevo.h"

#include <map>
#include <set>

#include "host/standalone/hotel_leido.h"
#include "host/standalone/permisos.h"
#include "host/standalone/tecleado.h"
#include "host/standalone/usuarios.h"
#include "platform/com/error.h"
#include "platform/com/variant.h"
#include "platform/regional/regional.h"

namespace autonomo {

using leido::ClaveMoneda;
using leido::Importe;
using leido::Obligado;
using leido::SinTexto;
using leido::Sitio;
using leido::Texto;

namespace {

[[noreturn]] void Error(const std::string& motivo) { throw com::Error(com::error::kArgumento, motivo); }

void RevisaHotel(const HotelNuevo& hotel, Sitio& sitio) {
  sitio.campo = "nombre";
  Obligado("Nombre del hotel", hotel.nombre);
  sitio.campo = "sucursal";
  Obligado("Sucursal", hotel.sucursal);
  sitio.campo = "moneda";
  const std::string moneda = ClaveMoneda("Moneda", hotel.moneda);
  sitio.campo = "nombreMoneda";
  Obligado("Nombre de la moneda", hotel.nombreMoneda);
  sitio.campo = "impuesto";
  LeePorCiento("Impuesto", hotel.impuesto);
  if (Texto(hotel.divisa).empty() && Texto(hotel.nombreDivisa).empty() && Texto(hotel.tipoCambio).empty()) return;
  sitio.campo = "divisa";
  if (com::IgualSinCaja(ClaveMoneda("Otra moneda", hotel.divisa), moneda)) {
    Error("La otra moneda es la misma que la del hotel");
  }
  sitio.campo = "nombreDivisa";
  Obligado("Nombre de la otra moneda", hotel.nombreDivisa);
  sitio.campo = "tipoCambio";
  if (Importe("Tipo de cambio", Obligado("Tipo de cambio", hotel.tipoCambio)) <= 0) {
    Error("«Tipo de cambio» debe ser mayor que cero");
  }
}

void RevisaTipos(const HotelNuevo& hotel, Sitio& sitio) {
  std::set<std::string> nombres;
  for (std::size_t i = 0; i < hotel.tipos.size(); ++i) {
    if (SinTexto(hotel.tipos[i])) continue;
    sitio.fila = static_cast<int>(i);
    const leido::TipoLeido tipo = leido::LeeTipo(hotel.tipos[i], sitio);
    sitio.campo = "nombre";
    if (!nombres.insert(com::Mayusculas(tipo.nombre)).second) Error("El tipo «" + tipo.nombre + "» se repite");
  }
  if (!nombres.empty()) return;
  sitio = {"nombre", 0};
  Error("Escriba al menos un tipo de habitación, como Sencilla o Doble");
}

void RevisaHabitaciones(const HotelNuevo& hotel, Sitio& sitio) {
  struct Escrita {
    std::string clave, tipo;
  };
  const auto todas = [&](const auto& con) {
    for (std::size_t i = 0; i < hotel.tipos.size(); ++i) {
      sitio = {"habitaciones", static_cast<int>(i)};
      for (const std::string& clave : HabitacionesDe(hotel.tipos[i].habitaciones)) {
        con(Escrita{clave, Texto(hotel.tipos[i].nombre)});
      }
    }
  };
  std::size_t cuantas = 0;
  todas([&](const Escrita&) { ++cuantas; });
  if (cuantas > static_cast<std::size_t>(kHabitacionesMaximas)) {
    Error("Son más de " + std::to_string(kHabitacionesMaximas) + " habitaciones");
  }
  const std::string mascara = leido::MascaraDeHabitacion(hotel);
  std::map<std::string, Escrita> guardadas;
  todas([&](const Escrita& e) {
    const auto [antes, nueva] = guardadas.emplace(regional::ConMascara(e.clave, mascara), e);
    if (nueva) return;
    const auto& [guardada, otra] = *antes;
    if (otra.clave == e.clave) Error("La habitación " + e.clave + " ya está en «" + otra.tipo + "»");
    Error("Las habitaciones " + otra.clave + " y " + e.clave + " serían la misma, la " + guardada +
          ": los números se igualan con ceros");
  });
}

void RevisaUsuarios(const HotelNuevo& hotel, Sitio& sitio) {
  std::set<std::string> claves;
  for (std::size_t i = 0; i < hotel.usuarios.size(); ++i) {
    const UsuarioNuevo& u = hotel.usuarios[i];
    if (SinTexto(u)) continue;
    sitio = {"clave", static_cast<int>(i)};
    if (claves.empty() && i > 0) Error("Escriba primero quién administra el hotel");
    if (const std::string motivo = MotivoUsuario(u.clave); !motivo.empty()) {
      Error("El usuario no se puede guardar: " + motivo);
    }
    if (!claves.insert(com::Mayusculas(Texto(u.clave))).second) Error("El usuario " + Texto(u.clave) + " se repite");
    sitio.campo = "contrasena";
    if (u.contrasena.empty()) Error("Falta la contraseña");
    if (const std::string motivo = MotivoContrasena(u.contrasena); !motivo.empty()) Error(motivo);
  }
}

std::string Cuantas(std::size_t n) { return n == 1 ? "1 habitación" : std::to_string(n) + " habitaciones"; }

}  // namespace

std::optional<Reparo> Revisa(const HotelNuevo& hotel, ParteHotel parte) {
  Sitio sitio;
  try {
    switch (parte) {
      case ParteHotel::Hotel:
        RevisaHotel(hotel, sitio);
        break;
      case ParteHotel::Tipos:
        RevisaTipos(hotel, sitio);
        break;
      case ParteHotel::Habitaciones:
        RevisaHabitaciones(hotel, sitio);
        break;
      case ParteHotel::Usuarios:
        RevisaUsuarios(hotel, sitio);
        break;
    }
  } catch (const com::Error& e) {
    return Reparo{e.Descripcion(), sitio.campo, sitio.fila};
  }
  return std::nullopt;
}

std::vector<std::string> ResumenDe(const HotelNuevo& hotel) {
  std::vector<std::string> lineas{Texto(hotel.nombre) + ", sucursal " + Texto(hotel.sucursal)};
  std::string monedas = "Precios en " + Texto(hotel.nombreMoneda) + " (" + com::Mayusculas(Texto(hotel.moneda)) + ")";
  if (const std::string divisa = com::Mayusculas(Texto(hotel.divisa)); !divisa.empty()) {
    monedas += "; 1 " + divisa + " = " + Texto(hotel.tipoCambio) + " " + com::Mayusculas(Texto(hotel.moneda));
  }
  lineas.push_back(monedas);
  const std::string impuesto = Texto(hotel.impuesto);
  lineas.push_back("Impuesto: " + impuesto + (impuesto.ends_with('%') ? "" : " %") +
                   (hotel.conImpuesto ? ", ya incluido en los precios" : ", se suma a los precios escritos"));
  std::size_t todas = 0, usuarios = 0;
  for (const TipoNuevo& tipo : hotel.tipos) {
    if (SinTexto(tipo)) continue;
    const auto claves = HabitacionesDe(tipo.habitaciones);
    todas += claves.size();
    std::string linea = Texto(tipo.nombre) + ": " + Cuantas(claves.size());
    if (!claves.empty()) linea += " (" + claves.front() + (claves.size() > 1 ? " … " + claves.back() : "") + ")";
    linea += Texto(tipo.precio).empty()
                 ? ", sin precio"
                 : ", " + regional::Moneda(Importe("Precio por noche", tipo.precio)) + " la noche";
    lineas.push_back(linea);
  }
  lineas.push_back("En total " + Cuantas(todas));
  for (const UsuarioNuevo& u : hotel.usuarios) usuarios += SinTexto(u) ? 0 : 1;
  lineas.push_back(usuarios == 0   ? "Sin contraseñas"
                   : usuarios == 1 ? "1 usuario con contraseña; administra el hotel"
                                   : std::to_string(usuarios) + " usuarios con contraseña; " +
                                         Texto(hotel.usuarios.front().clave) + " administra el hotel");
  lineas.emplace_back("Formas de pago: efectivo, transferencia y tarjeta de crédito. Ninguna noche se vende dos veces");
  return lineas;
}

}  // namespace autonomo
