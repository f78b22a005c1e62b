"""Pixel conversions with every output bit defined, on numpy arrays.

A function an operation: ``moxcc.RGBToGray(rgb)``. Depth and layout follow from the arrays and keywords; see
``help(moxcc.RGBToGray)``. Any export by its full name: ``moxcc.call("moxiRGBToGray_8u_C3C1R", rgb)``, and what it takes:
``moxcc.exports["moxiRGBToGray_8u_C3C1R"]``.
"""

import inspect
import re
import warnings
from collections import namedtuple
from types import MappingProxyType

from . import _moxcc
from ._moxcc import Error, Export, StatusWarning

Library = namedtuple("Library", "path level")
_path = _moxcc.library_path()
_folder = re.search("/glibc-hwcaps/([^/]+)/", _path)
#: The library file in use, and the processor level that it is built for.
library = Library(_path, _folder[1] if _folder else "x86-64-v2")


def GetLibVersion():
    """The library's version record, as a dictionary."""
    return _moxcc.version()


__version__ = GetLibVersion()["version"].split()[0]

#: What each export takes, by its full name.
exports = MappingProxyType({"moxccGetLibVersion": GetLibVersion, **_moxcc.exports})


def call(name, *args, **options):
    """Calls an export by its full name; arguments as those of its operation."""
    return exports[name](*args, **options)


def _function(operation):
    def function(src, out=None, **options):
        return operation(src, out, options)

    def parameter(name, annotation, kind=inspect.Parameter.KEYWORD_ONLY, default=inspect.Parameter.empty):
        return inspect.Parameter(name, kind, default=default, annotation=annotation)

    positional = inspect.Parameter.POSITIONAL_OR_KEYWORD
    sides = [exports[name] for name in operation.exports]
    if sides[0].out is None:
        parameters, result = [parameter("src", "tuple[int, int]", positional)], "int"
    else:
        source, result = ({(side(e) or e.out)["arrays"][0] == "[" for e in sides} for side in (lambda e: e.src, lambda e: e.out))
        parameters = [
            parameter("src", _annotation(source, "Sequence[Array]"), positional),
            parameter("out", _annotation(result, "Sequence[Array]") + " | None", positional, None),
        ]
        result = _annotation(result, "tuple[Array, ...]")
    for name, annotation, needed in operation.keywords:
        parameters.append(parameter(name, annotation) if needed else parameter(name, annotation + " | None", default=None))
    function.__signature__ = inspect.Signature(parameters, return_annotation=result)
    function.__name__ = function.__qualname__ = operation.name
    function.__doc__ = operation.documentation
    return function


def _annotation(planar, sequence):
    """Of a side that is a single array, planes, or either, by whether its exports have planes."""
    return " | ".join(sequence if planes else "Array" for planes in sorted(planar))


for _operation in _moxcc.operations.values():
    globals()[_operation.name] = _function(_operation)

# Once a program, not once a line: such sizes seldom come alone. Appended, so that the caller's filters come first.
warnings.filterwarnings("once", category=StatusWarning, append=True)

__all__ = ["Error", "Export", "GetLibVersion", "StatusWarning", "call", "exports", "library", *_moxcc.operations]
