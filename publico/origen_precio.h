// What the price of a room line rests on, for the screen and for those who explain its prices.
#pragma once

namespace kv207 {

// Acordado: typed by the clerk, or with a discount. Guardado: read with a stored reservation. Ninguno: not priced.
enum class OrigenPrecio { Ninguno, Hotel, Acordado, Guardado };

}  // namespace kv207
