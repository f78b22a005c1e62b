"""The example of a cluster: the results of one process, also when a worker dies."""

import os
import signal
import sys
import time
from pathlib import Path

import moxcc
import numpy as np
import pytest

distributed = pytest.importorskip("distributed")
sys.path.insert(0, str(Path(__file__).parents[2] / "python/examples"))
cluster = __import__("cluster")


def in_memory(dask_scheduler):
    return sum(task.state == "memory" for task in dask_scheduler.tasks.values())


def test_a_killed_worker_loses_nothing(tmp_path):
    cluster.make_frames(tmp_path, 240, 180, 320)
    expected = np.stack([moxcc.RGBToLab(np.load(f)).mean(axis=(0, 1)) for f in sorted(tmp_path.glob("*.npy"))])
    with (
        distributed.LocalCluster(n_workers=2, threads_per_worker=1, dashboard_address=None) as local,
        distributed.Client(local) as client,
    ):
        means = client.compute(cluster.lab_means(cluster.frames_in(tmp_path, 4)))
        while client.run_on_scheduler(in_memory) < 3:
            time.sleep(0.01)
        os.kill(next(iter(client.run(os.getpid).values())), signal.SIGKILL)
        assert not means.done()
        np.testing.assert_array_equal(means.result(timeout=60), expected)
