#!/usr/bin/env python3
"""Reads a bill of materials (SPDX 2.3, JSON) and says what is wrong with it: required fields, identifiers, relationships,
licences, and whether it says of the files what is true. Prints one line for each finding; exit code 1 when there is one.

check_sbom.py FILE.spdx.json FOLDER-OF-THE-FILES"""
import hashlib
import json
import pathlib
import re
import sys

DOCUMENT_FIELDS = ("spdxVersion", "dataLicense", "SPDXID", "name", "documentNamespace", "creationInfo", "packages", "files",
                   "relationships")
PACKAGE_FIELDS = ("SPDXID", "name", "versionInfo", "supplier", "downloadLocation", "filesAnalyzed", "licenseConcluded",
                  "licenseDeclared", "copyrightText")
FILE_FIELDS = ("SPDXID", "fileName", "checksums", "licenseConcluded", "copyrightText")
ALGORITHMS = {"SHA1": hashlib.sha1, "SHA256": hashlib.sha256}
RELATIONS = {"DESCRIBES", "CONTAINS", "STATIC_LINK"}
# Of SPDX's lists, what may be inside.
LICENSES = {"BSD-3-Clause", "GPL-3.0-or-later", "MIT", "ZPL-2.1"}
EXCEPTIONS = {"GCC-exception-3.1"}
# What every program of this compiler has inside; its licences must be known to whoever hands it on.
LIBRARIES = {"libgcc", "libstdc++", "libssp", "winpthreads", "mingw-w64-runtime"}


def lacking(entry, fields, what):
    return [f"{what} lacks {field}" for field in fields if entry.get(field) in (None, "")]


def license_findings(expression, own, what):
    """An expression of the form A AND B WITH E; nothing may be said in other words."""
    if expression == "NOASSERTION":
        return []
    found = []
    for term in expression.split(" AND "):
        name, _, exception = term.partition(" WITH ")
        if name not in LICENSES | own:
            found.append(f"{what} has the licence {name}, which is not known")
        if exception and exception not in EXCEPTIONS:
            found.append(f"{what} has the exception {exception}, which is not known")
    return found


def document_findings(document):
    found = lacking(document, DOCUMENT_FIELDS, "the document")
    wanted = {"spdxVersion": "SPDX-2.3", "dataLicense": "CC0-1.0", "SPDXID": "SPDXRef-DOCUMENT"}
    found += [f"its {field} is {document.get(field)}" for field, value in wanted.items() if document.get(field) != value]
    if not re.fullmatch(r"https?://[^#\s]+", document.get("documentNamespace", "")):
        found.append("its namespace is no address")
    creation = document.get("creationInfo", {})
    if not re.fullmatch(r"\d{4}-\d\d-\d\dT\d\d:\d\d:\d\dZ", creation.get("created", "")):
        found.append("it does not say when it was made")
    if not creation.get("creators") or not all(re.match(r"(Person|Organization|Tool): .", who) for who in creation["creators"]):
        found.append("it does not say who made it")
    return found


def element_findings(document):
    found = []
    elements = document["packages"] + document["files"]
    ids = [element.get("SPDXID", "") for element in elements] + ["SPDXRef-DOCUMENT"]
    found += [f"{name} is there twice" for name in sorted(set(ids)) if ids.count(name) > 1]
    found += [f"{name} is no identifier" for name in ids if not re.fullmatch(r"SPDXRef-[A-Za-z0-9.-]+", name)]
    own = {info["licenseId"] for info in document.get("hasExtractedLicensingInfos", []) if info.get("extractedText")}
    for package in document["packages"]:
        what = package.get("name", "a package")
        found += lacking(package, PACKAGE_FIELDS, what)
        found += license_findings(package.get("licenseDeclared", ""), own, what)
        for reference in package.get("externalRefs", []):
            # A package of the system, its version as it stands above.
            version = package["versionInfo"].replace("+", "%2B")
            if not re.fullmatch(rf"pkg:deb/debian/[a-z0-9+.-]+@{re.escape(version)}\?arch=\w+", reference["referenceLocator"]):
                found.append(f"{what} is not found by {reference['referenceLocator']}")
    for relation in document["relationships"]:
        if relation["relationshipType"] not in RELATIONS:
            found.append(f"the relation {relation['relationshipType']} is not known")
        found += [f"a relation leads to {relation[end]}, which is not there"
                  for end in ("spdxElementId", "relatedSpdxElement") if relation[end] not in ids]
    return found


def file_findings(document, folder):
    found = []
    sums = []
    for entry in document["files"]:
        found += lacking(entry, FILE_FIELDS, entry.get("fileName", "a file"))
        data = (folder / entry["fileName"]).read_bytes() if (folder / entry["fileName"]).is_file() else b""
        given = {checksum["algorithm"]: checksum["checksumValue"] for checksum in entry["checksums"]}
        found += [f"the {name} of {entry['fileName']} is another" for name, function in ALGORITHMS.items()
                  if given.get(name) != function(data).hexdigest()]
        sums.append(given.get("SHA1", ""))
    product = document["packages"][0]
    code = hashlib.sha1("".join(sorted(sums)).encode()).hexdigest()
    if product.get("packageVerificationCode", {}).get("packageVerificationCodeValue") != code:
        found.append("its verification code is another")
    return found


def content_findings(document):
    """The product is described, contains every file, and every program names what is inside it."""
    relations = {(r["spdxElementId"], r["relationshipType"], r["relatedSpdxElement"]) for r in document["relationships"]}
    product = document["packages"][0]["SPDXID"]
    found = [] if ("SPDXRef-DOCUMENT", "DESCRIBES", product) in relations else ["it describes nothing"]
    ids = {package["name"]: package["SPDXID"] for package in document["packages"][1:]}
    found += [f"it does not know {name}" for name in sorted(LIBRARIES - set(ids))]
    for file in document["files"]:
        if (product, "CONTAINS", file["SPDXID"]) not in relations:
            found.append(f"{file['fileName']} belongs to nothing")
        linked = {other for element, kind, other in relations if element == file["SPDXID"] and kind == "STATIC_LINK"}
        if file["fileTypes"] == ["BINARY"] and not linked:
            found.append(f"{file['fileName']} has nothing inside")
    inside = {other for _, kind, other in relations if kind == "STATIC_LINK"}
    return found + [f"{name} is inside nothing" for name, key in ids.items() if key not in inside]


def findings(document, folder):
    found = document_findings(document)
    return found or element_findings(document) + file_findings(document, folder) + content_findings(document)


def main():
    document = json.loads(pathlib.Path(sys.argv[1]).read_text("utf-8"))
    found = findings(document, pathlib.Path(sys.argv[2]))
    print("\n".join(f"{sys.argv[1]}: {finding}" for finding in found))
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
