#!/usr/bin/python3
"""A local SMTP server for the mail sender's tests.

Usage: servidor_smtp.py CARPETA MODO
  MODO  normal   accepts every message
        rechazo  answers 550 to RCPT TO
        mudo     accepts the connection and never answers (each one leaves CARPETA/conexion-N)
        tls      offers STARTTLS and requires it and AUTH (user "despachante", password
                 "s3creta"); makes its own certificate for 127.0.0.1 in CARPETA/ca.pem

Each message received is written to CARPETA/mensaje-N.eml (the raw bytes of the DATA, as the
client meant them) and CARPETA/mensaje-N.json (envelope and session). Once listening the server
prints "LISTO <port>" on a line of its own; it runs until killed.
"""
import asyncio
import json
import os
import socket
import ssl
import subprocess
import sys
import time
import warnings

# The server sets its own deprecated session field on every sign-in.
warnings.filterwarnings("ignore", category=DeprecationWarning)
CARPETA, MODO = sys.argv[1], sys.argv[2]
USUARIO, CLAVE = b"despachante", b"s3creta"


def puerto_libre():
    with socket.socket() as s:
        s.bind(("127.0.0.1", 0))
        return s.getsockname()[1]


def mudo(puerto):
    srv = socket.socket()
    srv.setsockopt(socket.SOL_SOCKET, socket.SO_REUSEADDR, 1)
    srv.bind(("127.0.0.1", puerto))
    srv.listen(5)
    print("LISTO", puerto, flush=True)
    abiertas = []
    while True:
        c, _ = srv.accept()
        abiertas.append(c)  # kept open, never answered
        open(os.path.join(CARPETA, "conexion-%d" % len(abiertas)), "w").close()


class Manejador:
    def __init__(self):
        self.n = 0

    async def handle_RCPT(self, server, session, envelope, address, rcpt_options):
        if MODO == "rechazo":
            return "550 5.1.1 <%s>: Recipient address rejected" % address
        envelope.rcpt_tos.append(address)
        return "250 OK"

    async def handle_DATA(self, server, session, envelope):
        self.n += 1
        base = os.path.join(CARPETA, "mensaje-%d" % self.n)
        with open(base + ".eml", "wb") as f:
            f.write(envelope.original_content)
        datos = {
            "saludo": session.host_name,
            "ehlo": bool(session.extended_smtp),
            "tls": session.ssl is not None,
            "usuario": session.auth_data.login.decode() if session.auth_data else None,
            "desde": envelope.mail_from,
            "para": envelope.rcpt_tos,
        }
        with open(base + ".json", "w") as f:
            json.dump(datos, f)
        return "250 Message accepted for delivery"


def autenticar(server, session, envelope, mechanism, auth_data):
    from aiosmtpd.smtp import AuthResult

    ok = auth_data.login == USUARIO and auth_data.password == CLAVE
    # Not "handled": a refusal then gets the server's own 535 reply.
    return AuthResult(success=ok, handled=False, auth_data=auth_data)


def certificado():
    cert, clave = os.path.join(CARPETA, "ca.pem"), os.path.join(CARPETA, "clave.pem")
    subprocess.run(
        ["openssl", "req", "-x509", "-newkey", "rsa:2048", "-nodes", "-days", "2",
         "-subj", "/CN=127.0.0.1", "-addext", "subjectAltName=IP:127.0.0.1,DNS:localhost",
         "-keyout", clave, "-out", cert],
        check=True, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    ctx = ssl.create_default_context(ssl.Purpose.CLIENT_AUTH)
    ctx.load_cert_chain(cert, clave)
    return ctx


def main():
    puerto = puerto_libre()
    if MODO == "mudo":
        mudo(puerto)
        return
    from aiosmtpd.controller import Controller

    opciones = {}
    if MODO == "tls":
        opciones = dict(tls_context=certificado(), require_starttls=True,
                        authenticator=autenticar, auth_required=True, auth_require_tls=True)
    ctl = Controller(Manejador(), hostname="127.0.0.1", port=puerto, server_kwargs=opciones,
                     decode_data=False)
    ctl.start()
    print("LISTO", puerto, flush=True)
    while True:
        time.sleep(3600)


main()
