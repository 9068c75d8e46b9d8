#!/usr/bin/env python3
"""Reads the template for Group Policy and says what is wrong with it: every reference must be resolved, every text and
presentation used, and keys and values be those that the program reads. Prints one line for each finding; exit code 1 when
there is one.

check_policy.py FOLDER TREE"""
import pathlib
import re
import sys
import xml.etree.ElementTree as ElementTree

NAME = "ORIVEL-SiteKeeper"
SPACE = "{http://schemas.microsoft.com/GroupPolicy/2006/07/PolicyDefinitions}"
REFERENCE = re.compile(r"\$\((string|presentation)\.(\w+)\)$")
# An element of a policy, and what stands for it in the presentation.
PRESENTED_BY = {"text": "textBox", "decimal": "decimalTextBox", "boolean": "checkBox", "enum": "dropdownList",
                "list": "listBox", "multiText": "multiTextBox"}


def named(root, path, attribute):
    return [element.get(attribute) for element in root.iterfind(path.replace("/", "/" + SPACE))]


def twice(names, what):
    return [f"{what} {name} is there twice" for name in sorted({name for name in names if names.count(name) > 1})]


def read_values(tree):
    """Key and value of every text that the program reads below the suite's key of the machine, and the longest text."""
    settings = tree / "src/settings"
    key = re.search(r'SuiteKey = L"(.*?)"', (settings / "Product.h").read_text("utf-8")).group(1).replace("\\\\", "\\")
    values = {(key, name) for name in
              re.findall(r'return L"(\w+Path)";', (settings / "InstallationSettings.cpp").read_text("utf-8"))}
    about = (tree / "src/maindlg/AboutText.cpp").read_text("utf-8")
    values |= {(key, name) for name in re.findall(r'Hive::LocalMachine, SuiteKey, L"(\w+)"', about)}
    trusted = (tree / "src/autocad/TrustedPaths.cpp").read_text("utf-8")
    sub_key, name = re.search(r'WithBackslash\(SuiteKey\) \+ L"(\w+)",\s*L"([^"]+)"', trusted).groups()
    values.add((key + "\\" + sub_key, name))
    limit = int(re.search(r"TextValueLimit = (\d+)", (settings / "RegistryText.h").read_text("utf-8")).group(1))
    return values, limit // 2 - 1


def reference_findings(template, texts):
    """What is referred to and not there, or there and not referred to."""
    tables = {"string": named(texts, "./resources/stringTable/string", "id"),
              "presentation": named(texts, "./resources/presentationTable/presentation", "id")}
    found = twice(tables["string"], "the text") + twice(tables["presentation"], "the presentation")
    used = {"string": set(), "presentation": set()}
    for element in template.iter():
        for value in element.attrib.values():
            if value.startswith("$("):
                match = REFERENCE.match(value)
                if match is None or match.group(2) not in tables[match.group(1)]:
                    found.append(f"{value} leads nowhere")
                else:
                    used[match.group(1)].add(match.group(2))
    found += [f"the {kind} {name} is used by nothing" for kind, names in tables.items() for name in names
              if name not in used[kind]]
    categories = named(template, "./categories/category", "name")
    supported = named(template, "./supportedOn/definitions/definition", "name")
    policies = named(template, "./policies/policy", "name")
    found += twice(categories, "the category") + twice(supported, "the system") + twice(policies, "the policy")
    found += [f"the category {parent.get('ref')} is missing" for parent in template.iter(SPACE + "parentCategory")
              if parent.get("ref") not in categories]
    found += [f"the system {parent.get('ref')} is missing" for parent in template.iter(SPACE + "supportedOn")
              if parent.get("ref") is not None and parent.get("ref") not in supported]
    return found


def presentation_findings(policy, texts):
    """An element and its presentation must be of one kind and have one id."""
    name = REFERENCE.match(policy.get("presentation", "")).group(2)
    path = f"./{SPACE}resources/{SPACE}presentationTable/{SPACE}presentation[@id='{name}']"
    shown = {(child.tag.replace(SPACE, ""), child.get("refId")) for child in texts.find(path)}
    asked = {(PRESENTED_BY[element.tag.replace(SPACE, "")], element.get("id"))
             for element in policy.find(SPACE + "elements")}
    return [f"{policy.get('name')} and its presentation differ: {difference}" for difference in sorted(shown ^ asked)]


def policy_findings(template, texts, tree):
    found = []
    values, longest = read_values(tree)
    told = []
    for policy in template.iterfind(f"./{SPACE}policies/{SPACE}policy"):
        name = policy.get("name")
        if policy.get("class") != "Machine":
            found.append(f"{name} is no setting of the machine")
        if not policy.get("explainText") or policy.find(SPACE + "parentCategory") is None \
                or policy.find(SPACE + "supportedOn") is None or policy.find(SPACE + "elements") is None:
            found.append(f"{name} is not complete")
            continue
        found += presentation_findings(policy, texts)
        for element in policy.find(SPACE + "elements"):
            told.append((element.get("key", policy.get("key")), element.get("valueName")))
            if element.get("maxLength") != str(longest):
                found.append(f"{name} takes {element.get('maxLength')} characters, the program {longest}")
        explained = texts.find(f"./{SPACE}resources/{SPACE}stringTable/{SPACE}string[@id='{name}_Explain']")
        key_told = f"HKEY_LOCAL_MACHINE\\{policy.get('key')}"
        if explained is None or key_told not in explained.text or "Not configured:" not in explained.text:
            found.append(f"{name} does not say what it writes, and what stays")
    found += twice(told, "the value")
    found += [f"the program does not read {key}\\{value}" for key, value in told if (key, value) not in values]
    found += [f"nothing sets {key}\\{value}" for key, value in sorted(values) if (key, value) not in told]
    return found


def findings(template_text, texts_text, tree):
    try:
        template = ElementTree.fromstring(template_text)
        texts = ElementTree.fromstring(texts_text)
    except ElementTree.ParseError as error:
        return [f"it is no XML: {error}"]
    found = [f"its elements are not those of a template: {root.tag}"
             for root, tag in ((template, "policyDefinitions"), (texts, "policyDefinitionResources"))
             if root.tag != SPACE + tag]
    found = found or reference_findings(template, texts)
    return found or policy_findings(template, texts, tree)


def read_template(folder):
    return ((folder / f"{NAME}.admx").read_bytes(), (folder / "en-US" / f"{NAME}.adml").read_bytes())


def main():
    folder, tree = pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2])
    found = findings(*read_template(folder), tree)
    print("\n".join(f"{folder}: {finding}" for finding in found))
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
