// The steps of the price source, as the front desk tells them.
#include "host/contract/explicacion.h"

#include "host/standalone/anfitrion.h"
#include "host/standalone/fabricas.h"
#include "host/standalone/precios.h"
#include "host/standalone/registro.h"
#include "platform/regional/nombres.h"
#include "platform/regional/regional.h"

namespace autonomo {

namespace {

std::string Dias(const std::string& dias) {
  std::string texto;
  for (std::size_t i = 0; i < dias.size(); ++i) {
    const auto dia = static_cast<std::size_t>(dias[i] - '1');
    if (dia >= regional::kDias.size()) continue;
    texto += (texto.empty() ? "" : i + 1 == dias.size() ? " y " : ", ") + std::string(regional::kDias[dia]);
  }
  return texto;
}

// "tarifa 4, del 16/12/2026 al 06/01/2027, viernes y sábado".
std::string EnPalabras(const Tarifa* tarifa) {
  if (tarifa == nullptr) return "precio de lista";
  std::string texto = "tarifa " + std::to_string(tarifa->id);
  if (tarifa->inicio && tarifa->fin) {
    texto += ", del " + regional::FechaCorta(*tarifa->inicio) + " al " + regional::FechaCorta(*tarifa->fin);
  } else if (tarifa->inicio) {
    texto += ", desde el " + regional::FechaCorta(*tarifa->inicio);
  } else if (tarifa->fin) {
    texto += ", hasta el " + regional::FechaCorta(*tarifa->fin);
  }
  if (!tarifa->dias.empty()) texto += ", " + Dias(tarifa->dias);
  return texto;
}

double Pesos(std::int64_t centavos) { return static_cast<double>(centavos) / 100; }

class ServicioExplicacion : public com::Objeto<anfitrion::ExplicaPrecios> {
 public:
  explicit ServicioExplicacion(Anfitrion& host) : host_(host) {}

  anfitrion::ExplicacionPrecio ExplicaHabitacion(const std::string& habitacion, com::Fecha inicio, com::Fecha fin,
                                                 int adultos, int menores, const std::string& moneda,
                                                 double tipoCambio) override {
    const registro::Operacion operacion("ExplicaPrecios.ExplicaHabitacion");
    const Cotizado c =
        CotizaEstancia(*host_.conexion(), habitacion, inicio, fin, {adultos, menores}, moneda, tipoCambio);
    anfitrion::ExplicacionPrecio e;
    e.motivo = c.motivo;
    e.tipo = c.cuarto.descripcionTipo;
    e.incluidas = c.cuarto.personasIncluidas;
    e.adultosExtra = c.extra.adultos;
    e.menoresExtra = c.extra.menores;
    e.tipoCambio = c.tipoCambio;
    e.precio = Pesos(c.precio.habitacion);
    e.precioExtra = Pesos(c.precio.extra);
    const Tarifa* anterior = nullptr;
    for (const NochePrecio& n : c.precio.noches) {
      const com::Fecha siguiente = com::MasDias(n.noche, 1);
      if (!e.pasos.empty() && n.tarifa == anterior) {
        e.pasos.back().hasta = siguiente;
        continue;
      }
      anterior = n.tarifa;
      anfitrion::PasoPrecio paso;
      paso.desde = n.noche;
      paso.hasta = siguiente;
      paso.tarifa = EnPalabras(n.tarifa);
      paso.precio = n.precio;
      if (n.tarifa != nullptr) {
        paso.adultoExtra = n.tarifa->adultoExtra;
        paso.menorExtra = n.tarifa->menorExtra;
      }
      paso.importe = Pesos(n.habitacion);
      paso.importeExtra = Pesos(n.extra);
      e.pasos.push_back(std::move(paso));
    }
    return e;
  }

 private:
  Anfitrion& host_;
};

}  // namespace

com::Ptr<anfitrion::ExplicaPrecios> CreaExplicaPrecios(Anfitrion& host) {
  return com::Ptr<anfitrion::ExplicaPrecios>(new ServicioExplicacion(host));
}

}  // namespace autonomo
