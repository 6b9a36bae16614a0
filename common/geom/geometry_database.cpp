#include "common/geom/geometry_database.h"

#include "common/geom/detail/geometry_store.h"

#include <algorithm>
#include <cstdint>

namespace Geom {

IGeometryDatabase::~IGeometryDatabase() = default;

namespace detail {

namespace {

std::uint64_t LineKey(GID a, GID b) noexcept {
    const auto [low, high] = std::minmax(a, b);
    return (std::uint64_t{low} << 32U) | high;
}

}  // namespace

GeometryStore::GeometryStore(const Precision3D& precision)
    : precision_(precision), grid_(precision) {}

GID GeometryStore::InsertPoint(const Point2D& point) {
    return point.IsValid() ? grid_.Insert(point) + 1 : 0;
}

GID GeometryStore::FindPoint(const Point2D& point) const {
    return point.IsValid() ? grid_.Find(point) + 1 : 0;  // none is the greatest number: wraps to 0
}

Point2D GeometryStore::PointAt(GID id) const {
    return id >= 1 && id <= grid_.Points().size() ? grid_.Points()[id - 1] : kInvalidPoint;
}

GID GeometryStore::InsertLine(const Line2D& line) {
    if (!line.first.IsValid() || !line.second.IsValid()) {
        return 0;
    }
    const GID a = InsertPoint(line.first);
    const GID b = InsertPoint(line.second);
    const auto next = static_cast<GID>(lines_.size() + 1);
    const auto [place, inserted] = line_ids_.try_emplace(LineKey(a, b), next);
    if (inserted) {
        lines_.emplace_back(std::min(a, b), std::max(a, b));
    }
    return place->second;
}

GID GeometryStore::FindLine(const Line2D& line) const {
    const GID a = FindPoint(line.first);
    const GID b = FindPoint(line.second);
    if (a == 0 || b == 0) {
        return 0;
    }
    const auto place = line_ids_.find(LineKey(a, b));
    return place != line_ids_.end() ? place->second : 0;
}

std::pair<GID, GID> GeometryStore::LineAt(GID id) const {
    return id >= 1 && id <= lines_.size() ? lines_[id - 1] : std::pair<GID, GID>{0, 0};
}

}  // namespace detail

std::unique_ptr<IGeometryDatabase> MakeGeometryDataBase(const std::vector<Line2D>& lines,
                                                        const Precision3D& precision) {
    auto database = std::make_unique<detail::GeometryStore>(precision);
    for (const Line2D& line : lines) {
        database->InsertLine(line);
    }
    return database;
}

std::unique_ptr<IGeometryDatabase> MakeGeometryDataBase(const std::vector<Point2D>& points,
                                                        const Precision3D& precision) {
    auto database = std::make_unique<detail::GeometryStore>(precision);
    for (const Point2D& point : points) {
        database->InsertPoint(point);
    }
    return database;
}

InputIndexByDbId::InputIndexByDbId(const std::vector<GID>& ids) {
    // Grouped by sorting, not by a table over the identifiers: these may be any numbers.
    std::vector<unsigned> order;
    for (std::size_t k = 0; k < ids.size(); ++k) {
        if (ids[k] != 0) {
            order.push_back(static_cast<unsigned>(k));
        }
    }
    std::stable_sort(order.begin(), order.end(),
                     [&](unsigned a, unsigned b) { return ids[a] < ids[b]; });
    positions_ = std::move(order);
    for (unsigned k = 0; k < positions_.size(); ++k) {
        const GID id = ids[positions_[k]];
        if (ids_.empty() || ids_.back() != id) {
            ids_.push_back(id);
            begin_.push_back(k);
        }
    }
    begin_.push_back(static_cast<unsigned>(positions_.size()));
}

std::span<const unsigned> InputIndexByDbId::All(GID id) const noexcept {
    const auto place = std::lower_bound(ids_.begin(), ids_.end(), id);
    if (place == ids_.end() || *place != id) {
        return {};
    }
    const auto k = static_cast<std::size_t>(place - ids_.begin());
    return {positions_.data() + begin_[k], positions_.data() + begin_[k + 1]};
}

unsigned InputIndexByDbId::First(GID id) const noexcept {
    const std::span<const unsigned> all = All(id);
    return all.empty() ? kNone : all.front();
}

}  // namespace Geom
