// System and utility services, record viewer, and the object that owns the screen.
#include <gtest/gtest.h>

#include "host/standalone/busquedas.h"
#include "host/standalone/parametros.h"
#include "host/standalone/permisos.h"
#include "tests/comun/error_de.h"
#include "tests/comun/escritorio_prueba.h"
#include "tests/servicios/hotel_prueba.h"

namespace autonomo {
namespace {

using pruebas::Dia;
using pruebas::HotelChico;

class Servicios : public testing::Test, public HotelChico {
 protected:
  Servicios() : sistema(CreaSistema(host)), utilerias(CreaUtilerias(host)) {}
  com::Ptr<anfitrion::Sistema> sistema;
  com::Ptr<anfitrion::Utilerias> utilerias;
};

TEST_F(Servicios, ParametrosConDefecto) {
  EXPECT_EQ(sistema->LeeParametro("FTO_CLIENTE", 0, "T", "0000000000"), com::Variant("0000000000"));
  host.Parametro("FTO_CLIENTE", "000");
  host.Parametro("FTO_CLIENTE", "");
  EXPECT_EQ(sistema->LeeParametro("FTO_CLIENTE", 0, "T", "0000000000"), com::Variant(""));  // stored empty is stored
  EXPECT_FALSE(com::CBool(sistema->LeeParametro("HT_OVER_BOOKING", 0, "B", "1")));
  EXPECT_EQ(com::CInt(sistema->LeeParametro("HT_DIAS_RESERVACION", 0, "N", "1")), 1);
}

TEST_F(Servicios, UnValorQueNoSeLeeDiceSuClave) {
  host.Parametro("HT_OVER_BOOKING", "no");
  host.Parametro("HT_DIAS_RESERVACION", "99999");
  host.Parametro("HT_COLOR_OCUPADO", "azul");
  EXPECT_EQ(pruebas::TextoDeError([&] { sistema->LeeParametro("HT_OVER_BOOKING", 0, "B", "1"); }),
            "El parámetro HT_OVER_BOOKING lleva sí o no (1 o 0) y dice «no»");
  EXPECT_THROW(sistema->LeeParametro("HT_DIAS_RESERVACION", 0, "N", "1"), com::Error);
  host.Parametro("HT_DIAS_RESERVACION", "-5");
  EXPECT_EQ(pruebas::TextoDeError([&] { sistema->LeeParametro("HT_DIAS_RESERVACION", 0, "N", "1"); }),
            "El parámetro HT_DIAS_RESERVACION lleva un número entero de 0 a 32767 y dice «-5»");
  EXPECT_EQ(sistema->LeeParametro("HT_COLOR_OCUPADO", 0, "", ""), com::Variant("azul")) << "the board has its own";
  EXPECT_EQ(ParametrosIlegibles(base()).size(), 3U);
  EXPECT_EQ(pruebas::TextoDeError([&] { GuardaParametro(base(), "HT_OVERBOKING", "1"); }),
            "El parámetro HT_OVERBOKING no existe");
  EXPECT_EQ(pruebas::TextoDeError([&] { GuardaParametro(base(), "HT_COLOR_OCUPADO", "rojo"); }),
            "El parámetro HT_COLOR_OCUPADO lleva un color y dice «rojo»");
  EXPECT_THROW(GuardaParametro(base(), "HT_DIAS_RESERVACION", "-1"), com::Error);
  GuardaParametro(base(), "ht_over_booking", "false");
  EXPECT_FALSE(com::CBool(sistema->LeeParametro("HT_OVER_BOOKING", 0, "B", "1")));
  OlvidaParametro(base(), "HT_OVER_BOOKING");
  EXPECT_EQ(ValorParametro(base(), "HT_OVER_BOOKING"), "1");
}

TEST_F(Servicios, LaConfiguracionPideSuPermisoCuandoAlguienLoTiene) {
  EXPECT_TRUE(PuedeConfigurar(base(), "ANA")) << "a new database can be set up";
  host.Permiso("CHPR02", true);
  EXPECT_TRUE(PuedeConfigurar(base(), "ANA"));
  host.Permiso("CHCONF", true);
  EXPECT_FALSE(PuedeConfigurar(base(), "ANA"));
  EXPECT_TRUE(PuedeConfigurar(base(), host.usuario()));
}

TEST(Usuario, ElQueNoCabeEnUnaSentenciaNoEntra) {
  for (const char* login : {"O'Brien", " ", "UNA_CLAVE_DE_USUARIO_DEMASIADO_LARGA"}) {
    Opciones opciones;
    opciones.usuario = login;
    EXPECT_TRUE(pruebas::TextoDeError([&] { Anfitrion host(opciones); }).starts_with("El usuario «")) << login;
  }
}

TEST_F(Servicios, PermisosPorUsuario) {
  host.Permiso("CHPR02", true);
  host.Permiso("CHPR02", true);
  EXPECT_TRUE(sistema->TienePermiso("KV207", "CHPR02", "No disponible"));
  EXPECT_FALSE(sistema->TienePermiso("KV208", "CHPR02", "No disponible"));
  EXPECT_FALSE(sistema->TienePermiso("KV207", "CHTC01", "No disponible"));
  base().Consulta("UPDATE Permiso SET Pe_Usuario = 'OTRO'");
  EXPECT_FALSE(sistema->TienePermiso("KV207", "CHPR02", "No disponible"));
  host.Permiso("CHPR02", true);
  host.Permiso("CHPR02", false);
  EXPECT_FALSE(sistema->TienePermiso("KV207", "CHPR02", "No disponible"));
  EXPECT_EQ(Cuenta("Permiso"), 1);  // the other user's stays
}

TEST_F(Servicios, FechasParaSQL) {
  EXPECT_EQ(utilerias->FechaServidor(), Dia(pruebas::kHoy));
  EXPECT_EQ(utilerias->FechaSQL(Dia("2026-03-04T10:30")), "2026-03-04");
  EXPECT_EQ(utilerias->FechaHoraSQL(Dia("2026-03-04")), "2026-03-04 00:00:00");
  EXPECT_EQ(utilerias->FechaHoraSQL(Dia("2026-03-04T09:05:07")), "2026-03-04 09:05:07");
}

TEST_F(Servicios, BuscaValorSoloEnElEsquema) {
  EXPECT_EQ(utilerias->BuscaValor("forma_pago", "Fp_Cve_Forma_Pago", "0001", "fp_tipo"), com::Variant("01"));
  EXPECT_TRUE(utilerias->BuscaValor("Forma_Pago", "Fp_Cve_Forma_Pago", "9999", "Fp_Tipo").EsVacio());
  // The value is bound: a quote finds nothing and does no harm.
  EXPECT_TRUE(utilerias->BuscaValor("Forma_Pago", "Fp_Cve_Forma_Pago", "' OR '1'='1", "Fp_Tipo").EsVacio());
  EXPECT_THROW(utilerias->BuscaValor("sqlite_master", "name", "x", "sql"), com::Error);
  EXPECT_THROW(utilerias->BuscaValor("Forma_Pago", "1=1 --", "x", "Fp_Tipo"), com::Error);
  EXPECT_THROW(utilerias->BuscaValor("Forma_Pago", "Fp_Cve_Forma_Pago", "x", "Mn_Descripcion"), com::Error);
}

TEST_F(Servicios, FoliosConMascara) {
  EXPECT_EQ(utilerias->FormateaFolio(" 27 "), "0000000027");
  EXPECT_EQ(utilerias->FormateaFolio("WEB-7"), "WEB-7");
  EXPECT_EQ(utilerias->FormateaFolio("12345678901"), "12345678901");
  host.Parametro("HT_FORMATO_FOLIO", "0000");
  EXPECT_EQ(utilerias->FormateaFolio("27"), "0027");
}

TEST_F(Servicios, TipoDeCambioEnVigor) {
  const auto cambio = [&](const char* moneda, const char* dia) { return utilerias->TipoCambio(moneda, Dia(dia)); };
  EXPECT_EQ(cambio("MXN", "2026-03-04"), 1);
  EXPECT_THROW(cambio("USD", "2026-03-04"), com::Error);
  base().Consulta("INSERT INTO Tipo_Cambio (Mn_Cve_Moneda, Tc_Fecha, Tc_Tasa) VALUES ('USD', '2026-03-01', 18.5)");
  base().Consulta("INSERT INTO Tipo_Cambio (Mn_Cve_Moneda, Tc_Fecha, Tc_Tasa) VALUES ('USD', '2026-02-01', 18)");
  EXPECT_EQ(cambio("USD", "2026-03-04T23:00"), 18.5);
  EXPECT_EQ(cambio("usd", "2026-03-01"), 18.5);
  EXPECT_EQ(cambio("USD", "2026-02-28"), 18);
  EXPECT_THROW(cambio("USD", "2026-01-31"), com::Error);
  host.Cambio("USD", 20);
  EXPECT_EQ(cambio("USD", "2026-03-04"), 20);
  EXPECT_EQ(cambio("USD", "1999-01-01"), 20);
  EXPECT_THROW(host.Cambio("USD", 0), com::Error);
}

TEST_F(Servicios, CatalogoSinBajas) {
  pruebas::EscritorioPrueba escritorio;
  escritorio.RespondeCatalogo("0102");
  EXPECT_EQ(utilerias->BuscaEnCatalogo("Habitacion", 100, "", {}), com::Variant("0102"));
  ASSERT_EQ(escritorio.Catalogo().size(), 2U);
  EXPECT_EQ(escritorio.Catalogo()[0], (std::pair<std::string, std::string>("0101", "Doble / 101 Jardín")));
  escritorio.RespondeCatalogo("");
  EXPECT_TRUE(utilerias->BuscaEnCatalogo("Cliente", 100, "josé", {}).EsVacio());
  ASSERT_EQ(escritorio.Catalogo().size(), 1U);
  EXPECT_EQ(escritorio.Catalogo()[0].first, "0000000002");
  EXPECT_THROW(utilerias->BuscaEnCatalogo("Parametro", 100, "", {}), com::Error);
  // Each catalogue's three readings agree, whether it has rows or not.
  for (const char* nombre : {"Habitacion", "Cliente", "Forma_Pago", "Moneda", "Tipo_Habitacion", "Grupo_Habitacion",
                             "Area_Habitacion", "Sucursal"}) {
    const Busqueda& b = BusquedaDe(nombre);
    const auto filas = LeeFilas(base(), b);
    EXPECT_EQ(HayFilas(base(), b), !filas.empty()) << nombre;
    for (const auto& [clave, descripcion] : filas) EXPECT_EQ(NombreDe(base(), b, clave), descripcion) << nombre;
  }
}

TEST_F(Servicios, GruposDeCampos) {
  controles::Formulario formulario("frmPrueba", "Prueba", 1000, 1000);
  controles::LookupField uno(formulario, "txtUno", {});
  controles::LookupField dos(formulario, "txtDos", {});
  controles::DateField fecha(formulario, "dpFecha", {});
  uno.grupo(1);
  dos.grupo(2);
  fecha.grupo(1);
  uno.text(std::string("a"));
  dos.text(std::string("b"));
  fecha.valor(Dia("2026-03-04"));
  uno.enabled(false);
  utilerias->LimpiaGrupo(formulario, 1);
  utilerias->HabilitaGrupo(formulario, 1);
  EXPECT_EQ(uno.text(), "");
  EXPECT_TRUE(uno.enabled());
  EXPECT_TRUE(fecha.Vacio());
  EXPECT_EQ(dos.text(), "b");
}

TEST_F(Servicios, BitacoraVaConLaTransaccion) {
  utilerias->RegistraBitacora("RESERVACION", "0000000001", "Baja");
  base().BeginTrans();
  utilerias->RegistraBitacora("RESERVACION", "0000000002", "CONFIRMADO");
  base().RollbackTrans();
  utilerias->RegistraBitacora("RESERVACION", "0000000003", "Reactivación");
  const std::vector<EntradaBitacora> entradas = host.Bitacora();
  ASSERT_EQ(entradas.size(), 2U);
  EXPECT_EQ(entradas[0].texto, "Baja");
  EXPECT_EQ(entradas[1].clave, "0000000003");
  EXPECT_EQ(com::CStr(Celda("SELECT Bt_Usuario FROM Bitacora")), "RECEPCION");
}

TEST_F(Servicios, PantallasYVisorQuedanAnotados) {
  pruebas::EscritorioPrueba escritorio;
  hotel->MuestraCliente("0000000001", 1, "0000000009");
  hotel->MuestraPrecios(Dia("2026-03-10"));
  const com::Ptr<com::Despacho> padre = host.Padre();
  const com::Variant codigo("CA153");
  padre->Llama("ejecutar", std::span(&codigo, 1));
  CreaVisorRegistro(host)->MuestraRegistro("Reservacion", "Rs_Folio", "0000000001", "", "", "", "");

  const std::vector<PantallaAbierta> pantallas = host.Pantallas();
  ASSERT_EQ(pantallas.size(), 3U);
  EXPECT_EQ(pantallas[0].pantalla, "MuestraCliente");
  EXPECT_EQ(pantallas[0].argumentos, (std::vector<com::Variant>{"0000000001", 1, "0000000009"}));
  EXPECT_EQ(pantallas[1].argumentos, (std::vector<com::Variant>{Dia("2026-03-10")}));
  EXPECT_EQ(pantallas[2].pantalla, "CA153");
  ASSERT_EQ(host.Vistos().size(), 1U);
  EXPECT_EQ(host.Vistos()[0].tabla, "Reservacion");
  EXPECT_EQ(host.Vistos()[0].clave, "0000000001");
  // The desktop was asked to open all four.
  ASSERT_EQ(escritorio.Pantallas().size(), 4U);
  EXPECT_EQ(escritorio.Pantallas()[3].pantalla, "MuestraRegistro");

  EXPECT_EQ(padre->Lee("Transaccion"), com::Variant("KV207"));
  EXPECT_THROW(padre->Lee("Modulo"), com::Error);
  EXPECT_THROW(padre->Llama("Ejecutar", {}), com::Error);
  EXPECT_EQ(utilerias->ResuelveTransaccion(" kv207 ", "Vormalix"), "KV207");
  EXPECT_EQ(utilerias->ResuelveTransaccion("", "Vormalix"), "KV207");
}

TEST_F(Servicios, ClasesRegistradas) {
  host.RegistraClases();
  EXPECT_EQ(com::CreaInstancia<anfitrion::Sistema>(anfitrion::kClaseSistema)->UsuarioActual(), "RECEPCION");
  EXPECT_TRUE(com::CreaInstancia<anfitrion::Utilerias>(anfitrion::kClaseUtilerias));
  EXPECT_TRUE(com::CreaInstancia<anfitrion::Hotel>(anfitrion::kClaseHotel));
  EXPECT_TRUE(com::CreaInstancia<anfitrion::CalculoImpuesto>(anfitrion::kClaseCalculoImpuesto));
  EXPECT_TRUE(com::CreaInstancia<anfitrion::Impresion>(anfitrion::kClaseImpresion));
  EXPECT_TRUE(com::CreaInstancia<anfitrion::VisorRegistro>(anfitrion::kClaseVisorRegistro));
  host.QuitaClases();
  EXPECT_THROW(com::CreaInstancia<anfitrion::Hotel>(anfitrion::kClaseHotel), com::Error);
}

}  // namespace
}  // namespace autonomo
