// What the fuzz targets share.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

namespace fuzz {

inline std::string_view Texto(const std::uint8_t* datos, std::size_t largo) {
  return {reinterpret_cast<const char*>(datos), largo};
}

// Ends the run with a trace when something that must hold does not.
inline void Exige(bool seCumple) {
  if (!seCumple) std::abort();
}

}  // namespace fuzz
