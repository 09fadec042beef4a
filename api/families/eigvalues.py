"""General eigenvalues: the eigenvalues of a general real matrix, real and
imaginary parts in two arrays, complex pairs with the positive part first."""

from families._eigen import eigen_items
from members import Family, each

eigvalues = Family(
    key="eigvalues",
    title="General eigenvalues: dstValuesRe + i*dstValuesIm, in the order of the real Schur form",
    entry="orl::eig::valuesEntry",
    built=True,
)
eigvalues.members = each([("EigenValues", "m"), ("EigenValues", "ma")], eigen_items, "eigvalues")

FAMILIES = [eigvalues]
