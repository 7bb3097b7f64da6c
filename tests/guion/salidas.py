#!/usr/bin/python3
"""What the front desk hands out as files, read by programs of others: spreadsheets, PDF, calendars, the day's report.

RESERVAS_GUION and RESERVAS_BASE name the programs, CARPETA a folder of the test's own.
"""
import csv
import json
import os
import resource
import signal
import shutil
import subprocess
import sys
from datetime import date, timedelta

import icalendar

GUION, BASE, CARPETA = (os.environ[v] for v in ("RESERVAS_GUION", "RESERVAS_BASE", "CARPETA"))
shutil.rmtree(CARPETA, ignore_errors=True)
os.makedirs(CARPETA)
os.chdir(CARPETA)
os.environ.update(XDG_STATE_HOME=CARPETA + "/estado", TZ="America/Mexico_City")


def guion(ordenes, dia="2026-03-09T10:00", mal=False, **mas):
    """Answers of a script, by order."""
    hecho = subprocess.run([GUION, "--base", "hotel.db", "--demo", "--ahora", dia, "-"], input=ordenes, text=True,
                           capture_output=True, **mas)
    assert (hecho.returncode != 0) == mal, hecho.stdout + hecho.stderr
    return [json.loads(linea) for linea in hecho.stdout.splitlines()]


def hoja(ruta, separador=","):
    datos = open(ruta, "rb").read()
    assert datos.startswith(b"\xef\xbb\xbf") and datos.endswith(b"\r\n"), datos[:40]
    assert os.stat(ruta).st_mode & 0o777 == 0o600, ruta
    filas = list(csv.reader(open(ruta, encoding="utf-8-sig", newline=""), delimiter=separador, strict=True))
    assert len({len(f) for f in filas}) == 1, ruta
    return filas


def texto_pdf(ruta):
    return subprocess.run(["pdftotext", "-layout", ruta, "-"], text=True, capture_output=True, check=True).stdout


def paginas(ruta):
    dice = subprocess.run(["pdfinfo", ruta], text=True, capture_output=True, check=True).stdout
    return int(next(linea.split()[1] for linea in dice.splitlines() if linea.startswith("Pages:")))


# --- every list as a spreadsheet: as many rows as are in sight, no text that runs
respuestas = guion("""abre
parametro HT_NOMBRE "Hotel \\"Peñón\\" del Mar"
parametro FIN_MONEDA_LOCAL MXN
sql "UPDATE Cliente SET Cl_Razon_Social_1 = '=1+1; \\"hoy\\", mañana' WHERE Cl_Cve_Cliente = '0000000003'"
hoy
hoy busca "marzo"
muestra hoy
exporta hoy hoy.csv
exporta hoy hoy_es.csv puntoycoma
exporta hoy hoy.pdf
cuadro 2026-03-08 14
muestra cuadro
exporta cuadro cuadro.csv
exporta cuadro cuadro.pdf
cotiza 2026-03-12 2026-03-15 2 1
muestra cotizacion
exporta cotizacion cotizacion.csv
cifras 2026-03-01 2026-04-30
muestra cifras
exporta cifras cifras.csv
exporta meses meses.csv puntoycoma
exporta cifras cifras.pdf
exporta bitacora bitacora.csv
exporta correos correos.csv
exporta usuarios usuarios.csv
""")
dichas = {r["orden"]: r.get("valor") for r in respuestas}
filas = hoja("hoy.csv")
assert len(filas) == len(dichas["muestra hoy"]["filas"]) + 1 > 3, filas
assert filas == hoja("hoy_es.csv", ";")
assert filas[1][3] == dichas["muestra hoy"]["filas"][0]["llegada"], filas[1]
filas = hoja("cuadro.csv")
assert len(filas) == sum(len(h["barras"]) for h in dichas["muestra cuadro"]["habitaciones"]) + 1
assert any(f[6] == "'=1+1; \"hoy\", mañana" for f in filas), "a guest's name that would run"
assert len(hoja("cotizacion.csv")) == len(dichas["muestra cotizacion"]) + 1
filas, cifras = hoja("cifras.csv"), dichas["muestra cifras"]
assert len(filas) == 63 and filas[-1][0] == "Total" and filas[1][0] == "2026-03-01"
for fila, cuenta in zip(filas[1:], cifras["noches"] + [cifras["total"]]):
    assert int(fila[2]) == cuenta["vendidas"] and abs(float(fila[6]) - cuenta["ingreso"]) < 0.006, fila
assert abs(float(hoja("meses.csv", ";")[1][6].replace(",", ".")) - cifras["meses"][0]["ingreso"]) < 0.006
for nombre in "bitacora", "correos", "usuarios":
    hoja(nombre + ".csv")
catalogos = ("Cliente Forma_Pago Moneda Tipo_Cambio Habitacion Habitacion_Bloqueo Tipo_Habitacion Grupo_Habitacion "
             "Area_Habitacion Producto Producto_Precio Tarifa Impuesto Sucursal Permiso Plantilla Formato").split()
cuentas = guion("".join(f"exporta {c} {c}.csv\nexporta {c} {c}.pdf\nsql \"SELECT COUNT(*) AS n FROM {c}\"\n" for c in catalogos))
for catalogo, cuenta in zip(catalogos, cuentas[2::3]):
    assert len(hoja(catalogo + ".csv")) == cuenta["valor"][0]["n"] + 1, catalogo
    assert paginas(catalogo + ".pdf") >= 1, catalogo
assert ["0101", "101 Jardín", "0001 Sencilla"] == hoja("Habitacion.csv")[1][:3], hoja("Habitacion.csv")[1]

# --- on paper: whose it is, what, when, which page; nothing is cut
for nombre, titulo in ("hoy", "Reservaciones halladas"), ("cuadro", "Cuadro de habitaciones"), ("cifras", "Cifras por"):
    texto = texto_pdf(nombre + ".pdf")
    for dice in 'Hotel "Peñón" del Mar', titulo, "09/03/2026 10:00", "Página 1 de %d" % paginas(nombre + ".pdf"):
        assert dice in texto, (nombre, dice, texto)
texto = texto_pdf("cifras.pdf")
assert "Del 01/03/2026 al 30/04/2026" in texto, texto
assert paginas("cifras.pdf") > 1 and all(f[0][8:] + "/" + f[0][5:7] in texto for f in hoja("cifras.csv")[1:-1])
larga = "palabra " * 900 + "última"
guion(f"""abre
sql "INSERT INTO Bitacora (Bt_Id, Bt_Clave, Bt_Texto, Bt_Fecha) VALUES (900, '1', '{larga}', '2026-03-09 10:00:00')"
exporta bitacora bitacora.pdf
""")
assert paginas("bitacora.pdf") > 1 and texto_pdf("bitacora.pdf").count("palabra") == 900, "a row longer than a page"
assert "última" in texto_pdf("bitacora.pdf")

# --- a disk without room: told, what was there stays, nothing half-made
os.symlink("/dev/full", "llena.csv")
antes = open("cuadro.csv", "rb").read()
fallas = guion("""abre
cuadro 2026-03-08 14
exporta cuadro llena.csv
exporta cuadro no_hay/cuadro.csv
exporta cuadro cuadro.xls
exporta cuadro cuadro.csv tabuladores
exporta vecinos x.csv
exporta cotizacion x.csv
agenda 0101 llena.csv
agenda 9999 x.ics
agenda 0101 x.ics apellidos
parte x.doc
parte envia
""", mal=True)
errores = "\n".join(r.get("error", "") for r in fallas)
for dice in ("llena.csv: el disco está lleno", "no_hay/cuadro.csv: la carpeta no existe", ".csv o .pdf, no a cuadro.xls",
             "«tabuladores»", "«vecinos»", "No se ha cotizado nada", ".ics, no en llena.csv",
             "No existe la habitación «9999»", "agenda HABITACION|todas", ".pdf o .txt, no en x.doc", "PARTE_CORREOS"):
    assert dice in errores, (dice, errores)


def poco_sitio():
    signal.signal(signal.SIGXFSZ, signal.SIG_IGN)
    resource.setrlimit(resource.RLIMIT_FSIZE, (1000, 1000))


# Every way out of the program, over a file that is there and as a new one.
salidas = [orden + " %s" + fin for orden, fines in
           (("exporta cuadro", (".csv", ".pdf")), ("exporta Habitacion", (".csv", ".pdf")), ("agenda todas", (".ics",)),
            ("parte", (".pdf", ".txt"))) for fin in fines]
for orden in salidas:
    shutil.copy("cuadro.csv", orden.split()[-1] % "hay")
todas = "".join(orden % nombre + "\n" for orden in salidas for nombre in ("hay", "nuevo"))
hecho = subprocess.run([GUION, "--demo", "--ahora", "2026-03-09T10:00", "--registro", "/dev/null", "-"], text=True,
                       input="abre\ncuadro 2026-03-08 60\n" + todas, capture_output=True, preexec_fn=poco_sitio,
                       restore_signals=False)
for linea in hecho.stdout.splitlines()[2:]:
    assert "No se puede escribir" in linea and "demasiado grande" in linea, linea
for orden in salidas:
    assert open(orden.split()[-1] % "hay", "rb").read() == antes, orden
assert not [f for f in os.listdir() if f.startswith(("hay.", "nuevo.")) and f.count(".") != 1 or f.startswith("nuevo.")], os.listdir()
for fin in "pdf", "ics", "txt":
    os.symlink("/dev/full", "llena." + fin)
llenas = guion("abre\ncuadro 2026-03-08 14\n" + "".join(orden % "llena" + "\n" for orden in salidas), mal=True)
assert all("el disco está lleno" in r["error"] for r in llenas[2:]) and len(llenas) == len(salidas) + 2, llenas


# --- calendars: the nights that hold each room, by a reader of others
def agendas(*opciones):
    hecho = subprocess.run([BASE, "agenda", "hotel.db", "agendas", "--ahora", "2026-03-09", *opciones], text=True,
                           capture_output=True)
    assert hecho.returncode == 0, hecho.stderr
    eventos = {}
    for nombre in os.listdir("agendas"):
        datos = open("agendas/" + nombre, "rb").read()
        assert os.stat("agendas/" + nombre).st_mode & 0o777 == 0o600
        assert datos.replace(b"\r\n", b"").find(b"\n") < 0 and max(map(len, datos.split(b"\r\n"))) <= 75, nombre
        calendario = icalendar.Calendar.from_ical(datos.decode())
        assert calendario["VERSION"] == "2.0" and not calendario.errors
        assert calendario.subcomponents, "a calendar of nothing is none"
        eventos[nombre[:-4]] = calendario.walk("VEVENT")
        for evento in eventos[nombre[:-4]]:
            assert not evento.errors and evento["DTSTAMP"].dt.tzinfo is not None, evento
    return eventos, hecho.stdout


os.mkdir("agendas")
guion("""abre
parametro HT_NOMBRE "Hotel; Peñón, del Mar \\\\ Playa"
sql "UPDATE Cliente SET Cl_Razon_Social_1 = 'Ñandú; García, \\\\ de la Peña y Ordóñez de Montalvo de los Ríos Áéíóú' WHERE Cl_Cve_Cliente = '0000000003'"
""")
eventos, dice = agendas()
assert dice.startswith("Calendarios: %d, cambiados: %d" % (len(eventos), len(eventos))), dice
valores = guion("""sql "SELECT D.Hb_Cve_Habitacion AS h, D.Rsd_Fecha_Inicio AS i, D.Rsd_Fecha_Fin AS f FROM Reservacion R JOIN Reservacion_Detalle D ON D.Rs_Folio = R.Rs_Folio WHERE R.Es_Cve_Estado NOT IN ('CA', 'CE') AND D.Rsd_Fecha_Fin > '2026-02-06' AND NOT EXISTS (SELECT 1 FROM Check_In_Detalle C WHERE C.Hb_Cve_Habitacion = D.Hb_Cve_Habitacion)"
sql "SELECT Cl_Razon_Social_1 AS n FROM Cliente"
""")
noches = sorted((v["h"], v["i"], v["f"]) for v in valores[0]["valor"])
con_estancia = {h for h in eventos} - {h for h, _, _ in noches}
dados = sorted((h, str(e["DTSTART"].dt), str(e["DTEND"].dt)) for h, lista in eventos.items() for e in lista
               if "reservacion-" in e["UID"] and h not in con_estancia)
assert len(noches) > 20 and [n for n in noches if n not in dados] == [], [n for n in noches if n not in dados]
assert all(type(e["DTSTART"].dt) is date for lista in eventos.values() for e in lista), "whole days"
identidades = [str(e["UID"]) for lista in eventos.values() for e in lista]
assert len(set(identidades)) == len(identidades)
todo = "".join(open("agendas/" + n, encoding="utf-8", newline="").read().replace("\r\n ", "") for n in os.listdir("agendas"))
assert not [v["n"] for v in valores[1]["valor"] if v["n"] in todo], "nobody is named who was not asked for"
assert any(not lista for lista in eventos.values()), "a room without nights"
# The same again touches nothing; a stay that ends on another day is the same event, and so are the other lines of a
# reservation that is stored again, and all of a hotel with another name. What is held twice from one night on are two.
assert agendas()[1].endswith("cambiados: 0\n")
guion("""sql "UPDATE Reservacion_Detalle SET Rsd_Id = Rsd_Id + 7"
parametro HT_NOMBRE "Hotel Peñón"
""")
assert agendas()[1].endswith("cambiados: 0\n")
habitacion, llegada, salida = next(n for n in noches if n[1] > "2026-03-10")
quien = next(e for e in eventos[habitacion] if str(e["DTSTART"].dt) == llegada)
guion(f"""sql "UPDATE Reservacion_Detalle SET Rsd_Fecha_Fin = '{date.fromisoformat(salida) - timedelta(1)}' WHERE Hb_Cve_Habitacion = '{habitacion}' AND Rsd_Fecha_Inicio = '{llegada}'"
""")
otra, dice = agendas()
assert dice.endswith("cambiados: 1\n"), dice
assert str(quien["UID"]) in [str(e["UID"]) for e in otra[habitacion]]
guion(f"""sql "INSERT INTO Habitacion_Bloqueo (Hb_Cve_Habitacion, Hbb_Fecha_Inicio, Hbb_Fecha_Fin) VALUES ('{habitacion}', '2026-12-01', '2026-12-02')"
sql "INSERT INTO Habitacion_Bloqueo (Hb_Cve_Habitacion, Hbb_Fecha_Inicio, Hbb_Fecha_Fin) VALUES ('{habitacion}', '2026-12-01', '2026-12-05')"
""")
otra = agendas()[0]
assert len({str(e["UID"]) for e in otra[habitacion]}) == len(eventos[habitacion]) + 2
identidades += ["bloqueo", "bloqueo"]
con_nombres = agendas("--nombres")[0]
dichos = [str(e["SUMMARY"]) for lista in con_nombres.values() for e in lista]
assert any(d.startswith("Ñandú; García, \\ de la Peña y Ordóñez de Montalvo de los Ríos Áéíóú (") for d in dichos), dichos
# A line of three: the second one begins with a blank of its own behind that of the fold, and ends before a letter of two
# bytes of which one alone would fit.
largo = "x" * 67 + " " + "y" * 72 + "é y Compañía"
renombra = "sql \"UPDATE Cliente SET Cl_Razon_Social_1 = '%s' WHERE Cl_Cve_Cliente = '0000000003'\"\n"
guion(renombra % largo)
dichos = [str(e["SUMMARY"]) for lista in agendas("--nombres")[0].values() for e in lista]
assert any(d.startswith(largo + " (") for d in dichos), dichos
doblada = "".join(open("agendas/" + n, encoding="utf-8", newline="").read() for n in os.listdir("agendas"))
assert "x\r\n  y" in doblada and "y\r\n é" in doblada, "the folds fall where they are to be looked at"
guion(renombra % "Peña")
guion("abre\nagenda todas todas.ics nombres\n")
assert len(icalendar.Calendar.from_ical(open("todas.ics").read()).walk("VEVENT")) == len(identidades)
hecho = subprocess.run([BASE, "agenda", "hotel.db", "no_hay"], text=True, capture_output=True)
assert hecho.returncode == 1 and "no existe" in hecho.stderr

# --- the day's report: one page however much goes on; each day once, whoever sends it
muchas = "".join(f"""sql "INSERT INTO Reservacion (Rs_Folio, Rs_Llegada, Rs_Salida, Rs_Huesped, Es_Cve_Estado) VALUES ('7{i:03d}', '2026-03-{llegada}', '2026-03-{salida}', '0000000003', '{estado}')"
""" for i in range(60) for llegada, salida, estado in [(("09", 10, "AC"), ("07", "09", "AP"), ("08", 12, "AC"))[i % 3]])
partes = guion("abre\n" + muchas + """parte parte.pdf
muestra parte
parte parte.txt
parametro PARTE_CORREOS "gerencia@hotel.mx, dueño@hotel.mx"
parte envia
parametro PARTE_CORREOS "gerencia@hotel.mx; duena@hotel.mx"
parametro PARTE_HORA 24
parte deldia
parametro PARTE_HORA 21
parte deldia
parte envia
""", mal=True)
fallas = [r["error"] for r in partes if not r["ok"]]
assert len(fallas) == 2 and "separadas por comas" in fallas[0] and "una hora de 0 a 23" in fallas[1], fallas
assert paginas("parte.pdf") == 1 and "más" in texto_pdf("parte.pdf"), texto_pdf("parte.pdf")
parte = next(r["valor"] for r in partes if r["orden"] == "muestra parte")
assert open("parte.txt", encoding="utf-8").read() == parte and "Llegadas: 27, " in parte and parte.count("y 14 más") == 2, parte
assert [r.get("valor") for r in partes[-2:]] == [2, 2], "yesterday's, then by hand: %s" % partes[-2:]
cuantos = [subprocess.Popen([GUION, "--base", "hotel.db", "--ahora", "2026-03-09T21:00", "-"], text=True,
                            stdin=subprocess.PIPE, stdout=subprocess.PIPE) for _ in range(6)]
salidas = [json.loads(p.communicate("parte deldia\n")[0])["valor"] for p in cuantos]
assert sorted(salidas) == [0, 0, 0, 0, 0, 2], salidas
respuestas = guion("parte deldia\nlista correos\n", "2026-03-10T22:30")
assert respuestas[0]["valor"] == 2
asuntos = [c["asunto"] for c in respuestas[1]["valor"]]
assert asuntos.count(asuntos[0]) == 2 and len(asuntos) == 8 and asuntos[0].startswith("Parte del 10/03/2026"), asuntos


# Nobody was there on the night of the 11th: of those who come in the morning one makes up for it, and tells.
def al_dia(hora, cuantos=1):
    programas = [subprocess.Popen([GUION, "--base", "hotel.db", "--ahora", hora, "-"], text=True, stdin=subprocess.PIPE,
                                  stdout=subprocess.PIPE) for _ in range(cuantos)]
    return sorted(json.loads(p.communicate("parte deldia\n")[0])["valor"] for p in programas)


assert al_dia("2026-03-12T07:00", 4) == [0, 0, 0, 2]
assert al_dia("2026-03-12T21:30") == [2] and al_dia("2026-03-13T06:00") == [0]
cuerpos = [v["c"] for v in guion("sql \"SELECT Cs_Cuerpo AS c FROM Correo_Salida WHERE Cs_Plantilla = 'PARTE' ORDER BY Cs_Id\"\n",
                                 "2026-03-13T06:30")[0]["valor"]]
assert cuerpos[-4].startswith("Parte del 11/03/2026") and "Se hizo el 12/03/2026 07:00" in cuerpos[-4], cuerpos[-4]
assert cuerpos[-1].startswith("Parte del 12/03/2026") and "Se hizo" not in cuerpos[-1], cuerpos[-1]

# --- one hotel full of names that mean something to databases, spreadsheets, calendars and pages
def orden(*palabras):
    return " ".join('"' + p.replace("\\", "\\\\").replace('"', '\\"') + '"' for p in palabras) + "\n"


def sql(sentencia, *valores):
    return orden("sql", sentencia % tuple("'" + v.replace("'", "''") + "'" for v in valores))


nombres = ["O'Higgins Ñuñoa", 'Ana "Nena" Ruiz', "100% Real", "Su_ana Paz", "Caso [a] Bis", "A;B, C\\D",
           "<b>Neg</b> & Cía", "=1+1 Uno", "x' OR '1'='1"]
dias = ["2027-05-10"] * 5 + ["2027-05-11"] * 4  # the report names six of a list
raros = "abre\n"
for i, (nombre, llegada) in enumerate(zip(nombres, dias)):
    clave, folio = "00000005%02d" % i, "00000006%02d" % i
    raros += sql("INSERT INTO Cliente (Cl_Cve_Cliente, Cl_Razon_Social_1, Es_Cve_Estado) VALUES (%s, %s, 'AC')", clave, nombre)
    raros += sql("INSERT INTO Reservacion (Rs_Folio, Rs_Llegada, Rs_Salida, Rs_Huesped, Rs_Referencia, Es_Cve_Estado) "
                 "VALUES (%s, %s, '2027-05-13', %s, %s, 'AC')", folio, llegada, clave, nombre)
    raros += sql("INSERT INTO Reservacion_Detalle (Rs_Folio, Rsd_Id, Hb_Cve_Habitacion, Rsd_Fecha_Inicio, Rsd_Fecha_Fin, "
                 "Rsd_Adultos) VALUES (%s, 1, %s, %s, '2027-05-13', 1)", folio, "010%d" % (i + 1), llegada)
guion(raros, "2027-05-10T10:00")
buscas = "abre\nhoy\nhuesped\n" + "".join(
    orden("hoy", "busca", n) + "muestra hoy\n" + orden("huesped", "busca", n) + "muestra huesped\n" for n in nombres)
vistos = [r["valor"] for r in guion(buscas, "2027-05-10T10:00") if r["orden"].startswith("muestra")]
for i, nombre in enumerate(nombres):
    assert [f["folio"] for f in vistos[2 * i]["filas"]] == ["00000006%02d" % i], (nombre, vistos[2 * i])
    assert [p["nombre"] for p in vistos[2 * i + 1]["personas"]] == [nombre], (nombre, vistos[2 * i + 1])
# An apostrophe is left out in a hurry.
visto = guion("abre\nhuesped\nhuesped busca ohiggins\nmuestra huesped\n", "2027-05-10T10:00")[-1]["valor"]
assert [p["nombre"] for p in visto["personas"]] == [nombres[0]], visto
# Signs alone are no name; what fits everybody is cut, and says how many there are.
todos = [r["valor"] for r in guion("""abre
hoy
huesped
hoy busca "% _ [a-z]"
muestra hoy
hoy busca 0
muestra hoy
huesped busca ""
muestra huesped
""", "2027-05-10T10:00") if r["orden"].startswith("muestra")]
assert todos[0]["total"] == 0 and todos[1]["total"] > len(todos[1]["filas"]) > 50, todos[1]["total"]
assert todos[2]["total"] == len(todos[2]["personas"]) > 30, todos[2]["total"]
for dia in sorted(set(dias)):
    guion(f"""abre
hoy
hoy busca "2027"
hoy busca "10 al 11 may 2027"
exporta hoy raros.csv
exporta hoy raros_pc.csv puntoycoma
exporta hoy raros.pdf
cuadro 2027-05-09 14
exporta cuadro raros_cuadro.csv
exporta Cliente raros_clientes.csv
agenda todas raros.ics nombres
parte parte{dia}.pdf
parte parte{dia}.txt
""", dia + "T10:00")
for ruta, columna, separador in (("raros.csv", 1, ","), ("raros_pc.csv", 1, ";"), ("raros_cuadro.csv", 6, ","),
                                 ("raros_clientes.csv", 1, ",")):
    vistos = [fila[columna] for fila in hoja(ruta, separador)]
    assert all(("'" if n[0] == "=" else "") + n in vistos for n in nombres), (ruta, vistos)
eventos = icalendar.Calendar.from_ical(open("raros.ics", encoding="utf-8").read()).walk("VEVENT")
for nombre, dia in zip(nombres, dias):
    assert any(nombre + " (" in str(e["SUMMARY"]) for e in eventos), nombre
    assert nombre in open(f"parte{dia}.txt", encoding="utf-8").read(), nombre
    assert nombre in texto_pdf("raros.pdf") and nombre in texto_pdf(f"parte{dia}.pdf"), nombre
