#include "desktop/cuida_captura.h"

#include <QPushButton>
#include <QTimer>
#include <algorithm>
#include <filesystem>
#include <optional>

#include "desktop/dialogos.h"
#include "desktop/guarda.h"
#include "host/standalone/registro.h"
#include "platform/com/error.h"
#include "platform/regional/regional.h"
#include "schema/esquema.h"

namespace vista {

namespace {

// One name for a file however it was written.
std::string NombreDe(const autonomo::Anfitrion& anfitrion) {
  std::error_code ec;
  if (!std::filesystem::is_regular_file(anfitrion.base(), ec)) return anfitrion.base();
  const std::filesystem::path ruta = std::filesystem::canonical(anfitrion.base(), ec);
  return ec ? anfitrion.base() : ruta.string();
}

// What a view holds and its control does not know.
void TomaLoTecleado(const EscritorioQt& escritorio, recepcion::Borrador& borrador) {
  const Ventana& ventana = *escritorio.ventana(*escritorio.Principal());
  for (const recepcion::CampoCaptado& campo : borrador.campos) {
    const Vista* vista = ventana.vista(*escritorio.Principal()->Busca(campo.nombre));
    const auto tecleado = vista == nullptr ? std::nullopt : vista->Tecleado();
    if (!tecleado) continue;
    borrador.aMedias = campo.nombre;
    borrador.tecleado = tecleado->toStdString();
  }
}

// The notes as their editor has them: they come back as if it had been accepted.
void TomaNotas(const EscritorioQt& escritorio, const std::string& notas, recepcion::Borrador& borrador) {
  const auto* suyas = escritorio.Principal()->Primero<controles::CampoNotas>();
  if (suyas == nullptr) return;
  const auto campo = std::ranges::find(borrador.campos, suyas->nombre(), &recepcion::CampoCaptado::nombre);
  if (campo != borrador.campos.end()) campo->texto = notas;
}

// The clerk goes on where she was.
void TecleaLoTecleado(const EscritorioQt& escritorio, const recepcion::Borrador& borrador) {
  controles::Formulario& principal = *escritorio.Principal();
  controles::Control* campo = principal.Busca(borrador.aMedias);
  Vista* vista = campo == nullptr ? nullptr : escritorio.ventana(principal)->vista(*campo);
  if (vista == nullptr || !campo->PuedeEnfocarse()) return;
  principal.Enfoca(*campo);
  vista->Teclea(Q(borrador.tecleado));
}

std::string EnLista(const std::vector<std::string>& textos) {
  std::string lista;
  for (const std::string& texto : textos) lista += "\r\n- " + texto;
  return lista;
}

}  // namespace

CuidaCaptura::CuidaCaptura(EscritorioQt& escritorio, autonomo::Anfitrion& anfitrion,
                           recepcion::RenglonesQuitados& quitados, const std::string& carpeta, int cadaMs)
    : escritorio_(escritorio),
      anfitrion_(anfitrion),
      quitados_(quitados),
      borradores_(NombreDe(anfitrion), anfitrion.usuario(), carpeta) {
  auto* reloj = new QTimer(this);
  QObject::connect(reloj, &QTimer::timeout, this, [this] { Corre([this] { Guarda(); }); });
  reloj->start(cadaMs);
  escritorio_.contexto().sinBorrador = [this] { return Q(motivo_); };
}

CuidaCaptura::~CuidaCaptura() { escritorio_.contexto().sinBorrador = nullptr; }

void CuidaCaptura::Guarda() {
  const controles::Formulario* principal = escritorio_.Principal();
  if (ocupada_ || principal == nullptr) return;
  const std::optional<std::string> notas = escritorio_.NotasAMedias();
  if (!notas && !escritorio_.HayCaptura()) return Olvida();
  recepcion::Borrador borrador = recepcion::TomaBorrador(*principal);
  borrador.visto = anfitrion_.conexion()->LoVisto(borrador.folio);
  borrador.quitados = quitados_.renglones();
  TomaLoTecleado(escritorio_, borrador);
  if (notas) TomaNotas(escritorio_, *notas, borrador);
  std::string texto = recepcion::EnTexto(borrador);
  if (texto == escrito_) return;
  try {
    borradores_.Guarda(texto, anfitrion_.reloj().Ahora());
    escrito_ = std::move(texto);
    Impedido("");
  } catch (const com::Error& e) {
    if (e.Descripcion() != motivo_) autonomo::registro::AnotaFalla(e);
    Impedido(e.Descripcion());
  }
}

void CuidaCaptura::Olvida() {
  Impedido("");
  if (escrito_.empty()) return;
  borradores_.Olvida();
  escrito_.clear();
}

void CuidaCaptura::Impedido(const std::string& motivo) {
  if (motivo == motivo_) return;
  motivo_ = motivo;
  escritorio_.DiceDelBorrador();
}

bool CuidaCaptura::Ofrece() {
  ocupada_ = true;
  bool repuesto = false;
  const auto ofrece = [&](const autonomo::BorradorHallado& hallado) {
    recepcion::Borrador borrador;
    std::string motivo = hallado.motivo, ruta = hallado.ruta;
    try {
      if (motivo.empty()) borrador = recepcion::DeTexto(hallado.contenido);
    } catch (const com::Error& e) {
      motivo = e.Descripcion();
      ruta = borradores_.ApartaIlegible();
    }
    if (!motivo.empty()) {
      return Avisa("Quedó una captura sin guardar, pero su borrador no se puede leer (" + motivo +
                       ").\r\nNo se repuso nada; el borrador se conserva en\r\n" + ruta,
                   caja::kAviso, escritorio_.Frente());
    }
    switch (Pregunta(borrador, hallado)) {
      case Respuesta::No:
        return borradores_.Olvida();
      case Respuesta::Despues:
        return borradores_.Suelta();
      case Respuesta::Si:
        break;
    }
    repuesto = Repone(borrador, hallado);
    if (!repuesto) return borradores_.Suelta();
    escrito_ = hallado.contenido;
  };
  Corre([&] {
    while (!repuesto) {
      const auto hallado = borradores_.Toma();
      if (!hallado) break;
      ofrece(*hallado);
    }
  });
  if (!repuesto) borradores_.Suelta();  // what is captured now must not write over it
  ocupada_ = false;
  return repuesto;
}

CuidaCaptura::Respuesta CuidaCaptura::Pregunta(const recepcion::Borrador& borrador,
                                               const autonomo::BorradorHallado& hallado) {
  std::string texto = "Quedó una captura sin guardar, del " + regional::TextoFecha(hallado.cuando) + ":\r\n\r\n" +
                      recepcion::Resumen(borrador) + "\r\n";
  if (hallado.esquema != esquema::kVersion) {
    texto += "\r\nLa dejó otra versión del programa: vuelve entera o no vuelve.";
  }
  const std::string guardada = recepcion::YaGuardada(borrador, hallado.cuando);
  if (!guardada.empty()) {
    texto += "\r\nYa hay una reservación de ese huésped en esas fechas, la " + guardada +
             ": puede que se haya guardado justo antes.";
  }
  texto += "\r\n¿Desea recuperarla? Con No se olvida.";
  controles::CajaMensaje mensaje;
  mensaje.texto = texto;
  mensaje.estilo = caja::kPregunta | caja::kSiNo;
  mensaje.titulo = "Recuperar captura";
  CajaAviso caja(mensaje, escritorio_.Frente());
  caja.setEscapeButton(caja.addButton(QStringLiteral("&Después"), QMessageBox::RejectRole));
  Atiende(caja);
  escritorio_.VuelveAlFrente();
  if (caja.clickedButton() == caja.Boton(controles::kSi)) return Respuesta::Si;
  return caja.clickedButton() == caja.Boton(controles::kNo) ? Respuesta::No : Respuesta::Despues;
}

bool CuidaCaptura::Repone(const recepcion::Borrador& borrador, const autonomo::BorradorHallado& hallado) {
  controles::Formulario* principal = escritorio_.Principal();
  if (principal == nullptr) return false;
  std::vector<std::string> faltan;
  try {
    faltan = recepcion::ReponeBorrador(*principal, borrador,
                                       {[this](controles::Accion accion) { return escritorio_.Pulsa(accion); },
                                        [this](const std::string& folio, const std::string& visto) {
                                          anfitrion_.conexion()->RetomaLoVisto(folio, visto);
                                        }});
  } catch (const com::Error& e) {
    Avisa("No se pudo recuperar la captura: " + e.Descripcion() +
              ".\r\nSe conserva, y se vuelve a ofrecer la próxima vez.",
          caja::kAviso, escritorio_.Frente());
    return false;
  }
  // What another version wrote may mean something else there: no part of it alone.
  if (hallado.esquema != esquema::kVersion && !faltan.empty()) {
    principal->Primero<controles::ScreenToolbar>()->Pulsa(controles::Accion::Limpiar);
    const std::string ruta = borradores_.ApartaIlegible();
    Avisa("La captura la dejó otra versión del programa y no vuelve entera:\r\n" + EnLista(faltan) +
              "\r\n\r\nNo se repuso nada; el borrador se conserva en\r\n" + ruta,
          caja::kAviso, escritorio_.Frente());
    escritorio_.VuelveAlFrente();
    return false;
  }
  quitados_.Fija(borrador.quitados);
  if (std::string tarjeta = recepcion::FaltaTarjeta(borrador); !tarjeta.empty()) faltan.push_back(std::move(tarjeta));
  if (!faltan.empty()) {
    Avisa("La captura se recuperó, menos esto:\r\n" + EnLista(faltan), caja::kAviso, escritorio_.Frente());
    escritorio_.VuelveAlFrente();
  }
  if (!borrador.aMedias.empty()) TecleaLoTecleado(escritorio_, borrador);
  return true;
}

}  // namespace vista
