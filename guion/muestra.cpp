#include "guion/muestra.h"

#include "guion/usable.h"

namespace guion {

using controles::Clase;

namespace {

struct Contenido {
  Json text, valor;
};

Contenido ContenidoDe(const controles::Control& control) {
  switch (control.clase()) {
    case Clase::LookupField: {
      const auto& campo = static_cast<const controles::LookupField&>(control);
      return {campo.text(), campo.valor()};
    }
    case Clase::DateField: {
      const auto& campo = static_cast<const controles::DateField&>(control);
      if (campo.Vacio()) return {"", Json()};
      return {campo.valor(), campo.valor()};
    }
    case Clase::CampoNotas: {
      const auto& campo = static_cast<const controles::CampoNotas&>(control);
      return {campo.text(), campo.text()};
    }
    case Clase::Casilla:
      return {Json(), static_cast<const controles::Casilla&>(control).value()};
    case Clase::Opcion:
      return {Json(), static_cast<const controles::Opcion&>(control).value()};
    default:
      return {};
  }
}

void PonPropios(Json& json, const controles::Control& control) {
  switch (control.clase()) {
    case Clase::LookupField: {
      const auto& campo = static_cast<const controles::LookupField&>(control);
      json.Pon("formato", campo.formato()).Pon("mascara", campo.passwordChar()).Pon("largo", campo.diseno().largo);
      if (!campo.diseno().idconsulta.empty()) {
        json.Pon("idconsulta", campo.diseno().idconsulta)
            .Pon("sql", campo.diseno().sql)
            .Pon("transaccion", campo.diseno().transaccion);
      }
      break;
    }
    case Clase::CampoNotas:
      json.Pon("cursor", static_cast<const controles::CampoNotas&>(control).cursor());
      break;
    case Clase::Boton:
      json.Pon("caption", static_cast<const controles::Boton&>(control).caption());
      break;
    case Clase::Marco:
      json.Pon("caption", static_cast<const controles::Marco&>(control).caption());
      break;
    case Clase::Etiqueta:
      json.Pon("caption", static_cast<const controles::Etiqueta&>(control).caption())
          .Pon("color", static_cast<const controles::Etiqueta&>(control).color());
      break;
    case Clase::Casilla: {
      const auto& casilla = static_cast<const controles::Casilla&>(control);
      json.Pon("caption", casilla.caption()).Pon("checked", casilla.value());
      break;
    }
    case Clase::Opcion: {
      const auto& opcion = static_cast<const controles::Opcion&>(control);
      json.Pon("caption", opcion.caption()).Pon("checked", opcion.value());
      break;
    }
    case Clase::Grid: {
      const auto& grid = static_cast<const controles::Grid&>(control);
      json.Pon("filas", grid.Filas()).Pon("fila", grid.fila()).Pon("columnas", grid.NumColumnas());
      Json estilos = Json::Objeto();
      for (const controles::Estilo& e : grid.Estilos()) estilos.Pon(e.nombre, e.fondo);
      if (!grid.Estilos().empty()) json.Pon("estilos", std::move(estilos));
      break;
    }
    default:
      break;
  }
}

Json CeldaDeTablero(const controles::Grid& grid, int fila, int columna) {
  const int estilo = grid.estilo(fila, columna);
  const Json estado = estilo < 0 ? Json() : Json(grid.Estilos()[static_cast<std::size_t>(estilo)].nombre);
  return Json::Objeto().Pon("texto", grid.Texto(fila, columna)).Pon("estado", estado);
}

template <class Registros, class Convierte>
Json ListaDe(const Registros& registros, Convierte convierte) {
  Json lista = Json::Arreglo();
  for (const auto& registro : registros) lista.Agrega(convierte(registro));
  return lista;
}

Json JsonDe(const autonomo::EntradaBitacora& e) {
  return Json::Objeto().Pon("modulo", e.modulo).Pon("clave", e.clave).Pon("texto", e.texto);
}

Json JsonDe(const autonomo::Correo& c) {
  return Json::Objeto()
      .Pon("clave", c.clave)
      .Pon("plantilla", c.plantilla)
      .Pon("consulta", c.consulta)
      .Pon("para", c.para)
      .Pon("asunto", c.asunto)
      .Pon("estado", c.estado);
}

Json JsonDe(const autonomo::Impreso& i) { return Json::Objeto().Pon("formato", i.formato).Pon("clave", i.clave); }

Json JsonDe(const autonomo::RegistroVisto& v) {
  return Json::Objeto().Pon("tabla", v.tabla).Pon("columna", v.columna).Pon("clave", v.clave);
}

Json JsonDe(const autonomo::PantallaAbierta& p) {
  return Json::Objeto().Pon("pantalla", p.pantalla).Pon("argumentos", ListaDe(p.argumentos, [](const auto& v) {
                                                          return Json(v);
                                                        }));
}

}  // namespace

Json MuestraControl(const controles::Control& control) {
  Contenido contenido = ContenidoDe(control);
  Json json = Json::Objeto()
                  .Pon("text", std::move(contenido.text))
                  .Pon("valor", std::move(contenido.valor))
                  .Pon("enabled", control.enabled())
                  .Pon("visible", control.visible())
                  .Pon("locked", Bloqueado(control));
  PonPropios(json, control);
  return json.Pon("left", control.left())
      .Pon("top", control.top())
      .Pon("width", control.width())
      .Pon("height", control.height());
}

Json MuestraEntradas(const controles::Formulario& formulario) {
  Json json = Json::Objeto();
  for (const controles::Control* c : formulario.controles()) {
    Json entrada = Json::Objeto();
    switch (c->clase()) {
      case Clase::LookupField:
      case Clase::DateField:
      case Clase::CampoNotas:
        entrada.Pon("texto", ContenidoDe(*c).text);
        break;
      case Clase::Casilla:
      case Clase::Opcion:
        entrada.Pon("valor", ContenidoDe(*c).valor);
        break;
      case Clase::Marco:
        break;
      default:
        continue;
    }
    json.Pon(c->nombre(), entrada.Pon("abierto", c->enabled() && !Bloqueado(*c)).Pon("visible", c->visible()));
  }
  return json;
}

Json MuestraBarra(const controles::ScreenToolbar& barra) {
  return Json::Objeto()
      .Pon("EnEdicion", barra.EnEdicion())
      .Pon("ClaveActual", barra.ClaveActual())
      .Pon("TituloConfirmar", barra.TituloConfirmar())
      .Pon("PermiteAccion1", barra.PermiteAccion1())
      .Pon("PermiteAccion2", barra.PermiteAccion2())
      .Pon("PermiteAccion4", barra.PermiteAccion4())
      .Pon("PermiteAccion5", barra.PermiteAccion5())
      .Pon("PermiteAccion6", barra.PermiteAccion6())
      .Pon("PermiteReactivar", barra.PermiteReactivar());
}

Json MuestraCampos(const controles::Formulario& formulario) {
  Json json = Json::Objeto();
  for (const auto& [nombre, valor] : formulario.Campos()) json.Pon(nombre, valor);
  return json;
}

Json MuestraRenglones(const controles::Grid& grid) {
  Json lista = Json::Arreglo();
  for (int fila = 0; fila < grid.Filas(); ++fila) {
    Json renglon = Json::Objeto();
    for (int c = 0; c < grid.NumColumnas(); ++c) renglon.Pon(grid.columna(c).clave, grid.celda(fila, c));
    lista.Agrega(std::move(renglon));
  }
  return lista;
}

Json MuestraColumnas(const controles::Grid& grid) {
  Json lista = Json::Arreglo();
  for (int c = 0; c < grid.NumColumnas(); ++c) {
    const controles::Columna& columna = grid.columna(c);
    lista.Agrega(Json::Objeto()
                     .Pon("clave", columna.clave)
                     .Pon("titulo", columna.titulo)
                     .Pon("ancho", columna.ancho)
                     .Pon("visible", columna.visible)
                     .Pon("bloqueada", columna.bloqueada)
                     .Pon("formato", columna.formato));
  }
  return lista;
}

Json MuestraTablero(const controles::Grid& grid) {
  Json columnas = Json::Arreglo();
  for (int c = kColumnasFijas; c < grid.NumColumnas(); ++c) {
    columnas.Agrega(Json::Objeto().Pon("titulo", grid.columna(c).titulo).Pon("fecha", grid.columna(c).fecha));
  }
  Json filas = Json::Arreglo();
  for (int fila = 0; fila < grid.Filas(); ++fila) {
    Json celdas = Json::Arreglo();
    for (int c = kColumnasFijas; c < grid.NumColumnas(); ++c) celdas.Agrega(CeldaDeTablero(grid, fila, c));
    filas.Agrega(Json::Objeto()
                     .Pon("Clave", grid.celda(fila, "Clave"))
                     .Pon("Nombre", grid.celda(fila, "Nombre"))
                     .Pon("celdas", std::move(celdas)));
  }
  return Json::Objeto().Pon("columnas", std::move(columnas)).Pon("filas", std::move(filas));
}

std::optional<Json> MuestraRegistro(autonomo::Anfitrion& anfitrion, std::string_view nombre) {
  const auto convierte = [](const auto& registro) { return JsonDe(registro); };
  if (nombre == "bitacora") return ListaDe(anfitrion.Bitacora(), convierte);
  if (nombre == "correos") return ListaDe(anfitrion.Correos(), convierte);
  if (nombre == "impresiones") return ListaDe(anfitrion.Impresiones(), convierte);
  if (nombre == "visor") return ListaDe(anfitrion.Vistos(), convierte);
  if (nombre == "pantallas") return ListaDe(anfitrion.Pantallas(), convierte);
  return std::nullopt;
}

}  // namespace guion
