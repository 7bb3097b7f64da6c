#include "component/precios.h"

#include "reservation/frmKV207.h"

namespace kv207 {

OrigenPrecio OrigenDelPrecio(const controles::Formulario& pantalla, int fila) {
  const auto* suya = dynamic_cast<const frmKV207*>(&pantalla);
  return suya == nullptr ? OrigenPrecio::Ninguno : suya->OrigenDe(fila);
}

std::string AvisoDePrecio(const controles::Formulario& pantalla) {
  const auto* suya = dynamic_cast<const frmKV207*>(&pantalla);
  return suya == nullptr ? std::string() : suya->AvisoDePrecio();
}

}  // namespace kv207
