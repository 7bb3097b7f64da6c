#!/usr/bin/env bash
# A hotel set up without the assistant, by the catalogues alone, keys only, and its first reservation.
# shellcheck source=manos.sh
. "$(dirname "$(realpath "$0")")/manos.sh"

# Opens a catalogue screen of the hotel's menu by its letter.
catalogos() {  # letter, title
  teclas F10 "$1"
  dialogo "$2"
  titulo_catalogo=$2
}

hoja() { teclas ctrl+Tab; }  # the next list of the screen

cierra() {
  teclas Escape
  ventana_principal
}

# A new row; fields that stay empty are "". A key of another list is typed as it begins there.
fila() {  # title of the list, field...
  teclas alt+n
  dialogo "$1 · Nuevo"
  shift
  for texto; do
    [ -z "$texto" ] || escribe "$texto"
    teclas Tab
  done
  teclas Return
  dialogo "$titulo_catalogo"
}

# A parameter by its key; a yes or no by its letter.
parametro() {  # key, value
  teclas ctrl+a
  campo "$1"
  dialogo "$1"
  campo "$2"
  dialogo "$titulo_catalogo"
}

"$RESERVAS" --base "$base" --ahora 2026-03-09T10:00 >>salida 2>>errores &
programa=$! principal=
dialogo 'Hotel nuevo'
teclas Escape  # without the assistant
abierta
catalogos o Configuración
parametro FIN_MONEDA_LOCAL MXN
parametro HT_NOMBRE 'Posada del Puerto'
parametro HT_SUCURSAL_DEFAULT 1
hoja
hoja
fila Permisos RECEPCION KV207 CHPR02
fila Permisos RECEPCION KV207 CHCONF
hoja
fila Sucursales 1 Centro
cierra
catalogos c Clientes
fila Clientes 1 'Ana Torres' '555 0101' ''
cierra
catalogos f 'Formas de pago'
fila 'Formas de pago' 1 Efectivo ''
cierra
catalogos m Monedas
fila Monedas MXN 'Peso mexicano'
cierra

catalogos h Habitaciones
for _ in 1 2 3 4 5; do hoja; done
fila Productos HAB Hospedaje NOCHE
hoja
fila 'Precios de lista' HAB 1160
for _ in 1 2; do hoja; done
fila Impuestos Todas HAB 16
for _ in 1 2 3; do hoja; done
fila 'Tipos de habitación' D Doble 2 4 HAB
hoja
fila Grupos G1 'Planta baja'
hoja
fila Áreas A1 Jardin
for _ in 1 2 3; do hoja; done
fila Tarifas D '' '' '' 1500 200 100
for _ in 1 2; do hoja; done
fila Habitaciones 101 'Doble 101' D G1 A1
fila Habitaciones 102 'Doble 102' D G1 A1
cierra

# What was set up holds from the next start. A value that cannot be read is corrected before it.
teclas ctrl+q
terminado 0
echo 'parametro HT_OVER_BOOKING no' | "$RESERVAS_GUION" --base "$base" >/dev/null
"$RESERVAS" --base "$base" --ahora 2026-03-09T10:00 >>salida 2>>errores &
programa=$! principal=
dialogo Reservaciones
teclas Return
titulo_catalogo=Configuración
dialogo "$titulo_catalogo"
parametro HT_OVER_BOOKING N
teclas Escape
abierta
guardado "SELECT Pm_Valor FROM Parametro WHERE Pm_Clave = 'HT_OVER_BOOKING'" '{"Pm_Valor":"0"}'

teclas ctrl+n Tab Tab
campo 1
campo 1
campo 1
teclas Return
campo 11/3
campo 14/3
teclas F6
dialogo Disponibilidad
teclas Tab Tab Tab Down Tab Tab            # room view, then the grid
teclas Down space shift+Right ctrl+Return  # two nights of the first room
ventana_principal
campo 3  # the adults
acepta
guardado 'SELECT Rs_Huesped, Sc_Cve_Sucursal, Mn_Cve_Moneda, Fp_Cve_Forma_Pago FROM Reservacion' \
  '{"Rs_Huesped":"0000000001","Sc_Cve_Sucursal":"1","Mn_Cve_Moneda":"MXN","Fp_Cve_Forma_Pago":"0001"}'
# Two nights of the rate, with an adult more than it includes; 16 % of it is tax.
guardado 'SELECT Hb_Cve_Habitacion, Rsd_Adultos, Rsd_Precio_Neto_Importe FROM Reservacion_Detalle
  WHERE Rsd_Impuesto_Importe > 468.9 AND Rsd_Impuesto_Importe < 469' \
  '{"Hb_Cve_Habitacion":"0101","Rsd_Adultos":3,"Rsd_Precio_Neto_Importe":3400}'
# Whoever makes a hotel here does not sell a room twice, without having been asked.
guardado "SELECT Pm_Valor FROM Parametro WHERE Pm_Clave = 'HT_OVER_BOOKING'" '{"Pm_Valor":"0"}'
# The day's copy was made meanwhile, and one of now by hand, from the open hotel.
[ -f "$CARPETA/respaldos/hotel-$(date +%F).db" ]
"$RESERVAS_BASE" respalda "$base" "$CARPETA/copia.db" --registro "$CARPETA/diario" | grep -q '(1 reservaciones, '
