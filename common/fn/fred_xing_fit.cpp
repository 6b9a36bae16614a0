// The least-squares fit of the Fredlund-Xing curve: see FredXingFit for the method.

#include "common/fn/fred_xing.h"

#include <Eigen/Cholesky>
#include <Eigen/Core>
#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <optional>
#include <vector>

namespace math::fn::flow {

namespace {

using Vector3 = Eigen::Vector3d;
using Matrix3 = Eigen::Matrix3d;

constexpr double kResidualFraction = 0.003;
constexpr int kGridStarts = 2;  // starts taken from the grid, beside the caller's
constexpr int kSuctionsOfGrid = 5;
constexpr double kDampingAtStart = 1e-3;
constexpr double kSmallestDamping = 1e-12;
constexpr double kLargestDamping = 1e12;       // the step is then lost in rounding
constexpr double kConvergedReduction = 1e-12;  // of the sum of squares, relative
constexpr int kConvergedSteps = 2;             // in succession with no larger reduction
constexpr double kLogOfLargest = 700.0;        // exp of it is far within the range of a double

// One measured point, with what does not depend on the parameters.
struct Sample {
    double log_suction;
    double scale;  // theta_s times the correction factor
    double measured;
};

// Of a, n and m.
struct Bounds {
    explicit Bounds(double limit)
        : lowest(1e-9 * limit, 0.05, 0.02), highest(0.1 * limit, 100.0, 50.0) {}

    // The parameter whose logarithm is `log_value`: a bound itself, not the exponential of its
    // logarithm, where it stands at one.
    [[nodiscard]] double ParameterOf(int k, double log_value) const {
        return log_value == low[k]    ? lowest[k]
               : log_value == high[k] ? highest[k]
                                      : std::exp(log_value);
    }

    Vector3 lowest;
    Vector3 highest;
    Vector3 low = lowest.array().log();  // the same as logarithms
    Vector3 high = highest.array().log();
};

// The sum of squares and its derivatives at one set of parameters (ln a, ln n, ln m).
struct Linearisation {
    double sum = 0.0;
    Matrix3 normal = Matrix3::Zero();    // J^T J
    Vector3 gradient = Vector3::Zero();  // J^T r, r = computed - measured
};

// With z = (s/a)^n and l = ln(e + z): theta = scale * l^-m, and
//   d theta / d ln a =  theta * m * n * w        w = z / ((e + z) l)
//   d theta / d ln n = -theta * m * w * ln z
//   d theta / d ln m = -theta * m * ln l
class Model {
 public:
    Model(std::vector<Sample> samples, double constant_sum)
        : samples_(std::move(samples)), constant_sum_(constant_sum) {}

    [[nodiscard]] double SumOfSquares(const Vector3& log_parameters) const {
        const double n = std::exp(log_parameters[1]);
        const double m = std::exp(log_parameters[2]);
        double sum = constant_sum_;
        for (const Sample& sample : samples_) {
            const double log_z = n * (sample.log_suction - log_parameters[0]);
            const double residual =
                sample.scale * std::exp(-m * std::log(LogOfEPlus(log_z))) - sample.measured;
            sum += residual * residual;
        }
        return sum;
    }

    [[nodiscard]] Linearisation Linearise(const Vector3& log_parameters) const {
        const double n = std::exp(log_parameters[1]);
        const double m = std::exp(log_parameters[2]);
        Linearisation at;
        at.sum = constant_sum_;
        for (const Sample& sample : samples_) {
            const double log_z = n * (sample.log_suction - log_parameters[0]);
            const double l = LogOfEPlus(log_z);
            const double log_l = std::log(l);
            const double theta = sample.scale * std::exp(-m * log_l);
            const double residual = theta - sample.measured;
            const double z = std::exp(std::min(log_z, kLogOfLargest));
            const double w = z / ((std::numbers::e + z) * l);
            const double factor = theta * m;
            const Vector3 row(factor * n * w, w > 0.0 ? -factor * w * log_z : 0.0, -factor * log_l);
            at.sum += residual * residual;
            at.normal.noalias() += row * row.transpose();
            at.gradient.noalias() += row * residual;
        }
        return at;
    }

 private:
    // ln(e + z) of ln z, also where z is beyond the range of a double.
    static double LogOfEPlus(double log_z) {
        return log_z > kLogOfLargest ? log_z : std::log(std::numbers::e + std::exp(log_z));
    }

    std::vector<Sample> samples_;
    double constant_sum_;  // of the points without suction
};

struct Minimum {
    Vector3 log_parameters = Vector3::Zero();
    double sum = std::numeric_limits<double>::infinity();
    int iterations = 0;
    FredXingFit::Code code = FredXingFit::kIterationLimit;
};

// A parameter is frozen while it stands at a bound and the sum of squares falls outwards.
std::array<bool, 3> FrozenParameters(const Vector3& p, const Vector3& gradient,
                                     const Bounds& bounds) {
    std::array<bool, 3> frozen{};
    for (int k = 0; k < 3; ++k) {
        frozen[static_cast<std::size_t>(k)] = (p[k] <= bounds.low[k] && gradient[k] > 0.0) ||
                                              (p[k] >= bounds.high[k] && gradient[k] < 0.0);
    }
    return frozen;
}

FredXingFit::Code CodeOfMinimum(const Vector3& p, const Bounds& bounds) {
    const bool inside =
        (p.array() > bounds.low.array()).all() && (p.array() < bounds.high.array()).all();
    return inside ? FredXingFit::kConverged : FredXingFit::kAtBound;
}

Vector3 DampedStep(const Linearisation& at, const std::array<bool, 3>& frozen, double damping) {
    Matrix3 normal = at.normal;
    Vector3 gradient = at.gradient;
    for (int k = 0; k < 3; ++k) {
        normal(k, k) += damping * std::max(normal(k, k), std::numeric_limits<double>::min());
        if (frozen[static_cast<std::size_t>(k)]) {
            normal.row(k).setZero();
            normal.col(k).setZero();
            normal(k, k) = 1.0;
            gradient[k] = 0.0;
        }
    }
    return -normal.ldlt().solve(gradient);
}

Minimum Minimise(const Model& model, const Bounds& bounds, const Vector3& start) {
    Minimum best;
    best.log_parameters = start.cwiseMax(bounds.low).cwiseMin(bounds.high);
    Linearisation at = model.Linearise(best.log_parameters);
    best.sum = at.sum;
    double damping = kDampingAtStart;
    int small_steps = 0;
    while (best.iterations < FredXingFit::kMaxIterations) {
        ++best.iterations;
        const auto frozen = FrozenParameters(best.log_parameters, at.gradient, bounds);
        const Vector3 step = DampedStep(at, frozen, damping);
        const Vector3 next =
            (best.log_parameters + step).cwiseMax(bounds.low).cwiseMin(bounds.high);
        const double largest_step = (next - best.log_parameters).cwiseAbs().maxCoeff();
        const Linearisation there = model.Linearise(next);
        if (there.sum < best.sum) {
            small_steps =
                best.sum - there.sum <= kConvergedReduction * best.sum ? small_steps + 1 : 0;
            best.log_parameters = next;
            best.sum = there.sum;
            at = there;
            damping = std::max(damping * 0.1, kSmallestDamping);
            if (small_steps == kConvergedSteps) {
                best.code = CodeOfMinimum(best.log_parameters, bounds);
                return best;
            }
        } else {
            damping *= 10.0;
            if (damping > kLargestDamping ||
                largest_step < std::numeric_limits<double>::epsilon()) {
                best.code = CodeOfMinimum(best.log_parameters, bounds);
                return best;
            }
        }
    }
    return best;
}

// The points of a fit, split into those with suction and the constant rest.
struct Input {
    std::vector<Sample> samples;
    double constant_sum = 0.0;
    int points = 0;
    double lowest_log_suction = std::numeric_limits<double>::infinity();
    double highest_log_suction = -std::numeric_limits<double>::infinity();
};

bool IsUsable(double value) {
    return lmw::IsDefined(value) && std::isfinite(value);
}

Input Prepare(double theta_s, std::span<const FPOINT> points, double limit) {
    const double residual = kResidualFraction * limit;
    const double log_of_limit = std::log(1.0 + limit / residual);
    Input input;
    input.samples.reserve(points.size());
    for (const FPOINT& point : points) {
        if (!IsUsable(point.x) || !IsUsable(point.y)) {
            continue;
        }
        ++input.points;
        if (point.x >= 0.0) {
            input.constant_sum += (theta_s - point.y) * (theta_s - point.y);
            continue;
        }
        const double log_suction = std::log(-point.x);
        const double correction = 1.0 - std::log(1.0 - point.x / residual) / log_of_limit;
        input.samples.push_back({log_suction, theta_s * correction, point.y});
        input.lowest_log_suction = std::min(input.lowest_log_suction, log_suction);
        input.highest_log_suction = std::max(input.highest_log_suction, log_suction);
    }
    return input;
}

// The best few of a grid over the measured range of suctions and the usual ranges of n and m.
std::vector<Vector3> StartsFromGrid(const Model& model, const Input& input) {
    struct Start {
        double sum;
        Vector3 log_parameters;
    };
    std::vector<Start> grid;
    for (int k = 0; k < kSuctionsOfGrid; ++k) {
        const double part = k / (kSuctionsOfGrid - 1.0);
        const double log_a = input.lowest_log_suction +
                             part * (input.highest_log_suction - input.lowest_log_suction);
        for (const double n : {0.7, 2.0, 6.0}) {
            for (const double m : {0.3, 0.9, 2.7}) {
                const Vector3 start(log_a, std::log(n), std::log(m));
                grid.push_back({model.SumOfSquares(start), start});
            }
        }
    }
    std::partial_sort(grid.begin(), grid.begin() + kGridStarts, grid.end(),
                      [](const Start& a, const Start& b) { return a.sum < b.sum; });
    std::vector<Vector3> starts;
    starts.reserve(kGridStarts + 1);  // and the caller's
    for (int k = 0; k < kGridStarts; ++k) {
        starts.push_back(grid[static_cast<std::size_t>(k)].log_parameters);
    }
    return starts;
}

std::optional<Vector3> LogOfStart(const std::array<double, 3>& start) {
    for (const double value : start) {
        if (!IsUsable(value) || value <= 0.0) {
            return std::nullopt;
        }
    }
    return Vector3(std::log(start[0]), std::log(start[1]), std::log(start[2]));
}

bool HasThreeSuctions(std::vector<Sample> samples) {
    std::sort(samples.begin(), samples.end(),
              [](const Sample& a, const Sample& b) { return a.log_suction < b.log_suction; });
    const auto end = std::unique(
        samples.begin(), samples.end(),
        [](const Sample& a, const Sample& b) { return a.log_suction == b.log_suction; });
    return end - samples.begin() >= 3;
}

// Whether the parameters' effects on the points can be told apart. With a unit diagonal, the
// smallest pivot is the squared sine of the angle between one effect and the others.
bool IsRegular(const Matrix3& normal) {
    constexpr double kSmallestPivot = 1e-12;  // effects that agree to six digits
    const Vector3 scale = normal.diagonal().cwiseSqrt();
    if (!(scale.minCoeff() > 0.0)) {
        return false;
    }
    const Vector3 inverse = scale.cwiseInverse();
    const Matrix3 scaled = inverse.asDiagonal() * normal * inverse.asDiagonal();
    return Eigen::LDLT<Matrix3>(scaled).vectorD().minCoeff() > kSmallestPivot;
}

void FillCovariance(const Model& model, FredXingFit& fit, const Vector3& log_parameters) {
    if (fit.code == FredXingFit::kAtBound) {
        return;
    }
    const Matrix3 normal = model.Linearise(log_parameters).normal;
    if (!IsRegular(normal)) {
        fit.code = fit.code == FredXingFit::kConverged ? FredXingFit::kUndetermined : fit.code;
        return;
    }
    const Eigen::LDLT<Matrix3> factors(normal);
    if (fit.points <= 3) {
        return;
    }
    // From logarithms to the parameters themselves: d p = p d ln p.
    const Vector3 parameters(fit.a, fit.n, fit.m);
    const double variance = fit.sum_of_squares / (fit.points - 3);
    const Matrix3 covariance = variance * parameters.asDiagonal() *
                               factors.solve(Matrix3::Identity()) * parameters.asDiagonal();
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 3; ++column) {
            fit.covariance[3 * static_cast<std::size_t>(row) + static_cast<std::size_t>(column)] =
                covariance(row, column);
        }
    }
}

}  // namespace

FredXingFit FredXing::Fit(double thetaS, std::span<const FPOINT> points, const math::UnitSet& units,
                          const std::array<double, 3>& start) {
    FredXingFit fit;
    const double limit = CalcLimit(units);
    if (!IsUsable(thetaS) || thetaS <= 0.0 || !std::isfinite(limit) || limit <= 0.0) {
        return fit;
    }
    const Input input = Prepare(thetaS, points, limit);
    if (input.samples.size() < 3) {
        return fit;
    }
    const Model model(input.samples, input.constant_sum);
    const Bounds bounds(limit);

    std::vector<Vector3> starts = StartsFromGrid(model, input);
    const auto own_start = LogOfStart(start);
    if (own_start) {
        starts.push_back(*own_start);
    }
    Minimum best;
    for (const Vector3& from : starts) {
        const Minimum found = Minimise(model, bounds, from);
        fit.iterations += found.iterations;
        if (found.sum < best.sum) {
            best = found;
        }
    }
    // A start outside the bounds may be better than anything within them.
    if (own_start && model.SumOfSquares(*own_start) < best.sum) {
        best.log_parameters = *own_start;
        best.sum = model.SumOfSquares(*own_start);
        best.code = FredXingFit::kAtBound;
    }

    fit.code = best.code;
    fit.points = input.points;
    fit.a = bounds.ParameterOf(0, best.log_parameters[0]);
    fit.n = bounds.ParameterOf(1, best.log_parameters[1]);
    fit.m = bounds.ParameterOf(2, best.log_parameters[2]);
    fit.sum_of_squares = best.sum;
    fit.root_mean_square = std::sqrt(best.sum / fit.points);
    if (HasThreeSuctions(input.samples)) {
        FillCovariance(model, fit, best.log_parameters);
    } else if (fit.code == FredXingFit::kConverged) {
        fit.code = FredXingFit::kUndetermined;
    }
    return fit;
}

}  // namespace math::fn::flow
