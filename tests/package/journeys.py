#!/usr/bin/env python3
"""The package's journeys on a machine of its own: installed, used, upgraded, removed; registry and files compared as a
whole before and after.

journeys.py JOURNEY --build FOLDER --package FILE --newer FILE      (journeys.py --list names them)

The prefix that $SITEKEEPER_WINEPREFIX names must have its keeper; every journey leaves it as it was."""
import argparse
import re
import shutil
import sys
import time

import machine as pc
from machine import expect, expect_same

FOLDER = "C:\\Program Files\\ORIVEL\\LX Plus 2023\\"
PLACE = "Program Files/ORIVEL/LX Plus 2023"
SETUP_KEY = pc.SUITE_KEY + r"\SiteKeeperSetup"
LIBRARY = "Program Files/Common Files/ORIVEL/ORSWDialogsOEM64.dll"
LINK_FOLDER = "ORIVEL LX Plus 2023"
DESKTOP_LINK = f"{pc.DESKTOP}/{LINK_FOLDER}/Site Keeper.lnk"
START_LINK = f"{pc.PROGRAMS}/ORIVEL/{LINK_FOLDER}/Site Keeper.lnk"
SUCCESS, REFUSED = 0, 1603
# The installer's own records of a product, by which it finds it again.
RECORDS = re.compile(r"[+-] (HKEY_LOCAL_MACHINE\\Software\\(Classes\\Installer|Microsoft\\Windows\\CurrentVersion\\"
                     r"(Installer|Uninstall))\\|windows/Installer/)")
# What the program itself keeps of its user: it stays with the user.
USER_DATA = re.compile(r"[+] HKEY_USERS\\[^\\]+\\Software\\ORIVEL(\\|$)")


def registered(machine):
    """The versions of Site Keeper that the list of installed programs has."""
    entries = [entry for entry in machine.registry() if entry.startswith(pc.UNINSTALL_KEY)]
    keys = [entry.partition("\t")[0] for entry in entries if entry.endswith('"DisplayName"="Site Keeper"')]
    return [machine.value("DisplayVersion", key) for key in keys]


def apart(changes, pattern):
    """What of the changes is of a kind, and what is left."""
    return [c for c in changes if pattern.match(c)], [c for c in changes if not pattern.match(c)]


def suite_value(name, text):
    escaped = text.replace("\\", "\\\\")
    return f'+ {pc.SUITE_KEY}\t"{name}"="{escaped}"'


def mark(name, text="1"):
    escaped = text.replace("\\", "\\\\")
    return f'+ {SETUP_KEY}\t"{name}"="{escaped}"'


def file_names(changes):
    """The same without sizes and sums."""
    return [re.sub(r" \d+ [0-9a-f]+$", "", change) for change in changes]


def is_installed(machine, build, place):
    for name, folder in (("SiteKeeper64.exe", f"{place}/Applications"), ("SiteKeeper.chm", f"{place}/Help")):
        if (machine.drive / folder / name).read_bytes() != (build / name).read_bytes():
            raise AssertionError(f"{folder}/{name} is not the file that was built")


# --- the journeys --------------------------------------------------------------------------------------------------

def fresh_machine(machine, given):
    """On a machine without the suite: everything lands where the program looks; the removal leaves the users' own."""
    before = machine.state()
    expect(machine.install(given.package, DESKTOPSHORTCUT="1"), SUCCESS, "installing")
    records, rest = apart(pc.difference(before, machine.state()), RECORDS)
    expect("\n".join(file_names(rest)), "\n".join(sorted([
        "+ HKEY_LOCAL_MACHINE\\Software\\ORIVEL", "+ HKEY_LOCAL_MACHINE\\Software\\ORIVEL\\LX Plus", f"+ {pc.SUITE_KEY}",
        suite_value("LocalAppPath", FOLDER), suite_value("NetworkAppPath", FOLDER),
        suite_value("DatafilesPath", FOLDER + "Datafiles\\"),
        f"+ {SETUP_KEY}", mark("Folder", FOLDER), mark("Version", given.version), mark("LocalAppPath"), mark("NetworkAppPath"), mark("DatafilesPath"),
        mark("DatafilesFolder"), mark("Library"), mark("DesktopShortcut"), mark("StartMenuShortcut"),
        "+ Program Files/ORIVEL/", f"+ {PLACE}/", f"+ {PLACE}/Datafiles/",
        f"+ {PLACE}/Applications/", f"+ {PLACE}/Applications/SiteKeeper64.exe",
        f"+ {PLACE}/Help/", f"+ {PLACE}/Help/SiteKeeper.chm",
        "+ Program Files/Common Files/ORIVEL/", f"+ {LIBRARY}",
        f"+ {pc.DESKTOP}/{LINK_FOLDER}/", f"+ {DESKTOP_LINK}",
        f"+ {pc.PROGRAMS}/ORIVEL/", f"+ {pc.PROGRAMS}/ORIVEL/{LINK_FOLDER}/", f"+ {START_LINK}",
    ])), "what the installation adds")
    is_installed(machine, given.build, PLACE)
    expect(registered(machine), [given.version], "the installed versions")
    expect(bool(records), True, "the installer has records")

    expect(machine.use_program(FOLDER + "Applications\\", "ok"), [FOLDER, FOLDER, FOLDER + "Datafiles\\"],
           "the folders that the program shows")
    users_list = machine.drive / PLACE / "Datafiles/UserDatafile.ini"
    users_list.write_bytes(b"[SiteKeeper]\r\nAnna=Anna\r\n")
    expect(machine.remove(given.package), SUCCESS, "removing")
    own, rest = apart(pc.difference(before, machine.state()), USER_DATA)
    expect("\n".join(file_names(rest)), "\n".join(sorted([
        "+ Program Files/ORIVEL/", f"+ {PLACE}/", f"+ {PLACE}/Datafiles/", f"+ {PLACE}/Datafiles/UserDatafile.ini"])),
        "what the removal leaves")
    expect(users_list.read_bytes(), b"[SiteKeeper]\r\nAnna=Anna\r\n", "the list of users")
    expect(bool(own), True, "the program has kept something of its user")
    shutil.rmtree(machine.drive / "Program Files/ORIVEL")
    machine.must("reg", "delete", r"HKCU\Software\ORIVEL", "/f")
    expect_same(before, machine.state(), "what is left")


def lay_out_suite(machine):
    """A machine on which the suite is: its values as its installer wrote them, its lists, its library, its shortcuts,
    and files of others in the folders that the package uses."""
    machine.import_registry(
        f"[{pc.SUITE_KEY}]\r\n" + r'"LocalAppPath"="C:\\Suite"' + "\r\n" + r'"NetworkAppPath"="\\\\server\\Suite\\"' +
        "\r\n" + r'"DatafilesPath"="C:\\Suite\\Lists\\"' + "\r\n" + r'"ProductUpdate"="2"' + "\r\n"
        f"[{pc.SUITE_KEY}\\Installation]\r\n" + r'"Application Path"="C:\\Suite"' + "\r\n")
    for name, content in (("Suite/Lists/UserDatafile.ini", b"[SiteKeeper]\r\nroot=root\r\n"),
                          ("Suite/Applications/LedgerComposer64.exe", b"somebody else's"),
                          ("Suite/Help/Ledger Composer.chm", b"somebody else's"),
                          ("Suite/Help/notes.txt", b"an administrator's"),
                          (LIBRARY, (machine.build / "ORSWDialogsOEM64.dll").read_bytes() + b"the suite's own build"),
                          (DESKTOP_LINK, b"the suite's own shortcut")):
        file = machine.drive / name
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_bytes(content)


def clear_suite(machine):
    machine.must("reg", "delete", r"HKLM\Software\ORIVEL", "/f")
    for name in ("Suite", "Program Files/Common Files/ORIVEL", f"{pc.DESKTOP}/{LINK_FOLDER}"):
        shutil.rmtree(machine.drive / name)


def existing_suite(machine, given):
    """On a machine with the suite: its values decide, whatever the command line says, and everything of it is there
    unchanged after installing, upgrading and removing."""
    empty = machine.state()
    lay_out_suite(machine)
    before = machine.state()
    expect(machine.install(given.package, PROGRAMFOLDER="C:\\Elsewhere", APPLICATIONFOLDER="C:\\Elsewhere",
                           DATAFILESFOLDER="C:\\Elsewhere", DESKTOPSHORTCUT="1"), SUCCESS, "installing")
    added = [f"+ {SETUP_KEY}", mark("Folder", "C:\\Suite\\"), mark("StartMenuShortcut"),
             "+ Suite/Applications/SiteKeeper64.exe", "+ Suite/Help/SiteKeeper.chm",
             f"+ {pc.PROGRAMS}/ORIVEL/", f"+ {pc.PROGRAMS}/ORIVEL/{LINK_FOLDER}/", f"+ {START_LINK}"]
    _, rest = apart(pc.difference(before, machine.state()), RECORDS)
    expect("\n".join(file_names(rest)), "\n".join(sorted([*added, mark("Version", given.version)])),
           "what the installation adds")
    is_installed(machine, given.build, "Suite")
    expect(machine.use_program("C:\\Suite\\Applications\\", "close"),
           ["C:\\Suite\\", "\\\\server\\Suite\\", "C:\\Suite\\Lists\\"], "the folders that the program shows")

    expect(machine.install(given.newer), SUCCESS, "upgrading")
    _, rest = apart(pc.difference(before, machine.state()), RECORDS)
    _, rest = apart(rest, USER_DATA)
    expect("\n".join(file_names(rest)), "\n".join(sorted([*added, mark("Version", given.newer_version)])),
           "what the upgrade leaves")
    expect(registered(machine), [given.newer_version], "the installed versions")

    expect(machine.remove(given.newer), SUCCESS, "removing")
    machine.must("reg", "delete", r"HKCU\Software\ORIVEL", "/f")
    expect_same(before, machine.state(), "what the removal changes")
    clear_suite(machine)
    expect_same(empty, machine.state(), "what the test leaves")


def upgrade(machine, given):
    """A newer version takes over what the administrator has made of the older one; an older one is refused."""
    before = machine.state()
    expect(machine.install(given.package, PROGRAMFOLDER="C:\\Suite Tools", APPLICATIONFOLDER="\\\\server\\Suite",
                           DATAFILESFOLDER="D:\\Lists", DESKTOPSHORTCUT="1"), SUCCESS, "installing")
    expect([machine.value(name) for name in ("LocalAppPath", "NetworkAppPath", "DatafilesPath")],
           ["C:\\Suite Tools\\", "\\\\server\\Suite\\", "D:\\Lists\\"], "the values as given")
    expect((machine.drive / "Suite Tools/Datafiles").exists(), False, "a folder for lists that nobody keeps there")

    # The administrator moves the applications, and has no use for the entry in the Start menu.
    machine.must("reg", "add", pc.SUITE_KEY, "/v", "NetworkAppPath", "/d", "\\\\newserver\\Suite\\", "/f")
    (machine.drive / START_LINK).unlink()
    expect(machine.install(given.newer), SUCCESS, "upgrading")
    expect(registered(machine), [given.newer_version], "the installed versions")
    expect([machine.value(name) for name in ("LocalAppPath", "NetworkAppPath", "DatafilesPath")],
           ["C:\\Suite Tools\\", "\\\\newserver\\Suite\\", "D:\\Lists\\"], "the values after the upgrade")
    expect([(machine.drive / link).exists() for link in (DESKTOP_LINK, START_LINK)], [True, False], "the shortcuts")
    is_installed(machine, given.build, "Suite Tools")

    upgraded = machine.state()
    expect(machine.install(given.package), REFUSED, "installing the older version")
    expect("WIX_DOWNGRADE_DETECTED = " in machine.log(), True, "the log names the reason")
    expect_same(upgraded, machine.state(), "what the refused version changes")

    expect(machine.install(given.newer), SUCCESS, "installing the same version again")
    _, rest = apart(pc.difference(upgraded, machine.state()), RECORDS)
    expect("\n".join(rest), "", "what the same version changes")
    expect(machine.remove(given.newer), SUCCESS, "removing")
    expect_same(before, machine.state(), "what is left")


def moved(machine, given):
    """The suite moves away after the installation: an upgrade follows it, a removal takes only what the package brought."""
    before = machine.state()
    expect(machine.install(given.package, PROGRAMFOLDER="C:\\Suite Tools"), SUCCESS, "installing")
    # The suite's own installer brought it there, with a help file that the package did not bring.
    machine.must("reg", "add", pc.SUITE_KEY, "/v", "LocalAppPath", "/d", "C:\\Moved\\", "/f")
    help_file = machine.drive / "Moved/Help/SiteKeeper.chm"
    help_file.parent.mkdir(parents=True)
    help_file.write_bytes(b"the suite's own")
    expect(machine.remove(given.package), SUCCESS, "removing")
    expect(help_file.read_bytes(), b"the suite's own", "the help file of the suite")
    shutil.rmtree(machine.drive / "Moved")
    expect_same(before, machine.state(), "what the removal leaves")

    expect(machine.install(given.package, PROGRAMFOLDER="C:\\Suite Tools"), SUCCESS, "installing again")
    machine.must("reg", "add", pc.SUITE_KEY, "/v", "LocalAppPath", "/d", "C:\\Moved\\", "/f")
    expect(machine.install(given.newer), SUCCESS, "upgrading")
    is_installed(machine, given.build, "Moved")
    expect((machine.drive / "Suite Tools").exists(), False, "the older version's folder")
    expect(machine.value("LocalAppPath"), "C:\\Moved\\", "the program folder")
    expect(machine.remove(given.newer), SUCCESS, "removing the newer version")
    expect_same(before, machine.state(), "what is left")


def repair(machine, given):
    """Without the Start menu's shortcut; a repair brings a deleted file back, and changes no value."""
    before = machine.state()
    expect(machine.install(given.package, STARTMENUSHORTCUT="0"), SUCCESS, "installing")
    expect([(machine.drive / link).exists() for link in (DESKTOP_LINK, START_LINK)], [False, False], "the shortcuts")
    machine.must("reg", "add", pc.SUITE_KEY, "/v", "DatafilesPath", "/d", "D:\\Lists\\", "/f")
    installed = machine.state()
    (machine.drive / PLACE / "Help/SiteKeeper.chm").unlink()
    # What msiexec /fomus means; Wine's does not know the short form.
    expect(machine.msiexec("/i", given.product_code, "REINSTALL=ALL", "REINSTALLMODE=omus"), SUCCESS, "repairing")
    _, rest = apart(pc.difference(installed, machine.state()), RECORDS)
    expect("\n".join(rest), "", "what the repair changes")
    expect(machine.remove(given.package), SUCCESS, "removing")
    expect_same(before, machine.state(), "what is left")


JOURNEYS = {function.__name__: function for function in (fresh_machine, existing_suite, upgrade, moved, repair)}


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n")[0])
    parser.add_argument("journey", nargs="?", choices=sorted(JOURNEYS))
    parser.add_argument("--list", action="store_true")
    parser.add_argument("--build", type=pc.pathlib.Path)
    parser.add_argument("--package", type=pc.pathlib.Path)
    parser.add_argument("--newer", type=pc.pathlib.Path)
    given = parser.parse_args()
    if given.list:
        print("\n".join(JOURNEYS))
        return 0
    for name in ("package", "newer"):
        file = getattr(given, name).resolve()
        setattr(given, name, file)
        printed = pc.unix_tool("msiinfo", "export", str(file), "Property")
        read = dict(line.split("\t", 1) for line in printed.splitlines() if "\t" in line)
        if name == "package":
            given.version, given.product_code = read["ProductVersion"], read["ProductCode"]
        else:
            given.newer_version = read["ProductVersion"]
    start = time.monotonic()
    machine = pc.Machine(given.build)
    try:
        JOURNEYS[given.journey](machine, given)
    except AssertionError as error:
        print(f"{given.journey}: {error}")
        return 1
    print(f"{given.journey}: done in {pc.seconds_since(start)}")
    return 0


if __name__ == "__main__":
    sys.exit(main())
