#!/usr/bin/env python3
"""Reads the shortcuts that the journey LinuxReader.LeavesItsShortcuts left in its Wine prefix.

Knows the published layout of shell link files (MS-SHLLINK) and nothing of the shell that wrote them, and compares
target, working folder, icon file and icon index with what each shortcut must hold.
"""

import argparse
import os
import struct
import sys
import uuid
from dataclasses import dataclass
from pathlib import Path

LINK_CLASS = uuid.UUID("00021401-0000-0000-c000-000000000046")
HEADER_SIZE = 0x4C

HAS_ID_LIST = 0x01
HAS_LINK_INFO = 0x02
IS_UNICODE = 0x80
# The text fields, in the order in which they follow each other; each is there when its flag is set.
TEXT_FIELDS = {0x04: "description", 0x08: "relative_path", 0x10: "working_folder", 0x20: "arguments", 0x40: "icon_file"}

FILE_ENTRY = 0x30
# Where the wide name starts in its block, by the block's version and signature. Wine writes the block of version 3 with
# both left at zero.
LONG_NAME_BLOCKS = {(3, 0xBEEF0004): 20, (7, 0xBEEF0004): 38, (8, 0xBEEF0004): 42, (9, 0xBEEF0004): 46, (0, 0): 20}

TOOLS = {
    "Ledger Composer": "LedgerComposer64.exe",
    "Site Keeper": "SiteKeeper64.exe",
    "Sheet Writer": "SheetWriter64.exe",
    "Norm Keeper": "NormKeeper64.exe",
    "Assist Web Page": "Assist64.exe",
}
PLACES = {"plain": "C:\\NewServer\\Suite\\", "named": "C:\\NewServer\\Büro Иван\\"}


class BadLink(Exception):
    """The file does not follow the layout."""


@dataclass
class Link:
    """What a shell link file holds."""

    icon_index: int
    show_command: int
    id_list_path: str = ""
    local_path: str = ""
    description: str = ""
    relative_path: str = ""
    working_folder: str = ""
    arguments: str = ""
    icon_file: str = ""


class Bytes:
    """A block of bytes read from front to back; reading beyond its end is an error."""

    def __init__(self, data):
        self.data = data
        self.place = 0

    def take(self, count):
        piece = self.data[self.place : self.place + count]
        if len(piece) != count:
            raise BadLink(f"{count} bytes wanted at {self.place}, {len(piece)} there")
        self.place += count
        return piece

    def number(self, form):
        return struct.unpack("<" + form, self.take(struct.calcsize("<" + form)))[0]


def narrow_text(data, start):
    end = data.find(b"\0", start)
    if end < 0:
        raise BadLink("a text without an end")
    return data[start:end].decode("cp1252")


def wide_text(data, start):
    end = start
    while data[end : end + 2] != b"\0\0":
        if end + 2 > len(data):
            raise BadLink("a text without an end")
        end += 2
    return data[start:end].decode("utf-16-le")


def item_name(item):
    """The name of one element of the target's way from the desktop; empty for My Computer."""
    kind = item[0]
    if kind & 0xF0 == 0x20:
        return narrow_text(item, 1)
    if kind & 0xF0 != FILE_ENTRY:
        return ""
    # The last two bytes point, counted from the item's size field, at the block with the long name in wide letters.
    block = struct.unpack_from("<H", item, len(item) - 2)[0] - 2
    if 12 < block < len(item) - 8:
        _, version, signature = struct.unpack_from("<HHI", item, block)
        if (version, signature) in LONG_NAME_BLOCKS:
            return wide_text(item, block + LONG_NAME_BLOCKS[version, signature])
    return narrow_text(item, 12)


def read_id_list(data):
    items = Bytes(data)
    names = []
    while (size := items.number("H")) != 0:
        names.append(item_name(items.take(size - 2)))
    if items.place != len(data):
        raise BadLink("bytes after the end of the item list")
    drive, *folders = [name for name in names if name]
    return drive + "\\".join(folders)


def read_link_info(data):
    size, header_size, flags, _, base, _, suffix = struct.unpack_from("<7I", data)
    if size != len(data) or not flags & 1:
        raise BadLink("no local path in the link information")
    if header_size >= 0x24:
        wide_base, wide_suffix = struct.unpack_from("<2I", data, 0x1C)
        return wide_text(data, wide_base) + wide_text(data, wide_suffix)
    return narrow_text(data, base) + narrow_text(data, suffix)


def read_link(data):
    content = Bytes(data)
    if content.number("I") != HEADER_SIZE or uuid.UUID(bytes_le=content.take(16)) != LINK_CLASS:
        raise BadLink("not a shell link")
    flags = content.number("I")
    content.take(4 + 3 * 8 + 4)  # file attributes, three times, file size
    link = Link(icon_index=content.number("i"), show_command=content.number("I"))
    content.take(2 + 2 + 4 + 4)  # hot key, reserved
    if flags & HAS_ID_LIST:
        link.id_list_path = read_id_list(content.take(content.number("H")))
    if flags & HAS_LINK_INFO:
        size = content.number("I")
        link.local_path = read_link_info(struct.pack("<I", size) + content.take(size - 4))
    for flag, field in TEXT_FIELDS.items():
        if flags & flag:
            length = content.number("H")
            raw = content.take(length * 2) if flags & IS_UNICODE else content.take(length)
            text = raw.decode("utf-16-le" if flags & IS_UNICODE else "cp1252")
            # These texts have no terminator; Wine writes and counts one.
            setattr(link, field, text.removesuffix("\0"))
    return link


def narrowed(text):
    """How the narrow code page keeps a text: what it cannot say becomes a question mark."""
    return text.encode("cp1252", "replace").decode("cp1252")


def faults_of(link, application_folder, program):
    folder = application_folder + "Applications\\"
    target = folder + program
    wanted = {
        "icon_index": 0,
        "id_list_path": target,
        "working_folder": folder,
        "icon_file": target,
        "arguments": "",
        "description": "",
    }
    faults = [
        f"{field} is {getattr(link, field)!r}, not {value!r}"
        for field, value in wanted.items()
        if getattr(link, field) != value
    ]
    # The link information may be in narrow letters; the item list says the same in wide ones.
    if link.local_path not in (target, narrowed(target)):
        faults.append(f"local_path is {link.local_path!r}, not {target!r}")
    return faults


def check(folder):
    """All shortcuts of the journey; gives the number of faults."""
    count = 0
    for place, application_folder in PLACES.items():
        for start in ("desktop", "programs"):
            for name, program in TOOLS.items():
                path = folder / place / start / f"{name}.lnk"
                try:
                    faults = faults_of(read_link(path.read_bytes()), application_folder, program)
                except (BadLink, OSError, struct.error, UnicodeError) as error:
                    faults = [str(error)]
                for fault in faults:
                    print(f"{place}/{start}/{name}.lnk: {fault}")
                count += len(faults)
    return count


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--default-prefix", required=True, help="the prefix when SITEKEEPER_WINEPREFIX names none")
    arguments = parser.parse_args()
    prefix = Path(os.environ.get("SITEKEEPER_WINEPREFIX") or arguments.default_prefix)
    faults = check(prefix / "drive_c" / "SiteKeeper shortcuts")
    print(f"{2 * 2 * len(TOOLS)} shortcuts, {faults} faults")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
