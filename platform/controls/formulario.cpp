#include "platform/controls/formulario.h"

#include <algorithm>
#include <utility>

#include "platform/com/error.h"
#include "platform/com/texto.h"
#include "platform/controls/grid.h"

namespace controles {
namespace {

struct Ambiente {
  Escritorio* escritorio = nullptr;
  Buscador buscador;
  bool mayusculas = false;
  std::string detalle;
  int ultimaVentana = 0;
};

Ambiente& ElAmbiente() {
  static Ambiente ambiente;
  return ambiente;
}

bool EsTeclaDePaso(int codigo) { return codigo == tecla::kTab || codigo == tecla::kEnter; }

}  // namespace

int RespuestaPredeterminada(int estilo) {
  const bool segundo = (estilo & caja::kSegundo) != 0;
  switch (estilo & caja::kBotones) {
    case caja::kAceptarCancelar:
      return segundo ? kCancelar : kAceptar;
    case caja::kSiNo:
      return segundo ? kNo : kSi;
    default:
      return kAceptar;
  }
}

Escritorio& EscritorioActual() {
  Escritorio* e = ElAmbiente().escritorio;
  if (e == nullptr) throw com::Error(com::error::kSinObjeto, "No hay un escritorio donde mostrar las pantallas");
  return *e;
}

void FijaEscritorio(Escritorio* escritorio) { ElAmbiente().escritorio = escritorio; }
void FijaBuscador(Buscador buscador) { ElAmbiente().buscador = std::move(buscador); }
const Buscador& BuscadorActual() { return ElAmbiente().buscador; }
void FijaMayusculas(bool fuerza) { ElAmbiente().mayusculas = fuerza; }
ConDetalle::ConDetalle(std::string detalle) : antes_(std::exchange(ElAmbiente().detalle, std::move(detalle))) {}
ConDetalle::~ConDetalle() { ElAmbiente().detalle = std::move(antes_); }
const std::string& DetalleActual() { return ElAmbiente().detalle; }
bool MayusculasForzadas() { return ElAmbiente().mayusculas; }

Formulario::Formulario(std::string nombre, std::string caption, int width, int height)
    : nombre_(std::move(nombre)),
      caption_(std::move(caption)),
      ventana_(++ElAmbiente().ultimaVentana),
      width_(width),
      height_(height) {}

Control* Formulario::Busca(std::string_view nombre) const {
  const auto i =
      std::find_if(controles_.begin(), controles_.end(), [&](const Control* c) { return c->nombre() == nombre; });
  return i == controles_.end() ? nullptr : *i;
}

// --- life

void Formulario::Carga() {
  if (cargado_) return;
  cargado_ = true;
  try {
    if (Load) Load();
    for (Control* c : controles_) {
      const auto* grid = Como<Grid>(c);
      if (grid != nullptr && grid->InitColumnProps) grid->InitColumnProps();
    }
  } catch (...) {
    cargado_ = false;
    throw;
  }
}

void Formulario::Muestra() {
  Carga();
  visible_ = true;
  EnfocaPrimera();
  EscritorioActual().Muestra(*this);
}

void Formulario::MuestraModal() {
  Carga();
  visible_ = true;
  EnfocaPrimera();
  EscritorioActual().MuestraModal(*this);
}

void Formulario::Oculta() {
  if (!visible_) return;
  visible_ = false;
  if (Escritorio* e = ElAmbiente().escritorio) e->Oculta(*this);
}

void Formulario::Descarga() {
  if (!cargado_ || descargando_) return;
  descargando_ = true;
  const auto termina = [this] {
    descargando_ = cargado_ = visible_ = false;
    foco_ = nullptr;
    if (Escritorio* e = ElAmbiente().escritorio) e->Descarga(*this);
  };
  try {
    if (Unload) Unload();
  } catch (...) {
    termina();
    throw;
  }
  termina();
}

void Formulario::Activa() {
  if (Activate) Activate();
}

void Formulario::Redimensiona(int width, int height) {
  width_ = width;
  height_ = height;
  if (Resize) Resize();
  if (alAvisar) alAvisar();
}

// --- focus

void Formulario::Enfoca(Control& control) {
  if (!control.PuedeEnfocarse()) return;
  const bool otro = std::exchange(foco_, &control) != &control;
  ++vecesEnfocado_;
  EscritorioActual().Enfoca(control);
  if (otro && FocusChange) FocusChange();
}

// A form that comes up with no usable focus starts at its first tab stop; the view takes it from foco().
void Formulario::EnfocaPrimera() {
  if (foco_ != nullptr && foco_->PuedeEnfocarse()) return;
  const auto i = std::find_if(controles_.begin(), controles_.end(),
                              [](const Control* c) { return c->tabStop() && c->PuedeEnfocarse(); });
  foco_ = i == controles_.end() ? nullptr : *i;
}

void Formulario::EnfocaSiguiente(int paso) {
  const auto n = static_cast<int>(controles_.size());
  const auto aqui = std::find(controles_.begin(), controles_.end(), foco_);
  int i = aqui == controles_.end() ? (paso > 0 ? -1 : n) : static_cast<int>(aqui - controles_.begin());
  for (int vueltas = 0; vueltas < n; ++vueltas) {
    i = (i + (paso > 0 ? 1 : -1) + n) % n;
    Control& c = *controles_[static_cast<std::size_t>(i)];
    if (c.tabStop() && c.PuedeEnfocarse()) return Enfoca(c);
  }
}

// --- keys

void Formulario::TeclaAbajo(int codigo, int mayus) {
  const int paso = (mayus & 1) != 0 ? -1 : 1;
  if (foco_ == nullptr || !foco_->PuedeEnfocarse()) {
    if (codigo == tecla::kTab) EnfocaSiguiente(paso);
    return;
  }
  if (auto* campo = Como<LookupField>(foco_)) return TeclaCampo(*campo, codigo, paso);
  if (auto* notas = Como<CampoNotas>(foco_)) return TeclaNotas(*notas, codigo, mayus);
  if (auto* grid = Como<Grid>(foco_)) return grid->TeclaAbajo(codigo, mayus);
  if (auto* boton = Como<Boton>(foco_)) {
    if (codigo == tecla::kEnter || codigo == tecla::kEspacio) return boton->Pulsa();
    if (codigo == tecla::kTab) EnfocaSiguiente(paso);
    return;
  }
  if (codigo == tecla::kEspacio) {
    if (auto* casilla = Como<Casilla>(foco_)) return casilla->Pulsa();
    if (auto* opcion = Como<Opcion>(foco_)) return opcion->Pulsa();
  }
  if (EsTeclaDePaso(codigo)) EnfocaSiguiente(paso);
}

void Formulario::TeclaArriba(int codigo, int mayus) {
  Control* const tenia = foco_;
  if (KeyUp) KeyUp(codigo, mayus);
  auto* grid = Como<Grid>(foco_);
  if (grid != nullptr && grid == tenia && grid->PuedeEnfocarse()) grid->TeclaArriba(codigo, mayus);
}

void Formulario::TeclaCampo(LookupField& campo, int codigo, int paso) {
  // Unless a rule has sent the focus somewhere, be it back to the field.
  const auto sigue = [&, veces = vecesEnfocado_] {
    if (foco_ == &campo && vecesEnfocado_ == veces) EnfocaSiguiente(paso);
  };
  switch (codigo) {
    case tecla::kEnter:
      if (!campo.locked()) campo.Confirma();
      if (campo.diseno().tabonenter) sigue();
      break;
    case tecla::kTab:
      if (!campo.locked() && campo.pendiente()) campo.Confirma();
      sigue();
      break;
    case tecla::kRetroceso: {
      std::string texto = campo.text();
      com::QuitaUltimoUtf8(texto);
      if (!campo.locked()) campo.Teclea(std::move(texto));
      break;
    }
    case tecla::kSupr:
      if (!campo.locked()) campo.Teclea({});
      break;
    default:
      break;
  }
}

void Formulario::TeclaNotas(CampoNotas& campo, int codigo, int mayus) {
  if (campo.KeyDown) campo.KeyDown(codigo, mayus);
  if (codigo == tecla::kTab) {
    if (foco_ == &campo) EnfocaSiguiente((mayus & 1) != 0 ? -1 : 1);
    return;
  }
  if (campo.locked()) return;
  if (codigo == tecla::kEnter) {
    campo.Teclea(campo.text() + "\n");
  } else if (codigo == tecla::kRetroceso) {
    std::string texto = campo.text();
    com::QuitaUltimoUtf8(texto);
    campo.Teclea(std::move(texto));
  }
}

void Formulario::PulsaCaracter(char32_t caracter) {
  if (foco_ == nullptr || !foco_->PuedeEnfocarse()) return;
  if (auto* grid = Como<Grid>(foco_)) return grid->PulsaCaracter(caracter);
  if (caracter < 32) return TeclaAbajo(static_cast<int>(caracter));
  const auto escribe = [caracter](auto& campo) {
    std::string texto = campo.text();
    com::AgregaUtf8(texto, caracter);
    if (!campo.locked()) campo.Teclea(std::move(texto));
  };
  if (auto* campo = Como<LookupField>(foco_)) {
    escribe(*campo);
  } else if (auto* notas = Como<CampoNotas>(foco_)) {
    escribe(*notas);
  } else if (caracter == U' ') {
    TeclaAbajo(tecla::kEspacio);
  }
}

}  // namespace controles
