#include "desktop/idioma.h"

#include <QFontDatabase>
#include <QFontInfo>
#include <QLocale>
#include <QTranslator>

namespace vista {

void InstalaIdioma(QApplication& app) {
  QLocale::setDefault(QLocale(QLocale::Spanish, QLocale::Mexico));
  auto* traductor = new QTranslator(&app);
  if (traductor->load(QStringLiteral(":/sistema/qtbase_es.qm"))) QApplication::installTranslator(traductor);
  // The list of families tells nothing: it has names without a font behind them.
  if (!QFontInfo(QFontDatabase::systemFont(QFontDatabase::GeneralFont)).family().isEmpty()) return;
  QFontDatabase::addApplicationFont(QStringLiteral(":/sistema/DejaVuSans.ttf"));
}

}  // namespace vista
