#include "desktop/estados.h"

#include <algorithm>
#include <iterator>
#include <string_view>

#include "component/nombres.h"
#include "desktop/vista.h"
#include "host/standalone/documento.h"
#include "schema/esquema.h"

namespace vista {

namespace {

using kv207::EstadoCelda;
using kv207::NombreEstado;

struct Estado {
  std::string_view estilo;
  Trama trama;
  const char* letra;
  const char* palabra;
};

constexpr Estado kEstados[] = {
    {NombreEstado(EstadoCelda::Bloqueado), Trama::Rayas, "B", "bloqueado"},
    {NombreEstado(EstadoCelda::Reservado), Trama::Puntos, "R", "reservado"},
    {NombreEstado(EstadoCelda::Ocupado), Trama::Franja, "O", "ocupado"},
    {NombreEstado(EstadoCelda::Ocupando), Trama::Marca, "", "reservando"},
    {"Reservando", Trama::Marca, "", "reservando"},  // the legend's word
};

// Null for a style that is no state.
const Estado* Busca(const QString& estilo) {
  const auto* e = std::find_if(std::begin(kEstados), std::end(kEstados), [&](const Estado& k) {
    return estilo.compare(QLatin1String(k.estilo.data(), static_cast<int>(k.estilo.size())), Qt::CaseInsensitive) == 0;
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

Tono TonoDe(const QString& estado) {
  const auto es = [&](std::string_view codigo) { return estado == Q(autonomo::EstadoLegible(std::string(codigo))); };
  if (estado == QLatin1String(kMarcaDemo)) return Tono::Aviso;
  if (estado == QLatin1String(kMarcaSinBorrador)) return Tono::Peligro;
  if (es(esquema::kActiva)) return Tono::Borde;
  if (es(esquema::kConfirmada)) return Tono::Lleno;
  return es(esquema::kCancelada) ? Tono::Peligro : Tono::Discreto;
}

}  // namespace vista
