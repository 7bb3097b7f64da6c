// The host's parameters: what there is, what a value may be, and what is stored.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/contract/parametros.h"
#include "host/standalone/conexion.h"

namespace autonomo {

// SiNo: the platform's text-to-Boolean rule ("1", "0"). Numero: a whole number of 16 bits. Color: 0x00BBGGRR as a whole
// number, empty for the board's own. Correo: a mail address or nothing. Correos: some, with commas between them. Hora:
// 0 to 23. Equipo: name or address of a machine, or nothing. Puerto: 0 to 65535. Seguridad: kSeguridades.
enum class TipoParametro { SiNo, Numero, Color, Texto, Correo, Correos, Equipo, Puerto, Seguridad, Hora };

// How mails travel to the server: as it is safe to (empty), encrypted from the start, encrypted once greeted, in clear.
inline constexpr std::string_view kSeguridades[] = {"", "TLS", "STARTTLS", "NINGUNA"};

struct DefinicionParametro {
  DefinicionParametro(const anfitrion::Parametro& parametro, TipoParametro suyo, std::string_view texto)
      : clave(parametro.clave), tipo(suyo), defecto(parametro.defecto), explicacion(texto) {}

  std::string_view clave;
  TipoParametro tipo;
  std::string_view defecto;  // value while none is stored
  std::string_view explicacion;
};

// Every key that the screens and the host read, in the order in which they are shown.
const std::vector<DefinicionParametro>& Parametros();
// Null for a key that does not exist; case-blind.
const DefinicionParametro* BuscaParametro(std::string_view clave);
// Why the value cannot be read as the key's type, naming the key; "" it can.
[[nodiscard]] std::string MotivoIlegible(const DefinicionParametro& definicion, const std::string& valor);

// Stored value of the key; nothing when there is none.
[[nodiscard]] std::optional<std::string> ParametroGuardado(Conexion& conexion, std::string_view clave);
// Stored value, or the table's default.
std::string ValorParametro(Conexion& conexion, std::string_view clave);
// One reason for each stored value that cannot be read; empty when all can.
[[nodiscard]] std::vector<std::string> ParametrosIlegibles(Conexion& conexion);
// Stores the value. com::Error kArgumento for a key that does not exist or a value that cannot be read, is too long or
// is a negative number.
void GuardaParametro(Conexion& conexion, const std::string& clave, const std::string& valor);
// The default holds again.
void OlvidaParametro(Conexion& conexion, const std::string& clave);

// Whether it is the currency of parameter FIN_MONEDA_LOCAL; false for an empty key.
bool EsMonedaLocal(Conexion& conexion, const std::string& moneda);
// Whether the hotel is there to practise in (parameter HT_DEMOSTRACION).
bool EsDemo(Conexion& conexion);
// Zero-fill mask of folios.
std::string MascaraDeFolio(Conexion& conexion);

}  // namespace autonomo
