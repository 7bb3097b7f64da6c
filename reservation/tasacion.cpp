// Keeps the amounts of the room lines true to the header: a line priced under another guest, currency or rate is priced
// again, an agreed price follows the currency.
#include "reservation/tasacion.h"

#include <algorithm>
#include <iterator>

#include "platform/regional/regional.h"
#include "publico/avisos.h"
#include "publico/columnas.h"
#include "publico/publico.h"
#include "reservation/frmKV207.h"
#include "reservation/renglones.h"

namespace kv207 {

namespace mensaje = anfitrion::mensaje;

// --- rules ---

Falta QueFalta(const PrecioRenglon* precio, const CondicionesPrecio& ahora) {
  if (precio == nullptr) return Falta::Tasar;
  if (!precio->acuerdo) return precio->incompleto || precio->condiciones != ahora ? Falta::Tasar : Falta::Nada;
  const CondicionesEncabezado &antes = precio->condiciones.encabezado, &actual = ahora.encabezado;
  if (actual.tipoCambio <= 0 || precio->acuerdo->tipoCambio <= 0) return Falta::Nada;
  if (precio->incompleto) return Falta::Convertir;
  const bool otroCambio = actual.moneda != precio->acuerdo->moneda && antes.tipoCambio != actual.tipoCambio;
  return antes.moneda != actual.moneda || otroCambio ? Falta::Convertir : Falta::Nada;
}

double Convierte(double importe, const Acuerdo& acuerdo, const std::string& moneda, double tipoCambio) {
  if (moneda == acuerdo.moneda) return importe;
  return com::Redondea(importe * acuerdo.tipoCambio / tipoCambio, 2);
}

void DerivaImportes(controles::Grid& grid, int fila, bool porImporte) {
  const auto importe = [&](std::string_view columna) { return com::CDbl(grid.celda(fila, columna)); };
  ImportesRenglon renglon;
  renglon.precio = importe(col::kPrecio);
  renglon.personaExtra = importe(col::kPrecioExtra);
  renglon.impuesto = importe(col::kImpuesto);
  renglon.descuento = importe(col::kDescuento);
  renglon.descuentoImporte = importe(col::kDescuentoImporte);
  renglon = RederivaImportes(renglon, porImporte);
  grid.celda(fila, col::kDescuento, renglon.descuento);
  grid.celda(fila, col::kDescuentoImporte, renglon.descuentoImporte);
  grid.celda(fila, col::kImpuestoImporte, renglon.impuestoImporte);
  grid.celda(fila, col::kTotal, renglon.total);
}

bool EsAcordado(OrigenPrecio origen) { return origen == OrigenPrecio::Acordado || origen == OrigenPrecio::Guardado; }

namespace {

// A line with more persons than its room holds is refused elsewhere, and not priced again before.
bool Excede(const CondicionesPrecio& c, const com::Variant& maximo) {
  return !CeldaVacia(maximo) && c.adultos + c.menores + c.infantes > com::CDbl(maximo);
}

// "Renglón 1: el precio acordado, $1,234.00"
std::string NombraPrecio(int fila, OrigenPrecio origen, double total) {
  return "Renglón " + std::to_string(fila + 1) + ": el precio " +
         (origen == OrigenPrecio::Acordado ? "acordado, " : "guardado, ") + regional::Moneda(total);
}

}  // namespace

// --- the lines ---

// Nothing for a line that cannot be priced: without room, dates or persons, or with persons that are no number.
std::optional<CondicionesPrecio> frmKV207::Condiciones(int fila) const {
  const controles::Grid& grid = ssReservaciones;
  const auto inicio = FechaSiLaHay(grid.celda(fila, col::kInicio)), fin = FechaSiLaHay(grid.celda(fila, col::kFin));
  if (CeldaVacia(grid.celda(fila, col::kNombre)) || !inicio || !fin) return std::nullopt;
  CondicionesPrecio c;
  try {
    c.adultos = PersonasDeCelda(grid.celda(fila, col::kAdultos));
    c.menores = PersonasDeCelda(grid.celda(fila, col::kMenores));
    c.infantes = PersonasDeCelda(grid.celda(fila, col::kInfantes));
  } catch (const com::Error&) {  // said where the persons are used
    return std::nullopt;
  }
  if (c.adultos + c.menores + c.infantes == 0) return std::nullopt;
  c.habitacion = com::CStr(grid.celda(fila, col::kClave));
  c.inicio = com::SoloFecha(*inicio);
  c.fin = com::SoloFecha(*fin);
  c.encabezado = {txtHuesped.text(), txtMoneda.text(), com::SoloFecha(dpFecha.valor()),
                  com::CDbl(txtTipoCambio.valor())};
  return c;
}

const PrecioRenglon* frmKV207::PrecioDe(int fila) const {
  const auto precio = precios_.find(ssReservaciones.Marcador(fila));
  return precio == precios_.end() ? nullptr : &precio->second;
}

void frmKV207::OlvidaPrecio(int fila) { precios_.erase(ssReservaciones.Marcador(fila)); }

void frmKV207::AnotaTarifa(int fila, bool conError) {
  if (auto condiciones = Condiciones(fila)) {
    precios_[ssReservaciones.Marcador(fila)] = {*std::move(condiciones), conError, std::nullopt};
  }
}

void frmKV207::AnotaAcuerdo(int fila, bool incompleto, bool tecleado) {
  precioPerdido_.clear();
  auto condiciones = Condiciones(fila);
  if (!condiciones) return OlvidaPrecio(fila);
  const auto importe = [&](std::string_view columna) { return com::CDbl(ssReservaciones.celda(fila, columna)); };
  const CondicionesEncabezado& e = condiciones->encabezado;
  Acuerdo acuerdo{e.moneda, e.tipoCambio, importe(col::kPrecio), importe(col::kPrecioExtra), tecleado};
  precios_[ssReservaciones.Marcador(fila)] = {*std::move(condiciones), incompleto, std::move(acuerdo)};
}

OrigenPrecio frmKV207::OrigenDe(int fila) const {
  const PrecioRenglon* precio = fila < 0 || fila >= ssReservaciones.Filas() ? nullptr : PrecioDe(fila);
  if (precio == nullptr) return OrigenPrecio::Ninguno;
  if (!precio->acuerdo) return OrigenPrecio::Hotel;
  return precio->acuerdo->tecleado ? OrigenPrecio::Acordado : OrigenPrecio::Guardado;
}

std::string frmKV207::AvisoDePrecio() const {
  constexpr std::string_view kCambian[] = {col::kInicio, col::kFin, col::kAdultos, col::kMenores, col::kInfantes};
  if (!Controles.EnEdicion()) return {};
  const bool enRenglones = foco() == &ssReservaciones || foco() == &dpFechaGrid;
  const int fila = ssReservaciones.fila();
  const OrigenPrecio origen = OrigenDe(fila);
  if (!enRenglones || !EsAcordado(origen) ||
      std::ranges::find(kCambian, ssReservaciones.ClaveColumna()) == std::end(kCambian)) {
    return precioPerdido_;
  }
  return NombraPrecio(fila, origen, com::CDbl(ssReservaciones.celda(fila, col::kTotal))) +
         ", se pierde si cambia fechas o personas: se pide otra vez el del hotel";
}

void frmKV207::AnotaPerdido(int fila, OrigenPrecio origen, double total) {
  precioPerdido_ = NombraPrecio(fila, origen, total) + ", cambió al del hotel, " +
                   regional::Moneda(com::CDbl(ssReservaciones.celda(fila, col::kTotal)));
}

bool frmKV207::PoneAlDia(int fila) {
  const auto ahora = Condiciones(fila);
  return ahora && PoneAlDia(fila, *ahora);
}

bool frmKV207::PoneAlDia(int fila, const CondicionesPrecio& ahora) {
  if (Excede(ahora, ssReservaciones.celda(fila, col::kPersonasMax))) return false;
  const PrecioRenglon* precio = PrecioDe(fila);
  switch (QueFalta(precio, ahora)) {
    case Falta::Nada:
      return false;
    case Falta::Tasar:
      CalculaRenglon(fila, false);
      return true;
    case Falta::Convertir:
      break;
  }
  PrecioRenglon convertido = *precio;
  const Acuerdo& acuerdo = *convertido.acuerdo;
  const CondicionesEncabezado& e = ahora.encabezado;
  ssReservaciones.celda(fila, col::kPrecio, Convierte(acuerdo.precio, acuerdo, e.moneda, e.tipoCambio));
  ssReservaciones.celda(fila, col::kPrecioExtra, Convierte(acuerdo.personaExtra, acuerdo, e.moneda, e.tipoCambio));
  DerivaImportes(ssReservaciones, fila, false);
  convertido.incompleto = !CalculaRenglon(fila, true);
  convertido.condiciones = ahora;
  precios_[ssReservaciones.Marcador(fila)] = std::move(convertido);
  return true;
}

void frmKV207::PoneAlDiaTodos(const std::function<bool(const PrecioRenglon*, const CondicionesPrecio&)>& cuales) {
  bool cambios = false;
  const auto uno = [&](int fila, const CondicionesPrecio& ahora) {
    const double antes = com::CDbl(ssReservaciones.celda(fila, col::kTotal));
    const auto compara = [&] {
      importesSinDecir_ = importesSinDecir_ || antes != com::CDbl(ssReservaciones.celda(fila, col::kTotal));
    };
    try {
      cambios = PoneAlDia(fila, ahora) || cambios;
    } catch (...) {
      compara();
      Totalizar();
      throw;
    }
    compara();
  };
  for (int fila = 0; fila < ssReservaciones.Filas(); ++fila) {
    const auto ahora = Condiciones(fila);
    if (ahora && cuales(PrecioDe(fila), *ahora)) uno(fila, *ahora);
  }
  if (cambios) Totalizar();
}

void frmKV207::SigueMoneda() {
  const double tipoCambio = com::CDbl(txtTipoCambio.valor());
  if (!Controles.EnEdicion() || txtNHuesped.text().empty() || txtMoneda.text().empty() || tipoCambio <= 0) return;
  const bool sinDecir = importesSinDecir_;
  PoneAlDiaTodos([](const PrecioRenglon* precio, const CondicionesPrecio& ahora) {
    if (precio == nullptr) return false;
    const CondicionesEncabezado& antes = precio->condiciones.encabezado;
    return antes.moneda != ahora.encabezado.moneda || antes.tipoCambio != ahora.encabezado.tipoCambio;
  });
  importesSinDecir_ = sinDecir;  // the clerk sees them follow what she typed
}

bool frmKV207::RevisaPrecios() {
  const bool todos = Atrapa(*this, mensaje::kAceptar, [this] {
    // The hotel's price for this header has been shown or its lack told.
    PoneAlDiaTodos([](const PrecioRenglon* precio, const CondicionesPrecio& ahora) {
      return precio == nullptr || precio->acuerdo || precio->condiciones.encabezado != ahora.encabezado;
    });
  });
  if (todos && !importesSinDecir_) return true;
  if (todos) {
    importesSinDecir_ = false;
    Avisa(*this, mensaje::kSinDisponibilidad,
          "Los importes de las habitaciones se calcularon de nuevo con el huésped, la moneda y el tipo de cambio de la "
          "reservación.\r\nRevise el total y vuelva a aceptar.");
  }
  Enfoca(ssReservaciones);
  Controles.RechazaAceptar();
  return false;
}

}  // namespace kv207
