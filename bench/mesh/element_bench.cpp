// Element mathematics: values and derivatives of the 8-node quadrilateral within 1.2 of the
// formulas written straight down, the inverse map at least 5 times as fast as Newton's iteration.

#include "common/mesh/element_rule.h"
#include "common/mesh/shape_function.h"

#include "bench/mesh/straight_element.h"

#include <benchmark/benchmark.h>

#include <array>
#include <cstdint>
#include <random>
#include <vector>

namespace {

constexpr std::int32_t kQuad8[8] = {1, 2, 3, 4, 5, 6, 7, 8};
constexpr std::int32_t kQuad4[8] = {1, 2, 3, 4, 0, 0, 0, 0};
constexpr std::int32_t kQuad6[8] = {1, 2, 3, 4, 5, 0, 7, 0};
constexpr std::int32_t kTriangle6[8] = {1, 2, 3, 0, 4, 5, 6, 0};

// All points of a 3 x 3 rule, one call each.
using Function = void (*)(double*, double, double, const std::int32_t*) noexcept;
void PerPoint(benchmark::State& state, Function function, const std::int32_t* nodes) {
    const auto rule = lmw::mesh::QuadrilateralRule(9);
    std::array<double, 16> out{};
    for (auto _ : state) {
        for (const lmw::mesh::IntegrationPoint& point : rule) {
            function(out.data(), point.r, point.s, nodes);
            benchmark::ClobberMemory();
        }
    }
    state.SetItemsProcessed(state.iterations() * 9);
}
BENCHMARK_CAPTURE(PerPoint, straight_values_quad8, straight::Quad8Values, kQuad8);
BENCHMARK_CAPTURE(PerPoint, values_quad8, Shape_Function, kQuad8);
BENCHMARK_CAPTURE(PerPoint, values_quad6, Shape_Function, kQuad6);
BENCHMARK_CAPTURE(PerPoint, values_quad4, Shape_Function, kQuad4);
BENCHMARK_CAPTURE(PerPoint, values_triangle6, Shape_Function, kTriangle6);
BENCHMARK_CAPTURE(PerPoint, straight_derivatives_quad8, straight::Quad8Derivatives, kQuad8);
BENCHMARK_CAPTURE(PerPoint, derivatives_quad8, Shape_Derivative, kQuad8);
BENCHMARK_CAPTURE(PerPoint, derivatives_quad6, Shape_Derivative, kQuad6);
BENCHMARK_CAPTURE(PerPoint, derivatives_quad4, Shape_Derivative, kQuad4);
BENCHMARK_CAPTURE(PerPoint, derivatives_triangle6, Shape_Derivative, kTriangle6);

// Values and derivatives at all points of the rule, one call an element; per point.
void AllPoints(benchmark::State& state, const std::int32_t* nodes) {
    const auto rule = lmw::mesh::QuadrilateralRule(9);
    std::array<lmw::mesh::ShapeAtPoint, 9> shapes;
    for (auto _ : state) {
        lmw::mesh::EvaluateShapes(shapes, rule, nodes);
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * 9);
}
BENCHMARK_CAPTURE(AllPoints, quad8, kQuad8);
BENCHMARK_CAPTURE(AllPoints, quad6, kQuad6);
BENCHMARK_CAPTURE(AllPoints, quad4, kQuad4);

struct Query {
    std::array<double, 8> corners;
    double x;
    double y;
};

// Points in distorted quadrilaterals, far from the origin as meshes are.
std::vector<Query> Queries(double distortion) {
    std::mt19937 engine(7);
    std::uniform_real_distribution<double> shift(-distortion, distortion);
    std::uniform_real_distribution<double> local(-1.0, 1.0);
    std::vector<Query> queries(1024);
    for (Query& query : queries) {
        constexpr double square[8] = {1, 1, -1, 1, -1, -1, 1, -1};
        for (std::size_t i = 0; i < 8; ++i) {
            query.corners[i] = 50.0 + square[i] + shift(engine);
        }
        double n[8];
        Shape_Function(n, local(engine), local(engine), kQuad4);
        query.x = query.y = 0.0;
        for (std::size_t i = 0; i < 4; ++i) {
            query.x += n[i] * query.corners[2 * i];
            query.y += n[i] * query.corners[2 * i + 1];
        }
    }
    return queries;
}

template <class Inverse>
void InverseMap(benchmark::State& state, Inverse inverse, double distortion) {
    const std::vector<Query> queries = Queries(distortion);
    for (auto _ : state) {
        double sum = 0.0;
        for (const Query& query : queries) {
            double r = 0.0;
            double s = 0.0;
            sum += inverse(r, s, query);
            sum += r + s;
        }
        benchmark::DoNotOptimize(sum);
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(queries.size()));
}
int ClosedForm(double& r, double& s, const Query& q) {
    return iGlobal_To_Local_Coords(r, s, q.x, q.y, q.corners.data(), 4);
}
int Newton(double& r, double& s, const Query& q) {
    return straight::NewtonInverse(r, s, q.x, q.y, q.corners.data());
}
int UnrolledNewton(double& r, double& s, const Query& q) {
    return straight::UnrolledNewtonInverse(r, s, q.x, q.y, q.corners.data());
}
BENCHMARK_CAPTURE(InverseMap, closed_form_distorted, ClosedForm, 0.3);
BENCHMARK_CAPTURE(InverseMap, newton_distorted, Newton, 0.3);
BENCHMARK_CAPTURE(InverseMap, closed_form_squares, ClosedForm, 1e-300);
BENCHMARK_CAPTURE(InverseMap, newton_squares, Newton, 1e-300);
BENCHMARK_CAPTURE(InverseMap, unrolled_newton_distorted, UnrolledNewton, 0.3);
BENCHMARK_CAPTURE(InverseMap, unrolled_newton_squares, UnrolledNewton, 1e-300);

}  // namespace
