#!/usr/bin/python3
"""cluster.py [folder of .npy frames]: converts frames on a cluster of workers, and measures.

Without a folder it makes one: 2000 frames of 640x360. Each worker reads, converts and reduces its own frames, so that
only results travel. With `--scheduler HOST:PORT` the workers of a running cluster do it; they need the folder, too.
"""

import argparse
import tempfile
import time
from pathlib import Path

import dask
import dask.array as da
import moxcc
import numpy as np
from distributed import Client, LocalCluster


def make_frames(folder, count, height=360, width=640):
    """Writes frames of a moving gradient."""
    y, x = np.mgrid[:height, :width]
    for i in range(count):
        frame = np.stack([x + i, y + 2 * i, x + y - i], axis=-1).astype(np.uint8)
        np.save(folder / f"{i:06}.npy", frame)


def frames_in(folder, frames_a_chunk=20):
    """All frames as one array of (frame, row, column, channel); nothing is read yet."""
    files = sorted(folder.glob("*.npy"))
    first = np.load(files[0], mmap_mode="r")

    def read(some):
        return np.stack([np.load(file) for file in some])

    chunks = [files[i : i + frames_a_chunk] for i in range(0, len(files), frames_a_chunk)]
    delayed = dask.delayed(read)
    return da.concatenate([da.from_delayed(delayed(some), (len(some), *first.shape), first.dtype) for some in chunks])


def each_frame(function, frames, **options):
    """A conversion of every frame of a chunk."""
    return np.stack([function(frame, **options) for frame in frames])


def lab_means(frames, threads=1):
    """The mean L, a and b of each frame: what a search for scene changes starts from."""
    lab = frames.map_blocks(lambda chunk: each_frame(moxcc.RGBToLab, chunk, threads=threads), dtype=frames.dtype)
    return lab.mean(axis=(1, 2))


def measure(client, folder, threads):
    begin = time.perf_counter()
    means = client.compute(lab_means(frames_in(folder), threads)).result()
    return means, len(means) / (time.perf_counter() - begin)


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("folder", nargs="?", type=Path)
    parser.add_argument("--scheduler", help="of a cluster that runs")
    parser.add_argument("--frames", type=int, default=2000, help="to make where no folder is given")
    arguments = parser.parse_args()
    with tempfile.TemporaryDirectory() as made:
        folder = arguments.folder or Path(made)
        if not arguments.folder:
            make_frames(folder, arguments.frames)
        alone = np.stack([moxcc.RGBToLab(np.load(file)).mean(axis=(0, 1)) for file in sorted(folder.glob("*.npy"))])

        print(f"{len(alone)} frames\n")
        print("| workers | threads a call | frames a second | as one process |\n|---|---|---|---|")
        for workers in (1, 2) if not arguments.scheduler else (None,):
            # A worker runs one task at a time; more threads are those of a call.
            cluster = arguments.scheduler or LocalCluster(n_workers=workers, threads_per_worker=1, dashboard_address=None)
            with Client(cluster) as client:
                workers = len(client.scheduler_info()["workers"])
                for threads in (1, 2):
                    means, speed = measure(client, folder, threads)
                    same = "same" if np.array_equal(means, alone) else "DIFFERENT"
                    print(f"| {workers} | {threads} | {speed:.0f} | {same} |", flush=True)
            if not arguments.scheduler:
                cluster.close()


if __name__ == "__main__":
    main()
