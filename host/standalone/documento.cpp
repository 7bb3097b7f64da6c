#include "host/standalone/documento.h"

#include <algorithm>

#include "host/contract/estados_legibles.h"
#include "host/standalone/palabras.h"
#include "host/standalone/parametros.h"
#include "platform/ado/celda.h"
#include "platform/com/variant.h"
#include "platform/regional/regional.h"

namespace autonomo {

namespace {

struct FichaCliente {
  std::string nombre, correo;
};

FichaCliente LeeCliente(Conexion& conexion, const std::string& clave) {
  const ado::RecordsetPtr rs =
      conexion.Consulta("SELECT Cl_Razon_Social_1, Cl_Correo FROM Cliente WHERE Cl_Cve_Cliente = ?", {clave});
  if (rs->Eof()) return {};
  return {ado::Celda(*rs, "Cl_Razon_Social_1"), com::Recorta(ado::Celda(*rs, "Cl_Correo"))};
}

void LeeRenglones(Conexion& conexion, Documento& d) {
  const ado::RecordsetPtr rs = conexion.Consulta(
      "SELECT RSd.Hb_Cve_Habitacion, TH.Th_Descripcion, HB.Hb_Descripcion, RSd.Rsd_Fecha_Inicio, RSd.Rsd_Fecha_Fin, "
      "RSd.Rsd_Adultos, RSd.Rsd_Menores, RSd.Rsd_Infantes, RSd.Rsd_Precio_Neto_Importe, "
      "RSd.Rsd_Impuesto_Importe "
      "FROM Reservacion_Detalle RSd "
      "LEFT JOIN Habitacion HB ON HB.Hb_Cve_Habitacion = RSd.Hb_Cve_Habitacion "
      "LEFT JOIN Tipo_Habitacion TH ON TH.Th_Cve_Tipo_Habitacion = HB.Th_Cve_Tipo_Habitacion "
      "WHERE RSd.Rs_Folio = ? ORDER BY RSd.Rsd_Id",
      {d.folio});
  for (; !rs->Eof(); rs->MoveNext()) {
    RenglonDocumento r;
    r.habitacion = ado::Celda(*rs, "Hb_Cve_Habitacion");
    r.descripcion = ado::Celda(*rs, "Th_Descripcion") + " / " + ado::Celda(*rs, "Hb_Descripcion");
    r.inicio = ado::CeldaFecha(*rs, "Rsd_Fecha_Inicio");
    r.fin = ado::CeldaFecha(*rs, "Rsd_Fecha_Fin");
    r.adultos = static_cast<int>(ado::CeldaNumero(*rs, "Rsd_Adultos"));
    r.menores = static_cast<int>(ado::CeldaNumero(*rs, "Rsd_Menores"));
    r.infantes = static_cast<int>(ado::CeldaNumero(*rs, "Rsd_Infantes"));
    r.total = com::Redondea(ado::CeldaNumero(*rs, "Rsd_Precio_Neto_Importe"), 2);
    r.impuestos = ado::CeldaNumero(*rs, "Rsd_Impuesto_Importe");
    d.renglones.push_back(std::move(r));
  }
}

// "1 adulto", "2 adultos"; nothing for none.
void AgregaCuenta(std::string& texto, int cuantos, const char* uno, const char* varios) {
  if (cuantos == 0) return;
  if (!texto.empty()) texto += ", ";
  texto += std::to_string(cuantos) + " " + (cuantos == 1 ? uno : varios);
}

std::string PersonasLegibles(const RenglonDocumento& r) {
  std::string texto;
  AgregaCuenta(texto, r.adultos, "adulto", "adultos");
  AgregaCuenta(texto, r.menores, "menor", "menores");
  AgregaCuenta(texto, r.infantes, "infante", "infantes");
  return texto.empty() ? "sin personas" : texto;
}

}  // namespace

std::string EstadoLegible(const std::string& estado) {
  const std::string codigo = com::Mayusculas(estado);
  const std::string_view palabra = anfitrion::estado::PalabraDe(codigo);
  return palabra == codigo ? estado : std::string(palabra);
}

std::optional<Documento> LeeDocumento(Conexion& conexion, const std::string& folio) {
  const ado::RecordsetPtr rs = conexion.Consulta(
      "SELECT Rs_Folio, Es_Cve_Estado, Rs_Fecha, Rs_Llegada, Rs_Salida, Cl_Cve_Cliente, Rs_Huesped, Mn_Cve_Moneda, "
      "Rs_Referencia, Rs_Comentario, Rs_Notas FROM Reservacion WHERE Rs_Folio = ?",
      {folio});
  if (rs->Eof()) return std::nullopt;
  Documento d;
  d.hotel = ValorParametro(conexion, anfitrion::parametro::kNombreHotel.clave);
  if (EsDemo(conexion)) d.hotel += " (DEMO)";
  d.folio = ado::Celda(*rs, "Rs_Folio");
  d.estado = ado::Celda(*rs, "Es_Cve_Estado");
  d.captura = ado::CeldaFecha(*rs, "Rs_Fecha");
  d.llegada = ado::CeldaFecha(*rs, "Rs_Llegada");
  d.salida = ado::CeldaFecha(*rs, "Rs_Salida");
  d.claveHuesped = ado::Celda(*rs, "Rs_Huesped");
  d.claveCliente = ado::Celda(*rs, "Cl_Cve_Cliente");
  if (d.claveCliente.empty()) d.claveCliente = d.claveHuesped;
  d.moneda = ado::Celda(*rs, "Mn_Cve_Moneda");
  d.referencia = ado::Celda(*rs, "Rs_Referencia");
  d.comentario = ado::Celda(*rs, "Rs_Comentario");
  d.notas = ado::Celda(*rs, "Rs_Notas");
  const FichaCliente pagador = LeeCliente(conexion, d.claveCliente);
  d.cliente = pagador.nombre;
  d.correo = pagador.correo;
  d.huesped = LeeCliente(conexion, d.claveHuesped).nombre;
  LeeRenglones(conexion, d);
  return d;
}

Carta CartaDe(const std::string& estado) {
  const auto es = [&](std::string_view codigo) { return com::IgualSinCaja(estado, codigo); };
  if (es(esquema::kConfirmada)) {
    return {"Confirmación", "Confirmación de reservación", "Su reservación está confirmada con los datos siguientes."};
  }
  if (es(esquema::kActiva)) {
    return {"Confirmación", "Confirmación de reservación", "Su reservación quedó registrada con los datos siguientes."};
  }
  if (es(esquema::kCancelada)) {
    return {"Cancelación", "Cancelación de reservación", "Su reservación está cancelada. Éstos eran sus datos."};
  }
  return {"Copia", "Copia de reservación", "Éstos son los datos de su reservación."};
}

Campos CamposDe(const Documento& d) {
  double total = 0;
  double impuestos = 0;
  std::string habitaciones;
  std::string renglones;
  for (const RenglonDocumento& r : d.renglones) {
    total += r.total;
    impuestos += r.impuestos;
    if (!habitaciones.empty()) habitaciones += ", ";
    habitaciones += r.habitacion + " (" + r.descripcion + ")";
    if (!renglones.empty()) renglones += "\n";
    renglones += r.habitacion + "  " + r.descripcion + ", " + regional::FechaCorta(r.inicio) + " al " +
                 regional::FechaCorta(r.fin) + ", " + PersonasLegibles(r) + ": " + regional::Moneda(r.total);
  }
  impuestos = com::Redondea(impuestos, 2);
  const Carta carta = CartaDe(d.estado);
  return {
      {"titulo", carta.titulo},
      {"mensaje", carta.mensaje},
      {"folio", d.folio},
      {"estado", EstadoLegible(d.estado)},
      {"hotel", d.hotel},
      {"huesped", d.huesped},
      {"cliente", d.cliente},
      {"captura", regional::FechaCorta(d.captura)},
      {"llegada", regional::FechaCorta(d.llegada)},
      {"salida", regional::FechaCorta(d.salida)},
      {"noches", std::to_string(com::DiasEntre(d.llegada, d.salida))},
      {"habitaciones", habitaciones},
      {"subtotal", regional::Moneda(total - impuestos)},
      {"impuestos", regional::Moneda(impuestos)},
      {"total", regional::Moneda(total)},
      {"moneda", d.moneda},
      {"referencia", d.referencia},
      {"comentario", d.comentario},
      {"notas", d.notas},
      {"notas_rotuladas", com::Recorta(d.notas).empty() ? "" : "Notas: " + d.notas},
      {"renglones", renglones},
  };
}

CamposNombrados NombradosEn(std::string_view plantilla) {
  static const Campos kConocidos = CamposDe({});
  CamposNombrados nombrados;
  for (std::size_t i = plantilla.find('{'); i != std::string_view::npos; i = plantilla.find('{', i + 1)) {
    // What stands in braces on one line and could be a slip of a field's name; a style sheet's braces hold ":" or ";".
    const std::size_t fin = plantilla.find_first_of("{}:;\r\n", i + 1);
    if (fin == std::string_view::npos || fin == i + 1 || plantilla[fin] != '}') continue;
    if (!std::ranges::any_of(plantilla.substr(i + 1, fin - i - 1), EsInicioDeNombre)) continue;
    auto& lista = kConocidos.contains(plantilla.substr(i + 1, fin - i - 1)) ? nombrados.conocidos : nombrados.ajenos;
    const std::string campo(plantilla.substr(i, fin - i + 1));
    if (std::ranges::find(lista, campo) == lista.end()) lista.push_back(campo);
  }
  return nombrados;
}

std::string DichoDeAjenos(const std::vector<std::string>& ajenos) {
  std::string dicho = "tiene campos que no existen: ";
  for (const std::string& campo : ajenos) dicho += (&campo == &ajenos.front() ? "" : ", ") + campo;
  return dicho;
}

std::string Rellena(std::string_view plantilla, const Campos& campos) {
  std::string salida;
  std::size_t i = 0;
  while (i < plantilla.size()) {
    const std::size_t abre = plantilla.find('{', i);
    if (abre == std::string_view::npos) break;
    salida += plantilla.substr(i, abre - i);
    const std::size_t cierra = plantilla.find('}', abre);
    const auto campo =
        cierra == std::string_view::npos ? campos.end() : campos.find(plantilla.substr(abre + 1, cierra - abre - 1));
    if (campo == campos.end()) {
      salida += '{';
      i = abre + 1;
    } else {
      salida += campo->second;
      i = cierra + 1;
    }
  }
  if (i < plantilla.size()) salida += plantilla.substr(i);
  return salida;
}

}  // namespace autonomo
