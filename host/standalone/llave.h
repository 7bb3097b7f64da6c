// The key that card data are sealed with: in a file of its user, never in a database.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace autonomo {

inline constexpr std::size_t kBytesLlave = 32;

class Llave {
 public:
  // What a text is: it opens only as what it was sealed as.
  enum class Clase : char { Numero = 'n', Codigo = 'c' };

  static Llave Nueva();
  // The key of the file; nothing when there is no such file. com::Error kSoloLectura for one that cannot be read, that
  // others than its owner may read, or that holds no key.
  static std::optional<Llave> Lee(const std::string& ruta);
  // Writes a new key, readable by its owner alone; of two programs that meet here both have the first one's.
  static Llave Crea(const std::string& ruta);
  // Variable RESERVAS_LLAVE, or "~/.config/reservas/tarjetas.llave" with the user's folder in full.
  static std::string RutaUsual();

  // Which key it is, told without telling it.
  const std::string& Huella() const { return huella_; }
  // A mark that stands for the text: "{kv1:n:HUELLA:...}". The same text gives another one each time.
  std::string Sella(std::string_view texto, Clase clase) const;
  // Nothing for a mark of another key, or one that was tampered with.
  std::optional<std::string> Abre(std::string_view marca) const;

 private:
  explicit Llave(const std::array<unsigned char, kBytesLlave>& bytes);

  std::array<unsigned char, kBytesLlave> bytes_;
  std::string huella_;
};

// The first mark in a text; empty when there is none.
std::string_view BuscaMarca(std::string_view texto);
Llave::Clase ClaseDeMarca(std::string_view marca);
std::string HuellaDeMarca(std::string_view marca);
// What every mark begins with.
inline constexpr std::string_view kInicioMarca = "{kv1:";

}  // namespace autonomo
