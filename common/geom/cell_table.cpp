#include "common/geom/cell_table.h"

#include "common/geom/line_events.h"

#include <algorithm>
#include <bit>
#include <cmath>

namespace Geom {

namespace {

bool IsIndexable(const Point2D& p) noexcept {
    return p.IsValid() && std::isfinite(p.x) && std::isfinite(p.y);
}

/// Cuts a segment to the box by its parameter range (Liang and Barsky, ACM Transactions on Graphics
/// 3, 1984). False when nothing is left; `line` then is spoilt.
bool Clip(Line2D& line, const Extents2D& box) noexcept {
    const Point2D a = line.first;
    const Point2D d{line.second.x - a.x, line.second.y - a.y};
    double t0 = 0.0;
    double t1 = 1.0;
    const auto cut = [&](double direction, double distance) {  // keeps t direction <= distance
        if (direction == 0.0) {
            return distance >= 0.0;
        }
        const double t = distance / direction;
        (direction > 0.0 ? t1 : t0) = direction > 0.0 ? std::min(t1, t) : std::max(t0, t);
        return t0 <= t1;
    };
    if (!cut(-d.x, a.x - box.x_min) || !cut(d.x, box.x_max - a.x) || !cut(-d.y, a.y - box.y_min) ||
        !cut(d.y, box.y_max - a.y)) {
        return false;
    }
    line = {{a.x + t0 * d.x, a.y + t0 * d.y}, {a.x + t1 * d.x, a.y + t1 * d.y}};
    return true;
}

}  // namespace

void Cell::Mark(unsigned item) {
    if (item / 32U >= words_.size()) {
        words_.resize(item / 32U + 1U);
    }
    words_[item / 32U] |= 1U << (item % 32U);
}

std::vector<unsigned> Cell::Items() const {
    std::vector<unsigned> items;
    for (unsigned word = 0; word < words_.size(); ++word) {
        for (std::uint32_t bits = words_[word]; bits != 0; bits &= bits - 1U) {
            items.push_back(word * 32U + static_cast<unsigned>(std::countr_zero(bits)));
        }
    }
    return items;
}

void CellTable::Initialize(const Extents2D& extents, unsigned nX, unsigned nY, unsigned itemCount,
                           const Precision3D& precision) {
    cells_.assign(std::size_t{nX} * nY, Cell(itemCount));
    rows_ = nY;
    columns_ = nX;
    y_ = {extents.y_min, extents.y_max, nY != 0 ? (extents.y_max - extents.y_min) / nY : 0.0};
    x_ = {extents.x_min, extents.x_max, nX != 0 ? (extents.x_max - extents.x_min) / nX : 0.0};
    precision_ = precision;
}

// ---- indices of coordinates

CellTable::RangeIdx CellTable::IndexOf(const Axis& axis, unsigned count, double v,
                                       double tolerance) noexcept {
    if (count == 0 || !std::isfinite(v) || !lmw::IsDefined(v)) {
        return {};
    }
    const auto last = static_cast<std::int32_t>(count - 1);
    if (v < axis.low) {
        return {v + tolerance > axis.low ? 0 : -1, -1};
    }
    if (v > axis.high) {
        return {v - tolerance < axis.high ? last : -1, -1};
    }
    if (!(axis.size > 0.0)) {
        return {0, -1};
    }
    // One cell beyond the table is far enough, and keeps the conversion in range.
    const auto index = [&](double coordinate) {
        const double place = (coordinate - axis.low) / axis.size;
        return static_cast<std::int32_t>(std::clamp(place, -2.0, last + 1.0));
    };
    const std::int32_t i1 = index(v - tolerance);
    const std::int32_t i2 = index(v + tolerance);
    if (i1 == i2) {
        return {std::clamp(i2, 0, last), -1};
    }
    if (i1 >= 0) {
        return {std::min(i1, last), i2 <= last ? i2 : -1};
    }
    // Cells narrower than the tolerance: below the table on one side.
    return {i2 <= last ? i2 : std::clamp(index(v), 0, last), -1};
}

CellTable::IndexRange CellTable::IndicesWithin(const Axis& axis, unsigned count, double low,
                                               double high, double tolerance) noexcept {
    const double from = low - tolerance;
    const double to = high + tolerance;
    if (count == 0 || !(from <= axis.high) || !(to >= axis.low)) {
        return {};
    }
    if (!(axis.size > 0.0)) {
        return {0, 0};
    }
    const auto index = [&](double coordinate) {
        const double place = (coordinate - axis.low) / axis.size;
        return static_cast<std::int64_t>(std::clamp(place, 0.0, count - 1.0));
    };
    return {index(from), index(to)};
}

CellTable::IndexRange CellTable::ColumnsWithin(double low, double high) const noexcept {
    return IndicesWithin(x_, columns_, low, high, precision_.halfEpsilon[0]);
}

CellTable::IndexRange CellTable::RowsWithin(double low, double high) const noexcept {
    return IndicesWithin(y_, rows_, low, high, precision_.halfEpsilon[1]);
}

CellTable::RangeIdx CellTable::GetXCellIdx(double x) const noexcept {
    return IndexOf(x_, columns_, x, precision_.halfEpsilon[0]);
}

CellTable::RangeIdx CellTable::GetYCellIdx(double y) const noexcept {
    return IndexOf(y_, rows_, y, precision_.halfEpsilon[1]);
}

unsigned CellTable::GetIdxX(double x) const noexcept {
    return static_cast<unsigned>(GetXCellIdx(x).first);  // -1 becomes kOutside
}

unsigned CellTable::GetIdxY(double y) const noexcept {
    return static_cast<unsigned>(GetYCellIdx(y).first);
}

unsigned CellTable::CellIdx(const Point2D& point) const noexcept {
    const unsigned ix = GetIdxX(point.x);
    const unsigned iy = GetIdxY(point.y);
    return ix == kOutside || iy == kOutside ? kOutside : iy * columns_ + ix;
}

// ---- marking

void CellTable::Assign(unsigned ix, unsigned iy, const unsigned& item) {
    if (ix < columns_ && iy < rows_) {
        cells_[std::size_t{iy} * columns_ + ix].Mark(item);
    }
}

void CellTable::MarkAll(const IndexRange& columns, const IndexRange& rows, unsigned item) {
    for (std::int64_t iy = rows.first; iy <= rows.last; ++iy) {
        for (std::int64_t ix = columns.first; ix <= columns.last; ++ix) {
            Assign(static_cast<unsigned>(ix), static_cast<unsigned>(iy), item);
        }
    }
}

void CellTable::Assign(const std::vector<Line2D>& lines) {
    if (cells_.empty()) {
        return;
    }
    // Events point into the work list, so it must never grow beyond its room.
    std::vector<Line2D> work;
    work.reserve(lines.size() + std::max(columns_, rows_));
    for (const Line2D& line : lines) {
        const bool indexable = IsIndexable(line.first) && IsIndexable(line.second);
        work.push_back(indexable ? line : Line2D{});
    }
    std::vector<bool> met(lines.size(), false);
    MarkCrossings(work, lines.size(), true, met);
    MarkCrossings(work, lines.size(), false, met);
    for (std::size_t k = 0; k < lines.size(); ++k) {
        if (!met[k] && work[k].first.IsValid()) {
            MarkInside(work[k], static_cast<unsigned>(k));
        }
    }
}

/// Marks every segment in the cells on both sides of each interior border it meets, and in all rows
/// or columns within tolerance of the meeting point.
void CellTable::MarkCrossings(std::vector<Line2D>& work, std::size_t line_count, bool vertical,
                              std::vector<bool>& met) {
    const unsigned count = vertical ? columns_ : rows_;
    work.resize(line_count);
    for (unsigned k = 1; k < count; ++k) {
        if (vertical) {
            const double x = x_.low + x_.size * k;
            work.push_back({{x, y_.low}, {x, y_.high}});
        } else {
            const double y = y_.low + y_.size * k;
            work.push_back({{x_.low, y}, {x_.high, y}});
        }
    }
    std::vector<LineEvent2D> events;
    LineIntersectionEvents2D(events, work, precision_);
    for (const LineEvent2D& event : events) {
        const auto segment = static_cast<std::size_t>(event.first - work.data());
        const auto border = static_cast<std::size_t>(event.second - work.data());
        if (segment >= line_count || border < line_count) {
            continue;
        }
        met[segment] = true;
        const auto right = static_cast<std::int64_t>(border - line_count + 1);  // or above
        // Snapping may have moved the point off the border and off the area's edge.
        const double x = std::clamp(event.point.x, x_.low, x_.high);
        const double y = std::clamp(event.point.y, y_.low, y_.high);
        IndexRange columns = ColumnsWithin(x, x);
        IndexRange rows = RowsWithin(y, y);
        IndexRange& across = vertical ? columns : rows;
        across = {std::min(across.first, right - 1), std::max(across.last, right)};
        MarkAll(columns, rows, static_cast<unsigned>(segment));
    }
}

/// A segment that meets no interior border lies in one cell, as far as it lies in the area at all.
void CellTable::MarkInside(const Line2D& line, unsigned item) {
    Point2D within = line.first;
    if (CellIdx(within) == kOutside) {
        Line2D inside = line;
        const double hx = precision_.halfEpsilon[0];
        const double hy = precision_.halfEpsilon[1];
        if (!Clip(inside, {x_.low - hx, x_.high + hx, y_.low - hy, y_.high + hy})) {
            return;
        }
        within = {std::clamp(0.5 * (inside.first.x + inside.second.x), x_.low, x_.high),
                  std::clamp(0.5 * (inside.first.y + inside.second.y), y_.low, y_.high)};
    }
    // Within tolerance of a border the cell of the point may be the one across it.
    MarkAll(ColumnsWithin(within.x, within.x), RowsWithin(within.y, within.y), item);
}

// ---- finding

void CellTable::Collect(std::vector<unsigned>& items, const std::vector<unsigned>& indices) const {
    items.clear();
    std::vector<std::uint32_t> seen;
    for (const unsigned index : indices) {
        const std::vector<std::uint32_t>& words = cells_[index].Words();
        if (seen.size() < words.size()) {
            seen.resize(words.size());
        }
        for (unsigned word = 0; word < words.size(); ++word) {
            for (std::uint32_t fresh = words[word] & ~seen[word]; fresh != 0; fresh &= fresh - 1U) {
                items.push_back(word * 32U + static_cast<unsigned>(std::countr_zero(fresh)));
            }
            seen[word] |= words[word];
        }
    }
}

void CellTable::FindAll(std::vector<unsigned>& items, const Circle2D& circle, double inner,
                        double outer, bool inside) const {
    std::vector<unsigned> indices;
    const Point2D& c = circle.centre;
    const double farthest = circle.radius + outer;
    const double nearest = circle.radius - inner;
    if (IsIndexable(c) && farthest >= 0.0) {
        const double hx = precision_.halfEpsilon[0];
        const double hy = precision_.halfEpsilon[1];
        const IndexRange columns = ColumnsWithin(c.x - farthest, c.x + farthest);
        const IndexRange rows = RowsWithin(c.y - farthest, c.y + farthest);
        for (std::int64_t iy = rows.first; iy <= rows.last; ++iy) {
            for (std::int64_t ix = columns.first; ix <= columns.last; ++ix) {
                const double left = x_.low + x_.size * static_cast<double>(ix) - hx;
                const double bottom = y_.low + y_.size * static_cast<double>(iy) - hy;
                const double right = left + x_.size + 2.0 * hx;
                const double top = bottom + y_.size + 2.0 * hy;
                const double close = std::hypot(c.x - std::clamp(c.x, left, right),
                                                c.y - std::clamp(c.y, bottom, top));
                const double far = std::hypot(std::max(right - c.x, c.x - left),
                                              std::max(top - c.y, c.y - bottom));
                if (close <= farthest && (inside || far >= nearest)) {
                    indices.push_back(static_cast<unsigned>(iy * columns_ + ix));
                }
            }
        }
    }
    Collect(items, indices);
}

void CellTable::FindAll(std::vector<unsigned>& items, const std::vector<Line2D>& lines) const {
    std::vector<unsigned> indices;
    for (const Line2D& line : lines) {
        CellsOf(line, indices);
    }
    std::sort(indices.begin(), indices.end());
    indices.erase(std::unique(indices.begin(), indices.end()), indices.end());
    Collect(items, indices);
}

/// The cells that a segment passes through, column by column.
void CellTable::CellsOf(const Line2D& line, std::vector<unsigned>& indices) const {
    if (!IsIndexable(line.first) || !IsIndexable(line.second)) {
        return;
    }
    const bool rightward = line.first.x <= line.second.x;
    const Point2D a = rightward ? line.first : line.second;
    const Point2D b = rightward ? line.second : line.first;
    const double hx = precision_.halfEpsilon[0];
    const IndexRange columns = ColumnsWithin(a.x, b.x);
    for (std::int64_t ix = columns.first; ix <= columns.last; ++ix) {
        const double left = x_.low + x_.size * static_cast<double>(ix) - hx;
        const double right = left + x_.size + 2.0 * hx;
        double y0 = a.y;
        double y1 = b.y;
        if (b.x - a.x > 2.0 * hx) {  // else upright within tolerance: the whole height
            const double slope = (b.y - a.y) / (b.x - a.x);
            y0 = left > a.x ? a.y + slope * (left - a.x) : a.y;
            y1 = right < b.x ? a.y + slope * (right - a.x) : b.y;
        }
        const IndexRange rows = RowsWithin(std::min(y0, y1), std::max(y0, y1));
        for (std::int64_t iy = rows.first; iy <= rows.last; ++iy) {
            indices.push_back(static_cast<unsigned>(iy * columns_ + ix));
        }
    }
}

}  // namespace Geom
