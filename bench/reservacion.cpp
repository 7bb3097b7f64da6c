// The reservation screen: saving a new reservation of three lines, loading one by its folio.
#include <filesystem>
#include <memory>
#include <random>
#include <thread>

#include "bench/hotel.h"
#include "bench/pantallas.h"
#include "bench/razones.h"
#include "bench/sqlite.h"
#include "reservation/frmKV207.h"
#include "reservation/sentencias.h"

namespace banco {

namespace {

constexpr int kLineas = 3;
const std::vector<std::string> kHabitacionesDeLinea = {ClaveHabitacion(0), ClaveHabitacion(1), ClaveHabitacion(2)};

// A copy of the hotel for runs that write, gone at the end.
class Copia {
 public:
  explicit Copia(const std::string& para) : ruta_(RutaHotel() + "." + para) {
    Borra();
    std::filesystem::copy_file(RutaHotel(), ruta_);
  }
  ~Copia() { Borra(); }
  Copia(const Copia&) = delete;
  Copia& operator=(const Copia&) = delete;
  const std::string& ruta() const { return ruta_; }

 private:
  void Borra() const {
    for (const char* cola : {"", "-wal", "-shm"}) std::filesystem::remove(ruta_ + cola);
  }
  std::string ruta_;
};

constexpr const char* kInsertaEncabezado =
    "INSERT INTO Reservacion (Rs_Folio, Rs_Fecha, Rs_Llegada, Rs_Salida, Sc_Cve_Sucursal, Cl_Cve_Cliente, Rs_Huesped, "
    "Mn_Cve_Moneda, Rs_Tipo_Cambio, Fp_Cve_Forma_Pago, Es_Cve_Estado, Oper_Ult_Modif, Fecha_Ult_Modif) "
    "VALUES (?1, ?2, ?3, ?4, '0001', '0000000001', '0000000001', 'MXN', 1, '0001', 'AC', 'RECEPCION', ?2)";
constexpr const char* kInsertaLinea =
    "INSERT INTO Reservacion_Detalle (Rs_Folio, Rsd_Id, Hb_Cve_Habitacion, Rsd_Fecha_Inicio, Rsd_Fecha_Fin, "
    "Rsd_Cantidad, Rsd_Adultos, Rsd_Precio, Rsd_Precio_Lista, Rsd_Precio_Lista_Importe, Rsd_Precio_Descontado, "
    "Rsd_Precio_Descontado_Importe, Rsd_Precio_Neto, Rsd_Precio_Neto_Importe) "
    "VALUES (?1, ?2, ?3, ?4, ?5, 2, 2, 2000, 1000, 2000, 1000, 2000, 1000, 2000)";

// The disk answers in beats of some milliseconds. Waits for any moment of a beat, so that neither side always begins
// just after the other's last one.
void PierdeElCompas() {
  static std::mt19937 azar(4711);
  std::this_thread::sleep_for(std::chrono::microseconds(azar() % 8000));
}

// The same rows, nothing checked, on a connection that makes its commits as durable.
class GuardadoAMano {
 public:
  GuardadoAMano() {
    base_.Ejecuta("PRAGMA journal_mode=WAL");
    base_.Ejecuta("PRAGMA synchronous=FULL");
  }

  double Guarda() {
    const std::string folio = std::to_string(2000000000 + vez_);
    const com::Fecha dia = LlegadaLejana(vez_++);
    const std::string llegada = com::AIso(dia), salida = com::AIso(com::MasDias(dia, 2));
    PierdeElCompas();
    return Cronometra([&] {
      comienza_.Corre();
      encabezado_.Texto(1, folio).Texto(2, hoy_).Texto(3, llegada).Texto(4, salida).Corre();
      for (int i = 0; i < kLineas; ++i) {
        linea_.Texto(1, folio)
            .Entero(2, i + 1)
            .Texto(3, kHabitacionesDeLinea[static_cast<std::size_t>(i)])
            .Texto(4, llegada)
            .Texto(5, salida);
        linea_.Corre();
      }
      confirma_.Corre();
    });
  }

 private:
  const Copia copia_{"a_mano"};
  const Base base_{copia_.ruta()};
  Preparada comienza_{base_, "BEGIN IMMEDIATE"}, confirma_{base_, "COMMIT"};
  Preparada encabezado_{base_, kInsertaEncabezado}, linea_{base_, kInsertaLinea};
  const std::string hoy_ = com::AIso(Hoy());
  int vez_ = 0;
};

enum class Desde { Comienzo, Aceptar };

// To the question that follows the commit: from the begin of the transaction, or from the clerk's accept, with the
// checks of every night of every line.
void Guarda(benchmark::State& estado, Desde desde, const Comparacion& comparacion) {
  const Copia copia("pantalla");
  Sesion sesion(copia.ruta());
  const auto conexion = std::make_shared<ConexionCronometrada>(sesion.host().conexion());
  sesion.host().conexion(conexion);
  Pantallas pantallas;
  GuardadoAMano aMano;
  const int antes = CuentaLineas(copia.ruta());
  int vez = 0;
  MidePorTurnos(
      estado, comparacion,
      [&] {
        Captura(pantallas.reservacion, kHabitacionesDeLinea, LlegadaLejana(vez++));
        PierdeElCompas();
        const auto aceptar = std::chrono::steady_clock::now();
        pantallas.reservacion.Controles.Pulsa(controles::Accion::Aceptar);
        const auto inicio = desde == Desde::Aceptar ? aceptar : conexion->comienzo;
        return std::chrono::duration<double>(sesion.escritorio().pregunta - inicio).count();
      },
      [&] { return aMano.Guarda(); });
  if (CuentaLineas(copia.ruta()) != antes + kLineas * vez) Falla("Not every line was saved");
}

// From the confirmed folio to the filled screen; against the joined query, every value read.
void Carga(benchmark::State& estado) {
  Sesion sesion(RutaHotel());
  Pantallas pantallas;
  kv207::frmKV207& pantalla = pantallas.reservacion;
  const std::string folio = FolioDeTresLineas(RutaHotel());
  const Base base(RutaHotel());
  ado::TextoSQL sql;
  kv207::ArmaCargaReservacion(sql, folio);
  Preparada consulta(base, sql.Texto());
  MidePorTurnos(
      estado, {"Load by folio / its query", 3.0},
      [&] {
        pantalla.txtFolio.Teclea("");
        pantalla.txtFolio.Teclea(folio);
        const double t = Cronometra([&] { pantalla.txtFolio.Confirma(); });
        if (pantalla.ssReservaciones.Filas() != kLineas) Falla("The reservation was not loaded");
        return t;
      },
      [&] {
        int filas = 0;
        const double t = Cronometra([&] {
          for (; consulta.Fila(); ++filas) {
            for (int c = 0; c < consulta.Columnas(); ++c) benchmark::DoNotOptimize(consulta.Texto(c));
          }
        });
        if (filas != kLineas) Falla("The query gives other rows");
        return t;
      });
}

}  // namespace

void RegistraReservacion() {
  using benchmark::RegisterBenchmark;
  RegisterBenchmark("guarda", Guarda, Desde::Comienzo, Comparacion{"Save of three lines / bare inserts", 2.0, true})
      ->UseManualTime()
      ->Iterations(200);
  RegisterBenchmark("acepta", Guarda, Desde::Aceptar, Comparacion{"Accept with its checks / bare inserts", 0, true})
      ->UseManualTime()
      ->Iterations(200);
  RegisterBenchmark("carga", Carga)->UseManualTime();
}

}  // namespace banco
