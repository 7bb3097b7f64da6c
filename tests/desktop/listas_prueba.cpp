// The lists of change log and outbox, worked in their windows.
#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QTest>
#include <QTimer>
#include <functional>

#include "desktop/dialogos.h"
#include "desktop/listas.h"
#include "host/standalone/bandeja.h"

namespace pruebas {
namespace {

class ListasPrueba : public testing::Test {
 protected:
  ListasPrueba()
      : anfitrion_([] {
          autonomo::Opciones o;
          o.demo = true;
          o.ahora = com::FechaDe(2026, 3, 9, 10);
          return o;
        }()) {}

  // Works the window that abre shows, then closes it.
  void Con(void (*abre)(autonomo::Anfitrion&, QWidget*), const std::function<void(QWidget&)>& trabaja) {
    bool vista = false;
    QTimer::singleShot(0, [&] {
      QWidget* ventana = QApplication::activeModalWidget();
      ASSERT_NE(ventana, nullptr);
      vista = true;
      trabaja(*ventana);
      QTest::keyClick(ventana, Qt::Key_Escape);
    });
    abre(anfitrion_, nullptr);
    EXPECT_TRUE(vista);
  }
  static QStringList Columna(const QWidget& ventana, int columna) {
    const auto* tabla = ventana.findChild<QTableWidget*>();
    QStringList textos;
    for (int f = 0; f < tabla->rowCount(); ++f) textos << tabla->item(f, columna)->text();
    return textos;
  }
  static void Escribe(const QWidget& ventana, const char* campo, const char* texto) {
    auto* linea = ventana.findChild<QLineEdit*>(QString::fromLatin1(campo));
    linea->selectAll();
    QTest::keyClicks(linea, QString::fromUtf8(texto));
  }
  static void Clic(const QWidget& ventana, const char* boton) {
    QTest::mouseClick(ventana.findChild<QPushButton*>(QString::fromLatin1(boton)), Qt::LeftButton);
  }

  autonomo::Anfitrion anfitrion_;
};

TEST_F(ListasPrueba, LaBitacoraSeFiltraPorFolioUsuarioYDia) {
  const auto anota = [&](const char* folio, const char* usuario, const char* texto, const char* fecha) {
    anfitrion_.conexion()->Consulta(
        "INSERT INTO Bitacora (Bt_Modulo, Bt_Clave, Bt_Texto, Bt_Usuario, Bt_Fecha) VALUES ('RESERVACION', ?, ?, ?, ?)",
        {folio, texto, usuario, *com::DeIso(fecha)});
  };
  anfitrion_.conexion()->Consulta("DELETE FROM Bitacora");
  anota("0000000046", "ANA", "Baja", "2026-03-08T23:59:59");
  anota("0000000046", "LUPE", "Reactivación\n\n  Nota -> x", "2026-03-09T00:00:00");
  anota("0000000047", "ANA", "CONFIRMADO", "2026-03-09T10:00:00");
  Con(vista::MuestraBitacora, [](QWidget& v) {
    EXPECT_EQ(Columna(v, 3), QStringList({"CONFIRMADO", QStringLiteral("Reactivación\nNota -> x"), "Baja"}));
    Escribe(v, "folio", "46");
    Clic(v, "buscar");  // while the field has the keyboard
    EXPECT_EQ(Columna(v, 1), QStringList({"LUPE", "ANA"}));
    Escribe(v, "dia", "9/3/26");
    QTest::keyClick(v.findChild<QLineEdit*>(QStringLiteral("dia")), Qt::Key_Return);
    EXPECT_EQ(Columna(v, 1), QStringList({"LUPE"}));
    Escribe(v, "dia", "ayer no");
    Clic(v, "buscar");
    EXPECT_EQ(v.findChild<QLabel*>(QStringLiteral("cuenta"))->text(), QStringLiteral("«ayer no» no es una fecha"));
    EXPECT_EQ(Columna(v, 1), QStringList({"LUPE"})) << "what was found stays";
    v.findChild<QLineEdit*>(QStringLiteral("dia"))->clear();
    v.findChild<QLineEdit*>(QStringLiteral("folio"))->clear();
    Escribe(v, "usuario", "ana");
    Clic(v, "buscar");
    EXPECT_EQ(Columna(v, 2), QStringList({"0000000047", "0000000046"}));
  });
}

// From its first row, which is seen whole, and in the width that there is: as it comes up, and searched again from
// further down.
TEST_F(ListasPrueba, CadaBusquedaSeVeDesdeElPrimerRenglon) {
  anfitrion_.conexion()->Consulta("DELETE FROM Bitacora");
  for (int i = 0; i < 60; ++i)
    anfitrion_.conexion()->Consulta(
        "INSERT INTO Bitacora (Bt_Modulo, Bt_Clave, Bt_Texto, Bt_Usuario, Bt_Fecha) VALUES ('RESERVACION', '46', ?, "
        "'ANA', '2026-03-09')",
        {"Fecha de salida: 12/03/2026 -> 15/03/2026\nNotas: Llega tarde -> Llega muy tarde, por la noche, y pide que "
         "le "
         "guarden la cena y una cuna en el cuarto de sus padres"});
  Con(vista::MuestraBitacora, [](QWidget& v) {
    auto* tabla = v.findChild<QTableWidget*>();
    for (const bool otra : {false, true}) {
      if (otra) {
        QTest::keyClick(tabla, Qt::Key_PageDown);
        QTest::keyClick(tabla, Qt::Key_PageDown);
        EXPECT_LT(tabla->visualItemRect(tabla->item(0, 3)).top(), 0);
        QTest::keyClick(v.findChild<QLineEdit*>(QStringLiteral("folio")), Qt::Key_Return);
      }
      QTest::qWait(50);
      const QRect cambio = tabla->visualItemRect(tabla->item(0, 3));
      EXPECT_EQ(cambio.top(), 0) << otra;
      EXPECT_EQ(cambio.right() + 1, tabla->viewport()->width()) << otra;
      const QRect texto =
          QFontMetrics(tabla->font())
              .boundingRect(QRect(0, 0, cambio.width() - 8, 10000), Qt::TextWordWrap, tabla->item(0, 3)->text());
      EXPECT_GE(cambio.height(), texto.height()) << otra;
    }
  });
}

TEST_F(ListasPrueba, UnCorreoSeMandaOtraVezDesdeLaLista) {
  autonomo::Conexion& base = *anfitrion_.conexion();
  autonomo::CorreoNuevo correo;
  correo.folio = "0000000046";
  correo.para = "ana@ejemplo.mx";
  correo.fecha = com::FechaDe(2026, 3, 9, 9);
  for (const char* asunto : {"Primero", "Segundo"}) {
    correo.asunto = asunto;
    autonomo::Encola(base, correo);
  }
  base.Consulta("UPDATE Correo_Salida SET Cs_Estado = 'RECHAZADO', Cs_Error = 'buzón lleno', Cs_Intentos = 3");
  base.Consulta("UPDATE Correo_Salida SET Cs_Estado = 'ENVIANDO' WHERE Cs_Asunto = 'Segundo'");
  const auto pone = [&](const char* estado) {
    base.Consulta("UPDATE Correo_Salida SET Cs_Estado = ? WHERE Cs_Asunto = 'Primero'", {estado});
  };
  Con(vista::MuestraBandeja, [&](QWidget& v) {
    EXPECT_TRUE(v.findChild<QLabel*>(QStringLiteral("impedimento"))->text().contains("CORREO_SERVIDOR"));
    EXPECT_EQ(Columna(v, 5), QStringList({QStringLiteral("Enviándose"), QStringLiteral("Rechazado: buzón lleno")}));
    EXPECT_FALSE(v.findChild<QPushButton*>(QStringLiteral("otra_vez"))->isEnabled()) << "none is chosen";
    auto* tabla = v.findChild<QTableWidget*>();
    const auto elige = [&](int fila) {
      QTest::mouseClick(tabla->viewport(), Qt::LeftButton, {}, tabla->visualItemRect(tabla->item(fila, 1)).center());
    };
    const auto* otraVez = v.findChild<QPushButton*>(QStringLiteral("otra_vez"));
    // The text of the box that the button shows, once it is answered.
    QString dicho;
    const auto responde = [&](int respuesta) {
      auto* caja = dynamic_cast<vista::CajaAviso*>(QApplication::activeModalWidget());
      ASSERT_NE(caja, nullptr);
      if (const auto* no = caja->Boton(controles::kNo)) {
        EXPECT_EQ(caja->defaultButton(), no) << "Enter alone sends nothing twice";
      }
      dicho = caja->text();
      QTest::mouseClick(caja->Boton(respuesta), Qt::LeftButton);
    };
    const auto pide = [&](int respuesta) {
      QTimer::singleShot(0, [&] { responde(respuesta); });
      Clic(v, "otra_vez");
      return dicho;
    };
    const auto espera = [&](const char* estado) {
      for (int i = 0; i < 100 && Columna(v, 5)[1] != QString::fromUtf8(estado); ++i) QTest::qWait(100);
      EXPECT_EQ(Columna(v, 5)[1], QString::fromUtf8(estado));
    };
    elige(0);
    EXPECT_FALSE(otraVez->isEnabled()) << "it is being sent";
    elige(1);
    EXPECT_TRUE(pide(controles::kNo).contains(QStringLiteral("«Primero» a ana@ejemplo.mx")));
    espera("Rechazado: buzón lleno");
    pide(controles::kSi);
    espera("En espera");
    EXPECT_FALSE(otraVez->isEnabled()) << "it waits already";
    // Another program sends it; what was chosen stays chosen.
    pone("ENVIADO");
    espera("Enviado");
    EXPECT_TRUE(otraVez->isEnabled());
    EXPECT_TRUE(pide(controles::kNo).contains(QStringLiteral("dos veces")));
    QTimer::singleShot(0, [&] {
      pone("ENVIANDO");
      QTimer::singleShot(100, [&] { responde(controles::kAceptar); });
      responde(controles::kSi);
    });
    Clic(v, "otra_vez");
    EXPECT_EQ(dicho, QStringLiteral("Ese correo se está enviando en este momento"));
  });
}

}  // namespace
}  // namespace pruebas
