"""What an executable or library says of itself."""
import re
import subprocess


def is_elf(path):
    with open(path, "rb") as file:
        return file.read(4) == b"\x7fELF"


def search_folders(path):
    """Where it has its libraries looked for, besides the system's own folders."""
    dynamic = subprocess.run(["readelf", "--dynamic", "--wide", path], capture_output=True, text=True, check=True)
    found = re.findall(r"\((?:RPATH|RUNPATH)\).*\[(.*)\]", dynamic.stdout)
    return [folder for folders in found for folder in folders.split(":")]


def sections(path):
    listed = subprocess.run(["readelf", "--section-headers", "--wide", path], capture_output=True, text=True,
                            check=True)
    return re.findall(r"^ +\[ *\d+\] (\S+)", listed.stdout, re.MULTILINE)
