#include "host/standalone/letras.h"

#include <unicode/uchar.h>
#include <unicode/unorm2.h>

#include <array>
#include <cstdint>
#include <string_view>

#include "platform/com/texto.h"

namespace autonomo {
namespace {

char32_t Mayuscula(char32_t letra) { return static_cast<char32_t>(u_toupper(static_cast<UChar32>(letra))); }
char32_t Minuscula(char32_t letra) { return static_cast<char32_t>(u_tolower(static_cast<UChar32>(letra))); }
char32_t Plegada(char32_t letra) {
  return static_cast<char32_t>(u_foldCase(static_cast<UChar32>(letra), U_FOLD_CASE_DEFAULT));
}

// First code point of what a normaliser takes the letter apart into; the letter where it does not.
char32_t Principio(const UNormalizer2* normalizador, char32_t letra) {
  UErrorCode estado = U_ZERO_ERROR;
  std::array<UChar, 32> partes{};  // the longest decomposition of one code point has eighteen units
  const int largo = normalizador == nullptr ? -1
                                            : unorm2_getDecomposition(normalizador, static_cast<UChar32>(letra),
                                                                      partes.data(), partes.size(), &estado);
  if (largo <= 0 || U_FAILURE(estado) != 0) return letra;
  const UChar alta = partes[0];
  return U16_IS_LEAD(alta) && largo > 1 ? static_cast<char32_t>(U16_GET_SUPPLEMENTARY(alta, partes[1])) : alta;
}

}  // namespace

void UsaLetrasUnicode() { com::FijaLetras({Mayuscula, Minuscula, Plegada}); }

char32_t SinAcentos(char32_t letra) {
  UErrorCode estado = U_ZERO_ERROR;
  static const UNormalizer2* const normalizador = unorm2_getNFDInstance(&estado);
  return Principio(normalizador, letra);
}

char32_t LetraBuscada(char32_t letra) {
  UErrorCode estado = U_ZERO_ERROR;
  static const UNormalizer2* const normalizador = unorm2_getNFKDInstance(&estado);
  constexpr char32_t kModificadoras = 0x2B0, kTrasModificadoras = 0x300;  // signs that count as letters
  constexpr std::u32string_view kApostrofos = U"\u00B4\u02B9\u02BB\u02BC\u2018\u2019\u201B\u2032\uFF07";
  if (kApostrofos.find(letra) != std::u32string_view::npos) return U'\'';
  const std::uint32_t clase = U_GET_GC_MASK(static_cast<UChar32>(letra));
  if ((clase & (U_GC_MN_MASK | U_GC_ME_MASK | U_GC_CF_MASK)) != 0) return 0;
  if ((clase & U_GC_PD_MASK) != 0) return U'-';
  const bool modifica = letra >= kModificadoras && letra < kTrasModificadoras;
  if ((clase & (U_GC_L_MASK | U_GC_N_MASK | U_GC_MC_MASK)) == 0 || modifica) return U' ';
  return Principio(normalizador, letra);
}

}  // namespace autonomo
