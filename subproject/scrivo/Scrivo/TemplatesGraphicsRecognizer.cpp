#include "Scrivo/TemplatesGraphicsRecognizer.h"

#include "Common/Failure.h"
#include "Scrivo/detail/CornerScan.h"
#include "Scrivo/detail/Geometry.h"
#include "Scrivo/detail/PathNormalisation.h"
#include "Scrivo/detail/RotationSearch.h"
#include "Scrivo/detail/TemplateFile.h"
#include "Scrivo/detail/TemplateSnapshot.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <stdexcept>
#include <utility>

namespace Scrivo {

namespace detail {

LatestSnapshot::LatestSnapshot() : m_snapshot(std::make_shared<const TemplateSnapshot>()) {}

std::shared_ptr<const TemplateSnapshot> LatestSnapshot::get() const {
    const LockGuard guard(m_lock);
    return m_snapshot;
}

/// The previous snapshot is freed after the lock is released.
void LatestSnapshot::set(std::shared_ptr<const TemplateSnapshot> next) noexcept {
    const LockGuard guard(m_lock);
    m_snapshot.swap(next);
}

}  // namespace detail

namespace {

/// A stroke whose ends are farther apart than this share of its length is open.
constexpr double MAX_GAP = 0.15;
/// Share of straight pieces above which a stroke is compared with polygons.
constexpr double STRAIGHT_SHARE = 0.5;
/// A stroke with more corners, its ends included, is not compared.
constexpr std::size_t MAX_POLYGON_CORNERS = 8;
constexpr std::size_t MAX_ELLIPSE_CORNERS = 7;
/// Below this share, or below this score, the score is multiplied by the share.
constexpr double MIN_SURE_SHARE = 0.66;
constexpr double MIN_SURE_SCORE = 0.83;
/// The score of the worst match.
constexpr double MIN_SCORE = 0.8;

RecognitionResult unknown(double score) {
    return {0, "Unknown", score};
}

bool isClosed(detail::Stroke stroke) {
    if (stroke.size() < 2) {
        return false;
    }
    const double length = detail::doubleLength(stroke);
    // NaN passes here and matches no template.
    return length != 0.0 &&
           !(detail::doubleDistance(stroke.back(), stroke.front()) / length > MAX_GAP);
}

double shareOfStraightPieces(detail::Stroke stroke, const std::vector<std::int32_t>& corners) {
    int straight = 0;
    for (std::size_t k = 0; k + 1 < corners.size(); ++k) {
        const auto from = static_cast<std::size_t>(corners[k]);
        const auto to = static_cast<std::size_t>(corners[k + 1]);
        if (detail::isSimpleLine(stroke.subspan(from, to - from + 1))) {
            ++straight;
        }
    }
    return static_cast<double>(straight) / static_cast<double>(corners.size() - 1);
}

/// What a stroke is compared with, and how its score counts.
struct Candidates {
    const detail::TemplateIndex& templates;
    double weight;
    double share;
};

Candidates chooseCandidates(const detail::TemplateSnapshot& snapshot, detail::Stroke stroke) {
    const std::vector<std::int32_t> corners = detail::strokeCorners(stroke);
    const std::size_t count = corners.size();
    if (count < 3) {
        return {snapshot.all, 1.0, 1.0};
    }
    const double share = shareOfStraightPieces(stroke, corners);
    if (share > STRAIGHT_SHARE) {
        return {snapshot.polygons, count <= MAX_POLYGON_CORNERS ? 1.0 : 0.0, share};
    }
    return {snapshot.ellipses, count <= MAX_ELLIPSE_CORNERS ? 1.0 : 0.0, 1.0 - share};
}

detail::NormalForm normalForm(const TemplatesGraphicsRecognizer& recogniser) {
    return {recogniser.numPoints, recogniser.squareSize, recogniser.rotationInvariant};
}

detail::RotationSearch rotationSearch(const TemplatesGraphicsRecognizer& recogniser) {
    return {recogniser.angleRange, recogniser.anglePrecision, recogniser.goldenRatio};
}

std::optional<RecognitionResult> bestOf(const Candidates& candidates, detail::Stroke stroke,
                                        const TemplatesGraphicsRecognizer& settings) {
    const auto path = detail::tryNormalisePath(stroke, normalForm(settings));
    if (!path) {
        return std::nullopt;
    }
    const detail::Match best = candidates.templates.match(*path, rotationSearch(settings));
    const double score = 1.0 - best.distance / settings.halfDiagonal;
    const bool isSure = !(candidates.share < MIN_SURE_SHARE || score < MIN_SURE_SCORE);
    const double final = candidates.weight * (isSure ? score : candidates.share * score);
    if (best.index < 0 || MIN_SCORE > final) {
        return unknown(final);
    }
    const auto& winner = candidates.templates[static_cast<std::size_t>(best.index)];
    return RecognitionResult{winner.id, winner.name, final};
}

/// Whether the index is up to date with a list.
bool isCurrent(const detail::TemplateIndex& index, const TemplateList& list) {
    const std::vector<GraphicTemplate>& templates = list;
    return !list.isExposed() || index.describes(templates);
}

void update(detail::TemplateIndex& index, const TemplateList& list) {
    if (isCurrent(index, list)) {
        return;
    }
    index = {};
    for (const GraphicTemplate& t : list) {
        index.append(std::make_shared<const GraphicTemplate>(t));
    }
}

/// Appends the templates of a file in normal form.
void readTemplates(std::vector<GraphicTemplate>& out, const std::string& fileName, std::int32_t id,
                   const std::string& name, const detail::NormalForm& form) {
    const auto add = [&](const std::vector<Point2D>& path) {
        // Not an outline if its points are closer together than doubles can resolve.
        if (auto outline = detail::tryNormalisePath(path, form)) {
            out.push_back({id, name, std::move(*outline)});
        }
    };
    detail::forEachPath(fileName, [&](std::vector<Point2D> path) {
        if (path.empty()) {
            return;
        }
        add(path);
        std::reverse(path.begin(), path.end());
        add(path);
    });
}

}  // namespace

TemplatesGraphicsRecognizer::TemplatesGraphicsRecognizer()
    : angleRange(detail::STANDARD_SEARCH.range),
      anglePrecision(detail::STANDARD_SEARCH.precision),
      goldenRatio(detail::STANDARD_SEARCH.goldenRatio),
      numPoints(detail::STANDARD_POINTS) {}

TemplatesGraphicsRecognizer& TemplatesGraphicsRecognizer::getInstance() {
    static TemplatesGraphicsRecognizer m_Instance;
    return m_Instance;
}

void TemplatesGraphicsRecognizer::setRotationInvariance(bool on) {
    rotationInvariant = on;
    angleRange = on ? 45.0 : 15.0;
}

bool TemplatesGraphicsRecognizer::getRotationInvariance() const {
    return rotationInvariant;
}

void TemplatesGraphicsRecognizer::loadTemplatesFromFile(std::string rectangleFile,
                                                        std::string triangleFile,
                                                        std::string isoscelesTriangleFile,
                                                        std::string ellipseFile) {
    const detail::NormalForm form = normalForm(*this);
    std::vector<GraphicTemplate> loaded;
    readTemplates(loaded, rectangleFile, detail::RECTANGLE_ID, "rectangle", form);
    readTemplates(loaded, triangleFile, detail::TRIANGLE_ID, "triangle", form);
    readTemplates(loaded, isoscelesTriangleFile, detail::TRIANGLE_ID, "triangle", form);
    readTemplates(loaded, ellipseFile, detail::ELLIPSE_ID, "ellipse", form);
    // Stored together, so that the templates of two loads do not mix.
    const detail::LockGuard guard(m_lock);
    store(std::move(loaded));
}

int TemplatesGraphicsRecognizer::addTemplate(int id, std::string name, std::vector<Point2D> path) {
    std::vector<GraphicTemplate> added{{id, name, detail::normalisePath(path, normalForm(*this))}};
    const detail::LockGuard guard(m_lock);
    store(std::move(added));
    const std::vector<GraphicTemplate>& all = std::as_const(allTemplates);
    return static_cast<int>(std::count_if(
        all.begin(), all.end(), [&](const GraphicTemplate& t) { return t.name == name; }));
}

/// Requires the lock. Everything that can fail happens on copies before anything
/// changes.
void TemplatesGraphicsRecognizer::store(std::vector<GraphicTemplate> added) {
    auto next = std::make_shared<detail::TemplateSnapshot>(*updatedSnapshot());
    std::vector<GraphicTemplate> polygons;
    std::vector<GraphicTemplate> ellipses;
    for (const GraphicTemplate& t : added) {
        next->append(t);
        if (detail::isPolygonId(t.id)) {
            polygons.push_back(t);
        } else if (detail::isEllipseId(t.id)) {
            ellipses.push_back(t);
        }
    }
    allTemplates.reserveMore(added.size());
    polygonTemplates.reserveMore(polygons.size());
    ellipseTemplates.reserveMore(ellipses.size());

    allTemplates.append(std::move(added));
    polygonTemplates.append(std::move(polygons));
    ellipseTemplates.append(std::move(ellipses));
    m_latest.set(std::move(next));
}

std::shared_ptr<const detail::TemplateSnapshot> TemplatesGraphicsRecognizer::currentSnapshot()
    const {
    const bool mayDiffer =
        allTemplates.isExposed() || polygonTemplates.isExposed() || ellipseTemplates.isExposed();
    if (!mayDiffer) {
        return m_latest.get();
    }
    const detail::LockGuard guard(m_lock);
    return updatedSnapshot();
}

/// Requires the lock.
std::shared_ptr<const detail::TemplateSnapshot> TemplatesGraphicsRecognizer::updatedSnapshot()
    const {
    auto latest = m_latest.get();
    if (isCurrent(latest->all, allTemplates) && isCurrent(latest->polygons, polygonTemplates) &&
        isCurrent(latest->ellipses, ellipseTemplates)) {
        return latest;
    }
    auto next = std::make_shared<detail::TemplateSnapshot>(*latest);
    update(next->all, allTemplates);
    update(next->polygons, polygonTemplates);
    update(next->ellipses, ellipseTemplates);
    m_latest.set(next);
    return next;
}

RecognitionResult TemplatesGraphicsRecognizer::recognize(std::vector<Point2D> stroke) const {
    return recognizeView(stroke);
}

RecognitionResult TemplatesGraphicsRecognizer::recognizeView(
    std::span<const Point2D> stroke) const {
    if (const auto result = tryRecognize(stroke)) {
        return *result;
    }
    detail::raise<std::domain_error>(detail::UNRESAMPLED);
}

std::optional<RecognitionResult> TemplatesGraphicsRecognizer::tryRecognize(
    std::span<const Point2D> stroke) const {
    if (!isClosed(stroke)) {
        return unknown(-1.0);
    }
    const auto snapshot = currentSnapshot();
    const Candidates candidates = chooseCandidates(*snapshot, stroke);
    return candidates.templates.empty() ? unknown(-1.0) : bestOf(candidates, stroke, *this);
}

double TemplatesGraphicsRecognizer::distanceAtBestAngle(std::vector<Point2D> path,
                                                        GraphicTemplate t) const {
    return detail::distanceAtBestAngle(path, t.points, rotationSearch(*this));
}

double TemplatesGraphicsRecognizer::distanceAtAngle(std::vector<Point2D> path, GraphicTemplate t,
                                                    double angle) const {
    return detail::distanceAtAngle(path, t.points, angle);
}

double TemplatesGraphicsRecognizer::pathDistance(std::vector<Point2D> a,
                                                 std::vector<Point2D> b) const {
    return detail::pathDistance(a, b);
}

std::vector<Point2D> TemplatesGraphicsRecognizer::normalizePath(std::vector<Point2D> path) const {
    return detail::normalisePath(path, normalForm(*this));
}

std::vector<Point2D> TemplatesGraphicsRecognizer::resample(std::vector<Point2D> path) const {
    return detail::resample(path, numPoints);
}

std::vector<Point2D> TemplatesGraphicsRecognizer::resampleByCnt(std::vector<Point2D> path,
                                                                int n) const {
    return detail::resample(path, n);
}

std::vector<Point2D> TemplatesGraphicsRecognizer::rotateToZero(std::vector<Point2D> path) const {
    return detail::rotateToZero(path);
}

std::vector<Point2D> TemplatesGraphicsRecognizer::rotateBy(std::vector<Point2D> path,
                                                           double angle) const {
    return detail::rotateBy(path, angle);
}

std::vector<Point2D> TemplatesGraphicsRecognizer::scaleToSquare(std::vector<Point2D> path) const {
    return detail::scaleToSquare(path, squareSize);
}

std::vector<Point2D> TemplatesGraphicsRecognizer::translateToOrigin(
    std::vector<Point2D> path) const {
    return detail::translateToOrigin(path);
}

Point2D TemplatesGraphicsRecognizer::centroid(std::vector<Point2D> path) const {
    return detail::centroid(path);
}

Rect2D TemplatesGraphicsRecognizer::boundingBox(std::vector<Point2D> path) const {
    return detail::boundingBox(path);
}

double TemplatesGraphicsRecognizer::pathLength(std::vector<Point2D> path) const {
    return detail::doubleLength(path);
}

double TemplatesGraphicsRecognizer::getDistance(Point2D a, Point2D b) const {
    return detail::doubleDistance(a, b);
}

namespace TemplatesGraphicsRecognizerUtil {

std::vector<std::string> split(const std::string& text, const std::string& delimiters) {
    std::vector<std::string> fields;
    for (auto f = detail::nextField(text, delimiters, 0); f.begin != f.end;
         f = detail::nextField(text, delimiters, f.end)) {
        fields.push_back(text.substr(f.begin, f.end - f.begin));
    }
    return fields;
}

std::vector<std::vector<Point2D>> loadPathes(std::string fileName) {
    std::vector<std::vector<Point2D>> pathes;
    detail::forEachPath(fileName, [&](std::vector<Point2D> path) {
        std::vector<Point2D> reversed(path.rbegin(), path.rend());
        pathes.push_back(std::move(path));
        pathes.push_back(std::move(reversed));
    });
    return pathes;
}

std::vector<int> getAnglesFromPath(std::vector<Point2D> path) {
    return detail::strokeCorners(path);
}

}  // namespace TemplatesGraphicsRecognizerUtil

}  // namespace Scrivo
