#include "lines/Idealiser.h"

#include "lines/Placement.h"

#include <algorithm>
#include <cmath>
#include <cstring>

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
    for (std::size_t start = 0; start < block.size();) {
        const void* const feed = std::memchr(block.data() + start, '\n', block.size() - start);
        const std::size_t end =
            feed == nullptr
                ? block.size()
                : static_cast<std::size_t>(static_cast<const char*>(feed) - block.data());
        ++m_answers.lines;
        answerLine(block, start, end, source);
        start = end + 1;
    }
    return m_answers;
}

void Idealiser::answerLine(std::span<const char> block, std::size_t start, std::size_t end,
                           std::string_view source) {
    if (start == end) return;
    const std::size_t at = m_answers.text.size();
    // Without a line feed, reading would run past the end.
    if (end < block.size() && addLine(block.subspan(start), source)) return;
    m_answers.text.cut(at);
    m_answers.others.push_back({m_answers.lines, start, end, at});
}

bool Idealiser::addLine(std::span<const char> line, std::string_view source) {
    if (!m_line.read(line.data(), line.data() + line.size(), !source.empty())) return false;
    const auto& given = m_settings.area ? m_settings.area : m_line.area();
    const double scale = m_settings.scale;
    const Units units{given ? *given : areaAround(m_line.points(), scale), scale,
                      m_settings.decimals};
    const double width = units.area.width * scale;
    const double height = units.area.height * scale;
    if (!isSize(width) || !isSize(height)) return false;
    if (!toFractions(m_line.points(), units.area, m_stroke)) return false;
    auto answer = m_engine->answer(m_stroke, width, height);
    if (!answer) return false;

    Text& out = m_answers.text;
    out.add(m_line.before());
    if (answer->type == Scrivo::FIGURE_NONE) {
        out.add(m_line.drawn());
    } else if (!fromFractions(answer->path, units.area) ||
               !addPoints(out, answer->path, units.decimals)) {
        return false;
    }
    out.add(m_line.after());
    out.add(source);
    if (!addAnswer(out, *answer, units)) return false;
    out.add("}\n");
    count(answer->family);
    return true;
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
