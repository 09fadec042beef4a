#!/usr/bin/env python3
"""A scene of rigid bodies held in one structured array: each body's pose (a
4x4 homogeneous transform), its inertia tensor in body axes and its mass.
A few orlm calls move every body under a parent transform, invert the poses,
turn the inertia tensors into world axes, find the principal moments and
axes, and project the centres of mass through a camera; the same work in
plain NumPy is timed beside it.

    PYTHONPATH=build/default/python /usr/bin/python3 examples/batch.py
"""

import time

import numpy as np

import orlm

N = 100_000
rng = np.random.default_rng(7)

# ---- the scene: one record per body -------------------------------------------
body = np.dtype([("id", "i4"), ("pose", "f8", (4, 4)), ("inertia", "f8", (3, 3)), ("mass", "f8")], align=True)
scene = np.zeros(N, body)
scene["id"] = np.arange(N)
q = rng.standard_normal((N, 4))
q /= np.linalg.norm(q, axis=1, keepdims=True)
w, x, y, z = q.T
scene["pose"][:, :3, :3] = np.stack([
    [1 - 2 * (y * y + z * z), 2 * (x * y - z * w), 2 * (x * z + y * w)],
    [2 * (x * y + z * w), 1 - 2 * (x * x + z * z), 2 * (y * z - x * w)],
    [2 * (x * z - y * w), 2 * (y * z + x * w), 1 - 2 * (x * x + y * y)]]).transpose(2, 0, 1)
scene["pose"][:, :3, 3] = rng.uniform(-10, 10, (N, 3))
scene["pose"][:, 3, 3] = 1
scene["mass"] = rng.uniform(1, 5, N)
half = rng.uniform(0.2, 1.0, (N, 3)) ** 2          # a box's principal moments, in body axes
scene["inertia"][:, range(3), range(3)] = scene["mass"][:, None] / 3 * (half.sum(1)[:, None] - half)

parent = np.eye(4)
parent[:3, 3] = (1.0, 2.0, 3.0)
camera = np.array([[1, 0, 0, 0], [0, 1, 0, 0], [0, 0, 1, 0], [0, 0, 0.1, 1]], np.float32)


def principal(inertia, moments, axes, chunk=8192):
    """Principal moments (largest first) and axes into `moments` and `axes`.
    The library's iteration has an absolute stopping test and leaves a few
    tensors in 10^5 unsettled (NoConvergence). It names the first such item,
    the items before it are complete: NumPy takes that one, and the library
    the rest, a chunk at a time."""
    try:
        orlm.eigh(inertia, out=(moments, axes))
    except orlm.OrlLinAlgError as e:
        w, v = np.linalg.eigh(inertia[e.item])
        moments[e.item], axes[e.item] = w[::-1], v[:, ::-1]
        for c in range(e.item + 1, len(inertia), chunk):
            part = slice(c, c + chunk)
            principal(inertia[part], moments[part], axes[part], chunk)
    return moments, axes


def with_orlm():
    world = orlm.matmul(parent, scene["pose"])                    # one parent against every pose
    inverse = orlm.inv(world)
    rot = world[:, :3, :3]                                         # a strided view, no copy
    inertia = orlm.matmul(orlm.matmul(rot, scene["inertia"]), rot.transpose(0, 2, 1))
    moments, axes = principal(inertia, np.empty((N, 3)), np.empty((N, 3, 3)))
    centres = orlm.affine_transform(camera, world[:, :3, 3])       # float32: converted with a copy
    return world, inverse, moments, axes, centres


def with_numpy():
    world = parent @ scene["pose"]
    inverse = np.linalg.inv(world)
    rot = world[:, :3, :3]
    inertia = rot @ scene["inertia"] @ rot.transpose(0, 2, 1)
    moments, axes = np.linalg.eigh(inertia)
    h = np.concatenate([world[:, :3, 3], np.ones((N, 1))], axis=1).astype(np.float32) @ camera.T
    return world, inverse, moments[:, ::-1], axes[:, :, ::-1], h[:, :3] / h[:, 3:]


def timed(fn):
    fn()
    t = time.perf_counter()
    out = fn()
    return out, time.perf_counter() - t


ours, t_ours = timed(with_orlm)
theirs, t_numpy = timed(with_numpy)
for name, a, b in zip(["world poses", "inverses", "principal moments", "centres on camera"],
                      [ours[0], ours[1], ours[2], ours[4]], [theirs[0], theirs[1], theirs[2], theirs[4]]):
    print(f"{name:18} largest difference from NumPy {np.max(np.abs(a - b)):.2e}")
# Axes agree up to the sign of each column.
print(f"{'principal axes':18} largest difference from NumPy "
      f"{np.max(np.abs(np.abs(np.sum(ours[3] * theirs[3], axis=1)) - 1)):.2e} (|cos| - 1)")
print(f"{N} bodies: orlm {1e3 * t_ours:.1f} ms, NumPy {1e3 * t_numpy:.1f} ms ({t_numpy / t_ours:.1f} times)")
