#!/usr/bin/python3
"""folders_test.py <top of the tree>: each folder includes only what README's table of folders allows."""
import pathlib
import re
import sys

top = pathlib.Path(sys.argv[1])
allowed = {}
for row in re.findall(r"^\| (`.*?) \|.*\| (.*?) ?\|$", (top / "README.md").read_text(), re.M):
    for folder in re.findall(r"`([\w/]+)/`", row[0]):
        allowed[folder.split("/")[0]] = None if row[1] == "any" else set(re.findall(r"`(\w+)`", row[1]))

folder_of = {"moxcc": "include"}  # of the public headers, as they are included
wrong, checked = [], 0
for source in sorted(top.glob("*/**/*")):
    folder = source.relative_to(top).parts[0]
    if source.suffix not in (".h", ".hpp", ".cpp", ".c") or folder == "build":
        continue
    if folder not in allowed:
        wrong.append(f"{source.relative_to(top)}: README's table does not have {folder}/")
        continue
    for line, text in enumerate(source.read_text().splitlines(), 1):
        if re.match(r'#include ".*\.c(pp)?"', text):
            wrong.append(f"{source.relative_to(top)}:{line}: includes a source")
        match = re.match(r'#include "(\w+)/', text)
        target = match and folder_of.get(match[1], match[1])
        if not match or target == folder or not (top / target).is_dir():
            continue
        checked += 1
        if allowed[folder] is not None and target not in allowed[folder]:
            wrong.append(f"{source.relative_to(top)}:{line}: {folder}/ may not include {target}/")
print("\n".join(wrong) or f"{checked} includes across folders, as README allows")
sys.exit(bool(wrong) or not checked)
