#include "desktop/archivos.h"

#include <QDir>
#include <QFileDialog>
#include <QFileIconProvider>
#include <QFileSystemModel>
#include <QIdentityProxyModel>
#include <QLineEdit>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <algorithm>

#include "desktop/dialogos.h"

namespace vista {

namespace {

// Icons and kinds of files told from their names. The toolkit's own look into the files; when it has looked into the
// database and closes it, this program's locks on it are gone, and the next program that opens and leaves the database
// throws away what is written from then on.
class IconosPorNombre : public QFileIconProvider {
 public:
  using QFileIconProvider::icon;
  QIcon icon(const QFileInfo& archivo) const override { return icon(archivo.isDir() ? Folder : File); }
  QString type(const QFileInfo& archivo) const override {
    return archivo.isDir() ? QStringLiteral("Carpeta") : archivo.suffix().toUpper();
  }
};

// Dates as in the rest of the program: the list's own are in the system's language.
class FechasPropias : public QIdentityProxyModel {
 public:
  using QIdentityProxyModel::QIdentityProxyModel;
  QVariant data(const QModelIndex& celda, int papel) const override {
    constexpr int kFecha = 3;  // column
    const auto* archivos = qobject_cast<const QFileSystemModel*>(sourceModel());
    if (papel != Qt::DisplayRole || celda.column() != kFecha || archivos == nullptr)
      return QIdentityProxyModel::data(celda, papel);
    return archivos->lastModified(mapToSource(celda)).toString(QStringLiteral("dd/MM/yyyy HH:mm"));
  }
};

QString CarpetaDeDocumentos() {
  const QString documentos = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
  return QDir(documentos).exists() ? documentos : QDir::homePath();
}

// The desktop environment's dialog is not asked: it looks into files too.
struct Seleccion {
  Seleccion(const QString& titulo, const QString& carpeta, QWidget* padre) : dialogo(padre, titulo, vacia.path()) {
    dialogo.setOption(QFileDialog::DontUseNativeDialog);
    dialogo.setIconProvider(&iconos);
    dialogo.setProxyModel(new FechasPropias(&dialogo));
    dialogo.setDirectory(carpeta);
  }
  // The chosen file, "" none.
  QString Elige() {
    if (Atiende(dialogo) != QDialog::Accepted || dialogo.selectedFiles().isEmpty()) return {};
    return dialogo.selectedFiles().constFirst();
  }

  IconosPorNombre iconos;
  // The dialog lists a folder as soon as it is made, before it can be told of the icons: it begins in one without
  // files.
  const QTemporaryDir vacia;
  QFileDialog dialogo;
};

QString Existente(const QString& titulo, const QString& filtro, const QString& carpeta, QWidget* padre) {
  Seleccion seleccion(titulo, carpeta, padre);
  seleccion.dialogo.setNameFilter(filtro);
  seleccion.dialogo.setFileMode(QFileDialog::ExistingFile);
  return seleccion.Elige();
}

}  // namespace

std::optional<RutaElegida> PreguntaRuta(const QString& titulo, const QString& nombre,
                                        const std::vector<TipoDeArchivo>& tipos, QWidget* padre, const QString& carpeta,
                                        const RutaElegida* anterior) {
  Seleccion seleccion(titulo, carpeta.isEmpty() ? CarpetaDeDocumentos() : carpeta, padre);
  QFileDialog& dialogo = seleccion.dialogo;
  dialogo.setAcceptMode(QFileDialog::AcceptSave);
  dialogo.setObjectName(QStringLiteral("guardar"));
  QStringList filtros;
  for (const TipoDeArchivo& t : tipos) filtros << QStringLiteral("%1 (*.%2)").arg(t.titulo, t.extension);
  dialogo.setNameFilters(filtros);
  const auto tipoElegido = [&] {
    return static_cast<std::size_t>(std::max<qsizetype>(0, filtros.indexOf(dialogo.selectedNameFilter())));
  };
  dialogo.setDefaultSuffix(tipos.front().extension);
  QObject::connect(&dialogo, &QFileDialog::filterSelected, &dialogo,
                   [&] { dialogo.setDefaultSuffix(tipos[tipoElegido()].extension); });
  if (!nombre.isEmpty()) {
    QString propuesto = nombre;
    dialogo.selectFile(propuesto.replace(QLatin1Char('/'), QLatin1Char('-')) + QLatin1Char('.') +
                       tipos.front().extension);
  }
  if (anterior != nullptr) {
    dialogo.selectNameFilter(filtros[static_cast<qsizetype>(anterior->tipo)]);
    dialogo.setDefaultSuffix(tipos[anterior->tipo].extension);
    // As it was typed, even into a folder that is not there.
    if (auto* linea = dialogo.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))) linea->setText(anterior->ruta);
  }
  const QString ruta = seleccion.Elige();
  if (ruta.isEmpty()) return std::nullopt;
  RutaElegida elegida{ruta, tipoElegido()};
  const auto termina = [&](const TipoDeArchivo& t) {
    return elegida.ruta.endsWith(QLatin1Char('.') + t.extension, Qt::CaseInsensitive);
  };
  if (termina(tipos[elegida.tipo])) return elegida;
  for (std::size_t t = 0; t < tipos.size(); ++t) {
    if (termina(tipos[t])) return RutaElegida{elegida.ruta, t};
  }
  elegida.ruta += QLatin1Char('.') + tipos[elegida.tipo].extension;
  return elegida;
}

QString PreguntaRutaPdf(const QString& titulo, const QString& nombre, QWidget* padre) {
  const auto elegida = PreguntaRuta(titulo, nombre, {{QStringLiteral("Documentos PDF"), QStringLiteral("pdf")}}, padre);
  return elegida ? elegida->ruta : QString();
}

QString PreguntaRutaHotel(bool nuevo, const QString& carpeta, QWidget* padre) {
  if (!nuevo) return Existente(QStringLiteral("Archivo del hotel"), QStringLiteral("Hoteles (*.db)"), carpeta, padre);
  const auto elegida = PreguntaRuta(QStringLiteral("Archivo del hotel nuevo"), {},
                                    {{QStringLiteral("Hoteles"), QStringLiteral("db")}}, padre, carpeta);
  return elegida ? elegida->ruta : QString();
}

QString PreguntaRutaCsv(const QString& titulo, QWidget* padre) {
  return Existente(titulo, QStringLiteral("Archivos CSV (*.csv);;Todos (*)"), CarpetaDeDocumentos(), padre);
}

}  // namespace vista
