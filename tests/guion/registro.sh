#!/usr/bin/env bash
# The log answers what happened, and holds no value that a guest or a card has in the database.
set -euo pipefail
rm -rf "$CARPETA" && mkdir -p "$CARPETA"
export XDG_STATE_HOME=$CARPETA/estado
registro=$CARPETA/estado/reservas/reservas.log
corre() { "$RESERVAS_GUION" --base="$1" --demo --ahora 2026-03-09T10:00 "$2" >/dev/null 2>&1 || true; }

for guion in tarjeta camino_de_una_reservacion correo_e_impresion guardar_fallas comillas; do
  base=$CARPETA/$guion.db
  corre "$base" "$GUIONES/$guion.guion"
  sqlite3 "$base" "
    SELECT Cl_Razon_Social_1 FROM Cliente; SELECT Cl_Tarjeta_Numero FROM Cliente; SELECT Cl_Correo FROM Cliente;
    SELECT Cl_Telefono FROM Cliente; SELECT Rs_Comentario FROM Reservacion; SELECT Rs_Referencia FROM Reservacion;
    SELECT Rdt_Numero FROM Reservacion_Datos_Tarjeta;" >>"$CARPETA/valores"
done
cat >"$CARPETA/fallas.guion" <<'FIN'
sql INSERT INTO Cliente (Cl_Cve_Cliente, Cl_Razon_Social_1, Cl_Tarjeta_Numero) VALUES ('X1', 'O''Hara Secreta', '4111222233334444')
sql INSERT INTO Cliente (Cl_Cve_Cliente, Cl_Razon_Social_1, Cl_Tarjeta_Numero) VALUES ('X1', 'O''Hara Secreta', '4111222233334444')
sql SELECT 1 FROM Cliente WHERE Cl_Tarjeta_Numero = 4111222233334444 AND Cl_Razon_Social_1 = 'O''Hara Secreta
sql DROP TABLE Permiso
abre
FIN
corre "$CARPETA/fallas.db" "$CARPETA/fallas.guion"

cat >"$CARPETA/rechazo.guion" <<'FIN'
abre
accion nuevo
campo txtHuesped 3
campo txtForma_Pago 1
celda nueva Clave 102
celda 0 Adultos 1
sql UPDATE Habitacion SET Es_Cve_Estado = 'BA' WHERE Hb_Cve_Habitacion = '0102'
accion aceptar
FIN
corre "$CARPETA/rechazo.db" "$CARPETA/rechazo.guion"

! grep -qaF 4000123412341234 "$CARPETA"/*.db* || { echo "a card is in clear in a file" >&2; exit 1; }
valores=$(grep -c . "$CARPETA/valores")
[ "$valores" -gt 20 ]
if grep -E '.{4}' "$CARPETA/valores" | grep -nF -f - "$registro" || grep -nE "Hara|Secreta|Brien|Higgins|4111|4000123412341234" "$registro"; then
  echo "the log tells a guest's or a card's data" >&2
  exit 1
fi
for esperado in 'inicio reservas-guion [0-9.]+ Motor: SQLite' 'aviso ERR-ID:7500021, estilo 16, .* por la falla 9999$' ' ms: COMMIT' \
  'el motor dice 1555, errno' 'falla 102 en [0-9.]+ ms: SELECT' 'rechaza la operación Hotel.GuardaDetalle' \
  'falla 3022 en [0-9.]+ ms: INSERT INTO Cliente .* VALUES \(\?, \?+, \?\)' \
  'falla 3146 en .* FROM Permiso' 'falla la operación Sistema.TienePermiso' '\] fin$'; do
  grep -qE "$esperado" "$registro" || { echo "the log lacks $esperado" >&2; exit 1; }
done
[ "$(stat -c %a "$registro")" = 600 ]

# Past a megabyte the file is set aside; a log that was asked for and cannot be written ends the program.
head -c 1000001 /dev/zero >"$registro"
corre "$CARPETA/fallas.db" "$CARPETA/fallas.guion"
[ "$(stat -c %s "$registro.1")" = 1000001 ] && grep -q inicio "$registro"
! "$RESERVAS_GUION" --registro /no/existe/x.log /dev/null 2>/dev/null
