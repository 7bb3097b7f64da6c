// Mails leave behind the clerk's back for a real server: what becomes of them is in the list, and told where it
// matters.
#include <gtest/gtest.h>

#include <QApplication>
#include <QFile>
#include <QProcess>
#include <QPushButton>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include "desktop/dialogos.h"
#include "desktop/listas.h"
#include "desktop/reparto.h"
#include "desktop/vigia.h"
#include "host/standalone/bandeja.h"
#include "host/standalone/parametros.h"

namespace pruebas {
namespace {

class RepartoPrueba : public testing::Test {
 protected:
  RepartoPrueba()
      : anfitrion_([this] {
          qputenv("XDG_CONFIG_HOME", carpeta_.path().toUtf8());
          autonomo::Opciones o;
          o.demo = true;
          o.ahora = com::FechaDe(2026, 3, 9, 10);
          o.base = base_;
          return o;
        }()) {
    for (const auto& [clave, valor] :
         {std::pair("CORREO_SERVIDOR", std::string("127.0.0.1")), std::pair("CORREO_PUERTO", std::to_string(puerto_)),
          std::pair("CORREO_SEGURIDAD", std::string("NINGUNA")), std::pair("CORREO_USUARIO", std::string("recepcion")),
          std::pair("CORREO_REMITENTE", std::string("reservas@hotel.mx"))})
      autonomo::GuardaParametro(*anfitrion_.conexion(), clave, valor);
    autonomo::CorreoNuevo correo;
    correo.para = "ana@ejemplo.mx";
    correo.asunto = "Confirmación";
    correo.cuerpo = "Hola";
    correo.fecha = com::FechaDe(2026, 3, 9, 9);
    autonomo::Encola(*anfitrion_.conexion(), correo);
  }
  ~RepartoPrueba() override {
    Cierra();
    qunsetenv("XDG_CONFIG_HOME");
  }

  autonomo::OpcionesConexion Archivo() const {
    autonomo::OpcionesConexion o;
    o.ruta = carpeta_.filePath(QStringLiteral("hotel.db")).toStdString();
    return o;
  }
  void Contrasena(const char* texto) const {
    QDir(carpeta_.path()).mkpath(QStringLiteral("reservas"));
    QFile archivo(carpeta_.filePath(QStringLiteral("reservas/correo")));
    ASSERT_TRUE(archivo.open(QIODevice::WriteOnly));
    archivo.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
    archivo.write(texto);
  }
  void Abre(const QStringList& opciones) {
    const QString buzon = carpeta_.filePath(QStringLiteral("buzon%1").arg(++buzones_));
    servidor_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    servidor_.start(QStringLiteral(SERVIDOR_CORREO), QStringList{QString::number(puerto_), buzon} + opciones);
    ASSERT_TRUE(QTest::qWaitFor([&] { return QFile::exists(buzon + QStringLiteral("/listo")); }, 20000));
  }
  void Cierra() {
    servidor_.kill();
    servidor_.waitForFinished();
  }
  static QString Estado(const QWidget& lista) { return lista.findChild<QTableWidget*>()->item(0, 5)->text(); }
  static void Espera(const QWidget& lista, const char* texto) {
    EXPECT_TRUE(QTest::qWaitFor([&] { return Estado(lista).contains(QString::fromUtf8(texto)); }, 20000))
        << texto << " / " << Estado(lista).toStdString();
  }
  static void OtraVez(const QWidget& lista) {
    auto* tabla = lista.findChild<QTableWidget*>();
    QTest::mouseClick(tabla->viewport(), Qt::LeftButton, {}, tabla->visualItemRect(tabla->item(0, 1)).center());
    QTimer::singleShot(0, [] {
      auto* caja = dynamic_cast<vista::CajaAviso*>(QApplication::activeModalWidget());
      ASSERT_NE(caja, nullptr);
      QTest::mouseClick(caja->Boton(controles::kSi), Qt::LeftButton);
    });
    QTest::mouseClick(lista.findChild<QPushButton*>(QStringLiteral("otra_vez")), Qt::LeftButton);
  }

  QTemporaryDir carpeta_;
  int puerto_ = 20000 + static_cast<int>(QCoreApplication::applicationPid() % 10000), buzones_ = 0;
  QProcess servidor_;
  autonomo::OpcionesConexion base_ = Archivo();
  autonomo::Anfitrion anfitrion_;
};

TEST_F(RepartoPrueba, LoQueFueDeUnCorreoEstaEnLaListaYElRechazadoSeDiceDespues) {
  const QStringList entra{QStringLiteral("--login"), QStringLiteral("recepcion"), QStringLiteral("secreta")};
  Contrasena("mala\n");
  const vista::Reparto reparto(anfitrion_, base_);
  std::vector<std::string> dichas;
  const vista::Vigia vigia([&] { return anfitrion_.TomaAvisos(); },
                           [] { return QApplication::activeModalWidget() != nullptr; },
                           [&](const std::string& noticia) {
                             dichas.push_back(noticia);
                             vista::Avisa(noticia, 48, nullptr);
                           },
                           50);
  bool vista = false;
  QTimer::singleShot(0, [&] {
    QWidget* lista = QApplication::activeModalWidget();
    ASSERT_NE(lista, nullptr);
    Espera(*lista, "(1 intento): El servidor de correo 127.0.0.1");
    Abre(entra);
    OtraVez(*lista);
    Espera(*lista, "El servidor de correo no acepta el usuario o la contraseña");
    Contrasena("secreta\n");
    OtraVez(*lista);
    Espera(*lista, "Enviado el");
    Cierra();
    Abre(entra +
         QStringList{QStringLiteral("--rechaza"), QStringLiteral("ana@ejemplo.mx"), QStringLiteral("550 no existe")});
    OtraVez(*lista);
    Espera(*lista, "Rechazado: El servidor de correo contestó «550 no existe»");
    QTest::qWait(200);
    EXPECT_TRUE(dichas.empty()) << "she is at the list";
    vista = true;
    QTest::keyClick(lista, Qt::Key_Escape);
  });
  vista::MuestraBandeja(anfitrion_, nullptr);
  EXPECT_TRUE(vista);
  // The box is on the screen until she has read it.
  QString leido;
  QTimer mira;
  QObject::connect(&mira, &QTimer::timeout, [&] {
    auto* caja = dynamic_cast<vista::CajaAviso*>(QApplication::activeModalWidget());
    if (caja == nullptr) return;
    leido = caja->text();
    QTest::mouseClick(caja->Boton(controles::kAceptar), Qt::LeftButton);
  });
  mira.start(20);
  EXPECT_TRUE(QTest::qWaitFor([&] { return !leido.isEmpty(); }, 5000));
  EXPECT_TRUE(leido.contains(QStringLiteral(
      "El correo «Confirmación» a ana@ejemplo.mx no salió: El servidor de correo contestó «550 no existe»")))
      << leido.toStdString();
  QTest::qWait(200);
  EXPECT_EQ(dichas.size(), 1U) << "told once";
}

}  // namespace
}  // namespace pruebas
