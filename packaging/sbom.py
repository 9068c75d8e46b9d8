#!/usr/bin/env python3
"""Writes the bill of materials of the shipped files (SPDX 2.3, JSON): the files with their checksums, and the runtime
libraries that the linker put inside them, read from its maps, with the versions and licences of the Debian packages that
they came from.

sbom.py --version VERSION --epoch SECONDS --files FOLDER --maps FOLDER --output FILE.spdx.json"""
import argparse
import datetime
import hashlib
import json
import pathlib
import re
import subprocess
import sys
import uuid

FILES = {"SiteKeeper64.exe": "BINARY", "ORSWDialogsOEM64.dll": "BINARY", "SiteKeeper.chm": "DOCUMENTATION"}
MAPS = {"SiteKeeper64.exe": "SiteKeeper64.map", "ORSWDialogsOEM64.dll": "ORSWDialogsOEM64.map"}
NAMESPACE = uuid.UUID("7a0b5e64-3c1d-4b6f-9e0a-5d2c81f4a937")
OWN_COPYRIGHT = "Copyright © 2023-2026 ORIVEL"
DEBIAN_COPYRIGHT = "/usr/share/doc/mingw-w64-x86-64-dev/copyright"

GCC_LICENSE = "GPL-3.0-or-later WITH GCC-exception-3.1"
# Debian's names of the licences of the runtime that SPDX's list does not have.
OTHER_LICENSES = ("public-domain", "Lucent", "David-Gay", "Permissive-Sun", "Keith-Marshall")
# Says Debian's copyright file without a text.
PUBLIC_DOMAIN = "In the public domain, as the copyright file of the Debian package says."

# What may be inside: name, the file it comes from, licence, page. The first pattern that fits a file counts.
LIBRARIES = (
    ("libstdc++", r"libstdc\+\+\.a$|libsupc\+\+\.a$", GCC_LICENSE, "https://gcc.gnu.org/"),
    ("libgcc", r"libgcc(_eh)?\.a$|crtbegin\.o$|crtend\.o$", GCC_LICENSE, "https://gcc.gnu.org/"),
    ("libssp", r"libssp(_nonshared)?\.a$", GCC_LICENSE, "https://gcc.gnu.org/"),
    ("winpthreads", r"libw?i?n?pthread\.a$", "MIT AND BSD-3-Clause AND LicenseRef-public-domain",
     "https://www.mingw-w64.org/"),
    ("mingw-w64-runtime", r"/x86_64-w64-mingw32/lib/.*\.(a|o)$",
     "ZPL-2.1 AND BSD-3-Clause AND " + " AND ".join(f"LicenseRef-{name}" for name in OTHER_LICENSES),
     "https://www.mingw-w64.org/"),
)
COPYRIGHTS = {GCC_LICENSE: "Copyright © Free Software Foundation, Inc."}


def linked_files(link_map):
    """The files outside the build that the linker took something from."""
    text = link_map.read_text("utf-8", "replace")
    begin = text.index("Archive member included")
    end = text.find("Linker script and memory map")
    members = re.findall(r"^(\S.*?\.a)\(", text[begin:end], re.MULTILINE)
    objects = re.findall(r"^LOAD (.*\.o)$", text[end:], re.MULTILINE)
    return {str(pathlib.Path(name).resolve()) for name in members + objects if name.startswith("/")}


def is_import_library(file):
    """A library of the system that is only named in the program, and not inside it."""
    known = r"lib(advapi32|comctl32|gdi32|kernel32|ole32|shell32|user32)\.a$"
    return re.search(known, file) is not None


def libraries_of(link_map):
    """Names of LIBRARIES, each with the files that it came from."""
    found = {}
    for file in sorted(linked_files(link_map)):
        if is_import_library(file):
            continue
        for name, pattern, *_ in LIBRARIES:
            if re.search(pattern, file):
                found.setdefault(name, []).append(file)
                break
        else:
            raise SystemExit(f"sbom.py: nobody knows what {file} is")
    return found


def debian_package(file):
    """The package that owns a file, its version and architecture, and the source of both."""
    owner = subprocess.run(["dpkg-query", "-S", file], check=True, capture_output=True, text=True).stdout
    package = owner.partition(":")[0]
    version = subprocess.run(["dpkg-query", "-W", "-f", "${Version}\t${Architecture}\t${source:Package}\t${source:Version}",
                              package],
                             check=True, capture_output=True, text=True).stdout
    return (package, *version.split("\t"))


def extracted_license(name):
    """The text of a licence as Debian's copyright file has it."""
    text = PUBLIC_DOMAIN
    if name != "public-domain":
        copyright_file = pathlib.Path(DEBIAN_COPYRIGHT).read_text("utf-8")
        body = re.search(rf"^License: {name}\n((?: .*\n)+)", copyright_file, re.MULTILINE).group(1)
        text = "\n".join("" if line == " ." else line[1:] for line in body.splitlines())
    return {"licenseId": f"LicenseRef-{name}", "name": name, "extractedText": text}


def checksums(file):
    data = file.read_bytes()
    return [{"algorithm": "SHA1", "checksumValue": hashlib.sha1(data).hexdigest()},
            {"algorithm": "SHA256", "checksumValue": hashlib.sha256(data).hexdigest()}]


def file_entry(name, kind, folder):
    return {"SPDXID": f"SPDXRef-File-{name}", "fileName": f"./{name}", "fileTypes": [kind],
            "checksums": checksums(folder / name), "licenseConcluded": "NOASSERTION",
            "licenseInfoInFiles": ["NOASSERTION"], "copyrightText": OWN_COPYRIGHT}


def product_entry(version, files):
    """The product; its code is the sum of its files' sums, as the format has it."""
    sums = sorted(entry["checksums"][0]["checksumValue"] for entry in files)
    return {"SPDXID": "SPDXRef-Package-SiteKeeper", "name": "Site Keeper", "versionInfo": version,
            "supplier": "Organization: ORIVEL", "downloadLocation": "NOASSERTION", "filesAnalyzed": True,
            "packageVerificationCode": {"packageVerificationCodeValue": hashlib.sha1("".join(sums).encode()).hexdigest()},
            "licenseConcluded": "NOASSERTION", "licenseDeclared": "NOASSERTION", "licenseInfoFromFiles": ["NOASSERTION"],
            "copyrightText": OWN_COPYRIGHT, "primaryPackagePurpose": "APPLICATION",
            "hasFiles": [entry["SPDXID"] for entry in files]}


def library_entry(name, files):
    _, _, license_name, page = next(row for row in LIBRARIES if row[0] == name)
    package, version, architecture, source, source_version = debian_package(files[0])
    return {"SPDXID": f"SPDXRef-Package-{name.replace('+', 'p')}", "name": name, "versionInfo": version,
            "supplier": "Organization: Debian", "homepage": page, "filesAnalyzed": False,
            "downloadLocation": f"https://deb.debian.org/debian/pool/main/{source[0]}/{source}/",
            "licenseConcluded": license_name, "licenseDeclared": license_name,
            "copyrightText": COPYRIGHTS.get(license_name, "Copyright © the mingw-w64 project and others"),
            "primaryPackagePurpose": "LIBRARY",
            "sourceInfo": f"Debian package {package} {version}, made from {source} {source_version}: "
                          + ", ".join(pathlib.Path(file).name for file in files),
            "externalRefs": [{"referenceCategory": "PACKAGE-MANAGER", "referenceType": "purl",
                              "referenceLocator": f"pkg:deb/debian/{package}@{version.replace('+', '%2B')}?arch={architecture}"}]}


def related(element, kind, other):
    return {"spdxElementId": element, "relationshipType": kind, "relatedSpdxElement": other}


def document(given):
    files = [file_entry(name, kind, given.files) for name, kind in FILES.items()]
    product = product_entry(given.version, files)
    inside = {name: libraries_of(given.maps / link_map) for name, link_map in MAPS.items()}
    sources = {}
    for found in inside.values():
        for library, names in found.items():
            sources.setdefault(library, set()).update(names)
    libraries = [library_entry(name, sorted(sources[name])) for name, *_ in LIBRARIES if name in sources]
    ids = {entry["name"]: entry["SPDXID"] for entry in libraries}
    relations = [related("SPDXRef-DOCUMENT", "DESCRIBES", product["SPDXID"])]
    relations += [related(product["SPDXID"], "CONTAINS", entry["SPDXID"]) for entry in files]
    relations += [related(f"SPDXRef-File-{file}", "STATIC_LINK", ids[library])
                  for file, found in inside.items() for library in found]
    content = json.dumps([files, libraries], sort_keys=True)
    created = datetime.datetime.fromtimestamp(given.epoch, datetime.timezone.utc)
    return {"spdxVersion": "SPDX-2.3", "dataLicense": "CC0-1.0", "SPDXID": "SPDXRef-DOCUMENT",
            "name": f"SiteKeeper-{given.version}",
            "documentNamespace": f"https://www.orivel.example/spdx/SiteKeeper-{given.version}-"
                                 f"{uuid.uuid5(NAMESPACE, content)}",
            "creationInfo": {"created": created.strftime("%Y-%m-%dT%H:%M:%SZ"),
                             "creators": ["Organization: ORIVEL", "Tool: Site Keeper sbom.py"]},
            "documentDescribes": [product["SPDXID"]], "packages": [product, *libraries], "files": files,
            "relationships": relations,
            "hasExtractedLicensingInfos": [extracted_license(name) for name in OTHER_LICENSES]}


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n")[0])
    parser.add_argument("--version", required=True)
    parser.add_argument("--epoch", required=True, type=int)
    parser.add_argument("--files", required=True, type=pathlib.Path)
    parser.add_argument("--maps", required=True, type=pathlib.Path)
    parser.add_argument("--output", required=True, type=pathlib.Path)
    given = parser.parse_args()
    given.output.write_text(json.dumps(document(given), indent=2, ensure_ascii=False) + "\n", "utf-8")


if __name__ == "__main__":
    sys.exit(main())
