#include "guion/parte_diario.h"

#include <vector>

#include "host/standalone/bandeja.h"
#include "host/standalone/correo.h"
#include "host/standalone/parametros.h"
#include "host/standalone/transaccion.h"
#include "platform/com/error.h"

namespace guion {

namespace {

namespace parametro = anfitrion::parametro;
using Base = std::shared_ptr<autonomo::Conexion>;

constexpr const char* kPlantilla = "PARTE";  // of the mails; no template of the hotel's

// A parameter's value; com::Error kArgumento for one that cannot be read, whoever stored it.
std::string Valor(autonomo::Conexion& conexion, const anfitrion::Parametro& cual) {
  std::string valor = autonomo::ValorParametro(conexion, cual.clave);
  if (const std::string motivo = autonomo::MotivoIlegible(*autonomo::BuscaParametro(cual.clave), valor);
      !motivo.empty())
    throw com::Error(com::error::kArgumento, motivo);
  return valor;
}

std::vector<std::string> Destinatarios(autonomo::Conexion& conexion) {
  return autonomo::SeparaDirecciones(Valor(conexion, parametro::kParteCorreos));
}

// What the outbox keeps of the day's own report.
std::string Marca(com::Fecha dia) { return "DIA " + com::AIso(com::SoloFecha(dia)); }

bool YaSalio(autonomo::Conexion& conexion, com::Fecha dia) {
  return !conexion
              .Consulta("SELECT TOP 1 Cs_Id FROM Correo_Salida WHERE Cs_Plantilla = ? AND Cs_Consulta = ?",
                        {kPlantilla, Marca(dia)})
              ->Eof();
}

// Whose report is due last: today's from its hour on, before that yesterday's.
com::Fecha DiaQueToca(autonomo::Conexion& conexion, com::Fecha ahora) {
  const int hora = com::CInt(Valor(conexion, parametro::kParteHora));
  return com::ACivil(ahora).hora < hora ? com::MasDias(com::SoloFecha(ahora), -1) : ahora;
}

void Encola(autonomo::Conexion& conexion, const recepcion::Parte& parte, const std::vector<std::string>& direcciones,
            const std::string& consulta, const std::string& usuario, com::Fecha ahora) {
  autonomo::CorreoNuevo correo{.folio = "",
                               .plantilla = kPlantilla,
                               .consulta = consulta,
                               .para = "",
                               .asunto = recepcion::TituloDe(parte),
                               .cuerpo = recepcion::TextoDe(parte),
                               .adjunto = recepcion::HtmlDe(parte),
                               .usuario = usuario,
                               .fecha = ahora};
  for (const std::string& direccion : direcciones) {
    correo.para = direccion;
    autonomo::Encola(conexion, correo);
  }
}

}  // namespace

recepcion::Parte LeeParteDe(const Base& conexion, com::Fecha ahora) {
  return recepcion::LeeParte(recepcion::FuenteDe(conexion), ahora,
                             autonomo::ValorParametro(*conexion, parametro::kNombreHotel.clave),
                             com::Recorta(autonomo::ValorParametro(*conexion, parametro::kMonedaLocal.clave)));
}

int EnviaParte(const Base& conexion, com::Fecha ahora, const std::string& usuario) {
  const std::vector<std::string> direcciones = Destinatarios(*conexion);
  if (direcciones.empty()) {
    throw com::Error(com::error::kArgumento, "El parámetro PARTE_CORREOS no tiene ninguna dirección");
  }
  const recepcion::Parte parte = LeeParteDe(conexion, ahora);
  autonomo::Transaccion t(*conexion);
  Encola(*conexion, parte, direcciones, "", usuario, ahora);
  t.Concluye();
  return static_cast<int>(direcciones.size());
}

int EnviaParteDelDia(const Base& conexion, com::Fecha ahora) {
  const std::vector<std::string> direcciones = Destinatarios(*conexion);
  const com::Fecha dia = DiaQueToca(*conexion, ahora);
  if (direcciones.empty() || YaSalio(*conexion, dia)) return 0;
  // Before the turn is taken: it may take a while.
  recepcion::Parte parte = LeeParteDe(conexion, dia);
  if (dia < com::SoloFecha(ahora)) parte.hecho = ahora;
  autonomo::Transaccion t(*conexion);
  conexion->EsperaTurno("parte");
  if (YaSalio(*conexion, dia)) return 0;
  Encola(*conexion, parte, direcciones, Marca(dia), "", ahora);
  t.Concluye();
  return static_cast<int>(direcciones.size());
}

std::function<void(const Base&, com::Fecha)> ParteDeCadaDia() {
  return [listo = com::Fecha{}](const Base& conexion, com::Fecha ahora) mutable {
    if (listo == com::SoloFecha(ahora)) return;
    const com::Fecha dia = com::SoloFecha(DiaQueToca(*conexion, ahora));
    if (listo == dia) return;
    EnviaParteDelDia(conexion, ahora);
    if (YaSalio(*conexion, dia)) listo = dia;
  };
}

}  // namespace guion
