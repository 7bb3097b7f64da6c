#include "desktop/archivos.h"

#include <QDir>
#include <QFileDialog>
#include <QFileIconProvider>
#include <QFileSystemModel>
#include <QIdentityProxyModel>
#include <QStandardPaths>
#include <QTemporaryDir>

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

struct Peticion {
  QString titulo, filtro, sufijo, carpeta;
  QString nombre;  // proposed, with its ending; of a file to be made
};

QString CarpetaDeDocumentos() {
  const QString documentos = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
  return QDir(documentos).exists() ? documentos : QDir::homePath();
}

// The desktop environment's dialog is not asked: it looks into files too.
QString Pregunta(const Peticion& peticion, bool guarda, QWidget* padre) {
  IconosPorNombre iconos;
  // The dialog lists a folder as soon as it is made, before it can be told of the icons: it begins in one without
  // files.
  const QTemporaryDir vacia;
  QFileDialog dialogo(padre, peticion.titulo, vacia.path(), peticion.filtro);
  dialogo.setOption(QFileDialog::DontUseNativeDialog);
  dialogo.setIconProvider(&iconos);
  dialogo.setProxyModel(new FechasPropias(&dialogo));
  dialogo.setAcceptMode(guarda ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
  dialogo.setFileMode(guarda ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
  dialogo.setDefaultSuffix(peticion.sufijo);
  dialogo.setDirectory(peticion.carpeta);
  if (!peticion.nombre.isEmpty()) dialogo.selectFile(peticion.nombre);
  if (Atiende(dialogo) != QDialog::Accepted || dialogo.selectedFiles().isEmpty()) return {};
  return dialogo.selectedFiles().constFirst();
}

}  // namespace

QString PreguntaRutaPdf(const QString& titulo, const QString& nombre, QWidget* padre) {
  const QString ruta = Pregunta({titulo, QStringLiteral("Documentos PDF (*.pdf)"), QStringLiteral("pdf"),
                                 CarpetaDeDocumentos(), nombre + QStringLiteral(".pdf")},
                                true, padre);
  return ruta.isEmpty() || ruta.endsWith(QStringLiteral(".pdf"), Qt::CaseInsensitive) ? ruta
                                                                                      : ruta + QStringLiteral(".pdf");
}

QString PreguntaRutaHotel(bool nuevo, const QString& carpeta, QWidget* padre) {
  return Pregunta({nuevo ? QStringLiteral("Archivo del hotel nuevo") : QStringLiteral("Archivo del hotel"),
                   QStringLiteral("Hoteles (*.db)"),
                   QStringLiteral("db"),
                   carpeta,
                   {}},
                  nuevo, padre);
}

QString PreguntaRutaCsv(const QString& titulo, QWidget* padre) {
  return Pregunta({titulo, QStringLiteral("Archivos CSV (*.csv);;Todos (*)"), {}, CarpetaDeDocumentos(), {}}, false,
                  padre);
}

}  // namespace vista
