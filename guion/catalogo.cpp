#include "guion/catalogo.h"

#include "host/standalone/parametros.h"
#include "host/standalone/transaccion.h"
#include "platform/com/error.h"
#include "platform/regional/regional.h"

namespace guion {

namespace parametro = anfitrion::parametro;

namespace {

constexpr const char* kMonedaNueva = "MXN";

class Alta {
 public:
  explicit Alta(autonomo::Anfitrion& anfitrion) : anfitrion_(anfitrion), base_(*anfitrion.conexion()) {}

  void Habitacion(const HabitacionCsv& h) {
    const std::string producto = "H-" + h.tipo;
    Si("SELECT Pr_Cve_Producto FROM Producto WHERE Pr_Cve_Producto = ?", producto,
       "INSERT INTO Producto (Pr_Cve_Producto, Pr_Descripcion, Pr_Unidad_Venta) VALUES (?, ?, 'NOCHE')",
       {producto, "Noche " + h.tipoDescripcion});
    Si("SELECT Pr_Cve_Producto FROM Producto_Precio WHERE Pr_Cve_Producto = ?", producto,
       "INSERT INTO Producto_Precio (Pr_Cve_Producto, Pp_Precio_1) VALUES (?, ?)", {producto, h.precioNoche});
    Si("SELECT Th_Cve_Tipo_Habitacion FROM Tipo_Habitacion WHERE Th_Cve_Tipo_Habitacion = ?", h.tipo,
       "INSERT INTO Tipo_Habitacion (Th_Cve_Tipo_Habitacion, Th_Descripcion, Th_Num_Personas, Th_Num_Personas_Maximo, "
       "Pr_Cve_Producto, Es_Cve_Estado) VALUES (?, ?, ?, ?, ?, 'AC')",
       {h.tipo, h.tipoDescripcion, h.personas, h.personasMax, producto});
    Si("SELECT Ghb_Cve_Grupo_Habitacion FROM Grupo_Habitacion WHERE Ghb_Cve_Grupo_Habitacion = ?", h.grupo,
       "INSERT INTO Grupo_Habitacion (Ghb_Cve_Grupo_Habitacion, Ghb_Descripcion, Es_Cve_Estado) VALUES (?, ?, 'AC')",
       {h.grupo, h.grupo});
    Si("SELECT Ah_Cve_Area_Habitacion FROM Area_Habitacion WHERE Ah_Cve_Area_Habitacion = ?", h.area,
       "INSERT INTO Area_Habitacion (Ah_Cve_Area_Habitacion, Ah_Descripcion, Es_Cve_Estado) VALUES (?, ?, 'AC')",
       {h.area, h.area});
    const ado::RecordsetPtr existente =
        base_.Consulta("SELECT Th_Cve_Tipo_Habitacion FROM Habitacion WHERE Hb_Cve_Habitacion = ?", {h.habitacion});
    if (existente->Eof()) {
      base_.Consulta(
          "INSERT INTO Habitacion (Hb_Cve_Habitacion, Hb_Descripcion, Th_Cve_Tipo_Habitacion, "
          "Ghb_Cve_Grupo_Habitacion, Ah_Cve_Area_Habitacion, Es_Cve_Estado) VALUES (?, ?, ?, ?, ?, 'AC')",
          {h.habitacion, h.descripcion, h.tipo, h.grupo, h.area});
    } else if (!com::IgualSinCaja(com::Recorta(com::CStr(existente->Fields(0).Value())), h.tipo)) {
      throw com::Error(com::error::kArgumento, "La habitación " + h.habitacion + " ya existe en la base con otro tipo");
    }
  }

  void Personas() {
    Si("SELECT Cl_Cve_Cliente FROM Cliente WHERE Cl_Cve_Cliente = ?", kHuespedImportado,
       "INSERT INTO Cliente (Cl_Cve_Cliente, Cl_Razon_Social_1, Es_Cve_Estado) VALUES (?, ?, 'AC')",
       {kHuespedImportado, "Huésped de reservas importadas"});
    Si("SELECT Fp_Cve_Forma_Pago FROM Forma_Pago WHERE Fp_Cve_Forma_Pago = ?", kFormaPagoImportada,
       "INSERT INTO Forma_Pago (Fp_Cve_Forma_Pago, Fp_Descripcion, Fp_Tipo, Es_Cve_Estado) VALUES (?, ?, '01', 'AC')",
       {kFormaPagoImportada, "Importada"});
  }

  void Moneda() {
    Parametro(parametro::kMonedaLocal.clave, kMonedaNueva);
    const std::string local = autonomo::ParametroGuardado(base_, parametro::kMonedaLocal.clave).value_or(kMonedaNueva);
    Si("SELECT Mn_Cve_Moneda FROM Moneda WHERE Mn_Cve_Moneda = ?", local,
       "INSERT INTO Moneda (Mn_Cve_Moneda, Mn_Descripcion, Es_Cve_Estado) VALUES (?, ?, 'AC')",
       {local, "Moneda local"});
  }

  // The board's filter would turn such a key into another type's.
  void ExigeTipoTecleable(const std::string& tipo) {
    const std::string mascara = autonomo::ParametroGuardado(base_, parametro::kFormatoTipo.clave).value_or("");
    const std::string tecleado = regional::ConMascara(tipo, mascara);
    if (tecleado == tipo) return;
    throw com::Error(com::error::kArgumento, "El tipo " + tipo + " se capturaría como " + tecleado +
                                                 " con el formato FTO_TIPO_HABITACION de la base (" + mascara + ")");
  }

  void Parametro(const char* clave, const char* valor) {
    if (!autonomo::ParametroGuardado(base_, clave)) anfitrion_.Parametro(clave, valor);
  }

 private:
  // Inserts a row when there is none with that key.
  void Si(const char* busca, const std::string& clave, const char* inserta,
          const autonomo::Conexion::Parametros& valores) {
    if (!autonomo::Hay(base_, busca, {clave})) base_.Consulta(inserta, valores);
  }

  autonomo::Anfitrion& anfitrion_;
  autonomo::Conexion& base_;
};

}  // namespace

void PreparaHotel(autonomo::Anfitrion& anfitrion, const std::vector<HabitacionCsv>& habitaciones) {
  autonomo::Transaccion transaccion(*anfitrion.conexion());
  Alta alta(anfitrion);
  for (const HabitacionCsv& h : habitaciones) alta.Habitacion(h);
  alta.Personas();
  alta.Moneda();
  alta.Parametro(parametro::kSobreventa.clave, "0");
  for (const char* formato : {parametro::kFormatoCliente.clave, parametro::kFormatoFormaPago.clave,
                              parametro::kFormatoHabitacion.clave, parametro::kFormatoTipo.clave}) {
    alta.Parametro(formato, "");
  }
  for (const HabitacionCsv& h : habitaciones) alta.ExigeTipoTecleable(h.tipo);
  anfitrion.Permiso(anfitrion::permiso::kPrecio, true);
  transaccion.Concluye();
}

}  // namespace guion
