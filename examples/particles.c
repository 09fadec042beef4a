/* A rigid-body simulation keeps, for each body, a 3x3 inertia matrix and a
 * 4x4 transform inside its own record. Once a step it adds a correction to
 * every body's inertia in place, through the three memory layouts that the
 * library offers, and then updates a large batch of transforms, which the
 * library spreads over threads. Last, it finds each body's principal axes
 * and moments of inertia, written into the records beside the inertia.
 *
 * Build and run: cmake --workflow --preset demo
 */
#include <stddef.h>
#include <stdio.h>
#include <stdlib.h>

#include "orlcore.h"
#include "orlm.h"

typedef struct Body {
    int id;
    float mass;
    float inertia[3][3];   /* the field addressed as a matrix */
    double transform[4][4];
    float axes[3][3];      /* principal axes, one a column */
    char name[12];
} Body;

#define BODIES 8
#define BATCH 200000

static void print_inertia(const char* what, const Body* b)
{
    printf("%-34s body %d inertia row 0: %6.2f %6.2f %6.2f\n", what, b->id, b->inertia[0][0], b->inertia[0][1],
           b->inertia[0][2]);
}

static int check(orlStatus st, const char* what)
{
    if (st != orlStatusOk) {
        printf("%s failed with status %d\n", what, (int)st);
        return 1;
    }
    return 0;
}

/* Principal axes and moments of every body's inertia tensor: the symmetric
 * eigenproblem solved on the records where they lie. The axes (eigenvectors,
 * one a column) go into each record's own field; the moments (eigenvalues,
 * largest first, three for each body) into a plain array. */
static int principal_axes(Body* bodies, int count)
{
    const int stride0 = (int)sizeof(Body), stride1 = 3 * (int)sizeof(float), stride2 = (int)sizeof(float);
    float buffer[9];
    float* moments = malloc(sizeof(float) * 3 * (size_t)count);
    if (!moments) return 1;
    const orlStatus st = orlmEigenValuesVectorsSym_ma_32f(&bodies[0].inertia[0][0], stride0, stride1, stride2, buffer,
                                                          &bodies[0].axes[0][0], stride0, stride1, stride2, moments,
                                                          3, count);
    if (check(st, "orlmEigenValuesVectorsSym_ma_32f")) {
        free(moments);
        return 1;
    }
    const int show[3] = {0, 2, 5};
    for (int n = 0; n < 3; ++n) {
        const Body* b = &bodies[show[n]];
        const float* m = moments + 3 * show[n];
        printf("body %d principal moments %6.3f %6.3f %6.3f, major axis (%6.3f %6.3f %6.3f)\n", b->id, m[0], m[1],
               m[2], b->axes[0][0], b->axes[1][0], b->axes[2][0]);
    }
    free(moments);
    return 0;
}

int main(void)
{
    const orlLibVersion* v = orlmGetLibVersion();
    printf("%s %s (build %d.%d, %s), %d thread(s)\n", v->name, v->versionText, v->buildMajor, v->buildNumber,
           v->buildDate, (int)threads_omp_of_n_orl);

    Body bodies[BODIES];
    for (int k = 0; k < BODIES; ++k) {
        bodies[k].id = k;
        bodies[k].mass = 1.0f + k;
        for (int i = 0; i < 3; ++i)
            for (int j = 0; j < 3; ++j) bodies[k].inertia[i][j] = (i == j) ? bodies[k].mass : 0.0f;
    }
    const float correction[3][3] = {{0.5f, 0.1f, 0.0f}, {0.1f, 0.5f, 0.0f}, {0.0f, 0.0f, 0.5f}};
    const int stride0 = (int)sizeof(Body), stride1 = 3 * (int)sizeof(float), stride2 = (int)sizeof(float);

    /* Standard layout: the inertia field of body k is at
     * bodies + k * sizeof(Body) + i * stride1 + j * stride2. */
    float* first = &bodies[0].inertia[0][0];
    if (check(orlmAdd_mam_32f(first, stride0, stride1, stride2, &correction[0][0], stride1, stride2, first, stride0,
                              stride1, stride2, 3, 3, BODIES),
              "orlmAdd_mam_32f"))
        return 1;
    print_inertia("after Add_mam (strided records):", &bodies[2]);

    /* Item-pointer layout: a list of the bodies to correct, in any order;
     * the offset of the field is added to every pointer. */
    const float* list_src[3];
    float* list_dst[3];
    const int pick[3] = {5, 2, 7};
    for (int n = 0; n < 3; ++n) {
        list_src[n] = (const float*)&bodies[pick[n]];
        list_dst[n] = (float*)&bodies[pick[n]];
    }
    const int offset = (int)offsetof(Body, inertia);
    if (check(orlmAdd_mam_32f_L(list_src, offset, stride1, stride2, &correction[0][0], stride1, stride2, list_dst,
                                offset, stride1, stride2, 3, 3, 3),
              "orlmAdd_mam_32f_L"))
        return 1;
    print_inertia("after Add_mam_L (bodies 5, 2, 7):", &bodies[2]);

    /* Element-pointer layout: a table with one pointer for each element of
     * body 0's inertia; stride0 then reaches the same element of later bodies. */
    const float* tbl_src[9];
    float* tbl_dst[9];
    const float* tbl_corr[9];
    for (int x = 0; x < 9; ++x) {
        tbl_src[x] = &bodies[0].inertia[x / 3][x % 3];
        tbl_dst[x] = &bodies[0].inertia[x / 3][x % 3];
        tbl_corr[x] = &correction[x / 3][x % 3];
    }
    if (check(orlmSub_mam_32f_P(tbl_src, 0, stride0, tbl_corr, 0, tbl_dst, 0, stride0, 3, 3, BODIES),
              "orlmSub_mam_32f_P"))
        return 1;
    print_inertia("after Sub_mam_P (all bodies):", &bodies[2]);
    if (principal_axes(bodies, BODIES)) return 1;

    /* A large batch: 200000 transforms plus a shared drift, far above the
     * limit at which the work is spread over the threads. */
    Body* batch = malloc(sizeof(Body) * BATCH);
    if (!batch) return 1;
    for (int k = 0; k < BATCH; ++k)
        for (int i = 0; i < 4; ++i)
            for (int j = 0; j < 4; ++j) batch[k].transform[i][j] = (i == j) ? 1.0 : 0.0;
    double drift[4][4] = {{0}};
    drift[0][3] = 0.25; /* translate x by 0.25 */
    const int ds1 = 4 * (int)sizeof(double), ds2 = (int)sizeof(double);
    double* t0 = &batch[0].transform[0][0];
    for (int step = 0; step < 4; ++step)
        if (check(orlmAdd_mam_64f(t0, (int)sizeof(Body), ds1, ds2, &drift[0][0], ds1, ds2, t0, (int)sizeof(Body), ds1,
                                  ds2, 4, 4, BATCH),
                  "orlmAdd_mam_64f"))
            return 1;
    printf("%d transforms after 4 steps: body 0 x = %.2f, body %d x = %.2f\n", BATCH, batch[0].transform[0][3],
           BATCH - 1, batch[BATCH - 1].transform[0][3]);

    /* A bad argument is a status, and nothing is written. */
    orlStatus st = orlmAdd_mam_32f(first, stride0, 6, stride2, &correction[0][0], stride1, stride2, first, stride0,
                                   stride1, stride2, 3, 3, BODIES);
    printf("a stride of 6 bytes gives status %d (orlStatusStride is %d)\n", (int)st, orlStatusStride);
    free(batch);
    return 0;
}
