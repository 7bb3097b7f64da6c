# A clerk's hands and eyes at the real program, for the tests that source this file: keys and mouse by xdotool, windows by
# their titles, stored rows through the scripted clerk. Expects a display of its own (con_pantalla), the programs
# RESERVAS and RESERVAS_GUION, and the scratch folder CARPETA, which it empties.
# Whatever is waited for has a limit; what does not come ends the test with the windows' titles and a picture.
# shellcheck shell=bash
set -euo pipefail
: "${RESERVAS:?}" "${RESERVAS_GUION:?}" "${CARPETA:?}" "${DISPLAY:?}"

readonly limite=${LIMITE:-20}  # seconds
rm -rf "$CARPETA"
mkdir -p "$CARPETA"
cd "$CARPETA"
export HOME=$CARPETA XDG_DATA_HOME=$CARPETA/datos XDG_CONFIG_HOME=$CARPETA/ajustes XDG_STATE_HOME=$CARPETA/estado
estado=$XDG_STATE_HOME/reservas  # where drafts are kept
base=$CARPETA/hotel.db
# This account has seen the tour of the demo hotel.
mkdir -p "$XDG_CONFIG_HOME/reservas"
printf '[General]\nrecorrido_ofrecido=true\n' >"$XDG_CONFIG_HOME/reservas/reservas.ini"
programa=   # process of the program
principal=  # its main window
lector=()   # who reads the stored rows where users have passwords: --usuario LOGIN, and RESERVAS_CONTRASENA

for orden in xdotool scrot; do
  command -v $orden >/dev/null || { echo "$orden is not installed; ./instala installs it" >&2; exit 1; }
done

falla() {  # message
  echo "FAILED: $1" >&2
  echo "Window with the keyboard: $(titulo)" >&2
  xdotool search --onlyvisible --name . 2>/dev/null | while read -r v; do
    echo "  on the screen: $(xdotool getwindowname "$v" 2>/dev/null)" >&2
  done
  [ ! -s "$CARPETA/errores" ] || sed 's/^/  the program said: /' "$CARPETA/errores" >&2
  scrot -o "$CARPETA/falla.png" 2>/dev/null && echo "Picture: $CARPETA/falla.png" >&2
  exit 1
}
trap '[ -z "$programa" ] || kill -KILL $programa 2>/dev/null || true' EXIT

espera() {  # what, command...: until the command succeeds
  local que=$1 fin=$((SECONDS + limite))
  shift
  until "$@"; do
    [ $SECONDS -lt $fin ] || falla "$que"
    sleep 0.02
  done
}

en_borrador() { grep -qsF -- "$1" "$estado"/*.borrador; }  # text

# --- windows

enfocada() { xdotool getwindowfocus -f 2>/dev/null || true; }
titulo() { xdotool getwindowname "$(enfocada)" 2>/dev/null || true; }
# Pattern of a title, without what every title ends in: the program's name, or what a hotel to practise in is.
es_titulo() {
  local visto
  visto=$(titulo)
  visto=${visto% — DEMO}
  # shellcheck disable=SC2053
  [[ ${visto% — Reservaciones} == $1 ]]
}
es_dialogo() { [ "$(enfocada)" != "$principal" ] && es_titulo "$1"; }
es_principal() { [ "$(enfocada)" = "$principal" ]; }
# The window with the keyboard has this title, and is not the main one.
dialogo() { espera "no window «$1» took the keyboard" es_dialogo "$1"; }
ventana_principal() { espera "the keyboard did not come back to the main window" es_principal; }

# The day has come up and is closed; the main window is there.
abierta() {
  espera "the day did not come up" es_titulo Hoy
  teclas Escape
  ventana_nueva
}
# The main window has come up, without the day before it.
ventana_nueva() {
  espera "the main window did not open" es_titulo Reservaciones
  principal=$(enfocada)
}
# Starts the program with these options.
lanza() {
  "$RESERVAS" --base "$base" --ahora 2026-03-09T10:00 "$@" >>"$CARPETA/salida" 2>>"$CARPETA/errores" &
  programa=$!
}
# The same, and waits for its main window.
abre() {
  lanza "$@"
  abierta
}

termino() { ! kill -0 "$programa" 2>/dev/null; }
# The program has ended, with this exit status.
terminado() {
  local estado=0
  espera "the program did not end" termino
  wait "$programa" || estado=$?
  programa=
  [ "$estado" = "$1" ] || falla "exit status $estado instead of $1"
}

# --- hands

teclas() { xdotool key --delay 5 "$@"; }
escribe() { xdotool type --delay 5 -- "$1"; }
campo() { escribe "$1"; teclas Return; }  # a field or cell, confirmed
clic() { xdotool mousemove --window "$(enfocada)" "$1" "$2" click 1; }  # x y in the window with the keyboard

# --- stored rows

valor() {  # SQL: the rows as JSON, without the brackets; the whole answer when it is an error
  local linea
  linea=$(echo "sql ${1//$'\n'/ }" | "$RESERVAS_GUION" --base "$base" "${lector[@]}" 2>&1) || true
  linea=${linea#*\"valor\":\[}
  echo "${linea%%],\"mensajes\"*}"
}
es_valor() { [ "$(valor "$1")" = "$2" ]; }
# The statement gives these rows, at once or soon.
guardado() {
  local fin=$((SECONDS + limite))
  until es_valor "$1" "$2"; do
    [ $SECONDS -lt $fin ] || falla "$1
  gives    $(valor "$1")
  instead of $2"
    sleep 0.05
  done
}

# --- a reservation

# Pixels in a window at 96 dots an inch.
readonly opcion_habitacion='205 131' filtro_tipo='695 102'
readonly noche_1='187 284' noche_2='240 284'  # of room 210, free on all three
readonly adultos_1='410 317' adultos_2='410 341'

encabezado() {  # client 1 for guest 2, cash, from 11 to 14 March
  teclas ctrl+n Tab Tab
  campo 1
  campo 2
  campo 1
  teclas Return
  campo 11/3
  campo 14/3
}

# Kings on the board: the same two nights of room 210 by clicks, of 211 by keys.
tablero() {
  teclas F6
  dialogo Disponibilidad
  clic $opcion_habitacion
  clic $filtro_tipo
  teclas ctrl+a
  campo 3
  clic $noche_1
  clic $noche_2
  teclas Down space Left space
  teclas ctrl+Return
  ventana_principal
}

personas() {
  clic $adultos_1
  teclas ctrl+a
  campo 2
  clic $adultos_2
  teclas ctrl+a
  campo 1
}

# Accepts, sends no mail, leaves the printed confirmation.
acepta() {
  teclas ctrl+Return
  dialogo Vormalix
  teclas n
  dialogo 'Confirmación *'
  teclas Escape
  ventana_principal
}
