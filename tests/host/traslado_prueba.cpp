// A hotel from one database into another: every row, and nothing when one does not arrive.
#include "host/standalone/traslado.h"
#include "tests/host/base_prueba.h"

namespace {

using pruebas::BasePrueba;
using pruebas::ErrorDe;

class TrasladoPrueba : public BasePrueba {
 protected:
  std::shared_ptr<autonomo::ConexionDeMotor> Motor(const std::string& archivo) const {
    autonomo::OpcionesConexion opciones;
    opciones.ruta = archivo;
    return autonomo::AbreMotor(opciones, reloj);
  }
  // What every table holds, in the order of its rows' texts.
  static std::string Todo(autonomo::ConexionDeMotor& base) {
    std::string todo;
    for (const auto& t : esquema::Tablas()) {
      std::vector<std::string> filas;
      const auto rs = base.Consulta("SELECT * FROM " + std::string(t.nombre));
      for (; !rs->Eof(); rs->MoveNext()) {
        std::string fila;
        for (std::size_t i = 0; i < t.columnas.size(); ++i) {
          const com::Variant v = rs->Fields(i).Value();
          fila += (v.EsNulo()    ? "nulo"
                   : v.EsFecha() ? com::AIso(std::get<com::Fecha>(v.Contenido()))
                                 : com::CStr(v)) +
                  '|';
        }
        filas.push_back(fila);
      }
      std::sort(filas.begin(), filas.end());
      todo += std::string(t.nombre) + '\n';
      for (const auto& fila : filas) todo += fila + '\n';
    }
    return todo;
  }
  // A hotel with what is hard to carry: pages of one key, keys that are none, nights sold twice before that was
  // forbidden, quotes, texts with blanks at the end, versions.
  void Llena(const std::string& archivo, int lineas) const {
    const auto c = Abre(archivo);
    c->BeginTrans();
    for (const std::string& sentencia : esquema::HotelDemo("2026-03-09")) c->Execute(sentencia);
    c->Directa("DELETE FROM Parametro WHERE Pm_Clave = 'HT_OVER_BOOKING'");
    for (int i = 0; i < lineas; ++i) {
      c->Consulta(
          "INSERT INTO Reservacion_Detalle (Rs_Folio, Rsd_Id, Hb_Cve_Habitacion, Rsd_Precio) VALUES (?, ?, ?, ?)",
          {i % 3 == 0 ? com::Variant::Null() : com::Variant(i < 9000 ? "Grande" : "O'Brien ñ " + std::to_string(i)), i,
           "0101 ", i / 7.0});
    }
    for (const char* folio : {"X1", "X2"}) {
      c->Consulta("INSERT INTO Reservacion (Rs_Folio, Rs_Notas) VALUES (?, ?)", {folio, "«así»\r\n'; DROP TABLE x"});
      c->Consulta(
          "INSERT INTO Reservacion_Detalle (Rs_Folio, Hb_Cve_Habitacion, Rsd_Fecha_Inicio, Rsd_Fecha_Fin) "
          "VALUES (?, '0102', '2027-03-10', '2027-03-12')",
          {folio});
    }
    c->Directa("INSERT INTO Parametro (Pm_Clave, Pm_Valor) VALUES ('HT_OVER_BOOKING', '0')");
    c->Directa("INSERT INTO Bitacora (Bt_Id, Bt_Texto) VALUES (70000, 'lejos')");
    c->CommitTrans();
  }
};

TEST_F(TrasladoPrueba, LlegaCadaRenglonYLoNuevoSigueDetras) {
  Llena(ruta, 12000);
  const auto de = Motor(ruta), a = Motor((carpeta / "otra.db").string());
  EXPECT_TRUE(autonomo::EsNueva(*a));
  a->Directa("INSERT INTO Parametro (Pm_Clave, Pm_Valor) VALUES ('HT_OVER_BOOKING', '0')");
  EXPECT_TRUE(autonomo::EsNueva(*a));
  const auto filas = autonomo::Traslada(*de, *a);
  EXPECT_EQ(std::find(filas.begin(), filas.end(),
                      std::make_pair(std::string_view("Reservacion_Detalle"), std::int64_t{12052})),
            filas.begin() + 1);
  EXPECT_EQ(Todo(*a), Todo(*de));
  a->Consulta("INSERT INTO Bitacora (Bt_Texto) VALUES ('nueva')");
  EXPECT_EQ(com::CLng(a->Consulta("SELECT MAX(Bt_Id) AS Id FROM Bitacora")->Fields(0).Value()), 70001);
  EXPECT_FALSE(autonomo::EsNueva(*a));
  EXPECT_EQ(ErrorDe([&] { autonomo::Traslada(*de, *a); }).Numero(), com::error::kArgumento);
  EXPECT_FALSE(de->EnTransaccion() || a->EnTransaccion());
}

TEST_F(TrasladoPrueba, UnRenglonQueNoLlegaIgualNoDejaNada) {
  Llena(ruta, 20);
  const auto de = Motor(ruta);
  const char* estropea[] = {
      "CREATE TRIGGER e AFTER INSERT ON Tarifa WHEN NEW.Tf_Id = 7 BEGIN UPDATE Tarifa SET Tf_Precio = Tf_Precio + "
      "0.0001 "
      "WHERE Tf_Id = 7; END",
      "CREATE TRIGGER e AFTER INSERT ON Reservacion_Detalle WHEN NEW.Rsd_Id = 19 BEGIN DELETE FROM "
      "Reservacion_Detalle "
      "WHERE Rsd_Id = 19; END",
      "CREATE TRIGGER e BEFORE INSERT ON Bitacora WHEN NEW.Bt_Id = 70000 BEGIN SELECT RAISE(ABORT, 'no'); END"};
  for (const char* sql : estropea) {
    const std::string archivo = (carpeta / "mala.db").string();
    {
      const auto a = Motor(archivo);
      a->Directa(sql);
      EXPECT_NE(ErrorDe([&] { autonomo::Traslada(*de, *a); }).Numero(), 0) << sql;
      EXPECT_TRUE(autonomo::EsNueva(*a));
    }
    std::filesystem::remove(archivo);
  }
}

}  // namespace
