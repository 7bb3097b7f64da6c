#include "guion/csv.h"

#include <algorithm>

#include "guion/archivos.h"
#include "guion/lineas.h"
#include "host/standalone/letras.h"
#include "platform/com/error.h"
#include "recepcion/plano.h"

namespace guion {

namespace {

constexpr const char* kNoEsUtf8 =
    "no está en UTF-8: guarde el archivo otra vez, en la hoja de cálculo como «CSV UTF-8»";

bool EsBlanco(char c) { return c == ' ' || c == '\t'; }

// Splits the text into records.
class Lector {
 public:
  Lector(std::string_view texto, char separador, std::size_t columnas)
      : texto_(texto), separador_(separador), columnas_(columnas) {}

  bool Lee(RegistroCsv& registro) {
    if (pos_ >= texto_.size()) return false;
    const std::size_t inicio = pos_;
    registro = RegistroCsv{linea_, {}, {}};
    do {
      registro.campos.push_back(Campo(registro.defecto));
    } while (registro.defecto.empty() && Toma(separador_));
    Toma('\r');
    if (pos_ < texto_.size() && !Toma('\n')) Defecto(registro.defecto, "hay texto después de las comillas");
    if (!EsUtf8(texto_.substr(inicio, pos_ - inicio))) Defecto(registro.defecto, kNoEsUtf8);
    RevisaCampos(registro);
    if (registro.defecto.empty()) {
      ++linea_;
    } else {
      SaltaLinea(inicio, registro);
    }
    return true;
  }

 private:
  static void Defecto(std::string& defecto, std::string motivo) {
    if (defecto.empty()) defecto = std::move(motivo);
  }

  bool Toma(char c) {
    if (pos_ >= texto_.size() || texto_[pos_] != c) return false;
    ++pos_;
    return true;
  }

  void SaltaBlancos() {
    while (pos_ < texto_.size() && texto_[pos_] != separador_ && EsBlanco(texto_[pos_])) ++pos_;
  }

  // Blanks around it are no part of it, those between its quotes are.
  std::string Campo(std::string& defecto) {
    std::string campo;
    SaltaBlancos();
    if (!Toma('"')) {
      const char hasta[] = {separador_, '\r', '\n'};
      const std::size_t fin = std::min(texto_.find_first_of({hasta, sizeof hasta}, pos_), texto_.size());
      campo = texto_.substr(pos_, fin - pos_);
      while (!campo.empty() && EsBlanco(campo.back())) campo.pop_back();
      pos_ = fin;
      return campo;
    }
    while (pos_ < texto_.size()) {
      const char c = texto_[pos_++];
      if (c == '"' && !Toma('"')) {
        SaltaBlancos();
        return campo;
      }
      if (c == '\n') ++linea_;
      campo += c;
    }
    Defecto(defecto, "faltan las comillas de cierre");
    return campo;
  }

  // An empty line is no record, and so no faulty one.
  void RevisaCampos(RegistroCsv& registro) const {
    const std::size_t campos = registro.campos.size();
    if (campos == columnas_ || (campos == 1 && registro.campos[0].empty())) return;
    Defecto(registro.defecto, "no tiene los " + std::to_string(columnas_) + " campos: tiene " + std::to_string(campos));
  }

  // The line where the record begins is given up; what follows it is read anew.
  void SaltaLinea(std::size_t inicio, RegistroCsv& registro) {
    const std::size_t fin = std::min(texto_.find('\n', inicio), texto_.size());
    std::string_view linea = texto_.substr(inicio, fin - inicio);
    if (linea.ends_with('\r')) linea.remove_suffix(1);
    registro.campos = {Utf8Saneado(linea)};
    pos_ = std::min(fin + 1, texto_.size());
    linea_ = registro.linea + 1;
  }

  std::string_view texto_;
  char separador_;
  std::size_t columnas_;
  std::size_t pos_ = 0;
  int linea_ = 1;
};

std::string Une(const std::vector<std::string>& campos) {
  std::string s;
  for (const std::string& c : campos) s += (s.empty() ? "" : ",") + c;
  return s;
}

// What stands first between the columns' names.
char SeparadorDe(std::string_view texto) {
  const std::size_t i = texto.find_first_of(",;\t\r\n");
  return i == std::string_view::npos || texto[i] == '\r' || texto[i] == '\n' ? ',' : texto[i];
}

bool SonLasColumnas(const std::vector<std::string>& campos, const std::vector<std::string>& columnas) {
  const auto iguales = [](const std::string& a, const std::string& b) {
    return recepcion::Plano(a, autonomo::LetraBuscada) == recepcion::Plano(b, autonomo::LetraBuscada);
  };
  return std::ranges::equal(campos, columnas, iguales);
}

bool EnBlanco(const RegistroCsv& registro) {
  return registro.defecto.empty() && std::ranges::all_of(registro.campos, &std::string::empty);
}

}  // namespace

void RechazaLinea(const std::string& ruta, int linea, const std::string& motivo) {
  throw com::Error(com::error::kArgumento, ruta + ":" + std::to_string(linea) + ": " + motivo);
}

std::vector<RegistroCsv> LeeCsv(const std::string& ruta, const std::vector<std::string>& columnas) {
  return DivideCsv(ruta, LeeArchivo(ruta), columnas);
}

std::vector<RegistroCsv> DivideCsv(const std::string& ruta, std::string_view contenido,
                                   const std::vector<std::string>& columnas) {
  std::string_view texto = contenido;
  if (texto.starts_with("\xEF\xBB\xBF")) texto.remove_prefix(3);
  const std::string_view primera = texto.substr(0, texto.find('\n'));
  if (!EsUtf8(primera) || primera.find('\0') != std::string_view::npos) RechazaLinea(ruta, 1, kNoEsUtf8);
  Lector lector(texto, SeparadorDe(primera), columnas.size());
  RegistroCsv registro;
  if (!lector.Lee(registro) || !SonLasColumnas(registro.campos, columnas)) {
    RechazaLinea(ruta, 1, "se esperan las columnas " + Une(columnas));
  }
  std::vector<RegistroCsv> registros;
  while (lector.Lee(registro)) {
    if (!EnBlanco(registro)) registros.push_back(std::move(registro));
  }
  return registros;
}

std::vector<RegistroCsv> SinDefectos(const std::string& ruta, std::vector<RegistroCsv> registros) {
  for (const RegistroCsv& r : registros) {
    if (!r.defecto.empty()) RechazaLinea(ruta, r.linea, r.defecto);
  }
  return registros;
}

std::string LineaCsv(const std::vector<std::string>& campos) {
  std::string linea;
  for (std::size_t i = 0; i < campos.size(); ++i) {
    std::string campo;
    // Blanks at an end are the field's own between quotes alone.
    bool comillas = !campos[i].empty() && (EsBlanco(campos[i].front()) || EsBlanco(campos[i].back()));
    for (const char c : campos[i]) {
      if (c == '\r') continue;
      comillas = comillas || c == ',' || c == '"';
      if (c == '\n') {
        campo += " / ";
      } else {
        campo += c;
        if (c == '"') campo += c;
      }
    }
    linea += (i == 0 ? "" : ",") + (comillas ? '"' + campo + '"' : campo);
  }
  return linea + '\n';
}

}  // namespace guion
