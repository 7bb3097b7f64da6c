#!/usr/bin/env bash
# What is queued leaves for a real mail server: each mail once, whatever goes down meanwhile.
set -euo pipefail
aqui=$(dirname "$(readlink -f "$0")")
rm -rf "$CARPETA" && mkdir -p "$CARPETA"
cd "$CARPETA"
export XDG_STATE_HOME=$CARPETA/estado XDG_CONFIG_HOME=$CARPETA/config TZ=America/Mexico_City
base=$CARPETA/hotel.db
puerto=$((20000 + RANDOM % 10000))
servidor=
trap '[ -z "$servidor" ] || kill "$servidor" 2>/dev/null' EXIT

falla() { echo "$*" >&2; exit 1; }
abre() {  # FOLDER OPTION...
  "$aqui/servidor.py" $puerto "$@" 2>"$CARPETA/servidor.err" &
  servidor=$!
  for _ in $(seq 100); do [ -e "$1/listo" ] && return; sleep 0.1; done
  falla "the mail server does not begin: $(cat "$CARPETA/servidor.err")"
}
cierra() { kill $servidor; wait $servidor || true; servidor=; }
guion() { "$RESERVAS_GUION" --base "$base" --demo --ahora "2026-03-09T$1" - >"$CARPETA/dicho" || falla "$(cat "$CARPETA/dicho")"; }
envia() { "$RESERVAS_CORREO" --base "$base" --una-vez --ahora "2026-03-09T$1" "${@:2}"; }
estados() { guion "$1" <<<'lista correos'; grep -o '"estado":"[^"]*"' "$CARPETA/dicho" | sort | uniq -c; }
espera() {  # HH:MM TEXT COUNT
  local n
  n=$(estados "$1" | awk -v texto="$2" 'index($0, texto) { s += $1 } END { print s + 0 }')
  [ "$n" = "$3" ] || falla "$n mails are «$2», not $3: $(estados "$1")"
}

# --- queued by the mail button; what is wrong is said then, and nothing stays behind
openssl req -x509 -newkey rsa:2048 -nodes -days 2 -subj /CN=localhost -addext subjectAltName=DNS:localhost \
  -keyout llave.pem -out certificado.pem 2>/dev/null
cat >cola.guion <<FIN
parametro CORREO_SERVIDOR localhost
parametro CORREO_PUERTO $puerto
parametro CORREO_SEGURIDAD STARTTLS
parametro CORREO_USUARIO recepcion
parametro CORREO_REMITENTE reservas@hotel.mx
parametro HT_NOMBRE "Hotel \"Peñón\" del Mar"
plantilla PL16 "Reservación {folio} de {huesped}, que esperamos con gusto en {hotel} en cuanto llegue" "Hola {huesped}:\nTotal {total}\n" HT0001
sql "UPDATE Cliente SET Cl_Razon_Social_1 = 'Ana Peña\\nBcc: otro@ejemplo.mx', Cl_Correo = 'ana@ejemplo.mx'"
abre
campo txtFolio 5
FIN
for _ in $(seq 12); do printf 'responde ERR-ID:7500053 6\naccion correo\n'; done >>cola.guion
cat >>cola.guion <<'FIN'
plantilla PL16 "{folio}" "{huespd} {nombre del huésped} {huesped} p{a: b} {tel2} { }"
responde ERR-ID:7500053 6
accion correo
plantilla PL16 "{folio}" "x"
sql UPDATE Cliente SET Cl_Correo = 'ana@ejemplo'
responde ERR-ID:7500053 6
accion correo
FIN
guion 10:00 <cola.guion
grep -q 'La plantilla de correo PL16 tiene campos que no existen: {huespd}, {nombre del huésped}, {tel2}"' "$CARPETA/dicho"
grep -q 'no es válida: ana@ejemplo"' "$CARPETA/dicho"
espera 10:00 '"En espera"' 12

# --- the server is down, then wants what it does not get
! envia 10:00 2>error || falla "sent without a password"
grep -q 'Falta la contraseña de recepcion' error
mkdir config/reservas -p && echo mala >config/reservas/correo
! envia 10:00 2>error || falla "a password that everybody can read"
grep -q 'chmod 600' error
chmod 600 config/reservas/correo
! envia 10:00 >/dev/null || falla "sent to no server"
espera 10:00 "se intenta otra vez el 09/03/2026 10:01:00 (1 intento): El servidor de correo localhost:$puerto no contesta" 12
envia 10:00 | grep -q 'Enviados: 0. Para otro intento: 0.' || falla "the pause is not kept"
abre uno --tls certificado.pem llave.pem --login recepcion secreta
guion 10:01 <<<"parametro CORREO_CERTIFICADOS /etc/ssl/certs/ca-certificates.crt"
! envia 10:01 >/dev/null || falla "sent over a bad certificate"
espera 10:01 '10:03:00 (2 intentos): El certificado del servidor de correo no es de fiar' 12
guion 10:03 <<<"parametro CORREO_CERTIFICADOS $CARPETA/certificado.pem"
! envia 10:03 >/dev/null || falla "sent with a bad password"
espera 10:03 '10:07:00 (3 intentos): El servidor de correo no acepta el usuario o la contraseña' 12
[ ! -e uno/1.eml ]

# --- two senders at once: each mail once
echo secreta >config/reservas/correo
envia 10:07 >a & envia 10:07 >b
wait $!
espera 10:08 '"Enviado el 09/03/2026 10:07:00"' 12
cierra
python3 - uno <<'FIN'
import email, email.policy, pathlib, subprocess, sys
mensajes = sorted(pathlib.Path(sys.argv[1]).glob("*.eml"))
assert len(mensajes) == 12, len(mensajes)
identidades = set()
for ruta in mensajes:
    m = email.message_from_bytes(ruta.read_bytes(), policy=email.policy.default)
    assert ruta.with_suffix(".para").read_text() == "ana@ejemplo.mx"
    assert set(m.keys()) == {"Date", "From", "To", "Subject", "Message-ID", "MIME-Version", "Content-Type"}, m.keys()
    assert m["Subject"].startswith("Reservación 0000000005 de Ana Peña Bcc: otro@ejemplo.mx, que esp"), m["Subject"]
    assert m["From"].addresses[0].display_name == 'Hotel "Peñón" del Mar', m["From"]
    assert m["From"].addresses[0].addr_spec == "reservas@hotel.mx" and not m.defects
    assert str(m["Date"]) == "Mon, 09 Mar 2026 10:00:00 -0600", m["Date"]
    assert all(len(l) < 79 for l in ruta.read_bytes().split(b"\r\n"))
    texto, pdf = m.iter_parts()
    assert texto.get_content().startswith("Hola Ana Peña\r\nBcc: otro@ejemplo.mx:\r\nTotal $"), texto.get_content()
    assert pdf.get_filename() == "reservacion-0000000005.pdf"
    letra = subprocess.run(["pdftotext", "-", "-"], input=pdf.get_content(), stdout=subprocess.PIPE, check=True)
    assert "0000000005" in letra.stdout.decode() and "Peñón" in letra.stdout.decode()
    identidades.add(m["Message-ID"])
assert len(identidades) == 12
FIN

# --- a sender that dies in mid-send: a person says what is to happen; a server that refuses
reenvia() { guion "$1" <<<"reenvia $2"; }
guion 11:00 <<<$'parametro CORREO_SEGURIDAD ""\nparametro CORREO_USUARIO ""\nreenvia 1'
abre dos --cuelga
"$RESERVAS_CORREO" --base "$base" --una-vez --ahora 2026-03-09T11:00 & muere=$!
for _ in $(seq 100); do [ -s dos/1.eml ] && break; sleep 0.1; done
kill -9 $muere; wait $muere || true
cierra
! "$RESERVAS_GUION" --base "$base" --ahora 2026-03-09T11:01 - <<<'reenvia 1' >error || falla "sent again in mid-send"
grep -q 'se está enviando' error
abre tres
envia 11:05 >/dev/null
espera 11:05 Enviándose 1
envia 11:11 >/dev/null
espera 11:11 'No se sabe si salió: el programa que lo enviaba se cerró a medio envío' 1
[ ! -e tres/1.eml ]
reenvia 11:12 1
envia 11:12 >/dev/null
[ -s tres/1.eml ] && [ ! -e tres/2.eml ]
cierra
for caso in '550 buzon lleno:Rechazado: El servidor de correo contestó «550 buzon lleno»' '451 ocupado:(1 intento)'; do
  abre "dice${caso%% *}" --dice "${caso%%:*}"
  reenvia 12:00 1
  ! envia 12:00 >/dev/null || falla "the refusal is not told"
  espera 12:00 "${caso#*:}" 1
  cierra
done

# --- what is said of one mailbox concerns its mail alone; what is said of the hotel's own address, every mail
guion 12:10 <<<"sql UPDATE Correo_Salida SET Cs_Para = 'luis@ejemplo.mx' WHERE Cs_Id = 2"
while IFS='|' read -r direccion respuesta estado cuantos; do
  abre "rechaza${respuesta%% *}" --rechaza "$direccion" "$respuesta"
  guion 12:10 <<<$'reenvia 1\nreenvia 2'
  ! envia 12:10 >/dev/null || falla "the refusal is not told"
  espera 12:10 "$estado: El servidor de correo contestó «$respuesta»" "$cuantos"
  espera 12:10 'Enviado el 09/03/2026 12:10:00' $((2 - cuantos))
  cierra
done <<FIN
ana@ejemplo.mx|452 buzon lleno|(1 intento)|1
ana@ejemplo.mx|550 no existe|Rechazado|1
ana@ejemplo.mx|421 ya cierra|(1 intento)|2
reservas@hotel.mx|553 ese no es de aqui|(1 intento)|2
FIN

# --- service and desktop: begin, deliver, end when they are told to; a mail that waited too long stays
guion 13:00 <<<'reenvia 2'
guion 13:00 <<<"sql UPDATE Correo_Salida SET Cs_Fecha = '2026-03-05 10:00:00' WHERE Cs_Id = 2"
for programa in "$RESERVAS_CORREO" "$RESERVAS"; do
  bandeja=de-$(basename "$programa")
  abre "$bandeja"
  guion 13:00 <<<'reenvia 1'
  QT_QPA_PLATFORM=offscreen "$programa" --base "$base" --ahora 2026-03-09T13:00 2>>avisos & servicio=$!
  for _ in $(seq 200); do [ -s "$bandeja/1.eml" ] && break; sleep 0.1; done
  sleep 1
  kill $servicio
  wait $servicio || falla "$programa ends badly"
  [ -s "$bandeja/1.eml" ] && [ ! -e "$bandeja/2.eml" ] || falla "$programa does not deliver"
  cierra
done
espera 13:01 'Enviado el 09/03/2026 13:00:00' 1
espera 13:01 'Sin enviar: esperó más de tres días' 1
[ "$(grep -c 'a luis@ejemplo.mx no salió: esperó más de tres días' avisos)" = 1 ] || falla "nobody is told: $(cat avisos)"

# --- a certificate that is of another day, and a server that hangs up: in words of the clerk's
certificado() {  # BEGIN END
  rm -rf ca && mkdir ca && touch ca/indice && echo 01 >ca/serie
  printf '[ca]\ndefault_ca=d\n[d]\nnew_certs_dir=ca\ndatabase=ca/indice\nserial=ca/serie\npolicy=p\n[p]\ncommonName=supplied\n' >ca/ca.cnf
  openssl req -new -key llave.pem -subj /CN=localhost -out ca/pide.pem 2>/dev/null
  openssl ca -batch -config ca/ca.cnf -md sha256 -selfsign -keyfile llave.pem -startdate "$1" -enddate "$2" \
    -extfile <(echo subjectAltName=DNS:localhost) -in ca/pide.pem -out certificado.pem -notext 2>/dev/null
}
guion 13:02 <<<"parametro CORREO_SEGURIDAD STARTTLS
sql DELETE FROM Correo_Salida WHERE Cs_Id > 1"
for caso in '20950101000000Z:20960101000000Z:todavía no es válido; revise la fecha de este equipo' \
  '20150101000000Z:20160101000000Z:ya venció'; do
  certificado "${caso%%:*}" "$(cut -d: -f2 <<<"$caso")"
  abre "dia${caso%%Z*}" --tls certificado.pem llave.pem
  reenvia 13:03 1
  ! envia 13:03 >/dev/null || falla "sent over a certificate of another day"
  espera 13:03 "El certificado del servidor de correo no es de fiar: ${caso##*:}" 1
  cierra
done
guion 13:04 <<<'parametro CORREO_SEGURIDAD ""'
for dice in '' 'HTTP/1.0 400 No' '220 hola'; do
  python3 -c "import socket, sys
s = socket.create_server(('127.0.0.1', $puerto))
open('cuelga', 'w')
while True:
  c = s.accept()[0]
  c.sendall(sys.argv[1].encode() + b'\r\n' if sys.argv[1] else b'')
  c.close()" "$dice" & servidor=$!
  for _ in $(seq 100); do [ -e cuelga ] && break; sleep 0.1; done
  rm -f cuelga
  reenvia 13:05 1
  ! envia 13:05 >/dev/null || falla "sent to nobody"
  guion 13:05 <<<'lista correos'
  echo "«$dice»: $(grep -o 'intento): [^"]*' dicho)" >>colgadas
  cierra
done
! grep -vE 'El servidor de correo no contesta como uno de correo|Se cortó la conexión con el servidor de correo \(código [0-9]+\)' colgadas ||
  falla "in other words"
guion 13:06 <<<'sql DELETE FROM Correo_Salida'
# --- the day's report leaves by itself from its hour on, once, whoever delivers
guion 13:10 <<<'parametro PARTE_CORREOS gerencia@hotel.mx'
abre parte
programas=()
for programa in "$RESERVAS_CORREO" "$RESERVAS"; do
  QT_QPA_PLATFORM=offscreen "$programa" --base "$base" --ahora 2026-03-09T22:30 & programas+=($!)
done
for _ in $(seq 200); do [ -s parte/1.eml ] && break; sleep 0.1; done
sleep 2
kill "${programas[@]}"
for p in "${programas[@]}"; do wait "$p" || falla "a program that sends the report ends badly"; done
cierra
[ ! -e parte/2.eml ] || falla "the report left twice"
python3 - parte/1.eml <<'FIN'
import email, email.policy, subprocess, sys
m = email.message_from_bytes(open(sys.argv[1], "rb").read(), policy=email.policy.default)
texto, pdf = m.iter_parts()
assert m["Subject"] == 'Parte del 09/03/2026 · Hotel "Peñón" del Mar' and m["To"] == "gerencia@hotel.mx", m["Subject"]
assert "Llegadas: " in texto.get_content() and pdf.get_filename() == "Parte-2026-03-09.pdf"
hoja = subprocess.run(["pdftotext", "-", "-"], input=pdf.get_content(), stdout=subprocess.PIPE, check=True)
assert "Tarifa promedio" in hoja.stdout.decode()
FIN
! grep -rqF -e secreta -e mala "$base" "$XDG_STATE_HOME" || falla "the password is kept"
