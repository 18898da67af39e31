"""What a running program holds: memory, descriptors, threads, resources in the X server, streams in the sound server."""
import ctypes
import struct
from pathlib import Path

PROCESS = 2  # of a client of the X server, as it knows it


class Question(ctypes.Structure):
    """A request's number, as xcb gives it and takes it."""
    _fields_ = [("sequence", ctypes.c_uint)]


class Who(ctypes.Structure):
    _fields_ = [("client", ctypes.c_uint32), ("mask", ctypes.c_uint32)]


class XResources:
    """Counts what a process has in the X server, which tells everybody."""

    def __init__(self, display):
        self.xcb, self.res = ctypes.CDLL("libxcb.so.1"), ctypes.CDLL("libxcb-res.so.0")
        self.xcb.xcb_connect.restype = ctypes.c_void_p
        self.free = ctypes.CDLL(None).free
        self.free.argtypes = [ctypes.c_void_p]
        self.connection = ctypes.c_void_p(self.xcb.xcb_connect(display.encode(), None))
        self._ask("query_version", ctypes.c_uint8(1), ctypes.c_uint8(2))

    def _ask(self, name, *arguments):
        """The whole answer."""
        request, reply = (getattr(self.res, f"xcb_res_{name}{end}") for end in ("", "_reply"))
        request.restype, reply.restype = Question, ctypes.c_void_p
        pointer = reply(self.connection, request(self.connection, *arguments), None)
        if not pointer:
            raise RuntimeError(f"the X server does not answer {name}")
        length = 32 + 4 * struct.unpack_from("<I", ctypes.string_at(pointer, 8), 4)[0]
        answer = ctypes.string_at(pointer, length)
        self.free(pointer)
        return answer

    def _clients(self, process):
        answer = self._ask("query_client_ids", ctypes.c_uint32(1), ctypes.byref(Who(0, PROCESS)))
        place, found = 32, []
        for _ in range(struct.unpack_from("<I", answer, 8)[0]):
            client, mask, length = struct.unpack_from("<III", answer, place)
            if mask == PROCESS and length == 4 and struct.unpack_from("<I", answer, place + 12)[0] == process:
                found.append(client)
            place += 12 + length
        return found

    def of(self, process):
        count = 0
        for client in self._clients(process):
            answer = self._ask("query_client_resources", ctypes.c_uint32(client))
            for number in range(struct.unpack_from("<I", answer, 8)[0]):
                count += struct.unpack_from("<II", answer, 32 + 8 * number)[1]
        return count


class Footprint:
    def __init__(self, desktop, process):
        self.desktop, self.process, self.server = desktop, process, XResources(desktop.display)

    def held(self):
        """Counts of what is to be given back."""
        folder = Path(f"/proc/{self.process}")
        streams = [self.desktop.run("pactl", "list", "short", kind).splitlines() for kind in ("source-outputs", "sink-inputs")]
        return {"descriptors": len(list((folder / "fd").iterdir())), "threads": len(list((folder / "task").iterdir())),
                "X resources": self.server.of(self.process), "sound streams": sum(map(len, streams))}

    def memory(self):
        """Kilobytes that it has written and no other process has: pages of files that are read count for nothing."""
        lines = Path(f"/proc/{self.process}/smaps_rollup").read_text().splitlines()
        return sum(int(line.split()[1]) for line in lines if line.startswith("Private_Dirty"))
