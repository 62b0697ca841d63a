/// @file
/// The template recogniser.
#pragma once

#include "Scrivo/GraphicsRecognizer.h"
#include "Scrivo/TemplateList.h"
#include "Scrivo/Types.h"
#include "Scrivo/detail/Mutex.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace Scrivo {

namespace detail {
struct TemplateSnapshot;

/// The latest snapshot of the templates. A snapshot never changes; a reader that
/// holds one keeps it alive.
class LatestSnapshot {
public:
    LatestSnapshot();
    /// A copy starts with the same snapshot.
    /// @{
    LatestSnapshot(const LatestSnapshot& other) : m_snapshot(other.get()) {}
    LatestSnapshot& operator=(const LatestSnapshot& other) {
        if (this != &other) {
            set(other.get());
        }
        return *this;
    }
    ~LatestSnapshot() = default;
    /// @}

    [[nodiscard]] std::shared_ptr<const TemplateSnapshot> get() const;
    void set(std::shared_ptr<const TemplateSnapshot> next) noexcept;

private:
    /// Held only while the pointer is copied or swapped.
    mutable Mutex m_lock;
    std::shared_ptr<const TemplateSnapshot> m_snapshot;
};

/// A lock that copies of its owner do not share.
class OwnLock : public Mutex {
public:
    OwnLock() = default;
    OwnLock(const OwnLock& /*other*/) {}
    OwnLock& operator=(const OwnLock& /*other*/) { return *this; }
    ~OwnLock() = default;
};
}  // namespace detail

/// Tells rectangles, triangles and ellipses apart by comparing a closed stroke
/// with stored outlines, point by point, over a golden-section search of the
/// rotation. An index finds the same template faster (docs/matching.md).
///
/// Loading, adding and recognising may run on several threads at once.
/// Recognition reads a snapshot of the templates, which a load replaces when it
/// is complete: neither waits for the other (but see TemplateList). A load that
/// fails changes nothing. The public fields are not thread-safe. Recognition is
/// correct with any settings and fast with those of the constructor.
class TemplatesGraphicsRecognizer {
public:
    TemplatesGraphicsRecognizer();

    /// The process-wide instance, made on first use.
    static TemplatesGraphicsRecognizer& getInstance();

    /// Whether paths are turned to their indicative angle when normalised.
    /// Sets `angleRange` too: 45 when on, 15 when off.
    void setRotationInvariance(bool on);
    /// Whether paths are turned to their indicative angle: `rotationInvariant`.
    [[nodiscard]] bool getRotationInvariance() const;

    /// Adds every outline of the files, as drawn and backwards. Files are read
    /// in the order of the parameters; both triangle files add triangles. An
    /// empty name and a missing or unreadable file add nothing; nor does an
    /// outline of fewer than two numbers or one that cannot be resampled.
    /// Throws std::bad_alloc, and then adds nothing, when memory runs out.
    void loadTemplatesFromFile(std::string rectangleFile, std::string triangleFile,
                               std::string isoscelesTriangleFile, std::string ellipseFile);

    /// Normalises and stores an outline in any unit. Ids other than 1 to 3 are
    /// compared only with strokes that have no corners. Returns how many
    /// templates now have this name. Throws std::domain_error when the path
    /// cannot be resampled. A path that normalises to NaN or to fewer than
    /// `numPoints` points is stored and never wins.
    int addTemplate(int id, std::string name, std::vector<Point2D> path);

    /// Compares a stroke, in drawing-area units, with the templates. Strokes
    /// whose ends lie farther apart than 15 % of their length are rejected. The
    /// score of a match lies within [0.8, 1]; the first of equally good
    /// templates wins. Throws std::domain_error when the stroke cannot be
    /// resampled.
    [[nodiscard]] RecognitionResult recognize(std::vector<Point2D> stroke) const;
    /// The same without a copy of the stroke.
    [[nodiscard]] RecognitionResult recognizeView(std::span<const Point2D> stroke) const;
    /// The same; nothing when the stroke cannot be resampled.
    [[nodiscard]] std::optional<RecognitionResult> tryRecognize(
        std::span<const Point2D> stroke) const;

    /// The smallest mean distance that a golden-section search over
    /// [-angleRange, angleRange] meets; the path turns about its centroid. NaN
    /// when the template has fewer points than the path.
    double distanceAtBestAngle(std::vector<Point2D> path, GraphicTemplate t) const;
    /// The mean distance with the path turned by `angle` radians.
    double distanceAtAngle(std::vector<Point2D> path, GraphicTemplate t, double angle) const;
    /// Mean distance of points of equal index over the points of `a`. NaN when
    /// `a` is empty or longer than `b`.
    double pathDistance(std::vector<Point2D> a, std::vector<Point2D> b) const;

    /// Resamples, turns (when `rotationInvariant`), scales and centres, so that
    /// paths can be compared point by point. Throws as `resampleByCnt` does.
    std::vector<Point2D> normalizePath(std::vector<Point2D> path) const;
    /// `resampleByCnt` with `numPoints`.
    std::vector<Point2D> resample(std::vector<Point2D> path) const;
    /// `n` points evenly spaced along the path; fewer when it has less than two
    /// points or no length (then NaN follows the first point), none when it is
    /// empty. Interpolated points have force 0, the first one keeps its own,
    /// the last one when rounding left the result a point short. Linear time.
    /// Throws std::domain_error when the spacing vanishes beside the
    /// coordinates' own, or when `n` is below 1 and the path has a length.
    std::vector<Point2D> resampleByCnt(std::vector<Point2D> path, int n) const;
    /// Turned so that the centroid lies level with the first point, to its right.
    std::vector<Point2D> rotateToZero(std::vector<Point2D> path) const;
    /// Turned about the centroid by `angle` radians, counter-clockwise when y
    /// points up.
    std::vector<Point2D> rotateBy(std::vector<Point2D> path, double angle) const;
    /// Each axis scaled to an extent of `squareSize`; infinities and NaN on an
    /// axis without extent.
    std::vector<Point2D> scaleToSquare(std::vector<Point2D> path) const;
    /// Moved so that the centroid is the origin.
    std::vector<Point2D> translateToOrigin(std::vector<Point2D> path) const;
    /// Mean of the points; NaN when there are none.
    Point2D centroid(std::vector<Point2D> path) const;
    /// NaN coordinates are skipped. An empty path has the corner
    /// (DBL_MAX, DBL_MAX) and an extent of -infinity.
    Rect2D boundingBox(std::vector<Point2D> path) const;
    /// Length of the polyline; 0 below 2 points.
    double pathLength(std::vector<Point2D> path) const;
    /// Euclidean distance, all in double.
    double getDistance(Point2D a, Point2D b) const;

    /// The mean distance, in units of the reference square, that scores 0.
    double halfDiagonal = 176.7766952966369;
    /// Half-width of the rotation search in radians (several turns, on purpose:
    /// the outlines are tuned to the angles that this search meets).
    double angleRange;
    /// Width in radians at which the rotation search ends. Must be above 0.
    double anglePrecision;
    /// Golden-section factor of the rotation search, within (0, 1).
    double goldenRatio;
    /// Points of a path in normal form.
    std::int32_t numPoints;
    /// Side of the reference square.
    std::int32_t squareSize = 250;
    /// Set by `setRotationInvariance`.
    bool rotationInvariant = true;
    /// The templates with id 3.
    TemplateList ellipseTemplates;
    /// The templates with id 1 or 2.
    TemplateList polygonTemplates;
    /// Every template, in the order in which it was added.
    TemplateList allTemplates;

private:
    [[nodiscard]] std::shared_ptr<const detail::TemplateSnapshot> currentSnapshot() const;
    [[nodiscard]] std::shared_ptr<const detail::TemplateSnapshot> updatedSnapshot() const;
    void store(std::vector<GraphicTemplate> added);

    /// Held while the lists change or the snapshot is updated.
    mutable detail::OwnLock m_lock;
    mutable detail::LatestSnapshot m_latest;
};

/// Reading of template files, and the corners by which the recogniser chooses
/// what to compare with.
namespace TemplatesGraphicsRecognizerUtil {

/// The runs of characters of `text` between those of `delimiters`; none is
/// empty.
std::vector<std::string> split(const std::string& text, const std::string& delimiters);

/// The outlines of a template file, each as drawn and then backwards. Tokens
/// are separated by white space and hold x1,y1,x2,y2,...; an odd last number is
/// left out, a token of fewer than two numbers gives an empty outline. Text
/// that is no number reads as 0. Numbers are read by `atof`: under a locale
/// with a decimal comma 1.5 reads as 1. A file that cannot be read is empty.
std::vector<std::vector<Point2D>> loadPathes(std::string fileName);

/// Indices of the corners of a stroke, ascending, from 0 to the last point; only
/// 0 for exactly 10 points.
std::vector<int> getAnglesFromPath(std::vector<Point2D> path);

}  // namespace TemplatesGraphicsRecognizerUtil

}  // namespace Scrivo
