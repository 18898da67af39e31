"""whisper.cpp's own server, built from the same source with the same flags as our speech library."""
import socket
import subprocess
import time
import urllib.request

from measuring import ROOT

SERVER = ROOT / "build/whisper/native/bin/whisper-server"
BOUNDARY = "the-end-of-a-part"


class Server:
    """The peer, on a free port of this machine."""

    def __init__(self, model, threads):
        with socket.socket() as free:
            free.bind(("127.0.0.1", 0))
            self.port = free.getsockname()[1]
        self.process = subprocess.Popen(
            [SERVER, "-m", model, "--host", "127.0.0.1", "--port", str(self.port), "-l", "no", "-t", str(threads),
             "-bs", "1", "-bo", "5", "-nt", "-sns"], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        end = time.monotonic() + 60
        while time.monotonic() < end:
            try:
                socket.create_connection(("127.0.0.1", self.port), 1).close()
                return
            except OSError:
                time.sleep(0.05)
        raise SystemExit("the server never answered")

    def take(self, path):
        """Seconds, and the text."""
        fields = {"response_format": "text", "temperature": "0.0"}
        body = b"".join(f'--{BOUNDARY}\r\nContent-Disposition: form-data; name="{name}"\r\n\r\n{value}\r\n'.encode()
                        for name, value in fields.items())
        body += (f'--{BOUNDARY}\r\nContent-Disposition: form-data; name="file"; filename="take.wav"\r\n'
                 "Content-Type: audio/wav\r\n\r\n").encode() + path.read_bytes() + f"\r\n--{BOUNDARY}--\r\n".encode()
        request = urllib.request.Request(f"http://127.0.0.1:{self.port}/inference", body,
                                         {"Content-Type": f"multipart/form-data; boundary={BOUNDARY}"})
        start = time.perf_counter()
        with urllib.request.urlopen(request) as answer:
            text = answer.read().decode()
        return time.perf_counter() - start, text

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.process.terminate()
        self.process.wait(30)
