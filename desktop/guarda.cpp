#include "desktop/guarda.h"

#include <utility>

#include "host/standalone/registro.h"

namespace vista {

namespace {
std::function<void(const QString&)> avisa;
// Failure kept by the innermost ConFallas; none runs when it is null.
std::exception_ptr* guardada = nullptr;
}  // namespace

void Corre(const std::function<void()>& accion) {
  try {
    accion();
  } catch (const std::exception& e) {
    if (guardada != nullptr) {
      if (!*guardada) *guardada = std::current_exception();
    } else if (avisa) {
      autonomo::registro::AnotaFalla(e);
      avisa(QString::fromUtf8(e.what()));
    }
  }
}

void ConFallas(const std::function<void()>& accion) {
  std::exception_ptr falla;
  std::exception_ptr* const anterior = std::exchange(guardada, &falla);
  try {
    accion();
  } catch (...) {
    guardada = anterior;
    throw;
  }
  guardada = anterior;
  if (falla) std::rethrow_exception(falla);
}

void FijaAvisadorDeFallas(std::function<void(const QString& descripcion)> avisador) { avisa = std::move(avisador); }

}  // namespace vista
