// General eigenvalues: copy, Hessenberg reduction and double-shift QR with
// the absolute deflation test, then the standardised 2-by-2 blocks read off.
// The steps are in eigsteps.h, the kernel and entries in eiggeneral.h.
#include "eigensolvers/eiggeneral.h"

#include "eigvalues.inc"
