#include "host/standalone/parametros.h"

#include <algorithm>
#include <cstdint>
#include <limits>

#include "host/standalone/correo.h"
#include "host/standalone/red.h"
#include "host/standalone/transaccion.h"
#include "platform/com/error.h"
#include "platform/com/variant.h"
#include "schema/esquema.h"

namespace autonomo {

namespace parametro = anfitrion::parametro;
using enum TipoParametro;

// clang-format off
const std::vector<DefinicionParametro>& Parametros() {
  static const std::vector<DefinicionParametro> parametros{
      {parametro::kNombreHotel, Texto, "Nombre del hotel en las confirmaciones y los correos"},
      {parametro::kDemostracion, SiNo, "Es un hotel para practicar: las ventanas y las confirmaciones dicen DEMO"},
      {parametro::kMonedaLocal, Texto, "Clave de la moneda local; su tipo de cambio es 1"},
      {parametro::kSucursal, Texto, "Sucursal que propone una reservación nueva"},
      {parametro::kSobreventa, SiNo, "Permite reservar una noche que ya está reservada"},
      {parametro::kDiasReservacion, Numero, "Días desde la captura hasta la llegada propuesta"},
      {parametro::kMaximoNoches, Numero, "Noches de la estancia más larga que se admite"},
      {parametro::kClienteWeb, Texto,
       "Cliente de las reservaciones por Internet: su tarjeta queda en la reservación, no en el cliente"},
      {parametro::kMayusculas, SiNo, "Lo que se escribe pasa a mayúsculas"},
      {parametro::kColorDisponible, Color, "Color de las noches disponibles en el tablero"},
      {parametro::kColorOcupado, Color, "Color de las noches ocupadas por un huésped alojado"},
      {parametro::kColorReservado, Color, "Color de las noches reservadas"},
      {parametro::kColorBloqueado, Color, "Color de las noches bloqueadas"},
      {parametro::kFormatoFolio, Texto, "Ceros con que se completan los folios"},
      {parametro::kFormatoCliente, Texto, "Ceros con que se completan las claves de cliente"},
      {parametro::kFormatoFormaPago, Texto, "Ceros con que se completan las claves de forma de pago"},
      {parametro::kFormatoHabitacion, Texto, "Ceros con que se completan las claves de habitación"},
      {parametro::kFormatoTipo, Texto, "Ceros con que se completan las claves de tipo de habitación"},
      {parametro::kFormatoGrupo, Texto, "Ceros con que se completan las claves de grupo"},
      {parametro::kFormatoArea, Texto, "Ceros con que se completan las claves de área"},
      {parametro::kFormatoImpresion, Texto, "Formato con que se imprime una reservación"},
      {parametro::kRespaldoCarpeta, Texto,
       "Carpeta de las copias de respaldo, desde la del archivo del hotel o completa"},
      {parametro::kRespaldoDias, Numero, "Días de los que se guarda la copia diaria; 0 para no hacerla"},
      {parametro::kBloqueoMinutos, Numero,
       "Minutos sin trabajar tras los que se pide otra vez la contraseña; 0 para no pedirla"},
      {parametro::kPlantillaReservacion, Texto, "Plantilla del correo de una reservación guardada"},
      {parametro::kConsultaReservacion, Texto, "Consulta de ese correo"},
      {parametro::kPlantillaConfirmada, Texto, "Plantilla del correo de una reservación confirmada"},
      {parametro::kConsultaConfirmada, Texto,
       "Consulta de ese correo"},
      {parametro::kCorreoServidor, Equipo, "Servidor al que se entregan los correos (SMTP), sin el puerto; vacío, no sale ninguno"},
      {parametro::kCorreoPuerto, Puerto, "Puerto de ese servidor; 0, el de costumbre: 587, 465 con TLS, 25 sin cifrar"},
      {parametro::kCorreoSeguridad, Seguridad, "Cifrado: TLS, STARTTLS o NINGUNA; vacío, STARTTLS fuera de este equipo"},
      {parametro::kCorreoCertificados, Texto, "Archivo con los certificados en que se confía; vacío, los del sistema"},
      {parametro::kCorreoUsuario, Texto, "Usuario con que se entra a ese servidor; la contraseña no se guarda en la base"},
      {parametro::kCorreoRemitente, Correo, "Dirección de la que salen los correos"},
      {parametro::kParteCorreos, Correos, "Direcciones, separadas por comas, que reciben cada noche el parte del día; vacío, ninguna"},
      {parametro::kParteHora, Hora, "Hora, de 0 a 23, desde la que sale el parte del día"},
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

namespace {

const char* QueLleva(TipoParametro tipo) {
  switch (tipo) {
    case SiNo:
      return "sí o no (1 o 0)";
    case Numero:
      return "un número entero de 0 a 32767";
    case Color:
      return "un color";
    case Correo:
      return "una dirección de correo";
    case Correos:
      return "direcciones de correo separadas por comas";
    case Hora:
      return "una hora de 0 a 23";
    case Equipo:
      return "el nombre o la dirección de un equipo, sin puerto,";
    case Puerto:
      return "un puerto de 0 a 65535";
    case Seguridad:
      return "TLS, STARTTLS o NINGUNA";
    case Texto:
      break;
  }
  return "";
}

bool EsEnteroHasta(const std::string& valor, std::int32_t maximo) {
  const auto n = com::CLng(valor);
  return n >= 0 && n <= maximo;
}

// Raises too, as the conversions of values do.
bool Sirve(TipoParametro tipo, const std::string& valor) {
  const std::string recortado = com::Recorta(valor);
  const bool vacio = recortado.empty();
  switch (tipo) {
    case SiNo:
      if (!vacio) com::CBool(valor);
      return true;
    case Numero:
      return com::CInt(valor) >= 0;
    case Color:
      if (!vacio) com::CLng(valor);
      return true;
    case Correo:
      return vacio || DireccionValida(recortado);
    case Correos:
      return std::ranges::all_of(SeparaDirecciones(valor), DireccionValida);
    case Hora:
      return EsEnteroHasta(valor, 23);
    case Equipo:
      return vacio || EsNombreDeEquipo(recortado);
    case Puerto:
      return EsEnteroHasta(valor, std::numeric_limits<std::uint16_t>::max());
    case Seguridad:
      return std::ranges::find(kSeguridades, recortado) != std::end(kSeguridades);
    case Texto:
      break;
  }
  return true;
}

}  // namespace

std::string MotivoIlegible(const DefinicionParametro& definicion, const std::string& valor) {
  try {
    if (Sirve(definicion.tipo, valor)) return {};
  } catch (const com::Error&) {
    // Told below: the conversion knows neither the key nor what it holds.
  }
  return "El parámetro " + std::string(definicion.clave) + " lleva " + QueLleva(definicion.tipo) + " y dice «" + valor +
         "»";
}

std::optional<std::string> ParametroGuardado(Conexion& conexion, std::string_view clave) {
  const ado::RecordsetPtr rs = conexion.Consulta("SELECT Pm_Valor FROM Parametro WHERE Pm_Clave = ?", {clave});
  if (rs->Eof() || rs->Fields(0).Value().EsNulo()) return std::nullopt;
  return com::CStr(rs->Fields(0).Value());
}

std::string ValorParametro(Conexion& conexion, std::string_view clave) {
  const DefinicionParametro* definicion = BuscaParametro(clave);
  return ParametroGuardado(conexion, clave).value_or(definicion == nullptr ? "" : std::string(definicion->defecto));
}

std::vector<std::string> ParametrosIlegibles(Conexion& conexion) {
  std::vector<std::string> motivos;
  for (const DefinicionParametro& d : Parametros()) {
    const std::optional<std::string> valor = ParametroGuardado(conexion, d.clave);
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
  if (d->tipo == Color && !com::Recorta(valor).empty() && com::CLng(valor) < 0) {
    return rechaza("El parámetro " + clave + " no admite números negativos");
  }
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
  return !clave.empty() &&
         com::IgualSinCaja(clave, com::Recorta(ValorParametro(conexion, parametro::kMonedaLocal.clave)));
}

bool EsDemo(Conexion& conexion) {
  const std::string valor = ValorParametro(conexion, parametro::kDemostracion.clave);
  const DefinicionParametro* definicion = BuscaParametro(parametro::kDemostracion.clave);
  return MotivoIlegible(*definicion, valor).empty() && !com::Recorta(valor).empty() && com::CBool(valor);
}

std::string MascaraDeFolio(Conexion& conexion) { return ValorParametro(conexion, parametro::kFormatoFolio.clave); }

}  // namespace autonomo
