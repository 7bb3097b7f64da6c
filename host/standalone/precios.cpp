#include "host/standalone/precios.h"

#include <algorithm>
#include <cmath>
#include <tuple>

#include "host/standalone/parametros.h"
#include "host/standalone/transaccion.h"
#include "platform/com/variant.h"
#include "platform/regional/regional.h"

namespace autonomo {

namespace {

std::int64_t Centavos(double importe) { return std::llround(com::Redondea(importe, 2) * 100); }

std::optional<com::Fecha> FechaOpcional(const com::Variant& v) {
  if (v.EsNulo() || v.EsVacio() || (v.EsTexto() && com::Recorta(com::CStr(v)).empty())) return std::nullopt;
  return com::SoloFecha(com::CDate(v));
}

std::string Texto(const com::Variant& v) { return com::Recorta(com::TextoDe(v)); }

}  // namespace

bool CubreNoche(const Tarifa& tarifa, com::Fecha noche) {
  if (tarifa.inicio && noche < *tarifa.inicio) return false;
  if (tarifa.fin && noche > *tarifa.fin) return false;
  const char dia = static_cast<char>('0' + com::DiaSemana(noche));
  return tarifa.dias.empty() || tarifa.dias.find(dia) != std::string::npos;
}

const Tarifa* TarifaDeNoche(std::span<const Tarifa> tarifas, com::Fecha noche) {
  const auto rango = [](const Tarifa& t) {
    return std::tuple(t.inicio.has_value() || t.fin.has_value(), !t.dias.empty(), t.id);
  };
  const Tarifa* mejor = nullptr;
  for (const Tarifa& t : tarifas) {
    if (!CubreNoche(t, noche)) continue;
    if (mejor == nullptr || rango(t) > rango(*mejor)) mejor = &t;
  }
  return mejor;
}

Personas PersonasExtra(int incluidas, Personas personas) {
  const int adultosDentro = std::min(personas.adultos, std::max(incluidas, 0));
  const int menoresDentro = std::min(personas.menores, std::max(incluidas, 0) - adultosDentro);
  return {personas.adultos - adultosDentro, personas.menores - menoresDentro};
}

PrecioEstancia PrecioDeEstancia(std::span<const Tarifa> tarifas, std::optional<double> precioLista, com::Fecha inicio,
                                com::Fecha fin, Personas extra, double tipoCambio) {
  PrecioEstancia total;
  for (com::Fecha noche = com::SoloFecha(inicio); noche.dia < fin.dia; noche = com::MasDias(noche, 1)) {
    const Tarifa* tarifa = TarifaDeNoche(tarifas, noche);
    if (tarifa == nullptr && !precioLista) {
      PrecioEstancia falta;
      falta.sinTarifa = noche;
      return falta;
    }
    NochePrecio esta{noche, tarifa, tarifa != nullptr ? tarifa->precio : *precioLista, 0, 0};
    esta.habitacion = Centavos(esta.precio / tipoCambio);
    if (tarifa != nullptr) {
      esta.extra = Centavos((extra.adultos * tarifa->adultoExtra + extra.menores * tarifa->menorExtra) / tipoCambio);
    }
    total.habitacion += esta.habitacion;
    total.extra += esta.extra;
    total.noches.push_back(esta);
  }
  return total;
}

std::optional<CuartoConTipo> LeeCuarto(Conexion& conexion, const std::string& habitacion) {
  const ado::RecordsetPtr rs = conexion.Consulta(
      "SELECT HB.Hb_Cve_Habitacion, HB.Th_Cve_Tipo_Habitacion, TH.Th_Descripcion, TH.Pr_Cve_Producto, "
      "TH.Th_Num_Personas, HB.Es_Cve_Estado, "
      "(SELECT COUNT(*) FROM Producto PR "
      "INNER JOIN Producto_Precio PP ON PP.Pr_Cve_Producto = PR.Pr_Cve_Producto "
      "WHERE PR.Pr_Cve_Producto = TH.Pr_Cve_Producto) "
      "FROM Habitacion HB "
      "INNER JOIN Tipo_Habitacion TH ON TH.Th_Cve_Tipo_Habitacion = HB.Th_Cve_Tipo_Habitacion "
      "WHERE HB.Hb_Cve_Habitacion = ?",
      {habitacion});
  if (rs->Eof()) return std::nullopt;
  CuartoConTipo c;
  c.habitacion = Texto(rs->Fields(0).Value());
  c.tipo = Texto(rs->Fields(1).Value());
  c.descripcionTipo = Texto(rs->Fields(2).Value());
  c.producto = Texto(rs->Fields(3).Value());
  c.personasIncluidas = rs->Fields(4).Value().EsNulo() ? 0 : com::CInt(rs->Fields(4).Value());
  c.deBaja = com::IgualSinCaja(Texto(rs->Fields(5).Value()), esquema::kBaja);
  c.preciosDeLista = com::CLng(rs->Fields(6).Value());
  return c;
}

std::vector<Tarifa> LeeTarifas(Conexion& conexion, const std::string& tipo, com::Fecha inicio, com::Fecha fin) {
  const ado::RecordsetPtr rs = conexion.Consulta(
      "SELECT Tf_Id, Tf_Inicio, Tf_Fin, Tf_Dias, Tf_Precio, Tf_Adulto_Extra, Tf_Menor_Extra FROM Tarifa "
      "WHERE Th_Cve_Tipo_Habitacion = ? AND (Tf_Inicio IS NULL OR Tf_Inicio < ?) AND (Tf_Fin IS NULL OR Tf_Fin >= ?)",
      {tipo, com::SoloFecha(fin), com::SoloFecha(inicio)});
  std::vector<Tarifa> tarifas;
  tarifas.reserve(static_cast<std::size_t>(rs->RecordCount()));
  for (; !rs->Eof(); rs->MoveNext()) {
    Tarifa t;
    t.id = com::CLng(rs->Fields(0).Value());
    t.inicio = FechaOpcional(rs->Fields(1).Value());
    t.fin = FechaOpcional(rs->Fields(2).Value());
    t.dias = Texto(rs->Fields(3).Value());
    t.precio = com::CDbl(rs->Fields(4).Value());
    t.adultoExtra = com::CDbl(rs->Fields(5).Value());
    t.menorExtra = com::CDbl(rs->Fields(6).Value());
    tarifas.push_back(std::move(t));
  }
  return tarifas;
}

std::optional<double> LeePrecioLista(Conexion& conexion, const std::string& producto) {
  const ado::RecordsetPtr rs =
      conexion.Consulta("SELECT Pp_Precio_1 FROM Producto_Precio WHERE Pr_Cve_Producto = ?", {producto});
  if (rs->Eof() || rs->Fields(0).Value().EsNulo()) return std::nullopt;
  return com::CDbl(rs->Fields(0).Value());
}

bool ExisteMoneda(Conexion& conexion, const std::string& moneda) {
  return Hay(conexion, "SELECT Mn_Cve_Moneda FROM Moneda WHERE Mn_Cve_Moneda = ? AND Es_Cve_Estado <> 'BA'", {moneda});
}

Cotizado CotizaEstancia(Conexion& conexion, const std::string& habitacion, com::Fecha inicio, com::Fecha fin,
                        Personas personas, const std::string& moneda, double tipoCambio) {
  Cotizado c;
  const auto rechaza = [&](std::string motivo) {
    c.motivo = std::move(motivo);
    return std::move(c);
  };
  const std::optional<CuartoConTipo> cuarto = LeeCuarto(conexion, habitacion);
  if (!cuarto) return rechaza("La habitación " + habitacion + " no existe");
  c.cuarto = *cuarto;
  if (fin.dia <= inicio.dia) return rechaza("La fecha final debe ser posterior a la fecha inicial");
  if (personas.adultos < 0 || personas.menores < 0) return rechaza("El número de personas no puede ser negativo");
  if (!EsMonedaLocal(conexion, moneda)) {
    if (!ExisteMoneda(conexion, moneda)) return rechaza("La moneda '" + moneda + "' no existe");
    if (!(tipoCambio > 0) || !std::isfinite(tipoCambio)) {
      return rechaza("El tipo de cambio de la moneda " + moneda + " debe ser mayor a 0");
    }
    c.tipoCambio = tipoCambio;
  }
  c.extra = PersonasExtra(c.cuarto.personasIncluidas, personas);
  c.tarifas = LeeTarifas(conexion, c.cuarto.tipo, inicio, fin);
  c.precio =
      PrecioDeEstancia(c.tarifas, LeePrecioLista(conexion, c.cuarto.producto), inicio, fin, c.extra, c.tipoCambio);
  if (c.precio.sinTarifa) {
    return rechaza("No hay tarifa para " + c.cuarto.descripcionTipo + " la noche del " +
                   regional::FechaCorta(*c.precio.sinTarifa));
  }
  return c;
}

}  // namespace autonomo
