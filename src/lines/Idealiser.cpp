#include "lines/Idealiser.h"

#include "lines/Placement.h"

#include <algorithm>
#include <cmath>

namespace lines {
namespace {

bool isSize(double value) {
    return value > 0.0 && std::isfinite(value);
}

}  // namespace

const Answers& Idealiser::answer(std::span<const char> block, std::string_view source) {
    m_answers.text.cut(0);
    m_answers.others.clear();
    m_answers.families.clear();
    m_answers.lines = 0;
    const auto feeds = std::string_view(block.data(), block.size());
    // Without a line feed, reading would run past the end.
    const std::size_t whole = feeds.rfind('\n') + 1;
    for (std::size_t start = 0; start < block.size();) {
        ++m_answers.lines;
        const char* const line = block.data() + start;
        const char* feed = start < whole ? addLine(line, block.data() + whole, source) : nullptr;
        const std::size_t end = feed == nullptr ? std::min(feeds.find('\n', start), block.size())
                                                : static_cast<std::size_t>(feed - block.data());
        if (feed == nullptr) {
            m_answers.others.push_back({m_answers.lines, start, end, m_answers.text.size()});
        }
        start = end + 1;
    }
    return m_answers;
}

/// Answers a line. Returns its line feed; null, with nothing written, for what is left.
const char* Idealiser::addLine(const char* line, const char* end, std::string_view source) {
    if (*line == '\n') return line;
    const std::size_t before = m_answers.text.size();
    const char* const feed = m_line.read(line, end, !source.empty());
    if (feed != nullptr && addAnswer(source)) return feed;
    m_answers.text.cut(before);
    return nullptr;
}

/// Answers the line that has been read; false, with a part of the text written, for what is left.
bool Idealiser::addAnswer(std::string_view source) {
    const auto& given = m_settings.area ? m_settings.area : m_line.area();
    const double scale = m_settings.scale;
    const Units units{given ? *given : areaAround(m_line.points(), scale), scale,
                      m_settings.decimals};
    const double width = units.area.width * scale;
    const double height = units.area.height * scale;
    if (!isSize(width) || !isSize(height) || !std::isfinite(width + height)) return false;
    if (!toFractions(m_line.points(), units.area, m_stroke)) return false;
    auto answer = m_engine->answer(m_stroke, width, height);
    if (!answer || !addPath(*answer, units)) return false;
    Text& out = m_answers.text;
    out.add(m_line.after());
    out.add(source);
    if (!lines::addAnswer(out, *answer, units)) return false;
    out.add("}\n");
    count(answer->family);
    return true;
}

/// Writes the line up to the end of its points.
bool Idealiser::addPath(Answer& answer, const Units& units) {
    Text& out = m_answers.text;
    out.add(m_line.before());
    if (answer.type == Scrivo::FIGURE_NONE) {
        out.add(m_line.drawn());
        return true;
    }
    return fromFractions(answer.path, units.area) &&
           addPoints(out, answer.path, units.decimals, m_line.areObjects());
}

void Idealiser::count(std::string_view family) {
    auto& families = m_answers.families;
    const auto found = std::find_if(families.begin(), families.end(),
                                    [&](const auto& each) { return each.first == family; });
    if (found == families.end()) {
        families.emplace_back(family, 1);
    } else {
        ++found->second;
    }
}

}  // namespace lines
