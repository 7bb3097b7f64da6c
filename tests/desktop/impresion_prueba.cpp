// Printed confirmations: the template's fields, what guests write into them, and the file.
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "desktop/impresion.h"
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
  const QString html = vista::LlenaPlantilla(vista::PlantillaIncluida(), Confirmacion());
  for (const char* parte :
       {"Hotel Mirador", "0000000012", "Activa", "Ana López", "11/03/2026", "14/03/2026", "Cuna<br>Vista",
        "Comercial &lt;Norte&gt; &amp; Cía", "$3,480.00", "$1,160.00", "$4,640.00", "$640.00", "$4,000.00"}) {
    EXPECT_TRUE(html.contains(QString::fromUtf8(parte))) << parte;
  }
  EXPECT_EQ(html.count(QStringLiteral("<tr><td align=\"left\">0")), 2) << "one row a room line";
  EXPECT_FALSE(html.contains(QLatin1Char('{')));
}

TEST(ImpresionPrueba, UsaElFormatoDelHotelCuandoLoTiene) {
  autonomo::Anfitrion anfitrion{autonomo::Opciones{}};
  EXPECT_EQ(vista::PlantillaDe(*anfitrion.conexion(), "HT0001"), vista::PlantillaIncluida());
  anfitrion.conexion()->Consulta("INSERT INTO Formato (Fm_Cve_Formato, Fm_Descripcion, Fm_Contenido) VALUES (?, ?, ?)",
                                 {"HT0001.HTML", "Nuestra", "<p>Folio {folio}, {total}</p>"});
  const QString plantilla = vista::PlantillaDe(*anfitrion.conexion(), "HT0001");
  EXPECT_EQ(vista::LlenaPlantilla(plantilla, Confirmacion()), QStringLiteral("<p>Folio 0000000012, $4,640.00</p>"));
}

TEST(ImpresionPrueba, EscribeUnPdfDeTamanoCartaODiceQueNoPuede) {
  const QTemporaryDir carpeta;
  const QString ruta = carpeta.filePath(QStringLiteral("c.pdf"));
  vista::EscribePdf(vista::LlenaPlantilla(vista::PlantillaIncluida(), Confirmacion()), QStringLiteral("Confirmación"),
                    ruta);
  QFile archivo(ruta);
  ASSERT_TRUE(archivo.open(QIODevice::ReadOnly));
  const QByteArray pdf = archivo.readAll();
  EXPECT_TRUE(pdf.startsWith("%PDF-"));
  const QByteArray caja = pdf.mid(pdf.indexOf("/MediaBox"), 60);
  EXPECT_TRUE(caja.contains("612") && caja.contains("792")) << "letter: " << caja.toStdString();
  EXPECT_EQ(pdf.count("/Type /Page\n"), 1) << "one page";
  EXPECT_THROW(vista::EscribePdf({}, {}, carpeta.filePath(QStringLiteral("no/existe.pdf"))), com::Error);
  if (QFile::exists(QStringLiteral("/dev/full"))) {
    EXPECT_THROW(vista::EscribePdf(QStringLiteral("<p>x</p>"), {}, QStringLiteral("/dev/full")), com::Error);
  }
}

}  // namespace
}  // namespace pruebas
