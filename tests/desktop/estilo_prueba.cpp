// Texts can be read in both themes, on whatever colours a hotel gives its states.
#include <gtest/gtest.h>

#include <QApplication>
#include <QColor>
#include <QImage>
#include <QPainter>
#include <QPushButton>
#include <cstdint>
#include <utility>
#include <vector>

#include "desktop/estilo.h"
#include "desktop/iconos.h"
#include "desktop/pintura.h"

namespace pruebas {
namespace {

class EstiloPrueba : public testing::TestWithParam<vista::Tema> {
 protected:
  void SetUp() override { vista::AplicaEstilo(*qApp, GetParam()); }
  void TearDown() override { vista::AplicaEstilo(*qApp, vista::Tema::Claro); }
};

TEST(ContrasteEstiloPrueba, MideComoElOjo) {
  EXPECT_NEAR(vista::Contraste(Qt::black, Qt::white), 21.0, 0.01);
  EXPECT_NEAR(vista::Contraste(QColor(0x76, 0x76, 0x76), Qt::white), 4.54, 0.01);
  EXPECT_DOUBLE_EQ(vista::Contraste(Qt::red, Qt::red), 1.0);
}

TEST_P(EstiloPrueba, LosTextosSeLeen) {
  const vista::Paleta& c = vista::Colores();
  const std::vector<std::pair<QColor, std::vector<QColor>>> textos{
      {c.texto, {c.fondo, c.superficie, c.realce, c.acentoSuave, c.finSemana}},
      {c.tenue, {c.fondo, c.superficie, c.realce}},
      {c.sobreAcento, {c.acento}},
      {c.peligro, {c.fondo, c.superficie}},
      {c.acento, {c.superficie}}};
  for (const auto& [tinta, fondos] : textos) {
    for (const QColor& fondo : fondos) {
      EXPECT_GE(vista::Contraste(tinta, fondo), vista::kContrasteLegible)
          << tinta.name().toStdString() << " on " << fondo.name().toStdString();
    }
  }
}

// The button that Enter presses is drawn in the accent, and so is not what stands on it.
TEST_P(EstiloPrueba, ElIconoDeUnBotonSeVeComoSuTexto) {
  QPushButton boton(vista::Icono(QStringLiteral("buscar")), {});
  boton.setDefault(true);
  const QImage imagen = boton.grab().toImage();
  const auto hay = [&](const QColor& color) {
    for (int y = 0; y < imagen.height(); ++y) {
      for (int x = 0; x < imagen.width(); ++x)
        if (imagen.pixel(x, y) == color.rgb()) return true;
    }
    return false;
  };
  EXPECT_TRUE(hay(vista::Colores().acento));
  EXPECT_TRUE(hay(vista::Colores().sobreAcento));
  EXPECT_FALSE(hay(vista::Colores().texto));
}

TEST_P(EstiloPrueba, LosEstadosSeLeenConCualquierColorDelHotel) {
  for (int rojo = 0; rojo <= 0xFF; rojo += 0x11) {
    for (int verde = 0; verde <= 0xFF; verde += 0x11) {
      for (int azul = 0; azul <= 0xFF; azul += 0x11) {
        const QColor tono = vista::TonoEstado(static_cast<std::int32_t>(azul << 16 | verde << 8 | rojo));
        ASSERT_GE(vista::Contraste(vista::TextoSobre(tono), tono), vista::kContrasteLegible)
            << tono.name().toStdString();
      }
    }
  }
}

// The hotel's own colour is shown as it is, in cell and swatch; states that it gives one colour still look different.
TEST_P(EstiloPrueba, UnColorDadoSePintaTalCualYDosEstadosNuncaIgual) {
  const QColor dado = vista::ColorEstado(0x00123456, true);
  EXPECT_EQ(dado.name(), QStringLiteral("#563412"));
  EXPECT_NE(vista::ColorEstado(0x00123456, false), dado);
  std::vector<QImage> pintados;
  for (const char* estado : {"OCUPADO", "DISPONIBLE", "Bloqueado", "OCUPANDO", "Reservado"}) {
    QImage celda(53, 26, QImage::Format_RGB32);
    QPainter p(&celda);
    vista::PintaEstado(p, celda.rect(), QString::fromLatin1(estado), dado);
    p.end();
    int suyos = 0;
    for (int x = 0; x < celda.width(); ++x) suyos += celda.pixelColor(x, 1) == dado ? 1 : 0;
    EXPECT_GT(suyos, celda.width() / 3) << estado;
    for (const QImage& otro : pintados) EXPECT_NE(celda, otro) << estado;
    pintados.push_back(celda);
  }
}

INSTANTIATE_TEST_SUITE_P(Temas, EstiloPrueba, testing::Values(vista::Tema::Claro, vista::Tema::Oscuro));

}  // namespace
}  // namespace pruebas
