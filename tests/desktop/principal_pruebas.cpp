// The desktop's tests need an application; they run without a display unless one is asked for.
#include <gtest/gtest.h>

#include <QApplication>
#include <QLocale>
#include <cstdlib>

#include "desktop/estilo.h"

int main(int argc, char** argv) {
  setenv("QT_QPA_PLATFORM", "offscreen", 0);
  testing::InitGoogleTest(&argc, argv);
  QApplication aplicacion(argc, argv);
  QLocale::setDefault(QLocale(QLocale::Spanish, QLocale::Mexico));
  vista::AplicaEstilo(aplicacion, vista::Tema::Claro);
  QApplication::setQuitOnLastWindowClosed(false);
  return RUN_ALL_TESTS();
}
