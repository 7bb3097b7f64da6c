// The keys that card data are sealed with: in a file of their user, a line each, never in a database. A user who works
// with several hotels may need several, and copies of a hotel older than its key need the one before. The first is used
// for a hotel that has no sealed card yet.
#pragma once

#include <array>
#include <iosfwd>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace autonomo {

inline constexpr std::size_t kBytesLlave = 32;

class Llave {
 public:
  // What a text is: it opens only as what it was sealed as.
  enum class Clase : char { Numero = 'n', Codigo = 'c' };

  [[nodiscard]] static Llave Nueva();
  // The keys of the file; none when there is no such file. com::Error kSoloLectura for one that cannot be read, that
  // others than its owner may read, or that holds something else.
  [[nodiscard]] static std::vector<Llave> Lee(const std::string& ruta);
  // Makes the file with a new key, for its owner alone; of two programs that meet here both have the first one's.
  [[nodiscard]] static Llave Crea(const std::string& ruta);
  // Puts the keys before those of the file, which is made when it is missing and is at every moment the old one or the
  // new one. Errors of Lee.
  static void Agrega(const std::string& ruta, const std::vector<Llave>& nuevas);
  // Writes the keys to a new file, for its owner alone. com::Error kArgumento when there is something of that name or
  // it cannot be written; then no file is left.
  static void Copia(const std::string& ruta, const std::vector<Llave>& llaves);
  // The keys of such a copy, whoever may read it. com::Error kArgumento when it cannot be read or holds something else.
  [[nodiscard]] static std::vector<Llave> LeeCopia(const std::string& ruta);
  // Variable RESERVAS_LLAVE, or "~/.config/reservas/tarjetas.llave" with the user's folder in full.
  [[nodiscard]] static std::string RutaUsual();

  // Which key it is, told without telling it.
  const std::string& Huella() const { return huella_; }
  // A mark that stands for the text: "{kv1:n:HUELLA:...}". The same text gives another one each time. aLaVista: a
  // number's mark ends with what Enmascara shows of it, "{kv1:n:HUELLA:...:1234}".
  [[nodiscard]] std::string Sella(std::string_view texto, Clase clase, bool aLaVista = false) const;
  // Nothing for a mark of another key, or one that was tampered with.
  [[nodiscard]] std::optional<std::string> Abre(std::string_view marca) const;
  bool operator==(const Llave&) const = default;

 private:
  explicit Llave(const std::array<unsigned char, kBytesLlave>& bytes);
  // The keys of a file's text; nothing when it is none.
  [[nodiscard]] static std::optional<std::vector<Llave>> DeTexto(std::istream& texto);
  [[nodiscard]] static std::string Texto(const std::vector<Llave>& llaves);
  // Whether the file is whole under its name; with encima in the place of what is there.
  [[nodiscard]] static bool Pone(const std::string& ruta, const std::vector<Llave>& llaves, bool encima);

  std::array<unsigned char, kBytesLlave> bytes_;
  std::string huella_;
};

// The first mark in a text; empty when there is none.
[[nodiscard]] std::string_view BuscaMarca(std::string_view texto);
[[nodiscard]] Llave::Clase ClaseDeMarca(std::string_view marca);
[[nodiscard]] std::string HuellaDeMarca(std::string_view marca);
// What is shown instead: the last four of a number with more, nothing of a code. EsOculto knows it again.
[[nodiscard]] std::string Enmascara(const std::string& texto, Llave::Clase clase);
[[nodiscard]] bool EsOculto(std::string_view texto);
// What every mark begins with.
inline constexpr std::string_view kInicioMarca = "{kv1:";

}  // namespace autonomo
