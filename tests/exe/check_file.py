#!/usr/bin/env python3
"""Reads a 64-bit Windows file and says what is wrong with it as a file to ship: hardening flags, imported libraries,
manifest, exports, paths of the build machine. Prints one line for each finding; exit code 1 when there is one.

The layout is the published PE/COFF format."""
import argparse
import re
import struct
import sys

# Windows' own libraries. Anything else would have to be shipped beside the program.
SYSTEM_LIBRARIES = {"advapi32.dll", "comctl32.dll", "gdi32.dll", "kernel32.dll", "msvcrt.dll", "ole32.dll",
                    "shell32.dll", "user32.dll"}
# DllCharacteristics of the optional header.
FLAGS = {0x0020: "high-entropy-va", 0x0040: "dynamicbase", 0x0100: "nxcompat"}
TERMINAL_SERVER_AWARE = 0x8000
RT_MANIFEST = 24
RT_VERSION = 16


class PeFile:
    """The parts of a PE file that the checks look at."""

    def __init__(self, data):
        self.data = data
        header = struct.unpack_from("<I", data, 0x3C)[0]
        if data[header:header + 4] != b"PE\0\0":
            raise ValueError("no PE file")
        self.machine, count, _, _, _, optional_size, self.file_flags = struct.unpack_from("<HHIIIHH", data, header + 4)
        optional = header + 24
        self.is_64_bit = struct.unpack_from("<H", data, optional)[0] == 0x20B
        self.timestamp = struct.unpack_from("<I", data, header + 8)[0]
        self.subsystem, self.dll_flags = struct.unpack_from("<HH", data, optional + 68)
        directories = struct.unpack_from("<I", data, optional + 108)[0]
        self.directories = [struct.unpack_from("<II", data, optional + 112 + 8 * i) for i in range(directories)]
        self.sections = []
        for i in range(count):
            at = optional + optional_size + 40 * i
            size, address, raw_size, raw = struct.unpack_from("<IIII", data, at + 8)
            self.sections.append((address, max(size, raw_size), raw))

    def offset(self, address):
        for start, size, raw in self.sections:
            if start <= address < start + size:
                return address - start + raw
        raise ValueError(f"address {address:#x} lies in no section")

    def text(self, address):
        at = self.offset(address)
        return self.data[at:self.data.index(b"\0", at)].decode("ascii")

    def imports(self):
        names = []
        if not self.directories[1][0]:
            return names
        at = self.offset(self.directories[1][0])
        while True:
            name = struct.unpack_from("<I", self.data, at + 12)[0]
            if not name:
                return names
            names.append(self.text(name).lower())
            at += 20

    def exports(self):
        if not self.directories[0][0]:
            return []
        at = self.offset(self.directories[0][0])
        count, _, names = struct.unpack_from("<III", self.data, at + 24)
        table = self.offset(names)
        return [self.text(struct.unpack_from("<I", self.data, table + 4 * i)[0]) for i in range(count)]

    def resource_types(self):
        if not self.directories[2][0]:
            return set()
        at = self.offset(self.directories[2][0])
        named, numbered = struct.unpack_from("<HH", self.data, at + 12)
        return {struct.unpack_from("<I", self.data, at + 16 + 8 * (named + i))[0] for i in range(numbered)}


def findings(data, exports=None, manifest=False, subsystem=None):
    """What is wrong with the file, one sentence each."""
    pe = PeFile(data)
    found = []
    if not pe.is_64_bit or pe.machine != 0x8664:
        found.append("it is no 64-bit file")
    found += [f"it is not {name}" for flag, name in FLAGS.items() if not pe.dll_flags & flag]
    is_dll = bool(pe.file_flags & 0x2000)
    if not is_dll and not pe.dll_flags & TERMINAL_SERVER_AWARE:
        found.append("it is not tsaware")
    if pe.directories[5][1] == 0:
        found.append("it cannot be moved in memory: no relocations")
    if pe.timestamp:
        found.append("it carries a time stamp")
    found += [f"it imports {name}" for name in pe.imports() if name not in SYSTEM_LIBRARIES]
    if exports is not None and pe.exports() != exports:
        found.append(f"it exports {pe.exports()}")
    if manifest and RT_MANIFEST not in pe.resource_types():
        found.append("it has no manifest")
    if RT_VERSION not in pe.resource_types():
        found.append("it has no version block")
    if subsystem == "gui" and pe.subsystem != 2:
        found.append("it opens a console")
    found += [f"it names the folder {path.decode()}"
              for path in sorted(set(re.findall(rb"/(?:home|root|work|build|tmp|usr)/[\w./-]{3,}", data)))
              if not path.startswith(b"/usr/share/mingw")]
    return found


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n")[0])
    parser.add_argument("file")
    parser.add_argument("--export", action="append", dest="exports", help="a name that it exports, and no other")
    parser.add_argument("--manifest", action="store_true")
    parser.add_argument("--subsystem", choices=["gui"])
    arguments = parser.parse_args()
    with open(arguments.file, "rb") as file:
        found = findings(file.read(), arguments.exports, arguments.manifest, arguments.subsystem)
    for finding in found:
        print(f"{arguments.file}: {finding}")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
