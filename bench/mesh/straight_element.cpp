#include "bench/mesh/straight_element.h"

#include "common/mesh/shape_function.h"

#include <cmath>

namespace straight {

void Quad8Values(double* n, double r, double s, const std::int32_t* /*nodes*/) noexcept {
    const double n4 = 0.5 * (1.0 - r * r) * (1.0 + s);
    const double n5 = 0.5 * (1.0 - s * s) * (1.0 - r);
    const double n6 = 0.5 * (1.0 - r * r) * (1.0 - s);
    const double n7 = 0.5 * (1.0 - s * s) * (1.0 + r);
    n[0] = 0.25 * (1.0 + r) * (1.0 + s) - 0.5 * n4 - 0.5 * n7;
    n[1] = 0.25 * (1.0 - r) * (1.0 + s) - 0.5 * n4 - 0.5 * n5;
    n[2] = 0.25 * (1.0 - r) * (1.0 - s) - 0.5 * n5 - 0.5 * n6;
    n[3] = 0.25 * (1.0 + r) * (1.0 - s) - 0.5 * n6 - 0.5 * n7;
    n[4] = n4;
    n[5] = n5;
    n[6] = n6;
    n[7] = n7;
}

void Quad8Derivatives(double* d, double r, double s, const std::int32_t* /*nodes*/) noexcept {
    const double r4 = -r * (1.0 + s);
    const double r5 = -0.5 * (1.0 - s * s);
    const double r6 = -r * (1.0 - s);
    const double r7 = 0.5 * (1.0 - s * s);
    d[0] = 0.25 * (1.0 + s) - 0.5 * r4 - 0.5 * r7;
    d[1] = -0.25 * (1.0 + s) - 0.5 * r4 - 0.5 * r5;
    d[2] = -0.25 * (1.0 - s) - 0.5 * r5 - 0.5 * r6;
    d[3] = 0.25 * (1.0 - s) - 0.5 * r6 - 0.5 * r7;
    d[4] = r4;
    d[5] = r5;
    d[6] = r6;
    d[7] = r7;
    const double s4 = 0.5 * (1.0 - r * r);
    const double s5 = -s * (1.0 - r);
    const double s6 = -0.5 * (1.0 - r * r);
    const double s7 = -s * (1.0 + r);
    d[8] = 0.25 * (1.0 + r) - 0.5 * s4 - 0.5 * s7;
    d[9] = 0.25 * (1.0 - r) - 0.5 * s4 - 0.5 * s5;
    d[10] = -0.25 * (1.0 - r) - 0.5 * s5 - 0.5 * s6;
    d[11] = -0.25 * (1.0 + r) - 0.5 * s6 - 0.5 * s7;
    d[12] = s4;
    d[13] = s5;
    d[14] = s6;
    d[15] = s7;
}

int NewtonInverse(double& r, double& s, double x, double y, const double* c) noexcept {
    constexpr std::int32_t nodes[8] = {1, 2, 3, 4, 0, 0, 0, 0};
    r = 0.0;
    s = 0.0;
    for (int iteration = 0; iteration < 25; ++iteration) {
        double n[8];
        double d[16];
        Shape_Function(n, r, s, nodes);
        Shape_Derivative(d, r, s, nodes);
        double fx = -x;
        double fy = -y;
        double xr = 0.0;
        double xs = 0.0;
        double yr = 0.0;
        double ys = 0.0;
        for (int i = 0; i < 4; ++i) {
            fx += n[i] * c[2 * i];
            fy += n[i] * c[2 * i + 1];
            xr += d[i] * c[2 * i];
            yr += d[i] * c[2 * i + 1];
            xs += d[8 + i] * c[2 * i];
            ys += d[8 + i] * c[2 * i + 1];
        }
        const double determinant = xr * ys - xs * yr;
        const double dr = (fx * ys - fy * xs) / determinant;
        const double ds = (fy * xr - fx * yr) / determinant;
        r -= dr;
        s -= ds;
        if (std::fabs(dr) < 1e-12 && std::fabs(ds) < 1e-12) {
            return 1;
        }
    }
    return 0;
}

int UnrolledNewtonInverse(double& r, double& s, double x, double y, const double* c) noexcept {
    r = 0.0;
    s = 0.0;
    for (int iteration = 0; iteration < 25; ++iteration) {
        const double rp = 1.0 + r;
        const double rm = 1.0 - r;
        const double sp = 1.0 + s;
        const double sm = 1.0 - s;
        const double fx =
            0.25 * (rp * sp * c[0] + rm * sp * c[2] + rm * sm * c[4] + rp * sm * c[6]) - x;
        const double fy =
            0.25 * (rp * sp * c[1] + rm * sp * c[3] + rm * sm * c[5] + rp * sm * c[7]) - y;
        const double xr = 0.25 * (sp * (c[0] - c[2]) + sm * (c[6] - c[4]));
        const double yr = 0.25 * (sp * (c[1] - c[3]) + sm * (c[7] - c[5]));
        const double xs = 0.25 * (rp * (c[0] - c[6]) + rm * (c[2] - c[4]));
        const double ys = 0.25 * (rp * (c[1] - c[7]) + rm * (c[3] - c[5]));
        const double determinant = xr * ys - xs * yr;
        const double dr = (fx * ys - fy * xs) / determinant;
        const double ds = (fy * xr - fx * yr) / determinant;
        r -= dr;
        s -= ds;
        if (std::fabs(dr) < 1e-12 && std::fabs(ds) < 1e-12) {
            return 1;
        }
    }
    return 0;
}

}  // namespace straight
