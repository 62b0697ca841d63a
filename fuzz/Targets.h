#pragma once

#include "Input.h"

#include <array>
#include <string_view>

/// What is fuzzed. A target takes any bytes and throws std::logic_error when an
/// answer breaks a promise.
namespace Scrivo::test::fuzz {

/// Reads the bytes as a template file and compares a stroke with what was loaded.
void templateText(Bytes bytes);
/// The template engine, with templates of every slot.
void optimizeAStroke(Bytes bytes);
/// The beautifier with any options.
void beautify(Bytes bytes);
/// The same, with a wish.
void beautifyAs(Bytes bytes);
/// Figures of any parameters.
void outlineOf(Bytes bytes);
/// Both engines through the C interface.
void cInterface(Bytes bytes);

struct Target {
    std::string_view name;
    void (*run)(Bytes bytes);
};

inline constexpr std::array<Target, 6> TARGETS{{{"templateText", templateText},
                                                {"optimizeAStroke", optimizeAStroke},
                                                {"beautify", beautify},
                                                {"beautifyAs", beautifyAs},
                                                {"outlineOf", outlineOf},
                                                {"cInterface", cInterface}}};

}  // namespace Scrivo::test::fuzz
