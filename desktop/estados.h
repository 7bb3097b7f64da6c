// The states of a night and of a reservation as the views show them.
#pragma once

#include <QString>

namespace vista {

// Pattern of a state.
enum class Trama { Ninguna, Rayas, Puntos, Franja, Marca };
// By the name of a grid style, case-blind ("Bloqueado", ...); a style that is no state has neither pattern nor letter.
Trama TramaDe(const QString& estilo);
// One letter of the state ("B"), "" for free cells.
QString LetraDe(const QString& estilo);
// The word that the screen's legend uses, in small letters.
QString PalabraDe(const QString& estilo);

// How a reservation's state stands out, by the host's word for it ("Activa"), or the mark of a hotel to practise in and
// of a capture without a draft.
enum class Tono { Discreto, Borde, Lleno, Peligro, Aviso };
inline constexpr char kMarcaDemo[] = "DEMO", kMarcaSinBorrador[] = "SIN BORRADOR";
Tono TonoDe(const QString& estado);

}  // namespace vista
