"""Loading the library, packing NumPy arrays into argument groups, calling a
member and turning its status into an exception.

A NumPy array is a base pointer with byte strides, which is the library's
standard layout, so an operand is passed as its own memory: stride0 is the
stride of the stack axis, stride1 of the rows, stride2 of the elements of a
row. Only arrays the library cannot address are copied (see `usable`).
"""

import contextlib
import ctypes
import os

import numpy as np
from numpy.linalg import LinAlgError

from ._members import MEMBERS

SONAME = "liborlmt7.so.5.2"
CORE_SONAME = "liborlcore.so.5.2"

STATUS_NAMES = {0: "Ok", -2: "SmallBlock", -6: "Size", -8: "NullPointer", -10: "DivByZero",
                -179: "NotPosDefinite", -182: "Stride", -195: "Singular", -202: "Offset", -203: "Count",
                -204: "SizeMismatch", -205: "NoConvergence"}
# Statuses of the numeric work itself, as opposed to a refused argument.
KERNEL_STATUSES = {-2, -10, -179, -195, -205}

TYPE_OF = {np.dtype(np.float32): "32f", np.dtype(np.float64): "64f"}
CODES = {"p": ctypes.c_void_p, "i": ctypes.c_int, "f": ctypes.c_float, "d": ctypes.c_double}


class StatusError(ValueError):
    """An argument the library refused: `status` is the code, the message names it."""

    def __init__(self, member, status):
        self.member, self.status = member, status
        super().__init__(f"{member}: orlStatus{STATUS_NAMES.get(status, status)}")


class OrlLinAlgError(LinAlgError):
    """The numeric work failed on one matrix: `item` is its index in the
    stack (None for a single matrix), `status` the library's code."""

    def __init__(self, member, status, item):
        self.member, self.status, self.item = member, status, item
        where = "the matrix" if item is None else f"item {item} of the stack"
        super().__init__(f"{member}: orlStatus{STATUS_NAMES.get(status, status)} at {where}")


def find_library():
    """liborlmt7 beside the package, in a directory above it (the build tree,
    or the lib directory of an install prefix), else by the system's search."""
    env = os.environ.get("ORLM_LIBRARY")
    if env:
        return env
    d = os.path.dirname(os.path.abspath(__file__))
    for _ in range(5):
        path = os.path.join(d, SONAME)
        if os.path.exists(path):
            return path
        d = os.path.dirname(d)
    return SONAME


LIBRARY = find_library()
lib = ctypes.CDLL(LIBRARY)
_core_beside = os.path.join(os.path.dirname(LIBRARY), CORE_SONAME)
core = ctypes.CDLL(_core_beside if os.path.exists(_core_beside) else CORE_SONAME)
thread_count = ctypes.c_int32.in_dll(core, "threads_omp_of_n_orl")

_bound = {}


def member(name):
    """The bound function and the item list of a standard-layout member."""
    try:
        return _bound[name]
    except KeyError:
        pass
    codes, items = MEMBERS[name]
    fn = getattr(lib, name)
    fn.argtypes = [CODES[c] for c in codes]
    fn.restype = ctypes.c_int32
    _bound[name] = fn, [tuple(e.split(":")) for e in items.split()]
    return _bound[name]


def exists(name):
    return name in MEMBERS


@contextlib.contextmanager
def threads_of(n):
    """The core library's thread count set to `n` for the duration (None: as it is)."""
    if n is None:
        yield
        return
    old = thread_count.value
    thread_count.value = int(n)
    try:
        yield
    finally:
        thread_count.value = old


def dtype_of(*arrays):
    """float32 when every operand is float32 (or narrower), else float64."""
    dt = np.result_type(*arrays)
    if dt.kind == "c":
        raise TypeError("complex operands are not supported")
    return np.dtype(np.float32) if dt.kind == "f" and dt.itemsize <= 4 else np.dtype(np.float64)


def usable(a, dt):
    """True when the library can address `a` as it is: the element type, the
    native byte order, aligned, and every stride of an axis longer than one
    positive and within 32 bits."""
    return a.dtype == dt and a.flags.aligned and \
        all(n < 2 or 0 < s < 2 ** 31 for n, s in zip(a.shape, a.strides))


def prep(a, dt):
    """`a` itself where usable, else a C-ordered copy of the element type."""
    a = np.asarray(a)
    return a if usable(a, dt) else np.array(a, dtype=dt)


def result(out, shape, dt):
    """(array the library writes, array to copy it into afterwards or None).
    An `out` the library cannot address is filled from a temporary."""
    if out is None:
        return np.empty(shape, dt), None
    if out.shape != tuple(shape) or out.dtype != dt:
        raise ValueError(f"out has shape {out.shape} and type {out.dtype}, expected {tuple(shape)} and {dt}")
    if usable(out, dt):
        return out, None
    return np.empty(shape, dt), out


def finish(dst, back):
    if back is None:
        return dst
    back[...] = dst
    return back


def _stride(a, axis):
    # The stride of an axis of length one is never used: any valid value will do.
    return a.strides[axis] if a.shape[axis] > 1 else a.itemsize


def pack(items, kw):
    args = []
    for kind, name in items:
        v = kw[name]
        if kind == "i" or kind == "c":
            args.append(v)
        elif kind == "p":
            args.append(v.__array_interface__["data"][0])
        else:
            args.append(v.__array_interface__["data"][0])
            if kind.endswith("a"):
                args.append(_stride(v, 0))
            if kind[0] in "mt":
                args += [_stride(v, -2), _stride(v, -1)]
            elif kind[0] == "v":
                args.append(_stride(v, -1))
    return args


def _sliced(items, kw, per_item, start, stop):
    """The arguments of items start..stop-1 of an array call."""
    out = dict(kw, count=stop - start)
    for kind, name in items:
        if kind.endswith("a") or name in per_item:
            out[name] = kw[name][start:stop]
    return out


def call(name, kw, threads=None, per_item=()):
    """Calls member `name` with the named arguments `kw`. Plain arrays named
    in `per_item` hold one row per item of the stack."""
    fn, items = member(name)
    with threads_of(threads):
        status = fn(*pack(items, kw))
        if status == 0:
            return
        if status not in KERNEL_STATUSES:
            raise StatusError(name, status)
        count = kw.get("count")
        if count is None:
            raise OrlLinAlgError(name, status, None)
        # Items fail independently: bisect for the first failing one, running
        # only the items not yet known to pass, so that the search costs about
        # one more call. Items before it end complete.
        ok, bad = 0, count
        while bad - ok > 1:
            mid = (ok + bad) // 2
            if fn(*pack(items, _sliced(items, kw, per_item, ok, mid))) in KERNEL_STATUSES:
                bad = mid
            else:
                ok = mid
        status = fn(*pack(items, _sliced(items, kw, per_item, ok, ok + 1)))
        raise OrlLinAlgError(name, status, ok)
