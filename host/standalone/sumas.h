// Checksums of the pages of a file that was closed whole, kept beside it ("hotel.db-suma"): the engine has none of its
// own, and does not notice a text that changed on the disk. What changes while the file is in use is not seen.
// In their place a note can stand that the file is damaged.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

struct sqlite3;

namespace autonomo {

// Writes them for a file that is in one piece and was found whole; a file that they cannot be written for has none.
void GuardaSumas(sqlite3* base);
// Puts the note in their place: nobody works in the file until it is replaced, nor closes it as whole.
void AnotaDano(sqlite3* base);
bool AnotadaDanada(sqlite3* base);
// Removes what was kept of a file that another one is about to replace.
void OlvidaSumas(const std::string& archivo);

class Sumas {
 public:
  // Those of the file as it is on the disk now, before anything is written to it. None when it is in use, when another
  // tool has written to it since, or when there are none that can be read. The handle stands in a transaction.
  static Sumas Lee(sqlite3* base);
  bool Hay() const { return tamanio_ != 0; }
  // What is wrong with the file: the first page that is not what it was, or the note; "" nothing. In the transaction
  // in which they were read.
  std::string Dano(sqlite3* base) const;

 private:
  friend void GuardaSumas(sqlite3* base);
  bool Calcula(sqlite3* base);

  std::uint32_t tamanio_ = 0;  // bytes of a page
  std::uint32_t cambios_ = 0;  // the engine's count of changes of the file
  std::uint32_t marca_ = 0;
  bool danada_ = false;  // the note stands in their place
  std::vector<std::uint64_t> paginas_;
};

}  // namespace autonomo
