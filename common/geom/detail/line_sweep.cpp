#include "common/geom/detail/line_sweep.h"

#include "common/geom/detail/sweep_items.h"
#include "common/geom/detail/sweep_status.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <queue>
#include <utility>

// Why nothing is missed. Let two rounded segments come within the tolerance T of each other on both
// axes; feelers reach L = 2 T + 2 to both sides of every end, and the sweep looks R = L + 2 T + 2
// up and down from a feeler's start and from a vertical item.
//
// - They cross in the interior of both, neither being vertical: at the last integer position before
//   the crossing both are in the status in one order, at the next one they must be in the other,
//   and the order changes only by exchanges of neighbours, each of which is reported.
// - One is vertical: the other is in the status at its position and within R, or has an end whose
//   feeler is; two vertical ones are within T of each other at an end of one.
// - Otherwise they are closest at an end E of one of them, the other being s. If s is steep and
//   passes E's height, it does so within 2 T of E and crosses E's feeler; if it ends before, its
//   end's feeler overlaps E's at a height within T. If s is flat, it is in the status at the start
//   of E's feeler and within L + 2 T of it, or starts later and then its own start's feeler finds
//   E's.
//
// The status is in order at every integer position: an exchange is due where two neighbours are in
// the opposite order at the first end of one of them, is queued when they become neighbours, and is
// keyed by the exact floor of the crossing. Which exchange of one unit interval comes first does
// not matter: exchanging neighbours that are out of order at the next position sorts the status by
// that position.

namespace Geom::detail {

namespace {

using Index = SweepStatus::Index;

/// A computed meeting of two neighbours: `first`, the lower one, is due to pass above `second`
/// after the position.
impl::SweepEvent MakeExchange(std::int64_t x, Index lower, Index upper) noexcept {
    return {SweepStatus::kNone,
            lower,
            1,
            impl::kPriorityExchange,
            {static_cast<double>(x), 0.0},
            lower,
            upper};
}

struct IsLater {
    bool operator()(const impl::SweepEvent& a, const impl::SweepEvent& b) const noexcept {
        return a.position.x > b.position.x;
    }
};

/// The greatest integer not after the x at which `lower` meets `upper`. Requires that lower is not
/// above upper at some position of both and above it at a later one.
std::int64_t FloorOfCrossing(const SweepItem& lower, const SweepItem& upper) noexcept {
    const std::int64_t lower_dx = lower.x1 - lower.x0;
    const std::int64_t lower_dy = lower.y1 - lower.y0;
    const std::int64_t upper_dx = upper.x1 - upper.x0;
    const std::int64_t upper_dy = upper.y1 - upper.y0;
    // y of upper less y of lower at x, times both widths: falls with x, 0 at the crossing.
    const auto gap_sign = [&](std::int64_t x) {
        const Int128 upper_y = Int128::Product(upper_dy, x - upper.x0) +
                               Int128::Product(upper.y0 - lower.y0, upper_dx);
        return (upper_y * lower_dx - Int128::Product(lower_dy, x - lower.x0) * upper_dx).Sign();
    };
    // An estimate good to far less than a unit, then made exact.
    const double numerator = (Int128::Product(upper.x0 - lower.x0, upper_dy) -
                              Int128::Product(upper.y0 - lower.y0, upper_dx))
                                 .ToDouble();
    const double denominator =
        (Int128::Product(lower_dx, upper_dy) - Int128::Product(lower_dy, upper_dx)).ToDouble();
    const double along = std::floor(static_cast<double>(lower_dx) * (numerator / denominator));
    std::int64_t x = lower.x0 + static_cast<std::int64_t>(along);
    while (gap_sign(x) < 0) {
        --x;
    }
    while (gap_sign(x + 1) >= 0) {
        ++x;
    }
    return x;
}

class Sweep {
 public:
    Sweep(const SweepItems& source, const std::vector<WideBox>& boxes,
          std::span<const std::uint32_t> used)
        : source_(source),
          items_(source.Items()),
          boxes_(boxes),
          used_(used),
          status_(source.Items().size()) {}

    std::vector<PairKey> Run() {
        for (std::size_t k = source_.SegmentCount(); k < items_.size(); ++k) {
            ReportAll(source_.OwnersOf(static_cast<Index>(k)));
        }
        const std::vector<impl::SweepEvent> events = source_.Events();
        for (std::size_t begin = 0; begin < events.size();) {
            std::size_t end = begin + 1;
            while (end < events.size() && events[end].position.x == events[begin].position.x) {
                ++end;
            }
            Advance(static_cast<std::int64_t>(events[begin].position.x));
            At(std::span(events).subspan(begin, end - begin));
            begin = end;
        }
        std::sort(found_.begin(), found_.end());
        found_.erase(std::unique(found_.begin(), found_.end()), found_.end());
        return std::move(found_);
    }

 private:
    /// Makes the exchanges due before position x, so that the status is in order at x.
    void Advance(std::int64_t x) {
        while (!exchanges_.empty() && exchanges_.top().position.x < static_cast<double>(x)) {
            const impl::SweepEvent due = exchanges_.top();
            exchanges_.pop();
            const Index lower = due.first;
            const Index upper = due.second;
            // Out of date when the two have been separated, exchanged or removed since.
            if (!status_.Contains(lower) || status_.Above(lower) != upper) {
                continue;
            }
            position_ = static_cast<std::int64_t>(due.position.x);
            Report(lower, upper);
            status_.Exchange(lower, upper);
            QueueExchange(status_.Below(upper), upper);
            QueueExchange(lower, status_.Above(lower));
        }
        position_ = x;
    }

    /// All events of one position: everything enters, then those ask that have to, then what ends
    /// here leaves. Items that only touch at their ends are thus in the status together.
    void At(std::span<const impl::SweepEvent> events) {
        for (const impl::SweepEvent& event : events) {
            if (GetLineEventType2D(event) == impl::LineEventType::kStart &&
                !items_[event.segment].IsVertical()) {
                Insert(event.segment);
            }
        }
        for (const impl::SweepEvent& event : events) {
            if (GetLineEventType2D(event) != impl::LineEventType::kStart) {
                continue;
            }
            if (items_[event.segment].IsVertical()) {
                LookAlong(event.segment);
            } else if (source_.IsFeeler(event.segment)) {
                LookAround(event.segment);
            }
        }
        for (const impl::SweepEvent& event : events) {
            if (GetLineEventType2D(event) == impl::LineEventType::kEnd &&
                !items_[event.segment].IsVertical()) {
                const Index below = status_.Below(event.segment);
                const Index above = status_.Above(event.segment);
                status_.Erase(event.segment);
                QueueExchange(below, above);
            }
        }
    }

    void Insert(Index number) {
        const SweepItem& item = items_[number];
        status_.Insert(number, [&](Index other) {
            const int side = items_[other].Side(item.x0, item.y0);
            if (side != 0) {
                return side > 0;
            }
            return items_[other].Side(item.x1, item.y1) >= 0;
        });
        QueueExchange(status_.Below(number), number);
        QueueExchange(number, status_.Above(number));
    }

    /// Queues the exchange of two neighbours when the lower one is strictly above the upper one
    /// where the first of them ends. (What only touches there is found by the feelers.)
    void QueueExchange(Index lower, Index upper) {
        if (lower == SweepStatus::kNone || upper == SweepStatus::kNone) {
            return;
        }
        const SweepItem& a = items_[lower];
        const SweepItem& b = items_[upper];
        if (std::max(a.y0, a.y1) < std::min(b.y0, b.y1)) {
            return;
        }
        const bool crosses = a.x1 <= b.x1 ? b.Side(a.x1, a.y1) > 0 : a.Side(b.x1, b.y1) < 0;
        if (crosses) {
            exchanges_.push(MakeExchange(std::max(FloorOfCrossing(a, b), position_), lower, upper));
        }
    }

    /// Reports what a feeler's start has within reach above and below.
    void LookAround(Index feeler) {
        const SweepItem& item = items_[feeler];
        const std::int64_t x = item.x0;
        const std::int64_t top = item.y0 + source_.Reach();
        const std::int64_t bottom = item.y0 - source_.Reach();
        for (Index other = status_.Above(feeler);
             other != SweepStatus::kNone && items_[other].Side(x, top) >= 0;
             other = status_.Above(other)) {
            Report(feeler, other);
        }
        for (Index other = status_.Below(feeler);
             other != SweepStatus::kNone && items_[other].Side(x, bottom) <= 0;
             other = status_.Below(other)) {
            Report(feeler, other);
        }
    }

    /// Reports what a vertical segment has within reach along its whole length.
    void LookAlong(Index vertical) {
        const SweepItem& item = items_[vertical];
        const std::int64_t x = item.x0;
        const std::int64_t top = item.y1 + source_.Reach();
        const std::int64_t bottom = item.y0 - source_.Reach();
        for (Index other = status_.LowerBound(
                 [&](Index candidate) { return items_[candidate].Side(x, bottom) <= 0; });
             other != SweepStatus::kNone && items_[other].Side(x, top) >= 0;
             other = status_.Above(other)) {
            Report(vertical, other);
        }
    }

    /// Two items lie close: a segment stands for itself, a feeler for the segments that end there.
    void Report(Index a, Index b) {
        const bool a_feels = source_.IsFeeler(a);
        const bool b_feels = source_.IsFeeler(b);
        if (!a_feels && !b_feels) {
            Found(a, b);
        } else if (a_feels && b_feels) {
            for (const std::uint32_t owner : source_.OwnersOf(a)) {
                for (const std::uint32_t other : source_.OwnersOf(b)) {
                    Found(owner, other);
                }
            }
        } else if (const auto [segment, feeler] = a_feels ? std::pair(b, a) : std::pair(a, b);
                   !source_.Owns(segment, feeler)) {  // the owners' own pairs are reported once
            for (const std::uint32_t owner : source_.OwnersOf(feeler)) {
                Found(segment, owner);
            }
        }
    }

    void ReportAll(std::span<const std::uint32_t> owners) {
        for (std::size_t k = 0; k < owners.size(); ++k) {
            for (std::size_t l = k + 1; l < owners.size(); ++l) {
                Found(owners[k], owners[l]);
            }
        }
    }

    void Found(std::uint32_t a, std::uint32_t b) {
        // The boxes are the first thing the pair test looks at, so nothing is lost here.
        if (a != b && BoxesMeet(boxes_[used_[a]], boxes_[used_[b]])) {
            found_.push_back(MakePairKey(used_[a], used_[b]));
        }
    }

    const SweepItems& source_;
    const std::vector<SweepItem>& items_;
    const std::vector<WideBox>& boxes_;
    std::span<const std::uint32_t> used_;
    SweepStatus status_;
    std::priority_queue<impl::SweepEvent, std::vector<impl::SweepEvent>, IsLater> exchanges_;
    std::int64_t position_ = 0;
    std::vector<PairKey> found_;
};

}  // namespace

std::vector<PairKey> SweepPairs(const std::vector<Line2D>& lines, const std::vector<WideBox>& boxes,
                                std::span<const std::uint32_t> used, const Precision3D& precision) {
    const SweepItems items(lines, used, precision);
    return Sweep(items, boxes, used).Run();
}

}  // namespace Geom::detail
