// One member for each order of the script's language.
#include <memory>

#include "component/nombres.h"
#include "guion/interprete.h"
#include "guion/muestra.h"
#include "guion/muestra_hotel.h"
#include "guion/muestra_recepcion.h"
#include "guion/palabras.h"
#include "guion/usable.h"
#include "platform/com/error.h"
#include "recepcion/explicacion.h"

namespace guion {

namespace {

[[noreturn]] void Error(const std::string& motivo) { throw com::Error(com::error::kArgumento, motivo); }

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

Json FilasDe(ado::Recordset& rs) {
  Json filas = Json::Arreglo();
  for (; !rs.Eof(); rs.MoveNext()) {
    Json fila = Json::Objeto();
    for (std::size_t c = 0; c < rs.Nombres().size(); ++c) fila.Pon(rs.Nombres()[c], rs.Fields(c).Value());
    filas.Agrega(std::move(fila));
  }
  return filas;
}

}  // namespace

// --- the host's set-up -----------------------------------------------------------------------------------------------

void Interprete::Parametro(const Palabras& p) { piezas_.anfitrion.Parametro(p[1], p[2]); }

void Interprete::Permiso(const Palabras& p) {
  if (p[2] != "si" && p[2] != "sí" && p[2] != "no") Error("Un permiso es «si» o «no»");
  piezas_.anfitrion.Permiso(p[1], p[2] != "no");
}

void Interprete::Cambio(const Palabras& p) { piezas_.anfitrion.Cambio(p[1], NumeroDe<double>(p[2])); }

void Interprete::Impuesto(const Palabras& p) { piezas_.anfitrion.Impuesto(p[1], p[2], NumeroDe<double>(p[3])); }

void Interprete::Tarifa(const Palabras& p) {
  piezas_.anfitrion.Tarifa(p[1], NumeroDe<double>(p[2]), NumeroDe<double>(p[3]), NumeroDe<double>(p[4]));
}

void Interprete::Plantilla(const Palabras& p) {
  piezas_.anfitrion.Plantilla(p[1], p[2], p[3], p.size() > 4 ? p[4] : "");
}

void Interprete::Direccion(const Palabras& p) { piezas_.anfitrion.Direccion(p[1], p[2]); }

void Interprete::Ahora(const Palabras& p) { piezas_.anfitrion.reloj().Fija(FechaDe(p[1])); }

// --- the screen ------------------------------------------------------------------------------------------------------

void Interprete::Abre(const Palabras&) {
  ExigeSinModal();
  piezas_.componente.Abre(piezas_.anfitrion.Padre());
  quitados_.Vigila(piezas_.componente.formulario());
}

void Interprete::Cierra(const Palabras&) {
  ExigeSinModal();
  if (!piezas_.componente.Abierta()) Error("La pantalla no está abierta");
  piezas_.componente.Cierra();
}

void Interprete::Texto(const Palabras& p) { piezas_.manos.Texto(ControlActivo(p[1]), p[2]); }

void Interprete::Enter(const Palabras& p) { piezas_.manos.Confirma(ControlActivo(p[1])); }

void Interprete::Campo(const Palabras& p) {
  controles::Control& control = ControlActivo(p[1]);
  piezas_.manos.Texto(control, p[2]);
  piezas_.manos.Confirma(control);
}

void Interprete::Fecha(const Palabras& p) {
  controles::Control& control = ControlActivo(p[1]);
  auto* fecha = controles::Como<controles::DateField>(&control);
  if (fecha == nullptr) Error("«" + control.nombre() + "» no es un campo de fecha");
  piezas_.manos.PonFecha(*fecha, FechaDe(p[2]));
}

void Interprete::Clic(const Palabras& p) { piezas_.manos.Clic(ControlActivo(p[1])); }

void Interprete::Tecla(const Palabras& p) {
  controles::Formulario& formulario = Activo();
  const int codigo = CodigoDeTecla(p[1]);
  const std::u32string caracteres = CodigosDe(p[1]);
  if (codigo == 0 && caracteres.size() != 1) Error("No existe la tecla «" + p[1] + "»");
  if (p.size() > 2) {
    controles::Control& control = ControlActivo(p[2]);
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

void Interprete::Accion(const Palabras& p) {
  controles::ScreenToolbar& barra = BarraDe(Activo());
  const auto accion = controles::AccionDe(p[1]);
  if (!accion) Error("No existe la acción «" + p[1] + "»");
  if (!barra.Ofrece(*accion)) Error("La acción «" + p[1] + "» no está disponible");
  piezas_.manos.Accion(barra, *accion);
}

// --- grids -----------------------------------------------------------------------------------------------------------

void Interprete::Celda(const Palabras& p) {
  controles::Grid& grid = Renglones();
  const int columna = ColumnaDe(grid, p[2]);
  const int fila = p[1] == "nueva" ? -1 : FilaDe(grid, p[1]);
  RevisaCeldaEscribible(grid, fila, columna);
  actual_.retenida = !piezas_.manos.Celda(grid, fila, columna, p[3]);
}

void Interprete::Ve(const Palabras& p) {
  controles::Grid& grid = GridDe(Activo());
  actual_.retenida = !piezas_.manos.Ve(grid, FilaDe(grid, p[1]), ColumnaDe(grid, p[2]));
}

void Interprete::Borra(const Palabras& p) {
  controles::Grid& grid = Renglones();
  piezas_.manos.Borra(grid, FilaDe(grid, p[1]));
}

void Interprete::Marca(const Palabras& p) {
  controles::Grid& grid = Tablero();
  const int noche = NumeroDe<int>(p[2]);
  const int noches = grid.NumColumnas() - kColumnasFijas;
  if (noche < 0 || noche >= noches) {
    Error("El tablero no tiene la noche " + p[2] + "; tiene " + std::to_string(noches));
  }
  piezas_.manos.ClicCelda(grid, FilaDe(grid, p[1]), noche + kColumnasFijas);
}

void Interprete::MarcaFila(const Palabras& p) {
  controles::Grid& grid = Tablero();
  piezas_.manos.SeleccionaFila(grid, FilaDe(grid, p[1]));
}

// As large as any screen; a window takes memory for each of its pixels.
void Interprete::Tamano(const Palabras& p) {
  constexpr int kMayor = 120000;  // twips, 8000 pixels
  const int ancho = NumeroDe<int>(p[1]), alto = NumeroDe<int>(p[2]);
  if (ancho > kMayor || alto > kMayor) {
    Error("El tamaño de una ventana es de " + std::to_string(kMayor) + " twips a lo más");
  }
  piezas_.manos.Tamano(Activo(), ancho, alto);
}

// --- answers prepared for questions ----------------------------------------------------------------------------------

void Interprete::Responde(const Palabras& p) {
  if (p[1] == "notas") return piezas_.respuestas.PreparaNotas(p[2]);
  if (p[1] == "catalogo") return piezas_.respuestas.PreparaCatalogo(p[2]);
  piezas_.respuestas.Prepara(p[1], NumeroDe<int>(p[2]));
}

// --- what can be seen ------------------------------------------------------------------------------------------------

void Interprete::Muestra(const Palabras& p) { actual_.valor = ValorDe(p[1]); }

Json Interprete::ValorDe(const std::string& que) {
  if (que == "llamadas") return piezas_.vigilancia.TomaLlamadas();
  if (que == "sentencias") return piezas_.vigilancia.TomaSentencias();
  if (auto anotado = MuestraAnotado(piezas_.anfitrion, que)) return *std::move(anotado);
  if (que == "hotel") return MuestraHotel(hotelNuevo_, autonomo::SinHotel(*piezas_.anfitrion.conexion()));
  if (que == "pendientes") return MuestraPendientes(autonomo::Pendientes(piezas_.anfitrion));
  if (que == "hoy") return MuestraHoy(DiaALaVista());
  if (que == "cotizacion") return MuestraCotizacion(cotizacion_);
  if (que == "cuadro") return MuestraCuadro(CuadroALaVista());
  if (que == "cifras") return MuestraCifras(CifrasALaVista());
  if (que == "parte") return parte_;
  if (que == "borrador") return borrador_.empty() ? Json() : MuestraBorrador(recepcion::DeTexto(borrador_));
  if (que == "quitados") return MuestraLineas(quitados_.renglones());
  if (que == "aviso") return recepcion::AvisoDePrecio(piezas_.componente.formulario());
  if (que == "huesped") return MuestraHuesped(huespedes_, parecidas_);
  if (que == "renglones") return MuestraRenglones(GridDe(piezas_.componente.formulario()));
  if (que == "tablero") return MuestraTablero(GridDe(piezas_.componente.tablero()));
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
    return punto == std::string::npos ? Activo() : FormularioDe(que.substr(0, punto));
  };
  if (propio == "campos") return MuestraCampos(formulario());
  if (propio == "entradas") return MuestraEntradas(formulario());
  if (propio == "columnas") return MuestraColumnas(GridDe(formulario()));
  if (propio == kv207::control::kBarra) return MuestraBarra(BarraDe(formulario()));
  return MuestraControl(ControlDe(que));
}

void Interprete::Lista(const Palabras& p) {
  autonomo::FiltroLista filtro;
  for (std::size_t i = 2; i + 1 < p.size(); i += 2) {
    if (p[i] == "folio") {
      filtro.folio = p[i + 1];
    } else if (p[i] == "usuario") {
      filtro.usuario = p[i + 1];
    } else if (p[i] == "dia" || p[i] == "día") {
      filtro.dia = FechaDe(p[i + 1]);
    } else {
      Error("No se filtra por «" + p[i] + "»");
    }
  }
  if (p.size() % 2 != 0) Error("Falta el valor de «" + p.back() + "»");
  autonomo::Conexion& conexion = *piezas_.anfitrion.conexion();
  if (p[1] == "bitacora") {
    actual_.valor = MuestraLista(autonomo::LeeBitacora(conexion, filtro));
  } else if (p[1] == "correos") {
    actual_.valor = MuestraLista(autonomo::LeeBandeja(conexion, filtro));
  } else {
    Error("No hay una lista «" + p[1] + "»");
  }
}

void Interprete::Reenvia(const Palabras& p) {
  autonomo::EnviaOtraVez(*piezas_.anfitrion.conexion(), NumeroDe<std::int32_t>(p[1]),
                         piezas_.anfitrion.reloj().Ahora());
}

void Interprete::Sql(const Palabras& p) { actual_.valor = FilasDe(*piezas_.anfitrion.conexion()->Directa(p[1])); }

void Interprete::Foto(const Palabras& p) { piezas_.manos.Foto(Activo(), p[1]); }

// --- faults ----------------------------------------------------------------------------------------------------------

void Interprete::Falla(const Palabras& p) {
  const std::string& que = p[1];
  const std::size_t textos = p.size() - 2;
  const auto exige = [&](std::size_t minimo, std::size_t maximo) {
    if (textos < minimo || textos > maximo) Error("Faltan o sobran palabras en «falla " + que + "»");
  };
  const auto opcional = [&](std::size_t indice, const char* defecto) {
    return p.size() > indice ? p[indice] : defecto;
  };
  if (que == "sentencia") {
    exige(1, 2);
    piezas_.vigilancia.FallaSentencia(p[2], p.size() > 3 ? NumeroDe<int>(p[3]) : 1);
  } else if (que == "host") {
    exige(1, 2);
    piezas_.vigilancia.FallaOperacion(p[2], opcional(3, kFallaInyectada));
  } else if (que == "tienda") {
    exige(2, 2);
    piezas_.vigilancia.FallaTienda(p[2], p[3]);
  } else if (que == "grid") {
    exige(0, 1);
    FallaGrid(p);
  } else if (que == "begin" || que == "commit" || que == "rollback") {
    exige(0, 0);
    piezas_.vigilancia.FallaTransaccion(que == "begin"    ? PasoTransaccion::Begin
                                        : que == "commit" ? PasoTransaccion::Commit
                                                          : PasoTransaccion::Rollback);
  } else if (que == "correo") {
    exige(0, 1);
    piezas_.anfitrion.FallaCorreo(opcional(2, ""));
  } else {
    Error("No se puede hacer fallar «" + que + "»");
  }
}

void Interprete::FallaGrid(const Palabras& p) {
  auto pendiente = std::make_shared<std::optional<std::string>>(p.size() > 2 ? p[2] : kFallaInyectada);
  GridDe(Activo()).antesDeCambiar = [pendiente] {
    if (!pendiente->has_value()) return;
    const std::string texto = **pendiente;
    pendiente->reset();
    throw com::Error(com::error::kInyectada, texto);
  };
}

}  // namespace guion
