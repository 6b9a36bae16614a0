#pragma once

// The geometry database that MakeGeometryDataBase makes.

#include "common/geom/detail/point_grid.h"
#include "common/geom/geometry_database.h"

#include <cstdint>
#include <unordered_map>
#include <utility>
#include <vector>

namespace Geom::detail {

class GeometryStore final : public IGeometryDatabase {
 public:
    explicit GeometryStore(const Precision3D& precision);

    [[nodiscard]] const Precision3D& Precision() const override { return precision_; }

    GID InsertPoint(const Point2D& point) override;
    [[nodiscard]] GID FindPoint(const Point2D& point) const override;
    [[nodiscard]] Point2D PointAt(GID id) const override;
    [[nodiscard]] std::size_t PointCount() const override { return grid_.Points().size(); }

    GID InsertLine(const Line2D& line) override;
    [[nodiscard]] GID FindLine(const Line2D& line) const override;
    [[nodiscard]] std::pair<GID, GID> LineAt(GID id) const override;
    [[nodiscard]] std::size_t LineCount() const override { return lines_.size(); }

 private:
    Precision3D precision_;
    PointGrid grid_;
    std::vector<std::pair<GID, GID>> lines_;
    std::unordered_map<std::uint64_t, GID> line_ids_;
};

}  // namespace Geom::detail
