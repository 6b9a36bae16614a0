#include "bench/math/curve_inputs.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <random>
#include <tuple>

namespace bench {

namespace {

constexpr std::size_t kSites = 131072;

/// From [0, 1] to x.
double Spread(Shape shape, double t) {
    switch (shape) {
        case Shape::kSuction:
            return std::pow(10.0, -1.0 + 7.0 * t);
        case Shape::kEven:
            return 1000.0 * t;
        case Shape::kClustered: {
            const double groups = 5.0;
            const double group = std::min(std::floor(t * groups), groups - 1.0);
            return group + 1e-6 * (t * groups - group);
        }
    }
    return t;
}

/// Relative water content after van Genuchten (1980), a loam; falls from 1 towards 0.
double WaterContent(double suction) {
    return std::pow(1.0 + std::pow(0.036 * suction, 1.56), -(1.0 - 1.0 / 1.56));
}

Input Make(Shape shape, Order order, std::size_t size) {
    std::mt19937_64 random(size);
    const auto fraction = [&random] { return static_cast<double>(random() >> 11U) * 0x1p-53; };
    Input input;
    for (std::size_t i = 0; i < size; ++i) {
        const double scatter = i == 0 || i + 1 == size ? 0.0 : 0.8 * (fraction() - 0.5);
        const double t = (static_cast<double>(i) + scatter) / static_cast<double>(size - 1);
        input.x.push_back(Spread(shape, t));
        input.y.push_back(WaterContent(input.x.back()));
        input.points.push_back({input.x.back(), input.y.back()});
    }
    for (std::size_t i = 0; i < kSites; ++i) {
        input.sites.push_back(
            std::clamp(Spread(shape, fraction()), input.x.front(), input.x.back()));
    }
    if (order == Order::kSequential) {
        std::sort(input.sites.begin(), input.sites.end());
    }
    return input;
}

}  // namespace

const Input& InputOf(Shape shape, Order order, std::size_t size) {
    static std::map<std::tuple<Shape, Order, std::size_t>, Input> inputs;
    const auto key = std::make_tuple(shape, order, size);
    auto found = inputs.find(key);
    if (found == inputs.end()) {
        found = inputs.emplace(key, Make(shape, order, size)).first;
    }
    return found->second;
}

std::string NameOf(Shape shape, Order order, std::size_t size) {
    const char* const shape_name = shape == Shape::kSuction ? "suction"
                                   : shape == Shape::kEven  ? "even"
                                                            : "clustered";
    const char* const order_name = order == Order::kRandom ? "random" : "sequential";
    return std::string(shape_name) + "/" + order_name + "/" + std::to_string(size);
}

}  // namespace bench
