// Translator of the SQL Server text that the screens send into the dialects of the engines that run it.
//
// It works on tokens: blanks, case and order stay, and only what an engine spells differently is replaced, so text that
// needs nothing comes out byte for byte the same. It knows one SELECT, INSERT, UPDATE or DELETE with the functions and
// operators of its tables. Whatever it does not know is refused, never passed on. It does not know which tables and
// columns exist: that is the engine's to say.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "schema/esquema.h"

namespace autonomo {

// Where the value of a "?" of the translated text comes from.
enum class Origen {
  Literal,   // the next literal of the statement
  Pregunta,  // the next "?" of the statement
  Ahora,     // the server's clock, for GETDATE()
};

struct ModoTraduccion {
  bool literalesSonParametros = false;  // each '...' becomes "?"
  bool admitePreguntas = false;         // "?" stands for a value
};

struct Traduccion {
  std::string texto;
  std::vector<Origen> parametros;   // of each "?" of the text, in order
  std::vector<std::string> fechas;  // aliases of the select list that hold dates
};

// com::Error kSentencia, with line, column (both from 1, in characters) and construct, for what it does not know.
Traduccion Traduce(std::string_view sentencia, esquema::Motor motor, ModoTraduccion modo = {});

}  // namespace autonomo
