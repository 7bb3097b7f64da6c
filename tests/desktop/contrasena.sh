#!/usr/bin/env bash
# A hotel on a server that wants a password: the program asks for it until it is right, or ends when there is none.
# shellcheck source=manos.sh
. "$(dirname "$(realpath "$0")")/manos.sh"
: "${KV207_POSTGRES:?}"

export PGHOST=$KV207_POSTGRES PGPORT=${KV207_POSTGRES##*-}
psql -q -U hotel postgres -c 'DROP DATABASE IF EXISTS ventana' -c 'CREATE DATABASE ventana OWNER conclave' 2>/dev/null
psql -q -U hotel ventana -c 'GRANT ALL ON SCHEMA public TO conclave' -c 'ALTER ROLE conclave CREATEROLE'

abre_servidor() {
  "$RESERVAS" --conexion "postgresql://conclave@/ventana" --demo >>salida 2>>errores &
  programa=$!
  dialogo Contraseña
}

abre_servidor
primera=$(enfocada)
campo mala
otra() { [ "$(enfocada)" != "$primera" ] && es_titulo Contraseña; }
espera 'the password was not asked for again' otra
campo secreta
abierta
teclas ctrl+q
terminado 0

abre_servidor
teclas Escape
dialogo Reservaciones
teclas Return
terminado 1
grep -q 'Falta la contraseña de la base de datos' errores || falla 'it was not said why the hotel was not opened'
