#include "desktop/escritorio_qt.h"

#include <QApplication>
#include <QEventLoop>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>

#include "desktop/despues.h"
#include "desktop/dialogos.h"
#include "desktop/escala.h"
#include "desktop/guarda.h"
#include "desktop/vista_barra.h"
#include "platform/com/error.h"
#include "platform/com/texto.h"
#include "platform/controls/barra.h"
#include "platform/controls/grid.h"
#include "platform/controls/metrica.h"

namespace vista {

namespace {

// Whether the failure that is being handled refuses a value that somebody gave, and says why.
bool EsDatoRechazado() {
  try {
    throw;
  } catch (const com::Error& e) {
    return e.Numero() == com::error::kArgumento;
  } catch (...) {
    return false;
  }
}

// A failure with a cell half typed comes from what was typed: it stays there to be mended, or taken back.
void ExplicaCelda(const controles::Formulario& formulario, controles::CajaMensaje& caja) {
  const auto* grid = controles::Como<controles::Grid>(formulario.foco());
  if (grid == nullptr || !grid->Tecleada()) return;
  caja.titulo = grid->columna(grid->columna()).titulo;
  caja.estilo = caja::kAviso;
  caja.texto = "«" + grid->Edicion().value_or("") + "» no sirve aquí: " + caja.texto +
               "\r\nCorríjalo, o pulse Esc para dejar lo que había.";
}

// Closing a dialog's window cancels it.
void Cancela(controles::Formulario& formulario) {
  auto* barra = formulario.Primero<controles::ScreenToolbar>();
  if (barra != nullptr && barra->Ofrece(controles::Accion::Cancelar)) {
    barra->Pulsa(controles::Accion::Cancelar);
  } else {
    formulario.Oculta();
  }
}

// As large as the screen comfortably allows, a narrow screen used whole; never so small that fields are out of reach.
void AcomodaAPersona(Ventana& v) {
  constexpr int kEstrecha = 1200;
  const QRect cabe = v.screen()->availableGeometry();
  const int ancho = cabe.width() < kEstrecha ? cabe.width() : cabe.width() * 9 / 10;
  const QSize quiere(std::max(v.width(), std::min(1280, ancho)),
                     std::max(v.height(), std::min(800, cabe.height() * 85 / 100)));
  v.resize(quiere.boundedTo(cabe.size()));
  v.setMinimumSize(QSize(APixel(v.formulario().width()), APixel(8400)).boundedTo(cabe.size()));
}

}  // namespace

EscritorioQt::EscritorioQt() {
  contexto_.pistas = PistasDeLasPantallas();
  FijaAvisadorDeFallas([this](const QString& descripcion) {
    controles::CajaMensaje caja;
    caja.texto = descripcion.toStdString();
    const bool rechazo = EsDatoRechazado();
    caja.estilo = rechazo ? caja::kAviso : caja::kCritico;
    caja.titulo = rechazo ? "Dato no válido" : "Error inesperado";
    if (!abiertas_.empty()) ExplicaCelda(*abiertas_.back(), caja);
    Mensaje(caja);
  });
}

EscritorioQt::~EscritorioQt() { FijaAvisadorDeFallas(nullptr); }

void EscritorioQt::FijaPiloto(Piloto piloto) {
  piloto_ = std::move(piloto);
  contexto_.interactivo = false;
}

Ventana* EscritorioQt::ventana(const controles::Formulario& formulario) const {
  const auto v = ventanas_.find(&formulario);
  return v == ventanas_.end() ? nullptr : v->second.get();
}

QWidget* EscritorioQt::Frente() const {
  if (QWidget* modal = QApplication::activeModalWidget()) return modal;
  return abiertas_.empty() ? nullptr : ventana(*abiertas_.back());
}

Ventana& EscritorioQt::VentanaDe(controles::Formulario& formulario, bool modal) {
  if (Ventana* v = ventana(formulario)) return *v;
  QWidget* padre = nullptr;
  if (modal && !abiertas_.empty()) padre = ventana(*abiertas_.back());
  auto nueva = std::make_unique<Ventana>(formulario, contexto_, padre);
  Ventana& v = *nueva;
  ventanas_[&formulario] = std::move(nueva);
  if (modal) {
    AtiendeDialogo(v);
  } else {
    AtiendePrincipal(v);
  }
  if (contexto_.interactivo) AcomodaAPersona(v);
  return v;
}

void EscritorioQt::AtiendeDialogo(Ventana& v) {
  v.setWindowModality(Qt::ApplicationModal);
  v.alCerrar = [&v] { Corre([&v] { Cancela(v.formulario()); }); };
  v.puedePulsar = [this](controles::Accion accion) {
    if (accion != controles::Accion::Aceptar || !contexto_.interactivo || abiertas_.size() < 2) return true;
    return PermiteMarcas(*abiertas_.front(), Frente());
  };
}

void EscritorioQt::AtiendePrincipal(Ventana& v) {
  v.alCerrar = [this, &v] { CierraPrincipal(v.formulario()); };
  v.puedePulsar = [this, &v](controles::Accion accion) { return DejaPulsar(v.formulario(), accion); };
  v.alPulsar = [this, &v](controles::Accion accion) {
    using controles::Accion;
    if (accion == Accion::Nuevo || accion == Accion::Editar) resguardo_.Comienza(v.formulario());
  };
}

bool EscritorioQt::DejaPulsar(const controles::Formulario& formulario, controles::Accion accion) {
  if (!contexto_.interactivo || resguardo_.Permite(formulario, accion, Frente())) return true;
  VuelveAlFrente();
  return false;
}

void EscritorioQt::CierraPrincipal(controles::Formulario& formulario) {
  Corre([&] {
    if (DejaPulsar(formulario, controles::Accion::Cerrar)) formulario.Descarga();
  });
}

Ventana& EscritorioQt::Prepara(controles::Formulario& formulario, bool modal) {
  Ventana& v = VentanaDe(formulario, modal);
  std::erase(abiertas_, &formulario);
  abiertas_.push_back(&formulario);
  v.Refresca();
  return v;
}

void EscritorioQt::Abre(Ventana& v) {
  v.show();
  v.raise();
  v.activateWindow();
  v.formulario().Activa();
  v.SigueFoco();
  // What is typed first replaces the field's text, as when it is entered by Tab.
  if (auto* linea = qobject_cast<QLineEdit*>(v.focusWidget())) linea->selectAll();
}

void EscritorioQt::Muestra(controles::Formulario& formulario) { Abre(Prepara(formulario, false)); }

// A window that comes and goes within one event leaves the one below without the keyboard: the window manager's word
// about the two arrives when both have changed again.
void EscritorioQt::MuestraModal(controles::Formulario& formulario) {
  Ventana& nueva = Prepara(formulario, true);
  const auto pasos = std::exchange(pasos_, {});
  if (pasos.antes) Corre([&] { pasos.antes(formulario); });
  if (formulario.visible()) {
    Abre(nueva);
    if (pasos.abierta) Corre([&] { pasos.abierta(formulario); });
  }
  if (piloto_.modal) {
    piloto_.modal(formulario);
  } else {
    QEventLoop espera;
    esperas_[&formulario] = [&espera] { espera.quit(); };
    if (formulario.visible()) espera.exec();
    esperas_.erase(&formulario);
  }
  Oculta(formulario);
  if (abiertas_.empty()) return;
  controles::Formulario& anterior = *abiertas_.back();
  if (Ventana* v = ventana(anterior)) {
    v->activateWindow();
    v->SigueFoco();
  }
  anterior.Activa();
}

void EscritorioQt::Oculta(controles::Formulario& formulario) {
  std::erase(abiertas_, &formulario);
  if (Ventana* v = ventana(formulario)) {
    v->Descarta();
    v->hide();
  }
  if (const auto espera = esperas_.find(&formulario); espera != esperas_.end()) espera->second();
}

// The window stays until the event in which the screen ended is over.
void EscritorioQt::Descarga(controles::Formulario& formulario) {
  Oculta(formulario);
  const auto v = ventanas_.find(&formulario);
  if (v == ventanas_.end()) return;
  const bool principal = v->second->parentWidget() == nullptr;
  v->second->Suelta();
  v->second.release()->deleteLater();
  ventanas_.erase(v);
  if (principal && alTerminar) alTerminar();
}

// A field that is sent the keyboard is replaced by what is typed first, as when it is entered by Tab.
void EscritorioQt::Enfoca(controles::Control& control) {
  Ventana* v = ventana(control.formulario());
  if (v == nullptr) return;
  v->SigueFoco();
  if (!contexto_.interactivo) return;
  if (auto* linea = qobject_cast<QLineEdit*>(v->vista(control)->foco())) linea->selectAll();
}

int EscritorioQt::AnchoTexto(const controles::Formulario&, std::string_view texto) {
  return controles::AnchoTextoEstandar(texto);
}

// Repaints only: anything else that waits belongs to after the handler that runs now.
void EscritorioQt::ProcesaPendientes() {
  for (const controles::Formulario* abierta : abiertas_) {
    if (Ventana* v = ventana(*abierta)) QCoreApplication::sendPostedEvents(v, QEvent::UpdateRequest);
  }
}

QWidget* EscritorioQt::DuenioDe(int cual) const {
  for (const auto& [formulario, v] : ventanas_) {
    if (formulario->ventana() == cual && v->isVisible()) return v.get();
  }
  return Frente();
}

void EscritorioQt::VuelveAlFrente() const {
  if (QWidget* frente = Frente()) frente->activateWindow();
}

bool EscritorioQt::Pulsa(controles::Accion accion) const {
  Ventana* v = abiertas_.empty() ? nullptr : ventana(*abiertas_.front());
  return v != nullptr && v->Pulsa(accion);
}

void EscritorioQt::DiceDelBorrador() const {
  const Ventana* v = abiertas_.empty() ? nullptr : ventana(*abiertas_.front());
  const auto* barra = v == nullptr ? nullptr : abiertas_.front()->Primero<controles::ScreenToolbar>();
  if (barra == nullptr) return;
  if (auto* suya = Como<VistaBarra>(v->vista(*barra))) suya->RefrescaBorrador();
}

int EscritorioQt::Mensaje(const controles::CajaMensaje& caja) {
  CajaAviso aviso(caja, DuenioDe(caja.ventana));
  if (!piloto_.mensaje) {
    const int respuesta = aviso.Pregunta();
    VuelveAlFrente();
    return respuesta;
  }
  const int elegida = piloto_.mensaje(caja);
  // The click comes once the box waits for it.
  Despues(aviso, [&aviso, elegida] {
    if (QPushButton* boton = aviso.Boton(elegida)) boton->click();
  });
  const int respuesta = aviso.Pregunta();
  if (piloto_.mensajeVisto) piloto_.mensajeVisto(caja, respuesta);
  return respuesta;
}

std::string EscritorioQt::EditaNotas(const std::string& titulo, const std::string& texto, int ancho) {
  if (piloto_.notas) return piloto_.notas(texto);
  EditorNotas editor(Q(titulo), Q(texto), ancho, Frente());
  if (!abiertas_.empty() && !EnCaptura(*abiertas_.front())) editor.SoloLee();
  const EditorNotas* fuera = std::exchange(editorNotas_, &editor);
  const bool acepta = editor.exec() == QDialog::Accepted;
  editorNotas_ = fuera;
  VuelveAlFrente();
  return acepta ? editor.Texto().toStdString() : texto;
}

std::optional<std::string> EscritorioQt::NotasAMedias() const {
  if (editorNotas_ == nullptr || !editorNotas_->Cambio()) return std::nullopt;
  return editorNotas_->Texto().toStdString();
}

std::string EscritorioQt::EligeDeCatalogo(const std::string& titulo,
                                          const std::vector<std::pair<std::string, std::string>>& filas) {
  if (piloto_.catalogo) return piloto_.catalogo();
  Busqueda busqueda(Q(titulo), filas, Frente());
  const bool acepta = busqueda.exec() == QDialog::Accepted;
  VuelveAlFrente();
  return acepta ? busqueda.Elegida() : std::string();
}

void EscritorioQt::AbrePantalla(const std::string& pantalla, const std::vector<com::Variant>& argumentos) {
  if (piloto_.mensaje) return;  // the host has recorded it; a script has nothing to do in it
  if (const auto p = pantallas_.find(pantalla); p != pantallas_.end()) {
    p->second(argumentos, Frente());
    VuelveAlFrente();
  }
}

void EscritorioQt::EnviaTeclas(const std::string& teclas) {
  if (abiertas_.empty()) return;
  controles::Formulario& activa = *abiertas_.back();
  for (std::size_t i = 0; i < teclas.size();) {
    const char32_t c = com::LeeUtf8(teclas, i);
    if (c == U'\t') {
      activa.PulsaTecla(controles::tecla::kTab);
    } else {
      activa.PulsaCaracter(c);
    }
  }
}

}  // namespace vista
