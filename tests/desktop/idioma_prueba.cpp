// The toolkit's Spanish and a font come with the program.
#include <gtest/gtest.h>

#include <QDialogButtonBox>
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

#include "desktop/idioma.h"

namespace pruebas {
namespace {

QString Rotulo(const QString& texto) { return texto.section(QLatin1Char('\t'), 0, 0).remove(QLatin1Char('&')); }

TEST(Idioma, LosTextosDelSistemaGraficoSonEspanoles) {
  vista::InstalaIdioma(*qApp);
  QStringList vistos;
  const QDialogButtonBox caja(QDialogButtonBox::Ok | QDialogButtonBox::Cancel | QDialogButtonBox::Yes |
                              QDialogButtonBox::Save | QDialogButtonBox::Close);
  for (const QAbstractButton* b : caja.buttons()) vistos << Rotulo(b->text());
  QLineEdit campo;
  const std::unique_ptr<QMenu> menu(campo.createStandardContextMenu());
  for (const QAction* a : menu->actions()) vistos << Rotulo(a->text());
  QFileDialog archivos;
  archivos.setOption(QFileDialog::DontUseNativeDialog);
  for (const QLabel* l : archivos.findChildren<QLabel*>()) vistos << Rotulo(l->text());
  for (const char* palabra : {"Aceptar", "Cancelar", "Sí", "Guardar", "Cerrar", "Deshacer", "Rehacer", "Cortar",
                              "Copiar", "Pegar", "Borrar", "Seleccionar todo", "Ver en:"}) {
    EXPECT_TRUE(vistos.contains(QString::fromUtf8(palabra))) << palabra << ": " << vistos.join('|').toStdString();
  }
  for (auto* t : qApp->findChildren<QTranslator*>()) delete t;
}

// A system with no font at all: the texts are drawn all the same, and nothing is said.
TEST(Idioma, SinTiposDeLetraSeLeeIgual) {
  const QTemporaryDir carpeta;
  QFile configuracion(carpeta.filePath(QStringLiteral("fonts.conf")));
  ASSERT_TRUE(configuracion.open(QIODevice::WriteOnly));
  configuracion.write("<?xml version=\"1.0\"?><!DOCTYPE fontconfig SYSTEM \"fonts.dtd\"><fontconfig/>\n");
  configuracion.close();
  const auto foto = [&](const QString& nombre, bool conLetras) {
    QProcessEnvironment ambiente = QProcessEnvironment::systemEnvironment();
    if (!conLetras) ambiente.insert(QStringLiteral("FONTCONFIG_FILE"), configuracion.fileName());
    ambiente.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    QProcess proceso;
    proceso.setProcessEnvironment(ambiente);
    proceso.setWorkingDirectory(carpeta.path());
    proceso.start(QStringLiteral(RESERVAS), {"--demo", "--ahora", "2026-03-09T10:00", "--guion", "-"});
    proceso.write("abre\naccion nuevo\nfoto " + nombre.toUtf8() + "\n");
    proceso.closeWriteChannel();
    EXPECT_TRUE(proceso.waitForFinished(60000));
    EXPECT_EQ(proceso.exitCode(), 0);
    EXPECT_EQ(proceso.readAllStandardError(), QByteArray());
    return QImage(carpeta.filePath(nombre));
  };
  // How much of the picture is ink: letters that are boxes or blanks differ from it by far.
  const auto tinta = [](const QImage& imagen) {
    qint64 oscuros = 0;
    for (int y = 0; y < imagen.height(); ++y)
      for (int x = 0; x < imagen.width(); ++x) oscuros += qGray(imagen.pixel(x, y)) < 128 ? 1 : 0;
    return static_cast<double>(oscuros);
  };
  const double normal = tinta(foto(QStringLiteral("con.png"), true));
  ASSERT_GT(normal, 1000);
  EXPECT_NEAR(tinta(foto(QStringLiteral("sin.png"), false)) / normal, 1.0, 0.1);
}

}  // namespace
}  // namespace pruebas
