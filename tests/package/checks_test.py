#!/usr/bin/env python3
"""Sees the checks of what is handed out fail: each flaw is put into a copy of the good thing and must be named.

checks_test.py PACKAGE-FOLDER TREE BUILD"""
import copy
import json
import pathlib
import sys

import check_msi
import check_policy
import check_sbom
import check_winget


def row(tables, table, key, name):
    return next(entry for entry in tables[table] if entry[key] == name)


def msi_flaws(tables):
    """Changes of a package's tables, and what must be said of them."""
    def change(table, key, name, column, value):
        changed = copy.deepcopy(tables)
        row(changed, table, key, name)[column] = value
        return changed

    def without(table, key, name):
        changed = copy.deepcopy(tables)
        changed[table].remove(row(changed, table, key, name))
        return changed

    return (
        ("its Manufacturer is Somebody", change("Property", "Property", "Manufacturer", "Value", "Somebody")),
        ("its UpgradeCode is {0}", change("Property", "Property", "UpgradeCode", "Value", "{0}")),
        ("FOUNDLIBRARY is lost", change("Property", "Property", "SecureCustomProperties", "Value", "PROGRAMFOLDER")),
        ("it does not tell older from newer", without("Upgrade", "ActionProperty", "WIX_DOWNGRADE_DETECTED")),
        ("it does not refuse to go back", without("LaunchCondition", "Condition", "NOT WIX_DOWNGRADE_DETECTED")),
        ("its HELPSUBFOLDER is", change("Directory", "Directory", "HELPSUBFOLDER", "DefaultDir", "Hilfe")),
        ("its LIBRARYFOLDER is", change("Directory", "Directory", "LIBRARYFOLDER", "Directory_Parent", "CommonFilesFolder")),
        ("its files are", change("Component", "Component", "Help", "Directory_", "PROGRAMFOLDER")),
        ("its values are", change("Registry", "Value", "[LocalAppPathText]", "Name", "LocalApp")),
        ("it writes to Software\\Other", change("Registry", "Value", "[LocalAppPathText]", "Key", "Software\\Other")),
        ("it looks for Path", change("RegLocator", "Signature_", "StoredLocalAppPath", "Name", "Path")),
        ("its components are not told apart", change("Component", "Component", "Help", "ComponentId",
                                                     tables["Component"][0]["ComponentId"])),
        ("Help is no 64-bit component", change("Component", "Component", "Help", "Attributes", "0")),
        ("OwnLibrary is looked for among the 32-bit", change("RegLocator", "Signature_", "OwnLibrary", "Type", "2")),
        ("Help is never installed", without("FeatureComponents", "Component_", "Help")),
        ("a condition asks for OTHER", change("Component", "Component", "Help", "Condition", "NOT OTHER")),
        ("Library is installed whatever", change("Component", "Component", "Library", "Condition", "")),
        ("two of its steps", change("InstallExecuteSequence", "Action", "AppSearch", "Sequence", "100")),
        ("its steps are out of order",
         change("InstallExecuteSequence", "Action", "RemoveExistingProducts", "Sequence", "1401")),
        ("it lacks the step RemoveFiles", without("InstallExecuteSequence", "Action", "RemoveFiles")),
        ("Set62_PROGRAMFOLDER is never done", without("InstallExecuteSequence", "Action", "Set62_PROGRAMFOLDER")),
        ("Set62_PROGRAMFOLDER does more", change("CustomAction", "Action", "Set62_PROGRAMFOLDER", "Type", "34")),
        ("its SiteKeeper.chm is said to have 1 bytes", change("File", "File", "SiteKeeper.chm", "FileSize", "1")),
        ("its SiteKeeper64.exe is said to have the version", change("File", "File", "SiteKeeper64.exe", "Version", "9.0")),
        ("its SiteKeeper.chm is compared neither", without("MsiFileHash", "File_", "SiteKeeper.chm")),
    )


POLICY_FLAWS = (
    ("it is no XML", 0, "</policies>", ""),
    ("$(string.Gone) leads nowhere", 0, "$(string.LocalAppPath)", "$(string.Gone)"),
    ("the string LocalAppPath is used by nothing", 0, "$(string.LocalAppPath)", "$(string.NetworkAppPath)"),
    ("the presentation Spare is used by nothing", 1, "<presentationTable>",
     '<presentationTable><presentation id="Spare"></presentation>'),
    ("the text ProductUpdate is there twice", 1, 'id="NetworkAppPath">Application', 'id="ProductUpdate">Application'),
    ("the category Gone is missing", 0, 'parentCategory ref="LxPlus2023"', 'parentCategory ref="Gone"'),
    ("the system Gone is missing", 0, 'supportedOn ref="SUPPORTED_SiteKeeper"', 'supportedOn ref="Gone"'),
    ("the policy ProductUpdate is there twice", 0, 'policy name="LocalAppPath"', 'policy name="ProductUpdate"'),
    ("LocalAppPath is no setting of the machine", 0, 'class="Machine"', 'class="User"'),
    ("LocalAppPath and its presentation differ", 1, 'refId="LocalAppPath_Text"', 'refId="Other"'),
    ("LocalAppPath and its presentation differ", 1, '<textBox refId="LocalAppPath_Text"><label>Program folder:</label></textBox>',
     '<checkBox refId="LocalAppPath_Text">Program folder</checkBox>'),
    ("LocalAppPath takes 255 characters", 0, 'maxLength="1023"', 'maxLength="255"'),
    ("LocalAppPath does not say what it writes", 1, "Not configured:", "Otherwise:"),
    ("the program does not read Software\\ORIVEL\\LX Plus\\2023\\AppPath", 0, 'valueName="LocalAppPath"', 'valueName="AppPath"'),
    ("nothing sets Software\\ORIVEL\\LX Plus\\2023\\LocalAppPath", 0, 'valueName="LocalAppPath"', 'valueName="AppPath"'),
    ("the program does not read Software\\Policies", 0, r'key="Software\ORIVEL', r'key="Software\Policies\ORIVEL'),
)

WINGET_FLAWS = (
    ("installer lacks Installers", "installer", "Installers:", "Others:"),
    ("defaultLocale lacks License", "defaultLocale", "License:", "Licence:"),
    ("installer.Scope may not be", "installer", "Scope: machine", "Scope: everywhere"),
    ("installer.InstallerType may not be", "installer", "InstallerType: msi\nScope", "InstallerType: installer\nScope"),
    ("installer.InstallModes may not be", "installer", "- silentWithProgress", "- silent"),
    ("installer.ReleaseDate may not be", "installer", "ReleaseDate: ", "ReleaseDate: on "),
    ("installer.Installers.InstallerUrl may not be", "installer", "InstallerUrl: https://", "InstallerUrl: ftp://"),
    ("installer.Installers.Sum is not known", "installer", "InstallerSha256:", "Sum:"),
    ("version.PackageIdentifier may not be", "version", "ORIVEL.SiteKeeper", "SiteKeeper"),
    ("version.ManifestVersion may not be", "version", "ManifestVersion: 1.6.0", "ManifestVersion: 1.7.0"),
    ("the version in version is", "version", "PackageVersion: ", "PackageVersion: 9."),
    ("the entry's name is", "installer", "DisplayName: Site Keeper", "DisplayName: Keeper"),
    ("the product's code is", "installer", "ProductCode: '{", "ProductCode: '{00000000-0000-0000-0000-000000000000}' # "),
    ("the sum is", "installer", "InstallerSha256: ", "InstallerSha256: " + "A" * 64 + " # "),
)


def sbom_flaws(document):
    def change(path, value):
        changed = copy.deepcopy(document)
        place = changed
        for step in path[:-1]:
            place = place[step]
        place[path[-1]] = value
        return changed

    return (
        ("its spdxVersion is", change(("spdxVersion",), "SPDX-2.2")),
        ("its namespace is no address", change(("documentNamespace",), "here")),
        ("it does not say when", change(("creationInfo", "created"), "today")),
        ("it does not say who", change(("creationInfo", "creators"), [])),
        ("libstdc++ lacks versionInfo", change(("packages", 1, "versionInfo"), "")),
        ("libstdc++ has the licence Free", change(("packages", 1, "licenseDeclared"), "Free")),
        ("libstdc++ has the exception", change(("packages", 1, "licenseDeclared"), "GPL-3.0-or-later WITH luck")),
        ("libstdc++ is not found by", change(("packages", 1, "externalRefs", 0, "referenceLocator"), "pkg:deb/debian/x@1")),
        ("mingw-w64-runtime has the licence LicenseRef-Lucent", change(("hasExtractedLicensingInfos",), [])),
        ("is there twice", change(("packages", 1, "SPDXID"), document["packages"][2]["SPDXID"])),
        ("is no identifier", change(("files", 0, "SPDXID"), "the first")),
        ("a relation leads to SPDXRef-Gone", change(("relationships", 0, "relatedSpdxElement"), "SPDXRef-Gone")),
        ("it describes nothing", change(("relationships", 0, "relationshipType"), "CONTAINS")),
        ("the SHA256 of", change(("files", 0, "checksums", 1, "checksumValue"), "0" * 64)),
        ("its verification code", change(("files", 0, "checksums", 0, "checksumValue"), "0" * 40)),
        ("belongs to nothing", change(("relationships",), document["relationships"][:1])),
        ("it does not know winpthreads", change(("packages",), [p for p in document["packages"] if p["name"] != "winpthreads"])),
        ("libssp is inside nothing", change(("relationships",), [r for r in document["relationships"]
                                                                 if r["relatedSpdxElement"] != "SPDXRef-Package-libssp"])),
    )


class Judge:
    def __init__(self):
        self.failures = []
        self.count = 0

    def good(self, what, findings):
        self.failures += [f"found in a good {what}: {finding}" for finding in findings]

    def flawed(self, what, expected, findings):
        self.count += 1
        if not any(expected in finding for finding in findings):
            self.failures.append(f"not noticed in a {what}: {expected} (but: {'; '.join(findings)})")


def replaced(text, old, new):
    if old not in text:
        raise SystemExit(f"checks_test.py: there is no {old} to replace")
    return text.replace(old, new, 1)


def main():
    folder, tree, build = (pathlib.Path(argument) for argument in sys.argv[1:4])
    judge = Judge()
    package = str(folder / "SiteKeeper.msi")

    tables, contents = check_msi.read_package(package), check_msi.read_contents(package)
    judge.good("package", check_msi.findings(tables, contents, tree, build))
    for expected, flawed in msi_flaws(tables):
        judge.flawed("package", expected, check_msi.findings(flawed, contents, tree, build))
    changed = {**contents, "SiteKeeper.chm": b"another", "notes.txt": b"more"}
    for expected in ("its SiteKeeper.chm is not the one", "it has notes.txt inside"):
        judge.flawed("package", expected, check_msi.findings(tables, changed, tree, build))

    template = [text.decode() for text in check_policy.read_template(folder / "policy")]
    judge.good("template", check_policy.findings(*template, tree))
    for expected, which, old, new in POLICY_FLAWS:
        flawed = [replaced(text, old, new) if place == which else text for place, text in enumerate(template)]
        judge.flawed("template", expected, check_policy.findings(*flawed, tree))

    manifests = check_winget.read_manifests(folder / "winget")
    judge.good("manifest", check_winget.findings(manifests, package))
    for expected, kind, old, new in WINGET_FLAWS:
        flawed = {**manifests, kind: replaced(manifests[kind], old, new)}
        judge.flawed("manifest", expected, check_winget.findings(flawed, package))

    bill = json.loads((folder / "SiteKeeper.spdx.json").read_text("utf-8"))
    judge.good("bill", check_sbom.findings(bill, build))
    for expected, flawed in sbom_flaws(bill):
        judge.flawed("bill", expected, check_sbom.findings(flawed, build))

    print("\n".join(judge.failures) or f"{judge.count} flaws, each noticed")
    return 1 if judge.failures else 0


if __name__ == "__main__":
    sys.exit(main())
