#include "host/standalone/pendientes.h"

#include <algorithm>

#include "host/standalone/hotel_nuevo.h"
#include "host/standalone/parametros.h"
#include "host/standalone/respaldo.h"
#include "host/standalone/transaccion.h"
#include "host/standalone/usuarios.h"
#include "platform/ado/celda.h"
#include "platform/com/variant.h"

namespace autonomo {

namespace parametro = anfitrion::parametro;

namespace {

class Busca {
 public:
  explicit Busca(Anfitrion& anfitrion) : anfitrion_(anfitrion), base_(*anfitrion.conexion()) {}

  std::vector<Pendiente> Todos() {
    if (SinHotel(base_)) {
      Falta("sin_hotel", kEstorba, "Este hotel está por hacer: el asistente lo deja listo para reservar", kAsistente);
    }
    Habitaciones();
    Precios();
    Impuestos();
    Sucursales();
    Monedas();
    FormasDePago();
    Nombre();
    Correo();
    Copias();
    Usuarios();
    std::ranges::stable_sort(pendientes_,
                             [](const Pendiente& a, const Pendiente& b) { return a.estorba && !b.estorba; });
    return std::move(pendientes_);
  }

 private:
  static constexpr bool kEstorba = true;

  void Falta(const char* clave, bool estorba, std::string texto, const char* tabla, const char* suyo = "") {
    pendientes_.push_back({clave, estorba, std::move(texto), tabla, suyo});
  }
  bool HayFila(std::string_view sentencia, const Conexion::Parametros& parametros = {}) {
    return Hay(base_, sentencia, parametros);
  }
  std::string Valor(const anfitrion::Parametro& p) { return com::Recorta(ValorParametro(base_, p.clave)); }
  // First column of the rows, "Doble, Suite"; "" without any.
  std::string Nombres(std::string_view sentencia, const Conexion::Parametros& parametros = {}) {
    std::string nombres;
    for (const auto rs = base_.Consulta(sentencia, parametros); !rs->Eof(); rs->MoveNext()) {
      nombres += (nombres.empty() ? "" : ", ") + ado::Celda(*rs, 0);
    }
    return nombres;
  }

  void Habitaciones() {
    if (!HayFila("SELECT TOP 1 Th_Cve_Tipo_Habitacion FROM Tipo_Habitacion WHERE Es_Cve_Estado <> 'BA'")) {
      Falta("sin_tipos", kEstorba, "No hay tipos de habitación", "Tipo_Habitacion");
    }
    if (!HayFila("SELECT TOP 1 Hb_Cve_Habitacion FROM Habitacion WHERE Es_Cve_Estado <> 'BA'")) {
      Falta("sin_habitaciones", kEstorba, "No hay habitaciones", "Habitacion");
    }
    const std::string valor = ValorParametro(base_, parametro::kSobreventa.clave);
    const bool seLee = MotivoIlegible(*BuscaParametro(parametro::kSobreventa.clave), valor).empty();
    if (seLee && !com::Recorta(valor).empty() && com::CBool(valor)) {
      Falta("sobreventa", kEstorba, "Se permite la sobreventa: una noche puede venderse dos veces", kHojaParametros,
            parametro::kSobreventa.clave);
    }
  }

  // What nobody gave a price costs nothing, or cannot be priced at all.
  void Precios() {
    const std::string tipos = Nombres(
        "SELECT T.Th_Descripcion FROM Tipo_Habitacion T WHERE T.Es_Cve_Estado <> 'BA' AND NOT EXISTS (SELECT F.Tf_Id "
        "FROM Tarifa F WHERE F.Th_Cve_Tipo_Habitacion = T.Th_Cve_Tipo_Habitacion AND F.Tf_Precio > 0) AND NOT EXISTS "
        "(SELECT P.Pr_Cve_Producto FROM Producto_Precio P WHERE P.Pr_Cve_Producto = T.Pr_Cve_Producto AND "
        "P.Pp_Precio_1 > 0) ORDER BY T.Th_Cve_Tipo_Habitacion");
    if (!tipos.empty()) Falta("sin_precio", kEstorba, "Tipos sin precio: " + tipos, "Tarifa");
    // The screens read a room with its list price.
    const std::string sinLista = Nombres(
        "SELECT T.Th_Descripcion FROM Tipo_Habitacion T WHERE T.Es_Cve_Estado <> 'BA' AND NOT EXISTS (SELECT "
        "P.Pr_Cve_Producto FROM Producto_Precio P WHERE P.Pr_Cve_Producto = T.Pr_Cve_Producto) ORDER BY "
        "T.Th_Cve_Tipo_Habitacion");
    if (!sinLista.empty()) {
      Falta("sin_precio_de_lista", kEstorba, "Tipos sin precio de lista, que el tablero no muestra: " + sinLista,
            "Producto_Precio");
    }
  }

  // A tax of 0 is one that somebody thought of.
  void Impuestos() {
    const std::string tipos = Nombres(
        "SELECT T.Th_Descripcion FROM Tipo_Habitacion T WHERE T.Es_Cve_Estado <> 'BA' AND NOT EXISTS (SELECT "
        "I.Pr_Cve_Producto FROM Impuesto I WHERE I.Pr_Cve_Producto = T.Pr_Cve_Producto) ORDER BY "
        "T.Th_Cve_Tipo_Habitacion");
    if (!tipos.empty()) Falta("sin_impuesto", false, "Tipos que se venden sin impuesto: " + tipos, "Impuesto");
  }

  void Sucursales() {
    const std::string propuesta = Valor(parametro::kSucursal);
    const auto rs = base_.Consulta(
        "SELECT Sc_Descripcion FROM Sucursal WHERE Sc_Cve_Sucursal = ? AND Es_Cve_Estado <> 'BA'", {propuesta});
    if (rs->Eof()) {
      Falta("sin_sucursal", false, "No existe la sucursal " + propuesta + ", que propone una reservación nueva",
            "Sucursal");
    } else if (com::Recorta(ado::Celda(*rs, 0)).empty()) {
      Falta("sucursal_sin_nombre", false, "La sucursal " + propuesta + " no tiene nombre", "Sucursal");
    }
  }

  void Monedas() {
    const std::string local = Valor(parametro::kMonedaLocal);
    if (local.empty()) {
      Falta("sin_moneda", kEstorba, "No se ha dicho cuál es la moneda local", kHojaParametros,
            parametro::kMonedaLocal.clave);
    } else if (!HayFila("SELECT Mn_Cve_Moneda FROM Moneda WHERE Mn_Cve_Moneda = ? AND Es_Cve_Estado <> 'BA'",
                        {local})) {
      Falta("sin_moneda", kEstorba, "La moneda local, " + local + ", no está en el catálogo de monedas", "Moneda");
    }
    const std::string otras = Nombres(
        "SELECT M.Mn_Cve_Moneda FROM Moneda M WHERE M.Es_Cve_Estado <> 'BA' AND M.Mn_Cve_Moneda <> ? AND NOT EXISTS "
        "(SELECT C.Mn_Cve_Moneda FROM Tipo_Cambio C WHERE C.Mn_Cve_Moneda = M.Mn_Cve_Moneda) ORDER BY M.Mn_Cve_Moneda",
        {local});
    if (!otras.empty()) Falta("sin_tipo_de_cambio", false, "Monedas sin tipo de cambio: " + otras, "Tipo_Cambio");
  }

  void FormasDePago() {
    if (HayFila("SELECT TOP 1 Fp_Cve_Forma_Pago FROM Forma_Pago WHERE Es_Cve_Estado <> 'BA'")) return;
    Falta("sin_forma_de_pago", kEstorba, "No hay formas de pago", "Forma_Pago");
  }

  void Nombre() {
    const auto nombre = ParametroGuardado(base_, parametro::kNombreHotel.clave);
    if (nombre && !com::Recorta(*nombre).empty()) return;
    Falta("sin_nombre", false,
          "El hotel no tiene nombre: las confirmaciones dicen «" + std::string(parametro::kNombreHotel.defecto) + "»",
          kHojaParametros, parametro::kNombreHotel.clave);
  }

  void Correo() {
    if (Valor(parametro::kCorreoServidor).empty()) {
      return Falta("sin_correo", false, "No hay servidor de correo: las confirmaciones no salen", kHojaParametros,
                   parametro::kCorreoServidor.clave);
    }
    if (Valor(parametro::kCorreoRemitente).empty()) {
      Falta("sin_remitente", false, "Falta la dirección de la que salen los correos", kHojaParametros,
            parametro::kCorreoRemitente.clave);
    }
  }

  // A server's copies are the server's.
  void Copias() {
    const std::string& ruta = anfitrion_.base();
    if (base_.Motor() != esquema::Motor::Sqlite || ruta == kEnMemoria) return;
    if (Valor(parametro::kRespaldoDias) == "0") {
      return Falta("sin_copias", false, "La copia de respaldo diaria está apagada", kHojaParametros,
                   parametro::kRespaldoDias.clave);
    }
    if (autonomo::Copias(ruta).empty()) {
      Falta("sin_copias", false,
            "Todavía no hay ninguna copia de respaldo; el programa hace una al día mientras está "
            "abierto",
            "");
    }
  }

  void Usuarios() {
    if (!PideContrasena(base_)) {
      return Falta("sin_contrasenas", false, "Nadie tiene contraseña: cualquiera entra y puede configurar",
                   kHojaUsuarios);
    }
    const std::string sin = Nombres(
        "SELECT Us_Cve_Usuario FROM Usuario WHERE Us_Contrasena = '' AND Es_Cve_Estado <> 'BA' ORDER BY "
        "Us_Cve_Usuario");
    if (!sin.empty()) Falta("usuario_sin_contrasena", false, "No pueden entrar, sin contraseña: " + sin, kHojaUsuarios);
  }

  Anfitrion& anfitrion_;
  Conexion& base_;
  std::vector<Pendiente> pendientes_;
};

}  // namespace

std::vector<Pendiente> Pendientes(Anfitrion& anfitrion) { return Busca(anfitrion).Todos(); }

}  // namespace autonomo
