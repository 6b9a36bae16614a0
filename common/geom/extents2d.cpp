#include "common/geom/extents2d.h"

#include <algorithm>
#include <cmath>

namespace Geom {

namespace {

void Include(Extents2D& extents, const Point2D& p) noexcept {
    if (p.IsValid()) {
        extents.x_min = std::min(extents.x_min, p.x);
        extents.x_max = std::max(extents.x_max, p.x);
        extents.y_min = std::min(extents.y_min, p.y);
        extents.y_max = std::max(extents.y_max, p.y);
    }
}

}  // namespace

Extents2D ExtentsOf(const std::vector<Point2D>& points) noexcept {
    Extents2D extents;
    for (const Point2D& p : points) {
        Include(extents, p);
    }
    return extents;
}

Extents2D ExtentsOf(const std::vector<Line2D>& lines) noexcept {
    Extents2D extents;
    for (const Line2D& line : lines) {
        Include(extents, line.first);
        Include(extents, line.second);
    }
    return extents;
}

Extents2D ExtentsOf(const Line2D& line) noexcept {
    Extents2D extents;
    Include(extents, line.first);
    Include(extents, line.second);
    return extents;
}

Extents2D ExtentsOf(const Circle2D& circle) noexcept {
    if (!circle.centre.IsValid()) {
        return {};
    }
    const double r = std::fabs(circle.radius);
    return {circle.centre.x - r, circle.centre.x + r, circle.centre.y - r, circle.centre.y + r};
}

bool IsExtentsIntersected2D(const Extents2D& a, const Extents2D& b,
                            const Precision3D& precision) noexcept {
    const double hx = precision.halfEpsilon[0];
    const double hy = precision.halfEpsilon[1];
    const auto meet = [](double low, double high, double h) {
        return low <= high || detail::Near(low, high, h);
    };
    return !a.IsEmpty() && !b.IsEmpty() && meet(a.x_min, b.x_max, hx) &&
           meet(b.x_min, a.x_max, hx) && meet(a.y_min, b.y_max, hy) && meet(b.y_min, a.y_max, hy);
}

bool ExtentsOverlap2D(const Extents2D& a, const Extents2D& b,
                      const Precision3D& precision) noexcept {
    const double width = std::min(a.x_max, b.x_max) - std::max(a.x_min, b.x_min);
    const double height = std::min(a.y_max, b.y_max) - std::max(a.y_min, b.y_min);
    return !a.IsEmpty() && !b.IsEmpty() && width > precision.halfEpsilon[0] &&
           height > precision.halfEpsilon[1];
}

Extents2D ExtentsIntersection2D(const Extents2D& a, const Extents2D& b) noexcept {
    const Extents2D common{std::max(a.x_min, b.x_min), std::min(a.x_max, b.x_max),
                           std::max(a.y_min, b.y_min), std::min(a.y_max, b.y_max)};
    return common.IsEmpty() ? Extents2D{} : common;
}

std::array<Point2D, 4> CornerPointsOf(const Extents2D& extents) noexcept {
    return {Point2D{extents.x_min, extents.y_min}, Point2D{extents.x_max, extents.y_min},
            Point2D{extents.x_max, extents.y_max}, Point2D{extents.x_min, extents.y_max}};
}

double WidthOf(const Extents2D& extents) noexcept {
    return extents.IsEmpty() ? 0.0 : extents.x_max - extents.x_min;
}

double HeightOf(const Extents2D& extents) noexcept {
    return extents.IsEmpty() ? 0.0 : extents.y_max - extents.y_min;
}

double AspectOf(const Extents2D& extents) noexcept {
    const double height = HeightOf(extents);
    return height == 0.0 ? lmw::kUndefined : WidthOf(extents) / height;
}

}  // namespace Geom
