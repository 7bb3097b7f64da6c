// The fixed-layout records that the reservation screen hands to the host's store. Packed on 4 bytes; strings are 4-byte
// handles, dates COM dates (8-byte days).
#pragma once

#include <cstddef>
#include <cstdint>

#include "platform/com/cadena.h"

namespace anfitrion {

#pragma pack(push, 4)

// Header of a reservation, 68 bytes.
struct DatosReservacion {
  com::Cadena folio;   // empty for a new one; the store fills it
  double fecha = 0;    // capture date
  double llegada = 0;  // arrival
  double salida = 0;   // departure
  com::Cadena moneda;
  double tipoCambio = 0;  // local currency for one unit of the reservation's
  com::Cadena sucursal;
  com::Cadena huesped;
  com::Cadena cliente;  // who pays; the guest's key when there is no client
  com::Cadena referencia;
  com::Cadena comentario;
  com::Cadena formaPago;
  com::Cadena notas;
};

// One room line, 144 bytes. What the screen leaves at zero the store derives.
struct DatosDetalle {
  com::Cadena folio;  // empty: the header saved last
  com::Cadena habitacion;
  com::Cadena reservada;      // not used, empty
  double inicio = 0;          // first night
  double fin = 0;             // departure day of the line
  std::int16_t cantidad = 0;  // nights; the store derives it
  std::int16_t adultos = 0;
  std::int16_t menores = 0;
  std::int16_t infantes = 0;
  double personasExtra = 0;        // extra persons charged
  double precio = 0;               // whole stay, tax included
  double precioPersonasExtra = 0;  // whole stay, tax included
  double precioLista = 0;          // derived by the store
  double precioListaImporte = 0;   // derived by the store
  double descuentoFactor = 0;      // fraction (0.10 = 10 %)
  double descuentoImporte = 0;     // this and the next four derived by the store
  double precioDescontado = 0;
  double precioDescontadoImporte = 0;
  double impuestoFactor = 0;
  double impuestoImporte = 0;
  double total = 0;             // whole stay, after discount, tax included
  double reservado = 0;         // not used
  std::int32_t reservado2 = 0;  // not used
};

#pragma pack(pop)

static_assert(sizeof(DatosReservacion) == 68);
static_assert(offsetof(DatosReservacion, folio) == 0);
static_assert(offsetof(DatosReservacion, fecha) == 4);
static_assert(offsetof(DatosReservacion, llegada) == 12);
static_assert(offsetof(DatosReservacion, salida) == 20);
static_assert(offsetof(DatosReservacion, moneda) == 28);
static_assert(offsetof(DatosReservacion, tipoCambio) == 32);
static_assert(offsetof(DatosReservacion, sucursal) == 40);
static_assert(offsetof(DatosReservacion, huesped) == 44);
static_assert(offsetof(DatosReservacion, cliente) == 48);
static_assert(offsetof(DatosReservacion, referencia) == 52);
static_assert(offsetof(DatosReservacion, comentario) == 56);
static_assert(offsetof(DatosReservacion, formaPago) == 60);
static_assert(offsetof(DatosReservacion, notas) == 64);

static_assert(sizeof(DatosDetalle) == 144);
static_assert(offsetof(DatosDetalle, folio) == 0);
static_assert(offsetof(DatosDetalle, habitacion) == 4);
static_assert(offsetof(DatosDetalle, reservada) == 8);
static_assert(offsetof(DatosDetalle, inicio) == 12);
static_assert(offsetof(DatosDetalle, fin) == 20);
static_assert(offsetof(DatosDetalle, cantidad) == 28);
static_assert(offsetof(DatosDetalle, adultos) == 30);
static_assert(offsetof(DatosDetalle, menores) == 32);
static_assert(offsetof(DatosDetalle, infantes) == 34);
static_assert(offsetof(DatosDetalle, personasExtra) == 36);
static_assert(offsetof(DatosDetalle, precio) == 44);
static_assert(offsetof(DatosDetalle, precioPersonasExtra) == 52);
static_assert(offsetof(DatosDetalle, precioLista) == 60);
static_assert(offsetof(DatosDetalle, descuentoFactor) == 76);
static_assert(offsetof(DatosDetalle, descuentoImporte) == 84);
static_assert(offsetof(DatosDetalle, total) == 124);
static_assert(offsetof(DatosDetalle, reservado) == 132);

}  // namespace anfitrion
