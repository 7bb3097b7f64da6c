// Whose clock counts where a server holds the hotel.
#include <gtest/gtest.h>

#include "host/standalone/anfitrion.h"
#include "host/standalone/fabricas.h"
#include "host/standalone/usuarios.h"
#include "tests/comun/base_postgres.h"
#include "tests/servicios/hotel_prueba.h"

namespace autonomo {
namespace {

using pruebas::EnPostgres;

// As if this desk were four hundred days behind.
TEST(RelojPostgres, ValeElDelServidorYSeDice) {
  const std::string base = pruebas::NuevaBasePostgres();
  const std::size_t desde = base.find("@/") + 2;
  EnPostgres(base,
             "CREATE FUNCTION public.now() RETURNS timestamptz LANGUAGE sql STABLE AS "
             "$$SELECT pg_catalog.now() + interval '400 days'$$; ALTER DATABASE " +
                 base.substr(desde, base.find('?') - desde) + " SET search_path = public, pg_catalog");
  {
    Opciones opciones = pruebas::OpcionesDePrueba(base);
    opciones.ahora.reset();
    Anfitrion host(opciones);
    const auto dias = [](com::Fecha fecha) { return com::DiasEntre(Reloj().Ahora(), fecha); };
    EXPECT_NEAR(dias(host.reloj().Ahora()), 400, 1);
    EXPECT_NEAR(dias(CreaUtilerias(host)->FechaServidor()), 400, 1);
    const auto avisos = host.TomaAvisos();
    ASSERT_EQ(avisos.size(), 1U);
    EXPECT_NE(avisos[0].find("vale el del servidor"), std::string::npos) << avisos[0];
  }
  pruebas::QuitaBasePostgres(base);
}

}  // namespace
}  // namespace autonomo
