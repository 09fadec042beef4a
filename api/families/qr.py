"""QR decomposition by Householder reflectors (height >= width) and the
back-substitution through the stored reflectors; both take a buffer of
`height` elements."""

from grammar import Arg, Opd, is_array, split_shape
from members import Family, each

BUFFER = Arg("{T}*", "buffer")
SIZES = [Arg("int", "width"), Arg("int", "height")]


def decomp_items(stem, shape, lay):
    return [Opd(shape, "src"), BUFFER, Opd(shape, "dst", result=True)] + SIZES + \
        ([Arg("int", "count")] if is_array(shape) else [])


def backsubst_items(stem, shape, lay):
    kinds = split_shape(shape)          # m v | m va | ma va
    arr = is_array(kinds[1])
    return [Opd(kinds[0], "src"), BUFFER, Opd(kinds[1], "rhs"), Opd(kinds[1], "dst", result=True)] + SIZES + \
        ([Arg("int", "count")] if arr else [])


qr = Family(
    key="qr",
    title="QR decomposition by Householder reflectors, height >= width",
    entry="orl::qr::decompEntry",
    built=True,
)
qr.members = each([("QRDecomp", "m"), ("QRDecomp", "ma")], decomp_items, "qr")

qrbs = Family(
    key="qrbacksubst",
    title="QR back-substitution: solve A x = b (least squares) through the stored reflectors",
    entry="orl::qr::backSubstEntry",
    built=True,
)
qrbs.members = each([("QRBackSubst", "mv"), ("QRBackSubst", "mva"), ("QRBackSubst", "mava")], backsubst_items,
                    "qrbacksubst")

FAMILIES = [qr, qrbs]
