// The program as a process: command line, displays, databases that it must not touch.
#include <gtest/gtest.h>

#include <QCryptographicHash>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>

namespace pruebas {
namespace {

struct Salida {
  int estado = -1;
  QString texto, errores;
};

// Runs the program with a script on its standard input; pantalla: value of QT_QPA_PLATFORM, "" none and no display.
Salida Corre(const QStringList& argumentos, const char* pantalla = "offscreen", const QByteArray& guion = {},
             const QString& datos = {}) {
  QProcessEnvironment ambiente = QProcessEnvironment::systemEnvironment();
  for (const char* variable : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
    ambiente.remove(QLatin1String(variable));
  if (*pantalla != '\0') ambiente.insert(QStringLiteral("QT_QPA_PLATFORM"), QLatin1String(pantalla));
  if (!datos.isEmpty()) ambiente.insert(QStringLiteral("XDG_DATA_HOME"), datos);
  QProcess proceso;
  proceso.setProcessEnvironment(ambiente);
  proceso.start(QStringLiteral(RESERVAS), argumentos);
  proceso.write(guion);
  proceso.closeWriteChannel();
  proceso.waitForFinished(60000);
  return {proceso.exitStatus() == QProcess::NormalExit ? proceso.exitCode() : -1,
          QString::fromUtf8(proceso.readAllStandardOutput()), QString::fromUtf8(proceso.readAllStandardError())};
}

QByteArray Huella(const QString& ruta) {
  QFile archivo(ruta);
  if (!archivo.open(QIODevice::ReadOnly)) return {};
  return QCryptographicHash::hash(archivo.readAll(), QCryptographicHash::Sha256);
}

TEST(ProgramaPrueba, SinPantallaLoDiceEnEspanol) {
  const Salida s = Corre({}, "");
  EXPECT_EQ(s.estado, 1);
  EXPECT_TRUE(s.errores.contains(QStringLiteral("no hay pantalla gráfica"))) << s.errores.toStdString();
}

TEST(ProgramaPrueba, UnaPantallaQueNoResponde) {
  const Salida s = Corre({}, "xcb");
  EXPECT_EQ(s.estado, 1);
  EXPECT_TRUE(s.errores.contains(QStringLiteral("no se pudo abrir la pantalla gráfica"))) << s.errores.toStdString();
}

TEST(ProgramaPrueba, ElUsoErroneoSaleConDos) {
  for (const QStringList& argumentos :
       {QStringList{"--nada"}, QStringList{"--base"}, QStringList{"--tema", "rosa"}, QStringList{"sobra"},
        QStringList{"--guion"}, QStringList{"--base", "a.db", "--conexion", "x"}, QStringList{"--demo", "sobra"},
        QStringList{"--base="}}) {
    const Salida s = Corre(argumentos);
    EXPECT_EQ(s.estado, 2) << argumentos.join(' ').toStdString();
    EXPECT_TRUE(s.errores.contains(QStringLiteral("Uso: reservas"))) << s.errores.toStdString();
  }
  for (const char* ayuda : {"--ayuda", "--help", "-h"}) {
    for (const char* pantalla : {"", "offscreen"}) {
      const Salida s = Corre({QLatin1String(ayuda)}, pantalla);
      EXPECT_EQ(s.estado, 0) << ayuda << " needs no display";
      EXPECT_TRUE(s.texto.contains(QStringLiteral("Uso: reservas"))) << ayuda;
    }
  }
}

TEST(ProgramaPrueba, LaVersionDiceMotorEsquemaYBase) {
  const Salida s = Corre({"--version", "--base=hotel.db"}, "");
  EXPECT_EQ(s.estado, 0) << s.errores.toStdString();
  EXPECT_TRUE(QRegularExpression(
                  "^reservas [0-9.]+\nMotor: SQLite 3.*\nVersión del esquema: [0-9]+\nBase de datos: hotel.db\n$")
                  .match(s.texto)
                  .hasMatch())
      << s.texto.toStdString();
}

TEST(ProgramaPrueba, SinPantallaUnGuionCorreIgual) {
  const Salida s = Corre({"--demo", "--ahora", "2026-03-09T10:00", "--guion", "-"}, "", "abre\naccion nuevo\n");
  EXPECT_EQ(s.estado, 0) << s.errores.toStdString();
  EXPECT_TRUE(s.texto.contains(QStringLiteral("\"foco\":\"dpFecha\""))) << s.texto.toStdString();
}

TEST(ProgramaPrueba, UnaBaseAjenaNoSeToca) {
  const QTemporaryDir carpeta;
  const QString ruta = carpeta.filePath(QStringLiteral("notas.db"));
  QFile archivo(ruta);
  ASSERT_TRUE(archivo.open(QIODevice::WriteOnly));
  archivo.write("esto no es una base de datos, y es de otra persona\n");
  archivo.close();
  const QByteArray antes = Huella(ruta);
  const Salida s = Corre({"--base", ruta, "--guion", "-"}, "offscreen", "abre\n");
  EXPECT_EQ(s.estado, 1);
  EXPECT_TRUE(s.errores.contains(ruta)) << "says which file: " << s.errores.toStdString();
  EXPECT_EQ(Huella(ruta), antes);
}

TEST(ProgramaPrueba, UnaFotoEsUnaImagen) {
  const QTemporaryDir carpeta;
  const QString foto = carpeta.filePath(QStringLiteral("pantalla.png"));
  const QByteArray guion = "abre\ntamano 15000 9600\nfoto \"" + foto.toUtf8() + "\"\nfoto /no/existe/x.png\n";
  const Salida s = Corre({"--demo", "--guion", "-"}, "offscreen", guion);
  EXPECT_EQ(s.estado, 1) << "the second picture has nowhere to go";
  EXPECT_TRUE(s.errores.contains(QStringLiteral("No se pudo escribir la imagen")));
  QFile imagen(foto);
  ASSERT_TRUE(imagen.open(QIODevice::ReadOnly));
  EXPECT_TRUE(imagen.read(8).startsWith("\x89PNG"));
}

}  // namespace
}  // namespace pruebas
