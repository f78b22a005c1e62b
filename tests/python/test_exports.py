"""Every export, called through Python, gives the bytes and the status of the C function called through ctypes."""

import ctypes
import re
import warnings
import zlib
from pathlib import Path

import moxcc
import numpy as np
import pytest

NAMES = Path(__file__).parents[1].joinpath("exports.txt").read_text().split()
C = ctypes.CDLL(moxcc.library.path)
SAMPLES = {"8u": "u1", "16u": "u2", "16s": "i2", "32s": "i4", "32u": "u4", "32f": "f4", "64f": "f8", "1u": "u1"}
VALUES = {  # keyword: value, and what C calls it and takes
    "alpha": (100, "aval", 100), "dither": ("st", "ditherType", 3), "grid": ("rggb", "grid", 1),
    "levels": (5, "levels", 5), "slice": ("all", "sliceMode", 21), "noise": (10, "noise", 10),
    "first_bit": (3, "dstBitOffset", 3), "threshold": (99, "threshold", 99), "data_type": (1, "dataType", 1),
    "lower": (-0.5, "vMin", -0.5), "upper": (1.5, "vMax", 1.5),
}  # fmt: skip


def struct(*values):
    fields = [(f"_{i}", ctypes.c_int32) for i in range(len(values))]
    return type("Struct", (ctypes.Structure,), {"_fields_": fields})(*values)


class Planes:
    """Arrays of a side, with gaps between rows and, if it can be, from the bottom up."""

    def __init__(self, export, side, name, width, height, random, first_bit=0):
        forward = re.search("Gamma|Twist|BGR.*HLS|HLS.*BGR|v210", name)
        own_steps = re.search({"src": "src", "out": "dst"}[side] + r"\w*(Steps|CbCrStep)", export.prototype)
        dtype = np.dtype(SAMPLES[(getattr(export, side) or export.out)["depth"]])
        self.memory, self.arrays = [], []
        for i, (h, w, *c) in enumerate(export.shapes(side, width + first_bit, height)):
            samples = w * (c[0] if c else 1)
            gap = 0 if "Step" not in export.prototype else 5 + 3 * i if own_steps else 5
            if dtype.kind == "f":
                memory = random.random((h, samples + gap)).astype(dtype)
            else:
                memory = np.frombuffer(bytearray(random.bytes(h * (samples + gap) * dtype.itemsize)), dtype)
                memory = memory.reshape(h, samples + gap)
            rows = memory if forward or not gap else memory[::-1]
            self.memory.append(memory)
            self.arrays.append(rows[:, :samples].reshape(h, w, *c))
        self.before = [m.copy() for m in self.memory]

    def argument(self):
        return self.arrays[0] if len(self.arrays) == 1 else self.arrays

    def taken(self):
        """What is there now, as bytes; the state before is back then."""
        taken = b"".join(m.tobytes() for m in self.memory)
        for memory, before in zip(self.memory, self.before):
            memory[...] = before
        return taken


def call_c(export, name, sides, size, region, weights):
    """Arguments from the prototype's declarations alone."""
    kept, arguments, result = [], [], ctypes.c_int32(-1)
    numbers = {c_name: value for _, c_name, value in VALUES.values()}
    for declaration in re.search(r"\((.*)\)", export.prototype)[1].split(", "):
        kind, variable = re.search(r"(\w+)[ *].*?(\w+)(?:\[\d\])?$", declaration.removeprefix("const ")).groups()
        pointers = declaration.count("*") + declaration.count("[")
        side = sides.get("src" if variable.startswith("src") else "out", sides.get("out"))
        arrays = side.arrays if re.match("src|dst", variable) and side else []
        plane = 1 if "CbCr" in variable else 0
        if variable.endswith("Steps"):
            value = (ctypes.c_int32 * 4)(*(a.strides[0] for a in arrays))
        elif variable == "bufferStep":
            value = 4096
        elif variable.endswith("Step"):
            value = arrays[plane].strides[0] // (arrays[plane].itemsize if "v210" in name else 1)
        elif kind == "MoxiSize":
            value = struct(*size) if variable == "srcSize" else struct(*region[2:])
        elif kind == "MoxiRect":
            value = struct(*region)
        elif pointers == 2:
            value = (ctypes.c_void_p * 4)(*(a.ctypes.data for a in arrays))
        elif pointers == 1 and arrays:
            value = ctypes.c_void_p(arrays[plane].ctypes.data)
        elif variable == "bufferSize":
            value = ctypes.byref(result)
        elif pointers == 1 and variable in ("coeffs", "twist", "scale"):
            value = ctypes.c_void_p(weights.astype("f8" if kind == "Mox64f" else "f4", copy=False).ctypes.data)
        elif pointers == 1:
            value = ctypes.create_string_buffer(1 << 18)
        else:
            value = (ctypes.c_float if kind == "Mox32f" else ctypes.c_int32)(numbers.get(variable, 0))
        kept.append(value)
        arguments.append(value)
    return C[name](*arguments), result.value


def call_python(function, *arguments, **options):
    with warnings.catch_warnings(record=True) as caught:
        warnings.simplefilter("always")
        try:
            return function(*arguments, **options), "warned" if caught else 0
        except moxcc.Error as error:
            return None, error.status


@pytest.mark.parametrize("size", [(48, 24), (37, 13)], ids=str)
@pytest.mark.parametrize("name", [name for name in NAMES if name.startswith("moxi")])
def test_export_gives_what_c_gives(name, size):
    export = moxcc.exports[name]
    random = np.random.default_rng(zlib.crc32(name.encode()))
    takes = [keyword for keyword, *_ in export.keywords]
    options = {keyword: VALUES[keyword][0] for keyword in takes if keyword in VALUES}
    if export.out is None:
        assert call_python(export, size, **options)[0] == call_c(export, name, {}, size, (0, 0, *size), None)[1]
        return
    region = (2, 1, size[0] - 3, size[1] - 2) if "region" in takes else (0, 0, *size)
    weights = random.random(export.weights, "f8" if "64f" in name else "f4")
    options |= {k: v for k, v in {"region": region, "width": size[0], "weights": weights}.items() if k in takes}

    sides = {"out": Planes(export, "out", name, *region[2:], random, options.get("first_bit", 0))}
    if export.src:
        sides["src"] = Planes(export, "src", name, *size, random)
    out, arguments = sides["out"], [side.argument() for side in (sides.get("src"), sides["out"]) if side]

    status, _ = call_c(export, name, sides, size, region, weights)
    expected = out.taken()
    for threads in (1, 3):
        result, told = call_python(export, *arguments, threads=threads, **options)
        assert told == ("warned" if status > 0 else status)
        assert out.taken() == expected
    if status < 0 or not export.src:
        return
    assert result is arguments[-1]

    # The operation's own function finds the same export, and makes arrays that hold the same.
    options["layout"] = name.removesuffix("_L").rpartition("_")[2]
    made = call_python(getattr(moxcc, export.operation), arguments[0], dtype=SAMPLES[export.out["depth"]], **options)[0]
    for memory in out.memory:
        memory[...] = 0
    call_c(export, name, sides, size, region, weights)
    if not re.search("64f|Filter|RGBToYUV422_8u_C3P3|ToneMapMean", name):  # theirs depend on addresses
        for a, b in zip([made] if isinstance(made, np.ndarray) else made, out.arrays, strict=True):
            np.testing.assert_array_equal(a, b)


def test_names_are_complete():
    assert set(moxcc.exports) == set(NAMES)
    assert {moxcc.exports[n].operation for n in NAMES if n.startswith("moxi")} == set(moxcc._moxcc.operations)
    assert moxcc.call("moxccGetLibVersion")["version"].startswith(moxcc.__version__)
