// Painting by whole pixels, at every scale of the screen that clerks choose.
#include "desktop/pintura.h"

#include <gtest/gtest.h>

#include <QPainter>
#include <vector>

#include "desktop/estilo.h"

namespace pruebas {
namespace {

class PinturaPrueba : public testing::TestWithParam<double> {
 protected:
  PinturaPrueba() : lienzo_(QSize(400, 120) * GetParam(), QImage::Format_RGB32) {
    lienzo_.setDevicePixelRatio(GetParam());
    lienzo_.fill(Qt::white);
  }
  // Lengths of the runs of this colour in a row of pixels.
  std::vector<int> Tramos(int y, const QColor& color) const {
    std::vector<int> tramos;
    bool dentro = false;
    for (int x = 0; x < lienzo_.width(); ++x) {
      const bool es = lienzo_.pixelColor(x, y) == color;
      if (es && !dentro) tramos.push_back(0);
      if (es) ++tramos.back();
      dentro = es;
    }
    return tramos;
  }

  QImage lienzo_;
};

TEST_P(PinturaPrueba, LasCeldasNiSeEncimanNiDejanHuecoYSusLineasSonParejas) {
  QPainter p(&lienzo_);
  p.translate(3, 5);
  int siguiente = vista::EnPixeles(p, QRect(0, 0, 53, 26)).left();
  for (int i = 0; i < 7; ++i) {
    const QRect celda(53 * i, 0, 53, 26);
    const QRect pixeles = vista::EnPixeles(p, celda);
    EXPECT_EQ(pixeles.left(), siguiente);
    siguiente = pixeles.right() + 1;
    vista::PintaOrillas(p, celda, Qt::red);
  }
  p.end();
  const int fila = static_cast<int>(10 * GetParam());
  EXPECT_EQ(Tramos(fila, Qt::red), std::vector<int>(7, static_cast<int>(GetParam())));
}

// A copy shows what would be drawn there, and a second one the same.
TEST_P(PinturaPrueba, UnaCopiaLlenaSuLugarYSoloSuLugar) {
  const QColor tono(0x33, 0x99, 0x66);
  QPainter p(&lienzo_);
  for (const int x : {11, 200}) vista::PintaEstado(p, QRect(x, 7, 53, 26), QStringLiteral("Ocupado"), tono);
  const QRect primera = vista::EnPixeles(p, QRect(11, 7, 53, 26)), otra = vista::EnPixeles(p, QRect(200, 7, 53, 26));
  p.end();
  EXPECT_EQ(lienzo_.pixelColor(primera.right(), primera.bottom()), tono);
  EXPECT_EQ(lienzo_.pixelColor(primera.right() + 1, primera.bottom()), QColor(Qt::white));
  EXPECT_EQ(lienzo_.pixelColor(primera.right(), primera.bottom() + 1), QColor(Qt::white));
  EXPECT_NE(lienzo_.pixelColor(primera.left(), primera.center().y()), tono) << "the band at the left";
  EXPECT_TRUE(primera.size() != otra.size() || lienzo_.copy(primera) == lienzo_.copy(otra));
}

TEST_P(PinturaPrueba, UnaCajaTieneOrillasIgualesYEsquinasRedondas) {
  const QColor relleno(0xEE, 0xDD, 0xCC), borde(0x10, 0x20, 0x30);
  QPainter p(&lienzo_);
  vista::PintaCaja(p, QRect(9, 9, 101, 31), {relleno, borde, 2});
  vista::PintaCaja(p, QRect(150, 9, 6, 6), {relleno, borde, 1});  // smaller than its corners
  const QRect lugar = vista::EnPixeles(p, QRect(9, 9, 101, 31));
  p.end();
  const int grosor = qRound(2 * GetParam());
  EXPECT_EQ(Tramos(lugar.center().y(), borde), (std::vector<int>{grosor, grosor}));
  EXPECT_EQ(Tramos(lugar.center().y(), relleno), (std::vector<int>{lugar.width() - 2 * grosor}));
  EXPECT_EQ(lienzo_.pixelColor(lugar.topLeft()), QColor(Qt::white));
  EXPECT_EQ(lienzo_.pixelColor(lugar.bottomRight()), QColor(Qt::white));
}

INSTANTIATE_TEST_SUITE_P(Escalas, PinturaPrueba, testing::Values(1.0, 1.25, 1.5, 1.75, 2.0));

}  // namespace
}  // namespace pruebas
