#pragma once

#include "Beautifier/Beautifier.h"

#include <vector>

/// Outlines from the parameters of a figure alone, in drawing-area units.
namespace Scrivo::beautifier {

std::vector<Point2D> outlineOf(const DotFigure& dot);              ///< 64 points: rings, centre
std::vector<Point2D> outlineOf(const LineFigure& line);            ///< 21 points
std::vector<Point2D> outlineOf(const AngleFigure& angle);          ///< 21 points a leg
std::vector<Point2D> outlineOf(const TriangleFigure& triangle);    ///< 21 points an edge
std::vector<Point2D> outlineOf(const QuadrangleFigure& quadrangle);
std::vector<Point2D> outlineOf(const CircleFigure& circle);        ///< 85 points
std::vector<Point2D> outlineOf(const EllipseFigure& ellipse);      ///< 85 points

/// No points when there is no figure.
std::vector<Point2D> outlineOf(const Figure& figure);

}  // namespace Scrivo::beautifier
