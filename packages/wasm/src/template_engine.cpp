#include "Exchange.h"
#include "Scrivo/Scrivo.h"
#include "Scrivo/detail/Console.h"
#include "Scrivo/detail/TemplateFile.h"

#include <string>
#include <utility>

/// Shows a line on the console. The text ends with a zero.
extern "C" [[clang::import_module("scrivo"), clang::import_name("printLine")]] void showLine(
    const char* text);

/// The template engine's part of the WebAssembly module, and what it needs of a system:
/// a console, and files whose contents JavaScript has read.
namespace binding {
namespace {

/// The arguments of the load that is under way.
const double* files = nullptr;

std::string readName(Reader& in) {
    std::string name;
    for (const double unit : in.numbers(in.size())) {
        name.push_back(static_cast<char>(unit));
    }
    return name;
}

/// Skips the paths of a file.
void skipPaths(Reader& in) {
    for (std::size_t count = in.size(); count > 0; --count) in.numbers(in.size());
}

}  // namespace

/// Number of files; of each its name as bytes after their number, then its paths: their
/// number, and of each its coordinates after their number.
SCRIVO_EXPORT(initScrivo) void initScrivo(const double* arguments) {
    files = arguments;
    std::vector<std::string> names;
    Reader in(arguments);
    for (std::size_t count = in.size(); count > 0; --count) {
        names.push_back(readName(in));
        skipPaths(in);
    }
    Scrivo::initScrivo(std::move(names));
}

/// Width and height, number of points, the other strokes, the stroke with forces. The
/// answer is the figure, the number of numbers of the path, and x, y, force of its points.
SCRIVO_EXPORT(optimizeAStroke) const double* optimizeAStroke(const double* arguments) {
    Reader in(arguments);
    const auto width = static_cast<float>(in.number());
    const auto height = static_cast<float>(in.number());
    const std::size_t count = in.size();
    auto others = in.strokes();
    const auto result =
        Scrivo::optimizeAStroke(in.points(count, 3), width, height, std::move(others));
    Answer out;
    out.add(result.type);
    out.add(static_cast<double>(3 * result.path.size()));
    out.add(result.path, 3);
    return out.data();
}

}  // namespace binding

namespace Scrivo::detail {

void printLine(const char* text) {
    showLine(text);
}

/// Of files of the same name the last one counts.
void forEachPath(const std::string& fileName,
                 const std::function<void(std::vector<Point2D>)>& visit) {
    const double* found = nullptr;
    binding::Reader in(binding::files);
    const auto place = [&in] { return in.numbers(0).data(); };
    for (std::size_t count = in.size(); count > 0; --count) {
        const bool isWanted = binding::readName(in) == fileName;
        if (isWanted) found = place();
        binding::skipPaths(in);
    }
    if (found == nullptr) return;
    binding::Reader file(found);
    for (std::size_t count = file.size(); count > 0; --count) {
        visit(file.points(file.size() / 2, 2));
    }
}

}  // namespace Scrivo::detail
