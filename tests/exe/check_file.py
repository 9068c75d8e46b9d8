#!/usr/bin/env python3
"""Reads a 64-bit Windows file and says what is wrong with it as a file to ship: hardening flags, imported libraries,
manifest, version block, exports, paths of the build machine. Prints one line for each finding; exit code 1 when there is
one.

The layouts are the published ones of PE/COFF files, application manifests and VS_VERSIONINFO."""
import argparse
import os
import re
import struct
import sys
import xml.etree.ElementTree as xml

# Windows' own libraries. Anything else would have to be shipped beside the program.
SYSTEM_LIBRARIES = {"advapi32.dll", "comctl32.dll", "gdi32.dll", "kernel32.dll", "msvcrt.dll", "ole32.dll",
                    "shell32.dll", "user32.dll"}
# DllCharacteristics of the optional header.
FLAGS = {0x0020: "high-entropy-va", 0x0040: "dynamicbase", 0x0100: "nxcompat"}
TERMINAL_SERVER_AWARE = 0x8000
RT_MANIFEST = 24
RT_VERSION = 16
# What the file's properties show of a version block.
VERSION_TEXTS = ("CompanyName", "FileDescription", "FileVersion", "InternalName", "LegalCopyright", "OriginalFilename",
                 "ProductName", "ProductVersion")


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

    def resource_entries(self, at):
        """The numbers and places of a resource folder's entries; the place of a folder has the highest bit set."""
        named, numbered = struct.unpack_from("<HH", self.data, at + 12)
        return [struct.unpack_from("<II", self.data, at + 16 + 8 * i) for i in range(named + numbered)]

    def resource(self, wanted):
        """The first resource of a type; nothing when there is none."""
        if not self.directories[2][0]:
            return None
        root = self.offset(self.directories[2][0])
        place = dict(self.resource_entries(root)).get(wanted)
        if place is None:
            return None
        while place & 0x80000000:
            place = self.resource_entries(root + (place & 0x7FFFFFFF))[0][1]
        address, size = struct.unpack_from("<II", self.data, root + place)
        at = self.offset(address)
        return self.data[at:at + size]


def manifest_findings(manifest):
    try:
        root = xml.fromstring(manifest)
    except xml.ParseError as error:
        return [f"its manifest is no XML: {error}"]
    found = []
    elements = {element.tag.rpartition("}")[2]: element for element in root.iter()}
    level = elements.get("requestedExecutionLevel")
    if level is None or level.get("level") != "requireAdministrator" or level.get("uiAccess") != "false":
        found.append("its manifest does not ask for an administrator")
    names = {element.get("name"): element.get("version") for element in root.iter() if element.get("name")}
    if names.get("Microsoft.Windows.Common-Controls") != "6.0.0.0":
        found.append("its manifest does not take the common controls of version 6")
    if "PerMonitorV2" not in (elements["dpiAwareness"].text if "dpiAwareness" in elements else ""):
        found.append("its manifest does not know several resolutions")
    return found


def version_nodes(block, at=0):
    """Names, values and children of the nodes of a version block, one behind the other."""
    nodes = []
    while at + 6 <= len(block):
        length, value_length, kind = struct.unpack_from("<HHH", block, at)
        if length < 6:
            break
        end = block.index(b"\0\0", at + 6)
        end += (end - at) % 2
        name = block[at + 6:end].decode("utf-16-le")
        value_at = at + (end + 2 - at + 3) // 4 * 4
        value_size = value_length * (2 if kind else 1)
        value = block[value_at:value_at + value_size]
        children_at = at + (value_at + value_size - at + 3) // 4 * 4
        nodes.append((name, value, version_nodes(block[:at + length], children_at)))
        at += (length + 3) // 4 * 4
    return nodes


def version_findings(block, file_name):
    roots = version_nodes(block)
    if not roots or len(roots[0][1]) != 52 or struct.unpack_from("<I", roots[0][1])[0] != 0xFEEF04BD:
        return ["its version block has no fixed information"]
    high, low = struct.unpack_from("<II", roots[0][1], 8)
    number = f"{high >> 16}.{high & 0xFFFF}.{low >> 16}.{low & 0xFFFF}"
    parts = {name: children for name, _, children in roots[0][2]}
    languages = {name.lower(): children for name, _, children in parts.get("StringFileInfo", [])}
    named = [f"{struct.unpack_from('<HH', value)[0]:04x}{struct.unpack_from('<HH', value)[1]:04x}"
             for name, value, _ in parts.get("VarFileInfo", []) if name == "Translation" and len(value) >= 4]
    if len(named) != 1 or named[0] not in languages:
        return ["its version block does not name the language that it has"]
    texts = {name: value.decode("utf-16-le").rstrip("\0") for name, value, _ in languages[named[0]]}
    found = [f"its version block lacks {name}" for name in VERSION_TEXTS if not texts.get(name)]
    if texts.get("FileVersion") != number:
        found.append(f"its version is {number} in numbers and {texts.get('FileVersion')} in words")
    if file_name and texts.get("OriginalFilename") != file_name:
        found.append(f"its version block calls it {texts.get('OriginalFilename')}")
    return found


def findings(data, exports=None, manifest=False, subsystem=None, file_name=None):
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
    if manifest:
        content = pe.resource(RT_MANIFEST)
        found += ["it has no manifest"] if content is None else manifest_findings(content)
    block = pe.resource(RT_VERSION)
    found += ["it has no version block"] if block is None else version_findings(block, file_name)
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
        found = findings(file.read(), arguments.exports, arguments.manifest, arguments.subsystem,
                         os.path.basename(arguments.file))
    for finding in found:
        print(f"{arguments.file}: {finding}")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
