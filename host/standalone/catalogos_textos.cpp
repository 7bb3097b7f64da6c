// Rows of the catalogues as they are typed and shown.
#include <algorithm>

#include "host/standalone/catalogos.h"
#include "host/standalone/correo.h"
#include "host/standalone/impuestos.h"
#include "host/standalone/tecleado.h"
#include "platform/com/error.h"
#include "platform/regional/regional.h"
#include "schema/esquema.h"

namespace autonomo {

using enum TipoCampo;

namespace {

// Why a text does not fit in its column; "" it does.
std::string RevisaTexto(const CampoCatalogo& campo, const std::string& texto) {
  const std::string titulo(campo.titulo);
  const esquema::Columna* columna = esquema::BuscaColumna(campo.columna);
  if (columna == nullptr || columna->tipo == esquema::Tipo::Nota) return {};
  const bool clave = columna->tipo == esquema::Tipo::Clave;
  const std::size_t admite = clave ? esquema::kLargoClave : esquema::kLargoTexto;
  const std::size_t letras = com::LargoUtf8(texto);
  if (letras > admite) {
    return "«" + titulo + "» admite " + std::to_string(admite) + " caracteres y lleva " + std::to_string(letras);
  }
  // The screens look keys up between apostrophes, and % stands for all of them.
  if (clave && campo.tipo == Clave && texto.find_first_of("'%") != std::string::npos)
    return "«" + titulo + "» no admite apóstrofos ni el signo %";
  return {};
}

// Why a number cannot stand in its column; "" it can.
std::string RevisaNumero(const CampoCatalogo& campo, double numero, double escrito) {
  const std::string titulo = "«" + std::string(campo.titulo) + "»";
  if (numero < 0) return titulo + " no puede ser negativo";
  if (numero > kImporteMaximo) return titulo + " es demasiado grande: el máximo es 999,999,999";
  if (numero != escrito) return titulo + " lleva un número entero";
  if (campo.tipo == Factor && numero == 0) return titulo + " debe ser mayor que cero";
  if (campo.tipo == Fraccion && numero >= 1) return titulo + " debe ser menor que 100";
  return {};
}

// "16" or "16 %" as 0.16.
std::string TomaPorCiento(const std::string& titulo, const std::string& texto, com::Variant& valor) {
  try {
    valor = LeePorCiento(titulo, texto);
    return {};
  } catch (const com::Error& e) {
    return e.Descripcion();
  }
}

// Reads one typed text; a reason when it cannot be.
std::string Lee(const CampoCatalogo& campo, const std::string& texto, com::Variant& valor) {
  const std::string titulo(campo.titulo);
  if (texto.empty()) {
    if (campo.obligatorio) return "Falta «" + titulo + "»";
    valor = campo.tipo == Fecha ? com::Variant::Null() : EsNumero(campo) ? com::Variant(0) : com::Variant("");
    return {};
  }
  try {
    switch (campo.tipo) {
      case Entero:
        valor = com::CLng(texto);
        break;
      case Dinero:
      case Factor:
        valor = com::CDbl(texto);
        break;
      case Fraccion:
        if (std::string motivo = TomaPorCiento(titulo, texto, valor); !motivo.empty()) return motivo;
        break;
      case Fecha:
        valor = com::SoloFecha(com::CDate(texto));
        break;
      case Correo:
        if (!DireccionValida(texto))
          return "«" + titulo + "» no es una dirección de correo, como ana@hotel.com: " + texto;
        valor = texto;
        return RevisaTexto(campo, texto);
      case Dias:
        if (texto.find_first_not_of("1234567") != std::string::npos)
          return "«" + titulo + "» lleva cifras: 1 lunes a 7 domingo";
        [[fallthrough]];
      default:
        valor = texto;
        return RevisaTexto(campo, texto);
    }
  } catch (const com::Error&) {
    return "«" + titulo + "» no admite «" + texto + "»";
  }
  if (campo.tipo == Fecha) return {};
  return RevisaNumero(campo, com::CDbl(valor), campo.tipo == Entero ? com::CDbl(texto) : com::CDbl(valor));
}

// A room type includes somebody, and not more than it admits.
std::string RevisaPersonas(const Catalogo& c, const std::vector<com::Variant>& valores) {
  const auto valorDe = [&](std::string_view columna) {
    const auto campo =
        std::find_if(c.campos.begin(), c.campos.end(), [&](const CampoCatalogo& k) { return k.columna == columna; });
    return com::CLng(valores[static_cast<std::size_t>(campo - c.campos.begin())]);
  };
  if (c.tabla != "Tipo_Habitacion") return {};
  const std::int32_t incluidas = valorDe("Th_Num_Personas"), maximo = valorDe("Th_Num_Personas_Maximo");
  if (maximo < 1) return "«Máximo de personas» debe ser al menos 1";
  if (incluidas > maximo) return "«Personas incluidas» es mayor que «Máximo de personas»";
  return {};
}

// Where a row has two dates, they are the first and the last day.
std::string RevisaFechas(const Catalogo& c, const std::vector<com::Variant>& valores) {
  const CampoCatalogo* desde = nullptr;
  com::Variant primera;
  for (std::size_t i = 0; i < c.campos.size(); ++i) {
    if (c.campos[i].tipo != Fecha || valores[i].EsNulo()) continue;
    if (desde != nullptr && com::CDate(valores[i]) < com::CDate(primera))
      return "«" + std::string(desde->titulo) + "» es posterior a «" + std::string(c.campos[i].titulo) + "»";
    desde = &c.campos[i];
    primera = valores[i];
  }
  return {};
}

}  // namespace

std::string Valida(const Catalogo& c, const std::vector<std::string>& textos, std::string_view mascara,
                   std::vector<com::Variant>& valores) {
  valores.clear();
  for (std::size_t i = 0; i < c.campos.size(); ++i) {
    const CampoCatalogo& campo = c.campos[i];
    std::string texto = campo.tipo == Nota ? textos[i] : com::Recorta(textos[i]);
    if (campo.tipo == Clave) texto = com::Mayusculas(texto);
    if (campo.tipo == Clave && campo.llave && i == 0) texto = regional::ConMascara(texto, mascara);
    com::Variant valor;
    std::string motivo = Lee(campo, texto, valor);
    if (!motivo.empty()) return motivo;
    valores.push_back(std::move(valor));
  }
  const std::string motivo = RevisaPersonas(c, valores);
  return motivo.empty() ? RevisaFechas(c, valores) : motivo;
}

bool EsNumero(const CampoCatalogo& campo) {
  return campo.tipo == Entero || campo.tipo == Dinero || campo.tipo == Factor || campo.tipo == Fraccion;
}

std::string TextoDe(const CampoCatalogo& campo, const com::Variant& valor) {
  constexpr int kDecimalesPorCiento = 8;
  if (valor.EsNulo() || valor.EsVacio()) return {};
  if (campo.tipo == Fraccion) return com::CStr(com::Redondea(com::CDbl(valor) * 100, kDecimalesPorCiento)) + " %";
  if (campo.tipo == Dinero) return regional::ConFormato(valor, "#,##0.00");
  if (campo.tipo == Fecha && valor.EsFecha()) return regional::FechaCorta(com::CDate(valor));
  return com::RecortaDerecha(com::CStr(valor));
}

}  // namespace autonomo
