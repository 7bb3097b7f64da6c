#include "platform/ado/texto_sql.h"

#include "platform/com/error.h"

namespace ado {
namespace {

// Reads SQL text piece by piece and knows whether it stands inside a string literal. A quote inside a literal is
// pending until the next character tells whether it closed the literal or was the first of a doubled one.
class Comillas {
 public:
  void Fragmento(std::string_view texto) {
    while (!texto.empty()) {
      if (pendiente_ && texto.front() != '\'') dentro_ = pendiente_ = false;
      const std::size_t comilla = texto.find('\'');
      if (comilla == std::string_view::npos) return;
      if (dentro_) {
        pendiente_ = !pendiente_;
      } else {
        dentro_ = true;
      }
      texto.remove_prefix(comilla + 1);
    }
  }

  // False when the value does not stand wholly inside the open literal.
  bool Valor(std::string_view texto) const {
    if (!dentro_ || pendiente_) return false;
    std::size_t racha = 0;
    for (const char c : texto) {
      if (c == '\'') {
        ++racha;
      } else if (racha % 2 != 0) {
        return false;
      } else {
        racha = 0;
      }
    }
    return racha % 2 == 0;
  }

  bool Cerrado() const { return !dentro_ || pendiente_; }

 private:
  bool dentro_ = false, pendiente_ = false;
};

}  // namespace

TextoSQL& TextoSQL::Agrega(std::string_view fragmento) {
  texto_ += fragmento;
  return *this;
}

TextoSQL& TextoSQL::Agrega(const TextoSQL& otro) {
  if (&otro == this) return Agrega(TextoSQL(otro));
  const std::size_t base = texto_.size();
  texto_ += otro.texto_;
  for (const Tramo& t : otro.valores_) valores_.push_back({base + t.inicio, base + t.fin});
  return *this;
}

TextoSQL& TextoSQL::Agrega(std::string_view plantilla, std::span<const Parte> partes) {
  const auto rechaza = [&](const char* motivo) {
    throw com::Error(com::error::kSentencia, motivo, std::string(plantilla));
  };
  std::string_view resto = plantilla;
  for (const Parte& parte : partes) {
    const std::size_t lugar = resto.find('?');
    if (lugar == std::string_view::npos) rechaza("La sentencia tiene menos lugares que valores");
    Agrega(resto.substr(0, lugar));
    if (parte.texto_ != nullptr) {
      Agrega(*parte.texto_);
    } else {
      Valor(parte.valor_);
    }
    resto.remove_prefix(lugar + 1);
  }
  if (resto.find('?') != std::string_view::npos) rechaza("La sentencia tiene más lugares que valores");
  return Agrega(resto);
}

void TextoSQL::Valor(std::string_view valor) {
  const std::size_t inicio = texto_.size();
  texto_ += valor;
  valores_.push_back({inicio, texto_.size()});
}

void TextoSQL::Limpia() {
  texto_.clear();
  valores_.clear();
}

void TextoSQL::Verifica() const {
  const std::string_view texto = texto_;
  Comillas comillas;
  std::size_t leido = 0;
  for (const Tramo& t : valores_) {
    comillas.Fragmento(texto.substr(leido, t.inicio - leido));
    const std::string_view valor = texto.substr(t.inicio, t.fin - t.inicio);
    if (!comillas.Valor(valor)) {
      throw com::Error(com::error::kSentencia,
                       "Comilla sin cerrar en la sentencia, cerca de «" + std::string(valor) + "»", texto_);
    }
    leido = t.fin;
  }
  comillas.Fragmento(texto.substr(leido));
  if (!comillas.Cerrado()) {
    throw com::Error(com::error::kSentencia, "Comilla sin cerrar en la sentencia", texto_);
  }
}

}  // namespace ado
