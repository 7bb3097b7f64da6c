// A SQLite handle of our own, beside the driver's: for copies, checks in the background and new files.
#pragma once

#include <sqlite3.h>

#include <atomic>
#include <memory>
#include <string>

namespace autonomo {

struct CierraManija {
  void operator()(sqlite3* base) const { sqlite3_close(base); }
};
using Manija = std::unique_ptr<sqlite3, CierraManija>;

// Opens the file with the flags of sqlite3_open_v2 and registers what its statements need. Whatever it finds in the log
// when it closes stays there: that is for the programs that work in the file. com::Error by category.
Manija AbreManija(const std::string& ruta, int modo);

// Ends the handle's statements once the flag is set, with an error.
void TerminaCon(sqlite3* base, const std::atomic<bool>& termina);

}  // namespace autonomo
