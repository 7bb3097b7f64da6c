#include "host/standalone/plantillas.h"

#include "host/standalone/fichas.h"
#include "platform/com/error.h"

namespace autonomo {
namespace {

// Control characters: the translator lets none through, so no statement of its own can hold them outside a literal.
constexpr char kMarcaLiteral = '\x01', kMarcaPregunta = '\x02';

// Adds text without literals.
void AgregaTramo(std::string_view tramo, bool conPreguntas, Partida& partida) {
  std::size_t desde = 0;
  for (std::size_t i = conPreguntas ? tramo.find('?') : std::string_view::npos; i != std::string_view::npos;
       i = tramo.find('?', desde)) {
    partida.plantilla.append(tramo.substr(desde, i - desde)).push_back(kMarcaPregunta);
    partida.valores.push_back({{}, false, true});
    desde = i + 1;
  }
  partida.plantilla.append(tramo.substr(desde));
}

}  // namespace

bool EsMarcaDeValor(char c) { return c == kMarcaLiteral || c == kMarcaPregunta; }

void Parte(std::string_view sentencia, bool conPreguntas, Partida& partida) {
  partida.plantilla.clear();
  partida.valores.clear();
  std::size_t desde = 0;
  for (std::size_t abre = sentencia.find('\''); abre != std::string_view::npos; abre = sentencia.find('\'', desde)) {
    AgregaTramo(sentencia.substr(desde, abre - desde), conPreguntas, partida);
    bool comillas = false;
    std::size_t cierra = sentencia.find('\'', abre + 1);
    while (cierra != std::string_view::npos && cierra + 1 < sentencia.size() && sentencia[cierra + 1] == '\'') {
      comillas = true;
      cierra = sentencia.find('\'', cierra + 2);
    }
    if (cierra == std::string_view::npos)
      throw com::Error(com::error::kSentencia, Lugar(sentencia, abre) + "el texto no tiene comilla final",
                       std::string(sentencia));
    partida.plantilla.push_back(kMarcaLiteral);
    partida.valores.push_back({sentencia.substr(abre + 1, cierra - abre - 1), comillas, false});
    desde = cierra + 1;
  }
  AgregaTramo(sentencia.substr(desde), conPreguntas, partida);
}

std::string SinComillasDobles(std::string_view texto) {
  std::string s;
  s.reserve(texto.size());
  for (std::size_t i = 0; i < texto.size(); ++i) {
    s.push_back(texto[i]);
    if (texto[i] == '\'') ++i;
  }
  return s;
}

}  // namespace autonomo
