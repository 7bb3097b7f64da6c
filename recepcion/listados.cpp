#include "recepcion/listados.h"

#include "host/contract/estados_legibles.h"
#include "platform/regional/regional.h"

namespace recepcion {

namespace {

using enum listado::Clase;

std::string Habitaciones(const Oferta& oferta) {
  std::string texto;
  for (const Tramo& t : oferta.tramos) {
    texto += (texto.empty() ? "" : ", ") + t.habitacion;
    if (oferta.tramos.size() > 1) texto += " hasta " + regional::FechaCorta(t.hasta);
  }
  return texto;
}

}  // namespace

listado::Listado ListadoDe(const Hoy& hoy) {
  listado::Listado lista;
  lista.titulo = hoy.busqueda().empty() ? std::string(TituloDe(hoy.lista())) : "Reservaciones halladas";
  lista.detalle = hoy.busqueda().empty() ? regional::FechaCorta(hoy.dia().fecha) : "«" + hoy.busqueda() + "»";
  if (hoy.hallazgo().total > hoy.filas().size()) {
    lista.detalle +=
        ": las primeras " + std::to_string(hoy.filas().size()) + " de " + std::to_string(hoy.hallazgo().total);
  }
  lista.columnas = {{"Folio"},          {"Huésped"},       {"Habitaciones"},
                    {"Llegada", Fecha}, {"Salida", Fecha}, {"Personas", Entero},
                    {"Estado"},         {"Estancia"},      {"Referencia"}};
  for (const Fila& f : hoy.filas()) {
    lista.filas.push_back({f.folio, f.huesped, f.habitaciones, f.llegada, f.salida, f.personas,
                           std::string(anfitrion::estado::PalabraDe(f.estado)), f.estancia, f.referencia});
  }
  return lista;
}

listado::Listado ListadoDe(const Cuadro& cuadro) {
  listado::Listado lista;
  lista.titulo = "Cuadro de habitaciones";
  lista.detalle = "Noches del " + regional::FechaCorta(cuadro.desde()) + " al " +
                  regional::FechaCorta(com::MasDias(cuadro.desde(), cuadro.noches() - 1));
  lista.columnas = {{"Habitación"}, {"Tipo"},    {"Desde", Fecha},   {"Hasta", Fecha}, {"Estado"},
                    {"Folio"},      {"Huésped"}, {"Total", Importe}, {"Moneda"}};
  for (const Barra& b : cuadro.barras()) {
    const Habitacion& h = cuadro.habitaciones()[static_cast<std::size_t>(b.fila)];
    const bool cuesta = b.clase == Barra::Clase::Reservacion;
    lista.filas.push_back({h.clave, h.tipo, b.inicio, UltimoDia(b), EstadoDe(b), b.folio, b.huesped,
                           cuesta ? com::Variant(b.total) : com::Variant(), b.moneda});
  }
  return lista;
}

listado::Listado ListadoDe(const Cotizacion& cotizacion) {
  const Pedido& p = cotizacion.pedido();
  listado::Listado lista;
  lista.titulo = "Cotización";
  lista.detalle = "Del " + regional::FechaCorta(p.llegada) + " al " + regional::FechaCorta(p.salida) + ", " +
                  std::to_string(p.adultos) + " adultos, " + std::to_string(p.menores) + " menores, " +
                  std::to_string(p.infantes) + " infantes, en " + p.moneda;
  lista.columnas = {
      {"Tipo"}, {"Libres", Entero}, {"Total", Importe}, {"Impuestos", Importe}, {"Por noche", Importe}, {"Habitación"}};
  const int noches = com::DiasEntre(p.llegada, p.salida);
  for (const Oferta& o : cotizacion.ofertas()) {
    const auto importe = [&](double valor) { return o.motivo.empty() ? com::Variant(valor) : com::Variant(); };
    lista.filas.push_back({o.nombre, o.libres, importe(o.total), importe(o.impuestos),
                           importe(noches > 0 ? o.total / noches : 0), o.motivo.empty() ? Habitaciones(o) : o.motivo});
  }
  return lista;
}

}  // namespace recepcion
