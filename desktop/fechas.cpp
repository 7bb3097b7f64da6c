#include "desktop/fechas.h"

#include <QRegularExpression>
#include <cstdlib>

namespace vista {

QDate ADate(com::Fecha fecha) {
  const com::Civil c = com::ACivil(fecha);
  return QDate(c.anio, c.mes, c.dia);
}

com::Fecha DeDate(const QDate& fecha) { return com::FechaDe(fecha.year(), fecha.month(), fecha.day()); }

namespace {

// A way to write a date, and the day that it means; origen: day that it counts from.
struct Escrita {
  QRegularExpression forma;
  QDate (*dia)(const QRegularExpressionMatch& partes, const QDate& origen) = nullptr;
};

int Parte(const QRegularExpressionMatch& partes, int cual) { return partes.captured(cual).toInt(); }

QDate Paso(const QRegularExpressionMatch& partes, const QDate& origen) {
  const int dias = Parte(partes, 2);
  return origen.addDays(partes.captured(1) == QLatin1String("-") ? -dias : dias);
}

QDate Completa(const QRegularExpressionMatch& partes, const QDate& /*origen*/) {
  const int anio = Parte(partes, 3);
  return QDate(anio < 100 ? anio + 2000 : anio, Parte(partes, 2), Parte(partes, 1));
}

QDate Corrida(const QRegularExpressionMatch& partes, const QDate& /*origen*/) {
  return QDate(Parte(partes, 3), Parte(partes, 2), Parte(partes, 1));
}

// Day and month, of the year that brings them nearest.
QDate SinAnio(const QRegularExpressionMatch& partes, const QDate& origen) {
  QDate cercana;
  for (const int anio : {origen.year(), origen.year() + 1, origen.year() - 1}) {
    const QDate candidata(anio, Parte(partes, 2), Parte(partes, 1));
    if (!candidata.isValid()) continue;
    const bool antes = !cercana.isValid() || std::llabs(origen.daysTo(candidata)) < std::llabs(origen.daysTo(cercana));
    if (antes) cercana = candidata;
  }
  return cercana;
}

QDate SoloDia(const QRegularExpressionMatch& partes, const QDate& origen) {
  return QDate(origen.year(), origen.month(), Parte(partes, 0));
}

}  // namespace

std::optional<com::Fecha> LeeFecha(const QString& texto, com::Fecha base) {
  static const Escrita escritas[] = {
      {QRegularExpression(QStringLiteral(R"(^([+-])(\d{1,3})$)")), Paso},
      {QRegularExpression(QStringLiteral(R"(^(\d{1,2})[/\-. ](\d{1,2})[/\-. ](\d{2}|\d{4})$)")), Completa},
      {QRegularExpression(QStringLiteral(R"(^(\d{2})(\d{2})(\d{4})$)")), Corrida},
      {QRegularExpression(QStringLiteral(R"(^(\d{1,2})[/\-. ](\d{1,2})$)")), SinAnio},
      {QRegularExpression(QStringLiteral(R"(^\d{1,2}$)")), SoloDia},
  };
  for (const Escrita& escrita : escritas) {
    const QRegularExpressionMatch partes = escrita.forma.match(texto.trimmed());
    if (!partes.hasMatch()) continue;
    const QDate fecha = escrita.dia(partes, ADate(base));
    if (!fecha.isValid() || fecha.year() < 100 || fecha.year() > 9999) return std::nullopt;
    return DeDate(fecha);
  }
  return std::nullopt;
}

QString NoEsFecha(const QString& texto) {
  return QStringLiteral("«%1» no es una fecha. Escriba día/mes/año").arg(texto);
}

}  // namespace vista
