// The demo hotel: catalogues, prices, and reservations, stays and blocks around a given day. The same day always gives
// the same hotel, and every day gives one of the same shape.
#include <algorithm>
#include <array>
#include <charconv>
#include <map>
#include <stdexcept>

#include "host/contract/estados.h"
#include "host/contract/parametros.h"
#include "host/contract/servicios.h"
#include "platform/com/fecha.h"
#include "platform/com/variant.h"
#include "schema/demo_datos.h"
#include "schema/esquema.h"
#include "schema/textos.h"

namespace esquema {

namespace parametro = anfitrion::parametro;
namespace permiso = anfitrion::permiso;
namespace {

using com::Fecha;
using namespace demo;

// --- literals ----------------------------------------------------------------------------------------------------

std::string Lit(std::string_view texto) {
  std::string s = "'";
  for (const char c : texto) s.append(c == '\'' ? 2 : 1, c);
  return s + "'";
}
std::string Lit(const char* texto) { return Lit(std::string_view(texto)); }
std::string Lit(int numero) { return std::to_string(numero); }
std::string Lit(double numero) {
  std::array<char, 64> b{};
  const auto fin = std::to_chars(b.data(), b.data() + b.size(), numero, std::chars_format::fixed);
  return {b.data(), fin.ptr};
}
std::string Lit(Fecha fecha) { return Lit(com::AIso(fecha)); }
constexpr std::string_view kNulo = "NULL";

// Key of a catalogue or a document: a number with leading zeros.
std::string Clave(int numero, std::size_t largo) {
  const std::string digitos = std::to_string(numero);
  return std::string(largo - std::min(largo, digitos.size()), '0') + digitos;
}

// --- rooms ------------------------------------------------------------------------------------------------------

struct Cuarto {
  std::string clave;
  const TipoDemo* tipo;
  int piso;   // from 0
  int grupo;  // from 0
};

std::vector<Cuarto> Cuartos() {
  std::vector<Cuarto> cuartos;
  for (int piso = 0; piso < 3; ++piso) {
    const std::string_view tipos = kPisos[piso];
    for (int i = 0; i < static_cast<int>(tipos.size()); ++i) {
      cuartos.push_back({Clave((piso + 1) * 100 + i + 1, 4), &kTipos[tipos[i] - '1'], piso, std::min(i / 5, 2)});
    }
  }
  return cuartos;
}

// --- seasons -----------------------------------------------------------------------------------------------------

struct Temporada {
  Fecha inicio, fin;  // first and last night
};

// Summer and Christmas of the years around the day.
std::vector<Temporada> TemporadasAltas(Fecha hoy) {
  const int anio = com::ACivil(hoy).anio;
  std::vector<Temporada> t;
  for (int a = anio - 1; a <= anio + 1; ++a) {
    t.push_back({com::FechaDe(a, 7, 1), com::FechaDe(a, 8, 20)});
    t.push_back({com::FechaDe(a, 12, 15), com::FechaDe(a + 1, 1, 6)});
  }
  return t;
}

constexpr std::string_view kFinDeSemana = "56";  // nights of Friday and Saturday

int PrecioDeNoche(const TipoDemo& tipo, const std::vector<Temporada>& altas, Fecha noche) {
  for (const Temporada& t : altas) {
    if (noche >= t.inicio && noche <= t.fin) return tipo.alta;
  }
  const char dia = static_cast<char>('0' + com::DiaSemana(noche));
  return kFinDeSemana.find(dia) != std::string_view::npos ? tipo.finDeSemana : tipo.normal;
}

// Exchange rate of a currency that stands at `base` today, so many periods of 30 days ago.
double TasaDeMes(double base, int meses) { return com::Redondea(base + 0.15 * ((meses * 7) % 5), 4); }

// --- reservations ------------------------------------------------------------------------------------------------

struct Renglon {
  const Cuarto* cuarto;
  Fecha inicio, fin;
  int adultos, menores, infantes;
  double descuento;  // fraction
};

struct Reserva {
  Fecha captura;
  int cliente = 0, huesped = 0;  // positions in kClientes, from 1
  std::string_view estado;
  std::string_view moneda = "MXN";
  double tipoCambio = 1;
  std::string_view formaPago = "0001";
  std::string_view referencia, comentario, notas;
  std::vector<Renglon> renglones;
};

// A stay: of a reservation, or of a guest without one.
struct Estancia {
  std::vector<const Cuarto*> cuartos;
  Fecha llegada, salida;
  std::string_view estado;
};

class Hotel {
 public:
  explicit Hotel(Fecha hoy) : hoy_(hoy), altas_(TemporadasAltas(hoy)), cuartos_(Cuartos()) {}

  std::vector<std::string> Sentencias() {
    Configuracion();
    Catalogos();
    Precios();
    Bloqueos();
    SinReservacion();
    Planea();
    EscribeReservas();
    EscribeEstancias();
    return std::move(sql_);
  }

 private:
  // destino: table and columns.
  void Fila(std::string_view destino, const std::vector<std::string>& valores) {
    std::string s = "INSERT INTO " + std::string(destino) + " VALUES (";
    for (std::size_t i = 0; i < valores.size(); ++i) s += (i == 0 ? "" : ", ") + valores[i];
    sql_.push_back(s + ")");
  }
  Fecha Dia(int desdeHoy) const { return com::MasDias(hoy_, desdeHoy); }

  void Configuracion();
  void Textos();
  void Catalogos();
  void Clientes();
  void Precios();
  void Bloqueos();
  void SinReservacion();
  void Planea();
  void Agrega(int indice, int llegada, int noches, int habitaciones, std::string_view estado);
  void Viste(Reserva& r, int indice) const;
  const Cuarto* Libre(const TipoDemo& tipo, Fecha inicio, Fecha fin, std::size_t desde, bool evitaOcupados);
  double Dolar(Fecha dia) const;
  void Ocupa(const Cuarto& cuarto, Fecha inicio, Fecha fin);
  void EscribeReservas();
  void EscribeRenglon(const std::string& folio, int id, const Reserva& r, const Renglon& l);
  void EscribeTarjeta(const std::string& folio);
  void EscribeEstancias();

  Fecha hoy_;
  std::vector<Temporada> altas_;
  std::vector<Cuarto> cuartos_;
  std::map<const Cuarto*, std::vector<Temporada>> tomadas_;  // nights that are taken, first and last
  std::vector<Reserva> reservas_;
  std::vector<Estancia> estancias_;
  std::vector<std::string> sql_;
};

void Hotel::Configuracion() {
  constexpr std::pair<const char*, const char*> kParametros[] = {
      {parametro::kNombreHotel.clave, "Hotel Mirador de la Bahía"},
      {parametro::kDemostracion.clave, "1"},
      {parametro::kMayusculas.clave, "0"},
      {parametro::kMonedaLocal.clave, "MXN"},
      {parametro::kSobreventa.clave, "0"},
      {parametro::kDiasReservacion.clave, "1"},
      {parametro::kSucursal.clave, "0001"},
      {parametro::kFormatoCliente.clave, "0000000000"},
      {parametro::kFormatoFormaPago.clave, "0000"},
      {parametro::kFormatoHabitacion.clave, "0000"},
      {parametro::kFormatoArea.clave, "0000"},
      {parametro::kFormatoGrupo.clave, "0000"},
      {parametro::kFormatoTipo.clave, "0000"},
      {parametro::kFormatoFolio.clave, "0000000000"},
      {parametro::kPlantillaReservacion.clave, "PL16"},
      {parametro::kPlantillaConfirmada.clave, "PL17"},
      {parametro::kFormatoImpresion.clave, "HT0001"},
  };
  for (const auto& [clave, valor] : kParametros) Fila("Parametro (Pm_Clave, Pm_Valor)", {Lit(clave), Lit(valor)});
  Fila("Parametro (Pm_Clave, Pm_Valor)", {Lit(parametro::kClienteWeb.clave), Lit(Clave(kClienteWeb, 10))});
  // Colours 0x00BBGGRR as whole numbers; all light enough for dark text.
  constexpr std::pair<const char*, int> kColores[] = {
      {parametro::kColorDisponible.clave, 0xCEEFC6},
      {parametro::kColorOcupado.clave, 0xA3A3F4},
      {parametro::kColorReservado.clave, 0xF5D09E},
      {parametro::kColorBloqueado.clave, 0xCFCFCF},
  };
  for (const auto& [clave, color] : kColores) {
    Fila("Parametro (Pm_Clave, Pm_Valor)", {Lit(clave), Lit(std::to_string(color))});
  }
  for (const char* opcion : {permiso::kFecha, permiso::kDescuento, permiso::kPrecio, permiso::kConfiguracion}) {
    Fila("Permiso (Pe_Usuario, Pe_Pantalla, Pe_Opcion)", {Lit("RECEPCION"), Lit(anfitrion::kPantalla), Lit(opcion)});
  }
  Textos();
}

void Hotel::Textos() {
  constexpr std::string_view kPlantilla = "Plantilla (Pt_Cve_Plantilla, Pt_Asunto, Pt_Cuerpo, Pt_Formato)";
  Fila(kPlantilla, {Lit("PL16"), Lit(kAsuntoReservacion), Lit(kCuerpoReservacion), Lit("HT0001")});
  Fila(kPlantilla, {Lit("PL17"), Lit(kAsuntoConfirmada), Lit(kCuerpoConfirmada), Lit("HT0001")});
  Fila("Formato (Fm_Cve_Formato, Fm_Descripcion, Fm_Contenido)",
       {Lit("HT0001"), Lit("Carta de la reservación"), Lit(kCarta)});
}

void Hotel::Catalogos() {
  Fila("Sucursal (Sc_Cve_Sucursal, Sc_Descripcion, Es_Cve_Estado)", {Lit("0001"), Lit("Matriz"), Lit(kActiva)});
  Fila("Sucursal (Sc_Cve_Sucursal, Sc_Descripcion, Es_Cve_Estado)", {Lit("0002"), Lit("Frontera"), Lit(kActiva)});
  constexpr std::array<const char*, 3> kFormas[] = {{"0001", "Efectivo", "01"},
                                                    {"0002", "Cheque nominativo", "02"},
                                                    {"0003", "Transferencia electrónica", "03"},
                                                    {"0004", "Tarjeta de crédito", anfitrion::tipo_pago::kTarjeta},
                                                    {"0005", "Crédito de la casa", "99"}};
  for (const auto& f : kFormas) {
    Fila("Forma_Pago (Fp_Cve_Forma_Pago, Fp_Descripcion, Fp_Tipo, Es_Cve_Estado)",
         {Lit(f[0]), Lit(f[1]), Lit(f[2]), Lit(kActiva)});
  }
  constexpr std::pair<const char*, const char*> kMonedas[] = {
      {"MXN", "Peso mexicano"}, {"USD", "Dólar estadounidense"}, {"EUR", "Euro"}};
  for (const auto& [clave, nombre] : kMonedas) {
    Fila("Moneda (Mn_Cve_Moneda, Mn_Descripcion, Es_Cve_Estado)", {Lit(clave), Lit(nombre), Lit(kActiva)});
  }
  for (int i = 0; i < 3; ++i) {
    Fila("Area_Habitacion (Ah_Cve_Area_Habitacion, Ah_Descripcion, Es_Cve_Estado)",
         {Lit(Clave(i + 1, 4)), Lit(kAreas[i]), Lit(kActiva)});
    Fila("Grupo_Habitacion (Ghb_Cve_Grupo_Habitacion, Ghb_Descripcion, Es_Cve_Estado)",
         {Lit(Clave(i + 1, 4)), Lit(kGrupos[i]), Lit(kActiva)});
  }
  for (const TipoDemo& t : kTipos) {
    Fila(
        "Tipo_Habitacion (Th_Cve_Tipo_Habitacion, Th_Descripcion, Th_Num_Personas, Th_Num_Personas_Maximo, "
        "Pr_Cve_Producto, Es_Cve_Estado)",
        {Lit(t.clave), Lit(t.nombre), Lit(t.incluidas), Lit(t.maximo), Lit(t.producto), Lit(kActiva)});
    Fila(
        "Producto (Pr_Cve_Producto, Pr_Descripcion, Pr_Unidad_Venta, Pr_Unidad_Control_1, Pr_Unidad_Control_2, "
        "Pr_Unidad_Costo)",
        {Lit(t.producto), Lit(std::string("Hospedaje en habitación ") + t.nombre), Lit("NOCHE"), Lit("NOCHE"),
         Lit("NOCHE"), Lit("NOCHE")});
  }
  for (const Cuarto& c : cuartos_) {
    Fila(
        "Habitacion (Hb_Cve_Habitacion, Hb_Descripcion, Th_Cve_Tipo_Habitacion, Ghb_Cve_Grupo_Habitacion, "
        "Ah_Cve_Area_Habitacion, Es_Cve_Estado)",
        {Lit(c.clave), Lit(c.clave.substr(1) + " " + kGrupos[c.grupo]), Lit(c.tipo->clave), Lit(Clave(c.grupo + 1, 4)),
         Lit(Clave(c.piso + 1, 4)), Lit(kActiva)});
  }
  Clientes();
}

void Hotel::Clientes() {
  int numero = 0;
  for (const ClienteDemo& c : kClientes) {
    ++numero;
    const bool tarjeta = numero % 5 == 0 && numero <= kPersonas;
    Fila(
        "Cliente (Cl_Cve_Cliente, Cl_Razon_Social_1, Es_Cve_Estado, Cl_Tarjeta_Credito, Cl_Tarjeta_Banco, "
        "Cl_Tarjeta_Numero, Cl_Tarjeta_Codigo_Seguridad, Cl_Tarjeta_Vencimiento, Cl_Correo, Cl_Telefono)",
        {Lit(Clave(numero, 10)), Lit(c.nombre), Lit(kActiva), Lit(tarjeta ? "SI" : ""),
         Lit(tarjeta ? "Banco del Centro" : ""), Lit(tarjeta ? "4111111111111111" : ""), Lit(tarjeta ? "123" : ""),
         tarjeta ? Lit(Dia(700)) : std::string(kNulo), Lit(c.correo), Lit("55 5550 " + Clave(numero, 4))});
  }
}

void Hotel::Precios() {
  constexpr std::string_view kTarifa =
      "Tarifa (Th_Cve_Tipo_Habitacion, Tf_Inicio, Tf_Fin, Tf_Dias, Tf_Precio, Tf_Adulto_Extra, Tf_Menor_Extra)";
  for (const TipoDemo& t : kTipos) {
    Fila("Producto_Precio (Pr_Cve_Producto, Pp_Precio_1)", {Lit(t.producto), Lit(t.lista)});
    Fila("Impuesto (Sc_Cve_Sucursal, Pr_Cve_Producto, Im_Factor)", {Lit(""), Lit(t.producto), Lit(kImpuesto)});
    Fila("Impuesto (Sc_Cve_Sucursal, Pr_Cve_Producto, Im_Factor)",
         {Lit("0002"), Lit(t.producto), Lit(kImpuestoFrontera)});
    const auto tarifa = [&](std::string inicio, std::string fin, std::string_view dias, int precio) {
      Fila(kTarifa, {Lit(t.clave), std::move(inicio), std::move(fin), Lit(dias), Lit(precio), Lit(t.adultoExtra),
                     Lit(t.menorExtra)});
    };
    tarifa(std::string(kNulo), std::string(kNulo), "", t.normal);
    tarifa(std::string(kNulo), std::string(kNulo), kFinDeSemana, t.finDeSemana);
    for (const Temporada& a : altas_) tarifa(Lit(a.inicio), Lit(a.fin), "", t.alta);
  }
  // A year of rates, one every 30 days; the last is of today.
  for (int mes = 12; mes >= 0; --mes) {
    const std::string dia = Lit(Dia(-30 * mes));
    Fila("Tipo_Cambio (Mn_Cve_Moneda, Tc_Fecha, Tc_Tasa)", {Lit("USD"), dia, Lit(TasaDeMes(kDolar, mes))});
    Fila("Tipo_Cambio (Mn_Cve_Moneda, Tc_Fecha, Tc_Tasa)", {Lit("EUR"), dia, Lit(TasaDeMes(kEuro, mes))});
  }
}

// The dollar's rate in force on a day of the last year.
double Hotel::Dolar(Fecha dia) const { return TasaDeMes(kDolar, (com::DiasEntre(dia, hoy_) + 29) / 30); }

// --- who is where ------------------------------------------------------------------------------------------------

void Hotel::Ocupa(const Cuarto& cuarto, Fecha inicio, Fecha fin) {
  tomadas_[&cuarto].push_back({inicio, com::MasDias(fin, -1)});
}

// A room of the type with all nights free, looked for from a position on; another type's when there is none.
// evitaOcupados passes over rooms where somebody is staying today.
const Cuarto* Hotel::Libre(const TipoDemo& tipo, Fecha inicio, Fecha fin, std::size_t desde, bool evitaOcupados) {
  const auto cubre = [](const Temporada& t, Fecha a, Fecha b) { return t.inicio < b && t.fin >= a; };
  const auto libre = [&](const Cuarto& c) {
    const auto& tomadas = tomadas_[&c];
    return std::none_of(tomadas.begin(), tomadas.end(), [&](const Temporada& t) {
      return cubre(t, inicio, fin) || (evitaOcupados && t.inicio <= hoy_ && cubre(t, hoy_, com::MasDias(hoy_, 1)));
    });
  };
  for (const bool mismoTipo : {true, false}) {
    for (std::size_t i = 0; i < cuartos_.size(); ++i) {
      const Cuarto& c = cuartos_[(desde + i) % cuartos_.size()];
      if ((c.tipo == &tipo) == mismoTipo && libre(c)) return &c;
    }
  }
  throw std::logic_error("demo hotel: no free room");
}

void Hotel::Bloqueos() {
  struct Bloqueo {
    std::size_t cuarto;
    int inicio, fin;  // first and last day
    std::string_view estado;
  };
  constexpr Bloqueo kBloqueos[] = {
      {4, -2, 1, kActiva}, {13, 3, 6, kActiva}, {22, 8, 12, kActiva}, {31, -15, -12, kCancelada}};
  for (const Bloqueo& b : kBloqueos) {
    Fila("Habitacion_Bloqueo (Hb_Cve_Habitacion, Hbb_Fecha_Inicio, Hbb_Fecha_Fin, Es_Cve_Estado)",
         {Lit(cuartos_[b.cuarto].clave), Lit(Dia(b.inicio)), Lit(Dia(b.fin)), Lit(b.estado)});
    Ocupa(cuartos_[b.cuarto], Dia(b.inicio), Dia(b.fin + 1));
  }
}

// Guests who came without a reservation.
void Hotel::SinReservacion() {
  constexpr int kVisitas[][3] = {{0, -1, 2}, {9, -2, 1}, {16, 0, 3}, {25, -3, 1}};  // room, arrival, departure
  for (const auto& [cuarto, llegada, salida] : kVisitas) {
    estancias_.push_back({{&cuartos_[static_cast<std::size_t>(cuarto)]}, Dia(llegada), Dia(salida), kActiva});
    Ocupa(cuartos_[static_cast<std::size_t>(cuarto)], Dia(llegada), Dia(salida));
  }
}

void Hotel::Planea() {
  int i = 0;
  // Gone: stays that are over, and some that never came.
  for (int llegada = -20; llegada <= -4; llegada += 2, ++i) {
    Agrega(i, llegada, 1 + i % 3, 1, i % 4 == 3 ? kCancelada : kCerrada);
  }
  // In the house.
  for (int k = 0; k < 8; ++k, ++i) Agrega(i, -(k % 4), 2 + k % 4 + k % 2, k == 3 ? 2 : 1, kAplicada);
  // Arriving today.
  for (int k = 0; k < 5; ++k, ++i) Agrega(i, 0, 1 + k, 1, k % 2 == 0 ? kConfirmada : kActiva);
  // Coming. Two groups among them.
  for (int k = 0; k < 23; ++k, ++i) {
    const std::string_view estado = k % 7 == 5 ? kCancelada : (k % 3 == 1 ? kConfirmada : kActiva);
    Agrega(i, 1 + k + k / 3, 1 + (k * 3) % 5, k == 6 || k == 15 ? 3 : 1, estado);
  }
}

// llegada: days from today. Cancelled reservations take no room.
void Hotel::Agrega(int indice, int llegada, int noches, int habitaciones, std::string_view estado) {
  Reserva r;
  r.estado = estado;
  const int antes = 3 + (indice * 5) % 17;
  r.captura = Dia(std::min(llegada - 1, -1) - antes % (llegada > 0 ? 9 : 17));
  Viste(r, indice);
  const TipoDemo& tipo = kTipos[habitaciones > 1 ? 1 : (indice * 5 + indice / 3) % 6];
  std::vector<const Cuarto*> ocupados;
  for (int h = 0; h < habitaciones; ++h) {
    const Cuarto* c =
        Libre(tipo, Dia(llegada), Dia(llegada + noches), 7 * static_cast<std::size_t>(indice), estado != kAplicada);
    if (estado != kCancelada) Ocupa(*c, Dia(llegada), Dia(llegada + noches));
    ocupados.push_back(c);
    Renglon l{c, Dia(llegada), Dia(llegada + noches), 1 + (indice + h) % 2, 0, 0, indice % 9 == 4 ? 0.10 : 0.0};
    if (c->tipo->maximo >= 4) l.menores = (indice + h) % 3;
    if (l.adultos + l.menores < c->tipo->maximo) l.infantes = indice % 8 == 2 ? 1 : 0;
    r.renglones.push_back(l);
  }
  if (estado == kAplicada) estancias_.push_back({ocupados, Dia(llegada), Dia(llegada + noches), kActiva});
  if (estado == kCerrada) estancias_.push_back({ocupados, Dia(llegada), Dia(llegada + noches), kCerrada});
  reservas_.push_back(std::move(r));
}

// Who books, how they pay, and what they ask for.
void Hotel::Viste(Reserva& r, int indice) const {
  r.huesped = 1 + (indice * 7) % kPersonas;
  r.cliente = indice % 6 == 1 ? kAgencia : (indice % 11 == 3 ? kClienteWeb : r.huesped);
  constexpr std::string_view kFormas[] = {"0001", "0004", "0003", "0001"};
  r.formaPago = r.cliente == kAgencia ? "0005" : (r.cliente == kClienteWeb ? "0004" : kFormas[indice % 4]);
  if (indice % 10 == 7) {
    r.moneda = "USD";
    r.tipoCambio = Dolar(r.captura);
  }
  if (r.cliente == kClienteWeb) r.referencia = "Internet";
  if (r.cliente == kAgencia) r.referencia = "Voucher de agencia";
  constexpr std::string_view kComentarios[] = {"",          "Llega después de las 22 h", "",
                                               "Piso alto", "Cerca del elevador",        ""};
  r.comentario = kComentarios[indice % 6];
  if (indice % 7 == 2) r.notas = "Solicita cuna.\nAlérgico(a) a las almohadas de pluma.";
  if (indice % 13 == 5) r.notas = "Aniversario de bodas: flores en la habitación.";
}

// --- rows of reservations and stays ------------------------------------------------------------------------------

void Hotel::EscribeReservas() {
  std::stable_sort(reservas_.begin(), reservas_.end(),
                   [](const Reserva& a, const Reserva& b) { return a.captura < b.captura; });
  int numero = 0;
  for (const Reserva& r : reservas_) {
    const std::string folio = Clave(++numero, 10);
    const bool baja = r.estado == kCancelada;
    const Fecha hora{r.captura.dia, 9 * 3600 + 15 * 60 + numero};
    const Fecha cambio = baja ? com::MasDias(hora, 1) : hora;
    Fila(
        "Reservacion (Rs_Folio, Rs_Fecha, Rs_Llegada, Rs_Salida, Sc_Cve_Sucursal, Cl_Cve_Cliente, Rs_Huesped, "
        "Mn_Cve_Moneda, Rs_Tipo_Cambio, Fp_Cve_Forma_Pago, Rs_Referencia, Rs_Comentario, Rs_Notas, Es_Cve_Estado, "
        "Oper_Ult_Modif, Fecha_Ult_Modif, Oper_Baja, Fecha_Baja)",
        {Lit(folio), Lit(r.captura), Lit(r.renglones.front().inicio), Lit(r.renglones.front().fin), Lit("0001"),
         Lit(Clave(r.cliente, 10)), Lit(Clave(r.huesped, 10)), Lit(r.moneda), Lit(r.tipoCambio), Lit(r.formaPago),
         Lit(r.referencia), Lit(r.comentario), Lit(r.notas), Lit(r.estado), Lit("RECEPCION"), Lit(cambio),
         Lit(baja ? "RECEPCION" : ""), baja ? Lit(cambio) : std::string(kNulo)});
    int id = 0;
    for (const Renglon& l : r.renglones) EscribeRenglon(folio, ++id, r, l);
    if (r.cliente == kClienteWeb) EscribeTarjeta(folio);
    if (baja || r.estado == kConfirmada) {
      Fila("Bitacora (Bt_Modulo, Bt_Clave, Bt_Texto, Bt_Usuario, Bt_Fecha)",
           {Lit(anfitrion::kModulo), Lit(folio), Lit(baja ? anfitrion::kBitacoraCancela : anfitrion::kBitacoraConfirma),
            Lit("RECEPCION"), Lit(cambio)});
    }
  }
  Fila("Folio_Consecutivo (Fc_Serie, Fc_Ultimo)", {Lit("RESERVACION"), Lit(numero)});
}

// Amounts as the screen leaves them: price of the stay from its nights, the discount on it, and the breakdown of what
// remains.
void Hotel::EscribeRenglon(const std::string& folio, int id, const Reserva& r, const Renglon& l) {
  const TipoDemo& tipo = *l.cuarto->tipo;
  const int adultosExtra = std::max(0, l.adultos - tipo.incluidas);
  const int menoresExtra = std::max(0, l.menores - std::max(0, tipo.incluidas - l.adultos));
  const int noches = com::DiasEntre(l.inicio, l.fin);
  const double extraDeNoche =
      com::Redondea((adultosExtra * tipo.adultoExtra + menoresExtra * tipo.menorExtra) / r.tipoCambio, 2);
  double precio = 0;
  for (Fecha noche = l.inicio; noche < l.fin; noche = com::MasDias(noche, 1)) {
    precio += com::Redondea(PrecioDeNoche(tipo, altas_, noche) / r.tipoCambio, 2);
  }
  precio = com::Redondea(precio, 2);
  const double extra = com::Redondea(extraDeNoche * noches, 2);
  const double total = com::Redondea((precio + extra) * (1 - l.descuento), 2);
  const double base = total / (1 + kImpuesto);
  const double lista = base / (1 - l.descuento);
  Fila(
      "Reservacion_Detalle (Rs_Folio, Rsd_Id, Hb_Cve_Habitacion, Rsd_Fecha_Inicio, Rsd_Fecha_Fin, Rsd_Cantidad, "
      "Rsd_Adultos, Rsd_Menores, Rsd_Infantes, Rsd_Cantidad_Personas_Extra, Rsd_Precio, Rsd_Precio_Personas_Extra, "
      "Rsd_Precio_Lista, Rsd_Precio_Lista_Importe, Rsd_Descuento_Factor, Rsd_Descuento_Importe, "
      "Rsd_Precio_Descontado, Rsd_Precio_Descontado_Importe, Rsd_Impuesto_Factor, Rsd_Impuesto_Importe, "
      "Rsd_Precio_Neto, Rsd_Precio_Neto_Importe)",
      {Lit(folio),
       Lit(id),
       Lit(l.cuarto->clave),
       Lit(l.inicio),
       Lit(l.fin),
       Lit(noches),
       Lit(l.adultos),
       Lit(l.menores),
       Lit(l.infantes),
       Lit(adultosExtra + menoresExtra),
       Lit(precio),
       Lit(extra),
       Lit(lista * (1 + kImpuesto)),
       Lit(lista),
       Lit(l.descuento),
       Lit(l.descuento * lista),
       Lit(total),
       Lit(base),
       Lit(kImpuesto),
       Lit(kImpuesto * base),
       Lit(total),
       Lit(total)});
}

void Hotel::EscribeTarjeta(const std::string& folio) {
  Fila("Reservacion_Datos_Tarjeta (Rs_Folio, Rdt_Banco, Rdt_Numero, Rdt_Codigo_Seguridad, Rdt_Vencimiento)",
       {Lit(folio), Lit("Banco del Centro"), Lit("4111111111111111"), Lit("123"), Lit(Dia(600))});
}

void Hotel::EscribeEstancias() {
  int numero = 0;
  for (const Estancia& e : estancias_) {
    const std::string folio = Clave(++numero, 10);
    Fila("Check_In (Ci_Folio, Ci_Llegada, Ci_Salida, Es_Cve_Estado)",
         {Lit(folio), Lit(Fecha{e.llegada.dia, 15 * 3600}), Lit(Fecha{e.salida.dia, 12 * 3600}), Lit(e.estado)});
    for (const Cuarto* c : e.cuartos) {
      Fila("Check_In_Detalle (Ci_Folio, Hb_Cve_Habitacion)", {Lit(folio), Lit(c->clave)});
    }
  }
}

}  // namespace

std::vector<std::string> HotelDemo(std::string_view hoy) {
  const std::optional<Fecha> dia = com::DeIso(hoy);
  if (!dia)
    throw com::Error(com::error::kArgumento, "El día del hotel de demostración no es válido: " + std::string(hoy));
  return Hotel(com::SoloFecha(*dia)).Sentencias();
}

}  // namespace esquema
