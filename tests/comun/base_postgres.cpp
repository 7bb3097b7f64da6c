#include "tests/comun/base_postgres.h"

#include <libpq-fe.h>
#include <unistd.h>

#include <atomic>
#include <cstdlib>
#include <memory>
#include <stdexcept>

namespace pruebas {
namespace {

std::string Direccion(const std::string& base) {
  const char* carpeta = std::getenv("KV207_POSTGRES");
  if (carpeta == nullptr) throw std::runtime_error("KV207_POSTGRES names no server: run the test through ctest");
  const std::string donde = carpeta;
  return "postgresql://hotel@/" + base + "?port=" + donde.substr(donde.rfind('-') + 1) + "&host=" + donde;
}

}  // namespace

std::string EnPostgres(const std::string& direccion, const std::string& sentencia) {
  const std::unique_ptr<PGconn, decltype(&PQfinish)> c(PQconnectdb(direccion.c_str()), &PQfinish);
  if (PQstatus(c.get()) != CONNECTION_OK) throw std::runtime_error(PQerrorMessage(c.get()));
  const std::unique_ptr<PGresult, decltype(&PQclear)> r(PQexec(c.get(), sentencia.c_str()), &PQclear);
  const auto estado = PQresultStatus(r.get());
  if (estado != PGRES_COMMAND_OK && estado != PGRES_TUPLES_OK) throw std::runtime_error(PQerrorMessage(c.get()));
  return PQntuples(r.get()) > 0 ? PQgetvalue(r.get(), 0, 0) : "";
}

std::string NuevaBasePostgres() {
  static std::atomic<int> cuenta{0};
  const std::string nombre = "prueba_" + std::to_string(getpid()) + "_" + std::to_string(++cuenta);
  EnPostgres(Direccion("postgres"), "CREATE DATABASE " + nombre);
  return Direccion(nombre);
}

void QuitaBasePostgres(const std::string& direccion) {
  const std::size_t desde = direccion.find("@/") + 2;
  EnPostgres(Direccion("postgres"),
             "DROP DATABASE IF EXISTS " + direccion.substr(desde, direccion.find('?') - desde) + " WITH (FORCE)");
}

}  // namespace pruebas
