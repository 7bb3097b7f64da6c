// The catalogues of the hotel as they are edited and given out: one definition of tables, columns and captions
// (catalogos.cpp), the statements that list, insert, change and withdraw rows (catalogos_filas.cpp), and what is typed
// and shown of them (catalogos_textos.cpp). No widgets.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/contract/pantallas.h"
#include "host/standalone/conexion.h"
#include "platform/listado/listado.h"

namespace autonomo {

// Fraccion: below 1, typed and shown per cent. Dias: digits of the weekdays, 1 Monday to 7 Sunday.
enum class TipoCampo { Clave, Texto, Nota, Entero, Dinero, Factor, Fraccion, Fecha, Dias, Referencia, Correo };

struct CampoCatalogo {
  std::string_view columna;
  std::string_view titulo;
  TipoCampo tipo = TipoCampo::Texto;
  bool llave = false;  // part of the key; cannot be changed once the row exists, but for todoEsLlave
  bool obligatorio = false;
  std::string_view referencia = {};  // table that a Referencia names
  std::string_view ayuda = {};
  std::string_view vacio = {};  // what an empty Referencia stands for; "" it cannot be empty
};

struct Catalogo {
  std::string_view tabla;
  std::string_view titulo;
  std::vector<CampoCatalogo> campos;
  bool conEstado = false;             // withdrawn rows stay, in state "BA"
  std::string_view consecutivo = {};  // key column numbered here; "" none
  std::string_view mascara = {};      // parameter with the key's zero-fill mask; "" none
  // Column that tells rows of the same key apart where a database holds such rows already; "" none.
  std::string_view distingue = {};
  std::string_view repetida = {};  // what to say when the key exists already; "" the usual sentence
  // A row's whole content is its key and can be changed; withdrawn rows are those in any state but "AC", and get "CA".
  bool todoEsLlave = false;
};

const std::vector<Catalogo>& Catalogos();
// Catalogues behind a screen of the host (anfitrion::pantalla); none for another code.
std::vector<const Catalogo*> CatalogosDe(std::string_view codigo);
const Catalogo* BuscaCatalogo(std::string_view tabla);
// The screen behind which a table is edited; kConfiguracion for what is no catalogue (parameters, users).
std::string_view PantallaDe(std::string_view tabla);

// A row: one value for each field, in order, then whether it is withdrawn.
struct FilaCatalogo {
  std::vector<com::Variant> valores;
  bool deBaja = false;
};

std::vector<FilaCatalogo> LeeCatalogo(Conexion& conexion, const Catalogo& catalogo);
// Key and name of the rows that a Referencia offers, without the withdrawn ones.
std::vector<std::pair<std::string, std::string>> LeeReferencia(Conexion& conexion, std::string_view tabla);

// Whether the texts of the field stand at the right.
bool EsNumero(const CampoCatalogo& campo);

// Zero-fill mask of the catalogue's keys; "" none.
std::string MascaraDe(Conexion& conexion, const Catalogo& catalogo);
// What is wrong with the texts that were typed for a row, "" nothing; valores gets them typed, up to the field that is
// wrong. mascara: zero-fill mask of the key.
[[nodiscard]] std::string Valida(const Catalogo& catalogo, const std::vector<std::string>& textos,
                                 std::string_view mascara, std::vector<com::Variant>& valores);
// Text in which a value is typed and shown.
std::string TextoDe(const CampoCatalogo& campo, const com::Variant& valor);

// "De baja", "En vigor", "Levantado"; "" for a row that needs no word.
std::string_view EstadoDe(const Catalogo& catalogo, const FilaCatalogo& fila);
// All rows with their values, names beside the keys of other catalogues, for spreadsheets and paper.
listado::Listado ListadoDe(Conexion& conexion, const Catalogo& catalogo);

// com::Error kRestriccion with a clear text when the key exists already.
void Inserta(Conexion& conexion, const Catalogo& catalogo, std::vector<com::Variant> valores);
// The key stays as it was. com::Error kRestriccion when the row is no longer there.
void Cambia(Conexion& conexion, const Catalogo& catalogo, const FilaCatalogo& antes, std::vector<com::Variant> valores);
// What should be known of a row that was just stored or withdrawn, "" nothing: products that are sold without tax at a
// branch, a room block on nights of live reservations.
[[nodiscard]] std::string Advertencia(Conexion& conexion, const Catalogo& catalogo,
                                      const std::vector<com::Variant>& valores);
// Withdraws or brings back a row; rows without a state are deleted, but for one that other catalogues name
// (com::Error kRestriccion).
void Retira(Conexion& conexion, const Catalogo& catalogo, const FilaCatalogo& fila);

}  // namespace autonomo
