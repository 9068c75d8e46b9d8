#!/usr/bin/env python3
"""Sees the check of shipped files fail: each flaw is put into a copy of a good file and must be named."""
import struct
import sys

from check_file import PeFile, findings


def changed(data, at, value, layout):
    copy = bytearray(data)
    struct.pack_into(layout, copy, at, value)
    return bytes(copy)


def wide(text):
    return text.encode("utf-16-le")


def main():
    with open(sys.argv[1], "rb") as file:
        data = file.read()
    header = struct.unpack_from("<I", data, 0x3C)[0]
    flags_at = header + 24 + 70
    flags = PeFile(data).dll_flags
    flaws = {
        "it is not high-entropy-va": changed(data, flags_at, flags & ~0x20, "<H"),
        "it is not dynamicbase": changed(data, flags_at, flags & ~0x40, "<H"),
        "it is not nxcompat": changed(data, flags_at, flags & ~0x100, "<H"),
        "it is not tsaware": changed(data, flags_at, flags & ~0x8000, "<H"),
        "it carries a time stamp": changed(data, header + 8, 1, "<I"),
        "it imports kernal32.dll": data.replace(b"KERNEL32.dll", b"KERNAL32.dll"),
        "it names the folder /home/me/site": data + b"/home/me/site",
        "its manifest does not ask for an administrator": data.replace(b'"requireAdministrator"', b'"asInvoker"           '),
        "its manifest does not take the common controls of version 6":
            data.replace(b"Common-Controls", b"Common_Controls"),
        "its manifest does not know several resolutions": data.replace(b"PerMonitorV2", b"PerMonitorV3"),
        "its version block lacks CompanyName": data.replace(wide("CompanyName"), wide("CompanyNome")),
        "its version block lacks ProductVersion": data.replace(wide("ProductVersion"), wide("ProductVersian")),
        "its version block has no fixed information": data.replace(b"\xbd\x04\xef\xfe", b"\xbd\x04\xef\xff"),
        "its version block does not name the language that it has": data.replace(wide("040904B0"), wide("040904B1")),
        "it opens a console": changed(data, header + 24 + 68, 3, "<H"),
    }
    failures = [f"not noticed: {flaw}" for flaw, copy in flaws.items()
                if flaw not in findings(copy, manifest=True, subsystem="gui")]
    failures += [f"found in a good file: {finding}" for finding in findings(data, manifest=True, subsystem="gui")]
    print("\n".join(failures))
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
