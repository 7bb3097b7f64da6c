// Four-byte string handle: stands for the COM string (BSTR) in the packed records that cross to the store.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace com {

// Owns an entry of the process's string table, which is the apartment's alone (objeto.h); handle 0 is the empty string.
// Copies copy the text.
class Cadena {
 public:
  Cadena() = default;
  explicit Cadena(std::string_view texto);
  Cadena(const Cadena& otra);
  Cadena(Cadena&& otra) noexcept;
  Cadena& operator=(const Cadena& otra);
  Cadena& operator=(Cadena&& otra) noexcept;
  Cadena& operator=(std::string_view texto);
  ~Cadena();
  const std::string& Texto() const;
  // Entries in use in the whole process; for leak checks.
  static std::size_t EnUso();

 private:
  std::uint32_t indice_ = 0;
};
static_assert(sizeof(Cadena) == 4);

}  // namespace com
