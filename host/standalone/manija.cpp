#include "host/standalone/manija.h"

#include "host/standalone/colaciones.h"
#include "host/standalone/errores.h"

namespace autonomo {
namespace {

constexpr int kEsperaMs = 5000;
// Engine steps between two looks at whether to end.
constexpr int kPasos = 10000;

}  // namespace

Manija AbreManija(const std::string& ruta, int modo) {
  sqlite3* abierta = nullptr;
  const int rc = sqlite3_open_v2(ruta.c_str(), &abierta, modo, nullptr);
  Manija base(abierta);
  if (rc != SQLITE_OK) throw ErrorSqlite(base.get(), rc, {});
  sqlite3_busy_timeout(base.get(), kEsperaMs);
  sqlite3_db_config(base.get(), SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
  RegistraColaciones(base.get());
  return base;
}

void TerminaCon(sqlite3* base, const std::atomic<bool>& termina) {
  sqlite3_progress_handler(
      base, kPasos, [](void* t) { return static_cast<const std::atomic<bool>*>(t)->load() ? 1 : 0; },
      const_cast<std::atomic<bool>*>(&termina));  // NOLINT(*-const-cast): the engine only hands it back
}

}  // namespace autonomo
