#include "desktop/hoja_parametros.h"

#include <QHBoxLayout>
#include <QIcon>
#include <QPixmap>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>

#include "desktop/dialogos.h"
#include "desktop/editor_catalogos.h"
#include "desktop/entradas.h"
#include "desktop/estilo.h"
#include "desktop/guarda.h"
#include "desktop/iconos.h"
#include "desktop/tablas.h"
#include "desktop/vista.h"
#include "platform/ado/celda.h"
#include "platform/com/error.h"

namespace vista {

using autonomo::DefinicionParametro;
using autonomo::TipoParametro;

namespace {

// "1" or "0" as the entry's choices have it; another text as it is.
QString SiNoDe(const std::string& valor) {
  try {
    if (!com::Recorta(valor).empty()) return com::CBool(valor) ? QStringLiteral("1") : QStringLiteral("0");
    return QStringLiteral("0");
  } catch (const com::Error&) {
    return Q(valor);
  }
}

QString Legible(const DefinicionParametro& definicion, const std::string& valor) {
  if (!autonomo::MotivoIlegible(definicion, valor).empty())
    return QStringLiteral("«%1» no se puede leer").arg(Q(valor));
  if (definicion.tipo == TipoParametro::SiNo)
    return SiNoDe(valor) == QLatin1String("1") ? QStringLiteral("Sí") : QStringLiteral("No");
  if (definicion.tipo == TipoParametro::Color)
    return valor.empty() ? QStringLiteral("el del tablero") : ColorLegible(valor);
  return Q(valor);
}

Entrada EntradaDe(const DefinicionParametro& definicion, const std::string& valor, QWidget* padre) {
  switch (definicion.tipo) {
    case TipoParametro::SiNo:
      return EntradaLista(SiNoDe(valor), {{"1", "Sí"}, {"0", "No"}}, padre);
    case TipoParametro::Seguridad:
      return EntradaLista(Q(valor),
                          {{"", "STARTTLS fuera de este equipo"},
                           {"TLS", "TLS desde el principio"},
                           {"STARTTLS", "STARTTLS"},
                           {"NINGUNA", "Ninguna: sin cifrar"}},
                          padre);
    case TipoParametro::Color:
      return EntradaColor(Q(valor), padre);
    default:
      return EntradaTexto(Q(valor), {},
                          definicion.tipo == TipoParametro::Numero || definicion.tipo == TipoParametro::Puerto ||
                              definicion.tipo == TipoParametro::Hora,
                          padre);
  }
}

}  // namespace

HojaParametros::HojaParametros(autonomo::Conexion& conexion, QWidget* padre)
    : QWidget(padre),
      conexion_(conexion),
      lista_(new TablaFiltrada({QStringLiteral("Parámetro"), QStringLiteral("Valor"), QStringLiteral("Para qué sirve")},
                               QStringLiteral("Parámetros"), this)),
      edita_(new QPushButton(Icono(QStringLiteral("editar")), QStringLiteral("&Editar"), this)),
      restablece_(new QPushButton(Icono(QStringLiteral("limpiar")), QStringLiteral("&Predeterminado"), this)) {
  auto* caja = new QVBoxLayout(this);
  caja->addWidget(lista_);
  auto* botones = new QHBoxLayout;
  for (QPushButton* b : {edita_, restablece_}) {
    b->setAutoDefault(false);
    botones->addWidget(b);
  }
  edita_->setObjectName(QStringLiteral("editar"));
  restablece_->setObjectName(QStringLiteral("restablecer"));
  botones->addStretch();
  caja->addLayout(botones);
  setFocusProxy(lista_);
  lista_->tabla()->setObjectName(QStringLiteral("Parametro"));
  lista_->alAbrir = [this] { Edita(); };
  lista_->alElegir = [this] { Botones(); };
  connect(edita_, &QPushButton::clicked, this, [this] { Edita(); });
  connect(restablece_, &QPushButton::clicked, this, [this] { Restablece(); });
  Carga();
}

void HojaParametros::AgregaParametro(const DefinicionParametro& definicion) {
  const std::optional<std::string> guardado = autonomo::ParametroGuardado(conexion_, definicion.clave);
  const std::string valor = guardado.value_or(std::string(definicion.defecto));
  AgregaFila(lista_->tabla(), {Q(definicion.clave), Legible(definicion, valor), Q(definicion.explicacion)});
  QTableWidgetItem* celda = lista_->tabla()->item(lista_->tabla()->rowCount() - 1, 1);
  if (!guardado) celda->setForeground(Colores().tenue);
  if (!autonomo::MotivoIlegible(definicion, valor).empty()) {
    celda->setForeground(Colores().peligro);
  } else if (definicion.tipo == TipoParametro::Color && !valor.empty()) {
    constexpr int kMuestra = 14;  // pixels
    QPixmap cuadro(kMuestra, kMuestra);
    cuadro.fill(ColorDe(valor));
    QIcon muestra(cuadro);
    muestra.addPixmap(cuadro, QIcon::Selected);  // not toned in the chosen row
    celda->setIcon(muestra);
  }
}

void HojaParametros::Carga() {
  lista_->tabla()->setRowCount(0);
  Corre([this] {
    for (const DefinicionParametro& d : autonomo::Parametros()) AgregaParametro(d);
    const auto guardados = conexion_.Consulta("SELECT Pm_Clave, Pm_Valor FROM Parametro ORDER BY Pm_Clave");
    for (; !guardados->Eof(); guardados->MoveNext()) {
      if (autonomo::BuscaParametro(ado::Celda(*guardados, 0)) != nullptr) continue;
      AgregaFila(lista_->tabla(),
                 {Q(ado::Celda(*guardados, 0)), Q(ado::Celda(*guardados, 1)), QStringLiteral("No se usa")}, true);
    }
  });
  constexpr int kAnchoValor = 180;  // pixels; the explanation gets the room of a long value
  lista_->tabla()->resizeColumnsToContents();
  lista_->tabla()->setColumnWidth(1, std::min(kAnchoValor, lista_->tabla()->columnWidth(1)));
  lista_->Filtra();
}

void HojaParametros::Elige(const std::string& clave) {
  QTableWidget* tabla = lista_->tabla();
  for (int f = 0; f < tabla->rowCount(); ++f) {
    if (tabla->item(f, 0)->text() != Q(clave)) continue;
    tabla->selectRow(f);
    tabla->scrollToItem(tabla->item(f, 0));
  }
}

std::string HojaParametros::Clave() const {
  const int f = lista_->Actual();
  return f < 0 ? std::string() : lista_->tabla()->item(f, 0)->text().toStdString();
}

const DefinicionParametro* HojaParametros::Actual() const { return autonomo::BuscaParametro(Clave()); }

void HojaParametros::Botones() {
  edita_->setEnabled(Actual() != nullptr);
  restablece_->setText(Actual() == nullptr ? QStringLiteral("&Quitar") : QStringLiteral("&Predeterminado"));
  Corre([this] { restablece_->setEnabled(autonomo::ParametroGuardado(conexion_, Clave()).has_value()); });
}

void HojaParametros::Edita() {
  const DefinicionParametro* definicion = Actual();
  if (definicion == nullptr) return;
  const std::string clave(definicion->clave);
  Editor editor(Q(clave), window());
  editor.Agrega(QStringLiteral("Valor"), QStringLiteral("Pm_Valor"),
                EntradaDe(*definicion, autonomo::ValorParametro(conexion_, clave), &editor),
                Q(definicion->explicacion));
  editor.guarda = [&](const std::vector<std::string>& textos) -> std::optional<Editor::Rechazo> {
    autonomo::GuardaParametro(conexion_, clave, com::Recorta(textos.front()));
    return std::nullopt;
  };
  const int fila = lista_->Actual();
  if (editor.Edita()) Carga();
  lista_->tabla()->selectRow(fila);
}

void HojaParametros::Restablece() {
  const int fila = lista_->Actual();
  Corre([this] { autonomo::OlvidaParametro(conexion_, Clave()); });
  Carga();
  if (fila < lista_->tabla()->rowCount()) lista_->tabla()->selectRow(fila);
}

}  // namespace vista
