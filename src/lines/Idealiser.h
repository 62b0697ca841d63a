#pragma once

#include "lines/AnswerText.h"
#include "lines/Engines.h"
#include "lines/StrokeLine.h"
#include "lines/Text.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

namespace lines {

/// A line that is left to JavaScript.
struct OtherLine {
    std::size_t number;  ///< from 1 on, in the block
    std::size_t start;   ///< first byte in the block
    std::size_t end;     ///< its line feed, or the end of the block
    std::size_t at;      ///< where its answer belongs in the output
};

/// The answers to a block of lines.
struct Answers {
    Text text;
    std::vector<OtherLine> others;
    /// Answered strokes of each family, in the order of the first ones.
    std::vector<std::pair<std::string_view, std::uint32_t>> families;
    std::size_t lines = 0;
};

/// How the lines of a run are processed.
struct Settings {
    std::optional<Area> area;  ///< instead of that of each line
    double scale = 1.0;        ///< drawing units per unit of the input
    int decimals = 3;          ///< of the coordinates
};

/// Turns lines with strokes into lines with figures.
class Idealiser {
public:
    Idealiser(std::unique_ptr<const Engine> engine, const Settings& settings)
        : m_engine(std::move(engine)), m_settings(settings) {}

    /// Answers a block of lines. Empty lines have no answer. `source` is a member that names the
    /// input, with a comma before it, or empty.
    const Answers& answer(std::span<const char> block, std::string_view source);

    /// The text of the last answers.
    [[nodiscard]] std::string_view text() const { return m_answers.text.view(); }

private:
    const char* addLine(const char* line, const char* end, std::string_view source);
    bool addAnswer(std::string_view source);
    bool addPath(Answer& answer, const Units& units);
    void count(std::string_view family);

    std::unique_ptr<const Engine> m_engine;
    Settings m_settings;
    StrokeLine m_line;
    std::vector<Scrivo::Point2D> m_stroke;
    Answers m_answers;
};

}  // namespace lines
