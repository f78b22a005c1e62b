#!/usr/bin/python3
"""documented.py <Doxygen's XML folder> <exports.txt>

Fails unless the site describes every export, and nothing that is none: a first sentence that no other of its
family has, each parameter in its order, and the statuses."""
import pathlib
import sys
import xml.etree.ElementTree as xml


def text(element):
    return " ".join("".join(element.itertext()).split()) if element is not None else ""


def faults(function):
    """What a reader of the function's paragraph misses."""
    described = {}
    for item in function.iterfind("detaileddescription//parameterlist[@kind='param']/parameteritem"):
        for name in item.iterfind("parameternamelist/parametername"):
            described[text(name)] = text(item.find("parameterdescription"))
    declared = [text(name) for name in function.iterfind("param/declname")]
    yield from (f"nothing about {name}" for name in declared if not described.get(name))
    if list(described) != declared and set(described) == set(declared):
        yield "parameters in another order"
    returns = text(function.find("detaileddescription//simplesect[@kind='return']"))
    if not returns or text(function.find("type")) == "MoxStatus" and "moxStatusOk" not in returns:
        yield "no statuses"
    if not text(function.find("briefdescription")):
        yield "no first sentence"


def main(folder, exports):
    found, wrong = set(), []
    for family in sorted(pathlib.Path(folder).glob("group__*.xml")):
        first = {}  # sentences; in another family the same one may stand for another formula
        for function in xml.parse(family).iterfind(".//memberdef[@kind='function']"):
            name = text(function.find("name"))
            wrong += [f"{name}: {fault}" for fault in faults(function)]
            other = first.setdefault(text(function.find("briefdescription")), name)
            if other != name:
                wrong.append(f"{name}: the first sentence of {other}")
            if function.get("static") == "no":
                found.add(name)
    expected = set(pathlib.Path(exports).read_text().split())
    wrong += [f"{name}: not documented" for name in sorted(expected - found)]
    wrong += [f"{name}: no export" for name in sorted(found - expected)]
    if wrong:
        sys.exit("\n".join(wrong))
    print(f"{len(found)} functions documented, each with its parameters and statuses")


if __name__ == "__main__":
    main(*sys.argv[1:])
