#include "guion/muestra.h"

#include "guion/usable.h"
#include "platform/regional/regional.h"

namespace guion {

using controles::Clase;

namespace {

struct Contenido {
  Json text, valor;
};

Contenido ContenidoDe(const controles::Control& control) {
  using controles::Como;
  if (const auto* campo = Como<controles::LookupField>(&control)) return {campo->text(), campo->valor()};
  if (const auto* fecha = Como<controles::DateField>(&control)) {
    if (fecha->Vacio()) return {"", Json()};
    return {fecha->valor(), fecha->valor()};
  }
  if (const auto* notas = Como<controles::CampoNotas>(&control)) return {notas->text(), notas->text()};
  if (const auto* casilla = Como<controles::Casilla>(&control)) return {Json(), casilla->value()};
  if (const auto* opcion = Como<controles::Opcion>(&control)) return {Json(), opcion->value()};
  return {};
}

void PonPropios(Json& json, const controles::Control& control) {
  using controles::Como;
  if (const auto* campo = Como<controles::LookupField>(&control)) {
    json.Pon("formato", campo->formato()).Pon("mascara", campo->passwordChar()).Pon("largo", campo->diseno().largo);
    if (!campo->diseno().idconsulta.empty()) {
      json.Pon("idconsulta", campo->diseno().idconsulta)
          .Pon("sql", campo->diseno().sql)
          .Pon("transaccion", campo->diseno().transaccion);
    }
  } else if (const auto* notas = Como<controles::CampoNotas>(&control)) {
    json.Pon("cursor", notas->cursor());
  } else if (const auto* boton = Como<controles::Boton>(&control)) {
    json.Pon("caption", boton->caption());
  } else if (const auto* marco = Como<controles::Marco>(&control)) {
    json.Pon("caption", marco->caption());
  } else if (const auto* etiqueta = Como<controles::Etiqueta>(&control)) {
    json.Pon("caption", etiqueta->caption()).Pon("color", etiqueta->color());
  } else if (const auto* casilla = Como<controles::Casilla>(&control)) {
    json.Pon("caption", casilla->caption()).Pon("checked", casilla->value());
  } else if (const auto* opcion = Como<controles::Opcion>(&control)) {
    json.Pon("caption", opcion->caption()).Pon("checked", opcion->value());
  } else if (const auto* grid = Como<controles::Grid>(&control)) {
    json.Pon("filas", grid->Filas()).Pon("fila", grid->fila()).Pon("columnas", grid->NumColumnas());
    Json estilos = Json::Objeto();
    for (const controles::Estilo& estilo : grid->Estilos()) estilos.Pon(estilo.nombre, estilo.fondo);
    if (!grid->Estilos().empty()) json.Pon("estilos", std::move(estilos));
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
    const controles::Columna& columna = grid.columna(c);
    const std::string fecha = columna.fecha ? regional::FechaCorta(*columna.fecha) : "";
    columnas.Agrega(Json::Objeto().Pon("titulo", columna.titulo).Pon("fecha", fecha));
  }
  Json filas = Json::Arreglo();
  for (int fila = 0; fila < grid.Filas(); ++fila) {
    Json celdas = Json::Arreglo();
    for (int c = kColumnasFijas; c < grid.NumColumnas(); ++c) celdas.Agrega(CeldaDeTablero(grid, fila, c));
    filas.Agrega(Json::Objeto()
                     .Pon(kv207::col::kClave, grid.celda(fila, kv207::col::kClave))
                     .Pon(kv207::col::kNombre, grid.celda(fila, kv207::col::kNombre))
                     .Pon("celdas", std::move(celdas)));
  }
  return Json::Objeto().Pon("columnas", std::move(columnas)).Pon("filas", std::move(filas));
}

Json MuestraLista(const std::vector<autonomo::EntradaDeBitacora>& entradas) {
  return ListaDe(entradas, [](const autonomo::EntradaDeBitacora& e) {
    return Json::Objeto().Pon("fecha", e.fecha).Pon("usuario", e.usuario).Pon("folio", e.folio).Pon("texto", e.texto);
  });
}

Json MuestraLista(const std::vector<autonomo::CorreoEnBandeja>& correos) {
  return ListaDe(correos, [](const autonomo::CorreoEnBandeja& c) {
    return Json::Objeto()
        .Pon("correo", c.id)
        .Pon("fecha", c.fecha)
        .Pon("usuario", c.usuario)
        .Pon("folio", c.folio)
        .Pon("para", c.para)
        .Pon("asunto", c.asunto)
        .Pon("estado", autonomo::EstadoEnPalabras(c));
  });
}

std::optional<Json> MuestraAnotado(autonomo::Anfitrion& anfitrion, std::string_view nombre) {
  const auto convierte = [](const auto& registro) { return JsonDe(registro); };
  if (nombre == "bitacora") return ListaDe(anfitrion.Bitacora(), convierte);
  if (nombre == "correos") return ListaDe(anfitrion.Correos(), convierte);
  if (nombre == "impresiones") return ListaDe(anfitrion.Impresiones(), convierte);
  if (nombre == "visor") return ListaDe(anfitrion.Vistos(), convierte);
  if (nombre == "novedad") {
    const auto& ultima = anfitrion.novedades().Ultima();
    if (!ultima) return Json();
    return Json::Objeto().Pon("texto", ultima->Texto()).Pon("folio", ultima->folio);
  }
  if (nombre == "pantallas") return ListaDe(anfitrion.Pantallas(), convierte);
  return std::nullopt;
}

}  // namespace guion
