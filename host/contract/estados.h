// Codes in the hotel's records that mean something to the program, as the database keeps them.
#pragma once

#include <string_view>

// States of any record (Es_Cve_Estado).
namespace anfitrion::estado {

inline constexpr std::string_view kActiva = "AC", kConfirmada = "CO", kCancelada = "CA", kCerrada = "CE",
                                  kAplicada = "AP", kBaja = "BA";

}  // namespace anfitrion::estado

// Types of payment forms (Fp_Tipo).
namespace anfitrion::tipo_pago {

inline constexpr const char* kTarjeta = "04";  // asks for the card's data

}  // namespace anfitrion::tipo_pago
