// bench_pedidos HOTEL [CLERK]: does on a hotel, a file or an address, what it is asked for on its input, an order a
// line, and answers each with one line. The scripts beside it measure with it: several of them by turns or at once,
// with a network between.
//
//   construye DAYS   makes the file with so many days of history; answers its number of room lines
//   tablero          loads the board of all rooms and nights; answers seconds, the screen's own
//   libpq            the same statements by libpq alone, prepared before; seconds
//   carga            loads reservations of three lines by their folios, another one each time; seconds of one
//   guarda           captures a reservation of three rooms and accepts it; seconds of the capture, and from the accept
//                    to the question that follows the commit
//   guardas SECONDS  the same for so long; answers how many
//
// CLERK, from 0, has rooms of its own. A message that nobody expected ends the program with status 1.
#include <libpq-fe.h>

#include <chrono>
#include <cstdlib>
#include <functional>
#include <iostream>
#include <memory>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include "bench/hotel.h"
#include "bench/pantallas.h"
#include "bench/sqlite.h"
#include "host/standalone/traductor.h"

namespace banco {

namespace {

using kv207::ModoVista;

double Cronometra(const std::function<void()>& trabajo) {
  const auto inicio = std::chrono::steady_clock::now();
  trabajo();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - inicio).count();
}

// Passes everything on and notes the statements.
class ConexionEscucha : public ado::Connection {
 public:
  explicit ConexionEscucha(ado::ConnectionPtr real) : real_(std::move(real)) {}
  ado::RecordsetPtr Execute(const ado::TextoSQL& sentencia) override {
    sentencias.push_back(sentencia.Texto());
    return real_->Execute(sentencia);
  }
  void BeginTrans() override { real_->BeginTrans(); }
  void CommitTrans() override { real_->CommitTrans(); }
  void RollbackTrans() override { real_->RollbackTrans(); }
  bool LeeConjuntos() const override { return real_->LeeConjuntos(); }

  std::vector<std::string> sentencias;

 private:
  ado::ConnectionPtr real_;
};

// Statements on a connection with nothing around it; every value of their rows is looked at.
class Llana {
 public:
  Llana(const std::string& direccion, const std::vector<std::string>& sentencias)
      : c_(PQconnectdb(direccion.c_str()), &PQfinish), cuantas_(sentencias.size()) {
    if (PQstatus(c_.get()) != CONNECTION_OK) Falla(PQerrorMessage(c_.get()));
    for (std::size_t i = 0; i < cuantas_; ++i) {
      const autonomo::Traduccion t = autonomo::Traduce(sentencias[i], esquema::Motor::PostgreSQL, {});
      Exige(PQprepare(c_.get(), std::to_string(i).c_str(), t.texto.c_str(), 0, nullptr), PGRES_COMMAND_OK);
    }
  }

  std::size_t Corre() {
    std::size_t letras = 0;
    for (std::size_t i = 0; i < cuantas_; ++i) {
      const auto r =
          Exige(PQexecPrepared(c_.get(), std::to_string(i).c_str(), 0, nullptr, nullptr, nullptr, 0), PGRES_TUPLES_OK);
      for (int fila = 0; fila < PQntuples(r.get()); ++fila) {
        for (int columna = 0; columna < PQnfields(r.get()); ++columna) {
          letras += std::string(PQgetvalue(r.get(), fila, columna)).size();
        }
      }
    }
    return letras;
  }

 private:
  using Resultado = std::unique_ptr<PGresult, decltype(&PQclear)>;
  static Resultado Exige(PGresult* r, ExecStatusType estado) {
    Resultado resultado(r, &PQclear);
    if (PQresultStatus(r) != estado) Falla(PQresultErrorMessage(r));
    return resultado;
  }

  std::unique_ptr<PGconn, decltype(&PQfinish)> c_;
  std::size_t cuantas_;
};

class Pedidos {
 public:
  Pedidos(std::string hotel, int empleado) : hotel_(std::move(hotel)) {
    for (int i = 0; i < 3; ++i) habitaciones_.push_back(ClaveHabitacion(3 * empleado + i));
  }

  void Corre() {
    for (std::string linea; std::getline(std::cin, linea);) {
      std::istringstream partes(linea);
      std::string orden;
      int cuanto = 0;
      partes >> orden >> cuanto;
      Atiende(orden, cuanto);
      std::cout << std::endl;
    }
  }

 private:
  void Atiende(const std::string& orden, int cuanto) {
    if (orden == "construye") {
      ConstruyeHotel(hotel_, cuanto);
      std::cout << CuentaLineas(hotel_);
    } else if (orden == "tablero") {
      AbreTableroUnaVez();
      std::cout << Cronometra([&] { CargaTablero(*tablero_); });
    } else if (orden == "libpq") {
      AbreTableroUnaVez();
      std::size_t letras = 0;
      std::cout << Cronometra([&] { letras = llana_->Corre(); });
      if (letras == 0) Falla("The statements give nothing");
    } else if (orden == "carga") {
      Carga();
    } else if (orden == "guarda") {
      Guarda();
    } else if (orden == "guardas") {
      const auto fin = std::chrono::steady_clock::now() + std::chrono::seconds(cuanto);
      const int antes = vez_;
      std::ostringstream aparte;
      while (std::chrono::steady_clock::now() < fin) Guarda(aparte);
      std::cout << vez_ - antes;
    } else {
      Falla("There is no order " + orden);
    }
  }

  Sesion& Abierta() {
    if (!sesion_) {
      sesion_.emplace(hotel_);
      escucha_ = std::make_shared<ConexionEscucha>(sesion_->host().conexion());
      sesion_->host().conexion(escucha_);
    }
    return *sesion_;
  }

  kv207::frmKV207& Pantalla() {
    Abierta();
    if (pantallas_) return pantallas_->reservacion;
    pantallas_.emplace();
    // On from what an earlier run saved.
    const auto rs = sesion_->host().conexion()->Consulta(
        "SELECT COUNT(*) FROM Reservacion_Detalle WHERE Hb_Cve_Habitacion = ? AND Rsd_Fecha_Inicio >= ?",
        {habitaciones_[0], LlegadaLejana(0)});
    vez_ = com::CLng(rs->Fields(0).Value());
    return pantallas_->reservacion;
  }

  void AbreTableroUnaVez() {
    if (tablero_) return;
    Abierta();
    tablero_ = AbreTablero(ModoVista::PorHabitacion);
    CargaTablero(*tablero_);
    escucha_->sentencias.clear();
    CargaTablero(*tablero_);
    if (sesion_->host().conexion()->Motor() == esquema::Motor::PostgreSQL) {
      llana_ = std::make_unique<Llana>(hotel_, escucha_->sentencias);
    }
  }

  // Folios of reservations that are in the house or come, from anywhere in the file.
  void Carga() {
    kv207::frmKV207& pantalla = Pantalla();
    if (folios_.empty()) {
      const auto rs = sesion_->host().conexion()->Consulta(
          "SELECT RS.Rs_Folio FROM Reservacion RS "
          "INNER JOIN Reservacion_Detalle RSd ON RSd.Rs_Folio = RS.Rs_Folio "
          "WHERE RS.Es_Cve_Estado = 'AC' GROUP BY RS.Rs_Folio HAVING COUNT(*) = 3 ORDER BY RS.Rs_Folio");
      for (; !rs->Eof(); rs->MoveNext()) folios_.push_back(com::CStr(rs->Fields(0).Value()));
      if (folios_.empty()) Falla("No reservation with three lines");
    }
    // A stride that meets all of them in no order.
    turno_ = (turno_ + 7919) % folios_.size();
    const double t = Cronometra([&] { CargaFolio(pantalla, folios_[turno_]); });
    if (pantalla.ssReservaciones.Filas() != 3) Falla("The reservation was not loaded");
    std::cout << t;
  }

  void Guarda(std::ostream& salida = std::cout) {
    kv207::frmKV207& pantalla = Pantalla();
    salida << Cronometra([&] { Captura(pantalla, habitaciones_, LlegadaLejana(vez_)); });
    const auto inicio = std::chrono::steady_clock::now();
    pantalla.Controles.Pulsa(controles::Accion::Aceptar);
    const auto pregunta = sesion_->escritorio().pregunta;
    if (pregunta < inicio) Falla("Nothing was saved");
    salida << ' ' << std::chrono::duration<double>(pregunta - inicio).count();
    ++vez_;
  }

  std::string hotel_;
  std::vector<std::string> habitaciones_, folios_;
  std::optional<Sesion> sesion_;
  std::shared_ptr<ConexionEscucha> escucha_;
  std::optional<Pantallas> pantallas_;
  std::unique_ptr<kv207::frmDisponibilidad> tablero_;
  std::unique_ptr<Llana> llana_;
  std::size_t turno_ = 0;
  int vez_ = 0;
};

}  // namespace

}  // namespace banco

int main(int argc, char** argv) {
  if (argc < 2) {
    std::cerr << "Usage: bench_pedidos HOTEL [CLERK]\n";
    return 2;
  }
  try {
    banco::Pedidos(argv[1], argc > 2 ? std::stoi(argv[2]) : 0).Corre();
    return 0;
  } catch (const std::exception& e) {
    std::cerr << "bench_pedidos: " << e.what() << '\n';
    return 1;
  }
}
