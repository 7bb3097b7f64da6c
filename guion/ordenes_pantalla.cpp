#include "guion/ordenes_pantalla.h"

#include <utility>

#include "component/nombres.h"
#include "guion/lineas.h"
#include "guion/muestra.h"
#include "guion/usable.h"
#include "platform/com/error.h"

namespace guion {

namespace {

int ColumnaDe(const controles::Grid& grid, const std::string& clave) {
  const int columna = grid.IndiceColumna(clave);
  if (columna < 0) Error("«" + grid.nombre() + "» no tiene la columna «" + clave + "»");
  return columna;
}

int FilaDe(const controles::Grid& grid, const std::string& palabra) {
  const int fila = NumeroDe<int>(palabra);
  if (fila < 0 || fila >= grid.Filas()) {
    Error("«" + grid.nombre() + "» no tiene el renglón " + palabra + "; tiene " + std::to_string(grid.Filas()));
  }
  return fila;
}

int CodigoDeTecla(const std::string& nombre) {
  namespace t = controles::tecla;
  static constexpr std::pair<const char*, int> kTeclas[] = {
      {"F2", t::kF2},   {"F3", t::kF3},       {"F5", t::kF5},   {"F6", t::kF6},     {"F7", t::kF7},
      {"Esc", t::kEsc}, {"Enter", t::kEnter}, {"Tab", t::kTab}, {"Supr", t::kSupr}, {"Retroceso", t::kRetroceso},
  };
  for (const auto& [tecla, codigo] : kTeclas) {
    if (nombre == tecla) return codigo;
  }
  return 0;
}

}  // namespace

std::vector<Orden> OrdenesPantalla::Ordenes() {
  static constexpr DatosOrden<OrdenesPantalla> kOrdenes[] = {
      {"abre", 0, 0, "abre", &OrdenesPantalla::Abre},
      {"cierra", 0, 0, "cierra", &OrdenesPantalla::Cierra},
      {"texto", 2, 2, "texto CONTROL VALOR", &OrdenesPantalla::Texto},
      {"enter", 1, 1, "enter CONTROL", &OrdenesPantalla::Enter},
      {"campo", 2, 2, "campo CONTROL VALOR", &OrdenesPantalla::Campo},
      {"fecha", 2, 2, "fecha CONTROL AAAA-MM-DD", &OrdenesPantalla::Fecha},
      {"clic", 1, 1, "clic CONTROL", &OrdenesPantalla::Clic},
      {"tecla", 1, 2, "tecla TECLA [CONTROL]", &OrdenesPantalla::Tecla},
      {"accion", 1, 1, "accion NOMBRE", &OrdenesPantalla::Accion},
      {"celda", 3, 3, "celda FILA COLUMNA VALOR", &OrdenesPantalla::Celda},
      {"ve", 2, 2, "ve FILA COLUMNA", &OrdenesPantalla::Ve},
      {"borra", 1, 1, "borra FILA", &OrdenesPantalla::Borra},
      {"marca", 2, 2, "marca FILA NOCHE", &OrdenesPantalla::Marca},
      {"marcafila", 1, 1, "marcafila FILA", &OrdenesPantalla::MarcaFila},
      {"tamano", 2, 2, "tamano ANCHO ALTO", &OrdenesPantalla::Tamano},
      {"responde", 2, 2, "responde ID RESPUESTA | responde notas TEXTO | responde catalogo CLAVE",
       &OrdenesPantalla::Responde},
      {"foto", 1, 1, "foto ARCHIVO.png", &OrdenesPantalla::Foto},
  };
  return Enlaza(*this, kOrdenes);
}

Json OrdenesPantalla::Muestra(const std::string& que) {
  if (que == "renglones") return MuestraRenglones(alcance_.GridDe(piezas_.componente.formulario()));
  if (que == "tablero") return MuestraTablero(alcance_.GridDe(piezas_.componente.tablero()));
  if (que == "Pantalla") {
    piezas_.componente.pantalla();
    return Json::Objeto()
        .Pon("misma", piezas_.componente.MismaPantalla())
        .Pon("Modulo", piezas_.componente.Modulo())
        .Pon("Transaccion", piezas_.componente.Transaccion());
  }
  const std::size_t punto = que.find('.');
  const std::string propio = punto == std::string::npos ? que : que.substr(punto + 1);
  const auto formulario = [&]() -> controles::Formulario& {
    return punto == std::string::npos ? alcance_.Activo() : alcance_.FormularioDe(que.substr(0, punto));
  };
  if (propio == "campos") return MuestraCampos(formulario());
  if (propio == "entradas") return MuestraEntradas(formulario());
  if (propio == "columnas") return MuestraColumnas(alcance_.GridDe(formulario()));
  if (propio == kv207::control::kBarra) return MuestraBarra(alcance_.BarraDe(formulario()));
  return MuestraControl(alcance_.ControlDe(que));
}

// --- the screen ------------------------------------------------------------------------------------------------------

void OrdenesPantalla::Abre(const Palabras&) {
  alcance_.ExigeSinModal();
  piezas_.componente.Abre(piezas_.anfitrion.Padre());
  if (alAbrir) alAbrir(piezas_.componente.formulario());
}

void OrdenesPantalla::Cierra(const Palabras&) {
  alcance_.ExigeSinModal();
  if (!piezas_.componente.Abierta()) Error("La pantalla no está abierta");
  piezas_.componente.Cierra();
}

void OrdenesPantalla::Texto(const Palabras& p) { piezas_.manos.Texto(alcance_.ControlActivo(p[1]), p[2]); }

void OrdenesPantalla::Enter(const Palabras& p) { piezas_.manos.Confirma(alcance_.ControlActivo(p[1])); }

void OrdenesPantalla::Campo(const Palabras& p) {
  controles::Control& control = alcance_.ControlActivo(p[1]);
  piezas_.manos.Texto(control, p[2]);
  piezas_.manos.Confirma(control);
}

void OrdenesPantalla::Fecha(const Palabras& p) {
  controles::Control& control = alcance_.ControlActivo(p[1]);
  auto* fecha = controles::Como<controles::DateField>(&control);
  if (fecha == nullptr) Error("«" + control.nombre() + "» no es un campo de fecha");
  piezas_.manos.PonFecha(*fecha, FechaDe(p[2]));
}

void OrdenesPantalla::Clic(const Palabras& p) { piezas_.manos.Clic(alcance_.ControlActivo(p[1])); }

void OrdenesPantalla::Tecla(const Palabras& p) {
  controles::Formulario& formulario = alcance_.Activo();
  const int codigo = CodigoDeTecla(p[1]);
  const std::u32string caracteres = CodigosDe(p[1]);
  if (codigo == 0 && caracteres.size() != 1) Error("No existe la tecla «" + p[1] + "»");
  if (p.size() > 2) {
    controles::Control& control = alcance_.ControlActivo(p[2]);
    RevisaUsable(control);
    if (!control.PuedeEnfocarse()) Error("«" + control.nombre() + "» no recibe teclas");
    piezas_.manos.Enfoca(control);
  }
  if (codigo != 0) {
    piezas_.manos.Tecla(formulario, codigo, 0);
  } else {
    piezas_.manos.Caracter(formulario, caracteres[0]);
  }
}

void OrdenesPantalla::Accion(const Palabras& p) {
  controles::ScreenToolbar& barra = alcance_.BarraDe(alcance_.Activo());
  const auto accion = controles::AccionDe(p[1]);
  if (!accion) Error("No existe la acción «" + p[1] + "»");
  if (!barra.Ofrece(*accion)) Error("La acción «" + p[1] + "» no está disponible");
  piezas_.manos.Accion(barra, *accion);
}

// As large as any screen; a window takes memory for each of its pixels.
void OrdenesPantalla::Tamano(const Palabras& p) {
  constexpr int kMayor = 120000;  // twips, 8000 pixels
  const int ancho = NumeroDe<int>(p[1]), alto = NumeroDe<int>(p[2]);
  if (ancho > kMayor || alto > kMayor) {
    Error("El tamaño de una ventana es de " + std::to_string(kMayor) + " twips a lo más");
  }
  piezas_.manos.Tamano(alcance_.Activo(), ancho, alto);
}

void OrdenesPantalla::Foto(const Palabras& p) { piezas_.manos.Foto(alcance_.Activo(), p[1]); }

// --- grids -----------------------------------------------------------------------------------------------------------

void OrdenesPantalla::Celda(const Palabras& p) {
  controles::Grid& grid = alcance_.Renglones();
  const int columna = ColumnaDe(grid, p[2]);
  const int fila = p[1] == "nueva" ? -1 : FilaDe(grid, p[1]);
  RevisaCeldaEscribible(grid, fila, columna);
  alcance_.actual.retenida = !piezas_.manos.Celda(grid, fila, columna, p[3]);
}

void OrdenesPantalla::Ve(const Palabras& p) {
  controles::Grid& grid = alcance_.GridDe(alcance_.Activo());
  alcance_.actual.retenida = !piezas_.manos.Ve(grid, FilaDe(grid, p[1]), ColumnaDe(grid, p[2]));
}

void OrdenesPantalla::Borra(const Palabras& p) {
  controles::Grid& grid = alcance_.Renglones();
  piezas_.manos.Borra(grid, FilaDe(grid, p[1]));
}

void OrdenesPantalla::Marca(const Palabras& p) {
  controles::Grid& grid = alcance_.Tablero();
  const int noche = NumeroDe<int>(p[2]);
  const int noches = grid.NumColumnas() - kColumnasFijas;
  if (noche < 0 || noche >= noches) {
    Error("El tablero no tiene la noche " + p[2] + "; tiene " + std::to_string(noches));
  }
  piezas_.manos.ClicCelda(grid, FilaDe(grid, p[1]), noche + kColumnasFijas);
}

void OrdenesPantalla::MarcaFila(const Palabras& p) {
  controles::Grid& grid = alcance_.Tablero();
  piezas_.manos.SeleccionaFila(grid, FilaDe(grid, p[1]));
}

// --- answers prepared for questions ----------------------------------------------------------------------------------

void OrdenesPantalla::Responde(const Palabras& p) {
  if (p[1] == "notas") return piezas_.respuestas.PreparaNotas(p[2]);
  if (p[1] == "catalogo") return piezas_.respuestas.PreparaCatalogo(p[2]);
  piezas_.respuestas.Prepara(p[1], NumeroDe<int>(p[2]));
}

}  // namespace guion
