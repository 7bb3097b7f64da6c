// What the board counts, and that both ways of reading it agree.
#include <gtest/gtest.h>

#include <random>

#include "availability/ocupacion.h"
#include "tests/availability/tablero_prueba.h"

namespace pruebas {
namespace {

using kv207::EstadoCelda;

const com::Fecha kLunes = com::FechaDe(2026, 3, 9);

CeldaVista Como(const std::string& texto, EstadoCelda estado) {
  return {texto, std::string(kv207::NombreEstado(estado)), static_cast<int>(estado)};
}

// Every count is seen through both forms.
class Ocupacion : public TableroPrueba, public ::testing::WithParamInterface<bool> {
 protected:
  Ocupacion() {
    conexion->conjuntos = GetParam();
    Tipo("SEN", "Sencilla");
  }
  void PorHabitacion() { tablero.opHabitacion.Pulsa(); }
};

INSTANTIATE_TEST_SUITE_P(Formas, Ocupacion, ::testing::Bool(),
                         [](const auto& caso) { return caso.param ? "Conjuntos" : "PorCelda"; });

TEST_P(Ocupacion, LaHoraDecideQueNochesTocaCadaFuente) {
  for (const char* h : {"101", "102", "103", "104"}) Habitacion(h, "SEN");
  Reserva("R1", "101", "2026-03-10", "2026-03-12");
  Estancia("C1", "102", "2026-03-10", "2026-03-12");
  Bloqueo("103", "2026-03-10", "2026-03-12");
  // Ends in the last minute of the 10th; begins in it.
  Reserva("R2", "104", "2026-03-09 12:00:00", "2026-03-10 23:59:00");
  Reserva("R3", "104", "2026-03-10 23:59:00", "2026-03-11 23:58:59");
  Bloqueo("104", "2026-03-12 00:00:01", "2026-03-13 00:00:00");
  ASSERT_TRUE(Abre(kLunes, 5)) << tablero.MensajeError;
  PorHabitacion();
  const CeldaVista libre = Como("1", EstadoCelda::Disponible);
  const auto noches = [&](const std::string& clave) {
    for (const FilaVista& fila : Vista()) {
      if (fila.clave == clave) return fila.celdas;
    }
    return std::vector<CeldaVista>();
  };
  const auto reservado = Como("0", EstadoCelda::Reservado), ocupado = Como("0", EstadoCelda::Ocupado),
             bloqueado = Como("0", EstadoCelda::Bloqueado);
  EXPECT_EQ(noches("101"), (std::vector<CeldaVista>{libre, reservado, reservado, libre, libre}));
  EXPECT_EQ(noches("102"), (std::vector<CeldaVista>{libre, ocupado, ocupado, libre, libre}));
  EXPECT_EQ(noches("103"), (std::vector<CeldaVista>{libre, bloqueado, bloqueado, bloqueado, libre}));
  EXPECT_EQ(noches("104"),
            (std::vector<CeldaVista>{reservado, Como("-1", EstadoCelda::Reservado), libre, libre, bloqueado}));
}

TEST_P(Ocupacion, PorTipoQuedanLibresLasQueNadieTomo) {
  for (const char* h : {"101", "102", "103", "104", "105"}) Habitacion(h, "SEN");
  Tipo("DOB", "Doble");
  for (const char* h : {"201", "202"}) Habitacion(h, "DOB");
  Reserva("R1", "101", "2026-03-09", "2026-03-10");
  Reserva("R2", "102", "2026-03-09", "2026-03-10");
  Estancia("C1", "103", "2026-03-09", "2026-03-10");
  Reserva("R3", "201", "2026-03-09", "2026-03-10");
  Reserva("R4", "202", "2026-03-09", "2026-03-10");
  Bloqueo("202", "2026-03-09", "2026-03-09");
  ASSERT_TRUE(Abre(kLunes, 1)) << tablero.MensajeError;
  EXPECT_EQ(Celda("SEN", 0), Como("2", EstadoCelda::Disponible));
  EXPECT_EQ(Celda("DOB", 0), Como("-1", EstadoCelda::Bloqueado));
  PorHabitacion();
  EXPECT_EQ(Celda("201", 0), Como("0", EstadoCelda::Reservado));
  EXPECT_EQ(Celda("202", 0), Como("-1", EstadoCelda::Bloqueado));
}

TEST_P(Ocupacion, LasClavesSeComparanComoEnLaBase) {
  Habitacion("a1", "sen ");
  Habitacion("a2", "SEN");
  Habitacion("a3", "SEN");
  Sql("INSERT INTO Habitacion (Hb_Cve_Habitacion, Th_Cve_Tipo_Habitacion) VALUES ('A4', NULL)");
  Reserva("R1", "A1 ", "2026-03-09", "2026-03-10");
  ASSERT_TRUE(Abre(kLunes, 1)) << tablero.MensajeError;
  EXPECT_EQ(Celda("SEN", 0), Como("2", EstadoCelda::Disponible));
  PorHabitacion();
  EXPECT_EQ(tablero.NumeroFilas, 3);
  EXPECT_EQ(Celda("a1", 0), Como("0", EstadoCelda::Reservado));
}

TEST_P(Ocupacion, SoloCuentaLoQueEstaVivo) {
  for (const char* h : {"101", "102", "103", "104", "105"}) Habitacion(h, "SEN");
  Habitacion("106", "SEN", "0001", "0001", "BA");
  Reserva("R1", "101", "2026-03-09", "2026-03-10", "CA");
  Reserva("R2", "101", "2026-03-09", "2026-03-10", "CE");
  Reserva("R3", "102", "2026-03-09", "2026-03-10", "AP");
  Estancia("C1", "103", "2026-03-09", "2026-03-10", "CE");
  Estancia("C2", "103", "2026-03-09", "2026-03-10", "CA");
  Bloqueo("104", "2026-03-09", "2026-03-10", "BA");
  // A guest is in the room today, so its reservations of the range do not show.
  Reserva("R5", "105", "2026-03-09", "2026-03-10");
  Estancia("C5", "105", "2026-03-01", "2026-03-02", "AC");
  ASSERT_TRUE(Abre(kLunes, 1)) << tablero.MensajeError;
  EXPECT_EQ(Celda("SEN", 0), Como("4", EstadoCelda::Disponible));
  PorHabitacion();
  const auto libre = Como("1", EstadoCelda::Disponible);
  EXPECT_EQ(Celda("101", 0), libre);
  EXPECT_EQ(Celda("102", 0), Como("0", EstadoCelda::Reservado));
  EXPECT_EQ(Celda("103", 0), libre);
  EXPECT_EQ(Celda("104", 0), libre);
  EXPECT_EQ(Celda("105", 0), libre);
  EXPECT_EQ(tablero.NumeroFilas, 5);
}

TEST_P(Ocupacion, LaReservacionQueSeEditaNoSeEstorba) {
  Habitacion("101", "SEN");
  Reserva("0000000007", "101", "2026-03-09", "2026-03-10");
  ASSERT_TRUE(Abre(kLunes, 1)) << tablero.MensajeError;
  EXPECT_EQ(Celda("SEN", 0), Como("0", EstadoCelda::Reservado));
  tablero.FolioExcluido = "0000000007";
  ASSERT_TRUE(tablero.CargarDatos());
  EXPECT_EQ(Celda("SEN", 0), Como("1", EstadoCelda::Disponible));
}

TEST_P(Ocupacion, ElFiltroDeGrupoNoTocaTotalesNiBloqueos) {
  Sql("INSERT INTO Grupo_Habitacion (Ghb_Cve_Grupo_Habitacion, Ghb_Descripcion) VALUES ('0002', 'Playa')");
  Habitacion("101", "SEN", "0001");
  Habitacion("102", "SEN", "0002");
  Habitacion("103", "SEN", "0002");
  Reserva("R1", "101", "2026-03-09", "2026-03-10");
  Reserva("R2", "102", "2026-03-09", "2026-03-10");
  Bloqueo("101", "2026-03-09", "2026-03-09");
  ASSERT_TRUE(Abre(kLunes, 1)) << tablero.MensajeError;
  EXPECT_EQ(Celda("SEN", 0), Como("0", EstadoCelda::Bloqueado));
  tablero.txtGrupo_Habitacion.Teclea("2");
  tablero.txtGrupo_Habitacion.Confirma();
  EXPECT_EQ(tablero.txtNGrupo_Habitacion.text(), "Playa");
  // Three rooms, less one reserved in the group, less the block outside it.
  EXPECT_EQ(Celda("SEN", 0), Como("1", EstadoCelda::Disponible));
  PorHabitacion();
  EXPECT_EQ(tablero.NumeroFilas, 2);
  EXPECT_EQ(Celda("102", 0), Como("0", EstadoCelda::Reservado));
}

TEST_P(Ocupacion, UnaClaveConComillaFallaComoLaSentencia) {
  Habitacion("101", "SEN");
  Habitacion("1''2", "SEN");
  ASSERT_TRUE(Abre(kLunes, 1)) << tablero.MensajeError;
  tablero.OpcionesActivas = true;
  tablero.opHabitacion.Pulsa();
  EXPECT_EQ(tablero.MensajeError.rfind("frmDisponibilidad.CargarDatos() - ", 0), 0U) << tablero.MensajeError;
  EXPECT_EQ(escritorio.Ids(), std::vector<std::string>{"ERR-ID:7500056"});
  EXPECT_FALSE(tablero.frFrame.enabled());
}

// --- both forms on random hotels

// A small hotel with everything that makes counting hard, the same for the same seed.
class HotelAlAzar {
 public:
  HotelAlAzar(unsigned semilla, autonomo::Conexion& base) : azar_(semilla), base_(base) {}

  void Construye() {
    for (const char* tabla : {"Reservacion_Detalle", "Reservacion", "Check_In_Detalle", "Check_In",
                              "Habitacion_Bloqueo", "Habitacion", "Tipo_Habitacion", "Producto_Precio", "Producto"}) {
      base_.Directa(std::string("DELETE FROM ") + tabla);
    }
    Catalogos();
    Veces(0, 6, [this](int i) { Reservacion(i); });
    Veces(0, 3, [this](int i) { Estancia(i); });
    Veces(0, 3, [this](int) {
      base_.Consulta(
          "INSERT INTO Habitacion_Bloqueo (Hb_Cve_Habitacion, Hbb_Fecha_Inicio, Hbb_Fecha_Fin, Es_Cve_Estado) "
          "VALUES (?, ?, ?, ?)",
          {Habitacion(), Momento(), Momento(), Uno({"AC", "AC", "ac ", "BA"})});
    });
  }

  template <class T>
  T Uno(std::initializer_list<T> valores) {
    return *(valores.begin() + Azar(0, static_cast<int>(valores.size()) - 1));
  }
  std::string Uno(std::initializer_list<const char*> valores) { return Uno<const char*>(valores); }
  int Azar(int menor, int mayor) {
    return menor + static_cast<int>(azar_() % static_cast<unsigned>(mayor - menor + 1));
  }

 private:
  template <class Accion>
  void Veces(int menor, int mayor, Accion accion) {
    const int n = Azar(menor, mayor);
    for (int i = 0; i < n; ++i) accion(i);
  }

  // The same key as other tables may spell it.
  std::string Escrita(std::string clave) {
    if (Azar(0, 3) == 0) clave = com::Minusculas(clave);
    if (Azar(0, 3) == 0) clave += Uno({" ", "  "});
    return clave;
  }
  std::string Habitacion() { return Escrita(Uno({"H1", "H2", "H3", "H4", "ŠÁ5"})); }
  std::string TipoAlAzar() { return Escrita(Uno({"T1", "T2", "Ž3"})); }

  // A date around the range, often with a time of day, now and then none at all.
  com::Variant Momento() {
    if (Azar(0, 19) == 0) return com::Variant::Null();
    com::Fecha f = com::MasDias(kLunes, Azar(-3, 6));
    if (Azar(0, 2) == 0) f.segundo = Uno<int>({1, 43200, 86339, 86340, 86341, 86399});
    return f;
  }

  void Catalogos() {
    for (const char* tipo : {"T1", "T2", "Ž3"}) {
      base_.Consulta("INSERT INTO Producto (Pr_Cve_Producto, Pr_Descripcion) VALUES (?, 'Hospedaje')", {Escrita(tipo)});
      Veces(Azar(0, 5) == 0 ? 0 : 1, 2, [&](int i) {
        base_.Consulta("INSERT INTO Producto_Precio (Pr_Cve_Producto, Pp_Precio_1) VALUES (?, ?)",
                       {Escrita(tipo), 100.0 * i});
      });
      base_.Consulta(
          "INSERT INTO Tipo_Habitacion (Th_Cve_Tipo_Habitacion, Th_Descripcion, Pr_Cve_Producto, Es_Cve_Estado) "
          "VALUES (?, ?, ?, ?)",
          {Escrita(tipo), "Tipo " + std::string(tipo), Escrita(tipo), Uno({"AC", "AC", "AC", "BA"})});
    }
    for (const char* habitacion : {"H1", "H2", "H3", "H4", "ŠÁ5"}) {
      if (Azar(0, 7) == 0) continue;
      base_.Consulta(
          "INSERT INTO Habitacion (Hb_Cve_Habitacion, Hb_Descripcion, Th_Cve_Tipo_Habitacion, "
          "Ghb_Cve_Grupo_Habitacion, Ah_Cve_Area_Habitacion, Es_Cve_Estado) VALUES (?, ?, ?, ?, ?, ?)",
          {Escrita(habitacion), "Cuarto", TipoAlAzar(), Uno({"0001", "0002"}), Uno({"0001", "0002"}),
           Uno({"AC", "AC", "AC", "BA"})});
    }
  }

  void Reservacion(int i) {
    const std::string folio = "R" + std::to_string(i);
    base_.Consulta("INSERT INTO Reservacion (Rs_Folio, Es_Cve_Estado) VALUES (?, ?)",
                   {folio, Uno({"AC", "CO", "AP", "CA", "CE"})});
    Veces(1, 3, [&](int) {
      base_.Consulta(
          "INSERT INTO Reservacion_Detalle (Rs_Folio, Hb_Cve_Habitacion, Rsd_Fecha_Inicio, Rsd_Fecha_Fin) "
          "VALUES (?, ?, ?, ?)",
          {Escrita(folio), Habitacion(), Momento(), Momento()});
    });
  }

  void Estancia(int i) {
    const std::string folio = "C" + std::to_string(i);
    base_.Consulta("INSERT INTO Check_In (Ci_Folio, Ci_Llegada, Ci_Salida, Es_Cve_Estado) VALUES (?, ?, ?, ?)",
                   {folio, Momento(), Momento(), Uno({"AC", "AP", "CO", "CE", "CA"})});
    Veces(1, 2, [&](int) {
      const com::Variant habitacion = Azar(0, 15) == 0 ? com::Variant::Null() : com::Variant(Habitacion());
      base_.Consulta("INSERT INTO Check_In_Detalle (Ci_Folio, Hb_Cve_Habitacion) VALUES (?, ?)",
                     {Escrita(folio), habitacion});
    });
  }

  std::mt19937 azar_;
  autonomo::Conexion& base_;
};

struct Lectura {
  bool cargado = false;
  std::string mensaje;
  std::vector<FilaVista> filas;
  bool operator==(const Lectura&) const = default;
};

// Runs of seeds, so that they share the machine's cores.
class HotelesAlAzar : public TableroPrueba, public ::testing::WithParamInterface<unsigned> {
 protected:
  static constexpr unsigned kHoteles = 300;

  Lectura Lee(bool conjuntos) {
    conexion->conjuntos = conjuntos;
    Lectura lectura;
    lectura.cargado = tablero.CargarDatos();
    lectura.mensaje = tablero.MensajeError;
    lectura.filas = Vista();
    return lectura;
  }

  void Filtra(HotelAlAzar& hotel) {
    for (auto [codigo, nombre] : {std::pair{&tablero.txtGrupo_Habitacion, &tablero.txtNGrupo_Habitacion},
                                  std::pair{&tablero.txtArea, &tablero.txtNArea}}) {
      codigo->valor(hotel.Uno({"%", "%", "0001", "0002"}));
      nombre->valor("Nombre");
    }
    tablero.txtTipo_Habitacion.valor(hotel.Uno({"%", "%", "%", "T1", "é3 "}));
    tablero.txtNTipo_Habitacion.valor("Nombre");
  }
};

INSTANTIATE_TEST_SUITE_P(Semillas, HotelesAlAzar, ::testing::Values(0U, 1U, 2U, 3U));

TEST_P(HotelesAlAzar, AmbasFormasVenLoMismo) {
  Abre(kLunes, 4);  // nothing to show yet
  tablero.ConservarVista = true;
  int filas = 0, tomadas = 0;
  for (unsigned i = 0; i < kHoteles; ++i) {
    const unsigned semilla = GetParam() * kHoteles + i;
    HotelAlAzar hotel(semilla, *host.conexion());
    hotel.Construye();
    tablero.FolioExcluido = hotel.Uno({"", "", "R0", "r1 "});
    Filtra(hotel);
    for (controles::Opcion* vista : {&tablero.opTipoHabitacion, &tablero.opHabitacion}) {
      tablero.OpcionesActivas = false;
      vista->Selecciona();
      const Lectura conjuntos = Lee(true), celdas = Lee(false);
      ASSERT_EQ(conjuntos.cargado, celdas.cargado) << "seed " << semilla;
      ASSERT_EQ(conjuntos.mensaje, celdas.mensaje) << "seed " << semilla;
      ASSERT_EQ(conjuntos.filas, celdas.filas) << "seed " << semilla << ", " << vista->nombre();
      for (const FilaVista& fila : celdas.filas) {
        ++filas;
        for (const CeldaVista& celda : fila.celdas)
          tomadas += celda.estado == static_cast<int>(EstadoCelda::Disponible) ? 0 : 1;
      }
    }
  }
  // The hotels are neither empty nor full.
  EXPECT_GT(filas, static_cast<int>(kHoteles));
  EXPECT_GT(tomadas, filas / 2);
  EXPECT_LT(tomadas, 3 * filas);
}

}  // namespace
}  // namespace pruebas
