#include "recepcion/cotizacion.h"

#include <algorithm>
#include <limits>
#include <map>

#include "host/contract/parametros.h"
#include "platform/com/error.h"
#include "platform/regional/regional.h"
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

struct Tipo {
  std::string clave, nombre, producto;
  int maximo = 0;          // persons
  std::vector<int> filas;  // of its rooms in the chart
};

std::vector<Tipo> LeeTipos(const Cuadro& cuadro) {
  std::vector<Tipo> tipos;
  const ado::RecordsetPtr rs = Ejecuta(ado::TextoSQL(kTipos));
  for (; !rs->Eof(); rs->MoveNext()) {
    Tipo tipo{Celda(*rs, 0), Celda(*rs, 1), Celda(*rs, 3), static_cast<int>(CeldaNumero(*rs, 2)), {}};
    for (std::size_t f = 0; f < cuadro.habitaciones().size(); ++f) {
      if (com::IgualSinCaja(cuadro.habitaciones()[f].claveTipo, tipo.clave)) tipo.filas.push_back(static_cast<int>(f));
    }
    if (!tipo.filas.empty()) tipos.push_back(std::move(tipo));
  }
  return tipos;
}

// Offers for a stay in a hotel as the chart shows it.
class Cotizador {
 public:
  Cotizador(const Cuadro& cuadro, const Pedido& pedido, double tipoCambio)
      : cuadro_(cuadro), pedido_(pedido), tipoCambio_(tipoCambio), tipos_(LeeTipos(cuadro)) {}

  std::vector<Oferta> Ofertas() {
    std::vector<Oferta> ofertas;
    std::size_t menos = std::numeric_limits<std::size_t>::max();  // rooms of the best offer
    std::vector<int> caben;                                       // rooms of the types that hold the persons
    for (const Tipo& tipo : tipos_) {
      const Oferta& oferta = ofertas.emplace_back(DeTipo(tipo));
      if (oferta.motivo.empty()) menos = std::min(menos, oferta.tramos.size());
      if (Caben(tipo)) caben.insert(caben.end(), tipo.filas.begin(), tipo.filas.end());
    }
    Oferta mixta{"", "Varios tipos", 0, MenosCambios(cuadro_, caben, pedido_.llegada, pedido_.salida), 0, 0, ""};
    if (mixta.tramos.size() < 2 || mixta.tramos.size() >= menos) return ofertas;
    Cotiza(mixta);
    ofertas.push_back(std::move(mixta));
    return ofertas;
  }

 private:
  bool Caben(const Tipo& tipo) const { return pedido_.adultos + pedido_.menores + pedido_.infantes <= tipo.maximo; }

  Oferta DeTipo(const Tipo& tipo) {
    Oferta oferta;
    oferta.tipo = tipo.clave;
    oferta.nombre = tipo.nombre;
    oferta.libres = static_cast<int>(std::ranges::count_if(
        tipo.filas, [&](int fila) { return cuadro_.Libre(fila, pedido_.llegada, pedido_.salida); }));
    oferta.tramos = MenosCambios(cuadro_, tipo.filas, pedido_.llegada, pedido_.salida);
    if (oferta.tramos.empty()) {
      oferta.motivo = "No hay lugar";
    } else if (!Caben(tipo)) {
      oferta.motivo = "Caben " + std::to_string(tipo.maximo) + " personas";
    } else {
      Cotiza(oferta);
    }
    return oferta;
  }

  // Adds up what the rooms cost, each on its nights; why one has no price.
  void Cotiza(Oferta& oferta) {
    double impuestos = 0;
    for (const Tramo& t : oferta.tramos) {
      double extra = 0;
      int personasExtra = 0;
      const double precio = publico::Hotel().PrecioHabitacion(
          t.habitacion, t.desde, t.hasta, pedido_.adultos, pedido_.menores, pedido_.infantes, extra, personasExtra,
          pedido_.moneda, publico::Utilerias().FechaServidor(), tipoCambio_);
      if (oferta.motivo.empty()) oferta.motivo = publico::Hotel().ErrorHotel();
      const double total = com::Redondea(precio + extra, 2);
      oferta.total += total;
      impuestos += total - total / (1 + Tasa(t.habitacion));
    }
    oferta.impuestos = com::Redondea(impuestos, 2);
  }

  // The tax factor of a room's type, asked for once.
  double Tasa(const std::string& habitacion) {
    const int fila = cuadro_.FilaDe(habitacion);
    const auto tipo =
        std::ranges::find_if(tipos_, [&](const Tipo& t) { return std::ranges::find(t.filas, fila) != t.filas.end(); });
    const auto [tasa, nueva] = tasas_.try_emplace(tipo->clave, 0);
    if (nueva) tasa->second = TasaImpuesto(tipo->producto);
    return tasa->second;
  }

  const Cuadro& cuadro_;
  const Pedido& pedido_;
  double tipoCambio_;
  std::vector<Tipo> tipos_;
  std::map<std::string, double> tasas_;  // by type
};

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
  const com::Fecha hoy = com::SoloFecha(publico::Utilerias().FechaServidor());
  if (pedido.llegada < hoy)
    Rechaza("El " + regional::FechaCorta(pedido.llegada) + " ya pasó: hoy es " + regional::FechaCorta(hoy));
  if (noches < 1) Rechaza("La salida debe ser posterior a la llegada");
  if (noches > kNochesMaximas) Rechaza("Se cotizan hasta " + std::to_string(kNochesMaximas) + " noches");
  if (pedido.adultos < 1 || pedido.menores < 0 || pedido.infantes < 0) Rechaza("Se necesita un adulto al menos");
  Pedido nuevo = pedido;
  if (nuevo.moneda.empty()) nuevo.moneda = publico::LeeTexto(anfitrion::parametro::kMonedaLocal);
  const double cambio = publico::Utilerias().TipoCambio(nuevo.moneda, publico::Utilerias().FechaServidor());
  Cuadro cuadro;
  cuadro.Abre(pedido.llegada, std::max(noches, kNochesMinimas));
  std::vector<Oferta> ofertas = Cotizador(cuadro, nuevo, cambio).Ofertas();
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
