#!/usr/bin/env bash
# The program is killed with a reservation half captured, and started again: it offers what was captured. Yes brings it
# back and it can be accepted, No forgets it, Escape leaves it for the next time.
# shellcheck source=manos.sh
. "$(dirname "$(realpath "$0")")/manos.sh"

readonly referencia='700 87'  # pixels in the main window

muere() {
  kill -KILL "$programa"
  wait "$programa" 2>/dev/null || true
  programa=
}
sin_borrador() { ! ls "$estado"/*.borrador >/dev/null 2>&1; }
# Starts the program, which offers what was lost; the answer's key.
vuelve() {
  lanza
  dialogo 'Recuperar captura'
  teclas "$1"
}

abre --demo
encabezado
tablero
personas
clic $referencia
escribe 'agencia 7'
espera 'no draft was written' en_borrador 'agencia 7'
muere

# While one program asks, another that starts has nothing to offer.
lanza
dialogo 'Recuperar captura'
primera=$programa
lanza
abierta
teclas ctrl+q
terminado 0
programa=$primera
muere

vuelve Escape
abierta
# Another program at the same draft: it is the first one's until that ends.
primera=$programa
vuelve s
ventana_nueva
segunda=$programa ventana=$principal
lanza
abierta
teclas ctrl+q
terminado 0
programa=$primera
kill -TERM "$primera"
terminado 0
programa=$segunda principal=$ventana
xdotool windowfocus "$principal"
ventana_principal
acepta
espera 'the draft stayed' sin_borrador
guardado "SELECT Cl_Cve_Cliente, Rs_Huesped, Rs_Llegada, Rs_Salida, Rs_Referencia FROM Reservacion
  WHERE Rs_Folio = '0000000046'" \
  '{"Cl_Cve_Cliente":"0000000001","Rs_Huesped":"0000000002","Rs_Llegada":"2026-03-11","Rs_Salida":"2026-03-14",'\
'"Rs_Referencia":"agencia 7"}'
guardado "SELECT Hb_Cve_Habitacion, Rsd_Fecha_Inicio, Rsd_Fecha_Fin, Rsd_Adultos FROM Reservacion_Detalle
  WHERE Rs_Folio = '0000000046' AND Rsd_Precio_Neto_Importe > 0" \
  '{"Hb_Cve_Habitacion":"0210","Rsd_Fecha_Inicio":"2026-03-11","Rsd_Fecha_Fin":"2026-03-13","Rsd_Adultos":2},'\
'{"Hb_Cve_Habitacion":"0211","Rsd_Fecha_Inicio":"2026-03-11","Rsd_Fecha_Fin":"2026-03-13","Rsd_Adultos":1}'

# An edit; meanwhile another desk changes the reservation, which Accept tells.
campo 46
teclas ctrl+e
clic $referencia
teclas ctrl+a
escribe 'agencia 8'
espera 'no draft of the edit' en_borrador 'agencia 8'
muere
echo "sql UPDATE Reservacion SET Rs_Comentario = 'de otro' WHERE Rs_Folio = '0000000046'" |
  "$RESERVAS_GUION" --base "$base" >/dev/null
vuelve s
ventana_nueva
teclas ctrl+Return
dialogo Vormalix
teclas Return
ventana_principal
guardado "SELECT Rs_Referencia, Rs_Comentario FROM Reservacion WHERE Rs_Folio = '0000000046'" \
  '{"Rs_Referencia":"agencia 7","Rs_Comentario":"de otro"}'
muere

# A damaged draft is told and kept; No forgets one that can be read.
for borrador in "$estado"/*.borrador; do printf X >>"$borrador"; done
lanza
dialogo Reservaciones
teclas Return
abierta
ls "$estado"/*.ilegible1 >/dev/null || falla 'the damaged draft was not kept'
encabezado
espera 'no draft was written' en_borrador txtHuesped
muere
vuelve n
abierta
sin_borrador || falla 'No did not forget the draft'
teclas ctrl+q
terminado 0
