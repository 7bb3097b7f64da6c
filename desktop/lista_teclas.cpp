#include "desktop/lista_teclas.h"

#include <QKeySequence>

#include "desktop/teclado_grid.h"
#include "desktop/teclas.h"
#include "desktop/vista_barra.h"
#include "platform/controls/control.h"

namespace vista {

namespace {

// The screens' own, which no view acts on.
struct TeclaDePantalla {
  int codigo;  // controles::tecla
  const char* que;
};
constexpr TeclaDePantalla kDePantalla[] = {
    {controles::tecla::kF3, "catálogo de habitaciones, desde los renglones"},
    {controles::tecla::kF6, "tablero de disponibilidad"},
};

}  // namespace

std::vector<TeclaUsada> TeclasDelPrograma(const Contexto& contexto) {
  std::vector<TeclaUsada> teclas;
  for (const auto& [tecla, que] : AtajosDeLaBarra()) teclas.push_back({tecla, que, QStringLiteral("barra")});
  for (const Contexto::Opcion& o : contexto.menu) {
    if (o.tecla == 0) continue;
    QString titulo = o.titulo;
    titulo.remove(QLatin1Char('&')).remove(QStringLiteral("…"));
    teclas.push_back({NombreDeAtajo(QKeySequence(o.tecla)), titulo, QStringLiteral("pantalla, menú del hotel")});
  }
  for (const TeclaDePantalla& t : kDePantalla) {
    teclas.push_back(
        {NombreDeAtajo(QKeySequence(TeclaQt(t.codigo))), QString::fromUtf8(t.que), QStringLiteral("pantalla")});
  }
  for (const TeclaDeCampo* t : kTeclasDeCampo) {
    teclas.push_back({NombreDeAtajo(QKeySequence(QKeyCombination(t->modificador, t->tecla))), QString::fromUtf8(t->que),
                      QStringLiteral("campos")});
  }
  for (const TecladoGrid::Dicha& d : TecladoGrid::Dichas()) {
    teclas.push_back({QString::fromUtf8(d.teclas), QString::fromUtf8(d.que), QString::fromUtf8(d.donde)});
  }
  return teclas;
}

}  // namespace vista
