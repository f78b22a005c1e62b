#!/usr/bin/python3
"""values_test.py <folder of the tests>: each export has a test of its values, beside those that hold for all exports."""
import fnmatch
import pathlib
import re
import sys

tests = pathlib.Path(sys.argv[1])
exports = (tests / "exports.txt").read_text().split()
tested = set()
for file in tests.glob("*/*_test.cpp"):
    if file.parent.name == "contract" or file.name == "bands_test.cpp":
        continue
    source = file.read_text()
    for call in re.findall(r'MOX_EXPORT\((\w+)\)|MOX_CALL\(\w+,\s*(\w+)\)|"(mox\w+)"', source):
        tested.update(call)
    for pattern in re.findall(r'(?:named|of)\("(mox[\w*]+)"', source):
        tested.update(fnmatch.filter(exports, pattern))
missing = [name for name in exports if name not in tested]
print("\n".join(f"{name}: no test of its values" for name in missing) or f"{len(exports)} exports, all with tests")
sys.exit(bool(missing) or not exports)
