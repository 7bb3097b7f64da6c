#!/usr/bin/python3
"""A mail server for the tests: keeps each mail that it takes as FOLDER/N.eml and its recipients as FOLDER/N.para.

servidor.py PORT FOLDER [--tls CERTIFICATE KEY] [--login USER PASSWORD] [--dice CODE] [--rechaza ADDRESS CODE]
            [--cuelga]
--dice: answers the message with that code; --rechaza: answers that sender or recipient with the code; --cuelga: takes the message and never answers.
"""
import argparse
import asyncio
import pathlib
import ssl

from aiosmtpd.smtp import SMTP, AuthResult

o = argparse.ArgumentParser()
o.add_argument("puerto", type=int)
o.add_argument("carpeta", type=pathlib.Path)
o.add_argument("--tls", nargs=2)
o.add_argument("--login", nargs=2)
o.add_argument("--dice")
o.add_argument("--rechaza", nargs=2, default=("", ""))
o.add_argument("--cuelga", action="store_true")
o = o.parse_args()


class Buzon:
    async def handle_MAIL(self, servidor, sesion, sobre, direccion, opciones):
        if direccion == o.rechaza[0]:
            return o.rechaza[1]
        sobre.mail_from = direccion
        return "250 Bien"

    async def handle_RCPT(self, servidor, sesion, sobre, direccion, opciones):
        if direccion == o.rechaza[0]:
            return o.rechaza[1]
        sobre.rcpt_tos.append(direccion)
        return "250 Bien"

    async def handle_DATA(self, servidor, sesion, sobre):
        n = len(list(o.carpeta.glob("*.eml"))) + 1
        (o.carpeta / f"{n}.para").write_text("\n".join(sobre.rcpt_tos))
        (o.carpeta / f"{n}.eml").write_bytes(sobre.original_content)
        if o.cuelga:
            await asyncio.sleep(3600)
        return o.dice or "250 Aceptado"


def entra(servidor, sesion, sobre, modo, datos):
    bien = o.login == [datos.login.decode(), datos.password.decode()]
    return AuthResult(success=bien, handled=bien)


def crea():
    contexto = None
    if o.tls:
        contexto = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
        contexto.load_cert_chain(*o.tls)
    return SMTP(Buzon(), tls_context=contexto, require_starttls=bool(o.tls), auth_required=bool(o.login),
                auth_require_tls=bool(o.tls), authenticator=entra if o.login else None)


async def sirve():
    servidor = await asyncio.get_running_loop().create_server(crea, "127.0.0.1", o.puerto)
    (o.carpeta / "listo").touch()
    async with servidor:
        await servidor.serve_forever()


o.carpeta.mkdir(parents=True, exist_ok=True)
asyncio.run(sirve())
