#!/usr/bin/env python3
"""The screens on PostgreSQL with a network between, and many clerks at once.

    bench/red.py --binarios build/dev/bin [--ms 1] [--veces 40] [--empleados 8] [--segundos 15] [--durable]

Board of 300 rooms and 30 nights: round trips, and its time against the same statements by libpq alone, by turns. Save
of three lines: round trips from the begin to the commit. Saves a second of one clerk and of several, with the network
and without, by turns.
"""
import argparse
import collections
import pathlib
import statistics
import tempfile
import threading

from banco import Pedidos, Servidor, hotel
from retardo import Retardo


def tablero(binarios, direccion, red, veces):
    p = Pedidos(binarios, direccion)
    p.di("tablero")
    viajes = red.viajes
    p.di("tablero")
    viajes = red.viajes - viajes
    tiempos = [(p.di("tablero")[0], p.di("libpq")[0]) for _ in range(veces)]
    p.cierra()
    pantalla, libpq = (statistics.median(t) for t in zip(*tiempos))
    print(f"board: {viajes} round trips, {1e3 * pantalla:.2f} ms; by libpq alone {1e3 * libpq:.2f} ms; "
          f"ratio {pantalla / libpq:.2f}", flush=True)


def guardado(binarios, direccion, red, veces):
    p = Pedidos(binarios, direccion)
    for _ in range(2):
        p.di("guarda")
    viajes = red.viajes
    tiempos = [p.di("guarda") for _ in range(veces)]
    viajes = (red.viajes - viajes) / veces
    p.cierra()
    captura, aceptar = (statistics.median(t) for t in zip(*tiempos))
    print(f"save of three lines: {red.transaccion} round trips from the begin to the commit, {viajes:.0f} with the "
          f"capture and all that follows; capture {1e3 * captura:.1f} ms, accept to commit {1e3 * aceptar:.1f} ms",
          flush=True)


class Esperas(threading.Thread):
    """What the clerks' connections do, looked at twice a second."""

    CONSULTA = """SELECT CASE WHEN wait_event_type = 'Lock' THEN 'another clerk''s ' || wait_event || ' lock'
                              WHEN state LIKE 'idle%' THEN 'the clerk or the network' ELSE 'the server at work' END, count(*)
                  FROM pg_stat_activity WHERE datname = 'red' AND pid <> pg_backend_pid() GROUP BY 1"""

    def __init__(self, servidor):
        super().__init__(daemon=True)
        self.servidor, self.fin, self.cuentas = servidor, threading.Event(), collections.Counter()

    def run(self):
        while not self.fin.wait(0.5):
            for fila in self.servidor.sql("red", self.CONSULTA).splitlines():
                que, veces = fila.split("|")
                self.cuentas[que] += int(veces)

    def texto(self):
        self.fin.set()
        self.join()
        todas = self.cuentas.total()
        return ", ".join(f"{100 * n / todas:.0f} % {que}" for que, n in self.cuentas.most_common())


def caudal(binarios, direccion, servidor, empleados, segundos):
    """Saves a second of one clerk alone and of all, three turns each, the middle one; and what the clerks waited for."""
    todos = [Pedidos(binarios, direccion, e) for e in range(empleados)]
    for p in todos:
        p.di("guarda")

    def juntos(quienes):
        for p in quienes:
            p.pide(f"guardas {segundos}")
        return sum(p.oye()[0] for p in quienes) / segundos

    uno, varios, esperas = [], [], []
    for _ in range(3):
        uno.append(juntos(todos[:1]))
        mira = Esperas(servidor)
        mira.start()
        varios.append(juntos(todos))
        esperas.append(mira.texto())
    for p in todos:
        p.cierra()
    return statistics.median(uno), statistics.median(varios), esperas[-1]


def main():
    p = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    p.add_argument("--binarios", type=pathlib.Path, required=True)
    p.add_argument("--ms", type=float, default=1.0)
    p.add_argument("--veces", type=int, default=40)
    p.add_argument("--empleados", type=int, default=8)
    p.add_argument("--segundos", type=int, default=15)
    p.add_argument("--dias", type=int, default=365)
    p.add_argument("--durable", action="store_true")
    o = p.parse_args()
    with tempfile.TemporaryDirectory() as carpeta, Servidor(o.durable) as servidor:
        archivo, lineas = hotel(o.binarios, o.dias, carpeta)
        cerca = servidor.copia(o.binarios, archivo, "red")
        red = Retardo(servidor.socket, o.ms)
        lejos = f"postgresql://hotel@127.0.0.1:{red.puerto}/red"
        print(f"{lineas} room lines, {o.ms} ms a round trip", flush=True)
        tablero(o.binarios, lejos, red, o.veces)
        guardado(o.binarios, lejos, red, o.veces)
        for nombre, direccion in (("beside the server", cerca), (f"{o.ms} ms away", lejos)):
            uno, varios, esperas = caudal(o.binarios, direccion, servidor, o.empleados, o.segundos)
            print(f"saves a second, {nombre}: {uno:.1f} by one clerk, {varios:.1f} by {o.empleados}; "
                  f"{varios / uno:.2f} times. Their connections wait for: {esperas}", flush=True)


main()
