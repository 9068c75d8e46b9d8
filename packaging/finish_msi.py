#!/usr/bin/env python3
"""Completes the package that wixl makes: conditions of components, the search for shortcuts and the library, the folders
of an installation worked out from what is stored already, versions of files, short names, and the identity and dates that
make two packages of the same content the same bytes.

finish_msi.py PACKAGE.msi --files FOLDER --package-code GUID --epoch SECONDS"""
import argparse
import datetime
import pathlib
import struct
import subprocess
import sys
import tempfile

FILES = ("SiteKeeper64.exe", "ORSWDialogsOEM64.dll", "SiteKeeper.chm")

# Installed for the first time or again, but a component that is the package's own is always so: a removal must reach it.
CONDITIONS = {
    "LocalAppPath": "OWNLOCALAPPPATH OR NOT STOREDLOCALAPPPATH",
    "NetworkAppPath": "OWNNETWORKAPPPATH OR NOT STOREDNETWORKAPPPATH",
    "DatafilesPath": "OWNDATAFILESPATH OR NOT STOREDDATAFILESPATH",
    # Only the folder that nobody named; another may lie on a server.
    "DatafilesFolder": "OWNDATAFILESFOLDER OR NOT (DATAFILESFOLDER OR STOREDDATAFILESPATH OR APPLICATIONFOLDER OR "
                       "STOREDNETWORKAPPPATH)",
    "Library": "OWNLIBRARY OR NOT FOUNDLIBRARY",
    # One that was taken away since stays away; an answer on the command line is followed.
    "DesktopShortcut": '(Installed AND OWNDESKTOPSHORTCUT) OR (OWNDESKTOPSHORTCUT AND FOUNDDESKTOPSHORTCUT AND '
                       'DESKTOPSHORTCUT <> "0") OR (DESKTOPSHORTCUT = "1" AND NOT FOUNDDESKTOPSHORTCUT)',
    "StartMenuShortcut": '(Installed AND OWNSTARTMENUSHORTCUT) OR (OWNSTARTMENUSHORTCUT AND FOUNDSTARTMENUSHORTCUT AND '
                         'STARTMENUSHORTCUT <> "0") OR (STARTMENUSHORTCUT = "1" AND NOT FOUNDSTARTMENUSHORTCUT)',
}

# Property, its text, when. In this order, between the searches and the sizes: what is known then decides on components.
EARLY = (
    ("PROGRAMFOLDER", "[OWNFOLDER]", "Installed AND OWNFOLDER"),
    ("PROGRAMFOLDER", "[OWNFOLDER]", "NOT Installed AND NOT PROGRAMFOLDER AND OWNFOLDER"),
    # A value that is no plain text comes with a mark in front, and names no folder.
    ("PROGRAMFOLDER", "[STOREDLOCALAPPPATH]",
     'NOT Installed AND STOREDLOCALAPPPATH AND NOT (STOREDLOCALAPPPATH << "#")'),
    ("STARTMENUSHORTCUT", "1", "NOT Installed AND NOT STARTMENUSHORTCUT AND NOT WIX_UPGRADE_DETECTED"),
    ("COMMONDESKTOP", "[DesktopFolder]", "NOT ALLUSERSDESKTOP"),
    ("COMMONDESKTOP", "[ALLUSERSDESKTOP]", "ALLUSERSDESKTOP"),
    ("COMMONPROGRAMS", "[ProgramMenuFolder]", "NOT ALLUSERSPROGRAMS"),
    ("COMMONPROGRAMS", "[ALLUSERSPROGRAMS]", "ALLUSERSPROGRAMS"),
)
# Once the folders are known: the three values, by the rules by which the program fills what is missing.
LATE = (
    ("ARPINSTALLLOCATION", "[PROGRAMFOLDER]", ""),
    ("LocalAppPathText", "[PROGRAMFOLDER]", ""),
    ("LocalAppPathText", "[STOREDLOCALAPPPATH]", "STOREDLOCALAPPPATH"),
    ("APPLICATIONFOLDER", "[STOREDNETWORKAPPPATH]", "STOREDNETWORKAPPPATH"),
    ("APPLICATIONFOLDER", "[PROGRAMFOLDER]", "NOT APPLICATIONFOLDER"),
    ("APPLICATIONFOLDER", "[APPLICATIONFOLDER]\\", 'NOT (APPLICATIONFOLDER >> "\\")'),
    ("NetworkAppPathText", "[APPLICATIONFOLDER]", ""),
    ("NetworkAppPathText", "[STOREDNETWORKAPPPATH]", "STOREDNETWORKAPPPATH"),
    ("DATAFILESFOLDER", "[APPLICATIONFOLDER]Datafiles\\", "NOT DATAFILESFOLDER"),
    ("DATAFILESFOLDER", "[DATAFILESFOLDER]\\", 'NOT (DATAFILESFOLDER >> "\\")'),
    ("DatafilesPathText", "[DATAFILESFOLDER]", ""),
    ("DatafilesPathText", "[STOREDDATAFILESPATH]", "STOREDDATAFILESPATH"),
)
EARLY_SEQUENCE = 60   # AppSearch is 50, LaunchConditions 100
LATE_SEQUENCE = 1010  # CostFinalize is 1000

# A file that may be there already: its property, signature, name, parent signature, folder.
SEARCHES = (
    ("FOUNDLIBRARY", "FoundLibrary", "ORSWDI~1.DLL|ORSWDialogsOEM64.dll", "", "[CommonFiles64Folder]ORIVEL\\"),
    ("FOUNDDESKTOPSHORTCUT", "FoundDesktopShortcut", "SITEKE~1.LNK|Site Keeper.lnk", "DesktopFound",
     "ORIVEL LX Plus 2023"),
    ("FOUNDSTARTMENUSHORTCUT", "FoundStartMenuShortcut", "SITEKE~1.LNK|Site Keeper.lnk", "ProgramsFound",
     "ORIVEL\\ORIVEL LX Plus 2023"),
)
SHELL_FOLDERS = "Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\Shell Folders"
LOCAL_MACHINE = 2
DIRECTORY_64_BIT = 0 + 16

# What is removed when it is empty, the inner before the outer, with the component that it goes with.
FOLDERS = (
    ("Program", "APPLICATIONSSUBFOLDER"), ("Help", "HELPSUBFOLDER"), ("DatafilesFolder", "DATAFILESSUBFOLDER"),
    ("Setup", "PROGRAMFOLDER"), ("Version", "MAKERFOLDER"), ("Library", "LIBRARYFOLDER"),
    ("DesktopShortcut", "DESKTOPSUITEFOLDER"), ("StartMenuShortcut", "STARTMENUSUITEFOLDER"),
    ("StartMenuShortcut", "STARTMENUMAKERFOLDER"),
)
ON_REMOVAL = 2

# Names as the system keeps them beside each other, the short one first.
SHORT_NAMES = {
    "SiteKeeper64.exe": "SITEKE~1.EXE", "SiteKeeper.chm": "SITEKE~1.CHM", "ORSWDialogsOEM64.dll": "ORSWDI~1.DLL",
    "LX Plus 2023": "LXPLUS~1", "Applications": "APPLIC~1", "Datafiles": "DATAFI~1", "ORIVEL LX Plus 2023": "ORIVEL~1",
    "Site Keeper": "SITEKE~1",
}

# Given on the command line, or handed from the user's side of an installation to the system's.
PUBLIC = ("PROGRAMFOLDER", "APPLICATIONFOLDER", "DATAFILESFOLDER", "DESKTOPSHORTCUT", "STARTMENUSHORTCUT",
          "STOREDLOCALAPPPATH", "STOREDNETWORKAPPPATH", "STOREDDATAFILESPATH", "OWNFOLDER", "OWNLOCALAPPPATH",
          "OWNNETWORKAPPPATH", "OWNDATAFILESPATH", "OWNDATAFILESFOLDER", "OWNLIBRARY", "OWNDESKTOPSHORTCUT",
          "OWNSTARTMENUSHORTCUT", "ALLUSERSDESKTOP", "ALLUSERSPROGRAMS", "FOUNDLIBRARY", "FOUNDDESKTOPSHORTCUT",
          "FOUNDSTARTMENUSHORTCUT", "WIX_DOWNGRADE_DETECTED", "WIX_UPGRADE_DETECTED")


def file_version(data):
    """The version in the fixed information of a file's version block, "1.2.3.4"; nothing without one."""
    at = data.find(struct.pack("<II", 0xFEEF04BD, 0x00010000))
    if at < 0:
        return None
    high, low = struct.unpack_from("<II", data, at + 8)
    return f"{high >> 16}.{high & 0xFFFF}.{low >> 16}.{low & 0xFFFF}"


def text(value):
    if "'" in value:
        raise ValueError(f"no apostrophes in the package's tables: {value}")
    return f"'{value}'"


def insert(table, row):
    columns = [f"`{name}`" for name, value in row.items() if value != ""]
    values = [text(value) if isinstance(value, str) else str(value) for value in row.values() if value != ""]
    return f"INSERT INTO `{table}` ({', '.join(columns)}) VALUES ({', '.join(values)})"


def update(table, key, name, column, value):
    return f"UPDATE `{table}` SET `{column}` = {text(value)} WHERE `{key}` = {text(name)}"


def conditions():
    return [update("Component", "Component", name, "Condition", value) for name, value in CONDITIONS.items()]


def set_properties():
    """The custom actions that set properties (type 51), in both sequences where the user's side needs them too."""
    queries = []
    for first, rows in ((EARLY_SEQUENCE, EARLY), (LATE_SEQUENCE, LATE)):
        for place, (name, value, condition) in enumerate(rows, first):
            action = f"Set{place}_{name}"
            queries.append(insert("CustomAction", {"Action": action, "Type": 51, "Source": name, "Target": value}))
            row = {"Action": action, "Condition": condition, "Sequence": place}
            queries.append(insert("InstallExecuteSequence", row))
            if first == EARLY_SEQUENCE:
                queries.append(insert("InstallUISequence", row))
    return queries


def searches():
    queries = ["CREATE TABLE `DrLocator` (`Signature_` CHAR(72) NOT NULL, `Parent` CHAR(72), `Path` CHAR(255), "
               "`Depth` INT PRIMARY KEY `Signature_`, `Parent`, `Path`)"]
    for signature, value in (("DesktopFound", "Common Desktop"), ("ProgramsFound", "Common Programs")):
        queries.append(insert("RegLocator", {"Signature_": signature, "Root": LOCAL_MACHINE, "Key": SHELL_FOLDERS,
                                             "Name": value, "Type": DIRECTORY_64_BIT}))
    for name, signature, file, parent, folder in SEARCHES:
        queries += [insert("AppSearch", {"Property": name, "Signature_": signature}),
                    insert("Signature", {"Signature": signature, "FileName": file}),
                    insert("DrLocator", {"Signature_": signature, "Parent": parent, "Path": folder, "Depth": 0})]
    return queries


def folders():
    return [insert("RemoveFile", {"FileKey": f"Remove_{folder}", "Component_": component, "DirProperty": folder,
                                  "InstallMode": ON_REMOVAL})
            for component, folder in FOLDERS]


def names_and_versions(folder):
    queries = []
    for name in FILES:
        queries.append(update("File", "File", name, "FileName", f"{SHORT_NAMES[name]}|{name}"))
        version = file_version((folder / name).read_bytes())
        if version is not None:
            # A file with a version is compared by it, and must not have a hash.
            queries += [update("File", "File", name, "Version", version),
                        update("File", "File", name, "Language", "1033"),
                        f"DELETE FROM `MsiFileHash` WHERE `File_` = {text(name)}"]
    for name in ("LX Plus 2023", "Applications", "Datafiles", "ORIVEL LX Plus 2023"):
        queries.append(update("Directory", "DefaultDir", name, "DefaultDir", f"{SHORT_NAMES[name]}|{name}"))
    queries.append(update("Shortcut", "Name", "Site Keeper", "Name", f"{SHORT_NAMES['Site Keeper']}|Site Keeper"))
    return queries


def identity():
    return [update("Property", "Property", "SecureCustomProperties", "Value", ";".join(sorted(PUBLIC))),
            # Inside the transaction: a failing upgrade leaves the version that was there.
            "UPDATE `InstallExecuteSequence` SET `Sequence` = 1501 WHERE `Action` = 'RemoveExistingProducts'"]


def summary(msi, package_code, epoch):
    """Writes the package's own code and dates into its summary; the dates are local time to the tools."""
    exported = subprocess.run(["msiinfo", "export", msi, "_SummaryInformation"], check=True, capture_output=True).stdout
    moment = datetime.datetime.fromtimestamp(epoch, datetime.timezone.utc).strftime("%Y/%m/%d %H:%M:%S").encode()
    new = {b"9": b"{" + package_code.upper().encode() + b"}", b"12": moment, b"13": moment}
    lines = []
    for line in exported.split(b"\r\n"):
        key = line.partition(b"\t")[0]
        lines.append(key + b"\t" + new[key] if key in new else line)
    with tempfile.TemporaryDirectory() as folder:
        table = pathlib.Path(folder) / "_SummaryInformation.idt"
        table.write_bytes(b"\r\n".join(lines))
        subprocess.run(["msibuild", msi, "-i", str(table)], check=True)


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n")[0])
    parser.add_argument("msi")
    parser.add_argument("--files", required=True, type=pathlib.Path)
    parser.add_argument("--package-code", required=True)
    parser.add_argument("--epoch", required=True, type=int)
    given = parser.parse_args()
    queries = (conditions() + set_properties() + searches() + folders() +
               names_and_versions(given.files) + identity())
    subprocess.run(["msibuild", given.msi, "-q", *queries], check=True)
    summary(given.msi, given.package_code, given.epoch)


if __name__ == "__main__":
    sys.exit(main())
