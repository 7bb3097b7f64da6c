#!/usr/bin/env bash
# A clerk's day at the real window, by keyboard and mouse: a reservation from New to the question at the end, edited,
# confirmed, cancelled, reactivated, printed. After each step the stored rows are read.
# shellcheck source=manos.sh
. "$(dirname "$(realpath "$0")")/manos.sh"

readonly referencia='700 87' boton_aceptar='158 18' boton_cancelar_reservacion='322 18'  # pixels in the main window

# The question at the end of a save: No, then the confirmation is saved as a file.
imprime() {  # file
  dialogo Vormalix
  teclas n
  dialogo 'Confirmación *'
  teclas alt+g
  dialogo 'Guardar Confirmación *'
  teclas ctrl+a
  campo "$CARPETA/$1"
  ventana_principal
  espera "no file $1" test -s "$1"
  pdftotext -layout "$1" - >"$1.txt"
  grep -q "$folio" "$1.txt" || falla "$1 does not show folio $folio"
}

carga() {
  ventana_principal
  campo "$((10#$folio))"
}

estado() { guardado "SELECT Es_Cve_Estado FROM Reservacion WHERE Rs_Folio = '$folio'" "{\"Es_Cve_Estado\":\"$1\"}"; }

abre --demo
folio=0000000046
guardado 'SELECT MAX(Rs_Folio) AS Ultimo FROM Reservacion' '{"Ultimo":"0000000045"}'

encabezado
tablero
personas
teclas ctrl+Return
imprime nueva.pdf
guardado "SELECT Cl_Cve_Cliente, Rs_Huesped, Fp_Cve_Forma_Pago, Rs_Llegada, Rs_Salida FROM Reservacion
  WHERE Rs_Folio = '$folio'" \
  '{"Cl_Cve_Cliente":"0000000001","Rs_Huesped":"0000000002","Fp_Cve_Forma_Pago":"0001",'\
'"Rs_Llegada":"2026-03-11","Rs_Salida":"2026-03-14"}'
guardado "SELECT Hb_Cve_Habitacion, Rsd_Fecha_Inicio, Rsd_Fecha_Fin, Rsd_Adultos FROM Reservacion_Detalle
  WHERE Rs_Folio = '$folio' AND Rsd_Precio_Neto_Importe > 0" \
  '{"Hb_Cve_Habitacion":"0210","Rsd_Fecha_Inicio":"2026-03-11","Rsd_Fecha_Fin":"2026-03-13","Rsd_Adultos":2},'\
'{"Hb_Cve_Habitacion":"0211","Rsd_Fecha_Inicio":"2026-03-11","Rsd_Fecha_Fin":"2026-03-13","Rsd_Adultos":1}'

carga
teclas ctrl+e
clic $referencia
escribe 'agencia 7'
clic $adultos_2
teclas ctrl+a
campo 2
clic $boton_aceptar
imprime cambiada.pdf
guardado "SELECT Rs_Referencia FROM Reservacion WHERE Rs_Folio = '$folio'" '{"Rs_Referencia":"agencia 7"}'
guardado "SELECT Rsd_Adultos FROM Reservacion_Detalle WHERE Rs_Folio = '$folio' AND Hb_Cve_Habitacion = '0211'" \
  '{"Rsd_Adultos":2}'

carga
teclas ctrl+k
dialogo Vormalix
teclas Escape
estado CO

carga
clic $boton_cancelar_reservacion
dialogo Reservaciones
teclas s
ventana_principal
estado CA

carga
teclas ctrl+r
estado AC

carga
teclas ctrl+p
imprime otra_vez.pdf

# A printed reservation stays on the screen. Leaving in mid-edit is asked about; what was not accepted is not stored.
teclas ctrl+e
clic $referencia
teclas ctrl+a
escribe 'no se guarda'
teclas ctrl+q
dialogo Reservaciones
teclas Escape
ventana_principal
teclas ctrl+q
dialogo Reservaciones
teclas s
terminado 0
guardado "SELECT Rs_Referencia FROM Reservacion WHERE Rs_Folio = '$folio'" '{"Rs_Referencia":"agencia 7"}'
