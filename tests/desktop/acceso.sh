#!/usr/bin/env bash
# A hotel with passwords: who enters, the locked screen, and another user in the same program.
# shellcheck source=manos.sh
. "$(dirname "$(realpath "$0")")/manos.sh"

usuario() {  # login, password: by the program for the database, which lets both administer it
  (umask 077 && echo "$2" >"$CARPETA/contrasena")
  "$RESERVAS_BASE" usuario "$base" "$1" --administra --contrasena-de "$CARPETA/contrasena" --registro "$CARPETA/diario" >/dev/null
}
entra() {  # login, password
  dialogo Acceso
  teclas shift+Tab ctrl+a
  escribe "$1"
  teclas Tab
  campo "$2"
}
dentro() {
  principal=
  abierta
}

"$RESERVAS_BASE" demo "$base" --ahora 2026-03-09 --registro "$CARPETA/diario" >/dev/null
usuario ANA primera-clave
usuario EVA segunda-clave
"$RESERVAS" --base "$base" --usuario ANA --ahora 2026-03-09T10:00 >>salida 2>>errores &
programa=$! principal=
entra ANA otra-cosa
entra ANA primera-clave
dentro
teclas ctrl+n Tab Tab
escribe 1  # not yet confirmed when the screen is locked
teclas F10 q
entra ANA primera-clave
ventana_principal
teclas Return
campo 2
# Another who administers the hotel ends this session, after a question, and enters.
teclas F10 q
entra EVA segunda-clave
dialogo Reservaciones
teclas alt+s
entra EVA segunda-clave
dentro
teclas ctrl+q
terminado 0
# The login refused ends the program.
"$RESERVAS" --base "$base" >>salida 2>>errores &
programa=$! principal=
dialogo Acceso
teclas Escape
terminado 0
