// JSON values as the scripted clerk writes them: members in the order in which they were put, numbers in their shortest
// form, text as UTF-8.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "platform/com/fecha.h"
#include "platform/com/variant.h"

namespace guion {

class Json {
 public:
  using Lista = std::vector<Json>;
  using Miembros = std::vector<std::pair<std::string, Json>>;

  Json() = default;  // null
  Json(bool v) : v_(v) {}
  Json(int v) : v_(v) {}
  Json(double v) : v_(v) {}
  Json(std::string v) : v_(std::move(v)) {}
  Json(std::string_view v) : v_(std::string(v)) {}
  Json(const char* v) : v_(std::string(v)) {}
  // "AAAA-MM-DD", with the time when it is not midnight.
  Json(com::Fecha v) : v_(com::AIso(v)) {}
  // Empty, NULL and objects without a value of their own give null.
  Json(const com::Variant& v);
  static Json Arreglo() { return Json(Valor(Lista{})); }
  static Json Arreglo(Lista elementos) { return Json(Valor(std::move(elementos))); }
  static Json Objeto() { return Json(Valor(Miembros{})); }

  // Array: one more element. Object: one more member.
  Json& Agrega(Json v);
  Json& Pon(std::string_view clave, Json v);

  // One line. Bytes that are not UTF-8 come out as U+FFFD; numbers that are not finite as null.
  std::string Texto() const;

 private:
  using Valor = std::variant<std::monostate, bool, int, double, std::string, Lista, Miembros>;
  explicit Json(Valor v) : v_(std::move(v)) {}
  void Escribe(std::string& salida) const;

  Valor v_;
};

}  // namespace guion
