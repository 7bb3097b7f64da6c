#include "desktop/reparto.h"

#include <QTimer>

#include "guion/parte_diario.h"
#include "host/standalone/parametros.h"
#include "platform/com/error.h"

namespace vista {

Reparto::Reparto(autonomo::Anfitrion& anfitrion, const autonomo::OpcionesConexion& base)
    : anfitrion_(anfitrion), base_(base) {
  constexpr int kRevisaCada = 10000;  // milliseconds
  if (base.EnMemoria()) return;
  auto* reloj = new QTimer(this);
  connect(reloj, &QTimer::timeout, this, [this] { Revisa(); });
  reloj->start(kRevisaCada);
  QTimer::singleShot(0, this, [this] { Revisa(); });
}

// Not in an open transaction: a question may stand in it.
void Reparto::Revisa() {
  if (anfitrion_.conexion()->EnTransaccion()) return;
  anfitrion_.CambiaElDia();
  if (cartero_ != nullptr) return;
  try {
    if (com::Recorta(autonomo::ValorParametro(*anfitrion_.conexion(), anfitrion::parametro::kCorreoServidor.clave))
            .empty())
      return;
  } catch (const com::Error&) {  // looked at again; the clerk's own work tells what is wrong
    return;
  }
  cartero_ = std::make_unique<autonomo::Cartero>(
      autonomo::Cartero::Opciones{base_,
                                  anfitrion_.reloj(),
                                  {},
                                  [this](const std::string& aviso) { anfitrion_.Avisa(aviso); },
                                  guion::ParteDeCadaDia()});
}

}  // namespace vista
