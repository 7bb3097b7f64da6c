// Card payments.
#pragma once

#include <string>
#include <string_view>

namespace kv207 {

// Type of a payment form as the host's database has it, "" when there is no such form.
[[nodiscard]] std::string LeeTipoFormaPago(const std::string& formaPago);
// A payment form of this type is a card, which needs card data. Blanks around the type do not count.
[[nodiscard]] bool EsTarjeta(std::string_view tipoFormaPago);

}  // namespace kv207
