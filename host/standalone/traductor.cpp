#include "host/standalone/traductor.h"

#include <algorithm>
#include <array>

#include "host/standalone/dialecto.h"
#include "host/standalone/fichas.h"

namespace autonomo {
namespace {

using esquema::Motor;

// Half-open range of tokens.
struct Rango {
  std::size_t desde, hasta;
};

struct Cambio {
  std::size_t inicio, fin;  // bytes of the statement that are replaced
  std::string texto;
  int lugar = 0;  // order among those at one place
};
constexpr int kLugarDeOrden = 1, kLugarDeLimite = 2;

class Traductor {
 public:
  Traductor(std::string_view s, Motor motor, ModoTraduccion modo)
      : s_(s), d_(DialectoDe(motor)), modo_(modo), f_(LeeFichas(s, modo.admitePreguntas)) {}

  Traduccion Hace() {
    Empareja();
    RevisaInstruccion();
    if (d_.ordenaPorLlaves) OrdenaPorLlaves();
    for (std::size_t i = 0; i < f_.size(); ++i) RevisaYCambia(i);
    for (std::size_t i = 0; i < f_.size(); ++i) Opera(i);
    AnotaFechas();
    return {Escribe(), std::move(parametros_), std::move(fechas_)};
  }

 private:
  // --- structure

  // Fills the partner of each parenthesis; takes an ending semicolon for what it is and refuses what follows one.
  void Empareja() {
    if (!f_.empty() && f_.back().clase == Clase::Fin) f_.pop_back();
    if (f_.empty()) Rechaza(s_, 0, "la sentencia está vacía");
    pareja_.assign(f_.size(), 0);
    std::vector<std::size_t> abiertas;
    for (std::size_t i = 0; i < f_.size(); ++i) {
      if (f_[i].clase == Clase::Fin) Rechaza(s_, f_[i].inicio, "no se admite una segunda sentencia");
      if (f_[i].clase == Clase::Abre) abiertas.push_back(i);
      if (f_[i].clase != Clase::Cierra) continue;
      if (abiertas.empty()) Rechaza(s_, f_[i].inicio, "paréntesis sin abrir");
      pareja_[i] = abiertas.back();
      pareja_[abiertas.back()] = i;
      abiertas.pop_back();
    }
    if (!abiertas.empty()) Rechaza(s_, f_[abiertas.back()].inicio, "paréntesis sin cerrar");
  }

  bool Es(std::size_t i, Clase clase) const { return i < f_.size() && f_[i].clase == clase; }
  bool EsPalabra(std::size_t i, std::string_view texto) const { return Es(i, Clase::Palabra) && f_[i].texto == texto; }
  bool EsAlguna(std::size_t i, std::initializer_list<std::string_view> textos) const {
    return Es(i, Clase::Palabra) && std::ranges::find(textos, std::string_view(f_[i].texto)) != textos.end();
  }
  [[noreturn]] void RechazaFicha(std::size_t i, const std::string& que) const { Rechaza(s_, f_[i].inicio, que); }

  // Token after the group or call that begins at i, else the next one.
  std::size_t Salta(std::size_t i) const { return Es(i, Clase::Abre) ? pareja_[i] + 1 : i + 1; }

  // One statement of a known kind, without another behind it.
  void RevisaInstruccion() {
    constexpr std::array<std::string_view, 4> kInstrucciones{"SELECT", "INSERT", "UPDATE", "DELETE"};
    const auto instruccion = [&](std::size_t i) {
      return Es(i, Clase::Palabra) && std::ranges::find(kInstrucciones, f_[i].texto) != kInstrucciones.end();
    };
    if (!instruccion(0)) RechazaFicha(0, "no se admite la instrucción " + f_[0].texto);
    const bool inserta = EsPalabra(0, "INSERT"), consulta = EsPalabra(0, "SELECT");
    for (std::size_t i = 1; i < f_.size(); ++i) {
      const bool lugarDeSelect =
          EsPalabra(i, "SELECT") && (inserta || Es(i - 1, Clase::Abre) || EsAlguna(i - 1, {"UNION", "ALL"}));
      if (instruccion(i) && !lugarDeSelect) RechazaFicha(i, "no se admite una segunda sentencia");
      if (EsPalabra(i, "INTO") && consulta) RechazaFicha(i, "no se admite SELECT INTO");
    }
    if (consulta || inserta) return;
    // The target's rows alone: a join in an UPDATE or DELETE means another thing to each engine.
    const std::size_t desde = EsPalabra(0, "DELETE") && EsPalabra(1, "FROM") ? 2 : 1;
    for (std::size_t i = desde; i < f_.size(); i = Salta(i))
      if (EsAlguna(i, {"FROM", "JOIN"})) RechazaFicha(i, "no se admite " + f_[i].texto + " en " + f_[0].texto);
  }

  // --- order of rows

  void OrdenaPorLlaves() {
    if (!EsPalabra(0, "SELECT")) return;
    std::size_t desde = 0;
    for (std::size_t i = 1; i < f_.size(); i = Salta(i)) {
      if (EsAlguna(i, {"ORDER", "GROUP", "UNION"})) return;
      if (desde == 0 && EsPalabra(i, "FROM")) desde = i;
    }
    if (desde == 0 || Resume(desde)) return;
    const std::string orden = EsPalabra(1, "DISTINCT") ? ColumnasDeLista(desde) : LlavesDeTablas(desde);
    if (!orden.empty()) Cambia(f_.back().fin, f_.back().fin, " ORDER BY " + orden, kLugarDeOrden);
  }

  // Whether the select list before `from` makes one row of many.
  bool Resume(std::size_t from) const {
    for (std::size_t i = 1; i < from; ++i) {
      if (!Es(i, Clase::Nombre) || !Es(i + 1, Clase::Abre)) continue;
      for (const std::string_view f : {"COUNT", "SUM", "AVG", "MIN", "MAX"})
        if (f_[i].texto == f) return true;
    }
    return false;
  }

  // "1, 2, 3"; nothing when the list has a star.
  std::string ColumnasDeLista(std::size_t from) const {
    std::string orden = "1";
    int n = 1;
    for (std::size_t i = 2; i < from; i = Salta(i)) {
      if (Es(i, Clase::Coma)) orden += ", " + std::to_string(++n);
      if (Es(i, Clase::Aritmetica) && f_[i].texto == "*" && !EsBinario(i)) return {};
    }
    return orden;
  }

  std::string LlavesDeTablas(std::size_t from) const {
    std::string orden;
    for (std::size_t i = from; i < f_.size() && !EsPalabra(i, "WHERE"); i = Salta(i)) {
      if (!EsAlguna(i, {"FROM", "JOIN"}) && !Es(i, Clase::Coma)) continue;
      const esquema::Tabla* tabla = Es(i + 1, Clase::Nombre) ? esquema::BuscaTabla(f_[i + 1].texto) : nullptr;
      if (tabla == nullptr || (tabla->llave.empty() && tabla->indices.empty())) continue;
      const std::size_t alias = EsPalabra(i + 2, "AS") ? i + 3 : i + 2;
      const std::string nombre = Es(alias, Clase::Nombre) ? f_[alias].texto : std::string(tabla->nombre);
      for (const std::string_view columna : tabla->llave.empty() ? tabla->indices.front() : tabla->llave)
        orden += (orden.empty() ? "" : ", ") + nombre + "." + std::string(columna);
    }
    return orden;
  }

  // --- token by token

  void RevisaYCambia(std::size_t i) {
    switch (f_[i].clase) {
      case Clase::Palabra:
        return CambiaPalabra(i);
      case Clase::Nombre:
        return CambiaNombre(i);
      case Clase::Literal:
        if (modo_.literalesSonParametros) {
          Cambia(f_[i].inicio, f_[i].fin, "?");
          parametros_.push_back(Origen::Literal);
        }
        return;
      case Clase::Pregunta:
        parametros_.push_back(Origen::Pregunta);
        return;
      default:
        return;
    }
  }

  void CambiaPalabra(std::size_t i) {
    const Palabra& palabra = *BuscaPalabra(f_[i].texto);
    if (Es(i + 1, Clase::Abre) && !palabra.antesDeGrupo) {
      RechazaFicha(i, (palabra.texto == "TOP" ? "solo se admite un número después de " : "no se admite la función ") +
                          f_[i].texto);
    }
    if (palabra.texto == "TOP") return CambiaTop(i);
    if (palabra.texto == "INNER" && Es(i + 2, Clase::Nombre) && f_[i + 2].texto == d_.juntaEnOrden)
      Cambia(f_[i].inicio, f_[i].fin, "CROSS");
    if (palabra.texto == "LIKE" && d_.like != "LIKE") CambiaLike(i);
    if (i == 0 && !d_.omiteFromInto) {
      if (palabra.texto == "DELETE" && Es(1, Clase::Nombre)) Cambia(f_[0].fin, f_[0].fin, " FROM");
      if (palabra.texto == "INSERT" && Es(1, Clase::Nombre)) Cambia(f_[0].fin, f_[0].fin, " INTO");
    }
  }

  void CambiaLike(std::size_t i) {
    const bool no = i > 0 && EsPalabra(i - 1, "NOT");
    Cambia(f_[no ? i - 1 : i].inicio, f_[i].fin, std::string(no ? d_.noLike : d_.like));
    std::size_t fin = FinDe(i + 1);
    while (Es(fin, Clase::Suma)) fin = FinDe(fin + 1);
    fin = std::min(fin, f_.size());
    if (fin <= i + 2) return;
    Cambia(f_[i + 1].inicio, f_[i + 1].inicio, "(");
    Cambia(f_[fin - 1].fin, f_[fin - 1].fin, ")");
  }

  // TOP n goes to the end of its select.
  void CambiaTop(std::size_t i) {
    const bool lugar = i > 0 && EsAlguna(i - 1, {"SELECT", "DISTINCT", "ALL"});
    if (!lugar || !Es(i + 1, Clase::Numero)) RechazaFicha(i, "solo se admite un número después de TOP");
    if (!d_.limitaAlFinal) return;
    std::size_t fin = i;
    while (fin < f_.size() && !Es(fin, Clase::Cierra)) {
      if (EsPalabra(fin, "UNION")) RechazaFicha(i, "no se admite TOP con UNION");
      fin = Salta(fin);
    }
    Cambia(f_[i].inicio, f_[i + 2 < f_.size() ? i + 2 : i + 1].inicio, "");
    const std::size_t byte = fin < f_.size() ? f_[fin].inicio : f_.back().fin;
    Cambia(byte, byte, " LIMIT " + f_[i + 1].texto, kLugarDeLimite);
  }

  bool EsTablaDeInsert(std::size_t i) const { return i > 0 && EsAlguna(i - 1, {"INTO", "INSERT"}); }

  void CambiaNombre(std::size_t i) {
    const bool llamada = Es(i + 1, Clase::Abre) && !EsTablaDeInsert(i);
    const Funcion* funcion = llamada ? BuscaFuncion(f_[i].texto) : nullptr;
    if (llamada && (funcion == nullptr || Es(i - 1, Clase::Punto)))
      RechazaFicha(i, "no se admite la función " + f_[i].texto);
    if (!llamada && EsPalabraAjena(f_[i].texto)) RechazaFicha(i, "no se admite la palabra " + f_[i].texto);
    if (funcion != nullptr) CambiaFuncion(i, *funcion);
  }

  void CambiaFuncion(std::size_t i, const Funcion& funcion) {
    const std::size_t abre = i + 1, cierra = pareja_[abre];
    const std::size_t argumentos = Argumentos(abre).size();
    if (argumentos < funcion.minimo || argumentos > funcion.maximo)
      RechazaFicha(i, "número de argumentos de la función " + f_[i].texto);
    if (funcion.nombre == "GETDATE") {
      Cambia(f_[i].inicio, f_[cierra].fin, std::string(d_.ahora));
      parametros_.push_back(Origen::Ahora);
      return;
    }
    const Forma& forma = funcion.*d_.forma;
    if (!forma.nombre.empty()) Cambia(f_[i].inicio, f_[i].fin, std::string(forma.nombre));
    const std::string cierre = std::string(forma.cierre).append(Comparacion(i, cierra));
    if (cierre != ")") Cambia(f_[cierra].inicio, f_[cierra].fin, cierre);
  }

  // Collation that a call needs where its value is compared.
  std::string_view Comparacion(std::size_t desde, std::size_t cierra) const {
    const auto compara = [&](std::size_t i) {
      return Es(i, Clase::Comparacion) || EsAlguna(i, {"IN", "NOT", "BETWEEN", "LIKE"});
    };
    if (!compara(cierra + 1) && !(desde > 0 && compara(desde - 1))) return "";
    switch (ValorDe({desde, cierra + 1})) {
      case Valor::Texto:
        return d_.comparaTexto;
      case Valor::Fecha:
        return d_.comparaFecha;
      default:
        return "";
    }
  }

  // --- values and operators

  // Ranges of the arguments of a call whose parenthesis opens at `abre`.
  std::vector<Rango> Argumentos(std::size_t abre) const {
    const std::size_t cierra = pareja_[abre];
    std::vector<Rango> r;
    if (cierra == abre + 1) return r;
    std::size_t desde = abre + 1;
    for (std::size_t i = desde; i < cierra; i = Salta(i)) {
      if (!Es(i, Clase::Coma)) continue;
      r.push_back({desde, i});
      desde = i + 1;
    }
    r.push_back({desde, cierra});
    return r;
  }

  bool TerminaOperando(std::size_t i) const {
    switch (f_[i].clase) {
      case Clase::Nombre:
      case Clase::Numero:
      case Clase::Literal:
      case Clase::Pregunta:
      case Clase::Cierra:
        return true;
      default:
        return EsAlguna(i, {"END", "NULL"});
    }
  }
  bool EsOperador(std::size_t i) const { return Es(i, Clase::Suma) || Es(i, Clase::Aritmetica); }
  // An operator between two operands: neither a sign, nor the star of COUNT(*) or "*".
  bool EsBinario(std::size_t i) const { return EsOperador(i) && i > 0 && i + 1 < f_.size() && TerminaOperando(i - 1); }

  // First token of the operand that ends at `fin`.
  std::size_t PrincipioDe(std::size_t fin) const {
    std::size_t i = fin;
    if (Es(i, Clase::Cierra)) {
      i = pareja_[i];
      if (i > 0 && Es(i - 1, Clase::Nombre)) --i;
    } else if (EsPalabra(i, "END")) {
      for (std::size_t casos = 1; casos > 0 && i > 0;) {
        --i;
        casos += EsPalabra(i, "END") ? 1U : 0U;
        casos -= EsPalabra(i, "CASE") ? 1U : 0U;
      }
    } else if (Es(i, Clase::Nombre)) {
      while (i > 1 && Es(i - 1, Clase::Punto) && Es(i - 2, Clase::Nombre)) i -= 2;
    }
    return i;
  }

  // Token after the operand that begins at `desde`.
  std::size_t FinDe(std::size_t desde) const {
    std::size_t i = desde;
    while (i < f_.size() && EsOperador(i)) ++i;
    if (i >= f_.size()) return i;
    if (Es(i, Clase::Abre)) return pareja_[i] + 1;
    if (Es(i, Clase::Nombre)) {
      while (Es(i + 1, Clase::Punto) && i + 2 < f_.size()) i += 2;
      return Es(i + 1, Clase::Abre) ? pareja_[i + 1] + 1 : i + 1;
    }
    if (EsPalabra(i, "CASE")) {
      for (std::size_t casos = 1; casos > 0 && i + 1 < f_.size();) {
        ++i;
        casos += EsPalabra(i, "CASE") ? 1U : 0U;
        casos -= EsPalabra(i, "END") ? 1U : 0U;
      }
    }
    return i + 1;
  }

  // Value of one operand.
  Valor ValorDeOperando(Rango r) const {
    while (r.desde < r.hasta && EsOperador(r.desde)) ++r.desde;
    if (r.desde >= r.hasta) return Valor::Desconocido;
    const Ficha& primera = f_[r.desde];
    switch (primera.clase) {
      case Clase::Literal:
        return Valor::Texto;
      case Clase::Numero:
        return Valor::Numero;
      case Clase::Abre:
        return ValorDe({r.desde + 1, pareja_[r.desde]});
      case Clase::Nombre:
        break;
      default:
        return Valor::Desconocido;
    }
    if (Es(r.desde + 1, Clase::Abre)) {
      const Funcion* funcion = BuscaFuncion(primera.texto);
      if (funcion == nullptr) return Valor::Desconocido;
      if (funcion->valor != Valor::DelPrimero) return funcion->valor;
      const auto argumentos = Argumentos(r.desde + 1);
      return argumentos.empty() ? Valor::Desconocido : ValorDe(argumentos.front());
    }
    return ValorDeColumna(f_[r.hasta - 1].texto);
  }

  static Valor ValorDeColumna(std::string_view nombre) {
    const auto* columna = esquema::BuscaColumna(nombre);
    if (columna == nullptr) return Valor::Desconocido;
    switch (columna->tipo) {
      case esquema::Tipo::Clave:
      case esquema::Tipo::Texto:
      case esquema::Tipo::Nota:
        return Valor::Texto;
      case esquema::Tipo::Entero:
      case esquema::Tipo::Numero:
      case esquema::Tipo::Dinero:
      case esquema::Tipo::Factor:
        return Valor::Numero;
      case esquema::Tipo::Fecha:
      case esquema::Tipo::FechaHora:
        return Valor::Fecha;
    }
    return Valor::Desconocido;
  }

  // Value of an expression of operands and arithmetic: text before date before number.
  Valor ValorDe(Rango r) const {
    Valor valor = Valor::Desconocido;
    for (std::size_t i = r.desde; i < r.hasta;) {
      const std::size_t fin = FinDe(i);
      const Valor uno = fin <= r.hasta ? ValorDeOperando({i, fin}) : Valor::Desconocido;
      if (uno == Valor::Texto || valor == Valor::Desconocido || (uno == Valor::Fecha && valor == Valor::Numero))
        valor = uno == Valor::Desconocido ? valor : uno;
      if (fin < r.hasta && !EsOperador(fin)) return Valor::Desconocido;
      i = fin + 1;
    }
    return valor;
  }

  // Checks the operands of a binary operator; the first "+" of a chain decides for the whole chain.
  void Opera(std::size_t i) {
    if (!EsBinario(i)) return;
    const std::size_t principio = PrincipioDe(i - 1);
    if (!Es(i, Clase::Suma)) {
      if (!Es(i + 1, Clase::Coma)) OperaNumeros(i, {principio, i}, {i + 1, FinDe(i + 1)});
      return;
    }
    if (principio > 0 && EsBinario(principio - 1) && Es(principio - 1, Clase::Suma)) return;
    std::vector<std::size_t> sumas;
    std::vector<Rango> operandos{{principio, i}};
    std::size_t fin = i;
    while (Es(fin, Clase::Suma)) {
      sumas.push_back(fin);
      operandos.push_back({fin + 1, FinDe(fin + 1)});
      fin = operandos.back().hasta;
    }
    const bool conOtros = (principio > 0 && EsBinario(principio - 1)) || Es(fin, Clase::Aritmetica);
    Suma(sumas, operandos, conOtros);
  }

  void OperaNumeros(std::size_t i, Rango izquierda, Rango derecha) {
    for (const Rango r : {izquierda, derecha}) {
      const Valor valor = ValorDeOperando(r);
      if (valor == Valor::Fecha) RechazaFicha(i, "no se admite la aritmética con fechas");
      if (valor == Valor::Texto) RechazaFicha(i, "no se admite la aritmética con textos");
    }
  }

  void Suma(const std::vector<std::size_t>& sumas, const std::vector<Rango>& operandos, bool conOtros) {
    bool texto = false, numero = false;
    for (const auto& r : operandos) {
      const Valor valor = ValorDeOperando(r);
      if (valor == Valor::Fecha) RechazaFicha(sumas.front(), "no se admite la aritmética con fechas");
      texto = texto || valor == Valor::Texto;
      numero = numero || valor == Valor::Numero;
    }
    if (texto && (numero || conOtros)) RechazaFicha(sumas.front(), "no se admite la suma de textos con números");
    if (!texto && !numero && !conOtros) RechazaFicha(sumas.front(), "no se sabe si la suma es de textos o de números");
    if (!texto || d_.concatena == "+") return;
    for (const std::size_t i : sumas) Cambia(f_[i].inicio, f_[i].fin, std::string(d_.concatena));
  }

  // --- select list

  void AnotaFechas() {
    if (!EsPalabra(0, "SELECT")) return;
    std::size_t desde = 1, i = 1;
    for (; i < f_.size() && !EsPalabra(i, "FROM"); i = Salta(i)) {
      if (!Es(i, Clase::Coma)) continue;
      AnotaFecha({desde, i});
      desde = i + 1;
    }
    AnotaFecha({desde, i});
  }

  void AnotaFecha(Rango r) {
    if (r.desde < r.hasta && EsPalabra(r.desde, "DISTINCT")) ++r.desde;
    if (r.hasta - r.desde < 2 || !Es(r.hasta - 1, Clase::Nombre) || Es(r.hasta - 2, Clase::Punto)) return;
    const std::string_view alias = s_.substr(f_[r.hasta - 1].inicio, f_[r.hasta - 1].fin - f_[r.hasta - 1].inicio);
    r.hasta -= EsPalabra(r.hasta - 2, "AS") ? 2 : 1;
    if (r.desde < r.hasta && ValorDe(r) == Valor::Fecha) fechas_.emplace_back(alias);
  }

  // --- output

  void Cambia(std::size_t inicio, std::size_t fin, std::string texto, int lugar = 0) {
    cambios_.push_back({inicio, fin, std::move(texto), lugar});
  }

  std::string Escribe() {
    std::ranges::stable_sort(cambios_, {}, [](const Cambio& c) { return std::pair(c.inicio, c.lugar); });
    std::string salida;
    std::size_t hasta = 0;
    for (const auto& c : cambios_) {
      salida.append(s_.substr(hasta, c.inicio - hasta)).append(c.texto);
      hasta = c.fin;
    }
    return salida.append(s_.substr(hasta));
  }

  std::string_view s_;
  const Dialecto& d_;
  ModoTraduccion modo_;
  std::vector<Ficha> f_;
  std::vector<std::size_t> pareja_;
  std::vector<Cambio> cambios_;
  std::vector<Origen> parametros_;
  std::vector<std::string> fechas_;
};

}  // namespace

Traduccion Traduce(std::string_view sentencia, Motor motor, ModoTraduccion modo) {
  return Traductor(sentencia, motor, modo).Hace();
}

}  // namespace autonomo
