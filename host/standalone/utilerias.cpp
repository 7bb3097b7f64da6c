// Utility services: server date, SQL dates, lookups, exchange rates, change log, field groups, mail, keystrokes.
#include <algorithm>

#include "host/standalone/anfitrion.h"
#include "host/standalone/busquedas.h"
#include "host/standalone/correo.h"
#include "host/standalone/fabricas.h"
#include "host/standalone/nombres.h"
#include "host/standalone/parametros.h"
#include "host/standalone/registro.h"
#include "platform/regional/regional.h"

namespace autonomo {

namespace {

class ServicioUtilerias : public com::Objeto<anfitrion::Utilerias> {
 public:
  explicit ServicioUtilerias(Anfitrion& host) : host_(host) {}

  com::Fecha FechaServidor() override { return host_.reloj().Ahora(); }

  // "AAAAMMDD" is the only form that every SQL Server date setting reads alike.
  std::string FechaSQL(com::Fecha fecha) override {
    std::string texto = com::AIso(com::SoloFecha(fecha));
    if (host_.conexion()->Motor() == esquema::Motor::SqlServer) std::erase(texto, '-');
    return texto;
  }

  std::string FechaHoraSQL(com::Fecha fecha) override {
    const com::Civil c = com::ACivil(fecha);
    const auto dos = [](int n) { return (n < 10 ? "0" : "") + std::to_string(n); };
    return FechaSQL(fecha) + " " + dos(c.hora) + ":" + dos(c.minuto) + ":" + dos(c.segundo);
  }

  com::Variant BuscaValor(const std::string& tabla, const std::string& campoClave, const std::string& clave,
                          const std::string& campo, const std::string& /*e1*/, const std::string& /*e2*/,
                          const std::string& /*e3*/, const std::string& /*e4*/) override {
    const registro::Operacion operacion("Utilerias.BuscaValor");
    const NombresDeTabla n = RevisaNombres(tabla, {campo, campoClave});
    const ado::RecordsetPtr rs = host_.conexion()->Consulta(
        "SELECT " + n.columnas[0] + " FROM " + n.tabla + " WHERE " + n.columnas[1] + " = ?", {clave});
    return rs->Eof() ? com::Variant() : rs->Fields(0).Value();
  }

  com::Variant BuscaEnCatalogo(const std::string& catalogo, int /*tamanio*/, const std::string& filtro,
                               const com::Variant& /*fuente*/) override {
    const registro::Operacion operacion("Utilerias.BuscaEnCatalogo");
    const Busqueda& b = BusquedaDe(catalogo);
    std::vector<std::pair<std::string, std::string>> filas = LeeFilas(*host_.conexion(), b);
    const std::string busca = com::Plegado(filtro);
    std::erase_if(filas, [&](const auto& fila) {
      return com::Plegado(fila.first + " " + fila.second).find(busca) == std::string::npos;
    });
    const std::string elegida = controles::EscritorioActual().EligeDeCatalogo(std::string(b.titulo), filas);
    return elegida.empty() ? com::Variant() : com::Variant(elegida);
  }

  std::string FormateaFolio(const std::string& folio) override {
    const registro::Operacion operacion("Utilerias.FormateaFolio");
    return regional::ConMascara(com::Recorta(folio), MascaraDeFolio(*host_.conexion()));
  }

  double TipoCambio(const std::string& moneda, com::Fecha fecha) override {
    const registro::Operacion operacion("Utilerias.TipoCambio");
    const std::string clave = com::Recorta(moneda);
    const ado::RecordsetPtr rs = host_.conexion()->Consulta(
        "SELECT Tc_Tasa FROM Tipo_Cambio WHERE Mn_Cve_Moneda = ? AND Tc_Fecha <= ? ORDER BY Tc_Fecha DESC",
        {clave, com::SoloFecha(fecha)});
    if (!rs->Eof()) return com::CDbl(rs->Fields(0).Value());
    if (EsMonedaLocal(*host_.conexion(), clave)) return 1;
    throw com::Error(com::error::kArgumento, "No hay tipo de cambio de la moneda " + clave + " para el " +
                                                 regional::FechaCorta(com::SoloFecha(fecha)));
  }

  void LimpiaGrupo(controles::Formulario& formulario, int grupo) override {
    for (controles::Control* c : formulario.controles()) {
      if (c->grupo() == grupo) c->Limpia();
    }
  }

  void HabilitaGrupo(controles::Formulario& formulario, int grupo) override {
    for (controles::Control* c : formulario.controles()) {
      if (c->grupo() == grupo) c->Habilita();
    }
  }

  std::string EditaNotas(const std::string& titulo, const std::string& texto, int ancho) override {
    const registro::Operacion operacion("Utilerias.EditaNotas");
    return controles::EscritorioActual().EditaNotas(titulo, texto, ancho);
  }

  void RegistraBitacora(const std::string& modulo, const std::string& clave, const std::string& texto) override {
    const registro::Operacion operacion("Utilerias.RegistraBitacora");
    host_.conexion()->Consulta(
        "INSERT INTO Bitacora (Bt_Modulo, Bt_Clave, Bt_Texto, Bt_Usuario, Bt_Fecha) VALUES (?, ?, ?, ?, ?)",
        {modulo, clave, texto, host_.usuario(), host_.reloj().Ahora()});
    if (const auto hecho = Novedades::HechoDe(texto)) host_.novedades().Anota(*hecho, clave);
  }

  bool EnviaCorreo(const std::string& /*modulo*/, const std::string& clave, const std::string& plantilla,
                   const std::string& consulta, int /*cero*/, const std::string& /*e1*/,
                   const std::string& /*e2*/) override {
    const registro::Operacion operacion("Utilerias.EnviaCorreo");
    ResultadoCorreo resultado;
    if (const std::optional<std::string> falla = host_.TomaFallaCorreo()) {
      resultado.error = *falla;
    } else {
      resultado = EncolaCorreo(*host_.conexion(), clave, plantilla, consulta, host_.usuario(), host_.reloj().Ahora());
    }
    errorCorreo_ = resultado.error;
    if (resultado.aceptado) host_.novedades().Anota(Novedad::Hecho::CorreoEnCola, clave);
    return resultado.aceptado;
  }

  std::string ErrorCorreo() override { return errorCorreo_; }
  void EnviaTeclas(const std::string& teclas) override { controles::EscritorioActual().EnviaTeclas(teclas); }

  std::string ResuelveTransaccion(const std::string& transaccion, const std::string& /*producto*/) override {
    const registro::Operacion operacion("Utilerias.ResuelveTransaccion");
    const std::string codigo = com::Mayusculas(com::Recorta(transaccion));
    return codigo.empty() ? std::string(anfitrion::kPantalla) : codigo;
  }

 private:
  Anfitrion& host_;
  std::string errorCorreo_;
};

}  // namespace

com::Ptr<anfitrion::Utilerias> CreaUtilerias(Anfitrion& host) {
  return com::Ptr<anfitrion::Utilerias>(new ServicioUtilerias(host));
}

}  // namespace autonomo
