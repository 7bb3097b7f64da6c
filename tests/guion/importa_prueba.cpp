// The import of bookings: its files, what it stores and refuses, and that it may die at any moment.
#include <gtest/gtest.h>

#include <cstdlib>
#include <functional>
#include <random>

#include "guion/csv.h"
#include "guion/reservas_csv.h"
#include "platform/com/error.h"
#include "proceso.h"

namespace {

using guion::Evento;
using pruebas::Carpeta;
using pruebas::Corre;
using pruebas::Lee;
using pruebas::Sql;
using pruebas::Tablas;

const std::string kHabitaciones =
    "habitacion,descripcion,tipo,tipo_descripcion,grupo,area,personas,personas_max,precio_noche\n"
    "101,Piso 1,A,Estándar,G1,A1,2,4,95.00\n"
    "102,\"Piso 1, al fondo\",A,Estándar,G1,A1,2,4,95.00\n"
    "201,Piso 2,B,Suite,G1,A2,2,3,150.00\n";
const std::string kColumnas = "id,captura,llegada,noches,adultos,menores,infantes,tipo,tarifa,estado,fecha_estado\n";

// --- the files -------------------------------------------------------------------------------------------------------

// The message of an error that begins with the file's name.
std::string Rechazo(const std::string& ruta, const std::function<void()>& lee) {
  try {
    lee();
  } catch (const com::Error& e) {
    EXPECT_TRUE(e.Descripcion().starts_with(ruta)) << e.Descripcion();
    return e.Descripcion().substr(ruta.size());
  }
  return "";
}

TEST(ImportaArchivos, LosErroresDicenArchivoYLinea) {
  const Carpeta carpeta;
  const auto habitaciones = guion::LeeHabitaciones(carpeta.Escribe("h.csv", kHabitaciones));
  const std::string buena = "1,2026-01-01,2026-02-01,2,2,0,0,A,90.5,Check-Out,2026-02-03\n";
  const std::vector<std::pair<std::string, std::string>> casos = {
      {"", ":1: se esperan las columnas"},
      {"id,captura\n", ":1: se esperan las columnas"},
      {kColumnas + buena + "2,2026-01-01\n", ":3: tiene 2 campos"},
      {kColumnas + "1,2026-02-30,2026-02-01,2,2,0,0,A,90,Check-Out,2026-02-03\n", ":2: captura"},
      {kColumnas + "1,2026-01-01,01/02/2026,2,2,0,0,A,90,Check-Out,2026-02-03\n", ":2: llegada"},
      {kColumnas + "1,2026-01-01,2026-02-01,dos,2,0,0,A,90,Check-Out,2026-02-03\n", ":2: noches"},
      {kColumnas + "1,2026-01-01,2026-02-01,-2,2,0,0,A,90,Check-Out,2026-02-03\n", ":2: noches"},
      {kColumnas + "1,2026-01-01,2026-02-01,2,2,0,0,A,nan,Check-Out,2026-02-03\n", ":2: tarifa"},
      {kColumnas + "1,2026-01-01,2026-02-01,2,2,0,0,A,90,Perdida,2026-02-03\n", ":2: estado"},
      {kColumnas + "1,2026-01-01,2026-02-01,2,2,0,0,Z,90,Check-Out,2026-02-03\n", ":2: ninguna habitación"},
      {kColumnas + buena + buena, ":3: el id 1 se repite"},
      {kColumnas + "x" + buena + "X" + buena, ":3: el id X1 se repite"},
      {kColumnas + buena + " " + buena, ":3: el id 1 se repite"},
      {kColumnas + buena + "\"2,2026-01-01", ":3: faltan las comillas"},
      {kColumnas + buena + "2,caf\xE9\n", ":3: la línea no es UTF-8"},
  };
  for (const auto& [contenido, motivo] : casos) {
    const std::string ruta = carpeta.Escribe("r.csv", contenido);
    const std::string rechazo = Rechazo(ruta, [&] { guion::LeeReservas(ruta, habitaciones); });
    EXPECT_TRUE(rechazo.starts_with(motivo)) << rechazo << " instead of " << motivo;
  }
  const std::vector<std::pair<std::string, std::string>> habitacionesMalas = {
      {"103,Piso 1,A,Otra,G1,A1,2,4,95.00\n", ":5: el tipo A no coincide"},
      {"103,Piso 1,b,Otra,G1,A1,2,4,95.00\n", ":5: el tipo b no coincide"},
      {"a1,Piso 1,A,Estándar,G1,A1,2,4,95.00\nA1 ,Piso 1,A,Estándar,G1,A1,2,4,95.00\n",
       ":6: la habitación A1 se repite"},
      {"O'1,Piso 1,A,Estándar,G1,A1,2,4,95.00\n", ":5: habitacion «O'1» lleva una comilla"},
  };
  for (const auto& [lineas, motivo] : habitacionesMalas) {
    const std::string ruta = carpeta.Escribe("h2.csv", kHabitaciones + lineas);
    const std::string rechazo = Rechazo(ruta, [&] { guion::LeeHabitaciones(ruta); });
    EXPECT_TRUE(rechazo.starts_with(motivo)) << rechazo << " instead of " << motivo;
  }
  const std::string falta = carpeta.Ruta("no_hay.csv");
  EXPECT_TRUE(Rechazo(falta, [&] { guion::LeeHabitaciones(falta); }).starts_with(": no se puede leer"));
}

TEST(ImportaArchivos, SeLeenConBomFinDeLineaDeWindowsYComillas) {
  const Carpeta carpeta;
  std::string windows = "\xEF\xBB\xBF";
  for (const char c : kHabitaciones) windows += c == '\n' ? std::string("\r\n") : std::string(1, c);
  const auto habitaciones = guion::LeeHabitaciones(carpeta.Escribe("h.csv", windows));
  ASSERT_EQ(habitaciones.size(), 3U);
  EXPECT_EQ(habitaciones[1].descripcion, "Piso 1, al fondo");
  EXPECT_EQ(habitaciones[2].precioNoche, 150);
  EXPECT_EQ(guion::LineaCsv({"a", "b,c", "d\"e", "f\r\ng"}), "a,\"b,c\",\"d\"\"e\",f / g\n");
}

TEST(ImportaArchivos, LosEventosVanPorDiaYLasCapturasPrimero) {
  std::vector<guion::ReservaCsv> reservas(3);
  const auto dia = [](int d) { return com::FechaDe(2026, 1, d); };
  reservas[0].captura = dia(5);
  reservas[0].cancelada = true;
  reservas[0].fechaEstado = dia(2);  // before its capture
  reservas[1].captura = dia(3);
  reservas[1].cancelada = true;
  reservas[1].fechaEstado = dia(5);
  reservas[2].captura = dia(5);
  std::string orden;
  for (const Evento& e : guion::OrdenaEventos(reservas)) {
    orden +=
        std::to_string(e.dia.dia - dia(0 + 1).dia + 1) + (e.cancelacion ? "x" : "c") + std::to_string(e.reserva) + " ";
  }
  EXPECT_EQ(orden, "3c1 5c0 5c2 5x0 5x1 ");
}

// --- the program -----------------------------------------------------------------------------------------------------

class Importa : public testing::Test {
 protected:
  pruebas::Salida Corre(const std::string& base, const std::string& reservas, int matarMs = -1) {
    return pruebas::Corre({RESERVAS_IMPORTA, "--base", carpeta.Ruta(base), "--habitaciones", habitaciones, reservas,
                           "--rechazadas", carpeta.Ruta(base + ".csv")},
                          {}, matarMs);
  }
  // A night of a room that two live reservations hold.
  std::vector<std::string> NochesDobles(const std::string& base) {
    return Sql(carpeta.Ruta(base),
               "SELECT a.Hb_Cve_Habitacion FROM Reservacion_Detalle a JOIN Reservacion_Detalle b "
               "ON a.Hb_Cve_Habitacion = b.Hb_Cve_Habitacion AND a.Rs_Folio < b.Rs_Folio "
               "AND a.Rsd_Fecha_Inicio < b.Rsd_Fecha_Fin AND b.Rsd_Fecha_Inicio < a.Rsd_Fecha_Fin "
               "JOIN Reservacion ra ON ra.Rs_Folio = a.Rs_Folio AND ra.Es_Cve_Estado <> 'CA' "
               "JOIN Reservacion rb ON rb.Rs_Folio = b.Rs_Folio AND rb.Es_Cve_Estado <> 'CA'");
  }
  Carpeta carpeta;
  std::string habitaciones = carpeta.Escribe("habitaciones.csv", kHabitaciones);
};

TEST_F(Importa, CapturaRechazaYCancelaComoUnRecepcionista) {
  const std::string reservas = carpeta.Escribe(
      "r.csv", kColumnas +
                   "1,2026-01-01,2026-02-01,2,2,1,0,A,90.55,Check-Out,2026-02-03\n"  // 101
                   "2,2026-01-01,2026-02-02,2,1,0,1,A,0,Canceled,2026-01-10\n"       // 102 until the 10th
                   "3,2026-01-05,2026-02-02,1,2,0,0,A,80,Check-Out,2026-02-03\n"     // none left
                   "4,2026-01-10,2026-02-02,1,2,0,0,A,80,No-Show,2026-02-02\n"       // the same day: still none
                   "5,2026-01-11,2026-02-02,1,2,0,0,A,80,Check-Out,2026-02-03\n"     // 102
                   "6,2026-01-11,2026-02-01,0,2,0,0,B,80,Check-Out,2026-02-01\n"     // no nights
                   "7,2026-01-11,2026-02-01,1,0,0,0,B,80,Check-Out,2026-02-01\n"     // nobody
                   "8,2026-01-11,2026-02-01,1,2,2,0,B,80,Canceled,2026-01-12\n"      // four in a room for three
                   "9,2026-01-12,2026-01-11,1,2,0,0,B,80,Check-Out,2026-01-12\n"     // arrival before capture
                   "10,2026-01-12,2026-01-12,1,2,0,0,B,80,Check-Out,2026-01-13\n");  // walk-in, 201
  const auto salida = Corre("hotel.db", reservas);
  EXPECT_EQ(salida.estado, 0) << salida.errores;
  EXPECT_EQ(salida.errores, "");
  EXPECT_TRUE(
      salida.texto.starts_with("Leídas: 10\n"
                               "Guardadas: 4\n"
                               "Canceladas: 1\n"
                               "Rechazadas: 6\n"
                               "  1  ERR-ID:7500010 especifique el número de personas para la habitación\n"
                               "  1  ERR-ID:7500015 El númeor de personas excede el máximo para la habitación\n"
                               "  1  ERR-ID:7500030 Debe seleccionar una fecha mayor a la fecha de captura\n"
                               "  2  ERR-ID:7500055 Debe seleccionar al menos una habitación (ninguna libre)\n"
                               "  1  ERR-ID:7500055 Debe seleccionar al menos una habitación (sin noches)\n"
                               "Reservas por segundo: "))
      << salida.texto;
  EXPECT_EQ(
      Sql(carpeta.Ruta("hotel.db"),
          "SELECT Rs_Referencia || ' ' || Es_Cve_Estado || ' ' || Hb_Cve_Habitacion || ' ' || Rsd_Fecha_Inicio || ' ' "
          "|| Rsd_Adultos || Rsd_Menores || Rsd_Infantes || ' ' || Rsd_Precio_Neto_Importe || ' ' || "
          "substr(Fecha_Ult_Modif, 1, 10) FROM Reservacion r JOIN Reservacion_Detalle d ON d.Rs_Folio = r.Rs_Folio "
          "ORDER BY r.Rs_Folio"),
      (std::vector<std::string>{
          "IMP-1 AC 101 2026-02-01 210 181.1 2026-01-01", "IMP-2 CA 102 2026-02-02 101 190.0 2026-01-10",
          "IMP-5 AC 102 2026-02-02 200 80.0 2026-01-11", "IMP-10 AC 201 2026-01-12 200 80.0 2026-01-12"}));
  const std::string rechazadas = Lee(carpeta.Ruta("hotel.db.csv"));
  EXPECT_TRUE(rechazadas.starts_with(kColumnas.substr(0, kColumnas.size() - 1) + ",motivo,mensajes\n3,2026-01-05,"));
  EXPECT_NE(rechazadas.find("8,2026-01-11,2026-02-01,1,2,2,0,B,80,Canceled,2026-01-12,"
                            "ERR-ID:7500015 El númeor de personas excede el máximo para la habitación,"
                            "ERR-ID:7500034 El númeor de personas capturadas para la habitación: Suite / Piso 2 / "),
            std::string::npos)
      << rechazadas;
  EXPECT_TRUE(NochesDobles("hotel.db").empty());

  // Again: nothing is captured or refused twice.
  const auto tablas = Tablas(carpeta.Ruta("hotel.db"));
  const auto otra = Corre("hotel.db", reservas);
  EXPECT_EQ(otra.estado, 0) << otra.errores;
  EXPECT_NE(otra.texto.find("De corridas anteriores: 4 guardadas, 1 canceladas, 6 rechazadas\n"), std::string::npos)
      << otra.texto;
  EXPECT_EQ(Tablas(carpeta.Ruta("hotel.db")), tablas);
  EXPECT_EQ(Lee(carpeta.Ruta("hotel.db.csv")), rechazadas);

  // A print that was cut off between the commit and the printer is made good.
  Sql(carpeta.Ruta("hotel.db"), "DELETE FROM Impreso WHERE Ip_Clave = (SELECT MAX(Rs_Folio) FROM Reservacion)");
  EXPECT_NE(Tablas(carpeta.Ruta("hotel.db")), tablas);
  EXPECT_EQ(Corre("hotel.db", reservas).estado, 0);
  EXPECT_EQ(Tablas(carpeta.Ruta("hotel.db"))["Impreso"], tablas.at("Impreso"));
}

TEST_F(Importa, UnArchivoMaloNoDejaNada) {
  const std::string mala =
      carpeta.Escribe("r.csv", kColumnas + "1,2026-01-01,2026-02-01,2,2,0,0,A,x,Check-Out,2026-02-03\n");
  const auto salida = Corre("hotel.db", mala);
  EXPECT_EQ(salida.estado, 1);
  EXPECT_TRUE(salida.errores.starts_with("reservas-importa: " + mala + ":2: tarifa")) << salida.errores;
  EXPECT_FALSE(std::filesystem::exists(carpeta.Ruta("hotel.db")));
  EXPECT_FALSE(std::filesystem::exists(carpeta.Ruta("hotel.db.csv")));
  EXPECT_EQ(pruebas::Corre({RESERVAS_IMPORTA, "--base", "x.db"}).estado, 2);
  EXPECT_EQ(pruebas::Corre({RESERVAS_IMPORTA, "--base", ":memory:", "--habitaciones", "h.csv", mala}).estado, 2);

  const std::string buena =
      carpeta.Escribe("r.csv", kColumnas + "1,2026-01-01,2026-02-01,2,2,0,0,A,9,Check-Out,2026-02-03\n");
  const std::string ajena = carpeta.Escribe("ajena.db", "un texto cualquiera\n");
  const auto otra = Corre("ajena.db", buena);
  EXPECT_EQ(otra.estado, 1);
  EXPECT_TRUE(otra.errores.starts_with("reservas-importa: " + ajena + ": ")) << otra.errores;
  EXPECT_EQ(Lee(ajena), "un texto cualquiera\n");
  EXPECT_FALSE(std::filesystem::exists(ajena + ".csv"));
}

// A room with somebody in it shows as free on the board's other nights; the check of the save refuses it.
TEST_F(Importa, ElMotivoCuentaIgualTodasLasHabitaciones) {
  const std::string una = "1,2026-01-01,2026-02-01,2,2,0,0,B,0,Check-Out,2026-02-03\n";
  ASSERT_EQ(Corre("hotel.db", carpeta.Escribe("r.csv", kColumnas + una)).estado, 0);
  ASSERT_EQ(pruebas::Corre({RESERVAS_GUION, "--base", carpeta.Ruta("hotel.db")},
                           "sql INSERT INTO Check_In (Ci_Folio, Ci_Llegada, Ci_Salida) VALUES ('C', '2026-01-01', "
                           "'2026-01-02')\n"
                           "sql INSERT INTO Check_In_Detalle (Ci_Folio, Hb_Cve_Habitacion) VALUES ('C', '201')\n")
                .estado,
            0);
  const auto salida = Corre("hotel.db", carpeta.Escribe("r2.csv", kColumnas + una + "2" + una.substr(1)));
  EXPECT_EQ(salida.estado, 0) << salida.errores;
  EXPECT_NE(salida.texto.find("  1  ERR-ID:7500010 la habitación está reservado para la fecha\n"), std::string::npos)
      << salida.texto;
}

// With a mask for keys of types, the board would look for another type and its rooms would be sold.
TEST_F(Importa, UnTipoQueLaBaseFormateaDeOtroModoNoEntra) {
  const std::string base = carpeta.Ruta("hotel.db");
  ASSERT_EQ(pruebas::Corre({RESERVAS_GUION, "--base", base}, "parametro FTO_TIPO_HABITACION 0000\n").estado, 0);
  const auto antes = Tablas(base);
  habitaciones = carpeta.Escribe(
      "numeros.csv", kHabitaciones.substr(0, kHabitaciones.find('\n') + 1) + "101,Piso 1,1,Estándar,G1,A1,2,4,95.00\n");
  const auto salida = Corre("hotel.db", carpeta.Escribe("r.csv", kColumnas));
  EXPECT_EQ(salida.estado, 1);
  EXPECT_NE(salida.errores.find("El tipo 1 se capturaría como 0001"), std::string::npos) << salida.errores;
  EXPECT_EQ(Tablas(base), antes);
}

TEST_F(Importa, SinNombreLasRechazadasQuedanJuntoALaBase) {
  const std::string reservas =
      carpeta.Escribe("r.csv", kColumnas + "1,2026-01-01,2026-02-01,0,2,0,0,A,90,Check-Out,2026-02-01\n");
  const std::string base = carpeta.Ruta("hotel.db");
  EXPECT_EQ(pruebas::Corre({RESERVAS_IMPORTA, "--base", base, "--habitaciones", habitaciones, reservas}).estado, 0);
  EXPECT_NE(Lee(base + ".rechazadas.csv").find("\n1,2026-01-01,"), std::string::npos);
}

TEST_F(Importa, OtroArchivoConLosMismosIdsYOtrasRechazadasNoSeMezclan) {
  const std::string una = "1,2026-01-01,2026-02-01,2,2,0,0,A,90,Check-Out,2026-02-03\n";
  EXPECT_EQ(Corre("hotel.db", carpeta.Escribe("r.csv", kColumnas + una)).estado, 0);
  const auto salida =
      Corre("hotel.db",
            carpeta.Escribe("otro.csv", kColumnas + "1,2026-05-01,2026-06-01,2,2,0,0,A,90,Check-Out,2026-06-03\n"));
  EXPECT_EQ(salida.estado, 1);
  EXPECT_NE(salida.errores.find("otro archivo"), std::string::npos) << salida.errores;
  EXPECT_EQ(Sql(carpeta.Ruta("hotel.db"), "SELECT COUNT(*) FROM Reservacion"), std::vector<std::string>{"1"});

  carpeta.Escribe("nuevo.db.csv", "notas de alguien\n");
  EXPECT_EQ(Corre("nuevo.db", carpeta.Ruta("r.csv")).estado, 1);
  EXPECT_EQ(Lee(carpeta.Ruta("nuevo.db.csv")), "notas de alguien\n");
  EXPECT_FALSE(std::filesystem::exists(carpeta.Ruta("nuevo.db")));
}

TEST_F(Importa, UnaUltimaLineaCortadaDeRechazadasSeRehace) {
  const std::string reservas =
      carpeta.Escribe("r.csv", kColumnas +
                                   "1,2026-01-01,2026-02-01,0,2,0,0,A,90,Check-Out,2026-02-01\n"
                                   "2,2026-01-02,2026-02-01,0,2,0,0,A,90,Check-Out,2026-02-01\n");
  EXPECT_EQ(Corre("hotel.db", reservas).estado, 0);
  const std::string entero = Lee(carpeta.Ruta("hotel.db.csv"));
  carpeta.Escribe("hotel.db.csv", entero.substr(0, entero.size() - 10));
  EXPECT_EQ(Corre("hotel.db", reservas).estado, 0);
  EXPECT_EQ(Lee(carpeta.Ruta("hotel.db.csv")), entero);
}

// Bookings of a full little hotel: refusals for every reason, cancellations that free rooms for later ones.
std::string ReservasAlAzar(unsigned semilla, int cuantas) {
  std::mt19937 azar(semilla);
  const auto entre = [&](int a, int b) { return std::uniform_int_distribution<int>(a, b)(azar); };
  const auto fecha = [](int dia) { return com::AIso(com::MasDias(com::FechaDe(2026, 1, 1), dia)); };
  std::string csv = kColumnas;
  for (int i = 1; i <= cuantas; ++i) {
    const int captura = i / 3, llegada = captura + entre(-1, 12), noches = entre(0, 4);
    const bool cancelada = entre(0, 2) == 0;
    csv += std::to_string(i) + "," + fecha(captura) + "," + fecha(llegada) + "," + std::to_string(noches) + "," +
           std::to_string(entre(0, 3)) + "," + std::to_string(entre(0, 1)) + "," + std::to_string(entre(0, 1)) + "," +
           (entre(0, 3) == 0 ? "B" : "A") + "," + (entre(0, 4) == 0 ? "0" : "87.65") + "," +
           (cancelada ? "Canceled," : "Check-Out,") + fecha(captura + entre(0, 6)) + "\n";
  }
  return csv;
}

TEST_F(Importa, MuertaEnCualquierMomentoTerminaIgual) {
  const std::string reservas = carpeta.Escribe("r.csv", ReservasAlAzar(7, 200));
  const auto deUna = Corre("entera.db", reservas);
  ASSERT_EQ(deUna.estado, 0) << deUna.errores;

  std::mt19937 azar(11);
  int muertes = 0;
  pruebas::Salida salida;
  for (int vuelta = 0; vuelta < 40; ++vuelta) {
    // Ever longer, so that a slow machine gets on too.
    const int limite = 150 + 40 * vuelta;
    salida = Corre("rota.db", reservas, std::uniform_int_distribution<int>(10, limite)(azar));
    ASSERT_TRUE(salida.estado == -1 || salida.estado == 0) << salida.errores;
    if (salida.estado == 0) break;
    ++muertes;
  }
  if (salida.estado != 0) salida = Corre("rota.db", reservas);
  EXPECT_EQ(salida.estado, 0) << salida.errores;
  EXPECT_GE(muertes, 3);
  EXPECT_EQ(Tablas(carpeta.Ruta("rota.db")), Tablas(carpeta.Ruta("entera.db"))) << "after " << muertes << " deaths";
  EXPECT_EQ(Lee(carpeta.Ruta("rota.db.csv")), Lee(carpeta.Ruta("entera.db.csv")));
  EXPECT_TRUE(NochesDobles("rota.db").empty());
}

// A hotel's real bookings, where somebody has put them beside the project.
TEST_F(Importa, LasReservasRealesEntranTodasOTienenSuMotivo) {
  const char* datos = std::getenv("KV207_RESERVAS");
  if (datos == nullptr) GTEST_SKIP() << "KV207_RESERVAS names no folder with bookings";
  std::string reservas = std::string(datos) + "/reservas_2015.csv";
#ifdef __SANITIZE_ADDRESS__
  // The sanitized build is slow: the first ones serve.
  const std::string todas = Lee(reservas);
  std::size_t fin = 0;
  for (int linea = 0; linea < 500; ++linea) fin = todas.find('\n', fin) + 1;
  reservas = carpeta.Escribe("reservas.csv", todas.substr(0, fin));
#endif
  habitaciones = std::string(datos) + "/habitaciones_2015.csv";
  const auto salida = Corre("hotel.db", reservas);
  ASSERT_EQ(salida.estado, 0) << salida.errores;
  const auto leidas = guion::LeeReservas(reservas, guion::LeeHabitaciones(habitaciones));
  const auto guardadas = Sql(carpeta.Ruta("hotel.db"), "SELECT Rs_Referencia FROM Reservacion");
  const std::string rechazadas = Lee(carpeta.Ruta("hotel.db.csv"));
  const auto lineas = std::count(rechazadas.begin(), rechazadas.end(), '\n') - 1;
  EXPECT_EQ(guardadas.size() + static_cast<std::size_t>(lineas), leidas.size());
  EXPECT_EQ(Sql(carpeta.Ruta("hotel.db"), "SELECT COUNT(DISTINCT Rs_Referencia) FROM Reservacion")[0],
            std::to_string(guardadas.size()));
  EXPECT_TRUE(NochesDobles("hotel.db").empty());
  std::size_t imposibles = 0;
  for (const auto& r : leidas) imposibles += r.noches == 0 || r.adultos + r.menores + r.infantes == 0 ? 1 : 0;
  EXPECT_GE(static_cast<std::size_t>(lineas), imposibles);
}

}  // namespace
