/* A program of a library user that calls only orlm.h members: it factors a
 * 3x3 matrix and checks the version. It uses nothing of the core library
 * itself, so a linker with --as-needed leaves the core library out of the
 * program, and the numerics library must find it on its own. */
#include <orlm.h>
#include <string.h>

int main(void)
{
    const float a[9] = {2, 1, 0, 4, 3, 1, 0, 1, 5};
    float lu[9];
    int32_t perm[3];
    const orlLibVersion* v = orlmGetLibVersion();
    if (orlmLUDecomp_m_32f(a, 12, 4, perm, lu, 12, 4, 3) != orlStatusOk) return 1;
    if (perm[0] != 1) return 2;
    if (v->versionMajor != 5 || strcmp(v->name, "liborlmt7.so.5.2") != 0) return 3;
    return 0;
}
