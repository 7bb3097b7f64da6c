#include "host/standalone/visto.h"

#include <algorithm>
#include <charconv>

#include "host/contract/servicios.h"
#include "host/standalone/documento.h"
#include "platform/ado/celda.h"
#include "platform/regional/regional.h"

namespace autonomo {

namespace {

constexpr std::size_t kVistas = 16;
constexpr char kFin = '\x1f';  // ends each part of a view as text

struct CampoVisto {
  const char *columna, *nombre;
};
constexpr CampoVisto kCampos[] = {
    {"Es_Cve_Estado", "Estado"},
    {"Rs_Fecha", "Fecha"},
    {"Rs_Llegada", "Llegada"},
    {"Rs_Salida", "Salida"},
    {"Rs_Huesped", "Huésped"},
    {"Cl_Cve_Cliente", "Cliente"},
    {"Sc_Cve_Sucursal", "Sucursal"},
    {"Mn_Cve_Moneda", "Moneda"},
    {"Rs_Tipo_Cambio", "Tipo de cambio"},
    {"Fp_Cve_Forma_Pago", "Forma de pago"},
    {"Rs_Referencia", "Referencia"},
    {"Rs_Comentario", "Comentario"},
    {"Rs_Notas", "Notas"},
};

std::string Texto(const com::Variant& valor) {
  if (valor.EsNulo()) return {};
  if (valor.EsFecha()) return regional::TextoFecha(com::CDate(valor));
  return com::Recorta(com::CStr(valor));
}

// A room with its nights, which tell two lines of one room apart, and what is captured for it.
Imagen::value_type Renglon(const ado::Recordset& filas) {
  const auto texto = [&](const char* columna) { return Texto(filas.Fields(columna).Value()); };
  const com::Variant importe = filas.Fields("Rsd_Precio_Neto_Importe").Value();
  return {"Habitación " + texto("Hb_Cve_Habitacion") + " del " + texto("Rsd_Fecha_Inicio") + " al " +
              texto("Rsd_Fecha_Fin"),
          texto("Rsd_Adultos") + " adultos, " + texto("Rsd_Menores") + " menores, " + texto("Rsd_Infantes") +
              " infantes, " + (importe.EsNulo() ? std::string() : regional::Moneda(com::CDbl(importe)))};
}

const std::string* Busca(const Imagen& imagen, const std::string& nombre) {
  const auto it = std::ranges::find(imagen, nombre, &Imagen::value_type::first);
  return it == imagen.end() ? nullptr : &it->second;
}

std::string Linea(const std::string& nombre, const std::string* antes, const std::string* despues) {
  const auto dice = [](const std::string* valor) {
    return valor == nullptr ? "(no estaba)" : valor->empty() ? "(vacío)" : *valor;
  };
  return "- " + nombre + ": " + dice(antes) + " -> " + (despues == nullptr ? "(ya no está)" : dice(despues)) + "\r\n";
}

}  // namespace

Imagen ImagenDe(ado::Recordset& filas) {
  Imagen imagen;
  if (filas.RecordCount() == 0) return imagen;
  filas.MoveFirst();
  for (const CampoVisto& campo : kCampos) {
    const std::string valor = Texto(filas.Fields(campo.columna).Value());
    const bool estado = std::string_view(campo.columna) == "Es_Cve_Estado";
    imagen.emplace_back(campo.nombre, estado ? EstadoLegible(valor) : valor);
  }
  for (; !filas.Eof(); filas.MoveNext()) imagen.push_back(Renglon(filas));
  filas.MoveFirst();
  return imagen;
}

std::string Diferencias(const Imagen& antes, const Imagen& despues) {
  std::string texto;
  if (antes.empty()) return texto;  // what this connection itself wrote last
  for (const auto& [nombre, valor] : antes) {
    const std::string* ahora = Busca(despues, nombre);
    if (ahora == nullptr || *ahora != valor) texto += Linea(nombre, &valor, ahora);
  }
  for (const auto& [nombre, valor] : despues) {
    if (Busca(antes, nombre) == nullptr) texto += Linea(nombre, nullptr, &valor);
  }
  return texto;
}

Vista LeeVista(ConexionDeMotor& motor, const std::string& folio, const ado::TextoSQL& carga) {
  const ado::RecordsetPtr version =
      motor.Consulta("SELECT Rv_Version FROM Reservacion_Version WHERE Rs_Folio = ?", {folio});
  const ado::RecordsetPtr bitacora = motor.Consulta(
      "SELECT MAX(Bt_Id) FROM Bitacora WHERE Bt_Modulo = ? AND Bt_Clave = ?", {anfitrion::kModulo, folio});
  return {folio, version->Eof() ? 0 : ado::CeldaEntero(*version, 0), ado::CeldaEntero(*bitacora, 0), carga, {}};
}

std::string EnTexto(const Vista& vista) {
  std::string texto = std::to_string(vista.version) + kFin + std::to_string(vista.bitacora) + kFin;
  for (const auto& [nombre, valor] : vista.imagen) texto += nombre + kFin + valor + kFin;
  return texto;
}

void DeTexto(const std::string& texto, Vista& vista) {
  std::vector<std::string> partes;
  for (std::size_t desde = 0, fin = 0; (fin = texto.find(kFin, desde)) != std::string::npos; desde = fin + 1) {
    partes.push_back(texto.substr(desde, fin - desde));
  }
  const auto numero = [&](std::size_t i) -> std::int32_t {
    std::int32_t n = -1;
    if (i < partes.size()) std::from_chars(partes[i].data(), partes[i].data() + partes[i].size(), n);
    return n;
  };
  vista.version = numero(0);
  if (vista.version < 0) return;
  vista.bitacora = numero(1);
  vista.imagen.clear();
  for (std::size_t i = 2; i + 1 < partes.size(); i += 2) vista.imagen.emplace_back(partes[i], partes[i + 1]);
}

Vista* Vistas::Busca(const std::string& folio) {
  const auto it = std::ranges::find_if(vistas_, [&](const Vista& v) { return com::IgualSinCaja(v.folio, folio); });
  return it == vistas_.end() ? nullptr : &*it;
}

void Vistas::Recuerda(Vista vista) {
  std::erase_if(vistas_, [&](const Vista& v) { return com::IgualSinCaja(v.folio, vista.folio); });
  vistas_.push_front(std::move(vista));
  if (vistas_.size() > kVistas) vistas_.pop_back();
}

}  // namespace autonomo
