// Reference counts, interfaces, late binding and the class registry.
#include "platform/com/objeto.h"

#include <gtest/gtest.h>

#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "platform/com/error.h"
#include "platform/com/variant.h"
#include "tests/comun/error_de.h"

namespace {

using pruebas::ErrorDe;

using com::Ptr;

class Saludo : public com::Desconocido {
 public:
  static constexpr com::Guid kId{0x11111111, 1, 2, {3, 4, 5, 6, 7, 8, 9, 10}};
  virtual std::string Saluda() = 0;
};
constexpr com::Guid kClaseSaludo{0xABCDEF01, 0x2345, 0x6789, {0xAB, 0xCD, 0xEF, 1, 2, 3, 4, 5}};

class SaludoImpl final : public com::Objeto<Saludo> {
 public:
  explicit SaludoImpl(std::string quien) : quien_(std::move(quien)) { ++vivos; }
  ~SaludoImpl() override { --vivos; }
  std::string Saluda() override { return "Hola " + quien_; }
  static inline int vivos = 0;

 private:
  std::string quien_;
};

TEST(Objetos, VivenMientrasHayaReferencias) {
  {
    Ptr<Saludo> a = com::Crea<SaludoImpl>("Ana");
    Ptr<com::Desconocido> raiz = a;
    Ptr<Saludo> b = std::move(a);
    EXPECT_FALSE(a);  // NOLINT(bugprone-use-after-move): moving takes it out, and that is what is looked at
    EXPECT_EQ(raiz.Como<Saludo>(), b);
    EXPECT_FALSE(raiz.Como<com::Despacho>());
    const auto& misma = b;
    b = misma;
    b = nullptr;
    EXPECT_EQ(SaludoImpl::vivos, 1);
    com::Variant v(raiz), w = v;
    EXPECT_TRUE(v == w);
    raiz = nullptr;
    v = com::Variant();
    EXPECT_EQ(w.Objeto().Como<Saludo>()->Saluda(), "Hola Ana");
    EXPECT_EQ(SaludoImpl::vivos, 1);
  }
  EXPECT_EQ(SaludoImpl::vivos, 0);
  EXPECT_FALSE(Ptr<Saludo>().Como<com::Desconocido>());
}

// A reference to a base is no reference to what the object might be besides.
static_assert(std::is_convertible_v<Ptr<SaludoImpl>, Ptr<com::Desconocido>>);
static_assert(!std::is_convertible_v<Ptr<com::Desconocido>, Ptr<Saludo>>);
static_assert(!std::is_constructible_v<Ptr<com::Despacho>, Ptr<Saludo>>);

TEST(Objetos, InterfazQueNoTienen) {
  const Ptr<SaludoImpl> objeto = com::Crea<SaludoImpl>("x");
  void* salida = &salida;
  EXPECT_EQ(objeto->QueryInterface(com::FabricaClase::kId, &salida), com::kSinInterfaz);
  EXPECT_EQ(salida, nullptr);
  EXPECT_EQ(objeto->QueryInterface(Saludo::kId, nullptr), com::kPuntero);
}

TEST(Registro, ClasesDelProceso) {
  EXPECT_EQ(ErrorDe([] { com::CreaInstancia(kClaseSaludo); }), com::error::kClase);
  const auto saluda = [] { return com::CreaInstancia<Saludo>(kClaseSaludo)->Saluda(); };
  auto uno = com::RegistraClase(kClaseSaludo, [] { return com::Crea<SaludoImpl>("uno"); });
  {
    const auto dos = com::RegistraClase(kClaseSaludo, [] { return com::Crea<SaludoImpl>("dos"); });
    EXPECT_EQ(saluda(), "Hola dos");
    EXPECT_FALSE(com::CreaInstancia<com::Despacho>(kClaseSaludo));
    EXPECT_EQ(SaludoImpl::vivos, 0);
    const auto ninguno = com::RegistraClase(kClaseSaludo, [] { return Ptr<com::Desconocido>(); });
    EXPECT_EQ(ErrorDe([] { com::CreaInstancia(kClaseSaludo); }), com::error::kClase);
  }
  EXPECT_EQ(saluda(), "Hola uno") << "the newer entries are gone";
  com::Inscripcion otra = std::move(uno);
  EXPECT_EQ(saluda(), "Hola uno") << "the entry only changed hands";
  otra = {};
  EXPECT_EQ(ErrorDe([] { com::CreaInstancia(kClaseSaludo); }), com::error::kClase);
}

TEST(Registro, BibliotecasQueNoSirven) {
  com::RegistraServidor({kClaseSaludo, "Prueba.Saludo", "Apartment", "/no/existe/biblioteca.so"});
  EXPECT_EQ(ErrorDe([] { com::ObjetoDeClase(kClaseSaludo); }), com::error::kClase);
  // A second registration replaces the first; this library is there but is no server.
  com::RegistraServidor({kClaseSaludo, "Prueba.Saludo", "Apartment", "libm.so.6"});
  EXPECT_EQ(com::ServidoresRegistrados().size(), 1U);
  EXPECT_EQ(ErrorDe([] { com::ObjetoDeClase(kClaseSaludo); }), com::error::kClase);
  com::LiberaBibliotecas();
  com::QuitaServidor(kClaseSaludo);
  EXPECT_TRUE(com::ServidoresRegistrados().empty());
}

TEST(Registro, TextoDeUnIdentificador) {
  EXPECT_EQ(com::ATexto(kClaseSaludo), "{ABCDEF01-2345-6789-ABCD-EF0102030405}");
}

}  // namespace
