// Printed confirmations: the template's fields, what guests write into them, and the file.
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QScrollArea>
#include <QTemporaryDir>
#include <QTest>

#include "desktop/impresion.h"
#include "host/standalone/carta_html.h"
#include "platform/com/error.h"

namespace pruebas {
namespace {

autonomo::Documento Confirmacion() {
  autonomo::Documento d;
  d.hotel = "Hotel Mirador";
  d.folio = "0000000012";
  d.estado = "AC";
  d.captura = com::FechaDe(2026, 3, 9);
  d.llegada = com::FechaDe(2026, 3, 11);
  d.salida = com::FechaDe(2026, 3, 14);
  d.cliente = "Comercial <Norte> & Cía";
  d.huesped = "Ana López";
  d.moneda = "MXN";
  d.notas = "Cuna\r\nVista al mar";
  d.renglones.push_back({"0101", "Sencilla / 101", d.llegada, d.salida, 2, 1, 0, 3480, 480});
  d.renglones.push_back({"0201", "Doble / 201", d.llegada, d.salida, 1, 0, 0, 1160, 160});
  return d;
}

TEST(ImpresionPrueba, LlenaTodosLosCamposSinDejarHtmlAjeno) {
  const QString html = autonomo::LlenaPlantilla(autonomo::PlantillaIncluida(), Confirmacion());
  for (const char* parte : {"Hotel Mirador", "0000000012", "Activa", "Ana López", "11/03/2026", "14/03/2026",
                            "Notas: Cuna<br>Vista", "Confirmación de reservación", "Comercial &lt;Norte&gt; &amp; Cía",
                            "$3,480.00", "$1,160.00", "$4,640.00", "$640.00", "$4,000.00"}) {
    EXPECT_TRUE(html.contains(QString::fromUtf8(parte))) << parte;
  }
  EXPECT_EQ(html.count(QStringLiteral("<tr><td align=\"left\">0")), 2) << "one row a room line";
  EXPECT_FALSE(html.contains(QLatin1Char('{')));
  autonomo::Documento d = Confirmacion();
  d.notas.clear();
  for (const auto& [estado, titulo] : {std::pair("CA", "Cancelación"), std::pair("CE", "Copia")}) {
    d.estado = estado;
    const QString carta = autonomo::LlenaPlantilla(autonomo::PlantillaIncluida(), d);
    EXPECT_TRUE(carta.contains(QString::fromUtf8(titulo) + QStringLiteral(" de reservación"))) << estado;
    EXPECT_FALSE(carta.contains(QStringLiteral("onfirma"))) << estado;
    EXPECT_FALSE(carta.contains(QStringLiteral("Notas"))) << "no label without notes";
  }
}

TEST(ImpresionPrueba, UsaElFormatoDelHotelCuandoLoTiene) {
  autonomo::Anfitrion anfitrion{autonomo::Opciones{}};
  EXPECT_EQ(autonomo::PlantillaDe(*anfitrion.conexion(), "HT0001"), autonomo::PlantillaIncluida());
  anfitrion.conexion()->Consulta("INSERT INTO Formato (Fm_Cve_Formato, Fm_Descripcion, Fm_Contenido) VALUES (?, ?, ?)",
                                 {"HT0001.HTML", "Nuestra", "<p>Folio {folio}, {total}</p>"});
  const QString plantilla = autonomo::PlantillaDe(*anfitrion.conexion(), "HT0001");
  EXPECT_EQ(autonomo::LlenaPlantilla(plantilla, Confirmacion()), QStringLiteral("<p>Folio 0000000012, $4,640.00</p>"));
}

TEST(ImpresionPrueba, UnaPlantillaQueNoSirveSeDice) {
  autonomo::Anfitrion anfitrion{autonomo::Opciones{}};
  autonomo::Conexion& conexion = *anfitrion.conexion();
  EXPECT_TRUE(autonomo::ProblemasDePlantilla(conexion, "HT0001").isEmpty()) << "none of its own";
  conexion.Consulta("INSERT INTO Formato (Fm_Cve_Formato, Fm_Descripcion, Fm_Contenido) VALUES (?, ?, ?)",
                    {"HT0001.HTML", "Nuestra", "  "});
  struct Caso {
    const char *contenido, *dice;
    bool sirve;
  };
  for (const Caso& caso :
       {Caso{" \n", "vacío", false}, Caso{"<table></table><!-- {folio} -->", "ningún texto", false},
        Caso{"<p>Folio {foliio} de {hotel}</p>", "{foliio}", true}, Caso{"<p>Gracias</p>", "ningún campo", true},
        Caso{"<style>p {color:red}</style><p>{folio} {renglones}</p>", "", true}}) {
    conexion.Consulta("UPDATE Formato SET Fm_Contenido = ?", {caso.contenido});
    const QStringList problemas = autonomo::ProblemasDePlantilla(conexion, "HT0001");
    if (*caso.dice == '\0') {
      EXPECT_TRUE(problemas.isEmpty()) << problemas.join(' ').toStdString();
    } else {
      ASSERT_EQ(problemas.size(), 1) << caso.contenido;
      EXPECT_TRUE(problemas[0].contains(QString::fromUtf8(caso.dice))) << problemas[0].toStdString();
    }
    EXPECT_EQ(autonomo::PlantillaDe(conexion, "HT0001") != autonomo::PlantillaIncluida(), caso.sirve) << caso.contenido;
  }
}

// What the preview says of each page, read with the keyboard.
QStringList Paginas(const QString& html) {
  const auto previa = vista::CreaVistaPrevia(html, QStringLiteral("Confirmación"), {}, nullptr);
  previa->show();
  auto* hojas = previa->findChild<QScrollArea*>(QStringLiteral("hojas"));
  QStringList textos;
  QTest::keyClick(hojas, Qt::Key_Home);
  for (QString antes; hojas->accessibleName() != antes; QTest::keyClick(hojas, Qt::Key_PageDown)) {
    // A page is taller than what is seen of it.
    antes = hojas->accessibleName();
    textos << hojas->accessibleDescription();
    for (int i = 0; i < 3 && hojas->accessibleName() == antes; ++i) QTest::keyClick(hojas, Qt::Key_PageDown);
    if (hojas->accessibleName() != antes) QTest::keyClick(hojas, Qt::Key_Up);
  }
  return textos;
}

// However many lines, no page shows totals without a line, nor half a line, and none is blank.
TEST(ImpresionPrueba, LasPaginasNoPartenRenglonesNiDejanSolosLosTotales) {
  autonomo::Documento d = Confirmacion();
  d.notas.clear();
  d.renglones.clear();
  const std::string larga = "Suite con vista al mar y terraza privada / 1201 Torre Poniente, edificio principal";
  for (int n = 1; n <= 40; ++n) {
    d.renglones.push_back(
        {std::to_string(1000 + n), n % 3 == 0 ? larga : "Doble / 201", d.llegada, d.salida, 2, 0, 0, 1160, 160});
    if (n < 8) continue;
    const QStringList paginas = Paginas(autonomo::LlenaPlantilla(autonomo::PlantillaIncluida(), d));
    int vistos = 0;
    for (const QString& pagina : paginas) {
      const auto renglones =
          pagina.count(QRegularExpression(QStringLiteral("^10\\d\\d$"), QRegularExpression::MultilineOption));
      EXPECT_GT(renglones, 0) << n << " lines: " << pagina.toStdString();
      EXPECT_EQ(pagina.count(QStringLiteral("$1,160.00")), renglones) << "a line and its amount: " << n;
      vistos += static_cast<int>(renglones);
    }
    EXPECT_EQ(vistos, n);
    EXPECT_TRUE(paginas.last().contains(QStringLiteral("Total MXN"))) << n;
  }
}

TEST(ImpresionPrueba, SinVisorSeDiceYElDocumentoQueda) {
#ifdef Q_OS_LINUX
  const QByteArray camino = qgetenv("PATH");
  qputenv("PATH", "/no/existe");
  int veces = 0;
  QObject duenio;
  vista::AbreEnVisor(QStringLiteral("/tmp/x.pdf"), &duenio, [&] { ++veces; });
  EXPECT_TRUE(QTest::qWaitFor([&] { return veces > 0; }, 5000));
  qputenv("PATH", camino);
  EXPECT_EQ(veces, 1);
#endif
}

// The viewer needs no password of the hotel's.
TEST(ImpresionPrueba, ElVisorNoHeredaContrasenas) {
#ifdef Q_OS_LINUX
  const QTemporaryDir carpeta;
  QFile abridor(carpeta.filePath(QStringLiteral("xdg-open")));
  ASSERT_TRUE(abridor.open(QIODevice::WriteOnly));
  abridor.write("#!/bin/sh\nenv > \"$1.nuevo\"\nmv \"$1.nuevo\" \"$1\"\n");
  abridor.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
  abridor.close();
  const QByteArray camino = qgetenv("PATH");
  qputenv("PATH", carpeta.path().toUtf8() + ':' + camino);
  const char* const secretas[] = {"PGPASSWORD", "RESERVAS_CONTRASENA", "RESERVAS_CORREO_CONTRASENA"};
  for (const char* variable : secretas) qputenv(variable, "secreta");
  QFile entorno(carpeta.filePath(QStringLiteral("entorno")));
  QObject duenio;
  vista::AbreEnVisor(entorno.fileName(), &duenio, [] { ADD_FAILURE(); });
  EXPECT_TRUE(QTest::qWaitFor([&] { return entorno.exists(); }, 5000));
  for (const char* variable : secretas) qunsetenv(variable);
  qputenv("PATH", camino);
  ASSERT_TRUE(entorno.open(QIODevice::ReadOnly));
  const QByteArray dice = entorno.readAll();
  EXPECT_TRUE(dice.contains("PATH=")) << dice.toStdString();
  EXPECT_FALSE(dice.contains("secreta")) << dice.toStdString();
#endif
}

TEST(ImpresionPrueba, EscribeUnPdfDeTamanoCartaODiceQueNoPuede) {
  const QTemporaryDir carpeta;
  const QString ruta = carpeta.filePath(QStringLiteral("c.pdf"));
  autonomo::EscribePdf(autonomo::LlenaPlantilla(autonomo::PlantillaIncluida(), Confirmacion()),
                       QStringLiteral("Confirmación"), ruta);
  QFile archivo(ruta);
  ASSERT_TRUE(archivo.open(QIODevice::ReadOnly));
  EXPECT_FALSE(archivo.permissions() & (QFile::ReadGroup | QFile::ReadOther)) << "its owner's alone";
  const QByteArray pdf = archivo.readAll();
  EXPECT_TRUE(pdf.startsWith("%PDF-"));
  const QByteArray caja = pdf.mid(pdf.indexOf("/MediaBox"), 60);
  EXPECT_TRUE(caja.contains("612") && caja.contains("792")) << "letter: " << caja.toStdString();
  EXPECT_EQ(pdf.count("/Type /Page\n"), 1) << "one page";
  EXPECT_THROW(autonomo::EscribePdf({}, {}, carpeta.filePath(QStringLiteral("no/existe.pdf"))), com::Error);
  EXPECT_THROW(autonomo::EscribePdf({}, {}, carpeta.path()), com::Error) << "a folder";
  if (QFile::exists(QStringLiteral("/dev/full"))) {
    EXPECT_THROW(autonomo::EscribePdf(QStringLiteral("<p>x</p>"), {}, QStringLiteral("/dev/full")), com::Error);
  }
}

}  // namespace
}  // namespace pruebas
