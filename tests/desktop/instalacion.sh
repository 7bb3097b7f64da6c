#!/usr/bin/env bash
# What is installed works from where it lies, and the package holds it all and names what it needs.
set -euo pipefail
rm -rf "$CARPETA" && mkdir -p "$CARPETA"
cmake --install "$CONSTRUCCION" --prefix "$CARPETA/usr" >/dev/null
"$CARPETA/usr/bin/reservas-guion" --demo --ahora 2026-03-09T10:00 "$RAIZ/docs/recorrido.guion" |
  cmp - "$RAIZ/tests/guiones/recorrido.salida"
(cd "$CARPETA" && cpack --config "$CONSTRUCCION/CPackConfig.cmake" >/dev/null)
paquete=$(echo "$CARPETA"/reservas_*.deb)
lista=$(dpkg-deb -c "$paquete")
for ruta in bin/reservas bin/reservas-guion bin/reservas-importa bin/reservas-base bin/reservas-correo \
  lib/systemd/system/reservas-correo@.service lib/reservas/libkv207.so \
  lib/reservas/libkv207_sqlite.so share/applications/reservas.desktop share/icons/hicolor/scalable/apps/reservas.svg \
  share/doc/reservas/manual.md; do
  [[ $lista == *"./usr/$ruta"* ]] || { echo "the package lacks $ruta" >&2; exit 1; }
done
[[ $(dpkg-deb -f "$paquete" Depends) == *libqt6sql6-sqlite*libqt6widgets6* ]]
