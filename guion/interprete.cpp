#include "guion/interprete.h"

#include <algorithm>
#include <utility>

#include "host/standalone/correo.h"
#include "host/standalone/letras.h"
#include "platform/com/error.h"

namespace guion {

namespace {

[[noreturn]] void NoExiste(const std::string& texto) { throw com::Error(com::error::kArgumento, texto); }

}  // namespace

Interprete::Interprete(const Piezas& piezas, std::ostream& salida, std::ostream& errores)
    : piezas_(piezas),
      salida_(salida),
      errores_(errores),
      hoy_(autonomo::LetraBuscada),
      huespedes_(autonomo::LetraBuscada, autonomo::DireccionValida) {
  recepcion::Conecta({[this](const std::string& folio) { AbreReservacion(folio); },
                      [this](const std::string& campo, const recepcion::Toma& toma) { TomaHuesped(campo, toma); },
                      [this](const recepcion::Pedido& pedido, const std::vector<recepcion::Tramo>& tramos) {
                        Reserva(pedido, tramos);
                      }},
                     hoy_, cuadro_, cotizacion_, huespedes_);
  piezas_.respuestas.enTransaccion = [this] { return piezas_.anfitrion.conexion()->EnTransaccion(); };
}

const std::vector<Interprete::DatosOrden>& Interprete::Ordenes() {
  static const std::vector<DatosOrden> ordenes = {
      {"parametro", 2, 2, "parametro CLAVE VALOR", &Interprete::Parametro},
      {"permiso", 2, 2, "permiso OPCION si|no", &Interprete::Permiso},
      {"cambio", 2, 2, "cambio MONEDA TASA", &Interprete::Cambio},
      {"impuesto", 3, 3, "impuesto SUCURSAL PRODUCTO FACTOR", &Interprete::Impuesto},
      {"tarifa", 4, 4, "tarifa TIPO PRECIO ADULTO_EXTRA MENOR_EXTRA", &Interprete::Tarifa},
      {"plantilla", 3, 4, "plantilla CODIGO ASUNTO CUERPO [FORMATO]", &Interprete::Plantilla},
      {"direccion", 2, 2, "direccion CLIENTE CORREO", &Interprete::Direccion},
      {"ahora", 1, 1, "ahora AAAA-MM-DDTHH:MM[:SS]", &Interprete::Ahora},
      {"abre", 0, 0, "abre", &Interprete::Abre},
      {"cierra", 0, 0, "cierra", &Interprete::Cierra},
      {"texto", 2, 2, "texto CONTROL VALOR", &Interprete::Texto},
      {"enter", 1, 1, "enter CONTROL", &Interprete::Enter},
      {"campo", 2, 2, "campo CONTROL VALOR", &Interprete::Campo},
      {"fecha", 2, 2, "fecha CONTROL AAAA-MM-DD", &Interprete::Fecha},
      {"clic", 1, 1, "clic CONTROL", &Interprete::Clic},
      {"tecla", 1, 2, "tecla TECLA [CONTROL]", &Interprete::Tecla},
      {"accion", 1, 1, "accion NOMBRE", &Interprete::Accion},
      {"celda", 3, 3, "celda FILA COLUMNA VALOR", &Interprete::Celda},
      {"ve", 2, 2, "ve FILA COLUMNA", &Interprete::Ve},
      {"borra", 1, 1, "borra FILA", &Interprete::Borra},
      {"marca", 2, 2, "marca FILA NOCHE", &Interprete::Marca},
      {"marcafila", 1, 1, "marcafila FILA", &Interprete::MarcaFila},
      {"tamano", 2, 2, "tamano ANCHO ALTO", &Interprete::Tamano},
      {"responde", 2, 2, "responde ID RESPUESTA | responde notas TEXTO | responde catalogo CLAVE",
       &Interprete::Responde},
      {"muestra", 1, 1, "muestra CONTROL | Controles | campos | renglones | tablero | columnas | …",
       &Interprete::Muestra},
      {"lista", 1, 7, "lista bitacora|correos [folio FOLIO] [usuario LOGIN] [dia AAAA-MM-DD]", &Interprete::Lista},
      {"reenvia", 1, 1, "reenvia CORREO", &Interprete::Reenvia},
      {"hotel", 1, 8, "hotel nombre|sucursal|moneda|divisa|impuesto|precios|tipo|usuario VALOR… | crea | olvida",
       &Interprete::Hotel},
      {"hoy", 0, 2, "hoy [lista NOMBRE | busca TEXTO | abre FILA]", &Interprete::Hoy},
      {"cuadro", 2, 4, "cuadro DESDE NOCHES | cuadro abre HABITACION NOCHE | cuadro reserva HABITACION LLEGADA SALIDA",
       &Interprete::Cuadro},
      {"cotiza", 2, 6, "cotiza LLEGADA SALIDA ADULTOS [MENORES [INFANTES [MONEDA]]] | cotiza reserva OFERTA",
       &Interprete::Cotiza},
      {"cifras", 2, 3, "cifras DESDE HASTA [SUCURSAL]", &Interprete::Cifras},
      {"exporta", 2, 3,
       "exporta hoy|cuadro|cotizacion|cifras|meses|bitacora|correos|usuarios|CATALOGO ARCHIVO.csv|ARCHIVO.pdf "
       "[comas|puntoycoma]",
       &Interprete::Exporta},
      {"agenda", 2, 3, "agenda HABITACION|todas ARCHIVO.ics [nombres]", &Interprete::Agenda},
      {"parte", 0, 1, "parte [envia | deldia | ARCHIVO.pdf | ARCHIVO.txt]", &Interprete::Parte},
      {"borrador", 1, 1, "borrador guarda|repone|olvida", &Interprete::Borrador},
      {"repone", 0, 0, "repone", &Interprete::Repone},
      {"porque", 2, 2, "porque FILA NOCHE", &Interprete::PorQue},
      {"huesped", 0, 5,
       "huesped [cliente] | huesped busca TEXTO | ve FILA | elige [habitacion] [notas] | abre RESERVACION | "
       "nuevo|aunque CLAVE NOMBRE TELEFONO CORREO",
       &Interprete::Huesped},
      {"explica", 0, 1, "explica [RENGLON]", &Interprete::Explica},
      {"sql", 1, 1, "sql SENTENCIA", &Interprete::Sql},
      {"falla", 1, 3,
       "falla sentencia TEXTO [N] | host OPERACION [TEXTO] | tienda OPERACION TEXTO | grid [TEXTO] | "
       "begin|commit|rollback | correo [TEXTO]",
       &Interprete::Falla},
      {"foto", 1, 1, "foto ARCHIVO.png", &Interprete::Foto},
  };
  return ordenes;
}

int Interprete::Corre(std::istream& entrada, const std::string& nombre) {
  entrada_ = &entrada;
  nombre_ = nombre;
  linea_ = fallidas_ = 0;
  Bucle([] { return true; });
  return fallidas_;
}

void Interprete::AtiendeModal(controles::Formulario& formulario) {
  if (const auto pasos = std::exchange(pasosDelTablero_, nullptr)) {
    pasos(formulario);
    if (!formulario.visible()) return;
  }
  Contesta();
  ++modales_;
  Bucle([&] { return formulario.visible(); });
  --modales_;
  if (!formulario.visible()) return;
  piezas_.manos.Tecla(formulario, controles::tecla::kEsc, 0);
  if (formulario.visible()) formulario.Oculta();
}

// sigue: whether the loop goes on after the order just carried out. When it does not, that order is still to be
// answered, by the loop that is waiting for this one.
void Interprete::Bucle(const std::function<bool()>& sigue) {
  while (LeeOrden()) {
    Atiende();
    if (!sigue()) return;
    Contesta();
  }
}

bool Interprete::LeeOrden() {
  std::string linea;
  while (std::getline(*entrada_, linea)) {
    ++linea_;
    if (linea_ == 1 && linea.starts_with("\xEF\xBB\xBF")) linea.erase(0, 3);
    actual_ = Respuesta{};
    actual_.linea = linea_;
    partes_ = Linea{};
    try {
      if (!EsUtf8(linea)) NoExiste("La línea no es UTF-8 válido");
      partes_ = DivideLinea(linea);
      if (partes_.palabras.empty()) continue;
      actual_.orden = partes_.texto;
    } catch (const com::Error& e) {
      while (!linea.empty() && (linea.back() == '\r' || linea.back() == ' ')) linea.pop_back();
      actual_.orden = linea;
      Rechaza(e.Descripcion());
    }
    return true;
  }
  return false;
}

void Interprete::Atiende() {
  if (!actual_.ok) return;
  const Palabras palabras = partes_.palabras;
  try {
    Ejecuta(palabras);
  } catch (const std::exception& e) {
    Rechaza(e.what());
  }
}

void Interprete::Ejecuta(const Palabras& p) {
  const auto& ordenes = Ordenes();
  const auto orden = std::ranges::find_if(ordenes, [&](const DatosOrden& o) { return o.nombre == p[0]; });
  if (orden == ordenes.end()) NoExiste("No existe la orden «" + p[0] + "»");
  const std::size_t argumentos = p.size() - 1;
  if (argumentos < orden->minimo || argumentos > orden->maximo) NoExiste("Se escribe: " + std::string(orden->uso));
  (this->*orden->hace)(p);
}

// What happens after a modal form is hidden belongs to the order that hid it, which is then the current one.
void Interprete::Rechaza(const std::string& motivo) {
  if (!actual_.ok) return;
  actual_.ok = false;
  actual_.error = motivo;
}

// Name of the window that a box belongs to.
Json Interprete::DuenaDe(const controles::CajaMensaje& caja) const {
  if (!piezas_.componente.Creada()) return {};
  for (const controles::Formulario* f : {&piezas_.componente.formulario(), &piezas_.componente.tablero()}) {
    if (f->ventana() == caja.ventana) return Json(f->nombre());
  }
  return {};
}

Json Interprete::Mensajes() {
  Json lista = Json::Arreglo();
  for (const MensajeVisto& m : piezas_.respuestas.TomaVistos()) {
    Json mensaje = Json::Objeto()
                       .Pon("texto", m.caja.texto)
                       .Pon("estilo", m.caja.estilo)
                       .Pon("titulo", m.caja.titulo)
                       .Pon("ventana", DuenaDe(m.caja))
                       .Pon("pantalla", m.caja.pantalla)
                       .Pon("id", m.caja.id)
                       .Pon("respuesta", m.respuesta);
    if (!m.caja.detalle.empty()) mensaje.Pon("detalle", m.caja.detalle);
    if (m.enTransaccion) mensaje.Pon("enTransaccion", true);
    lista.Agrega(std::move(mensaje));
  }
  return lista;
}

void Interprete::Contesta() {
  if (actual_.contestada) return;
  if (const auto queja = piezas_.respuestas.TomaQueja()) Rechaza(*queja);
  actual_.contestada = true;
  Json json = Json::Objeto().Pon("linea", actual_.linea).Pon("orden", actual_.orden).Pon("ok", actual_.ok);
  if (!actual_.ok) json.Pon("error", actual_.error);
  if (actual_.valor) json.Pon("valor", *actual_.valor);
  if (actual_.retenida) json.Pon("retenida", *actual_.retenida);
  json.Pon("mensajes", Mensajes());

  const controles::Formulario* activo = piezas_.componente.Activo();
  const controles::Control* foco = activo == nullptr ? nullptr : activo->foco();
  json.Pon("foco", foco == nullptr ? Json() : Json(foco->nombre()));
  json.Pon("ventana", activo == nullptr ? Json() : Json(activo->nombre()));
  Json celda;
  if (activo != nullptr) {
    const auto& grid = GridDe(*piezas_.componente.Activo());
    if (grid.fila() >= 0 && grid.columna() >= 0) {
      celda = Json::Objeto().Pon("fila", grid.fila()).Pon("columna", grid.ClaveColumna());
    }
  }
  json.Pon("celda", std::move(celda));

  salida_ << json.Texto() << '\n' << std::flush;
  if (!salida_) throw com::Error(com::error::kBaseDatos, "No se pudo escribir la salida");
  if (!actual_.ok) {
    ++fallidas_;
    errores_ << nombre_ << ':' << actual_.linea << ": " << Utf8Saneado(actual_.error) << '\n' << std::flush;
  }
}

// --- what the orders' words stand for --------------------------------------------------------------------------------

controles::Formulario& Interprete::Activo() const {
  controles::Formulario* activo = piezas_.componente.Activo();
  if (activo == nullptr) throw com::Error(com::error::kSinObjeto, "La pantalla no está abierta; use la orden «abre»");
  return *activo;
}

controles::Formulario& Interprete::FormularioDe(const std::string& nombre) const {
  for (controles::Formulario* f : {&piezas_.componente.formulario(), &piezas_.componente.tablero()}) {
    if (f->nombre() == nombre) return *f;
  }
  NoExiste("No existe la ventana «" + nombre + "»");
}

controles::Control& Interprete::ControlDe(const std::string& nombre) const {
  const std::size_t punto = nombre.find('.');
  const bool calificado = punto != std::string::npos;
  controles::Formulario& formulario = calificado ? FormularioDe(nombre.substr(0, punto)) : Activo();
  const std::string propio = calificado ? nombre.substr(punto + 1) : nombre;
  controles::Control* control = formulario.Busca(propio);
  if (control == nullptr) NoExiste("No existe el control «" + propio + "» en " + formulario.nombre());
  return *control;
}

controles::Control& Interprete::ControlActivo(const std::string& nombre) const {
  controles::Control& control = ControlDe(nombre);
  if (&control.formulario() != &Activo()) NoExiste("La ventana " + control.formulario().nombre() + " no está activa");
  return control;
}

controles::Grid& Interprete::GridDe(controles::Formulario& formulario) const {
  if (auto* grid = formulario.Primero<controles::Grid>()) return *grid;
  NoExiste(formulario.nombre() + " no tiene renglones");
}

controles::Grid& Interprete::Renglones() const {
  controles::Formulario& activo = Activo();
  if (&activo != &piezas_.componente.formulario()) NoExiste("La pantalla de reservación no está activa");
  return GridDe(activo);
}

controles::Grid& Interprete::Tablero() const {
  controles::Formulario& activo = Activo();
  if (&activo != &piezas_.componente.tablero()) NoExiste("El tablero de disponibilidad no está a la vista");
  return GridDe(activo);
}

controles::ScreenToolbar& Interprete::BarraDe(controles::Formulario& formulario) const {
  if (auto* barra = formulario.Primero<controles::ScreenToolbar>()) return *barra;
  NoExiste(formulario.nombre() + " no tiene barra de acciones");
}

void Interprete::ExigeSinModal() const {
  if (modales_ > 0) NoExiste("El tablero de disponibilidad está abierto; acéptelo o cancélelo antes");
}

}  // namespace guion
