#include "guion/vigilados.h"

#include <algorithm>
#include <array>

#include "host/standalone/fabricas.h"
#include "platform/com/error.h"

namespace guion {

namespace {

// Every operation of the contract, as faults name it.
constexpr std::array<std::string_view, 33> kOperaciones = {
    "Sistema.ObtenConexion",
    "Sistema.UsuarioActual",
    "Sistema.ForzarMayusculas",
    "Sistema.LeeParametro",
    "Sistema.TienePermiso",
    "Sistema.Mensaje",
    "Utilerias.FechaServidor",
    "Utilerias.FechaSQL",
    "Utilerias.FechaHoraSQL",
    "Utilerias.BuscaValor",
    "Utilerias.BuscaEnCatalogo",
    "Utilerias.FormateaFolio",
    "Utilerias.TipoCambio",
    "Utilerias.LimpiaGrupo",
    "Utilerias.HabilitaGrupo",
    "Utilerias.EditaNotas",
    "Utilerias.RegistraBitacora",
    "Utilerias.EnviaCorreo",
    "Utilerias.ErrorCorreo",
    "Utilerias.EnviaTeclas",
    "Utilerias.ResuelveTransaccion",
    "Hotel.PrecioHabitacion",
    "Hotel.CalculaImpuestos",
    "Hotel.Encabezado",
    "Hotel.Detalle",
    "Hotel.GuardaReservacion",
    "Hotel.GuardaDetalle",
    "Hotel.ErrorHotel",
    "Hotel.MuestraPrecios",
    "Hotel.MuestraCliente",
    "CalculoImpuesto.TasaImpuesto",
    "Impresion.ImprimeFormato",
    "VisorRegistro.MuestraRegistro",
};

std::optional<std::string> Toma(std::vector<std::pair<std::string, std::string>>& fallas, std::string_view operacion) {
  const auto falla = std::ranges::find_if(fallas, [&](const auto& f) { return f.first == operacion; });
  if (falla == fallas.end()) return std::nullopt;
  std::string texto = std::move(falla->second);
  fallas.erase(falla);
  return texto;
}

// Runs an operation of the host: the ordered fault first, and the record in every case. objeto: which of the objects of
// its class runs it, 0 when there is but one.
template <class Operacion>
auto Pasa(Vigilancia& vigilancia, const char* nombre, Json::Lista argumentos, Operacion&& operacion, int objeto = 0) {
  try {
    vigilancia.Revisa(nombre);
    if constexpr (std::is_void_v<decltype(operacion())>) {
      operacion();
      vigilancia.Anota(nombre, objeto, std::move(argumentos), Json());
    } else {
      auto resultado = operacion();
      vigilancia.Anota(nombre, objeto, std::move(argumentos), Json(resultado));
      return resultado;
    }
  } catch (const std::exception& e) {
    vigilancia.Anota(nombre, objeto, std::move(argumentos), std::nullopt, e.what());
    throw;
  }
}

Json DiaDe(double diasCom) { return com::DeDiasCom(diasCom); }

Json JsonDe(const anfitrion::DatosReservacion& d) {
  return Json::Objeto()
      .Pon("folio", d.folio.Texto())
      .Pon("fecha", DiaDe(d.fecha))
      .Pon("llegada", DiaDe(d.llegada))
      .Pon("salida", DiaDe(d.salida))
      .Pon("moneda", d.moneda.Texto())
      .Pon("tipoCambio", double{d.tipoCambio})
      .Pon("sucursal", d.sucursal.Texto())
      .Pon("huesped", d.huesped.Texto())
      .Pon("cliente", d.cliente.Texto())
      .Pon("referencia", d.referencia.Texto())
      .Pon("comentario", d.comentario.Texto())
      .Pon("formaPago", d.formaPago.Texto())
      .Pon("notas", d.notas.Texto());
}

// What the screen fills; the store derives the rest.
Json JsonDe(const anfitrion::DatosDetalle& d) {
  return Json::Objeto()
      .Pon("folio", d.folio.Texto())
      .Pon("habitacion", d.habitacion.Texto())
      .Pon("inicio", DiaDe(d.inicio))
      .Pon("fin", DiaDe(d.fin))
      .Pon("adultos", int{d.adultos})
      .Pon("menores", int{d.menores})
      .Pon("infantes", int{d.infantes})
      .Pon("personasExtra", double{d.personasExtra})
      .Pon("precio", double{d.precio})
      .Pon("precioPersonasExtra", double{d.precioPersonasExtra})
      .Pon("descuentoFactor", double{d.descuentoFactor})
      .Pon("total", double{d.total});
}

// The component fetches the connection anew for each statement and each step of a transaction: one that was used does
// not serve again.
class ConexionVigilada : public ado::Connection {
 public:
  ConexionVigilada(Vigilancia& vigilancia, ado::ConnectionPtr interior)
      : vigilancia_(vigilancia), interior_(std::move(interior)) {}

  ado::RecordsetPtr Execute(const ado::TextoSQL& sentencia) override {
    Usa();
    vigilancia_.AnotaSentencia(sentencia.Texto());
    vigilancia_.RevisaSentencia(sentencia.Texto());
    return interior_->Execute(sentencia);
  }

  void BeginTrans() override {
    Usa();
    vigilancia_.AnotaSentencia("BeginTrans");
    if (vigilancia_.TomaFalla(PasoTransaccion::Begin)) Falla();
    interior_->BeginTrans();
  }

  // A commit that fails has stored nothing.
  void CommitTrans() override {
    Usa();
    vigilancia_.AnotaSentencia("CommitTrans");
    if (vigilancia_.TomaFalla(PasoTransaccion::Commit)) Falla();
    interior_->CommitTrans();
  }

  // A roll-back that fails is one whose answer was lost: a server that loses its client rolls back by itself.
  void RollbackTrans() override {
    Usa();
    vigilancia_.AnotaSentencia("RollbackTrans");
    const bool falla = vigilancia_.TomaFalla(PasoTransaccion::Rollback);
    interior_->RollbackTrans();
    if (falla) Falla();
  }

  bool LeeConjuntos() const override { return interior_->LeeConjuntos(); }

 private:
  [[noreturn]] static void Falla() { throw com::Error(com::error::kInyectada, kFallaInyectada); }

  void Usa() {
    if (usada_) {
      throw com::Error(com::error::kSinObjeto, "La conexión ya se usó; se pide una para cada sentencia");
    }
    usada_ = true;
  }

  Vigilancia& vigilancia_;
  ado::ConnectionPtr interior_;
  bool usada_ = false;
};

// The connection and the messages are recorded elsewhere; here they can only fail.
class SistemaVigilado : public com::Objeto<anfitrion::Sistema> {
 public:
  SistemaVigilado(Vigilancia& v, com::Ptr<anfitrion::Sistema> s) : v_(v), s_(std::move(s)) {}

  ado::ConnectionPtr ObtenConexion() override {
    v_.Revisa("Sistema.ObtenConexion");
    return std::make_shared<ConexionVigilada>(v_, s_->ObtenConexion());
  }
  std::string UsuarioActual() override {
    return Pasa(v_, "Sistema.UsuarioActual", {}, [&] { return s_->UsuarioActual(); });
  }
  void ForzarMayusculas(bool fuerza) override {
    Pasa(v_, "Sistema.ForzarMayusculas", {fuerza}, [&] { s_->ForzarMayusculas(fuerza); });
  }
  com::Variant LeeParametro(const std::string& clave, int ambito, const std::string& tipo,
                            const std::string& defecto) override {
    return Pasa(v_, "Sistema.LeeParametro", {clave, ambito, tipo, defecto},
                [&] { return s_->LeeParametro(clave, ambito, tipo, defecto); });
  }
  bool TienePermiso(const std::string& pantalla, const std::string& opcion, const std::string& texto) override {
    return Pasa(v_, "Sistema.TienePermiso", {pantalla, opcion, texto},
                [&] { return s_->TienePermiso(pantalla, opcion, texto); });
  }
  int Mensaje(const com::Variant& texto, int estilo, const com::Variant& titulo, const com::Variant& ventana,
              const com::Variant& pantalla, const com::Variant& id) override {
    v_.Revisa("Sistema.Mensaje");
    return s_->Mensaje(texto, estilo, titulo, ventana, pantalla, id);
  }

 private:
  Vigilancia& v_;
  com::Ptr<anfitrion::Sistema> s_;
};

class UtileriasVigilado : public com::Objeto<anfitrion::Utilerias> {
 public:
  UtileriasVigilado(Vigilancia& v, com::Ptr<anfitrion::Utilerias> u) : v_(v), u_(std::move(u)) {}

  com::Fecha FechaServidor() override {
    return Pasa(v_, "Utilerias.FechaServidor", {}, [&] { return u_->FechaServidor(); });
  }
  std::string FechaSQL(com::Fecha fecha) override {
    return Pasa(v_, "Utilerias.FechaSQL", {fecha}, [&] { return u_->FechaSQL(fecha); });
  }
  std::string FechaHoraSQL(com::Fecha fecha) override {
    return Pasa(v_, "Utilerias.FechaHoraSQL", {fecha}, [&] { return u_->FechaHoraSQL(fecha); });
  }
  com::Variant BuscaValor(const std::string& tabla, const std::string& campoClave, const std::string& clave,
                          const std::string& campo, const std::string& e1, const std::string& e2, const std::string& e3,
                          const std::string& e4) override {
    return Pasa(v_, "Utilerias.BuscaValor", {tabla, campoClave, clave, campo, e1, e2, e3, e4},
                [&] { return u_->BuscaValor(tabla, campoClave, clave, campo, e1, e2, e3, e4); });
  }
  com::Variant BuscaEnCatalogo(const std::string& catalogo, int tamanio, const std::string& filtro,
                               const com::Variant& fuente) override {
    return Pasa(v_, "Utilerias.BuscaEnCatalogo", {catalogo, tamanio, filtro, fuente},
                [&] { return u_->BuscaEnCatalogo(catalogo, tamanio, filtro, fuente); });
  }
  std::string FormateaFolio(const std::string& folio) override {
    return Pasa(v_, "Utilerias.FormateaFolio", {folio}, [&] { return u_->FormateaFolio(folio); });
  }
  double TipoCambio(const std::string& moneda, com::Fecha fecha) override {
    return Pasa(v_, "Utilerias.TipoCambio", {moneda, fecha}, [&] { return u_->TipoCambio(moneda, fecha); });
  }
  void LimpiaGrupo(controles::Formulario& formulario, int grupo) override {
    Pasa(v_, "Utilerias.LimpiaGrupo", {formulario.nombre(), grupo}, [&] { u_->LimpiaGrupo(formulario, grupo); });
  }
  void HabilitaGrupo(controles::Formulario& formulario, int grupo) override {
    Pasa(v_, "Utilerias.HabilitaGrupo", {formulario.nombre(), grupo}, [&] { u_->HabilitaGrupo(formulario, grupo); });
  }
  std::string EditaNotas(const std::string& titulo, const std::string& texto, int ancho) override {
    return Pasa(v_, "Utilerias.EditaNotas", {titulo, texto, ancho},
                [&] { return u_->EditaNotas(titulo, texto, ancho); });
  }
  void RegistraBitacora(const std::string& modulo, const std::string& clave, const std::string& texto) override {
    Pasa(v_, "Utilerias.RegistraBitacora", {modulo, clave, texto}, [&] { u_->RegistraBitacora(modulo, clave, texto); });
  }
  bool EnviaCorreo(const std::string& modulo, const std::string& clave, const std::string& plantilla,
                   const std::string& consulta, int cero, const std::string& e1, const std::string& e2) override {
    return Pasa(v_, "Utilerias.EnviaCorreo", {modulo, clave, plantilla, consulta, cero, e1, e2},
                [&] { return u_->EnviaCorreo(modulo, clave, plantilla, consulta, cero, e1, e2); });
  }
  std::string ErrorCorreo() override {
    return Pasa(v_, "Utilerias.ErrorCorreo", {}, [&] { return u_->ErrorCorreo(); });
  }
  void EnviaTeclas(const std::string& teclas) override {
    Pasa(v_, "Utilerias.EnviaTeclas", {teclas}, [&] { u_->EnviaTeclas(teclas); });
  }
  std::string ResuelveTransaccion(const std::string& transaccion, const std::string& producto) override {
    return Pasa(v_, "Utilerias.ResuelveTransaccion", {transaccion, producto},
                [&] { return u_->ResuelveTransaccion(transaccion, producto); });
  }

 private:
  Vigilancia& v_;
  com::Ptr<anfitrion::Utilerias> u_;
};

class HotelVigilado : public com::Objeto<anfitrion::Hotel> {
  template <class Operacion>
  auto Pasa(const char* nombre, Json::Lista argumentos, Operacion&& operacion) {
    return guion::Pasa(v_, nombre, std::move(argumentos), std::forward<Operacion>(operacion), numero_);
  }

 public:
  HotelVigilado(Vigilancia& v, com::Ptr<anfitrion::Hotel> h) : v_(v), h_(std::move(h)), numero_(v_.NumeraHotel()) {}

  // Result: the three amounts that come back.
  double PrecioHabitacion(const std::string& habitacion, com::Fecha inicio, com::Fecha fin, int adultos, int menores,
                          int infantes, double& precioExtra, int& personasExtra, const std::string& moneda,
                          com::Fecha captura, double tipoCambio) override {
    double precio = 0;
    Pasa("Hotel.PrecioHabitacion", {habitacion, inicio, fin, adultos, menores, infantes, moneda, captura, tipoCambio},
         [&] {
           precio = h_->PrecioHabitacion(habitacion, inicio, fin, adultos, menores, infantes, precioExtra,
                                         personasExtra, moneda, captura, tipoCambio);
           error_ = v_.TomaFallaTienda("PrecioHabitacion");
           return Json::Objeto()
               .Pon("precio", precio)
               .Pon("precioExtra", precioExtra)
               .Pon("personasExtra", personasExtra);
         });
    return precio;
  }

  // Arguments as they went in, result as they came out.
  void CalculaImpuestos(double& precioLista, double& precioListaImporte, double& descuentoFactor,
                        double& descuentoImporte, double& precioDescontado, double& precioDescontadoImporte,
                        double& globalFactor, double& globalImporte, double& impuestoFactor, double& impuestoImporte,
                        double& precioNeto, double& total) override {
    const auto doce = [&] {
      return Json::Lista{precioLista,      precioListaImporte,      descuentoFactor, descuentoImporte,
                         precioDescontado, precioDescontadoImporte, globalFactor,    globalImporte,
                         impuestoFactor,   impuestoImporte,         precioNeto,      total};
    };
    Pasa("Hotel.CalculaImpuestos", doce(), [&] {
      h_->CalculaImpuestos(precioLista, precioListaImporte, descuentoFactor, descuentoImporte, precioDescontado,
                           precioDescontadoImporte, globalFactor, globalImporte, impuestoFactor, impuestoImporte,
                           precioNeto, total);
      return Json::Arreglo(doce());
    });
  }

  void Encabezado(const anfitrion::DatosReservacion& datos) override {
    Pasa("Hotel.Encabezado", {JsonDe(datos)}, [&] { h_->Encabezado(datos); });
  }
  anfitrion::DatosReservacion Encabezado() override {
    anfitrion::DatosReservacion datos;
    Pasa("Hotel.Encabezado", {}, [&] {
      datos = h_->Encabezado();
      return JsonDe(datos);
    });
    return datos;
  }
  void Detalle(const anfitrion::DatosDetalle& datos) override {
    Pasa("Hotel.Detalle", {JsonDe(datos)}, [&] { h_->Detalle(datos); });
  }
  bool GuardaReservacion() override {
    return Pasa("Hotel.GuardaReservacion", {},
                [&] { return !Rechaza("GuardaReservacion") && h_->GuardaReservacion(); });
  }
  bool GuardaDetalle(bool puedeCambiarPrecio) override {
    return Pasa("Hotel.GuardaDetalle", {puedeCambiarPrecio},
                [&] { return !Rechaza("GuardaDetalle") && h_->GuardaDetalle(puedeCambiarPrecio); });
  }
  std::string ErrorHotel() override {
    return Pasa("Hotel.ErrorHotel", {}, [&] { return error_ ? *error_ : h_->ErrorHotel(); });
  }
  void MuestraPrecios(com::Fecha fecha) override {
    Pasa("Hotel.MuestraPrecios", {fecha}, [&] { h_->MuestraPrecios(fecha); });
  }
  void MuestraCliente(const std::string& clave, int tipo, const std::string& folio) override {
    Pasa("Hotel.MuestraCliente", {clave, tipo, folio}, [&] { h_->MuestraCliente(clave, tipo, folio); });
  }

 private:
  // The ordered text stands for the store's own until the next operation of the store.
  bool Rechaza(std::string_view operacion) {
    error_ = v_.TomaFallaTienda(operacion);
    return error_.has_value();
  }

  Vigilancia& v_;
  com::Ptr<anfitrion::Hotel> h_;
  int numero_;
  std::optional<std::string> error_;
};

class CalculoImpuestoVigilado : public com::Objeto<anfitrion::CalculoImpuesto> {
 public:
  CalculoImpuestoVigilado(Vigilancia& v, com::Ptr<anfitrion::CalculoImpuesto> c) : v_(v), c_(std::move(c)) {}
  double TasaImpuesto(const std::string& sucursal, const std::string& cliente, const std::string& producto) override {
    return Pasa(v_, "CalculoImpuesto.TasaImpuesto", {sucursal, cliente, producto},
                [&] { return c_->TasaImpuesto(sucursal, cliente, producto); });
  }

 private:
  Vigilancia& v_;
  com::Ptr<anfitrion::CalculoImpuesto> c_;
};

class ImpresionVigilada : public com::Objeto<anfitrion::Impresion> {
 public:
  ImpresionVigilada(Vigilancia& v, com::Ptr<anfitrion::Impresion> i) : v_(v), i_(std::move(i)) {}
  void ImprimeFormato(const std::string& formato, const std::string& clave, const std::string& e1, int c1, int c2,
                      const std::string& e2) override {
    Pasa(v_, "Impresion.ImprimeFormato", {formato, clave, e1, c1, c2, e2},
         [&] { i_->ImprimeFormato(formato, clave, e1, c1, c2, e2); });
  }

 private:
  Vigilancia& v_;
  com::Ptr<anfitrion::Impresion> i_;
};

class VisorVigilado : public com::Objeto<anfitrion::VisorRegistro> {
 public:
  VisorVigilado(Vigilancia& v, com::Ptr<anfitrion::VisorRegistro> r) : v_(v), r_(std::move(r)) {}
  void MuestraRegistro(const std::string& tabla, const std::string& columna, const std::string& clave,
                       const std::string& e1, const std::string& e2, const std::string& e3,
                       const std::string& e4) override {
    Pasa(v_, "VisorRegistro.MuestraRegistro", {tabla, columna, clave, e1, e2, e3, e4},
         [&] { r_->MuestraRegistro(tabla, columna, clave, e1, e2, e3, e4); });
  }

 private:
  Vigilancia& v_;
  com::Ptr<anfitrion::VisorRegistro> r_;
};

// Registers a class whose instances wrap what the host creates.
template <class Vigilado, class Crea>
com::Inscripcion Envuelve(const com::Guid& clase, Vigilancia& vigilancia, autonomo::Anfitrion& host, Crea crea) {
  return com::RegistraClase(clase, [&vigilancia, &host, crea] {
    return com::Ptr<com::Desconocido>(com::Crea<Vigilado>(vigilancia, crea(host)));
  });
}

}  // namespace

Vigilancia::Vigilancia(autonomo::Anfitrion& host) {
  using namespace anfitrion;
  clases_[0] = Envuelve<SistemaVigilado>(kClaseSistema, *this, host, autonomo::CreaSistema);
  clases_[1] = Envuelve<UtileriasVigilado>(kClaseUtilerias, *this, host, autonomo::CreaUtilerias);
  clases_[2] = Envuelve<HotelVigilado>(kClaseHotel, *this, host, autonomo::CreaHotel);
  clases_[3] = Envuelve<CalculoImpuestoVigilado>(kClaseCalculoImpuesto, *this, host, autonomo::CreaCalculoImpuesto);
  clases_[4] = Envuelve<ImpresionVigilada>(kClaseImpresion, *this, host, autonomo::CreaImpresion);
  clases_[5] = Envuelve<VisorVigilado>(kClaseVisorRegistro, *this, host, autonomo::CreaVisorRegistro);
}

void Vigilancia::FallaSentencia(std::string texto, int n) {
  if (texto.empty()) throw com::Error(com::error::kArgumento, "Falta el texto de la sentencia que ha de fallar");
  if (n < 1) throw com::Error(com::error::kArgumento, "La primera sentencia que contiene el texto es la 1");
  fallasSentencia_.push_back({std::move(texto), n});
}

void Vigilancia::FallaOperacion(const std::string& operacion, std::string texto) {
  if (std::ranges::find(kOperaciones, operacion) == kOperaciones.end()) {
    throw com::Error(com::error::kArgumento, "El anfitrión no tiene la operación «" + operacion + "»");
  }
  fallasOperacion_.emplace_back(operacion, std::move(texto));
}

void Vigilancia::FallaTienda(const std::string& operacion, std::string texto) {
  if (operacion != "GuardaReservacion" && operacion != "GuardaDetalle" && operacion != "PrecioHabitacion") {
    throw com::Error(com::error::kArgumento,
                     "La tienda sólo puede fallar en GuardaReservacion, GuardaDetalle y PrecioHabitacion");
  }
  fallasTienda_.emplace_back(operacion, std::move(texto));
}

void Vigilancia::Anota(std::string_view operacion, int objeto, Json::Lista argumentos, std::optional<Json> resultado,
                       const std::string& error) {
  Json llamada = Json::Objeto().Pon("operacion", operacion).Pon("argumentos", Json::Arreglo(std::move(argumentos)));
  if (objeto > 0) llamada.Pon("objeto", objeto);
  if (resultado) {
    llamada.Pon("resultado", *std::move(resultado));
  } else {
    llamada.Pon("error", error);
  }
  llamadas_.push_back(std::move(llamada));
}

void Vigilancia::Revisa(std::string_view operacion) {
  if (fallasOperacion_.empty()) return;
  if (const auto texto = Toma(fallasOperacion_, operacion)) throw com::Error(com::error::kInyectada, *texto);
}

std::optional<std::string> Vigilancia::TomaFallaTienda(std::string_view operacion) {
  return Toma(fallasTienda_, operacion);
}

void Vigilancia::RevisaSentencia(std::string_view texto) {
  bool falla = false;
  for (FallaDeSentencia& f : fallasSentencia_) {
    if (texto.find(f.texto) != std::string_view::npos && --f.faltan == 0) falla = true;
  }
  std::erase_if(fallasSentencia_, [](const FallaDeSentencia& f) { return f.faltan <= 0; });
  if (falla) throw com::Error(com::error::kInyectada, kFallaInyectada, std::string(texto));
}

bool Vigilancia::TomaFalla(PasoTransaccion paso) {
  const auto falla = std::ranges::find(pasos_, paso);
  if (falla == pasos_.end()) return false;
  pasos_.erase(falla);
  return true;
}

}  // namespace guion
