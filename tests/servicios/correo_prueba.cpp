// Mails and printed formats of a stored reservation.
#include "host/standalone/correo.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <thread>

#include "host/standalone/cartero.h"
#include "host/standalone/impresion.h"
#include "host/standalone/parametros.h"
#include "host/standalone/red.h"
#include "tests/servicios/hotel_prueba.h"

namespace autonomo {
namespace {

using pruebas::HotelChico;

class Documentos : public testing::Test, public HotelChico {
 protected:
  Documentos() : utilerias(CreaUtilerias(host)) {
    host.Parametro("HT_NOMBRE", "Hotel de Prueba");
    folio = pruebas::GuardaUna(host, "0101", "2026-03-10", "2026-03-12", 2320);
    base().Consulta("UPDATE Reservacion SET Rs_Notas = 'Flores en la habitación', Rs_Referencia = 'R-7'");
  }
  bool Envia(const std::string& clave, const std::string& plantilla = "PL16") {
    return utilerias->EnviaCorreo("RESERVACION", clave, plantilla, "EMAIL_RESERVACION", 0, "", "");
  }
  void Imprime(const std::string& formato, const std::string& clave) {
    CreaImpresion(host)->ImprimeFormato(formato, clave, "", 0, 0, "");
  }

  // Saves the reservation again with a second room, one night shorter.
  void AgregaSegundoCuarto() {
    base().BeginTrans();
    anfitrion::DatosReservacion e = pruebas::EncabezadoDe(folio, "2026-03-10", "2026-03-12");
    e.notas = "Flores en la habitación";
    hotel->Encabezado(e);
    ASSERT_TRUE(hotel->GuardaReservacion());
    hotel->Detalle(pruebas::RenglonDe("0101", "2026-03-10", "2026-03-12", 2320));
    ASSERT_TRUE(hotel->GuardaDetalle(true));
    anfitrion::DatosDetalle l = pruebas::RenglonDe("0102", "2026-03-10", "2026-03-11", 1160);
    l.adultos = 1;
    l.menores = 2;
    l.infantes = 1;
    hotel->Detalle(l);
    ASSERT_TRUE(hotel->GuardaDetalle(true));
    base().CommitTrans();
  }

  com::Ptr<anfitrion::Utilerias> utilerias;
  std::string folio;
};

TEST(Campos, SoloSeReemplazanLosConocidos) {
  const Campos campos = {{"a", "1"}, {"b", "{a}"}};
  EXPECT_EQ(Rellena("{a}-{b}-{c} p{color: red} {a", campos), "1-{a}-{c} p{color: red} {a");
  EXPECT_EQ(Rellena("{{a}}", campos), "{1}");
  EXPECT_EQ(Rellena("", campos), "");
}

TEST(Direcciones, Validas) {
  for (const char* buena : {"a@b.mx", "maria.h+x@example.com.mx", "o'brien@example.com"})
    EXPECT_TRUE(DireccionValida(buena)) << buena;
  for (const char* mala : {"", "maria", "@example.com", "maria@", "a@b@c", "a b@c", "a@b\r\nBcc: c@d", "a@b,c@d",
                           "<a@b>", "a@b", "a:b@c.d", "a\xC2\x85@b.mx", "a..b@c.mx", "a@b..mx", "a@.mx"}) {
    EXPECT_FALSE(DireccionValida(mala)) << mala;
  }
}

TEST_F(Documentos, CorreoQuedaEnLaBandejaDeSalida) {
  host.Plantilla("PL16", "Reservación {folio}\nde {hotel}",
                 "{huesped}: {llegada} a {salida}, {noches} noches en {habitaciones}. {total} {moneda}");
  ASSERT_TRUE(Envia(folio)) << utilerias->ErrorCorreo();
  const std::vector<Correo> correos = host.Correos();
  ASSERT_EQ(correos.size(), 1U);
  EXPECT_EQ(correos[0].clave, folio);
  EXPECT_EQ(correos[0].plantilla, "PL16");
  EXPECT_EQ(correos[0].consulta, "EMAIL_RESERVACION");
  EXPECT_EQ(correos[0].para, "maria@example.com");
  EXPECT_EQ(correos[0].asunto, "Reservación 0000000001 de Hotel de Prueba");
  EXPECT_EQ(correos[0].estado, "PENDIENTE");
  EXPECT_EQ(correos[0].cuerpo,
            "María Hernández: 10/03/2026 a 12/03/2026, 2 noches en 0101 (Doble / 101 Jardín). $2,320.00 MXN");
}

TEST_F(Documentos, CorreoSeVaConLaTransaccion) {
  host.Plantilla("PL16", "x", "y");
  base().BeginTrans();
  ASSERT_TRUE(Envia(folio));
  base().RollbackTrans();
  EXPECT_TRUE(host.Correos().empty());
}

TEST_F(Documentos, ElCorreoQueNiSePuedeIntentarSigueEnEspera) {
  host.Plantilla("PL16", "x", "y");
  ASSERT_TRUE(Envia(folio) && Envia(folio)) << utilerias->ErrorCorreo();
  ServidorCorreo servidor;
  servidor.servidor = "smtp.hotel.mx:587";
  servidor.remitente = "reservas@hotel.mx";
  const Ronda ronda = Reparte(base(), host.reloj(), servidor, [] { return true; });
  EXPECT_EQ(ronda.pendientes, 2);
  for (const Correo& c : host.Correos()) EXPECT_EQ(c.estado, "PENDIENTE");
  EXPECT_EQ(Celda("SELECT Cs_Error FROM Correo_Salida"),
            com::Variant("El servidor de correo «smtp.hotel.mx:587» no es un nombre"));
}

// Nobody tries it again: it is told as one that was refused, once.
TEST_F(Documentos, ElCorreoQueVenceSeDice) {
  host.Plantilla("PL16", "Para {huesped}", "y");
  ASSERT_TRUE(Envia(folio)) << utilerias->ErrorCorreo();
  base().Consulta("UPDATE Correo_Salida SET Cs_Fecha = ?, Cs_Error = 'El servidor no contesta'",
                  {com::MasDias(host.reloj().Ahora(), -4)});
  const auto ronda = [&] { return Reparte(base(), host.reloj(), ServidorCorreo(), [] { return true; }); };
  const Ronda una = ronda();
  EXPECT_EQ(una.fallidos, 1);
  EXPECT_EQ(una.falla,
            "El correo «Para María Hernández» a maria@example.com no salió: esperó más de tres días. El servidor no "
            "contesta");
  EXPECT_EQ(host.Correos()[0].estado, "VENCIDO");
  EXPECT_EQ(ronda().fallidos, 0);
}

TEST_F(Documentos, ServidorDeCorreoQueNoPuedeSer) {
  for (const char* mala : {"smtp.hotel.mx:587", "smtp://hotel.mx", "a b", "u@hotel.mx", "[::1]", ".mx", "hotel..mx"})
    EXPECT_THROW(GuardaParametro(base(), "CORREO_SERVIDOR", mala), com::Error) << mala;
  for (const char* buena : {"", "smtp.hotel.mx", " smtp-1.hotel_mx. ", "10.0.0.2", "fe80::1", "correo.peñón.mx"})
    EXPECT_NO_THROW(GuardaParametro(base(), "CORREO_SERVIDOR", buena)) << buena;
  for (const char* mala : {"-1", "65536", "587 y 25"})
    EXPECT_THROW(GuardaParametro(base(), "CORREO_PUERTO", mala), com::Error) << mala;
  EXPECT_NO_THROW(GuardaParametro(base(), "CORREO_PUERTO", "65535"));
  for (const char* propia : {"localhost", "LocalHost", "127.0.0.1", "::1", "0:0:0:0:0:0:0:1"})
    EXPECT_TRUE(EsDeEsteEquipo(propia)) << propia;
  for (const char* ajena : {"", "hotel.mx", "127.hotel.mx", "126.0.0.1", "127.0.0.2", "127.0.0.1.9", "::2"})
    EXPECT_FALSE(EsDeEsteEquipo(ajena)) << ajena;
}

// Fails, in an error of no kind of ours, when another thread takes it over.
struct SoloDeSuHilo {
  SoloDeSuHilo() = default;
  SoloDeSuHilo(const SoloDeSuHilo& otro) : hilo(otro.hilo) {
    if (std::this_thread::get_id() != hilo) throw std::runtime_error("no es su hilo");
  }
  bool operator()() const { return true; }
  std::thread::id hilo = std::this_thread::get_id();
};

TEST(CarteroEnSuHilo, NingunaFallaTerminaElPrograma) {
  Cartero::Opciones opciones;
  opciones.base.ruta = testing::TempDir() + "su_hilo.db";
  std::filesystem::remove(opciones.base.ruta);
  AbreConexion(opciones.base, opciones.reloj).reset();
  opciones.base.veTarjetas = SoloDeSuHilo();
  const Cartero cartero(opciones);
  for (int vez = 0; vez < 500 && cartero.Impedimento().empty(); ++vez)
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  EXPECT_EQ(cartero.Impedimento(), "Falló la entrega de correos: no es su hilo");
}

TEST_F(Documentos, CorreoQueNoSePuedeEnviar) {
  EXPECT_FALSE(Envia(folio));
  EXPECT_EQ(utilerias->ErrorCorreo(), "");  // the template is missing
  host.Plantilla("PL16", "x", "y");
  EXPECT_FALSE(Envia("0000000099"));
  EXPECT_EQ(utilerias->ErrorCorreo(), "La reservación 0000000099 no existe");
  base().Consulta("UPDATE Reservacion SET Cl_Cve_Cliente = '0000000002'");
  EXPECT_FALSE(Envia(folio));
  EXPECT_EQ(utilerias->ErrorCorreo(), "El cliente 0000000002 José Martínez no tiene dirección de correo");
  host.Direccion("0000000002", "sin arroba");
  EXPECT_FALSE(Envia(folio));
  EXPECT_EQ(utilerias->ErrorCorreo(),
            "La dirección de correo del cliente 0000000002 José Martínez no es válida: sin arroba");
  host.Direccion("0000000002", "jose@example.com");
  host.FallaCorreo("servidor caído");
  EXPECT_FALSE(Envia(folio));
  EXPECT_EQ(utilerias->ErrorCorreo(), "servidor caído");
  EXPECT_TRUE(host.Correos().empty());
  // The order to fail is for one mail only.
  EXPECT_TRUE(Envia(folio));
  EXPECT_EQ(utilerias->ErrorCorreo(), "");
  EXPECT_THROW(host.Direccion("0000000077", "a@b"), com::Error);
}

TEST_F(Documentos, ImpresionIncluida) {
  AgregaSegundoCuarto();
  Imprime("HT0001", folio);
  const std::vector<Impreso> impresos = host.Impresiones();
  ASSERT_EQ(impresos.size(), 1U);
  EXPECT_EQ(impresos[0].formato, "HT0001");
  EXPECT_EQ(impresos[0].clave, folio);
  EXPECT_EQ(impresos[0].texto,
            "Hotel de Prueba\n\nConfirmación de reservación\nReservación 0000000001 (Activa)\nHuésped: María "
            "Hernández\nCliente: María Hernández\n"
            "Llegada: 10/03/2026   Salida: 12/03/2026   Noches: 2\n\n"
            "0101  Doble / 101 Jardín, 10/03/2026 al 12/03/2026, 2 adultos: $2,320.00\n"
            "0102  Doble / 102 Jardín, 10/03/2026 al 11/03/2026, 1 adulto, 2 menores, 1 infante: $1,160.00\n\n"
            "Subtotal: $3,000.00\nImpuestos: $480.00\nTotal: $3,480.00 MXN\n\nNotas: Flores en la habitación\n");
}

TEST_F(Documentos, ImpresionConFormatoDelHotel) {
  base().Consulta("INSERT INTO Formato (Fm_Cve_Formato, Fm_Contenido) VALUES ('HT0001', ?)",
                  {"Folio {folio} {referencia} {estado}\n{comentario}\n\nFin"});
  Imprime("HT0001", folio);
  EXPECT_EQ(host.Impresiones().back().texto, "Folio 0000000001 R-7 Activa\n\nFin");  // the empty comment takes no line
  EXPECT_THROW(Imprime("HT0001", "0000000099"), com::Error);
  EXPECT_EQ(host.Impresiones().size(), 1U);
}

}  // namespace
}  // namespace autonomo
