#include "guion/salidas.h"

#include <QByteArray>
#include <QFile>
#include <QString>

#include "host/standalone/archivo_privado.h"
#include "host/standalone/parametros.h"
#include "host/standalone/pliego.h"
#include "platform/com/error.h"
#include "recepcion/agenda.h"

namespace guion {

namespace {

[[noreturn]] void Error(const std::string& motivo) { throw com::Error(com::error::kArgumento, motivo); }

bool TerminaEn(const std::string& ruta, const char* fin) {
  return QString::fromStdString(ruta).endsWith(QLatin1String(fin), Qt::CaseInsensitive);
}

recepcion::PedidoAgenda Pedido(autonomo::Conexion& conexion, bool conNombres, com::Fecha ahora) {
  return recepcion::PedidoDeAgenda(ahora, autonomo::ValorParametro(conexion, anfitrion::parametro::kNombreHotel.clave),
                                   conNombres);
}

// Its bytes; "" for a file that cannot be read.
std::string Contenido(const std::string& ruta) {
  QFile archivo(QString::fromStdString(ruta));
  return archivo.open(QIODevice::ReadOnly) ? archivo.readAll().toStdString() : std::string();
}

}  // namespace

void ExportaAgenda(const std::shared_ptr<autonomo::Conexion>& conexion, const std::string& habitacion, bool conNombres,
                   com::Fecha ahora, const std::string& ruta) {
  if (!TerminaEn(ruta, ".ics")) Error("Un calendario se guarda en un archivo .ics, no en " + ruta);
  autonomo::EscribePrivado(
      ruta, recepcion::LeeAgenda(recepcion::FuenteDe(conexion), habitacion, Pedido(*conexion, conNombres, ahora)));
}

Agendas ExportaAgendas(const std::shared_ptr<autonomo::Conexion>& conexion, bool conNombres, com::Fecha ahora,
                       const std::string& carpeta) {
  Agendas agendas;
  for (const recepcion::Agenda& a :
       recepcion::LeeAgendas(recepcion::FuenteDe(conexion), Pedido(*conexion, conNombres, ahora))) {
    ++agendas.habitaciones;
    const std::string ruta = carpeta + "/" + recepcion::NombreDeArchivo(a.habitacion) + ".ics";
    if (Contenido(ruta) == a.texto) continue;
    autonomo::EscribePrivado(ruta, a.texto);
    ++agendas.escritas;
  }
  return agendas;
}

void ExportaParte(const recepcion::Parte& parte, const std::string& ruta) {
  if (TerminaEn(ruta, ".txt")) return autonomo::EscribePrivado(ruta, recepcion::TextoDe(parte));
  if (!TerminaEn(ruta, ".pdf")) Error("El parte se guarda en un archivo .pdf o .txt, no en " + ruta);
  autonomo::EscribePdf(QString::fromStdString(recepcion::HtmlDe(parte)),
                       QString::fromStdString(recepcion::TituloDe(parte)), QString::fromStdString(ruta));
}

}  // namespace guion
