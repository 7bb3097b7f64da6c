// Icons drawn as vectors in the theme's colours, sharp at every scaling.
#pragma once

#include <QColor>
#include <QIcon>
#include <QString>

namespace vista {

// nombre: an action ("nuevo", "editar", ...) or "buscar", "calendario", "ficha", "notas", "tablero", "precios",
// "critico", "aviso", "informe", "pregunta", "mas", "hotel", "izquierda", "derecha". An unknown name gives an empty
// icon. tinta: invalid for the text colour.
QIcon Icono(const QString& nombre, const QColor& tinta = {});

}  // namespace vista
