// Card data of the reservation: where they come from and what must be filled in.
#include "reservation/tarjeta.h"

#include "host/contract/estados.h"
#include "publico/avisos.h"
#include "publico/publico.h"
#include "reservation/frmKV207.h"
#include "reservation/sentencias.h"

namespace kv207 {

namespace mensaje = anfitrion::mensaje;

std::string LeeTipoFormaPago(const std::string& formaPago) {
  return TextoDe(publico::Utilerias().BuscaValor("Forma_Pago", "Fp_Cve_Forma_Pago", formaPago, "Fp_Tipo"));
}

bool EsTarjeta(std::string_view tipoFormaPago) { return com::Recorta(tipoFormaPago) == anfitrion::tipo_pago::kTarjeta; }

void ArmaTarjetaReservacion(ado::TextoSQL& sql, std::string_view folio) {
  sql.Agrega(
      "SELECT Rdt_Banco as Banco, "
      " Rdt_Numero as Numero, "
      " ISNULL(Rdt_Vencimiento,GETDATE()) as Vencimiento, "
      " Rdt_Codigo_Seguridad as Codigo "
      "FROM Reservacion_Datos_Tarjeta "
      "WHERE Rs_Folio = '?' ",
      {folio});
}

void ArmaTarjetaCliente(ado::TextoSQL& sql, std::string_view cliente) {
  sql.Agrega(
      "SELECT Cl_Tarjeta_Banco as Banco, "
      " Cl_Tarjeta_Numero as Numero, "
      " ISNULL(Cl_Tarjeta_Vencimiento,GETDATE()) as Vencimiento, "
      " Cl_Tarjeta_Codigo_Seguridad as Codigo "
      "FROM Cliente "
      "WHERE Cl_Cve_Cliente = '?' ",
      {cliente});
}

// The data count as loaded for the client also when there are none stored: what the clerk types then is not read over.
void frmKV207::Datos_Tarjeta(const std::string& cliente, const std::string& folio) {
  Atrapa(*this, mensaje::kDatosTarjeta, [&] {
    ado::TextoSQL& sql = publico::NuevaSentencia();
    if (ClienteWeb != cliente || folio.empty()) {
      ArmaTarjetaCliente(sql, cliente);
    } else {
      ArmaTarjetaReservacion(sql, folio);
    }
    const ado::RecordsetPtr tarjeta = publico::Ejecuta();
    if (!tarjeta->Eof()) {
      txtBanco.text(TextoDe(tarjeta->Fields("Banco").Value()));
      txtTarjeta.text(TextoDe(tarjeta->Fields("Numero").Value()));
      txtCodigo.text(TextoDe(tarjeta->Fields("Codigo").Value()));
      dpVencimiento.valor(com::CDate(tarjeta->Fields("Vencimiento").Value()));
    }
    tarjeta->Close();
    TarjetaCargada = true;
  });
}

void frmKV207::ValidaTarjeta(bool& ok) {
  struct Requisito {
    controles::LookupField& campo;
    const anfitrion::DatosMensaje& mensaje;
  };
  const Requisito requisitos[] = {
      {txtBanco, mensaje::kSinBanco}, {txtTarjeta, mensaje::kSinTarjeta}, {txtCodigo, mensaje::kSinCodigo}};
  ok = false;
  for (const Requisito& r : requisitos) {
    if (!r.campo.text().empty()) continue;
    Avisa(*this, r.mensaje);
    Enfoca(r.campo);
    Controles.RechazaAceptar();
    return;
  }
  ok = true;
}

}  // namespace kv207
