#include "host/standalone/cifrado.h"

#include <algorithm>
#include <map>

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
    if (SoloLee(sentencia)) return Abre(motor_->Consulta(sentencia, parametros), sentencia);
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
  std::string Cifrado(const std::string& texto, Llave::Clase clase);
  std::string Sellado(const Llave& llave, const std::string& texto, Llave::Clase clase) const;
  // The record set with its marks opened; the same one when it has none.
  ado::RecordsetPtr Abre(ado::RecordsetPtr filas, std::string_view sentencia);
  std::string Abierto(const std::string& texto, bool exige);

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
  std::optional<Llave> deLaBase_;               // the one that its cards are sealed with
  std::string testigo_;                         // reads one of them
  com::Variant deQuien_;                        // and its key
  std::map<std::string, std::string> ocultas_;  // masked text, and the mark that it hides: the last one shown
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

std::string ConexionCifrada::Cifrado(const std::string& texto, Llave::Clase clase) {
  const std::string limpio = com::Recorta(texto);
  if (limpio.empty()) return texto;
  const auto oculta = ocultas_.find(limpio);
  if (oculta == ocultas_.end() && EsOculto(limpio) && motor_->roles().OcultaTarjetas()) return texto;
  if (oculta == ocultas_.end() && EsOculto(limpio))
    throw com::Error(com::error::kArgumento, "Escriba completo el dato de la tarjeta: no se conoce el que se ocultó");
  const Llave& llave = LlaveParaCifrar();
  if (oculta == ocultas_.end()) return Sellado(llave, texto, clase);
  if (HuellaDeMarca(oculta->second) == llave.Huella()) return oculta->second;
  return Sellado(llave, Abierta(oculta->second, true).value_or(""), clase);
}

std::string ConexionCifrada::Cifra(std::string_view sentencia, bool conPreguntas, Parametros& parametros) {
  std::string cifrada(sentencia);
  if (!Menciona(sentencia, "tarjeta") && !Menciona(sentencia, "into cliente")) return cifrada;
  Partida& partida = partida_;
  Parte(sentencia, conPreguntas, partida);
  std::vector<ValorDeTarjeta> valores = ValoresDeTarjeta(sentencia, partida);
  // From the last one on, so that the places of those before it stay.
  std::ranges::sort(valores, std::greater<>{}, &ValorDeTarjeta::valor);
  for (const ValorDeTarjeta& v : valores) {
    const ValorPartido& valor = partida.valores[v.valor];
    if (valor.pregunta) {
      const auto antes =
          std::ranges::count_if(partida.valores.begin(), partida.valores.begin() + static_cast<std::ptrdiff_t>(v.valor),
                                [](const ValorPartido& p) { return p.pregunta; });
      if (static_cast<std::size_t>(antes) >= parametros.size()) continue;  // the engine says so
      com::Variant& parametro = parametros[static_cast<std::size_t>(antes)];
      if (!parametro.EsNulo() && !parametro.EsVacio()) parametro = Cifrado(com::CStr(parametro), v.clase);
    } else {
      const std::string texto = Cifrado(SinComillasDobles(valor.texto), v.clase);
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

std::string ConexionCifrada::Abierto(const std::string& texto, bool exige) {
  std::string abierto, resto = texto;
  for (std::string_view marca = BuscaMarca(resto); !marca.empty(); marca = BuscaMarca(resto)) {
    const auto lugar = static_cast<std::size_t>(marca.data() - resto.data());
    const std::optional<std::string> claro = Abierta(marca, exige);
    abierto += resto.substr(0, lugar);
    if (claro && (!veTarjetas_ || veTarjetas_())) {
      abierto += *claro;
    } else if (claro) {
      const std::string oculto = Enmascara(*claro, ClaseDeMarca(marca));
      ocultas_[oculto] = marca;
      abierto += oculto;
    }
    resto = resto.substr(lugar + marca.size());
  }
  return abierto + resto;
}

ado::RecordsetPtr ConexionCifrada::Abre(ado::RecordsetPtr filas, std::string_view sentencia) {
  // Of a row that is asked for whole, what cannot be opened is left out.
  const bool todas = sentencia.find('*') != std::string_view::npos;
  if (!Menciona(sentencia, "tarjeta") && !(todas && Menciona(sentencia, "cliente"))) return filas;
  std::vector<com::Variant> celdas;
  const std::size_t columnas = filas->Nombres().size();
  celdas.reserve(columnas * static_cast<std::size_t>(filas->RecordCount()));
  bool cambia = false;
  for (; !filas->Eof(); filas->MoveNext()) {
    for (std::size_t c = 0; c < columnas; ++c) {
      const com::Variant& celda = filas->Fields(c).Value();
      if (celda.EsTexto() && !BuscaMarca(com::CStr(celda)).empty()) {
        celdas.emplace_back(Abierto(com::CStr(celda), !todas));
        cambia = true;
      } else {
        celdas.push_back(celda);
      }
    }
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
