// Values on their way to the server and back, as text.
#pragma once

#include <libpq-fe.h>

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "platform/ado/ado.h"

namespace autonomo {

// Value of a parameter, NULL without one. com::Error kTipos for an object, and for a text with a character zero, which
// the server does not store.
std::optional<std::string> ComoParametro(const com::Variant& valor);
std::optional<std::string> ComoParametro(std::string texto);

// "?" of a translated text, all of whose literals are parameters, become "$1", "$2"...
std::string ConDolares(const std::string& texto);

// The rows of a result. Dates come as dates, whole numbers of 32 bits as such, others as doubles, the rest as text.
// columnas: names of the columns, made when they are missing or fit no longer; sentencia: the text that spells them.
ado::RecordsetPtr Filas(const PGresult* r, std::shared_ptr<const ado::Recordset::Columnas>& columnas,
                        std::string_view sentencia);

}  // namespace autonomo
