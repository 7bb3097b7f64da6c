#include "desktop/idioma.h"

#include <QDirIterator>
#include <QFileInfo>
#include <QFontDatabase>
#include <QFontInfo>
#include <QHash>
#include <QImage>
#include <QLibraryInfo>
#include <QLocale>
#include <QPainter>
#include <QPolygonF>
#include <QStandardPaths>
#include <QTranslator>
#include <algorithm>

namespace vista {

namespace {

struct Palabra {
  const char *original, *propia;
};
constexpr Palabra kPalabras[] = {
    // standard buttons
    {"OK", "Aceptar"},
    {"&OK", "&Aceptar"},
    {"Cancel", "Cancelar"},
    {"&Cancel", "&Cancelar"},
    {"&Yes", "&Sí"},
    {"&No", "&No"},
    {"Yes to &All", "Sí a &todo"},
    {"N&o to All", "N&o a todo"},
    {"Close", "Cerrar"},
    {"&Close", "&Cerrar"},
    {"Save", "Guardar"},
    {"&Save", "&Guardar"},
    {"Open", "Abrir"},
    {"&Open", "&Abrir"},
    {"Discard", "Descartar"},
    {"Apply", "Aplicar"},
    {"Help", "Ayuda"},
    {"Retry", "Reintentar"},
    {"Ignore", "Ignorar"},
    {"Abort", "Interrumpir"},
    {"Reset", "Restablecer"},
    // menus of the fields
    {"&Undo", "&Deshacer"},
    {"&Redo", "&Rehacer"},
    {"Cu&t", "Cor&tar"},
    {"&Copy", "&Copiar"},
    {"&Paste", "&Pegar"},
    {"Delete", "Borrar"},
    {"&Delete", "&Borrar"},
    {"Select All", "Seleccionar todo"},
    // file dialog
    {"Look in:", "Buscar en:"},
    {"File &name:", "&Nombre:"},
    {"Files of type:", "Tipo de archivo:"},
    {"Directory:", "Carpeta:"},
    {"Back", "Atrás"},
    {"Go back", "Ir atrás"},
    {"Forward", "Adelante"},
    {"Go forward", "Ir adelante"},
    {"Parent Directory", "Carpeta superior"},
    {"Go to the parent directory", "Ir a la carpeta superior"},
    {"Create New Folder", "Crear una carpeta"},
    {"Create a New Folder", "Crear una carpeta"},
    {"List View", "Lista"},
    {"Change to list view mode", "Ver como lista"},
    {"Detail View", "Detalles"},
    {"Change to detail view mode", "Ver con detalles"},
    {"Sidebar", "Lugares"},
    {"List of places and bookmarks", "Lugares y marcadores"},
    {"Files", "Archivos"},
    {"Recent Places", "Lugares recientes"},
    {"&Rename", "&Cambiar nombre"},
    {"Show &hidden files", "Mostrar archivos &ocultos"},
    {"&New Folder", "Carpeta &nueva"},
    {"New Folder", "Carpeta nueva"},
    {"Remove", "Quitar"},
    {"All Files (*)", "Todos los archivos (*)"},
    {"Computer", "Equipo"},
    {"My Computer", "Mi equipo"},
    {"Drive", "Unidad"},
    {"Folder", "Carpeta"},
    {"File Folder", "Carpeta"},
    {"File", "Archivo"},
    {"%1 File", "Archivo %1"},
    {"Name", "Nombre"},
    {"Size", "Tamaño"},
    {"Type", "Tipo"},
    {"Kind", "Tipo"},
    {"Date Modified", "Modificado"},
    {"%1 already exists.\nDo you want to replace it?", "%1 ya existe.\n¿Desea sustituirlo?"},
    {"%1\nFile not found.\nPlease verify the correct file name was given.",
     "%1\nNo se encuentra el archivo.\nRevise que el nombre sea el correcto."},
    {"%1\nDirectory not found.\nPlease verify the correct directory name was given.",
     "%1\nNo se encuentra la carpeta.\nRevise que el nombre sea el correcto."},
    {"Are you sure you want to delete '%1'?", "¿Desea borrar «%1»?"},
    {"'%1' is write protected.\nDo you want to delete it anyway?",
     "«%1» está protegido contra escritura.\n¿Desea borrarlo de todos modos?"},
    {"Could not delete directory.", "No se pudo borrar la carpeta."},
    // keys
    {"Shift", "Mayús"},
    {"Del", "Supr"},
    {"Return", "Enter"},
    {"Space", "Espacio"},
};

class Propio : public QTranslator {
 public:
  using QTranslator::QTranslator;
  bool isEmpty() const override { return false; }
  QString translate(const char*, const char* original, const char*, int) const override {
    return PalabraPropia(original);
  }
};

}  // namespace

QString PalabraPropia(const char* original) {
  static const QHash<QByteArray, QString> palabras = [] {
    QHash<QByteArray, QString> indice;
    for (const Palabra& p : kPalabras) indice.insert(p.original, QString::fromUtf8(p.propia));
    return indice;
  }();
  return palabras.value(QByteArray(original));
}

QString CarpetaDeIdiomas() { return QLibraryInfo::path(QLibraryInfo::TranslationsPath); }

QString InstalaIdioma(QApplication& app, const QString& carpeta) {
  QLocale::setDefault(QLocale(QLocale::Spanish, QLocale::Mexico));
  // The last one installed is asked first.
  QApplication::installTranslator(new Propio(&app));
  auto* traductor = new QTranslator(&app);
  if (traductor->load(QStringLiteral("qtbase_es"), carpeta)) {
    QApplication::installTranslator(traductor);
    return {};
  }
  return QStringLiteral(
             "Falta la traducción al español de los textos del sistema gráfico (se buscó en %1). El programa usa sus "
             "propias palabras; algún botón o menú del sistema podría verse en inglés. Para tenerla, instale "
             "el paquete qt6-translations-l10n o ejecute ./instala.")
      .arg(carpeta);
}

// --- fonts

// The list of families tells nothing: it has names without a font behind them.
bool HayLetra() { return !QFontInfo(QFontDatabase::systemFont(QFontDatabase::GeneralFont)).family().isEmpty(); }

QStringList CarpetasDeLetras() {
  QStringList carpetas = QStandardPaths::standardLocations(QStandardPaths::FontsLocation);
  carpetas << QStringLiteral("/usr/share/fonts") << QStringLiteral("/usr/local/share/fonts");
  return carpetas;
}

QString BuscaLetra(const QStringList& carpetas) {
  if (HayLetra()) return {};
  // Plain fonts of the usual families before any other.
  const auto rango = [](const QString& ruta) {
    static const QStringList preferidas{QStringLiteral("DejaVuSans.ttf"), QStringLiteral("LiberationSans-Regular.ttf"),
                                        QStringLiteral("NotoSans-Regular.ttf"), QStringLiteral("FreeSans.ttf")};
    const auto lugar = preferidas.indexOf(QFileInfo(ruta).fileName());
    return lugar < 0 ? preferidas.size() : lugar;
  };
  QStringList archivos;
  for (const QString& carpeta : carpetas) {
    QDirIterator hay(carpeta, {QStringLiteral("*.ttf"), QStringLiteral("*.otf")}, QDir::Files,
                     QDirIterator::Subdirectories);
    while (hay.hasNext()) archivos << hay.next();
  }
  std::sort(archivos.begin(), archivos.end(),
            [&](const QString& a, const QString& b) { return std::pair(rango(a), a) < std::pair(rango(b), b); });
  for (const QString& archivo : archivos) {
    const int id = QFontDatabase::addApplicationFont(archivo);
    if (id < 0) continue;
    const QStringList familias = QFontDatabase::applicationFontFamilies(id);
    const bool latina =
        !familias.isEmpty() && QFontDatabase::writingSystems(familias.constFirst()).contains(QFontDatabase::Latin);
    if (!latina) {
      QFontDatabase::removeApplicationFont(id);
      continue;
    }
    return QStringLiteral(
               "El sistema no ofrece ningún tipo de letra; se usa el de %1. Los textos pueden verse distintos "
               "o cortados. Para arreglarlo, instale el paquete fonts-dejavu-core o ejecute ./instala.")
        .arg(archivo);
  }
  return QStringLiteral(
      "No hay ningún tipo de letra instalado: los textos de la pantalla no se pueden dibujar. Instale uno, por "
      "ejemplo el paquete fonts-dejavu-core (./instala lo hace), y abra el programa otra vez. Lo guardado no se "
      "pierde.");
}

// --- words without a font

namespace {

// Strokes on a field 4 wide and 6 high: pairs of digits x y; a blank begins another stroke.
const QHash<QChar, const char*>& Letras() {
  static const QHash<QChar, const char*> letras{
      {u'A', "062046 1434"},
      {u'B', "003041423303 3344453606 0600"},
      {u'C', "40000646"},
      {u'D', "06003042443606"},
      {u'E', "40000646 0333"},
      {u'F', "400006 0333"},
      {u'G', "400006464323"},
      {u'H', "0006 4046 0343"},
      {u'I', "2026"},
      {u'J', "40452506"},
      {u'K', "0006 400346"},
      {u'L', "000646"},
      {u'M', "0600234046"},
      {u'N', "06004640"},
      {u'Ñ', "06014641 1030"},
      {u'O', "0040460600"},
      {u'P', "0600404303"},
      {u'Q', "0040460600 2446"},
      {u'R', "0600404303 2346"},
      {u'S', "4000034346 4606"},
      {u'T', "0040 2026"},
      {u'U', "00064640"},
      {u'V', "002640"},
      {u'W', "0016234640"},
      {u'X', "0046 4006"},
      {u'Y', "002340 2326"},
      {u'Z', "00400646"},
      {u'-', "1333"},
      {u'.', "2526"},
      {u':', "2122 2425"},
      {u'/', "4006"},
  };
  return letras;
}

}  // namespace

QImage TextoTrazado(const QString& texto, int alto, const QColor& tinta, const QColor& fondo, qreal escala) {
  constexpr int kAncho = 6, kAlto = 10, kOrilla = 4;  // of a letter with what parts it from the next
  const QStringList lineas = texto.split(QLatin1Char('\n'));
  qsizetype largo = 0;
  for (const QString& linea : lineas) largo = std::max(largo, linea.size());
  const double punto = alto / 6.0;
  const QSizeF mide((static_cast<double>(largo) * kAncho + 2 * kOrilla) * punto,
                    (static_cast<double>(lineas.size()) * kAlto + 2 * kOrilla) * punto);
  QImage imagen((mide * escala).toSize(), QImage::Format_RGB32);
  imagen.setDevicePixelRatio(escala);
  imagen.fill(fondo);
  QPainter p(&imagen);
  p.setRenderHint(QPainter::Antialiasing);
  p.scale(punto, punto);
  p.setPen(QPen(tinta, 0.7, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  for (qsizetype l = 0; l < lineas.size(); ++l) {
    for (qsizetype i = 0; i < lineas[l].size(); ++i) {
      const QPointF esquina(kOrilla + static_cast<double>(i) * kAncho, kOrilla + static_cast<double>(l) * kAlto);
      const QString trazos = QString::fromLatin1(Letras().value(lineas[l][i].toUpper(), ""));
      for (const QString& trazo : trazos.split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
        QPolygonF linea;
        for (qsizetype n = 0; n + 1 < trazo.size(); n += 2) {
          linea << esquina + QPointF(trazo[n].digitValue(), trazo[n + 1].digitValue());
        }
        p.drawPolyline(linea);
      }
    }
  }
  return imagen;
}

}  // namespace vista
