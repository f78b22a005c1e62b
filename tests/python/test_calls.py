"""What Python adds to the exports: which one a call means, what it refuses, threads, other packages' pictures."""

import inspect
import pickle
import re
import subprocess
import sys
import threading
import time
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

import moxcc
import numpy as np
import pytest

RGB = np.random.default_rng(1).integers(0, 256, (32, 48, 3), "u1")
RGBA = np.dstack([RGB, RGB[..., 0]])
GRAY = np.ascontiguousarray(RGB[..., 1])
Y, CBCR = moxcc.RGBToYCbCr420(RGB, layout="P2")
PLANES = moxcc.RGBToYCbCr420(RGB, layout="P3")
V210 = np.zeros((4, 128), "u4")
HALF = RGB.astype("f2")
FIXED = np.frombuffer(bytes(48 * 32 * 3), "u1")  # read-only
ODD = np.zeros(4609, "u1")[1:].view("u2").reshape(12, 64, 3)  # at odd addresses
FOLDED = np.lib.stride_tricks.as_strided(GRAY.copy(), (32, 48), (8, 1))


@pytest.mark.parametrize(
    "call, export",
    [
        (lambda f: f.RGBToGray(RGB), "moxiRGBToGray_8u_C3C1R"),
        (lambda f: f.RGBToGray(RGBA.astype("u2")), "moxiRGBToGray_16u_AC4C1R"),
        (lambda f: f.RGBToYCbCr420(RGB, layout="P3"), "moxiRGBToYCbCr420_8u_C3P3R"),
        (lambda f: f.RGBToYCbCr420(RGB, [np.empty_like(p) for p in (Y, CBCR)]), "moxiRGBToYCbCr420_8u_C3P2R"),
        (lambda f: f.YCbCr420ToRGB((Y, CBCR)), "moxiYCbCr420ToRGB_8u_P2C3R"),
        (lambda f: f.YCbCr420ToRGB((Y, CBCR.reshape(16, 48))), "moxiYCbCr420ToRGB_8u_P2C3R"),
        (lambda f: f.YCbCr420ToRGB((Y, CBCR), alpha=7), "moxiYCbCr420ToRGB_8u_P2C4R"),
        (lambda f: f.YCbCr420ToRGB(PLANES), "moxiYCbCr420ToRGB_8u_P3C3R"),
        (lambda f: f.BGRToLab(RGB, dtype="uint16"), "moxiBGRToLab_8u16u_C3R"),
        (lambda f: f.ReduceBits(GRAY, threshold=9), "moxiReduceBits_8u1u_C1R"),
        (lambda f: f.ReduceBits(GRAY, levels=4, dither="fs"), "moxiReduceBits_8u_C1R"),
        (lambda f: f.RGBToYUV420(RGB, layout="P3"), "moxiRGBToYUV420_8u_C3P3R"),
        (lambda f: f.RGBToYUV420(RGB, layout="C3P3"), "moxiRGBToYUV420_8u_C3P3"),
        (lambda f: f.RGBToLab([GRAY.astype("f8")] * 3), "moxiRGBToLab_64f_P3R"),
        (lambda f: f.GammaFwd(RGB), "moxiGammaFwd_8u_C3R"),
        (lambda f: f.GammaFwd(*[RGB.copy()] * 2), "moxiGammaFwd_8u_C3IR"),
    ],
)
def test_finds_the_export(call, export):
    class Named:
        """The same calls, of the export alone."""

        def __getattr__(self, operation):
            assert moxcc.exports[export].operation == operation
            return moxcc.exports[export]

    for a, b in zip(call(moxcc), call(Named()), strict=True):
        np.testing.assert_array_equal(a, b)


REFUSED = [
    (TypeError, "src: expected a numpy array", lambda: moxcc.RGBToGray("picture.png")),
    (TypeError, r"(?s)src: float16 \(32, 48, 3\).*takes\n.*uint8 \(h, w, 3\)", lambda: moxcc.RGBToGray(HALF)),
    (TypeError, "src: >u2", lambda: moxcc.RGBToGray(RGB.astype(">u2"))),
    (ValueError, r"src: uint8 \(32, 48\)", lambda: moxcc.RGBToGray(GRAY)),
    (TypeError, r"src: \[\]", lambda: moxcc.YCbCr420ToRGB(())),
    (ValueError, "src: samples of a row", lambda: moxcc.RGBToGray(RGB[..., ::-1])),
    (ValueError, "src: samples of a row", lambda: moxcc.RGBToGray(RGB.transpose(1, 0, 2))),
    (ValueError, "src: samples of a row", lambda: moxcc.RGBToGray(RGB[:, ::2])),
    (ValueError, r"src\[1\]: is \(15, 24, 2\) where \(16, 24, 2\)", lambda: moxcc.YCbCr420ToRGB((Y, CBCR[1:]))),
    (ValueError, r"src\[1\]: must have the row step", lambda: moxcc.YCbCrToRGB((Y, FOLDED, Y), layout="C3")),
    (ValueError, "src: rows must lead downwards", lambda: moxcc.GammaFwd(RGB[::-1])),
    (ValueError, "src: samples are not aligned", lambda: moxcc.RGBToGray(ODD)),
    (ValueError, "src: is read-only", lambda: moxcc.call("moxiGammaFwd_8u_C3IR", FIXED.reshape(RGB.shape))),
    (ValueError, r"out: is \(31, 48\) where \(32, 48\)", lambda: moxcc.RGBToGray(RGB, GRAY[1:])),
    (ValueError, r"out: uint8 \(32, 48, 3\) does not fit", lambda: moxcc.RGBToGray(RGB, RGB)),
    (ValueError, "out: is read-only", lambda: moxcc.RGBToGray(RGB, FIXED[:1536].reshape(32, 48))),
    (ValueError, "out: rows lie over each other", lambda: moxcc.RGBToGray(RGB, FOLDED)),
    (ValueError, "out: lies over the source", lambda: moxcc.RGBToHLS(RGB, RGB)),
    (ValueError, "out: lies over the source", lambda: moxcc.GammaFwd(RGB[1:], RGB[:-1])),
    (ValueError, r"out\[2\]: lies over out\[1\]", lambda: moxcc.RGBToYCbCr420(RGB, (PLANES[0], PLANES[1], PLANES[1]))),
    (ValueError, "rows must lie without gaps", lambda: moxcc.call("moxiRGBToYUV420_8u_C3P3", RGB[:, :32])),
    (ValueError, "must tell which of\n.*C3P2R.*\n.*C3P3R", lambda: moxcc.RGBToYCbCr420(RGB)),
    (ValueError, "layout: P4 is none of", lambda: moxcc.RGBToYCbCr420(RGB, layout="P4")),
    (TypeError, "dtype: float32 is given by none", lambda: moxcc.RGBToGray(RGB, dtype="f4")),
    (TypeError, "no keyword alfa", lambda: moxcc.RGBToGray(RGB, alfa=1)),
    (TypeError, "does not take alpha=", lambda: moxcc.RGBToGray(RGB, alpha=1)),
    (TypeError, "needs grid=", lambda: moxcc.CFAToRGB(GRAY)),
    (ValueError, "grid: expected one of bggr, rggb", lambda: moxcc.CFAToRGB(GRAY, grid="rgbg")),
    (ValueError, "alpha: expected a whole number from 0 to 255", lambda: moxcc.YCbCr420ToRGB((Y, CBCR), alpha=256)),
    (TypeError, "levels: expected a number", lambda: moxcc.ReduceBits(GRAY, levels="many")),
    (ValueError, "threads: expected 1", lambda: moxcc.RGBToGray(RGB, threads=0)),
    (ValueError, "weights: .* takes 12, not 9", lambda: moxcc.ColorTwist32f(RGB, weights=np.eye(3))),
    (ValueError, "region: must lie in", lambda: moxcc.CFAToRGB(GRAY, grid="rggb", region=(40, 0, 9, 9))),
    (ValueError, "src: is .* where", lambda: moxcc.YUV422v210ToGray_709HDTV(V210, width=200)),
    (KeyError, "moxiNone", lambda: moxcc.call("moxiNone", RGB)),
]  # fmt: skip


@pytest.mark.parametrize("error, text, call", REFUSED, ids=[text for _, text, _ in REFUSED])
def test_refusals_name_the_argument(error, text, call):
    with pytest.raises(error, match=text):
        call()


def test_statuses():
    with pytest.raises(moxcc.Error, match="moxStatusBadLevels") as caught:
        moxcc.ReduceBits(GRAY, levels=1)
    copy = pickle.loads(pickle.dumps(caught.value))  # as from another process
    assert (copy.status, copy.export, str(copy)) == (-54, "moxiReduceBits_8u_C1R", str(caught.value))
    with pytest.raises(moxcc.Error, match="least size is 5 x 5"):
        moxcc.DemosaicAHD(GRAY[:4], grid="rggb")
    program = """import moxcc, numpy, sys
for height in range(2, 9): moxcc.RGBToYCbCr420(numpy.zeros((height, 3, 3), "u1"), layout="P3")
"""
    told = subprocess.run([sys.executable, "-c", program], capture_output=True, text=True, check=True).stderr
    assert told.count("StatusWarning") == 1 and "last column" in told
    # Nothing is converted: zeros, not what the memory held.
    assert not np.any(pytest.warns(moxcc.StatusWarning, moxcc.ToneMapMean, np.full((8, 8), -1, "f4")))


def test_views_without_a_copy():
    np.testing.assert_array_equal(moxcc.RGBToGray(RGB[::-3, 8:24]), moxcc.RGBToGray(RGB)[::-3, 8:24])
    np.testing.assert_array_equal(moxcc.RGBToGray(np.broadcast_to(RGB[:1], RGB.shape))[9], moxcc.RGBToGray(RGB)[0])
    both = np.concatenate([GRAY, GRAY], axis=1)  # rows of source and output take turns, and do not overlap
    moxcc.ReduceBits(both[:, :48], both[:, 48:], levels=2)
    np.testing.assert_array_equal(both[:, 48:], moxcc.ReduceBits(GRAY, levels=2))
    copy = GRAY.copy()
    np.testing.assert_array_equal(moxcc.ReduceBits(copy, out=copy, levels=3), moxcc.ReduceBits(GRAY, levels=3))
    assert moxcc.YUV422v210ToGray_709HDTV(V210).shape == (4, 192)
    assert moxcc.YUV422v210ToGray_709HDTV(V210, width=175).shape == (4, 175)


def test_functions_tell_what_they_take():
    package = moxcc.__path__[0]
    stubs = open(package + "/__init__.pyi").read()
    compile(stubs, "__init__.pyi", "exec")
    for name in moxcc._moxcc.operations:
        function = getattr(moxcc, name)
        assert f"def {name}{inspect.signature(function)}".replace("'", "") in stubs
        assert all(export in function.__doc__ for export in moxcc._moxcc.operations[name].exports)
        assert pickle.loads(pickle.dumps(function)) is function
    assert open(package + "/py.typed").read() == ""
    export = moxcc.exports["moxiYCbCr420ToRGB_8u_P2C4R"]
    assert (export.src["layout"], export.out["arrays"], export.least_size) == ("P2", "uint8 (h, w, 4)", (1, 1))
    assert "NV12" in export.src["formats"] and export.bands[0] == "even rows"


def test_widest_library():
    path = Path(moxcc.library.path)
    folder = path.parent.parent if path.parent.name == moxcc.library.level else path.parent / "glibc-hwcaps"
    flags = {"x86-64-v4": "avx512bw", "x86-64-v3": "avx2"}
    has = open("/proc/cpuinfo").read().split()
    there = {file.parent.name for file in folder.glob("*/lib*") if flags[file.parent.name] in has}
    assert moxcc.library.level == max(there, default="x86-64-v2")


def test_python_threads():
    large = np.tile(RGB / np.float32(255), (40, 20, 1))
    expected = moxcc.RGBToLUV(large)
    with ThreadPoolExecutor(4) as pool:
        for result in pool.map(moxcc.RGBToLUV, [large] * 8):
            np.testing.assert_array_equal(result, expected)

    # This thread runs while a call does.
    done = threading.Event()
    worker = threading.Thread(target=lambda: (moxcc.RGBToLUV(np.tile(large, (2, 2, 1))), done.set()))
    worker.start()
    begin = last = time.perf_counter()
    longest = 0
    while not done.is_set():
        now = time.perf_counter()
        longest, last = max(longest, now - last), now
    worker.join()
    assert longest < 0.8 * (time.perf_counter() - begin)


def make_clip(av, path, width, height):
    with av.open(path, "w") as clip:
        stream = clip.add_stream("ffv1", rate=25)
        stream.width, stream.height, stream.pix_fmt = width, height, "yuv420p"
        for i in range(3):
            pixels = np.resize(np.roll(RGB, i), (height * 3 // 2, width))
            clip.mux(stream.encode(av.VideoFrame.from_ndarray(pixels, "yuv420p")))
        clip.mux(stream.encode())


def test_decoded_frames(tmp_path):
    av = pytest.importorskip("av")
    width, height = 174, 96  # rows have gaps in the decoder's memory
    make_clip(av, str(tmp_path / "clip.mkv"), width, height)
    with av.open(str(tmp_path / "clip.mkv")) as clip:
        frames = list(clip.decode(video=0))
    assert len(frames) == 3
    for frame in frames:
        planes = [np.frombuffer(p, "u1").reshape(p.height, p.line_size)[:, : p.width] for p in frame.planes]
        y, chroma = np.split(frame.to_ndarray().ravel(), [width * height])  # copies, without gaps
        packed = y.reshape(height, width), *chroma.reshape(2, height // 2, width // 2)
        np.testing.assert_array_equal(moxcc.YCbCr420ToRGB(planes), moxcc.YCbCr420ToRGB(packed))


def test_the_page(tmp_path, monkeypatch):
    """What docs/python.md shows runs, from top to bottom."""
    av, Image = pytest.importorskip("av"), pytest.importorskip("PIL.Image")
    monkeypatch.chdir(tmp_path)
    Image.fromarray(RGB).save("picture.png")
    make_clip(av, "clip.mkv", 174, 96)
    page = Path(__file__).parents[2].joinpath("docs/python.md").read_text()
    names = {}
    for block in re.findall(r"~~~python\n(.*?)~~~", page, re.S):
        exec(block, names)
    np.testing.assert_array_equal(np.asarray(Image.open("gray.png")), moxcc.RGBToGray(RGB))
    assert (names["means"].shape, names["rgb"].shape) == ((40, 3), (96, 174, 3))
