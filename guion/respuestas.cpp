#include "guion/respuestas.h"

#include <algorithm>

#include "host/contract/mensajes.h"
#include "platform/com/error.h"

namespace guion {

namespace {

constexpr std::string_view kPrefijo = "ERR-ID:";

std::string IdCompleto(const std::string& id) {
  std::string completo = id.starts_with(kPrefijo) ? id : std::string(kPrefijo) + id;
  const auto& todos = anfitrion::mensaje::Todos();
  const bool existe = std::ranges::any_of(todos, [&](const auto& m) { return m.id == completo; });
  if (!existe) throw com::Error(com::error::kArgumento, "Ningún mensaje tiene el identificador «" + id + "»");
  return completo;
}

std::string TomaPrimero(std::deque<std::string>& cola) {
  std::string primero = std::move(cola.front());
  cola.pop_front();
  return primero;
}

}  // namespace

bool TieneBoton(int estilo, int respuesta) {
  namespace caja = controles::caja;
  switch (estilo & caja::kBotones) {
    case 0:
      return respuesta == controles::kAceptar;
    case caja::kAceptarCancelar:
      return respuesta == controles::kAceptar || respuesta == controles::kCancelar;
    case caja::kSiNo:
      return respuesta == controles::kSi || respuesta == controles::kNo;
    default:
      return false;
  }
}

void Respuestas::Prepara(const std::string& id, int respuesta) {
  const bool existe = respuesta == controles::kAceptar || respuesta == controles::kCancelar ||
                      respuesta == controles::kSi || respuesta == controles::kNo;
  if (!existe) throw com::Error(com::error::kArgumento, "Una respuesta es 1 (Aceptar), 2 (Cancelar), 6 (Sí) o 7 (No)");
  preparadas_[IdCompleto(id)].push_back(respuesta);
}

int Respuestas::Decide(const controles::CajaMensaje& caja) {
  const int normal = controles::RespuestaPredeterminada(caja.estilo);
  const auto cola = preparadas_.find(caja.id);
  if (cola == preparadas_.end() || cola->second.empty()) return normal;
  const int respuesta = cola->second.front();
  cola->second.pop_front();
  if (TieneBoton(caja.estilo, respuesta)) return respuesta;
  queja_ = "El mensaje " + caja.id + " no tiene botón para la respuesta " + std::to_string(respuesta);
  return normal;
}

std::string Respuestas::Notas(const std::string& texto) { return notas_.empty() ? texto : TomaPrimero(notas_); }

std::string Respuestas::Catalogo() { return catalogo_.empty() ? std::string() : TomaPrimero(catalogo_); }

}  // namespace guion
