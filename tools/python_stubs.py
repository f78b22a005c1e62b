#!/usr/bin/python3
"""python_stubs.py <file>: writes the package's type stubs, from the signatures that its functions have."""

import inspect
import sys
import textwrap

import moxcc

HEAD = '''\
from collections.abc import Mapping, Sequence
from typing import Any, NamedTuple

import numpy as np
from numpy.typing import ArrayLike, DTypeLike, NDArray

Array = NDArray[Any]

class Library(NamedTuple):
    path: str
    level: str

class Error(RuntimeError):
    status: int
    export: str

class StatusWarning(UserWarning): ...

class Export:
    name: str
    operation: str
    documentation: str
    prototype: str
    src: dict[str, Any] | None
    out: dict[str, Any] | None
    keywords: list[tuple[str, str, bool]]
    least_size: tuple[int, int]
    weights: int
    bands: tuple[str, str]
    def shapes(self, side: str, width: int, height: int) -> list[tuple[int, ...]]: ...
    def __call__(self, src: Any, out: Any = None, **options: Any) -> Any: ...

__version__: str
library: Library
exports: Mapping[str, Any]

def call(name: str, *args: Any, **options: Any) -> Any: ...
def GetLibVersion() -> dict[str, Any]: ...
'''


def stub(name):
    function = getattr(moxcc, name)
    signature = str(inspect.signature(function)).replace("'", "")
    return f'def {name}{signature}:\n    """{textwrap.indent(function.__doc__, "    ").strip()}"""\n'


with open(sys.argv[1], "w") as file:
    file.write(HEAD + "".join("\n" + stub(name) for name in moxcc._moxcc.operations))
