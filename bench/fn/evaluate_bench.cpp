// Promise: the guard of an evaluation costs a few nanoseconds: SafeCalculate of a linear function
// of 50 points stays within 1.3 of the bare curve behind one virtual call. A failure costs at most
// about 30 ns, and what the handler and its reason cost.

#include "common/fn/evaluate.h"
#include "common/fn/fn_const.h"
#include "common/fn/fn_curves.h"

#include <benchmark/benchmark.h>

#include <cmath>
#include <cstddef>
#include <vector>

namespace {

constexpr std::size_t kPoints = 50;
constexpr std::size_t kSites = 4096;  // a power of two

std::vector<FPOINT> Points() {
    std::vector<FPOINT> points;
    for (std::size_t i = 0; i < kPoints; ++i) {
        const double x = std::pow(10.0, -1.0 + 7.0 * static_cast<double>(i) / (kPoints - 1));
        points.push_back({x, 1.0 / (1.0 + x), 0.0});
    }
    return points;
}

std::vector<double> Sites() {
    std::vector<double> sites;
    double t = 0.0;
    for (std::size_t i = 0; i < kSites; ++i) {
        t = std::fmod(t + 0.6180339887498949, 1.0);
        sites.push_back(std::pow(10.0, -1.0 + 7.0 * t));
    }
    return sites;
}

// What a kind costs at least: one virtual call and the curve.
class Bare {
 public:
    virtual ~Bare() = default;
    virtual double Value(const double* x) const = 0;
};

class BareLinear final : public Bare {
 public:
    explicit BareLinear(const std::vector<FPOINT>& points)
        : curve_(points.data(), points.data() + points.size(), {}, {}) {
        curve_.UpdateCalculatedValues().Ignore();
    }
    double Value(const double* x) const override { return curve_(*x); }

 private:
    math::fn::interpolate::Linear curve_;
};

template <class Evaluate>
void AtSites(benchmark::State& state, const Evaluate& evaluate) {
    const std::vector<double> sites = Sites();
    const double* const x = sites.data();
    std::size_t i = 0;
    for (auto _ : state) {
        double value = evaluate(x + i);
        benchmark::DoNotOptimize(value);
        i = (i + 1) & (kSites - 1);
    }
}

void BareVirtual(benchmark::State& state) {
    const BareLinear bare(Points());
    const Bare* function = &bare;
    benchmark::DoNotOptimize(function);
    AtSites(state, [function](const double* x) { return function->Value(x); });
}
BENCHMARK(BareVirtual);

void Unguarded(benchmark::State& state) {
    FnLinear linear;
    linear.SetPoints(Points());
    linear.UpdateCalculatedValues().Ignore();
    const FnImpl* function = &linear;
    benchmark::DoNotOptimize(function);
    AtSites(state, [function](const double* x) { return function->Calculate(x, nullptr); });
}
BENCHMARK(Unguarded);

void Safe(benchmark::State& state) {
    FnLinear linear;
    linear.SetPoints(Points());
    linear.UpdateCalculatedValues().Ignore();
    const FnImpl* function = &linear;
    benchmark::DoNotOptimize(function);
    AtSites(state, [function](const double* x) {
        return lmw::fn::impl::SafeCalculate(*function, x, nullptr);
    });
}
BENCHMARK(Safe);

class SilentHandler final : public lmw::fn::IErrorHandler {
 public:
    void CalculationFailed(const FnImpl& /*function*/, const double* /*x*/, const double* /*y*/,
                           const gtl::status& why) noexcept override {
        benchmark::DoNotOptimize(why.Detail());
    }
};

// A kind without a reason: the cost of the failing path alone.
class Nameless final : public FnKind {
 public:
    Nameless() : FnKind(FnConst::Dictionary()) {}
    double Calculate(const double* /*x*/, const double* /*y*/) const override {
        return lmw::kUndefined;
    }
    std::unique_ptr<FnImpl> Clone() const override { return std::make_unique<Nameless>(); }
    std::wstring KindName() const override { return L"Nameless"; }
};

void Fails(benchmark::State& state, const FnImpl& kind, lmw::fn::IErrorHandler* handler) {
    const lmw::fn::impl::ScopedErrorHandler scope(handler);
    const FnImpl* function = &kind;
    benchmark::DoNotOptimize(function);
    AtSites(state, [function](const double* x) {
        return lmw::fn::impl::SafeCalculate(*function, x, nullptr);
    });
}

void FailsUnheard(benchmark::State& state) {
    Fails(state, FnLinear(), nullptr);
}
BENCHMARK(FailsUnheard);

void FailsWithoutReason(benchmark::State& state) {
    SilentHandler handler;
    Fails(state, Nameless(), &handler);
}
BENCHMARK(FailsWithoutReason);

void FailsWithReason(benchmark::State& state) {
    SilentHandler handler;
    Fails(state, FnLinear(), &handler);
}
BENCHMARK(FailsWithReason);

}  // namespace
