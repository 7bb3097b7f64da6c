// Fields, buttons and options: what fires, in which order, and what is refused.
#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "platform/com/error.h"
#include "platform/controls/control.h"
#include "platform/controls/formulario.h"
#include "tests/comun/error_de.h"
#include "tests/comun/escritorio_prueba.h"

namespace {

using pruebas::ErrorDe;

using namespace controles;
using com::FechaDe;
using com::Variant;
using Traza = std::vector<std::string>;

// A form with a key field, its name field, and a catalogue behind them.
class Campos : public testing::Test {
 protected:
  Campos() {
    FijaBuscador([this](const ado::TextoSQL& sql) -> std::optional<std::string> {
      sql.Verifica();
      consultas.push_back(sql.Texto());
      const auto i = catalogo.find(sql.Texto());
      return i == catalogo.end() ? std::nullopt : std::optional(i->second);
    });
    clave.Change = [this] { traza.push_back("Change " + clave.text() + "|" + nombre.text()); };
    clave.Enter = [this] { traza.push_back("Enter " + clave.text() + "|" + nombre.text()); };
    nombre.Change = [this] { traza.push_back("nombre"); };
  }
  ~Campos() override {
    FijaBuscador({});
    FijaMayusculas(false);
  }

  static DisenoLookup Diseno(LookupField& resultado) {
    DisenoLookup d;
    d.sql = "SELECT Nombre FROM Tabla WHERE Clave = '?'";
    d.sql_control_resultado = &resultado;
    d.esclave = true;
    d.mayusculas = true;
    d.largo = 5;
    return d;
  }

  Formulario forma{"forma", "Forma", 10000, 8000};
  LookupField nombre{forma, "nombre", {}, {.locked = true}};
  LookupField clave{forma, "clave", {}, Diseno(nombre)};
  std::map<std::string, std::string> catalogo = {{"SELECT Nombre FROM Tabla WHERE Clave = 'A1'", "Ana"},
                                                 {"SELECT Nombre FROM Tabla WHERE Clave = '0012'", "Doce"}};
  Traza consultas, traza;
};

TEST_F(Campos, ElProgramaConsultaEnSeguidaYNoConfirma) {
  clave.text("A1");
  EXPECT_EQ(traza, Traza{"Change A1|Ana"});
  clave.text("A1");
  EXPECT_EQ(traza.size(), 1U);
  EXPECT_EQ(consultas.size(), 1U);
  clave.text("");
  EXPECT_EQ(traza.back(), "Change |");
  EXPECT_EQ(consultas.size(), 1U) << "an empty text asks nothing";
  clave.text("A1");
  clave.text("ZZ");
  EXPECT_EQ(traza.back(), "Change ZZ|");
}

TEST_F(Campos, TeclearVaciaElNombreHastaQueSeConfirma) {
  clave.text("A1");
  traza.clear();
  clave.Teclea("12");
  EXPECT_EQ(traza, Traza{"Change 12|"});
  EXPECT_TRUE(clave.pendiente());
  clave.formato("0000");
  clave.Confirma();
  EXPECT_EQ(traza, (Traza{"Change 12|", "Change 0012|", "Enter 0012|Doce"}));
  EXPECT_FALSE(clave.pendiente());
  clave.Teclea("0012");
  EXPECT_EQ(traza.size(), 3U) << "the same text is no change";
  EXPECT_EQ(nombre.text(), "Doce");
}

TEST_F(Campos, MayusculasYLargoDelDiseno) {
  clave.Teclea("ñandú-largo");
  EXPECT_EQ(clave.text(), "ñANDú") << "six letters; without a host only those of ASCII have case";
  LookupField libre{forma, "libre", {}, {}};
  libre.Teclea("abc");
  EXPECT_EQ(libre.text(), "abc");
  FijaMayusculas(true);
  libre.Teclea("abcd");
  EXPECT_EQ(libre.text(), "ABCD");
  libre.text("programa");
  EXPECT_EQ(libre.text(), "programa") << "only typing is forced";
}

TEST_F(Campos, ValorNoDisparaNada) {
  clave.text("A1");
  traza.clear();
  consultas.clear();
  clave.valor("%");
  EXPECT_EQ(clave.text(), "%");
  EXPECT_EQ(nombre.text(), "Ana");
  EXPECT_TRUE(traza.empty());
  EXPECT_TRUE(consultas.empty());
  clave.Refresca();
  EXPECT_EQ(nombre.text(), "");
  EXPECT_TRUE(traza.empty());
}

TEST_F(Campos, UnaClaveConComillaDaErrorYNoDejaOtroNombre) {
  clave.text("A1");
  clave.Teclea("O'B");
  EXPECT_EQ(ErrorDe([&] { clave.Confirma(); }), com::error::kSentencia);
  EXPECT_EQ(nombre.text(), "");
  EXPECT_TRUE(consultas.size() == 1 && traza.back() == "Change O'B|");
  clave.text("A1");
  EXPECT_EQ(ErrorDe([&] { clave.text("O'B"); }), com::error::kSentencia);
  EXPECT_EQ(nombre.text(), "");
}

TEST_F(Campos, LoQueNoAceptaEntradaLaRechaza) {
  EXPECT_EQ(ErrorDe([&] { nombre.Teclea("x"); }), com::error::kTamanio);
  EXPECT_EQ(ErrorDe([&] { nombre.Confirma(); }), com::error::kTamanio);
  clave.enabled(false);
  EXPECT_EQ(ErrorDe([&] { clave.Teclea("x"); }), com::error::kTamanio);
  EXPECT_EQ(ErrorDe([&] { clave.Confirma(); }), com::error::kTamanio);
  clave.Habilita();
  Marco marco{forma, "marco", {}};
  clave.contenedor(marco);
  marco.enabled(false);
  EXPECT_EQ(ErrorDe([&] { clave.Teclea("x"); }), com::error::kTamanio);
  EXPECT_EQ(clave.text(), "");
  EXPECT_TRUE(traza.empty());
}

TEST_F(Campos, LimpiarVuelveAlTextoDeDiseno) {
  DisenoLookup d = Diseno(nombre);
  d.text = "%";
  LookupField filtro{forma, "filtro", {}, d};
  int cambios = 0;
  filtro.Change = [&] { ++cambios; };
  filtro.Limpia();
  EXPECT_EQ(cambios, 0);
  filtro.text("A1");
  filtro.Limpia();
  EXPECT_EQ(filtro.text(), "%");
  EXPECT_EQ(cambios, 2);
  clave.text("A1");
  clave.Limpia();
  EXPECT_EQ(clave.text(), "");
  EXPECT_EQ(nombre.text(), "");
}

TEST_F(Campos, ValoresConTipo) {
  LookupField numero{forma, "numero", {}, {.tipo = TipoDato::Numero}};
  int cambios = 0;
  numero.Change = [&] { ++cambios; };
  EXPECT_TRUE(numero.valor().EsVacio());
  numero.text(0);
  EXPECT_EQ(numero.valor(), Variant(0.0));
  numero.text(116.0);
  EXPECT_EQ(numero.text(), "116");
  numero.Teclea("$1,234.50");
  EXPECT_EQ(numero.valor(), Variant(1234.5));
  numero.Teclea("doce");
  EXPECT_EQ(numero.text(), "doce");
  EXPECT_TRUE(numero.valor().EsVacio());
  numero.valor(2);
  EXPECT_EQ(numero.text(), "2");
  EXPECT_EQ(cambios, 4);

  LookupField fecha{forma, "fecha", {}, {.tipo = TipoDato::Fecha}};
  fecha.text(Variant(FechaDe(2026, 3, 10)));
  EXPECT_EQ(fecha.text(), "10/03/2026");
  EXPECT_EQ(fecha.valor(), Variant(FechaDe(2026, 3, 10)));
  fecha.valor("2026-03-11");
  EXPECT_EQ(fecha.text(), "11/03/2026");
  fecha.text(Variant::Null());
  EXPECT_TRUE(fecha.valor().EsVacio());
}

TEST_F(Campos, UnErrorDelManejadorLlegaAQuienLoLanzo) {
  clave.Change = [] { throw com::Error(com::error::kBaseDatos, "sin base"); };
  EXPECT_EQ(ErrorDe([&] { clave.Teclea("A1"); }), com::error::kBaseDatos);
  EXPECT_EQ(clave.text(), "A1");
}

TEST_F(Campos, FechasFijadasPorElUsuario) {
  DateField fecha{forma, "fecha", {}};
  Traza eventos;
  fecha.AlFijar = [&] { eventos.push_back("fija " + fecha.text()); };
  fecha.AlCambiar = [&] { eventos.push_back("cambia"); };
  EXPECT_EQ(fecha.text(), "");
  fecha.valor(FechaDe(2026, 3, 10));
  EXPECT_TRUE(eventos.empty());
  fecha.Fija(FechaDe(2026, 3, 10));
  fecha.Fija(FechaDe(2026, 3, 11));
  EXPECT_EQ(eventos, (Traza{"fija 10/03/2026", "fija 11/03/2026", "cambia"}));
  fecha.editable(false);
  EXPECT_EQ(ErrorDe([&] { fecha.Fija(FechaDe(2026, 3, 12)); }), com::error::kTamanio);
  fecha.Habilita();
  EXPECT_TRUE(fecha.AceptaEntrada());
  fecha.Limpia();
  EXPECT_TRUE(fecha.Vacio());
  EXPECT_EQ(eventos.size(), 3U);
}

TEST_F(Campos, NotasConCursor) {
  CampoNotas notas{forma, "notas", {}};
  int cambios = 0;
  notas.Change = [&] { ++cambios; };
  notas.Teclea("añil");
  EXPECT_EQ(notas.cursor(), 4);
  notas.cursor(99);
  EXPECT_EQ(notas.cursor(), 4);
  notas.text("é");
  EXPECT_EQ(notas.cursor(), 1);
  notas.locked(true);
  EXPECT_EQ(ErrorDe([&] { notas.Teclea("x"); }), com::error::kTamanio);
  notas.Limpia();
  EXPECT_EQ(cambios, 3);
  EXPECT_EQ(notas.cursor(), 0);
}

TEST_F(Campos, BotonesCasillasYOpciones) {
  Marco marco{forma, "marco", {}}, otro{forma, "otro", {}};
  Boton boton{forma, "boton", {}, "Botón"};
  Casilla casilla{forma, "casilla", {}, "Casilla"};
  Opcion a{forma, "a", {}, "A", true}, b{forma, "b", {}, "B"}, ajena{forma, "ajena", {}, "Ajena", true};
  a.contenedor(marco);
  b.contenedor(marco);
  ajena.contenedor(otro);
  Traza eventos;
  boton.Click = [&] { eventos.push_back("boton"); };
  casilla.Click = [&] { eventos.push_back("casilla"); };
  a.Click = [&] { eventos.push_back("a"); };
  b.Click = [&] { eventos.push_back(a.value() ? "b con a" : "b"); };

  a.Pulsa();
  b.Selecciona();
  b.Pulsa();
  EXPECT_TRUE(b.value() && !a.value() && ajena.value());
  casilla.value(false);
  casilla.Pulsa();
  casilla.Limpia();
  boton.Pulsa();
  EXPECT_EQ(eventos, (Traza{"b", "casilla", "casilla", "boton"}));

  boton.enabled(false);
  EXPECT_EQ(ErrorDe([&] { boton.Pulsa(); }), com::error::kTamanio);
  marco.enabled(false);
  EXPECT_EQ(ErrorDe([&] { a.Pulsa(); }), com::error::kTamanio);
  a.Selecciona();
  EXPECT_TRUE(a.value()) << "a program selects whatever the user may do";
  casilla.visible(false);
  EXPECT_EQ(ErrorDe([&] { casilla.Pulsa(); }), com::error::kTamanio);
}

TEST_F(Campos, MedidasNegativasSeRechazanYNoCambianNada) {
  Marco marco{forma, "marco", {100, 200, 300, 400}};
  int avisos = 0;
  marco.alAvisar = [&] { ++avisos; };
  EXPECT_EQ(ErrorDe([&] { marco.width(-1); }), com::error::kTamanio);
  EXPECT_EQ(ErrorDe([&] { marco.height(-1); }), com::error::kTamanio);
  marco.left(-50);
  EXPECT_TRUE(marco.width() == 300 && marco.height() == 400 && marco.left() == -50);
  marco.width(300);
  EXPECT_EQ(avisos, 1) << "the view hears of changes alone";
}

TEST(RespuestaDeCajas, BotonPredeterminado) {
  EXPECT_EQ(RespuestaPredeterminada(16), kAceptar);
  EXPECT_EQ(RespuestaPredeterminada(289), kCancelar);
  EXPECT_EQ(RespuestaPredeterminada(292), kNo);
  EXPECT_EQ(RespuestaPredeterminada(308), kNo);
  EXPECT_EQ(RespuestaPredeterminada(324), kNo);
  EXPECT_EQ(RespuestaPredeterminada(36), kSi);
  EXPECT_EQ(RespuestaPredeterminada(1), kAceptar);
}

}  // namespace
