#include "host/standalone/anfitrion.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <iterator>
#include <utility>

#include "host/contract/parametros.h"
#include "host/standalone/cifrado.h"
#include "host/standalone/fabricas.h"
#include "host/standalone/permisos.h"
#include "host/standalone/postgres_reloj.h"
#include "host/standalone/registro.h"
#include "host/standalone/reloj_dudoso.h"
#include "host/standalone/transaccion.h"
#include "host/standalone/usuarios.h"
#include "platform/com/texto.h"
#include "platform/controls/formulario.h"
#include "platform/regional/regional.h"
#include "schema/esquema.h"

namespace autonomo {

namespace {

// The first day of a rate that holds from any date on.
constexpr com::Fecha kDesdeSiempre{2, 0};  // 01/01/1900

// The object that owns the screen.
class PadreDePantalla : public com::Objeto<com::Despacho> {
 public:
  explicit PadreDePantalla(Anfitrion& host) : host_(host) {}

  com::Variant Lee(std::string_view propiedad) override {
    if (com::IgualSinCaja(propiedad, "Transaccion")) return transaccion_;
    throw Desconocido(propiedad);
  }

  void Pone(std::string_view propiedad, const com::Variant& valor) override {
    if (!com::IgualSinCaja(propiedad, "Transaccion")) throw Desconocido(propiedad);
    transaccion_ = com::CStr(valor);
  }

  com::Variant Llama(std::string_view metodo, std::span<const com::Variant> argumentos) override {
    if (!com::IgualSinCaja(metodo, "Ejecutar")) throw Desconocido(metodo);
    if (argumentos.size() != 1) {
      throw com::Error(com::error::kArgumento, "Ejecutar recibe el código de una pantalla");
    }
    const std::string codigo = com::CStr(argumentos[0]);
    host_.AnotaPantalla({codigo, {}});
    controles::EscritorioActual().AbrePantalla(codigo, {});
    return {};
  }

 private:
  static com::Error Desconocido(std::string_view miembro) {
    return {com::error::kMiembro, "El objeto no tiene el miembro " + std::string(miembro)};
  }

  Anfitrion& host_;
  std::string transaccion_ = anfitrion::kPantalla;
};

// A hotel that nobody has set up yet.
bool EstaVacia(Conexion& conexion) {
  constexpr std::string_view kCatalogos[] = {
      "SELECT COUNT(*) AS Cantidad FROM Habitacion",  "SELECT COUNT(*) AS Cantidad FROM Tipo_Habitacion",
      "SELECT COUNT(*) AS Cantidad FROM Cliente",     "SELECT COUNT(*) AS Cantidad FROM Moneda",
      "SELECT COUNT(*) AS Cantidad FROM Forma_Pago",  "SELECT COUNT(*) AS Cantidad FROM Parametro",
      "SELECT COUNT(*) AS Cantidad FROM Reservacion",
  };
  return std::all_of(std::begin(kCatalogos), std::end(kCatalogos), [&](std::string_view sentencia) {
    return com::CLng(conexion.Consulta(sentencia)->Fields("Cantidad").Value()) == 0;
  });
}

// Looked at again inside the transaction: another program may have filled it meanwhile.
void LlenaConDemo(Conexion& conexion, com::Fecha hoy) {
  if (!EstaVacia(conexion)) return;
  Transaccion transaccion(conexion);
  conexion.EsperaTurno("demo");
  if (EstaVacia(conexion)) {
    for (const std::string& sentencia : esquema::HotelDemo(com::AIso(com::SoloFecha(hoy)))) {
      conexion.Execute(sentencia);
    }
  }
  transaccion.Concluye();
}

void ExigeNoNegativo(double valor, const char* que) {
  if (valor < 0 || !std::isfinite(valor)) {
    throw com::Error(com::error::kArgumento, std::string(que) + " debe ser 0 o mayor");
  }
}

// Codes that no stay needs are forgotten, unless the clock is in doubt, which it then knows; cards in clear are sealed.
// Who cannot do it now works on: it is done by the next program that opens the hotel. Gives the doubt.
std::string CuidaTarjetas(Conexion& conexion, Reloj& reloj) {
  const auto hay = [&](const char* sentencia) { return !conexion.Consulta(sentencia)->Eof(); };
  std::string duda;
  try {
    if (!reloj.DelServidor()) {
      reloj.Duda(true);  // until it is known
      duda = DudaDelReloj(conexion, reloj.Ahora());
    }
    reloj.Duda(!duda.empty());
    if (reloj.Fiable() &&
        (hay("SELECT TOP 1 Cl_Cve_Cliente FROM Cliente WHERE Cl_Tarjeta_Codigo_Seguridad <> ''") ||
         hay("SELECT TOP 1 Rs_Folio FROM Reservacion_Datos_Tarjeta WHERE Rdt_Codigo_Seguridad <> ''")))
      OlvidaCodigos(conexion, "", reloj);
    SellaTarjetas(conexion);
  } catch (const com::Error& e) {
    registro::AnotaFalla(e);
  }
  return duda;
}

void RevisaUsuario(const std::string& usuario) {
  const std::string motivo = MotivoUsuario(usuario);
  if (motivo.empty()) return;
  throw com::Error(com::error::kArgumento, "El usuario «" + usuario + "» no puede entrar: " + motivo);
}

void ExigeConfigurar(Conexion& conexion, const std::string& usuario) {
  if (PuedeConfigurar(conexion, usuario)) return;
  if (PideContrasena(conexion))
    throw com::Error(com::error::kSoloLectura, "El usuario " + usuario + " no puede configurar el hotel");
}

std::string TextoDe(const ado::Recordset& rs, std::size_t columna) { return com::TextoDe(rs.Fields(columna).Value()); }

}  // namespace

Anfitrion::Anfitrion(const Opciones& opciones) : usuario_(opciones.usuario), base_(opciones.base.Nombre()) {
  RevisaUsuario(usuario_);
  if (opciones.ahora) reloj_.Fija(*opciones.ahora);
  OpcionesConexion base = opciones.base;
  base.veTarjetas = [this] { return conexion_ == nullptr || PuedeVerTarjetas(*conexion_, usuario_); };
  conexion_ = AbreConexion(base, reloj_);
  if (!opciones.ahora) PoneEnHora();
  EmpiezaElDia();
  novedades_ = std::make_unique<Novedades>(*conexion_);
  if (opciones.demo) LlenaConDemo(*conexion_, reloj_.Ahora());
  if (opciones.sinSobreventa && EstaVacia(*conexion_)) Parametro(anfitrion::parametro::kSobreventa.clave, "0");
  if (!PideContrasena(*conexion_)) return;
  if (!opciones.identifica) throw com::Error(com::error::kArgumento, "Este hotel pide usuario y contraseña");
  usuario_ = opciones.identifica(*conexion_);
  conexion_->roles().Limita(AlcanceDe(*conexion_, usuario_));
}

Anfitrion::~Anfitrion() = default;

void Anfitrion::PoneEnHora() {
  reloj_ = RelojDe(*conexion_);
  if (std::abs(reloj_.Adelanto()) < com::kSegundosDia) return;
  Avisa("El reloj de este equipo dice " + regional::FechaCorta(Reloj().Ahora()) + " y el del servidor " +
        regional::FechaCorta(reloj_.Ahora()) + ": en este hotel vale el del servidor. Corrija la fecha del equipo.");
}

void Anfitrion::EmpiezaElDia() {
  dia_ = com::SoloFecha(reloj_.Ahora());
  if (const std::string duda = CuidaTarjetas(*conexion_, reloj_); !duda.empty()) Avisa(duda);
}

// This machine's clock may have been set meanwhile: a new day is the server's.
void Anfitrion::CambiaElDia() {
  if (dia_ == com::SoloFecha(reloj_.Ahora())) return;
  try {
    if (reloj_.DelServidor()) PoneEnHora();
  } catch (const com::Error& e) {
    registro::AnotaFalla(e);
  }
  EmpiezaElDia();
}

std::vector<std::string> Anfitrion::TomaAvisos() {
  std::vector<std::string> avisos = conexion_->TomaAvisos();
  {
    const std::lock_guard guarda(candado_);
    std::ranges::move(std::exchange(avisos_, {}), std::back_inserter(avisos));
  }
  std::erase_if(avisos, [this](const std::string& aviso) { return !dichos_.insert(aviso).second; });
  return avisos;
}

void Anfitrion::Avisa(const std::string& aviso) {
  const std::lock_guard guarda(candado_);
  avisos_.push_back(aviso);
}

void Anfitrion::RegistraClases() {
  const auto inscribe = [this](const com::Guid& clase, auto crea) {
    inscripciones_.push_back(
        com::RegistraClase(clase, [this, crea] { return com::Ptr<com::Desconocido>(crea(*this)); }));
  };
  inscribe(anfitrion::kClaseSistema, CreaSistema);
  inscribe(anfitrion::kClaseUtilerias, CreaUtilerias);
  inscribe(anfitrion::kClaseHotel, CreaHotel);
  inscribe(anfitrion::kClaseCalculoImpuesto, CreaCalculoImpuesto);
  inscribe(anfitrion::kClaseImpresion, CreaImpresion);
  inscribe(anfitrion::kClaseVisorRegistro, CreaVisorRegistro);
  inscribe(anfitrion::kClaseExplicaPrecios, CreaExplicaPrecios);
}

com::Ptr<com::Despacho> Anfitrion::Padre() { return com::Ptr<com::Despacho>(new PadreDePantalla(*this)); }

void Anfitrion::Parametro(const std::string& clave, const std::string& valor) {
  ExigeConfigurar(*conexion_, usuario_);
  Transaccion t(*conexion_);
  conexion_->EsperaTurno("parametros");
  conexion_->Consulta("DELETE FROM Parametro WHERE Pm_Clave = ?", {clave});
  conexion_->Consulta("INSERT INTO Parametro (Pm_Clave, Pm_Valor) VALUES (?, ?)", {clave, valor});
  t.Concluye();
}

void Anfitrion::Permiso(const std::string& opcion, bool concedido) {
  ExigeConfigurar(*conexion_, usuario_);
  CambiaDerechos(*conexion_, [&] {
    conexion_->Consulta("DELETE FROM Permiso WHERE Pe_Usuario = ? AND Pe_Pantalla = ? AND Pe_Opcion = ?",
                        {usuario_, anfitrion::kPantalla, opcion});
    if (concedido) {
      conexion_->Consulta("INSERT INTO Permiso (Pe_Usuario, Pe_Pantalla, Pe_Opcion) VALUES (?, ?, ?)",
                          {usuario_, anfitrion::kPantalla, opcion});
    }
  });
  if (!conexion_->EnTransaccion() && PideContrasena(*conexion_))
    conexion_->roles().Limita(AlcanceDe(*conexion_, usuario_));
}

void Anfitrion::Cambio(const std::string& moneda, double tasa) {
  if (!(tasa > 0) || !std::isfinite(tasa)) {
    throw com::Error(com::error::kArgumento, "El tipo de cambio debe ser mayor a 0");
  }
  ExigeConfigurar(*conexion_, usuario_);
  Transaccion t(*conexion_);
  conexion_->Consulta("DELETE FROM Tipo_Cambio WHERE Mn_Cve_Moneda = ?", {moneda});
  conexion_->Consulta("INSERT INTO Tipo_Cambio (Mn_Cve_Moneda, Tc_Fecha, Tc_Tasa) VALUES (?, ?, ?)",
                      {moneda, kDesdeSiempre, tasa});
  t.Concluye();
}

void Anfitrion::Impuesto(const std::string& sucursal, const std::string& producto, double factor) {
  ExigeNoNegativo(factor, "El factor de impuesto");
  ExigeConfigurar(*conexion_, usuario_);
  Transaccion t(*conexion_);
  conexion_->Consulta("DELETE FROM Impuesto WHERE Sc_Cve_Sucursal = ? AND Pr_Cve_Producto = ?", {sucursal, producto});
  conexion_->Consulta("INSERT INTO Impuesto (Sc_Cve_Sucursal, Pr_Cve_Producto, Im_Factor) VALUES (?, ?, ?)",
                      {sucursal, producto, factor});
  t.Concluye();
}

void Anfitrion::Tarifa(const std::string& tipo, double precio, double adultoExtra, double menorExtra) {
  ExigeNoNegativo(precio, "El precio");
  ExigeNoNegativo(adultoExtra, "El precio del adulto extra");
  ExigeNoNegativo(menorExtra, "El precio del menor extra");
  ExigeConfigurar(*conexion_, usuario_);
  Transaccion t(*conexion_);
  conexion_->Consulta(
      "DELETE FROM Tarifa WHERE Th_Cve_Tipo_Habitacion = ? AND Tf_Inicio IS NULL AND Tf_Fin IS NULL AND Tf_Dias = ''",
      {tipo});
  conexion_->Consulta(
      "INSERT INTO Tarifa (Th_Cve_Tipo_Habitacion, Tf_Inicio, Tf_Fin, Tf_Dias, Tf_Precio, Tf_Adulto_Extra, "
      "Tf_Menor_Extra) VALUES (?, NULL, NULL, '', ?, ?, ?)",
      {tipo, precio, adultoExtra, menorExtra});
  t.Concluye();
}

void Anfitrion::Plantilla(const std::string& codigo, const std::string& asunto, const std::string& cuerpo,
                          const std::string& formato) {
  ExigeConfigurar(*conexion_, usuario_);
  Transaccion t(*conexion_);
  conexion_->Consulta("DELETE FROM Plantilla WHERE Pt_Cve_Plantilla = ?", {codigo});
  conexion_->Consulta("INSERT INTO Plantilla (Pt_Cve_Plantilla, Pt_Asunto, Pt_Cuerpo, Pt_Formato) VALUES (?, ?, ?, ?)",
                      {codigo, asunto, cuerpo, formato});
  t.Concluye();
}

void Anfitrion::Direccion(const std::string& cliente, const std::string& correo) {
  if (!Hay(*conexion_, "SELECT Cl_Cve_Cliente FROM Cliente WHERE Cl_Cve_Cliente = ?", {cliente})) {
    throw com::Error(com::error::kArgumento, "El cliente " + cliente + " no existe");
  }
  conexion_->Consulta("UPDATE Cliente SET Cl_Correo = ? WHERE Cl_Cve_Cliente = ?", {correo, cliente});
}

std::vector<EntradaBitacora> Anfitrion::Bitacora() {
  std::vector<EntradaBitacora> entradas;
  const ado::RecordsetPtr rs = conexion_->Consulta("SELECT Bt_Modulo, Bt_Clave, Bt_Texto FROM Bitacora ORDER BY Bt_Id");
  for (; !rs->Eof(); rs->MoveNext()) entradas.push_back({TextoDe(*rs, 0), TextoDe(*rs, 1), TextoDe(*rs, 2)});
  return entradas;
}

std::vector<Correo> Anfitrion::Correos() {
  std::vector<Correo> correos;
  const ado::RecordsetPtr rs = conexion_->Consulta(
      "SELECT Cs_Clave, Cs_Plantilla, Cs_Consulta, Cs_Para, Cs_Asunto, Cs_Estado, Cs_Cuerpo FROM Correo_Salida "
      "ORDER BY Cs_Id");
  for (; !rs->Eof(); rs->MoveNext()) {
    correos.push_back({TextoDe(*rs, 0), TextoDe(*rs, 1), TextoDe(*rs, 2), TextoDe(*rs, 3), TextoDe(*rs, 4),
                       TextoDe(*rs, 5), TextoDe(*rs, 6)});
  }
  return correos;
}

std::vector<Impreso> Anfitrion::Impresiones() {
  std::vector<Impreso> impresos;
  const ado::RecordsetPtr rs = conexion_->Consulta("SELECT Ip_Formato, Ip_Clave, Ip_Texto FROM Impreso ORDER BY Ip_Id");
  for (; !rs->Eof(); rs->MoveNext()) impresos.push_back({TextoDe(*rs, 0), TextoDe(*rs, 1), TextoDe(*rs, 2)});
  return impresos;
}

void Anfitrion::FallaCorreo(std::string texto) { fallaCorreo_ = std::move(texto); }

}  // namespace autonomo
