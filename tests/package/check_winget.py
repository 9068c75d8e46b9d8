#!/usr/bin/env python3
"""Reads the manifest for the Windows Package Manager and says what is wrong with it: the documented rules of manifests of
version 1.6 for what is used of them, and whether it says of the package what is true. Prints one line for each finding; exit
code 1 when there is one.

check_winget.py FOLDER PACKAGE.msi
With the published schemas in a folder that $SITEKEEPER_WINGET_SCHEMAS names, and python3-jsonschema, they are asked too."""
import datetime
import hashlib
import json
import os
import pathlib
import re
import subprocess
import sys

import yaml

NAME = "ORIVEL.SiteKeeper"
FILES = {"version": f"{NAME}.yaml", "installer": f"{NAME}.installer.yaml", "defaultLocale": f"{NAME}.locale.en-US.yaml"}

IDENTIFIER = r"[^.\s\\/:*?\"<>|\x01-\x1f]{1,32}(\.[^.\s\\/:*?\"<>|\x01-\x1f]{1,32}){1,7}"
LOCALE = r"[a-zA-Z]{2,3}(-[a-zA-Z]{1,8})*"
CODE = r"\{[0-9A-F]{8}(-[0-9A-F]{4}){3}-[0-9A-F]{12}\}"
TYPES = r"msix|msi|appx|exe|zip|inno|nullsoft|wix|burn|pwa|portable"


def text(pattern=r"(?s).+", least=1, most=256):
    return lambda value: (isinstance(value, str) and least <= len(value) <= most and
                          re.fullmatch(pattern, value) is not None)


def texts(pattern, most):
    return lambda value: (isinstance(value, list) and 0 < len(value) <= most and len(set(value)) == len(value) and
                          all(text(pattern)(entry) for entry in value))


def is_date(value):
    return isinstance(value, datetime.date)


# What each field must be. Fields that are not here are not used in these manifests.
COMMON = {"PackageIdentifier": text(IDENTIFIER, most=128), "PackageVersion": text(r"[^\\/:*?\"<>|\x01-\x1f]+", most=128),
          "ManifestVersion": text(r"1\.6\.0")}
ENTRY = {"DisplayName": text(), "Publisher": text(), "DisplayVersion": text(most=128), "ProductCode": text(CODE),
         "UpgradeCode": text(CODE), "InstallerType": text(TYPES)}
INSTALLER = {"Architecture": text("x86|x64|arm|arm64|neutral"), "InstallerUrl": text(r"https?://.+", most=2048),
             "InstallerSha256": text(r"[A-Fa-f0-9]{64}")}
SWITCHES = {"InstallLocation": text(most=512)}
RULES = {
    "version": {**COMMON, "ManifestType": text("version"), "DefaultLocale": text(LOCALE, most=20)},
    "installer": {**COMMON, "ManifestType": text("installer"),
                  "Platform": texts(r"Windows\.(Desktop|Universal)", 2), "MinimumOSVersion": text(r"\d{1,5}(\.\d{1,5}){0,3}"),
                  "InstallerType": text(TYPES), "Scope": text("user|machine"),
                  "InstallModes": texts("interactive|silent|silentWithProgress", 3), "InstallerSwitches": SWITCHES,
                  "UpgradeBehavior": text("install|uninstallPrevious"), "ReleaseDate": is_date, "ProductCode": text(CODE),
                  "ElevationRequirement": text("elevationRequired|elevationProhibited|elevatesSelf"),
                  "AppsAndFeaturesEntries": [ENTRY], "Installers": [INSTALLER]},
    "defaultLocale": {**COMMON, "ManifestType": text("defaultLocale"), "PackageLocale": text(LOCALE, most=20),
                      "Publisher": text(least=2), "PackageName": text(least=2), "License": text(least=3, most=512),
                      "Copyright": text(least=3, most=512), "ShortDescription": text(least=3),
                      "Description": text(least=3, most=10000), "Tags": texts(r".{1,40}", 16)},
}
REQUIRED = {
    "version": {"PackageIdentifier", "PackageVersion", "DefaultLocale", "ManifestType", "ManifestVersion"},
    "installer": {"PackageIdentifier", "PackageVersion", "Installers", "ManifestType", "ManifestVersion"},
    "defaultLocale": {"PackageIdentifier", "PackageVersion", "PackageLocale", "Publisher", "PackageName", "License",
                      "ShortDescription", "ManifestType", "ManifestVersion"},
}


def rule_findings(where, value, rule):
    """Where a value breaks its rule: a rule is a test, a table of rules, or a list of one for each entry."""
    if isinstance(rule, dict):
        if not isinstance(value, dict):
            return [f"{where} has no fields"]
        found = [f"{where}.{name} is not known" for name in value if name not in rule]
        return found + [line for name in value if name in rule
                        for line in rule_findings(f"{where}.{name}", value[name], rule[name])]
    if isinstance(rule, list):
        if not isinstance(value, list) or not value:
            return [f"{where} has no entries"]
        return [line for entry in value for line in rule_findings(where, entry, rule[0])]
    return [] if rule(value) else [f"{where} may not be {value!r}"]


def truth_findings(manifests, package):
    installer = manifests["installer"]
    exported = subprocess.run(["msiinfo", "export", package, "Property"], check=True, capture_output=True, text=True).stdout
    properties = dict(line.split("\t", 1) for line in exported.splitlines() if "\t" in line)
    entry = installer["AppsAndFeaturesEntries"][0]
    said = {"the product's code": (installer["ProductCode"], properties["ProductCode"]),
            "the entry's product code": (entry["ProductCode"], properties["ProductCode"]),
            "the upgrade code": (entry["UpgradeCode"], properties["UpgradeCode"]),
            "the entry's name": (entry["DisplayName"], properties["ProductName"]),
            "the entry's publisher": (entry["Publisher"], properties["Manufacturer"]),
            "the entry's version": (entry["DisplayVersion"], properties["ProductVersion"]),
            "the sum": (installer["Installers"][0]["InstallerSha256"].lower(),
                        hashlib.sha256(pathlib.Path(package).read_bytes()).hexdigest()),
            "the default language": (manifests["version"]["DefaultLocale"], manifests["defaultLocale"]["PackageLocale"])}
    for kind, manifest in manifests.items():
        said[f"the version in {kind}"] = (manifest["PackageVersion"], properties["ProductVersion"])
        said[f"the identifier in {kind}"] = (manifest["PackageIdentifier"], NAME)
    return [f"{what} is {value}, and should be {wanted}" for what, (value, wanted) in said.items() if value != wanted]


def schema_findings(manifests):
    """What the published schemas say, where they are."""
    folder = os.environ.get("SITEKEEPER_WINGET_SCHEMAS")
    if not folder:
        return []
    import jsonschema  # only whoever has the schemas needs it
    found = []
    for kind, manifest in manifests.items():
        schema = json.loads((pathlib.Path(folder) / f"manifest.{kind}.1.6.0.json").read_text("utf-8"))
        plain = json.loads(json.dumps(manifest, default=str))
        validator = jsonschema.validators.validator_for(schema)(schema)
        found += [f"{kind}: {error.message}" for error in validator.iter_errors(plain)]
    return found


def findings(sources, package):
    """What is wrong with the three manifests, given as texts by kind."""
    manifests = {kind: yaml.safe_load(source) for kind, source in sources.items()}
    found = [f"{kind} lacks {name}" for kind, manifest in manifests.items()
             for name in sorted(REQUIRED[kind] - set(manifest))]
    for kind, manifest in manifests.items():
        found += rule_findings(kind, manifest, RULES[kind])
    for entry in manifests["installer"].get("Installers") or []:
        found += [f"an installer lacks {name}" for name in sorted(INSTALLER.keys() - set(entry))]
    return found or truth_findings(manifests, package) + schema_findings(manifests)


def read_manifests(folder):
    return {kind: (folder / name).read_text("utf-8") for kind, name in FILES.items()}


def main():
    folder = pathlib.Path(sys.argv[1])
    found = findings(read_manifests(folder), sys.argv[2])
    found += [f"{file.name} is no part of it" for file in folder.iterdir() if file.name not in FILES.values()]
    print("\n".join(f"{folder}: {finding}" for finding in found))
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
