// The service objects of the stand-alone host. Each holds a reference to the host, which must outlive it.
#pragma once

#include "host/contract/explicacion.h"
#include "host/contract/servicios.h"

namespace autonomo {

class Anfitrion;

com::Ptr<anfitrion::Sistema> CreaSistema(Anfitrion& host);
com::Ptr<anfitrion::Utilerias> CreaUtilerias(Anfitrion& host);
com::Ptr<anfitrion::Hotel> CreaHotel(Anfitrion& host);
com::Ptr<anfitrion::CalculoImpuesto> CreaCalculoImpuesto(Anfitrion& host);
com::Ptr<anfitrion::Impresion> CreaImpresion(Anfitrion& host);
com::Ptr<anfitrion::VisorRegistro> CreaVisorRegistro(Anfitrion& host);
com::Ptr<anfitrion::ExplicaPrecios> CreaExplicaPrecios(Anfitrion& host);

}  // namespace autonomo
