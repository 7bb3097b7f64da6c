#include "host/standalone/listados.h"

#include <QStringList>
#include <algorithm>

#include "host/standalone/permisos.h"
#include "host/standalone/usuarios.h"

namespace autonomo {

using enum listado::Clase;

std::string SinLineasVacias(const std::string& texto) {
  QStringList lineas;
  for (const QString& linea : QString::fromStdString(texto).split(QLatin1Char('\n'), Qt::SkipEmptyParts)) {
    if (const QString limpia = linea.simplified(); !limpia.isEmpty()) lineas << limpia;
  }
  return lineas.join(QLatin1Char('\n')).toStdString();
}

listado::Listado ListadoDe(const std::vector<EntradaDeBitacora>& entradas) {
  listado::Listado lista{"Bitácora", "", {{"Fecha", Momento}, {"Usuario"}, {"Folio"}, {"Cambio"}}, {}};
  for (const EntradaDeBitacora& e : entradas)
    lista.filas.push_back({e.fecha, e.usuario, e.folio, SinLineasVacias(e.texto)});
  return lista;
}

listado::Listado ListadoDe(const std::vector<CorreoEnBandeja>& correos) {
  listado::Listado lista{
      "Correos", "", {{"Fecha", Momento}, {"Usuario"}, {"Folio"}, {"Para"}, {"Asunto"}, {"Estado"}}, {}};
  for (const CorreoEnBandeja& c : correos) {
    lista.filas.push_back({c.fecha, c.usuario, c.folio, c.para, c.asunto, EstadoEnPalabras(c)});
  }
  return lista;
}

listado::Listado ListadoDeUsuarios(Conexion& conexion) {
  listado::Listado lista{"Usuarios", "", {{"Usuario"}, {"Nombre"}, {"Puede"}}, {}};
  for (const Usuario& u : Usuarios(conexion)) {
    std::string puede = u.deBaja ? "de baja" : "";
    const auto suyos = u.deBaja ? std::vector<std::string>() : DerechosDe(conexion, u.clave);
    for (const Derecho& d : Derechos()) {
      if (std::ranges::find(suyos, d.opcion) == suyos.end()) continue;
      puede += (puede.empty() ? "" : ", ") + std::string(d.nombre);
    }
    lista.filas.push_back({u.clave, u.nombre, puede});
  }
  return lista;
}

}  // namespace autonomo
