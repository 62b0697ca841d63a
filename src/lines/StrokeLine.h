#pragma once

#include "Scrivo/Types.h"
#include "lines/Text.h"

#include <optional>
#include <string_view>
#include <vector>

namespace lines {

/// A rectangle in units of the input.
struct Area {
    double x = 0.0;
    double y = 0.0;
    double width = 0.0;
    double height = 0.0;
};

/// A line of JSON that holds a stroke in the usual form: an object whose member "points" is an
/// array of arrays of numbers, or of objects with the members x, y, force and time. Its memory
/// serves the next line, too.
class StrokeLine {
public:
    /// Reads a line, whose line feed is before `end`. Returns the line feed; null for what is left
    /// to JavaScript: lines of another form or that are wrong, with "others", with members of the
    /// answer's names or, for lines that get one, with a "source".
    const char* read(const char* at, const char* end, bool getsSource);

    /// As drawn; a force that was not recorded is 0.
    [[nodiscard]] const std::vector<Scrivo::Point2D>& points() const { return m_points; }
    /// Whether the points are objects.
    [[nodiscard]] bool areObjects() const { return m_areObjects; }
    /// The text of the points.
    [[nodiscard]] std::string_view drawn() const { return m_drawn; }
    /// The members "width" and "height", where there are any.
    [[nodiscard]] const std::optional<Area>& area() const { return m_area; }
    /// The line before and after its points as JSON.stringify writes it, without the last bracket.
    [[nodiscard]] std::string_view before() const { return m_before.view(); }
    [[nodiscard]] std::string_view after() const { return m_after.view(); }

private:
    const char* readMember(const char* at, class Names& names, bool getsSource);
    const char* readPoints(const char* at);
    const char* readPoint(const char* at);
    const char* readArray(const char* at, Scrivo::Point2D& point) const;
    const char* readObject(const char* at, Scrivo::Point2D& point) const;
    const char* readNumbersAfter(const char* at, Scrivo::Point2D& point) const;
    bool readArea();

    const char* m_end = nullptr;  ///< of the bytes that may be read
    std::vector<Scrivo::Point2D> m_points;
    bool m_areObjects = false;
    std::string_view m_drawn;
    std::optional<double> m_width;
    std::optional<double> m_height;
    std::optional<Area> m_area;
    Text m_before;
    Text m_after;
};

}  // namespace lines
