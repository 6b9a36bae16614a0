#pragma once

// The geometry database: a store of points and lines in which equal points are one point. Every
// meeting point that the event functions report is snapped through one, so that a point reported by
// several pairs carries the same bits. Surprising: tolerant equality is not transitive, so what a
// point snaps to depends on the order of insertion. The first comer is the representative; nothing
// is ever merged afterwards.

#include "common/export.h"
#include "common/geom/geom_types.h"
#include "common/geom/precision.h"
#include "common/gid.h"

#include <cstddef>
#include <memory>
#include <span>
#include <utility>
#include <vector>

namespace Geom {

/// Points and lines by identifier. Identifiers start at 1 and follow the order of first insertion;
/// 0 means none.
///
/// 1. A point inserted is equal, within tolerance, to the point stored under the identifier it
///    gets, and of all stored points equal to it that one was stored first.
/// 2. A stored point never changes and never disappears; two stored points may be equal to a third.
/// 3. Find answers what the insertion of the same point answered, whatever was inserted since. (A
///    point with a NaN coordinate equals nothing, not even itself, and is never found.)
/// 4. A line is an unordered pair of point identifiers: both directions are one line.
/// 5. The invalid point is refused, and so is a line with an invalid end: identifier 0.
///
/// Insertion and search are constant-time on average. One object must not be changed by several
/// threads at once; searches may run together.
class LMW_API IGeometryDatabase {
 public:
    IGeometryDatabase() = default;
    IGeometryDatabase(const IGeometryDatabase&) = delete;
    IGeometryDatabase& operator=(const IGeometryDatabase&) = delete;
    virtual ~IGeometryDatabase();

    /// The tolerances by which points are equal here.
    [[nodiscard]] virtual const Precision3D& Precision() const = 0;

    /// The identifier of the first stored point equal to `point`, which is stored when there is
    /// none.
    virtual GID InsertPoint(const Point2D& point) = 0;
    /// The same without storing; 0 when there is none.
    [[nodiscard]] virtual GID FindPoint(const Point2D& point) const = 0;
    /// The stored point; the invalid point for an identifier that was never given.
    [[nodiscard]] virtual Point2D PointAt(GID id) const = 0;
    [[nodiscard]] virtual std::size_t PointCount() const = 0;

    /// The identifier of the line between the two ends' points, in either direction.
    virtual GID InsertLine(const Line2D& line) = 0;
    [[nodiscard]] virtual GID FindLine(const Line2D& line) const = 0;
    /// The identifiers of the line's points, the smaller one first; (0, 0) for an identifier that
    /// was never given.
    [[nodiscard]] virtual std::pair<GID, GID> LineAt(GID id) const = 0;
    [[nodiscard]] virtual std::size_t LineCount() const = 0;
};

/// A database of the lines' ends and the lines, or of the points, inserted in order.
[[nodiscard]] LMW_API std::unique_ptr<IGeometryDatabase> MakeGeometryDataBase(
    const std::vector<Line2D>& lines, const Precision3D& precision);
[[nodiscard]] LMW_API std::unique_ptr<IGeometryDatabase> MakeGeometryDataBase(
    const std::vector<Point2D>& points, const Precision3D& precision);

/// From identifiers of a database back to the caller's input: made from the identifier of each
/// input position, it answers at which positions an identifier stands. Read-only after
/// construction.
class LMW_API InputIndexByDbId {
 public:
    /// What First answers when there is no position.
    enum : unsigned { kNone = 0xFFFFFFFFU };

    /// `ids[k]` is the identifier of input position k; positions with identifier 0 are left out.
    explicit InputIndexByDbId(const std::vector<GID>& ids);

    /// The lowest position with this identifier, or kNone.
    [[nodiscard]] unsigned First(GID id) const noexcept;
    /// All positions with this identifier, ascending; empty when there is none.
    [[nodiscard]] std::span<const unsigned> All(GID id) const noexcept;

 private:
    std::vector<GID> ids_;             // ascending, each once
    std::vector<unsigned> begin_;      // of each identifier's positions, and the end of the last
    std::vector<unsigned> positions_;  // grouped by identifier
};

}  // namespace Geom
