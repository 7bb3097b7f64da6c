// Whole reservations through the real windows, by keyboard and mouse, on the demo hotel; what is stored is checked.
#include "tests/desktop/recorrido.h"

namespace pruebas {
namespace {

TEST_F(RecorridoPrueba, UnaReservacionDeNuevoAAceptar) {
  const std::string folio = Reserva();
  EXPECT_EQ(Sql("SELECT Cl_Cve_Cliente, Rs_Huesped, Fp_Cve_Forma_Pago, Rs_Llegada, Rs_Salida, Es_Cve_Estado "
                "FROM Reservacion WHERE Rs_Folio = '" +
                folio + "'"),
            "0000000001|0000000002|0001|2026-03-11|2026-03-14|AC\n");
  EXPECT_EQ(Sql("SELECT Hb_Cve_Habitacion, Rsd_Fecha_Inicio, Rsd_Fecha_Fin, Rsd_Adultos FROM Reservacion_Detalle "
                "WHERE Rs_Folio = '" +
                folio + "'"),
            habitacion_ + "|2026-03-11|2026-03-13|2\n");
  ASSERT_EQ(anfitrion_.Impresiones().size(), 1U);
  EXPECT_EQ(anfitrion_.Impresiones().front().clave, folio);
  EXPECT_EQ(Foco(), "txtFolio") << "the screen is clear and waits for a folio";
}

TEST_F(RecorridoPrueba, ConfirmaEditaCancelaReactivaEImprime) {
  const std::string folio = Reserva();
  Carga(folio);
  EsperaMensaje("¿Desea enviar email", "Cancelar");
  Tecla(Qt::Key_K, Qt::ControlModifier);
  EXPECT_EQ(Estado(folio), "CO\n");

  Carga(folio);
  Tecla(Qt::Key_E, Qt::ControlModifier);
  EXPECT_EQ(Foco(), "txtHuesped");
  auto* referencia =
      qobject_cast<QLineEdit*>(escritorio_.ventana(Forma())->vista(*Forma().Busca("txtReferencia"))->foco());
  QTest::mouseClick(referencia, Qt::LeftButton);
  Escribe("agencia 7");
  EsperaMensaje("¿Desea enviar", "No");
  EsperaImpreso();
  auto& barra = dynamic_cast<vista::VistaBarra&>(*escritorio_.ventana(Forma())->vista(*Forma().Busca("Controles")));
  QTest::mouseClick(barra.boton(controles::Accion::Aceptar), Qt::LeftButton);
  EXPECT_EQ(Sql("SELECT Rs_Referencia FROM Reservacion WHERE Rs_Folio = '" + folio + "'"), "agencia 7\n");

  Carga(folio);
  EsperaMensaje("¿Desea cancelar la reservación", "No");
  QTest::mouseClick(barra.boton(controles::Accion::Eliminar), Qt::LeftButton);
  EXPECT_EQ(Estado(folio), "CO\n");
  EsperaMensaje("¿Desea cancelar la reservación", "Sí");
  QTest::mouseClick(barra.boton(controles::Accion::Eliminar), Qt::LeftButton);
  EXPECT_EQ(Estado(folio), "CA\n");

  Carga(folio);
  Tecla(Qt::Key_R, Qt::ControlModifier);
  EXPECT_EQ(Estado(folio), "AC\n");

  Carga(folio);
  EsperaMensaje("¿Desea envuar", "No");
  EsperaImpreso();
  Tecla(Qt::Key_P, Qt::ControlModifier);
  EXPECT_EQ(anfitrion_.Impresiones().size(), 3U);

  Espera("registro", [](QWidget& w) { QTest::keyClick(&w, Qt::Key_Escape); });
  Tecla(Qt::Key_I, Qt::ControlModifier);
  EXPECT_EQ(anfitrion_.Vistos().size(), 1U);
}

TEST_F(RecorridoPrueba, CerrarElTableroEsCancelarlo) {
  CapturaEncabezado();
  Espera("frmDisponibilidad", [](QWidget& w) {
    const auto* filtro = qobject_cast<QLineEdit*>(w.focusWidget());
    ASSERT_NE(filtro, nullptr);
    EXPECT_EQ(filtro->selectedText(), "%") << "a code typed at once replaces it";
    w.close();
  });
  Tecla(Qt::Key_F6);
  EXPECT_FALSE(TableroForma().visible());
  EXPECT_EQ(Foco(), "ssReservaciones");
  EXPECT_EQ(Control<controles::Grid>(Forma(), "ssReservaciones").Filas(), 0);
  // Without a mark nothing is accepted; the board stays and Esc leaves it.
  Espera("frmDisponibilidad", [this](QWidget& w) {
    EsperaMensaje("Debe seleccionar al menos una habitación", "Aceptar");
    QTest::keyClick(w.focusWidget(), Qt::Key_Return, Qt::ControlModifier);
    EXPECT_TRUE(TableroForma().visible());
    QTest::keyClick(w.focusWidget(), Qt::Key_Escape);
  });
  Tecla(Qt::Key_F6);
  EXPECT_FALSE(TableroForma().visible());
}

TEST_F(RecorridoPrueba, CerrarEnPlenaCapturaPregunta) {
  CapturaEncabezado();
  QWidget* ventana = escritorio_.ventana(Forma());
  EsperaMensaje("¿Desea salir y descartarla?", "No");
  ventana->close();
  EXPECT_TRUE(Forma().visible());
  EsperaMensaje("¿Desea salir y descartarla?", "No");
  Tecla(Qt::Key_Q, Qt::ControlModifier);
  EXPECT_TRUE(Forma().visible()) << "the toolbar's Close asks like the window's";
  EXPECT_EQ(Control<controles::LookupField>(Forma(), "txtNCliente").text().empty(), false);
  EsperaMensaje("¿Desea salir y descartarla?", "Sí");
  bool termino = false;
  escritorio_.alTerminar = [&] { termino = true; };
  ventana->close();
  EXPECT_FALSE(Forma().cargado());
  EXPECT_TRUE(termino);
}

TEST_F(RecorridoPrueba, NadaCapturadoSeTiraSinPreguntar) {
  CapturaEncabezado();
  auto& grid = Control<controles::Grid>(Forma(), "ssReservaciones");
  Espera("frmDisponibilidad", [this](QWidget& w) { MarcaDosNoches(w); });
  Tecla(Qt::Key_F6);
  for (const auto tecla : {Qt::Key_N, Qt::Key_L}) {
    EsperaMensaje("¿Desea descartarla?", "No");
    Tecla(tecla, Qt::ControlModifier);
    EXPECT_EQ(grid.Filas(), 1);
  }
  // A cell that is wrong does not stand in the way of leaving.
  grid.VaA(0, grid.IndiceColumna("Clave"));
  Escribe("9x");
  EsperaMensaje("¿Desea descartarla?", "Sí");
  Tecla(Qt::Key_L, Qt::ControlModifier);
  EXPECT_EQ(grid.Filas(), 0);
  EXPECT_FALSE(Control<controles::ScreenToolbar>(Forma(), "Controles").EnEdicion());
}

TEST_F(RecorridoPrueba, UnaReservacionQueSoloSeMuestraNoSeCambia) {
  const std::string folio = Reserva();
  Carga(folio);
  auto& grid = Control<controles::Grid>(Forma(), "ssReservaciones");
  const std::string total = grid.Texto(0, "Total");
  Espera("frmDisponibilidad", [this](QWidget& w) {
    EsperaMensaje("sólo de consulta", "Aceptar");
    MarcaDosNoches(w);
    EXPECT_TRUE(TableroForma().visible());
    QTest::keyClick(w.focusWidget(), Qt::Key_Escape);
  });
  Tecla(Qt::Key_F6);
  EXPECT_EQ(grid.Texto(0, "Total"), total);
  Espera("notas", [](QWidget& w) {
    QTest::keyClicks(w.focusWidget(), QStringLiteral("hola"));
    QTest::keyClick(w.focusWidget(), Qt::Key_Return, Qt::ControlModifier);
  });
  Control<controles::Boton>(Forma(), "cmdNotas").Pulsa();
  EXPECT_EQ(Control<controles::CampoNotas>(Forma(), "txtNotas").text(), "");
}

TEST_F(RecorridoPrueba, UnaClaveSinConfirmarSeBuscaYUnaQueNoExisteLoDice) {
  Tecla(Qt::Key_N, Qt::ControlModifier);
  auto& huesped = Control<controles::LookupField>(Forma(), "txtHuesped");
  Forma().Enfoca(huesped);
  Escribe("5");
  EsperaMensaje("forma de pago", "Aceptar");
  Tecla(Qt::Key_Return, Qt::ControlModifier);
  EXPECT_FALSE(Control<controles::LookupField>(Forma(), "txtNHuesped").text().empty());

  Forma().Enfoca(huesped);
  Enter("9999");
  const auto* nombre =
      qobject_cast<QLineEdit*>(escritorio_.ventana(Forma())->vista(*Forma().Busca("txtNHuesped"))->foco());
  EXPECT_EQ(nombre->placeholderText(), QStringLiteral("No existe"));
  Forma().Enfoca(huesped);
  Enter("5");
  EXPECT_EQ(nombre->placeholderText(), QString());
  Forma().Enfoca(huesped);
  Espera("cliente", [](QWidget& w) { QTest::keyClick(&w, Qt::Key_Escape); });
  Tecla(Qt::Key_Return, Qt::AltModifier);
}

TEST_F(RecorridoPrueba, PasarPorLasFechasNoCambiaElPrecioYSePuedeVolver) {
  CapturaEncabezado();
  Espera("frmDisponibilidad", [this](QWidget& w) { MarcaDosNoches(w); });
  Tecla(Qt::Key_F6);
  CapturaPersonas("2");
  auto& grid = Control<controles::Grid>(Forma(), "ssReservaciones");
  grid.VaA(0, grid.IndiceColumna("Precio"));
  Enter("900");
  const std::string total = grid.Texto(0, "Total");
  grid.VaA(0, grid.IndiceColumna("Nombre"));
  for (const char* fecha : {"FECHAI", "FECHAF"}) {
    Tecla(Qt::Key_Tab);
    EXPECT_EQ(grid.ClaveColumna(), fecha);
    EXPECT_EQ(Foco(), "dpFechaGrid");
  }
  Tecla(Qt::Key_Return);
  EXPECT_EQ(grid.ClaveColumna(), "Adultos");
  EXPECT_EQ(grid.Texto(0, "Total"), total);
  Tecla(Qt::Key_Tab, Qt::ShiftModifier);
  EXPECT_EQ(grid.ClaveColumna(), "FECHAF");
  Tecla(Qt::Key_Backtab, Qt::ShiftModifier);
  EXPECT_EQ(grid.ClaveColumna(), "FECHAI");
  EXPECT_EQ(grid.Texto(0, "Total"), total);
}

TEST_F(RecorridoPrueba, LaLupaEncuentraPorNombreSinAcentos) {
  Tecla(Qt::Key_N, Qt::ControlModifier);
  Tecla(Qt::Key_Tab);
  Tecla(Qt::Key_Tab);
  Espera("huesped", [](QWidget& w) {
    QTest::keyClicks(w.focusWidget(), QStringLiteral("jose mart"));
    QTest::keyClick(w.focusWidget(), Qt::Key_Return);
  });
  Tecla(Qt::Key_F2);
  EXPECT_EQ(Control<controles::LookupField>(Forma(), "txtCliente").text(), "0000000002");
  EXPECT_EQ(Control<controles::LookupField>(Forma(), "txtNCliente").text(), "José Luis Martínez García");
  EXPECT_EQ(Foco(), "txtHuesped");
  // The other catalogues' window finds as that one does.
  auto& forma = Control<controles::LookupField>(Forma(), "txtForma_Pago");
  Forma().Enfoca(forma);
  Espera("busqueda", [](QWidget& w) {
    QTest::keyClicks(w.focusWidget(), QStringLiteral("(CREDITO), tarj"));
    QTest::keyClick(w.focusWidget(), Qt::Key_Return);
  });
  Tecla(Qt::Key_F2);
  EXPECT_EQ(forma.text(), "0004");
}

// Accepted while the rate's field still holds what was typed.
TEST_F(RecorridoPrueba, ARateFarFromTheHotelsIsAskedAboutBeforeItIsAccepted) {
  CapturaEncabezado();
  auto& cambio = Control<controles::LookupField>(Forma(), "txtTipoCambio");
  Forma().Enfoca(Control<controles::LookupField>(Forma(), "txtMoneda"));
  Enter("USD");
  const std::string vigente = cambio.text();
  ASSERT_EQ(Foco(), "txtTipoCambio");
  Escribe("100000");
  EsperaMensaje(("El tipo de cambio de USD que se va a guardar es 100000; el del hotel es " + vigente).c_str(), "No");
  Tecla(Qt::Key_Return, Qt::ControlModifier);
  EXPECT_EQ(Foco(), "txtTipoCambio");
  EXPECT_TRUE(Control<controles::ScreenToolbar>(Forma(), "Controles").EnEdicion());
  // Within a tenth nothing is asked: the screen's own checks answer.
  cambio.Teclea(com::CStr(com::Variant(com::CDbl(vigente) * 1.05)));
  EsperaMensaje("Debe especificar al menos una habitación", "Aceptar");
  Tecla(Qt::Key_Return, Qt::ControlModifier);
}

TEST_F(RecorridoPrueba, AStayOfCenturiesIsToldAndNotShown) {
  CapturaEncabezado();
  auto& salida = Control<controles::DateField>(Forma(), "dpFecha_salida");
  Forma().Enfoca(salida);
  Escribe("31/12/9999");
  EsperaMensaje("noches pasa del máximo de 366", "Aceptar");
  Tecla(Qt::Key_Tab);
  EXPECT_EQ(salida.text(), "31/12/9999");
  EsperaMensaje("noches pasa del máximo de 366", "Aceptar");
  Tecla(Qt::Key_F6);
  Forma().Enfoca(salida);
  Escribe("14/03/2026");
  Tecla(Qt::Key_Tab);
  EXPECT_EQ(Control<controles::LookupField>(Forma(), "txtDias").text(), "3");
}

// A code half typed loads the board again under the pointer: the click still means the room that was there, or nothing.
TEST_F(RecorridoPrueba, UnClicActuaSobreLoQueHabiaDebajoOSobreNada) {
  CapturaEncabezado();
  auto& board = Control<controles::Grid>(TableroForma(), "ssDisponibilidad");
  std::string marcada;
  const auto marcadas = [&] {
    std::string todas;
    for (int f = 0; f < board.Filas(); ++f) {
      for (int c = 2; c < board.NumColumnas(); ++c) {
        if (board.estilo(f, c) == board.IndiceEstilo("OCUPANDO")) todas += board.Texto(f, 0) + " ";
      }
    }
    return todas;
  };
  const auto pendiente = [&](const char* campo, const char* codigo) {
    ClicControl(TableroForma(), campo);
    if (Control<controles::LookupField>(TableroForma(), campo).text() != "%") Tecla(Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(QApplication::focusWidget(), QString::fromUtf8(codigo));
    EXPECT_EQ(Control<controles::LookupField>(TableroForma(), campo).text(), codigo) << "it replaces the %";
  };
  Espera("frmDisponibilidad", [&](QWidget& w) {
    ClicControl(TableroForma(), "opHabitacion");
    ASSERT_GT(board.Filas(), 20);
    // The last room is of the last type, the first one is not.
    const std::string primera = board.Texto(0, 0), ultima = board.Texto(board.Filas() - 1, 0);
    pendiente("txtTipo_Habitacion", "3");
    ClicCelda(TableroForma(), 0, 2);
    EXPECT_EQ(marcadas(), "") << primera << " is not shown any more";
    EXPECT_LT(board.Filas(), 20);
    pendiente("txtTipo_Habitacion", "%");
    const int filas = board.Filas();
    marcada = board.Texto(filas - 1, 0);
    ClicCelda(TableroForma(), filas - 1, 2);
    EXPECT_GT(board.Filas(), filas);
    EXPECT_EQ(marcadas(), marcada + " ");
    pendiente("txtGrupo_Habitacion", "2");
    ClicCelda(TableroForma(), 0, -1);
    // What is accepted is marked; the code half typed is no part of it.
    int libre = 0;
    while (board.estilo(libre, 2) != board.IndiceEstilo("DISPONIBLE")) ++libre;
    ClicCelda(TableroForma(), libre, 2);
    marcada = marcadas();
    EXPECT_NE(marcada, "");
    pendiente("txtArea", "1");
    auto& barra = dynamic_cast<vista::VistaBarra&>(
        *escritorio_.ventana(TableroForma())->vista(*TableroForma().Busca("Controles")));
    QTest::mouseClick(barra.boton(controles::Accion::Aceptar), Qt::LeftButton);
    EXPECT_FALSE(w.isVisible());
  });
  Tecla(Qt::Key_F6);
  EXPECT_EQ(marcadas(), marcada);
  EXPECT_EQ(Control<controles::LookupField>(TableroForma(), "txtArea").text(), "%");
  EXPECT_EQ(Control<controles::LookupField>(TableroForma(), "txtNArea").text(), "Todas");
  auto& grid = Control<controles::Grid>(Forma(), "ssReservaciones");
  ASSERT_GT(grid.Filas(), 0);

  // On the reservation screen: a departure half typed takes the lines away from under the click.
  for (const int columna : {-1, 4}) {
    if (columna == 4) {
      Espera("frmDisponibilidad", [this](QWidget& w) { MarcaDosNoches(w); });
      Tecla(Qt::Key_F6);
    }
    ClicControl(Forma(), "dpFecha_salida");
    Tecla(Qt::Key_A, Qt::ControlModifier);
    Escribe(columna < 0 ? "16/3" : "15/3");
    ClicCelda(Forma(), 0, columna);
    EXPECT_EQ(grid.Filas(), 0);
  }
  // A button that a field half typed makes useless does nothing.
  ClicControl(Forma(), "txtHuesped");
  Tecla(Qt::Key_A, Qt::ControlModifier);
  Escribe("9999");
  ClicControl(Forma(), "cmdHuesped");
}

// The keypad's Enter is an Enter, and a date half typed does not stand in the way of leaving.
TEST_F(RecorridoPrueba, LoTecleadoAMediasNoEstorbaParaSalir) {
  Tecla(Qt::Key_N, Qt::ControlModifier);
  Tecla(Qt::Key_L, Qt::ControlModifier);
  EXPECT_EQ(Foco(), "txtFolio") << "nothing was captured: nothing is asked";
  Tecla(Qt::Key_N, Qt::ControlModifier);
  Forma().Enfoca(*Forma().Busca("dpFecha_llegada"));
  Tecla(Qt::Key_Backspace);
  EsperaMensaje("huésped", "Aceptar");
  Tecla(Qt::Key_Escape);
  QTest::keyClick(ConFoco(), Qt::Key_Enter, Qt::ControlModifier | Qt::KeypadModifier);
  Forma().Enfoca(*Forma().Busca("dpFecha_llegada"));
  Tecla(Qt::Key_Backspace);
  Tecla(Qt::Key_L, Qt::ControlModifier);
  EXPECT_FALSE(Control<controles::ScreenToolbar>(Forma(), "Controles").EnEdicion());
}

TEST_F(RecorridoPrueba, LoUltimoQueSeHizoQuedaDichoYAbreSuReservacion) {
  auto& barra = dynamic_cast<vista::VistaBarra&>(*escritorio_.ventana(Forma())->vista(*Forma().Busca("Controles")));
  const auto* novedad = barra.widget()->findChild<QToolButton*>(QStringLiteral("novedad"));
  auto* estado = barra.widget()->findChild<QLabel*>(QStringLiteral("estado"));
  EXPECT_FALSE(novedad->isVisible());
  escritorio_.ventana(Forma())->resize(1280, 800);
  std::map<controles::Accion, QRect> lugares;
  const auto anotaLugares = [&] {
    QApplication::processEvents();
    for (const controles::Accion a : Control<controles::ScreenToolbar>(Forma(), "Controles").Acciones()) {
      const QToolButton* boton = barra.boton(a);
      if (!boton->isVisible()) continue;
      EXPECT_EQ(lugares.emplace(a, boton->geometry()).first->second, boton->geometry());
    }
  };
  const std::string folio = Reserva();
  EXPECT_TRUE(novedad->toolTip().startsWith(vista::Q("Guardada " + folio + " · José Luis")));
  EXPECT_TRUE(novedad->isVisible());
  anotaLugares();
  Tecla(Qt::Key_O, Qt::ControlModifier);
  EXPECT_EQ(Control<controles::ScreenToolbar>(Forma(), "Controles").ClaveActual(), folio);
  EXPECT_EQ(estado->text(), QStringLiteral("Activa"));
  anotaLugares();
  const QImage activa = estado->grab().toImage();
  Tecla(Qt::Key_E, Qt::ControlModifier);
  EXPECT_TRUE(estado->isVisible()) << "while it is edited too";
  anotaLugares();
  Tecla(Qt::Key_L, Qt::ControlModifier);
  Carga(folio);
  EsperaMensaje("¿Desea cancelar", "Sí");
  QTest::mouseClick(barra.boton(controles::Accion::Eliminar), Qt::LeftButton);
  EXPECT_TRUE(novedad->toolTip().startsWith(QStringLiteral("Cancelada")));
  Carga(folio);
  EXPECT_EQ(estado->text(), QStringLiteral("Cancelada"));
  EXPECT_NE(estado->grab().toImage().pixelColor(2, 8), activa.pixelColor(2, 8));
  anotaLugares();
}

// Wherever the keyboard is, the first click adds the line.
TEST_F(RecorridoPrueba, ElBotonAgregaUnRenglonAlPrimerClic) {
  CapturaEncabezado();
  auto& grid = Control<controles::Grid>(Forma(), "ssReservaciones");
  auto& ventana = *escritorio_.ventana(Forma());
  QToolButton* agrega = nullptr;
  for (auto* b : ventana.findChildren<QToolButton*>()) {
    if (b->text() == QStringLiteral("Agregar habitación")) agrega = b;
  }
  ASSERT_NE(agrega, nullptr);
  for (const char* habitacion : {"101", "102"}) {
    const int antes = grid.Filas();
    QTest::mouseClick(ventana.vista(*Forma().Busca("txtReferencia"))->foco(), Qt::LeftButton);
    QTest::mouseClick(agrega, Qt::LeftButton);
    ASSERT_EQ(grid.Filas(), antes + 1) << habitacion;
    Escribe(habitacion);
    Tecla(Qt::Key_Tab);
  }
  EXPECT_EQ(grid.Texto(0, "Clave") + " " + grid.Texto(1, "Clave"), "0101 0102");
}

TEST_F(RecorridoPrueba, UnaHabitacionSeQuitaConElRatonYLoQueNoSirveSeDevuelve) {
  CapturaEncabezado();
  Espera("frmDisponibilidad", [this](QWidget& w) { MarcaDosNoches(w); });
  Tecla(Qt::Key_F6);
  auto& grid = Control<controles::Grid>(Forma(), "ssReservaciones");
  // A number that is too large is told, and Esc brings back what was there.
  grid.VaA(0, grid.IndiceColumna("Adultos"));
  Forma().Enfoca(grid);
  for (const char* adultos : {"40000", "99999999999"}) {
    Escribe(adultos);
    EsperaMensaje("no sirve aquí", "Aceptar");
    Tecla(Qt::Key_Tab);
    EXPECT_EQ(grid.ClaveColumna(), "Adultos");
    Tecla(Qt::Key_Escape);
    EXPECT_EQ(grid.Texto(0, "Adultos"), "0");
  }
  // By its header and Supr; the date that lies over its cell goes with it.
  grid.VaA(0, grid.IndiceColumna("FECHAF"));
  ClicCelda(Forma(), 0, -1);
  EsperaMensaje("¿Está seguro de eliminar", "No");
  Tecla(Qt::Key_Delete);
  EXPECT_EQ(grid.Filas(), 1);
  // By the menu of the right button.
  auto& vista = dynamic_cast<vista::VistaGrid&>(*escritorio_.ventana(Forma())->vista(grid));
  QWidget* tabla = vista.tabla(0)->viewport();
  const QPoint donde = tabla->mapFrom(vista.widget(), vista.ZonaCelda(0, 0).center());
  QContextMenuEvent pide(QContextMenuEvent::Mouse, donde, tabla->mapToGlobal(donde));
  QApplication::sendEvent(tabla, &pide);
  QWidget* menu = QApplication::activePopupWidget();
  ASSERT_NE(menu, nullptr);
  EsperaMensaje("¿Está seguro de eliminar", "Sí");
  QTest::keyClick(menu, Qt::Key_Up);
  QTest::keyClick(menu, Qt::Key_Return);
  EXPECT_EQ(grid.Filas(), 0);
  EXPECT_FALSE(Forma().Busca("pcFecha")->visible());
}

}  // namespace
}  // namespace pruebas
