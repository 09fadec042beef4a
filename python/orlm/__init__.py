"""orlm: stacks of small matrices and vectors through liborlmt7.

Every function takes a single matrix of shape (n, m) or a stack of shape
(k, n, m) (vectors: (n,) or (k, n)) of float32 or float64, which picks the
library's 32f or 64f members. A single operand against a stack is the shared
operand of the call; so is a stack of one item, or one whose stack axis has
stride 0 (np.broadcast_to), against a longer stack.

Arrays go to the library as they are, with their own byte strides: slices
with a step, transposed views and fields of structured arrays are read and
written in place. An operand is copied only where the library cannot
address it: another element type (integers, a float32 operand beside a
float64 one, non-native byte order), an element address that is not a
multiple of the element size, or a negative or zero stride on an axis
longer than one. An `out=` array that cannot be addressed is filled from a
temporary; otherwise `out` itself is written and returned.

Errors: an argument the library refuses raises `StatusError` (a ValueError
named after the library's status); a matrix the numeric work fails on
raises `OrlLinAlgError` (a numpy.linalg.LinAlgError) whose `item` is its
index in the stack. `threads=` sets the core library's thread count for the
duration of the call (None leaves it as it is).
"""

import itertools

import numpy as np

from . import _lib
from ._lib import OrlLinAlgError, StatusError, prep, result, finish

__all__ = ["add", "subtract", "matmul", "matvec", "scale", "dot", "cross", "norm", "trace", "transpose",
           "lu_factor", "lu_solve", "cholesky", "cho_factor", "cho_solve", "qr", "qr_solve", "inv", "det",
           "eigh", "eigvalsh", "eig", "eigvals", "affine_transform", "StatusError", "OrlLinAlgError"]


# ---- operands ---------------------------------------------------------------

def _name(stem, shape, dt):
    return f"orlm{stem}_{shape}_{_lib.TYPE_OF[dt]}"


def _lead(k):
    return () if k is None else (k,)


def _stacks(arrays, bases):
    """(stack length or None, operands): each operand has `base` or base+1
    dimensions; a one-item or stride-0 stack against a longer one becomes
    the shared operand."""
    ks = set()
    for a, base in zip(arrays, bases):
        if a.ndim not in (base, base + 1):
            raise ValueError(f"an operand of shape {a.shape} is neither one item nor a stack of items")
        if a.ndim == base + 1:
            ks.add(a.shape[0])
    k = max(ks) if ks else None
    if ks - {1, k}:
        raise ValueError(f"stacks of {sorted(ks)} items do not broadcast")
    out = [a[0] if a.ndim == base + 1 and k > 1 and (a.shape[0] == 1 or a.strides[0] == 0) else a
           for a, base in zip(arrays, bases)]
    if k is not None and all(a.ndim == base for a, base in zip(out, bases)):
        # Every operand is shared, but the result is a stack: one is copied out.
        out[0] = np.ascontiguousarray(np.broadcast_to(out[0], (k,) + out[0].shape))
    return k, out


def _single(a, dt, base=2):
    a = prep(a, dt)
    if a.ndim not in (base, base + 1):
        raise ValueError(f"expected {base} or {base + 1} dimensions, got shape {a.shape}")
    return a, (a.shape[0] if a.ndim == base + 1 else None)


def _square(a):
    if a.shape[-1] != a.shape[-2]:
        raise ValueError(f"square matrices expected, got shape {a.shape}")
    return a.shape[-1]


def _forms(a):
    """The ways to pass a matrix operand, best first: a transposed view (rows
    adjacent, elements of a row apart) as the stored matrix read transposed,
    which keeps the library's contiguous-row path; always as it is."""
    arr = "a" if a.ndim == 3 else ""
    plain = ("m" + arr, a)
    if a.shape[-1] > 1 and a.shape[-2] > 1 and a.strides[-2] == a.itemsize != a.strides[-1]:
        return [("t" + arr, np.swapaxes(a, -1, -2)), plain]
    return [plain]


def _vec(a):
    return [("va" if a.ndim == 2 else "v", a)]


def _pick(stem, dt, forms, swap=False):
    """(shape, chosen (kind, array) per operand, swapped) of the first member
    that exists; `swap` allows the operands of a commutative stem reversed."""
    orders = [forms, forms[::-1]] if swap else [forms]
    for n, order in enumerate(orders):
        for chosen in itertools.product(*order):
            shape = "".join(kind for kind, _ in chosen)
            if _lib.exists(_name(stem, shape, dt)):
                return shape, [arr for _, arr in chosen], n == 1
    raise ValueError(f"no {stem} member for operands of kinds {[f[-1][0] for f in forms]}")


def _count(kw, k):
    if k is not None:
        kw["count"] = k
    return kw


# ---- element-wise -------------------------------------------------------------

def _addsub(stem, a, b, out, threads):
    dt = _lib.dtype_of(a, b)
    if np.ndim(a) == 0 or np.ndim(b) == 0:
        return _with_constant(stem, a, b, dt, out, threads)
    a, b = prep(a, dt), prep(b, dt)
    base = 1 if min(a.ndim, b.ndim) == 1 else 2
    if a.shape[-base:] != b.shape[-base:]:
        raise ValueError(f"operands of shapes {a.shape} and {b.shape} differ in item shape")
    k, (a, b) = _stacks([a, b], [base, base])
    forms = [_forms(a), _forms(b)] if base == 2 else [_vec(a), _vec(b)]
    shape, (x, y), _ = _pick(stem, dt, forms, swap=stem == "Add")
    item = a.shape[-base:]
    dst, back = result(out, _lead(k) + item, dt)
    sizes = dict(width=item[1], height=item[0]) if base == 2 else dict(length=item[0])
    _lib.call(_name(stem, shape, dt), _count(dict(src1=x, src2=y, dst=dst, **sizes), k), threads)
    return finish(dst, back)


def _with_constant(stem, a, b, dt, out, threads):
    """A vector, or a stack of vectors (any 2-D array), and one number."""
    lead_constant = np.ndim(a) == 0
    value, v = (a, b) if lead_constant else (b, a)
    v = prep(v, dt)
    if v.ndim not in (1, 2):
        raise ValueError("a number is added to or subtracted from vectors (1 or 2 dimensions) only")
    if lead_constant and stem == "Add":
        lead_constant = False
    shape = ("c" if lead_constant else "") + ("va" if v.ndim == 2 else "v") + ("" if lead_constant else "c")
    k = v.shape[0] if v.ndim == 2 else None
    dst, back = result(out, v.shape, dt)
    kw = dict(src=v, value=float(value), dst=dst, length=v.shape[-1])
    _lib.call(_name(stem, shape, dt), _count(kw, k), threads)
    return finish(dst, back)


def add(a, b, out=None, threads=None):
    """a + b of matrices (n, m) / (k, n, m), of vectors (n,) / (k, n), or of
    vectors and a number."""
    return _addsub("Add", a, b, out, threads)


def subtract(a, b, out=None, threads=None):
    """a - b, with the operands of `add`."""
    return _addsub("Sub", a, b, out, threads)


def scale(a, c, out=None, threads=None):
    """a * c: a matrix or a stack by one number; a vector or a stack of vectors
    (k, n) by one number or by a number per item (c of shape (k,))."""
    dt = _lib.dtype_of(a, c)
    a = prep(a, dt)
    if np.ndim(c) == 0:
        if a.ndim not in (1, 2, 3):
            raise ValueError(f"cannot scale an array of shape {a.shape}")
        shape, (x, _), _ = _pick("Mul", dt, [_vec(a) if a.ndim == 1 else _forms(a), [("c", None)]])
        k, item = (a.shape[0] if a.ndim == 3 else None), a.shape
        kw = dict(src=x, value=float(c), width=a.shape[-1], height=a.shape[-2] if a.ndim > 1 else 1)
    else:
        c = prep(c, dt)
        if c.ndim != 1 or a.ndim not in (1, 2):
            raise ValueError("a number per item scales vectors (n,) or (k, n) by c of shape (k,)")
        k, (x, values) = _stacks([a, c], [1, 0])
        shape, item = ("va" if x.ndim == 2 else "v") + "ca", (k, a.shape[-1])
        kw = dict(src=x, values=values)
    dst, back = result(out, item, dt)
    kw.update(dst=dst, length=a.shape[-1])
    _lib.call(_name("Mul", shape, dt), _count(kw, k), threads)
    return finish(dst, back)


def transpose(a, out=None, threads=None):
    """The transposed matrices, written out: (n, m) -> (m, n), (k, n, m) -> (k, m, n).
    (numpy.transpose gives a view; this writes new memory or `out`.)"""
    dt = _lib.dtype_of(a)
    a, k = _single(a, dt)
    dst, back = result(out, _lead(k) + (a.shape[-1], a.shape[-2]), dt)
    kw = dict(src=a, width=a.shape[-1], height=a.shape[-2], dst=dst)
    _lib.call(_name("Transpose", "ma" if k is not None else "m", dt), _count(kw, k), threads)
    return finish(dst, back)


# ---- products and reductions ----------------------------------------------------

def matmul(a, b, out=None, threads=None):
    """a @ b of matrices and stacks; with a vector b (1-D) as `matvec`."""
    dt = _lib.dtype_of(a, b)
    a, b = prep(a, dt), prep(b, dt)
    if b.ndim == 1:
        return matvec(a, b, out, threads)
    k, (a, b) = _stacks([a, b], [2, 2])
    shape, (x, y), _ = _pick("Mul", dt, [_forms(a), _forms(b)])
    dst, back = result(out, _lead(k) + (a.shape[-2], b.shape[-1]), dt)
    kw = dict(src1=x, src1Width=x.shape[-1], src1Height=x.shape[-2],
              src2=y, src2Width=y.shape[-1], src2Height=y.shape[-2], dst=dst)
    _lib.call(_name("Mul", shape, dt), _count(kw, k), threads)
    return finish(dst, back)


def matvec(a, x, out=None, threads=None):
    """a @ x of a matrix (n, m) or stack (k, n, m) and a vector (m,) or a stack
    of vectors (k, m); the result is (n,) or (k, n)."""
    dt = _lib.dtype_of(a, x)
    k, (a, x) = _stacks([prep(a, dt), prep(x, dt)], [2, 1])
    shape, (m, v), _ = _pick("Mul", dt, [_forms(a), _vec(x)])
    dst, back = result(out, _lead(k) + (a.shape[-2],), dt)
    kw = dict(src1=m, src1Width=m.shape[-1], src1Height=m.shape[-2], src2=v, src2Length=v.shape[-1], dst=dst)
    _lib.call(_name("Mul", shape, dt), _count(kw, k), threads)
    return finish(dst, back)


def dot(a, b, threads=None):
    """Dot product of vectors: (n,) . (n,) is a number; stacks (k, n) give (k,)
    (numpy.vecdot's sense; numpy.dot of 2-D arrays is a matrix product)."""
    dt = _lib.dtype_of(a, b)
    a, b = prep(a, dt), prep(b, dt)
    if a.shape[-1] != b.shape[-1]:
        raise ValueError(f"vectors of lengths {a.shape[-1]} and {b.shape[-1]}")
    k, (a, b) = _stacks([a, b], [1, 1])
    shape, (x, y), _ = _pick("DotProduct", dt, [_vec(a), _vec(b)], swap=True)
    dst = np.empty(1 if k is None else k, dt)
    _lib.call(_name("DotProduct", shape, dt), _count(dict(src1=x, src2=y, dst=dst, length=a.shape[-1]), k),
              threads, per_item=("dst",))
    return dst if k is not None else dst[0]


def cross(a, b, out=None, threads=None):
    """Cross product of 3-vectors (3,) or stacks (k, 3)."""
    dt = _lib.dtype_of(a, b)
    a, b = prep(a, dt), prep(b, dt)
    if a.shape[-1] != 3 or b.shape[-1] != 3:
        raise ValueError("cross products take vectors of length 3")
    k, (a, b) = _stacks([a, b], [1, 1])
    shape, (x, y), _ = _pick("CrossProduct", dt, [_vec(a), _vec(b)])
    dst, back = result(out, _lead(k) + (3,), dt)
    _lib.call(_name("CrossProduct", shape, dt), _count(dict(src1=x, src2=y, dst=dst), k), threads)
    return finish(dst, back)


def norm(x, axis=None, threads=None):
    """As numpy.linalg.norm: the Euclidean norm of a vector, of each row with
    axis=-1, the Frobenius norm of a matrix, of each matrix of a stack with
    axis=(-2, -1)."""
    dt = _lib.dtype_of(x)
    x = prep(x, dt)
    ax = axis if axis is None or isinstance(axis, int) else tuple(a % x.ndim for a in axis)
    ax = ax % x.ndim if isinstance(ax, int) else ax
    if x.ndim == 1 and ax in (None, 0) or x.ndim == 2 and ax == 1:
        stem, k, kw = "L2Norm", (x.shape[0] if x.ndim == 2 else None), dict(length=x.shape[-1])
    elif x.ndim == 2 and ax in (None, (0, 1)) or x.ndim == 3 and ax == (1, 2):
        stem, k, kw = "FrobNorm", (x.shape[0] if x.ndim == 3 else None), dict(width=x.shape[-1], height=x.shape[-2])
    else:
        raise ValueError(f"norm of shape {x.shape} over axis {axis} is not one of the library's norms")
    dst = np.empty(1 if k is None else k, dt)
    kw.update(src=x, dst=dst)
    kind = "v" if stem == "L2Norm" else "m"
    _lib.call(_name(stem, kind + ("" if k is None else "a"), dt), _count(kw, k), threads, per_item=("dst",))
    return dst if k is not None else dst[0]


def trace(a, threads=None):
    """Trace of a square matrix, or of each matrix of a stack (numpy.trace with
    axis1=-2, axis2=-1)."""
    dt = _lib.dtype_of(a)
    a, k = _single(a, dt)
    dst = np.empty(1 if k is None else k, dt)
    _lib.call(_name("Trace", "ma" if k is not None else "m", dt), _count(dict(src=a, widthHeight=_square(a), dst=dst), k),
              threads, per_item=("dst",))
    return dst if k is not None else dst[0]


def affine_transform(matrix, points, out=None, threads=None):
    """Points (3,) or (k, 3) through one 4x4 homogeneous matrix, divided by the
    homogeneous coordinate; float32 only (other types are converted with a
    copy). A point whose coordinate w is zero raises OrlLinAlgError naming it."""
    dt = np.dtype(np.float32)
    m, p = prep(matrix, dt), prep(points, dt)
    if m.shape != (4, 4) or p.shape[-1:] != (3,) or p.ndim not in (1, 2):
        raise ValueError("affine_transform takes a 4x4 matrix and points of shape (3,) or (k, 3)")
    one = p.ndim == 1
    p = p[None] if one else p
    dst, back = result(out, (p.shape[0], 3) if not one else (3,), dt)
    _lib.call("orlmAffineTransform3DH_mva_32f",
              dict(src1=m, src2=p, dst=dst[None] if one else dst, count=p.shape[0]), threads)
    return finish(dst, back)


# ---- solvers -------------------------------------------------------------------

def _factor(stem, a, threads, extra=(), perm=False, buffer=None):
    dt = _lib.dtype_of(a)
    a, k = _single(a, dt)
    n = _square(a) if stem != "QRDecomp" else None
    dst = np.zeros(a.shape, dt)
    kw = dict(src=a, dst=dst, widthHeight=n, width=a.shape[-1], height=a.shape[-2])
    if perm:
        kw["perm"] = np.empty(_lead(k) + (n,), np.int32)
    if buffer is not None:
        kw["buffer"] = np.empty(buffer, dt)
    _lib.call(_name(stem, "ma" if k is not None else "m", dt), _count(kw, k), threads, per_item=("perm",))
    return dst, kw.get("perm")


def _solve(stem, f, b, out, threads, perm=None, buffer=None):
    """x of f x = b: a factor (n, n) against b (n,) or (k, n), or a stack
    (k, n, n) against b (k, n); a single b against a stack is copied out."""
    dt = f.dtype
    b = prep(b, dt)
    k, (f, b) = _stacks([f, b], [2, 1])
    if f.ndim == 3 and b.ndim == 1:
        b = np.ascontiguousarray(np.broadcast_to(b, (k,) + b.shape))
    shape = {(2, 1): "mv", (2, 2): "mva", (3, 2): "mava"}[f.ndim, b.ndim]
    dst, back = result(out, _lead(k) + (f.shape[-1],), dt)
    kw = dict(src=f, rhs=b, dst=dst, widthHeight=f.shape[-1], width=f.shape[-1], height=f.shape[-2])
    if perm is not None:
        perm = np.ascontiguousarray(perm, np.int32)
        if perm.size != np.prod(f.shape[:-1]):
            raise ValueError(f"pivots of shape {perm.shape} do not belong to factors of shape {f.shape}")
        kw["perm"] = perm.reshape(f.shape[:-1])
    if buffer is not None:
        kw["buffer"] = np.empty(buffer, dt)
    _lib.call(_name(stem, shape, dt), _count(kw, k), threads, per_item=("perm",) if f.ndim == 3 else ())
    return finish(dst, back)


def _factor_operand(f):
    f = np.asarray(f)
    return prep(f, _lib.dtype_of(f))


def lu_factor(a, threads=None):
    """(lu, piv) of square matrices, partial pivoting. The library's own form,
    not LAPACK's: rows are not exchanged, logical row i of L\\U is row piv[i]
    of lu (int32, one row of pivots per item). For `lu_solve`."""
    return _factor("LUDecomp", a, threads, perm=True)


def lu_solve(lu_and_piv, b, out=None, threads=None):
    """x of a x = b from `lu_factor`'s result; b of shape (n,) or (k, n)."""
    lu, piv = lu_and_piv
    return _solve("LUBackSubst", _factor_operand(lu), b, out, threads, perm=piv)


def cho_factor(a, threads=None):
    """(c, True): the library's Cholesky factor of symmetric positive definite
    matrices (lower triangle read), for `cho_solve`. Its diagonal holds
    1 / L[i][i]; `cholesky` gives L itself."""
    return _factor("CholeskyDecomp", a, threads)[0], True


def cho_solve(c_and_lower, b, out=None, threads=None):
    """x of a x = b from `cho_factor`'s result; b of shape (n,) or (k, n)."""
    c, _ = c_and_lower
    return _solve("CholeskyBackSubst", _factor_operand(c), b, out, threads)


def cholesky(a, threads=None):
    """L with a = L L^T, lower triangular, as numpy.linalg.cholesky."""
    c, _ = cho_factor(a, threads)
    i = np.arange(c.shape[-1])
    c[..., i, i] = 1 / c[..., i, i]
    return c


def qr(a, mode="reduced", threads=None):
    """QR of matrices (h, w) with h >= w by Householder reflectors. mode
    'reduced': (q, r) as numpy.linalg.qr; 'r': r; 'raw': the library's packed
    factor (r on and above the diagonal, the reflectors' tails below), for
    `qr_solve`."""
    dt = _lib.dtype_of(a)
    h = np.shape(a)[-2]
    f, _ = _factor("QRDecomp", a, threads, buffer=h)
    if mode == "raw":
        return f
    w = f.shape[-1]
    r = np.triu(f[..., :w, :])
    if mode == "r":
        return r
    # q = H_0 H_1 ... of the reflectors H_j = I - 2 v v^T / (v^T v), v[j] = 1,
    # applied to the first w columns of the identity, last reflector first.
    q = np.zeros(f.shape[:-2] + (h, w), dt)
    q[..., range(w), range(w)] = 1
    for j in reversed(range(w if w < h else w - 1)):
        v = np.zeros(f.shape[:-2] + (h,), dt)
        v[..., j] = 1
        v[..., j + 1:] = f[..., j + 1:, j]
        t = np.einsum("...i,...ij->...j", v, q) * (2 / np.einsum("...i,...i->...", v, v))[..., None]
        q -= v[..., :, None] * t[..., None, :]
    return q, r


def qr_solve(f, b, out=None, threads=None):
    """x of a x = b, least squares where a is taller than wide, from
    qr(a, mode='raw'); b of shape (h,) or (k, h), x of shape (w,) or (k, w)."""
    f = _factor_operand(f)
    return _solve("QRBackSubst", f, b, out, threads, buffer=f.shape[-2])


def inv(a, out=None, threads=None):
    """Inverse of square matrices."""
    dt = _lib.dtype_of(a)
    a, k = _single(a, dt)
    n = _square(a)
    dst, back = result(out, a.shape, dt)
    kw = dict(src=a, buffer=np.empty(n * (n + 1), dt), dst=dst, widthHeight=n)
    _lib.call(_name("Invert", "ma" if k is not None else "m", dt), _count(kw, k), threads)
    return finish(dst, back)


def det(a, threads=None):
    """Determinant of square matrices: a number, or (k,) for a stack."""
    dt = _lib.dtype_of(a)
    a, k = _single(a, dt)
    n = _square(a)
    dst = np.empty(1 if k is None else k, dt)
    kw = dict(src=a, widthHeight=n, buffer=np.empty(n * (n + 1), dt), dst=dst)
    _lib.call(_name("Det", "ma" if k is not None else "m", dt), _count(kw, k), threads, per_item=("dst",))
    return dst if k is not None else dst[0]


# ---- eigen ------------------------------------------------------------------------

_EIG_PER_ITEM = ("dstValues", "dstValuesRe", "dstValuesIm")


def _eig_call(stem, a, threads, vectors, buffer_of, out=None):
    """Calls an eigen member; `out` holds the value arrays (and the vectors)
    to write. On an OrlLinAlgError the items before the failing one are
    complete in `out`."""
    dt = _lib.dtype_of(a)
    a, k = _single(a, dt)
    n = _square(a)
    kw = dict(src=a, widthHeight=n, buffer=np.empty(buffer_of(n, dt), dt))
    names = (["dstValues"] if stem.endswith("Sym") else ["dstValuesRe", "dstValuesIm"]) + \
        (["dstVectors"] if vectors else [])
    outs = [None] * len(names) if out is None else list(out)
    backs = []
    for name, given in zip(names, outs):
        shape = a.shape if name == "dstVectors" else _lead(k) + (n,)
        kw[name], back = result(given, shape, dt)
        if name != "dstVectors" and not kw[name].flags.c_contiguous:   # value arrays have no strides
            kw[name], back = np.empty(shape, dt), given
        backs.append((kw[name], back))
    try:
        _lib.call(_name(stem, "ma" if k is not None else "m", dt), _count(kw, k), threads, per_item=_EIG_PER_ITEM)
    finally:
        for name, (dst, back) in zip(names, backs):
            kw[name] = finish(dst, back)
    return kw


def _general_buffer(query):
    def elements(n, dt):
        size = np.zeros(1, np.int32)
        _lib.call(f"orlm{query}_{_lib.TYPE_OF[dt]}", dict(widthHeight=n, bufSize=size))
        return -(-int(size[0]) // dt.itemsize)
    return elements


def eigh(a, out=None, threads=None):
    """(w, v) of symmetric matrices: eigenvalues largest first as the library
    gives them (numpy.linalg.eigh gives them ascending), eigenvector j in
    column j of v. out=(w, v) is written in place; when an item fails, the
    items before it are complete there."""
    kw = _eig_call("EigenValuesVectorsSym", a, threads, True, lambda n, dt: n * n, out)
    return kw["dstValues"], kw["dstVectors"]


def eigvalsh(a, out=None, threads=None):
    """Eigenvalues of symmetric matrices, largest first; `out` as in `eigh`."""
    return _eig_call("EigenValuesSym", a, threads, False, lambda n, dt: n * n, None if out is None else (out,))["dstValues"]


def _complex(re, im):
    return re + 1j * im


def eig(a, threads=None):
    """(w, v) of general real matrices as complex arrays, a @ v[:, j] = w[j] v[:, j];
    a complex pair has the value with positive imaginary part first."""
    kw = _eig_call("EigenValuesVectorsLeft", a, threads, True, _general_buffer("EigenValuesVectorsGetBufSize"))
    re, im, v = kw["dstValuesRe"], kw["dstValuesIm"], kw["dstVectors"]
    # A pair's columns j, j+1 hold the real part and the negated imaginary
    # part of the vector of value j (the first, with positive imaginary part:
    # these members work on the transpose); the vector of value j+1 is its conjugate.
    after = np.concatenate([v[..., 1:], np.zeros_like(v[..., :1])], axis=-1)
    before = np.concatenate([np.zeros_like(v[..., :1]), v[..., :-1]], axis=-1)
    first, second = (im > 0)[..., None, :], (im < 0)[..., None, :]
    vectors = np.where(first, _complex(v, -after), np.where(second, _complex(before, v), v))
    return _complex(re, im), vectors


def eigvals(a, threads=None):
    """Eigenvalues of general real matrices as a complex array."""
    kw = _eig_call("EigenValues", a, threads, False, _general_buffer("EigenValuesGetBufSize"))
    return _complex(kw["dstValuesRe"], kw["dstValuesIm"])
