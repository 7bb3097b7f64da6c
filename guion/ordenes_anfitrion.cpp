#include "guion/ordenes_anfitrion.h"

#include <memory>
#include <utility>

#include "guion/muestra.h"
#include "platform/com/error.h"

namespace guion {

namespace {

Json FilasDe(ado::Recordset& rs) {
  Json filas = Json::Arreglo();
  for (; !rs.Eof(); rs.MoveNext()) {
    Json fila = Json::Objeto();
    for (std::size_t c = 0; c < rs.Nombres().size(); ++c) fila.Pon(rs.Nombres()[c], rs.Fields(c).Value());
    filas.Agrega(std::move(fila));
  }
  return filas;
}

}  // namespace

std::vector<Orden> OrdenesAnfitrion::Ordenes() {
  static constexpr DatosOrden<OrdenesAnfitrion> kOrdenes[] = {
      {"parametro", 2, 2, "parametro CLAVE VALOR", &OrdenesAnfitrion::Parametro},
      {"permiso", 2, 2, "permiso OPCION si|no", &OrdenesAnfitrion::Permiso},
      {"cambio", 2, 2, "cambio MONEDA TASA", &OrdenesAnfitrion::Cambio},
      {"impuesto", 3, 3, "impuesto SUCURSAL PRODUCTO FACTOR", &OrdenesAnfitrion::Impuesto},
      {"tarifa", 4, 4, "tarifa TIPO PRECIO ADULTO_EXTRA MENOR_EXTRA", &OrdenesAnfitrion::Tarifa},
      {"plantilla", 3, 4, "plantilla CODIGO ASUNTO CUERPO [FORMATO]", &OrdenesAnfitrion::Plantilla},
      {"direccion", 2, 2, "direccion CLIENTE CORREO", &OrdenesAnfitrion::Direccion},
      {"ahora", 1, 1, "ahora AAAA-MM-DDTHH:MM[:SS]", &OrdenesAnfitrion::Ahora},
      {"lista", 1, 7, "lista bitacora|correos [folio FOLIO] [usuario LOGIN] [dia AAAA-MM-DD]",
       &OrdenesAnfitrion::Lista},
      {"reenvia", 1, 1, "reenvia CORREO", &OrdenesAnfitrion::Reenvia},
      {"sql", 1, 1, "sql SENTENCIA", &OrdenesAnfitrion::Sql},
      {"falla", 1, 3,
       "falla sentencia TEXTO [N] | host OPERACION [TEXTO] | tienda OPERACION TEXTO | grid [TEXTO] | "
       "begin|commit|rollback | correo [TEXTO]",
       &OrdenesAnfitrion::Falla},
  };
  return Enlaza(*this, kOrdenes);
}

std::optional<Json> OrdenesAnfitrion::Muestra(const std::string& que) {
  if (que == "llamadas") return piezas_.vigilancia.TomaLlamadas();
  if (que == "sentencias") return piezas_.vigilancia.TomaSentencias();
  return MuestraAnotado(piezas_.anfitrion, que);
}

// --- the host's set-up -----------------------------------------------------------------------------------------------

void OrdenesAnfitrion::Parametro(const Palabras& p) { piezas_.anfitrion.Parametro(p[1], p[2]); }

void OrdenesAnfitrion::Permiso(const Palabras& p) {
  if (p[2] != "si" && p[2] != "sí" && p[2] != "no") Error("Un permiso es «si» o «no»");
  piezas_.anfitrion.Permiso(p[1], p[2] != "no");
}

void OrdenesAnfitrion::Cambio(const Palabras& p) { piezas_.anfitrion.Cambio(p[1], NumeroDe<double>(p[2])); }

void OrdenesAnfitrion::Impuesto(const Palabras& p) { piezas_.anfitrion.Impuesto(p[1], p[2], NumeroDe<double>(p[3])); }

void OrdenesAnfitrion::Tarifa(const Palabras& p) {
  piezas_.anfitrion.Tarifa(p[1], NumeroDe<double>(p[2]), NumeroDe<double>(p[3]), NumeroDe<double>(p[4]));
}

void OrdenesAnfitrion::Plantilla(const Palabras& p) {
  piezas_.anfitrion.Plantilla(p[1], p[2], p[3], p.size() > 4 ? p[4] : "");
}

void OrdenesAnfitrion::Direccion(const Palabras& p) { piezas_.anfitrion.Direccion(p[1], p[2]); }

void OrdenesAnfitrion::Ahora(const Palabras& p) { piezas_.anfitrion.reloj().Fija(FechaDe(p[1])); }

// --- what it keeps ---------------------------------------------------------------------------------------------------

void OrdenesAnfitrion::Lista(const Palabras& p) {
  autonomo::FiltroLista filtro;
  for (std::size_t i = 2; i + 1 < p.size(); i += 2) {
    if (p[i] == "folio") {
      filtro.folio = p[i + 1];
    } else if (p[i] == "usuario") {
      filtro.usuario = p[i + 1];
    } else if (p[i] == "dia" || p[i] == "día") {
      filtro.dia = FechaDe(p[i + 1]);
    } else {
      Error("No se filtra por «" + p[i] + "»");
    }
  }
  if (p.size() % 2 != 0) Error("Falta el valor de «" + p.back() + "»");
  autonomo::Conexion& conexion = *piezas_.anfitrion.conexion();
  if (p[1] == "bitacora") {
    alcance_.actual.valor = MuestraLista(autonomo::LeeBitacora(conexion, filtro));
  } else if (p[1] == "correos") {
    alcance_.actual.valor = MuestraLista(autonomo::LeeBandeja(conexion, filtro));
  } else {
    Error("No hay una lista «" + p[1] + "»");
  }
}

void OrdenesAnfitrion::Reenvia(const Palabras& p) {
  autonomo::EnviaOtraVez(*piezas_.anfitrion.conexion(), NumeroDe<std::int32_t>(p[1]),
                         piezas_.anfitrion.reloj().Ahora());
}

void OrdenesAnfitrion::Sql(const Palabras& p) {
  alcance_.actual.valor = FilasDe(*piezas_.anfitrion.conexion()->Directa(p[1]));
}

// --- faults ----------------------------------------------------------------------------------------------------------

void OrdenesAnfitrion::Falla(const Palabras& p) {
  const std::string& que = p[1];
  const std::size_t textos = p.size() - 2;
  const auto exige = [&](std::size_t minimo, std::size_t maximo) {
    if (textos < minimo || textos > maximo) Error("Faltan o sobran palabras en «falla " + que + "»");
  };
  const auto opcional = [&](std::size_t indice, const char* defecto) {
    return p.size() > indice ? p[indice] : defecto;
  };
  if (que == "sentencia") {
    exige(1, 2);
    piezas_.vigilancia.FallaSentencia(p[2], p.size() > 3 ? NumeroDe<int>(p[3]) : 1);
  } else if (que == "host") {
    exige(1, 2);
    piezas_.vigilancia.FallaOperacion(p[2], opcional(3, kFallaInyectada));
  } else if (que == "tienda") {
    exige(2, 2);
    piezas_.vigilancia.FallaTienda(p[2], p[3]);
  } else if (que == "grid") {
    exige(0, 1);
    FallaGrid(p);
  } else if (que == "begin" || que == "commit" || que == "rollback") {
    exige(0, 0);
    piezas_.vigilancia.FallaTransaccion(que == "begin"    ? PasoTransaccion::Begin
                                        : que == "commit" ? PasoTransaccion::Commit
                                                          : PasoTransaccion::Rollback);
  } else if (que == "correo") {
    exige(0, 1);
    piezas_.anfitrion.FallaCorreo(opcional(2, ""));
  } else {
    Error("No se puede hacer fallar «" + que + "»");
  }
}

void OrdenesAnfitrion::FallaGrid(const Palabras& p) {
  auto pendiente = std::make_shared<std::optional<std::string>>(p.size() > 2 ? p[2] : kFallaInyectada);
  alcance_.GridDe(alcance_.Activo()).antesDeCambiar = [pendiente] {
    if (!pendiente->has_value()) return;
    const std::string texto = **pendiente;
    pendiente->reset();
    throw com::Error(com::error::kInyectada, texto);
  };
}

}  // namespace guion
