// System services: connection, current user, parameters, option rights, message boxes.
#include "host/standalone/anfitrion.h"
#include "host/standalone/fabricas.h"
#include "host/standalone/parametros.h"
#include "host/standalone/permisos.h"
#include "host/standalone/registro.h"
#include "host/standalone/transaccion.h"
#include "platform/com/error.h"

namespace autonomo {

namespace {

class ServicioSistema : public com::Objeto<anfitrion::Sistema> {
 public:
  explicit ServicioSistema(Anfitrion& host) : host_(host) {}

  ado::ConnectionPtr ObtenConexion() override { return host_.Entregada(); }
  std::string UsuarioActual() override { return host_.usuario(); }
  void ForzarMayusculas(bool fuerza) override { controles::FijaMayusculas(fuerza); }

  // Values are kept as text and handed out as text; callers convert them. One that they could not convert is named
  // here, but for a colour: the board has its own for those.
  com::Variant LeeParametro(const std::string& clave, int /*ambito*/, const std::string& /*tipo*/,
                            const std::string& defecto) override {
    const registro::Operacion operacion("Sistema.LeeParametro");
    const std::optional<std::string> valor = ParametroGuardado(*host_.conexion(), clave);
    if (!valor) return defecto;
    const DefinicionParametro* definicion = BuscaParametro(clave);
    if (definicion != nullptr && definicion->tipo != TipoParametro::Color) {
      if (const std::string motivo = MotivoIlegible(*definicion, *valor); !motivo.empty())
        throw com::Error(com::error::kTipos, motivo);
    }
    return *valor;
  }

  bool TienePermiso(const std::string& pantalla, const std::string& opcion, const std::string& /*texto*/) override {
    const registro::Operacion operacion("Sistema.TienePermiso");
    return autonomo::TienePermiso(*host_.conexion(), host_.usuario(), pantalla, opcion);
  }

  int Mensaje(const com::Variant& texto, int estilo, const com::Variant& titulo, const com::Variant& ventana,
              const com::Variant& pantalla, const com::Variant& id) override {
    const registro::Operacion operacion("Sistema.Mensaje");
    controles::CajaMensaje caja;
    caja.texto = com::CStr(texto);
    caja.estilo = estilo;
    caja.titulo = com::CStr(titulo);
    caja.ventana = com::CLng(ventana);
    caja.pantalla = com::CStr(pantalla);
    caja.id = com::CStr(id);
    caja.detalle = controles::DetalleActual();
    registro::Anota("aviso " + caja.id + ", estilo " + std::to_string(estilo) + ", " + caja.titulo +
                    registro::PorLaFalla());
    // No other desk waits while this one thinks.
    const SinBloqueo pausa(*host_.conexion());
    const int respuesta = controles::EscritorioActual().Mensaje(caja);
    registro::Anota("respuesta " + std::to_string(respuesta) + " a " + caja.id);
    return respuesta;
  }

 private:
  Anfitrion& host_;
};

}  // namespace

com::Ptr<anfitrion::Sistema> CreaSistema(Anfitrion& host) {
  return com::Ptr<anfitrion::Sistema>(new ServicioSistema(host));
}

}  // namespace autonomo
