#include "guion/muestra_recepcion.h"

namespace guion {

namespace {

Json FilaDe(const recepcion::Fila& fila) {
  return Json::Objeto()
      .Pon("folio", fila.folio)
      .Pon("estancia", fila.estancia)
      .Pon("huesped", fila.huesped)
      .Pon("llegada", fila.llegada)
      .Pon("salida", fila.salida)
      .Pon("habitaciones", fila.habitaciones)
      .Pon("personas", fila.personas)
      .Pon("estado", fila.estado)
      .Pon("llego", fila.llego);
}

Json LibresDe(const recepcion::LibresDeTipo& tipo) {
  Json noches = Json::Arreglo();
  for (const int libres : tipo.noches) noches.Agrega(libres);
  return Json::Objeto()
      .Pon("tipo", tipo.tipo)
      .Pon("nombre", tipo.nombre)
      .Pon("total", tipo.total)
      .Pon("noches", std::move(noches));
}

Json PersonaDe(const recepcion::Persona& persona) {
  return Json::Objeto()
      .Pon("clave", persona.clave)
      .Pon("nombre", persona.nombre)
      .Pon("telefono", persona.telefono)
      .Pon("correo", persona.correo);
}

Json UltimaDe(const recepcion::UltimaEstancia& ultima) {
  Json habitaciones = Json::Arreglo();
  for (const std::string& h : ultima.habitaciones) habitaciones.Agrega(h);
  return Json::Objeto()
      .Pon("folio", ultima.folio)
      .Pon("llegada", ultima.llegada)
      .Pon("salida", ultima.salida)
      .Pon("habitaciones", std::move(habitaciones))
      .Pon("notas", ultima.notas);
}

Json CuentaJson(const recepcion::CuentaDe& de) {
  const recepcion::Cuenta& c = de.cuenta;
  const auto importe = [](double valor) { return com::Redondea(valor, 2); };
  return Json::Objeto()
      .Pon("desde", de.desde)
      .Pon("hasta", de.hasta)
      .Pon("disponibles", c.disponibles)
      .Pon("vendidas", c.vendidas)
      .Pon("cortesias", c.cortesias)
      .Pon("sinprecio", c.sinPrecio)
      .Pon("ocupacion", com::Redondea(c.Ocupacion(), 4))
      .Pon("ingreso", importe(c.ingreso))
      .Pon("tarifa", importe(c.Tarifa()))
      .Pon("porhabitacion", importe(c.PorHabitacion()))
      .Pon("entonces", c.vendidasEntonces)
      .Pon("alfinal", c.vendidasAlFinal)
      .Pon("ingresoentonces", importe(c.ingresoEntonces))
      .Pon("ingresoalfinal", importe(c.ingresoAlFinal));
}

Json CuentasJson(const std::vector<recepcion::CuentaDe>& cuentas) {
  Json lista = Json::Arreglo();
  for (const recepcion::CuentaDe& c : cuentas) lista.Agrega(CuentaJson(c));
  return lista;
}

}  // namespace

Json MuestraHoy(const recepcion::Hoy& hoy) {
  const recepcion::Dia& dia = hoy.dia();
  Json json = Json::Objeto().Pon("fecha", dia.fecha).Pon("llevaEstancias", dia.llevaEstancias);
  for (std::size_t i = 0; i < recepcion::kListas; ++i) {
    json.Pon(recepcion::NombreDe(static_cast<recepcion::Lista>(i)), static_cast<int>(dia.listas[i].size()));
  }
  Json libres = Json::Arreglo();
  for (const recepcion::LibresDeTipo& tipo : dia.libres) libres.Agrega(LibresDe(tipo));
  json.Pon("libres", std::move(libres)).Pon("lista", recepcion::NombreDe(hoy.lista())).Pon("busca", hoy.busqueda());
  if (!hoy.busqueda().empty()) {
    json.Pon("total", static_cast<int>(hoy.hallazgo().total));
    if (const auto& periodo = hoy.hallazgo().periodo) json.Pon("del", periodo->desde).Pon("al", periodo->hasta);
  }
  Json filas = Json::Arreglo();
  for (const recepcion::Fila& fila : hoy.filas()) filas.Agrega(FilaDe(fila));
  return json.Pon("filas", std::move(filas));
}

Json MuestraCuadro(const recepcion::Cuadro& cuadro) {
  Json habitaciones = Json::Arreglo();
  for (std::size_t f = 0; f < cuadro.habitaciones().size(); ++f) {
    Json barras = Json::Arreglo();
    const auto [desde, hasta] = cuadro.BarrasDe(static_cast<int>(f));
    for (std::size_t b = desde; b < hasta; ++b) {
      const recepcion::Barra& barra = cuadro.barras()[b];
      barras.Agrega(Json::Objeto()
                        .Pon("folio", barra.folio)
                        .Pon("huesped", barra.huesped)
                        .Pon("estado", recepcion::EstadoDe(barra))
                        .Pon("inicio", barra.inicio)
                        .Pon("fin", barra.fin)
                        .Pon("total", barra.total)
                        .Pon("moneda", barra.moneda));
    }
    habitaciones.Agrega(
        Json::Objeto().Pon("habitacion", cuadro.habitaciones()[f].clave).Pon("barras", std::move(barras)));
  }
  return Json::Objeto()
      .Pon("desde", cuadro.desde())
      .Pon("noches", cuadro.noches())
      .Pon("habitaciones", std::move(habitaciones));
}

Json MuestraCotizacion(const recepcion::Cotizacion& cotizacion) {
  Json lista = Json::Arreglo();
  for (const recepcion::Oferta& oferta : cotizacion.ofertas()) {
    Json tramos = Json::Arreglo();
    for (const recepcion::Tramo& t : oferta.tramos) {
      tramos.Agrega(Json::Objeto().Pon("habitacion", t.habitacion).Pon("desde", t.desde).Pon("hasta", t.hasta));
    }
    lista.Agrega(Json::Objeto()
                     .Pon("tipo", oferta.tipo)
                     .Pon("nombre", oferta.nombre)
                     .Pon("libres", oferta.libres)
                     .Pon("total", oferta.total)
                     .Pon("impuestos", oferta.impuestos)
                     .Pon("moneda", cotizacion.pedido().moneda)
                     .Pon("motivo", oferta.motivo)
                     .Pon("tramos", std::move(tramos)));
  }
  return lista;
}

Json MuestraCifras(const recepcion::Cifras& cifras) {
  return Json::Objeto()
      .Pon("hoy", cifras.hoy())
      .Pon("sucursal", cifras.pedido().sucursal)
      .Pon("moneda", cifras.moneda())
      .Pon("total", CuentaJson({cifras.pedido().desde, cifras.pedido().hasta, cifras.total()}))
      .Pon("meses", CuentasJson(cifras.meses()))
      .Pon("noches", CuentasJson(cifras.noches()));
}

Json MuestraLineas(const std::vector<recepcion::Renglon>& renglones) {
  Json lista = Json::Arreglo();
  for (const recepcion::Renglon& r : renglones) {
    lista.Agrega(Json::Objeto()
                     .Pon("habitacion", r.habitacion)
                     .Pon("inicio", r.inicio)
                     .Pon("fin", r.fin)
                     .Pon("adultos", r.adultos)
                     .Pon("menores", r.menores)
                     .Pon("infantes", r.infantes)
                     .Pon("total", r.total)
                     .Pon("acordado", r.acordado));
  }
  return lista;
}

Json MuestraBorrador(const recepcion::Borrador& borrador) {
  Json campos = Json::Objeto();
  for (const recepcion::CampoCaptado& campo : borrador.campos) campos.Pon(campo.nombre, campo.texto);
  return Json::Objeto()
      .Pon("resumen", recepcion::Resumen(borrador))
      .Pon("campos", std::move(campos))
      .Pon("tarjeta", borrador.tarjeta)
      .Pon("renglones", MuestraLineas(borrador.renglones))
      .Pon("quitados", MuestraLineas(borrador.quitados));
}

Json MuestraPorQue(const recepcion::Explicacion& explicacion) {
  if (explicacion.titulo.empty()) return {};
  Json quienes = Json::Arreglo();
  for (const std::string& quien : explicacion.quienes) quienes.Agrega(quien);
  return Json::Objeto()
      .Pon("titulo", explicacion.titulo)
      .Pon("quienes", std::move(quienes))
      .Pon("libre", explicacion.alternativa);
}

Json MuestraParecidas(const std::vector<recepcion::Parecida>& parecidas) {
  Json lista = Json::Arreglo();
  for (const recepcion::Parecida& p : parecidas) lista.Agrega(PersonaDe(p.persona).Pon("motivo", p.motivo));
  return lista;
}

Json MuestraExplicacion(const recepcion::CuentaExplicada& explicacion) {
  Json pasos = Json::Arreglo();
  for (const recepcion::CuentaExplicada::Paso& p : explicacion.pasos) {
    pasos.Agrega(
        Json::Objeto().Pon("concepto", p.concepto).Pon("como", p.detalle).Pon("importe", com::Redondea(p.importe, 2)));
  }
  return Json::Objeto()
      .Pon("titulo", explicacion.titulo)
      .Pon("pasos", std::move(pasos))
      .Pon("nota", explicacion.nota)
      .Pon("acordado", explicacion.acordado);
}

Json MuestraHuesped(const recepcion::Huespedes& huespedes, const std::vector<recepcion::Parecida>& parecidas) {
  Json personas = Json::Arreglo(), reservaciones = Json::Arreglo();
  for (const recepcion::Persona& p : huespedes.hallados()) personas.Agrega(PersonaDe(p));
  for (const recepcion::Fila& fila : huespedes.reservaciones()) reservaciones.Agrega(FilaDe(fila));
  Json json = Json::Objeto()
                  .Pon("campo", huespedes.campo())
                  .Pon("busca", huespedes.busqueda())
                  .Pon("total", static_cast<int>(huespedes.total()))
                  .Pon("personas", std::move(personas))
                  .Pon("senalado", huespedes.senalado())
                  .Pon("reservaciones", std::move(reservaciones));
  if (huespedes.ultima()) json.Pon("ultima", UltimaDe(*huespedes.ultima()));
  return json.Pon("propuesta", PersonaDe(huespedes.Propuesta())).Pon("parecidas", MuestraParecidas(parecidas));
}

}  // namespace guion
