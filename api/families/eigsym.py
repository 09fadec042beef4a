"""Symmetric eigensolver: eigenvalues, and eigenvalues with eigenvectors, of a matrix taken as symmetric."""

from families._eigen import eigen_items
from members import Family, each

eigsym = Family(
    key="eigsym",
    title="Symmetric eigensolver: eigenvalues largest first, and orthonormal eigenvectors",
    entry="orl::eigsym::entry<orl::eig::Fam::{stem}>",
    built=True,
)
eigsym.members = each([("EigenValuesSym", "m"), ("EigenValuesSym", "ma"),
                       ("EigenValuesVectorsSym", "m"), ("EigenValuesVectorsSym", "ma")], eigen_items, "eigsym")

FAMILIES = [eigsym]
