// The guest in one step, and how many keys a reservation over the telephone takes.
#include <QCheckBox>
#include <QTableWidget>

#include "tests/desktop/recorrido.h"

namespace pruebas {
namespace {

class HuespedPrueba : public RecorridoPrueba {
 protected:
  static QTableWidget& Tabla(QWidget& w, const char* nombre) {
    return *w.findChild<QTableWidget*>(QString::fromUtf8(nombre));
  }
  static QString Nota(QWidget& w) { return w.findChild<QLabel*>(QStringLiteral("nota"))->text(); }
  static QLineEdit& Linea(QWidget& w, const char* nombre) {
    return *w.findChild<QLineEdit*>(QString::fromUtf8(nombre));
  }
  controles::LookupField& Campo(const char* nombre) { return Control<controles::LookupField>(Forma(), nombre); }
  controles::ScreenToolbar& Barra() { return Control<controles::ScreenToolbar>(Forma(), "Controles"); }

  // --- a clerk whose keys are counted; one held down with another is two
  void Pulsa(QWidget* w, Qt::Key tecla, Qt::KeyboardModifier con = Qt::NoModifier) {
    pulsadas_ += con == Qt::NoModifier ? 1 : 2;
    QTest::keyClick(w, tecla, con);
  }
  void Teclea(QWidget& w, const char* texto) {
    for (const char* c = texto; *c != 0; ++c) {
      ++pulsadas_;
      QTest::keyClick(w.focusWidget(), *c);
    }
  }
  // From the day, which is there when the program opens: three nights from the 20th on, in the second type.
  void CotizaPorTelefono() {
    Espera("hoy", [this](QWidget& w) { Pulsa(w.focusWidget(), Qt::Key_F8); });
    Espera("cotizacion", [this](QWidget& w) {
      Teclea(w, "20");
      Pulsa(w.focusWidget(), Qt::Key_Tab);
      Teclea(w, "3");
      Pulsa(w.focusWidget(), Qt::Key_Down, Qt::ControlModifier);
      Pulsa(w.focusWidget(), Qt::Key_Return);
    });
  }
  // Accepts, prints and closes what was printed: the screen is idle again.
  void Acepta() {
    Espera("mensaje", [this](QWidget& w) { Pulsa(&w, Qt::Key_Return); });
    Espera("impreso", [this](QWidget& w) { Pulsa(&w, Qt::Key_Escape); });
    Pulsa(ConFoco(), Qt::Key_Return, Qt::ControlModifier);
    EXPECT_EQ(Foco(), "txtFolio");
  }
  std::string Guardada() {
    return Sql(
        "SELECT R.Rs_Huesped, C.Cl_Razon_Social_1, C.Cl_Telefono, R.Fp_Cve_Forma_Pago, R.Rs_Llegada, R.Rs_Salida, "
        "D.Hb_Cve_Habitacion, D.Rsd_Adultos, D.Rsd_Precio FROM Reservacion R INNER JOIN Reservacion_Detalle D ON "
        "D.Rs_Folio = R.Rs_Folio INNER JOIN Cliente C ON C.Cl_Cve_Cliente = R.Rs_Huesped WHERE R.Rs_Folio = "
        "'0000000046'");
  }

  int pulsadas_ = 0;
};

// F8; 20 Tab 3 (arrival and nights), Ctrl+Down (the second type), Enter; "sofia ram" Enter; Ctrl+Enter, Enter (no
// mail), Esc (what was printed). The payment form is her last one's.
TEST_F(HuespedPrueba, UnaReservacionDeUnConocidoEnMenosDe25Teclas) {
  CotizaPorTelefono();
  Espera("huesped", [this](QWidget& w) {
    Teclea(w, "sofia ram");
    Pulsa(w.focusWidget(), Qt::Key_Return);
  });
  mostrador_.AbreHoy();
  Acepta();
  EXPECT_EQ(Guardada(), "0000000003|Ana Sofía Ramírez Torres|55 5550 0003|0001|2026-03-20|2026-03-23|0106|2|4150\n");
  EXPECT_LE(pulsadas_, 25);
  RecordProperty("teclas", pulsadas_);
  std::cout << "conocido: " << pulsadas_ << " teclas\n";
}

// The same; her name (12 letters) is not found: Enter, the telephone (10 digits), Enter; 1 is the payment form.
TEST_F(HuespedPrueba, UnaReservacionDeUnNuevoEnMenosDe45Teclas) {
  CotizaPorTelefono();
  Espera("huesped", [this](QWidget& w) {
    Teclea(w, "laura mendes");
    EXPECT_TRUE(Nota(w).startsWith(QStringLiteral("Nadie coincide")));
    Pulsa(w.focusWidget(), Qt::Key_Return);
  });
  Espera("cliente_nuevo", [this](QWidget& w) {
    Teclea(w, "5512345678");
    Pulsa(w.focusWidget(), Qt::Key_Return);
  });
  mostrador_.AbreHoy();
  EXPECT_EQ(Foco(), "txtForma_Pago");
  Teclea(*ConFoco(), "1");
  Acepta();
  EXPECT_EQ(Guardada(), "0000000026|Laura Mendes|5512345678|0001|2026-03-20|2026-03-23|0106|2|4150\n");
  EXPECT_LE(pulsadas_, 45);
  std::cout << "nuevo: " << pulsadas_ << " teclas\n";
}

TEST_F(HuespedPrueba, UnNombreEnElCampoAbreLaBusquedaYUnClienteNuevoVuelveAlCampo) {
  Tecla(Qt::Key_N, Qt::ControlModifier);
  Forma().Enfoca(Campo("txtHuesped"));
  Espera("huesped", [](QWidget& w) {
    EXPECT_EQ(Tabla(w, "personas").rowCount(), 1);
    EXPECT_EQ(Tabla(w, "personas").item(0, 1)->text(), QStringLiteral("55 5550 0003"));
    EXPECT_EQ(Tabla(w, "visitas").rowCount(), 2);
    QTest::keyClick(w.focusWidget(), Qt::Key_Return);
  });
  Enter("sofia ram");
  EXPECT_EQ(Campo("txtHuesped").text(), "0000000003");
  EXPECT_EQ(Campo("txtForma_Pago").text(), "0001");

  // What was typed half is searched for; a field that is left by Esc holds what it held.
  Forma().Enfoca(Campo("txtCliente"));
  Espera("huesped", [this](QWidget& w) {
    EXPECT_EQ(w.windowTitle(), QStringLiteral("Cliente"));
    Espera("cliente_nuevo", [this](QWidget& nuevo) {
      EXPECT_EQ(Linea(nuevo, "nombre").text(), QStringLiteral("Jose Martines G"));
      EXPECT_EQ(Linea(nuevo, "clave").text(), QStringLiteral("0000000026"));
      EXPECT_EQ(nuevo.focusWidget(), &Linea(nuevo, "telefono"));
      // Another desk takes the key; then the similar one is seen, and he is not stored by Enter.
      Sql("INSERT INTO Cliente (Cl_Cve_Cliente, Cl_Razon_Social_1, Es_Cve_Estado) VALUES ('0000000026', "
          "'José Martínez G', 'AC')");
      QTest::keyClick(nuevo.focusWidget(), Qt::Key_Return);
      EXPECT_TRUE(Nota(nuevo).contains(QStringLiteral("ya es de otro cliente"))) << Nota(nuevo).toStdString();
      EXPECT_EQ(Linea(nuevo, "nombre").text(), QStringLiteral("Jose Martines G")) << "nothing is lost";
      EXPECT_EQ(Linea(nuevo, "clave").text(), QStringLiteral("0000000027"));
      QTest::keyClick(nuevo.focusWidget(), Qt::Key_Return);
      EXPECT_TRUE(nuevo.isVisible());
      EXPECT_EQ(Tabla(nuevo, "parecidas").item(0, 1)->text(), QStringLiteral("José Martínez G"));
      EXPECT_TRUE(Tabla(nuevo, "parecidas").hasFocus());
      // What was typed is not lost by a key.
      QTest::keyClick(&Linea(nuevo, "telefono"), Qt::Key_5);
      EsperaMensaje("no se ha guardado", "No");
      QTest::keyClick(&nuevo, Qt::Key_Escape);
      EXPECT_TRUE(nuevo.isVisible());
      Linea(nuevo, "nombre").setText(QStringLiteral("<i>Zoe</i> O'Hara & Cía"));
      QTest::keyClick(&Linea(nuevo, "nombre"), Qt::Key_Return, Qt::ControlModifier);
    });
    QTest::keyClick(w.focusWidget(), Qt::Key_Return);
  });
  Enter("jose martines g");
  EXPECT_EQ(Campo("txtCliente").text(), "0000000027");
  EXPECT_EQ(Campo("txtNCliente").text(), "<i>Zoe</i> O'Hara & Cía");

  // The record shows the name as it is.
  Forma().Enfoca(Campo("txtCliente"));
  Espera("cliente", [](QWidget& w) {
    int veces = 0;
    for (const QLabel* r : w.findChildren<QLabel*>()) {
      if (r->text() == QStringLiteral("<i>Zoe</i> O'Hara & Cía") && r->textFormat() == Qt::PlainText) ++veces;
    }
    EXPECT_EQ(veces, 1);
    w.close();
  });
  Tecla(Qt::Key_Return, Qt::AltModifier);

  // One who is similar is chosen instead: the search shows him.
  Espera("huesped", [this](QWidget& w) {
    QTest::keyClicks(w.focusWidget(), QStringLiteral("ana sofya ramirez torres"));
    Espera("cliente_nuevo", [](QWidget& nuevo) {
      QTest::keyClick(nuevo.focusWidget(), Qt::Key_Return);
      QTest::keyClick(nuevo.focusWidget(), Qt::Key_Return);
    });
    Espera("huesped", [](QWidget& otra) {
      EXPECT_EQ(Tabla(otra, "personas").item(0, 3)->text(), QStringLiteral("0000000003"));
      QTest::keyClick(otra.focusWidget(), Qt::Key_Return);
    });
    QTest::keyClick(w.focusWidget(), Qt::Key_Return);
  });
  Tecla(Qt::Key_F9);
  EXPECT_EQ(Campo("txtCliente").text(), "0000000003");
}

// Outside a capture a New begins; the last stay's room and notes go with him; his reservations open.
TEST_F(HuespedPrueba, LaUltimaEstanciaSeTomaYSusReservacionesSeAbren) {
  Sql("UPDATE Reservacion SET Rs_Notas = 'Almohada dura & té' WHERE Rs_Huesped = '0000000003'");
  const auto casilla = [](QWidget& w, const char* nombre) {
    return w.findChild<QCheckBox*>(QString::fromUtf8(nombre));
  };
  Espera("huesped", [&](QWidget& w) {
    QTest::keyClicks(w.focusWidget(), QStringLiteral("0003"));
    QTest::keyClick(w.focusWidget(), Qt::Key_H, Qt::AltModifier);
    QTest::keyClick(w.focusWidget(), Qt::Key_N, Qt::AltModifier);
    EXPECT_TRUE(casilla(w, "con_habitacion")->isChecked());
    EXPECT_TRUE(casilla(w, "con_notas")->isChecked());
    QTest::keyClick(&w, Qt::Key_Return);
  });
  Tecla(Qt::Key_F9);
  EXPECT_TRUE(Barra().EsNuevo());
  EXPECT_EQ(Control<controles::CampoNotas>(Forma(), "txtNotas").text(), "Almohada dura & té");
  EXPECT_EQ(Control<controles::Grid>(Forma(), "ssReservaciones").Texto(0, "Clave"), "0214");
  EXPECT_EQ(Control<controles::Grid>(Forma(), "ssReservaciones").ClaveColumna(), "Adultos");

  // The room is his own on these nights: said, and not to be ticked. A reservation is opened after the question alone.
  Espera("huesped", [&](QWidget& w) {
    QTest::keyClicks(w.focusWidget(), QStringLiteral("0003"));
    EXPECT_FALSE(casilla(w, "con_habitacion")->isEnabled());
    EXPECT_TRUE(casilla(w, "con_habitacion")->text().contains(QStringLiteral("0000000038")));
    Tabla(w, "visitas").setFocus();
    Tabla(w, "visitas").selectRow(0);
    QTest::keyClick(&Tabla(w, "visitas"), Qt::Key_Return);
  });
  EsperaMensaje("en captura", "Sí");
  Tecla(Qt::Key_F9);
  EXPECT_EQ(Barra().ClaveActual(), "0000000028");

  // From the record as well.
  Espera("cliente", [](QWidget& w) {
    Tabla(w, "visitas").selectRow(1);
    QTest::keyClick(&Tabla(w, "visitas"), Qt::Key_Return);
  });
  Control<controles::Boton>(Forma(), "cmdHuesped").Pulsa();
  EXPECT_TRUE(QTest::qWaitFor([&] { return Barra().ClaveActual() == "0000000038"; }));
}

}  // namespace
}  // namespace pruebas
