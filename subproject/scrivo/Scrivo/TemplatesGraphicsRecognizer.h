#pragma once

#include "Scrivo/GraphicsRecognizer.h"
#include "Scrivo/Scrivo.h"

#include <cstdint>
#include <string>
#include <vector>

namespace Scrivo {

/// Tells rectangles, triangles and ellipses apart by comparing a closed stroke
/// with stored outlines over a golden-section search of the rotation.
class TemplatesGraphicsRecognizer {
public:
    TemplatesGraphicsRecognizer();

    /// The process-wide instance, made on first use.
    static TemplatesGraphicsRecognizer& getInstance();

    /// Whether paths are turned to their indicative angle when normalised.
    /// Sets `angleRange` too: 45 when on, 15 when off.
    void setRotationInvariance(bool on);
    [[nodiscard]] bool getRotationInvariance() const;

    void loadTemplatesFromFile(std::string rectangleFile, std::string triangleFile,
                               std::string isoscelesTriangleFile, std::string ellipseFile);
    int addTemplate(int id, std::string name, std::vector<Point2D> path);

    [[nodiscard]] RecognitionResult recognize(std::vector<Point2D> stroke) const;

    double distanceAtBestAngle(std::vector<Point2D> path, GraphicTemplate t) const;
    double distanceAtAngle(std::vector<Point2D> path, GraphicTemplate t, double angle) const;
    double pathDistance(std::vector<Point2D> a, std::vector<Point2D> b) const;

    std::vector<Point2D> normalizePath(std::vector<Point2D> path) const;
    std::vector<Point2D> resample(std::vector<Point2D> path) const;
    std::vector<Point2D> resampleByCnt(std::vector<Point2D> path, int n) const;
    std::vector<Point2D> rotateToZero(std::vector<Point2D> path) const;
    std::vector<Point2D> rotateBy(std::vector<Point2D> path, double angle) const;
    std::vector<Point2D> scaleToSquare(std::vector<Point2D> path) const;
    std::vector<Point2D> translateToOrigin(std::vector<Point2D> path) const;
    Point2D centroid(std::vector<Point2D> path) const;
    Rect2D boundingBox(std::vector<Point2D> path) const;
    double pathLength(std::vector<Point2D> path) const;
    double getDistance(Point2D a, Point2D b) const;

    double halfDiagonal;
    double angleRange;
    double anglePrecision;
    double goldenRatio;
    std::int32_t numPoints;
    std::int32_t squareSize;
    bool rotationInvariant;
    std::vector<GraphicTemplate> ellipseTemplates;
    std::vector<GraphicTemplate> polygonTemplates;
    std::vector<GraphicTemplate> allTemplates;
};

namespace TemplatesGraphicsRecognizerUtil {

std::vector<std::string> split(const std::string& text, const std::string& delimiters);
std::vector<std::vector<Point2D>> loadPathes(std::string fileName);
std::vector<int> getAnglesFromPath(std::vector<Point2D> path);

}  // namespace TemplatesGraphicsRecognizerUtil

}  // namespace Scrivo
