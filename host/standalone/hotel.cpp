// Hotel services: room prices, tax breakdown and the reservation store.
#include <cmath>
#include <vector>

#include "host/contract/pantallas.h"
#include "host/standalone/anfitrion.h"
#include "host/standalone/fabricas.h"
#include "host/standalone/impuestos.h"
#include "host/standalone/parametros.h"
#include "host/standalone/precios.h"
#include "host/standalone/registro.h"
#include "host/standalone/transaccion.h"
#include "platform/regional/regional.h"

namespace autonomo {

namespace {

// Why an operation refuses; shown to the clerk.
struct Rechazo {
  std::string texto;
};

// Series of the folio counter.
constexpr const char* kSerie = "RESERVACION";

// Hands out folios inside the caller's transaction: a roll-back gives the folio back, and no other program can take it
// meanwhile.
class Foliador {
 public:
  explicit Foliador(Conexion& conexion) : conexion_(conexion), mascara_(MascaraDeFolio(conexion)) {}

  // The next folio that no reservation has.
  std::string Siguiente() {
    std::int32_t numero = Avanza();
    if (Ocupado(numero)) {
      numero = SaltaOcupados(numero);
      conexion_.Consulta("UPDATE Folio_Consecutivo SET Fc_Ultimo = ? WHERE Fc_Serie = ?", {numero, kSerie});
    }
    return Folio(numero);
  }

 private:
  std::string Folio(std::int32_t numero) const { return regional::ConMascara(std::to_string(numero), mascara_); }

  // The next number of the counter; 0 before the first one.
  std::int32_t Cuenta() {
    conexion_.Consulta("UPDATE Folio_Consecutivo SET Fc_Ultimo = Fc_Ultimo + 1 WHERE Fc_Serie = ?", {kSerie});
    const ado::RecordsetPtr rs =
        conexion_.Consulta("SELECT Fc_Ultimo FROM Folio_Consecutivo WHERE Fc_Serie = ?", {kSerie});
    return rs->Eof() ? 0 : com::CLng(rs->Fields(0).Value());
  }

  std::int32_t Avanza() {
    if (const std::int32_t numero = Cuenta()) return numero;
    // Two may both be the first.
    conexion_.EsperaTurno("folios");
    if (const std::int32_t numero = Cuenta()) return numero;
    conexion_.Consulta("INSERT INTO Folio_Consecutivo (Fc_Serie, Fc_Ultimo) VALUES (?, ?)", {kSerie, 1});
    return 1;
  }

  bool Ocupado(std::int32_t numero) {
    return Hay(conexion_, "SELECT Rs_Folio FROM Reservacion WHERE Rs_Folio = ?", {Folio(numero)});
  }

  // A free number behind the run of taken ones that starts at the given one, found in a few steps however long the run.
  std::int32_t SaltaOcupados(std::int32_t ocupado) {
    std::int32_t libre = ocupado + 1;
    for (std::int32_t salto = 2; Ocupado(libre); salto *= 2) {
      ocupado = libre;
      libre += salto;
    }
    while (libre - ocupado > 1) {
      const std::int32_t medio = ocupado + (libre - ocupado) / 2;
      (Ocupado(medio) ? ocupado : libre) = medio;
    }
    return libre;
  }

  Conexion& conexion_;
  std::string mascara_;
};

com::Fecha Dia(double diasCom) { return com::SoloFecha(com::DeDiasCom(diasCom)); }

// A line as it was stored before an edit.
struct Anterior {
  std::string habitacion;
  com::Fecha inicio, fin;
  double impuesto = 0;    // tax factor
  bool cortesia = false;  // it cost nothing
};

class ServicioHotel : public com::Objeto<anfitrion::Hotel> {
 public:
  explicit ServicioHotel(Anfitrion& host) : host_(host) {}

  double PrecioHabitacion(const std::string& habitacion, com::Fecha inicio, com::Fecha fin, int adultos, int menores,
                          int /*infantes*/, double& precioExtra, int& personasExtra, const std::string& moneda,
                          com::Fecha /*captura*/, double tipoCambio) override {
    const registro::Operacion operacion("Hotel.PrecioHabitacion");
    precioExtra = 0;
    personasExtra = 0;
    PrecioEstancia precio;
    const bool ok = Intenta(operacion, [&] {
      precio = Cotiza(habitacion, inicio, fin, {adultos, menores}, moneda, tipoCambio, personasExtra);
    });
    if (!ok) return 0;
    precioExtra = static_cast<double>(precio.extra) / 100;
    return static_cast<double>(precio.habitacion) / 100;
  }

  void CalculaImpuestos(double& precioLista, double& precioListaImporte, double& descuentoFactor,
                        double& descuentoImporte, double& precioDescontado, double& precioDescontadoImporte,
                        double& globalFactor, double& globalImporte, double& impuestoFactor, double& impuestoImporte,
                        double& precioNeto, double& total) override {
    const registro::Operacion operacion("Hotel.CalculaImpuestos");
    anfitrion::Desglose d;
    d.descuentoFactor = descuentoFactor;
    d.globalFactor = globalFactor;
    d.impuestoFactor = impuestoFactor;
    d.precioNeto = precioNeto;
    d.total = total;
    Desglosa(d);
    precioLista = d.precioLista;
    precioListaImporte = d.precioListaImporte;
    descuentoFactor = d.descuentoFactor;
    descuentoImporte = d.descuentoImporte;
    precioDescontado = d.precioDescontado;
    precioDescontadoImporte = d.precioDescontadoImporte;
    globalFactor = d.globalFactor;
    globalImporte = d.globalImporte;
    impuestoImporte = d.impuestoImporte;
    precioNeto = d.precioNeto;
    total = d.total;
  }

  void Encabezado(const anfitrion::DatosReservacion& datos) override { encabezado_ = datos; }
  anfitrion::DatosReservacion Encabezado() override { return encabezado_; }
  void Detalle(const anfitrion::DatosDetalle& datos) override { detalle_ = datos; }

  bool GuardaReservacion() override {
    const registro::Operacion operacion("Hotel.GuardaReservacion");
    ExigeTransaccion();
    renglones_ = 0;
    anteriores_.clear();
    guardado_.clear();
    return Intenta(operacion, [this] {
      const std::string folio = com::Recorta(encabezado_.folio.Texto());
      guardado_ = folio.empty() ? Inserta() : Actualiza(folio);
      encabezado_.folio = guardado_;
      host_.novedades().Anota(folio.empty() ? Novedad::Hecho::Guardada : Novedad::Hecho::Modificada, guardado_);
    });
  }

  bool GuardaDetalle(bool puedeCambiarPrecio) override {
    const registro::Operacion operacion("Hotel.GuardaDetalle");
    ExigeTransaccion();
    return Intenta(operacion, [&] { GuardaRenglon(puedeCambiarPrecio); });
  }

  std::string ErrorHotel() override { return error_; }

  void MuestraPrecios(com::Fecha fecha) override {
    const registro::Operacion operacion("Hotel.MuestraPrecios");
    Abre(anfitrion::pantalla::kMuestraPrecios, {fecha});
  }
  void MuestraCliente(const std::string& clave, int tipo, const std::string& folio) override {
    const registro::Operacion operacion("Hotel.MuestraCliente");
    Abre(anfitrion::pantalla::kMuestraCliente, {clave, tipo, folio});
  }

 private:
  // Runs an operation; its refusal becomes the text of ErrorHotel.
  template <class Cuerpo>
  bool Intenta(const registro::Operacion& operacion, Cuerpo&& cuerpo) {
    error_.clear();
    try {
      cuerpo();
    } catch (const Rechazo& rechazo) {
      error_ = rechazo.texto;
      operacion.AnotaRechazo();
    }
    return error_.empty();
  }

  void Abre(const std::string& pantalla, const std::vector<com::Variant>& argumentos) {
    host_.AnotaPantalla({pantalla, argumentos});
    controles::EscritorioActual().AbrePantalla(pantalla, argumentos);
  }

  Conexion& Base() { return *host_.conexion(); }

  void ExigeTransaccion() {
    if (!Base().EnTransaccion()) {
      throw com::Error(com::error::kTransaccion, "Una reservación se guarda dentro de una transacción");
    }
  }

  PrecioEstancia Cotiza(const std::string& habitacion, com::Fecha inicio, com::Fecha fin, Personas personas,
                        const std::string& moneda, double tipoCambio, int& personasExtra) {
    Cotizado c = CotizaEstancia(Base(), habitacion, inicio, fin, personas, moneda, tipoCambio);
    if (!c.motivo.empty()) throw Rechazo{c.motivo};
    personasExtra = c.extra.adultos + c.extra.menores;
    c.precio.noches.clear();  // they refer to what ends here
    return std::move(c.precio);
  }

  std::string Inserta() {
    std::string folio = Foliador(Base()).Siguiente();
    const anfitrion::DatosReservacion& e = encabezado_;
    Base().Consulta(
        "INSERT INTO Reservacion (Rs_Folio, Rs_Fecha, Rs_Llegada, Rs_Salida, Sc_Cve_Sucursal, Cl_Cve_Cliente, "
        "Rs_Huesped, Mn_Cve_Moneda, Rs_Tipo_Cambio, Fp_Cve_Forma_Pago, Rs_Referencia, Rs_Comentario, Rs_Notas, "
        "Es_Cve_Estado, Oper_Ult_Modif, Fecha_Ult_Modif, Oper_Baja, Fecha_Baja) "
        "VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, 'AC', ?, ?, '', NULL)",
        {folio, Dia(e.fecha), Dia(e.llegada), Dia(e.salida), e.sucursal.Texto(), e.cliente.Texto(), e.huesped.Texto(),
         e.moneda.Texto(), e.tipoCambio, e.formaPago.Texto(), e.referencia.Texto(), e.comentario.Texto(),
         e.notas.Texto(), host_.usuario(), host_.reloj().Ahora()});
    return folio;
  }

  // The screen reads each line with its product's list price: a line without one is not shown, one with several is
  // shown several times. Storing what the screen shows would lose or double such a line.
  void RevisaRenglonesCompletos(const std::string& folio) {
    const auto cuenta = [&](const char* sentencia) {
      return com::CLng(Base().Consulta(sentencia, {folio})->Fields(0).Value());
    };
    const int guardados = cuenta("SELECT COUNT(*) FROM Reservacion_Detalle WHERE Rs_Folio = ?");
    const int mostrados = cuenta(
        "SELECT COUNT(*) FROM Reservacion_Detalle D "
        "INNER JOIN Habitacion H ON H.Hb_Cve_Habitacion = D.Hb_Cve_Habitacion "
        "INNER JOIN Tipo_Habitacion T ON T.Th_Cve_Tipo_Habitacion = H.Th_Cve_Tipo_Habitacion "
        "INNER JOIN Producto P ON P.Pr_Cve_Producto = T.Pr_Cve_Producto "
        "INNER JOIN Producto_Precio L ON L.Pr_Cve_Producto = P.Pr_Cve_Producto WHERE D.Rs_Folio = ?");
    if (guardados == mostrados) return;
    throw Rechazo{"La reservación " + folio +
                  " tiene habitaciones cuyo producto no tiene un precio de lista o tiene varios: corrija el catálogo "
                  "antes de modificarla"};
  }

  // The state stays; the lines go and come again one by one.
  std::string Actualiza(const std::string& pedido) {
    const ado::RecordsetPtr rs = Base().Consulta(
        "SELECT Rs_Folio, Es_Cve_Estado, Sc_Cve_Sucursal FROM Reservacion WHERE Rs_Folio = ?", {pedido});
    if (rs->Eof()) throw Rechazo{"La reservación " + pedido + " no existe"};
    std::string folio = com::CStr(rs->Fields(0).Value());
    const std::string estado = com::Recorta(com::CStr(rs->Fields(1).Value()));
    const std::string ajeno = Base().CambioAjeno(folio);
    if (!com::IgualSinCaja(estado, esquema::kActiva) && !com::IgualSinCaja(estado, esquema::kConfirmada)) {
      throw Rechazo{ajeno + "La reservación " + folio + " está en estado " + estado + " y no se puede modificar"};
    }
    if (!ajeno.empty()) {
      throw Rechazo{ajeno +
                    "No se guardó nada y su captura sigue en la pantalla. Si vuelve a aceptar, queda lo que usted "
                    "capturó"};
    }
    RevisaRenglonesCompletos(folio);
    const anfitrion::DatosReservacion& e = encabezado_;
    Base().Consulta(
        "UPDATE Reservacion SET Rs_Fecha = ?, Rs_Llegada = ?, Rs_Salida = ?, Sc_Cve_Sucursal = ?, Cl_Cve_Cliente = ?, "
        "Rs_Huesped = ?, Mn_Cve_Moneda = ?, Rs_Tipo_Cambio = ?, Fp_Cve_Forma_Pago = ?, Rs_Referencia = ?, "
        "Rs_Comentario = ?, Rs_Notas = ?, Oper_Ult_Modif = ?, Fecha_Ult_Modif = ? WHERE Rs_Folio = ?",
        {Dia(e.fecha), Dia(e.llegada), Dia(e.salida), e.sucursal.Texto(), e.cliente.Texto(), e.huesped.Texto(),
         e.moneda.Texto(), e.tipoCambio, e.formaPago.Texto(), e.referencia.Texto(), e.comentario.Texto(),
         e.notas.Texto(), host_.usuario(), host_.reloj().Ahora(), folio});
    LeeAnteriores(folio);
    mismaSucursal_ =
        com::IgualSinCaja(com::Recorta(com::CStr(rs->Fields(2).Value())), com::Recorta(e.sucursal.Texto()));
    Base().Consulta("DELETE FROM Reservacion_Detalle WHERE Rs_Folio = ?", {folio});
    return folio;
  }

  void LeeAnteriores(const std::string& folio) {
    const ado::RecordsetPtr rs = Base().Consulta(
        "SELECT Hb_Cve_Habitacion, Rsd_Fecha_Inicio, Rsd_Fecha_Fin, Rsd_Impuesto_Factor, Rsd_Precio, "
        "Rsd_Precio_Personas_Extra FROM Reservacion_Detalle WHERE Rs_Folio = ? ORDER BY Rsd_Id",
        {folio});
    for (; !rs->Eof(); rs->MoveNext()) {
      const auto importe = [&](std::size_t i) { return com::CDbl(rs->Fields(i).Value()); };
      anteriores_.push_back(
          {com::Recorta(com::CStr(rs->Fields(0).Value())), com::SoloFecha(com::CDate(rs->Fields(1).Value())),
           com::SoloFecha(com::CDate(rs->Fields(2).Value())), importe(3), importe(4) == 0 && importe(5) == 0});
    }
  }

  void GuardaRenglon(bool puedeCambiarPrecio) {
    const anfitrion::DatosDetalle& l = detalle_;
    if (guardado_.empty()) throw Rechazo{"No hay reservación guardada para la habitación " + l.habitacion.Texto()};
    const CuartoConTipo cuarto = CuartoVendible(l.habitacion.Texto());
    const com::Fecha inicio = Dia(l.inicio);
    const com::Fecha fin = Dia(l.fin);
    RevisaRenglon(cuarto, inicio, fin);
    RevisaQueSePuedaAbrir(cuarto);
    if (!puedeCambiarPrecio) RevisaQueTengaPrecio(cuarto, inicio, fin);
    const anfitrion::Desglose d = Deriva(cuarto);
    try {
      Base().Consulta(
          "INSERT INTO Reservacion_Detalle (Rs_Folio, Rsd_Id, Hb_Cve_Habitacion, Rsd_Fecha_Inicio, Rsd_Fecha_Fin, "
          "Rsd_Cantidad, Rsd_Adultos, Rsd_Menores, Rsd_Infantes, Rsd_Cantidad_Personas_Extra, Rsd_Precio, "
          "Rsd_Precio_Personas_Extra, Rsd_Precio_Lista, Rsd_Precio_Lista_Importe, Rsd_Descuento_Factor, "
          "Rsd_Descuento_Importe, Rsd_Precio_Descontado, Rsd_Precio_Descontado_Importe, Rsd_Impuesto_Factor, "
          "Rsd_Impuesto_Importe, Rsd_Precio_Neto, Rsd_Precio_Neto_Importe) "
          "VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)",
          {guardado_,
           renglones_ + 1,
           cuarto.habitacion,
           inicio,
           fin,
           com::DiasEntre(inicio, fin),
           static_cast<std::int32_t>(l.adultos),
           static_cast<std::int32_t>(l.menores),
           static_cast<std::int32_t>(l.infantes),
           static_cast<std::int32_t>(com::CInt(l.personasExtra)),
           l.precio,
           l.precioPersonasExtra,
           d.precioLista,
           d.precioListaImporte,
           d.descuentoFactor,
           d.descuentoImporte,
           d.precioDescontado,
           d.precioDescontadoImporte,
           d.impuestoFactor,
           d.impuestoImporte,
           d.precioNeto,
           l.total});
    } catch (const com::Error& e) {
      // The database itself refuses to sell a room twice for a night; its text says who holds it.
      if (e.Numero() != com::error::kRestriccion) throw;
      throw Rechazo{e.Descripcion()};
    }
    ++renglones_;
  }

  CuartoConTipo CuartoVendible(const std::string& habitacion) {
    std::optional<CuartoConTipo> cuarto = LeeCuarto(Base(), habitacion);
    if (!cuarto) throw Rechazo{"La habitación " + habitacion + " no existe"};
    if (cuarto->deBaja) throw Rechazo{"La habitación " + habitacion + " está de baja"};
    return *std::move(cuarto);
  }

  void RevisaRenglon(const CuartoConTipo& cuarto, com::Fecha inicio, com::Fecha fin) {
    const anfitrion::DatosDetalle& l = detalle_;
    const auto rechaza = [&](const char* motivo) {
      throw Rechazo{"La habitación " + cuarto.habitacion + " no se puede guardar: " + motivo};
    };
    if (fin <= inicio) rechaza("la fecha final debe ser posterior a la fecha inicial");
    for (const double importe : {l.precio, l.precioPersonasExtra, l.descuentoFactor, l.personasExtra, l.total}) {
      if (!std::isfinite(importe)) rechaza("tiene un importe que no es un número");
    }
    for (const double importe : {l.precio, l.precioPersonasExtra, l.total}) {
      if (importe > kImporteMaximo) rechaza("su importe es demasiado grande: el máximo es 999,999,999");
    }
    if (l.total < 0) rechaza("el importe total es menor a cero");
    if (l.adultos < 0 || l.menores < 0 || l.infantes < 0) rechaza("el número de personas es negativo");
  }

  // The screen reads a stored line with its product's list price; without one the line could never be opened again.
  static void RevisaQueSePuedaAbrir(const CuartoConTipo& cuarto) {
    if (cuarto.preciosDeLista > 0) return;
    throw Rechazo{"La habitación " + cuarto.habitacion +
                  " no se puede guardar: su producto no tiene precio de lista y la reservación no se podría abrir"};
  }

  // A clerk who may not set prices must not store a line that costs nothing where the hotel's rate costs something,
  // unless somebody who may had given those nights away before.
  void RevisaQueTengaPrecio(const CuartoConTipo& cuarto, com::Fecha inicio, com::Fecha fin) {
    const anfitrion::DatosDetalle& l = detalle_;
    if (l.precio != 0 || l.precioPersonasExtra != 0) return;
    for (const Anterior& a : anteriores_) {
      if (a.cortesia && a.habitacion == cuarto.habitacion && a.inicio <= inicio && fin <= a.fin) return;
    }
    int personasExtra = 0;
    PrecioEstancia precio;
    try {
      precio = Cotiza(cuarto.habitacion, inicio, fin, {l.adultos, l.menores}, encabezado_.moneda.Texto(),
                      encabezado_.tipoCambio, personasExtra);
    } catch (const Rechazo&) {
      return;  // without a rate there is nothing to compare with; the clerk was told when the line was priced
    }
    if (precio.habitacion + precio.extra > 0) {
      throw Rechazo{"La habitación " + cuarto.habitacion +
                    " no tiene precio; vuelva a capturar las personas para calcularlo"};
    }
  }

  // A line keeps the tax that it was sold with, as the screen shows it, while its room and branch stay.
  double FactorDeImpuesto(const CuartoConTipo& cuarto) {
    const Anterior* suya = nullptr;
    for (const Anterior& a : anteriores_) {
      if (!mismaSucursal_ || a.habitacion != cuarto.habitacion) continue;
      const bool mismasNoches = a.inicio == Dia(detalle_.inicio) && a.fin == Dia(detalle_.fin);
      if (suya == nullptr || mismasNoches) suya = &a;
      if (mismasNoches) break;
    }
    return suya != nullptr ? suya->impuesto : TasaDeImpuesto(Base(), encabezado_.sucursal.Texto(), cuarto.producto);
  }

  // The amounts that the screen does not hand over, by the breakdown that it shows.
  anfitrion::Desglose Deriva(const CuartoConTipo& cuarto) {
    anfitrion::Desglose d;
    d.descuentoFactor = detalle_.descuentoFactor;
    d.impuestoFactor = FactorDeImpuesto(cuarto);
    d.precioNeto = detalle_.total;
    d.total = detalle_.total;
    Desglosa(d);
    return d;
  }

  Anfitrion& host_;
  anfitrion::DatosReservacion encabezado_;
  anfitrion::DatosDetalle detalle_;
  std::string guardado_;        // folio of the header saved last
  std::int32_t renglones_ = 0;  // lines saved with it
  std::vector<Anterior> anteriores_;
  bool mismaSucursal_ = false;  // as before the edit
  std::string error_;
};

}  // namespace

com::Ptr<anfitrion::Hotel> CreaHotel(Anfitrion& host) { return com::Ptr<anfitrion::Hotel>(new ServicioHotel(host)); }

}  // namespace autonomo
