#include "host/standalone/carta_html.h"

#include <QTextDocument>
#include <optional>

#include "platform/com/variant.h"
#include "platform/regional/regional.h"

namespace autonomo {

const char* const kFinFormatoHtml = ".HTML";

namespace {

QString Q(const std::string& texto) { return QString::fromStdString(texto); }

QString Segura(const std::string& texto) {
  return Q(texto)
      .toHtmlEscaped()
      .replace(QStringLiteral("\r\n"), QStringLiteral("<br>"))
      .replace(QLatin1Char('\n'), QStringLiteral("<br>"));
}

QString FilaDe(const RenglonDocumento& r) {
  const auto celda = [](const QString& texto, const char* alinea = "left") {
    return QStringLiteral("<td align=\"%1\">%2</td>").arg(QLatin1String(alinea), texto);
  };
  const int personas = r.adultos + r.menores + r.infantes;
  return QStringLiteral("<tr>") + celda(Segura(r.habitacion)) + celda(Segura(r.descripcion)) +
         celda(Segura(regional::FechaCorta(r.inicio))) + celda(Segura(regional::FechaCorta(r.fin))) +
         celda(QString::number(personas), "center") + celda(Segura(regional::Moneda(r.total)), "right") +
         QStringLiteral("</tr>");
}

}  // namespace

QString PlantillaIncluida() {
  return QString::fromUtf8(R"(<html><body style="color:#1b2433">
<table width="100%" cellspacing="0" cellpadding="0"><tr>
<td><span style="font-size:20pt; font-weight:600">{hotel}</span><br>
<span style="font-size:11pt; color:#566275">{titulo}</span></td>
<td align="right"><span style="font-size:9pt; color:#566275">FOLIO</span><br>
<span style="font-size:16pt; font-weight:600">{folio}</span><br>
<span style="font-size:9pt; color:#566275">{estado} · capturada el {captura}</span></td>
</tr></table>
<hr>
<p style="margin-top:14px">Estimado(a) <b>{huesped}</b>:</p>
<p>{mensaje}</p>
<table width="100%" cellspacing="0" cellpadding="6" style="margin-top:10px">
<tr bgcolor="#f3f5f8">
<td><span style="color:#566275; font-size:9pt">LLEGADA</span><br><b>{llegada}</b></td>
<td><span style="color:#566275; font-size:9pt">SALIDA</span><br><b>{salida}</b></td>
<td><span style="color:#566275; font-size:9pt">NOCHES</span><br><b>{noches}</b></td>
<td><span style="color:#566275; font-size:9pt">CLIENTE</span><br><b>{cliente}</b></td>
</tr></table>
<table width="100%" cellspacing="0" cellpadding="5" style="margin-top:18px">
<thead><tr bgcolor="#1f5fbf" style="color:#ffffff">
<td width="12%"><b>Habitación</b></td><td width="37%"><b>Descripción</b></td><td width="12%"><b>Del</b></td>
<td width="12%"><b>Al</b></td><td width="12%" align="center"><b>Personas</b></td>
<td width="15%" align="right"><b>Importe</b></td></tr></thead>
{renglones}
<tr><td colspan="5" align="right" style="border-top:1px solid #8894a6">Subtotal<br>Impuestos<br><b>Total {moneda}</b></td>
<td align="right" style="border-top:1px solid #8894a6">{subtotal}<br>{impuestos}<br><b>{total}</b></td></tr>
</table>
<p style="margin-top:16px">{notas_rotuladas}</p>
</body></html>)");
}

namespace {

// Nothing when the hotel has no template of its own.
std::optional<QString> PlantillaPropia(Conexion& conexion, const std::string& formato) {
  const auto rs =
      conexion.Consulta("SELECT Fm_Contenido FROM Formato WHERE Fm_Cve_Formato = ?", {formato + kFinFormatoHtml});
  if (rs->Eof()) return std::nullopt;
  return Q(com::TextoDe(rs->Fields(0).Value()));
}

bool SeVe(const QString& html) {
  QTextDocument documento;
  documento.setHtml(html);
  return !documento.toPlainText().trimmed().isEmpty();
}

}  // namespace

QString PlantillaDe(Conexion& conexion, const std::string& formato) {
  const auto propia = PlantillaPropia(conexion, formato);
  return propia && SeVe(*propia) ? *propia : PlantillaIncluida();
}

QStringList ProblemasDePlantilla(Conexion& conexion, const std::string& formato) {
  const auto propia = PlantillaPropia(conexion, formato);
  if (!propia) return {};
  const QString cual = QStringLiteral("El formato de impresión ") + Q(formato + kFinFormatoHtml);
  if (propia->trimmed().isEmpty()) return {cual + QStringLiteral(" está vacío; se usó el del programa.")};
  if (!SeVe(*propia)) return {cual + QStringLiteral(" no muestra ningún texto; se usó el del programa.")};
  const CamposNombrados nombrados = NombradosEn(propia->toStdString());
  QStringList problemas;
  if (!nombrados.ajenos.empty()) problemas << cual + QStringLiteral(" ") + Q(DichoDeAjenos(nombrados.ajenos));
  if (nombrados.conocidos.empty())
    problemas << cual + QStringLiteral(" no tiene ningún campo: no dice de qué reservación es.");
  return problemas;
}

QString LlenaPlantilla(const QString& plantilla, const Documento& documento) {
  Campos campos = CamposDe(documento);
  for (auto& [nombre, valor] : campos) valor = Segura(valor).toStdString();
  QString filas;
  for (const auto& r : documento.renglones) filas += FilaDe(r);
  campos["renglones"] = filas.toStdString();
  return Q(Rellena(plantilla.toStdString(), campos));
}

}  // namespace autonomo
