#include "bench/hotel.h"

#include <algorithm>
#include <filesystem>
#include <iostream>
#include <random>

#include "bench/sqlite.h"
#include "host/standalone/conexion.h"

namespace banco {

namespace {

constexpr int kTipos = 10, kAreas = 3, kGrupos = 4, kClientes = 20000;
constexpr int kDiasPorVenir = 120;

std::string Clave(int ancho, int n) {
  std::string texto = std::to_string(n);
  texto.insert(0, static_cast<std::size_t>(ancho) - std::min(texto.size(), static_cast<std::size_t>(ancho)), '0');
  return texto;
}

// Fills an empty database with the same hotel every time.
class Constructor {
 public:
  Constructor(autonomo::ConexionDeMotor& base, int dias) : base_(base), dias_(dias) {}

  void Construye() {
    base_.BeginTrans();
    Catalogos();
    Historia();
    BloqueosDeSiempre();
    base_.Consulta("INSERT INTO Parametro (Pm_Clave, Pm_Valor) VALUES ('HT_OVER_BOOKING', '0')");
    base_.CommitTrans();
  }

 private:
  int Azar(int menor, int mayor) {
    return menor + static_cast<int>(azar_() % static_cast<unsigned>(mayor - menor + 1));
  }
  bool Suerte(int deCien) { return Azar(1, 100) <= deCien; }

  void Catalogos() {
    for (int i = 1; i <= kAreas; ++i) {
      base_.Consulta("INSERT INTO Area_Habitacion (Ah_Cve_Area_Habitacion, Ah_Descripcion) VALUES (?, ?)",
                     {Clave(4, i), "Torre " + std::to_string(i)});
    }
    for (int i = 1; i <= kGrupos; ++i) {
      base_.Consulta("INSERT INTO Grupo_Habitacion (Ghb_Cve_Grupo_Habitacion, Ghb_Descripcion) VALUES (?, ?)",
                     {Clave(4, i), "Grupo " + std::to_string(i)});
    }
    for (int i = 1; i <= kTipos; ++i) {
      base_.Consulta("INSERT INTO Producto (Pr_Cve_Producto, Pr_Descripcion, Pr_Unidad_Venta) VALUES (?, ?, 'NOCHE')",
                     {Clave(4, i), "Hospedaje " + std::to_string(i)});
      base_.Consulta("INSERT INTO Producto_Precio (Pr_Cve_Producto, Pp_Precio_1) VALUES (?, ?)",
                     {Clave(4, i), 900.0 + 100.0 * i});
      base_.Consulta(
          "INSERT INTO Tipo_Habitacion (Th_Cve_Tipo_Habitacion, Th_Descripcion, Th_Num_Personas, "
          "Th_Num_Personas_Maximo, Pr_Cve_Producto) VALUES (?, ?, 2, 4, ?)",
          {Clave(4, i), "Tipo de habitación " + std::to_string(i), Clave(4, i)});
    }
    for (int i = 0; i < kHabitaciones; ++i) {
      base_.Consulta(
          "INSERT INTO Habitacion (Hb_Cve_Habitacion, Hb_Descripcion, Th_Cve_Tipo_Habitacion, "
          "Ghb_Cve_Grupo_Habitacion, Ah_Cve_Area_Habitacion) VALUES (?, ?, ?, ?, ?)",
          {ClaveHabitacion(i), "Habitación " + ClaveHabitacion(i), Clave(4, i % kTipos + 1), Clave(4, i % kGrupos + 1),
           Clave(4, i % kAreas + 1)});
    }
    for (int i = 1; i <= kClientes; ++i) {
      base_.Consulta("INSERT INTO Cliente (Cl_Cve_Cliente, Cl_Razon_Social_1) VALUES (?, ?)",
                     {Clave(10, i), "Huésped número " + std::to_string(i)});
    }
    base_.Consulta("INSERT INTO Moneda (Mn_Cve_Moneda, Mn_Descripcion) VALUES ('MXN', 'Peso mexicano')");
    base_.Consulta(
        "INSERT INTO Forma_Pago (Fp_Cve_Forma_Pago, Fp_Descripcion, Fp_Tipo) VALUES ('0001', 'Efectivo', '01')");
    base_.Consulta("INSERT INTO Parametro (Pm_Clave, Pm_Valor) VALUES ('FIN_MONEDA_LOCAL', 'MXN')");
    base_.Consulta("INSERT INTO Sucursal (Sc_Cve_Sucursal, Sc_Descripcion) VALUES ('0001', 'Centro')");
  }

  // As many of the rooms that are free that day, from the first one on.
  static std::vector<int> Libres(const std::vector<com::Fecha>& libreDesde, com::Fecha dia, int primera, int cuantas) {
    std::vector<int> habitaciones;
    for (int k = primera; k < kHabitaciones && static_cast<int>(habitaciones.size()) < cuantas; ++k) {
      if (libreDesde[static_cast<std::size_t>(k)] <= dia) habitaciones.push_back(k);
    }
    return habitaciones;
  }

  // Day by day: free rooms take new reservations of one to three rooms, fewer the further ahead the day lies.
  void Historia() {
    std::vector<com::Fecha> libreDesde(kHabitaciones, com::MasDias(Hoy(), -dias_));
    for (int d = -dias_; d < kDiasPorVenir; ++d) {
      const com::Fecha dia = com::MasDias(Hoy(), d);
      const int demanda = d <= 0 ? 40 : 40 - 30 * d / kDiasPorVenir;
      for (int h = 0; h < kHabitaciones; ++h) {
        if (libreDesde[static_cast<std::size_t>(h)] > dia || !Suerte(demanda)) continue;
        const int cuantas = Suerte(70) ? 1 : Azar(2, 3);
        const std::vector<int> habitaciones = Libres(libreDesde, dia, h, cuantas);
        const com::Fecha salida = com::MasDias(dia, Azar(1, Azar(2, 7)));
        const bool cancelada = Suerte(8);
        Reservacion(habitaciones, dia, salida, cancelada);
        if (cancelada) continue;
        for (const int k : habitaciones) libreDesde[static_cast<std::size_t>(k)] = salida;
      }
    }
  }

  void Reservacion(const std::vector<int>& habitaciones, com::Fecha llegada, com::Fecha salida, bool cancelada) {
    const std::string folio = Clave(10, ++folio_);
    const std::string cliente = Clave(10, Azar(1, kClientes));
    const bool pasada = llegada <= Hoy();
    const std::string estado = std::string(cancelada    ? esquema::kCancelada
                                           : Suerte(40) ? esquema::kConfirmada
                                                        : esquema::kActiva);
    base_.Consulta(
        "INSERT INTO Reservacion (Rs_Folio, Rs_Fecha, Rs_Llegada, Rs_Salida, Sc_Cve_Sucursal, Cl_Cve_Cliente, "
        "Rs_Huesped, Mn_Cve_Moneda, Rs_Tipo_Cambio, Fp_Cve_Forma_Pago, Es_Cve_Estado) "
        "VALUES (?, ?, ?, ?, '0001', ?, ?, 'MXN', 1, '0001', ?)",
        {folio, com::MasDias(llegada, -Azar(0, 60)), llegada, salida, cliente, cliente, estado});
    int renglon = 0;
    for (const int h : habitaciones) {
      const double total = 1000.0 * com::DiasEntre(llegada, salida);
      base_.Consulta(
          "INSERT INTO Reservacion_Detalle (Rs_Folio, Rsd_Id, Hb_Cve_Habitacion, Rsd_Fecha_Inicio, Rsd_Fecha_Fin, "
          "Rsd_Cantidad, Rsd_Adultos, Rsd_Precio, Rsd_Precio_Lista, Rsd_Precio_Lista_Importe, "
          "Rsd_Precio_Descontado, Rsd_Precio_Descontado_Importe, Rsd_Precio_Neto, Rsd_Precio_Neto_Importe) "
          "VALUES (?, ?, ?, ?, ?, ?, 2, ?, ?, ?, ?, ?, ?, ?)",
          {folio, ++renglon, ClaveHabitacion(h), llegada, salida, com::DiasEntre(llegada, salida), total, 1000.0, total,
           1000.0, total, 1000.0, total});
    }
    if (!pasada || cancelada || !Suerte(95)) return;
    const bool enCasa = salida > Hoy();
    base_.Consulta("INSERT INTO Check_In (Ci_Folio, Ci_Llegada, Ci_Salida, Es_Cve_Estado) VALUES (?, ?, ?, ?)",
                   {folio, llegada, salida, enCasa ? esquema::kActiva : esquema::kCerrada});
    for (const int h : habitaciones) {
      base_.Consulta("INSERT INTO Check_In_Detalle (Ci_Folio, Hb_Cve_Habitacion) VALUES (?, ?)",
                     {folio, ClaveHabitacion(h)});
    }
  }

  // Repairs: two a day, before and ahead.
  void BloqueosDeSiempre() {
    for (int d = -dias_; d < kDiasPorVenir; ++d) {
      for (int i = 0; i < 2; ++i) {
        const com::Fecha inicio = com::MasDias(Hoy(), d);
        base_.Consulta(
            "INSERT INTO Habitacion_Bloqueo (Hb_Cve_Habitacion, Hbb_Fecha_Inicio, Hbb_Fecha_Fin, Es_Cve_Estado) "
            "VALUES (?, ?, ?, ?)",
            {ClaveHabitacion(Azar(0, kHabitaciones - 1)), inicio, com::MasDias(inicio, Azar(0, 4)),
             Suerte(80) ? esquema::kActiva : esquema::kBaja});
      }
    }
  }

  autonomo::ConexionDeMotor& base_;
  int dias_;
  std::mt19937 azar_{20260310};
  int folio_ = 0;
};

}  // namespace

std::string ClaveHabitacion(int n) { return Clave(4, 100 * (n / 30 + 1) + n % 30); }

com::Fecha Hoy() { return com::FechaDe(2026, 3, 10); }

void ConstruyeHotel(const std::string& ruta, int dias) {
  if (std::filesystem::exists(ruta)) return;
  std::cerr << "Building the hotel in " << ruta << " ...\n";
  const std::string provisional = ruta + ".nueva";
  for (const char* cola : {"", "-wal", "-shm", "-journal"}) std::filesystem::remove(provisional + cola);
  {
    autonomo::OpcionesConexion opciones;
    opciones.ruta = provisional;
    const autonomo::Reloj reloj;
    const auto base = autonomo::AbreMotor(opciones, reloj);
    Constructor(*base, dias).Construye();
  }
  {
    const Base base(provisional);
    base.Ejecuta("PRAGMA wal_checkpoint(TRUNCATE)");
  }
  std::filesystem::rename(provisional, ruta);
}

int CuentaLineas(const std::string& ruta) {
  const Base base(ruta);
  Preparada cuenta(base, "SELECT COUNT(*) FROM Reservacion_Detalle");
  cuenta.Fila();
  return static_cast<int>(cuenta.Entero(0));
}

std::string FolioDeTresLineas(const std::string& ruta) {
  const Base base(ruta);
  Preparada busca(base,
                  "SELECT RS.Rs_Folio FROM Reservacion RS "
                  "INNER JOIN Reservacion_Detalle RSd ON RSd.Rs_Folio = RS.Rs_Folio "
                  "WHERE RS.Es_Cve_Estado = 'AC' GROUP BY RS.Rs_Folio HAVING COUNT(*) = 3 "
                  "ORDER BY RS.Rs_Folio LIMIT 1 OFFSET 5000");
  if (!busca.Fila()) Falla("No reservation with three lines");
  return std::string(busca.Texto(0));
}

}  // namespace banco
