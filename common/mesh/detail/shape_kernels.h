#pragma once

// The formulas of the planar shape functions, once for values and once for derivatives, with the
// choice of the mid-side nodes as a template parameter: Shape_Function and the batch forms pick the
// same code, and elements with all or no mid-side nodes run without any choice.

#include <cstdint>

namespace lmw::mesh::detail {

// Which mid-side nodes are there. Keep(k, v) is v for a present node k (4-7), else 0.
struct AllMidside {
    [[nodiscard]] static constexpr double Keep(int /*node*/, double value) noexcept {
        return value;
    }
};
struct NoMidside {
    [[nodiscard]] static constexpr double Keep(int /*node*/, double /*value*/) noexcept {
        return 0.0;
    }
};
class SomeMidside {
 public:
    explicit SomeMidside(const std::int32_t* nodes) noexcept
        : factor_{Factor_(nodes[4]), Factor_(nodes[5]), Factor_(nodes[6]), Factor_(nodes[7])} {}
    // A product with 0 or 1 instead of a condition: exact, and no jump that depends on the element.
    [[nodiscard]] double Keep(int node, double value) const noexcept {
        return factor_[node - 4] * value;
    }

 private:
    static double Factor_(std::int32_t node) noexcept { return node > 0 ? 1.0 : 0.0; }

    double factor_[4];
};

/// Calls `action` with the mid-side choice of an element of which `Slots` slots from 4 on may hold
/// mid-side nodes; the others are not read. One predictable jump a slot.
template <int Slots, class Action>
void WithMidside(const std::int32_t* nodes, Action&& action) noexcept {
    const auto has = [nodes](int slot) { return slot >= Slots || nodes[4 + slot] > 0; };
    const auto has_not = [nodes](int slot) { return slot >= Slots || nodes[4 + slot] <= 0; };
    if (has(0) && has(1) && has(2) && has(3)) {
        action(AllMidside{});
    } else if (has_not(0) && has_not(1) && has_not(2) && has_not(3)) {
        action(NoMidside{});
    } else {
        action(SomeMidside(nodes));
    }
}

template <class Midside>
void QuadrilateralValues(double* n, double r, double s, const Midside& midside) noexcept {
    const double half_r = 0.5 * (1.0 - r * r);
    const double half_s = 0.5 * (1.0 - s * s);
    const double n4 = midside.Keep(4, half_r * (1.0 + s));
    const double n5 = midside.Keep(5, half_s * (1.0 - r));
    const double n6 = midside.Keep(6, half_r * (1.0 - s));
    const double n7 = midside.Keep(7, half_s * (1.0 + r));
    n[0] = 0.25 * (1.0 + r) * (1.0 + s) - 0.5 * n4 - 0.5 * n7;
    n[1] = 0.25 * (1.0 - r) * (1.0 + s) - 0.5 * n4 - 0.5 * n5;
    n[2] = 0.25 * (1.0 - r) * (1.0 - s) - 0.5 * n5 - 0.5 * n6;
    n[3] = 0.25 * (1.0 + r) * (1.0 - s) - 0.5 * n6 - 0.5 * n7;
    n[4] = n4;
    n[5] = n5;
    n[6] = n6;
    n[7] = n7;
}

template <class Midside>
void QuadrilateralDerivatives(double* dr, double* ds, double r, double s,
                              const Midside& midside) noexcept {
    const double half_r = 0.5 * (1.0 - r * r);
    const double half_s = 0.5 * (1.0 - s * s);
    const double dr4 = midside.Keep(4, -r * (1.0 + s));
    const double dr5 = midside.Keep(5, -half_s);
    const double dr6 = midside.Keep(6, -r * (1.0 - s));
    const double dr7 = midside.Keep(7, half_s);
    dr[0] = 0.25 * (1.0 + s) - 0.5 * dr4 - 0.5 * dr7;
    dr[1] = -0.25 * (1.0 + s) - 0.5 * dr4 - 0.5 * dr5;
    dr[2] = -0.25 * (1.0 - s) - 0.5 * dr5 - 0.5 * dr6;
    dr[3] = 0.25 * (1.0 - s) - 0.5 * dr6 - 0.5 * dr7;
    dr[4] = dr4;
    dr[5] = dr5;
    dr[6] = dr6;
    dr[7] = dr7;
    const double ds4 = midside.Keep(4, half_r);
    const double ds5 = midside.Keep(5, -s * (1.0 - r));
    const double ds6 = midside.Keep(6, -half_r);
    const double ds7 = midside.Keep(7, -s * (1.0 + r));
    ds[0] = 0.25 * (1.0 + r) - 0.5 * ds4 - 0.5 * ds7;
    ds[1] = 0.25 * (1.0 - r) - 0.5 * ds4 - 0.5 * ds5;
    ds[2] = -0.25 * (1.0 - r) - 0.5 * ds5 - 0.5 * ds6;
    ds[3] = -0.25 * (1.0 + r) - 0.5 * ds6 - 0.5 * ds7;
    ds[4] = ds4;
    ds[5] = ds5;
    ds[6] = ds6;
    ds[7] = ds7;
}

template <class Midside>
void TriangleValues(double* n, double r, double s, const Midside& midside) noexcept {
    const double l = 1.0 - r - s;
    const double n4 = midside.Keep(4, 4.0 * r * l);
    const double n5 = midside.Keep(5, 4.0 * r * s);
    const double n6 = midside.Keep(6, 4.0 * s * l);
    n[0] = l - 0.5 * n4 - 0.5 * n6;
    n[1] = r - 0.5 * n4 - 0.5 * n5;
    n[2] = s - 0.5 * n5 - 0.5 * n6;
    n[3] = 0.0;
    n[4] = n4;
    n[5] = n5;
    n[6] = n6;
    n[7] = 0.0;
}

template <class Midside>
void TriangleDerivatives(double* dr, double* ds, double r, double s,
                         const Midside& midside) noexcept {
    const double l = 1.0 - r - s;
    const double dr4 = midside.Keep(4, 4.0 * (l - r));
    const double dr5 = midside.Keep(5, 4.0 * s);
    const double dr6 = midside.Keep(6, -4.0 * s);
    dr[0] = -1.0 - 0.5 * dr4 - 0.5 * dr6;
    dr[1] = 1.0 - 0.5 * dr4 - 0.5 * dr5;
    dr[2] = -0.5 * dr5 - 0.5 * dr6;
    dr[3] = 0.0;
    dr[4] = dr4;
    dr[5] = dr5;
    dr[6] = dr6;
    dr[7] = 0.0;
    const double ds4 = midside.Keep(4, -4.0 * r);
    const double ds5 = midside.Keep(5, 4.0 * r);
    const double ds6 = midside.Keep(6, 4.0 * (l - s));
    ds[0] = -1.0 - 0.5 * ds4 - 0.5 * ds6;
    ds[1] = -0.5 * ds4 - 0.5 * ds5;
    ds[2] = 1.0 - 0.5 * ds5 - 0.5 * ds6;
    ds[3] = 0.0;
    ds[4] = ds4;
    ds[5] = ds5;
    ds[6] = ds6;
    ds[7] = 0.0;
}

template <class Midside>
void LineValues(double* n, double r, const Midside& midside) noexcept {
    const double n4 = midside.Keep(4, 1.0 - r * r);
    n[0] = 0.5 * (1.0 + r) - 0.5 * n4;
    n[1] = 0.5 * (1.0 - r) - 0.5 * n4;
    n[2] = n[3] = 0.0;
    n[4] = n4;
    n[5] = n[6] = n[7] = 0.0;
}

template <class Midside>
void LineDerivatives(double* dr, double* ds, double r, const Midside& midside) noexcept {
    const double dr4 = midside.Keep(4, -2.0 * r);
    dr[0] = 0.5 - 0.5 * dr4;
    dr[1] = -0.5 - 0.5 * dr4;
    dr[2] = dr[3] = 0.0;
    dr[4] = dr4;
    dr[5] = dr[6] = dr[7] = 0.0;
    for (int i = 0; i < 8; ++i) {
        ds[i] = 0.0;
    }
}

/// The three families behind one pair of names, for WithFamily.
struct Quadrilateral {
    static constexpr int kMidsideSlots = 4;
    template <class Midside>
    static void Values(double* n, double r, double s, const Midside& midside) noexcept {
        QuadrilateralValues(n, r, s, midside);
    }
    template <class Midside>
    static void Derivatives(double* dr, double* ds, double r, double s,
                            const Midside& midside) noexcept {
        QuadrilateralDerivatives(dr, ds, r, s, midside);
    }
};
struct Triangle {
    static constexpr int kMidsideSlots = 3;
    template <class Midside>
    static void Values(double* n, double r, double s, const Midside& midside) noexcept {
        TriangleValues(n, r, s, midside);
    }
    template <class Midside>
    static void Derivatives(double* dr, double* ds, double r, double s,
                            const Midside& midside) noexcept {
        TriangleDerivatives(dr, ds, r, s, midside);
    }
};
struct Line {
    static constexpr int kMidsideSlots = 1;
    template <class Midside>
    static void Values(double* n, double r, double /*s*/, const Midside& midside) noexcept {
        LineValues(n, r, midside);
    }
    template <class Midside>
    static void Derivatives(double* dr, double* ds, double r, double /*s*/,
                            const Midside& midside) noexcept {
        LineDerivatives(dr, ds, r, midside);
    }
};

/// Calls `action` with the element's family and mid-side choice.
template <class Action>
void WithFamily(const std::int32_t* nodes, Action&& action) noexcept {
    const auto with = [&](auto family) {
        WithMidside<decltype(family)::kMidsideSlots>(
            nodes, [&](const auto& midside) { action(family, midside); });
    };
    if (nodes[3] > 0) {
        with(Quadrilateral{});
    } else if (nodes[2] > 0) {
        with(Triangle{});
    } else {
        with(Line{});
    }
}

}  // namespace lmw::mesh::detail
