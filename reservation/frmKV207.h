// The reservation screen: captures, edits, saves and moves one reservation through its states.
//
// This declaration is the table of contents: controls in tab order, screen fields, then the handlers (control_Event)
// and procedures, grouped as the files that hold them. eventos.cpp lists which event runs which handler. Names that a
// message's caption shows, and those of what hosts and scripts see, stay as they are, however they are spelt.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "host/contract/mensajes.h"
#include "host/contract/servicios.h"
#include "platform/controls/barra.h"
#include "platform/controls/control.h"
#include "platform/controls/formulario.h"
#include "platform/controls/grid.h"
#include "publico/captura.h"
#include "reservation/tasacion.h"

namespace kv207 {

class frmDisponibilidad;

class frmKV207 : public controles::Formulario, public publico::Captura {
 public:
  explicit frmKV207(frmDisponibilidad& tablero);

  std::vector<std::pair<std::string, com::Variant>> Campos() const override;

  // --- controls, in tab order ----------------------------------------------------------------------------------------
  controles::ScreenToolbar Controles;     // actions on the reservation
  controles::LookupField txtFolio;        // folio: opens a stored reservation
  controles::DateField dpFecha;           // capture date
  controles::LookupField txtSucursal;     // branch
  controles::LookupField txtCliente;      // client who pays (group 1)
  controles::LookupField txtNCliente;     // its name
  controles::Boton cmdCliente;            // client record
  controles::LookupField txtHuesped;      // guest, a client key (group 1)
  controles::LookupField txtNHuesped;     // its name
  controles::Boton cmdHuesped;            // guest record
  controles::LookupField txtForma_Pago;   // payment form (group 1)
  controles::LookupField txtNForma_Pago;  // its name
  controles::LookupField txtMoneda;       // currency (group 1)
  controles::LookupField txtNMoneda;      // its name
  controles::LookupField txtTipoCambio;   // exchange rate
  controles::DateField dpFecha_llegada;   // arrival
  controles::DateField dpFecha_salida;    // departure
  controles::LookupField txtDias;         // nights
  controles::LookupField txtReferencia;   // reference
  controles::LookupField txtComentario;   // comment
  controles::CampoNotas txtNotas;         // notes, F2 opens the editor
  controles::Boton cmdNotas;              // notes editor
  controles::Marco frTarjeta;             // card data, shown for card payments (group 4)
  controles::LookupField txtBanco;        // issuing bank
  controles::LookupField txtTarjeta;      // card number
  controles::LookupField txtCodigo;       // security code, masked
  controles::DateField dpVencimiento;     // expiry
  controles::Casilla chkMostrarCodigo;    // shows the security code
  controles::Boton cmdDisponibilidad;     // availability board, also F6
  controles::Grid ssReservaciones;        // room lines
  controles::Marco pcFecha;               // date pop-up laid over a date cell
  controles::DateField dpFechaGrid;       // its date
  controles::Marco frTotales;             // footer
  controles::LookupField txtSubTotal;     // before tax
  controles::LookupField txtImpuestos;    // tax
  controles::LookupField txtTotal;        // tax included

  // --- configuration, from parameters and rights at load -------------------------------------------------------------
  std::string FormatoHabitacion;  // zero-fill mask of room keys
  std::string MonedaLocal;
  std::string SucursalDefault;
  std::string ClienteWeb;  // client key whose card data stay with the reservation
  bool PermiteSobreventa = false;
  std::int16_t DiasReservacion = 0;  // days from capture to the proposed arrival
  bool PuedeCambiarFecha = false;
  bool PuedeCambiarDescuento = false;
  bool PuedeCambiarPrecio = false;
  bool BloqueaTipoCambio = false;  // this right takes away: whoever has it changes no rate

  // --- proposed for the next new reservation; accepting a new one replaces them --------------------------------------
  std::string MonedaDefault;
  com::Fecha FechaCaptura{};  // the currency's rate is looked up for this day; the field then shows today

  // --- running fields ------------------------------------------------------------------------------------------------
  std::string TipoFormaPago;          // see EsTarjeta
  bool TarjetaCargada = false;        // card data already loaded for the client
  bool CargaCompleta = false;         // the reservation shown was read to its end
  std::int32_t UltimoRenglon = 0;     // number of the last line that was read; new ones get none
  std::string MensajeDisponibilidad;  // why the availability validation failed
  std::string ColumnaFechaActiva;     // date column that the pop-up edits, "" none

  // The host object that owns the screen; may be empty.
  com::Ptr<com::Despacho> Padre;
  // Transaction code as the host resolves it; Error kSinObjeto without Padre.
  [[nodiscard]] std::string Transaccion() const;

  // --- arranque.cpp: load, activation, layout, form keys, unload -----------------------------------------------------
  void Form_Load();
  void Form_Activate();
  void Form_Resize();
  void Form_KeyUp(int codigo, int mayus);
  void Form_FocusChange();
  void Form_Unload();

  // --- encabezado.cpp: header fields
  void txtFolio_Change();
  void txtCliente_Change();
  void txtHuesped_Change();
  void txtForma_Pago_Change();
  void txtForma_Pago_Enter();
  void txtMoneda_Enter();
  void txtTipoCambio_Enter();
  void txtSucursal_Change();
  void txtDias_Change();
  void txtNotas_KeyDown(int codigo, int mayus);
  void cmdNotas_Click();
  void cmdCliente_Click();
  void cmdHuesped_Click();
  void chkMostrarCodigo_Click();
  // Key and name rule of the paying party: the client when its name is shown, else the guest.
  [[nodiscard]] std::string ClaveCliente() const;
  // Shows the host's rate of the currency on the capture date; nothing without a currency.
  void MuestraTipoCambio();
  // Empties the field groups and makes their inputs read-only.
  void LimpiaGrupos();
  // Removes all room lines, with the date pop-up over them, and shows a total of 0.
  void VaciaRenglones();

  // --- carga.cpp: loading a stored reservation
  void txtFolio_Enter();
  // Reads the folio's reservation and shows it; false when that failed, which is told. What was shown until then stays.
  bool CargaReservacion();

  // --- bitacora.cpp: change audit
  // A reservation as it is stored. Null record sets: it could not be read, which has been told.
  struct Imagen {
    ado::RecordsetPtr encabezado, detalle;
  };
  // Before the first write of a save, and after the last one.
  void Resevacion_Antes(const std::string& folio, Imagen& antes);
  void Resevacion_Despues(const std::string& folio, Imagen& despues);
  // Logs what differs, if anything. ok: false when it failed, which has been told; then the save is not to stand.
  void Analizar_Reservacion(const std::string& folio, Imagen& antes, Imagen& despues, bool& ok);

  // --- renglones.cpp: the room-line grid
  void ssReservaciones_InitColumnProps();
  void ssReservaciones_BeforeRowColChange(bool& cancela);
  void ssReservaciones_RowColChange();
  void ssReservaciones_Change();
  void ssReservaciones_KeyDown(int codigo, int mayus);
  void ssReservaciones_KeyPress(int& caracter);
  void ssReservaciones_KeyUp(int codigo, int mayus);
  void ssReservaciones_BeforeDelete(bool& cancela, bool& pregunta);
  void ssReservaciones_AfterDelete(bool& muestraError);
  void ssReservaciones_RowCommitted();
  void ssReservaciones_UpdateError(int& codigoError);
  // Locks every visible column, or unlocks them but for those that are shown only or that the user's rights lock.
  void BloqueaColumnas();
  void DesbloqueaColumnas();

  // --- habitacion.cpp: the room of a line
  // Appends a line without persons or amounts, which becomes the current one; a room without a product gets none, and
  // the clerk is told. primera, ultima: first and last night as text dates; ancho: width that the Nombre column needs,
  // twips, raised when this name is wider. The database's and the host's errors.
  void AgregaHabitacion(const std::string& primera, const std::string& ultima, const std::string& clave,
                        const std::string& nombre, std::int32_t& ancho);
  // Looks up the key of the current line, with its zeros, and fills the line for the whole stay, without persons or
  // amounts. hallada: false when there is no such room or the search failed, which is told. ancho as above.
  void Busca_Habitacion(std::int32_t& ancho, bool& hallada);
  // Empties the current line but for its key, dates and what only the breakdown writes; nothing without a line.
  void LimpiaRenglon();

  // --- importes.cpp: pricing and totals
  // Prices a line, which becomes the hotel's: asked for anew, without a discount. soloRecalcular: keeps its total and
  // discount, and only breaks the total down. Nothing for a line without room or persons. False when there was nothing
  // to do, or no guest, which is told. kTipos, kDesbordamiento or kArgumento for a cell that holds no date, persons or
  // amount; the host's errors.
  bool CalculaRenglon(int fila, bool soloRecalcular);
  // The same for the current line, if there is one.
  void CalculaImportes(bool soloRecalcular);
  // Sums all lines with a room into the footer. A failure is told, and the footer stays as it was.
  void Totalizar();

  // --- tasacion.cpp: what the amounts of the lines rest on
  // From now on the line shows the hotel's price, under the conditions that it and the header show. conError: the hotel
  // had none. Nothing for a line that cannot be priced.
  void AnotaTarifa(int fila, bool conError);
  // It shows a price that was agreed, in the header's currency and at its rate. incompleto: it could not be broken
  // down; tecleado: by the clerk, in this capture.
  void AnotaAcuerdo(int fila, bool incompleto, bool tecleado);
  // It shows no price that would have to follow anything.
  void OlvidaPrecio(int fila);
  // Prices a line anew, or converts its agreed price, when its amounts no longer fit the header; true when it did.
  bool PoneAlDia(int fila);
  // All lines priced in another currency or at another rate; nothing without guest, currency and rate.
  void SigueMoneda();
  // All lines before they are stored. False when some total changed or could not be worked out: the clerk has been told
  // and accepts again.
  [[nodiscard]] bool RevisaPrecios();

  [[nodiscard]] OrigenPrecio OrigenDe(int fila) const override;
  [[nodiscard]] std::string AvisoDePrecio() const override;

  // --- guardar.cpp: saving
  // nuevo: a new reservation; else the one shown is edited.
  void Controles_Aceptar(bool nuevo);

  // --- valida_disponibilidad.cpp: availability validation
  // ok: false when some line cannot be had, or nobody knows; MensajeDisponibilidad then says why, and nothing is shown.
  void Valida_Disponibilidad(bool& ok);

  // --- acciones.cpp: toolbar actions
  void Controles_Nuevo();
  void Controles_Editar();
  void Controles_Limpiar();
  void Controles_Cerrar();
  void Controles_B1Click();  // confirms; B1 is the button that TituloConfirmar names
  void Controles_Eliminar();
  void Controles_Reactivar();
  void Controles_Correo();
  void Controles_Registro();
  // Prints the reservation by the hotel's format; the host's errors.
  void Imprime(const std::string& folio);

  // --- tarjeta.cpp: card data
  // Shows the card that is stored: with the reservation for the web client, with the client for any other, and for the
  // web client without a folio ("") too. A failure is told.
  void Datos_Tarjeta(const std::string& cliente, const std::string& folio);
  // ok: false when a card field is empty; the clerk has been told, is at the field, and the accept is refused.
  void ValidaTarjeta(bool& ok);

  // --- fechas.cpp: date fields
  void dpFecha_llegada_Set();
  void dpFecha_salida_Change();
  void dpFechaGrid_Set();
  void OcultaFecha();  // hides the date pop-up and forgets its column

  // --- entrega.cpp: the availability board
  void cmdDisponibilidad_Click();

  frmDisponibilidad& tablero() { return tablero_; }

 private:
  // Connects every event to its handler (eventos.cpp).
  void ConectaEventos();
  // Field groups, containers, tab stops, accessible names, labels (frmKV207.cpp).
  void DisenaGrupos();
  void DisenaContenedores();
  void DisenaDescripciones();
  void DisenaEtiquetas();
  // Every control and running field as designed; raises nothing that asks the host or touches the stay.
  void RestauraDiseno();
  // Grouped inputs accept nothing until a group is made editable.
  void BloqueaEntradas();
  // Labels in the colours of the form (arranque.cpp).
  void AplicaColores();
  void CargaConfiguracion();
  // Steps of showing a stored reservation (carga.cpp): toolbar, header, card, room lines. filas: its rows.
  void CargaBarra(const std::string& folio, const ado::Recordset& filas);
  void CargaEncabezado(const ado::Recordset& filas);
  void CargaTarjeta(const std::string& folio);
  void CargaRenglones(ado::Recordset& filas);
  // tasacion.cpp
  [[nodiscard]] std::optional<CondicionesPrecio> Condiciones(int fila) const;
  [[nodiscard]] const PrecioRenglon* PrecioDe(int fila) const;
  // For AvisoDePrecio: the line's agreed price, that total, gave way to the hotel's, which it shows.
  void AnotaPerdido(int fila, OrigenPrecio origen, double total);
  // ahora: the line's conditions.
  bool PoneAlDia(int fila, const CondicionesPrecio& ahora);
  // Brings those lines up to date, and the totals, also when a line fails; the host's errors.
  void PoneAlDiaTodos(const std::function<bool(const PrecioRenglon*, const CondicionesPrecio&)>& cuales);

  frmDisponibilidad& tablero_;
  std::unordered_map<int, PrecioRenglon> precios_;  // by the line's bookmark
  std::string precioPerdido_;                       // the last agreed price that gave way to the hotel's, in words
  bool importesSinDecir_ = false;                   // totals that changed at an accept and were not told yet
  std::vector<std::unique_ptr<controles::Etiqueta>> etiquetas_;
};

}  // namespace kv207
