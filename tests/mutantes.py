#!/usr/bin/env python3
"""Breaks source files one line at a time and lists the breaks that no test notices.

    tests/mutantes.py [options] FILE[:FIRST[-LAST]]...

The tree's sources are copied to build/mutantes/fuente and broken there; the working tree stays as it is. Each break is
built without optimisation, then the tests run, each test program whole, the quick ones first, until one fails or takes
far longer than without the break. What is known is kept in build/mutantes/resultados.tsv: an interrupted run goes on,
and a later one tries only lines that changed and breaks that nobody had noticed.
"""
import argparse
import concurrent.futures
import hashlib
import json
import os
import pathlib
import re
import shutil
import signal
import subprocess
import sys
import time

RAIZ = pathlib.Path(__file__).resolve().parent.parent
ARBOL = RAIZ / "build" / "mutantes"
FUENTE, BINARIOS, RESULTADOS = ARBOL / "fuente", ARBOL / "arbol", ARBOL / "resultados.tsv"
NUCLEOS = os.cpu_count() or 2

# --- the breaks ------------------------------------------------------------------------------------------------------

TROCADOS = {"==": "!=", "!=": "==", "<=": "<", ">=": ">", "&&": "||", "||": "&&", "true": "false", "false": "true"}
OPERADOR = re.compile(r"(?<=[\w)\]\"'] )(==|!=|<=|>=|<|>|&&|\|\||\+|-|\*|/)(?= [\w(\"'!*&-])|\b(?:true|false)\b")
TROCADOS |= {"<": "<=", ">": ">=", "+": "-", "-": "+", "*": "/", "/": "*"}
NUMERO = re.compile(r"(?<![\w.])\d+(?![\w.])")
TEXTO = re.compile(r'"((?:[^"\\]|\\.)*)"')
# What stands here names things or opens a scope: a break would not compile, or change nothing.
SIN_EFECTO = re.compile(r"\s*(#|using |namespace |static_assert|template|class |struct |enum |public:|private:|"
                        r"case |default:|friend |extern |typedef |.*= (?:delete|default);|[{}();,\s]*$)")
SENTENCIA = re.compile(r"\s*(?:[\w:]+(?:<[^;=]*>)?(?:\(|\.|->|\[|\s*(?:=|\+=|-=|\*=|\|=|<<)[^=])|\+\+|--|\*|delete |throw |"
                       r"return;|break;|continue;|\(void\))")
DECLARACION = re.compile(r"\s*(?:static |const |constexpr |auto[ &*]|[\w:]+(?:<[^;]*>)?[&*]? +[&*]?\w+ *(?:=|\{|\(|;))")


def sin_comentarios(lineas):
    """The lines, with comments blanked."""
    dentro, limpias = False, []
    for linea in lineas:
        if dentro:
            fin = linea.find("*/")
            linea, dentro = (" " * (fin + 2) + linea[fin + 2:], False) if fin >= 0 else ("", True)
        linea = re.sub(r"/\*.*?\*/", lambda m: " " * len(m[0]), linea)
        protegida = TEXTO.sub(lambda m: '"' + "·" * len(m[1]) + '"', linea)
        for marca in ("//", "/*"):
            if (i := protegida.find(marca)) >= 0:
                linea, protegida, dentro = linea[:i], protegida[:i], dentro or marca == "/*"
        limpias.append(linea.rstrip())
    return limpias


def abarca(lineas, i):
    """The last line of the statement that begins at line i; None when its brackets do not close soon."""
    saldo = 0
    for j in range(i, min(i + 12, len(lineas))):
        codigo = TEXTO.sub('""', lineas[j])
        saldo += sum(codigo.count(c) for c in "([{") - sum(codigo.count(c) for c in ")]}")
        if saldo < 0:
            return None
        if saldo == 0 and codigo.endswith(";"):
            return j
    return None


def negada(linea):
    """The line with the condition of its if, while or for negated; None when it has none that closes on it."""
    if not (m := re.search(r"\b(?:if|while)(?: constexpr)? \(", linea)):
        return None
    saldo, inicio = 0, m.end()
    for j in range(m.end() - 1, len(linea)):
        saldo += {"(": 1, ")": -1}.get(linea[j], 0)
        if saldo == 0:
            # An initialiser keeps its place.
            corte = linea.rfind("; ", inicio, j)
            inicio = corte + 2 if corte >= 0 else inicio
            return f"{linea[:inicio]}!({linea[inicio:j]}){linea[j:]}"
    return None


def mutantes(lineas):
    """Every break of the file: (first line, last line, kind, text in their place), from 0."""
    limpias = sin_comentarios(lineas)
    for i, linea in enumerate(limpias):
        if not linea or SIN_EFECTO.match(linea):
            continue
        if nueva := negada(linea):
            yield i, i, "negate", nueva
        previa = next((p for p in reversed(limpias[:i]) if p.strip()), "")
        empieza = previa.endswith((";", "{", "}", ":", ")")) or previa.strip() == "else"
        if empieza and SENTENCIA.match(linea) and not DECLARACION.match(linea) and (fin := abarca(limpias, i)) is not None:
            yield i, fin, "delete", ";"
        protegida = TEXTO.sub(lambda m: '"' + "·" * len(m[1]) + '"', linea)
        for m in OPERADOR.finditer(protegida):
            yield i, i, "swap", linea[:m.start()] + TROCADOS[m[0]] + linea[m.end():]
        for m in NUMERO.finditer(protegida):
            yield i, i, "number", f"{linea[:m.start()]}{int(m[0]) + 1}{linea[m.end():]}"
        for m in TEXTO.finditer(linea):
            if not linea.lstrip().startswith("#"):
                yield i, i, "text", f'{linea[:m.start()]}"~{m[1]}"{linea[m.end():]}'


# --- building and testing --------------------------------------------------------------------------------------------

def ejecuta(orden, limite, carpeta=None):
    """Exit status of the command, None when it took longer than the limit (seconds). Its children end with it."""
    entorno = os.environ | {"QT_QPA_PLATFORM": "offscreen", "CCACHE_DISABLE": "1", "ASAN_OPTIONS": "detect_leaks=0"}
    with subprocess.Popen(orden, cwd=carpeta, env=entorno, start_new_session=True, stdin=subprocess.DEVNULL,
                          stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL) as proceso:
        try:
            return proceso.wait(limite)
        except subprocess.TimeoutExpired:
            return None
        finally:
            try:
                os.killpg(proceso.pid, signal.SIGKILL)
            except ProcessLookupError:
                pass


def prepara():
    """Copies the sources, leaving alone what did not change, and configures them."""
    rastreados = subprocess.run(["git", "ls-files", "-co", "--exclude-standard"], cwd=RAIZ, check=True,
                                capture_output=True, text=True).stdout.split("\n")
    vigentes = {nombre for nombre in rastreados if nombre and (RAIZ / nombre).is_file()}
    for viejo in [p for p in FUENTE.rglob("*") if p.is_file() and str(p.relative_to(FUENTE)) not in vigentes]:
        viejo.unlink()
    for nombre in vigentes:
        destino = FUENTE / nombre
        if not destino.exists() or destino.read_bytes() != (RAIZ / nombre).read_bytes():
            destino.parent.mkdir(parents=True, exist_ok=True)
            shutil.copy(RAIZ / nombre, destino)
    subprocess.run(["cmake", "-G", "Ninja", "-S", FUENTE, "-B", BINARIOS, "-DCMAKE_BUILD_TYPE=Debug",
                    "-DCMAKE_CXX_FLAGS=-w", "-DCMAKE_CXX_FLAGS_DEBUG=-O0", "-DCMAKE_LINK_DEPENDS_NO_SHARED=ON"],
                   check=True, stdout=subprocess.DEVNULL)


class Pruebas:
    """The tests as CTest knows them; the cases of one program are one test, the program's run."""

    def __init__(self, filtro):
        lista = json.loads(subprocess.run(["ctest", "--test-dir", BINARIOS, "--show-only=json-v1"], check=True,
                                          capture_output=True, text=True).stdout)["tests"]
        ordenes, programas = {}, set()
        for prueba in lista:
            orden = prueba.get("command", [])
            carpeta = next((p["value"] for p in prueba["properties"] if p["name"] == "WORKING_DIRECTORY"), None)
            if prueba["name"].endswith("_NOT_BUILT") or any(a.startswith("--gtest_filter") for a in orden):
                nombre = pathlib.Path(orden[0]).name if orden else prueba["name"].removesuffix("_NOT_BUILT")
                orden = [str(BINARIOS / "bin" / nombre), "--gtest_brief=1", "--gtest_fail_fast"]
            else:
                nombre = prueba["name"]
            if re.search(filtro, nombre):
                ordenes[nombre] = (orden, carpeta)
                programas |= {pathlib.Path(a.split("=")[-1]).name for a in orden if f"{BINARIOS}/bin/" in a}
        self.construye = ["cmake", "--build", BINARIOS, "--target", *sorted(programas)]
        subprocess.run(self.construye, check=True)
        self.pruebas = []
        for nombre, (orden, carpeta) in ordenes.items():
            inicio = time.monotonic()
            if ejecuta(orden, 600, carpeta) != 0:
                sys.exit(f"{nombre} fails without any break")
            self.pruebas.append((time.monotonic() - inicio, nombre, orden, carpeta))
        self.pruebas.sort()

    def notan(self):
        """The first test that fails; None when all pass."""
        def corre(prueba):
            tarda, nombre, orden, carpeta = prueba
            return None if notado else (nombre if ejecuta(orden, 20 + 8 * tarda, carpeta) != 0 else None)
        notado = []
        with concurrent.futures.ThreadPoolExecutor(NUCLEOS) as hilos:
            for falla in concurrent.futures.as_completed([hilos.submit(corre, p) for p in self.pruebas]):
                if falla.result():
                    notado.append(falla.result())
        return notado[0] if notado else None

    def prueba(self, archivo, texto):
        """Who notices the file with that text: a test's name, "(no compila)", or "" for nobody."""
        ruta = FUENTE / archivo
        original = ruta.read_text()
        ruta.write_text(texto)
        try:
            construido = ejecuta(self.construye, 900)
            return "(no compila)" if construido != 0 else self.notan() or ""
        finally:
            ruta.write_text(original)


# --- the run ---------------------------------------------------------------------------------------------------------

def elegidos(archivo, lineas, rango, todos):
    """The breaks to try: one a line, the first kind that the line allows, unless all are wanted."""
    vistas = set()
    for m in mutantes(lineas):
        if m[0] + 1 in rango and (todos or m[0] not in vistas):
            vistas.add(m[0])
            yield m


def main():
    opciones = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    opciones.add_argument("archivos", nargs="+", metavar="FILE[:FIRST[-LAST]]")
    opciones.add_argument("--todos", action="store_true", help="every break of a line, not one")
    opciones.add_argument("--pruebas", default=r"^(prueba_(?!desktop)|guion\.)", metavar="REGEX",
                          help="the tests that count, by the names of CTest and of the test programs; by default all "
                               "but those that open windows")
    opciones.add_argument("--cada", type=int, default=1, metavar="N", help="only each N-th break")
    o = opciones.parse_args()

    prepara()
    pruebas = Pruebas(o.pruebas)
    conocidos = {}
    if RESULTADOS.exists():
        conocidos = dict(r.rsplit("\t", 1) for r in RESULTADOS.read_text().splitlines() if "\t" in r)
    notados, vivos, nulos, cuenta = 0, [], 0, 0
    for pedido in o.archivos:
        archivo, _, tramo = pedido.partition(":")
        archivo = str((RAIZ / archivo).resolve().relative_to(RAIZ)) if (RAIZ / archivo).exists() else archivo
        texto = (RAIZ / archivo).read_text()
        lineas = texto.split("\n")
        primera, _, ultima = tramo.partition("-")
        rango = range(int(primera or 1), int(ultima or primera or len(lineas)) + 1)
        huella = hashlib.sha1(texto.encode()).hexdigest()[:12]
        for inicio, fin, clase, nueva in elegidos(archivo, lineas, rango, o.todos):
            cuenta += 1
            if cuenta % o.cada:
                continue
            quien = conocidos.get(clave := f"{archivo}\t{huella}\t{inicio}\t{clase}\t{nueva.strip()}")
            if not quien:
                quien = pruebas.prueba(archivo, "\n".join(lineas[:inicio] + [nueva] + lineas[fin + 1:]))
                with RESULTADOS.open("a") as f:
                    f.write(f"{clave}\t{quien}\n")
            if quien == "(no compila)":
                nulos += 1
            elif quien:
                notados += 1
            else:
                vivos.append(f"{archivo}:{inicio + 1}: {clase}: {lineas[inicio].strip()}"
                             + ("" if clase == "delete" else f"  ->  {nueva.strip()}"))
            print(f"{archivo}:{inicio + 1}: {clase}: {quien or 'NOBODY'}", flush=True)
    print("\nNobody noticed:" if vivos else "\nEvery break was noticed.")
    print("\n".join(vivos))
    total = notados + len(vivos)
    print(f"Noticed: {notados} of {total} ({100 * notados / total if total else 100:.0f} %); {nulos} did not compile")


if __name__ == "__main__":
    main()
