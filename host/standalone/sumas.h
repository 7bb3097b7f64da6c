// Checksums of the pages of a file that was closed whole, kept beside it ("hotel.db-suma"): the engine has none of its
// own, and does not notice a text that changed on the disk. What changes while the file is in use is not seen.
#pragma once

#include <atomic>
#include <cstdint>
#include <string>
#include <vector>

struct sqlite3;

namespace autonomo {

// Writes them for a file that is in one piece; a file that they cannot be written for has none.
void GuardaSumas(sqlite3* base);

class Sumas {
 public:
  // Those of the file as it is on the disk now, before anything is written to it. None when it is in use, when another
  // tool has written to it since, or when there are none that can be read.
  static Sumas Lee(sqlite3* base);
  // Number of the first page that is not what it was; 0 when all are, or once the flag is set. The handle stands in a
  // transaction that saw an empty log, so that nothing is brought from there into the file.
  std::uint32_t Distinta(sqlite3* base, const std::atomic<bool>& termina) const;

 private:
  friend void GuardaSumas(sqlite3* base);
  bool Calcula(sqlite3* base);

  std::uint32_t tamanio_ = 0;  // bytes of a page
  std::uint32_t cambios_ = 0;  // the engine's count of changes of the file
  std::uint32_t marca_ = 0;
  std::vector<std::uint64_t> paginas_;
};

}  // namespace autonomo
