#include "common/geom/detail/sweep_items.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <tuple>

namespace Geom::detail {

namespace {

/// One axis of the rounding.
struct Rounding {
    double low = lmw::kUndefined;
    double high = -lmw::kUndefined;
    double unit = 1.0;

    void Include(double v) noexcept {
        low = std::min(low, v);
        high = std::max(high, v);
    }
    void Finish(double half_epsilon) noexcept {
        constexpr double kUnitsPerHalfEpsilon = 8.0;
        constexpr double kSmallestUnit = 1e-300;  // keeps quotients finite
        const double magnitude = std::max(std::fabs(low), std::fabs(high));
        unit = std::max({half_epsilon / kUnitsPerHalfEpsilon, (high - low) * 0x1p-34,
                         magnitude * 0x1p-50, kSmallestUnit});
    }
    [[nodiscard]] std::int64_t Round(double v) const noexcept {
        return static_cast<std::int64_t>(std::floor((v - low) / unit + 0.5));
    }
};

}  // namespace

std::vector<SweepItems::RoundedEnd> SweepItems::RoundEnds(const std::vector<Line2D>& lines,
                                                          std::span<const std::uint32_t> used,
                                                          const Precision3D& precision) {
    Rounding x;
    Rounding y;
    for (const std::uint32_t position : used) {
        const Line2D& line = lines[position];
        x.Include(line.first.x);
        x.Include(line.second.x);
        y.Include(line.first.y);
        y.Include(line.second.y);
    }
    x.Finish(precision.halfEpsilon[0]);
    y.Finish(precision.halfEpsilon[1]);
    constexpr double kRoundingAndReserve = 6.0;
    tolerance_ = static_cast<std::int64_t>(
        std::ceil(std::max(precision.halfEpsilon[0] / x.unit, precision.halfEpsilon[1] / y.unit) +
                  kRoundingAndReserve));
    std::vector<RoundedEnd> rounded;
    rounded.reserve(2 * used.size());
    for (std::uint32_t k = 0; k < used.size(); ++k) {
        const Line2D& line = lines[used[k]];
        rounded.push_back({x.Round(line.first.x), y.Round(line.first.y), k, false});
        rounded.push_back({x.Round(line.second.x), y.Round(line.second.y), k, true});
    }
    return rounded;
}

SweepItems::SweepItems(const std::vector<Line2D>& lines, std::span<const std::uint32_t> used,
                       const Precision3D& precision)
    : segment_count_(used.size()) {
    if (used.empty()) {
        return;
    }
    std::vector<RoundedEnd> rounded = RoundEnds(lines, used, precision);
    std::sort(rounded.begin(), rounded.end(), [](const RoundedEnd& a, const RoundedEnd& b) {
        return std::tie(a.x, a.y, a.segment) < std::tie(b.x, b.y, b.segment);
    });
    items_.resize(segment_count_);
    ends_.resize(segment_count_);
    std::vector<bool> started(segment_count_, false);
    for (std::size_t k = 0; k < rounded.size(); ++k) {
        const RoundedEnd& end = rounded[k];
        if (k == 0 || end.x != rounded[k - 1].x || end.y != rounded[k - 1].y) {
            items_.push_back({end.x - HalfLength(), end.y, end.x + HalfLength(), end.y});
            owners_begin_.push_back(static_cast<std::uint32_t>(owners_.size()));
        }
        const auto point = static_cast<std::uint32_t>(owners_begin_.size() - 1);
        SweepItem& item = items_[end.segment];
        if (!started[end.segment]) {  // sorted: the smaller end of each segment comes first
            started[end.segment] = true;
            item.x0 = end.x;
            item.y0 = end.y;
            ends_[end.segment].first = point;
            owners_.push_back(end.segment);
            continue;
        }
        item.x1 = end.x;
        item.y1 = end.y;
        ends_[end.segment].second = point;
        if (ends_[end.segment].first != point) {  // a segment rounded to a point owns it once
            owners_.push_back(end.segment);
        }
    }
    owners_begin_.push_back(static_cast<std::uint32_t>(owners_.size()));
}

std::vector<impl::SweepEvent> SweepItems::Events() const {
    // Distinct ends are numbered in queue order, so three streams arrive sorted: the segments'
    // ends, the feelers' starts and the feelers' ends. Their points are numbered one after the
    // other.
    const std::size_t points = items_.size() - segment_count_;
    std::vector<impl::SweepEvent> segments;
    std::vector<impl::SweepEvent> starts;
    std::vector<impl::SweepEvent> ends;
    segments.reserve(owners_.size());
    starts.reserve(points);
    ends.reserve(points);
    for (std::size_t p = 0; p < points; ++p) {
        const auto feeler = static_cast<std::uint32_t>(segment_count_ + p);
        const auto centre = static_cast<std::uint32_t>(p);
        const auto start = static_cast<std::uint32_t>(points + p);
        const auto end = static_cast<std::uint32_t>(2 * points + p);
        const SweepItem& item = items_[feeler];
        const auto y = static_cast<double>(item.y0);
        const Point2D start_position{static_cast<double>(item.x0), y};
        const Point2D end_position{static_cast<double>(item.x1), y};
        const Point2D position{static_cast<double>(item.x0 + HalfLength()), y};
        starts.push_back(impl::MakeEndEvent(start, start_position, feeler, start, end));
        ends.push_back(impl::MakeEndEvent(end, end_position, feeler, start, end));
        for (const bool is_start : {true, false}) {
            for (const std::uint32_t owner : OwnersOf(feeler)) {
                const EndPoints& of = ends_[owner];
                // A segment rounded to a point is vertical: it only asks, when it starts.
                if ((of.first == centre) == is_start) {
                    segments.push_back(
                        impl::MakeEndEvent(centre, position, owner, of.first, of.second));
                }
            }
        }
    }
    std::vector<impl::SweepEvent> feelers;
    feelers.reserve(2 * points);
    std::merge(starts.begin(), starts.end(), ends.begin(), ends.end(), std::back_inserter(feelers));
    std::vector<impl::SweepEvent> queue;
    queue.reserve(segments.size() + feelers.size());
    std::merge(segments.begin(), segments.end(), feelers.begin(), feelers.end(),
               std::back_inserter(queue));
    return queue;
}

}  // namespace Geom::detail
