#!/usr/bin/env bash
# A hotel's file in the sqlite3 shell: without the extension its columns cannot be compared; with it they can, rows are
# repaired, and the guard against selling a room twice still holds.
set -euo pipefail
rm -rf "$CARPETA" && mkdir -p "$CARPETA"
base=$CARPETA/hotel.db
echo "" | "$RESERVAS_GUION" --base "$base" --demo --ahora 2026-03-09T10:00
consulta() { sqlite3 "$base" "$@" 2>&1; }
con() { consulta ".load $EXTENSION" "$@"; }
igual() { [ "$1" = "$2" ] || { echo "expected «$2», got «$1»" >&2; exit 1; }; }

[[ $(consulta "SELECT 1 FROM Cliente WHERE Cl_Razon_Social_1 = 'x'" || true) == *ESPANOL* ]]
con "UPDATE Cliente SET Cl_Razon_Social_1 = 'Núñez ÁVILA' WHERE rowid = (SELECT MIN(rowid) FROM Cliente)"
igual "$(con "SELECT UPPER(Cl_Razon_Social_1) FROM Cliente
              WHERE Cl_Razon_Social_1 = 'NÚÑEZ ávila  ' AND Cl_Razon_Social_1 LIKE 'nú[ñ]%'")" "NÚÑEZ ÁVILA"
con "INSERT OR REPLACE INTO Parametro (Pm_Clave, Pm_Valor) VALUES ('HT_OVER_BOOKING', '0')"
[[ $(con "INSERT INTO Reservacion_Detalle SELECT D.* FROM Reservacion_Detalle D
          INNER JOIN Reservacion R ON R.Rs_Folio = D.Rs_Folio WHERE Es_Cve_Estado = 'AC' LIMIT 1" || true) == \
  *"ya está reservada la noche del"* ]]
# A day compares with the moments in it, whoever loads the extension.
igual "$(/usr/bin/python3 - "$base" "$EXTENSION" <<'FIN'
import sqlite3, sys
base = sqlite3.connect(sys.argv[1])
base.enable_load_extension(True)
base.load_extension(sys.argv[2])
(llegada,) = base.execute("SELECT MIN(Rs_Llegada) FROM Reservacion").fetchone()
print(base.execute("SELECT COUNT(*) > 0 FROM Reservacion WHERE Rs_Llegada = ?", (llegada[:10],)).fetchone()[0])
FIN
)" 1
igual "$(con "PRAGMA integrity_check")" ok
