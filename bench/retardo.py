#!/usr/bin/env python3
"""A network between a clerk and the server: what goes to the server arrives later by a round trip's time.

    bench/retardo.py PORT SERVER [--ms 1]

Listens at 127.0.0.1:PORT; SERVER is the path of a socket, or HOST:PORT. At its end it prints how many round trips were
made. As a module: Retardo counts them while it runs.
"""
import argparse
import queue
import socket
import threading
import time


class Retardo:
    """viajes: times that the server was spoken to after it had answered, on all connections. transaccion: how many of
    them the last transaction took, from the message that begins it to the one that commits it."""

    def __init__(self, servidor, ms=1.0, puerto=0):
        self.servidor, self.demora = servidor, ms / 1000
        self.viajes = self.transaccion = 0
        self.cerrojo = threading.Lock()
        self.escucha = socket.create_server(("127.0.0.1", puerto))
        self.puerto = self.escucha.getsockname()[1]
        threading.Thread(target=self.atiende, daemon=True).start()

    def conecta(self):
        if "/" in self.servidor:
            lejos = socket.socket(socket.AF_UNIX)
            lejos.connect(self.servidor)
            return lejos
        donde, _, puerto = self.servidor.rpartition(":")
        return socket.create_connection((donde, int(puerto)))

    def atiende(self):
        while True:
            cerca, _ = self.escucha.accept()
            cerca.setsockopt(socket.IPPROTO_TCP, socket.TCP_NODELAY, 1)
            Enlace(self, cerca, self.conecta())


class Enlace:
    """One connection: a thread reads what goes, one hands it on when its time has come, one brings what comes."""

    def __init__(self, red, cerca, lejos):
        self.red, self.cerca, self.lejos = red, cerca, lejos
        self.callado, self.enTransaccion = True, 0
        self.cola = queue.SimpleQueue()
        for parte in (self.lee, self.entrega, self.trae):
            threading.Thread(target=parte, daemon=True).start()

    def lee(self):
        while datos := self.recibe(self.cerca):
            self.cola.put((time.monotonic() + self.red.demora, datos))
            if self.callado:
                self.callado = False
                with self.red.cerrojo:
                    self.cuenta(datos)
        self.cola.put((0, b""))

    def cuenta(self, datos):
        self.red.viajes += 1
        if b"BEGIN" in datos:
            self.enTransaccion = 0
        self.enTransaccion += 1
        if b"COMMIT\0" in datos:
            self.red.transaccion = self.enTransaccion

    def entrega(self):
        while True:
            cuando, datos = self.cola.get()
            if not datos:
                break
            if (falta := cuando - time.monotonic()) > 0:
                time.sleep(falta)
            self.lejos.sendall(datos)
        self.lejos.close()

    def trae(self):
        while datos := self.recibe(self.lejos):
            self.callado = True
            self.cerca.sendall(datos)
        self.cerca.close()

    @staticmethod
    def recibe(de):
        try:
            return de.recv(1 << 16)
        except OSError:
            return b""


if __name__ == "__main__":
    p = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    p.add_argument("puerto", type=int)
    p.add_argument("servidor")
    p.add_argument("--ms", type=float, default=1.0)
    opciones = p.parse_args()
    red = Retardo(opciones.servidor, opciones.ms, opciones.puerto)
    try:
        threading.Event().wait()
    except KeyboardInterrupt:
        print(f"{red.viajes} round trips")
