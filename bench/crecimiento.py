#!/usr/bin/env python3
"""What the screens take on hotels of growing history, on both engines.

    bench/crecimiento.py --binarios build/dev/bin --carpeta FOLDER [--dias 25 1900 19400] [--veces 30]
                         [--grafica docs/imagenes/crecimiento.svg]

The hotels have 300 rooms and as many guests a night; only how far back they go differs, so that the nights asked for
hold alike. Their files are made in FOLDER when they are missing. All are open at once and measured by turns: the board
of 30 nights, loading a reservation of three lines, saving one (from the accept to the commit). Prints a table of the lower
deciles, since whatever else the machine does makes turns slower, and draws it.
"""
import argparse
import math
import pathlib
import statistics
import time

from banco import Pedidos, Servidor, hotel

QUE = {"tablero": "Board, 300 rooms, 30 nights", "carga": "Load of three lines", "guarda": "Save of three lines"}
COLORES = {"SQLite": "#2a78b8", "PostgreSQL": "#c8641e"}


def reposa(proceso):
    """Until what a start does behind the clerk's back, as the check of a large file, is done."""
    def gastado():
        campos = pathlib.Path(f"/proc/{proceso.pid}/stat").read_text(encoding="ascii").rpartition(")")[2].split()
        return int(campos[11]) + int(campos[12])
    antes = -100
    while (ahora := gastado()) > antes + 5:
        antes = ahora
        time.sleep(1)


def mide(todos, veces):
    """todos: (engine, lines) -> clerk. Lower deciles in milliseconds by operation, engine, lines."""
    tiempos = {(que, *cual): [] for que in QUE for cual in todos}
    for vez in range(veces + 2):
        for cual, p in todos.items():
            for que in QUE:
                t = p.di(que)[-1]
                if vez >= 2:  # the first ones prepare statements
                    tiempos[que, *cual].append(1e3 * t)
    return {cual: statistics.quantiles(t, n=10, method="inclusive")[0] for cual, t in tiempos.items()}


def tabla(deciles, lineas):
    print("| what | engine | " + " | ".join(f"{n:,} lines" for n in lineas) + " | largest / smallest |")
    print("|---|---|" + "---:|" * (len(lineas) + 1))
    for que, nombre in QUE.items():
        for motor in COLORES:
            fila = [deciles[que, motor, n] for n in lineas]
            print(f"| {nombre} | {motor} | " + " | ".join(f"{t:.2f} ms" for t in fila) +
                  f" | {fila[-1] / fila[0]:.2f} |", flush=True)


def redondo(n):
    """The next of 1, 2, 5 and their tens."""
    base = 10 ** math.floor(math.log10(n))
    return next(base * m for m in (1, 2, 5, 10) if base * m >= n)


def grafica(deciles, lineas):
    ancho, alto, margen = 300, 220, 48
    partes = []
    izquierda, derecha = math.log10(lineas[0]) - 0.2, math.log10(lineas[-1]) + 0.2
    for i, (que, nombre) in enumerate(QUE.items()):
        x0 = margen + i * (ancho + margen)
        tope = redondo(max(deciles[que, m, n] for m in COLORES for n in lineas))

        def punto(n, t, x0=x0, tope=tope):
            return (x0 + ancho * (math.log10(n) - izquierda) / (derecha - izquierda), 30 + alto - alto * t / tope)

        partes.append(f'<text x="{x0}" y="18" class="titulo">{nombre}</text>')
        for k in range(5):
            y = 30 + alto * k / 4
            partes.append(f'<path class="linea" d="M{x0} {y}h{ancho}"/>'
                          f'<text x="{x0 - 6}" y="{y + 4}" text-anchor="end">{tope * (4 - k) / 4:g}</text>')
        for n in lineas:
            partes.append(f'<text x="{punto(n, 0)[0]:.0f}" y="{48 + alto}" text-anchor="middle">{n:,}</text>')
        for motor, color in COLORES.items():
            puntos = [punto(n, deciles[que, motor, n]) for n in lineas]
            partes.append(f'<polyline fill="none" stroke="{color}" stroke-width="2" points="' +
                          " ".join(f"{x:.1f},{y:.1f}" for x, y in puntos) + '"/>')
            partes += [f'<circle cx="{x:.1f}" cy="{y:.1f}" r="4" fill="{color}"/>' for x, y in puntos]
    for k, (motor, color) in enumerate(COLORES.items()):
        x = margen + 120 * k
        partes.append(f'<circle cx="{x}" cy="{74 + alto}" r="4" fill="{color}"/>'
                      f'<text x="{x + 10}" y="{78 + alto}">{motor}</text>')
    total = margen + 3 * (ancho + margen)
    partes.append(f'<text x="{total - margen}" y="{78 + alto}" text-anchor="end">'
                  'milliseconds, lower decile, by room lines in the database</text>')
    return (f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {total} {alto + 92}" font-family="sans-serif" '
            'font-size="12" fill="#333">\n<style>.titulo{font-weight:bold;font-size:14px}'
            '.linea{stroke:#ccc}</style>\n<rect width="100%" height="100%" fill="#fff"/>\n' + "\n".join(partes) +
            "\n</svg>\n")


def main():
    p = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    p.add_argument("--binarios", type=pathlib.Path, required=True)
    p.add_argument("--carpeta", type=pathlib.Path, required=True)
    p.add_argument("--dias", type=int, nargs="+", default=[25, 1900, 19400])
    p.add_argument("--veces", type=int, default=30)
    p.add_argument("--grafica", type=pathlib.Path)
    o = p.parse_args()
    o.carpeta.mkdir(parents=True, exist_ok=True)
    hoteles = [hotel(o.binarios, dias, o.carpeta) for dias in o.dias]
    lineas = [n for _, n in hoteles]
    with Servidor() as servidor:
        direcciones = {n: servidor.copia(o.binarios, archivo, f"n{n}") for archivo, n in hoteles}
        todos = {("SQLite", n): Pedidos(o.binarios, archivo) for archivo, n in hoteles}
        todos |= {("PostgreSQL", n): Pedidos(o.binarios, direcciones[n]) for n in lineas}
        for p in todos.values():
            p.di("tablero")
            reposa(p.proceso)
        deciles = mide(todos, o.veces)
        for p in todos.values():
            p.cierra()
    tabla(deciles, lineas)
    if o.grafica:
        o.grafica.write_text(grafica(deciles, lineas), encoding="utf-8")


if __name__ == "__main__":
    main()
