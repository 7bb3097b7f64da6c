// The statements that list, insert, change and withdraw rows of the catalogues.
#include <algorithm>

#include "host/standalone/catalogos.h"
#include "host/standalone/parametros.h"
#include "host/standalone/usuarios.h"
#include "platform/ado/celda.h"
#include "platform/com/error.h"
#include "platform/regional/regional.h"
#include "schema/esquema.h"

namespace autonomo {

namespace {

std::string Lista(const Catalogo& c, std::string_view separador, const char* sufijo) {
  std::string lista;
  for (const CampoCatalogo& campo : c.campos) {
    if (!lista.empty()) lista += separador;
    lista += std::string(campo.columna) + sufijo;
  }
  return lista;
}

// Condition that finds a row, and the values in it: the key, and with `entera` what tells rows of one key apart.
std::string Condicion(const Catalogo& c, const std::vector<com::Variant>& fila, bool entera,
                      Conexion::Parametros& valores) {
  std::string condicion;
  for (std::size_t i = 0; i < c.campos.size(); ++i) {
    if (!c.campos[i].llave && !(entera && c.campos[i].columna == c.distingue)) continue;
    condicion += (condicion.empty() ? "" : " AND ") + std::string(c.campos[i].columna);
    condicion += fila[i].EsNulo() ? " IS NULL" : " = ?";
    if (!fila[i].EsNulo()) valores.push_back(fila[i]);
  }
  return condicion;
}

bool Existe(Conexion& conexion, const Catalogo& c, const std::vector<com::Variant>& valores, bool entera) {
  Conexion::Parametros llave;
  const std::string condicion = Condicion(c, valores, entera, llave);
  const std::string sentencia =
      "SELECT " + std::string(c.campos.front().columna) + " FROM " + std::string(c.tabla) + " WHERE " + condicion;
  return !conexion.Consulta(sentencia, llave)->Eof();
}

// Title of the first catalogue with a row that names this one; "" none.
std::string UsadaEn(Conexion& conexion, const Catalogo& c, const FilaCatalogo& fila) {
  for (const Catalogo& otro : Catalogos()) {
    for (const CampoCatalogo& campo : otro.campos) {
      if (campo.referencia != c.tabla) continue;
      const std::string columna(campo.columna);
      const std::string sentencia =
          "SELECT " + columna + " FROM " + std::string(otro.tabla) + " WHERE " + columna + " = ?";
      if (!conexion.Consulta(sentencia, {fila.valores.front()})->Eof()) return std::string(otro.titulo);
    }
  }
  return {};
}

// Products of the room types that are offered and branches where none of them pays a tax, not even one of 0.
std::string SinImpuesto(Conexion& conexion) {
  const auto rs = conexion.Consulta(
      "SELECT DISTINCT T.Pr_Cve_Producto, S.Sc_Cve_Sucursal, S.Sc_Descripcion FROM Tipo_Habitacion T, Sucursal S "
      "WHERE T.Es_Cve_Estado <> 'BA' AND S.Es_Cve_Estado <> 'BA' AND NOT EXISTS (SELECT I.Pr_Cve_Producto FROM "
      "Impuesto I WHERE I.Pr_Cve_Producto = T.Pr_Cve_Producto AND (I.Sc_Cve_Sucursal = S.Sc_Cve_Sucursal OR "
      "I.Sc_Cve_Sucursal = '')) ORDER BY T.Pr_Cve_Producto, S.Sc_Cve_Sucursal");
  std::string texto;
  for (; !rs->Eof(); rs->MoveNext()) {
    texto += "\r\n" + com::CStr(rs->Fields(0).Value()) + " en " + com::CStr(rs->Fields(1).Value()) + " " +
             com::CStr(rs->Fields(2).Value());
  }
  return texto.empty() ? texto : "Sin renglón en «Impuestos» se venden sin impuesto:" + texto;
}

// Live reservations of the room on the nights of a block, the first and the last included.
std::string ReservadasEn(Conexion& conexion, const std::vector<com::Variant>& bloqueo) {
  const auto rs = conexion.Consulta(
      "SELECT R.Rs_Folio, D.Rsd_Fecha_Inicio, D.Rsd_Fecha_Fin FROM Reservacion_Detalle D INNER JOIN Reservacion R "
      "ON R.Rs_Folio = D.Rs_Folio WHERE D.Hb_Cve_Habitacion = ? AND R.Es_Cve_Estado <> 'CA' AND "
      "R.Es_Cve_Estado <> 'CE' AND D.Rsd_Fecha_Fin > ? AND D.Rsd_Fecha_Inicio <= ? ORDER BY D.Rsd_Fecha_Inicio",
      {bloqueo[0], bloqueo[1], bloqueo[2]});
  std::string texto;
  for (; !rs->Eof(); rs->MoveNext()) {
    texto += "\r\nFolio " + com::CStr(rs->Fields(0).Value()) + ", del " +
             regional::FechaCorta(com::CDate(rs->Fields(1).Value())) + " al " +
             regional::FechaCorta(com::CDate(rs->Fields(2).Value()));
  }
  return texto.empty() ? texto : "El bloqueo quedó guardado, pero cae sobre reservaciones vivas:" + texto;
}

}  // namespace

std::string Advertencia(Conexion& conexion, const Catalogo& c, const std::vector<com::Variant>& valores) {
  if (c.tabla == "Habitacion_Bloqueo") return ReservadasEn(conexion, valores);
  const bool vende = c.tabla == "Tipo_Habitacion" || c.tabla == "Sucursal" || c.tabla == "Impuesto";
  return vende ? SinImpuesto(conexion) : std::string();
}

std::vector<FilaCatalogo> LeeCatalogo(Conexion& conexion, const Catalogo& c) {
  const std::string sentencia = "SELECT " + Lista(c, ", ", "") + (c.conEstado ? ", Es_Cve_Estado" : "") + " FROM " +
                                std::string(c.tabla) + " ORDER BY " + std::string(c.campos.front().columna);
  std::vector<FilaCatalogo> filas;
  const auto rs = conexion.Consulta(sentencia);
  for (; !rs->Eof(); rs->MoveNext()) {
    FilaCatalogo fila;
    for (std::size_t i = 0; i < c.campos.size(); ++i) fila.valores.push_back(rs->Fields(i).Value());
    if (c.conEstado) {
      const std::string codigo = ado::Celda(*rs, c.campos.size());
      fila.deBaja =
          c.todoEsLlave ? !com::IgualSinCaja(codigo, esquema::kActiva) : com::IgualSinCaja(codigo, esquema::kBaja);
    }
    filas.push_back(std::move(fila));
  }
  return filas;
}

std::vector<std::pair<std::string, std::string>> LeeReferencia(Conexion& conexion, std::string_view tabla) {
  std::vector<std::pair<std::string, std::string>> filas;
  const Catalogo* c = BuscaCatalogo(tabla);
  if (c == nullptr) return filas;
  for (const FilaCatalogo& fila : LeeCatalogo(conexion, *c)) {
    if (!fila.deBaja)
      filas.emplace_back(TextoDe(c->campos[0], fila.valores[0]), TextoDe(c->campos[1], fila.valores[1]));
  }
  return filas;
}

std::string MascaraDe(Conexion& conexion, const Catalogo& c) {
  if (c.mascara.empty()) return {};
  return ValorParametro(conexion, c.mascara);
}

namespace {

// Rights have rules of their own.
void Escribe(Conexion& conexion, const Catalogo& c, const std::string& sentencia, const Conexion::Parametros& valores) {
  const auto escribe = [&] { conexion.Consulta(sentencia, valores); };
  c.tabla == "Permiso" ? CambiaDerechos(conexion, escribe) : escribe();
}

}  // namespace

void Inserta(Conexion& conexion, const Catalogo& c, std::vector<com::Variant> valores) {
  if (!c.consecutivo.empty()) {
    const auto rs = conexion.Consulta("SELECT MAX(" + std::string(c.consecutivo) + ") FROM " + std::string(c.tabla));
    const std::int32_t ultimo = ado::CeldaEntero(*rs, 0);
    for (std::size_t i = 0; i < c.campos.size(); ++i) {
      if (c.campos[i].columna == c.consecutivo) valores[i] = ultimo + 1;
    }
  } else if (Existe(conexion, c, valores, false)) {
    throw com::Error(com::error::kRestriccion,
                     !c.repetida.empty() ? std::string(c.repetida)
                                         : "Ya existe una fila con esa clave en «" + std::string(c.titulo) + "»");
  }
  std::string marcas;
  for (std::size_t i = 0; i < c.campos.size(); ++i) marcas += i == 0 ? "?" : ", ?";
  const std::string estado = c.conEstado ? ", Es_Cve_Estado" : "";
  if (c.conEstado) {
    marcas += ", ?";
    valores.emplace_back(std::string(esquema::kActiva));
  }
  const std::string sentencia =
      "INSERT INTO " + std::string(c.tabla) + " (" + Lista(c, ", ", "") + estado + ") VALUES (" + marcas + ")";
  Escribe(conexion, c, sentencia, valores);
}

void Cambia(Conexion& conexion, const Catalogo& c, const FilaCatalogo& antes, std::vector<com::Variant> valores) {
  if (!Existe(conexion, c, antes.valores, true)) {
    throw com::Error(com::error::kRestriccion,
                     "Esa fila de «" + std::string(c.titulo) + "» ya no existe: alguien la cambió o la quitó");
  }
  for (std::size_t i = 0; i < c.campos.size(); ++i) {
    if (c.campos[i].llave && !c.todoEsLlave) valores[i] = antes.valores[i];
  }
  Conexion::Parametros parametros(valores.begin(), valores.end());
  const std::string condicion = Condicion(c, antes.valores, true, parametros);
  const std::string sentencia =
      "UPDATE " + std::string(c.tabla) + " SET " + Lista(c, ", ", " = ?") + " WHERE " + condicion;
  Escribe(conexion, c, sentencia, parametros);
}

void Retira(Conexion& conexion, const Catalogo& c, const FilaCatalogo& fila) {
  if (!c.conEstado) {
    if (const std::string donde = UsadaEn(conexion, c, fila); !donde.empty())
      throw com::Error(com::error::kRestriccion, "No se puede quitar: se usa en «" + donde + "»");
  }
  Conexion::Parametros parametros;
  const std::string_view retirada = c.todoEsLlave ? esquema::kCancelada : esquema::kBaja;
  if (c.conEstado) parametros.emplace_back(std::string(fila.deBaja ? esquema::kActiva : retirada));
  const std::string condicion = Condicion(c, fila.valores, true, parametros);
  const std::string tabla(c.tabla);
  const std::string sentencia = c.conEstado ? "UPDATE " + tabla + " SET Es_Cve_Estado = ? WHERE " + condicion
                                            : "DELETE FROM " + tabla + " WHERE " + condicion;
  Escribe(conexion, c, sentencia, parametros);
}

}  // namespace autonomo
