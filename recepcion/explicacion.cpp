#include "recepcion/explicacion.h"

#include <cmath>

#include "host/contract/explicacion.h"
#include "platform/com/error.h"
#include "platform/com/texto.h"
#include "platform/controls/grid.h"
#include "platform/regional/regional.h"
#include "publico/columnas.h"
#include "publico/controles.h"
#include "publico/publico.h"

namespace recepcion {

namespace {

namespace col = kv207::col;
namespace control = kv207::control;
using controles::Formulario;
using controles::Grid;
using publico::OrigenPrecio;

// What a room line and its header hold.
struct Renglon {
  std::string habitacion, nombre, moneda;
  com::Fecha inicio, fin;
  int adultos = 0, menores = 0, infantes = 0;
  double tipoCambio = 0;
  double precio = 0, extra = 0;
  double descuento = 0, descuentoImporte = 0;  // per cent
  double base = 0, impuesto = 0, total = 0;
};

double Numero(const com::Variant& valor) {
  try {
    return valor.EsVacio() || valor.EsNulo() ? 0 : com::CDbl(valor);
  } catch (const com::Error&) {  // what is half typed is no number
    return 0;
  }
}

const controles::LookupField* Campo(const Formulario& principal, const char* nombre) {
  return controles::Como<controles::LookupField>(principal.Busca(nombre));
}

std::string Texto(const Formulario& principal, const char* nombre) {
  const auto* campo = Campo(principal, nombre);
  return campo == nullptr ? std::string() : campo->text();
}

const Grid& Lineas(const Formulario& principal) {
  const Grid* grid = principal.Primero<Grid>();
  if (grid == nullptr) throw com::Error(com::error::kSinObjeto, "La pantalla no tiene renglones");
  return *grid;
}

com::Fecha Dia(const com::Variant& valor) {
  try {
    return com::SoloFecha(com::CDate(valor));
  } catch (const com::Error&) {  // no date in the cell
    return {};
  }
}

Renglon Lee(const Formulario& principal, int fila) {
  const Grid& grid = Lineas(principal);
  const auto numero = [&](std::string_view columna) { return Numero(grid.celda(fila, columna)); };
  Renglon r;
  r.habitacion = com::Recorta(grid.Texto(fila, col::kClave));
  r.nombre = grid.Texto(fila, col::kNombre);
  r.inicio = Dia(grid.celda(fila, col::kInicio));
  r.fin = Dia(grid.celda(fila, col::kFin));
  r.adultos = static_cast<int>(numero(col::kAdultos));
  r.menores = static_cast<int>(numero(col::kMenores));
  r.infantes = static_cast<int>(numero(col::kInfantes));
  r.precio = numero(col::kPrecio);
  r.extra = numero(col::kPrecioExtra);
  r.descuento = numero(col::kDescuento);
  r.descuentoImporte = numero(col::kDescuentoImporte);
  r.base = numero(col::kPrecioDescontadoImporte);
  r.impuesto = numero(col::kImpuesto);
  r.total = numero(col::kTotal);
  r.moneda = Texto(principal, control::kMoneda);
  if (const auto* cambio = Campo(principal, control::kTipoCambio)) r.tipoCambio = Numero(cambio->valor());
  return r;
}

std::string Cuantos(int n, const char* uno, const char* varios) {
  return std::to_string(n) + " " + (n == 1 ? uno : varios);
}

std::string Pesos(double importe) { return regional::Moneda(importe); }

// "18.5", "16".
std::string SinCerosDetras(double numero, int decimales) {
  std::string texto = std::to_string(com::Redondea(numero, decimales));
  texto.erase(texto.find_last_not_of('0') + 1);
  if (texto.ends_with('.')) texto.pop_back();
  return texto;
}

std::string PorCiento(double porciento) { return SinCerosDetras(porciento, 2) + " %"; }

bool Iguales(double uno, double otro) { return std::abs(uno - otro) < 0.005; }

// The nights and the extra persons, as the price source gives them.
void AgregaPasos(CuentaExplicada& e, const anfitrion::ExplicacionPrecio& hotel) {
  const bool cambia = hotel.tipoCambio != 1;
  const auto enMoneda = [&](const std::string& local) {
    return cambia ? local + " ÷ " + SinCerosDetras(hotel.tipoCambio, 4) : local;
  };
  for (const anfitrion::PasoPrecio& p : hotel.pasos) {
    const int noches = com::DiasEntre(p.desde, p.hasta);
    const std::string cuando =
        noches == 1 ? "la del " + regional::FechaCorta(p.desde)
                    : "del " + regional::FechaCorta(p.desde) + " al " + regional::FechaCorta(com::MasDias(p.hasta, -1));
    e.pasos.push_back({Cuantos(noches, "noche", "noches") + ", " + cuando,
                       std::to_string(noches) + " × " + enMoneda(Pesos(p.precio)) + ", " + p.tarifa,
                       noches * p.importe});
    if (hotel.adultosExtra + hotel.menoresExtra == 0 || p.importeExtra == 0) continue;
    std::string personas, cuenta;
    const auto agrega = [&](int n, const char* una, const char* varias, double precio) {
      if (n == 0) return;
      personas += (personas.empty() ? "" : " y ") + Cuantos(n, una, varias);
      cuenta += (cuenta.empty() ? "" : " + ") + std::to_string(n) + " × " + Pesos(precio);
    };
    agrega(hotel.adultosExtra, "adulto extra", "adultos extra", p.adultoExtra);
    agrega(hotel.menoresExtra, "menor extra", "menores extra", p.menorExtra);
    e.pasos.push_back({personas,
                       std::to_string(noches) + " × " + enMoneda("(" + cuenta + ")") + "; incluidas " +
                           Cuantos(hotel.incluidas, "persona", "personas"),
                       noches * p.importeExtra});
  }
}

// The price of the line against the hotel's.
void AgregaPrecio(CuentaExplicada& e, const Renglon& r, const anfitrion::ExplicacionPrecio& hotel,
                  OrigenPrecio origen) {
  const double suyo = r.precio + r.extra, delHotel = hotel.precio + hotel.precioExtra;
  const bool igual = hotel.motivo.empty() && Iguales(suyo, delHotel);
  e.acordado = origen == OrigenPrecio::Acordado || (origen == OrigenPrecio::Guardado && (!igual || r.descuento != 0));
  if (!hotel.motivo.empty()) {
    e.nota = "El hotel no da un precio: " + hotel.motivo;
  } else {
    AgregaPasos(e, hotel);
    e.pasos.push_back({"Precio del hotel", hotel.tipo, delHotel, true});
    if (hotel.tipoCambio != 1) {
      e.nota = "En " + r.moneda + ", al tipo de cambio " + SinCerosDetras(hotel.tipoCambio, 4);
    }
  }
  if (!igual) {
    const char* cual = origen == OrigenPrecio::Acordado   ? "Precio acordado"
                       : origen == OrigenPrecio::Guardado ? "Precio guardado con la reservación"
                                                          : "Precio del renglón";
    e.pasos.push_back({cual, "sustituye al del hotel", suyo, true});
  }
}

// From the price to the total, in whole cents: discount and tax are what lies between the amounts of the screen, so
// that the rows add up as they are read. The screen's own discount stays 0 where it takes the whole price.
void AgregaCuenta(CuentaExplicada& e, const Renglon& r) {
  const double precio = r.precio + r.extra, base = com::Redondea(r.base, 2), total = com::Redondea(r.total, 2);
  const bool conDescuento = r.descuento != 0 || r.descuentoImporte != 0;
  const double sinImpuesto = conDescuento ? com::Redondea(precio / (1 + r.impuesto), 2) : base;
  e.pasos.push_back({"Antes de impuestos", Pesos(precio) + " ÷ " + PorCiento(100 + 100 * r.impuesto), sinImpuesto});
  if (conDescuento) {
    e.pasos.push_back({"Descuento", PorCiento(r.descuento) + " de " + Pesos(sinImpuesto), base - sinImpuesto});
  }
  e.pasos.push_back({"Impuesto", PorCiento(100 * r.impuesto) + " de " + Pesos(base), total - base});
  e.pasos.push_back({"Total", "", total, true});
}

}  // namespace

publico::OrigenPrecio OrigenDelPrecio(const Formulario& principal, int fila) {
  const auto* captura = dynamic_cast<const publico::Captura*>(&principal);
  return captura == nullptr ? OrigenPrecio::Ninguno : captura->OrigenDe(fila);
}

std::string AvisoDePrecio(const Formulario& principal) {
  const auto* captura = dynamic_cast<const publico::Captura*>(&principal);
  return captura == nullptr ? std::string() : captura->AvisoDePrecio();
}

CuentaExplicada ExplicaRenglon(const Formulario& principal, int fila) {
  const OrigenPrecio origen = OrigenDelPrecio(principal, fila);
  const Renglon r = Lee(principal, fila);
  CuentaExplicada e;
  e.titulo = r.nombre + ", " + regional::FechaCorta(r.inicio) + " – " + regional::FechaCorta(r.fin);
  if (r.adultos + r.menores + r.infantes == 0 || origen == OrigenPrecio::Ninguno) {
    e.nota = "Sin precio: faltan las personas";
    return e;
  }
  const auto fuente =
      publico::CreaServicio<anfitrion::ExplicaPrecios>(anfitrion::kClaseExplicaPrecios, "ExplicaPrecios");
  AgregaPrecio(e, r,
               fuente->ExplicaHabitacion(r.habitacion, r.inicio, r.fin, r.adultos, r.menores, r.moneda, r.tipoCambio),
               origen);
  AgregaCuenta(e, r);
  return e;
}

CuentaExplicada ExplicaTotal(const Formulario& principal) {
  const Grid& grid = Lineas(principal);
  CuentaExplicada e;
  e.titulo = "Total de la reservación";
  for (int fila = 0; fila < grid.Filas(); ++fila) {
    const Renglon r = Lee(principal, fila);
    if (r.nombre.empty()) continue;
    e.pasos.push_back({r.nombre,
                       regional::FechaCorta(r.inicio) + " – " + regional::FechaCorta(r.fin) + ", " + Pesos(r.base) +
                           " e impuesto " + PorCiento(100 * r.impuesto),
                       r.total});
  }
  const auto pie = [&](const char* campo) {
    const auto* control = Campo(principal, campo);
    return control == nullptr ? 0.0 : Numero(control->valor());
  };
  e.pasos.push_back({"Subtotal", "lo de las habitaciones, sin impuestos", pie(control::kSubTotal)});
  e.pasos.push_back({"Impuestos", "", pie(control::kImpuestos)});
  e.pasos.push_back({"Total", "", pie(control::kTotal), true});
  e.nota = "En " + Texto(principal, control::kMoneda);
  return e;
}

bool Acordados::Es(const Formulario& principal, int fila) {
  const OrigenPrecio origen = OrigenDelPrecio(principal, fila);
  if (origen == OrigenPrecio::Acordado) return true;
  const Grid* grid = principal.Primero<Grid>();
  if (origen != OrigenPrecio::Guardado || grid == nullptr || fila < 0 || fila >= grid->Filas()) return false;
  std::string llave = Texto(principal, control::kMoneda) + "|" + Texto(principal, control::kTipoCambio);
  for (const std::string_view columna : {col::kClave, col::kInicio, col::kFin, col::kAdultos, col::kMenores,
                                         col::kPrecio, col::kPrecioExtra, col::kDescuento}) {
    llave += "|" + grid->Texto(fila, columna);
  }
  const auto dicho = dichos_.find(llave);
  if (dicho != dichos_.end()) return dicho->second;
  constexpr std::size_t kMasLineas = 1000;
  if (dichos_.size() >= kMasLineas) dichos_.clear();
  bool es = false;
  try {
    es = ExplicaRenglon(principal, fila).acordado;
  } catch (const com::Error&) {  // a mark more; the line is what it is without it
  }
  return dichos_[llave] = es;
}

std::string TextoDe(const CuentaExplicada& e) {
  std::string texto = e.titulo;
  for (const CuentaExplicada::Paso& p : e.pasos) {
    texto += "\n" + std::string(p.suma ? "= " : "") + p.concepto + (p.detalle.empty() ? "" : " (" + p.detalle + ")") +
             ": " + Pesos(p.importe);
  }
  return e.nota.empty() ? texto : texto + "\n" + e.nota;
}

}  // namespace recepcion
