#include "platform/controls/metrica.h"

#include <cstddef>

#include "platform/com/texto.h"

namespace controles {
namespace {

// Twips of one em of the font: 8.25 points of 20 twips.
constexpr int kEm = 165;
// Advance widths of the characters 32 to 126, in thousandths of an em.
constexpr int kAnchos[] = {
    278, 278, 355, 556, 556, 889, 667, 191, 333, 333, 389, 584, 278, 333,  278, 278, 556, 556, 556,
    556, 556, 556, 556, 556, 556, 556, 278, 278, 584, 584, 584, 556, 1015, 667, 667, 722, 722, 667,
    611, 778, 722, 278, 500, 667, 556, 833, 722, 778, 667, 778, 722, 667,  611, 722, 667, 944, 667,
    667, 611, 278, 278, 278, 469, 556, 333, 556, 556, 500, 556, 556, 278,  556, 556, 222, 222, 500,
    222, 833, 556, 556, 556, 556, 333, 500, 278, 556, 500, 722, 500, 500,  500, 334, 278, 334, 584,
};
static_assert(sizeof kAnchos / sizeof kAnchos[0] == 95);
// Base characters of the code points C0 to FF.
constexpr std::string_view kBases = "AAAAAAACEEEEIIIIDNOOOOOxOUUUUYPsaaaaaaaceeeeiiiidnooooo+ouuuuypy";
static_assert(kBases.size() == 64);

int AnchoCaracter(char32_t c) {
  if (c >= 0xC0 && c <= 0xFF) c = static_cast<unsigned char>(kBases[c - 0xC0]);
  if (c == 0xA0 || c == 0xA1) c = c == 0xA0 ? U' ' : U'!';
  if (c == 0xBF) c = U'?';
  return c >= 32 && c <= 126 ? kAnchos[c - 32] : kAnchos['0' - 32];
}

}  // namespace

int AnchoTextoEstandar(std::string_view utf8) {
  int milesimas = 0;
  for (std::size_t i = 0; i < utf8.size();) milesimas += AnchoCaracter(com::LeeUtf8(utf8, i));
  return (milesimas * kEm + 500) / 1000;
}

}  // namespace controles
