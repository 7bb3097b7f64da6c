#include "host/standalone/traslado.h"

#include <QByteArray>
#include <QCryptographicHash>
#include <algorithm>
#include <array>
#include <cstdio>
#include <cstring>
#include <functional>
#include <optional>
#include <string>

#include "host/contract/parametros.h"
#include "platform/ado/literal.h"
#include "platform/com/error.h"
#include "platform/com/variant.h"
#include "schema/esquema.h"

namespace autonomo {
namespace {

// Rows that are held in memory at once, more when they share one key.
constexpr int kRenglones = 5000;

using Parametros = ConexionDeMotor::Parametros;

std::string Columnas(const esquema::Tabla& tabla) {
  std::string lista;
  for (const auto& c : tabla.columnas) lista.append(lista.empty() ? "" : ", ").append(c.nombre);
  return lista;
}

// The column by whose index a table is walked through.
std::string Guia(const esquema::Tabla& tabla) {
  return std::string(tabla.llave.empty() ? tabla.indices.front().front() : tabla.llave.front());
}

std::string Literal(const com::Variant& valor) { return "'" + ado::Literal(com::CStr(valor)) + "'"; }

// Hands on a table's rows, page by page. A page ends with the last row of a key: in the engine's own order, so that
// nothing rests on how texts compare.
void Recorre(ConexionDeMotor& base, const esquema::Tabla& tabla,
             const std::function<void(const ado::Recordset&)>& renglon) {
  const std::string guia = Guia(tabla), nombre(tabla.nombre),
                    lee = "SELECT " + Columnas(tabla) + " FROM " + nombre + " WHERE " + guia;
  const auto pagina = [&](const std::string& condicion, const Parametros& parametros) {
    const auto filas = base.Consulta(lee + condicion, parametros);
    for (; !filas->Eof(); filas->MoveNext()) renglon(*filas);
  };
  pagina(" IS NULL", {});
  std::optional<com::Variant> desde;
  for (bool ultima = false; !ultima;) {
    const std::string tras = " WHERE " + guia + (desde ? " > " + Literal(*desde) : " IS NOT NULL");
    const auto limite = base.Directa("SELECT " + guia + " FROM " + nombre + tras + " ORDER BY " + guia +
                                     " LIMIT 1 OFFSET " + std::to_string(kRenglones - 1));
    ultima = limite->Eof();
    const com::Variant hasta = ultima ? com::Variant() : limite->Fields(0).Value();
    if (ultima) {
      desde ? pagina(" > ?", {*desde}) : pagina(" IS NOT NULL", {});
    } else {
      desde ? pagina(" > ? AND " + guia + " <= ?", {*desde, hasta}) : pagina(" <= ?", {hasta});
    }
    desde = hasta;
  }
}

// --- comparison

// A value as every engine gives it: money in ten-thousandths, dates as dates, texts without the blanks at their end.
std::string Canonico(const com::Variant& valor, esquema::Tipo tipo) {
  using enum esquema::Tipo;
  if (valor.EsNulo() || valor.EsVacio()) return "nulo";
  if (valor.EsNumero()) {
    std::array<char, 64> texto{};
    const int largo = std::snprintf(texto.data(), texto.size(), tipo == Dinero ? "#%.4f" : "#%.17g", com::CDbl(valor));
    return {texto.data(), std::min(static_cast<std::size_t>(largo), texto.size() - 1)};
  }
  if (const auto* fecha = std::get_if<com::Fecha>(&valor.Contenido())) return "@" + com::AIso(*fecha);
  return "'" + com::RecortaDerecha(com::CStr(valor));
}

// Sum of what identifies each row, in whatever order they come.
struct Suma {
  std::array<std::uint64_t, 4> huella{};
  std::int64_t filas = 0;

  void Agrega(const ado::Recordset& fila, const esquema::Tabla& tabla) {
    QCryptographicHash hash(QCryptographicHash::Sha256);
    for (std::size_t i = 0; i < tabla.columnas.size(); ++i) {
      const std::string valor = Canonico(fila.Fields(i).Value(), tabla.columnas[i].tipo);
      hash.addData(QByteArray(valor.c_str(), static_cast<qsizetype>(valor.size() + 1)));
    }
    const QByteArray bytes = hash.result();
    for (std::size_t i = 0; i < huella.size(); ++i) {
      std::uint64_t parte = 0;
      std::memcpy(&parte, bytes.constData() + i * sizeof parte, sizeof parte);
      huella[i] += parte;
    }
    ++filas;
  }
  bool operator==(const Suma&) const = default;
};

// --- the tables

// What guards look at and what they write comes last: no guard is in force while rows arrive, and the versions that
// they count give way to the hotel's own.
std::vector<const esquema::Tabla*> EnOrden() {
  std::vector<const esquema::Tabla*> tablas;
  for (const auto& t : esquema::Tablas()) tablas.push_back(&t);
  std::stable_partition(tablas.begin(), tablas.end(),
                        [](const auto* t) { return t->nombre != "Parametro" && t->nombre != "Reservacion_Version"; });
  return tablas;
}

Suma Copia(ConexionDeMotor& de, ConexionDeMotor& a, const esquema::Tabla& tabla) {
  std::string preguntas = "?";
  for (std::size_t i = 1; i < tabla.columnas.size(); ++i) preguntas += ", ?";
  const std::string inserta =
      "INSERT INTO " + std::string(tabla.nombre) + " (" + Columnas(tabla) + ") VALUES (" + preguntas + ")";
  a.Consulta("DELETE FROM " + std::string(tabla.nombre));
  Suma suma;
  Recorre(de, tabla, [&](const ado::Recordset& fila) {
    Parametros valores;
    for (std::size_t i = 0; i < tabla.columnas.size(); ++i) valores.push_back(fila.Fields(i).Value());
    a.Consulta(inserta, valores);
    suma.Agrega(fila, tabla);
  });
  const std::string sigue = esquema::ContinuaIdentidad(a.Motor(), tabla);
  if (!sigue.empty()) a.Directa(sigue);
  return suma;
}

// A transaction of one database, undone unless it is concluded. What it reads is of one moment, whoever writes
// meanwhile.
class Tramo {
 public:
  explicit Tramo(ConexionDeMotor& base) : base_(base) {
    if (base_.Motor() == esquema::Motor::PostgreSQL) {
      base_.Directa("BEGIN ISOLATION LEVEL REPEATABLE READ");
    } else {
      base_.BeginTrans();
    }
  }
  ~Tramo() {
    try {
      if (base_.EnTransaccion()) base_.RollbackTrans();
    } catch (const com::Error&) {  // it ends with the connection
    }
  }
  Tramo(const Tramo&) = delete;
  Tramo& operator=(const Tramo&) = delete;

 private:
  ConexionDeMotor& base_;
};

}  // namespace

bool EsNueva(ConexionDeMotor& base) {
  return std::ranges::all_of(esquema::Tablas(), [&](const esquema::Tabla& t) {
    const bool propios = t.nombre == "Parametro";
    const auto filas = base.Consulta(
        "SELECT COUNT(*) AS Cantidad FROM " + std::string(t.nombre) + (propios ? " WHERE Pm_Clave <> ?" : ""),
        propios ? Parametros{anfitrion::parametro::kSobreventa.clave} : Parametros{});
    return com::CDbl(filas->Fields(0).Value()) == 0;
  });
}

std::vector<std::pair<std::string_view, std::int64_t>> Traslada(ConexionDeMotor& de, ConexionDeMotor& a) {
  if (de.roles().OcultaTarjetas() || a.roles().OcultaTarjetas()) {
    throw com::Error(com::error::kSoloLectura,
                     "El usuario de la base de datos no puede ver las tarjetas, y la copia las perdería: cópiela con "
                     "uno que tenga ese derecho");
  }
  const Tramo lectura(de), escritura(a);
  if (!EsNueva(a)) throw com::Error(com::error::kArgumento, "La base de destino no está vacía: ya tiene un hotel");
  a.Consulta("DELETE FROM Parametro");
  const auto tablas = EnOrden();
  std::vector<Suma> enviadas;
  enviadas.reserve(tablas.size());
  for (const auto* t : tablas) enviadas.push_back(Copia(de, a, *t));
  std::vector<std::pair<std::string_view, std::int64_t>> filas;
  for (std::size_t i = 0; i < tablas.size(); ++i) {
    Suma llegadas;
    Recorre(a, *tablas[i], [&](const ado::Recordset& fila) { llegadas.Agrega(fila, *tablas[i]); });
    if (llegadas != enviadas[i]) {
      throw com::Error(com::error::kBaseDatos, "La tabla " + std::string(tablas[i]->nombre) + " no llegó igual (" +
                                                   std::to_string(enviadas[i].filas) + " renglones salieron y " +
                                                   std::to_string(llegadas.filas) + " llegaron): no se copió nada");
    }
    filas.emplace_back(tablas[i]->nombre, llegadas.filas);
  }
  a.CommitTrans();
  return filas;
}

}  // namespace autonomo
