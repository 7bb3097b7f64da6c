// Login, users and the locked screen, worked as a person works them.
#include <QCheckBox>
#include <QTabWidget>
#include <QTableWidget>
#include <QTemporaryDir>
#include <filesystem>

#include "desktop/acceso.h"
#include "host/standalone/permisos.h"
#include "host/standalone/usuarios.h"
#include "tests/desktop/recorrido.h"

namespace pruebas {
namespace {

class AccesoPrueba : public RecorridoPrueba {
 protected:
  AccesoPrueba() = default;
  explicit AccesoPrueba(const autonomo::Opciones& opciones) : RecorridoPrueba(opciones) {}
  void PoneUsuarios() {
    autonomo::GuardaUsuario(*anfitrion_.conexion(), {"JEFE", "Jefe"}, "la del jefe", {autonomo::kPermisoConfiguracion});
    for (const char* u : {"RECEPCION", "ANA"})
      autonomo::GuardaUsuario(*anfitrion_.conexion(), {u, ""}, "la de recepcion", {});
  }
  static void Pon(QWidget& dialogo, const char* entrada, const char* texto) {
    auto* linea = dialogo.findChild<QLineEdit*>(QString::fromUtf8(entrada));
    ASSERT_NE(linea, nullptr) << entrada;
    linea->setFocus();
    linea->selectAll();
    QTest::keyClicks(linea, QString::fromUtf8(texto));
  }
  static void Entra(QWidget& dialogo, const char* usuario, const char* contrasena) {
    Pon(dialogo, "usuario", usuario);
    Pon(dialogo, "contrasena", contrasena);
    QTest::keyClick(dialogo.focusWidget(), Qt::Key_Return);
  }
  static std::string Motivo(QWidget& dialogo) {
    return dialogo.findChild<QLabel*>(QStringLiteral("motivo"))->text().toStdString();
  }
};

TEST_F(AccesoPrueba, SeEntraConLaContrasenaOSeSale) {
  PoneUsuarios();
  Espera("acceso", [](QWidget& w) {
    Entra(w, "recepcion", "otra cosa");
    EXPECT_NE(Motivo(w).find("no son correctos"), std::string::npos);
    EXPECT_TRUE(w.findChild<QLineEdit*>(QStringLiteral("contrasena"))->text().isEmpty());
    Entra(w, "recepcion", "la de recepcion");
  });
  EXPECT_EQ(vista::PideAcceso(*anfitrion_.conexion(), "JEFE"), "RECEPCION");
  Espera("acceso", [](QWidget& w) { QTest::keyClick(&w, Qt::Key_Escape); });
  EXPECT_THROW(static_cast<void>(vista::PideAcceso(*anfitrion_.conexion(), "JEFE")), vista::SinAcceso);
}

TEST_F(AccesoPrueba, LaPantallaBloqueadaConservaLaCaptura) {
  PoneUsuarios();
  CapturaEncabezado();
  ClicControl(Forma(), "txtReferencia");
  Escribe("pendi");
  bool otra = false;
  int veces = 0;
  Espera("acceso", [&](QWidget& w) {
    ++veces;
    EXPECT_EQ(escritorio_.ventana(Forma())->findChildren<QWidget*>(QStringLiteral("tapa")).size(), 1);
    QTest::keyClick(&w, Qt::Key_Escape);
    w.close();
    EXPECT_TRUE(w.isVisible());
    Entra(w, "RECEPCION", "ni idea");
    EXPECT_TRUE(w.isVisible());
    Entra(w, "ANA", "la de recepcion");
    EXPECT_NE(Motivo(w).find("Sólo RECEPCION"), std::string::npos) << Motivo(w);
    EsperaMensaje("¿Cerrar la sesión de RECEPCION?", "No");
    Entra(w, "JEFE", "la del jefe");
    EXPECT_TRUE(w.isVisible());
    Entra(w, "RECEPCION", "la de recepcion");
  });
  std::optional<vista::Bloqueo> bloqueo(std::in_place, anfitrion_, autonomo::OpcionesConexion{}, 1500,
                                        [&] { otra = true; });
  // Work holds it off.
  for (int i = 0; i < 4; ++i) {
    QTest::qWait(500);
    Escribe("e");
  }
  ASSERT_EQ(veces, 0);
  ASSERT_TRUE(QTest::qWaitFor([&] { return veces == 1; }, 20000));
  ASSERT_TRUE(QTest::qWaitFor([&] { return QApplication::activeModalWidget() == nullptr; }));
  bloqueo.emplace(anfitrion_, autonomo::OpcionesConexion{}, 0, [&] { otra = true; });
  EXPECT_TRUE(escritorio_.ventana(Forma())->findChildren<QWidget*>(QStringLiteral("tapa")).empty());
  EXPECT_FALSE(otra);
  Escribe("nte");
  Tecla(Qt::Key_Tab);
  EXPECT_EQ(Control<controles::LookupField>(Forma(), "txtReferencia").text(), "pendieeeente");
  // Who administers the hotel may end the session.
  Espera("acceso", [&](QWidget& w) {
    EsperaMensaje("¿Cerrar la sesión de RECEPCION?", "Sí");
    Entra(w, "JEFE", "la del jefe");
  });
  bloqueo->Bloquea();
  EXPECT_TRUE(otra);
}

// A hotel in a file, which other desks open too.
struct EnCarpeta {
  QTemporaryDir carpeta;
  autonomo::Opciones hotel = HotelDemo();
  EnCarpeta() { hotel.base.ruta = carpeta.filePath(QStringLiteral("hotel.db")).toStdString(); }
};
class AccesoEnArchivoPrueba : protected EnCarpeta, public AccesoPrueba {
 protected:
  AccesoEnArchivoPrueba() : AccesoPrueba(hotel) {}
};

TEST_F(AccesoEnArchivoPrueba, BloqueadaSobreUnaPreguntaSeAbreAunqueOtroEscritorioGuarde) {
  PoneUsuarios();
  const std::string folio = Reserva();
  Carga(folio);
  vista::Bloqueo bloqueo(anfitrion_, hotel.base, 0, [] {});
  hotel.base.esperaMs = 200;
  const auto otro = autonomo::AbreConexion(hotel.base, anfitrion_.reloj());
  const auto cambia = [&](const char* referencia) {
    otro->Consulta("UPDATE Reservacion SET Rs_Referencia = ? WHERE Rs_Folio = ?", {referencia, folio});
  };
  const auto fallas = [&] {
    return com::CLng(
        otro->Consulta("SELECT Us_Fallas FROM Usuario WHERE Us_Cve_Usuario = 'RECEPCION'")->Fields(0).Value());
  };
  Espera("mensaje", [&](QWidget& pregunta) {
    Espera("acceso", [&](QWidget& w) {
      Entra(w, "RECEPCION", "ni idea");
      EXPECT_NE(Motivo(w).find("no son correctos"), std::string::npos) << Motivo(w);
      EXPECT_EQ(fallas(), 1) << "a try counts whatever becomes of the confirmation";
      EXPECT_NO_THROW(cambia("otra vez")) << "the question holds nothing";
      std::filesystem::rename(hotel.base.ruta, hotel.base.ruta + ".aparte");
      Entra(w, "RECEPCION", "la de recepcion");
      EXPECT_NE(Motivo(w).find("No existe el archivo"), std::string::npos) << Motivo(w);
      EXPECT_FALSE(std::filesystem::exists(hotel.base.ruta)) << "no empty hotel in its place";
      std::filesystem::rename(hotel.base.ruta + ".aparte", hotel.base.ruta);
      otro->Directa("DROP TRIGGER Sobreventa_Alta_Linea");  // put back by whoever opens the hotel next
      Entra(w, "RECEPCION", "la de recepcion");
      EXPECT_FALSE(w.isVisible()) << Motivo(w);
      if (w.isVisible()) dynamic_cast<QDialog&>(w).done(QDialog::Rejected);
    });
    cambia("del otro");
    bloqueo.Bloquea();
    EXPECT_EQ(fallas(), 0);
    const auto avisos = anfitrion_.TomaAvisos();
    EXPECT_TRUE(avisos.size() == 1 && avisos[0].find("(Sobreventa_Alta_Linea)") != std::string::npos);
    EsperaMensaje("cambió después de que usted la abrió", "Aceptar");
    Responde(pregunta, QStringLiteral("¿Desea enviar email"), QStringLiteral("Cancelar"));
  });
  Tecla(Qt::Key_K, Qt::ControlModifier);
  EXPECT_EQ(Estado(folio), "AC\n");
}

TEST_F(AccesoPrueba, QuienAdministraDaDeAltaALosDemas) {
  const auto escribe = [](QWidget& w, const char* usuario, const char* contrasena, const char* otraVez) {
    if (*usuario != '\0') Pon(w, "Us_Cve_Usuario", usuario);
    Pon(w, "contrasena", contrasena);
    Pon(w, "otra_vez", otraVez);
  };
  const auto guarda = [](QWidget& w) {
    QTest::mouseClick(w.findChild<QPushButton*>(QStringLiteral("guardar")), Qt::LeftButton);
  };
  Espera("catalogos", [&](QWidget& catalogos) {
    catalogos.findChild<QTabWidget*>()->setCurrentIndex(1);
    QWidget* hoja = catalogos.findChild<QTabWidget*>()->currentWidget();
    Espera("editor_fila", [&](QWidget& w) {
      for (const auto& [una, otra] : {std::pair{"corta", "corta"}, {"bastante larga", "otra distinta"}}) {
        escribe(w, "ana", una, otra);
        guarda(w);
        EXPECT_TRUE(w.isVisible()) << una;
      }
      escribe(w, "ana", "bastante larga", "bastante larga");
      QTest::mouseClick(w.findChild<QCheckBox*>(QStringLiteral("CHCONF")), Qt::LeftButton, {}, {8, 8});
      guarda(w);
    });
    QTest::mouseClick(hoja->findChild<QPushButton*>(QStringLiteral("nuevo")), Qt::LeftButton);
    Espera("editor_fila", [&](QWidget& w) {
      escribe(w, "luis", "la de luis", "la de luis");
      QTest::mouseClick(w.findChild<QCheckBox*>(QStringLiteral("CHPR02")), Qt::LeftButton, {}, {8, 8});
      guarda(w);
    });
    QTest::mouseClick(hoja->findChild<QPushButton*>(QStringLiteral("nuevo")), Qt::LeftButton);
    auto* tabla = hoja->findChild<QTableWidget*>(QStringLiteral("Usuario"));
    const auto edita = [&](const char* quien) {
      const auto filas = tabla->findItems(QString::fromUtf8(quien), Qt::MatchExactly);
      ASSERT_FALSE(filas.isEmpty()) << quien;
      QTest::mouseClick(tabla->viewport(), Qt::LeftButton, {}, tabla->visualItemRect(filas.first()).center());
      QTest::mouseClick(hoja->findChild<QPushButton*>(QStringLiteral("editar")), Qt::LeftButton);
    };
    // Another administrator works too: who was chosen is edited, and what he changed is told before it is replaced.
    autonomo::Conexion& otro = *anfitrion_.conexion();
    autonomo::GuardaUsuario(otro, {"beto", ""}, "la de beto", {});
    Espera("editor_fila", [&](QWidget& w) {
      EXPECT_EQ(w.findChild<QLineEdit*>(QStringLiteral("Us_Cve_Usuario"))->text(), QStringLiteral("luis"));
      autonomo::GuardaUsuario(otro, {"luis", ""}, std::nullopt, {"CHDS02", "CHPR02"});
      guarda(w);
      EXPECT_TRUE(w.isVisible());
      const auto letreros = w.findChildren<QLabel*>();
      EXPECT_TRUE(std::ranges::any_of(letreros, [](const QLabel* l) {
        return l->text().contains(QStringLiteral("puede: Cambiar precios, Dar descuentos"));
      }));
      EXPECT_EQ(Sql("SELECT Pe_Opcion FROM Permiso WHERE Pe_Usuario = 'luis' ORDER BY Pe_Opcion"), "CHDS02\nCHPR02\n");
      guarda(w);
    });
    edita("luis");
    // The last who administers it cannot go.
    Espera("editor_fila", [&](QWidget& w) {
      QTest::mouseClick(w.findChild<QCheckBox*>(QStringLiteral("baja")), Qt::LeftButton, {}, {8, 8});
      guarda(w);
      EXPECT_TRUE(w.isVisible());
      EsperaMensaje("no se ha guardado", "Sí");
      QTest::keyClick(&w, Qt::Key_Escape);
    });
    edita("ana");
    catalogos.close();
  });
  escritorio_.AbrePantalla("CONFIG", {});
  EXPECT_EQ(Sql("SELECT Pe_Opcion FROM Permiso WHERE Pe_Usuario = 'luis'"), "CHPR02\n");
  EXPECT_EQ(Sql("SELECT Es_Cve_Estado FROM Usuario"), "AC\nAC\nAC\n");
  EXPECT_TRUE(autonomo::Accede(*anfitrion_.conexion(), "LUIS", "la de luis", autonomo::Reloj().Ahora()).Bien());
}

}  // namespace
}  // namespace pruebas
