#pragma once

#include "Recogniser.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <vector>

/// Templates and paths that are hard to tell apart.
namespace Scrivo::test {

inline const GraphicTemplate& oneOf(ink::Hand& hand,
                                    const std::vector<GraphicTemplate>& templates) {
    return templates[static_cast<std::size_t>(hand.below(static_cast<int>(templates.size())))];
}

/// A template that the loader would not make, or only from a strange outline.
inline GraphicTemplate strangeTemplate(ink::Hand& hand, const Path& ordinary) {
    using Change = void (*)(Path&, std::size_t);
    static const Change CHANGES[] = {
        [](Path& path, std::size_t i) { path[i].x = QUIET_NAN; },
        [](Path& path, std::size_t i) { path[i].y = INF; },
        [](Path& path, std::size_t i) { path.resize(i); },
        [](Path& path, std::size_t) {
            path.push_back({1e300, QUIET_NAN});
        },  // beyond what is compared
        [](Path& path, std::size_t i) {
            path[i] = {1e300, -1e300};
        },
        [](Path& path, std::size_t i) { path[i].x += 390.0; },  // close to where bounds fail
        [](Path& path, std::size_t) { path = fractions(path, 0.125, 0.125); },
        [](Path& path, std::size_t i) { path[i].x = above(path[i].x); },
    };
    GraphicTemplate strange{hand.below(4), "strange", ordinary};
    const auto i = static_cast<std::size_t>(hand.below(64));
    CHANGES[hand.below(8)](strange.points, i);
    return strange;
}

/// Templates of which many are alike: copies, reversed copies, strange ones.
inline std::vector<GraphicTemplate> mixedTemplates(ink::Hand& hand, int count) {
    const TemplatesGraphicsRecognizer recogniser;
    std::vector<GraphicTemplate> templates;
    while (static_cast<int>(templates.size()) < count) {
        Path stroke = anyStroke(hand);
        const Path normal = recogniser.normalizePath(stroke);
        templates.push_back({1, "new", normal});
        GraphicTemplate copy = oneOf(hand, templates);
        const int kind = hand.below(6);
        if (kind == 0) {
            templates.push_back(copy);
        } else if (kind == 1) {
            std::reverse(stroke.begin(), stroke.end());
            templates.push_back({1, "backwards", recogniser.normalizePath(stroke)});
        } else if (kind == 2) {
            templates.push_back(strangeTemplate(hand, normal));
        }
    }
    return templates;
}

/// A new stroke, one of the templates, or one of them slightly changed.
inline Path queryPath(ink::Hand& hand, const std::vector<GraphicTemplate>& templates) {
    Path path = oneOf(hand, templates).points;
    if (hand.below(3) > 0 || path.size() != 64) {
        return TemplatesGraphicsRecognizer().normalizePath(anyStroke(hand));
    }
    if (hand.below(2) == 0) {
        path[static_cast<std::size_t>(hand.below(64))].x += hand.in(-1.0, 1.0);
    }
    return path;
}

}  // namespace Scrivo::test
