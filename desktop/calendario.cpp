#include "desktop/calendario.h"

#include <QCalendarWidget>
#include <QFrame>
#include <QLocale>
#include <QPainter>
#include <QScreen>
#include <QTextCharFormat>
#include <QToolButton>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "desktop/estilo.h"
#include "desktop/iconos.h"
#include "desktop/pintura.h"

namespace vista {

namespace {

// Where a pop-up of that size goes: under the widget, above it when there is no room below, whole on the screen.
QPoint LugarJuntoA(const QWidget& w, const QSize& tamano) {
  constexpr int kAire = 2;  // pixels
  const QRect zona = w.screen()->availableGeometry();
  QPoint lugar = w.mapToGlobal(QPoint(0, w.height() + kAire));
  const int encima = w.mapToGlobal(QPoint(0, -kAire)).y() - tamano.height();
  if (lugar.y() + tamano.height() > zona.y() + zona.height() && encima >= zona.y()) lugar.setY(encima);
  const auto dentro = [](int v, int desde, int largo, int cuanto) {
    return std::max(desde, std::min(v, desde + largo - cuanto));
  };
  return {dentro(lugar.x(), zona.x(), zona.width(), tamano.width()),
          dentro(lugar.y(), zona.y(), zona.height(), tamano.height())};
}

// Days of the month in full ink, weekends shaded, days of its neighbours faint, today ringed.
class Calendario : public QCalendarWidget {
 public:
  Calendario(const QDate& hoy, QWidget* padre) : QCalendarWidget(padre), hoy_(hoy) {}

 protected:
  void paintCell(QPainter* p, const QRect& zona, QDate dia) const override {
    const Paleta& c = Colores();
    const bool elegido = dia == selectedDate(), vecino = dia.month() != monthShown();
    const bool descanso = dia.dayOfWeek() >= Qt::Saturday && !vecino;
    p->fillRect(zona, elegido ? c.acento : descanso ? c.finSemana : c.superficie);
    if (dia == hoy_) PintaAnillo(*p, zona, elegido ? c.sobreAcento : c.acento, 2);
    p->setFont(Fuente(dia == hoy_ ? Letra::Fuerte : vecino ? Letra::Chica : Letra::Normal));
    p->setPen(elegido ? c.sobreAcento : vecino ? c.tenue : c.texto);
    p->drawText(zona, Qt::AlignCenter, QString::number(dia.day()));
  }

 private:
  QDate hoy_;
};

}  // namespace

void MuestraCalendario(QLineEdit& campo, const QString& nombre, const QDate& dia,
                       std::function<void(const QDate&)> elige, const QDate& hoy) {
  auto* marco = new QFrame(&campo, Qt::Popup);
  marco->setAttribute(Qt::WA_DeleteOnClose);
  marco->setObjectName(QStringLiteral("calendario"));
  auto* caja = new QVBoxLayout(marco);
  caja->setContentsMargins(6, 6, 6, 6);
  auto* calendario = new Calendario(hoy, marco);
  marco->setAccessibleName(QStringLiteral("Calendario"));
  calendario->setAccessibleName(nombre);
  calendario->setLocale(QLocale(QLocale::Spanish, QLocale::Mexico));
  calendario->setFirstDayOfWeek(Qt::Monday);
  calendario->setVerticalHeaderFormat(QCalendarWidget::NoVerticalHeader);
  calendario->setGridVisible(false);
  QTextCharFormat dias;
  dias.setForeground(Colores().texto);
  for (const auto d : {Qt::Saturday, Qt::Sunday}) {
    dias.setBackground(Colores().finSemana);
    calendario->setWeekdayTextFormat(d, dias);
  }
  calendario->setSelectedDate(dia);
  caja->addWidget(calendario);
  // Click or Enter on a day; some desktops tell a click both ways.
  const auto toma = [elige = std::move(elige), marco](const QDate& elegido) {
    if (!marco->isVisible()) return;
    marco->close();
    elige(elegido);
  };
  QObject::connect(calendario, &QCalendarWidget::activated, &campo, toma);
  QObject::connect(calendario, &QCalendarWidget::clicked, &campo, toma);
  for (const auto& [boton, icono] :
       {std::pair("qt_calendar_prevmonth", "izquierda"), std::pair("qt_calendar_nextmonth", "derecha")}) {
    if (auto* flecha = calendario->findChild<QToolButton*>(QLatin1String(boton))) {
      flecha->setIcon(Icono(QLatin1String(icono), Colores().sobreAcento));
    }
  }
  marco->adjustSize();
  marco->move(LugarJuntoA(campo, marco->size()));
  marco->show();
  marco->move(LugarJuntoA(campo, marco->size()));  // its parts may have grown as they were shown
  calendario->setFocus();
}

}  // namespace vista
