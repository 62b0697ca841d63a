#include "Beautifier/ink/Tremor.h"

#include <algorithm>

namespace Scrivo::beautifier {

namespace {

/// The integral of the position over the arc length, from the start of a track to
/// places that must be asked for in ascending order.
class PathIntegral {
public:
    explicit PathIntegral(const Track& track) : m_track(track) {}

    Vec upTo(double length) {
        while (m_from + 1 < m_track.size() &&
               length > m_track[m_from].start + m_track[m_from].piece) {
            ++m_from;
        }
        const TrackPoint& from = m_track[m_from];
        const Vec to = m_track[std::min(m_from + 1, m_track.size() - 1)].at;
        const double t = length - from.start;
        return from.integral + t * from.at +
               (from.piece > 0.0 ? 0.5 * t * t / from.piece : 0.0) * (to - from.at);
    }

private:
    const Track& m_track;
    std::size_t m_from = 0;
};

/// `N` points at even distances along the samples, each the mean of the path
/// within `reach` of it, or within its distance from the nearer end if that is less.
template <std::size_t N>
std::array<Vec, N> averaged(const Track& track, double length, double reach) {
    std::array<Vec, N> out;
    PathIntegral behind(track);
    PathIntegral ahead(track);
    for (std::size_t k = 0; k < N; ++k) {
        const double place = length * static_cast<double>(k) / (N - 1);
        const double r = std::max(std::min({reach, place, length - place}), 1e-6 * length);
        const double low = std::max(place - r, 0.0);
        const double high = std::min(place + r, length);
        out[k] = (1.0 / (high - low)) * (ahead.upTo(high) - behind.upTo(low));
    }
    return out;
}

// An average over this share of the size on either side removes tremor.
constexpr double TREMOR_REACH = 0.04;

/// Ratio of the lengths of the path and its average, where it is typically rough
/// (median): 1 for lines, curves and polygons, more for a shaking hand.
double roughnessOf(const Track& track, double length) {
    constexpr std::size_t PLACES = 49;
    const auto even = averaged<PLACES>(track, length, TREMOR_REACH);
    std::array<double, PLACES - 1> steps;
    for (std::size_t i = 0; i < steps.size(); ++i) {
        steps[i] = norm(even[i + 1] - even[i]);
    }
    constexpr std::size_t MIDDLE = (PLACES - 1) / 2;
    std::nth_element(steps.begin(), steps.begin() + MIDDLE, steps.end());
    return length / (PLACES - 1) / std::max(steps[MIDDLE], 1e-3 * length / (PLACES - 1));
}

/// `FINE` points at even distances along `points`.
template <std::size_t N>
Fine even(const std::array<Vec, N>& points) {
    std::array<double, N> upTo{};
    for (std::size_t i = 1; i < N; ++i) {
        upTo[i] = upTo[i - 1] + norm(points[i] - points[i - 1]);
    }
    Fine out;
    std::size_t i = 1;
    for (std::size_t k = 0; k < FINE; ++k) {
        const double place = upTo.back() * static_cast<double>(k) / (FINE - 1);
        while (i + 1 < N && upTo[i] < place) {
            ++i;
        }
        const double piece = upTo[i] - upTo[i - 1];
        const double t = piece > 0.0 ? (place - upTo[i - 1]) / piece : 0.0;
        out[k] = points[i - 1] + t * (points[i] - points[i - 1]);
    }
    return out;
}

}  // namespace

std::optional<Fine> withoutTremor(const Track& track, double length) {
    constexpr double STEADY = 1.04;
    constexpr double ROUGH = 1.15;
    constexpr std::size_t PLACES = 2 * FINE - 1;
    const double roughness = roughnessOf(track, length);
    if (!(roughness > STEADY)) {
        return std::nullopt;
    }
    const double strength = std::min((roughness - STEADY) / (ROUGH - STEADY), 1.0);
    return even(averaged<PLACES>(track, length, strength * roughness * TREMOR_REACH));
}

}  // namespace Scrivo::beautifier
