#include "guion/catalogo.h"

#include "host/standalone/altas.h"
#include "host/standalone/parametros.h"
#include "host/standalone/transaccion.h"
#include "platform/com/error.h"
#include "platform/regional/regional.h"

namespace guion {

namespace alta = autonomo::alta;
namespace parametro = anfitrion::parametro;

namespace {

constexpr const char* kMonedaNueva = "MXN";

constexpr autonomo::Alta kProducto{
    "INSERT INTO Producto (Pr_Cve_Producto, Pr_Descripcion, Pr_Unidad_Venta) VALUES (?, ?, 'NOCHE')",
    "SELECT Pr_Cve_Producto FROM Producto WHERE Pr_Cve_Producto = ?"};
constexpr autonomo::Alta kCliente{
    "INSERT INTO Cliente (Cl_Cve_Cliente, Cl_Razon_Social_1, Es_Cve_Estado) VALUES (?, ?, 'AC')",
    "SELECT Cl_Cve_Cliente FROM Cliente WHERE Cl_Cve_Cliente = ?"};

class Catalogo {
 public:
  explicit Catalogo(autonomo::Anfitrion& anfitrion) : anfitrion_(anfitrion), base_(*anfitrion.conexion()) {}

  void Habitacion(const HabitacionCsv& h) {
    const std::string producto = "H-" + h.tipo;
    Si(kProducto, {producto, "Noche " + h.tipoDescripcion});
    Si(alta::kPrecio, {producto, h.precioNoche});
    Si(alta::kTipo, {h.tipo, h.tipoDescripcion, h.personas, h.personasMax, producto});
    Si(alta::kGrupo, {h.grupo, h.grupo});
    Si(alta::kArea, {h.area, h.area});
    const ado::RecordsetPtr existente =
        base_.Consulta("SELECT Th_Cve_Tipo_Habitacion FROM Habitacion WHERE Hb_Cve_Habitacion = ?", {h.habitacion});
    if (existente->Eof()) {
      DaDeAlta(base_, alta::kHabitacion, {h.habitacion, h.descripcion, h.tipo, h.grupo, h.area});
    } else if (!com::IgualSinCaja(com::Recorta(com::CStr(existente->Fields(0).Value())), h.tipo)) {
      throw com::Error(com::error::kArgumento, "La habitación " + h.habitacion + " ya existe en la base con otro tipo");
    }
  }

  void Personas() {
    Si(kCliente, {kHuespedImportado, "Huésped de reservas importadas"});
    Si(alta::kFormaPago, {kFormaPagoImportada, "Importada", "01"});
  }

  void Moneda() {
    Parametro(parametro::kMonedaLocal.clave, kMonedaNueva);
    const std::string local = autonomo::ParametroGuardado(base_, parametro::kMonedaLocal.clave).value_or(kMonedaNueva);
    Si(alta::kMoneda, {local, "Moneda local"});
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
  void Si(const autonomo::Alta& alta, const autonomo::Conexion::Parametros& valores) {
    DaDeAltaSiFalta(base_, alta, valores);
  }

  autonomo::Anfitrion& anfitrion_;
  autonomo::Conexion& base_;
};

}  // namespace

void PreparaHotel(autonomo::Anfitrion& anfitrion, const std::vector<HabitacionCsv>& habitaciones) {
  autonomo::Transaccion transaccion(*anfitrion.conexion());
  Catalogo catalogo(anfitrion);
  for (const HabitacionCsv& h : habitaciones) catalogo.Habitacion(h);
  catalogo.Personas();
  catalogo.Moneda();
  catalogo.Parametro(parametro::kSobreventa.clave, "0");
  for (const char* formato : {parametro::kFormatoCliente.clave, parametro::kFormatoFormaPago.clave,
                              parametro::kFormatoHabitacion.clave, parametro::kFormatoTipo.clave}) {
    catalogo.Parametro(formato, "");
  }
  for (const HabitacionCsv& h : habitaciones) catalogo.ExigeTipoTecleable(h.tipo);
  anfitrion.Permiso(anfitrion::permiso::kPrecio, true);
  transaccion.Concluye();
}

}  // namespace guion
