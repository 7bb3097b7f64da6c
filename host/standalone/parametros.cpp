#include "host/standalone/parametros.h"

#include <algorithm>

#include "host/standalone/transaccion.h"
#include "platform/com/error.h"
#include "platform/com/variant.h"
#include "schema/esquema.h"

namespace autonomo {

using enum TipoParametro;

// clang-format off
const std::vector<DefinicionParametro>& Parametros() {
  static const std::vector<DefinicionParametro> parametros{
      {"HT_NOMBRE", Texto, "Hotel", "Nombre del hotel en las confirmaciones y los correos"},
      {"FIN_MONEDA_LOCAL", Texto, "", "Clave de la moneda local; su tipo de cambio es 1"},
      {"HT_SUCURSAL_DEFAULT", Texto, "0001", "Sucursal que propone una reservación nueva"},
      {"HT_OVER_BOOKING", SiNo, "1", "Permite reservar una noche que ya está reservada"},
      {"HT_DIAS_RESERVACION", Numero, "1", "Días desde la captura hasta la llegada propuesta"},
      {"HT_MAXIMO_NOCHES", Numero, "366", "Noches de la estancia más larga que se admite"},
      {"HT_CLIENTE_RESERVACION_WEB", Texto, "",
       "Cliente de las reservaciones por Internet: su tarjeta queda en la reservación, no en el cliente"},
      {"CAT_FORZAR_MAYUSCULAS", SiNo, "", "Lo que se escribe pasa a mayúsculas"},
      {"HT_COLOR_DISPONIBLE", Color, "", "Color de las noches disponibles en el tablero"},
      {"HT_COLOR_OCUPADO", Color, "", "Color de las noches ocupadas por un huésped alojado"},
      {"HT_COLOR_RESERVADO", Color, "", "Color de las noches reservadas"},
      {"HT_COLOR_BLOQUEADO", Color, "", "Color de las noches bloqueadas"},
      {"HT_FORMATO_FOLIO", Texto, "0000000000", "Ceros con que se completan los folios"},
      {"FTO_CLIENTE", Texto, "0000000000", "Ceros con que se completan las claves de cliente"},
      {"FTO_FORMA_PAGO", Texto, "0000", "Ceros con que se completan las claves de forma de pago"},
      {"FTO_HABITACION", Texto, "0000", "Ceros con que se completan las claves de habitación"},
      {"FTO_TIPO_HABITACION", Texto, "0000", "Ceros con que se completan las claves de tipo de habitación"},
      {"FTO_GRUPO_HABITACION", Texto, "0000", "Ceros con que se completan las claves de grupo"},
      {"FTO_AREA", Texto, "0000", "Ceros con que se completan las claves de área"},
      {"FTO_IMP_RESERVACION", Texto, "HT0001", "Formato con que se imprime una reservación"},
      {"HT_RESPALDO_CARPETA", Texto, "respaldos",
       "Carpeta de las copias de respaldo, desde la del archivo del hotel o completa"},
      {"HT_RESPALDO_DIAS", Numero, "14", "Días de los que se guarda la copia diaria; 0 para no hacerla"},
      {"PL_MAIL_RESERVACION_HOTEL", Texto, "PL16", "Plantilla del correo de una reservación guardada"},
      {"PL_MAIL_RESERVACION_HOTEL_CONSULTA", Texto, "EMAIL_RESERVACION", "Consulta de ese correo"},
      {"PL_MAIL_RESERVACION_HOTEL_CONFIRMADA", Texto, "PL17", "Plantilla del correo de una reservación confirmada"},
      {"PL_MAIL_RESERVACION_HOTEL_CONFIRMADA_CONSULTA", Texto, "RESERVACION_EMAIL_CONFIRMADA",
       "Consulta de ese correo"},
  };
  return parametros;
}
// clang-format on

const DefinicionParametro* BuscaParametro(std::string_view clave) {
  const auto& todos = Parametros();
  const auto p = std::find_if(todos.begin(), todos.end(),
                              [&](const DefinicionParametro& d) { return com::IgualSinCaja(d.clave, clave); });
  return p == todos.end() ? nullptr : &*p;
}

std::string MotivoIlegible(const DefinicionParametro& definicion, const std::string& valor) {
  const bool vacio = com::Recorta(valor).empty();
  const char* lleva = "";
  try {
    switch (definicion.tipo) {
      case SiNo:
        lleva = "sí o no (1 o 0)";
        if (!vacio) com::CBool(valor);
        break;
      case Numero:
        lleva = "un número entero de 0 a 32767";
        com::CInt(valor);
        break;
      case Color:
        lleva = "un color";
        if (!vacio) com::CLng(valor);
        break;
      case Texto:
        break;
    }
  } catch (const com::Error&) {
    return "El parámetro " + std::string(definicion.clave) + " lleva " + lleva + " y dice «" + valor + "»";
  }
  return {};
}

std::optional<std::string> LeeParametro(Conexion& conexion, std::string_view clave) {
  const ado::RecordsetPtr rs = conexion.Consulta("SELECT Pm_Valor FROM Parametro WHERE Pm_Clave = ?", {clave});
  if (rs->Eof() || rs->Fields(0).Value().EsNulo()) return std::nullopt;
  return com::CStr(rs->Fields(0).Value());
}

std::string ValorParametro(Conexion& conexion, std::string_view clave) {
  const DefinicionParametro* definicion = BuscaParametro(clave);
  return LeeParametro(conexion, clave).value_or(definicion == nullptr ? "" : std::string(definicion->defecto));
}

std::vector<std::string> ParametrosIlegibles(Conexion& conexion) {
  std::vector<std::string> motivos;
  for (const DefinicionParametro& d : Parametros()) {
    const std::optional<std::string> valor = LeeParametro(conexion, d.clave);
    if (!valor) continue;
    if (std::string motivo = MotivoIlegible(d, *valor); !motivo.empty()) motivos.push_back(std::move(motivo));
  }
  return motivos;
}

void GuardaParametro(Conexion& conexion, const std::string& clave, const std::string& valor) {
  const auto rechaza = [](const std::string& motivo) { throw com::Error(com::error::kArgumento, motivo); };
  const DefinicionParametro* d = BuscaParametro(clave);
  if (d == nullptr) return rechaza("El parámetro " + clave + " no existe");
  if (const std::string motivo = MotivoIlegible(*d, valor); !motivo.empty()) return rechaza(motivo);
  const bool numero = d->tipo == Numero || (d->tipo == Color && !com::Recorta(valor).empty());
  if (numero && com::CLng(valor) < 0) return rechaza("El parámetro " + clave + " no admite números negativos");
  if (valor.size() > esquema::kLargoTexto) {
    return rechaza("El parámetro " + clave + " admite " + std::to_string(esquema::kLargoTexto) + " caracteres");
  }
  Transaccion t(conexion);
  conexion.Consulta("DELETE FROM Parametro WHERE Pm_Clave = ?", {d->clave});
  conexion.Consulta("INSERT INTO Parametro (Pm_Clave, Pm_Valor) VALUES (?, ?)", {d->clave, valor});
  t.Concluye();
}

void OlvidaParametro(Conexion& conexion, const std::string& clave) {
  conexion.Consulta("DELETE FROM Parametro WHERE Pm_Clave = ?", {clave});
}

bool EsMonedaLocal(Conexion& conexion, const std::string& moneda) {
  const std::string clave = com::Recorta(moneda);
  return !clave.empty() && com::IgualSinCaja(clave, com::Recorta(ValorParametro(conexion, "FIN_MONEDA_LOCAL")));
}

std::string MascaraDeFolio(Conexion& conexion) { return ValorParametro(conexion, "HT_FORMATO_FOLIO"); }

}  // namespace autonomo
