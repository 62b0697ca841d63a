#pragma once

#include "Beautifier/Beautifier.h"
#include "Scrivo/Types.h"

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace lines {

/// What an engine makes of a stroke.
struct Answer {
    std::vector<Scrivo::Point2D> path;  ///< fractions of the drawing area
    std::int32_t type = Scrivo::FIGURE_NONE;
    std::string_view family = "none";
    std::string_view kind;             ///< within the family; empty where the engine has none
    std::optional<double> confidence;  ///< none where the engine has none
    Scrivo::Figure figure;             ///< in drawing units; none where the engine has none
};

class Engine {
public:
    virtual ~Engine() = default;

    /// The answer to a stroke in fractions of an area of this size in drawing units; none where it
    /// is left to JavaScript, which gives a warning with it.
    [[nodiscard]] virtual std::optional<Answer> answer(const std::vector<Scrivo::Point2D>& stroke,
                                                       double width, double height) const = 0;
};

class TemplateEngine final : public Engine {
public:
    [[nodiscard]] std::optional<Answer> answer(const std::vector<Scrivo::Point2D>& stroke,
                                               double width, double height) const override;
};

class BeautifierEngine final : public Engine {
public:
    explicit BeautifierEngine(Scrivo::BeautifierOptions options)
        : m_beautifier(std::move(options)) {}

    [[nodiscard]] std::optional<Answer> answer(const std::vector<Scrivo::Point2D>& stroke,
                                               double width, double height) const override;

private:
    Scrivo::Beautifier m_beautifier;
};

}  // namespace lines
