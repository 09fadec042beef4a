"""Cholesky decomposition (the factor's diagonal holds 1 / L[i][i]) and the
back-substitution through that factor."""

from members import Family, each

from families._solver import backsubst_rule, decomp_rule

chol = Family(
    key="chol",
    title="Cholesky decomposition A = L L^T, the diagonal stored as 1 / L[i][i]",
    entry="orl::chol::decompEntry",
    built=True,
)
chol.members = each([("CholeskyDecomp", "m"), ("CholeskyDecomp", "ma")], decomp_rule([], ["widthHeight"]), "chol")

cholbs = Family(
    key="cholbacksubst",
    title="Cholesky back-substitution: solve A x = b from the factor",
    entry="orl::chol::backSubstEntry",
    built=True,
)
cholbs.members = each([("CholeskyBackSubst", s) for s in ("mv", "mva", "mava")], backsubst_rule([], ["widthHeight"]),
                      "cholbacksubst")

FAMILIES = [chol, cholbs]
