"""Pixel conversions with every output bit defined, on numpy arrays.

A function an operation: ``moxcc.RGBToGray(rgb)``. Depth and layout follow from the arrays and keywords; see
``help(moxcc.RGBToGray)``. Any export by its full name: ``moxcc.call("moxiRGBToGray_8u_C3C1R", rgb)``, and what it
takes: ``moxcc.exports["moxiRGBToGray_8u_C3C1R"]``.
"""

import inspect
import os
import re
import warnings
from collections import namedtuple
from types import MappingProxyType

from . import _moxcc
from ._moxcc import Error, Export, StatusWarning

Library = namedtuple("Library", "path level")
_path = os.path.realpath(_moxcc.library_path())
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
        sources, results = [e.src or e.out for e in sides], [e.out for e in sides]
        parameters = [
            parameter("src", _annotation(sources, "Sequence[Array]"), positional),
            parameter("out", _annotation(results, "Sequence[Array]") + " | None", positional, None),
        ]
        result = _annotation(results, "tuple[Array, ...]")
    for name, annotation, needed in operation.keywords:
        optional = {} if needed else {"default": None}
        parameters.append(parameter(name, annotation if needed else annotation + " | None", **optional))
    function.__signature__ = inspect.Signature(parameters, return_annotation=result)
    function.__name__ = function.__qualname__ = operation.name
    function.__doc__ = operation.documentation
    return function


def _annotation(sides, sequence):
    """Of an argument that is a single array, planes, or either, as the exports have it."""
    return " | ".join(sorted({sequence if side["arrays"].startswith("[") else "Array" for side in sides}))


for _operation in _moxcc.operations.values():
    globals()[_operation.name] = _function(_operation)

# Once a program, not once a line: such sizes seldom come alone. Appended, so that the caller's filters come first.
warnings.filterwarnings("once", category=StatusWarning, append=True)

__all__ = ["Error", "Export", "GetLibVersion", "StatusWarning", "call", "exports", "library", *_moxcc.operations]
