"""Cholesky decomposition (the factor's diagonal holds 1 / L[i][i]) and the
back-substitution through that factor."""

from grammar import Arg, Opd, is_array, split_shape
from members import Family, each


def decomp_items(stem, shape, lay):
    return [Opd(shape, "src"), Opd(shape, "dst", result=True), Arg("int", "widthHeight")] + \
        ([Arg("int", "count")] if is_array(shape) else [])


def backsubst_items(stem, shape, lay):
    kinds = split_shape(shape)          # m v | m va | ma va
    arr = is_array(kinds[1])
    return [Opd(kinds[0], "src"), Opd(kinds[1], "rhs"), Opd(kinds[1], "dst", result=True),
            Arg("int", "widthHeight")] + ([Arg("int", "count")] if arr else [])


chol = Family(
    key="chol",
    title="Cholesky decomposition A = L L^T, the diagonal stored as 1 / L[i][i]",
    entry="orl::chol::decompEntry",
    built=True,
)
chol.members = each([("CholeskyDecomp", "m"), ("CholeskyDecomp", "ma")], decomp_items, "chol")

cholbs = Family(
    key="cholbacksubst",
    title="Cholesky back-substitution: solve A x = b from the factor",
    entry="orl::chol::backSubstEntry",
    built=True,
)
cholbs.members = each([("CholeskyBackSubst", "mv"), ("CholeskyBackSubst", "mva"), ("CholeskyBackSubst", "mava")],
                      backsubst_items, "cholbacksubst")

FAMILIES = [chol, cholbs]
