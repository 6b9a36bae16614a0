#pragma once

// Integration rules of the planar elements by shape, and shape functions at all points of a rule at
// once. Gauss_Data in common/mesh/shape_function.h gives its four tables to callers with plain
// arrays; this file has those and more, without copying. Surprising: a point's weight is the
// product of its two weights.

#include "common/export.h"

#include <cstddef>
#include <cstdint>
#include <span>

namespace lmw::mesh {

/// One integration point: local coordinates and two weights whose product is the point's weight.
/// Four doubles without gaps, in this order. No units.
struct IntegrationPoint {
    double r = 0.0;
    double s = 0.0;
    double w1 = 0.0;
    double w2 = 0.0;
};

// The rule of so many points; the span refers to a constant table and is empty when there is no
// rule of that count. Constants are exact to the last bit of a double; the points lie inside the
// element and the weights are positive.
//
//   shape          points   exact for                        weights sum to
//   line           2, 3     degree 3, 5 in r                 2
//   triangle       1, 3     total degree 1, 2                1/2
//   triangle       6, 7     total degree 4, 5                1/2
//   quadrilateral  4, 9     degree 3, 5 in each of r and s   4
//
// Line: Gauss and Legendre, first the point next to node 0, then that next to node 1, then the
// middle; s = 0. Triangle, 6 points: G. R. Cowper, "Gaussian quadrature formulas for triangles",
// International Journal for Numerical Methods in Engineering 7 (1973) 405-408; 7 points: J. Radon,
// "Zur mechanischen Kubatur", Monatshefte fuer Mathematik 52 (1948) 286-300; each ring of three
// points starts next to node 0 or with the point opposite to it, and goes on in node order.
[[nodiscard]] LMW_API std::span<const IntegrationPoint> LineRule(int count) noexcept;
[[nodiscard]] LMW_API std::span<const IntegrationPoint> TriangleRule(int count) noexcept;
[[nodiscard]] LMW_API std::span<const IntegrationPoint> QuadrilateralRule(int count) noexcept;

/// Shape functions and derivatives at one point: the same bits as Shape_Function and
/// Shape_Derivative give, slot for slot.
struct ShapeAtPoint {
    double n[8];      ///< N of nodes 0-7
    double dn_dr[8];  ///< dN/dr of nodes 0-7
    double dn_ds[8];  ///< dN/ds of nodes 0-7
};

/// Values and derivatives of the element with the 8 node numbers `nodes` at every point of `rule`:
/// shapes[i] belongs to rule[i]; only as many are written as the shorter of the two holds. The
/// family and the mid-side nodes are told apart once for all points. Allocates nothing.
LMW_API void EvaluateShapes(std::span<ShapeAtPoint> shapes, std::span<const IntegrationPoint> rule,
                            const std::int32_t* nodes) noexcept;

}  // namespace lmw::mesh
