#include "host/standalone/bandeja.h"

#include <algorithm>

#include "host/standalone/reloj_dudoso.h"
#include "host/standalone/segundos.h"
#include "platform/ado/celda.h"
#include "platform/com/error.h"
#include "platform/com/texto.h"
#include "platform/com/variant.h"
#include "platform/regional/regional.h"

namespace autonomo {

namespace {

constexpr int kMinuto = 60, kHora = 60 * kMinuto;
// A try ends sooner (smtp.h): who has not written down its end by then is gone.
constexpr int kPlazo = 10 * kMinuto;
// Days after which a mail that waits is of no use to its guest any more.
constexpr int kDiasDeEspera = 3;

std::optional<com::Fecha> Momento(const ado::Recordset& rs, std::string_view columna) {
  const com::Variant valor = rs.Fields(columna).Value();
  if (valor.EsNulo()) return std::nullopt;
  return com::CDate(valor);
}

std::string Intentos(std::int32_t cuantos) {
  return std::to_string(cuantos) + (cuantos == 1 ? " intento" : " intentos");
}

// Whether the time has come. A desk whose clock is off by years must not put a mail off by years.
bool YaToca(const std::optional<com::Fecha>& proximo, com::Fecha ahora) {
  constexpr int kMasLejos = 2 * kHora;
  return !proximo || *proximo <= ahora || *proximo > MasSegundos(ahora, kMasLejos);
}

// Of a mail that waits.
std::optional<std::int32_t> IntentosDe(Conexion& conexion, std::int32_t id) {
  const ado::RecordsetPtr rs = conexion.Consulta(
      "SELECT Cs_Intentos FROM Correo_Salida WHERE Cs_Id = ? AND Cs_Estado = ?", {id, correo::kPendiente});
  if (rs->Eof()) return std::nullopt;
  return ado::CeldaEntero(*rs, "Cs_Intentos");
}

void CambiaEstado(Conexion& conexion, std::int32_t id, std::string_view de, std::string_view a,
                  const std::string& error) {
  conexion.Consulta("UPDATE Correo_Salida SET Cs_Estado = ?, Cs_Error = ? WHERE Cs_Id = ? AND Cs_Estado = ?",
                    {a, error, id, de});
}

// Whether this sender was the one whose mark the expired mail got.
bool Vence(Conexion& conexion, std::int32_t id, const std::string& quien) {
  conexion.Consulta("UPDATE Correo_Salida SET Cs_Estado = ?, Cs_Tomado_Por = ? WHERE Cs_Id = ? AND Cs_Estado = ?",
                    {correo::kVencido, quien, id, correo::kPendiente});
  return !conexion.Consulta("SELECT Cs_Id FROM Correo_Salida WHERE Cs_Id = ? AND Cs_Tomado_Por = ?", {id, quien})
              ->Eof();
}

}  // namespace

void Encola(Conexion& conexion, const CorreoNuevo& correo) {
  conexion.Consulta(
      "INSERT INTO Correo_Salida (Cs_Clave, Cs_Plantilla, Cs_Consulta, Cs_Para, Cs_Asunto, Cs_Cuerpo, Cs_Adjunto, "
      "Cs_Usuario, Cs_Estado, Cs_Fecha, Cs_Proximo) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)",
      {correo.folio, correo.plantilla, correo.consulta, correo.para, correo.asunto, correo.cuerpo, correo.adjunto,
       correo.usuario, correo::kPendiente, correo.fecha, correo.fecha});
}

std::vector<CorreoEnBandeja> LeeBandeja(Conexion& conexion, const FiltroLista& filtro) {
  Conexion::Parametros valores;
  const std::string condicion = CondicionDe(conexion, filtro, "Cs_Clave", "Cs_Usuario", "Cs_Fecha", valores);
  const ado::RecordsetPtr rs = conexion.Consulta(
      "SELECT TOP " + std::to_string(kMasRenglones) +
          " Cs_Id, Cs_Clave, Cs_Para, Cs_Asunto, Cs_Estado, Cs_Usuario, Cs_Error, Cs_Intentos, Cs_Fecha, Cs_Proximo, "
          "Cs_Enviado FROM Correo_Salida" +
          condicion + " ORDER BY Cs_Id DESC",
      valores);
  std::vector<CorreoEnBandeja> correos;
  for (; !rs->Eof(); rs->MoveNext()) {
    CorreoEnBandeja c;
    c.id = ado::CeldaEntero(*rs, "Cs_Id");
    c.folio = ado::Celda(*rs, "Cs_Clave");
    c.para = ado::Celda(*rs, "Cs_Para");
    c.asunto = ado::Celda(*rs, "Cs_Asunto");
    c.estado = ado::Celda(*rs, "Cs_Estado");
    c.usuario = ado::Celda(*rs, "Cs_Usuario");
    c.error = ado::Celda(*rs, "Cs_Error");
    c.intentos = ado::CeldaEntero(*rs, "Cs_Intentos");
    c.fecha = ado::CeldaFecha(*rs, "Cs_Fecha");
    c.proximo = Momento(*rs, "Cs_Proximo");
    c.enviado = Momento(*rs, "Cs_Enviado");
    correos.push_back(std::move(c));
  }
  return correos;
}

std::string EstadoEnPalabras(const CorreoEnBandeja& c) {
  const std::string motivo = c.error.empty() ? "" : ": " + c.error;
  if (c.estado == correo::kPendiente) {
    if (c.intentos == 0 || !c.proximo) return "En espera" + motivo;
    return "En espera; se intenta otra vez el " + regional::TextoFecha(*c.proximo) + " (" + Intentos(c.intentos) + ")" +
           motivo;
  }
  if (c.estado == correo::kEnviando) return "Enviándose";
  if (c.estado == correo::kEnviado) return c.enviado ? "Enviado el " + regional::TextoFecha(*c.enviado) : "Enviado";
  if (c.estado == correo::kIncierto) return "No se sabe si salió" + motivo;
  if (c.estado == correo::kRechazado) return "Rechazado" + motivo;
  if (c.estado == correo::kVencido) return "Sin enviar: esperó más de tres días" + motivo;
  return c.estado + motivo;
}

bool SeEnviaOtraVez(const CorreoEnBandeja& c) {
  return c.estado != correo::kEnviando && (c.estado != correo::kPendiente || c.intentos > 0);
}

void EnviaOtraVez(Conexion& conexion, std::int32_t id, com::Fecha ahora) {
  const auto estado = [&] {
    const ado::RecordsetPtr rs = conexion.Consulta("SELECT Cs_Estado FROM Correo_Salida WHERE Cs_Id = ?", {id});
    return rs->Eof() ? std::string() : ado::Celda(*rs, "Cs_Estado");
  };
  const auto rechaza = [](const char* motivo) { throw com::Error(com::error::kArgumento, motivo); };
  const std::string antes = estado();
  if (antes.empty()) rechaza("Ese correo ya no está en la bandeja de salida");
  if (antes == correo::kEnviando) rechaza("Ese correo se está enviando en este momento");
  conexion.Consulta(
      "UPDATE Correo_Salida SET Cs_Estado = ?, Cs_Error = '', Cs_Intentos = 0, Cs_Fecha = ?, Cs_Proximo = ?, "
      "Cs_Tomado_Por = '' WHERE Cs_Id = ? AND Cs_Estado <> ?",
      {correo::kPendiente, ahora, ahora, id, correo::kEnviando});
}

int PausaTras(std::int32_t intentos) {
  constexpr std::int32_t kDoblan = 6;  // 64 minutes
  return std::min(kMinuto << std::clamp(intentos - 1, 0, kDoblan), kHora);
}

PorEnviarAhora PorEnviar(Conexion& conexion, const std::string& quien, com::Fecha ahora) {
  const ado::RecordsetPtr rs = conexion.Consulta(
      "SELECT Cs_Id, Cs_Estado, Cs_Fecha, Cs_Proximo, Cs_Para, Cs_Asunto, Cs_Error FROM Correo_Salida "
      "WHERE Cs_Estado IN (?, ?) ORDER BY Cs_Id",
      {correo::kPendiente, correo::kEnviando});
  PorEnviarAhora correos;
  for (; !rs->Eof(); rs->MoveNext()) {
    const std::int32_t id = ado::CeldaEntero(*rs, "Cs_Id");
    const std::optional<com::Fecha> fecha = Momento(*rs, "Cs_Fecha");
    const bool toca = YaToca(Momento(*rs, "Cs_Proximo"), ahora);
    if (ado::Celda(*rs, "Cs_Estado") == correo::kEnviando) {
      if (toca) {
        CambiaEstado(conexion, id, correo::kEnviando, correo::kIncierto,
                     "el programa que lo enviaba se cerró a medio envío");
      }
    } else if ((!fecha || com::MasDias(*fecha, kDiasDeEspera) < ahora) && DudaDelReloj(conexion, ahora).empty()) {
      if (!Vence(conexion, id, quien)) continue;
      correos.vencidos.push_back(
          {ado::Celda(*rs, "Cs_Para"), ado::Celda(*rs, "Cs_Asunto"), ado::Celda(*rs, "Cs_Error")});
    } else if (toca) {
      correos.ids.push_back(id);
    }
  }
  return correos;
}

std::optional<CorreoTomado> Toma(Conexion& conexion, std::int32_t id, const std::string& quien, com::Fecha ahora) {
  const std::optional<std::int32_t> antes = IntentosDe(conexion, id);
  if (!antes) return std::nullopt;
  conexion.Consulta(
      "UPDATE Correo_Salida SET Cs_Estado = ?, Cs_Tomado_Por = ?, Cs_Intentos = ?, Cs_Proximo = ? "
      "WHERE Cs_Id = ? AND Cs_Estado = ?",
      {correo::kEnviando, quien, *antes + 1, MasSegundos(ahora, kPlazo), id, correo::kPendiente});
  const ado::RecordsetPtr rs = conexion.Consulta(
      "SELECT Cs_Intentos, Cs_Clave, Cs_Para, Cs_Asunto, Cs_Cuerpo, Cs_Adjunto, Cs_Fecha FROM Correo_Salida "
      "WHERE Cs_Id = ? AND Cs_Tomado_Por = ?",
      {id, quien});
  if (rs->Eof()) return std::nullopt;
  return CorreoTomado{id,
                      ado::CeldaEntero(*rs, "Cs_Intentos"),
                      ado::Celda(*rs, "Cs_Clave"),
                      ado::Celda(*rs, "Cs_Para"),
                      ado::Celda(*rs, "Cs_Asunto"),
                      ado::Celda(*rs, "Cs_Cuerpo"),
                      ado::Celda(*rs, "Cs_Adjunto"),
                      Momento(*rs, "Cs_Fecha").value_or(ahora)};
}

void Aplaza(Conexion& conexion, std::int32_t id, const std::string& error, com::Fecha ahora) {
  const std::int32_t intentos = IntentosDe(conexion, id).value_or(0) + 1;
  conexion.Consulta(
      "UPDATE Correo_Salida SET Cs_Intentos = ?, Cs_Error = ?, Cs_Proximo = ? WHERE Cs_Id = ? AND Cs_Estado = ?",
      {intentos, error, MasSegundos(ahora, PausaTras(intentos)), id, correo::kPendiente});
}

void Anota(Conexion& conexion, const CorreoTomado& correo, const std::string& quien, const ResultadoEnvio& resultado,
           com::Fecha ahora) {
  const auto estado = [&] {
    switch (resultado.desenlace) {
      case Desenlace::Enviado:
        return correo::kEnviado;
      case Desenlace::Nunca:
        return correo::kRechazado;
      case Desenlace::Incierto:
        return correo::kIncierto;
      case Desenlace::Luego:
      case Desenlace::SinServidor:
        break;
    }
    return correo::kPendiente;
  }();
  const bool enviado = resultado.desenlace == Desenlace::Enviado;
  // Also when another sender took this one for dead meanwhile.
  conexion.Consulta(
      "UPDATE Correo_Salida SET Cs_Estado = ?, Cs_Error = ?, Cs_Proximo = ?, Cs_Enviado = ? "
      "WHERE Cs_Id = ? AND Cs_Tomado_Por = ? AND Cs_Estado IN (?, ?)",
      {estado, resultado.error, MasSegundos(ahora, PausaTras(correo.intentos)),
       enviado ? com::Variant(ahora) : com::Variant::Null(), correo.id, quien, correo::kEnviando, correo::kIncierto});
}

}  // namespace autonomo
