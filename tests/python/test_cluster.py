"""The example of a cluster: the results of one process, also when a worker dies."""

import os
import signal
import sys
from pathlib import Path

import moxcc
import numpy as np
import pytest

distributed = pytest.importorskip("distributed")
sys.path.insert(0, str(Path(__file__).parents[2] / "python/examples"))
cluster = __import__("cluster")


def test_a_killed_worker_loses_nothing(tmp_path):
    cluster.make_frames(tmp_path, 60, 90, 160)
    expected = np.stack([moxcc.RGBToLab(np.load(f)).mean(axis=(0, 1)) for f in sorted(tmp_path.glob("*.npy"))])
    killed = tmp_path / "killed"

    def dies_once(chunk, block_id=None):
        if block_id and block_id[0] == 8 and not killed.exists():
            killed.touch()
            os.kill(os.getpid(), signal.SIGKILL)
        return chunk

    frames = cluster.frames_in(tmp_path, 4).map_blocks(dies_once, dtype=np.uint8)
    with (
        distributed.LocalCluster(n_workers=2, threads_per_worker=1, dashboard_address=None) as local,
        distributed.Client(local) as client,
    ):
        means = client.compute(cluster.lab_means(frames)).result(timeout=120)
    assert killed.exists()
    np.testing.assert_array_equal(means, expected)
