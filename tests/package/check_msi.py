#!/usr/bin/env python3
"""Reads a package for the Windows installer and says what is wrong with it: identity, places, names as the program's sources
have them, conditions, the order of its steps, the files inside. Prints one line for each finding; exit code 1 when there is
one.

check_msi.py PACKAGE.msi TREE BUILD"""
import pathlib
import re
import struct
import subprocess
import sys
import tempfile

FILES = {"SiteKeeper64.exe": "APPLICATIONSSUBFOLDER", "SiteKeeper.chm": "HELPSUBFOLDER",
         "ORSWDialogsOEM64.dll": "LIBRARYFOLDER"}
UPGRADE_CODE = "{7A0B5E64-3C1D-4B6F-9E0A-5D2C81F4A937}"  # for ever: by it versions know each other
TABLES = ("AppSearch", "Component", "CreateFolder", "CustomAction", "Directory", "DrLocator", "Feature",
          "FeatureComponents", "File", "InstallExecuteSequence", "InstallUISequence", "LaunchCondition", "MsiFileHash",
          "Property", "RegLocator", "Registry", "RemoveFile", "Shortcut", "Signature", "Upgrade")
SIXTY_FOUR_BIT = 256
ONLY_DETECT = 2
# Set by the installer itself or by the steps in front of it.
KNOWN_PROPERTIES = {"Installed", "VersionNT64", "PROGRAMFOLDER", "APPLICATIONFOLDER", "DATAFILESFOLDER",
                    "DESKTOPSHORTCUT", "STARTMENUSHORTCUT", "WIX_UPGRADE_DETECTED", "WIX_DOWNGRADE_DETECTED"}


def read_table(package, name):
    exported = subprocess.run(["msiinfo", "export", package, name], check=True, capture_output=True).stdout.decode()
    lines = exported.replace("\r\n", "\n").split("\n")
    columns = lines[0].split("\t")
    return [dict(zip(columns, line.split("\t"))) for line in lines[3:] if line]


def read_package(package):
    return {name: read_table(package, name) for name in TABLES}


def read_contents(package):
    """The files inside, by name."""
    with tempfile.TemporaryDirectory() as folder:
        subprocess.run(["msiextract", "-C", folder, package], check=True, capture_output=True)
        return {file.name: file.read_bytes() for file in pathlib.Path(folder).rglob("*") if file.is_file()}


def constant(tree, file, pattern):
    """What a source says, its backslashes single."""
    return re.search(pattern, (tree / file).read_text("utf-8")).group(1).replace("\\\\", "\\")


class Sources:
    """The names of places in the program's sources."""

    def __init__(self, tree):
        product = "src/settings/Product.h"
        self.suite_key = constant(tree, product, r'SuiteKey = L"(.*?)"')
        self.maker = constant(tree, product, r'MakerName = L"(.*?)"')
        self.title = constant(tree, product, r'ProductTitle = L"(.*?)"')
        settings = (tree / "src/settings/InstallationSettings.cpp").read_text("utf-8")
        self.values = re.findall(r'return L"(\w+Path)";', settings)
        self.company = constant(tree, "src/res/Version.rc", r'"CompanyName", "(.*?)"')
        self.version = constant(tree, "CMakeLists.txt", r"project\(SiteKeeper VERSION ([\d.]+)")
        self.tools = constant(tree, "src/shortcuts/ShortcutCatalogue.cpp", r'applicationFolder \+ L"(\w+)"')
        self.help = constant(tree, "src/app/HelpFile.cpp", r'localAppPath \+ L"(\w+)\\\\"')
        self.link = constant(tree, "src/shortcuts/ShortcutCatalogue.cpp", r'\{L"([^"]+)", L"SiteKeeper%s.exe"')
        self.dialogs_library = constant(tree, "src/app/DialogsLibrary.cpp", r'L"(ORSW\w+)%s.dll"') + "64.dll"


def long_name(name):
    return name.rpartition("|")[2]


def identity_findings(tables, sources):
    properties = {row["Property"]: row["Value"] for row in tables["Property"]}
    wanted = {"ProductName": sources.link, "Manufacturer": sources.company, "ALLUSERS": "1", "UpgradeCode": UPGRADE_CODE,
              "ARPNOMODIFY": "1"}
    found = [f"its {name} is {properties.get(name)}" for name, value in wanted.items() if properties.get(name) != value]
    secure = properties.get("SecureCustomProperties", "").split(";")
    found += [f"{row['Property']} is lost between the user's side and the system's" for row in tables["AppSearch"]
              if row["Property"] not in secure]
    ends = {(row["VersionMin"], row["VersionMax"], int(row["Attributes"]) & ONLY_DETECT, row["ActionProperty"])
            for row in tables["Upgrade"] if row["UpgradeCode"] == UPGRADE_CODE}
    version = properties["ProductVersion"]
    if ends != {("", version, 0, "WIX_UPGRADE_DETECTED"), (version, "", ONLY_DETECT, "WIX_DOWNGRADE_DETECTED")}:
        found.append("it does not tell older from newer versions")
    messages = {row["Condition"]: row["Description"] for row in tables["LaunchCondition"]}
    if not messages.get("NOT WIX_DOWNGRADE_DETECTED", "").startswith("A newer version of Site Keeper is installed."):
        found.append("it does not refuse to go back, or does not say why")
    return found


def place_findings(tables, sources):
    found = []
    parents = {row["Directory"]: (row["Directory_Parent"], long_name(row["DefaultDir"])) for row in tables["Directory"]}
    suite_folder = f"{sources.maker} {sources.title}"
    wanted = {"APPLICATIONSSUBFOLDER": ("PROGRAMFOLDER", sources.tools), "HELPSUBFOLDER": ("PROGRAMFOLDER", sources.help),
              "LIBRARYFOLDER": ("CommonFiles64Folder", sources.maker), "MAKERFOLDER": ("ProgramFiles64Folder", sources.maker),
              "DESKTOPSUITEFOLDER": ("COMMONDESKTOP", suite_folder), "STARTMENUMAKERFOLDER": ("COMMONPROGRAMS", sources.maker),
              "STARTMENUSUITEFOLDER": ("STARTMENUMAKERFOLDER", suite_folder)}
    found += [f"its {folder} is {parents.get(folder)}" for folder, place in wanted.items() if parents.get(folder) != place]
    components = {row["Component"]: row for row in tables["Component"]}
    places = {long_name(row["FileName"]): components[row["Component_"]]["Directory_"] for row in tables["File"]}
    if places != FILES:
        found.append(f"its files are {places}")
    if sources.dialogs_library not in places:
        found.append(f"it lacks {sources.dialogs_library}")
    found += [f"its shortcut is {long_name(row['Name'])}" for row in tables["Shortcut"]
              if long_name(row["Name"]) != sources.link]
    values = sorted(row["Name"] for row in tables["Registry"] if row["Key"] == sources.suite_key)
    if values != sorted(sources.values):
        found.append(f"its values are {values}")
    found += [f"it writes to {row['Key']}" for row in tables["Registry"]
              if row["Key"] not in (sources.suite_key, sources.suite_key + "\\SiteKeeperSetup") or row["Root"] != "2"]
    found += [f"it looks for {row['Name']} in {row['Key']}" for row in tables["RegLocator"]
              if row["Key"] == sources.suite_key and row["Name"] not in sources.values]
    return found


def component_findings(tables):
    found = []
    guids = [row["ComponentId"] for row in tables["Component"]]
    if len(set(guids)) != len(guids) or not all(re.fullmatch(r"\{[0-9A-F-]{36}\}", guid) for guid in guids):
        found.append("its components are not told apart")
    found += [f"{row['Component']} is no 64-bit component" for row in tables["Component"]
              if not int(row["Attributes"]) & SIXTY_FOUR_BIT]
    found += [f"{row['Signature_']} is looked for among the 32-bit programs' values" for row in tables["RegLocator"]
              if not int(row["Type"]) & 16]
    chosen = {row["Component_"] for row in tables["FeatureComponents"]}
    found += [f"{row['Component']} is never installed" for row in tables["Component"] if row["Component"] not in chosen]
    known = KNOWN_PROPERTIES | {row["Property"] for row in tables["AppSearch"]}
    texts = [row["Condition"] for table in ("Component", "InstallExecuteSequence", "LaunchCondition")
             for row in tables[table]]
    for word in sorted(set(re.findall(r"[A-Za-z_]\w*", re.sub(r'"[^"]*"', "", " ".join(texts))))):
        if word not in known | {"AND", "OR", "NOT"}:
            found.append(f"a condition asks for {word}, which nobody sets")
    # What may be somebody else's: a component that has no condition would take it over, and remove it.
    conditions = {row["Component"]: row["Condition"] for row in tables["Component"]}
    found += [f"{name} is installed whatever is there" for name in
              ("LocalAppPath", "NetworkAppPath", "DatafilesPath", "Library", "DesktopShortcut", "StartMenuShortcut")
              if "OWN" + name.upper() not in conditions.get(name, "")]
    return found


def order_findings(tables):
    found = []
    steps = {row["Action"]: int(row["Sequence"]) for row in tables["InstallExecuteSequence"]}
    numbers = list(steps.values())
    if len(set(numbers)) != len(numbers):
        found.append("two of its steps have one number")
    order = ("FindRelatedProducts", "AppSearch", "LaunchConditions", "CostFinalize", "InstallValidate",
             "InstallInitialize", "RemoveExistingProducts", "ProcessComponents", "RemoveFiles", "InstallFiles",
             "WriteRegistryValues", "RegisterProduct", "InstallFinalize")
    if [step for step in order if step not in steps]:
        return found + [f"it lacks the step {step}" for step in order if step not in steps]
    if sorted(order, key=steps.get) != list(order):
        found.append("its steps are out of order")
    found += [f"{row['Action']} is never done" for row in tables["CustomAction"] if row["Action"] not in steps]
    # Anything that runs a program or a script is no part of it.
    found += [f"{row['Action']} does more than set a property" for row in tables["CustomAction"] if row["Type"] != "51"]
    return found


def version_of(data):
    at = data.find(struct.pack("<II", 0xFEEF04BD, 0x00010000))
    return "" if at < 0 else ".".join(str(struct.unpack_from("<H", data, at + offset)[0]) for offset in (10, 8, 14, 12))


def content_findings(tables, contents, build):
    found = [f"it has no {name} inside" for name in FILES if name not in contents]
    found += [f"it has {name} inside" for name in contents if name not in FILES]
    hashed = {row["File_"] for row in tables["MsiFileHash"]}
    for row in tables["File"]:
        name = long_name(row["FileName"])
        data = contents.get(name, b"")
        if data != (build / name).read_bytes():
            found.append(f"its {name} is not the one that was built")
        if row["FileSize"] != str(len(data)):
            found.append(f"its {name} is said to have {row['FileSize']} bytes")
        if row["Version"] != version_of(data):
            found.append(f"its {name} is said to have the version {row['Version']}")
        if bool(row["Version"]) == (row["File"] in hashed):
            found.append(f"its {name} is compared neither by version nor by sum, or by both")
    return found


def findings(tables, contents, tree, build):
    sources = Sources(tree)
    return (identity_findings(tables, sources) + place_findings(tables, sources) + component_findings(tables) +
            order_findings(tables) + content_findings(tables, contents, build))


def main():
    package, tree, build = sys.argv[1], pathlib.Path(sys.argv[2]), pathlib.Path(sys.argv[3])
    tables = read_package(package)
    found = findings(tables, read_contents(package), tree, build)
    version = {row["Property"]: row["Value"] for row in tables["Property"]}["ProductVersion"]
    if version != Sources(tree).version:
        found.append(f"its version is {version}")
    print("\n".join(f"{package}: {finding}" for finding in found))
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
