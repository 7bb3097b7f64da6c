#include "recepcion/borrador.h"

#include <algorithm>
#include <iterator>

#include "platform/com/error.h"
#include "platform/com/texto.h"
#include "platform/com/variant.h"
#include "platform/regional/regional.h"
#include "publico/controles.h"
#include "recepcion/lectura.h"
#include "recepcion/pasos.h"

namespace recepcion {

namespace {

namespace control = kv207::control;
namespace grupo = kv207::grupo;

constexpr std::string_view kYaGuardada =
    "SELECT MAX(Rs_Folio) FROM Reservacion WHERE Rs_Huesped = '?' AND Rs_Llegada = '?' AND Rs_Salida = '?' "
    "AND Rs_Fecha >= '?' AND Es_Cve_Estado NOT IN ('CA','CE')";

[[noreturn]] void Rechaza(const std::string& motivo) { throw com::Error(com::error::kArgumento, motivo); }

std::string TextoDeCampo(const controles::Formulario& principal, const char* nombre) {
  const auto* campo = controles::Como<controles::LookupField>(principal.Busca(nombre));
  return campo == nullptr ? "" : campo->text();
}

// What a person can type in the control now; nothing for the card's, and for what is shown only.
bool Captado(const controles::Control& control, CampoCaptado& campo) {
  if (control.grupo() == 0 || control.grupo() == grupo::kTarjeta) return false;
  campo = {control.nombre(), {}, false};
  if (const auto* texto = controles::Como<controles::LookupField>(&control)) {
    campo.texto = texto->text();
    campo.pendiente = texto->pendiente();
    return texto->enabled() && !texto->locked();
  }
  if (const auto* fecha = controles::Como<controles::DateField>(&control)) {
    campo.texto = fecha->text();
    return fecha->AceptaEntrada();
  }
  if (const auto* notas = controles::Como<controles::CampoNotas>(&control)) {
    campo.texto = notas->text();
    return notas->enabled() && !notas->locked();
  }
  return false;
}

bool HayTarjeta(const controles::Formulario& principal) {
  return std::ranges::any_of(principal.controles(), [](const controles::Control* c) {
    const auto* campo = controles::Como<controles::LookupField>(c);
    const bool aLaVista = c->contenedor() != nullptr && c->contenedor()->visible();
    return campo != nullptr && c->grupo() == grupo::kTarjeta && aLaVista && !campo->text().empty();
  });
}

std::string TextoDe(const Borrador& borrador, const char* campo) {
  const auto it = std::ranges::find(borrador.campos, campo, &CampoCaptado::nombre);
  return it == borrador.campos.end() ? "" : it->texto;
}

// --- as text: a line for each thing, its parts behind tabs

class Escritor {
 public:
  explicit Escritor(std::string& texto, std::string_view palabra) : texto_(texto) { texto_ += palabra; }
  ~Escritor() { texto_ += '\n'; }
  Escritor(const Escritor&) = delete;
  Escritor& operator=(const Escritor&) = delete;

  Escritor& operator<<(const std::string& parte) {
    texto_ += '\t';
    for (const char c : parte) {
      switch (c) {
        case '\\':
          texto_ += "\\\\";
          break;
        case '\t':
          texto_ += "\\t";
          break;
        case '\n':
          texto_ += "\\n";
          break;
        case '\r':
          texto_ += "\\r";
          break;
        default:
          texto_ += c;
      }
    }
    return *this;
  }
  Escritor& operator<<(bool parte) { return *this << std::string(parte ? "1" : "0"); }
  Escritor& operator<<(double parte) { return *this << com::CStr(com::Variant(parte)); }

 private:
  std::string& texto_;
};

void Escribe(std::string& texto, std::string_view palabra, const Renglon& r) {
  Escritor escritor(texto, palabra);
  escritor << r.acordado;
  for (const auto& celda : kTextosDeRenglon) escritor << r.*celda.dato;
  for (const auto& celda : kImportesDeRenglon) escritor << r.*celda.dato;
}

std::string SinEscape(std::string_view parte) {
  std::string texto;
  for (std::size_t i = 0; i < parte.size(); ++i) {
    if (parte[i] != '\\') {
      texto += parte[i];
      continue;
    }
    if (++i == parte.size()) Rechaza("termina a medias");
    texto += parte[i] == 't' ? '\t' : parte[i] == 'n' ? '\n' : parte[i] == 'r' ? '\r' : parte[i];
  }
  return texto;
}

// The parts of a line, in order; more or fewer than are asked for raise.
class Lector {
 public:
  explicit Lector(std::string_view linea) {
    for (std::size_t fin = 0; fin != std::string_view::npos; linea.remove_prefix(fin + 1)) {
      fin = linea.find('\t');
      partes_.push_back(SinEscape(linea.substr(0, fin)));
      if (fin == std::string_view::npos) break;
    }
  }
  const std::string& palabra() const { return partes_.front(); }
  std::string Texto() {
    if (++leida_ >= partes_.size()) Rechaza("falta un dato en «" + palabra() + "»");
    return partes_[leida_];
  }
  bool SiNo() { return Texto() == "1"; }
  double Numero() { return com::CDbl(com::Variant(Texto())); }
  void Termina() const {
    if (leida_ + 1 != partes_.size()) Rechaza("sobra un dato en «" + palabra() + "»");
  }

 private:
  std::vector<std::string> partes_;
  std::size_t leida_ = 0;
};

Renglon LeeRenglon(Lector& linea) {
  Renglon r;
  r.acordado = linea.SiNo();
  for (const auto& celda : kTextosDeRenglon) r.*celda.dato = linea.Texto();
  for (const auto& celda : kImportesDeRenglon) r.*celda.dato = linea.Numero();
  return r;
}

// --- bringing back

void TecleaCampo(controles::Formulario& principal, const CampoCaptado& campo) {
  controles::Control* control = principal.Busca(campo.nombre);
  CampoCaptado ahora;
  if (control == nullptr || !Captado(*control, ahora) || !control->PuedeEnfocarse()) return;
  if (ahora.texto == campo.texto && ahora.pendiente == campo.pendiente) return;
  principal.Enfoca(*control);
  if (auto* texto = controles::Como<controles::LookupField>(control)) {
    texto->Teclea(campo.texto);
    if (!campo.pendiente && texto->pendiente()) principal.PulsaTecla(controles::tecla::kEnter);
  } else if (auto* fecha = controles::Como<controles::DateField>(control)) {
    fecha->Fija(campo.texto.empty() ? com::Fecha{} : com::SoloFecha(com::CDate(com::Variant(campo.texto))));
  } else if (auto* notas = controles::Como<controles::CampoNotas>(control)) {
    notas->Teclea(campo.texto);
  }
}

std::vector<std::string> CamposQueFaltan(const controles::Formulario& principal, const Borrador& borrador) {
  std::vector<std::string> faltan;
  const Borrador hay = TomaBorrador(principal);
  for (const CampoCaptado& campo : borrador.campos) {
    const std::string ahora = TextoDe(hay, campo.nombre.c_str());
    if (ahora == campo.texto) continue;
    const controles::Control* control = principal.Busca(campo.nombre);
    faltan.push_back((control == nullptr ? campo.nombre : control->descripcion()) + ": «" + campo.texto + "»" +
                     (ahora.empty() ? "" : "; ahora «" + ahora + "»"));
  }
  return faltan;
}

void Empieza(controles::Formulario& principal, const Borrador& borrador, const ManosDelBorrador& manos) {
  const auto* barra = principal.Primero<controles::ScreenToolbar>();
  if (barra == nullptr || barra->EnEdicion()) Rechaza("Hay una reservación en captura");
  if (borrador.folio.empty()) {
    if (!manos.pulsa(controles::Accion::Nuevo) || !barra->EnEdicion()) Rechaza("No se pudo empezar una reservación");
    return;
  }
  static_cast<void>(TecleaFolio(principal, borrador.folio));
  const bool lista = barra->ClaveActual() == borrador.folio && barra->Ofrece(controles::Accion::Editar);
  if (!lista || !manos.pulsa(controles::Accion::Editar) || !barra->EnEdicion()) {
    Rechaza("La reservación " + borrador.folio + " ya no se puede editar");
  }
  if (manos.retoma) manos.retoma(borrador.folio, borrador.visto);
}

}  // namespace

Borrador TomaBorrador(const controles::Formulario& principal) {
  const auto* barra = principal.Primero<controles::ScreenToolbar>();
  if (barra == nullptr || !barra->EnEdicion()) Rechaza("No hay una reservación en captura");
  Borrador borrador;
  borrador.folio = barra->EsNuevo() ? "" : TextoDeCampo(principal, control::kFolio);
  borrador.huesped = TextoDeCampo(principal, control::kNombreHuesped);
  borrador.tarjeta = HayTarjeta(principal);
  for (const controles::Control* control : principal.controles()) {
    CampoCaptado campo;
    if (Captado(*control, campo)) borrador.campos.push_back(std::move(campo));
  }
  borrador.renglones = LeeRenglones(principal);
  return borrador;
}

std::string EnTexto(const Borrador& borrador) {
  std::string texto;
  Escritor(texto, "folio") << borrador.folio;
  Escritor(texto, "visto") << borrador.visto;
  Escritor(texto, "huesped") << borrador.huesped;
  Escritor(texto, "tarjeta") << borrador.tarjeta;
  for (const CampoCaptado& c : borrador.campos) Escritor(texto, "campo") << c.pendiente << c.nombre << c.texto;
  if (!borrador.aMedias.empty()) Escritor(texto, "amedias") << borrador.aMedias << borrador.tecleado;
  for (const Renglon& r : borrador.renglones) Escribe(texto, "renglon", r);
  for (const Renglon& r : borrador.quitados) Escribe(texto, "quitado", r);
  return texto;
}

Borrador DeTexto(std::string_view texto) {
  Borrador borrador;
  while (!texto.empty()) {
    const std::size_t fin = texto.find('\n');
    if (fin == std::string_view::npos) Rechaza("termina a medias");
    Lector linea(texto.substr(0, fin));
    texto.remove_prefix(fin + 1);
    if (linea.palabra() == "folio") {
      borrador.folio = linea.Texto();
    } else if (linea.palabra() == "visto") {
      borrador.visto = linea.Texto();
    } else if (linea.palabra() == "huesped") {
      borrador.huesped = linea.Texto();
    } else if (linea.palabra() == "tarjeta") {
      borrador.tarjeta = linea.SiNo();
    } else if (linea.palabra() == "campo") {
      CampoCaptado campo;
      campo.pendiente = linea.SiNo();
      campo.nombre = linea.Texto();
      campo.texto = linea.Texto();
      borrador.campos.push_back(std::move(campo));
    } else if (linea.palabra() == "amedias") {
      borrador.aMedias = linea.Texto();
      borrador.tecleado = linea.Texto();
    } else if (linea.palabra() == "renglon") {
      borrador.renglones.push_back(LeeRenglon(linea));
    } else if (linea.palabra() == "quitado") {
      borrador.quitados.push_back(LeeRenglon(linea));
    } else {
      Rechaza("no se conoce «" + linea.palabra() + "»");
    }
    linea.Termina();
  }
  if (borrador.campos.empty()) Rechaza("no tiene datos");
  return borrador;
}

std::string Resumen(const Borrador& borrador) {
  std::string texto = borrador.folio.empty() ? "Reservación nueva" : "Reservación " + borrador.folio;
  const std::string huesped = borrador.huesped.empty() ? TextoDe(borrador, control::kHuesped) : borrador.huesped;
  if (!huesped.empty()) texto += ", " + huesped;
  texto += ", " + TextoDe(borrador, control::kLlegada) + " – " + TextoDe(borrador, control::kSalida);
  const std::size_t cuartos = borrador.renglones.size();
  if (cuartos > 0) texto += ", " + std::to_string(cuartos) + (cuartos == 1 ? " habitación" : " habitaciones");
  return texto;
}

std::string YaGuardada(const Borrador& borrador, com::Fecha dia) {
  const std::string huesped = TextoDe(borrador, control::kHuesped);
  const std::string fechas[] = {TextoDe(borrador, control::kLlegada), TextoDe(borrador, control::kSalida)};
  if (!borrador.folio.empty() || huesped.empty() || fechas[0].empty() || fechas[1].empty()) return {};
  const std::string llegada = DiaSql(com::CDate(com::Variant(fechas[0]))),
                    salida = DiaSql(com::CDate(com::Variant(fechas[1])));
  const ado::RecordsetPtr rs = Ejecuta(ado::TextoSQL(kYaGuardada, {Literal(huesped), llegada, salida, DiaSql(dia)}));
  return rs->Eof() ? "" : Celda(*rs, 0);
}

std::vector<std::string> ReponeBorrador(controles::Formulario& principal, const Borrador& borrador,
                                        const ManosDelBorrador& manos) {
  Empieza(principal, borrador, manos);
  for (const CampoCaptado& campo : borrador.campos) {
    try {
      TecleaCampo(principal, campo);
    } catch (const com::Error&) {  // seen in the comparison below
    }
  }
  TecleaRenglones(principal, borrador.renglones);
  std::vector<std::string> faltan = CamposQueFaltan(principal, borrador);
  std::ranges::move(RenglonesQueFaltan(principal, borrador.renglones), std::back_inserter(faltan));
  return faltan;
}

std::string FaltaTarjeta(const Borrador& borrador) {
  return borrador.tarjeta ? "Datos de la tarjeta: no se guardan en el borrador; captúrelos o revíselos" : "";
}

}  // namespace recepcion
