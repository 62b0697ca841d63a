#pragma once

#include "Beautifier/figures/Angle.h"
#include "Beautifier/figures/Dot.h"
#include "Beautifier/figures/Ellipse.h"
#include "Beautifier/figures/Family.h"
#include "Beautifier/figures/Line.h"
#include "Beautifier/figures/Quadrangle.h"
#include "Beautifier/figures/Triangle.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

/// The table of the families. Nothing else refers to a family by name.
namespace Scrivo::beautifier {

template <typename... F>
struct FamilyList {
    static constexpr std::size_t COUNT = sizeof...(F);
    static constexpr std::size_t FEATURE_COUNT = (F::FEATURES.size() + ...);

    /// Copies the names of all features to `out`, family by family.
    static constexpr void copyFeatures(std::string_view* out) {
        ((out = std::copy(F::FEATURES.begin(), F::FEATURES.end(), out)), ...);
    }
};

/// In the order of `FigureFamily`.
using Families = FamilyList<DotFamily,         //
                            LineFamily,        //
                            AngleFamily,       //
                            TriangleFamily,    //
                            QuadrangleFamily,  //
                            EllipseFamily>;

/// All families, in the order of `FigureFamily`.
std::span<const Family> families();

/// The entry of a family; null for a value that is no `FigureFamily`.
const Family* findFamily(FigureFamily family);

/// Outline from the parameters of the figure alone, in drawing-area units; empty
/// where there is no figure.
std::vector<Point2D> outlineOf(const Figure& figure);

/// The smallest box around points, at least one.
Box boxOf(std::span<const Point2D> points);

/// Moves a figure whose `outline` sticks out of the drawing area back into it. One that
/// is larger than the area stays where it is. Returns whether the figure was moved.
bool moveInside(Figure& figure, std::span<const Point2D> outline, double width, double height);

}  // namespace Scrivo::beautifier
