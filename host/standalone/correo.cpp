#include "host/standalone/correo.h"

#include <algorithm>
#include <string_view>
#include <vector>

#include "host/standalone/documento.h"

namespace autonomo {

namespace {

// A subject is one line.
std::string UnaLinea(std::string texto) {
  std::replace_if(
      texto.begin(), texto.end(), [](char c) { return c == '\r' || c == '\n'; }, ' ');
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
  constexpr std::string_view kLetras = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789";
  const std::string local = std::string(kLetras) + "!#$%&'*+-/=?^_`{|}~";
  const std::string etiqueta = std::string(kLetras) + "-";
  const std::size_t arroba = direccion.find('@');
  if (arroba == std::string::npos) return false;
  const std::string_view todo = direccion;
  const auto buzon = Partes(todo.substr(0, arroba)), dominio = Partes(todo.substr(arroba + 1));
  const auto lleva = [](const std::vector<std::string_view>& partes, std::string_view admite) {
    return std::all_of(partes.begin(), partes.end(), [&](std::string_view parte) {
      return !parte.empty() && parte.find_first_not_of(admite) == std::string_view::npos;
    });
  };
  return lleva(buzon, local) && dominio.size() > 1 && lleva(dominio, etiqueta);
}

ResultadoCorreo EncolaCorreo(Conexion& conexion, const std::string& folio, const std::string& plantilla,
                             const std::string& consulta, com::Fecha ahora) {
  const ado::RecordsetPtr rs =
      conexion.Consulta("SELECT Pt_Asunto, Pt_Cuerpo FROM Plantilla WHERE Pt_Cve_Plantilla = ?", {plantilla});
  if (rs->Eof()) return {};
  const std::optional<Documento> documento = LeeDocumento(conexion, folio);
  if (!documento) return Rechaza("La reservación " + folio + " no existe");
  const std::string quien = documento->claveCliente + " " + documento->cliente;
  if (documento->correo.empty()) return Rechaza("El cliente " + quien + " no tiene dirección de correo");
  if (!DireccionValida(documento->correo)) {
    return Rechaza("La dirección de correo del cliente " + quien + " no es válida: " + documento->correo);
  }
  const Campos campos = CamposDe(*documento);
  const std::string asunto = UnaLinea(Rellena(com::CStr(rs->Fields("Pt_Asunto").Value()), campos));
  const std::string cuerpo = Rellena(com::CStr(rs->Fields("Pt_Cuerpo").Value()), campos);
  conexion.Consulta(
      "INSERT INTO Correo_Salida (Cs_Clave, Cs_Plantilla, Cs_Consulta, Cs_Para, Cs_Asunto, Cs_Cuerpo, Cs_Estado, "
      "Cs_Fecha) VALUES (?, ?, ?, ?, ?, ?, ?, ?)",
      {documento->folio, plantilla, consulta, documento->correo, asunto, cuerpo, "PENDIENTE", ahora});
  return {true, ""};
}

}  // namespace autonomo
