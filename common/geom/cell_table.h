#pragma once

// A uniform grid over an area whose cells know which of a caller's segments pass through them: for
// many questions about one set of segments that is spread evenly. For items of very different size,
// or for the one item at a point, use quad_tree2d.h. Surprising: everything is widened by the
// half-epsilon, so a segment on a cell border is in the cells on both sides.

#include "common/export.h"
#include "common/geom/geom_types.h"
#include "common/geom/precision.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace Geom {

/// A set of item numbers: bit k of a row of 32-bit words stands for item k.
class LMW_API Cell {
 public:
    /// An empty set with room for items 0 ... item_count - 1: item_count / 32 + 1 words.
    explicit Cell(unsigned item_count = 0) : words_(item_count / 32U + 1U) {}

    /// Adds an item; one beyond the room makes room.
    void Mark(unsigned item);
    [[nodiscard]] bool Contains(unsigned item) const noexcept {
        return item / 32U < words_.size() && ((words_[item / 32U] >> (item % 32U)) & 1U) != 0;
    }
    /// The items, ascending.
    [[nodiscard]] std::vector<unsigned> Items() const;
    [[nodiscard]] const std::vector<std::uint32_t>& Words() const noexcept { return words_; }

 private:
    std::vector<std::uint32_t> words_;
};

/// nX x nY cells over an area. Cell (ix, iy) has index iy nX + ix; columns count from x min, rows
/// from y min. Default: no cells, every question answers "none".
///
/// 1. Assign marks every cell that a segment passes through: both cells across each border it
///    meets, and all cells around a corner.
/// 2. A segment wholly inside one cell is marked in that one only.
/// 3. A coordinate within the half-epsilon of a border has both neighbouring columns or rows; one
///    beyond the area within the half-epsilon has the outermost.
/// 4. Infinite, NaN and invalid coordinates never index anything. A segment so long that the
///    rounding of its own coordinates exceeds the half-epsilon may be left out, or be in a wrong
///    cell.
///
/// Read-only questions may run at once. Copying copies all cells.
class LMW_API CellTable {
 public:
    /// What the unsigned index functions answer outside the table.
    enum : unsigned { kOutside = 0xFFFFFFFFU };

    /// One or two neighbouring indices; -1 where there is none.
    struct RangeIdx {
        std::int32_t first = -1;
        std::int32_t second = -1;
    };

    /// Walks the border coordinates of one axis: minimum, minimum + size, ...
    class BorderIterator {
     public:
        BorderIterator(double low, double size, unsigned index) noexcept
            : low_(low), size_(size), index_(index) {}
        double operator*() const noexcept { return low_ + size_ * index_; }
        BorderIterator& operator++() noexcept {
            ++index_;
            return *this;
        }
        friend bool operator==(const BorderIterator& a, const BorderIterator& b) noexcept {
            return a.index_ == b.index_;
        }

     private:
        double low_;
        double size_;
        unsigned index_;
    };

    /// Discards what was and makes nX x nY empty cells with room for `itemCount` items each.
    void Initialize(const Extents2D& extents, unsigned nX, unsigned nY, unsigned itemCount,
                    const Precision3D& precision);

    /// Marks segment k of `lines` as item k in every cell that it passes through, found from the
    /// intersection events of the segments with the grid's borders. What lies outside is left out,
    /// and of a segment that comes from outside the part inside counts.
    void Assign(const std::vector<Line2D>& lines);
    /// Marks one item in one cell; nothing outside the table.
    void Assign(unsigned ix, unsigned iy, const unsigned& item);

    /// Require an index within the table.
    [[nodiscard]] const Cell& At(unsigned index) const { return cells_[index]; }
    [[nodiscard]] const Cell& At(unsigned ix, unsigned iy) const {
        return cells_[std::size_t{iy} * columns_ + ix];
    }
    [[nodiscard]] unsigned CountX() const noexcept { return columns_; }
    [[nodiscard]] unsigned CountY() const noexcept { return rows_; }

    [[nodiscard]] RangeIdx GetXCellIdx(double x) const noexcept;
    [[nodiscard]] RangeIdx GetYCellIdx(double y) const noexcept;

    /// Column and row of a cell index.
    [[nodiscard]] unsigned CellIdxX(unsigned index) const noexcept { return index % columns_; }
    [[nodiscard]] unsigned CellIdxY(unsigned index) const noexcept { return index / columns_; }

    /// The nX + 1 and nY + 1 border coordinates.
    [[nodiscard]] BorderIterator beginX() const noexcept { return {x_.low, x_.size, 0}; }
    [[nodiscard]] BorderIterator endX() const noexcept { return {x_.low, x_.size, columns_ + 1}; }
    [[nodiscard]] BorderIterator beginY() const noexcept { return {y_.low, y_.size, 0}; }
    [[nodiscard]] BorderIterator endY() const noexcept { return {y_.low, y_.size, rows_ + 1}; }

    /// The items of all cells that meet the ring from radius - `inner` to radius + `outer`; with
    /// `inside` those of the disc of radius + `outer`. Widths in the length unit of the
    /// coordinates. `items` is cleared; cells in index order, items ascending within a cell, each
    /// item once.
    void FindAll(std::vector<unsigned>& items, const Circle2D& circle, double inner, double outer,
                 bool inside) const;
    /// The items of all cells that the segments pass through, in the same order.
    void FindAll(std::vector<unsigned>& items, const std::vector<Line2D>& lines) const;

 protected:
    /// The cell of a point by the first index on each axis; kOutside when either axis has none.
    [[nodiscard]] unsigned CellIdx(const Point2D& point) const noexcept;
    /// The first index on one axis, or kOutside.
    [[nodiscard]] unsigned GetIdxX(double x) const noexcept;
    [[nodiscard]] unsigned GetIdxY(double y) const noexcept;

 private:
    struct Axis {
        double low = 0.0;
        double high = 0.0;
        double size = 0.0;  // of one cell
    };
    /// A closed range of indices, empty when first > last.
    struct IndexRange {
        std::int64_t first = 0;
        std::int64_t last = -1;
    };

    [[nodiscard]] static RangeIdx IndexOf(const Axis& axis, unsigned count, double v,
                                          double tolerance) noexcept;
    [[nodiscard]] static IndexRange IndicesWithin(const Axis& axis, unsigned count, double low,
                                                  double high, double tolerance) noexcept;
    [[nodiscard]] IndexRange ColumnsWithin(double low, double high) const noexcept;
    [[nodiscard]] IndexRange RowsWithin(double low, double high) const noexcept;
    void MarkAll(const IndexRange& columns, const IndexRange& rows, unsigned item);
    void MarkCrossings(std::vector<Line2D>& work, std::size_t line_count, bool vertical,
                       std::vector<bool>& met);
    void MarkInside(const Line2D& line, unsigned item);
    void CellsOf(const Line2D& line, std::vector<unsigned>& indices) const;
    void Collect(std::vector<unsigned>& items, const std::vector<unsigned>& indices) const;

    std::vector<Cell> cells_;
    unsigned rows_ = 0;
    unsigned columns_ = 0;
    Axis y_;
    Axis x_;
    Precision3D precision_;
};

}  // namespace Geom
