#pragma once

// The entry of the line sweep's queue and what it means. Callers ask line_events.h; this is for
// those who look into the sweep or build one of their own.

#include "common/geom/geom_types.h"

#include <cstdint>

namespace Geom::impl {

/// One event of the sweep. `point` indexes the sweep's own store of points; `first` and `second`
/// are the segment's two points, the lexicographically smaller one (x, then y, exactly) first.
struct SweepEvent {
    std::uint32_t point = 0;
    std::uint32_t segment = 0;
    std::int32_t kind = 0;       ///< 0 for an end of the segment, non-zero for a computed meeting
    std::uint32_t priority = 0;  ///< order at one point: see the constants below
    Point2D position;            ///< of the point
    std::uint32_t first = 0;
    std::uint32_t second = 0;
};

/// Priorities at one point: starts come before ends; exchanges of places lie between.
inline constexpr std::uint32_t kPriorityStart = 0;
inline constexpr std::uint32_t kPriorityExchange = 3;
inline constexpr std::uint32_t kPriorityEnd = 4;

/// What an event asks the sweep to do.
enum class LineEventType : std::int32_t {
    kStart = -1,   ///< the segment enters the status
    kMeeting = 0,  ///< two segments meet
    kEnd = 1,      ///< the segment leaves the status
};

/// A meeting when the kind is non-zero, a start when the point is the segment's first, else an end.
[[nodiscard]] constexpr LineEventType GetLineEventType2D(const SweepEvent& event) noexcept {
    if (event.kind != 0) {
        return LineEventType::kMeeting;
    }
    return event.point == event.first ? LineEventType::kStart : LineEventType::kEnd;
}

/// An end event; the priority follows from which of the segment's points it is.
[[nodiscard]] constexpr SweepEvent MakeEndEvent(std::uint32_t point, const Point2D& position,
                                                std::uint32_t segment, std::uint32_t first,
                                                std::uint32_t second) noexcept {
    return {point,    segment, 0,     point == first ? kPriorityStart : kPriorityEnd,
            position, first,   second};
}

/// The order of the queue: x, then y, exactly, then the priority.
[[nodiscard]] constexpr bool operator<(const SweepEvent& a, const SweepEvent& b) noexcept {
    if (a.position.x != b.position.x) {
        return a.position.x < b.position.x;
    }
    if (a.position.y != b.position.y) {
        return a.position.y < b.position.y;
    }
    return a.priority < b.priority;
}

}  // namespace Geom::impl
