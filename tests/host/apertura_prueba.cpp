// Opening and creating the file: what is not ours, locked, read-only or full, and a kill at any moment.
#include <sqlite3.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <fstream>
#include <thread>

#include "tests/host/archivo_prueba.h"

namespace {

using namespace com::error;
using pruebas::ArchivoPrueba;
using pruebas::ErrorDe;
using pruebas::MataEn;
using pruebas::Uno;

class AperturaPrueba : public ArchivoPrueba {
 protected:
  // Exit status of a process that runs the call.
  static int EnProceso(const std::function<int()>& llama) {
    const pid_t hijo = fork();
    if (hijo == 0) _exit(llama());
    int estado = -1;
    waitpid(hijo, &estado, 0);
    return WIFEXITED(estado) ? WEXITSTATUS(estado) : -1;
  }
};

TEST_F(AperturaPrueba, CreaYVuelveAAbrir) {
  Abre()->Execute("INSERT INTO Moneda (Mn_Cve_Moneda) VALUES ('MXN')");
  EXPECT_EQ(Archivos(), 1U);
  const auto c = Abre();
  EXPECT_EQ(Uno(*c, "SELECT Mn_Cve_Moneda FROM Moneda"), "MXN");
  EXPECT_EQ(Uno(*c, "PRAGMA journal_mode"), "wal");
  EXPECT_EQ(Uno(*c, "PRAGMA synchronous"), "2");
  for (const auto& t : esquema::Tablas())
    EXPECT_EQ(Uno(*c, "SELECT COUNT(*) FROM pragma_table_info('" + std::string(t.nombre) + "')"),
              std::to_string(t.columnas.size()));
}

// A database without anything in it, and a copy that keeps no log yet.
TEST_F(AperturaPrueba, SeEscribeUnaYOtraVezEnUnArchivoSinBitacora) {
  Ajeno(ruta, "VACUUM");
  for (const char* vuelta : {"nueva", "copia"}) {
    const auto base = Abre();
    for (const char* moneda : {"A", "B"}) {
      base->Consulta("INSERT INTO Moneda (Mn_Cve_Moneda) VALUES (?)", {std::string(vuelta) + moneda});
    }
  }
  EXPECT_EQ(Uno(*Abre(), "SELECT COUNT(*) FROM Moneda"), "4");
}

TEST_F(AperturaPrueba, VariosLoCreanALaVez) {
  Abre(":memory:");  // the driver's plug-in is to belong to this thread, which outlives the others
  std::vector<std::thread> hilos;
  hilos.reserve(4);
  for (int i = 0; i < 4; ++i)
    hilos.emplace_back(
        [&, i] { Abre()->Consulta("INSERT INTO Moneda (Mn_Cve_Moneda) VALUES (?)", {std::to_string(i)}); });
  for (auto& h : hilos) h.join();
  EXPECT_EQ(Uno(*Abre(), "SELECT COUNT(*) FROM Moneda"), "4");
  EXPECT_EQ(Archivos(), 1U);
}

TEST_F(AperturaPrueba, LoAjenoNiSeAbreNiSeToca) {
  Escribe(std::string(5000, 'x'));
  EXPECT_EQ(Numero(ruta), kAjena);
  EXPECT_EQ(Bytes(ruta), std::string(5000, 'x'));
  for (const char* sql : {"CREATE TABLE t(a)", "PRAGMA application_id=7", "PRAGMA user_version=1"}) {
    std::filesystem::remove(ruta);
    Ajeno(ruta, sql);
    const std::string antes = Bytes(ruta);
    EXPECT_EQ(Numero(ruta), kAjena) << sql;
    EXPECT_EQ(Bytes(ruta), antes) << sql;
  }
  std::filesystem::remove(ruta);
  Abre();
  Ajeno(ruta, "PRAGMA user_version=99");
  const auto e = ErrorDe([&] { Abre(); });
  EXPECT_EQ(e.Numero(), kBaseDatos);
  EXPECT_EQ(e.Descripcion(),
            "El archivo no es una base de datos de reservaciones de esta versión: lo creó una más nueva");
  EXPECT_EQ(Numero(carpeta.string()), kAjena);
  EXPECT_EQ(Archivos(), 1U);
}

TEST_F(AperturaPrueba, UnaCarpetaQueNoExisteNoCreaNada) {
  EXPECT_EQ(Numero((carpeta / "no" / "hotel.db").string()), kBaseDatos);
  EXPECT_EQ(Numero(""), kBaseDatos);
  // Nor does a further connection of a program whose file has been moved away.
  autonomo::OpcionesConexion opciones;
  opciones.ruta = ruta;
  opciones.crea = false;
  EXPECT_EQ(ErrorDe([&] { autonomo::AbreConexion(opciones, reloj); }).Numero(), kBaseDatos);
  EXPECT_EQ(Archivos(), 0U);
}

TEST_F(AperturaPrueba, OcupadaPorOtroPrograma) {
  const auto uno = Abre(), otro = Abre(50);
  uno->BeginTrans();
  uno->Execute("INSERT INTO Moneda (Mn_Cve_Moneda) VALUES ('MXN')");
  // Reading goes on; a second writer is told after its wait.
  EXPECT_EQ(Uno(*otro, "SELECT COUNT(*) FROM Moneda"), "0");
  const auto e = ErrorDe([&] { otro->BeginTrans(); });
  EXPECT_EQ(e.Numero(), kOcupada);
  EXPECT_EQ(e.Descripcion(), "La base de datos está ocupada por otro programa");
  EXPECT_FALSE(otro->EnTransaccion());
  EXPECT_EQ(ErrorDe([&] { otro->Execute("DELETE FROM Moneda"); }).Numero(), kOcupada);
  uno->CommitTrans();
  otro->BeginTrans();
  otro->RollbackTrans();
}

TEST_F(AperturaPrueba, OcupadaEnExclusivaNoSeAbre) {
  Abre();
  sqlite3* base = nullptr;
  ASSERT_EQ(sqlite3_open(ruta.c_str(), &base), SQLITE_OK);
  ASSERT_EQ(sqlite3_exec(base, "PRAGMA locking_mode=EXCLUSIVE; BEGIN EXCLUSIVE", nullptr, nullptr, nullptr), SQLITE_OK);
  EXPECT_EQ(Numero(ruta), kOcupada);
  sqlite3_close(base);
  EXPECT_EQ(Numero(ruta), 0);
}

// As a user without rights, which the superuser is not.
TEST_F(AperturaPrueba, SoloLecturaYSinPermiso) {
  Abre();
  namespace fs = std::filesystem;
  const auto sinPermisos = [&](fs::perms archivo, fs::perms deCarpeta, const std::string& cual) {
    fs::permissions(ruta, archivo);
    fs::permissions(carpeta, deCarpeta);
    const int numero = EnProceso([&] {
      if (geteuid() == 0 && (setgid(65534) != 0 || setuid(65534) != 0)) return 99;
      return Numero(cual) == kSoloLectura ? 0 : 1;
    });
    fs::permissions(carpeta, fs::perms::owner_all);
    return numero;
  };
  constexpr auto lee = fs::perms::owner_read | fs::perms::group_read | fs::perms::others_read;
  constexpr auto todo = fs::perms::all,
                 pasa = lee | fs::perms::owner_exec | fs::perms::group_exec | fs::perms::others_exec;
  EXPECT_EQ(sinPermisos(lee, todo, ruta), 0);
  EXPECT_EQ(sinPermisos(lee, pasa, ruta), 0);
  EXPECT_EQ(sinPermisos(fs::perms::none, todo, ruta), 0);
  EXPECT_EQ(sinPermisos(lee, pasa, (carpeta / "nueva.db").string()), 0);
  EXPECT_EQ(Archivos(), 1U);
}

TEST_F(AperturaPrueba, SinEspacioNoQuedaArchivo) {
  EXPECT_EQ(EnProceso([&] {
              if (signal(SIGXFSZ, SIG_IGN) == SIG_ERR) return 2;
              const rlimit limite{100000, 100000};
              setrlimit(RLIMIT_FSIZE, &limite);
              return Numero(ruta) == kLlena ? 0 : 1;
            }),
            0);
  EXPECT_EQ(Archivos(), 0U);
}

TEST_F(AperturaPrueba, MuertaAlCrearQuedaEnteraONada) {
  const auto nombre = [&](int vuelta, int i) {
    return (carpeta / (std::to_string(vuelta) + "_" + std::to_string(i) + ".db")).string();
  };
  for (int vuelta = 0; vuelta < 8; ++vuelta) MataEn(15 + 7 * vuelta, [&](int i) { Abre(nombre(vuelta, i)); });
  int creadas = 0;
  for (const auto& archivo : std::filesystem::directory_iterator(carpeta)) {
    const std::string ajeno = archivo.path().string();
    if (ajeno.ends_with("-wal") || ajeno.ends_with("-shm") || ajeno.ends_with("-journal")) continue;
    if (ajeno.ends_with("-suma") || ajeno.ends_with("-suma.nueva")) continue;
    ASSERT_TRUE(ajeno.ends_with(".db")) << ajeno;
    ++creadas;
    EXPECT_GT(archivo.file_size(), 0U);
  }
  EXPECT_GT(creadas, 0);
  for (int vuelta = 0; vuelta < 8; ++vuelta)
    for (int i = 0; std::filesystem::exists(nombre(vuelta, i)); ++i)
      EXPECT_EQ(Uno(*Abre(nombre(vuelta, i)), "SELECT COUNT(*) FROM sqlite_master WHERE type='trigger'"), "15");
}

TEST_F(AperturaPrueba, MuertaAlGuardarQuedaTodoONada) {
  Abre();
  for (int vuelta = 0; vuelta < 5; ++vuelta)
    MataEn(60, [&, vuelta, c = std::shared_ptr<autonomo::Conexion>()](int i) mutable {
      if (c == nullptr) c = Abre();
      const std::string folio = std::to_string(vuelta) + "-" + std::to_string(i);
      c->BeginTrans();
      c->Consulta("INSERT INTO Reservacion (Rs_Folio) VALUES (?)", {folio});
      for (int linea = 1; linea <= 3; ++linea)
        c->Consulta("INSERT INTO Reservacion_Detalle (Rs_Folio, Rsd_Id) VALUES (?, ?)", {folio, linea});
      c->CommitTrans();
    });
  const auto c = Abre();
  EXPECT_NE(Uno(*c, "SELECT COUNT(*) FROM Reservacion"), "0");
  EXPECT_EQ(Uno(*c,
                "SELECT COUNT(*) FROM Reservacion WHERE 3 <> (SELECT COUNT(*) FROM Reservacion_Detalle "
                "WHERE Reservacion_Detalle.Rs_Folio = Reservacion.Rs_Folio)"),
            "0");
  EXPECT_EQ(Uno(*c, "PRAGMA integrity_check"), "ok");
}

// What is written to a file that nobody can find again is lost.
TEST_F(AperturaPrueba, UnArchivoQueSeFueNoRecibeNada) {
  auto c = Abre();
  const auto inserta = [&] { c->Execute("INSERT INTO Moneda (Mn_Cve_Moneda) VALUES ('MXN')"); };
  for (const char* cola : {"", "-wal"}) {
    std::filesystem::rename(ruta + cola, ruta + ".otro");
    EXPECT_EQ(ErrorDe([&] { c->BeginTrans(); }).Numero(), kBaseDatos) << cola;
    EXPECT_EQ(ErrorDe(inserta).Numero(), kBaseDatos) << cola;
    std::ofstream(ruta + cola) << "otro archivo";
    EXPECT_EQ(ErrorDe([&] { c->BeginTrans(); }).Numero(), kBaseDatos) << "another file under its name" << cola;
    std::filesystem::rename(ruta + ".otro", ruta + cola);
  }
  c->BeginTrans();
  inserta();
  c->CommitTrans();
  EXPECT_EQ(Uno(*Abre(), "SELECT COUNT(*) FROM Moneda"), "1");
  // Nor is another's log taken away with the last program.
  std::filesystem::rename(ruta + "-wal", ruta + ".otro");
  std::ofstream(ruta + "-wal") << "otro archivo";
  c.reset();
  EXPECT_EQ(Bytes(ruta + "-wal"), "otro archivo");
}

}  // namespace
