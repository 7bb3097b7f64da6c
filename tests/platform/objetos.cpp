// Reference counts, interfaces, late binding and the class registry.
#include "platform/com/objeto.h"

#include <gtest/gtest.h>

#include <string>
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
    EXPECT_FALSE(a);
    EXPECT_EQ(raiz.Como<Saludo>(), b);
    EXPECT_FALSE(raiz.Como<com::Despacho>());
    b = b;
    b = nullptr;
    EXPECT_EQ(SaludoImpl::vivos, 1);
    com::Variant v(raiz), w = v;
    raiz = nullptr;
    EXPECT_TRUE(v == w);
    EXPECT_EQ(w.Objeto().Como<Saludo>()->Saluda(), "Hola Ana");
    EXPECT_EQ(SaludoImpl::vivos, 1);
  }
  EXPECT_EQ(SaludoImpl::vivos, 0);
  EXPECT_FALSE(Ptr<Saludo>().Como<com::Desconocido>());
}

TEST(Objetos, InterfazQueNoTienen) {
  const Ptr<SaludoImpl> objeto = com::Crea<SaludoImpl>("x");
  void* salida = &salida;
  EXPECT_EQ(objeto->QueryInterface(com::FabricaClase::kId, &salida), com::kSinInterfaz);
  EXPECT_EQ(salida, nullptr);
  EXPECT_EQ(objeto->QueryInterface(Saludo::kId, nullptr), com::kPuntero);
}

TEST(Registro, ClasesDelProceso) {
  EXPECT_EQ(ErrorDe([] { com::CreaInstancia(kClaseSaludo); }), com::error::kClase);
  com::RegistraClase(kClaseSaludo, [] { return com::Crea<SaludoImpl>("uno"); });
  com::RegistraClase(kClaseSaludo, [] { return com::Crea<SaludoImpl>("dos"); });
  EXPECT_EQ(com::CreaInstancia<Saludo>(kClaseSaludo)->Saluda(), "Hola dos");
  EXPECT_FALSE(com::CreaInstancia<com::Despacho>(kClaseSaludo));
  EXPECT_EQ(SaludoImpl::vivos, 0);
  com::RegistraClase(kClaseSaludo, [] { return Ptr<com::Desconocido>(); });
  EXPECT_EQ(ErrorDe([] { com::CreaInstancia(kClaseSaludo); }), com::error::kClase);
  com::QuitaClase(kClaseSaludo);
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
