// Names of months and weekdays as they stand inside a sentence: "lunes 9 de marzo".
#pragma once

#include <array>
#include <string_view>

namespace regional {

// From January.
inline constexpr std::array<std::string_view, 12> kMeses{"enero",      "febrero", "marzo",     "abril",
                                                         "mayo",       "junio",   "julio",     "agosto",
                                                         "septiembre", "octubre", "noviembre", "diciembre"};
// From Monday; com::DiaSemana counts them from 1.
inline constexpr std::array<std::string_view, 7> kDias{"lunes",   "martes", "miércoles", "jueves",
                                                       "viernes", "sábado", "domingo"};

}  // namespace regional
