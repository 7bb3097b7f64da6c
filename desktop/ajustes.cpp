#include "desktop/ajustes.h"

#include <QSettings>
#include <QStandardPaths>
#include <QStringList>

#include "desktop/vista.h"

namespace vista::ajustes {

namespace {

constexpr auto kHoteles = "recientes", kPropio = "hotel", kRecorrido = "recorrido_ofrecido";

QString Ruta() {
  return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
         QStringLiteral("/reservas/reservas.ini");
}

QVariant Lee(const char* clave) { return QSettings(Ruta(), QSettings::IniFormat).value(QLatin1String(clave)); }
void Guarda(const char* clave, const QVariant& valor) {
  QSettings(Ruta(), QSettings::IniFormat).setValue(QLatin1String(clave), valor);
}

}  // namespace

std::vector<std::string> Recientes() {
  std::vector<std::string> hoteles;
  for (const QString& hotel : Lee(kHoteles).toStringList()) {
    if (!hotel.isEmpty()) hoteles.push_back(hotel.toStdString());
  }
  return hoteles;
}

void AnotaReciente(const std::string& hotel) {
  QStringList hoteles = Lee(kHoteles).toStringList();
  hoteles.removeAll(Q(hotel));
  hoteles.prepend(Q(hotel));
  Guarda(kHoteles, QStringList(hoteles.mid(0, kRecientes)));
}

std::string HotelPropio() { return Lee(kPropio).toString().toStdString(); }
void FijaHotelPropio(const std::string& hotel) { Guarda(kPropio, Q(hotel)); }

bool OfrecidoRecorrido() { return Lee(kRecorrido).toBool(); }
void AnotaRecorrido() { Guarda(kRecorrido, true); }

}  // namespace vista::ajustes
