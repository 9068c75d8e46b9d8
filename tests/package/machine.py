"""A machine for the package's journeys: a Wine prefix, its registry and its files, taken as a whole before and after."""
import difflib
import hashlib
import os
import pathlib
import re
import subprocess
import time

TREE = pathlib.Path(__file__).resolve().parents[2]
SUITE_KEY = r"HKEY_LOCAL_MACHINE\Software\ORIVEL\LX Plus\2023"
UNINSTALL_KEY = r"HKEY_LOCAL_MACHINE\Software\Microsoft\Windows\CurrentVersion\Uninstall"
DESKTOP = "users/Public/Desktop"
PROGRAMS = "ProgramData/Microsoft/Windows/Start Menu/Programs"

# Lives as long as Wine's server does, and grows a key whenever a program asks for a setting of the mouse or the colours.
TEMPORARY = re.compile(r"HKEY_USERS\\[^\\]+\\Software\\Wine\\Temporary System Parameters(\\|$)")
# The installer's own folders of the registry: Wine's stay, empty, from the first package on.
INSTALLER_SHELVES = {
    r"HKEY_LOCAL_MACHINE\Software\Classes\Installer",
    r"HKEY_LOCAL_MACHINE\Software\Classes\Installer\Features",
    r"HKEY_LOCAL_MACHINE\Software\Classes\Installer\Products",
    r"HKEY_LOCAL_MACHINE\Software\Classes\Installer\UpgradeCodes",
    r"HKEY_LOCAL_MACHINE\Software\Microsoft\Windows\CurrentVersion\Installer\UpgradeCodes",
    r"HKEY_LOCAL_MACHINE\Software\Microsoft\Windows\CurrentVersion\Installer\UserData",
    r"HKEY_LOCAL_MACHINE\Software\Microsoft\Windows\CurrentVersion\Installer\UserData\S-1-5-18",
    r"HKEY_LOCAL_MACHINE\Software\Microsoft\Windows\CurrentVersion\Installer\UserData\S-1-5-18\Components",
    r"HKEY_LOCAL_MACHINE\Software\Microsoft\Windows\CurrentVersion\Installer\UserData\S-1-5-18\Products",
}
INSTALLER_FOLDER = "windows/Installer"  # likewise


def unix_tool(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


class Machine:
    """The prefix that $SITEKEEPER_WINEPREFIX names; it must be there, with the keeper in it."""

    def __init__(self, build):
        self.prefix = pathlib.Path(os.environ["SITEKEEPER_WINEPREFIX"])
        self.drive = self.prefix / "drive_c"
        self.build = pathlib.Path(build)
        self.scratch = self.prefix / "package-test"  # beside the drive: no part of what is compared
        self.scratch.mkdir(exist_ok=True)

    # --- running ---------------------------------------------------------------------------------------------------

    def run(self, *command):
        """Runs a Windows program; its exit code's last byte, and what it printed."""
        done = subprocess.run([TREE / "scripts/wine-run", *map(str, command)], stdin=subprocess.DEVNULL,
                              stdout=subprocess.PIPE, stderr=subprocess.STDOUT, check=False)
        return done.returncode, done.stdout.decode("utf-8", "replace").replace("\r", "")

    def must(self, *command):
        code, printed = self.run(*command)
        if code != 0:
            raise AssertionError(f"{command[0]} ended with {code}: {printed}")
        return printed

    def windows_path(self, path):
        return "Z:" + str(path).replace("/", "\\")

    def msiexec(self, *arguments):
        """The installer, silent; its whole exit code, which Unix would cut to a byte."""
        log = self.scratch / "msiexec.log"
        log.unlink(missing_ok=True)
        script = self.scratch / "msiexec.cmd"
        command = " ".join(a if re.fullmatch(r"[\w/{}=.-]+", a) else quoted(a) for a in arguments)
        script.write_text(f"@echo off\r\nmsiexec {command} /qn /norestart /l*v {quoted(self.windows_path(log))}\r\n"
                          "echo %errorlevel%\r\nexit /b 0\r\n", encoding="utf-8")
        printed = self.must("cmd", "/c", self.windows_path(script))
        return int(printed.strip().splitlines()[-1])

    def log(self):
        return (self.scratch / "msiexec.log").read_bytes().decode("latin-1").replace("\0", "")

    def install(self, package, **properties):
        return self.msiexec("/i", self.windows_path(package), *(f"{name}={value}" for name, value in properties.items()))

    def remove(self, package):
        return self.msiexec("/x", self.windows_path(package))

    # --- the program -----------------------------------------------------------------------------------------------

    def use_program(self, folder, ending):
        """Starts the program in a folder, reads the folders it shows, and ends it by "ok" or "close"."""
        probe = self.build / "demo/window_probe.exe"
        program = subprocess.Popen([TREE / "scripts/wine-run", folder + "SiteKeeper64.exe"], stdin=subprocess.DEVNULL,
                                   stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        self.must(probe, "wait", "60")
        fields = self.must(probe, "fields", "5").splitlines()
        self.must(probe, ending, "30")
        if program.wait(30) != 0:
            raise AssertionError(f"the program ended with {program.returncode}")
        return fields

    # --- registry --------------------------------------------------------------------------------------------------

    def import_registry(self, text):
        file = self.scratch / "import.reg"
        file.write_text("Windows Registry Editor Version 5.00\r\n\r\n" + text, encoding="utf-8")
        self.must("regedit", "/S", self.windows_path(file))

    def registry(self):
        """Every lasting value of the machine, as "key<tab>name=value"; a key is an entry too."""
        file = self.scratch / "export.reg"
        self.must("regedit", "/E", self.windows_path(file))
        entries = set()
        key = None
        for line in file.read_text("utf-16").replace("\\\n  ", "").splitlines():
            if line.startswith("[") and line.endswith("]"):
                key = line[1:-1]
                key = None if key in INSTALLER_SHELVES or TEMPORARY.match(key) else key
                if key:
                    entries.add(key)
            elif line and key:
                entries.add(f"{key}\t{line}")
        return entries

    def value(self, name, key=SUITE_KEY):
        code, printed = self.run("reg", "query", key, "/v", name)
        if code != 0:
            return None
        return re.search(r"REG_\w+ *(.*)", printed).group(1)

    # --- files -----------------------------------------------------------------------------------------------------

    def files(self):
        """Every file and folder of the drive, with what tells whether it is the same."""
        entries = set()
        for folder, _, names in os.walk(self.drive):
            place = pathlib.Path(folder)
            entries.add(f"{place.relative_to(self.drive)}/")
            entries.update(self.file_entry(place / name) for name in names)
        entries.discard(INSTALLER_FOLDER + "/")
        return entries

    def file_entry(self, file):
        name = file.relative_to(self.drive)
        state = file.lstat()
        # The system's own files are many and large; those of others are read.
        if str(name).startswith("windows/"):
            return f"{name} {state.st_size} {state.st_mtime_ns}"
        return f"{name} {state.st_size} {hashlib.sha256(file.read_bytes()).hexdigest()}"

    def state(self):
        return self.registry() | self.files()


def quoted(argument):
    """An argument of the installer: a property's value in quotes of its own, a path's last backslash kept."""
    name, sign, value = argument.partition("=")
    return f'{name}="{value}"' if sign else f'"{argument}"'


def difference(before, after):
    return sorted([f"- {entry}" for entry in before - after] + [f"+ {entry}" for entry in after - before])


def expect_same(before, after, what):
    changed = difference(before, after)
    if changed:
        raise AssertionError(what + ":\n" + "\n".join(changed))


def expect(seen, wanted, what):
    if seen != wanted:
        lines = difflib.ndiff(str(wanted).splitlines(), str(seen).splitlines())
        raise AssertionError(f"{what}:\n" + "\n".join(lines))


def seconds_since(start):
    return f"{time.monotonic() - start:.1f} s"
