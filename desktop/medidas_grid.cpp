#include "desktop/medidas_grid.h"

#include <QFontMetrics>
#include <algorithm>
#include <cmath>

#include "desktop/escala.h"
#include "desktop/estilo.h"
#include "desktop/modelo_grid.h"
#include "desktop/vista.h"
#include "platform/com/error.h"
#include "platform/regional/regional.h"

namespace vista {

namespace {

// An amount of a line, whose decimals may be cut short.
bool EsImporte(const controles::Columna& columna, const PistasGrid& pistas) {
  return columna.tipo == controles::TipoColumna::Doble &&
         std::find(pistas.enteras.begin(), pistas.enteras.end(), columna.clave) == pistas.enteras.end();
}

}  // namespace

// Texts come again with every load: each is measured once.
int MedidasGrid::AnchoTexto(const QString& texto) const {
  constexpr qsizetype kTextos = 2000;
  if (const auto medido = anchos_.constFind(texto); medido != anchos_.constEnd()) return *medido;
  if (anchos_.size() >= kTextos) anchos_.clear();
  const int ancho = QFontMetrics(Fuente(Letra::Normal)).horizontalAdvance(texto);
  anchos_.insert(texto, ancho);
  return ancho;
}

QString MedidasGrid::ImporteCorto(int fila, int columna, const QString& texto) const {
  const auto& c = grid_.columna(columna);
  if (EsTablero(grid_) || !EsImporte(c, pistas_.De(grid_)) || fila < 0 || fila >= grid_.Filas()) return texto;
  const auto importe = com::NumeroDe(com::CStr(grid_.celda(fila, columna)));
  return importe ? Q(regional::ConFormato(*importe, c.formato.starts_with('$') ? "$#,##0.00" : "#,##0.00")) : texto;
}

QString MedidasGrid::Importe(int fila, int columna, const QString& texto) const {
  constexpr qsizetype kDecimales = 4;
  const qsizetype punto = texto.indexOf(QLatin1Char('.'));
  return punto >= 0 && texto.size() - punto - 1 > kDecimales ? ImporteCorto(fila, columna, texto) : texto;
}

int MedidasGrid::AnchoMinimo(int columna, bool estrechos, bool centavos) const {
  constexpr int kOrilla = 15, kMuestras = 60, kEstrecho = 84;  // pixels, rows, per cent
  const auto& c = grid_.columna(columna);
  int ancho = AnchoTexto(Q(c.titulo)) * (estrechos ? kEstrecho : 100) / 100 + kOrilla;
  if (c.fecha) return std::max(ancho, AnchoTexto(QStringLiteral("R 88")) + kOrilla);
  for (int f = 0; f < std::min(grid_.Filas(), kMuestras); ++f) {
    const QString texto = Q(grid_.Texto(f, columna));
    ancho =
        std::max(ancho, AnchoTexto(centavos ? ImporteCorto(f, columna, texto) : Importe(f, columna, texto)) + kOrilla);
  }
  return ancho;
}

MedidasGrid::Reparto MedidasGrid::Mide(int cuantas) const {
  constexpr int kNombreCortado = 30;  // what a row's name keeps beside its caption, pixels
  const auto n = static_cast<std::size_t>(cuantas);
  Reparto r;
  for (auto* anchos : {&r.anchos, &r.minimos, &r.estrechos, &r.centavos, &r.cortado}) anchos->resize(n);
  for (int c = 0; c < cuantas; ++c) {
    const auto& columna = grid_.columna(c);
    if (!columna.visible) continue;
    const auto i = static_cast<std::size_t>(c);
    r.minimos[i] = AnchoMinimo(c, false, false);
    r.anchos[i] = std::max(APixel(columna.ancho), r.minimos[i]);
    r.deseado += r.anchos[i];
    r.minimo += r.minimos[i];
    if (EsTablero(grid_)) continue;
    r.estrechos[i] = AnchoMinimo(c, true, false);
    r.cortado[i] = r.centavos[i] = AnchoMinimo(c, true, true);
    if (c == kColumnaNombre) r.cortado[i] = std::min(r.cortado[i], AnchoTexto(Q(columna.titulo)) + kNombreCortado);
  }
  return r;
}

// Each column gives up its part of what is missing, down to those widths.
void MedidasGrid::Reparto::Cede(const std::vector<int>& hasta, int cabe) {
  int puede = 0;
  for (std::size_t i = 0; i < minimos.size(); ++i) puede += minimos[i] - hasta[i];
  if (puede <= 0 || minimo <= cabe) return;
  const double parte = std::min(1.0, double(minimo - cabe) / puede);
  for (std::size_t i = 0; i < minimos.size(); ++i) {
    const int quita = static_cast<int>(std::ceil((minimos[i] - hasta[i]) * parte));
    minimos[i] -= quita;
    minimo -= quita;
  }
}

// A column is as wide as designed; where the window is too narrow for all, they give way down to their captions and
// contents. Before the total goes out of sight the captions are set narrower, then amounts are shown in cents, then the
// row's name is cut short: tips tell them whole. A board scrolls instead.
std::vector<int> MedidasGrid::Anchos(int cuantas, int cabe) const {
  Reparto r = Mide(cuantas);
  if (EsTablero(grid_)) return r.anchos;
  if (cuantas > kColumnasFijas) {
    r.Cede(r.estrechos, cabe);
    r.Cede(r.centavos, cabe);
    r.Cede(r.cortado, cabe);
  }
  if (r.deseado <= cabe) return r.anchos;
  const double cede = r.deseado == r.minimo ? 1.0 : std::min(1.0, double(r.deseado - cabe) / (r.deseado - r.minimo));
  for (std::size_t i = 0; i < r.anchos.size(); ++i) {
    r.anchos[i] -= static_cast<int>((r.anchos[i] - r.minimos[i]) * cede);
  }
  return r.anchos;
}

}  // namespace vista
