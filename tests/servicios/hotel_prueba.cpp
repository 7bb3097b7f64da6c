#include "tests/servicios/hotel_prueba.h"

#include "host/standalone/postgres.h"

namespace pruebas {

com::Fecha Dia(std::string_view iso) { return com::DeIso(iso).value(); }

autonomo::Opciones OpcionesDePrueba(const std::string& ruta) {
  autonomo::Opciones o;
  (autonomo::EsDireccion(ruta) ? o.base.conexion : o.base.ruta) = ruta;
  o.ahora = Dia(kHoy);
  return o;
}

void LlenaHotelChico(autonomo::Anfitrion& host) {
  autonomo::Conexion& base = *host.conexion();
  for (const char* sentencia : {
           "INSERT INTO Producto (Pr_Cve_Producto, Pr_Descripcion, Pr_Unidad_Venta) VALUES ('HAB1', 'Noche', 'NOCHE')",
           "INSERT INTO Producto_Precio (Pr_Cve_Producto, Pp_Precio_1) VALUES ('HAB1', 1160)",
           "INSERT INTO Tipo_Habitacion (Th_Cve_Tipo_Habitacion, Th_Descripcion, Th_Num_Personas, "
           "Th_Num_Personas_Maximo, Pr_Cve_Producto) VALUES ('0001', 'Doble', 2, 4, 'HAB1')",
           "INSERT INTO Habitacion (Hb_Cve_Habitacion, Hb_Descripcion, Th_Cve_Tipo_Habitacion) "
           "VALUES ('0101', '101 Jardín', '0001')",
           "INSERT INTO Habitacion (Hb_Cve_Habitacion, Hb_Descripcion, Th_Cve_Tipo_Habitacion) "
           "VALUES ('0102', '102 Jardín', '0001')",
           "INSERT INTO Habitacion (Hb_Cve_Habitacion, Hb_Descripcion, Th_Cve_Tipo_Habitacion, Es_Cve_Estado) "
           "VALUES ('0109', '109 Bodega', '0001', 'BA')",
           "INSERT INTO Cliente (Cl_Cve_Cliente, Cl_Razon_Social_1, Cl_Correo) "
           "VALUES ('0000000001', 'María Hernández', 'maria@example.com')",
           "INSERT INTO Cliente (Cl_Cve_Cliente, Cl_Razon_Social_1) VALUES ('0000000002', 'José Martínez')",
           "INSERT INTO Forma_Pago (Fp_Cve_Forma_Pago, Fp_Descripcion, Fp_Tipo) VALUES ('0001', 'Efectivo', '01')",
           "INSERT INTO Moneda (Mn_Cve_Moneda, Mn_Descripcion) VALUES ('MXN', 'Peso')",
           "INSERT INTO Moneda (Mn_Cve_Moneda, Mn_Descripcion) VALUES ('USD', 'Dólar')",
       }) {
    base.Consulta(sentencia);
  }
  host.Parametro("FIN_MONEDA_LOCAL", "MXN");
  host.Parametro("HT_OVER_BOOKING", "0");
  host.Impuesto("", "HAB1", 0.16);
}

com::Variant HotelChico::Celda(std::string_view sentencia, const autonomo::Conexion::Parametros& parametros) {
  const ado::RecordsetPtr rs = base().Consulta(sentencia, parametros);
  return rs->Eof() ? com::Variant() : rs->Fields(0).Value();
}

int HotelChico::Cuenta(const std::string& tabla) {
  return com::CLng(Celda("SELECT COUNT(*) AS Cantidad FROM " + tabla));
}

anfitrion::DatosReservacion EncabezadoDe(const std::string& folio, std::string_view llegada, std::string_view salida) {
  anfitrion::DatosReservacion e;
  e.folio = folio;
  e.fecha = com::ADiasCom(Dia(kHoy));
  e.llegada = com::ADiasCom(Dia(llegada));
  e.salida = com::ADiasCom(Dia(salida));
  e.moneda = "MXN";
  e.tipoCambio = 1;
  e.sucursal = "0001";
  e.huesped = "0000000001";
  e.cliente = "0000000001";
  e.formaPago = "0001";
  return e;
}

anfitrion::DatosDetalle RenglonDe(const std::string& habitacion, std::string_view inicio, std::string_view fin,
                                  double total) {
  anfitrion::DatosDetalle l;
  l.habitacion = habitacion;
  l.inicio = com::ADiasCom(Dia(inicio));
  l.fin = com::ADiasCom(Dia(fin));
  l.adultos = 2;
  l.precio = total;
  l.total = total;
  return l;
}

std::string GuardaUna(autonomo::Anfitrion& host, const std::string& habitacion, std::string_view inicio,
                      std::string_view fin, double total, std::string* error) {
  const com::Ptr<anfitrion::Hotel> hotel = autonomo::CreaHotel(host);
  host.conexion()->BeginTrans();
  hotel->Encabezado(EncabezadoDe("", inicio, fin));
  bool ok = hotel->GuardaReservacion();
  if (ok) {
    hotel->Detalle(RenglonDe(habitacion, inicio, fin, total));
    ok = hotel->GuardaDetalle(true);
  }
  if (error != nullptr) *error = hotel->ErrorHotel();
  if (!ok) {
    host.conexion()->RollbackTrans();
    return "";
  }
  host.conexion()->CommitTrans();
  return hotel->Encabezado().folio.Texto();
}

}  // namespace pruebas
