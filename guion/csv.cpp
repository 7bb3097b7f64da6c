#include "guion/csv.h"

#include <algorithm>

#include "guion/archivos.h"
#include "guion/lineas.h"
#include "platform/com/error.h"

namespace guion {

namespace {

void RevisaUtf8(const std::string& ruta, std::string_view contenido) {
  int linea = 1;
  while (!contenido.empty()) {
    const std::size_t fin = std::min(contenido.find('\n'), contenido.size());
    if (!EsUtf8(contenido.substr(0, fin))) RechazaLinea(ruta, linea, "la línea no es UTF-8 válido");
    contenido.remove_prefix(std::min(fin + 1, contenido.size()));
    ++linea;
  }
}

// Splits the text into records.
class Lector {
 public:
  Lector(const std::string& ruta, std::string_view texto) : ruta_(ruta), texto_(texto) {}

  bool Lee(RegistroCsv& registro) {
    if (pos_ >= texto_.size()) return false;
    registro = RegistroCsv{linea_, {}};
    do {
      registro.campos.push_back(Campo());
    } while (Toma(','));
    Toma('\r');
    if (pos_ < texto_.size() && !Toma('\n')) RechazaLinea(ruta_, linea_, "hay texto después de las comillas");
    ++linea_;
    return true;
  }

 private:
  bool Toma(char c) {
    if (pos_ >= texto_.size() || texto_[pos_] != c) return false;
    ++pos_;
    return true;
  }

  std::string Campo() {
    std::string campo;
    if (!Toma('"')) {
      const std::size_t fin = std::min(texto_.find_first_of(",\r\n", pos_), texto_.size());
      campo = texto_.substr(pos_, fin - pos_);
      pos_ = fin;
      return campo;
    }
    const int inicio = linea_;
    while (pos_ < texto_.size()) {
      const char c = texto_[pos_++];
      if (c == '"' && !Toma('"')) return campo;
      if (c == '\n') ++linea_;
      campo += c;
    }
    RechazaLinea(ruta_, inicio, "faltan las comillas de cierre");
  }

  const std::string& ruta_;
  std::string_view texto_;
  std::size_t pos_ = 0;
  int linea_ = 1;
};

std::string Une(const std::vector<std::string>& campos) {
  std::string s;
  for (const std::string& c : campos) s += (s.empty() ? "" : ",") + c;
  return s;
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
  RevisaUtf8(ruta, contenido);
  std::string_view texto = contenido;
  if (texto.starts_with("\xEF\xBB\xBF")) texto.remove_prefix(3);
  Lector lector(ruta, texto);
  RegistroCsv registro;
  if (!lector.Lee(registro) || registro.campos != columnas) {
    RechazaLinea(ruta, 1, "se esperan las columnas " + Une(columnas));
  }
  std::vector<RegistroCsv> registros;
  while (lector.Lee(registro)) {
    if (registro.campos.size() == 1 && registro.campos[0].empty()) continue;
    if (registro.campos.size() != columnas.size()) {
      RechazaLinea(ruta, registro.linea,
                   "tiene " + std::to_string(registro.campos.size()) + " campos y se esperan " +
                       std::to_string(columnas.size()));
    }
    registros.push_back(std::move(registro));
  }
  return registros;
}

std::string LineaCsv(const std::vector<std::string>& campos) {
  std::string linea;
  for (std::size_t i = 0; i < campos.size(); ++i) {
    std::string campo;
    bool comillas = false;
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
