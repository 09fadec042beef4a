/* A program of a library user: adds two 3x3 matrices and checks the version. */
#include <orlm.h>
#include <orlcore.h>
#include <string.h>

int main(void)
{
    const float a[9] = {1, 2, 3, 4, 5, 6, 7, 8, 9};
    const float b[9] = {9, 8, 7, 6, 5, 4, 3, 2, 1};
    float c[9];
    const orlLibVersion* v = orlmGetLibVersion();
    if (orlmAdd_mm_32f(a, 12, 4, b, 12, 4, c, 12, 4, 3, 3) != orlStatusOk) return 1;
    for (int i = 0; i < 9; ++i)
        if (c[i] != 10.0f) return 2;
    if (v->versionMajor != 5 || strcmp(v->name, "liborlmt7.so.5.2") != 0) return 3;
    return threads_omp_of_n_orl >= 1 ? 0 : 4;
}
