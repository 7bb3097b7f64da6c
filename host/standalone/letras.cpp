#include "host/standalone/letras.h"

#include <unicode/uchar.h>
#include <unicode/unorm2.h>

#include <array>

#include "platform/com/texto.h"

namespace autonomo {
namespace {

char32_t Mayuscula(char32_t letra) { return static_cast<char32_t>(u_toupper(static_cast<UChar32>(letra))); }
char32_t Minuscula(char32_t letra) { return static_cast<char32_t>(u_tolower(static_cast<UChar32>(letra))); }
char32_t Plegada(char32_t letra) {
  return static_cast<char32_t>(u_foldCase(static_cast<UChar32>(letra), U_FOLD_CASE_DEFAULT));
}

}  // namespace

void UsaLetrasUnicode() { com::FijaLetras({Mayuscula, Minuscula, Plegada}); }

char32_t SinAcentos(char32_t letra) {
  UErrorCode estado = U_ZERO_ERROR;
  static const UNormalizer2* const normalizador = unorm2_getNFDInstance(&estado);
  // Eight units hold every canonical decomposition of one code point.
  std::array<UChar, 8> partes{};
  const int largo = normalizador == nullptr ? -1
                                            : unorm2_getDecomposition(normalizador, static_cast<UChar32>(letra),
                                                                      partes.data(), partes.size(), &estado);
  if (largo <= 0 || U_FAILURE(estado)) return letra;
  const UChar alta = partes[0];
  return U16_IS_LEAD(alta) && largo > 1 ? static_cast<char32_t>(U16_GET_SUPPLEMENTARY(alta, partes[1])) : alta;
}

}  // namespace autonomo
