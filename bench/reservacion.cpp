// The reservation screen: saving a new reservation of three lines, loading one by its folio.
#include <benchmark/benchmark.h>

#include <filesystem>
#include <memory>

#include "bench/hotel.h"
#include "bench/pantallas.h"
#include "bench/razones.h"
#include "bench/sqlite.h"
#include "reservation/frmKV207.h"
#include "reservation/sentencias.h"

namespace banco {

namespace {

constexpr int kLineas = 3;
constexpr const char* kHabitacionesDeLinea[kLineas] = {"0100", "0101", "0102"};

// A copy of the hotel for runs that write, gone at the end.
class Copia {
 public:
  Copia() : ruta_(RutaHotel() + ".copia") {
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

// Both screens, shown.
struct Pantallas {
  kv207::frmDisponibilidad tablero;
  kv207::frmKV207 reservacion{tablero};

  Pantallas() { reservacion.Muestra(); }
  ~Pantallas() { reservacion.Descarga(); }
  Pantallas(const Pantallas&) = delete;
  Pantallas& operator=(const Pantallas&) = delete;
};

void Campo(controles::LookupField& campo, const std::string& texto) {
  campo.Teclea(texto);
  campo.Confirma();
}

// A new reservation of three rooms for two nights, ready to be accepted. Nobody else comes that late.
void Captura(kv207::frmKV207& pantalla, int vez) {
  const com::Fecha llegada = com::MasDias(Hoy(), 400 + 2 * vez);
  pantalla.Controles.Pulsa(controles::Accion::Nuevo);
  Campo(pantalla.txtHuesped, "0000000001");
  Campo(pantalla.txtForma_Pago, "0001");
  pantalla.dpFecha_llegada.Fija(llegada);
  pantalla.dpFecha_salida.Fija(com::MasDias(llegada, 2));
  controles::Grid& grid = pantalla.ssReservaciones;
  for (const char* habitacion : kHabitacionesDeLinea) {
    grid.NuevaFila();
    for (auto [columna, texto] : {std::pair{"Clave", habitacion}, std::pair{"Adultos", "2"}}) {
      grid.VaA(grid.fila(), grid.IndiceColumna(columna));
      grid.Teclea(texto);
      grid.Deja();
    }
  }
}

enum class Desde { Comienzo, Aceptar };

// To the question that follows the commit: from the begin of the transaction, or from the clerk's accept, with the
// checks of every night of every line.
void Guarda(benchmark::State& estado, Desde desde) {
  const Copia copia;
  Sesion sesion(copia.ruta());
  const auto conexion = std::make_shared<ConexionCronometrada>(sesion.host().conexion());
  sesion.host().conexion(conexion);
  Pantallas pantallas;
  const int antes = CuentaLineas(copia.ruta());
  int vez = 0;
  for (auto _ : estado) {
    Captura(pantallas.reservacion, vez++);
    const auto aceptar = std::chrono::steady_clock::now();
    pantallas.reservacion.Controles.Pulsa(controles::Accion::Aceptar);
    const auto inicio = desde == Desde::Aceptar ? aceptar : conexion->comienzo;
    estado.SetIterationTime(std::chrono::duration<double>(sesion.escritorio().pregunta - inicio).count());
  }
  if (CuentaLineas(copia.ruta()) != antes + kLineas * vez) Falla("Not every line was saved");
}

constexpr const char* kInsertaEncabezado =
    "INSERT INTO Reservacion (Rs_Folio, Rs_Fecha, Rs_Llegada, Rs_Salida, Sc_Cve_Sucursal, Cl_Cve_Cliente, Rs_Huesped, "
    "Mn_Cve_Moneda, Rs_Tipo_Cambio, Fp_Cve_Forma_Pago, Es_Cve_Estado, Oper_Ult_Modif, Fecha_Ult_Modif) "
    "VALUES (?1, ?2, ?3, ?4, '0001', '0000000001', '0000000001', 'MXN', 1, '0001', 'AC', 'RECEPCION', ?2)";
constexpr const char* kInsertaLinea =
    "INSERT INTO Reservacion_Detalle (Rs_Folio, Rsd_Id, Hb_Cve_Habitacion, Rsd_Fecha_Inicio, Rsd_Fecha_Fin, "
    "Rsd_Cantidad, Rsd_Adultos, Rsd_Precio, Rsd_Precio_Lista, Rsd_Precio_Lista_Importe, Rsd_Precio_Descontado, "
    "Rsd_Precio_Descontado_Importe, Rsd_Precio_Neto, Rsd_Precio_Neto_Importe) "
    "VALUES (?1, ?2, ?3, ?4, ?5, 2, 2, 2000, 1000, 2000, 1000, 2000, 1000, 2000)";

// The same rows, nothing checked, on a connection that makes its commits as durable.
void GuardaAMano(benchmark::State& estado) {
  const Copia copia;
  const Base base(copia.ruta());
  base.Ejecuta("PRAGMA journal_mode=WAL");
  base.Ejecuta("PRAGMA synchronous=FULL");
  Preparada comienza(base, "BEGIN IMMEDIATE"), confirma(base, "COMMIT");
  Preparada encabezado(base, kInsertaEncabezado), linea(base, kInsertaLinea);
  const std::string hoy = com::AIso(Hoy());
  int vez = 0;
  for (auto _ : estado) {
    const std::string folio = std::to_string(2000000000 + vez);
    const com::Fecha dia = com::MasDias(Hoy(), 400 + 2 * vez++);
    const std::string llegada = com::AIso(dia), salida = com::AIso(com::MasDias(dia, 2));
    const auto inicio = std::chrono::steady_clock::now();
    comienza.Corre();
    encabezado.Texto(1, folio).Texto(2, hoy).Texto(3, llegada).Texto(4, salida).Corre();
    for (int i = 0; i < kLineas; ++i) {
      linea.Texto(1, folio).Entero(2, i + 1).Texto(3, kHabitacionesDeLinea[i]).Texto(4, llegada).Texto(5, salida);
      linea.Corre();
    }
    confirma.Corre();
    estado.SetIterationTime(std::chrono::duration<double>(std::chrono::steady_clock::now() - inicio).count());
  }
}

// From the confirmed folio to the filled screen.
void CargaReservacion(benchmark::State& estado) {
  Sesion sesion(RutaHotel());
  Pantallas pantallas;
  kv207::frmKV207& pantalla = pantallas.reservacion;
  const std::string folio = FolioDeTresLineas(RutaHotel());
  for (auto _ : estado) {
    pantalla.txtFolio.Teclea("");
    pantalla.txtFolio.Teclea(folio);
    const auto inicio = std::chrono::steady_clock::now();
    pantalla.txtFolio.Confirma();
    estado.SetIterationTime(std::chrono::duration<double>(std::chrono::steady_clock::now() - inicio).count());
  }
  if (pantalla.ssReservaciones.Filas() != kLineas) Falla("The reservation was not loaded");
}

// Its joined query, every value read.
void CargaReservacionAMano(benchmark::State& estado) {
  const Base base(RutaHotel());
  const std::string folio = FolioDeTresLineas(RutaHotel());
  ado::TextoSQL sql;
  kv207::ArmaCargaReservacion(sql, folio);
  Preparada consulta(base, sql.Texto());
  for (auto _ : estado) {
    const auto inicio = std::chrono::steady_clock::now();
    int filas = 0;
    for (; consulta.Fila(); ++filas) {
      for (int c = 0; c < consulta.Columnas(); ++c) benchmark::DoNotOptimize(consulta.Texto(c));
    }
    estado.SetIterationTime(std::chrono::duration<double>(std::chrono::steady_clock::now() - inicio).count());
    if (filas != kLineas) Falla("The query gives other rows");
  }
}

template <class... Argumentos>
void Registra(const char* nombre, Argumentos... argumentos) {
  benchmark::RegisterBenchmark(nombre, argumentos...)->UseManualTime()->Unit(benchmark::kMicrosecond)->Repetitions(5);
}

}  // namespace

void RegistraReservacion() {
  Registra("guarda", Guarda, Desde::Comienzo);
  Registra("guarda/a_mano", GuardaAMano);
  Anota({"Save of three lines / bare inserts", "guarda", "guarda/a_mano", 2.0, true});
  Registra("acepta", Guarda, Desde::Aceptar);
  Anota({"Accept with its checks / bare inserts", "acepta", "guarda/a_mano", 0, true});
  Registra("carga", CargaReservacion);
  Registra("carga/a_mano", CargaReservacionAMano);
  Anota({"Load by folio / its query", "carga", "carga/a_mano", 3.0, true});
}

}  // namespace banco
