// Self-describing value: what a database field, a grid cell or a late-bound member holds.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>

#include "platform/com/error.h"
#include "platform/com/fecha.h"
#include "platform/com/objeto.h"
#include "platform/com/texto.h"

namespace com {

class Variant {
 public:
  struct Vacio {
    bool operator==(const Vacio&) const = default;
  };
  struct Nulo {
    bool operator==(const Nulo&) const = default;
  };
  using Valor = std::variant<Vacio, Nulo, bool, std::int32_t, double, Fecha, std::string, Ptr<Desconocido>>;

  Variant() = default;
  Variant(bool v) : v_(v) {}
  Variant(std::int32_t v) : v_(v) {}
  Variant(double v) : v_(v) {}
  Variant(Fecha v) : v_(v) {}
  Variant(std::string v) : v_(std::move(v)) {}
  Variant(std::string_view v) : v_(std::string(v)) {}
  Variant(const char* v) : v_(std::string(v)) {}
  Variant(Ptr<Desconocido> v) : v_(std::move(v)) {}
  static Variant Null() {
    Variant v;
    v.v_ = Nulo{};
    return v;
  }

  bool EsVacio() const { return std::holds_alternative<Vacio>(v_); }
  bool EsNulo() const { return std::holds_alternative<Nulo>(v_); }
  bool EsTexto() const { return std::holds_alternative<std::string>(v_); }
  bool EsFecha() const { return std::holds_alternative<Fecha>(v_); }
  bool EsNumero() const { return std::holds_alternative<std::int32_t>(v_) || std::holds_alternative<double>(v_); }
  bool EsObjeto() const { return std::holds_alternative<Ptr<Desconocido>>(v_); }
  const Valor& Contenido() const { return v_; }
  // Null reference when the value holds no object.
  Ptr<Desconocido> Objeto() const {
    const auto* p = std::get_if<Ptr<Desconocido>>(&v_);
    return p == nullptr ? Ptr<Desconocido>{} : *p;
  }
  // Same kind and same content (no conversion).
  bool operator==(const Variant& otro) const { return v_ == otro.v_; }

 private:
  Valor v_;
};

// The platform's conversions. Empty converts to 0, false, "" or 30/12/1899. NULL raises Error kUsoDeNulo; what cannot
// be read as the target type raises kTipos; what does not fit it raises kDesbordamiento.
double CDbl(const Variant& v);        // text: digits with optional sign, grouping, currency symbol; true is -1
std::int16_t CInt(const Variant& v);  // halves to the even neighbour
std::int32_t CLng(const Variant& v);  // halves to the even neighbour
bool CBool(const Variant& v);         // text: a number, true/false, verdadero/falso (case-blind)
Fecha CDate(const Variant& v);        // text: "dd/mm/yyyy" or ISO, each with an optional time; numbers are COM dates
std::string CStr(const Variant& v);   // dates in the regional short form (with the time when it is not midnight)

// Text of a value; NULL, which other programs may have stored, is an empty text. Error kTipos for an object.
std::string TextoDe(const Variant& v);

// The same readings of a text without raising: nothing when it cannot be read.
std::optional<double> NumeroDe(std::string_view texto);
std::optional<Fecha> FechaDeTexto(std::string_view texto);

// The platform's "<>" on two values: numbers with numbers (also as text when one side is a number), dates with dates,
// else as text, case-sensitively. False (no difference) when either side is NULL.
bool Difieren(const Variant& a, const Variant& b);

// Round half to even at the given number of decimals (0 to 9). A value that is a half in decimal notation counts as a
// half even where its binary form is not exactly one.
double Redondea(double valor, int decimales);

}  // namespace com
