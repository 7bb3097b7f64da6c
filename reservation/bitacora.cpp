// Change audit: the images of a stored reservation before and after a save, and the entry that tells them apart.
#include "reservation/bitacora.h"

#include <algorithm>

#include "platform/com/error.h"
#include "platform/regional/regional.h"
#include "publico/avisos.h"
#include "publico/publico.h"
#include "reservation/frmKV207.h"
#include "reservation/sentencias.h"

namespace kv207 {

namespace mensaje = anfitrion::mensaje;

namespace {

constexpr const char* kFinLinea = "\r\n";

void ArmaEncabezado(ado::TextoSQL& sql, std::string_view origen, std::string_view folio) {
  sql.Agrega(
      "SELECT  Rs_Folio, "
      " Rs_Fecha, "
      " Rs_Llegada, "
      " Rs_Salida, "
      " Sc_Cve_Sucursal, "
      " Cl_Cve_Cliente, "
      " Mn_Cve_Moneda, "
      " Fp_Cve_Forma_Pago, "
      " Rs_Referencia, "
      " Rs_Huesped, "
      " Rs_Comentario, "
      " Rs_Notas "
      "? WHERE   Rs_Folio = '?'",
      {ado::TextoSQL(origen), folio});
}

// One line of the text for each field that differs.
class Lineas {
 public:
  // As dates.
  void Fecha(const char* etiqueta, const com::Variant& antes, const com::Variant& despues) {
    const com::Fecha a = com::CDate(antes), d = com::CDate(despues);
    if (a != d) Anota(etiqueta, regional::TextoFecha(a), regional::TextoFecha(d));
  }
  // As stored values; NULL is no change.
  void Valor(const char* etiqueta, const com::Variant& antes, const com::Variant& despues) {
    if (com::Difieren(antes, despues)) Anota(etiqueta, com::CStr(antes), com::CStr(despues));
  }
  // As stored values, shown as dates.
  void ValorFecha(const char* etiqueta, const com::Variant& antes, const com::Variant& despues) {
    if (!com::Difieren(antes, despues)) return;
    Anota(etiqueta, regional::TextoFecha(com::CDate(antes)), regional::TextoFecha(com::CDate(despues)));
  }
  // As 16-bit counts, shown as stored.
  void Cuenta(const char* etiqueta, const com::Variant& antes, const com::Variant& despues) {
    if (com::CInt(antes) != com::CInt(despues)) Anota(etiqueta, com::CStr(antes), com::CStr(despues));
  }
  // As numbers, shown as currency.
  void Importe(const char* etiqueta, const com::Variant& antes, const com::Variant& despues) {
    const double a = com::CDbl(antes), d = com::CDbl(despues);
    if (a != d) Anota(etiqueta, regional::Moneda(a), regional::Moneda(d));
  }
  const std::string& Texto() const { return texto_; }

 private:
  void Anota(const char* etiqueta, const std::string& antes, const std::string& despues) {
    texto_ += etiqueta + antes + " -> " + despues + kFinLinea;
  }

  std::string texto_;
};

std::string TextoCambioRenglon(const ImagenRenglon& antes, const ImagenRenglon& despues) {
  Lineas lineas;
  lineas.ValorFecha("- FECHA DE INICIO:  ", antes.inicio, despues.inicio);
  lineas.ValorFecha("- FECHA FIN:    ", antes.fin, despues.fin);
  lineas.Cuenta("- ADULTOS:  ", antes.adultos, despues.adultos);
  lineas.Cuenta("- MENORES:  ", antes.menores, despues.menores);
  lineas.Cuenta("- INFANTES: ", antes.infantes, despues.infantes);
  lineas.Cuenta("- CANTIDAD DE PERSONAS EXTRA:   ", antes.personasExtra, despues.personasExtra);
  lineas.Importe("- PRECIO:   ", antes.precio, despues.precio);
  lineas.Importe("- PRECIO DE PERSONAS EXTRA: ", antes.precioPersonasExtra, despues.precioPersonasExtra);
  lineas.Importe("- PRECIO NETO IMPORTE:  ", antes.precioNetoImporte, despues.precioNetoImporte);
  return lineas.Texto();
}

bool MismaHabitacion(const com::Variant& a, const com::Variant& b) {
  return !a.EsNulo() && !b.EsNulo() && !com::Difieren(a, b);
}

// Both record sets of a stored reservation, or none when one cannot be read, which alFallar tells. arma: the header's
// statement.
void LeeImagen(const frmKV207& f, const std::string& folio, void (*arma)(ado::TextoSQL&, std::string_view),
               const anfitrion::DatosMensaje& alFallar, frmKV207::Imagen& imagen) {
  imagen = {};
  Atrapa(f, alFallar, [&] {
    frmKV207::Imagen leida;
    arma(publico::NuevaSentencia(), folio);
    leida.encabezado = publico::Ejecuta();
    ArmaDetalleImagen(publico::NuevaSentencia(), folio);
    leida.detalle = publico::Ejecuta();
    imagen = leida;
  });
}

ado::Recordset& Exige(const ado::RecordsetPtr& imagen) {
  if (!imagen) throw com::Error(com::error::kSinObjeto, "La imagen de la reservación no se pudo leer");
  return *imagen;
}

}  // namespace

// The two differ in the case of one word, and stay so: a host may tell by it which of them it is given.
void ArmaEncabezadoAntes(ado::TextoSQL& sql, std::string_view folio) {
  ArmaEncabezado(sql, "From Reservacion ", folio);
}

void ArmaEncabezadoDespues(ado::TextoSQL& sql, std::string_view folio) {
  ArmaEncabezado(sql, "FROM Reservacion ", folio);
}

void ArmaDetalleImagen(ado::TextoSQL& sql, std::string_view folio) {
  sql.Agrega(
      "SELECT  Rs_Folio, "
      " Rsd_Id, "
      " Hb_Cve_Habitacion, "
      " Rsd_Fecha_Inicio, "
      " Rsd_Fecha_Fin, "
      " Rsd_Cantidad, "
      " Rsd_Adultos, "
      " Rsd_Menores, "
      " Rsd_Infantes, "
      " Rsd_Cantidad_Personas_Extra, "
      " Rsd_Precio, "
      " Rsd_Precio_Personas_Extra, "
      " Rsd_Precio_Lista, "
      " Rsd_Precio_Lista_Importe, "
      " Rsd_Descuento_Factor, "
      " Rsd_Descuento_Importe, "
      " Rsd_Precio_Descontado, "
      " Rsd_Precio_Descontado_Importe, "
      " Rsd_Impuesto_Factor, "
      " Rsd_Impuesto_Importe, "
      " Rsd_Precio_Neto, "
      " Rsd_Precio_Neto_Importe "
      "FROM Reservacion_Detalle "
      " WHERE   Rs_Folio = '?'",
      {folio});
}

ImagenEncabezado LeeImagenEncabezado(const ado::Recordset& encabezado) {
  const auto valor = [&](const char* columna) { return encabezado.Fields(columna).Value(); };
  return {valor("Rs_Llegada"),        valor("Rs_Salida"),  valor("Sc_Cve_Sucursal"), valor("Mn_Cve_Moneda"),
          valor("Fp_Cve_Forma_Pago"), valor("Rs_Huesped"), valor("Cl_Cve_Cliente")};
}

std::vector<ImagenRenglon> LeeImagenDetalle(ado::Recordset& detalle) {
  std::vector<ImagenRenglon> renglones;
  if (detalle.RecordCount() > 0) detalle.MoveFirst();
  for (; !detalle.Eof(); detalle.MoveNext()) {
    const auto valor = [&](const char* columna) { return detalle.Fields(columna).Value(); };
    renglones.push_back({valor("Hb_Cve_Habitacion"), valor("Rsd_Fecha_Inicio"), valor("Rsd_Fecha_Fin"),
                         valor("Rsd_Adultos"), valor("Rsd_Menores"), valor("Rsd_Infantes"),
                         valor("Rsd_Cantidad_Personas_Extra"), valor("Rsd_Precio"), valor("Rsd_Precio_Personas_Extra"),
                         valor("Rsd_Precio_Neto_Importe")});
  }
  return renglones;
}

std::string TextoCambioEncabezado(const ImagenEncabezado& antes, const ImagenEncabezado& despues) {
  Lineas lineas;
  lineas.Fecha("- FECHA DE LLEGADA:  ", antes.llegada, despues.llegada);
  lineas.Fecha("- FECHA DE SALIDA: ", antes.salida, despues.salida);
  lineas.Valor("- SUCURSAL:    ", antes.sucursal, despues.sucursal);
  lineas.Valor("- MONEDA:  ", antes.moneda, despues.moneda);
  lineas.Valor("- FORMA DE PAGO:    ", antes.formaPago, despues.formaPago);
  lineas.Valor("- HUESPED: ", antes.huesped, despues.huesped);
  lineas.Valor("- CLIENTE: ", antes.cliente, despues.cliente);
  if (lineas.Texto().empty()) return {};
  std::string texto = "CAMBIO LA RESERVACION:   ANTES    ->    DESPUES    ";
  texto.append(kFinLinea).append(lineas.Texto()).append(kFinLinea);
  return texto;
}

std::string TextoCambioDetalle(const std::vector<ImagenRenglon>& antes, const std::vector<ImagenRenglon>& despues) {
  std::string detalle;
  bool cambioHabitacion = false;
  for (const ImagenRenglon& a : antes) {
    const auto d = std::find_if(despues.begin(), despues.end(),
                                [&a](const ImagenRenglon& r) { return MismaHabitacion(r.habitacion, a.habitacion); });
    const bool hallada = d != despues.end();
    const std::string cambios = hallada ? TextoCambioRenglon(a, *d) : std::string();
    if (!cambios.empty()) {
      detalle += " la habitación " + TextoDe(a.habitacion) + kFinLinea + cambios + kFinLinea;
      cambioHabitacion = true;
    } else if (!hallada) {
      detalle +=
          " la habitación " + TextoDe(a.habitacion) + " ha sido removida de la reservación " + kFinLinea + kFinLinea;
    }
  }
  if (detalle.empty()) return {};
  const char* titulo = cambioHabitacion ? "CAMBIO EL DETALLE DE LA RESERVACION:    ANTES    ->    DESPUES    "
                                        : "DETALLE DE LA RESERVACION:    ANTES    ->    DESPUES    ";
  return std::string(titulo) + kFinLinea + detalle + kFinLinea;
}

void frmKV207::Resevacion_Antes(const std::string& folio, Imagen& antes) {
  LeeImagen(*this, folio, ArmaEncabezadoAntes, mensaje::kAuditoriaAntes, antes);
}

void frmKV207::Resevacion_Despues(const std::string& folio, Imagen& despues) {
  LeeImagen(*this, folio, ArmaEncabezadoDespues, mensaje::kAuditoriaDespues, despues);
}

void frmKV207::Analizar_Reservacion(const std::string& folio, Imagen& antes, Imagen& despues, bool& ok) {
  ok = false;
  Atrapa(*this, mensaje::kAuditoriaCompara, [&] {
    std::string texto;
    if (!Exige(antes.encabezado).Eof() && !Exige(despues.encabezado).Eof()) {
      texto = TextoCambioEncabezado(LeeImagenEncabezado(*antes.encabezado), LeeImagenEncabezado(*despues.encabezado));
      antes.encabezado->Close();
      despues.encabezado->Close();
    }
    texto += TextoCambioDetalle(LeeImagenDetalle(Exige(antes.detalle)), LeeImagenDetalle(Exige(despues.detalle)));
    if (!texto.empty()) publico::Utilerias().RegistraBitacora(anfitrion::kModulo, folio, texto);
    ok = true;
  });
}

}  // namespace kv207
