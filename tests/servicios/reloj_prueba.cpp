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

class RelojPostgres : public testing::Test {
 protected:
  ~RelojPostgres() override { pruebas::QuitaBasePostgres(base); }

  // The server's clock runs ahead by that, and counts how often it is asked.
  void Adelanta(const std::string& cuanto) {
    const std::size_t desde = base.find("@/") + 2;
    EnPostgres(base,
               "CREATE SEQUENCE public.preguntas; CREATE FUNCTION public.now() RETURNS timestamptz LANGUAGE sql AS "
               "$$SELECT pg_catalog.now() + interval '" +
                   cuanto + "' + nextval('public.preguntas') * interval '0 s'$$; ALTER DATABASE " +
                   base.substr(desde, base.find('?') - desde) + " SET search_path = public, pg_catalog");
  }
  Opciones SinHoraFija() const {
    Opciones opciones = pruebas::OpcionesDePrueba(base);
    opciones.ahora.reset();
    return opciones;
  }

  const std::string base = pruebas::NuevaBasePostgres();
};

// As if this desk were four hundred days behind.
TEST_F(RelojPostgres, ValeElDelServidorYSeDice) {
  Adelanta("400 days");
  Anfitrion host(SinHoraFija());
  const auto dias = [](com::Fecha fecha) { return com::DiasEntre(Reloj().Ahora(), fecha); };
  EXPECT_NEAR(dias(host.reloj().Ahora()), 400, 1);
  EXPECT_NEAR(dias(CreaUtilerias(host)->FechaServidor()), 400, 1);
  const auto avisos = host.TomaAvisos();
  ASSERT_EQ(avisos.size(), 1U);
  EXPECT_NE(avisos[0].find("vale el del servidor"), std::string::npos) << avisos[0];
}

TEST_F(RelojPostgres, AlAbrirSePreguntaUnaVez) {
  Adelanta("0 days");
  const Anfitrion host(SinHoraFija());
  EXPECT_EQ(EnPostgres(base, "SELECT last_value FROM public.preguntas WHERE is_called"), "1");
}

}  // namespace
}  // namespace autonomo
