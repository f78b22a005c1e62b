#!/usr/bin/python3
"""python_bench.py [WIDTHxHEIGHT ...]: conversions called from Python, beside OpenCV and Pillow on the same pictures.

The figures are millions of pixels a second of one thread, the best of several runs that take turns; in the last table,
microseconds of a call on 16x16 pixels. Results are written to arrays that are there already, where a package can do so.
The packages' rules differ in their last bits: this compares speed only.
"""

import sys
import time

import cv2
import moxcc
import numpy as np
from PIL import Image

cv2.setNumThreads(1)


def rows(width, height):
    """A name, and calls of moxcc, OpenCV and Pillow without arguments; None where one has no such conversion."""
    random = np.random.default_rng(1)
    rgb = random.integers(0, 256, (height, width, 3), "u1")
    gray, packed = np.ascontiguousarray(rgb[..., 0]), np.ascontiguousarray(rgb[..., :2])
    picture = Image.fromarray(rgb)
    i420 = random.integers(0, 256, (height * 3 // 2, width), "u1")
    y, chroma = i420[:height], i420[height:]
    cb, cr = chroma.reshape(2, height // 2, width // 2)
    matrix = np.array([[0.4, 0.3, 0.2, 5], [0.1, 0.6, 0.3, 0], [0.2, 0.2, 0.5, 1]], "f4")
    out3, out1, out420 = np.empty_like(rgb), np.empty_like(gray), np.empty_like(i420)
    planes = (out420[:height], *out420[height:].reshape(2, height // 2, width // 2))

    def cv(code, source, out):
        return lambda: cv2.cvtColor(source, getattr(cv2, "COLOR_" + code), dst=out)

    def pil(mode, *matrix_of_floats):
        return lambda: picture.convert(mode, *matrix_of_floats)

    return [
        ("RGB to gray", lambda: moxcc.RGBToGray(rgb, out1), cv("RGB2GRAY", rgb, out1), pil("L")),
        ("RGB to YCbCr", lambda: moxcc.RGBToYCbCr(rgb, out3), cv("RGB2YCrCb", rgb, out3), pil("YCbCr")),
        ("RGB to HSV", lambda: moxcc.RGBToHSV(rgb, out3), cv("RGB2HSV", rgb, out3), pil("HSV")),
        ("RGB to HLS", lambda: moxcc.RGBToHLS(rgb, out3), cv("RGB2HLS", rgb, out3), None),
        ("RGB to Lab", lambda: moxcc.RGBToLab(rgb, out3), cv("RGB2LAB", rgb, out3), None),
        ("RGB to LUV", lambda: moxcc.RGBToLUV(rgb, out3), cv("RGB2LUV", rgb, out3), None),
        ("BGR to I420", lambda: moxcc.BGRToYCbCr420(rgb, planes), cv("BGR2YUV_I420", rgb, out420), None),
        ("I420 to RGB", lambda: moxcc.YCbCr420ToRGB((y, cb, cr), out3), cv("YUV2RGB_I420", i420, out3), None),
        ("NV12 to RGB", lambda: moxcc.YCbCr420ToRGB((y, chroma), out3), cv("YUV2RGB_NV12", i420, out3), None),
        ("YUY2 to RGB", lambda: moxcc.YCbCr422ToRGB(packed, out3), cv("YUV2RGB_YUY2", packed, out3), None),
        ("Bayer to RGB", lambda: moxcc.CFAToRGB(gray, out3, grid="bggr"), cv("BayerRG2RGB", gray, out3), None),
        (
            "3 x 4 matrix",
            lambda: moxcc.ColorTwist32f(rgb, out3, weights=matrix),
            lambda: cv2.transform(rgb, matrix, dst=out3),
            pil("RGB", tuple(matrix.ravel().tolist())),
        ),
    ]


def seconds(calls):
    """The least time of each, in turns, so that all see the same disturbances."""
    counts = []
    for call in calls:
        begin = time.perf_counter()
        call()
        counts.append(max(1, int(0.01 / (time.perf_counter() - begin))))
    best = [float("inf")] * len(calls)
    for _ in range(25):
        for i, (call, count) in enumerate(zip(calls, counts)):
            begin = time.perf_counter()
            for _ in range(count):
                call()
            best[i] = min(best[i], (time.perf_counter() - begin) / count)
    return best


def table(width, height, title, figure):
    print(f"\n{title}\n\n| Conversion | moxcc | OpenCV | Pillow | moxcc beside the faster |\n|---|---|---|---|---|")
    for name, *calls in rows(width, height):
        times = iter(seconds([call for call in calls if call]))
        taken = [next(times) if call else None for call in calls]
        peers = [t for t in taken[1:] if t]
        figures = " | ".join(figure(t) if t else "" for t in taken)
        print(f"| {name} | {figures} | {min(peers) / taken[0]:.2f} |", flush=True)


print(f"{moxcc.library.path} ({moxcc.library.level}), OpenCV {cv2.__version__}, Pillow {Image.__version__}")
for size in sys.argv[1:] or ["1280x720"]:
    w, h = map(int, size.split("x"))
    table(w, h, f"{size}, millions of pixels a second", lambda t: f"{w * h / t / 1e6:.0f}")
table(16, 16, "16x16, microseconds a call", lambda t: f"{t * 1e6:.1f}")
