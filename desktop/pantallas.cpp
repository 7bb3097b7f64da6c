#include "desktop/pantallas.h"

#include <QApplication>
#include <QComboBox>
#include <QDate>
#include <QDialog>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QShortcut>
#include <QTabWidget>
#include <QTableWidget>
#include <QVBoxLayout>
#include <algorithm>
#include <map>

#include "desktop/catalogos.h"
#include "desktop/dialogos.h"
#include "desktop/escritorio_qt.h"
#include "desktop/estilo.h"
#include "desktop/guarda.h"
#include "desktop/iconos.h"
#include "desktop/vista_campos.h"
#include "host/standalone/documento.h"
#include "host/standalone/parametros.h"
#include "host/standalone/precios.h"
#include "platform/com/error.h"
#include "platform/regional/regional.h"
#include "schema/esquema.h"

namespace vista {

namespace {

std::string Celda(const ado::Recordset& rs, std::size_t columna) {
  const com::Variant& valor = rs.Fields(columna).Value();
  return com::RecortaDerecha(com::TextoDe(valor));
}

QTableWidget* CreaTabla(const QStringList& titulos, QWidget* padre) {
  auto* tabla = new QTableWidget(0, static_cast<int>(titulos.size()), padre);
  tabla->setHorizontalHeaderLabels(titulos);
  tabla->setEditTriggers(QAbstractItemView::NoEditTriggers);
  tabla->setSelectionBehavior(QAbstractItemView::SelectRows);
  tabla->setSelectionMode(QAbstractItemView::SingleSelection);
  tabla->setShowGrid(false);
  tabla->setTabKeyNavigation(false);
  tabla->setWordWrap(false);
  tabla->verticalHeader()->hide();
  tabla->verticalHeader()->setDefaultSectionSize(espacio::kRenglon);
  tabla->horizontalHeader()->setStretchLastSection(true);
  tabla->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  return tabla;
}

void AgregaFila(QTableWidget* tabla, const QStringList& textos, bool apagada = false,
                const std::vector<int>& derecha = {}) {
  const int fila = tabla->rowCount();
  tabla->insertRow(fila);
  for (int c = 0; c < textos.size(); ++c) {
    auto* celda = new QTableWidgetItem(textos[c]);
    if (apagada) celda->setForeground(Colores().tenue);
    const bool alaDerecha = std::find(derecha.begin(), derecha.end(), c) != derecha.end();
    celda->setTextAlignment((alaDerecha ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
    tabla->setItem(fila, c, celda);
  }
}

// A dialog with a close button.
class Ficha : public QDialog {
 public:
  Ficha(const QString& titulo, QWidget* padre) : QDialog(padre), caja_(new QVBoxLayout(this)) {
    setWindowTitle(titulo);
    setWindowModality(padre == nullptr ? Qt::ApplicationModal : Qt::WindowModal);
  }
  QVBoxLayout* caja() { return caja_; }
  void Termina() {
    auto* botones = new QDialogButtonBox(this);
    botones->addButton(QStringLiteral("&Cerrar"), QDialogButtonBox::RejectRole)->setAutoDefault(false);
    connect(botones, &QDialogButtonBox::rejected, this, &QDialog::reject);
    caja_->addWidget(botones);
  }
  void Titula(const QString& texto) {
    auto* rotulo = new QLabel(texto, this);
    rotulo->setFont(Fuente(Letra::Titulo));
    caja_->addWidget(rotulo);
  }

 private:
  QVBoxLayout* caja_;
};

// --- one row of a catalogue

class EditorFila : public QDialog {
 public:
  // antes: the row to change; null for a new one.
  EditorFila(autonomo::Conexion& conexion, const Catalogo& catalogo, const FilaCatalogo* antes, QWidget* padre)
      : QDialog(padre), conexion_(conexion), catalogo_(catalogo), antes_(antes) {
    setWindowTitle(Q(catalogo.titulo) + (antes == nullptr ? QStringLiteral(" · Nuevo") : QStringLiteral(" · Editar")));
    setObjectName(QStringLiteral("editor_fila"));
    setWindowModality(Qt::WindowModal);
    auto* caja = new QVBoxLayout(this);
    auto* forma = new QFormLayout;
    caja->addLayout(forma);
    for (std::size_t i = 0; i < catalogo.campos.size(); ++i) Agrega(*forma, i);
    motivo_ = new QLabel(this);
    QPalette rojo = motivo_->palette();
    rojo.setColor(QPalette::WindowText, Colores().peligro);
    motivo_->setPalette(rojo);
    motivo_->setWordWrap(true);
    caja->addWidget(motivo_);
    auto* botones = new QDialogButtonBox(this);
    botones->addButton(QStringLiteral("&Guardar"), QDialogButtonBox::AcceptRole)
        ->setObjectName(QStringLiteral("guardar"));
    botones->addButton(QStringLiteral("&Cancelar"), QDialogButtonBox::RejectRole);
    connect(botones, &QDialogButtonBox::accepted, this, [this] { Guarda(); });
    connect(botones, &QDialogButtonBox::rejected, this, &QDialog::reject);
    caja->addWidget(botones);
    AjustaAPantalla(*this, {440, sizeHint().height()});
  }

 private:
  void Agrega(QFormLayout& forma, std::size_t i) {
    const CampoCatalogo& campo = catalogo_.campos[i];
    const QString texto = antes_ == nullptr ? QString() : Q(TextoDe(campo, antes_->valores[i]));
    const bool fija = (antes_ != nullptr && campo.llave) || campo.columna == catalogo_.consecutivo;
    QWidget* entrada = nullptr;
    if (campo.tipo == TipoCampo::Referencia) {
      auto* lista = new QComboBox(this);
      lista->setEditable(false);
      for (const auto& [clave, nombre] : LeeReferencia(conexion_, campo.referencia)) {
        lista->addItem(Q(clave) + QStringLiteral("  ") + Q(nombre), Q(clave));
      }
      if (!texto.isEmpty() && lista->findData(texto) < 0) lista->addItem(texto, texto);
      lista->setCurrentIndex(texto.isEmpty() ? -1 : lista->findData(texto));
      entrada = lista;
    } else if (campo.tipo == TipoCampo::Nota) {
      auto* notas = new QPlainTextEdit(texto, this);
      notas->setMinimumHeight(180);
      notas->setTabChangesFocus(true);
      entrada = notas;
    } else {
      auto* linea = new QLineEdit(texto, this);
      linea->setPlaceholderText(Q(campo.ayuda));
      if (campo.columna == catalogo_.consecutivo && antes_ == nullptr)
        linea->setPlaceholderText(QStringLiteral("se asigna al guardar"));
      entrada = linea;
    }
    entrada->setObjectName(Q(campo.columna));
    entrada->setAccessibleName(Q(campo.titulo));
    entrada->setToolTip(Q(campo.ayuda));
    entrada->setEnabled(!fija);
    entrada->setMinimumHeight(26);
    forma.addRow(Q(campo.titulo) + QStringLiteral(":"), entrada);
    entradas_.push_back(entrada);
  }

  std::string Texto(std::size_t i) const {
    if (const auto* lista = qobject_cast<QComboBox*>(entradas_[i]))
      return lista->currentData().toString().toStdString();
    if (const auto* notas = qobject_cast<QPlainTextEdit*>(entradas_[i])) return notas->toPlainText().toStdString();
    return qobject_cast<QLineEdit*>(entradas_[i])->text().toStdString();
  }

  void Guarda() {
    std::vector<std::string> textos;
    for (std::size_t i = 0; i < entradas_.size(); ++i) textos.push_back(Texto(i));
    std::vector<com::Variant> valores;
    try {
      std::string motivo = Valida(catalogo_, textos, MascaraDe(conexion_, catalogo_), valores);
      if (!motivo.empty()) return Rechaza(Q(motivo), valores.size());
      if (antes_ == nullptr) {
        Inserta(conexion_, catalogo_, std::move(valores));
      } else {
        Cambia(conexion_, catalogo_, *antes_, std::move(valores));
      }
    } catch (const com::Error& e) {
      return Rechaza(Q(e.Descripcion()), 0);
    }
    accept();
  }

  // Says why; what was typed stays, and the keyboard goes to the field to correct, if it is one alone.
  void Rechaza(const QString& motivo, std::size_t campo) {
    motivo_->setText(motivo);
    if (campo < entradas_.size()) entradas_[campo]->setFocus();
  }

  autonomo::Conexion& conexion_;
  const Catalogo& catalogo_;
  const FilaCatalogo* antes_;
  std::vector<QWidget*> entradas_;
  QLabel* motivo_;
};

// --- one catalogue

class Lista : public QWidget {
 public:
  Lista(autonomo::Conexion& conexion, const Catalogo& catalogo, QWidget* padre)
      : QWidget(padre), conexion_(conexion), catalogo_(catalogo), filtro_(new QLineEdit(this)) {
    auto* caja = new QVBoxLayout(this);
    filtro_->setPlaceholderText(QStringLiteral("Filtrar"));
    filtro_->setAccessibleName(QStringLiteral("Filtrar ") + Q(catalogo.titulo));
    filtro_->setMinimumHeight(28);
    filtro_->addAction(Icono(QStringLiteral("buscar"), Colores().tenue), QLineEdit::LeadingPosition);
    QStringList titulos;
    for (const CampoCatalogo& campo : catalogo.campos) titulos << Q(campo.titulo);
    tabla_ = CreaTabla(titulos, this);
    tabla_->setObjectName(Q(catalogo.tabla));
    tabla_->setAccessibleName(Q(catalogo.titulo));
    auto* botones = new QHBoxLayout;
    const auto boton = [&](const QString& titulo, const char* icono, const QString& nombre) {
      auto* b = new QPushButton(Icono(QLatin1String(icono)), titulo, this);
      b->setAutoDefault(false);
      b->setObjectName(nombre);
      botones->addWidget(b);
      return b;
    };
    QPushButton* nuevo = boton(QStringLiteral("&Nuevo"), "nuevo", QStringLiteral("nuevo"));
    edita_ = boton(QStringLiteral("&Editar"), "editar", QStringLiteral("editar"));
    retira_ = boton(QStringLiteral("&Quitar"), "eliminar", QStringLiteral("quitar"));
    botones->addStretch();
    caja->addWidget(filtro_);
    caja->addWidget(tabla_);
    caja->addLayout(botones);
    connect(filtro_, &QLineEdit::textChanged, this, [this] { Filtra(); });
    connect(filtro_, &QLineEdit::returnPressed, this, [this] { EditaActual(); });
    filtro_->installEventFilter(this);
    connect(nuevo, &QPushButton::clicked, this, [this] { Edita(nullptr); });
    connect(edita_, &QPushButton::clicked, this, [this] { EditaActual(); });
    connect(retira_, &QPushButton::clicked, this, [this] { RetiraActual(); });
    connect(tabla_, &QTableWidget::cellDoubleClicked, this, [this] { EditaActual(); });
    connect(tabla_, &QTableWidget::itemSelectionChanged, this, [this] { Botones(); });
    for (const char* tecla : {"Return", "F2"}) {
      auto* s = new QShortcut(QKeySequence(QLatin1String(tecla)), tabla_);
      s->setContext(Qt::WidgetShortcut);
      connect(s, &QShortcut::activated, this, [this] { EditaActual(); });
    }
    Carga();
  }

 protected:
  // The arrows walk the list from the filter.
  bool eventFilter(QObject* objeto, QEvent* evento) override {
    if (objeto == filtro_ && evento->type() == QEvent::KeyPress) {
      const int tecla = static_cast<QKeyEvent*>(evento)->key();
      if (tecla == Qt::Key_Down || tecla == Qt::Key_Up) {
        QApplication::sendEvent(tabla_, evento);
        return true;
      }
    }
    return QWidget::eventFilter(objeto, evento);
  }

 private:
  // Names of the rows that a column refers to, by key.
  std::map<QString, QString> Nombres(const CampoCatalogo& campo) {
    std::map<QString, QString> nombres;
    if (campo.tipo != TipoCampo::Referencia) return nombres;
    for (const auto& [clave, nombre] : LeeReferencia(conexion_, campo.referencia)) nombres[Q(clave)] = Q(nombre);
    return nombres;
  }

  void Carga() {
    std::vector<std::map<QString, QString>> nombres(catalogo_.campos.size());
    Corre([&] {
      filas_ = LeeCatalogo(conexion_, catalogo_);
      for (std::size_t i = 0; i < nombres.size(); ++i) nombres[i] = Nombres(catalogo_.campos[i]);
    });
    tabla_->setRowCount(0);
    for (const FilaCatalogo& fila : filas_) {
      QStringList textos;
      for (std::size_t i = 0; i < catalogo_.campos.size(); ++i) {
        QString texto = Q(TextoDe(catalogo_.campos[i], fila.valores[i])).simplified();
        if (const auto nombre = nombres[i].find(texto); nombre != nombres[i].end())
          texto += QStringLiteral("  ") + nombre->second;
        if (fila.deBaja && i == 1) texto += QStringLiteral(" (de baja)");
        textos << texto.left(80);
      }
      AgregaFila(tabla_, textos, fila.deBaja);
    }
    tabla_->resizeColumnsToContents();
    Filtra();
  }

  void Filtra() {
    const QStringList palabras = ParaBuscar(filtro_->text()).split(QLatin1Char(' '), Qt::SkipEmptyParts);
    int primera = -1;
    for (int f = 0; f < tabla_->rowCount(); ++f) {
      QString fila;
      for (int c = 0; c < tabla_->columnCount(); ++c) fila += tabla_->item(f, c)->text() + QLatin1Char(' ');
      const QString plano = ParaBuscar(fila);
      const bool entra =
          std::all_of(palabras.begin(), palabras.end(), [&](const QString& p) { return plano.contains(p); });
      tabla_->setRowHidden(f, !entra);
      if (entra && primera < 0) primera = f;
    }
    const bool perdida = tabla_->currentRow() < 0 || tabla_->isRowHidden(tabla_->currentRow());
    if (perdida && primera >= 0) tabla_->selectRow(primera);
    Botones();
  }

  int Actual() const {
    const int f = tabla_->currentRow();
    return f < 0 || tabla_->isRowHidden(f) || static_cast<std::size_t>(f) >= filas_.size() ? -1 : f;
  }

  void Botones() {
    const int f = Actual();
    edita_->setEnabled(f >= 0);
    retira_->setEnabled(f >= 0);
    const bool deBaja = f >= 0 && filas_[static_cast<std::size_t>(f)].deBaja;
    retira_->setText(!catalogo_.conEstado ? QStringLiteral("&Quitar")
                     : deBaja             ? QStringLiteral("&Reactivar")
                                          : QStringLiteral("Dar de &baja"));
  }

  void Edita(const FilaCatalogo* fila) {
    EditorFila editor(conexion_, catalogo_, fila, window());
    if (Atiende(editor) == QDialog::Accepted) Carga();
  }

  void EditaActual() {
    if (const int f = Actual(); f >= 0) {
      const FilaCatalogo fila = filas_[static_cast<std::size_t>(f)];
      Edita(&fila);
      if (f < tabla_->rowCount()) tabla_->selectRow(f);
    }
  }

  void RetiraActual() {
    const int f = Actual();
    if (f < 0) return;
    const FilaCatalogo fila = filas_[static_cast<std::size_t>(f)];
    const std::string nombre = tabla_->item(f, 0)->text().toStdString();
    if (!fila.deBaja && !Confirma((catalogo_.conEstado ? "¿Desea dar de baja «" : "¿Desea quitar «") + nombre +
                                      "» de «" + std::string(catalogo_.titulo) + "»?",
                                  292, window()))
      return;
    try {
      Retira(conexion_, catalogo_, fila);
    } catch (const com::Error& e) {
      Avisa(e.Descripcion(), 16, window());
    }
    Carga();
  }

  autonomo::Conexion& conexion_;
  const Catalogo& catalogo_;
  QLineEdit* filtro_;
  QTableWidget* tabla_;
  QPushButton *edita_, *retira_;
  std::vector<FilaCatalogo> filas_;
};

}  // namespace

std::string BuscaReservacion(autonomo::Conexion& conexion, EscritorioQt& escritorio) {
  std::vector<std::pair<std::string, std::string>> filas;
  const auto rs = conexion.Consulta(
      "SELECT R.Rs_Folio, C.Cl_Razon_Social_1, R.Rs_Llegada, R.Rs_Salida, R.Es_Cve_Estado FROM Reservacion R "
      "LEFT JOIN Cliente C ON C.Cl_Cve_Cliente = R.Rs_Huesped ORDER BY R.Rs_Llegada DESC, R.Rs_Folio DESC");
  for (; !rs->Eof(); rs->MoveNext()) {
    std::string nombre = Celda(*rs, 1) + "   " + Celda(*rs, 2) + " – " + Celda(*rs, 3);
    if (Celda(*rs, 4) == esquema::kCancelada) nombre += "   (cancelada)";
    filas.emplace_back(Celda(*rs, 0), nombre);
  }
  return escritorio.EligeDeCatalogo("Reservaciones", filas);
}

void AbreCatalogos(autonomo::Conexion& conexion, const std::string& codigo, QWidget* padre) {
  const auto catalogos = CatalogosDe(codigo);
  if (catalogos.empty()) return;
  Ficha ficha(Q(catalogos.front()->titulo), padre);
  ficha.setObjectName(QStringLiteral("catalogos"));
  if (catalogos.size() == 1) {
    ficha.caja()->addWidget(new Lista(conexion, *catalogos.front(), &ficha));
  } else {
    auto* hojas = new QTabWidget(&ficha);
    for (const Catalogo* c : catalogos) hojas->addTab(new Lista(conexion, *c, hojas), Q(c->titulo));
    ficha.caja()->addWidget(hojas);
  }
  if (BuscaCatalogo("Parametro") == catalogos.front()) {
    auto* nota =
        new QLabel(QStringLiteral("Los parámetros y los permisos valen al abrir otra vez el programa."), &ficha);
    Atenua(*nota);
    ficha.caja()->addWidget(nota);
  }
  ficha.Termina();
  AjustaAPantalla(ficha, {760, 560});
  ficha.exec();
}

void MuestraCliente(autonomo::Conexion& conexion, const std::string& clave, QWidget* padre) {
  const auto cliente = conexion.Consulta(
      "SELECT Cl_Razon_Social_1, Cl_Telefono, Cl_Correo, Es_Cve_Estado FROM Cliente WHERE Cl_Cve_Cliente = ?", {clave});
  Ficha ficha(QStringLiteral("Cliente ") + Q(clave), padre);
  ficha.setObjectName(QStringLiteral("cliente"));
  if (cliente->Eof()) {
    ficha.Titula(QStringLiteral("El cliente ") + Q(clave) + QStringLiteral(" no existe"));
  } else {
    ficha.Titula(Q(Celda(*cliente, 0)));
    auto* datos = new QFormLayout;
    datos->addRow(QStringLiteral("Clave:"), new QLabel(Q(clave), &ficha));
    datos->addRow(QStringLiteral("Teléfono:"), new QLabel(Q(Celda(*cliente, 1)), &ficha));
    datos->addRow(QStringLiteral("Correo:"), new QLabel(Q(Celda(*cliente, 2)), &ficha));
    ficha.caja()->addLayout(datos);
  }
  auto* tabla = CreaTabla({QStringLiteral("Folio"), QStringLiteral("Llegada"), QStringLiteral("Salida"),
                           QStringLiteral("Estado"), QStringLiteral("Referencia")},
                          &ficha);
  tabla->setAccessibleName(QStringLiteral("Reservaciones del cliente"));
  const auto rs = conexion.Consulta(
      "SELECT Rs_Folio, Rs_Llegada, Rs_Salida, Es_Cve_Estado, Rs_Referencia FROM Reservacion "
      "WHERE Cl_Cve_Cliente = ? OR Rs_Huesped = ? ORDER BY Rs_Llegada DESC",
      {clave, clave});
  for (; !rs->Eof(); rs->MoveNext()) {
    const std::string estado = Celda(*rs, 3);
    AgregaFila(
        tabla,
        {Q(Celda(*rs, 0)), Q(Celda(*rs, 1)), Q(Celda(*rs, 2)), Q(autonomo::EstadoLegible(estado)), Q(Celda(*rs, 4))},
        estado == esquema::kCancelada);
  }
  tabla->resizeColumnsToContents();
  ficha.caja()->addWidget(tabla);
  ficha.Termina();
  AjustaAPantalla(ficha, {560, 440});
  ficha.exec();
}

void MuestraPrecios(autonomo::Conexion& conexion, com::Fecha noche, QWidget* padre) {
  const QString dia =
      QLocale(QLocale::Spanish, QLocale::Mexico).toString(ADate(noche), QStringLiteral("dddd d 'de' MMMM 'de' yyyy"));
  Ficha ficha(QStringLiteral("Precios del ") + Q(regional::FechaCorta(noche)), padre);
  ficha.setObjectName(QStringLiteral("precios"));
  ficha.Titula(QStringLiteral("Noche del ") + dia);
  auto* tabla = CreaTabla({QStringLiteral("Tipo"), QStringLiteral("Descripción"), QStringLiteral("Personas"),
                           QStringLiteral("Precio"), QStringLiteral("Adulto extra"), QStringLiteral("Menor extra")},
                          &ficha);
  tabla->setAccessibleName(QStringLiteral("Precios por tipo de habitación"));
  for (int c = 2; c < tabla->columnCount(); ++c) {
    tabla->horizontalHeaderItem(c)->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
  }
  const auto rs = conexion.Consulta(
      "SELECT Th_Cve_Tipo_Habitacion, Th_Descripcion, Th_Num_Personas, Pr_Cve_Producto FROM Tipo_Habitacion "
      "WHERE Es_Cve_Estado <> 'BA' ORDER BY Th_Cve_Tipo_Habitacion");
  for (; !rs->Eof(); rs->MoveNext()) {
    const auto tarifas = autonomo::LeeTarifas(conexion, Celda(*rs, 0), noche, com::MasDias(noche, 1));
    const autonomo::Tarifa* tarifa = autonomo::TarifaDeNoche(tarifas, noche);
    QString precio = QStringLiteral("sin precio"), adulto, menor;
    if (tarifa != nullptr) {
      precio = Q(regional::Moneda(tarifa->precio));
      adulto = Q(regional::Moneda(tarifa->adultoExtra));
      menor = Q(regional::Moneda(tarifa->menorExtra));
    } else if (const auto lista = autonomo::LeePrecioLista(conexion, Celda(*rs, 3))) {
      precio = Q(regional::Moneda(*lista));
    }
    AgregaFila(tabla, {Q(Celda(*rs, 0)), Q(Celda(*rs, 1)), Q(Celda(*rs, 2)), precio, adulto, menor}, false,
               {2, 3, 4, 5});
  }
  tabla->resizeColumnsToContents();
  ficha.caja()->addWidget(tabla);
  auto* nota = new QLabel(QStringLiteral("Por noche, con impuestos, en moneda local."), &ficha);
  Atenua(*nota);
  ficha.caja()->addWidget(nota);
  ficha.Termina();
  AjustaAPantalla(ficha, {600, 360});
  ficha.exec();
}

void MuestraRegistro(autonomo::Conexion& conexion, const std::string& tabla, const std::string& columna,
                     const std::string& clave, QWidget* padre) {
  const esquema::Tabla* definida = esquema::BuscaTabla(tabla);
  const esquema::Columna* llave = esquema::BuscaColumna(columna);
  if (definida == nullptr || llave == nullptr) {
    throw com::Error(com::error::kArgumento, "No existe la tabla " + tabla + " con la columna " + columna);
  }
  const QString titulo = com::IgualSinCaja(tabla, "Reservacion") ? QStringLiteral("Reservación") : Q(tabla);
  Ficha ficha(titulo + QLatin1Char(' ') + Q(clave), padre);
  ficha.setObjectName(QStringLiteral("registro"));
  auto* hojas = new QTabWidget(&ficha);
  auto* datos = CreaTabla({QStringLiteral("Columna"), QStringLiteral("Valor")}, hojas);
  datos->setAccessibleName(QStringLiteral("Columnas del registro"));
  const auto rs = conexion.Consulta(
      "SELECT * FROM " + std::string(definida->nombre) + " WHERE " + std::string(llave->nombre) + " = ?", {clave});
  if (!rs->Eof()) {
    for (std::size_t i = 0; i < rs->Nombres().size(); ++i) AgregaFila(datos, {Q(rs->Nombres()[i]), Q(Celda(*rs, i))});
  }
  datos->resizeColumnToContents(0);
  auto* cambios = CreaTabla({QStringLiteral("Fecha"), QStringLiteral("Usuario"), QStringLiteral("Cambio")}, hojas);
  cambios->setAccessibleName(QStringLiteral("Bitácora del registro"));
  cambios->setWordWrap(true);
  const auto bitacora = conexion.Consulta(
      "SELECT Bt_Fecha, Bt_Usuario, Bt_Texto FROM Bitacora WHERE Bt_Clave = ? ORDER BY Bt_Id", {clave});
  for (; !bitacora->Eof(); bitacora->MoveNext()) {
    AgregaFila(cambios, {Q(Celda(*bitacora, 0)), Q(Celda(*bitacora, 1)), Q(Celda(*bitacora, 2)).trimmed()});
  }
  cambios->resizeColumnToContents(0);
  cambios->resizeRowsToContents();
  hojas->addTab(datos, QStringLiteral("Datos"));
  hojas->addTab(cambios, QStringLiteral("Bitácora"));
  ficha.caja()->addWidget(hojas);
  ficha.Termina();
  AjustaAPantalla(ficha, {600, 520});
  ficha.exec();
}

void RegistraPantallas(EscritorioQt& escritorio, autonomo::Anfitrion& anfitrion) {
  const auto base = [&anfitrion]() -> autonomo::Conexion& { return *anfitrion.conexion(); };
  using Argumentos = std::vector<com::Variant>;
  for (const char* codigo : {"CA014", "CA016", "CA039", "CA153", "CONFIG"}) {
    escritorio.Registra(codigo,
                        [base, codigo](const Argumentos&, QWidget* padre) { AbreCatalogos(base(), codigo, padre); });
  }
  escritorio.Registra("MuestraCliente", [base](const Argumentos& a, QWidget* padre) {
    MuestraCliente(base(), com::CStr(a.at(0)), padre);
  });
  escritorio.Registra("MuestraPrecios", [base](const Argumentos& a, QWidget* padre) {
    MuestraPrecios(base(), com::SoloFecha(com::CDate(a.at(0))), padre);
  });
  escritorio.Registra("MuestraRegistro", [base](const Argumentos& a, QWidget* padre) {
    MuestraRegistro(base(), com::CStr(a.at(0)), com::CStr(a.at(1)), com::CStr(a.at(2)), padre);
  });
}

}  // namespace vista
