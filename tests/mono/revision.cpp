#include "tests/mono/revision.h"

#include "platform/ado/celda.h"
#include "platform/com/texto.h"
#include "platform/com/variant.h"

namespace mono {

namespace {

struct Regla {
  const char* que;
  const char* excepciones;  // gives no row
};

constexpr Regla kReglas[] = {
    {"a night is sold twice",
     "SELECT a.Hb_Cve_Habitacion, a.Rs_Folio, b.Rs_Folio AS Otro FROM Reservacion_Detalle a "
     "INNER JOIN Reservacion_Detalle b ON a.Hb_Cve_Habitacion = b.Hb_Cve_Habitacion "
     "AND a.Rsd_Fecha_Inicio < b.Rsd_Fecha_Fin AND b.Rsd_Fecha_Inicio < a.Rsd_Fecha_Fin "
     "AND (a.Rs_Folio < b.Rs_Folio OR (a.Rs_Folio = b.Rs_Folio AND a.Rsd_Id < b.Rsd_Id)) "
     "INNER JOIN Reservacion x ON x.Rs_Folio = a.Rs_Folio AND x.Es_Cve_Estado NOT IN ('CA', 'CE') "
     "INNER JOIN Reservacion y ON y.Rs_Folio = b.Rs_Folio AND y.Es_Cve_Estado NOT IN ('CA', 'CE')"},
    {"a reservation has no lines",
     "SELECT Rs_Folio FROM Reservacion WHERE Rs_Folio NOT IN (SELECT Rs_Folio FROM Reservacion_Detalle)"},
    {"lines have no reservation",
     "SELECT Rs_Folio FROM Reservacion_Detalle WHERE Rs_Folio NOT IN (SELECT Rs_Folio FROM Reservacion)"},
    {"a reservation has no version",
     "SELECT Rs_Folio FROM Reservacion WHERE Rs_Folio NOT IN (SELECT Rs_Folio FROM Reservacion_Version)"},
    {"a line is not within its reservation",
     "SELECT D.Rs_Folio, D.Rsd_Id FROM Reservacion_Detalle D INNER JOIN Reservacion R ON R.Rs_Folio = D.Rs_Folio "
     "WHERE D.Rsd_Fecha_Fin <= D.Rsd_Fecha_Inicio OR D.Rsd_Fecha_Inicio < R.Rs_Llegada "
     "OR D.Rsd_Fecha_Fin > R.Rs_Salida"},
    {"a line's amounts do not add up",
     "SELECT Rs_Folio, Rsd_Id FROM Reservacion_Detalle WHERE Rsd_Precio_Neto_Importe < 0 "
     "OR ABS(Rsd_Precio_Descontado_Importe + Rsd_Impuesto_Importe - Rsd_Precio_Neto_Importe) > 0.01 "
     "OR ABS(Rsd_Precio_Lista_Importe - Rsd_Descuento_Importe - Rsd_Precio_Descontado_Importe) > 0.01"},
    {"persons are negative",
     "SELECT Rs_Folio, Rsd_Id FROM Reservacion_Detalle "
     "WHERE Rsd_Adultos < 0 OR Rsd_Menores < 0 OR Rsd_Infantes < 0"},
    {"a state is none", "SELECT Rs_Folio FROM Reservacion WHERE Es_Cve_Estado NOT IN ('AC', 'CO', 'CA', 'CE', 'AP')"},
    {"what a key stands for is not there",
     "SELECT Rs_Folio FROM Reservacion WHERE Rs_Huesped NOT IN (SELECT Cl_Cve_Cliente FROM Cliente) "
     "OR Fp_Cve_Forma_Pago NOT IN (SELECT Fp_Cve_Forma_Pago FROM Forma_Pago)"},
};

// Values without trailing blanks, of which the screen's statements add some.
std::string Filas(ado::Recordset& rs) {
  std::string filas;
  for (; !rs.Eof(); rs.MoveNext()) {
    for (std::size_t c = 0; c < rs.Nombres().size(); ++c) {
      const com::Variant& valor = rs.Fields(c).Value();
      filas += valor.EsNulo() ? "-|" : com::RecortaDerecha(com::CStr(valor)) + "|";
    }
    filas += "\n";
  }
  return filas;
}

std::string Donde(const std::string& folio) { return " WHERE Rs_Folio = '" + folio + "'"; }

}  // namespace

std::string Revisa(autonomo::Conexion& conexion) {
  for (const Regla& regla : kReglas) {
    const std::string filas = Filas(*conexion.Directa(regla.excepciones));
    if (!filas.empty()) return std::string(regla.que) + ": " + filas.substr(0, 300);
  }
  // None was lost between two others: a refused save gives its number back.
  int anterior = 0;
  for (const std::string& folio : Folios(conexion)) {
    const int numero = com::CLng(folio);
    if (anterior != 0 && numero != anterior + 1) return "a folio is missing before " + folio;
    anterior = numero;
  }
  return {};
}

std::vector<std::string> Folios(autonomo::Conexion& conexion) {
  std::vector<std::string> folios;
  const ado::RecordsetPtr rs = conexion.Directa("SELECT Rs_Folio FROM Reservacion ORDER BY Rs_Folio");
  for (; !rs->Eof(); rs->MoveNext()) folios.push_back(com::CStr(rs->Fields(0).Value()));
  return folios;
}

std::string Imagen(autonomo::Conexion& conexion, const std::string& folio) {
  std::string imagen;
  for (const char* consulta :
       {"SELECT Rs_Folio, Rs_Fecha, Rs_Llegada, Rs_Salida, Sc_Cve_Sucursal, Cl_Cve_Cliente, Rs_Huesped, "
        "Mn_Cve_Moneda, Fp_Cve_Forma_Pago, Rs_Referencia, Rs_Comentario, Rs_Notas, Es_Cve_Estado, "
        "Oper_Baja, Fecha_Baja FROM Reservacion",
        "SELECT * FROM Reservacion_Datos_Tarjeta", "SELECT * FROM Reservacion_Detalle"}) {
    imagen += Filas(*conexion.Directa(consulta + Donde(folio)));
  }
  return imagen;
}

double Total(autonomo::Conexion& conexion, const std::string& folio) {
  return ado::CeldaNumero(
      *conexion.Directa("SELECT SUM(Rsd_Precio_Neto_Importe) FROM Reservacion_Detalle" + Donde(folio)), 0);
}

}  // namespace mono
