// General eigenvectors, right, left and both: the values family's stages
// with the relative deflation test and the transformations kept, then
// back-substitution on the real Schur form, back-transformation,
// normalisation and the copy out. Steps in eigsteps.h, kernels in eiggeneral.h.
#include "eigensolvers/eiggeneral.h"

#include "eigvectors.inc"
