#pragma once

// The Fredlund-Xing curve through the measured retention points of a file: reading the points,
// fitting, and what is drawn and reported of it. The commands that fit share this; curves that pass
// through the points are in curve_model.h.

#include "common/fn/fred_xing.h"
#include "common/math/fpoint.h"
#include "common/math/unit_set.h"

#include "tools/lmw/csv_table.h"
#include "tools/lmw/svg_chart.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace lmw::tool {

/// A unit in which suctions may be given.
struct SuctionUnit {
    std::string word;    ///< on the command line
    std::string symbol;  ///< in text
    math::UnitSet units;
};

/// kPa, Pa, psf, psi, and m, cm and ft as heads of water.
[[nodiscard]] const std::vector<SuctionUnit>& SuctionUnits();

/// What the x of measured points are.
enum class XMeaning {
    kSuction,   ///< 0 or more
    kPressure,  ///< pore-water pressures, of which negative ones are suctions
};

/// The points of two columns, x as pore-water pressure, in any order. Rows whose y cell is blank
/// were not measured and are left out. Throws Failure, naming the row, for a suction below 0, and
/// when there are no points.
[[nodiscard]] std::vector<FPOINT> ReadRetention(const CsvTable& table, std::size_t x_column,
                                                std::size_t y_column, XMeaning meaning);

/// One measured point beside the fitted curve.
struct Residual {
    double suction = 0.0;  ///< in the unit of the points, negative for a positive pressure
    double measured = 0.0;
    double fitted = 0.0;
};

/// A fitted curve and all that is said of it. Plain values; cheap to copy but for the points.
class RetentionFit {
 public:
    /// Fits `points`; theta_s is the largest measured water content unless given. Throws Failure
    /// when theta_s is not positive or fewer than three points have a suction.
    RetentionFit(std::vector<FPOINT> points, const SuctionUnit& unit,
                 std::optional<double> theta_s);

    [[nodiscard]] const math::fn::flow::FredXingFit& Result() const { return result_; }
    [[nodiscard]] const math::fn::flow::FredXing& Curve() const { return curve_; }
    [[nodiscard]] const SuctionUnit& Unit() const { return unit_; }
    [[nodiscard]] double SaturatedWaterContent() const { return theta_s_; }
    [[nodiscard]] double Limit() const { return limit_; }

    /// Of a (0), n (1) or m (2); undefined when the fit has no covariance.
    [[nodiscard]] double StandardError(std::size_t parameter) const;

    /// How the fit ended, as a sentence for people without its full stop.
    [[nodiscard]] std::string Ending() const;

    /// The curve as the definition text of a function over pore-water pressure, which lmw fn and
    /// projects take.
    [[nodiscard]] std::string Definition() const;

    [[nodiscard]] std::vector<Residual> Residuals() const;

    /// From a tenth of the smallest measured suction to the limit.
    [[nodiscard]] AxisRange Suctions() const;
    /// The curve over a range of suctions on a logarithmic axis, and the measured points with
    /// suction.
    [[nodiscard]] Series Line(const AxisRange& suctions) const;
    [[nodiscard]] Series Marks() const;

 private:
    std::vector<FPOINT> points_;
    SuctionUnit unit_;
    double theta_s_;
    double limit_;
    math::fn::flow::FredXingFit result_;
    math::fn::flow::FredXing curve_;
};

/// A number for people: six significant digits.
[[nodiscard]] std::string SixDigits(double value);

}  // namespace lmw::tool
