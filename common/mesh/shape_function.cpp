#include "common/mesh/shape_function.h"

#include "common/mesh/detail/shape_kernels.h"
#include "common/mesh/element_rule.h"

#include <algorithm>
#include <cstddef>

void Shape_Function(double* values, double r, double s, const std::int32_t* nodes) noexcept {
    lmw::mesh::detail::WithFamily(
        nodes, [=](auto family, const auto& midside) { family.Values(values, r, s, midside); });
}

void Shape_Derivative(double* derivatives, double r, double s, const std::int32_t* nodes) noexcept {
    lmw::mesh::detail::WithFamily(nodes, [=](auto family, const auto& midside) {
        family.Derivatives(derivatives, derivatives + 8, r, s, midside);
    });
}

void Gauss_Data(double* points, int count) noexcept {
    const bool quadrilateral = count == 4 || count == 9;
    const bool triangle = count == 1 || count == 3;  // not all rules that TriangleRule has
    std::span<const lmw::mesh::IntegrationPoint> rule;
    if (quadrilateral) {
        rule = lmw::mesh::QuadrilateralRule(count);
    } else if (triangle) {
        rule = lmw::mesh::TriangleRule(count);
    }
    for (const lmw::mesh::IntegrationPoint& point : rule) {
        *points++ = point.r;
        *points++ = point.s;
        *points++ = point.w1;
        *points++ = point.w2;
    }
}

namespace lmw::mesh {

void EvaluateShapes(std::span<ShapeAtPoint> shapes, std::span<const IntegrationPoint> rule,
                    const std::int32_t* nodes) noexcept {
    const std::size_t count = std::min(shapes.size(), rule.size());
    detail::WithFamily(nodes, [=](auto family, const auto& midside) {
        for (std::size_t i = 0; i < count; ++i) {
            ShapeAtPoint& shape = shapes[i];
            family.Values(shape.n, rule[i].r, rule[i].s, midside);
            family.Derivatives(shape.dn_dr, shape.dn_ds, rule[i].r, rule[i].s, midside);
        }
    });
}

}  // namespace lmw::mesh
