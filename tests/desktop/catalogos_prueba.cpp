// Catalogues: what can be typed, and a hotel that is set up from nothing without SQL.
#include <gtest/gtest.h>

#include "host/standalone/anfitrion.h"
#include "host/standalone/catalogos.h"
#include "host/standalone/impuestos.h"
#include "host/standalone/precios.h"
#include "platform/com/error.h"

namespace pruebas {
namespace {

using Textos = std::vector<std::string>;

class CatalogosPrueba : public testing::Test {
 protected:
  CatalogosPrueba() : anfitrion_(autonomo::Opciones{}) {}

  autonomo::Conexion& Base() { return *anfitrion_.conexion(); }
  // Types a new row; the reason when it is refused.
  std::string Nueva(const char* tabla, const Textos& textos) {
    const autonomo::Catalogo& c = *autonomo::BuscaCatalogo(tabla);
    std::vector<com::Variant> valores;
    std::string motivo = autonomo::Valida(c, textos, autonomo::MascaraDe(Base(), c), valores);
    if (motivo.empty()) autonomo::Inserta(Base(), c, valores);
    return motivo;
  }
  Textos Fila(const char* tabla, std::size_t fila) {
    const autonomo::Catalogo& c = *autonomo::BuscaCatalogo(tabla);
    const auto filas = autonomo::LeeCatalogo(Base(), c);
    Textos textos;
    for (std::size_t i = 0; i < c.campos.size(); ++i)
      textos.push_back(autonomo::TextoDe(c.campos[i], filas.at(fila).valores[i]));
    return textos;
  }

  autonomo::Anfitrion anfitrion_;
};

TEST_F(CatalogosPrueba, UnHotelSeMontaDesdeCero) {
  EXPECT_EQ(Nueva("Sucursal", {"0001", "Matriz"}), "");
  EXPECT_EQ(Nueva("Producto", {"hab1", "Noche sencilla", "NOCHE"}), "");
  EXPECT_EQ(Nueva("Producto_Precio", {"HAB1", "1,000.50"}), "");
  EXPECT_EQ(Nueva("Impuesto", {"", "HAB1", "16"}), "") << "all branches";
  EXPECT_EQ(Nueva("Impuesto", {"0001", "HAB1", "0.5 %"}), "");
  EXPECT_EQ(Fila("Impuesto", 0), (Textos{"", "HAB1", "16 %"}));
  EXPECT_DOUBLE_EQ(autonomo::TasaDeImpuesto(Base(), "0001", "HAB1"), 0.005);
  EXPECT_DOUBLE_EQ(autonomo::TasaDeImpuesto(Base(), "0002", "HAB1"), 0.16);
  EXPECT_EQ(Nueva("Grupo_Habitacion", {"1", "Torre"}), "");
  EXPECT_EQ(Nueva("Area_Habitacion", {"1", "Norte"}), "");
  EXPECT_EQ(Nueva("Tipo_Habitacion", {"1", "Sencilla", "2", "3", "HAB1"}), "");
  EXPECT_EQ(Nueva("Habitacion", {"101", "101", "0001", "0001", "0001"}), "");
  EXPECT_EQ(Fila("Habitacion", 0), (Textos{"0101", "101", "0001", "0001", "0001"}));
  EXPECT_EQ(Nueva("Tarifa", {"", "0001", "01/12/2026", "", "567", "1500", "200", "100"}), "");
  EXPECT_EQ(Nueva("Tarifa", {"", "0001", "", "", "", "900", "", ""}), "");
  EXPECT_EQ(Fila("Tarifa", 0), (Textos{"1", "0001", "01/12/2026", "", "567", "1,500.00", "200.00", "100.00"}));
  EXPECT_EQ(Fila("Tarifa", 1).front(), "2");

  const com::Fecha viernes = com::FechaDe(2026, 12, 4);
  const auto tarifas = autonomo::LeeTarifas(Base(), "0001", viernes, com::MasDias(viernes, 1));
  ASSERT_NE(autonomo::TarifaDeNoche(tarifas, viernes), nullptr);
  EXPECT_DOUBLE_EQ(autonomo::TarifaDeNoche(tarifas, viernes)->precio, 1500);
  EXPECT_DOUBLE_EQ(autonomo::LeePrecioLista(Base(), "HAB1").value_or(0), 1000.5);
}

TEST_F(CatalogosPrueba, LoMalEscritoSeExplicaYNadaSeGuarda) {
  EXPECT_EQ(Nueva("Moneda", {"", "Peso"}), "Falta «Clave»");
  EXPECT_EQ(Nueva("Tipo_Habitacion", {"1", "Doble", "dos", "4", "HAB1"}), "«Personas incluidas» no admite «dos»");
  EXPECT_EQ(Nueva("Tipo_Cambio", {"USD", "31/02/2026", "17"}), "«Desde» no admite «31/02/2026»");
  EXPECT_EQ(Nueva("Tipo_Cambio", {"USD", "01/02/2026", "-17"}), "«Moneda local por unidad» no puede ser negativo");
  EXPECT_EQ(Nueva("Tarifa", {"", "0001", "", "", "lunes", "900", "", ""}), "«Días» lleva cifras: 1 lunes a 7 domingo");
  EXPECT_EQ(Nueva("Tarifa", {"", "0001", "02/01/2026", "01/01/2026", "", "900", "", ""}),
            "«Desde» es posterior a «Hasta»");
  EXPECT_EQ(Nueva("Tipo_Habitacion", {"1", "Doble", "2.5", "4", "HAB1"}),
            "«Personas incluidas» lleva un número entero");
  EXPECT_EQ(Nueva("Tipo_Habitacion", {"1", "Doble", "5", "4", "HAB1"}),
            "«Personas incluidas» es mayor que «Máximo de personas»");
  EXPECT_EQ(Nueva("Tipo_Habitacion", {"1", "Doble", "0", "0", "HAB1"}), "«Máximo de personas» debe ser al menos 1");
  EXPECT_EQ(Nueva("Tipo_Cambio", {"USD", "01/02/2026", "0"}), "«Moneda local por unidad» debe ser mayor que cero");
  EXPECT_EQ(Nueva("Producto_Precio", {"HAB1", "1e12"}),
            "«Precio por noche» es demasiado grande: el máximo es 999,999,999");
  EXPECT_EQ(Nueva("Moneda", {"O'K", "Peso"}), "«Clave» no admite apóstrofos ni el signo %");
  EXPECT_EQ(Nueva("Moneda", {std::string(21, 'M'), "Peso"}), "«Clave» admite 20 caracteres y lleva 21");
  std::string largo;
  for (int i = 0; i < 200; ++i) largo += "ñ";
  EXPECT_EQ(Nueva("Cliente", {"8", largo + "o", "", ""}), "«Nombre» admite 200 caracteres y lleva 201");
  EXPECT_EQ(Nueva("Cliente", {"8", largo, "", ""}), "") << "letters are counted, not bytes";
  EXPECT_EQ(Nueva("Impuesto", {"0001", "HAB1", "100"}), "«Por ciento» debe ser menor que 100");
  EXPECT_EQ(Nueva("Impuesto", {"0001", "HAB1", "0.16"}),
            "«Por ciento» va en por ciento: 16 es 16 %; si es menor que uno, escríbalo con el signo: 0.16 %");
  EXPECT_EQ(Nueva("Cliente", {"9", "Ana", "", "ana@hotel"}),
            "«Correo electrónico» no es una dirección de correo, como ana@hotel.com: ana@hotel");
  EXPECT_TRUE(autonomo::LeeCatalogo(Base(), *autonomo::BuscaCatalogo("Tarifa")).empty());
  EXPECT_TRUE(autonomo::LeeCatalogo(Base(), *autonomo::BuscaCatalogo("Moneda")).empty());
  EXPECT_EQ(Nueva("Moneda", {"MXN", "Peso"}), "");
  EXPECT_THROW(Nueva("Moneda", {"mxn", "Otro"}), com::Error) << "keys compare case-blind";
  EXPECT_EQ(Fila("Moneda", 0), (Textos{"MXN", "Peso"}));
  EXPECT_EQ(Nueva("Cliente", {"7", "O'Higgins; DROP TABLE Cliente", "", ""}), "");
  EXPECT_EQ(Fila("Cliente", 0), (Textos{"0000000007", "O'Higgins; DROP TABLE Cliente", "", ""}));
}

TEST_F(CatalogosPrueba, CambiaYRetiraSoloSuFila) {
  Nueva("Moneda", {"MXN", "Peso"});
  Nueva("Moneda", {"USD", "Dolar"});
  const autonomo::Catalogo& monedas = *autonomo::BuscaCatalogo("Moneda");
  auto filas = autonomo::LeeCatalogo(Base(), monedas);
  autonomo::Cambia(Base(), monedas, filas.at(1), {"USD", "Dólar"});
  EXPECT_EQ(Fila("Moneda", 0), (Textos{"MXN", "Peso"}));
  EXPECT_EQ(Fila("Moneda", 1), (Textos{"USD", "Dólar"}));
  autonomo::Retira(Base(), monedas, filas.at(0));
  filas = autonomo::LeeCatalogo(Base(), monedas);
  EXPECT_TRUE(filas.at(0).deBaja);
  EXPECT_FALSE(filas.at(1).deBaja);
  EXPECT_EQ(autonomo::LeeReferencia(Base(), "Moneda").size(), 1U) << "withdrawn rows are not offered";
  autonomo::Retira(Base(), monedas, filas.at(0));
  EXPECT_FALSE(autonomo::LeeCatalogo(Base(), monedas).at(0).deBaja);

  // A row without a state is deleted, by its whole key.
  Nueva("Tipo_Cambio", {"USD", "01/01/2026", "17"});
  Nueva("Tipo_Cambio", {"USD", "01/02/2026", "18.5"});
  const autonomo::Catalogo& tasas = *autonomo::BuscaCatalogo("Tipo_Cambio");
  autonomo::Retira(Base(), tasas, autonomo::LeeCatalogo(Base(), tasas).at(0));
  ASSERT_EQ(autonomo::LeeCatalogo(Base(), tasas).size(), 1U);
  EXPECT_EQ(Fila("Tipo_Cambio", 0), (Textos{"USD", "01/02/2026", "18.5"}));

  // Not while another catalogue needs it.
  Nueva("Producto", {"HAB1", "Noche", ""});
  Nueva("Tipo_Habitacion", {"0001", "Sencilla", "2", "3", "HAB1"});
  const autonomo::Catalogo& productos = *autonomo::BuscaCatalogo("Producto");
  const auto producto = autonomo::LeeCatalogo(Base(), productos).at(0);
  EXPECT_THROW(autonomo::Retira(Base(), productos, producto), com::Error);
  EXPECT_EQ(autonomo::LeeCatalogo(Base(), productos).size(), 1U);
}

TEST_F(CatalogosPrueba, LoQueSeVendeSinImpuestoSeDiceAlGuardar) {
  const autonomo::Catalogo& tipos = *autonomo::BuscaCatalogo("Tipo_Habitacion");
  Nueva("Sucursal", {"1", "Centro"});
  Nueva("Sucursal", {"2", "Playa"});
  Nueva("Producto", {"HAB1", "Noche", ""});
  Nueva("Tipo_Habitacion", {"1", "Sencilla", "2", "3", "HAB1"});
  Nueva("Impuesto", {"1", "HAB1", "0"});
  EXPECT_EQ(autonomo::Advertencia(Base(), tipos, {}),
            "Sin renglón en «Impuestos» se venden sin impuesto:\r\nHAB1 en 2 Playa")
      << "a row of 0 says so";
  Nueva("Impuesto", {"", "HAB1", "16"});
  EXPECT_EQ(autonomo::Advertencia(Base(), tipos, {}), "");
}

TEST_F(CatalogosPrueba, UnProductoTieneUnSoloPrecioDeLista) {
  Nueva("Producto", {"HAB1", "Noche", ""});
  EXPECT_EQ(Nueva("Producto_Precio", {"HAB1", "1000"}), "");
  try {
    Nueva("Producto_Precio", {"HAB1", "1200"});
    FAIL() << "a second price loads each room line twice";
  } catch (const com::Error& e) {
    EXPECT_EQ(e.Descripcion(), "Ese producto ya tiene precio de lista: edite su fila");
  }
  const autonomo::Catalogo& precios = *autonomo::BuscaCatalogo("Producto_Precio");
  // A database that holds two already: each is changed and removed alone.
  Base().Consulta("INSERT INTO Producto_Precio (Pr_Cve_Producto, Pp_Precio_1) VALUES ('HAB1', 1200)");
  const auto filas = autonomo::LeeCatalogo(Base(), precios);
  autonomo::Cambia(Base(), precios, filas.at(0), {"OTRO", 1100});
  EXPECT_EQ(Fila("Producto_Precio", 0), (Textos{"HAB1", "1,100.00"})) << "the key stays";
  EXPECT_EQ(Fila("Producto_Precio", 1), (Textos{"HAB1", "1,200.00"}));
  autonomo::Retira(Base(), precios, filas.at(1));
  EXPECT_EQ(autonomo::LeeCatalogo(Base(), precios).size(), 1U);
  EXPECT_THROW(autonomo::Cambia(Base(), precios, filas.at(1), {"HAB1", 900}), com::Error) << "removed meanwhile";
}

TEST_F(CatalogosPrueba, CadaPantallaTieneCatalogosYCadaColumnaExiste) {
  for (const char* codigo : {"CA014", "CA016", "CA039", "CA153", "CONFIG"}) {
    const auto catalogos = autonomo::CatalogosDe(codigo);
    EXPECT_FALSE(catalogos.empty()) << codigo;
    for (const autonomo::Catalogo* c : catalogos) EXPECT_NO_THROW(autonomo::LeeCatalogo(Base(), *c)) << c->tabla;
  }
  EXPECT_TRUE(autonomo::CatalogosDe("CA999").empty());
}

}  // namespace
}  // namespace pruebas
