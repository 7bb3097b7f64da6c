// Copies of a hotel: while others write, by day, and back again.
#include <sqlite3.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <thread>

#include "host/standalone/integridad.h"
#include "host/standalone/manija.h"
#include "host/standalone/respaldo.h"
#include "host/standalone/respaldo_diario.h"
#include "tests/host/base_prueba.h"

namespace {

namespace fs = std::filesystem;
using pruebas::BasePrueba;
using pruebas::ErrorDe;
using pruebas::Uno;

class RespaldoPrueba : public BasePrueba {
 protected:
  std::string Archivo(const std::string& nombre) const { return (carpeta / nombre).string(); }
  // One reservation with three lines, whole.
  static void Reserva(autonomo::Conexion& c, int n) {
    const std::string folio = std::to_string(n);
    c.BeginTrans();
    c.Consulta("INSERT INTO Reservacion (Rs_Folio) VALUES (?)", {folio});
    for (int linea = 1; linea <= 3; ++linea)
      c.Consulta("INSERT INTO Reservacion_Detalle (Rs_Folio, Rsd_Id) VALUES (?, ?)", {folio, linea});
    c.CommitTrans();
  }
  std::string Reservas(const std::string& archivo) const {
    return Uno(*Abre(archivo), "SELECT COUNT(*) FROM Reservacion");
  }
  void Dana(const std::string& archivo) const {
    std::fstream f(archivo, std::ios::in | std::ios::out | std::ios::binary);
    f.seekp(std::streamoff{5} * 4096);
    f << std::string(8, '\x7e');
  }
  std::vector<std::string> Nombres(const std::string& donde) const {
    std::vector<std::string> nombres;
    for (const auto& archivo : fs::directory_iterator(carpeta / donde)) {
      if (!archivo.path().string().ends_with("-suma")) nombres.push_back(archivo.path().filename());
    }
    std::sort(nombres.begin(), nombres.end());
    return nombres;
  }
};

TEST_F(RespaldoPrueba, MientrasOtrosEscribenTieneTodoLoConfirmadoYNadaAMedias) {
  const auto c = Abre();
  c->Directa("PRAGMA synchronous=OFF");
  for (int i = 0; i < 300; ++i) Reserva(*c, i);
  ASSERT_GT(fs::file_size(ruta + "-wal"), 1000000U);  // most of it is in the log alone
  std::atomic<int> hechas = 300;
  std::jthread escribe([&](const std::stop_token& termina) {
    const auto otra = Abre();
    for (int i = 300; !termina.stop_requested(); ++i) {
      Reserva(*otra, i);
      hechas = i + 1;
    }
  });
  for (int copia = 0; copia < 5; ++copia) {
    const int antes = hechas;
    const auto r = autonomo::Respalda(ruta, Archivo("copia.db"), {.sustituye = copia > 0, .despacio = true});
    EXPECT_GE(r.reservaciones, antes);
    const auto abierta = Abre(Archivo("copia.db"));
    EXPECT_EQ(Uno(*abierta, "SELECT COUNT(*) FROM Reservacion"), std::to_string(r.reservaciones));
    EXPECT_EQ(Uno(*abierta, "SELECT COUNT(*) FROM Reservacion_Detalle"), std::to_string(3 * r.reservaciones));
  }
  escribe = {};
  struct stat datos {};
  ASSERT_EQ(stat(Archivo("copia.db").c_str(), &datos), 0);
  EXPECT_EQ(datos.st_mode & 0777U, 0600U);
  // No lock of the clerk's connection was lost: the log is still hers when another program comes and goes.
  Abre();
  Reserva(*c, -1);
  EXPECT_EQ(Uno(*Abre(), "SELECT COUNT(*) FROM Reservacion WHERE Rs_Folio = '-1'"), "1");
}

TEST_F(RespaldoPrueba, NadaSeSustituyeSinDecirloNiQuedaAMedias) {
  Reserva(*Abre(), 1);
  std::ofstream(Archivo("otra.db")) << "lo de otro";
  EXPECT_EQ(ErrorDe([&] { autonomo::Respalda(ruta, Archivo("otra.db"), {}); }).Numero(), com::error::kArgumento);
  EXPECT_EQ(ErrorDe([&] { autonomo::Respalda(ruta, ruta, {.sustituye = true}); }).Numero(), com::error::kArgumento);
  EXPECT_EQ(ErrorDe([&] { autonomo::Respalda(Archivo("otra.db"), Archivo("x.db"), {}); }).Numero(), com::error::kAjena);
  const std::atomic<bool> termina = true;
  EXPECT_EQ(ErrorDe([&] { autonomo::Respalda(ruta, Archivo("x.db"), {.termina = &termina}); }).Numero(),
            com::error::kBaseDatos);
  Dana(ruta);
  EXPECT_EQ(ErrorDe([&] { autonomo::Respalda(ruta, Archivo("x.db"), {}); }).Numero(), com::error::kDanada);
  EXPECT_EQ(Nombres("."), (std::vector<std::string>{"hotel.db", "otra.db"}));
}

TEST_F(RespaldoPrueba, CadaDiaUnaCopiaYLaUltimaBuenaNoSeVa) {
  {
    const auto c = Abre();
    Reserva(*c, 1);
    c->Directa("INSERT INTO Parametro (Pm_Clave, Pm_Valor) VALUES ('HT_RESPALDO_DIAS', '3')");
    c->Directa("INSERT INTO Parametro (Pm_Clave, Pm_Valor) VALUES ('HT_RESPALDO_CARPETA', 'otra/copias')");
    for (const char* dia : {"2026-03-09", "2026-02-28", "2026-03-10", "2026-03-11", "2026-03-12"}) {
      EXPECT_TRUE(autonomo::RespaldaDia(ruta, dia, {})) << dia;
    }
    EXPECT_FALSE(autonomo::RespaldaDia(ruta, "2026-03-12", {})) << "once a day";
    autonomo::RespaldaEnSuCarpeta(ruta, "2026-03-12_170000", {});
    std::ofstream(carpeta / "otra/copias/hotel-2026-01-01.db.Ab12Cd") << "cut short";
    std::ofstream(carpeta / "otra/copias/hotel-2026-01-02.db.Ab12Cd") << "cut short long ago";
    fs::last_write_time(carpeta / "otra/copias/hotel-2026-01-02.db.Ab12Cd",
                        fs::file_time_type::clock::now() - std::chrono::hours(30));
    std::ofstream(carpeta / "otra/copias/hotel2-2026-01-01.db") << "another hotel's";
    EXPECT_TRUE(autonomo::RespaldaDia(ruta, "2026-03-13", {}));
    const std::vector<std::string> quedan{"hotel-2026-01-01.db.Ab12Cd", "hotel-2026-03-11.db", "hotel-2026-03-12.db",
                                          "hotel-2026-03-12_170000.db", "hotel-2026-03-13.db", "hotel2-2026-01-01.db"};
    EXPECT_EQ(Nombres("otra/copias"), quedan);
    // A desk behind its time keeps what it just made; one ahead of it makes no last good copy for years.
    EXPECT_TRUE(autonomo::RespaldaDia(ruta, "2016-03-13", {}));
    EXPECT_TRUE(fs::remove(carpeta / "otra/copias/hotel-2016-03-13.db"));
    fs::copy_file(carpeta / "otra/copias/hotel-2026-03-11.db", carpeta / "otra/copias/hotel-2099-03-11.db");
    EXPECT_EQ(autonomo::UltimaBuena(ruta), Archivo("otra/copias/hotel-2026-03-13.db"));
    fs::remove(carpeta / "otra/copias/hotel-2099-03-11.db");
    fs::remove(carpeta / "otra/copias/hotel-2016-03-13.db-suma");
  }
  EXPECT_TRUE(fs::exists(carpeta / "otra/copias/hotel-2026-03-13.db-suma"));
  EXPECT_FALSE(fs::exists(carpeta / "otra/copias/hotel-2026-02-28.db-suma")) << "it goes with its copy";
  EXPECT_EQ(ErrorDe([&] { autonomo::Repone(ruta, ruta); }).Numero(), com::error::kArgumento);
  // A damaged hotel makes no copy and removes none; a damaged copy is not the last good one.
  Dana(Archivo("otra/copias/hotel-2026-03-13.db"));
  EXPECT_EQ(autonomo::UltimaBuena(ruta), Archivo("otra/copias/hotel-2026-03-12_170000.db"));
  Dana(ruta);
  const auto e = ErrorDe([&] { autonomo::RespaldaDia(ruta, "2026-03-14", {}); });
  EXPECT_NE(e.Descripcion().find("hotel-2026-03-12_170000.db"), std::string::npos) << e.Descripcion();
  EXPECT_EQ(Nombres("otra/copias").size(), 6U);
}

// What a look at each page alone does not notice: the key is another one in the table than in its index.
TEST_F(RespaldoPrueba, UnIndiceDanadoNoPasaPorCopiaBuena) {
  const auto cambia = [](const std::string& archivo) {
    std::ifstream f(archivo, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(f), {}};
    std::fstream g(archivo, std::ios::in | std::ios::out | std::ios::binary);
    g.seekp(static_cast<std::streamoff>(bytes.find("UnaLlave")));
    g.put('O');
    fs::remove(archivo + "-suma");
  };
  Abre()->Directa("INSERT INTO Plantilla (Pt_Cve_Plantilla) VALUES ('UnaLlave')");
  for (const char* dia : {"2026-03-09", "2026-03-10"}) EXPECT_TRUE(autonomo::RespaldaDia(ruta, dia, {}));
  cambia(Archivo("respaldos/hotel-2026-03-10.db"));
  EXPECT_EQ(autonomo::UltimaBuena(ruta), Archivo("respaldos/hotel-2026-03-09.db"));
  EXPECT_EQ(ErrorDe([&] { autonomo::Repone(ruta, Archivo("respaldos/hotel-2026-03-10.db")); }).Numero(),
            com::error::kDanada);
  cambia(ruta);
  const auto e = ErrorDe([&] { autonomo::Respalda(ruta, Archivo("x.db"), {}); });
  EXPECT_NE(e.Descripcion().find("El hotel está dañado"), std::string::npos) << e.Descripcion();
  EXPECT_NE(e.Descripcion().find("hotel-2026-03-09.db"), std::string::npos) << e.Descripcion();
  EXPECT_FALSE(fs::exists(Archivo("x.db")));
}

TEST_F(RespaldoPrueba, UnHotelDanadoOPerdidoDiceComoVolverYVuelve) {
  {
    const auto c = Abre();
    Reserva(*c, 1);
    autonomo::RespaldaDia(ruta, "2026-03-09", {});
    Reserva(*c, 2);
  }
  fs::permissions(ruta, fs::perms(0660));
  const std::string copia = Archivo("respaldos/hotel-2026-03-09.db");
  const auto dice = [&] {
    std::string texto = ErrorDe([&] { Abre(); }).Descripcion();
    EXPECT_NE(texto.find("La última copia buena es " + copia), std::string::npos) << texto;
    EXPECT_NE(texto.find("reservas-base repone '" + ruta + "'"), std::string::npos) << texto;
    return texto;
  };
  Dana(ruta);
  EXPECT_NE(dice().find("está dañada"), std::string::npos);
  const auto r = autonomo::Repone(ruta, copia);
  EXPECT_EQ(r.respaldo.reservaciones, 1);
  ASSERT_FALSE(r.apartados.empty());
  EXPECT_TRUE(fs::exists(r.apartados[0]));
  EXPECT_EQ(Reservas(ruta), "1");
  EXPECT_EQ(fs::status(ruta).permissions(), fs::perms(0660));
  // Its log gone, its place empty, another file there: never an empty hotel instead.
  fs::remove(ruta);
  EXPECT_NE(dice().find("no está"), std::string::npos);
  EXPECT_FALSE(fs::exists(ruta));
  std::ofstream f(ruta);
  dice();
  f << std::string(9000, 'x') << std::flush;
  dice();
  autonomo::Repone(ruta, copia);
  EXPECT_EQ(Reservas(ruta), "1");
  // A newer program's file is no damage.
  Abre()->Directa("PRAGMA user_version=99");
  EXPECT_EQ(ErrorDe([&] { Abre(); }).Descripcion().find("copia"), std::string::npos);
}

TEST_F(RespaldoPrueba, ElHiloHaceLaDeHoyYDiceLaQueNoPudo) {
  const auto c = Abre();
  const auto noticia = [&] {
    autonomo::RespaldoDiario diario(ruta);
    std::vector<autonomo::RespaldoDiario::Noticia> noticias;
    for (int i = 0; i < 500 && noticias.empty(); ++i) {
      std::this_thread::sleep_for(std::chrono::milliseconds(10));
      noticias = diario.TomaNoticias();
    }
    return noticias.empty() ? autonomo::RespaldoDiario::Noticia{} : noticias[0];
  };
  EXPECT_FALSE(noticia().falla);
  const auto copias = autonomo::Copias(ruta);
  ASSERT_EQ(copias.size(), 1U);
  EXPECT_EQ(Reservas(copias[0]), "0");
  c->Directa("INSERT INTO Parametro (Pm_Clave, Pm_Valor) VALUES ('HT_RESPALDO_CARPETA', 'hotel.db/no')");
  const auto mala = noticia();
  EXPECT_TRUE(mala.falla);
  EXPECT_NE(mala.texto.find("hotel.db/no"), std::string::npos) << mala.texto;
  // A program started in a folder that is gone.
  const fs::path antes = fs::current_path(), ida = carpeta / "ida";
  fs::create_directory(ida);
  fs::current_path(ida);
  fs::remove(ida);
  ruta = "hotel.db";
  EXPECT_TRUE(noticia().falla);
  fs::current_path(antes);
}

// Nor does a failure behind the clerk's back, when it is looked for the way back.
TEST_F(RespaldoPrueba, ElDanoDeUnArchivoGrandeSeDiceAunqueElRemedioFalle) {
  {
    const auto c = Abre();
    c->BeginTrans();
    for (int i = 0; i < 3000; ++i)
      c->Consulta("INSERT INTO Plantilla (Pt_Cve_Plantilla, Pt_Cuerpo) VALUES (?, ?)",
                  {std::to_string(i), std::string(3500, 'x')});
    c->CommitTrans();
  }
  Dana(ruta);
  fs::remove(ruta + "-suma");
  const auto base = autonomo::AbreManija(ruta, SQLITE_OPEN_READWRITE);
  autonomo::RevisionDePaginas revision(base.get(), ruta,
                                       [](const std::string&) -> std::string { throw std::runtime_error("red"); });
  revision.Sigue();
  com::Error e(0, "");
  for (int i = 0; i < 500 && e.Numero() == 0; ++i) {
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
    e = ErrorDe([&] { revision.Exige(); });
  }
  EXPECT_EQ(e.Numero(), com::error::kDanada);
}

// Several accounts of one group share a hotel: what one of them makes the others use, whatever its umask.
TEST_F(RespaldoPrueba, LasCopiasSonDeQuienesCompartenElHotelYDeNadieMas) {
  Reserva(*Abre(), 1);
  const auto modo = [&](const std::string& nombre) {
    struct stat datos {
    }, hotel{};
    EXPECT_EQ(stat(Archivo(nombre).c_str(), &datos), 0) << nombre;
    EXPECT_EQ(stat(ruta.c_str(), &hotel), 0);
    EXPECT_EQ(datos.st_gid, hotel.st_gid) << nombre;
    return datos.st_mode & 07777U;
  };
  const mode_t mascara = umask(022);
  if (geteuid() == 0) {
    ASSERT_EQ(chown(ruta.c_str(), getuid(), 4), 0) << "a group of its own";
  }
  ASSERT_EQ(chmod(ruta.c_str(), 0660), 0);
  ASSERT_EQ(chmod(carpeta.c_str(), 02775), 0);
  Abre()->Directa("INSERT INTO Parametro (Pm_Clave, Pm_Valor) VALUES ('HT_RESPALDO_CARPETA', 'otra/copias')");
  autonomo::RespaldaDia(ruta, "2026-03-09", {});
  for (const char* nombre : {"otra", "otra/copias"}) EXPECT_EQ(modo(nombre), 02770U);
  for (const char* cola : {"", "-suma"}) {
    EXPECT_EQ(modo(std::string("otra/copias/hotel-2026-03-09.db") + cola) & 0077U, 0060U) << cola;
  }
  ASSERT_EQ(chmod(ruta.c_str(), 0600), 0);
  fs::remove_all(carpeta / "otra");
  autonomo::RespaldaDia(ruta, "2026-03-09", {});
  for (const char* nombre : {"otra", "otra/copias", "otra/copias/hotel-2026-03-09.db"}) {
    EXPECT_EQ(modo(nombre) & 0077U, 0U) << nombre;
  }
  umask(mascara);
}

}  // namespace
