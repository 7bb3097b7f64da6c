#include "guion/ordenes_hotel.h"

#include "guion/muestra_hotel.h"

namespace guion {

namespace {

constexpr const char* kUso =
    "Se escribe: hotel nombre TEXTO | sucursal TEXTO | moneda CLAVE NOMBRE | divisa CLAVE NOMBRE TASA | impuesto "
    "POR_CIENTO | precios con|sin | tipo NOMBRE INCLUIDAS MAXIMO PRECIO ADULTO_EXTRA MENOR_EXTRA HABITACIONES | "
    "usuario LOGIN NOMBRE CONTRASENA | crea | olvida";

bool Toma(const Palabras& p, std::string_view que, std::size_t palabras) {
  if (p[1] != que) return false;
  if (p.size() != palabras + 2) Error(kUso);
  return true;
}

}  // namespace

std::vector<Orden> OrdenesHotel::Ordenes() {
  static constexpr DatosOrden<OrdenesHotel> kOrdenes[] = {
      {"hotel", 1, 8, "hotel nombre|sucursal|moneda|divisa|impuesto|precios|tipo|usuario VALOR… | crea | olvida",
       &OrdenesHotel::Hotel},
  };
  return Enlaza(*this, kOrdenes);
}

std::optional<Json> OrdenesHotel::Muestra(const std::string& que) {
  if (que == "hotel") return MuestraHotel(hotelNuevo_, autonomo::SinHotel(*piezas_.anfitrion.conexion()));
  if (que == "pendientes") return MuestraPendientes(autonomo::Pendientes(piezas_.anfitrion));
  return std::nullopt;
}

void OrdenesHotel::Hotel(const Palabras& p) {
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

}  // namespace guion
