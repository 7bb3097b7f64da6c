// SQLite's loadable extension libkv207_sqlite.so: gives the sqlite3 shell, a database browser or Python the comparisons
// and functions that a hotel's file is built with, so that they can query and repair it.
//
// Only functions of the program that loads it may be called: every source of the extension is compiled with api.h.
#include <exception>

#include "host/standalone/colaciones.h"

SQLITE_EXTENSION_INIT1

extern "C" [[gnu::visibility("default")]] int sqlite3_extension_init(sqlite3* base, char** falla,
                                                                     const sqlite3_api_routines* api) {
  SQLITE_EXTENSION_INIT2(api)
  try {
    autonomo::RegistraColaciones(base);
    return SQLITE_OK;
  } catch (const std::exception& e) {
    *falla = sqlite3_mprintf("%s", e.what());
    return SQLITE_ERROR;
  }
}
