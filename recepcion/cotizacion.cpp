#include "recepcion/cotizacion.h"

#include <algorithm>

#include "host/contract/parametros.h"
#include "platform/com/error.h"
#include "publico/publico.h"
#include "recepcion/lectura.h"

namespace recepcion {

namespace {

constexpr std::string_view kTipos =
    "SELECT Th_Cve_Tipo_Habitacion, Th_Descripcion, Th_Num_Personas_Maximo, Pr_Cve_Producto FROM Tipo_Habitacion "
    "WHERE Es_Cve_Estado <> 'BA' ORDER BY Th_Cve_Tipo_Habitacion";

[[noreturn]] void Rechaza(const std::string& motivo) { throw com::Error(com::error::kArgumento, motivo); }

double TasaImpuesto(const std::string& producto) {
  const auto calculo =
      publico::CreaServicio<anfitrion::CalculoImpuesto>(anfitrion::kClaseCalculoImpuesto, "CalculoImpuesto");
  return calculo->TasaImpuesto(publico::LeeTexto(anfitrion::parametro::kSucursal), "", producto);
}

// Adds up what the rooms cost, each on its nights; why one has no price.
void Cotiza(Oferta& oferta, const Pedido& pedido, double tipoCambio) {
  for (const Tramo& t : oferta.tramos) {
    double extra = 0;
    int personasExtra = 0;
    const double precio = publico::Hotel().PrecioHabitacion(
        t.habitacion, t.desde, t.hasta, pedido.adultos, pedido.menores, pedido.infantes, extra, personasExtra,
        pedido.moneda, publico::Utilerias().FechaServidor(), tipoCambio);
    if (oferta.motivo.empty()) oferta.motivo = publico::Hotel().ErrorHotel();
    oferta.total += com::Redondea(precio + extra, 2);
  }
}

}  // namespace

std::vector<std::string> Monedas() {
  std::vector<std::string> claves;
  const ado::RecordsetPtr rs =
      Ejecuta(ado::TextoSQL("SELECT Mn_Cve_Moneda FROM Moneda WHERE Es_Cve_Estado <> 'BA' ORDER BY Mn_Cve_Moneda"));
  for (; !rs->Eof(); rs->MoveNext()) claves.push_back(Celda(*rs, 0));
  return claves;
}

std::vector<Tramo> MenosCambios(const Cuadro& cuadro, const std::vector<int>& filas, com::Fecha llegada,
                                com::Fecha salida) {
  std::vector<Tramo> tramos;
  // The room that stays free longest from each change on leaves the fewest changes.
  for (com::Fecha desde = llegada; desde < salida;) {
    Tramo mejor{"", desde, desde};
    for (const int fila : filas) {
      com::Fecha hasta = desde;
      while (hasta < salida && cuadro.En(fila, hasta) == nullptr) hasta = com::MasDias(hasta, 1);
      if (hasta > mejor.hasta) mejor = {cuadro.habitaciones()[static_cast<std::size_t>(fila)].clave, desde, hasta};
    }
    if (mejor.hasta == desde) return {};
    desde = mejor.hasta;
    tramos.push_back(std::move(mejor));
  }
  return tramos;
}

void Cotizacion::Calcula(const Pedido& pedido) {
  const int noches = com::DiasEntre(pedido.llegada, pedido.salida);
  if (noches < 1) Rechaza("La salida debe ser posterior a la llegada");
  if (noches > kNochesMaximas) Rechaza("Se cotizan hasta " + std::to_string(kNochesMaximas) + " noches");
  if (pedido.adultos < 1 || pedido.menores < 0 || pedido.infantes < 0) Rechaza("Se necesita un adulto al menos");
  Pedido nuevo = pedido;
  if (nuevo.moneda.empty()) nuevo.moneda = publico::LeeTexto(anfitrion::parametro::kMonedaLocal);
  const double cambio = publico::Utilerias().TipoCambio(nuevo.moneda, publico::Utilerias().FechaServidor());
  Cuadro cuadro;
  cuadro.Abre(pedido.llegada, std::max(noches, kNochesMinimas));
  std::vector<Oferta> ofertas;
  const ado::RecordsetPtr tipos = Ejecuta(ado::TextoSQL(kTipos));
  for (; !tipos->Eof(); tipos->MoveNext()) {
    Oferta oferta;
    oferta.tipo = Celda(*tipos, 0);
    oferta.nombre = Celda(*tipos, 1);
    std::vector<int> filas;
    for (std::size_t f = 0; f < cuadro.habitaciones().size(); ++f) {
      if (com::IgualSinCaja(cuadro.habitaciones()[f].claveTipo, oferta.tipo)) filas.push_back(static_cast<int>(f));
    }
    if (filas.empty()) continue;
    oferta.libres = static_cast<int>(
        std::ranges::count_if(filas, [&](int fila) { return cuadro.Libre(fila, pedido.llegada, pedido.salida); }));
    oferta.tramos = MenosCambios(cuadro, filas, pedido.llegada, pedido.salida);
    const int maximo = static_cast<int>(CeldaNumero(*tipos, 2));
    if (oferta.tramos.empty()) {
      oferta.motivo = "No hay lugar";
    } else if (pedido.adultos + pedido.menores + pedido.infantes > maximo) {
      oferta.motivo = "Caben " + std::to_string(maximo) + " personas";
    } else {
      Cotiza(oferta, nuevo, cambio);
      const double factor = TasaImpuesto(Celda(*tipos, 3));
      oferta.impuestos = com::Redondea(oferta.total - oferta.total / (1 + factor), 2);
    }
    ofertas.push_back(std::move(oferta));
  }
  // All was read and priced: what failed before leaves the quote that was there.
  pedido_ = std::move(nuevo);
  ofertas_ = std::move(ofertas);
}

void Cotizacion::Reserva(int oferta) const {
  if (oferta < 0 || static_cast<std::size_t>(oferta) >= ofertas_.size()) {
    Rechaza("No hay una oferta " + std::to_string(oferta));
  }
  const Oferta& elegida = ofertas_[static_cast<std::size_t>(oferta)];
  if (!elegida.motivo.empty()) Rechaza(elegida.nombre + ": " + elegida.motivo);
  if (alReservar) alReservar(pedido_, elegida.tramos);
}

}  // namespace recepcion
