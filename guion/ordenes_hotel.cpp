// The orders that set up a hotel: what the assistant asks, in the same words.
#include "guion/interprete.h"
#include "guion/muestra_hotel.h"
#include "platform/com/error.h"

namespace guion {

namespace {

[[noreturn]] void Error(const std::string& motivo) { throw com::Error(com::error::kArgumento, motivo); }

constexpr const char* kUso =
    "Se escribe: hotel nombre TEXTO | sucursal TEXTO | moneda CLAVE NOMBRE | divisa CLAVE NOMBRE TASA | impuesto "
    "POR_CIENTO | precios con|sin | tipo NOMBRE INCLUIDAS MAXIMO PRECIO ADULTO_EXTRA MENOR_EXTRA HABITACIONES | "
    "usuario LOGIN NOMBRE CONTRASENA | crea | olvida";

bool Toma(const std::vector<std::string>& p, std::string_view que, std::size_t palabras) {
  if (p[1] != que) return false;
  if (p.size() != palabras + 2) Error(kUso);
  return true;
}

}  // namespace

void Interprete::Hotel(const Palabras& p) {
  autonomo::HotelNuevo& h = hotelNuevo_;
  if (Toma(p, "nombre", 1)) {
    h.nombre = p[2];
  } else if (Toma(p, "sucursal", 1)) {
    h.sucursal = p[2];
  } else if (Toma(p, "moneda", 2)) {
    h.moneda = p[2];
    h.nombreMoneda = p[3];
  } else if (Toma(p, "divisa", 3)) {
    h.divisa = p[2];
    h.nombreDivisa = p[3];
    h.tipoCambio = p[4];
  } else if (Toma(p, "impuesto", 1)) {
    h.impuesto = p[2];
  } else if (Toma(p, "precios", 1)) {
    if (p[2] != "con" && p[2] != "sin") Error(kUso);
    h.conImpuesto = p[2] == "con";
  } else if (Toma(p, "tipo", 7)) {
    h.tipos.push_back({p[2], p[3], p[4], p[5], p[6], p[7], p[8]});
  } else if (Toma(p, "usuario", 3)) {
    h.usuarios.push_back({p[2], p[3], p[4]});
  } else if (Toma(p, "olvida", 0)) {
    h = {};
  } else if (Toma(p, "crea", 0)) {
    // The screens read the set-up when they open.
    if (piezas_.componente.Abierta()) Error("La pantalla está abierta; ciérrela antes con la orden «cierra»");
    autonomo::CreaHotel(piezas_.anfitrion, h);
    h = {};
  } else {
    Error(kUso);
  }
}

Json MuestraHotel(const autonomo::HotelNuevo& hotel, bool sinHotel) {
  static constexpr const char* kNombres[] = {"hotel", "tipos", "habitaciones", "usuarios"};
  Json reparos = Json::Arreglo(), resumen = Json::Arreglo();
  bool bien = true;
  for (const autonomo::ParteHotel parte : autonomo::kPartesHotel) {
    const auto reparo = autonomo::Revisa(hotel, parte);
    if (!reparo) continue;
    bien = false;
    reparos.Agrega(Json::Objeto()
                       .Pon("parte", kNombres[static_cast<std::size_t>(parte)])
                       .Pon("motivo", reparo->motivo)
                       .Pon("campo", reparo->campo)
                       .Pon("fila", reparo->fila));
  }
  if (bien) {
    for (const std::string& linea : autonomo::ResumenDe(hotel)) resumen.Agrega(linea);
  }
  return Json::Objeto().Pon("sinHotel", sinHotel).Pon("reparos", std::move(reparos)).Pon("resumen", std::move(resumen));
}

Json MuestraPendientes(const std::vector<autonomo::Pendiente>& pendientes) {
  Json lista = Json::Arreglo();
  for (const autonomo::Pendiente& p : pendientes) {
    lista.Agrega(Json::Objeto()
                     .Pon("clave", p.clave)
                     .Pon("estorba", p.estorba)
                     .Pon("texto", p.texto)
                     .Pon("tabla", p.tabla)
                     .Pon("parametro", p.parametro));
  }
  return lista;
}

}  // namespace guion
