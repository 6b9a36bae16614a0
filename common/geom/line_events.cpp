#include "common/geom/line_events.h"

#include "common/geom/detail/end_filter.h"
#include "common/geom/detail/line_sweep.h"
#include "common/geom/detail/pair_filter.h"
#include "common/geom/detail/pair_grid.h"
#include "common/geom/detail/point_grid.h"
#include "common/geom/detail/segment_math.h"

#include <algorithm>
#include <atomic>
#include <cmath>
#include <cstddef>
#include <limits>
#include <optional>
#include <unordered_set>

namespace Geom {

namespace {

using detail::PairKey;
using detail::PairKind;
using detail::PairPoints;

/// Below this comparing the boxes of all pairs is cheaper than building the grid. The scan that
/// does so is also what fewer than 25 segments get, where it is cheaper than any structure.
constexpr std::size_t kGridThreshold = 80;

std::atomic<SweepDemand> sweep_demand{SweepDemand::kOff};

/// A placeholder's box.
constexpr double kNotANumber = std::numeric_limits<double>::quiet_NaN();
constexpr detail::WideBox kMeetsNothing{kNotANumber, kNotANumber, kNotANumber, kNotANumber};

bool IsPlaceholder(const Line2D& line) noexcept {
    return !line.first.IsValid() && !line.second.IsValid();
}

/// Coordinates that the sweep and the grid can calculate with. The few that are not (infinite, NaN,
/// half a placeholder) are paired with everything instead.
bool IsTame(const Line2D& line) noexcept {
    constexpr double kTameLimit = 1e300;
    const auto tame = [](double v) { return std::fabs(v) <= kTameLimit; };
    return tame(line.first.x) && tame(line.first.y) && tame(line.second.x) && tame(line.second.y);
}

/// A pair that counts, found out of order.
struct Meeting {
    PairKey key;
    PairPoints points;
};

/// Meeting points to stored points, the database being built when the first one comes.
class InputSnapper {
 public:
    InputSnapper(const std::vector<Line2D>& lines, const Precision3D& precision)
        : lines_(lines), precision_(precision) {}

    /// What will come, if it is known. Few meetings need few of the ends.
    void Expect(const std::vector<Meeting>& meetings) {
        constexpr std::size_t kFewMeetings = 4;  // as a part of the segments
        expected_ = meetings.size();
        if (meetings.empty() || meetings.size() * kFewMeetings >= lines_.size()) {
            return;
        }
        Extents2D extents;
        for (const Meeting& meeting : meetings) {
            for (const Point2D& p : {meeting.points.p0, meeting.points.p1}) {
                if (p.IsValid()) {
                    extents = {std::min(extents.x_min, p.x), std::max(extents.x_max, p.x),
                               std::min(extents.y_min, p.y), std::max(extents.y_max, p.y)};
                }
            }
        }
        detail::EndFilter filter(extents, meetings.size(), precision_);
        for (const Meeting& meeting : meetings) {
            for (const Point2D& p : {meeting.points.p0, meeting.points.p1}) {
                if (p.IsValid()) {
                    filter.MarkAround(p);
                }
            }
        }
        ends_ = filter.CloseOver(lines_);
    }

    Point2D operator()(const Point2D& p) {
        if (!grid_) {
            const std::size_t ends = ends_ ? ends_->size() : 2 * lines_.size();
            // Meetings of which nothing is known are taken to be as many as ends: to grow a table
            // that is too small takes longer than to clear one that is too large.
            grid_.emplace(precision_, ends + (expected_ != 0 ? expected_ : ends));
            InsertEnds();
        }
        return grid_->Points()[grid_->Insert(p)];
    }

 private:
    void InsertEnds() {
        if (ends_) {
            for (const Point2D& end : *ends_) {
                grid_->Insert(end);
            }
            return;
        }
        for (const Line2D& line : lines_) {
            if (line.first.IsValid() && line.second.IsValid()) {
                grid_->Insert(line.first);
                grid_->Insert(line.second);
            }
        }
    }

    const std::vector<Line2D>& lines_;
    const Precision3D& precision_;
    std::size_t expected_ = 0;
    std::optional<std::vector<Point2D>> ends_;  // those that matter; none: all of the lines
    std::optional<detail::PointGrid> grid_;
};

class DatabaseSnapper {
 public:
    explicit DatabaseSnapper(IGeometryDatabase& database) : database_(database) {}

    void Expect(const std::vector<Meeting>& /*meetings*/) {}

    Point2D operator()(const Point2D& p) { return database_.PointAt(database_.InsertPoint(p)); }

 private:
    IGeometryDatabase& database_;
};

template <class Snapper>
class Engine {
 public:
    Engine(std::vector<LineEvent2D>& events, const std::vector<Line2D>& lines, PairKind kind,
           const Precision3D& precision, Snapper& snapper)
        : events_(events), lines_(lines), kind_(kind), precision_(precision), snapper_(snapper) {
        boxes_.reserve(lines.size());
        for (const Line2D& line : lines) {
            // Under an unset tolerance even a placeholder's own box would meet every other one.
            boxes_.push_back(IsPlaceholder(line) ? kMeetsNothing
                                                 : detail::WideBoxOf(line.first, line.second,
                                                                     precision.halfEpsilon[0],
                                                                     precision.halfEpsilon[1]));
        }
    }

    void Run(SweepLineImplForced::Type forced) {
        const bool sweep =
            forced == SweepLineImplForced::kSweep || GetSweepDemand() == SweepDemand::kOn;
        if (!sweep && lines_.size() < kGridThreshold) {
            Scan();
            return;
        }
        Sort();
        constexpr double kEverythingIsNear = 1e300;  // an unset tolerance
        if (!(std::max(precision_.halfEpsilon[0], precision_.halfEpsilon[1]) < kEverythingIsNear)) {
            Scan();
        } else if (sweep || !Grid()) {
            Sweep();
        }
    }

 private:
    /// All pairs, in order. The boxes are the pair test's own first step.
    void Scan() {
        const auto count = static_cast<std::uint32_t>(lines_.size());
        for (std::uint32_t i = 0; i < count; ++i) {
            for (std::uint32_t j = i + 1; j < count; ++j) {
                if (detail::BoxesMeet(boxes_[i], boxes_[j])) {
                    Test(i, j);
                }
            }
        }
    }

    /// Parts the input into placeholders, wild and tame segments.
    void Sort() {
        for (std::uint32_t i = 0; i < lines_.size(); ++i) {
            if (!IsPlaceholder(lines_[i])) {
                (IsTame(lines_[i]) ? tame_ : wild_).push_back(i);
            }
        }
    }

    void Sweep() {
        std::vector<PairKey> keys = detail::SweepPairs(lines_, boxes_, tame_, precision_);
        if (!wild_.empty()) {
            ForWildPairs([&](std::uint32_t i, std::uint32_t j) {
                keys.push_back(detail::MakePairKey(i, j));
            });
            std::sort(keys.begin(), keys.end());
        }
        for (const PairKey key : keys) {
            Test(detail::FirstOf(key), detail::SecondOf(key));
        }
    }

    /// False when the grid gives up; nothing is reported then.
    bool Grid() {
        std::vector<Meeting> meetings;
        PairPoints points;
        const auto test = [&](std::uint32_t i, std::uint32_t j) {
            const bool counts = detail::PairCounts(kind_, lines_[i], lines_[j], precision_, points);
            if (counts) {
                meetings.push_back({detail::MakePairKey(i, j), points});
            }
            return counts;
        };
        const detail::PairGrid grid(lines_, boxes_, tame_, precision_);
        // The boxes that met were others than the pair test's, which begins with its own.
        if (!grid.ForPairs(test)) {
            return false;
        }
        ForWildPairs(
            [&](std::uint32_t i, std::uint32_t j) { test(std::min(i, j), std::max(i, j)); });
        ReportInOrder(meetings);
        return true;
    }

    /// Sorted by counting on i, because there are as many meetings as segments or more; few share
    /// an i.
    void ReportInOrder(const std::vector<Meeting>& meetings) {
        snapper_.Expect(meetings);
        std::vector<std::uint32_t> begin(lines_.size() + 1, 0);
        for (const Meeting& meeting : meetings) {
            ++begin[detail::FirstOf(meeting.key)];
        }
        std::uint32_t sum = 0;
        for (std::uint32_t& entry : begin) {
            sum += entry;
            entry = sum;
        }
        std::vector<std::uint32_t> order(meetings.size());
        for (std::size_t k = meetings.size(); k-- > 0;) {
            order[--begin[detail::FirstOf(meetings[k].key)]] = static_cast<std::uint32_t>(k);
        }
        for (std::size_t i = 0; i + 1 < begin.size(); ++i) {
            std::sort(order.begin() + begin[i], order.begin() + begin[i + 1],
                      [&](std::uint32_t a, std::uint32_t b) {
                          return meetings[a].key < meetings[b].key;
                      });
        }
        for (const std::uint32_t k : order) {
            const Meeting& meeting = meetings[k];
            Report(detail::FirstOf(meeting.key), detail::SecondOf(meeting.key), meeting.points);
        }
    }

    /// Every wild segment with every other one, each pair once.
    template <class Action>
    void ForWildPairs(const Action& action) const {
        for (std::size_t k = 0; k < wild_.size(); ++k) {
            for (std::size_t l = k + 1; l < wild_.size(); ++l) {
                action(wild_[k], wild_[l]);
            }
            for (const std::uint32_t other : tame_) {
                action(wild_[k], other);
            }
        }
    }

    void Test(std::uint32_t i, std::uint32_t j) {
        PairPoints points;
        if (detail::PairCounts(kind_, lines_[i], lines_[j], precision_, points)) {
            Report(i, j, points);
        }
    }

    void Report(std::uint32_t i, std::uint32_t j, const PairPoints& points) {
        if (points.p0.IsValid()) {
            events_.push_back({snapper_(points.p0), &lines_[i], &lines_[j]});
        }
        if (points.p1.IsValid()) {
            events_.push_back({snapper_(points.p1), &lines_[i], &lines_[j]});
        }
    }

    std::vector<LineEvent2D>& events_;
    const std::vector<Line2D>& lines_;
    PairKind kind_;
    const Precision3D& precision_;
    Snapper& snapper_;
    std::vector<detail::WideBox> boxes_;
    std::vector<std::uint32_t> tame_;
    std::vector<std::uint32_t> wild_;
};

void Events(PairKind kind, std::vector<LineEvent2D>& events, const std::vector<Line2D>& lines,
            const Precision3D& precision, SweepLineImplForced::Type forced) {
    InputSnapper snapper(lines, precision);
    Engine(events, lines, kind, precision, snapper).Run(forced);
}

}  // namespace

void LineIntersectionEvents2D(std::vector<LineEvent2D>& events, const std::vector<Line2D>& lines,
                              const Precision3D& precision, SweepLineImplForced::Type forced) {
    Events(PairKind::kIntersection, events, lines, precision, forced);
}

void LineCoincidentEvents2D(std::vector<LineEvent2D>& events, const std::vector<Line2D>& lines,
                            const Precision3D& precision, SweepLineImplForced::Type forced) {
    Events(PairKind::kCoincident, events, lines, precision, forced);
}

void LineCrossingEvents2D(std::vector<LineEvent2D>& events, const std::vector<Line2D>& lines,
                          const Precision3D& precision, SweepLineImplForced::Type forced) {
    Events(PairKind::kCrossing, events, lines, precision, forced);
}

void LineCollisionEvents2D(std::vector<LineEvent2D>& events, const std::vector<Line2D>& lines,
                           const Precision3D& precision, SweepLineImplForced::Type forced) {
    Events(PairKind::kCollision, events, lines, precision, forced);
}

void LineCollisionEvents2D(std::vector<LineEvent2D>& events, const std::vector<Line2D>& lines,
                           IGeometryDatabase& database, SweepLineImplForced::Type forced) {
    DatabaseSnapper snapper(database);
    Engine(events, lines, PairKind::kCollision, database.Precision(), snapper).Run(forced);
}

void LineRemoveDuplicateEvents2D(std::vector<LineEvent2D>& events, const Precision3D& precision) {
    struct Key {
        std::uint32_t point;
        const Line2D* first;
        const Line2D* second;
        bool operator==(const Key&) const = default;
    };
    struct Hash {
        std::size_t operator()(const Key& key) const noexcept {
            const std::hash<const Line2D*> hash;
            return (hash(key.first) * 31U + hash(key.second)) * 1000003U + key.point;
        }
    };
    detail::PointGrid points(precision);
    std::unordered_set<Key, Hash> seen;
    std::erase_if(events, [&](const LineEvent2D& event) {
        const auto [low, high] = std::minmax(event.first, event.second, std::less<>());
        return !seen.insert({points.Insert(event.point), low, high}).second;
    });
}

void SetSweepDemand(SweepDemand demand) noexcept {
    sweep_demand.store(demand, std::memory_order_relaxed);
}

SweepDemand GetSweepDemand() noexcept {
    return sweep_demand.load(std::memory_order_relaxed);
}

}  // namespace Geom
