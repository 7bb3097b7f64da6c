// What the component asks of a host. The host registers one class for each service (com::RegistraClase with the ids at
// the end); the component creates Sistema and Utilerias once, at start-up, Hotel while the reservation screen is loaded
// and anew for each save, the others for each use.
//
// Any operation may fail with com::Error; the screen reports it once, by the handler that called.
#pragma once

#include <string>
#include <vector>

#include "host/contract/registros.h"
#include "platform/ado/ado.h"
#include "platform/com/objeto.h"
#include "platform/com/variant.h"
#include "platform/controls/formulario.h"

namespace anfitrion {

inline constexpr const char* kPantalla = "KV207";      // screen code of every message and right
inline constexpr const char* kProducto = "Vormalix";   // product title
inline constexpr const char* kModulo = "RESERVACION";  // module of change log and mail

// What the change log is told of a reservation's changes of state.
inline constexpr const char *kBitacoraConfirma = "CONFIRMADO", *kBitacoraCancela = "Baja",
                            *kBitacoraReactiva = "Reactivación";

// System services.
class Sistema : public com::Desconocido {
 public:
  static constexpr com::Guid kId{0x5A1B0001, 0x7A11, 0x4C0E, {0x9B, 0x20, 0x4B, 0x56, 0x32, 0x30, 0x37, 0x01}};
  // The open connection, fetched anew before each use.
  virtual ado::ConnectionPtr ObtenConexion() = 0;
  virtual std::string UsuarioActual() = 0;
  virtual void ForzarMayusculas(bool fuerza) = 0;
  // Stored value of the key, or the default when there is none. ambito is always 0; tipo "T" text, "B" Boolean,
  // "N" number, "" the caller converts.
  virtual com::Variant LeeParametro(const std::string& clave, int ambito, const std::string& tipo,
                                    const std::string& defecto) = 0;
  virtual bool TienePermiso(const std::string& pantalla, const std::string& opcion, const std::string& texto) = 0;
  // Message box; see controles::CajaMensaje for style and answer.
  virtual int Mensaje(const com::Variant& texto, int estilo, const com::Variant& titulo, const com::Variant& ventana,
                      const com::Variant& pantalla, const com::Variant& id) = 0;
};

// Utility services.
class Utilerias : public com::Desconocido {
 public:
  static constexpr com::Guid kId{0x5A1B0002, 0x7A11, 0x4C0E, {0x9B, 0x20, 0x4B, 0x56, 0x32, 0x30, 0x37, 0x02}};
  // Date and time of the database server.
  virtual com::Fecha FechaServidor() = 0;
  // Text of a date for an SQL literal, without quotes: the day alone, and with the time.
  virtual std::string FechaSQL(com::Fecha fecha) = 0;
  virtual std::string FechaHoraSQL(com::Fecha fecha) = 0;
  // One column of the row with that key; Empty when there is no row. The last four texts are passed empty.
  virtual com::Variant BuscaValor(const std::string& tabla, const std::string& campoClave, const std::string& clave,
                                  const std::string& campo, const std::string& e1 = {}, const std::string& e2 = {},
                                  const std::string& e3 = {}, const std::string& e4 = {}) = 0;
  // Search dialog; the chosen key, empty when cancelled. fuente is no object.
  virtual com::Variant BuscaEnCatalogo(const std::string& catalogo, int tamanio, const std::string& filtro,
                                       const com::Variant& fuente) = 0;
  // A typed folio as it is stored: "46" is "0000000046". What is no number comes back as it was.
  virtual std::string FormateaFolio(const std::string& folio) = 0;
  // Local currency for one unit of the given one, in force on that day; 1 for the local currency. Error when there is
  // none.
  virtual double TipoCambio(const std::string& moneda, com::Fecha fecha) = 0;
  // Clears / makes editable every input of the form that is tagged with the group (1, 2 or 4).
  virtual void LimpiaGrupo(controles::Formulario& formulario, int grupo) = 0;
  virtual void HabilitaGrupo(controles::Formulario& formulario, int grupo) = 0;
  // Notes editor, ancho characters a line; the edited text, or the given one when the clerk gives up.
  virtual std::string EditaNotas(const std::string& titulo, const std::string& texto, int ancho) = 0;
  // Adds a line to the change log of the module's record, with the user and the server's time; within the caller's
  // transaction where there is one.
  virtual void RegistraBitacora(const std::string& modulo, const std::string& clave, const std::string& texto) = 0;
  // Mails a record by a template; consulta: the host's query for what stands in it. cero is always 0, e1 and e2 empty.
  // False when it could not be sent; ErrorCorreo says why ("" when the template is the reason).
  virtual bool EnviaCorreo(const std::string& modulo, const std::string& clave, const std::string& plantilla,
                           const std::string& consulta, int cero, const std::string& e1, const std::string& e2) = 0;
  virtual std::string ErrorCorreo() = 0;
  // As if the user had pressed them in the window that has the keyboard; the screens send "\t".
  virtual void EnviaTeclas(const std::string& teclas) = 0;
  // The host's transaction as the screen's transaction code, which it hands out unchanged.
  virtual std::string ResuelveTransaccion(const std::string& transaccion, const std::string& producto) = 0;
};

// The twelve values of a line's breakdown. Factors are fractions; amounts of the whole line.
struct Desglose {
  double precioLista = 0;              // 1 out
  double precioListaImporte = 0;       // 2 out
  double descuentoFactor = 0;          // 3 in/out
  double descuentoImporte = 0;         // 4 out: the discount on the undiscounted amount before tax
  double precioDescontado = 0;         // 5 out
  double precioDescontadoImporte = 0;  // 6 out: taxable base
  double globalFactor = 0;             // 7 in/out
  double globalImporte = 0;            // 8 out
  double impuestoFactor = 0;           // 9 in
  double impuestoImporte = 0;          // 10 out: (9) x (6)
  double precioNeto = 0;               // 11 in: gross, tax included; out: net price
  double total = 0;                    // 12 in: 0 breaks down forward from (11); else backward from this total
};                                     //    out: (6) + (10)

// Hotel services: prices, taxes and the reservation store.
class Hotel : public com::Desconocido {
 public:
  static constexpr com::Guid kId{0x5A1B0003, 0x7A11, 0x4C0E, {0x9B, 0x20, 0x4B, 0x56, 0x32, 0x30, 0x37, 0x03}};
  // Room price of the whole stay from the first night to the day of departure, in the given currency, tax included.
  // precioExtra out: price of the extra persons, which is not in it; personasExtra out: how many they are. captura: day
  // on which it is sold. tipoCambio: local currency for one unit. A failure leaves a text in ErrorHotel and gives 0.
  virtual double PrecioHabitacion(const std::string& habitacion, com::Fecha inicio, com::Fecha fin, int adultos,
                                  int menores, int infantes, double& precioExtra, int& personasExtra,
                                  const std::string& moneda, com::Fecha captura, double tipoCambio) = 0;
  // By-reference doubles in the order of Desglose.
  virtual void CalculaImpuestos(double& precioLista, double& precioListaImporte, double& descuentoFactor,
                                double& descuentoImporte, double& precioDescontado, double& precioDescontadoImporte,
                                double& globalFactor, double& globalImporte, double& impuestoFactor,
                                double& impuestoImporte, double& precioNeto, double& total) = 0;
  // The store: header in, header as stored out, line in. Each Guarda runs inside the caller's transaction; false is a
  // refusal, whose text is in ErrorHotel. A header without folio is a new reservation, which gets one.
  virtual void Encabezado(const DatosReservacion& datos) = 0;
  virtual DatosReservacion Encabezado() = 0;
  virtual void Detalle(const DatosDetalle& datos) = 0;
  virtual bool GuardaReservacion() = 0;
  // One line of the header stored last. puedeCambiarPrecio: the clerk's right; without it a line left without
  // its price is refused.
  virtual bool GuardaDetalle(bool puedeCambiarPrecio) = 0;
  // Text of the last failure of an operation of this object, "" when it succeeded.
  virtual std::string ErrorHotel() = 0;
  // Windows of the host, shown until the user closes them: the prices in force that day, and the record of a client;
  // tipo is always 1.
  virtual void MuestraPrecios(com::Fecha fecha) = 0;
  virtual void MuestraCliente(const std::string& clave, int tipo, const std::string& folio) = 0;
};

class CalculoImpuesto : public com::Desconocido {
 public:
  static constexpr com::Guid kId{0x5A1B0004, 0x7A11, 0x4C0E, {0x9B, 0x20, 0x4B, 0x56, 0x32, 0x30, 0x37, 0x04}};
  // Tax factor (0.16 = 16 %) for selling the product at the branch to the client or guest.
  virtual double TasaImpuesto(const std::string& sucursal, const std::string& cliente, const std::string& producto) = 0;
};

class Impresion : public com::Desconocido {
 public:
  static constexpr com::Guid kId{0x5A1B0005, 0x7A11, 0x4C0E, {0x9B, 0x20, 0x4B, 0x56, 0x32, 0x30, 0x37, 0x05}};
  // Prints the record of that key by a print format; the rest is always empty and 0.
  virtual void ImprimeFormato(const std::string& formato, const std::string& clave, const std::string& e1, int c1,
                              int c2, const std::string& e2) = 0;
};

class VisorRegistro : public com::Desconocido {
 public:
  static constexpr com::Guid kId{0x5A1B0006, 0x7A11, 0x4C0E, {0x9B, 0x20, 0x4B, 0x56, 0x32, 0x30, 0x37, 0x06}};
  // Viewer of the row whose column holds the key, shown until the user closes it; the rest is always empty.
  virtual void MuestraRegistro(const std::string& tabla, const std::string& columna, const std::string& clave,
                               const std::string& e1, const std::string& e2, const std::string& e3,
                               const std::string& e4) = 0;
};

// Class ids under which a host registers its services.
inline constexpr com::Guid kClaseSistema{0x5A1B1001, 0x7A11, 0x4C0E, {0x9B, 0x20, 0x4B, 0x56, 0x32, 0x30, 0x37, 0x01}};
inline constexpr com::Guid kClaseUtilerias{
    0x5A1B1002, 0x7A11, 0x4C0E, {0x9B, 0x20, 0x4B, 0x56, 0x32, 0x30, 0x37, 0x02}};
inline constexpr com::Guid kClaseHotel{0x5A1B1003, 0x7A11, 0x4C0E, {0x9B, 0x20, 0x4B, 0x56, 0x32, 0x30, 0x37, 0x03}};
inline constexpr com::Guid kClaseCalculoImpuesto{
    0x5A1B1004, 0x7A11, 0x4C0E, {0x9B, 0x20, 0x4B, 0x56, 0x32, 0x30, 0x37, 0x04}};
inline constexpr com::Guid kClaseImpresion{
    0x5A1B1005, 0x7A11, 0x4C0E, {0x9B, 0x20, 0x4B, 0x56, 0x32, 0x30, 0x37, 0x05}};
inline constexpr com::Guid kClaseVisorRegistro{
    0x5A1B1006, 0x7A11, 0x4C0E, {0x9B, 0x20, 0x4B, 0x56, 0x32, 0x30, 0x37, 0x06}};

}  // namespace anfitrion
