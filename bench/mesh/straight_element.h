#pragma once

// What the element functions are measured against: the 8-node quadrilateral written straight down,
// as functions of another source, so that a call costs the same.

#include <cstdint>

namespace straight {

void Quad8Values(double* n, double r, double s, const std::int32_t* nodes) noexcept;
void Quad8Derivatives(double* d, double r, double s, const std::int32_t* nodes) noexcept;

// The inverse map by Newton's iteration from the centre until the step is below 1e-12: with the
// library's shape functions, as analysis code writes it for any element, and written out for the
// bilinear quadrilateral alone.
int NewtonInverse(double& r, double& s, double x, double y, const double* corners) noexcept;
int UnrolledNewtonInverse(double& r, double& s, double x, double y, const double* corners) noexcept;

}  // namespace straight
