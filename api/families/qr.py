"""QR decomposition by Householder reflectors (height >= width) and the
back-substitution through the stored reflectors; both take a buffer of
`height` elements."""

from grammar import Arg
from members import Family, each

from families._solver import backsubst_rule, decomp_rule

BUFFER = [Arg("{T}*", "buffer")]
SIZES = ["width", "height"]

qr = Family(
    key="qr",
    title="QR decomposition by Householder reflectors, height >= width",
    entry="orl::qr::decompEntry",
    built=True,
)
qr.members = each([("QRDecomp", "m"), ("QRDecomp", "ma")], decomp_rule(BUFFER, SIZES), "qr")

qrbs = Family(
    key="qrbacksubst",
    title="QR back-substitution: solve A x = b (least squares) through the stored reflectors",
    entry="orl::qr::backSubstEntry",
    built=True,
)
qrbs.members = each([("QRBackSubst", s) for s in ("mv", "mva", "mava")], backsubst_rule(BUFFER, SIZES), "qrbacksubst")

FAMILIES = [qr, qrbs]
