#include "host/standalone/impuestos.h"

#include "host/standalone/anfitrion.h"
#include "host/standalone/fabricas.h"
#include "host/standalone/registro.h"

namespace autonomo {

void Desglosa(anfitrion::Desglose& d) {
  const double conImpuesto = 1 + d.impuestoFactor;
  double lista = 0;
  double base = 0;
  if (d.total == 0) {
    lista = d.precioNeto / conImpuesto;
    d.descuentoImporte = d.descuentoFactor * lista;
    const double descontado = lista - d.descuentoImporte;
    d.globalImporte = d.globalFactor * descontado;
    base = descontado - d.globalImporte;
    d.precioLista = d.precioNeto;
  } else {
    base = d.total / conImpuesto;
    const double resto = (1 - d.descuentoFactor) * (1 - d.globalFactor);
    lista = resto != 0 ? base / resto : base;
    d.descuentoImporte = d.descuentoFactor * lista;
    d.globalImporte = d.globalFactor * (lista - d.descuentoImporte);
    d.precioLista = resto != 0 ? d.total / resto : d.total;
  }
  d.precioListaImporte = lista;
  d.precioDescontadoImporte = base;
  d.impuestoImporte = d.impuestoFactor * base;
  d.total = base + d.impuestoImporte;
  d.precioNeto = d.total;
  d.precioDescontado = d.total;
}

double TasaDeImpuesto(Conexion& conexion, const std::string& sucursal, const std::string& producto) {
  const ado::RecordsetPtr rs = conexion.Consulta(
      "SELECT Sc_Cve_Sucursal, Im_Factor FROM Impuesto "
      "WHERE Pr_Cve_Producto = ? AND (Sc_Cve_Sucursal = ? OR Sc_Cve_Sucursal = '')",
      {producto, sucursal});
  double factor = 0;
  for (; !rs->Eof(); rs->MoveNext()) {
    const bool deSucursal = !com::Recorta(com::CStr(rs->Fields(0).Value())).empty();
    factor = com::CDbl(rs->Fields(1).Value());
    if (deSucursal) break;
  }
  return factor;
}

namespace {

class ServicioCalculoImpuesto : public com::Objeto<anfitrion::CalculoImpuesto> {
 public:
  explicit ServicioCalculoImpuesto(Anfitrion& host) : host_(host) {}
  double TasaImpuesto(const std::string& sucursal, const std::string& /*cliente*/,
                      const std::string& producto) override {
    const registro::Operacion operacion("CalculoImpuesto.TasaImpuesto");
    return TasaDeImpuesto(*host_.conexion(), sucursal, producto);
  }

 private:
  Anfitrion& host_;
};

}  // namespace

com::Ptr<anfitrion::CalculoImpuesto> CreaCalculoImpuesto(Anfitrion& host) {
  return com::Ptr<anfitrion::CalculoImpuesto>(new ServicioCalculoImpuesto(host));
}

}  // namespace autonomo
