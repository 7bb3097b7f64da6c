#include "host/standalone/impresion.h"

#include "host/standalone/anfitrion.h"
#include "host/standalone/fabricas.h"
#include "host/standalone/registro.h"

namespace autonomo {

std::string_view FormatoIncluido() {
  return "{hotel}\n"
         "\n"
         "{titulo}\n"
         "Reservación {folio} ({estado})\n"
         "Huésped: {huesped}\n"
         "Cliente: {cliente}\n"
         "Llegada: {llegada}   Salida: {salida}   Noches: {noches}\n"
         "\n"
         "{renglones}\n"
         "\n"
         "Subtotal: {subtotal}\n"
         "Impuestos: {impuestos}\n"
         "Total: {total} {moneda}\n"
         "\n"
         "{notas_rotuladas}\n";
}

std::string ImprimeTexto(std::string_view formato, const Documento& documento) {
  const Campos campos = CamposDe(documento);
  std::string texto;
  while (!formato.empty()) {
    const std::size_t fin = formato.find('\n');
    const std::string_view linea = formato.substr(0, fin);
    const std::string llena = Rellena(linea, campos);
    const bool sobra = !com::Recorta(linea).empty() && com::Recorta(llena).empty();
    if (!sobra) {
      texto += llena;
      if (fin != std::string_view::npos) texto += '\n';
    }
    formato.remove_prefix(fin == std::string_view::npos ? formato.size() : fin + 1);
  }
  return texto;
}

namespace {

class ServicioImpresion : public com::Objeto<anfitrion::Impresion> {
 public:
  explicit ServicioImpresion(Anfitrion& host) : host_(host) {}

  void ImprimeFormato(const std::string& formato, const std::string& clave, const std::string& /*e1*/, int /*c1*/,
                      int /*c2*/, const std::string& /*e2*/) override {
    const registro::Operacion operacion("Impresion.ImprimeFormato");
    Conexion& conexion = *host_.conexion();
    const std::optional<Documento> documento = LeeDocumento(conexion, clave);
    if (!documento) throw com::Error(com::error::kArgumento, "La reservación " + clave + " no existe");
    const std::string texto = ImprimeTexto(Contenido(conexion, formato), *documento);
    conexion.Consulta("INSERT INTO Impreso (Ip_Formato, Ip_Clave, Ip_Texto, Ip_Fecha) VALUES (?, ?, ?, ?)",
                      {formato, documento->folio, texto, host_.reloj().Ahora()});
  }

 private:
  static std::string Contenido(Conexion& conexion, const std::string& formato) {
    const ado::RecordsetPtr rs =
        conexion.Consulta("SELECT Fm_Contenido FROM Formato WHERE Fm_Cve_Formato = ?", {formato});
    std::string contenido;
    if (!rs->Eof()) contenido = com::TextoDe(rs->Fields(0).Value());
    return com::Recorta(contenido).empty() ? std::string(FormatoIncluido()) : contenido;
  }

  Anfitrion& host_;
};

}  // namespace

com::Ptr<anfitrion::Impresion> CreaImpresion(Anfitrion& host) {
  return com::Ptr<anfitrion::Impresion>(new ServicioImpresion(host));
}

}  // namespace autonomo
