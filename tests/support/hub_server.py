#!/usr/bin/env python3
"""A model hub on 127.0.0.1 that misbehaves on request.

    hub_server.py FOLDER [CERTIFICATE KEY]

Prints its port. With a certificate it speaks HTTPS. Serves the files below FOLDER/files, with ranges and strong validators. FOLDER/script.json maps
a path to a list of faults; each request of the path uses up one, and afterwards the path is served well. A
change of the script starts all lists anew. Every request is one JSON line in FOLDER/requests.

A fault is an object:
    status, body, type   answer this instead of the file
    unsized              without a Content-Length: the end of the connection is the end of the body
    endless              zeros without a Content-Length, until the client has enough
    headers              header lines without an end, until the client has enough
    ignoreRange          send the whole file, whatever was asked for
    ignoreCondition      send the range, whatever the validator was
    etag                 another validator; "" for none
    file                 another file's content, and validator
    cut                  close the connection after so many bytes of the body
    stall                send nothing more after so many bytes of the body
    range                "start" or "total": a Content-Range that is off by one; "none": without one
    unsatisfiable        416, whatever was asked for
    gzip                 compress the body, whatever was accepted
    chunked              no Content-Length
    redirect             302 to a signed address that serves the file
    location             302 to this address
    expired              302 to a signed address that says 403
    rate                 so many bytes per second
"""
import gzip
import hashlib
import json
import os
import re
import socket
import ssl
import sys
import threading
import time
from http.server import BaseHTTPRequestHandler, ThreadingHTTPServer
from pathlib import Path

PIECE = 1 << 20


class Script:
    """The faults that are still to happen. Shared by all connections."""

    def __init__(self, path):
        self.path = path
        self.text = None
        self.faults = {}
        self.lock = threading.Lock()

    def next(self, path):
        with self.lock:
            text = self.path.read_text() if self.path.exists() else "{}"
            if text != self.text:
                self.text = text
                self.faults = json.loads(text)
            waiting = self.faults.get(path, [])
            return waiting.pop(0) if waiting else {}


def etag_of(file):
    status = file.stat()
    identity = f"{file}:{status.st_size}:{status.st_mtime_ns}"
    return '"' + hashlib.sha256(identity.encode()).hexdigest()[:32] + '"'


class Handler(BaseHTTPRequestHandler):
    protocol_version = "HTTP/1.1"
    wbufsize = 0

    def log_message(self, *_):
        pass

    def do_GET(self):
        # A program that takes this server for its proxy asks for whole addresses.
        path, _, query = re.sub(r"^http://[^/]+", "", self.path).partition("?")
        fault = {} if path.startswith("/signed/") else self.server.script.next(path)
        try:
            if query == "expired":
                self.answer(403, b"<html>Request has expired</html>", "text/html")
            elif path.startswith("/signed/"):
                self.serve(path.removeprefix("/signed"), {})
            elif "redirect" in fault or "expired" in fault:
                self.redirect("/signed" + path + ("?expired" if "expired" in fault else "?token=1"))
            elif "location" in fault:
                self.redirect(fault["location"])
            elif "status" in fault:
                self.answer(fault["status"], fault.get("body", "<html>No</html>").encode(),
                            fault.get("type", "text/html"), "unsized" in fault)
            elif "endless" in fault:
                self.pour()
            elif "headers" in fault:
                self.pour_headers()
            else:
                self.serve(path, fault)
        except (BrokenPipeError, ConnectionResetError):
            self.close_connection = True

    def note(self, status):
        line = {"path": self.path, "status": status}
        for name in ("Range", "If-Range", "User-Agent", "Accept-Encoding"):
            line[name] = self.headers.get(name, "")
        with self.server.noting, open(self.server.folder / "requests", "a", encoding="utf-8") as file:
            file.write(json.dumps(line) + "\n")

    def head(self, status, headers):
        self.note(status)
        self.send_response(status)
        for name, value in headers.items():
            self.send_header(name, str(value))
        self.end_headers()

    def answer(self, status, body, kind, unsized=False):
        length = {"Connection": "close"} if unsized else {"Content-Length": len(body)}
        self.head(status, {**length, "Content-Type": kind})
        self.wfile.write(body)
        self.close_connection = self.close_connection or unsized

    def pour(self):
        self.close_connection = True
        self.head(200, {"Connection": "close", "Content-Type": "application/octet-stream", "ETag": '"endless"'})
        self.wfile.write(b"lmgg")
        while True:
            self.wfile.write(bytes(PIECE))

    def pour_headers(self):
        self.close_connection = True
        self.note(200)
        self.wfile.write(b"HTTP/1.1 200 OK\r\n")
        while True:
            self.wfile.write(b"".join(b"X-Header-%d: %s\r\n" % (number, b"a" * 900) for number in range(64)))

    def redirect(self, location):
        self.head(302, {"Content-Length": 0, "Location": location})

    def serve(self, path, fault):
        file = self.server.folder / "files" / (fault.get("file") or path).lstrip("/")
        if not file.is_file():
            return self.answer(404, b"<html>Entry not found</html>", "text/html")
        size = file.stat().st_size
        etag = fault.get("etag", etag_of(file))
        headers = {"Content-Type": "application/octet-stream", "Accept-Ranges": "bytes"}
        if etag:
            headers["ETag"] = etag
        asked = re.fullmatch(r"bytes=(\d+)-", self.headers.get("Range", ""))
        condition = self.headers.get("If-Range")
        fits = condition in (None, etag) or "ignoreCondition" in fault
        start = int(asked[1]) if asked and fits and "ignoreRange" not in fault else None
        if "unsatisfiable" in fault or (start is not None and start >= size):
            headers.update({"Content-Range": f"bytes */{size}", "Content-Length": 0})
            return self.head(416, headers)
        if start is not None:
            shown = start + (fault.get("range") == "start")
            total = size + (fault.get("range") == "total")
            if fault.get("range") != "none":
                headers["Content-Range"] = f"bytes {shown}-{size - 1}/{total}"
        if "gzip" in fault:
            body = gzip.compress(file.read_bytes())
            headers["Content-Encoding"] = "gzip"
            return self.head(200, {**headers, "Content-Length": len(body)}) or self.wfile.write(body)
        self.send_file(file, start, size, headers, fault)

    def send_file(self, file, start, size, headers, fault):
        offset = start or 0
        if "chunked" in fault:
            headers["Transfer-Encoding"] = "chunked"
        else:
            headers["Content-Length"] = size - offset
        self.head(200 if start is None else 206, headers)
        limit = min(fault.get("cut", size), fault.get("stall", size), size - offset)
        with open(file, "rb") as source:
            if not {"chunked", "rate"} & fault.keys():
                self.connection.settimeout(None)
                if limit > 0:
                    self.connection.sendfile(source, offset, limit)
            else:
                self.send_pieces(source, offset, limit, fault)
        if "cut" in fault and fault["cut"] < size - offset:
            self.close_connection = True
            self.connection.shutdown(socket.SHUT_RDWR)
        elif "stall" in fault and fault["stall"] < size - offset:
            self.connection.recv(1)
            self.close_connection = True
        elif "chunked" in fault:
            self.wfile.write(b"0\r\n\r\n")

    def send_pieces(self, source, offset, limit, fault):
        source.seek(offset)
        rate = fault.get("rate")
        size = max(rate // 20, 1) if rate else PIECE
        while limit > 0:
            piece = source.read(min(size, limit))
            if not piece:
                return
            limit -= len(piece)
            self.wfile.write(b"%x\r\n%s\r\n" % (len(piece), piece) if "chunked" in fault else piece)
            if rate:
                time.sleep(len(piece) / rate)


class Server(ThreadingHTTPServer):
    daemon_threads = True

    def handle_error(self, request, client_address):
        # Clients that give up, or are killed, are what this is for.
        if not isinstance(sys.exc_info()[1], (ConnectionError, ssl.SSLError)):
            super().handle_error(request, client_address)


def main():
    server = Server(("127.0.0.1", 0), Handler)
    server.folder = Path(sys.argv[1])
    server.script = Script(server.folder / "script.json")
    server.noting = threading.Lock()
    if len(sys.argv) > 2:
        context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
        context.load_cert_chain(sys.argv[2], sys.argv[3])
        # The handshake belongs to the connection's own thread: one that never comes must not hold up the others.
        server.socket = context.wrap_socket(server.socket, server_side=True, do_handshake_on_connect=False)
    print(server.server_address[1], flush=True)
    threading.Thread(target=server.serve_forever, daemon=True).start()
    # The process that started this holds the other end; the server ends with it.
    sys.stdin.read()
    os._exit(0)


main()
