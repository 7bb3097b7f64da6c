#include "desktop/exportar.h"

#include <QShortcut>

#include "desktop/archivos.h"
#include "desktop/dialogos.h"
#include "desktop/guarda.h"
#include "desktop/iconos.h"
#include "desktop/vista.h"
#include "host/standalone/exportacion.h"
#include "platform/com/error.h"
#include "publico/publico.h"

namespace vista {

namespace {

const std::vector<TipoDeArchivo>& TiposDeLista() {
  static const std::vector<TipoDeArchivo> tipos{
      {QStringLiteral("Hoja de cálculo, separada por comas: México, Centroamérica"), QStringLiteral("csv")},
      {QStringLiteral("Hoja de cálculo, separada por punto y coma: España, Sudamérica"), QStringLiteral("csv")},
      {QStringLiteral("Documento PDF"), QStringLiteral("pdf")}};
  return tipos;
}

// Asks for a file until it is written, or none is wanted.
void Guarda(const QString& titulo, const QString& nombre, const std::vector<TipoDeArchivo>& tipos, QWidget* padre,
            const std::function<void(const RutaElegida&)>& escribe) {
  while (const auto elegida = PreguntaRuta(titulo, nombre, tipos, padre)) {
    try {
      return escribe(*elegida);
    } catch (const com::Error& e) {
      Avisa(e.Descripcion(), 48, padre);
    }
  }
}

}  // namespace

void ExportaLista(const listado::Listado& lista, QWidget* padre) {
  const autonomo::Membrete membrete{publico::LeeTexto(anfitrion::parametro::kNombreHotel),
                                    publico::Utilerias().FechaServidor()};
  Guarda(QStringLiteral("Exportar ") + Q(lista.titulo), Q(lista.titulo), TiposDeLista(), padre,
         [&](const RutaElegida& elegida) {
           const auto formato = elegida.tipo == 1 ? listado::kConPuntoYComa : listado::kConComas;
           autonomo::Exporta(lista, membrete, formato, elegida.ruta.toStdString());
         });
}

QPushButton* BotonExportar(QWidget* ventana, std::function<listado::Listado()> lista) {
  auto* boton = new QPushButton(QStringLiteral("E&xportar… (Ctrl+E)"), ventana);
  boton->setObjectName(QStringLiteral("exportar"));
  boton->setAutoDefault(false);
  QObject::connect(boton, &QPushButton::clicked, ventana,
                   [ventana, lista = std::move(lista)] { Corre([&] { ExportaLista(lista(), ventana); }); });
  auto* atajo = new QShortcut(QKeySequence(QStringLiteral("Ctrl+E")), ventana);
  atajo->setContext(Qt::WidgetWithChildrenShortcut);
  QObject::connect(atajo, &QShortcut::activated, boton, &QPushButton::click);
  return boton;
}

}  // namespace vista
