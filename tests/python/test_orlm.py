"""The NumPy package against NumPy itself on random stacks, through views that
must go in without a copy, and on each way a call can fail."""

import numpy as np
import pytest

import orlm

RNG = np.random.default_rng(15)
DTYPES = [np.float32, np.float64]
TOL = {np.float32: 1e-4, np.float64: 1e-11}


def close(got, want, dt, scale=1.0):
    np.testing.assert_allclose(got, want, rtol=TOL[dt] * scale, atol=TOL[dt] * scale)


def general(shape, dt):
    return RNG.standard_normal(shape).astype(dt)


def nonsingular(shape, dt):
    """Diagonally dominant, so every item is well conditioned."""
    return (RNG.standard_normal(shape) + 2 * shape[-1] * np.eye(shape[-1])).astype(dt)


def spd(shape, dt):
    a = RNG.standard_normal(shape)
    return (a @ np.swapaxes(a, -1, -2) + shape[-1] * np.eye(shape[-1])).astype(dt)


# ---- views of the same values: how NumPy users hold them -------------------------

def transposed(x):
    return np.swapaxes(np.swapaxes(x, -1, -2).copy(), -1, -2) if x.ndim > 1 else x


def stepped(x):
    big = np.zeros(x.shape[:-1] + (3 * x.shape[-1],), x.dtype)
    big[..., 1::3] = x
    return big[..., 1::3]


def field(x):
    """A field of an array of structs, behind an int32 and before a flag."""
    lead = x.shape[:1] if x.ndim == 3 or x.ndim == 2 and x.shape[-1] == 3 else ()
    rec = np.zeros(lead, np.dtype([("id", "i4"), ("x", x.dtype, x.shape[len(lead):]), ("f", "u1")], align=True))
    rec["x"] = x
    return rec["x"]


VIEWS = {"contiguous": lambda x: x, "transposed": transposed, "stepped": stepped, "field": field}


@pytest.fixture
def copies(monkeypatch):
    """The operands that the package copied before calling the library."""
    made, prep = [], orlm.prep

    def spy(a, dt):
        got = prep(a, dt)
        if got is not a:
            made.append(np.shape(a))
        return got
    monkeypatch.setattr(orlm, "prep", spy)
    return made


BINARY = [  # name, function, NumPy's result, shape of a, shape of b
    ("add", orlm.add, np.add, (5, 4, 3), (5, 4, 3)),
    ("add shared first", orlm.add, np.add, (4, 3), (5, 4, 3)),
    ("subtract shared first", orlm.subtract, np.subtract, (4, 3), (5, 4, 3)),
    ("subtract vectors", orlm.subtract, np.subtract, (6, 3), (3,)),
    ("matmul", orlm.matmul, np.matmul, (6, 4, 3), (6, 3, 2)),
    ("matmul shared", orlm.matmul, np.matmul, (6, 4, 3), (3, 5)),
    ("matvec", orlm.matvec, lambda a, x: np.einsum("...ij,...j->...i", a, x), (6, 4, 3), (6, 3)),
    ("matvec shared", orlm.matmul, np.matmul, (6, 4, 3), (3,)),
    ("dot shared first", orlm.dot, lambda a, b: np.sum(a * b, -1), (5,), (7, 5)),
    ("cross", orlm.cross, np.cross, (7, 3), (7, 3)),
]


@pytest.mark.parametrize("view", VIEWS)
@pytest.mark.parametrize("dt", DTYPES)
@pytest.mark.parametrize("name,fn,ref,sa,sb", BINARY, ids=[r[0] for r in BINARY])
def test_binary_against_numpy_through_views_without_copy(name, fn, ref, sa, sb, dt, view, copies):
    a, b = general(sa, dt), general(sb, dt)
    got = fn(VIEWS[view](a), VIEWS[view](b))
    assert got.dtype == dt and copies == []
    close(got, ref(a, b), dt, 10)


UNARY = [  # name, function, NumPy's result, operand
    ("inv", orlm.inv, np.linalg.inv, nonsingular),
    ("det", orlm.det, np.linalg.det, nonsingular),
    ("transpose", orlm.transpose, lambda a: np.swapaxes(a, -1, -2), general),
    ("trace", orlm.trace, lambda a: np.trace(a, axis1=-2, axis2=-1), general),
    ("frobenius", lambda a: orlm.norm(a, axis=(-2, -1)), lambda a: np.linalg.norm(a, axis=(-2, -1)), general),
    ("cholesky", orlm.cholesky, np.linalg.cholesky, spd),
    ("eigvalsh", orlm.eigvalsh, lambda a: np.linalg.eigvalsh(a)[..., ::-1], spd),
    ("eigvals", lambda a: np.sort(orlm.eigvals(a)), lambda a: np.sort(np.linalg.eigvals(a)), general),
    ("scale", lambda a: orlm.scale(a, 2.5), lambda a: a * 2.5, general),
]


@pytest.mark.parametrize("view", VIEWS)
@pytest.mark.parametrize("dt", DTYPES)
@pytest.mark.parametrize("n", [3, 4])
@pytest.mark.parametrize("name,fn,ref,make", UNARY, ids=[r[0] for r in UNARY])
def test_unary_against_numpy_linalg(name, fn, ref, make, n, dt, view, copies):
    stack = make((9, n, n), dt)
    close(fn(VIEWS[view](stack)), ref(stack.astype(np.float64)), dt, 100)
    close(fn(stack[4]), ref(stack[4].astype(np.float64)), dt, 100)
    assert copies == []


def test_vector_norms_and_scales():
    x, c = general((8, 5), np.float64), general((8,), np.float64)
    close(orlm.norm(x[2]), np.linalg.norm(x[2]), np.float64)
    close(orlm.norm(x, axis=-1), np.linalg.norm(x, axis=-1), np.float64)
    close(orlm.scale(x, c), x * c[:, None], np.float64)
    close(orlm.scale(x[0], c), x[0] * c[:, None], np.float64)
    close(orlm.add(x, 1.5), x + 1.5, np.float64)
    close(orlm.subtract(1.5, x), 1.5 - x, np.float64)


@pytest.mark.parametrize("dt", DTYPES)
@pytest.mark.parametrize("fn", [orlm.add, orlm.matmul, orlm.inv, orlm.transpose])
def test_out_is_written_in_place(fn, dt):
    """out= a field of structs, transposed: the result is that memory."""
    a, b = nonsingular((6, 3, 3), dt), general((6, 3, 3), dt)
    want = fn(a) if fn in (orlm.inv, orlm.transpose) else fn(a, b)
    rec = np.zeros(6, np.dtype([("id", "i4"), ("m", dt, (3, 3))], align=True))
    out = np.swapaxes(rec["m"], -1, -2)
    got = fn(a, out=out) if fn in (orlm.inv, orlm.transpose) else fn(a, b, out=out)
    assert got is out and np.shares_memory(got, rec)
    close(np.swapaxes(rec["m"], -1, -2), want, dt)  # a strided result may take another kernel


def test_operands_the_library_cannot_address_are_copied(copies):
    a, b = general((5, 3, 3), np.float64), general((5, 3, 3), np.float32)
    close(orlm.add(a[::-1], b), a[::-1] + b, np.float64)    # a negative stride; float32 beside float64
    m = nonsingular((3, 3), np.float64)
    close(orlm.inv(m.astype(">f8")), np.linalg.inv(m), np.float64, 100)
    assert len(copies) == 3
    out = np.zeros((5, 3, 3))[::-1]                          # filled from a temporary
    assert orlm.add(a, a, out=out) is out
    np.testing.assert_array_equal(out, a + a)


@pytest.mark.parametrize("dt", DTYPES)
@pytest.mark.parametrize("shared", [True, False])
@pytest.mark.parametrize("factor,solve,make", [
    (orlm.lu_factor, orlm.lu_solve, nonsingular),
    (orlm.cho_factor, orlm.cho_solve, spd),
    (lambda a: orlm.qr(a, mode="raw"), orlm.qr_solve, nonsingular),
], ids=["lu", "cholesky", "qr"])
def test_solves_against_numpy_linalg_solve(factor, solve, make, shared, dt):
    a, b = make((7, 4, 4), dt), general((7, 4), dt)
    f = factor(a[0] if shared else a)
    want = np.linalg.solve(a[0], b.T).T if shared else np.linalg.solve(a, b[..., None])[..., 0]
    close(solve(f, b), want, dt, 100)


@pytest.mark.parametrize("dt", DTYPES)
def test_qr_reconstructs_and_solves_least_squares(dt):
    a, b = general((6, 5, 3), dt), general((6, 5), dt)
    q, r = orlm.qr(a)
    close(q @ r, a, dt, 100)
    close(np.swapaxes(q, -1, -2) @ q, np.broadcast_to(np.eye(3), (6, 3, 3)), dt, 100)
    assert np.all(np.tril(r, -1) == 0)
    want = np.stack([np.linalg.lstsq(a[i].astype(float), b[i].astype(float), rcond=None)[0] for i in range(6)])
    close(orlm.qr_solve(orlm.qr(a, mode="raw"), b), want, dt, 1000)


@pytest.mark.parametrize("dt", DTYPES)
@pytest.mark.parametrize("n", [3, 5])
def test_eigen_vectors_satisfy_their_equations(n, dt):
    s = spd((8, n, n), dt)
    w, v = orlm.eigh(s)
    assert np.all(np.diff(w, axis=-1) <= 0)
    close(s @ v, v * w[:, None, :], dt, 100 * n)
    close(np.swapaxes(v, -1, -2) @ v, np.broadcast_to(np.eye(n), s.shape), dt, 100)
    g = general((8, n, n), dt)
    w, v = orlm.eig(g)
    assert np.iscomplexobj(w) and np.any(w.imag != 0)
    close(g @ v, v * w[:, None, :], dt, 100 * n)


def test_affine_transform_of_points():
    m, p = general((4, 4), np.float32), general((10, 3), np.float32)
    h = np.concatenate([p, np.ones((10, 1), np.float32)], axis=1) @ m.T
    close(orlm.affine_transform(m, p), h[:, :3] / h[:, 3:], np.float32, 100)


def test_threads_give_the_same_bits_and_are_restored():
    a = general((20000, 4, 4), np.float32)
    before = orlm._lib.thread_count.value
    one, two = orlm.matmul(a, a, threads=1), orlm.matmul(a, a, threads=2)
    np.testing.assert_array_equal(one, two)
    assert orlm._lib.thread_count.value == before


def _with_bad(make, item, bad, k=12, n=3):
    s = make((k, n, n), np.float64)
    s[item] = bad
    return s


@pytest.mark.parametrize("fn,stack,status,item", [
    (orlm.inv, _with_bad(nonsingular, 7, 0.0), "Singular", 7),
    (orlm.lu_factor, _with_bad(nonsingular, 0, 0.0), "Singular", 0),
    (orlm.cholesky, _with_bad(spd, 11, -np.eye(3)), "NotPosDefinite", 11),
    (orlm.eigvalsh, _with_bad(spd, 5, np.diag([1.0, 2.0, 0.0])), "Singular", 5),
    (lambda a: orlm.qr(a, mode="raw"), _with_bad(nonsingular, 3, 0.0), "DivByZero", 3),
    (lambda a: orlm.affine_transform(np.diag([1.0, 1, 1, 0]), a[:, 0]), _with_bad(general, 9, 1.0), "DivByZero", 0),
    (orlm.eigvalsh, _with_bad(spd, 2, 4e19 * np.eye(3) - np.eye(3, k=1) - np.eye(3, k=-1)), "NoConvergence", 2),
], ids=["inv", "lu", "cholesky", "eigvalsh", "qr", "affine", "sweeps"])
def test_numeric_failures_name_the_item(fn, stack, status, item):
    with pytest.raises(np.linalg.LinAlgError, match=f"orlStatus{status} at item {item} ") as e:
        fn(stack)
    assert e.value.item == item and isinstance(e.value, orlm.OrlLinAlgError)
    with pytest.raises(orlm.OrlLinAlgError) as e:
        fn(stack[item])
    assert e.value.item in (None, 0)


def test_items_before_a_failure_are_complete_in_out():
    s = _with_bad(spd, 5, 4e19 * np.eye(3) - np.eye(3, k=1) - np.eye(3, k=-1))
    w, v = np.zeros((12, 3)), np.zeros((12, 3, 3))
    with pytest.raises(orlm.OrlLinAlgError, match="NoConvergence at item 5 "):
        orlm.eigh(s, out=(w, v))
    want_w, want_v = orlm.eigh(s[:5])
    np.testing.assert_array_equal(w[:5], want_w)
    np.testing.assert_array_equal(v[:5], want_v)


@pytest.mark.parametrize("call,match", [
    (lambda: orlm.matmul(np.ones((4, 3)), np.ones((4, 3))), "orlStatusSizeMismatch"),
    (lambda: orlm.qr(np.ones((2, 3))), "orlStatusSizeMismatch"),
    (lambda: orlm.inv(np.ones((0, 3, 3))), "orlStatusCount"),
    (lambda: orlm.add(np.ones((2, 3)), np.ones((3, 2))), "differ in item shape"),
    (lambda: orlm.matmul(np.ones((3, 2, 2)), np.ones((4, 2, 2))), "do not broadcast"),
    (lambda: orlm.det(np.ones((3, 2))), "square"),
    (lambda: orlm.cross(np.ones(2), np.ones(2)), "length 3"),
    (lambda: orlm.norm(np.ones((2, 2, 2))), "not one of the library's norms"),
    (lambda: orlm.lu_solve((np.eye(3), np.zeros(2, np.int32)), np.ones(3)), "pivots"),
], ids=["matmul-sizes", "qr-wide", "count", "item-shape", "stacks", "square", "cross", "norm", "pivots"])
def test_refused_arguments_raise_value_error(call, match):
    with pytest.raises(ValueError, match=match) as e:
        call()
    assert not isinstance(e.value, np.linalg.LinAlgError)
    if "orlStatus" in match:
        assert isinstance(e.value, orlm.StatusError) and e.value.status < 0
