// Notices from behind the clerk's back wait until she is at nothing.
#include <gtest/gtest.h>

#include "desktop/vigia.h"
#include "tests/desktop/forma_prueba.h"

namespace pruebas {
namespace {

TEST(VigiaPrueba, EsperaAQueTermineLaCapturaYNoSePierde) {
  EnPantalla p;
  std::vector<std::string> nuevas{"una"}, dichas;
  const vista::Vigia vigia([&] { return std::exchange(nuevas, {}); }, [&] { return p.forma.Controles.EnEdicion(); },
                           [&](const std::string& noticia) { dichas.push_back(noticia); }, 10);
  QTest::qWait(30);
  EXPECT_EQ(dichas, std::vector<std::string>{"una"});
  p.forma.Controles.PermiteAccion6(true);
  auto& barra = dynamic_cast<vista::VistaBarra&>(*p.ventana().vista(p.forma.Controles));
  QTest::mouseClick(barra.boton(controles::Accion::Nuevo), Qt::LeftButton);
  ASSERT_TRUE(p.forma.Controles.EnEdicion());
  nuevas = {"dos", "tres"};
  QTest::qWait(50);
  EXPECT_EQ(dichas.size(), 1U);
  p.forma.Controles.ConcluyeAceptar();
  QTest::qWait(30);
  EXPECT_EQ(dichas, (std::vector<std::string>{"una", "dos", "tres"}));
}

}  // namespace
}  // namespace pruebas
