#!/usr/bin/env python3
"""ns per item of the NumPy package on stacks of 65536 small matrices, against
NumPy's own stacked functions and against the bare library call (the same
member through ctypes with its argument list built beforehand), in one run.

    PYTHONPATH=build/default/python /usr/bin/python3 bench/numpy_bench.py [--threads N] [--count K]
"""

import argparse
import time

import numpy as np

import orlm
from orlm import _lib


def best(fn, repeat):
    fn()
    times = []
    for _ in range(repeat):
        t = time.perf_counter()
        fn()
        times.append(time.perf_counter() - t)
    return min(times)


def direct(name, **kw):
    """The member called with a prepared argument list: the library's own time."""
    fn, items = _lib.member(name)
    args = _lib.pack(items, kw)
    return lambda keep=kw: fn(*args)   # the arrays stay alive with the call


def cases(k):
    rng = np.random.default_rng(1)
    m32 = rng.standard_normal((k, 4, 4)).astype(np.float32)
    a = rng.standard_normal((k, 4, 4)) + 8 * np.eye(4)
    s = rng.standard_normal((k, 3, 3))
    s = s @ s.transpose(0, 2, 1) + 3 * np.eye(3)
    b = rng.standard_normal((k, 4))
    out32, out = np.empty_like(m32), np.empty_like(a)
    buf, det, perm, x = np.empty(20), np.empty(k), np.empty((k, 4), np.int32), np.empty_like(b)
    w, v, sbuf = np.empty((k, 3)), np.empty_like(s), np.empty(9)
    lu, piv = orlm.lu_factor(a)
    mul = direct("orlmMul_mama_32f", src1=m32, src1Width=4, src1Height=4, src2=m32, src2Width=4, src2Height=4,
                 dst=out32, count=k)
    decomp = direct("orlmLUDecomp_ma_64f", src=a, perm=perm, dst=out, widthHeight=4, count=k)
    backsubst = direct("orlmLUBackSubst_mava_64f", src=lu, perm=piv, rhs=b, dst=x, widthHeight=4, count=k)
    return [
        ("matmul 4x4 32f", lambda t: orlm.matmul(m32, m32, out=out32, threads=t), lambda: np.matmul(m32, m32), mul),
        ("inv 4x4 64f", lambda t: orlm.inv(a, out=out, threads=t), lambda: np.linalg.inv(a),
         direct("orlmInvert_ma_64f", src=a, buffer=buf, dst=out, widthHeight=4, count=k)),
        ("det 4x4 64f", lambda t: orlm.det(a, threads=t), lambda: np.linalg.det(a),
         direct("orlmDet_ma_64f", src=a, widthHeight=4, buffer=buf, dst=det, count=k)),
        ("eigh 3x3 64f", lambda t: orlm.eigh(s, threads=t), lambda: np.linalg.eigh(s),
         direct("orlmEigenValuesVectorsSym_ma_64f", src=s, buffer=sbuf, dstVectors=v, dstValues=w, widthHeight=3,
                count=k)),
        ("lu_factor+lu_solve 4x4 64f", lambda t: orlm.lu_solve(orlm.lu_factor(a, threads=t), b, threads=t),
         lambda: np.linalg.solve(a, b[..., None]), lambda: (decomp(), backsubst())),
    ]


def main():
    p = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    p.add_argument("--threads", type=int, default=None, help="library thread count (default: as the library starts)")
    p.add_argument("--count", type=int, default=65536)
    p.add_argument("--repeat", type=int, default=30)
    opt = p.parse_args()
    threads = opt.threads if opt.threads is not None else _lib.thread_count.value
    print(f"{opt.count} items, library threads {threads}, NumPy {np.__version__}; best of {opt.repeat}, ns per item")
    print(f"{'operation':28} {'orlm':>8} {'NumPy':>8} {'C call':>8} {'NumPy/orlm':>11} {'orlm/C':>7}")
    for name, ours, numpy_fn, c_call in cases(opt.count):
        t_c = best(lambda: _lib_call(c_call, threads), opt.repeat)
        t_ours = best(lambda: ours(threads), opt.repeat)
        t_np = best(numpy_fn, max(3, opt.repeat // 5))
        ns = [1e9 * t / opt.count for t in (t_ours, t_np, t_c)]
        print(f"{name:28} {ns[0]:8.1f} {ns[1]:8.1f} {ns[2]:8.1f} {ns[1] / ns[0]:11.1f} {ns[0] / ns[2]:7.2f}")


def _lib_call(c_call, threads):
    with _lib.threads_of(threads):
        c_call()


if __name__ == "__main__":
    main()
