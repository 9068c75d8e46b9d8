#!/usr/bin/env python3
"""A small web server on the loopback that behaves as badly as a test asks for.

usage: web_server.py [--port N] [COMMAND ...]

Without a command it prints its addresses and serves until it is interrupted. With one it serves while the command runs
and ends with the command's exit code. The command finds in its environment
    SITEKEEPER_WEB              http://127.0.0.1:PORT
    SITEKEEPER_WEB_TLS          https://127.0.0.1:PORT
    SITEKEEPER_WEB_CERTIFICATE  the certificate of the authority behind that, a file (DER) by its Windows name
    SITEKEEPER_WEB_REFUSED      http://127.0.0.1:PORT where nobody listens
    SITEKEEPER_WEB_FOLDER       a folder by its Windows name, see /software-updates/
"""
import argparse
import fcntl
import os
import shutil
import socket
import socketserver
import ssl
import struct
import subprocess
import sys
import tempfile
import threading
import time

PAGE = b"<html>A page of more than fifty bytes, so that it comes in several pieces: LX_2023_Plus_Update</html>\r\n"
MISSING = b"<html>There is no such page, says the server in its own words.</html>\r\n"
BLOCK = b"x" * 65536
PATIENCE = 30  # seconds that a held page waits at most


def head(status, *lines):
    return "\r\n".join([f"HTTP/1.1 {status}", "Content-Type: text/html", "Connection: close", *lines, "", ""]).encode()


def whole(body, status="200 OK"):
    return head(status, f"Content-Length: {len(body)}") + body


class Visit(socketserver.StreamRequestHandler):
    """One request, answered by the last part of its path."""

    disable_nagle_algorithm = True

    def handle(self):
        request = self.rfile.readline().decode("latin-1").split()
        while self.rfile.readline().strip():
            pass
        if len(request) < 2:
            return
        answer = getattr(self, "serve_" + request[1].strip("/").replace("-", "_"), self.serve_missing)
        try:
            answer()
        except OSError:
            pass  # the visitor has left, as some do

    def serve_page(self):
        self.wfile.write(whole(PAGE))

    def serve_tiny(self):
        self.wfile.write(head("200 OK", f"Content-Length: {len(PAGE)}"))
        for byte in PAGE:
            self.wfile.write(bytes([byte]))
            time.sleep(0.0005)

    def serve_chunked(self):
        self.wfile.write(head("200 OK", "Transfer-Encoding: chunked"))
        for start in range(0, len(PAGE), 7):
            piece = PAGE[start : start + 7]
            self.wfile.write(b"%x\r\n%s\r\n" % (len(piece), piece))
        self.wfile.write(b"0\r\n\r\n")

    def serve_missing(self):
        self.wfile.write(whole(MISSING, "404 Not Found"))

    def serve_moved(self):
        self.wfile.write(head("302 Found", "Location: /page", "Content-Length: 0"))

    def serve_cut(self):
        self.wfile.write(head("200 OK", "Content-Length: 100000") + PAGE)

    def serve_reset(self):
        self.serve_cut()
        self.wait_until_taken()
        # Closing without lingering resets the connection, but only when nothing has been said of its end before: here,
        # not where the visit ends. The reader holds the socket too.
        self.connection.setsockopt(socket.SOL_SOCKET, socket.SO_LINGER, struct.pack("ii", 1, 0))
        self.rfile.close()
        self.connection.close()

    def serve_wrong_length(self):
        self.wfile.write(head("200 OK", "Content-Length: 60") + PAGE)

    def serve_silent(self):
        pass

    def serve_empty(self):
        self.wfile.write(whole(b""))

    def serve_endless(self):
        self.wfile.write(head("200 OK"))
        while True:
            self.wfile.write(BLOCK)

    def serve_large(self):
        self.wfile.write(whole(BLOCK * 16))

    def serve_software_updates(self):
        """The file "page" of the folder; 404 without it, endless where it is named "endless". Waits while there is a
        file "hold". Each visit adds a line to "visits"."""
        folder = self.server.folder
        with open(os.path.join(folder, "visits"), "a", encoding="ascii") as visits:
            visits.write("visit\n")
        end = time.monotonic() + PATIENCE
        while os.path.exists(os.path.join(folder, "hold")) and time.monotonic() < end:
            time.sleep(0.01)
        if os.path.exists(os.path.join(folder, "endless")):
            self.serve_endless()
        try:
            with open(os.path.join(folder, "page"), "rb") as page:
                self.wfile.write(whole(page.read()))
        except FileNotFoundError:
            self.serve_missing()

    def wait_until_taken(self):
        """Until the visitor's system has all bytes that were sent, and the visitor has read them from it: a reset throws
        away the others."""
        siocoutq = 0x5411
        end = time.monotonic() + PATIENCE
        while time.monotonic() < end and (
                struct.unpack("i", fcntl.ioctl(self.connection, siocoutq, b"\0" * 4))[0] > 0 or self.unread_bytes() > 0):
            time.sleep(0.001)

    def unread_bytes(self):
        """What waits at the visitor's end, which stands in the same table as ours, with the addresses swapped; 0 when it
        is gone."""
        def hexadecimal(address):
            return "%08X:%04X" % (struct.unpack("=I", socket.inet_aton(address[0]))[0], address[1])

        visitor = [hexadecimal(self.connection.getpeername()), hexadecimal(self.connection.getsockname())]
        with open("/proc/net/tcp", encoding="ascii") as table:
            for row in map(str.split, table):
                if row[1:3] == visitor:
                    return int(row[4].split(":")[1], 16)
        return 0


class Server(socketserver.ThreadingTCPServer):
    allow_reuse_address = True
    daemon_threads = True
    context = None  # of TLS

    def __init__(self, port, folder):
        super().__init__(("127.0.0.1", port), Visit)
        self.folder = folder
        threading.Thread(target=self.serve_forever, daemon=True).start()

    def finish_request(self, request, client_address):
        if self.context is None:
            super().finish_request(request, client_address)
            return
        try:
            with self.context.wrap_socket(request, server_side=True) as secured:
                super().finish_request(secured, client_address)
                secured.unwrap()
        except (ssl.SSLError, OSError):
            pass  # a visitor that does not trust the certificate

    def handle_error(self, request, client_address):
        pass


def make_certificate(folder):
    """A certificate for the loopback, and the one of the authority that stands for it, which nobody knows.

    The loopback goes by its number: an empty system may know no name of it."""
    def path(name):
        return os.path.join(folder, name)

    def openssl(*arguments):
        subprocess.run(["openssl", *arguments], check=True, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)

    new = ["-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:P-256", "-nodes"]
    openssl("req", "-x509", *new, "-keyout", path("authority.key"), "-out", path("authority.pem"), "-days", "2",
            "-subj", f"/CN=Site Keeper test {os.getpid()}")
    openssl("req", *new, "-keyout", path("server.key"), "-out", path("server.csr"), "-subj", "/CN=127.0.0.1")
    with open(path("names"), "w", encoding="ascii") as names:
        names.write("subjectAltName=DNS:127.0.0.1,IP:127.0.0.1\n")
    openssl("x509", "-req", "-in", path("server.csr"), "-CA", path("authority.pem"), "-CAkey", path("authority.key"),
            "-CAcreateserial", "-days", "2", "-extfile", path("names"), "-out", path("server.pem"))
    openssl("x509", "-in", path("authority.pem"), "-outform", "DER", "-out", path("authority.der"))
    context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
    context.load_cert_chain(path("server.pem"), path("server.key"))
    return context, path("authority.der")


def windows_name(path):
    return "Z:" + path.replace("/", "\\")


def run(command, addresses):
    if not command:
        for name, address in addresses.items():
            print(f"{name}={address}", flush=True)
        try:
            threading.Event().wait()
        except KeyboardInterrupt:
            return 0
    return subprocess.run(command, env={**os.environ, **addresses}, check=False).returncode


def main():
    parser = argparse.ArgumentParser(usage=__doc__)
    parser.add_argument("--port", type=int, default=0)
    parser.add_argument("command", nargs=argparse.REMAINDER)
    options = parser.parse_args()
    folder = tempfile.mkdtemp(prefix="sitekeeper-web-")
    try:
        plain = Server(options.port, folder)
        secured = Server(0, folder)
        secured.context, certificate = make_certificate(folder)
        nobody = socket.socket()
        nobody.bind(("127.0.0.1", 0))  # taken, so that nobody else listens there, and not listening
        return run(options.command, {
            "SITEKEEPER_WEB": f"http://127.0.0.1:{plain.server_address[1]}",
            "SITEKEEPER_WEB_TLS": f"https://127.0.0.1:{secured.server_address[1]}",
            "SITEKEEPER_WEB_CERTIFICATE": windows_name(certificate),
            "SITEKEEPER_WEB_REFUSED": f"http://127.0.0.1:{nobody.getsockname()[1]}",
            "SITEKEEPER_WEB_FOLDER": windows_name(folder),
        })
    finally:
        shutil.rmtree(folder, ignore_errors=True)


if __name__ == "__main__":
    sys.exit(main())
