#include "host/standalone/correo.h"

#include <algorithm>

#include "host/standalone/documento.h"

namespace autonomo {

namespace {

// A subject is one line.
std::string UnaLinea(std::string texto) {
  std::replace_if(
      texto.begin(), texto.end(), [](char c) { return c == '\r' || c == '\n'; }, ' ');
  return texto;
}

ResultadoCorreo Rechaza(std::string error) { return {false, std::move(error)}; }

}  // namespace

bool DireccionValida(const std::string& direccion) {
  const std::size_t arroba = direccion.find('@');
  if (arroba == std::string::npos || arroba == 0 || arroba + 1 == direccion.size()) return false;
  if (direccion.find('@', arroba + 1) != std::string::npos) return false;
  return std::none_of(direccion.begin(), direccion.end(), [](char c) {
    return static_cast<unsigned char>(c) <= ' ' || c == 0x7F || c == ',' || c == ';' || c == '<' || c == '>';
  });
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
