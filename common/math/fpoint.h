#pragma once

// One data point of a tabulated function.

/// x first, y second, in the units of the function it belongs to (a suction and a water content,
/// say), and a third double that belongs to the caller: interpolation never reads it.
///
/// Curves take half-open ranges of points (pointer to the first, pointer past the last), ordered by
/// increasing x.
struct FPOINT {
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;

    bool operator==(const FPOINT&) const = default;
};
