#include "Scrivo/TemplatesGraphicsRecognizer.h"

#include "Scrivo/detail/Geometry.h"
#include "Scrivo/detail/PathNormalisation.h"
#include "Scrivo/detail/RotationSearch.h"
#include "Scrivo/detail/CornerScan.h"
#include "Scrivo/detail/TemplateFile.h"
#include "Scrivo/detail/TemplateIndex.h"

#include <algorithm>
#include <mutex>
#include <stdexcept>
#include <utility>

namespace Scrivo {

namespace {

constexpr std::int32_t RECTANGLE = 1;
constexpr std::int32_t TRIANGLE = 2;
constexpr std::int32_t ELLIPSE = 3;

/// A stroke whose ends are farther apart than this share of its length is open.
constexpr double LARGEST_GAP = 0.15;
/// Share of straight pieces above which a stroke is compared with polygons.
constexpr double STRAIGHT_SHARE = 0.5;
/// From these numbers of corners on a stroke is no such figure.
constexpr std::size_t POLYGON_CORNERS = 9;
constexpr std::size_t ELLIPSE_CORNERS = 8;
/// Below this share, or below this score, the share counts too.
constexpr double SURE_SHARE = 0.66;
constexpr double SURE_SCORE = 0.83;
/// The score of the worst match.
constexpr double LEAST_SCORE = 0.8;

RecognitionResult unknown(double score) {
    return {0, "Unknown", score};
}

bool isClosed(detail::Stroke stroke) {
    if (stroke.size() < 2) {
        return false;
    }
    const double length = detail::doubleLength(stroke);
    // A NaN passes here and finds no template.
    return length != 0.0 &&
           !(detail::doubleDistance(stroke.back(), stroke.front()) / length > LARGEST_GAP);
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
    const TemplateList& templates;
    double weight;
    double share;
};

Candidates chooseCandidates(const TemplatesGraphicsRecognizer& recognizer, detail::Stroke stroke) {
    const std::vector<std::int32_t> corners = detail::strokeCorners(stroke);
    if (corners.size() < 3) {
        return {recognizer.allTemplates, 1.0, 1.0};
    }
    const double share = shareOfStraightPieces(stroke, corners);
    if (share > STRAIGHT_SHARE) {
        return {recognizer.polygonTemplates, corners.size() < POLYGON_CORNERS ? 1.0 : 0.0, share};
    }
    return {recognizer.ellipseTemplates, corners.size() < ELLIPSE_CORNERS ? 1.0 : 0.0, 1.0 - share};
}

detail::NormalForm normalForm(const TemplatesGraphicsRecognizer& recognizer) {
    return {recognizer.numPoints, recognizer.squareSize, recognizer.rotationInvariant};
}

detail::RotationSearch rotationSearch(const TemplatesGraphicsRecognizer& recognizer) {
    return {recognizer.angleRange, recognizer.anglePrecision, recognizer.goldenRatio};
}

detail::Match findMatch(detail::Stroke path, const TemplateList& templates,
                        const detail::RotationSearch& search) {
    const std::vector<GraphicTemplate>& list = templates;
    if (search == detail::STANDARD_SEARCH) {
        if (const detail::TemplateIndex* index = templates.index()) {
            if (const auto match = index->match(path, list)) {
                return *match;
            }
        }
    }
    return detail::matchPlainly(path, list, search);
}

RecognitionResult recognizeStroke(const TemplatesGraphicsRecognizer& recognizer,
                                  detail::Stroke stroke) {
    if (!isClosed(stroke)) {
        return unknown(-1.0);
    }
    const Candidates candidates = chooseCandidates(recognizer, stroke);
    if (candidates.templates.empty()) {
        return unknown(-1.0);
    }
    const std::vector<Point2D> path = detail::normalizePath(stroke, normalForm(recognizer));
    const detail::Match best = findMatch(path, candidates.templates, rotationSearch(recognizer));
    const double score = 1.0 - best.distance / recognizer.halfDiagonal;
    const bool isSure = !(candidates.share < SURE_SHARE || score < SURE_SCORE);
    const double final = candidates.weight * (isSure ? score : candidates.share * score);
    if (best.index < 0 || LEAST_SCORE > final) {
        return unknown(final);
    }
    const auto& winner = candidates.templates[static_cast<std::size_t>(best.index)];
    return {winner.id, winner.name, final};
}

/// Appends the templates of a file in normal form.
void readTemplates(std::vector<GraphicTemplate>& out, const std::string& fileName, std::int32_t id,
                   const std::string& name, const detail::NormalForm& form) {
    const auto add = [&](const std::vector<Point2D>& path) {
        try {
            out.push_back({id, name, detail::normalizePath(path, form)});
        } catch (const std::domain_error&) {
            // No outline: its points are closer together than doubles are.
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
      numPoints(detail::Outline::POINTS) {}

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
    readTemplates(loaded, rectangleFile, RECTANGLE, "rectangle", form);
    readTemplates(loaded, triangleFile, TRIANGLE, "triangle", form);
    readTemplates(loaded, isoscelesTriangleFile, TRIANGLE, "triangle", form);
    readTemplates(loaded, ellipseFile, ELLIPSE, "ellipse", form);
    // Only now: threads that recognise need not wait for the files, and the
    // templates of two loads do not mix.
    const std::unique_lock guard(m_lock);
    for (GraphicTemplate& added : loaded) {
        store(std::move(added));
    }
}

int TemplatesGraphicsRecognizer::addTemplate(int id, std::string name, std::vector<Point2D> path) {
    GraphicTemplate added{id, name, detail::normalizePath(path, normalForm(*this))};
    const std::unique_lock guard(m_lock);
    store(std::move(added));
    const std::vector<GraphicTemplate>& all = std::as_const(allTemplates);
    return static_cast<int>(std::count_if(
        all.begin(), all.end(), [&](const GraphicTemplate& t) { return t.name == name; }));
}

/// Requires the lock.
void TemplatesGraphicsRecognizer::store(GraphicTemplate added) {
    if (added.id == RECTANGLE || added.id == TRIANGLE) {
        polygonTemplates.push_back(added);
    } else if (added.id == ELLIPSE) {
        ellipseTemplates.push_back(added);
    }
    allTemplates.push_back(std::move(added));
}

RecognitionResult TemplatesGraphicsRecognizer::recognize(std::vector<Point2D> stroke) const {
    return recognizeView(stroke);
}

RecognitionResult TemplatesGraphicsRecognizer::recognizeView(
    std::span<const Point2D> stroke) const {
    const std::shared_lock guard(m_lock);
    return recognizeStroke(*this, stroke);
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
    return detail::normalizePath(path, normalForm(*this));
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
