#pragma once

#include "Scrivo/Types.h"

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

/// Reads template files: tokens separated by white space, each an outline
/// x1,y1,x2,y2,... The memory needed is proportional to the longest token.
namespace Scrivo::detail {

/// Half-open range of a field within a text; empty at the end of the text.
struct Field {
    std::size_t begin;
    std::size_t end;
};

/// The next run of characters from `from` on that are no delimiters.
Field nextField(const std::string& text, const std::string& delimiters, std::size_t from);

/// `fileName` is UTF-8. Calls `visit` with the path of every token in turn, an empty one for a
/// token of fewer than two numbers. A file that cannot be opened has no tokens; a read error ends
/// the file. Numbers are read by `atof` and so take the decimal separator of the process's locale.
/// Throws std::bad_alloc when memory runs out.
void forEachPath(const std::string& fileName,
                 const std::function<void(std::vector<Point2D>)>& visit);

}  // namespace Scrivo::detail
