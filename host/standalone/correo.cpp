#include "host/standalone/correo.h"

#include <algorithm>
#include <string_view>
#include <vector>

#include "host/standalone/bandeja.h"
#include "host/standalone/carta_html.h"
#include "host/standalone/documento.h"

namespace autonomo {

namespace {

// A subject is one line.
std::string UnaLinea(std::string texto) {
  std::replace_if(
      texto.begin(), texto.end(), [](char c) { return static_cast<unsigned char>(c) < ' '; }, ' ');
  return texto;
}

// What stands between points.
std::vector<std::string_view> Partes(std::string_view texto) {
  std::vector<std::string_view> partes;
  for (std::size_t punto = texto.find('.'); punto != std::string_view::npos; punto = texto.find('.')) {
    partes.push_back(texto.substr(0, punto));
    texto.remove_prefix(punto + 1);
  }
  partes.push_back(texto);
  return partes;
}

ResultadoCorreo Rechaza(std::string error) { return {false, std::move(error)}; }

}  // namespace

bool DireccionValida(const std::string& direccion) {
  constexpr std::string_view kEtiqueta = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789-";
  constexpr std::string_view kLocal =
      "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789!#$%&'*+-/=?^_`{|}~";
  const std::size_t arroba = direccion.find('@');
  if (arroba == std::string::npos) return false;
  const std::string_view todo = direccion;
  const auto buzon = Partes(todo.substr(0, arroba)), dominio = Partes(todo.substr(arroba + 1));
  const auto lleva = [](const std::vector<std::string_view>& partes, std::string_view admite) {
    return std::all_of(partes.begin(), partes.end(), [&](std::string_view parte) {
      return !parte.empty() && parte.find_first_not_of(admite) == std::string_view::npos;
    });
  };
  return lleva(buzon, kLocal) && dominio.size() > 1 && lleva(dominio, kEtiqueta);
}

std::vector<std::string> SeparaDirecciones(const std::string& texto) {
  std::vector<std::string> direcciones;
  for (std::size_t i = 0; i < texto.size();) {
    const std::size_t fin = std::min(texto.find_first_of(",;", i), texto.size());
    if (std::string direccion = com::Recorta(texto.substr(i, fin - i)); !direccion.empty())
      direcciones.push_back(std::move(direccion));
    i = fin + 1;
  }
  return direcciones;
}

ResultadoCorreo EncolaCorreo(Conexion& conexion, const std::string& folio, const std::string& plantilla,
                             const std::string& consulta, const std::string& usuario, com::Fecha ahora) {
  const ado::RecordsetPtr rs = conexion.Consulta(
      "SELECT Pt_Asunto, Pt_Cuerpo, Pt_Formato FROM Plantilla WHERE Pt_Cve_Plantilla = ?", {plantilla});
  if (rs->Eof()) return {};
  const std::string asunto = com::TextoDe(rs->Fields("Pt_Asunto").Value());
  const std::string cuerpo = com::TextoDe(rs->Fields("Pt_Cuerpo").Value());
  if (const auto ajenos = NombradosEn(asunto + " " + cuerpo).ajenos; !ajenos.empty())
    return Rechaza("La plantilla de correo " + plantilla + " " + DichoDeAjenos(ajenos));
  const std::optional<Documento> documento = LeeDocumento(conexion, folio);
  if (!documento) return Rechaza("La reservación " + folio + " no existe");
  const std::string quien = documento->claveCliente + " " + documento->cliente;
  if (documento->correo.empty()) return Rechaza("El cliente " + quien + " no tiene dirección de correo");
  if (!DireccionValida(documento->correo)) {
    return Rechaza("La dirección de correo del cliente " + quien + " no es válida: " + documento->correo);
  }
  const std::string formato = com::Recorta(com::TextoDe(rs->Fields("Pt_Formato").Value()));
  std::string adjunto;
  if (!formato.empty()) {
    const QString letra = PlantillaDe(conexion, formato);
    if (const auto ajenos = NombradosEn(letra.toStdString()).ajenos; !ajenos.empty())
      return Rechaza("El formato de impresión " + formato + kFinFormatoHtml + " " + DichoDeAjenos(ajenos));
    adjunto = LlenaPlantilla(letra, *documento).toStdString();
  }
  const Campos campos = CamposDe(*documento);
  Encola(conexion, {.folio = documento->folio,
                    .plantilla = plantilla,
                    .consulta = consulta,
                    .para = documento->correo,
                    .asunto = UnaLinea(Rellena(asunto, campos)),
                    .cuerpo = Rellena(cuerpo, campos),
                    .adjunto = adjunto,
                    .usuario = usuario,
                    .fecha = ahora});
  return {true, ""};
}

}  // namespace autonomo
