// What is looked at when a file is opened: a log that is lost or damaged, pages, guards, an earlier definition.
#include <sqlite3.h>
#include <sys/stat.h>

#include <fstream>
#include <thread>

#include "host/standalone/integridad.h"
#include "tests/host/archivo_prueba.h"

namespace {

using namespace com::error;
using pruebas::ArchivoPrueba;
using pruebas::ErrorDe;
using pruebas::MataEn;
using pruebas::Uno;

class IntegridadPrueba : public ArchivoPrueba {
 protected:
  // Ten rows of a table of its own; a large file is checked otherwise.
  static void Llena(autonomo::Conexion& c, const std::string& texto, bool grande) {
    c.BeginTrans();
    for (int i = 0; i < 10; ++i) {
      c.Consulta(
          "INSERT INTO Plantilla (Pt_Cve_Plantilla, Pt_Cuerpo) VALUES (?, ?)",
          {"Llave" + std::to_string(i) + (grande ? "g" : "c"), texto + std::string(grande ? 900000 : 3500, 'x')});
    }
    c.CommitTrans();
  }
};

// Frames that another program writes while the log is read: each look misses one of those that it has passed already.
TEST_F(IntegridadPrueba, UnaBitacoraQueCreceMientrasSeLeeNoEsDano) {
  const auto c = Abre();
  for (int i = 0; i < 20; ++i) c->Consulta("INSERT INTO Moneda (Mn_Cve_Moneda) VALUES (?)", {std::to_string(i)});
  const std::string log = Bytes(ruta + "-wal"), ajeno = (carpeta / "ajeno.db").string();
  ASSERT_EQ(mkfifo((ajeno + "-wal").c_str(), 0600), 0);
  std::jthread escribe([&] {
    for (const std::size_t cuadro : {3U, 9U}) {
      std::string vista = log;
      vista.replace(32 + cuadro * (24 + 4096), 24, 24, '\0');
      std::ofstream tubo(ajeno + "-wal");
      if (cuadro == 3U) mkfifo((ajeno + "-otro").c_str(), 0600);  // for the next look
      if (cuadro != 3U) std::ofstream(ajeno + "-otro") << log;
      std::filesystem::rename(ajeno + "-otro", ajeno + "-wal");
      tubo << vista;
    }
  });
  EXPECT_NO_THROW(autonomo::RevisaBitacora(ajeno));
}

// What the file alone would pass over without a word.
TEST_F(IntegridadPrueba, UnaBitacoraPerdidaODanadaSeDice) {
  const auto inserta = [&](autonomo::Conexion& c, int n) {
    c.Consulta("INSERT INTO Moneda (Mn_Cve_Moneda) VALUES (?)", {std::to_string(n)});
  };
  namespace fs = std::filesystem;
  const std::string sola = (carpeta / "sola.db").string(), danada = (carpeta / "danada.db").string(),
                    rota = (carpeta / "rota.db").string(), trunca = (carpeta / "trunca.db").string();
  {
    const auto c = Abre();
    c->Directa("PRAGMA synchronous=OFF");
    // Also after the log has been brought into the file by the way.
    for (int i = 0; i < 500; ++i) inserta(*c, i);
    EXPECT_GT(fs::file_size(ruta + "-wal"), 4000000U);
    for (const auto& copia : {sola, danada, rota, trunca}) fs::copy_file(ruta, copia);
    for (int i = 500; i < 510; ++i) inserta(*c, i);
    for (const auto& copia : {danada, rota, trunca}) fs::copy_file(ruta + "-wal", copia + "-wal");
  }
  const auto e = ErrorDe([&] { Abre(sola); });
  for (const char* dice : {"le falta su bitácora", "No se abre para no perder nada"})
    EXPECT_NE(e.Descripcion().find(dice), std::string::npos) << e.Descripcion();
  { const std::ofstream vacio(sola + "-wal"); }
  EXPECT_EQ(Numero(sola), kDanada) << "an empty log";
  // One byte of the log's first frames, with committed work behind it.
  const auto rompe = [](const std::string& copia, std::size_t lugar) {
    std::fstream log(copia + "-wal", std::ios::in | std::ios::out | std::ios::binary);
    log.seekp(static_cast<std::streamoff>(lugar));
    log.put('\x55');
  };
  rompe(danada, 9000);
  const std::string antes = Bytes(danada);
  EXPECT_NE(ErrorDe([&] { Abre(danada); }).Descripcion().find("(" + danada + "-wal) está dañada"), std::string::npos);
  EXPECT_EQ(Bytes(danada), antes);
  // A last transaction that was cut short, or reached the disk in part, is not damage: it was never accepted. Behind it
  // stand frames of before the log was begun anew.
  const std::string log = Bytes(rota + "-wal");
  constexpr std::size_t kCuadro = 24 + 4096;
  std::size_t ultimo = 32;
  while (log.compare(ultimo + kCuadro + 8, 8, log, 16, 8) == 0) ultimo += kCuadro;
  ASSERT_LT(ultimo + 2 * kCuadro, log.size());
  fs::resize_file(rota + "-wal", ultimo + kCuadro - 100);
  rompe(trunca, ultimo + kCuadro - 100);
  for (const auto& copia : {rota, trunca}) {
    EXPECT_EQ(Numero(copia), 0) << copia;
    EXPECT_EQ(Uno(*Abre(copia), "SELECT COUNT(*) FROM Moneda"), "509") << copia;
  }
  // Closed whole, the file can be copied alone.
  EXPECT_EQ(Uno(*Abre(), "SELECT COUNT(*) FROM Moneda"), "510");
}

TEST_F(IntegridadPrueba, UnArchivoVacioOConUnaPaginaRotaNoSeUsa) {
  Escribe("");
  EXPECT_NE(ErrorDe([&] { Abre(); }).Descripcion().find("vacío (0 bytes)"), std::string::npos);
  EXPECT_EQ(Bytes(ruta), "");
  std::filesystem::remove(ruta);
  for (const bool grande : {false, true}) {
    Llena(*Abre(), "", grande);
    const std::string buena = Bytes(ruta);
    std::string mala = buena;
    const std::size_t lugar = mala.find(std::string(3000, 'x')) / 4096 * 4096;  // the head of a page of the table
    mala.replace(lugar, 8, 8, '\x7e');
    Escribe(mala);
    if (!grande) {
      EXPECT_NE(ErrorDe([&] { Abre(); }).Descripcion().find("está dañada"), std::string::npos);
    } else {
      // Without sums, behind the clerk's back; what she writes next is refused.
      std::filesystem::remove(ruta + "-suma");
      const auto c = Abre();
      com::Error e{0, ""};
      for (int i = 0; i < 6000 && e.Numero() == 0; ++i) {
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
        e = ErrorDe([&] {
          c->BeginTrans();
          c->RollbackTrans();
        });
      }
      EXPECT_NE(e.Descripcion().find("está dañada"), std::string::npos);
    }
    Escribe(buena);
  }
}

// The engine itself sees nothing in a text that changed while nobody had the file open.
TEST_F(IntegridadPrueba, UnByteQueCambioConElArchivoCerradoSeDice) {
  for (const bool grande : {false, true}) {
    const std::string archivo = (carpeta / (grande ? "grande.db" : "chica.db")).string();
    Llena(*Abre(archivo), "Ana Torres", grande);
    const auto cambia = [&](char por) {
      std::fstream f(archivo, std::ios::in | std::ios::out | std::ios::binary);
      f.seekp(static_cast<std::streamoff>(Bytes(archivo).rfind("na Torres") - 1));
      f.put(por);
    };
    const auto abre = [&](int miradas = 15) {
      const auto c = Abre(archivo);
      std::vector<std::string> avisos;
      for (int i = 0; grande && i < miradas && avisos.empty(); ++i) {
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
        c->Consulta("UPDATE Plantilla SET Pt_Asunto = ? WHERE rowid = 7", {std::to_string(i)});
        avisos = c->TomaAvisos();
      }
      return avisos.empty() ? std::string() : avisos[0];
    };
    EXPECT_EQ(abre(), "") << "as it was left, also while it is written to";
    cambia('E');
    std::string dicho;
    const auto e = ErrorDe([&] { dicho = abre(1000); });
    EXPECT_NE((dicho + e.Descripcion()).find("está dañada"), std::string::npos) << grande;
    cambia('A');
    EXPECT_EQ(abre(), "");
    for (const std::streamoff lugar : {43, 47, 59}) {  // of the file's head
      std::fstream f(archivo, std::ios::in | std::ios::out | std::ios::binary);
      const auto pone = [&](char c) { f.seekp(lugar).put(c).flush(); };
      const char antes = Bytes(archivo)[static_cast<std::size_t>(lugar)];
      pone('\x99');
      EXPECT_EQ(Numero(archivo), kDanada) << lugar;
      pone(antes);
    }
    EXPECT_EQ(abre(), "");
    // What another program wrote is no damage; nor is what was left open, or has no sums.
    Ajeno(archivo, "UPDATE Plantilla SET Pt_Cuerpo = 'otro' WHERE rowid = 5");
    EXPECT_EQ(abre(), "");
    MataEn(100, [&, c = std::shared_ptr<autonomo::Conexion>()](int) mutable {
      if (c == nullptr) c = Abre(archivo);
      c->Directa("UPDATE Plantilla SET Pt_Asunto = 'otro' WHERE rowid < 5");
    });
    EXPECT_EQ(abre(), "");
    cambia('E');
    std::filesystem::remove(archivo + "-suma");
    EXPECT_EQ(abre(), "");
  }
}

// A key that changed in the table or in its index, which a look at each page alone does not notice. Each opening says
// it again, and none writes to the file, nor sums over the damage, whoever else is in it.
TEST_F(IntegridadPrueba, LoDanadoSeRechazaCadaVezSinTocarlo) {
  namespace fs = std::filesystem;
  const auto escribe = [](autonomo::Conexion& c) { c.Directa("UPDATE Plantilla SET Pt_Asunto = 'x' WHERE rowid = 9"); };
  const auto dana = [](const std::string& archivo) {
    std::fstream f(archivo, std::ios::in | std::ios::out | std::ios::binary);
    f.seekp(static_cast<std::streamoff>(Bytes(archivo).find("Llave3")));
    f.put('M');
  };
  const auto rechaza = [&](const std::string& archivo) {
    const std::string antes = Bytes(archivo), log = Bytes(archivo + "-wal");
    const auto cuando = fs::last_write_time(archivo);
    for (int vez = 0; vez < 3; ++vez) {
      EXPECT_NE(ErrorDe([&] { Abre(archivo); }).Descripcion().find("está dañada"), std::string::npos) << archivo << vez;
    }
    EXPECT_TRUE(Bytes(archivo) == antes && Bytes(archivo + "-wal") == log) << archivo;
    EXPECT_EQ(fs::last_write_time(archivo), cuando);
  };
  for (const std::string como : {"cerrada", "sinsumas", "ajena", "abierta", "dentro"}) {
    const std::string archivo = (carpeta / como).string() + ".db";
    Llena(*Abre(archivo), "", false);
    if (como == "sinsumas") fs::remove(archivo + "-suma");
    if (como == "ajena") Ajeno(archivo, "UPDATE Plantilla SET Pt_Cuerpo = 'otro'");
    if (como == "abierta") {
      MataEn(0, [&, c = std::shared_ptr<autonomo::Conexion>()](int) mutable {
        if (c == nullptr) escribe(*(c = Abre(archivo)));
      });
      ASSERT_FALSE(Bytes(archivo + "-wal").empty());
    }
    const auto otra = como == "dentro" ? Abre(archivo) : nullptr;
    dana(archivo);
    rechaza(archivo);
    if (otra != nullptr) escribe(*otra);
  }
  rechaza((carpeta / "dentro.db").string());
  // A large one: its sums are compared before it is opened, its indexes behind the clerk's back.
  const std::string grande = (carpeta / "grande.db").string();
  Llena(*Abre(grande), "", true);
  dana(grande);
  rechaza(grande);
  fs::remove(grande + "-suma");
  { const auto c = Abre(grande); }  // as a rule closed before its check has ended
  const auto e = ErrorDe([&] {
    const auto c = Abre(grande);
    for (int i = 0; i < 1000; ++i) {
      std::this_thread::sleep_for(std::chrono::milliseconds(5));
      c->BeginTrans();
      c->RollbackTrans();
    }
  });
  EXPECT_NE(e.Descripcion().find("está dañada"), std::string::npos) << e.Descripcion();
  rechaza(grande);
}

TEST_F(IntegridadPrueba, LoQueLeQuitaronSePoneYSeDice) {
  {
    const auto c = Abre();
    EXPECT_TRUE(c->TomaAvisos().empty());
    c->Directa("INSERT INTO Parametro (Pm_Clave, Pm_Valor) VALUES ('HT_OVER_BOOKING', '0')");
    for (const char* guarda : {"Sobreventa_Alta_Linea", "Version_Cambio_Reservacion"})
      c->Directa(std::string("DROP TRIGGER ") + guarda);
    c->Directa("DROP INDEX Reservacion_Detalle_2");
    for (const char* folio : {"1", "2"}) {
      c->Consulta("INSERT INTO Reservacion (Rs_Folio) VALUES (?)", {folio});
      c->Consulta(
          "INSERT INTO Reservacion_Detalle (Rs_Folio, Hb_Cve_Habitacion, Rsd_Fecha_Inicio, Rsd_Fecha_Fin) "
          "VALUES (?, '0101', '2026-03-10', '2026-03-12')",
          {folio});
    }
  }
  const auto c = Abre();
  const auto avisos = c->TomaAvisos();
  ASSERT_EQ(avisos.size(), 1U);
  EXPECT_NE(avisos[0].find("(Sobreventa_Alta_Linea, Version_Cambio_Reservacion)"), std::string::npos) << avisos[0];
  EXPECT_NE(avisos[0].find("Habitación 0101: reservaciones 1 y 2"), std::string::npos) << avisos[0];
  EXPECT_EQ(Uno(*c, "SELECT COUNT(*) FROM sqlite_master WHERE type = 'trigger' OR name = 'Reservacion_Detalle_2'"),
            "16");
  EXPECT_TRUE(Abre()->TomaAvisos().empty());
  c->Directa("DROP TABLE Tarifa");
  EXPECT_EQ(Numero(ruta), kDanada);
}

// A database of the first version gets the versions and keeps what it holds.
TEST_F(IntegridadPrueba, UnaVersionAnteriorSePoneAlDia) {
  {
    const auto c = Abre();
    c->Directa("INSERT INTO Reservacion (Rs_Folio) VALUES ('1')");
    const auto guardas = c->Directa("SELECT name FROM sqlite_master WHERE name LIKE 'Version_%' AND type = 'trigger'");
    for (; !guardas->Eof(); guardas->MoveNext()) c->Directa("DROP TRIGGER " + com::CStr(guardas->Fields(0).Value()));
    c->Directa("DROP TABLE Reservacion_Version");
    c->Directa("ALTER TABLE Reservacion DROP COLUMN Rs_Comentario");
    c->Directa("PRAGMA user_version=1");
  }
  const auto c = Abre();
  EXPECT_TRUE(c->TomaAvisos().empty());
  EXPECT_EQ(Uno(*c, "SELECT Rs_Folio || Rs_Comentario FROM Reservacion"), "1");
  c->Directa("UPDATE Reservacion SET Rs_Comentario = 'x'");
  EXPECT_EQ(Uno(*c, "SELECT Rv_Version FROM Reservacion_Version"), "1");
  EXPECT_EQ(Uno(*c, "PRAGMA user_version"), std::to_string(esquema::kVersion));
}

// Keys that another order of letters put into the index are found.
TEST_F(IntegridadPrueba, LosIndicesSiguenElOrdenDeHoy) {
  Abre();
  sqlite3* base = nullptr;
  ASSERT_EQ(sqlite3_open(ruta.c_str(), &base), SQLITE_OK);
  const auto alReves = [](void*, int na, const void* a, int nb, const void* b) {
    const std::string_view x(static_cast<const char*>(a), static_cast<std::size_t>(na));
    return std::string_view(static_cast<const char*>(b), static_cast<std::size_t>(nb)).compare(x);
  };
  sqlite3_create_collation(base, "ESPANOL", SQLITE_UTF8, nullptr, alReves);
  for (const char* clave : {"A", "B", "C", "D"}) {
    const std::string sql = "INSERT INTO Moneda (Mn_Cve_Moneda) VALUES ('" + std::string(clave) + "')";
    ASSERT_EQ(sqlite3_exec(base, sql.c_str(), nullptr, nullptr, nullptr), SQLITE_OK) << sqlite3_errmsg(base);
  }
  sqlite3_exec(base, "PRAGMA user_version=1", nullptr, nullptr, nullptr);
  sqlite3_close(base);
  const auto c = Abre();
  EXPECT_EQ(Uno(*c, "PRAGMA integrity_check"), "ok");
  for (const char* clave : {"a", "b", "c", "d"})
    EXPECT_FALSE(c->Consulta("SELECT 1 FROM Moneda WHERE Mn_Cve_Moneda = ?", {clave})->Eof()) << clave;
}

}  // namespace
