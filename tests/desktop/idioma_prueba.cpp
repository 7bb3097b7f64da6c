// A system that lacks the toolkit's Spanish or any font: what the user is told, and what stands in.
#include <gtest/gtest.h>

#include <QDialogButtonBox>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QProcess>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTranslator>
#include <memory>
#include <set>

#include "desktop/idioma.h"

namespace pruebas {
namespace {

class IdiomaPrueba : public testing::Test {
 protected:
  void TearDown() override {
    for (auto* t : qApp->findChildren<QTranslator*>()) {
      QApplication::removeTranslator(t);
      delete t;
    }
  }
};

QStringList Botones(QDialogButtonBox::StandardButtons cuales) {
  const QDialogButtonBox caja(cuales);
  QStringList textos;
  for (const QAbstractButton* b : caja.buttons()) textos << b->text().remove(QLatin1Char('&'));
  textos.sort();
  return textos;
}

TEST_F(IdiomaPrueba, SinLaTraduccionSeDiceYLosTextosSonEspanoles) {
  const QTemporaryDir vacia;
  const QString aviso = vista::InstalaIdioma(*qApp, vacia.path());
  EXPECT_TRUE(aviso.contains(vacia.path()) && aviso.contains(QStringLiteral("./instala"))) << aviso.toStdString();
  EXPECT_EQ(Botones(QDialogButtonBox::Ok | QDialogButtonBox::Cancel | QDialogButtonBox::Yes | QDialogButtonBox::No |
                    QDialogButtonBox::Save | QDialogButtonBox::Close | QDialogButtonBox::Open),
            (QStringList{"Abrir", "Aceptar", "Cancelar", "Cerrar", "Guardar", "No", "Sí"}));
  QLineEdit campo;
  const std::unique_ptr<QMenu> menu(campo.createStandardContextMenu());
  QStringList ordenes;
  for (const QAction* a : menu->actions()) {
    if (!a->isSeparator()) ordenes << a->text().section(QLatin1Char('\t'), 0, 0).remove(QLatin1Char('&'));
  }
  EXPECT_EQ(ordenes, (QStringList{"Deshacer", "Rehacer", "Cortar", "Copiar", "Pegar", "Borrar", "Seleccionar todo"}));
  QFileDialog archivos(nullptr, QStringLiteral("Guardar"), vacia.path());
  archivos.setOption(QFileDialog::DontUseNativeDialog);
  archivos.setAcceptMode(QFileDialog::AcceptSave);
  QStringList rotulos;
  for (const QLabel* l : archivos.findChildren<QLabel*>()) rotulos << l->text().remove(QLatin1Char('&'));
  rotulos.removeAll(QString());
  rotulos.sort();
  EXPECT_EQ(rotulos, (QStringList{"Buscar en:", "Nombre:", "Tipo de archivo:"}));
}

TEST_F(IdiomaPrueba, ConLaTraduccionNoHayNadaQueDecir) {
  if (!QFile::exists(vista::CarpetaDeIdiomas() + QStringLiteral("/qtbase_es.qm"))) GTEST_SKIP() << "not installed";
  EXPECT_EQ(vista::InstalaIdioma(*qApp, vista::CarpetaDeIdiomas()), QString());
  EXPECT_EQ(Botones(QDialogButtonBox::Ok | QDialogButtonBox::Cancel), (QStringList{"Aceptar", "Cancelar"}));
}

TEST_F(IdiomaPrueba, SinTiposDeLetraElProgramaSigueYLoDice) {
  const QTemporaryDir carpeta;
  QFile configuracion(carpeta.filePath(QStringLiteral("fonts.conf")));
  ASSERT_TRUE(configuracion.open(QIODevice::WriteOnly));
  configuracion.write("<?xml version=\"1.0\"?><!DOCTYPE fontconfig SYSTEM \"fonts.dtd\"><fontconfig/>\n");
  configuracion.close();
  QProcessEnvironment ambiente = QProcessEnvironment::systemEnvironment();
  ambiente.insert(QStringLiteral("FONTCONFIG_FILE"), configuracion.fileName());
  ambiente.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
  QProcess proceso;
  proceso.setProcessEnvironment(ambiente);
  proceso.start(QStringLiteral(RESERVAS), {"--demo", "--guion", "-"});
  proceso.write("abre\naccion nuevo\n");
  proceso.closeWriteChannel();
  ASSERT_TRUE(proceso.waitForFinished(60000));
  EXPECT_EQ(proceso.exitStatus(), QProcess::NormalExit);
  EXPECT_EQ(proceso.exitCode(), 0);
  const QString dicho = QString::fromUtf8(proceso.readAllStandardError());
  EXPECT_TRUE(dicho.contains(QStringLiteral("ningún tipo de letra")) && dicho.contains(QStringLiteral("./instala")))
      << dicho.toStdString();
}

TEST_F(IdiomaPrueba, CadaLetraTrazadaSeDistingue) {
  std::set<QByteArray> vistas;
  const QString letras = QStringLiteral("ABCDEFGHIJKLMNÑOPQRSTUVWXYZ.:-/ ");
  for (const QChar letra : letras) {
    const QImage imagen = vista::TextoTrazado(QString(letra), 24, Qt::black, Qt::white, 1.0);
    vistas.insert(QByteArray(reinterpret_cast<const char*>(imagen.constBits()), imagen.sizeInBytes()));
  }
  EXPECT_EQ(vistas.size(), static_cast<std::size_t>(letras.size()));
}

}  // namespace
}  // namespace pruebas
