#include "Beautifier/ink/Track.h"

namespace Scrivo::beautifier {

namespace {

// Samples nearer to each other than this share of the size are one sample: a
// resting pen.
constexpr double SAME_POINT = 1e-9;

}  // namespace

Track trackOf(const Ink& ink, const Frame& frame) {
    Track track;
    track.reserve(ink.samples.size());
    for (const Point2D& sample : ink.samples) {
        const Vec p = ink.at(sample);
        TrackPoint next;
        next.at = {(p.x - frame.centre.x) / frame.extent, (p.y - frame.centre.y) / frame.extent};
        if (!track.empty()) {
            TrackPoint& last = track.back();
            const double piece = norm(next.at - last.at);
            if (piece <= SAME_POINT) {
                continue;
            }
            last.piece = piece;
            next.start = last.start + piece;
            next.integral = last.integral + (0.5 * piece) * (last.at + next.at);
        }
        track.push_back(next);
    }
    return track;
}

}  // namespace Scrivo::beautifier
