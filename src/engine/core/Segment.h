#pragma once

// A span of a recording's timeline, in seconds from its start.
struct Segment {
    double start = 0.0;
    double end = 0.0;

    double length() const { return end - start; }
    bool operator==(const Segment&) const = default;
};
