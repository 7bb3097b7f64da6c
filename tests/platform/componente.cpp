// The component as its host sees it: entry points, the public object, the screen object and the process-wide objects.
#include <gtest/gtest.h>
#include <unistd.h>

#include <string>
#include <vector>

#include "component/pantalla.h"
#include "platform/com/error.h"
#include "publico/publico.h"
#include "tests/comun/error_de.h"

namespace {

using pruebas::ErrorDe;

using com::Ptr;
using com::Variant;

// A host that answers what these tests ask, and notes which transaction it was asked to resolve.
class ConexionFija : public ado::Connection {
 public:
  ado::RecordsetPtr Execute(const ado::TextoSQL& sentencia) override {
    sentencia.Verifica();
    ultima = sentencia.Texto();
    return std::make_shared<ado::Recordset>(std::make_shared<const ado::Recordset::Columnas>(1, "valor"), celdas);
  }
  void BeginTrans() override {}
  void CommitTrans() override {}
  void RollbackTrans() override {}
  std::vector<Variant> celdas;
  std::string ultima;
};

std::shared_ptr<ConexionFija> conexion;
std::string resuelta;

class SistemaFijo final : public com::Objeto<anfitrion::Sistema> {
 public:
  ado::ConnectionPtr ObtenConexion() override { return conexion; }
  std::string UsuarioActual() override { return "ANA"; }
  void ForzarMayusculas(bool) override {}
  Variant LeeParametro(const std::string&, int, const std::string&, const std::string& defecto) override {
    return defecto;
  }
  bool TienePermiso(const std::string&, const std::string&, const std::string&) override { return true; }
  int Mensaje(const Variant&, int, const Variant&, const Variant&, const Variant&, const Variant&) override {
    return 1;
  }
};

class UtileriasFijas final : public com::Objeto<anfitrion::Utilerias> {
 public:
  com::Fecha FechaServidor() override { return com::FechaDe(2026, 3, 10); }
  std::string FechaSQL(com::Fecha f) override { return com::AIso(f); }
  std::string FechaHoraSQL(com::Fecha f) override { return com::AIso(f); }
  Variant BuscaValor(const std::string&, const std::string&, const std::string&, const std::string&, const std::string&,
                     const std::string&, const std::string&, const std::string&) override {
    return {};
  }
  Variant BuscaEnCatalogo(const std::string&, int, const std::string&, const Variant&) override { return {}; }
  std::string FormateaFolio(const std::string& folio) override { return folio; }
  double TipoCambio(const std::string&, com::Fecha) override { return 1; }
  void LimpiaGrupo(controles::Formulario&, int) override {}
  void HabilitaGrupo(controles::Formulario&, int) override {}
  std::string EditaNotas(const std::string&, const std::string& texto, int) override { return texto; }
  void RegistraBitacora(const std::string&, const std::string&, const std::string&) override {}
  bool EnviaCorreo(const std::string&, const std::string&, const std::string&, const std::string&, int,
                   const std::string&, const std::string&) override {
    return true;
  }
  std::string ErrorCorreo() override { return {}; }
  void EnviaTeclas(const std::string&) override {}
  std::string ResuelveTransaccion(const std::string& transaccion, const std::string& producto) override {
    resuelta = transaccion + "|" + producto;
    return "R-" + transaccion;
  }
};

// The object that owns the screen.
class Dueno final : public com::Objeto<com::Despacho> {
 public:
  Variant Lee(std::string_view propiedad) override {
    if (com::IgualSinCaja(propiedad, "Transaccion")) return "HT207";
    throw com::Error(com::error::kMiembro, "no existe");
  }
  void Pone(std::string_view, const Variant&) override {}
  Variant Llama(std::string_view, std::span<const Variant>) override { return {}; }
};

class Componente : public testing::Test {
 protected:
  Componente() {
    conexion = std::make_shared<ConexionFija>();
    clases.push_back(com::RegistraClase(anfitrion::kClaseSistema, [] { return com::Crea<SistemaFijo>(); }));
    clases.push_back(com::RegistraClase(anfitrion::kClaseUtilerias, [] { return com::Crea<UtileriasFijas>(); }));
  }
  ~Componente() override {
    QuitaAnfitrion();
    DllUnregisterServer();
    conexion.reset();
  }
  void QuitaAnfitrion() {
    publico::Olvida();
    clases.clear();
  }
  std::vector<com::Inscripcion> clases;
  static Ptr<kv207::Pantalla> Crea() {
    DllRegisterServer();
    return com::CreaInstancia<kv207::Pantalla>(kv207::kClasePantalla);
  }
  static Ptr<kv207::PantallaReservacion> Pide(const Ptr<kv207::Pantalla>& pantalla) {
    return pantalla->GetPantalla().Objeto().Como<kv207::PantallaReservacion>();
  }
};

// Once the screen exists, the library stays for the life of the process: a suite of its own, before those that make it.
using ComponenteNuevo = Componente;

TEST_F(ComponenteNuevo, SeQuedaCargadaMientrasSeUsa) {
  ASSERT_EQ(DllCanUnloadNow(), com::kOk) << "an earlier test of this process made the screen";
  DllRegisterServer();
  auto fabrica = com::ObjetoDeClase(kv207::kClasePantalla);
  EXPECT_EQ(DllCanUnloadNow(), com::kFalso);
  EXPECT_EQ(fabrica->LockServer(true), com::kOk);
  fabrica = nullptr;
  EXPECT_EQ(DllCanUnloadNow(), com::kFalso);
  com::ObjetoDeClase(kv207::kClasePantalla)->LockServer(false);
  EXPECT_EQ(DllCanUnloadNow(), com::kOk);
  auto pantalla = Crea();
  EXPECT_EQ(DllCanUnloadNow(), com::kFalso);
  pantalla = nullptr;
  EXPECT_EQ(DllCanUnloadNow(), com::kOk);
  Pide(Crea());
  EXPECT_EQ(DllCanUnloadNow(), com::kFalso);
}

TEST_F(Componente, SeRegistraConSuPropiaRuta) {
  EXPECT_EQ(ErrorDe([] { com::ObjetoDeClase(kv207::kClasePantalla); }), com::error::kClase);
  ASSERT_EQ(DllRegisterServer(), com::kOk);
  ASSERT_EQ(DllRegisterServer(), com::kOk);
  const auto servidores = com::ServidoresRegistrados();
  ASSERT_EQ(servidores.size(), 1U);
  EXPECT_EQ(servidores[0].progId, "KV207.Pantalla");
  EXPECT_EQ(servidores[0].modelo, "Apartment");
  EXPECT_EQ(access(servidores[0].ruta.c_str(), R_OK), 0) << servidores[0].ruta;
  EXPECT_EQ(DllUnregisterServer(), com::kOk);
  EXPECT_TRUE(com::ServidoresRegistrados().empty());
}

TEST_F(Componente, PuntosDeEntrada) {
  void* salida = &salida;
  EXPECT_EQ(DllGetClassObject(&anfitrion::kClaseHotel, &com::FabricaClase::kId, &salida), com::kClaseNoDisponible);
  EXPECT_EQ(salida, nullptr);
  EXPECT_EQ(DllGetClassObject(&kv207::kClasePantalla, &com::FabricaClase::kId, nullptr), com::kPuntero);
  EXPECT_EQ(DllGetClassObject(&kv207::kClasePantalla, &com::Despacho::kId, &salida), com::kSinInterfaz);
  EXPECT_TRUE(publico::Arrancado()) << "the first class object starts the component";
  DllRegisterServer();
  const auto fabrica = com::ObjetoDeClase(kv207::kClasePantalla);
  const auto externo = com::Crea<Dueno>();
  EXPECT_EQ(fabrica->CreateInstance(externo.get(), com::Desconocido::kId, &salida), com::kSinAgregacion);
  EXPECT_EQ(fabrica->CreateInstance(nullptr, anfitrion::Hotel::kId, &salida), com::kSinInterfaz);
  EXPECT_EQ(salida, nullptr);
}

TEST_F(Componente, SinAnfitrionNoHayClase) {
  QuitaAnfitrion();
  void* salida = nullptr;
  EXPECT_EQ(DllGetClassObject(&kv207::kClasePantalla, &com::FabricaClase::kId, &salida), com::kFallo);
  EXPECT_EQ(ErrorDe([] { Crea(); }), com::error::kClase);
  EXPECT_FALSE(publico::Arrancado());
  EXPECT_EQ(ErrorDe([] { publico::Sistema(); }), com::error::kSinObjeto);
  EXPECT_EQ(ErrorDe([] { publico::Utilerias(); }), com::error::kSinObjeto);
}

TEST_F(Componente, LaMismaPantallaEnCadaPeticion) {
  const auto a = Crea(), b = Crea();
  const auto pantalla = Pide(a);
  ASSERT_TRUE(pantalla);
  EXPECT_EQ(Pide(b), pantalla);
  EXPECT_EQ(a.Como<com::Despacho>()->Lee("getpantalla").Objeto().Como<kv207::PantallaReservacion>(), pantalla);
  EXPECT_TRUE(a->Modulo().EsVacio());
  EXPECT_TRUE(a.Como<com::Despacho>()->Lee("MODULO").EsVacio());
  EXPECT_EQ(ErrorDe([&] { a.Como<com::Despacho>()->Lee("Otra"); }), com::error::kMiembro);
  EXPECT_EQ(ErrorDe([&] { a.Como<com::Despacho>()->Pone("Modulo", 1); }), com::error::kMiembro);
  EXPECT_FALSE(pantalla->formulario().cargado()) << "asking for the screen loads nothing";
  EXPECT_EQ(pantalla->formulario().nombre(), "frmKV207");
  EXPECT_EQ(pantalla->tablero().nombre(), "frmDisponibilidad");
}

TEST_F(Componente, UnaFallaDaUnObjetoQueNoTieneNada) {
  const auto pantalla = Crea();
  QuitaAnfitrion();
  const Variant nada = pantalla->GetPantalla();
  EXPECT_TRUE(nada.EsObjeto());
  EXPECT_FALSE(nada.Objeto());
}

TEST_F(Componente, ElDuenoPorNombre) {
  const auto pantalla = Pide(Crea());
  ASSERT_TRUE(pantalla);
  const auto tardia = Ptr<com::Desconocido>(pantalla).Como<com::Despacho>();
  ASSERT_TRUE(tardia);
  tardia->Pone("Padre", Variant(Ptr<com::Desconocido>()));
  EXPECT_EQ(ErrorDe([&] { tardia->Lee("Transaccion"); }), com::error::kSinObjeto);
  const Ptr<com::Desconocido> dueno = com::Crea<Dueno>();
  tardia->Pone("PADRE", Variant(dueno));
  EXPECT_EQ(tardia->Lee("padre").Objeto().Como<com::Despacho>(), dueno.Como<com::Despacho>());
  EXPECT_EQ(com::CStr(tardia->Lee("transaccion")), "R-HT207");
  EXPECT_EQ(resuelta, "HT207|Vormalix");
  EXPECT_EQ(ErrorDe([&] { tardia->Pone("Padre", "texto"); }), com::error::kTipos);
  EXPECT_EQ(ErrorDe([&] { tardia->Pone("Transaccion", "x"); }), com::error::kMiembro);
  EXPECT_EQ(ErrorDe([&] { tardia->Llama("Print", {}); }), com::error::kMiembro);
  EXPECT_EQ(ErrorDe([&] { tardia->Llama("Show", std::vector<Variant>{1}); }), com::error::kArgumento);
  pantalla->Padre({});
}

TEST_F(Componente, LosCamposBuscanEnLaBase) {
  publico::Arranca();
  controles::Formulario forma{"forma", "", 1, 1};
  controles::LookupField nombre{forma, "nombre", {}, {.locked = true}};
  controles::LookupField clave{
      forma, "clave", {}, {.sql = "SELECT Nombre FROM T WHERE Clave='?'", .sql_control_resultado = &nombre}};
  conexion->celdas = {"Ana", "Otra"};
  clave.text("A1");
  EXPECT_EQ(nombre.text(), "Ana");
  EXPECT_EQ(conexion->ultima, "SELECT Nombre FROM T WHERE Clave='A1'");
  conexion->celdas = {Variant::Null()};
  clave.text("A2");
  EXPECT_EQ(nombre.text(), "");
  EXPECT_EQ(ErrorDe([&] { clave.text("O'B"); }), com::error::kSentencia);
  publico::NuevaSentencia().Agrega("SELECT '?'", {"x"});
  EXPECT_EQ(publico::Ejecuta()->RecordCount(), 1);
  EXPECT_EQ(publico::NuevaSentencia().Texto(), "");
  EXPECT_EQ(ErrorDe([] { publico::CreaHotel(); }), com::error::kClase);
  EXPECT_EQ(ErrorDe([] { publico::Hotel(); }), com::error::kSinObjeto);
}

}  // namespace
