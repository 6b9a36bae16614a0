#pragma once

// Shape functions of the planar finite elements, their derivatives, the integration points and the
// inverse map from global to local coordinates: flat functions over plain arrays for inner loops.
// No function allocates, keeps state or raises. common/mesh/element_rule.h has further rules and
// evaluates all points of a rule at once; common/mesh/element_shape.h has the traits of the shapes.
// Surprising: the quadrilateral's corners start at (+1, +1), a line's node 0 lies at r = +1, and a
// triangle's slot 3 stays empty, so its mid-side nodes are 4, 5 and 6.

#include "common/export.h"

#include <cstdint>

// An element is eight node numbers; a number greater than 0 is a node, any other an empty slot.
// Which are there decides the family, and any subset of the mid-side nodes may be:
//
//   quadrilateral  node 3 is there            corners (+1, +1) (-1, +1) (-1, -1) (+1, -1)
//                                             nodes 4-7 on edges 0-1, 1-2, 2-3, 3-0
//   triangle       no node 3, node 2 is there corners (0, 0) (1, 0) (0, 1)
//                                             nodes 4-6 on edges 0-1, 1-2, 2-0; slot 7 is not read
//   line           neither                    ends r = +1, r = -1, node 4 at r = 0;
//                                             slots 5-7 are not read, s has no meaning
//
// With the mid-side functions Nk (quadrilateral: N4 = (1 - r^2) (1 + s) / 2 and likewise; triangle:
// N4 = 4 r L, N5 = 4 r s, N6 = 4 s L, L = 1 - r - s; line: N4 = 1 - r^2) every present mid-side
// node k takes half of its Nk from the linear functions of the two corners of its edge, in the
// order 4 to 7.
//
// 1. A present node's function is 1 at its own node and 0 at the other present ones.
// 2. The functions sum to 1 and their derivatives to 0, everywhere (to rounding).
// 3. The functions of absent nodes and empty slots, and their derivatives, are 0.
//
// Coordinates and values have no unit. Such hierarchically corrected functions: O. C. Zienkiewicz
// and R. L. Taylor, The Finite Element Method, volume 1, 5th edition 2000, chapter 8.

/// The values: `values` gets 8 doubles, N of nodes 0-7, at the local point (r, s) of the element
/// with the 8 node numbers `nodes`.
LMW_API void Shape_Function(double* values, double r, double s, const std::int32_t* nodes) noexcept;

/// The derivatives of these values: `derivatives` gets 16 doubles, dN/dr of nodes 0-7, then dN/ds
/// of nodes 0-7 (all 0 for a line).
LMW_API void Shape_Derivative(double* derivatives, double r, double s,
                              const std::int32_t* nodes) noexcept;

/// The integration points of 1 or 3 points (triangle) or 4 or 9 points (quadrilateral): `points`
/// gets 4 doubles a point, r, s, w1, w2; the point's weight is w1 w2. The weights sum to 1/2 or 4,
/// the area of the reference element. The quadrilateral's points follow the corner nodes, then the
/// mid-side nodes, then the centre. Any other count writes nothing. The rules are exact for the
/// degrees 1 and 2 (triangle), 3 and 5 in each of r and s (quadrilateral).
LMW_API void Gauss_Data(double* points, int count) noexcept;

/// The inverse of the map of the linear triangle (3 corners) or bilinear quadrilateral (4): the
/// local coordinates of the point (x, y) in the element with `corner_count` corners x0, y0, x1, y1,
/// ... in node order (2 doubles a corner, in the unit of x and y). Returns 1 and sets r and s when
/// they were found; else returns 0 and sets both to 0.
///
/// 1. A triangle's coordinates are found outside the element too; not when its corners lie on one
///    line.
/// 2. A quadrilateral's r is the root of smaller magnitude of the quadratic that is left when s is
///    eliminated. A point inside a convex quadrilateral or on its edge is found, with |r| and |s|
///    up to 1 and rounding.
/// 3. The corners are shifted to node 0 first, so a mesh far from the origin loses nothing but what
///    its coordinates do not hold. Mapped forth again, the result is within 1e-9 of the element's
///    size of the point, for quadrilaterals with an edge a millionth of the others too.
/// 4. A quadrilateral's s beyond 1.0001 in magnitude is accepted only from the second of the two
///    linear relations in s (x and y), and only when its denominator is more than rounding noise;
///    so a point outside may be found or not, while one at most slightly outside (1.0001) is always
///    found.
// By design: with any other corner count it returns 1 and leaves r and s alone. Callers only pass 3
// or 4; those that pass a placeholder rely on their values staying.
LMW_API int iGlobal_To_Local_Coords(double& r, double& s, double x, double y, const double* corners,
                                    int corner_count) noexcept;
