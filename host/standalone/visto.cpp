#include "host/standalone/visto.h"

#include <algorithm>

#include "host/standalone/documento.h"
#include "platform/regional/regional.h"

namespace autonomo {

namespace {

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

}  // namespace autonomo
