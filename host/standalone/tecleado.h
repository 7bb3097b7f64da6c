// What a person types of a hotel, read: rooms by their numbers, names, percentages.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace autonomo {

// The rooms that a text names, in its order and in capitals: single ones and ranges, "101-125, 201 a 210, A01-A12,
// 301A". com::Error kArgumento for a range that is none, a room named twice, a key that is too long or that the screens
// cannot look up, or more than kHabitacionesMaximas.
inline constexpr int kHabitacionesMaximas = 5000;
std::vector<std::string> HabitacionesDe(std::string_view texto);
// Why a room cannot have that key; "" it can.
[[nodiscard]] std::string MotivoHabitacion(const std::string& clave);
// Why a name is too long for its column; "" it is not.
[[nodiscard]] std::string MotivoNombre(std::string_view titulo, const std::string& texto);
// The floor that a room's number tells ("Piso 1" for 101, "Piso 12" for 1204); "General" for one that tells none.
std::string PisoDe(std::string_view habitacion);

// "16", "16 %" or "8.5" as a fraction. com::Error kArgumento, naming the title, for what is no per cent from 0 up to
// 100, and for one below 1 without its sign, as whoever types 0.16 means 16.
double LeePorCiento(std::string_view titulo, std::string_view texto);

}  // namespace autonomo
