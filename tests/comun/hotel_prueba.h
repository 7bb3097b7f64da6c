// A small hotel in memory, with both screens over the stand-alone host, for the tests of the screens.
//
// Today is Monday 9 March 2026, 10:30. Local currency MXN; USD at 17.50. Types: 0001 "Sencilla" (2 persons included, 3
// at most, product HAB1, 1,160 a night, extra adult 232, extra minor 116) with rooms 0101 and 0102 and the withdrawn
// 0109; 0002 "Doble" (2 included, 4 at most, product HAB2, 1,740 a night) with room 0201. Tax 0.16 at branch 0001.
// Clients: 0000000001 "Ana López", 0000000002 "Comercial del Norte" (with a stored card), 0000000003 withdrawn,
// 0000000009 "Ventas web". Payment forms: 0001 "Efectivo", 0004 "Tarjeta" (type "04").
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "availability/frmDisponibilidad.h"
#include "host/standalone/anfitrion.h"
#include "host/standalone/postgres.h"
#include "platform/com/error.h"
#include "publico/publico.h"
#include "reservation/frmKV207.h"
#include "tests/comun/conexion_vigilada.h"
#include "tests/comun/escritorio_prueba.h"

namespace pruebas {

class HotelPrueba : public ::testing::Test {
 protected:
  // ruta: the database's file, or its address.
  explicit HotelPrueba(const std::string& ruta = ":memory:") : host(Opciones(ruta)), pantalla(tablero) {
    host.RegistraClases();
    publico::Arranca();
    conexion = std::make_shared<ConexionVigilada>(host.conexion());
    host.conexion(conexion);
    Llena();
  }
  ~HotelPrueba() override {
    pantalla.Descarga();
    publico::Olvida();
    controles::FijaMayusculas(false);
    host.QuitaClases();
  }

  // --- the database --------------------------------------------------------------------------------------------------
  // A tester's own statement.
  ado::RecordsetPtr Sql(const std::string& sentencia) { return host.conexion()->Directa(sentencia); }
  // First cell of the first row as text; "(nada)" when there is no row, "(nulo)" for NULL.
  std::string Celda(const std::string& sentencia) {
    const ado::RecordsetPtr filas = Sql(sentencia);
    if (filas->Eof()) return "(nada)";
    const com::Variant valor = filas->Fields(std::size_t{0}).Value();
    return valor.EsNulo() ? "(nulo)" : com::CStr(valor);
  }
  // An active reservation of guest 0000000001, cash, MXN, from 10 to 12 March, in the given rooms (2 adults, 2,320
  // each), as the store leaves it.
  void InsertaReservacion(const std::string& folio, const std::vector<std::string>& habitaciones,
                          const std::string& estado = "AC") {
    Sql("INSERT INTO Reservacion (Rs_Folio, Rs_Fecha, Rs_Llegada, Rs_Salida, Sc_Cve_Sucursal, Cl_Cve_Cliente, "
        "Rs_Huesped, Mn_Cve_Moneda, Rs_Tipo_Cambio, Fp_Cve_Forma_Pago, Rs_Referencia, Rs_Comentario, Rs_Notas, "
        "Es_Cve_Estado) VALUES ('" +
        folio +
        "', '2026-03-01', '2026-03-10', '2026-03-12', '0001', '0000000001', '0000000001', 'MXN', 1, '0001', 'REF', "
        "'Piso alto', 'Llega tarde', '" +
        estado + "')");
    int id = 0;
    for (const std::string& habitacion : habitaciones) {
      Sql("INSERT INTO Reservacion_Detalle (Rs_Folio, Rsd_Id, Hb_Cve_Habitacion, Rsd_Fecha_Inicio, Rsd_Fecha_Fin, "
          "Rsd_Cantidad, Rsd_Adultos, Rsd_Precio, Rsd_Precio_Lista, Rsd_Precio_Lista_Importe, Rsd_Precio_Descontado, "
          "Rsd_Precio_Descontado_Importe, Rsd_Impuesto_Factor, Rsd_Impuesto_Importe, Rsd_Precio_Neto, "
          "Rsd_Precio_Neto_Importe) VALUES ('" +
          folio + "', " + std::to_string(++id) + ", '" + habitacion +
          "', '2026-03-10', '2026-03-12', 2, 2, 2320, 1000, 2000, 1000, 2000, 0.16, 320, 1160, 2320)");
    }
  }

  // --- the clerk -----------------------------------------------------------------------------------------------------
  // Types a key and confirms it.
  static void Campo(controles::LookupField& campo, const std::string& texto) {
    campo.Teclea(texto);
    campo.Confirma();
  }
  void Abre() { pantalla.Muestra(); }
  void Pulsa(controles::Accion accion) { pantalla.Controles.Pulsa(accion); }
  // Shows the screen and starts a new reservation: guest and payment form entered, arrival 10 March, two nights.
  void Nueva() {
    if (!pantalla.cargado()) Abre();
    Pulsa(controles::Accion::Nuevo);
    Campo(pantalla.txtHuesped, "1");
    Campo(pantalla.txtForma_Pago, "1");
    pantalla.dpFecha_salida.Fija(Dia(2026, 3, 12));
  }
  // Loads a stored reservation.
  void Carga(const std::string& folio) {
    if (!pantalla.cargado()) Abre();
    Campo(pantalla.txtFolio, folio);
  }

  static com::Fecha Dia(int anio, int mes, int dia) { return com::FechaDe(anio, mes, dia); }

  autonomo::Anfitrion host;
  std::shared_ptr<ConexionVigilada> conexion;
  EscritorioPrueba escritorio;
  kv207::frmDisponibilidad tablero;
  kv207::frmKV207 pantalla;

 private:
  static autonomo::Opciones Opciones(const std::string& ruta) {
    autonomo::Opciones opciones;
    (autonomo::EsDireccion(ruta) ? opciones.base.conexion : opciones.base.ruta) = ruta;
    opciones.usuario = "MARTHA";
    opciones.ahora = com::FechaDe(2026, 3, 9, 10, 30);
    return opciones;
  }

  void Llena() {
    host.Parametro("FIN_MONEDA_LOCAL", "MXN");
    host.Cambio("USD", 17.5);
    for (
        const char* sentencia : {
            "INSERT INTO Moneda (Mn_Cve_Moneda, Mn_Descripcion) VALUES ('MXN', 'Peso mexicano'), ('USD', 'Dólar')",
            "INSERT INTO Forma_Pago (Fp_Cve_Forma_Pago, Fp_Descripcion, Fp_Tipo) VALUES ('0001', 'Efectivo', '01'), "
            "('0004', 'Tarjeta', '04 ')",
            "INSERT INTO Cliente (Cl_Cve_Cliente, Cl_Razon_Social_1, Es_Cve_Estado) VALUES ('0000000001', 'Ana López', "
            "'AC'), ('0000000002', 'Comercial del Norte', 'AC'), ('0000000003', 'Cliente de baja', 'BA'), "
            "('0000000009', 'Ventas web', 'AC')",
            "UPDATE Cliente SET Cl_Tarjeta_Credito = 'SI', Cl_Tarjeta_Banco = 'Banco Azul', Cl_Tarjeta_Numero = "
            "'4111', "
            "Cl_Tarjeta_Codigo_Seguridad = '123', Cl_Tarjeta_Vencimiento = '2027-05-31' WHERE Cl_Cve_Cliente = "
            "'0000000002'",
            "UPDATE Cliente SET Cl_Tarjeta_Banco = 'Banco Web' WHERE Cl_Cve_Cliente = '0000000009'",
            "INSERT INTO Grupo_Habitacion (Ghb_Cve_Grupo_Habitacion, Ghb_Descripcion) VALUES ('0001', 'Torre')",
            "INSERT INTO Area_Habitacion (Ah_Cve_Area_Habitacion, Ah_Descripcion) VALUES ('0001', 'Jardín')",
            "INSERT INTO Producto (Pr_Cve_Producto, Pr_Descripcion, Pr_Unidad_Venta) VALUES ('HAB1', 'Noche sencilla', "
            "'NOCHE'), ('HAB2', 'Noche doble', 'NOCHE')",
            "INSERT INTO Producto_Precio (Pr_Cve_Producto, Pp_Precio_1) VALUES ('HAB1', 1160), ('HAB2', 1740)",
            "INSERT INTO Tipo_Habitacion (Th_Cve_Tipo_Habitacion, Th_Descripcion, Th_Num_Personas, "
            "Th_Num_Personas_Maximo, Pr_Cve_Producto) VALUES ('0001', 'Sencilla', 2, 3, 'HAB1'), ('0002', 'Doble', 2, "
            "4, 'HAB2')",
            "INSERT INTO Habitacion (Hb_Cve_Habitacion, Hb_Descripcion, Th_Cve_Tipo_Habitacion, "
            "Ghb_Cve_Grupo_Habitacion, Ah_Cve_Area_Habitacion, Es_Cve_Estado) VALUES ('0101', 'Vista al mar', '0001', "
            "'0001', '0001', 'AC'), ('0102', 'Interior', '0001', '0001', '0001', 'AC'), ('0109', 'Clausurada', '0001', "
            "'0001', '0001', 'BA'), ('0201', 'Terraza', '0002', '0001', '0001', 'AC')",
        }) {
      Sql(sentencia);
    }
    host.Impuesto("0001", "HAB1", 0.16);
    host.Impuesto("0001", "HAB2", 0.16);
    host.Tarifa("0001", 1160, 232, 116);
    host.Tarifa("0002", 1740, 232, 116);
  }
};

}  // namespace pruebas
