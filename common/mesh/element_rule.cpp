#include "common/mesh/element_rule.h"

namespace lmw::mesh {

// The tables of constants, to 17 digits and more. Gauss_Data hands out the rules of 1, 3, 4 and 9
// points in this order and with these factors.
namespace {

using Point = IntegrationPoint;

// clang-format off
constexpr double kG = 0.57735026918962576451;  // 1 / sqrt(3)
constexpr double kA = 0.77459666924148337704;  // sqrt(0.6)
constexpr double kFive = 5.0 / 9.0;
constexpr double kEight = 8.0 / 9.0;

constexpr Point kLine2[] = {{kG, 0.0, 1.0, 1.0}, {-kG, 0.0, 1.0, 1.0}};
constexpr Point kLine3[] = {{kA, 0.0, kFive, 1.0}, {-kA, 0.0, kFive, 1.0}, {0.0, 0.0, kEight, 1.0}};

constexpr double kThird = 1.0 / 3.0;
constexpr double kSixth = 1.0 / 6.0;
constexpr double kTwoThirds = 2.0 / 3.0;

constexpr Point kTriangle1[] = {{kThird, kThird, 1.0, 0.5}};
constexpr Point kTriangle3[] = {
    {kSixth,     kSixth,     kThird, 0.5},
    {kTwoThirds, kSixth,     kThird, 0.5},
    {kSixth,     kTwoThirds, kThird, 0.5},
};

// Six points: rings at a and b with 1 - 2a and 1 - 2b; a, b = (8 - sqrt(10) +- sqrt(38 - 44 sqrt(2/5)))
// / 18 and weights (620 +- sqrt(213125 - 53320 sqrt(10))) / 3720.
constexpr double kA6 = 0.44594849091596488632, kA6Far = 0.10810301816807022736, kWA6 = 0.22338158967801146570;
constexpr double kB6 = 0.09157621350977074346, kB6Far = 0.81684757298045851308, kWB6 = 0.10995174365532186764;
constexpr Point kTriangle6[] = {
    {kA6,    kA6,    kWA6, 0.5},
    {kA6Far, kA6,    kWA6, 0.5},
    {kA6,    kA6Far, kWA6, 0.5},
    {kB6,    kB6,    kWB6, 0.5},
    {kB6Far, kB6,    kWB6, 0.5},
    {kB6,    kB6Far, kWB6, 0.5},
};

// Seven points: the centre with 9/40 and rings at (6 +- sqrt(15)) / 21 with (155 +- sqrt(15)) / 1200.
constexpr double kA7 = 0.47014206410511508977, kA7Far = 0.05971587178976982046, kWA7 = 0.13239415278850618074;
constexpr double kB7 = 0.10128650732345633880, kB7Far = 0.79742698535308732240, kWB7 = 0.12593918054482715260;
constexpr Point kTriangle7[] = {
    {kThird, kThird, 0.225, 0.5},
    {kA7,    kA7,    kWA7,  0.5},
    {kA7Far, kA7,    kWA7,  0.5},
    {kA7,    kA7Far, kWA7,  0.5},
    {kB7,    kB7,    kWB7,  0.5},
    {kB7Far, kB7,    kWB7,  0.5},
    {kB7,    kB7Far, kWB7,  0.5},
};

constexpr Point kQuadrilateral4[] = {{kG, kG, 1.0, 1.0}, {-kG, kG, 1.0, 1.0}, {-kG, -kG, 1.0, 1.0}, {kG, -kG, 1.0, 1.0}};
constexpr Point kQuadrilateral9[] = {
    { kA,  kA,  kFive,  kFive},  {-kA,  kA,  kFive,  kFive},  {-kA, -kA,  kFive,  kFive},  { kA, -kA,  kFive,  kFive},
    {0.0,  kA,  kEight, kFive},  {-kA,  0.0, kFive,  kEight}, {0.0, -kA,  kEight, kFive},  { kA, 0.0,  kFive,  kEight},
    {0.0,  0.0, kEight, kEight},
};
// clang-format on

}  // namespace

std::span<const IntegrationPoint> LineRule(int count) noexcept {
    switch (count) {
        case 2:
            return kLine2;
        case 3:
            return kLine3;
        default:
            return {};
    }
}

std::span<const IntegrationPoint> TriangleRule(int count) noexcept {
    switch (count) {
        case 1:
            return kTriangle1;
        case 3:
            return kTriangle3;
        case 6:
            return kTriangle6;
        case 7:
            return kTriangle7;
        default:
            return {};
    }
}

std::span<const IntegrationPoint> QuadrilateralRule(int count) noexcept {
    switch (count) {
        case 4:
            return kQuadrilateral4;
        case 9:
            return kQuadrilateral9;
        default:
            return {};
    }
}

}  // namespace lmw::mesh
