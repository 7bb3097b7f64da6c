// Screens of the host, by the names that Escritorio::AbrePantalla is given.
#pragma once

namespace anfitrion::pantalla {

// Catalogues, as the lookups of the screens name them.
inline constexpr const char *kClientes = "CA014", *kFormasPago = "CA016", *kMonedas = "CA039", *kHabitaciones = "CA153";
inline constexpr const char* kConfiguracion = "CONFIG";  // set-up of the hotel
inline constexpr const char *kBitacora = "BITACORA", *kCorreos = "CORREOS";
// What operations of Hotel and VisorRegistro show, with their arguments.
inline constexpr const char *kMuestraCliente = "MuestraCliente", *kMuestraPrecios = "MuestraPrecios",
                            *kMuestraRegistro = "MuestraRegistro";

}  // namespace anfitrion::pantalla
