// Record viewer: shows one record of a table.
#include "host/contract/pantallas.h"
#include "host/standalone/anfitrion.h"
#include "host/standalone/fabricas.h"
#include "host/standalone/nombres.h"
#include "host/standalone/registro.h"
#include "platform/controls/formulario.h"

namespace autonomo {

namespace {

class ServicioVisorRegistro : public com::Objeto<anfitrion::VisorRegistro> {
 public:
  explicit ServicioVisorRegistro(Anfitrion& host) : host_(host) {}

  void MuestraRegistro(const std::string& tabla, const std::string& columna, const std::string& clave,
                       const std::string& /*e1*/, const std::string& /*e2*/, const std::string& /*e3*/,
                       const std::string& /*e4*/) override {
    const registro::Operacion operacion("VisorRegistro.MuestraRegistro");
    const NombresDeTabla nombres = RevisaNombres(tabla, {columna});
    host_.AnotaVisto({nombres.tabla, nombres.columnas.front(), clave});
    controles::EscritorioActual().AbrePantalla(anfitrion::pantalla::kMuestraRegistro,
                                               {nombres.tabla, nombres.columnas.front(), clave});
  }

 private:
  Anfitrion& host_;
};

}  // namespace

com::Ptr<anfitrion::VisorRegistro> CreaVisorRegistro(Anfitrion& host) {
  return com::Ptr<anfitrion::VisorRegistro>(new ServicioVisorRegistro(host));
}

}  // namespace autonomo
