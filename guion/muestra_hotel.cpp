#include "guion/muestra_hotel.h"

#include <utility>

namespace guion {

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
