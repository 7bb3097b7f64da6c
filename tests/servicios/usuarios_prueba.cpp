// Passwords, waits, and who may take rights away.
#include "host/standalone/usuarios.h"

#include <gtest/gtest.h>

#include "host/standalone/permisos.h"
#include "host/standalone/segundos.h"
#include "platform/com/error.h"

namespace autonomo {
namespace {

class UsuariosPrueba : public ::testing::Test {
 protected:
  static com::Fecha A(int segundo) { return com::FechaDe(2026, 3, 9, 10, segundo / 60, segundo % 60); }
  // Nobody sets the clock.
  Acceso Da(const char* contrasena, com::Fecha ahora, const char* usuario = "ana") {
    return Accede(*base, usuario, contrasena, ahora, Segundos(ahora));
  }
  bool Entra(const char* contrasena, com::Fecha ahora, const char* usuario = "ana") {
    return Da(contrasena, ahora, usuario).Bien();
  }
  Reloj reloj;
  std::shared_ptr<Conexion> base = AbreConexion({}, reloj);
};

TEST_F(UsuariosPrueba, LaContrasenaSeComparaYNoSeGuarda) {
  EXPECT_FALSE(PideContrasena(*base));
  GuardaUsuario(*base, {"Ana", "Ana Torres"}, "ñandú 2026", {kPermisoConfiguracion});
  EXPECT_TRUE(PideContrasena(*base));
  const std::string guardada = com::CStr(base->Consulta("SELECT Us_Contrasena FROM Usuario")->Fields(0).Value());
  EXPECT_TRUE(guardada.starts_with("$argon2id$")) << guardada;
  EXPECT_EQ(Da("ñandú 2026", A(0), "ANA").usuario, "Ana");
  for (const char* mala : {"", "Ñandú 2026", "ñandú 2026 "}) EXPECT_FALSE(Entra(mala, A(0))) << mala;
  for (const char* nadie : {"", "nadie", "' OR 1=1 --"}) EXPECT_FALSE(Entra("ñandú 2026", A(60), nadie)) << nadie;
  // Nobody may enter once withdrawn; the last one cannot be, and is left whole.
  GuardaUsuario(*base, {"luis", ""}, "otra larga", {});
  GuardaUsuario(*base, {"luis", "", true}, std::nullopt, {});
  EXPECT_FALSE(Entra("otra larga", A(60), "luis"));
  EXPECT_THROW(GuardaUsuario(*base, {"Ana", "", true}, std::nullopt, {kPermisoConfiguracion}), com::Error);
  EXPECT_THROW(GuardaUsuario(*base, {"Ana", ""}, std::nullopt, {}), com::Error);
  EXPECT_THROW(GuardaUsuario(*base, {"eva", ""}, std::nullopt, {}), com::Error);
  for (const char* mala : {"O'Brien", "dos\nrenglones", "\x7f", "\xc2\x85"})
    EXPECT_THROW(GuardaUsuario(*base, {mala, ""}, "bastante larga", {}), com::Error) << mala;
  // Nor is she stored over what another one has changed meanwhile.
  const FichaUsuario vista = FichaDe(*base, "LUIS");
  GuardaUsuario(*base, {"luis", "", true}, std::nullopt, {kPermisoTarjetas}, &vista);
  EXPECT_THROW(GuardaUsuario(*base, {"luis", ""}, std::nullopt, {}, &vista), com::Error);
  EXPECT_EQ(DerechosDe(*base, "luis"), std::vector<std::string>{kPermisoTarjetas});
  EXPECT_EQ(Usuarios(*base).size(), 2U);
  EXPECT_EQ(DerechosDe(*base, "ana"), std::vector<std::string>{kPermisoConfiguracion});
  EXPECT_TRUE(Entra("ñandú 2026", A(60)));
}

// While nobody has a password everybody may what nobody was granted; from then on only who was.
TEST_F(UsuariosPrueba, ConContrasenasNadiePuedeLoQueNoSeLeDio) {
  EXPECT_TRUE(PuedeVerTarjetas(*base, "ana") && PuedeConfigurar(*base, "ana"));
  GuardaUsuario(*base, {"ana", ""}, "bastante larga", {kPermisoConfiguracion});
  for (const char* quien : {"ana", "luis"}) EXPECT_FALSE(PuedeVerTarjetas(*base, quien)) << quien;
  EXPECT_FALSE(PuedeConfigurar(*base, "luis"));
  EXPECT_THROW(CambiaDerechos(*base, [&] { base->Consulta("DELETE FROM Permiso"); }), com::Error);
  EXPECT_TRUE(PuedeConfigurar(*base, "ana"));
}

TEST_F(UsuariosPrueba, CadaFallaHaceEsperarMas) {
  GuardaUsuario(*base, {"ana", ""}, "bastante larga", {kPermisoConfiguracion});
  for (int i = 0; i < 3; ++i) EXPECT_FALSE(Entra("mala", A(0)));
  EXPECT_NE(Da("bastante larga", A(4)).motivo.find("espere 1 segundos"), std::string::npos);
  EXPECT_FALSE(Entra("mala", A(5)));  // now ten
  EXPECT_FALSE(Entra("bastante larga", A(14)));
  EXPECT_TRUE(Entra("bastante larga", A(15)));
  for (int i = 0; i < 2; ++i) EXPECT_FALSE(Entra("mala", A(16)));
  EXPECT_TRUE(Entra("bastante larga", A(16))) << "a success begins anew";
  com::Fecha ahora = A(100);
  for (int i = 0; i < 11; ++i) {
    EXPECT_FALSE(Entra("mala", ahora));
    ahora = com::MasDias(ahora, 1);
  }
  ahora = com::MasDias(ahora, -1);
  EXPECT_NE(Da("bastante larga", ahora).motivo.find("espere 15 minutos"), std::string::npos);
  // A clock that was off makes nobody wait for longer.
  const auto despues = [&](int segundos) {
    return Accede(*base, "ana", "bastante larga", com::MasDias(ahora, -300), Segundos(ahora) + segundos).Bien();
  };
  EXPECT_FALSE(despues(899));
  EXPECT_TRUE(despues(900));
}

// Whoever waits has the desk's clock before her, and may open and close as many programs as she likes.
TEST_F(UsuariosPrueba, PonerElRelojNoAcortaLaEspera) {
  GuardaUsuario(*base, {"ana", ""}, "bastante larga", {kPermisoConfiguracion});
  const auto dice = [&](const char* contrasena, com::Fecha ahora, int latido) {
    const Acceso acceso = Accede(*base, "ana", contrasena, ahora, latido);
    return acceso.Bien() ? "entra" : acceso.motivo.substr(acceso.motivo.find(':') + 1);
  };
  const com::Fecha hora = com::FechaDe(2026, 3, 9, 11);
  const auto puestos = {A(0), hora, com::MasDias(hora, 1000), com::MasDias(hora, -1000)};
  for (int i = 0; i < 3; ++i) EXPECT_NE(dice("mala", A(0), 100), "entra");
  for (const com::Fecha puesto : puestos) EXPECT_EQ(dice("bastante larga", puesto, 101), " espere 4 segundos");
  EXPECT_EQ(dice("bastante larga", A(0), 105), "entra");

  // What another program leaves in the file holds here, be it longer or shorter than what was last counted here.
  const auto deja = [&](int fallas, const com::Variant& hasta) {
    base->Consulta("UPDATE Usuario SET Us_Fallas = ?, Us_Espera = ?", {fallas, hasta});
  };
  const auto latido = [](int segundos) { return MasSegundos({}, segundos); };
  EXPECT_NE(dice("mala", A(0), 200), "entra");
  deja(11, latido(1100));
  for (const com::Fecha puesto : puestos) EXPECT_EQ(dice("bastante larga", puesto, 210), " espere 15 minutos");
  EXPECT_NE(dice("mala", A(0), 1100), "entra");
  deja(3, latido(1110));
  EXPECT_EQ(dice("bastante larga", A(0), 1106), " espere 4 segundos");
  EXPECT_EQ(dice("bastante larga", A(0), 1110), "entra");

  // By another clock: the computer's before it was started again, one of the day, none. The wait begins anew, once,
  // and each program that opens the file then finds it.
  for (const com::Variant& hasta : {com::Variant(latido(5000)), com::Variant(A(10)), com::Variant()}) {
    deja(4, hasta);
    EXPECT_EQ(dice("bastante larga", hora, 300), " espere 10 segundos");
    EXPECT_EQ(com::CLng(base->Consulta("SELECT Us_Fallas FROM Usuario")->Fields(0).Value()), 4);
    EXPECT_EQ(dice("bastante larga", hora, 309), " espere 1 segundos");
    EXPECT_EQ(dice("bastante larga", hora, 310), "entra");
  }
}

}  // namespace
}  // namespace autonomo
