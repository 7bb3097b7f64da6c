// Writes a new hotel.
#include <algorithm>
#include <map>

#include "host/contract/estados.h"
#include "host/standalone/altas.h"
#include "host/standalone/hotel_leido.h"
#include "host/standalone/parametros.h"
#include "host/standalone/permisos.h"
#include "host/standalone/tecleado.h"
#include "host/standalone/transaccion.h"
#include "host/standalone/usuarios.h"
#include "platform/com/error.h"
#include "platform/com/variant.h"
#include "platform/regional/regional.h"
#include "schema/esquema.h"
#include "schema/textos.h"

namespace autonomo {

namespace parametro = anfitrion::parametro;

using leido::Importe;
using leido::SinTexto;
using leido::Texto;

namespace {

constexpr Alta kAltaDeSucursal{
    "INSERT INTO Sucursal (Sc_Cve_Sucursal, Sc_Descripcion, Es_Cve_Estado) VALUES (?, ?, 'AC')",
    "SELECT Sc_Cve_Sucursal FROM Sucursal WHERE Sc_Cve_Sucursal = ?"};
constexpr Alta kAltaDeFormato{
    "INSERT INTO Formato (Fm_Cve_Formato, Fm_Descripcion, Fm_Contenido) VALUES (?, 'Carta de la reservación', ?)",
    "SELECT Fm_Cve_Formato FROM Formato WHERE Fm_Cve_Formato = ?"};

class Escritura {
 public:
  Escritura(Anfitrion& anfitrion, const HotelNuevo& hotel)
      : anfitrion_(anfitrion), base_(*anfitrion.conexion()), hotel_(hotel) {}

  void Escribe() {
    impuesto_ = LeePorCiento("Impuesto", hotel_.impuesto);
    Parametros();
    Monedas();
    DaDeAltaSiFalta(base_, kAltaDeSucursal, {kSucursal, Texto(hotel_.sucursal)});
    FormasDePago();
    Textos();
    int numero = 0;
    for (const TipoNuevo& tipo : hotel_.tipos) {
      if (!SinTexto(tipo)) Tipo(tipo, ++numero);
    }
    Usuarios();
  }

 private:
  static constexpr const char* kSucursal = "0001";
  static constexpr const char* kGrupo = "0001";

  void Parametros() {
    anfitrion_.Parametro(parametro::kNombreHotel.clave, Texto(hotel_.nombre));
    anfitrion_.Parametro(parametro::kMonedaLocal.clave, com::Mayusculas(Texto(hotel_.moneda)));
    anfitrion_.Parametro(parametro::kSucursal.clave, kSucursal);
    anfitrion_.Parametro(parametro::kSobreventa.clave, "0");
    anfitrion_.Parametro(parametro::kFormatoHabitacion.clave, leido::MascaraDeHabitacion(hotel_));
    anfitrion_.Parametro(parametro::kMayusculas.clave, "0");
  }

  void Moneda(const std::string& clave, const std::string& nombre) {
    DaDeAltaSiFalta(base_, alta::kMoneda, {clave, nombre});
  }
  void Monedas() {
    Moneda(com::Mayusculas(Texto(hotel_.moneda)), Texto(hotel_.nombreMoneda));
    const std::string divisa = com::Mayusculas(Texto(hotel_.divisa));
    if (divisa.empty()) return;
    Moneda(divisa, Texto(hotel_.nombreDivisa));
    anfitrion_.Cambio(divisa, Importe("Tipo de cambio", hotel_.tipoCambio));
  }

  void FormasDePago() {
    constexpr const char* kFormas[][3] = {{"0001", "Efectivo", "01"},
                                          {"0002", "Transferencia electrónica", "03"},
                                          {"0003", "Tarjeta de crédito", anfitrion::tipo_pago::kTarjeta}};
    for (const auto& [clave, nombre, tipo] : kFormas) {
      DaDeAltaSiFalta(base_, alta::kFormaPago, {clave, nombre, tipo});
    }
  }

  void Textos() {
    const std::string formato = parametro::kFormatoImpresion.defecto;
    const auto plantilla = [&](const char* codigo, const char* asunto, const char* cuerpo) {
      if (!Hay(base_, "SELECT Pt_Cve_Plantilla FROM Plantilla WHERE Pt_Cve_Plantilla = ?", {codigo})) {
        anfitrion_.Plantilla(codigo, asunto, cuerpo, formato);
      }
    };
    plantilla(parametro::kPlantillaReservacion.defecto, esquema::kAsuntoReservacion, esquema::kCuerpoReservacion);
    plantilla(parametro::kPlantillaConfirmada.defecto, esquema::kAsuntoConfirmada, esquema::kCuerpoConfirmada);
    DaDeAltaSiFalta(base_, kAltaDeFormato, {formato, esquema::kCarta});
  }

  // A product that nobody has yet.
  std::string Producto(int numero) {
    for (;; ++numero) {
      std::string clave = "HAB" + regional::ConMascara(std::to_string(numero), "000");
      if (!Hay(base_, "SELECT Pr_Cve_Producto FROM Producto WHERE Pr_Cve_Producto = ?", {clave})) return clave;
    }
  }

  // What the guest pays, in whole cents.
  double ConImpuesto(double importe) const {
    return hotel_.conImpuesto ? importe : com::Redondea(importe * (1 + impuesto_), 2);
  }

  void Tipo(const TipoNuevo& nuevo, int numero) {
    leido::Sitio sitio;
    const leido::TipoLeido t = leido::LeeTipo(nuevo, sitio);
    const std::string clave = regional::ConMascara(std::to_string(numero), parametro::kFormatoTipo.defecto);
    const std::string producto = Producto(numero);
    base_.Consulta(
        "INSERT INTO Producto (Pr_Cve_Producto, Pr_Descripcion, Pr_Unidad_Venta, Pr_Unidad_Control_1, "
        "Pr_Unidad_Control_2, Pr_Unidad_Costo) VALUES (?, ?, 'NOCHE', 'NOCHE', 'NOCHE', 'NOCHE')",
        {producto, "Hospedaje en habitación " + t.nombre});
    anfitrion_.Impuesto("", producto, impuesto_);
    DaDeAlta(base_, alta::kTipo, {clave, t.nombre, t.incluidas, t.maximo, producto});
    // The screens read rooms through their list price: without a row of it they would not be there.
    DaDeAlta(base_, alta::kPrecio, {producto, ConImpuesto(t.precio.value_or(0))});
    if (t.precio) {
      anfitrion_.Tarifa(clave, ConImpuesto(*t.precio), ConImpuesto(t.adultoExtra), ConImpuesto(t.menorExtra));
    }
    for (const std::string& habitacion : HabitacionesDe(nuevo.habitaciones)) Habitacion(habitacion, clave);
  }

  void Habitacion(const std::string& habitacion, const std::string& tipo) {
    DaDeAltaSiFalta(base_, alta::kGrupo, {kGrupo, "General"});
    DaDeAlta(base_, alta::kHabitacion,
             {regional::ConMascara(habitacion, ValorParametro(base_, parametro::kFormatoHabitacion.clave)), habitacion,
              tipo, kGrupo, Area(PisoDe(habitacion))});
  }

  // Key of the area with that name, made when it is the first room there.
  std::string Area(const std::string& nombre) {
    const auto conocida = areas_.find(nombre);
    if (conocida != areas_.end()) return conocida->second;
    std::string clave;
    for (std::size_t numero = areas_.size() + 1; clave.empty(); ++numero) {
      clave = regional::ConMascara(std::to_string(numero), parametro::kFormatoArea.defecto);
      if (Hay(base_, alta::kArea.busca, {clave})) clave.clear();
    }
    DaDeAlta(base_, alta::kArea, {clave, nombre});
    areas_[nombre] = clave;
    return clave;
  }

  void Usuarios() {
    bool administra = true;
    for (const UsuarioNuevo& u : hotel_.usuarios) {
      if (SinTexto(u)) continue;
      std::vector<std::string> derechos;
      for (const Derecho& d : Derechos()) {
        // It takes a right away.
        if (administra && std::string_view(d.opcion) != anfitrion::permiso::kTipoCambio) {
          derechos.emplace_back(d.opcion);
        }
      }
      GuardaUsuario(base_, {Texto(u.clave), Texto(u.nombre)}, u.contrasena, derechos);
      administra = false;
    }
  }

  Anfitrion& anfitrion_;
  Conexion& base_;
  const HotelNuevo& hotel_;
  double impuesto_ = 0;
  std::map<std::string, std::string> areas_;
};

}  // namespace

bool SinHotel(Conexion& conexion) {
  constexpr std::string_view kTablas[] = {
      "SELECT TOP 1 Hb_Cve_Habitacion FROM Habitacion",
      "SELECT TOP 1 Th_Cve_Tipo_Habitacion FROM Tipo_Habitacion",
      "SELECT TOP 1 Sc_Cve_Sucursal FROM Sucursal",
      "SELECT TOP 1 Rs_Folio FROM Reservacion",
  };
  return std::ranges::none_of(kTablas, [&](std::string_view sentencia) { return Hay(conexion, sentencia, {}); });
}

void CreaHotel(Anfitrion& anfitrion, const HotelNuevo& hotel) {
  for (const ParteHotel parte : kPartesHotel) {
    if (const auto reparo = Revisa(hotel, parte)) throw com::Error(com::error::kArgumento, reparo->motivo);
  }
  Conexion& conexion = *anfitrion.conexion();
  Transaccion transaccion(conexion);
  conexion.EsperaTurno("demo");
  if (!SinHotel(conexion)) {
    throw com::Error(com::error::kRestriccion, "Esta base ya tiene un hotel: mientras tanto alguien lo hizo");
  }
  Escritura(anfitrion, hotel).Escribe();
  transaccion.Concluye();
  if (!hotel.usuarios.empty() && !SinTexto(hotel.usuarios.front())) {
    anfitrion.usuario(Texto(hotel.usuarios.front().clave));
  }
}

}  // namespace autonomo
