#include "desktop/pintor_grid.h"

#include <QDate>
#include <QFontMetrics>
#include <QLocale>
#include <algorithm>

#include "desktop/vista_grid.h"
#include "platform/regional/regional.h"

namespace vista {

namespace {

bool EsActual(const controles::Grid& grid, int fila, int columna) {
  return fila == grid.fila() && columna == grid.columna();
}

void DibujaFondo(QPainter& p, const QRect& zona, const QColor& color) {
  p.fillRect(zona, color);
  PintaOrillas(p, zona, Colores().borde);
}

void DibujaManija(QPainter& p, const QRect& zona, const std::string& numero, bool senalada) {
  const Paleta& colores = Colores();
  DibujaFondo(p, zona, senalada ? colores.acento : colores.realce);
  p.setFont(Fuente(Letra::Normal));
  p.setPen(senalada ? colores.sobreAcento : colores.texto);
  p.drawText(zona.adjusted(0, 0, -1, 0), Qt::AlignCenter, Q(numero));
}

}  // namespace

void PintorGrid::Comienza(const QPaintDevice& donde) {
  constexpr std::int64_t kPuntos = 2'000'000;  // 8 MB
  std::vector<QRgb> fondos;
  for (const auto& e : vista_.grid().Estilos()) fondos.push_back(ColorEstado(e.fondo, e.dado).rgb());
  Ambiente ahora{Fuente(Letra::Normal), donde.devicePixelRatioF(), EsOscuro(), std::move(fondos)};
  if (ahora == ambiente_ && puntos_ < kPuntos) return;
  aspectos_.clear();
  puntos_ = 0;
  ambiente_ = std::move(ahora);
}

template <class Hace>
void PintorGrid::Copia(QPainter& p, const QRect& zona, Aspecto aspecto, const Hace& dibuja) {
  const QRect lugar = EnPixeles(p, zona);
  aspecto.ancho = lugar.width();
  aspecto.alto = lugar.height();
  auto visto = aspectos_.find(aspecto);
  if (visto == aspectos_.end()) {
    QImage copia = Retrato(lugar.size(), ambiente_.escala, zona.size(), Colores().superficie, dibuja);
    puntos_ += std::int64_t{copia.width()} * copia.height();
    visto = aspectos_.emplace(std::move(aspecto), std::move(copia)).first;
  }
  if (ambiente_.escala == 1.0) return p.drawImage(zona.topLeft(), visto->second);
  const PorPixel pixeles(p);
  p.drawImage(lugar.topLeft(), visto->second);
}

// --- cells

void PintorGrid::Celda(QPainter& p, const QRect& zona, int fila, int columna) {
  const controles::Grid& grid = vista_.grid();
  if (fila >= grid.Filas() || columna >= grid.NumColumnas()) return p.fillRect(zona, Colores().superficie);
  if (!EsTablero(grid) || EsActual(grid, fila, columna)) return DibujaCelda(p, zona, fila, columna);
  const int estilo = grid.estilo(fila, columna);
  const bool enFila = estilo < 0 && fila == grid.fila();
  Copia(p, zona,
        {Aspecto::Parte::Celda, EsFija(columna) ? columna : kColumnasFijas, estilo, enFila, grid.Texto(fila, columna)},
        [&](QPainter& pincel, const QRect& lugar) { DibujaCelda(pincel, lugar, fila, columna); });
}

QColor PintorGrid::DibujaFondoCelda(QPainter& p, const QRect& zona, int fila, int columna) const {
  const controles::Grid& grid = vista_.grid();
  const Paleta& colores = Colores();
  const int estilo = grid.estilo(fila, columna);
  if (estilo >= 0 && static_cast<std::size_t>(estilo) < grid.Estilos().size()) {
    const auto& e = grid.Estilos()[static_cast<std::size_t>(estilo)];
    const QColor tono = ColorEstado(e.fondo, e.dado);
    PintaEstado(p, zona, Q(e.nombre), tono);
    PintaOrillas(p, zona, colores.borde);
    const QColor tinta = TextoSobre(tono);
    p.setPen(tinta);
    p.setFont(Fuente(Letra::Chica));
    p.drawText(zona.adjusted(6, 0, -4, 0), Qt::AlignLeft | Qt::AlignVCenter, LetraDe(Q(e.nombre)));
    return tinta;
  }
  const bool soloMuestra = grid.columna(columna).bloqueada && !EsTablero(grid);
  const bool enFila = fila == grid.fila();
  DibujaFondo(p, zona, enFila ? colores.acentoSuave : soloMuestra ? colores.fondo : colores.superficie);
  return colores.texto;
}

// Counts of rooms always fit.
QString PintorGrid::Cabe(const QString& texto, int fila, int columna, int ancho) const {
  const controles::Grid& grid = vista_.grid();
  const MedidasGrid& medidas = vista_.medidas();
  const bool editada = EsActual(grid, fila, columna) && grid.Edicion();
  QString corto = editada ? texto : medidas.Importe(fila, columna, texto);
  if (texto.size() <= 3 || medidas.AnchoTexto(corto) <= ancho) return corto;
  if (!editada) corto = medidas.ImporteCorto(fila, columna, texto);
  if (medidas.AnchoTexto(corto) <= ancho) return corto;
  return QFontMetrics(ambiente_.fuente).elidedText(corto, Qt::ElideRight, ancho);
}

void PintorGrid::DibujaCelda(QPainter& p, const QRect& zona, int fila, int columna) const {
  const controles::Grid& grid = vista_.grid();
  const bool actual = EsActual(grid, fila, columna);
  const ModeloGrid& modelo = vista_.modelo();
  const QModelIndex indice = modelo.index(fila, columna);
  Letrero letrero;
  letrero.tinta = DibujaFondoCelda(p, zona, fila, columna);
  letrero.alineada = modelo.data(indice, Qt::TextAlignmentRole).value<Qt::Alignment>();
  letrero.caja = zona.adjusted(6, 0, -7, 0);
  letrero.texto = Cabe(modelo.data(indice, Qt::DisplayRole).toString(), fila, columna, letrero.caja.width());
  p.setPen(letrero.tinta);
  p.setFont(ambiente_.fuente);
  if (actual && vista_.escritura().Reemplaza()) {
    p.fillRect(letrero.caja.adjusted(-2, 3, 2, -4), Colores().acento);
    p.setPen(Colores().sobreAcento);
  }
  p.drawText(letrero.caja, static_cast<int>(letrero.alineada), letrero.texto);
  if (vista_.EsAcordada(fila, columna)) DibujaAcuerdo(p, zona);
  if (actual) DibujaActual(p, zona, grid.estilo(fila, columna) >= 0, letrero);
}

// A corner turned down: the price was agreed.
void PintorGrid::DibujaAcuerdo(QPainter& p, const QRect& zona) {
  constexpr int kLado = 9;  // pixels
  p.save();
  p.setRenderHint(QPainter::Antialiasing);
  p.setPen(Qt::NoPen);
  p.setBrush(Colores().aviso);
  const QPoint esquina = zona.topLeft();
  p.drawPolygon(QPolygon({esquina, esquina + QPoint(kLado, 0), esquina + QPoint(0, kLado)}));
  p.restore();
}

// The ring around the current cell, and the caret behind what is typed in it.
void PintorGrid::DibujaActual(QPainter& p, const QRect& zona, bool conEstado, const Letrero& letrero) const {
  const Paleta& colores = Colores();
  const controles::Grid& grid = vista_.grid();
  const bool enfocada = grid.formulario().foco() == &grid && vista_.TieneFoco();
  if (!enfocada) return PintaAnillo(p, zona, colores.tenue, 1);
  PintaAnillo(p, zona.adjusted(0, 0, -1, -1), colores.acento, 2);
  // A ring that shows on every state colour.
  if (conEstado) PintaAnillo(p, zona.adjusted(2, 2, -3, -3), colores.superficie, 1);
  if (!grid.Edicion()) return;
  const QFontMetrics medidas(ambiente_.fuente);
  const QRect& caja = letrero.caja;
  const int ancho = std::min(medidas.horizontalAdvance(letrero.texto), caja.width());
  int x = caja.left() + ancho + 1;
  if (letrero.alineada.testFlag(Qt::AlignRight)) x = caja.right() + 2;
  if (letrero.alineada.testFlag(Qt::AlignHCenter)) x = caja.center().x() + ancho / 2 + 1;
  p.fillRect(QRect(x, zona.center().y() - medidas.ascent() / 2 - 1, 1, medidas.height() - 2), letrero.tinta);
}

// --- captions

void PintorGrid::Titulo(QPainter& p, const QRect& zona, int columna) {
  const controles::Grid& grid = vista_.grid();
  if (columna >= grid.NumColumnas()) return p.fillRect(zona, Colores().realce);
  using Parte = Aspecto::Parte;
  const auto& c = grid.columna(columna);
  if (!c.fecha) {
    Copia(p, zona, {Parte::Titulo, static_cast<int>(c.alineacionTitulo), -1, false, c.titulo},
          [&](QPainter& pincel, const QRect& lugar) { DibujaTitulo(pincel, lugar, columna); });
  } else {
    Copia(p, zona, {Parte::Dia, -1, -1, columna == kColumnasFijas, regional::FechaCorta(*c.fecha) + c.titulo},
          [&](QPainter& pincel, const QRect& lugar) { DibujaDia(pincel, lugar, columna); });
  }
}

void PintorGrid::DibujaTitulo(QPainter& p, const QRect& zona, int columna) const {
  const ModeloGrid& modelo = vista_.modelo();
  DibujaFondo(p, zona, Colores().realce);
  const QString titulo = modelo.headerData(columna, Qt::Horizontal, Qt::DisplayRole).toString();
  const auto alineada = modelo.headerData(columna, Qt::Horizontal, Qt::TextAlignmentRole).value<Qt::Alignment>();
  const QRect caja = zona.adjusted(6, 0, -6, 0);
  p.setFont(FuenteEstrecha(Letra::Normal, titulo, caja.width() - 1));
  p.setPen(Colores().tenue);
  p.drawText(caja, static_cast<int>(alineada), p.fontMetrics().elidedText(titulo, Qt::ElideRight, caja.width()));
}

// The weekday above the day of the month.
void PintorGrid::DibujaDia(QPainter& p, const QRect& zona, int columna) const {
  const ModeloGrid& modelo = vista_.modelo();
  const Paleta& colores = Colores();
  const QDate dia = modelo.headerData(columna, Qt::Horizontal, ModeloGrid::kFecha).toDate();
  const bool descanso = dia.isValid() && dia.dayOfWeek() >= Qt::Saturday;
  DibujaFondo(p, zona, descanso ? colores.finSemana : colores.realce);
  const QRect arriba(zona.left(), zona.top() + 3, zona.width(), zona.height() / 2 - 2);
  const QRect abajo(zona.left(), zona.center().y(), zona.width(), zona.height() / 2);
  p.setFont(Fuente(Letra::Chica));
  p.setPen(descanso ? colores.texto : colores.tenue);
  p.drawText(arriba, Qt::AlignCenter, modelo.headerData(columna, Qt::Horizontal, Qt::DisplayRole).toString());
  p.setFont(Fuente(Letra::Fuerte));
  p.setPen(colores.texto);
  QString numero = QString::number(dia.day());
  // The month is named where it begins.
  if (dia.day() == 1 || columna == kColumnasFijas) {
    const QLocale mexico(QLocale::Spanish, QLocale::Mexico);
    numero += QLatin1Char(' ') + mexico.monthName(dia.month(), QLocale::ShortFormat).left(3);
  }
  p.drawText(abajo, Qt::AlignCenter, numero);
}

// --- row numbers

void PintorGrid::Manija(QPainter& p, const QRect& zona, int fila) {
  const std::string numero = std::to_string(fila + 1);
  const bool senalada = fila == vista_.raton().senalada() && fila == vista_.grid().fila();
  Copia(p, zona, {Aspecto::Parte::Manija, -1, -1, senalada, numero},
        [&](QPainter& pincel, const QRect& lugar) { DibujaManija(pincel, lugar, numero, senalada); });
}

}  // namespace vista
