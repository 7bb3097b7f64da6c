// While a question stands inside a transaction, other desks go on working.
#include <unistd.h>

#include <filesystem>

#include "tests/comun/hotel_prueba.h"

namespace {

using Accion = controles::Accion;

std::string Archivo() {
  return (std::filesystem::temp_directory_path() / ("kv207_pregunta_" + std::to_string(getpid()) + ".db")).string();
}

class Pregunta : public pruebas::HotelPrueba {
 protected:
  Pregunta() : HotelPrueba(Archivo()) {
    InsertaReservacion("0000000007", {"0101"});
    InsertaReservacion("0000000008", {"0102"});
    autonomo::OpcionesConexion opciones;
    opciones.ruta = Archivo();
    opciones.esperaMs = 0;
    otro = autonomo::AbreConexion(opciones, host.reloj());
    Carga("0000000007");
  }
  ~Pregunta() override {
    otro.reset();
    for (const char* cola : {"", "-wal", "-shm"}) std::filesystem::remove(Archivo() + cola);
  }
  // Confirms; meanwhile the other desk runs the statements in a transaction of its own.
  void Confirma(int respuesta, const std::vector<std::string>& delOtro) {
    escritorio.alAvisar = [this, delOtro](const controles::CajaMensaje& caja) {
      if (caja.id != "ERR-ID:7500052") return;
      otro->BeginTrans();
      for (const std::string& sentencia : delOtro) otro->Directa(sentencia);
      otro->CommitTrans();
      EXPECT_EQ(otro->Directa("SELECT Es_Cve_Estado FROM Reservacion WHERE Rs_Folio = '0000000007'")->Fields(0).Value(),
                com::Variant(delOtro.size() > 1 ? "CA" : "AC"));
    };
    escritorio.Responde("ERR-ID:7500052", respuesta);
    Pulsa(Accion::Confirmar);
    escritorio.alAvisar = nullptr;
  }
  std::string Estado() { return Celda("SELECT Es_Cve_Estado FROM Reservacion WHERE Rs_Folio = '0000000007'"); }

  std::shared_ptr<autonomo::Conexion> otro;
};

TEST_F(Pregunta, ElOtroGuardaDeInmediatoYLaConfirmacionSigue) {
  Confirma(controles::kCancelar, {"UPDATE Reservacion SET Rs_Notas = 'x' WHERE Rs_Folio = '0000000008'"});
  EXPECT_EQ(Estado(), "CO");
  EXPECT_EQ(Celda("SELECT Bt_Texto FROM Bitacora WHERE Bt_Clave = '0000000007'"), "CONFIRMADO");
  EXPECT_EQ(Celda("SELECT COUNT(*) FROM Bitacora"), "1");
  EXPECT_EQ(pantalla.txtFolio.text(), "");
}

TEST_F(Pregunta, LoQueElOtroCambioEntretantoNoSePisa) {
  for (const int respuesta : {controles::kCancelar, controles::kAceptar}) {
    escritorio.Olvida();
    Confirma(respuesta,
             {"UPDATE Reservacion SET Es_Cve_Estado = 'CA' WHERE Rs_Folio = '0000000007'",
              "INSERT INTO Bitacora (Bt_Modulo, Bt_Clave, Bt_Texto, Bt_Usuario, Bt_Fecha) VALUES ('RESERVACION', "
              "'0000000007', 'Baja', 'BETO', '2026-03-09 10:29:00')"});
    ASSERT_EQ(escritorio.Ids().back(), "ERR-ID:7500024");
    EXPECT_NE(escritorio.Mensajes().back().texto.find("09/03/2026 10:29:00, BETO: Baja"), std::string::npos)
        << escritorio.Mensajes().back().texto;
    EXPECT_EQ(Estado(), "CA");
    EXPECT_EQ(Celda("SELECT COUNT(*) FROM Bitacora WHERE Bt_Texto = 'CONFIRMADO'"), "0");
    EXPECT_EQ(Celda("SELECT COUNT(*) FROM Correo_Salida"), "0");
    EXPECT_FALSE(host.conexion()->EnTransaccion());
    Sql("UPDATE Reservacion SET Es_Cve_Estado = 'AC' WHERE Rs_Folio = '0000000007'");
    Carga("0000000007");
  }
}

}  // namespace
