#include "common/math/quadratic_eqn.h"
#include "common/mesh/shape_function.h"

#include <bit>
#include <cmath>
#include <cstdint>

namespace {

constexpr double kVanishing = 1e-20;  // coefficients and denominators at or below count as 0
constexpr double kLarge = 1e10;       // the largest quotient, and ratio of denominators, accepted
constexpr double kEdgeAllowance = 0.9999000099990001;  // 1 / 1.0001: |s| on or just outside an edge

int NotFound(double& r, double& s) noexcept {
    r = 0.0;
    s = 0.0;
    return 0;
}

bool CanDivide(double numerator, double denominator) noexcept {
    const double size = std::fabs(denominator);
    return size > kVanishing && std::fabs(numerator) <= kLarge * size;
}

int TriangleInverse(double& r, double& s, double x, double y, const double* corners) noexcept {
    const double x1 = corners[2] - corners[0];
    const double y1 = corners[3] - corners[1];
    const double x2 = corners[4] - corners[0];
    const double y2 = corners[5] - corners[1];
    const double px = x - corners[0];
    const double py = y - corners[1];
    const double determinant = y1 * x2 - y2 * x1;
    const double r_numerator = py * x2 - y2 * px;
    const double s_numerator = y1 * px - py * x1;
    if (!CanDivide(r_numerator, determinant) || !CanDivide(s_numerator, determinant)) {
        return NotFound(r, s);
    }
    r = r_numerator / determinant;
    s = s_numerator / determinant;
    return 1;
}

// With X1, X2, X3 and P relative to node 0, four times the bilinear map minus 4 P reads
//   A + B r + C s + D r s = 0,  A = X1 + X2 + X3 - 4 P,  B = X3 - X1 - X2,
//                               C = X1 - X2 - X3,        D = X2 - X1 - X3,
// once in x and once in y. Each is linear in s, (C + D r) s = -(A + B r), and eliminating s leaves
//   (A + B r)_x (C + D r)_y - (A + B r)_y (C + D r)_x = 0.
struct Bilinear {
    Bilinear(double x1, double x2, double x3, double p) noexcept
        : a((x1 + x2) + (x3 - 4.0 * p)), b(x3 - (x1 + x2)), c(x1 - (x2 + x3)), d(x2 - (x1 + x3)) {}
    double a;
    double b;
    double c;
    double d;
};

// `yes` or `no` without a jump: for conditions that differ from point to point a jump is predicted
// wrongly half the time.
double Select(bool condition, double yes, double no) noexcept {
    const std::uint64_t mask = 0U - std::uint64_t{condition};
    return std::bit_cast<double>((std::bit_cast<std::uint64_t>(yes) & mask) |
                                 (std::bit_cast<std::uint64_t>(no) & ~mask));
}

int QuadrilateralInverse(double& r, double& s, double x, double y, const double* corners) noexcept {
    const double x0 = corners[0];
    const double y0 = corners[1];
    const Bilinear u(corners[2] - x0, corners[4] - x0, corners[6] - x0, x - x0);
    const Bilinear v(corners[3] - y0, corners[5] - y0, corners[7] - y0, y - y0);
    double root = 0.0;
    double second = 0.0;
    const int count = math::fn::QuadraticEqn::Solve(
        u.b * v.d - v.b * u.d, (u.a * v.d - v.a * u.d) + (u.b * v.c - v.b * u.c),
        u.a * v.c - v.a * u.c, kVanishing, root, second);
    if (count == 2) {
        // The root of smaller magnitude, the second one if they are equal: |q| is the larger of the
        // two sums in the solution formula, so c / q never exceeds q / a in magnitude.
        root = second;
    }
    if (count == 0 || std::fabs(root) > kLarge) {
        return NotFound(r, s);
    }
    // The relation with the larger denominator goes first: the other one's may be nothing but
    // rounding noise, which passes any absolute threshold.
    const double u_numerator = -(u.a + u.b * root);
    const double v_numerator = -(v.a + v.b * root);
    const double u_denominator = u.c + u.d * root;
    const double v_denominator = v.c + v.d * root;
    const bool v_first = std::fabs(u_denominator) < std::fabs(v_denominator);
    const double numerator = Select(v_first, v_numerator, u_numerator);
    const double denominator = Select(v_first, v_denominator, u_denominator);
    const double size = std::fabs(denominator);
    if (size > kVanishing && std::fabs(numerator) * kEdgeAllowance <= size) {
        r = root;
        s = numerator / denominator;
        return 1;
    }
    const double other_numerator = v_first ? u_numerator : v_numerator;
    const double other_denominator = v_first ? u_denominator : v_denominator;
    if (CanDivide(other_numerator, other_denominator) &&
        size <= kLarge * std::fabs(other_denominator)) {
        r = root;
        s = other_numerator / other_denominator;
        return 1;
    }
    return NotFound(r, s);
}

}  // namespace

int iGlobal_To_Local_Coords(double& r, double& s, double x, double y, const double* corners,
                            int corner_count) noexcept {
    if (corner_count == 3) {
        return TriangleInverse(r, s, x, y, corners);
    }
    if (corner_count == 4) {
        return QuadrilateralInverse(r, s, x, y, corners);
    }
    return 1;
}
