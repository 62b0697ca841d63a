#include "lines/StrokeLine.h"

#include "lines/Json.h"
#include "lines/Numbers.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>

namespace lines {
namespace {

constexpr std::string_view POINTS = "\"points\"";
constexpr std::string_view WIDTH = "\"width\"";
constexpr std::string_view HEIGHT = "\"height\"";
constexpr std::string_view SOURCE = "\"source\"";

/// Members that change the answer, or that the answer or JavaScript's objects have themselves.
constexpr std::array<std::string_view, 7> RESERVED{
    "\"others\"",     "\"type\"",       "\"figure\"",   "\"kind\"",
    "\"confidence\"", "\"parameters\"", "\"__proto__\""};

bool isReserved(std::string_view name) {
    return std::find(RESERVED.begin(), RESERVED.end(), name) != RESERVED.end();
}

/// Members of a point that is an object, the required ones first.
constexpr std::array<std::string_view, 4> COORDINATES{"\"x\"", "\"y\"", "\"force\"", "\"time\""};
constexpr std::size_t REQUIRED = 2;

/// Long integers are passed on through JavaScript as text, which no size is.
constexpr double MAX_SIDE = 1e15;

}  // namespace

const char* StrokeLine::read(const char* at, const char* end, bool getsSource) {
    m_end = end;
    m_points.clear();
    m_width.reset();
    m_height.reset();
    m_before.cut(0);
    m_after.cut(0);
    at = skipSpace(at);
    if (*at != '{') return nullptr;
    m_before.add('{');
    Names names;
    do {
        at = readMember(skipSpace(at + 1), names, getsSource);
        if (at == nullptr) return nullptr;
        at = skipSpace(at);
        if (*at == ',') (m_points.empty() ? m_before : m_after).add(',');
    } while (*at == ',');
    if (*at != '}' || m_points.empty() || !readArea()) return nullptr;
    at = skipSpace(at + 1);
    return *at == '\n' ? at : nullptr;
}

/// A name, a colon and a value.
const char* StrokeLine::readMember(const char* at, Names& names, bool getsSource) {
    std::string_view name;
    at = readName(at, name);
    if (at == nullptr || isReserved(name) || !names.add(name)) return nullptr;
    if (getsSource && name == SOURCE) return nullptr;
    at = skipSpace(at);
    if (*at != ':') return nullptr;
    at = skipSpace(at + 1);
    Text& out = m_points.empty() ? m_before : m_after;
    out.add(name);
    out.add(':');
    if (name == POINTS) {
        const char* const end = readPoints(at);
        if (end != nullptr) m_drawn = {at, static_cast<std::size_t>(end - at)};
        return end;
    }
    if (name == WIDTH && readNumber(at, m_end, m_width.emplace()) == nullptr) return nullptr;
    if (name == HEIGHT && readNumber(at, m_end, m_height.emplace()) == nullptr) return nullptr;
    return copyValue(at, out);
}

const char* StrokeLine::readPoints(const char* at) {
    if (*at != '[') return nullptr;
    do {
        at = readPoint(skipSpace(at + 1));
        if (at == nullptr) return nullptr;
        at = skipSpace(at);
    } while (*at == ',');
    return *at == ']' ? at + 1 : nullptr;
}

/// All points of a stroke have the form of the first one.
const char* StrokeLine::readPoint(const char* at) {
    if (m_points.empty()) m_areObjects = *at == '{';
    Scrivo::Point2D point;
    at = m_areObjects ? readObject(at, point) : readArray(at, point);
    if (at != nullptr) m_points.push_back(point);
    return at;
}

/// x, y and, where there are more numbers, force; those after it are not used.
const char* StrokeLine::readArray(const char* at, Scrivo::Point2D& point) const {
    if (*at != '[') return nullptr;
    at = readNumber(skipSpace(at + 1), m_end, point.x);
    if (at == nullptr) return nullptr;
    at = skipSpace(at);
    if (*at != ',') return nullptr;
    at = readNumber(skipSpace(at + 1), m_end, point.y);
    if (at == nullptr) return nullptr;
    at = skipSpace(at);
    if (*at == ',') {
        at = readNumbersAfter(at, point);
        if (at == nullptr) return nullptr;
    }
    return *at == ']' ? at + 1 : nullptr;
}

/// x, y and perhaps force and time, each once.
const char* StrokeLine::readObject(const char* at, Scrivo::Point2D& point) const {
    if (*at != '{') return nullptr;
    double unused = 0.0;
    std::array<double*, COORDINATES.size()> values{&point.x, &point.y, &point.force, &unused};
    do {
        std::string_view name;
        at = readName(skipSpace(at + 1), name);
        if (at == nullptr) return nullptr;
        at = skipSpace(at);
        const auto k = static_cast<std::size_t>(
            std::find(COORDINATES.begin(), COORDINATES.end(), name) - COORDINATES.begin());
        if (k == COORDINATES.size() || *at != ':') return nullptr;
        double* const value = std::exchange(values[k], nullptr);
        if (value == nullptr) return nullptr;
        at = skipSpace(at + 1);
        const bool isNull = *at == 'n' && k >= REQUIRED;
        at = isNull ? skipWord(at, "null") : readNumber(at, m_end, *value);
        if (at == nullptr) return nullptr;
        at = skipSpace(at);
    } while (*at == ',');
    const bool isWhole = *at == '}' && values[0] == nullptr && values[1] == nullptr;
    return isWhole ? at + 1 : nullptr;
}

/// Numbers after x and y, or null for what was not recorded, each after a comma.
const char* StrokeLine::readNumbersAfter(const char* at, Scrivo::Point2D& point) const {
    double unused = 0.0;
    double* value = &point.force;
    do {
        at = skipSpace(at + 1);
        at = *at == 'n' ? skipWord(at, "null") : readNumber(at, m_end, *value);
        if (at == nullptr) return nullptr;
        value = &unused;
        at = skipSpace(at);
    } while (*at == ',');
    return at;
}

/// False for half an area and for one without a size.
bool StrokeLine::readArea() {
    m_area.reset();
    if (m_width.has_value() != m_height.has_value()) return false;
    if (!m_width) return true;
    const auto isSide = [](double side) { return side > 0.0 && side < MAX_SIDE; };
    if (isSide(*m_width) && isSide(*m_height)) m_area = {0.0, 0.0, *m_width, *m_height};
    return m_area.has_value();
}

}  // namespace lines
