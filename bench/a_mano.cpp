#include "bench/a_mano.h"

#include <algorithm>

#include "bench/hotel.h"

namespace banco {

namespace {

using kv207::ModoVista;

constexpr int kUltimoMinuto = (23 * 60 + 59) * 60;

const char* Filas(ModoVista modo) {
  return modo == ModoVista::PorTipo
             ? "SELECT DISTINCT THb.Th_Cve_Tipo_Habitacion, THb.Th_Descripcion FROM Tipo_Habitacion THb "
               "JOIN Habitacion HB ON HB.Th_Cve_Tipo_Habitacion = THb.Th_Cve_Tipo_Habitacion "
               "JOIN Producto PR ON PR.Pr_Cve_Producto = THb.Pr_Cve_Producto "
               "JOIN Producto_Precio PRp ON PRp.Pr_Cve_Producto = PR.Pr_Cve_Producto WHERE THb.Es_Cve_Estado <> 'BA'"
             : "SELECT HB.Hb_Cve_Habitacion, THb.Th_Descripcion || ' / ' || HB.Hb_Descripcion FROM Habitacion HB "
               "JOIN Tipo_Habitacion THb ON THb.Th_Cve_Tipo_Habitacion = HB.Th_Cve_Tipo_Habitacion "
               "JOIN Producto PR ON PR.Pr_Cve_Producto = THb.Pr_Cve_Producto "
               "JOIN Producto_Precio PRp ON PRp.Pr_Cve_Producto = PR.Pr_Cve_Producto WHERE HB.Es_Cve_Estado <> 'BA'";
}

const char* Totales(ModoVista modo) {
  return modo == ModoVista::PorTipo ? "SELECT Th_Cve_Tipo_Habitacion, COUNT(*) FROM Habitacion "
                                      "WHERE Es_Cve_Estado <> 'BA' GROUP BY Th_Cve_Tipo_Habitacion"
                                    : "SELECT Hb_Cve_Habitacion, 1 FROM Habitacion WHERE Es_Cve_Estado <> 'BA'";
}

std::string ClaveDe(ModoVista modo) {
  return modo == ModoVista::PorTipo ? "HB.Th_Cve_Tipo_Habitacion" : "HB.Hb_Cve_Habitacion";
}

std::string Reservaciones(ModoVista modo) {
  return "SELECT " + ClaveDe(modo) +
         ", RSd.Rsd_Fecha_Inicio, RSd.Rsd_Fecha_Fin FROM Habitacion HB "
         "CROSS JOIN Reservacion_Detalle RSd ON RSd.Hb_Cve_Habitacion = HB.Hb_Cve_Habitacion "
         "CROSS JOIN Reservacion RS INDEXED BY Reservacion_1 ON RS.Rs_Folio = RSd.Rs_Folio "
         "WHERE HB.Es_Cve_Estado <> 'BA' AND HB.Hb_Cve_Habitacion NOT IN (SELECT CId.Hb_Cve_Habitacion FROM Check_In "
         "CI "
         "CROSS JOIN Check_In_Detalle CId ON CId.Ci_Folio = CI.Ci_Folio WHERE CI.Es_Cve_Estado = 'AC') "
         "AND RSd.Rsd_Fecha_Fin >= ?1 AND RSd.Rsd_Fecha_Inicio <= ?2 AND RS.Es_Cve_Estado NOT IN ('CA','CE')";
}

std::string Estancias(ModoVista modo) {
  return "SELECT " + ClaveDe(modo) +
         ", CI.Ci_Llegada, CI.Ci_Salida FROM Check_In CI "
         "CROSS JOIN Check_In_Detalle CId ON CId.Ci_Folio = CI.Ci_Folio "
         "CROSS JOIN Habitacion HB ON HB.Hb_Cve_Habitacion = CId.Hb_Cve_Habitacion "
         "WHERE CI.Es_Cve_Estado NOT IN ('CE','CA') AND CI.Ci_Salida >= ?1 AND CI.Ci_Llegada <= ?2";
}

std::string Bloqueos(ModoVista modo) {
  return "SELECT " + ClaveDe(modo) +
         ", HBb.Hbb_Fecha_Inicio, HBb.Hbb_Fecha_Fin FROM Habitacion HB "
         "CROSS JOIN Habitacion_Bloqueo HBb ON HBb.Hb_Cve_Habitacion = HB.Hb_Cve_Habitacion "
         "WHERE HBb.Es_Cve_Estado = 'AC' AND HBb.Hbb_Fecha_Fin >= ?1 AND HBb.Hbb_Fecha_Inicio <= ?2";
}

int Digitos(std::string_view texto, std::size_t desde, std::size_t cuantos) {
  int n = 0;
  for (std::size_t i = desde; i < desde + cuantos; ++i) n = 10 * n + (texto[i] - '0');
  return n;
}

// Seconds from the first night on; the text is 'AAAA-MM-DD' with or without ' HH:MM:SS'.
std::int64_t Segundos(std::string_view texto) {
  const int a = Digitos(texto, 0, 4) - (Digitos(texto, 5, 2) <= 2 ? 1 : 0);
  const int m = (Digitos(texto, 5, 2) + 9) % 12;
  static const int origen = Hoy().dia;
  constexpr int kMarzo0 = -693899;  // COM day number of 0000-03-01
  const int dia = 365 * a + a / 4 - a / 100 + a / 400 + (153 * m + 2) / 5 + Digitos(texto, 8, 2) - 1 + kMarzo0;
  std::int64_t segundos = (dia - origen) * std::int64_t{86400};
  if (texto.size() >= 19) {
    segundos += 3600 * Digitos(texto, 11, 2) + 60 * Digitos(texto, 14, 2) + Digitos(texto, 17, 2);
  }
  return segundos;
}

// First night whose moment is not before the given second.
int Noche(std::int64_t segundos, int momento) {
  const std::int64_t desde = segundos - momento;
  const std::int64_t noche = desde <= 0 ? 0 : (desde + 86399) / 86400;
  return static_cast<int>(std::min<std::int64_t>(noche, kNoches));
}

}  // namespace

TableroAMano::TableroAMano(const Base& base, ModoVista modo)
    : modo_(modo),
      filas_(base, Filas(modo)),
      totales_(base, Totales(modo)),
      reservaciones_(base, Reservaciones(modo)),
      estancias_(base, Estancias(modo)),
      bloqueos_(base, Bloqueos(modo)) {}

void TableroAMano::LeeFilas() {
  matriz_.claves.clear();
  matriz_.nombres.clear();
  while (filas_.Fila()) {
    matriz_.claves.emplace_back(filas_.Texto(0));
    matriz_.nombres.emplace_back(filas_.Texto(1));
  }
  matriz_.totales.assign(matriz_.claves.size(), 0);
  while (totales_.Fila()) matriz_.totales[FilaDe(totales_.Texto(0))] = static_cast<int>(totales_.Entero(1));
}

// Rows come in the order of their keys, or nearly so.
std::size_t TableroAMano::FilaDe(std::string_view clave) {
  const std::size_t n = matriz_.claves.size();
  for (std::size_t i = 0; i < n; ++i) {
    const std::size_t fila = ultima_ + i < n ? ultima_ + i : ultima_ + i - n;
    if (matriz_.claves[fila] == clave) return ultima_ = fila;
  }
  Falla("Row " + std::string(clave) + " is not on the board");
}

void TableroAMano::Cuenta(Preparada& fuente, int segundo, std::vector<std::int16_t>& cuenta) {
  cuenta.assign(matriz_.claves.size() * kNoches, 0);
  static const std::string primera = com::AIso(Hoy()), ultima = com::AIso(com::MasDias(Hoy(), kNoches - 1));
  const std::string cola = segundo == 0 ? "" : " 23:59:00";
  const std::string desde = primera + cola, hasta = ultima + cola;
  fuente.Texto(1, desde).Texto(2, hasta);
  while (fuente.Fila()) {
    const std::size_t fila = FilaDe(fuente.Texto(0)) * kNoches;
    const int inicio = Noche(Segundos(fuente.Texto(1)), segundo), fin = Noche(Segundos(fuente.Texto(2)) + 1, segundo);
    for (int d = inicio; d < fin; ++d) ++cuenta[fila + static_cast<std::size_t>(d)];
  }
}

const Matriz& TableroAMano::Carga() {
  LeeFilas();
  Cuenta(reservaciones_, kUltimoMinuto, cuentas_[0]);
  Cuenta(estancias_, kUltimoMinuto, cuentas_[1]);
  Cuenta(bloqueos_, 0, cuentas_[2]);
  constexpr kv207::EstadoCelda kEstados[] = {kv207::EstadoCelda::Reservado, kv207::EstadoCelda::Ocupado,
                                             kv207::EstadoCelda::Bloqueado};
  const std::size_t celdas = matriz_.claves.size() * kNoches;
  matriz_.libres.resize(celdas);
  matriz_.estados.resize(celdas);
  for (std::size_t i = 0; i < celdas; ++i) {
    int libres = matriz_.totales[i / kNoches];
    kv207::EstadoCelda estado = kv207::EstadoCelda::Disponible;
    for (int fuente = 0; fuente < 3; ++fuente) {
      const int cantidad = cuentas_[fuente][i];
      libres -= cantidad;
      if (cantidad > 0) estado = kEstados[fuente];
    }
    if (modo_ == ModoVista::PorTipo && libres > 0) estado = kv207::EstadoCelda::Disponible;
    matriz_.libres[i] = static_cast<std::int16_t>(libres);
    matriz_.estados[i] = estado;
  }
  return matriz_;
}

// The board's own counts, joins and all.
CeldasAMano::CeldasAMano(const Base& base)
    : reservaciones_(base,
                     "SELECT COUNT(RSd.Hb_Cve_Habitacion) FROM Reservacion RS "
                     "JOIN Reservacion_Detalle RSd ON RSd.Rs_Folio = RS.Rs_Folio "
                     "JOIN Habitacion HB ON RSd.Hb_Cve_Habitacion = HB.Hb_Cve_Habitacion "
                     "JOIN Tipo_Habitacion THb ON HB.Th_Cve_Tipo_Habitacion = THb.Th_Cve_Tipo_Habitacion "
                     "WHERE HB.Es_Cve_Estado <> 'BA' AND RS.Es_Cve_Estado NOT IN ('CA','CE') "
                     "AND HB.Hb_Cve_Habitacion = ?1 "
                     "AND HB.Hb_Cve_Habitacion NOT IN (SELECT Hb_Cve_Habitacion FROM Check_In_Detalle "
                     "JOIN Check_In ON Check_In_Detalle.Ci_Folio = Check_In.Ci_Folio WHERE Es_Cve_Estado = 'AC') "
                     "AND ?2 BETWEEN RSd.Rsd_Fecha_Inicio AND RSd.Rsd_Fecha_Fin"),
      estancias_(base,
                 "SELECT COUNT(CId.Hb_Cve_Habitacion) FROM Check_In CI "
                 "JOIN Check_In_Detalle CId ON CId.Ci_Folio = CI.Ci_Folio "
                 "JOIN Habitacion HB ON CId.Hb_Cve_Habitacion = HB.Hb_Cve_Habitacion "
                 "JOIN Tipo_Habitacion THb ON HB.Th_Cve_Tipo_Habitacion = THb.Th_Cve_Tipo_Habitacion "
                 "WHERE HB.Es_Cve_Estado <> 'BA' AND CI.Es_Cve_Estado NOT IN ('CE','CA') "
                 "AND HB.Hb_Cve_Habitacion = ?1 AND ?2 BETWEEN CI.Ci_Llegada AND CI.Ci_Salida"),
      bloqueos_(base,
                "SELECT COUNT(HBb.Hb_Cve_Habitacion) FROM Habitacion_Bloqueo HBb "
                "JOIN Habitacion HB ON HBb.Hb_Cve_Habitacion = HB.Hb_Cve_Habitacion "
                "WHERE HBb.Es_Cve_Estado = 'AC' AND HB.Hb_Cve_Habitacion = ?1 "
                "AND ?2 BETWEEN HBb.Hbb_Fecha_Inicio AND HBb.Hbb_Fecha_Fin") {
  for (int d = 0; d < kNoches; ++d) {
    noches_.push_back(com::AIso(com::MasDias(Hoy(), d)));
    finales_.push_back(noches_.back() + " 23:59:00");
  }
}

int CeldasAMano::Cuenta(const std::vector<std::string>& claves) {
  int suma = 0;
  for (const std::string& clave : claves) {
    for (std::size_t d = 0; d < noches_.size(); ++d) {
      for (Preparada* fuente : {&reservaciones_, &estancias_, &bloqueos_}) {
        fuente->Texto(1, clave).Texto(2, fuente == &bloqueos_ ? noches_[d] : finales_[d]);
        fuente->Fila();
        suma += static_cast<int>(fuente->Entero(0));
        fuente->Reinicia();
      }
    }
  }
  return suma;
}

}  // namespace banco
