// What is the area of a finite element with a curved edge, the water in it, and where is a point in
// it?

#include <common/mesh/element_rule.h>
#include <common/mesh/shape_function.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <span>
#include <vector>

namespace {

// Corners from (+1, +1) of the local coordinates on, counter-clockwise, in metres. The bottom edge,
// from node 2 to node 3, is bent by its middle node 6; the other edges are straight (0: no node).
constexpr std::array<std::int32_t, 8> kNodes = {11, 12, 13, 14, 0, 0, 15, 0};
constexpr std::array<double, 8> kX = {4.0, 0.0, 0.0, 4.0, 0.0, 0.0, 2.0, 0.0};
constexpr std::array<double, 8> kY = {3.0, 3.0, 0.0, 0.0, 0.0, 0.0, -0.6, 0.0};
constexpr std::array<double, 8> kWaterContent = {0.20, 0.20, 0.40, 0.40, 0.0, 0.0, 0.44, 0.0};

double Dot(const double* functions, const std::array<double, 8>& values) {
    double sum = 0.0;
    for (std::size_t node = 0; node < values.size(); ++node) {
        sum += functions[node] * values[node];
    }
    return sum;
}

}  // namespace

int main() {
    //! [integrate]
    // The functions at all nine points at once, then one sum over the points.
    const std::span<const lmw::mesh::IntegrationPoint> rule = lmw::mesh::QuadrilateralRule(9);
    std::vector<lmw::mesh::ShapeAtPoint> shapes(rule.size());
    lmw::mesh::EvaluateShapes(shapes, rule, kNodes.data());

    double area = 0.0;
    double water = 0.0;
    for (std::size_t k = 0; k < rule.size(); ++k) {
        const lmw::mesh::ShapeAtPoint& at = shapes[k];
        const double jacobian =
            Dot(at.dn_dr, kX) * Dot(at.dn_ds, kY) - Dot(at.dn_dr, kY) * Dot(at.dn_ds, kX);
        const double weight = rule[k].w1 * rule[k].w2 * jacobian;
        area += weight;
        water += weight * Dot(at.n, kWaterContent);
    }
    std::printf("area            %.6f m2\n", area);  // 12 and the parabola below: 2/3 of 4 x 0.6
    std::printf("water           %.6f m3 per m of section\n", water);
    //! [integrate]

    //! [inverse]
    // Back from a place to local coordinates, in the element of the four corners.
    const std::array<double, 8> corners = {4.0, 3.0, 0.0, 3.0, 0.0, 0.0, 4.0, 0.0};
    double r = 0.0;
    double s = 0.0;
    if (iGlobal_To_Local_Coords(r, s, 3.0, 0.75, corners.data(), 4) == 1) {
        std::array<double, 8> values = {};
        Shape_Function(values.data(), r, s, kNodes.data());
        std::printf("(3.0, 0.75)     r = %.3f, s = %.3f, water content %.4f\n", r, s,
                    Dot(values.data(), kWaterContent));
    }
    //! [inverse]
    return 0;
}
