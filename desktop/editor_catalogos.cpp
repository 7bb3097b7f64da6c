#include "desktop/editor_catalogos.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QTabWidget>
#include <QVBoxLayout>
#include <map>

#include "desktop/archivos.h"
#include "desktop/dialogos.h"
#include "desktop/estilo.h"
#include "desktop/exportar.h"
#include "desktop/guarda.h"
#include "desktop/hoja_parametros.h"
#include "desktop/hoja_usuarios.h"
#include "desktop/iconos.h"
#include "desktop/tablas.h"
#include "desktop/vista.h"
#include "guion/habitaciones_csv.h"
#include "host/standalone/catalogos.h"
#include "host/standalone/pendientes.h"
#include "platform/com/error.h"

namespace vista {

// --- Editor

Editor::Editor(const QString& titulo, QWidget* padre)
    : QDialog(padre), forma_(new QFormLayout), motivo_(new QLabel(this)) {
  setWindowTitle(titulo);
  setObjectName(QStringLiteral("editor_fila"));
  setWindowModality(Qt::WindowModal);
  auto* caja = new QVBoxLayout(this);
  caja->addLayout(forma_);
  QPalette rojo = motivo_->palette();
  rojo.setColor(QPalette::WindowText, Colores().peligro);
  motivo_->setPalette(rojo);
  motivo_->setWordWrap(true);
  caja->addWidget(motivo_);
}

void Editor::Agrega(const QString& titulo, const QString& nombre, const Entrada& entrada, const QString& explicacion) {
  if (!explicacion.isEmpty()) {
    auto* rotulo = new QLabel(explicacion, this);
    rotulo->setWordWrap(true);
    forma_->addRow(rotulo);
  }
  entrada.widget->setObjectName(nombre);
  entrada.widget->setAccessibleName(titulo);
  forma_->addRow(titulo + QStringLiteral(":"), entrada.widget);
  entradas_.push_back(entrada);
}

bool Editor::Edita() {
  // After the entries, so that Tab comes to them first.
  auto* botones = new QDialogButtonBox(this);
  botones->addButton(QStringLiteral("&Guardar"), QDialogButtonBox::AcceptRole)
      ->setObjectName(QStringLiteral("guardar"));
  botones->addButton(QStringLiteral("&Cancelar"), QDialogButtonBox::RejectRole);
  connect(botones, &QDialogButtonBox::accepted, this, [this] { Guarda(); });
  connect(botones, &QDialogButtonBox::rejected, this, &QDialog::reject);
  layout()->addWidget(botones);
  for (const Entrada& e : entradas_) {
    if (!e.widget->isEnabled()) continue;
    e.widget->setFocus();
    if (auto* linea = qobject_cast<QLineEdit*>(e.widget)) linea->selectAll();
    break;
  }
  constexpr int kAncho = 440;  // pixels
  AjustaAPantalla(*this, {std::max(kAncho, sizeHint().width()), sizeHint().height()});
  inicio_ = Textos();
  return Atiende(*this) == QDialog::Accepted;
}

std::vector<std::string> Editor::Textos() const {
  std::vector<std::string> textos;
  for (const Entrada& e : entradas_) textos.push_back(e.texto());
  return textos;
}

void Editor::reject() {
  if (PermiteDejar(Textos() != inicio_, this)) QDialog::reject();
}

void Editor::Guarda() {
  try {
    if (const auto rechazo = guarda(Textos())) return Rechaza(*rechazo);
  } catch (const com::Error& e) {
    return Rechaza({e.Descripcion(), 0});
  }
  accept();
}

void Editor::Rechaza(const Rechazo& rechazo) {
  motivo_->setText(Q(rechazo.motivo));
  if (rechazo.campo < entradas_.size()) entradas_[rechazo.campo].widget->setFocus();
}

namespace {

// --- one row of a catalogue

std::string ConNombre(const std::string& clave, const std::string& nombre) { return clave + "  " + nombre; }

Entrada EntradaDe(autonomo::Conexion& conexion, const autonomo::CampoCatalogo& campo, const QString& texto,
                  QWidget* padre) {
  switch (campo.tipo) {
    case autonomo::TipoCampo::Referencia: {
      Opciones opciones;
      if (!campo.vacio.empty()) opciones.emplace_back("", campo.vacio);
      for (const auto& [clave, nombre] : LeeReferencia(conexion, campo.referencia))
        opciones.emplace_back(clave, ConNombre(clave, nombre));
      return EntradaLista(texto, opciones, padre);
    }
    case autonomo::TipoCampo::Nota:
      return EntradaNota(texto, padre);
    case autonomo::TipoCampo::Fecha:
      return EntradaFecha(texto, Q(campo.ayuda), padre);
    default:
      return EntradaTexto(texto, Q(campo.ayuda), EsNumero(campo), padre);
  }
}

void Advierte(autonomo::Conexion& conexion, const autonomo::Catalogo& catalogo,
              const std::vector<com::Variant>& valores, QWidget* padre) {
  std::string aviso;
  Corre([&] { aviso = Advertencia(conexion, catalogo, valores); });
  if (!aviso.empty()) Avisa(aviso, caja::kAviso, padre);
}

// antes: the row to change; null for a new one. False when nothing was stored.
bool EditaFila(autonomo::Conexion& conexion, const autonomo::Catalogo& catalogo, const autonomo::FilaCatalogo* antes,
               QWidget* padre) {
  Editor editor(Q(catalogo.titulo) + (antes == nullptr ? QStringLiteral(" · Nuevo") : QStringLiteral(" · Editar")),
                padre);
  for (std::size_t i = 0; i < catalogo.campos.size(); ++i) {
    const autonomo::CampoCatalogo& campo = catalogo.campos[i];
    const bool consecutivo = campo.columna == catalogo.consecutivo;
    const QString texto = antes != nullptr ? Q(TextoDe(campo, antes->valores[i])) : QString();
    const Entrada entrada = EntradaDe(conexion, campo, texto, &editor);
    entrada.widget->setToolTip(Q(campo.ayuda));
    entrada.widget->setEnabled(!consecutivo && (antes == nullptr || !campo.llave || catalogo.todoEsLlave));
    if (auto* linea = qobject_cast<QLineEdit*>(entrada.widget); consecutivo && antes == nullptr && linea != nullptr)
      linea->setPlaceholderText(QStringLiteral("se asigna al guardar"));
    editor.Agrega(Q(campo.titulo), Q(campo.columna), entrada);
  }
  std::vector<com::Variant> valores;
  editor.guarda = [&](const std::vector<std::string>& textos) -> std::optional<Editor::Rechazo> {
    std::string motivo = Valida(catalogo, textos, MascaraDe(conexion, catalogo), valores);
    if (!motivo.empty()) return Editor::Rechazo{std::move(motivo), valores.size()};
    if (antes == nullptr) {
      Inserta(conexion, catalogo, valores);
    } else {
      Cambia(conexion, catalogo, *antes, valores);
    }
    return std::nullopt;
  };
  if (!editor.Edita()) return false;
  Advierte(conexion, catalogo, valores, padre);
  return true;
}

// --- one catalogue

class Lista : public QWidget {
 public:
  Lista(autonomo::Conexion& conexion, const autonomo::Catalogo& catalogo, QWidget* padre)
      : QWidget(padre), conexion_(conexion), catalogo_(catalogo) {
    auto* caja = new QVBoxLayout(this);
    QStringList titulos;
    for (std::size_t i = 0; i < catalogo.campos.size(); ++i) {
      titulos << Q(catalogo.campos[i].titulo);
      if (EsNumero(catalogo.campos[i])) derecha_.push_back(static_cast<int>(i));
    }
    if (catalogo.conEstado) titulos << QStringLiteral("Estado");
    lista_ = new TablaFiltrada(titulos, Q(catalogo.titulo), this);
    lista_->tabla()->setObjectName(Q(catalogo.tabla));
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
    if (catalogo.tabla == "Habitacion") {
      connect(boton(QStringLiteral("&Traer de un archivo…"), "registro", QStringLiteral("traer")),
              &QPushButton::clicked, this, [this] { TraeHabitaciones(); });
    }
    auto* donde = new QLabel(this);
    donde->setObjectName(QStringLiteral("donde"));
    Atenua(*donde);
    botones->addWidget(donde, 1);
    botones->addWidget(BotonExportar(
        this, [this] { return ListadoDe(conexion_, catalogo_); },
        [donde](const QString& texto) { donde->setText(texto); }));
    caja->addWidget(lista_);
    caja->addLayout(botones);
    setFocusProxy(lista_);
    lista_->alAbrir = [this] { EditaActual(); };
    lista_->alElegir = [this] { Botones(); };
    connect(nuevo, &QPushButton::clicked, this, [this] { Edita(nullptr); });
    connect(edita_, &QPushButton::clicked, this, [this] { EditaActual(); });
    connect(retira_, &QPushButton::clicked, this, [this] { RetiraActual(); });
    Carga();
  }

 private:
  // Names of the rows that a column refers to, by key.
  std::map<QString, QString> Nombres(const autonomo::CampoCatalogo& campo) {
    std::map<QString, QString> nombres;
    if (campo.tipo != autonomo::TipoCampo::Referencia) return nombres;
    for (const auto& [clave, nombre] : LeeReferencia(conexion_, campo.referencia)) nombres[Q(clave)] = Q(nombre);
    return nombres;
  }

  void Carga() {
    std::vector<std::map<QString, QString>> nombres(catalogo_.campos.size());
    Corre([&] {
      filas_ = LeeCatalogo(conexion_, catalogo_);
      for (std::size_t i = 0; i < nombres.size(); ++i) nombres[i] = Nombres(catalogo_.campos[i]);
    });
    QTableWidget* tabla = lista_->tabla();
    tabla->setRowCount(0);
    for (const autonomo::FilaCatalogo& fila : filas_) {
      QStringList textos;
      for (std::size_t i = 0; i < catalogo_.campos.size(); ++i) {
        QString texto = Q(TextoDe(catalogo_.campos[i], fila.valores[i])).simplified();
        if (const auto nombre = nombres[i].find(texto); nombre != nombres[i].end())
          texto += QStringLiteral("  ") + nombre->second;
        if (texto.isEmpty()) texto = Q(catalogo_.campos[i].vacio);
        textos << texto.left(80);
      }
      if (catalogo_.conEstado) textos << Q(EstadoDe(catalogo_, fila));
      AgregaFila(tabla, textos, fila.deBaja, derecha_);
    }
    tabla->resizeColumnsToContents();
    lista_->Filtra();
  }

  void Botones() {
    const int f = lista_->Actual();
    edita_->setEnabled(f >= 0);
    retira_->setEnabled(f >= 0);
    const bool deBaja = f >= 0 && filas_[static_cast<std::size_t>(f)].deBaja;
    retira_->setText(!catalogo_.conEstado    ? QStringLiteral("&Quitar")
                     : deBaja                ? QStringLiteral("&Reactivar")
                     : catalogo_.todoEsLlave ? QStringLiteral("&Levantar")
                                             : QStringLiteral("Dar de &baja"));
  }

  void Edita(const autonomo::FilaCatalogo* fila) {
    if (EditaFila(conexion_, catalogo_, fila, window())) Carga();
  }

  void EditaActual() {
    const int f = lista_->Actual();
    if (f < 0) return;
    const autonomo::FilaCatalogo fila = filas_[static_cast<std::size_t>(f)];
    Edita(&fila);
    if (f < lista_->tabla()->rowCount()) lista_->tabla()->selectRow(f);
  }

  // Rooms in bulk: what would come is shown before, and what cannot.
  void TraeHabitaciones() {
    const QString ruta =
        PreguntaRutaCsv(QStringLiteral("Habitaciones: habitacion,descripcion,tipo,grupo,area"), window());
    if (ruta.isEmpty()) return;
    try {
      const guion::AltaHabitaciones alta = guion::RevisaHabitaciones(conexion_, ruta.toStdString());
      if (!alta.malas.empty()) {
        MuestraMalas(alta);
      } else if (Confirma("¿Desea agregar " + guion::Dice(alta) + "?", caja::kPregunta, window())) {
        guion::GuardaHabitaciones(conexion_, alta);
      }
    } catch (const com::Error& e) {
      Avisa(e.Descripcion(), caja::kAviso, window());
    }
    Carga();
  }

  void MuestraMalas(const guion::AltaHabitaciones& alta) {
    Ficha ficha(QStringLiteral("Renglones que no se pueden agregar"), window());
    ficha.setObjectName(QStringLiteral("malas"));
    ficha.Titula(QStringLiteral("No se agregó ninguna habitación"));
    auto* tabla = CreaTabla({QStringLiteral("Línea"), QStringLiteral("Por qué")}, &ficha);
    for (const guion::LineaMala& mala : alta.malas) {
      AgregaFila(tabla, {QString::number(mala.linea), Q(mala.motivo)}, false, {0});
    }
    tabla->resizeColumnsToContents();
    ficha.caja()->addWidget(tabla);
    ficha.Termina(true);
    AjustaAPantalla(ficha, {560, 360});
    Atiende(ficha);
  }

  void RetiraActual() {
    const int f = lista_->Actual();
    if (f < 0) return;
    const autonomo::FilaCatalogo fila = filas_[static_cast<std::size_t>(f)];
    const std::string nombre = lista_->tabla()->item(f, 0)->text().toStdString();
    if (!fila.deBaja && !Confirma((catalogo_.todoEsLlave ? "¿Desea levantar «"
                                   : catalogo_.conEstado ? "¿Desea dar de baja «"
                                                         : "¿Desea quitar «") +
                                      nombre + "» de «" + std::string(catalogo_.titulo) + "»?",
                                  caja::kPregunta, window()))
      return;
    try {
      Retira(conexion_, catalogo_, fila);
      if (!catalogo_.conEstado || fila.deBaja) Advierte(conexion_, catalogo_, fila.valores, window());
    } catch (const com::Error& e) {
      Avisa(e.Descripcion(), caja::kCritico, window());
    }
    Carga();
  }

  autonomo::Conexion& conexion_;
  const autonomo::Catalogo& catalogo_;
  TablaFiltrada* lista_;
  QPushButton *edita_, *retira_;
  std::vector<int> derecha_;
  std::vector<autonomo::FilaCatalogo> filas_;
};

}  // namespace

void AbreCatalogos(autonomo::Conexion& conexion, const std::string& codigo, QWidget* padre,
                   const HojaInicial& inicial) {
  const auto catalogos = autonomo::CatalogosDe(codigo);
  if (catalogos.empty()) return;
  const bool configuracion = codigo == anfitrion::pantalla::kConfiguracion;
  Ficha ficha(configuracion ? QStringLiteral("Configuración") : Q(catalogos.front()->titulo), padre);
  ficha.setObjectName(QStringLiteral("catalogos"));
  if (catalogos.size() == 1) {
    ficha.caja()->addWidget(new Lista(conexion, *catalogos.front(), &ficha));
  } else {
    auto* hojas = new QTabWidget(&ficha);
    const auto agrega = [&](QWidget* hoja, const QString& titulo, std::string_view tabla) {
      hojas->addTab(hoja, titulo);
      if (tabla == inicial.tabla) hojas->setCurrentWidget(hoja);
    };
    if (configuracion) {
      auto* parametros = new HojaParametros(conexion, hojas);
      agrega(parametros, QStringLiteral("Parámetros"), autonomo::kHojaParametros);
      parametros->Elige(inicial.parametro);
      agrega(new HojaUsuarios(conexion, hojas), QStringLiteral("Usuarios"), autonomo::kHojaUsuarios);
    }
    for (const autonomo::Catalogo* c : catalogos) agrega(new Lista(conexion, *c, hojas), Q(c->titulo), c->tabla);
    ficha.caja()->addWidget(hojas);
    hojas->currentWidget()->setFocus();
  }
  if (configuracion) {
    auto* nota =
        new QLabel(QStringLiteral("Los parámetros y los permisos valen al abrir otra vez el programa."), &ficha);
    Atenua(*nota);
    ficha.caja()->addWidget(nota);
  }
  ficha.Termina();
  AjustaAPantalla(ficha, {configuracion ? 980 : 760, 560});
  ficha.exec();
}

}  // namespace vista
