#include "host/standalone/cifrado.h"

#include <algorithm>
#include <map>
#include <tuple>

#include "host/standalone/llave.h"
#include "host/standalone/palabras.h"
#include "host/standalone/plantillas.h"
#include "host/standalone/tarjetas_sql.h"
#include "platform/com/error.h"
#include "platform/com/texto.h"
#include "platform/com/variant.h"
#include "schema/roles.h"

namespace autonomo {

namespace {

constexpr std::string_view kInicioCambio = "update reservacion ";

// palabra: lower case. Asked for each statement of the board: no copy is made.
bool Menciona(std::string_view texto, std::string_view palabra) {
  const auto igual = [](char a, char b) { return (a >= 'A' && a <= 'Z' ? a - 'A' + 'a' : a) == b; };
  return std::search(texto.begin(), texto.end(), palabra.begin(), palabra.end(), igual) != texto.end();
}

// How many "?" stand before that value.
std::size_t PreguntasAntes(const Partida& partida, std::size_t valor) {
  const auto fin = partida.valores.begin() + static_cast<std::ptrdiff_t>(valor);
  return static_cast<std::size_t>(
      std::count_if(partida.valores.begin(), fin, [](const ValorPartido& p) { return p.pregunta; }));
}

// A statement's value; "" for one that is not given.
std::string TextoDe(const Partida& partida, std::size_t valor, const ConexionDeMotor::Parametros* parametros) {
  const ValorPartido& v = partida.valores[valor];
  if (!v.pregunta) return SinComillasDobles(v.texto);
  const std::size_t antes = PreguntasAntes(partida, valor);
  return parametros == nullptr || antes >= parametros->size() ? "" : com::TextoDe((*parametros)[antes]);
}

// Of a table's row, as keys compare.
std::string NombreDeFila(std::string_view tabla, const std::string& llave) {
  return std::string(tabla) + "|" + com::Plegado(com::Recorta(llave));
}

class ConexionCifrada final : public ConexionDeMotor {
 public:
  ConexionCifrada(std::shared_ptr<ConexionDeMotor> motor, const OpcionesConexion& opciones, const Reloj& reloj)
      : motor_(std::move(motor)), reloj_(reloj), enMemoria_(opciones.EnMemoria()), veTarjetas_(opciones.veTarjetas) {}

  ado::RecordsetPtr Execute(const ado::TextoSQL& sentencia) override {
    const std::string& texto = sentencia.Texto();
    if (SoloLee(texto)) return Abre(motor_->Execute(sentencia), texto);
    sentencia.Verifica();
    Parametros ninguno;
    const std::string cifrada = Cifra(texto, false, ninguno);
    ado::RecordsetPtr filas = motor_->Execute(cifrada == texto ? sentencia : ado::TextoSQL(cifrada));
    if (Menciona(std::string_view(texto).substr(0, kInicioCambio.size()), kInicioCambio)) {
      Parte(texto, false, partida_);
      if (CancelaReservacion(partida_)) OlvidaCodigos(*motor_, Folio(), reloj_);
    }
    return filas;
  }
  using ado::Connection::Execute;
  ado::RecordsetPtr Consulta(std::string_view sentencia, const Parametros& parametros) override {
    if (SoloLee(sentencia)) return Abre(motor_->Consulta(sentencia, parametros), sentencia, &parametros);
    Parametros cifrados = parametros;
    const std::string cifrada = Cifra(sentencia, true, cifrados);
    return motor_->Consulta(cifrada, cifrados);
  }
  ado::RecordsetPtr Directa(std::string_view sentencia) override {
    if (SoloLee(sentencia)) return Abre(motor_->Directa(sentencia), sentencia);
    Parametros ninguno;
    return Abre(motor_->Directa(Cifra(sentencia, false, ninguno)), sentencia);
  }

  void BeginTrans() override { motor_->BeginTrans(); }
  void CommitTrans() override { motor_->CommitTrans(); }
  void RollbackTrans() override { motor_->RollbackTrans(); }
  bool EnTransaccion() const override { return motor_->EnTransaccion(); }
  bool LeeConjuntos() const override { return motor_->LeeConjuntos(); }
  esquema::Motor Motor() const override { return motor_->Motor(); }
  bool TomaTurno(const std::string& trabajo) override { return motor_->TomaTurno(trabajo); }
  void EsperaTurno(const std::string& trabajo) override { motor_->EsperaTurno(trabajo); }
  std::vector<std::string> TomaAvisos() override { return motor_->TomaAvisos(); }
  RolesDeLaBase& roles() override { return motor_->roles(); }

 private:
  // The statement as it goes to the engine; parametros likewise.
  std::string Cifra(std::string_view sentencia, bool conPreguntas, Parametros& parametros);
  // A row that a statement writes: which one, and what it writes into its columns of cards.
  struct Escrita {
    std::string fila;  // NombreDeFila; "" not known
    std::string numero, codigo;
  };
  std::string Cifrado(const std::string& texto, Llave::Clase clase, const Escrita& escrita);
  std::string Sellado(const Llave& llave, const std::string& texto, Llave::Clase clase) const;
  // The record set with its marks opened; the same one when it has none.
  ado::RecordsetPtr Abre(ado::RecordsetPtr filas, std::string_view sentencia, const Parametros* parametros = nullptr);
  // ocultas: where the marks go whose texts were masked.
  std::string Abierto(const std::string& texto, bool exige, std::vector<std::string>& ocultas);
  // The row that a SELECT names, and what of its card it asks for.
  struct Leida {
    std::string fila;  // NombreDeFila; "" not known
    bool numero = false, codigo = false;
  };
  Leida FilaLeida(std::string_view sentencia, const Parametros* parametros);

  // A card that was shown masked.
  struct Mostrada {
    std::string fila;                        // NombreDeFila; "" not known
    std::string numero, codigo;              // marks; "" none
    std::string numeroOculto, codigoOculto;  // and what was shown of them

    const std::string& Marca(Llave::Clase clase) const { return clase == Llave::Clase::Numero ? numero : codigo; }
  };
  // ocultas: the marks of one row.
  void Recuerda(const Leida& leida, const std::vector<std::string>& ocultas);
  // What is known of a row's card, by what was read of it now.
  void Renueva(Mostrada& sabida, const Mostrada& nueva, const Leida& leida);
  // The mark that a masked text stands for; "" for one that was not shown. com::Error kArgumento when it may be that of
  // several cards.
  std::string MarcaOculta(const std::string& limpio, Llave::Clase clase, const Escrita& escrita);

  // The last value of the statement that was split last: in a change of state, the reservation's.
  std::string Folio() const { return partida_.valores.empty() ? "" : com::Recorta(partida_.valores.back().texto); }

  // The key of that fingerprint; of "", the one for new hotels. Null when it is not here.
  const Llave* BuscaLlave(const std::string& huella);
  const Llave& LlaveParaCifrar();
  // Which key the cards of the database are sealed with; "" when there are none.
  std::string HuellaDeLaBase();
  std::string HuellaDelTestigo();
  // What the mark stands for; nothing, or with exige the error SinLlave, when it cannot be opened.
  std::optional<std::string> Abierta(std::string_view marca, bool exige);
  [[noreturn]] static void SinLlave();

  std::shared_ptr<ConexionDeMotor> motor_;
  const Reloj& reloj_;
  bool enMemoria_;
  std::function<bool()> veTarjetas_;
  std::vector<Llave> llaves_;
  Partida partida_;
  std::optional<Llave> deLaBase_;  // the one that its cards are sealed with
  std::string testigo_;            // reads one of them
  com::Variant deQuien_;           // and its key
  // None is dropped: of two that are shown alike the other one would be taken for it.
  std::vector<Mostrada> mostradas_;
};

void ConexionCifrada::SinLlave() {
  throw com::Error(
      com::error::kBaseDatos,
      "En este equipo no está la llave con que se guardan las tarjetas (" + Llave::RutaUsual() +
          "). Tráigala del equipo donde se hizo, o de donde la guardó: reservas-base clave HOTEL --importa "
          "ARCHIVO. Mientras tanto se trabaja con las reservaciones sin tarjeta");
}

// What is not among the keys that were read may have come meanwhile.
const Llave* ConexionCifrada::BuscaLlave(const std::string& huella) {
  const auto busca = [&]() -> const Llave* {
    const auto llave =
        std::ranges::find_if(llaves_, [&](const Llave& l) { return huella.empty() || l.Huella() == huella; });
    return llave == llaves_.end() ? nullptr : &*llave;
  };
  if (const Llave* llave = busca()) return llave;
  if (!enMemoria_) llaves_ = Llave::Lee(Llave::RutaUsual());
  if (enMemoria_ && llaves_.empty()) llaves_.push_back(Llave::Nueva());
  return busca();
}

std::string ConexionCifrada::HuellaDelTestigo() {
  if (testigo_.empty()) return {};
  const ado::RecordsetPtr rs = motor_->Consulta(testigo_, {deQuien_});
  if (rs->Eof()) return {};
  const std::string texto = com::TextoDe(rs->Fields(0).Value());
  const std::string_view marca = BuscaMarca(texto);
  return marca.empty() ? "" : HuellaDeMarca(marca);
}

// The card that was found first is asked again, since another program may have changed the key.
std::string ConexionCifrada::HuellaDeLaBase() {
  if (motor_->roles().OcultaTarjetas())
    return com::TextoDe(motor_->Directa(esquema::kHuellaDeTarjetas)->Fields(0).Value());
  if (std::string huella = HuellaDelTestigo(); !huella.empty()) return huella;
  const std::string como = std::string(kInicioMarca) + "%";
  for (const ColumnaDeTarjeta& c : ColumnasDeTarjeta()) {
    const std::string lee = std::string(c.columna) + " FROM " + std::string(c.tabla) + " WHERE ", llave(c.llave);
    const ado::RecordsetPtr rs =
        motor_->Consulta("SELECT TOP 1 " + llave + ", " + lee + std::string(c.columna) + " LIKE ?", {como});
    if (rs->Eof()) continue;
    testigo_ = "SELECT " + lee + llave + " = ?";
    deQuien_ = rs->Fields(0).Value();
    if (std::string huella = HuellaDelTestigo(); !huella.empty()) return huella;
  }
  return {};
}

const Llave& ConexionCifrada::LlaveParaCifrar() {
  const std::string huella = HuellaDeLaBase();
  if (deLaBase_ && (huella.empty() || deLaBase_->Huella() == huella)) return *deLaBase_;
  const Llave* llave = BuscaLlave(huella);
  if (llave == nullptr && !huella.empty()) SinLlave();
  return deLaBase_.emplace(llave == nullptr ? Llave::Crea(Llave::RutaUsual()) : *llave);
}

// A server that may hide card data needs to know what it may show.
std::string ConexionCifrada::Sellado(const Llave& llave, const std::string& texto, Llave::Clase clase) const {
  return llave.Sella(texto, clase, motor_->Motor() == esquema::Motor::PostgreSQL);
}

// What was asked for is as it was read, even where nothing is left of it: number and code may be asked for one after
// the other, but a code is not kept beside a number that it does not belong to.
void ConexionCifrada::Renueva(Mostrada& sabida, const Mostrada& nueva, const Leida& leida) {
  const bool conNumero = leida.numero || !nueva.numero.empty();
  const bool otra = conNumero && !sabida.numero.empty() && sabida.numero != nueva.numero &&
                    (nueva.numero.empty() || Abierta(sabida.numero, false) != Abierta(nueva.numero, false));
  if (conNumero) std::tie(sabida.numero, sabida.numeroOculto) = std::tie(nueva.numero, nueva.numeroOculto);
  if (otra || leida.codigo || !nueva.codigo.empty())
    std::tie(sabida.codigo, sabida.codigoOculto) = std::tie(nueva.codigo, nueva.codigoOculto);
}

void ConexionCifrada::Recuerda(const Leida& leida, const std::vector<std::string>& ocultas) {
  std::vector<Mostrada> nuevas;
  if (!leida.fila.empty()) nuevas.emplace_back().fila = leida.fila;  // its card may be empty now
  // In the order of the row's columns: the first code is the first number's.
  const auto pon = [&](Llave::Clase clase, std::string Mostrada::*marca, std::string Mostrada::*oculto) {
    std::size_t cual = 0;
    for (const std::string& m : ocultas) {
      if (ClaseDeMarca(m) != clase) continue;
      if (cual == nuevas.size()) nuevas.emplace_back().fila = leida.fila;
      nuevas[cual].*marca = m;
      nuevas[cual++].*oculto = Enmascara(Abierta(m, true).value_or(""), clase);
    }
  };
  pon(Llave::Clase::Numero, &Mostrada::numero, &Mostrada::numeroOculto);
  pon(Llave::Clase::Codigo, &Mostrada::codigo, &Mostrada::codigoOculto);
  for (Mostrada& nueva : nuevas) {
    if (nuevas.size() > 1) nueva.fila.clear();  // one of them is the row's, and which is not known
    const auto ya = std::ranges::find_if(mostradas_, [&](const Mostrada& m) {
      return m.fila == nueva.fila && (!m.fila.empty() || (m.numero == nueva.numero && m.codigo == nueva.codigo));
    });
    if (ya != mostradas_.end())
      Renueva(*ya, nueva, leida);
    else if (!ocultas.empty())
      mostradas_.push_back(std::move(nueva));
  }
}

// The row's own; else that of the card which both masked texts fit, if it is one and the same wherever it was shown.
std::string ConexionCifrada::MarcaOculta(const std::string& limpio, Llave::Clase clase, const Escrita& escrita) {
  const bool numero = clase == Llave::Clase::Numero;
  const std::string& otro = numero ? escrita.codigo : escrita.numero;
  std::vector<const Mostrada*> posibles, enteras;
  for (const Mostrada& m : mostradas_) {
    if ((numero ? m.numeroOculto : m.codigoOculto) != limpio) continue;
    const std::string& suOtro = numero ? m.codigoOculto : m.numeroOculto;
    // The code of the card that is meant may have been forgotten: that of one with another number is not its.
    if (EsOculto(otro) && !suOtro.empty() && suOtro != otro) continue;
    posibles.push_back(&m);
    if (suOtro == otro) enteras.push_back(&m);
  }
  if (!enteras.empty()) posibles = std::move(enteras);
  if (posibles.empty()) return {};
  const auto suya = std::ranges::find_if(
      posibles, [&](const Mostrada* m) { return !escrita.fila.empty() && m->fila == escrita.fila; });
  if (suya != posibles.end()) return (*suya)->Marca(clase);
  const std::string& marca = posibles.front()->Marca(clase);
  const auto misma = [&](const Mostrada* m) {
    return m->Marca(clase) == marca || Abierta(m->Marca(clase), true) == Abierta(marca, true);
  };
  if (!std::ranges::all_of(posibles, misma))
    throw com::Error(com::error::kArgumento,
                     "Escriba completo el dato de la tarjeta: hay más de una que se muestra igual");
  return marca;
}

std::string ConexionCifrada::Cifrado(const std::string& texto, Llave::Clase clase, const Escrita& escrita) {
  const std::string limpio = com::Recorta(texto);
  if (limpio.empty()) return texto;
  std::string marca = EsOculto(limpio) ? MarcaOculta(limpio, clase, escrita) : "";
  if (marca.empty() && EsOculto(limpio)) {
    if (motor_->roles().OcultaTarjetas()) return texto;
    throw com::Error(com::error::kArgumento, "Escriba completo el dato de la tarjeta: no se conoce el que se ocultó");
  }
  const Llave& llave = LlaveParaCifrar();
  if (marca.empty()) return Sellado(llave, texto, clase);
  if (HuellaDeMarca(marca) == llave.Huella()) return marca;
  return Sellado(llave, Abierta(marca, true).value_or(""), clase);
}

std::string ConexionCifrada::Cifra(std::string_view sentencia, bool conPreguntas, Parametros& parametros) {
  std::string cifrada(sentencia);
  if (!Menciona(sentencia, "tarjeta") && !Menciona(sentencia, "into cliente")) return cifrada;
  Partida& partida = partida_;
  Parte(sentencia, conPreguntas, partida);
  std::vector<ValorDeTarjeta> valores = ValoresDeTarjeta(sentencia, partida);
  // From the last one on, so that the places of those before it stay.
  std::ranges::sort(valores, std::greater<>{}, &ValorDeTarjeta::valor);
  // As they are before any is sealed.
  std::map<std::size_t, Escrita> filas;
  for (const ValorDeTarjeta& v : valores) {
    Escrita& escrita = filas[v.fila];
    if (v.llave) escrita.fila = NombreDeFila(v.columna->tabla, TextoDe(partida, *v.llave, &parametros));
    (v.columna->clase == Llave::Clase::Numero ? escrita.numero : escrita.codigo) =
        com::Recorta(TextoDe(partida, v.valor, &parametros));
  }
  for (const ValorDeTarjeta& v : valores) {
    const ValorPartido& valor = partida.valores[v.valor];
    const auto cifrado = [&](const std::string& texto) { return Cifrado(texto, v.columna->clase, filas[v.fila]); };
    if (valor.pregunta) {
      const std::size_t antes = PreguntasAntes(partida, v.valor);
      if (antes >= parametros.size()) continue;  // the engine says so
      com::Variant& parametro = parametros[antes];
      if (!parametro.EsNulo() && !parametro.EsVacio()) parametro = cifrado(com::CStr(parametro));
    } else {
      const std::string texto = cifrado(SinComillasDobles(valor.texto));
      if (!texto.empty())
        cifrada.replace(static_cast<std::size_t>(valor.texto.data() - sentencia.data()), valor.texto.size(), texto);
    }
  }
  return cifrada;
}

std::optional<std::string> ConexionCifrada::Abierta(std::string_view marca, bool exige) {
  const Llave* llave = BuscaLlave(HuellaDeMarca(marca));
  std::optional<std::string> claro = llave == nullptr ? std::nullopt : llave->Abre(marca);
  if (!claro && exige) SinLlave();
  return claro;
}

std::string ConexionCifrada::Abierto(const std::string& texto, bool exige, std::vector<std::string>& ocultas) {
  std::string abierto, resto = texto;
  for (std::string_view marca = BuscaMarca(resto); !marca.empty(); marca = BuscaMarca(resto)) {
    const auto lugar = static_cast<std::size_t>(marca.data() - resto.data());
    const std::optional<std::string> claro = Abierta(marca, exige);
    abierto += resto.substr(0, lugar);
    if (claro && (!veTarjetas_ || veTarjetas_())) {
      abierto += *claro;
    } else if (claro) {
      ocultas.emplace_back(marca);
      abierto += Enmascara(*claro, ClaseDeMarca(marca));
    }
    resto = resto.substr(lugar + marca.size());
  }
  return abierto + resto;
}

ConexionCifrada::Leida ConexionCifrada::FilaLeida(std::string_view sentencia, const Parametros* parametros) {
  try {
    Parte(sentencia, parametros != nullptr, partida_);
  } catch (const com::Error&) {
    return {};  // the engine took it: an apostrophe in a comment
  }
  const auto fila = FilaDe(partida_);
  if (!fila) return {};
  return {NombreDeFila(fila->tabla, TextoDe(partida_, fila->llave, parametros)), fila->numero, fila->codigo};
}

ado::RecordsetPtr ConexionCifrada::Abre(ado::RecordsetPtr filas, std::string_view sentencia,
                                        const Parametros* parametros) {
  // Of a row that is asked for whole, what cannot be opened is left out.
  const bool todas = sentencia.find('*') != std::string_view::npos;
  if (!Menciona(sentencia, "tarjeta") && !(todas && Menciona(sentencia, "cliente"))) return filas;
  std::vector<com::Variant> celdas;
  const std::size_t columnas = filas->Nombres().size();
  celdas.reserve(columnas * static_cast<std::size_t>(filas->RecordCount()));
  bool cambia = false;
  std::vector<std::string> ocultas;  // of a row
  for (; !filas->Eof(); filas->MoveNext()) {
    ocultas.clear();
    for (std::size_t c = 0; c < columnas; ++c) {
      const com::Variant& celda = filas->Fields(c).Value();
      if (celda.EsTexto() && !BuscaMarca(com::CStr(celda)).empty()) {
        celdas.emplace_back(Abierto(com::CStr(celda), !todas, ocultas));
        cambia = true;
      } else {
        celdas.push_back(celda);
      }
    }
    const bool una = filas->RecordCount() == 1;
    // A row that was shown masked may have no card now.
    if (ocultas.empty() && (cambia || !una || mostradas_.empty())) continue;
    Recuerda(una ? FilaLeida(sentencia, parametros) : Leida{}, ocultas);
  }
  if (!cambia) {
    if (filas->RecordCount() > 0) filas->MoveFirst();
    return filas;
  }
  return std::make_shared<ado::Recordset>(std::make_shared<const ado::Recordset::Columnas>(filas->Nombres()),
                                          std::move(celdas));
}

}  // namespace

std::shared_ptr<ConexionDeMotor> CifraTarjetas(std::shared_ptr<ConexionDeMotor> motor, const OpcionesConexion& opciones,
                                               const Reloj& reloj) {
  return std::make_shared<ConexionCifrada>(std::move(motor), opciones, reloj);
}

void OlvidaCodigos(ConexionDeMotor& conexion, const std::string& folio, const Reloj& reloj) {
  const std::string una = folio.empty() ? "" : " AND Rs_Folio = ?";
  // Before the first day nobody departs.
  const com::Fecha hoy = reloj.Fiable() ? com::SoloFecha(reloj.Ahora()) : com::Fecha{};
  ConexionDeMotor::Parametros dias{hoy}, folios;
  if (!folio.empty()) folios.emplace_back(folio);
  ConexionDeMotor::Parametros deReservacion = dias;
  deReservacion.insert(deReservacion.end(), folios.begin(), folios.end());
  conexion.Consulta(
      "UPDATE Reservacion_Datos_Tarjeta SET Rdt_Codigo_Seguridad = '' WHERE Rdt_Codigo_Seguridad <> '' AND Rs_Folio IN "
      "(SELECT Rs_Folio FROM Reservacion WHERE (Es_Cve_Estado = 'CA' OR Rs_Salida < ?)" +
          una + ")",
      deReservacion);
  // A client is who pays, or the guest.
  const std::string vivas = " FROM Reservacion WHERE Rs_Salida >= ? AND Es_Cve_Estado NOT IN ('CA', 'CE') AND ";
  const std::string suyas = " FROM Reservacion WHERE Rs_Folio <> ''" + una;
  ConexionDeMotor::Parametros deCliente = folios;
  deCliente.insert(deCliente.end(), folios.begin(), folios.end());
  deCliente.insert(deCliente.end(), {dias[0], dias[0]});
  conexion.Consulta(
      "UPDATE Cliente SET Cl_Tarjeta_Codigo_Seguridad = '' WHERE Cl_Tarjeta_Codigo_Seguridad <> '' "
      "AND (Cl_Cve_Cliente IN (SELECT Cl_Cve_Cliente" +
          suyas + ") OR Cl_Cve_Cliente IN (SELECT Rs_Huesped" + suyas +
          ")) AND Cl_Cve_Cliente NOT IN (SELECT Cl_Cve_Cliente" + vivas +
          "Cl_Cve_Cliente IS NOT NULL) AND Cl_Cve_Cliente NOT IN (SELECT Rs_Huesped" + vivas +
          "Rs_Huesped IS NOT NULL)",
      deCliente);
}

void SellaTarjetas(ConexionDeMotor& conexion) {
  if (conexion.roles().OcultaTarjetas()) return;  // they are not this session's to see
  const std::string marca = std::string(kInicioMarca) + "%", numero = std::string(kInicioMarca) + "n:%";
  // Rows are written only as they were found: they may have been changed since.
  const auto sella = [&](const ColumnaDeTarjeta& c, const std::string& cuales,
                         const ConexionDeMotor::Parametros& parametros, bool iguales) {
    const std::string tabla(c.tabla), columna(c.columna), llave(c.llave);
    const ado::RecordsetPtr rs =
        conexion.Consulta("SELECT " + llave + ", " + columna + " FROM " + tabla + " WHERE " + cuales, parametros);
    for (; !rs->Eof(); rs->MoveNext()) {
      const com::Variant clave = rs->Fields(0).Value(), valor = rs->Fields(1).Value();
      if (EsOculto(com::TextoDe(valor))) continue;
      ConexionDeMotor::Parametros suyos{valor, clave};
      if (iguales) suyos.push_back(valor);
      if (!iguales) suyos.insert(suyos.end(), parametros.begin(), parametros.end());
      conexion.Consulta("UPDATE " + tabla + " SET " + columna + " = ? WHERE " + llave + " = ? AND " +
                            (iguales ? columna + " = ?" : cuales),
                        suyos);
    }
  };
  for (const ColumnaDeTarjeta& c : ColumnasDeTarjeta()) {
    const std::string columna(c.columna);
    sella(c, columna + " <> '' AND " + columna + " NOT LIKE ?", {marca}, true);
    // A server that may hide numbers is told what it may show of them.
    if (conexion.Motor() == esquema::Motor::PostgreSQL && c.clase == Llave::Clase::Numero)
      sella(c, columna + " LIKE ? AND " + columna + " NOT LIKE ? AND " + columna + " NOT LIKE ?",
            {numero, "%:____}", "%:}"}, false);
  }
}

}  // namespace autonomo
