#include "tools/lmw/fit_model.h"

#include "common/fn/evaluate.h"
#include "common/fn/fn_fred_xing.h"
#include "common/undefined.h"

#include "tools/lmw/curve_model.h"
#include "tools/lmw/failure.h"
#include "tools/lmw/text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <utility>

namespace lmw::tool {
namespace {

using math::UnitSet;
using math::fn::flow::FredXing;
using math::fn::flow::FredXingFit;

constexpr std::array<double, 3> kUsualStart = {0.0, 0.0, 0.0};  // none: only the fit's own

}  // namespace

const std::vector<SuctionUnit>& SuctionUnits() {
    static const std::vector<SuctionUnit> units = [] {
        UnitSet centimetres = UnitSet::MetresOfWater();
        centimetres.pressure /= 100.0;
        return std::vector<SuctionUnit>{{"kPa", "kPa", UnitSet::KiloPascal()},
                                        {"Pa", "Pa", UnitSet::Pascal()},
                                        {"psf", "psf", UnitSet::PoundsPerSquareFoot()},
                                        {"psi", "psi", UnitSet::PoundsPerSquareInch()},
                                        {"m", "m of water", UnitSet::MetresOfWater()},
                                        {"cm", "cm of water", centimetres},
                                        {"ft", "ft of water", UnitSet::FeetOfWater()}};
    }();
    return units;
}

std::vector<FPOINT> ReadRetention(const CsvTable& table, std::size_t x_column, std::size_t y_column,
                                  XMeaning meaning) {
    std::vector<FPOINT> points;
    for (std::size_t row = 0; row < table.NumberOfRows(); ++row) {
        if (table.Text(row, y_column).empty()) {
            continue;
        }
        const double x = table.Number(row, x_column);
        if (meaning == XMeaning::kSuction && x < 0.0) {
            throw table.At(row, "a suction below 0 (are these pressures? --x pressure)");
        }
        points.push_back(
            {meaning == XMeaning::kSuction ? 0.0 - x : x, table.Number(row, y_column)});
    }
    if (points.empty()) {
        throw table.About("no points");
    }
    return points;
}

RetentionFit::RetentionFit(std::vector<FPOINT> points, const SuctionUnit& unit,
                           std::optional<double> theta_s)
    : points_(std::move(points)),
      unit_(unit),
      theta_s_(theta_s.value_or(
          std::max_element(points_.begin(), points_.end(),
                           [](const FPOINT& p, const FPOINT& q) { return p.y < q.y; })
              ->y)),
      limit_(FredXing::CalcLimit(unit.units)),
      result_(FredXing::Fit(theta_s_, points_, unit.units, kUsualStart)),
      curve_(result_.a, result_.n, result_.m, theta_s_, limit_) {
    if (!(theta_s_ > 0.0)) {
        throw Failure("the saturated water content must be above 0");
    }
    if (result_.code == FredXingFit::kBadInput) {
        throw Failure("a fit needs at least three points with suction");
    }
}

double RetentionFit::StandardError(std::size_t parameter) const {
    const double variance = result_.covariance[4 * parameter];
    return IsDefined(variance) ? std::sqrt(variance) : kUndefined;
}

std::string RetentionFit::Ending() const {
    const std::string iterations = std::to_string(result_.iterations) + " iterations";
    switch (result_.code) {
        case FredXingFit::kConverged:
            return "converged after " + iterations;
        case FredXingFit::kAtBound:
            return "stopped at a bound after " + iterations +
                   ": the points do not determine all parameters";
        case FredXingFit::kUndetermined:
            return "ended after " + iterations + ": the points do not determine the parameters";
        default:
            return "not converged after " + iterations + ": the best values so far";
    }
}

std::string RetentionFit::Definition() const {
    FnFredXing function;
    function.SetInputParam(DataParamType::PorePressure);
    function.SetOutputParam(DataParamType::VolumetricWaterContent);
    function.SetA(result_.a);
    function.SetN(result_.n);
    function.SetM(result_.m);
    function.SetSaturatedContent(theta_s_);
    function.SetSuctionLimit(limit_);
    return Utf8(fn::impl::as_wstring(function));
}

std::vector<Residual> RetentionFit::Residuals() const {
    std::vector<Residual> residuals;
    residuals.reserve(points_.size());
    for (const FPOINT& point : points_) {
        residuals.push_back({0.0 - point.x, point.y, curve_(point.x)});
    }
    return residuals;
}

AxisRange RetentionFit::Suctions() const {
    double smallest = limit_;
    for (const FPOINT& point : points_) {
        smallest = point.x < 0.0 ? std::min(smallest, -point.x) : smallest;
    }
    return {0.1 * smallest, limit_};
}

Series RetentionFit::Line(const AxisRange& suctions) const {
    constexpr std::size_t kPlaces = 701;  // about one for each pixel
    Series line{.form = Form::kLine};
    line.x = SpacedPlaces(Scale::kLogarithmic, suctions, kPlaces);
    line.y.reserve(line.x.size());
    for (const double suction : line.x) {
        line.y.push_back(curve_(-suction));
    }
    return line;
}

Series RetentionFit::Marks() const {
    Series marks{.form = Form::kPoints};
    for (const FPOINT& point : points_) {
        if (point.x < 0.0) {
            marks.x.push_back(-point.x);
            marks.y.push_back(point.y);
        }
    }
    return marks;
}

std::string SixDigits(double value) {
    std::array<char, 32> buffer{};
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                   std::chars_format::general, 6);
    return {buffer.data(), end.ptr};
}

}  // namespace lmw::tool
