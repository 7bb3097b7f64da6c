#include "desktop/hoja_usuarios.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>
#include <algorithm>
#include <optional>
#include <vector>

#include "desktop/editor_catalogos.h"
#include "desktop/entradas.h"
#include "desktop/estilo.h"
#include "desktop/exportar.h"
#include "desktop/guarda.h"
#include "desktop/iconos.h"
#include "desktop/tablas.h"
#include "desktop/vista.h"
#include "host/standalone/listados.h"
#include "host/standalone/permisos.h"
#include "platform/com/texto.h"

namespace vista {

namespace {

Entrada EntradaCasilla(bool puesta, QWidget* padre) {
  auto* casilla = new QCheckBox(padre);
  casilla->setChecked(puesta);
  return {casilla, [casilla] { return std::string(casilla->isChecked() ? "1" : ""); }};
}

Entrada EntradaContrasena(const QString& ayuda, QWidget* padre) {
  Entrada entrada = EntradaTexto({}, ayuda, false, padre);
  qobject_cast<QLineEdit*>(entrada.widget)->setEchoMode(QLineEdit::Password);
  return entrada;
}

QString Nombres(const std::vector<std::string>& derechos) {
  QStringList nombres;
  for (const autonomo::Derecho& d : autonomo::Derechos()) {
    if (std::ranges::find(derechos, d.opcion) != derechos.end()) nombres << QString::fromUtf8(d.nombre);
  }
  return nombres.join(QStringLiteral(", "));
}

std::string Dice(const autonomo::FichaUsuario& ficha) {
  if (ficha.usuario.deBaja) return "está de baja";
  const QString puede = Nombres(ficha.derechos);
  return "se llama «" + ficha.usuario.nombre +
         "» y puede: " + (puede.isEmpty() ? "nada de la lista" : puede.toStdString());
}

// User, name, password and the password again, in this order; a stored user's key stays.
void AgregaContrasena(Editor& editor, const autonomo::Usuario& usuario, const QString& ayuda) {
  const Entrada clave = EntradaTexto(Q(usuario.clave), {}, false, &editor);
  clave.widget->setEnabled(usuario.clave.empty());
  editor.Agrega(QStringLiteral("Usuario"), QStringLiteral("Us_Cve_Usuario"), clave);
  editor.Agrega(QStringLiteral("Nombre"), QStringLiteral("Us_Nombre"),
                EntradaTexto(Q(usuario.nombre), {}, false, &editor));
  editor.Agrega(QStringLiteral("Contraseña"), QStringLiteral("contrasena"), EntradaContrasena(ayuda, &editor));
  editor.Agrega(QStringLiteral("Otra vez"), QStringLiteral("otra_vez"), EntradaContrasena(ayuda, &editor));
}

}  // namespace

HojaUsuarios::HojaUsuarios(autonomo::Conexion& conexion, QWidget* padre)
    : QWidget(padre),
      conexion_(conexion),
      lista_(new TablaFiltrada({QStringLiteral("Usuario"), QStringLiteral("Nombre"), QStringLiteral("Puede")},
                               QStringLiteral("Usuarios"), this)),
      nuevo_(new QPushButton(Icono(QStringLiteral("nuevo")), QStringLiteral("&Nuevo"), this)),
      edita_(new QPushButton(Icono(QStringLiteral("editar")), QStringLiteral("&Editar"), this)) {
  auto* caja = new QVBoxLayout(this);
  caja->addWidget(lista_);
  auto* botones = new QHBoxLayout;
  for (QPushButton* b : {nuevo_, edita_}) {
    b->setAutoDefault(false);
    botones->addWidget(b);
  }
  nuevo_->setObjectName(QStringLiteral("nuevo"));
  edita_->setObjectName(QStringLiteral("editar"));
  auto* donde = new QLabel(this);
  donde->setObjectName(QStringLiteral("donde"));
  Atenua(*donde);
  botones->addWidget(donde, 1);
  botones->addWidget(BotonExportar(
      this, [this] { return autonomo::ListadoDeUsuarios(conexion_); },
      [donde](const QString& texto) { donde->setText(texto); }));
  caja->addLayout(botones);
  setFocusProxy(lista_);
  lista_->tabla()->setObjectName(QStringLiteral("Usuario"));
  lista_->alAbrir = [this] { EditaActual(); };
  lista_->alElegir = [this] { edita_->setEnabled(lista_->Actual() >= 0); };
  connect(nuevo_, &QPushButton::clicked, this, [this] { Edita({}); });
  connect(edita_, &QPushButton::clicked, this, [this] { EditaActual(); });
  Carga();
}

void HojaUsuarios::Carga() {
  lista_->tabla()->setRowCount(0);
  Corre([this] {
    for (const autonomo::Usuario& u : autonomo::Usuarios(conexion_)) {
      const QString puede = u.deBaja ? QStringLiteral("de baja") : Nombres(autonomo::DerechosDe(conexion_, u.clave));
      AgregaFila(lista_->tabla(), {Q(u.clave), Q(u.nombre), puede}, u.deBaja);
    }
  });
  lista_->tabla()->resizeColumnsToContents();
  lista_->Filtra();
}

void HojaUsuarios::EditaActual() {
  const int fila = lista_->Actual();
  if (fila < 0) return;
  const std::string clave = lista_->tabla()->item(fila, 0)->text().toStdString();
  Corre([this, clave] {
    const autonomo::FichaUsuario ficha = autonomo::FichaDe(conexion_, clave);
    if (!ficha.usuario.clave.empty()) return Edita(ficha);
    Carga();
    throw com::Error(com::error::kArgumento, "El usuario " + clave + " ya no está");
  });
}

void HojaUsuarios::Edita(autonomo::FichaUsuario vista) {
  const bool nuevo = vista.usuario.clave.empty();
  Editor editor(nuevo ? QStringLiteral("Usuarios · Nuevo") : Q("Usuarios · " + vista.usuario.clave), window());
  AgregaContrasena(editor, vista.usuario, nuevo ? QString() : QStringLiteral("vacía: la que tiene"));
  for (const autonomo::Derecho& d : autonomo::Derechos()) {
    editor.Agrega(QString::fromUtf8(d.nombre), QString::fromUtf8(d.opcion),
                  EntradaCasilla(std::ranges::find(vista.derechos, d.opcion) != vista.derechos.end(), &editor));
  }
  editor.Agrega(QStringLiteral("De baja"), QStringLiteral("baja"), EntradaCasilla(vista.usuario.deBaja, &editor));
  editor.guarda = [&](const std::vector<std::string>& textos) -> std::optional<Editor::Rechazo> {
    if (textos[2] != textos[3]) return Editor::Rechazo{"Las dos contraseñas no son iguales", 3};
    const std::string clave = com::Recorta(textos[0]);
    const autonomo::FichaUsuario ahora = autonomo::FichaDe(conexion_, clave);
    if (nuevo && !ahora.usuario.clave.empty()) return Editor::Rechazo{"El usuario " + clave + " ya existe", 0};
    if (!nuevo && ahora != vista) {
      vista = ahora;
      return Editor::Rechazo{"Alguien cambió mientras tanto a " + clave + ": ahora " + Dice(ahora) +
                                 ". Al aceptar otra vez queda lo que está aquí",
                             4};
    }
    std::vector<std::string> derechos;
    for (std::size_t i = 0; i < autonomo::Derechos().size(); ++i) {
      if (!textos[4 + i].empty()) derechos.emplace_back(autonomo::Derechos()[i].opcion);
    }
    autonomo::GuardaUsuario(conexion_, {clave, textos[1], !textos.back().empty()},
                            textos[2].empty() ? std::nullopt : std::make_optional(textos[2]), derechos,
                            nuevo ? nullptr : &vista);
    return std::nullopt;
  };
  if (editor.Edita()) Carga();
}

}  // namespace vista
