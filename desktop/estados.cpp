#include "desktop/estados.h"

#include <algorithm>
#include <iterator>

namespace vista {

namespace {

struct Estado {
  const char* estilo;
  Trama trama;
  const char* letra;
  const char* palabra;
};

constexpr Estado kEstados[] = {
    {"BLOQUEADO", Trama::Rayas, "B", "bloqueado"},  {"RESERVADO", Trama::Puntos, "R", "reservado"},
    {"OCUPADO", Trama::Franja, "O", "ocupado"},     {"OCUPANDO", Trama::Marca, "", "reservando"},
    {"RESERVANDO", Trama::Marca, "", "reservando"},
};

// Null for a style that is no state.
const Estado* Busca(const QString& estilo) {
  const auto* e = std::find_if(std::begin(kEstados), std::end(kEstados), [&](const Estado& k) {
    return estilo.compare(QLatin1String(k.estilo), Qt::CaseInsensitive) == 0;
  });
  return e == std::end(kEstados) ? nullptr : e;
}

}  // namespace

Trama TramaDe(const QString& estilo) {
  const Estado* e = Busca(estilo);
  return e == nullptr ? Trama::Ninguna : e->trama;
}

QString LetraDe(const QString& estilo) {
  const Estado* e = Busca(estilo);
  return e == nullptr ? QString() : QString::fromLatin1(e->letra);
}

QString PalabraDe(const QString& estilo) {
  const Estado* e = Busca(estilo);
  return e == nullptr ? estilo.toLower() : QString::fromLatin1(e->palabra);
}

}  // namespace vista
