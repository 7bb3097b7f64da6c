#!/usr/bin/env bash
# What befalls a clerk who has a reservation half captured: the database is moved away, another program holds it, the
# display is lost, the session is closed. Every time the program says so, what was captured can be accepted afterwards,
# nothing is half stored.
# shellcheck source=manos.sh
. "$(dirname "$(realpath "$0")")/manos.sh"

# Accept is refused with a message, after which the clerk is back in the capture.
se_niega() {
  teclas ctrl+Return
  dialogo 'Controles_Aceptar()'
  teclas Return
  ventana_principal
}

guardadas() {  # reservations and lines
  guardado 'SELECT COUNT(*) AS Cuantas FROM Reservacion' "{\"Cuantas\":$1}"
  guardado "SELECT COUNT(*) AS Renglones FROM Reservacion_Detalle WHERE Rs_Folio > '0000000045'" "{\"Renglones\":$2}"
}

abre --demo
encabezado
tablero
personas
mv "$base" "$base.lejos"
se_niega
mv "$base.lejos" "$base"
guardadas 45 0

# Another program's write transaction.
coproc otro { "$RESERVAS_GUION" --base "$base"; }
echo 'sql BEGIN IMMEDIATE' >&"${otro[1]}"
read -r _ <&"${otro[0]}"
se_niega
echo 'sql ROLLBACK' >&"${otro[1]}"
read -r _ <&"${otro[0]}"
acepta
guardadas 46 2

# The session is closed with the board open: asked about, and No leaves everything as it was.
encabezado
teclas F6
dialogo Disponibilidad
kill -TERM $programa
dialogo Reservaciones
teclas n
dialogo Disponibilidad
teclas Escape
ventana_principal
kill -HUP $programa
dialogo Reservaciones
teclas s
terminado 0
guardadas 46 2
abre
kill -TERM $programa
terminado 0

abre
encabezado
teclas F6
dialogo Disponibilidad
espera 'no draft was written' en_borrador txtHuesped
xdotool windowkill "$principal"
terminado 1
grep -q 'se perdió la pantalla gráfica' errores || falla 'nothing was said of the lost display'
guardadas 46 2
lanza
dialogo 'Recuperar captura'
teclas n
abierta
teclas ctrl+q
terminado 0
