#!/usr/bin/env python3
"""Many clerks as processes over a hotel that is too small, some killed in mid-save; then what is stored is compared
with what each of them was told.

    tests/estres/estres.py --binarios build/dev [--motor sqlite|postgres] [--empleados 8] [--operaciones 500]
                           [--guardadas 0] [--muertes 0] [--apagones 0] [--roles] [--semilla N] [--carpeta FOLDER]

--guardadas: goes on until that many reservations are stored, whatever --operaciones says. --muertes: how many clerks
are killed (kill -9), --apagones: how often the database server is (PostgreSQL alone, which runs in FOLDER, whose name
ends in "-PORT"). --roles: each clerk logs in with a password, at the server too, by a role that neither sees cards nor
administers. The seed decides what each clerk does, not how their processes meet. Ends with 0 when nothing was lost,
doubled, half-made or told wrong, and with 1 and the list of faults when something was.

The nights asked for move on with what is stored, so that the hotel stays as full however long the run is. Where a kill
met a clerk is read in the clerk's log: the last statement that it had written by then.

Each save adds a mark to the reservation's notes, "CLERK-NUMBER:ROOMS", and sets the first room's infants to the number
of marks but one. So notes, lines and change log must tell one story: each save that a clerk was told of is there once,
each refused one is not, one cut short is there whole or not at all.
"""
import argparse
import collections
import csv
import datetime
import io
import itertools
import json
import os
import pathlib
import random
import re
import shutil
import sqlite3
import subprocess
import sys
import tempfile
import threading
import time

SERVIDOR = pathlib.Path(__file__).resolve().parent.parent / "postgres" / "servidor"
HABITACIONES = ["0101", "0102", "0103", "0104", "0201", "0202"]
# Nights that are asked for at a time, and how many stored reservations move them on by one: more than fit into it.
NOCHES, POR_NOCHE = 24, 3
PRIMERA = datetime.date(2026, 4, 1)
CLAVE = "una frase larga"
LLEVA = {"confirmar": "CONFIRMADO", "eliminar": "Baja", "reactivar": "Reactivación"}
PASOS = {("AC", "CONFIRMADO"): "CO", ("AC", "Baja"): "CA", ("CO", "Baja"): "CA", ("CA", "Reactivación"): "AC"}
# What a clerk may be told, and nothing else.
PREGUNTAS = r"¿Desea enviar emai|¿Está seguro de eliminar"
# With a server that goes away; the last of them when it did not answer for what a field asked it.
PERDIDAS = (r"(Valida_Disponibilidad\(\) - )?(Se perdió la conexión|La conexión con el servidor|No se pudo conectar|"
            r"El servidor de la base de datos está arr|La base de datos está ocupada)|La imagen de la reservación no se pudo leer|"
            r"Debe especificar un")
ESPERADOS = [
    PREGUNTAS,
    r"la habitación '.*'\s+(está reservado para|se encuentra ocupada en) la fecha",
    r"La habitación \w+ ya está reservada la noche del \S+ por la reservación \d+$",
    r"La reservación \d+ cambió después de que usted la abrió.*está .*no se puede",
    r"La reservación \d+ cambió después de que usted la abrió.*Si vuelve a",
    r"La reservación especificada no existe",
    r"Otro programa guardó al mismo tiempo",
]
# A line of the log that tells a statement: time of the day, seconds, and what it did.
ESCRITA = r"(?m)^\S+ \d+:(\d+:\d+\.\d+) \[\d+\] [\d.]+ ms[^:]*: ((?:INSERT INTO|UPDATE|DELETE FROM) \w+|BEGIN|COMMIT|ROLLBACK)"
NO_SE_SABE = r"no se sabe si|puede haber quedado"
# Behind the commit: what a box says below its text.
YA_QUEDO = r"La reservación (\d+) ya quedó (guardada|confirmada|cancelada|reactivada)"


class Muerto(Exception):
    """The clerk's process is gone."""


class Perdida(Exception):
    """The server is gone, or back without what was under way: the clerk begins anew."""


class Empleado(threading.Thread):
    def __init__(self, nombre, prueba):
        super().__init__(name=nombre)
        self.prueba, self.azar = prueba, random.Random(f"{prueba.semilla}/{nombre}")
        self.proceso, self.cuenta, self.matado, self.falla = None, 0, False, None
        # mark or (folio, log text) -> what the clerk knows of it
        self.marcas, self.estados, self.dicho = {}, collections.Counter(), []
        self.respuestas = {}
        # number of the mark -> folio that a failure behind the commit told
        self.folios, self.tras_guardar = {}, 0
        self.mensajes, self.hechas = collections.Counter(), collections.Counter()
        self.procesos, self.desde, self.decide_ya = 0, 0, False

    # --- the process

    def abre(self):
        while True:
            self.matado = False
            self.procesos += 1
            self.diario = self.prueba.carpeta / f"{self.name}-{self.procesos}.log"
            self.proceso = subprocess.Popen([*self.prueba.programa(self.name), "--registro", self.diario], text=True,
                                            stdin=subprocess.PIPE, stdout=subprocess.PIPE, stderr=self.prueba.errores)
            try:
                if self.di("abre")["ok"]:
                    return
            except (Muerto, Perdida):
                if not self.prueba.apagones:
                    raise
            self.proceso.kill()
            self.proceso.wait()
            time.sleep(0.2)

    def escribe(self, orden):
        try:
            self.proceso.stdin.write(orden + "\n")
            self.proceso.stdin.flush()
        except BrokenPipeError as e:
            raise Muerto(orden) from e

    def oye(self):
        linea = self.proceso.stdout.readline()
        if not linea.endswith("\n"):
            self.proceso.wait()
            raise Muerto(self.name)
        respuesta = json.loads(linea)
        for m in respuesta["mensajes"]:
            self.mensajes[m["texto"]] += 1
        return respuesta

    def di(self, *ordenes):
        for orden in ordenes:
            self.escribe(orden)
            respuesta = self.oye()
            if any(re.match(PERDIDAS, m["texto"]) for m in respuesta["mensajes"]):
                raise Perdida(orden)
        return respuesta

    def valor(self, control):
        return self.di(f"muestra {control}").get("valor")

    # The statements that the order under way has written by now, with their times.
    def escritas(self):
        with open(self.diario, encoding="utf-8") as diario:
            diario.seek(self.desde if self.desde <= os.stat(self.diario).st_size else 0)
            return re.findall(ESCRITA, diario.read())

    def fase(self):
        hechas = [hecho for _, hecho in self.escritas()]
        if "COMMIT" in hechas or "ROLLBACK" in hechas:
            return f"after its transaction, behind {hechas[-1]}"
        return f"in its transaction, behind {hechas[-1]}" if hechas else "before its transaction"

    # Half of the kills come anywhere in the order, half anywhere in its transaction.
    def mata(self):
        if self.azar.random() < 0.5:
            time.sleep(self.azar.random() * self.prueba.demora)
        else:
            limite = time.monotonic() + 2 * self.prueba.demora
            while not self.escritas() and time.monotonic() < limite:
                time.sleep(0.0005)
            time.sleep(self.azar.random() * self.prueba.dentro)
        self.proceso.kill()
        self.matado = True

    # The order that writes, with a kill in it when one is due: True stored, False refused, None nobody knows.
    def decide(self, orden):
        self.desde = os.stat(self.diario).st_size
        self.decide_ya = True
        try:
            if self.prueba.toca_matar(self.azar):
                self.escribe(orden)
                self.mata()
                try:
                    respuesta = self.oye()
                except Muerto:
                    return None
                finally:
                    self.proceso.wait()
                    self.prueba.muertos[self.fase()] += 1
            else:
                inicio = time.monotonic()
                self.escribe(orden)
                respuesta = self.oye()
                self.prueba.mide(time.monotonic() - inicio, self.escritas())
        finally:
            self.decide_ya = False
        if not respuesta["ok"]:
            return False
        textos = [f"{m['id']} {m['texto']} {m.get('detalle', '')}" for m in respuesta["mensajes"]
                  if not re.match(PREGUNTAS, m["texto"])]
        self.dicho = textos
        if any(re.search(NO_SE_SABE, t) for t in textos):
            return None
        if quedo := re.search(YA_QUEDO, " ".join(textos)):
            if "No se guardó nada" in " ".join(textos):
                raise AssertionError(textos)
            self.tras_guardar += 1
            self.folios[self.cuenta] = quedo[1]
        return not textos or quedo is not None

    # --- what a clerk does

    def marca(self, renglones):
        self.cuenta += 1
        return f"{self.name}-{self.cuenta}:{renglones}"

    def guarda(self, clase, marca):
        self.marcas[marca] = None  # until told otherwise
        self.marcas[marca] = self.decide("accion aceptar")
        self.respuestas[marca] = self.dicho
        self.hechas[clase, self.marcas[marca]] += 1
        return self.marcas[marca]

    def noche(self):
        llega = PRIMERA + datetime.timedelta(self.prueba.creadas // POR_NOCHE + self.azar.randrange(NOCHES))
        return llega, llega + datetime.timedelta(1 + self.azar.randrange(3))

    def nueva(self):
        llega, sale = self.noche()
        cuartos = self.azar.sample(HABITACIONES, self.azar.choice([1, 1, 2, 3]))
        marca = self.marca(len(cuartos))
        self.di("accion nuevo", "campo txtHuesped 3", "campo txtForma_Pago 1", f"fecha dpFecha_llegada {llega}",
                f"fecha dpFecha_salida {sale}", f"texto txtNotas {marca}")
        for fila, cuarto in enumerate(cuartos):
            self.di(f"celda nueva Clave {cuarto}", f"celda {fila} Adultos 1")
        if len(self.valor("renglones") or ()) == len(cuartos):
            self.prueba.cuenta(self.guarda("nueva", marca))

    # Loads one of the last reservations, which the others are at too; its folio, None when it is not there.
    def carga(self):
        folio = self.prueba.folio(self.azar)
        self.di(f"campo txtFolio {folio}")
        return folio if self.valor("Controles")["ClaveActual"] == folio else None

    def edita(self):
        if self.carga() is None or not self.di("accion editar")["ok"]:
            return
        notas, renglones = self.valor("txtNotas")["text"], self.valor("renglones")
        cuantos = len(renglones)
        azar = self.azar.random()
        if azar < 0.2 and cuantos > 1:
            self.di("responde ERR-ID:7500054 6", f"borra {cuantos - 1}")
        elif azar < 0.4:
            libres = [h for h in HABITACIONES if h not in {r["Clave"] for r in renglones}]
            if libres:
                self.di(f"celda nueva Clave {self.azar.choice(libres)}", f"celda {cuantos} Adultos 1")
        cuantos = len(self.valor("renglones"))
        marca = self.marca(cuantos)
        self.di(f"celda 0 Infantes {len(notas.split())}", f'texto txtNotas "{notas} {marca}"')
        self.guarda("edición", marca)

    def cambia(self):
        folio, accion = self.carga(), self.azar.choice(["confirmar", "eliminar", "eliminar", "reactivar"])
        if folio is None:
            return
        permiso = {"confirmar": "PermiteAccion5", "eliminar": "PermiteAccion4", "reactivar": "PermiteReactivar"}
        controles = self.valor("Controles")
        if not controles[permiso[accion]] or (accion == "confirmar" and controles["TituloConfirmar"] != "Confirmar"):
            return
        self.cuenta += 1
        resultado = self.decide(f"accion {accion}")
        self.estados[folio, LLEVA[accion], resultado] += 1
        self.hechas[accion, resultado] += 1

    def run(self):
        try:
            self.abre()
            while self.prueba.sigue():
                try:
                    self.azar.choices([self.nueva, self.edita, self.cambia], [5, 3, 3])[0]()
                    self.di("accion limpiar")
                except Perdida:
                    self.prueba.no_cuenta()
                    time.sleep(0.5)
                except Muerto:
                    if not self.matado:
                        raise
                if self.matado:
                    self.diario.unlink()
                    self.abre()
            self.proceso.stdin.close()
            self.proceso.wait()
        except Exception as e:  # a thread that ends in silence would pass for one that found nothing
            self.falla = f"{self.name}: {e!r}"


class Prueba:
    def __init__(self, opciones):
        self.opciones, self.semilla = opciones, opciones.semilla
        self.apagones, self.mata = opciones.apagones, opciones.muertes
        self.enServidor = opciones.motor == "postgres"
        self.carpeta = opciones.carpeta
        self.base = str(self.carpeta / "hotel.db")
        if self.enServidor:
            puerto = str(self.carpeta).rpartition("-")[2]
            self.base = f"postgresql://hotel@/estres?port={puerto}&host={self.carpeta}"
        self.operaciones, self.cerrojo = 0, threading.Lock()
        # Seconds that an order takes that writes, and its transaction.
        self.demora, self.dentro = 0.02, 0.005
        # Last statement -> kills behind it.
        self.muertos, self.apagados = collections.Counter(), collections.Counter()
        self.errores, self.conContrasena = None, False

    def programa(self, empleado):
        base = self.base.replace("hotel@", empleado.lower() + "@") if self.conContrasena else self.base
        return [self.opciones.binarios / "reservas-guion", "--conexion" if self.enServidor else "--base", base,
                "--usuario", empleado, "--ahora", "2026-03-09T10:00"]

    def reservas_base(self, orden, *resto):
        return subprocess.run([self.opciones.binarios / "reservas-base", orden, self.base, *resto], text=True,
                              capture_output=True)

    def servidor(self, orden):
        subprocess.run([SERVIDOR, orden, self.carpeta], check=True)

    # Rows past the system under test.
    def filas(self, sql):
        if self.enServidor:
            texto = subprocess.run(["psql", "-X", "--csv", "-t", "-c", sql, self.base], check=True, text=True,
                                   capture_output=True).stdout
            return list(csv.reader(io.StringIO(texto)))
        with sqlite3.connect(self.base) as c:
            for nombre in ("ESPANOL", "FECHA"):
                c.create_collation(nombre, lambda a, b: (a.rstrip() > b.rstrip()) - (a.rstrip() < b.rstrip()))
            return [["" if v is None else str(v) for v in fila] for fila in c.execute(sql)]

    # --- what the clerks share

    # How much of the run is done, 0 to 1.
    def avance(self):
        if self.opciones.guardadas:
            return self.creadas / self.opciones.guardadas
        return self.operaciones / self.opciones.operaciones

    def sigue(self):
        with self.cerrojo:
            self.operaciones += 1
            return self.avance() <= 1

    # What came to nothing because the server was away, so that work goes on between two of its ends.
    def no_cuenta(self):
        with self.cerrojo:
            self.operaciones -= 1

    # Kills are spread over the run.
    def toca_matar(self, azar):
        with self.cerrojo:
            hechas = self.opciones.muertes - self.mata
            toca = self.mata > 0 and hechas + azar.random() < self.opciones.muertes * self.avance()
            self.mata -= toca
            return toca

    # A little more than what a write takes by now, so that kills meet it anywhere.
    def mide(self, demora, escritas):
        self.demora = 0.9 * self.demora + 0.12 * demora
        if len(escritas) > 1:
            desde, hasta = (60 * float(hora[:2]) + float(hora[3:]) for hora, _ in (escritas[0], escritas[-1]))
            self.dentro = 0.9 * self.dentro + 0.12 * ((hasta - desde) % 3600)

    # After each try to store a new one. Nobody knows of one that was cut short: it is looked for.
    def cuenta(self, quedo):
        if quedo is None:
            try:
                ultimo = self.filas("SELECT MAX(Rs_Folio) FROM Reservacion")[0][0]
            except subprocess.CalledProcessError:  # the server is away
                return
        with self.cerrojo:
            self.creadas = int(ultimo) - self.primero + 1 if quedo is None else self.creadas + quedo

    def folio(self, azar):
        return f"{self.primero + max(0, self.creadas - 1 - azar.randrange(10)):010}"

    # --- the run

    def prepara(self):
        if self.enServidor:
            self.servidor("arranca")
            subprocess.run(["psql", "-X", "-q", "-c", "CREATE DATABASE estres",
                            self.base.replace("/estres?", "/postgres?")], check=True)
        hecho = self.reservas_base("demo")
        if hecho.returncode != 0:
            sys.exit(hecho.stderr)
        # The marks' count stands in a line's infants.
        subprocess.run(self.programa("PREPARA"), check=True, text=True, stdout=subprocess.DEVNULL,
                       input="sql UPDATE Tipo_Habitacion SET Th_Num_Personas_Maximo = 9999\n")
        self.primero = 1 + int(self.filas("SELECT MAX(Rs_Folio) FROM Reservacion")[0][0])
        self.creadas = 0
        if self.opciones.roles:
            self.hace_usuarios()

    # Who is made by hand administers: the clerks, who are made before their boss, lose that again.
    def hace_usuarios(self):
        clave = self.carpeta / "clave"
        clave.write_text(CLAVE)
        clave.chmod(0o600)
        empleados = [f"E{1 + n}" for n in range(self.opciones.empleados)]
        for nombre in [*empleados, "JEFE"]:
            if nombre == "JEFE":
                self.filas(f"DELETE FROM Permiso WHERE Pe_Usuario = ANY ('{{{','.join(empleados)}}}'); "
                           "INSERT INTO Permiso (Pe_Usuario, Pe_Pantalla, Pe_Opcion) VALUES ('JEFE', 'KV207', 'CHTARJ')")
            hecho = self.reservas_base("usuario", nombre, "--contrasena-de", clave, "--servidor")
            if hecho.returncode != 0:
                sys.exit(hecho.stderr)
        self.conContrasena = True
        os.environ["PGPASSWORD"] = os.environ["RESERVAS_CONTRASENA"] = CLAVE
        que = self.filas("SELECT bool_or(has_table_privilege(r.oid, 'Cliente', 'SELECT') OR "
                         "has_table_privilege(r.oid, 'Parametro', 'UPDATE')) FROM pg_roles r WHERE rolname LIKE 'e_'")
        if que != [["f"]]:
            sys.exit("a clerk's role sees cards or administers")

    def corre(self):
        with open(self.carpeta / "errores", "w", encoding="utf-8") as self.errores:
            empleados = [Empleado(f"E{1 + n}", self) for n in range(self.opciones.empleados)]
            for e in empleados:
                e.start()
            apagados = 0
            while any(e.is_alive() for e in empleados):
                time.sleep(0.01)
                if apagados < self.apagones and self.avance() * (self.apagones + 1) > apagados + 1:
                    self.servidor("mata")
                    self.apagados.update(e.fase() for e in empleados if e.decide_ya)
                    self.servidor("sigue")
                    apagados += 1
            for e in empleados:
                e.join()
        return empleados

    def revisa(self, empleados):
        fallas = [e.falla for e in empleados if e.falla]
        self.oidos = collections.Counter()
        for texto, veces in sum((e.mensajes for e in empleados), collections.Counter()).items():
            clase = next((c for c in ESPERADOS + [PERDIDAS] * bool(self.apagones) if re.match(c, texto, re.S)), None)
            self.oidos[clase] += veces
            if clase is None:
                fallas.append(f"{veces} times a clerk was told: {texto}")

        reservas = {f: (estado, notas.split()) for f, estado, notas in self.filas(
            f"SELECT Rs_Folio, Es_Cve_Estado, Rs_Notas FROM Reservacion WHERE Rs_Folio >= '{self.primero:010}'")}
        renglones = collections.defaultdict(list)
        for folio, *renglon in self.filas("SELECT Rs_Folio, Hb_Cve_Habitacion, Rsd_Infantes, Rsd_Fecha_Inicio, "
                                          "Rsd_Fecha_Fin FROM Reservacion_Detalle ORDER BY Rs_Folio, Rsd_Id"):
            renglones[folio].append(renglon)

        # No night of a room twice, by a statement of its own.
        dobles = self.filas("""
            SELECT a.Hb_Cve_Habitacion, a.Rs_Folio, b.Rs_Folio FROM Reservacion_Detalle a
              INNER JOIN Reservacion_Detalle b ON a.Hb_Cve_Habitacion = b.Hb_Cve_Habitacion
                AND a.Rsd_Fecha_Inicio < b.Rsd_Fecha_Fin AND b.Rsd_Fecha_Inicio < a.Rsd_Fecha_Fin
                AND (a.Rs_Folio < b.Rs_Folio OR (a.Rs_Folio = b.Rs_Folio AND a.Rsd_Id < b.Rsd_Id))
              INNER JOIN Reservacion x ON x.Rs_Folio = a.Rs_Folio AND x.Es_Cve_Estado NOT IN ('CA', 'CE')
              INNER JOIN Reservacion y ON y.Rs_Folio = b.Rs_Folio AND y.Es_Cve_Estado NOT IN ('CA', 'CE')""")
        fallas += [f"room {h} sold twice: {a} and {b}" for h, a, b in dobles]
        repetidos = self.filas("SELECT Rs_Folio FROM Reservacion GROUP BY Rs_Folio HAVING COUNT(*) > 1")
        fallas += [f"folio twice: {f}" for f, in repetidos]
        fallas += [f"lines without a header: {f}" for f in renglones
                   if f >= f"{self.primero:010}" and f not in reservas]

        # Whole: notes and lines of one save.
        for folio, (_, marcas) in reservas.items():
            suyos = renglones[folio]
            if not marcas or len(suyos) != int(marcas[-1].partition(":")[2]) or int(suyos[0][1]) != len(marcas) - 1:
                fallas.append(f"{folio} is not whole: {marcas}, {suyos}")

        # What each clerk was told is what is stored.
        donde = collections.Counter(itertools.chain.from_iterable(m for _, m in reservas.values()))
        for e in empleados:
            for marca, resultado in e.marcas.items():
                if resultado is not None and donde[marca] != resultado or donde[marca] > 1:
                    fallas.append(f"{marca}: told {resultado}, stored {donde[marca]} times: {e.respuestas[marca]}")
                folio = e.folios.get(int(re.search(r"-(\d+):", marca)[1]))
                if folio and marca not in reservas.get(folio, ("", []))[1]:
                    fallas.append(f"{marca}: told that it is stored as {folio}, and is not there")
        fallas += [f"nobody's: {m}" for m in donde.keys() - {m for e in empleados for m in e.marcas}]
        fallas += self.revisa_bitacora(empleados, reservas)

        danos = self.reservas_base("revisa")
        if danos.returncode != 0:
            fallas.append(f"reservas-base revisa: {danos.stdout}{danos.stderr}")
        if not self.enServidor and self.filas("PRAGMA quick_check") != [["ok"]]:
            fallas.append("quick_check finds damage")
        self.reservas = reservas
        return fallas

    # Each change stands in the change log once, in an order that leads from the first state to the last.
    def revisa_bitacora(self, empleados, reservas):
        fallas, escritos = [], collections.defaultdict(collections.Counter)
        estado = dict.fromkeys(reservas, "AC")
        infantes = collections.Counter()
        for folio, texto, usuario in self.filas(
                f"SELECT Bt_Clave, Bt_Texto, Bt_Usuario FROM Bitacora WHERE Bt_Clave >= '{self.primero:010}' "
                "AND Bt_Modulo = 'RESERVACION' ORDER BY Bt_Id"):
            escritos[usuario][folio, texto] += 1
            if texto in LLEVA.values():
                anterior = estado.get(folio)
                estado[folio] = PASOS.get((anterior, texto), f"{texto} of one that is {anterior}")
            elif cambio := re.search(r"- INFANTES: (\d+) -> (\d+)", texto):
                if [int(n) for n in cambio.groups()] != [infantes[folio], infantes[folio] + 1]:
                    fallas.append(f"{folio}: change log goes from {infantes[folio]} infants on by «{cambio[0]}»")
                infantes[folio] = int(cambio[2])
        for folio, (final, marcas) in reservas.items():
            if estado[folio] != final:
                fallas.append(f"{folio} is {final}, by the change log {estado[folio]}")
            if infantes[folio] != len(marcas) - 1:
                fallas.append(f"{folio}: {len(marcas) - 1} edits, {infantes[folio]} in the change log")
        for e in empleados:
            for folio, texto in {(f, t) for f, t, _ in e.estados}:
                sabe, duda = e.estados[folio, texto, True], e.estados[folio, texto, None]
                if not sabe <= escritos[e.name][folio, texto] <= sabe + duda:
                    fallas.append(f"{e.name}, {folio}: {texto} told {sabe} times, {duda} cut short, "
                                  f"{escritos[e.name][folio, texto]} in the change log")
        return fallas


def main():
    p = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    p.add_argument("--binarios", type=pathlib.Path, required=True)
    p.add_argument("--motor", choices=["sqlite", "postgres"], default="sqlite")
    for nombre, valor in (("empleados", 8), ("operaciones", 500), ("guardadas", 0), ("muertes", 0), ("apagones", 0),
                          ("semilla", int(time.time()))):
        p.add_argument(f"--{nombre}", type=int, default=valor)
    p.add_argument("--roles", action="store_true")
    p.add_argument("--carpeta", type=pathlib.Path)
    opciones = p.parse_args()
    if (opciones.apagones or opciones.roles) and opciones.motor == "sqlite":
        p.error("--apagones, --roles: only a server goes down and has roles")
    if opciones.carpeta is None:
        opciones.carpeta = pathlib.Path(tempfile.gettempdir()) / f"kv207-estres-{8000 + os.getpid() % 12000}"
    shutil.rmtree(opciones.carpeta, ignore_errors=True)
    if opciones.motor == "sqlite":
        opciones.carpeta.mkdir()
    os.environ["XDG_STATE_HOME"] = str(opciones.carpeta)
    print(f"semilla {opciones.semilla}", flush=True)

    prueba = Prueba(opciones)
    inicio = time.monotonic()
    try:
        prueba.prepara()
        empleados = prueba.corre()
        tiempo = time.monotonic() - inicio
        fallas = prueba.revisa(empleados)
    finally:
        if opciones.motor == "postgres":
            prueba.servidor("detiene")

    hechas = sum((e.hechas for e in empleados), collections.Counter())
    for clase in sorted({c for c, _ in hechas}):
        print(f"{clase}: {hechas[clase, True]} stored, {hechas[clase, False]} refused, {hechas[clase, None]} cut short")
    for clase, veces in prueba.oidos.most_common():
        print(f"{veces:6} messages like {clase}")
    for cual, donde in (("killed", prueba.muertos), ("writing when the server was", prueba.apagados)):
        for fase, veces in donde.most_common():
            print(f"{veces:6} clerks {cual} {fase}")
    print(f"{sum(e.tras_guardar for e in empleados)} failures behind a commit")
    print(f"{len(prueba.reservas)} reservations in {prueba.operaciones} operations, {opciones.muertes - prueba.mata} clerks killed, "
          f"{opciones.apagones} times the server, {tiempo:.1f} s, {len(fallas)} faults")
    print("\n".join(fallas))
    if not fallas:
        shutil.rmtree(opciones.carpeta, ignore_errors=True)
    sys.exit(1 if fallas else 0)


main()
