#include "Scrivo/detail/TemplateFile.h"

#include <algorithm>
#include <cstdlib>
#include <exception>
#include <fstream>
#include <istream>
#include <new>
#include <utility>

#ifdef _WIN32
#define NOMINMAX
#define WIN32_LEAN_AND_MEAN
#include <windows.h>
#endif

namespace Scrivo::detail {

namespace {

const std::string COMMA = ",";

#ifdef _WIN32
/// The path in UTF-16: opened by bytes, a path would be read in the code page of the
/// system, which lacks most letters. A path that is not UTF-8 is taken to be in that
/// code page.
std::wstring systemPath(const std::string& path) {
    const auto bytes = static_cast<int>(path.size());
    for (const auto& [codePage, flags] :
         {std::pair{CP_UTF8, MB_ERR_INVALID_CHARS}, std::pair{CP_ACP, 0}}) {
        const int size = MultiByteToWideChar(codePage, flags, path.data(), bytes, nullptr, 0);
        if (size > 0) {
            std::wstring result(static_cast<std::size_t>(size), L'\0');
            MultiByteToWideChar(codePage, flags, path.data(), bytes, result.data(), size);
            return result;
        }
    }
    return {};
}
#else
const std::string& systemPath(const std::string& path) {
    return path;
}
#endif

std::size_t countFields(const std::string& token) {
    std::size_t count = 0;
    for (Field f = nextField(token, COMMA, 0); f.begin != f.end;
         f = nextField(token, COMMA, f.end)) {
        ++count;
    }
    return count;
}

/// Ends the field in place, so that a token of any length is read without a
/// copy: the character behind a field is a comma or the text's own end.
double numberIn(std::string& token, const Field& field) {
    token[field.end] = '\0';
    return std::atof(token.data() + field.begin);
}

std::vector<Point2D> pathIn(std::string& token) {
    std::vector<Point2D> path(countFields(token) / 2);
    std::size_t from = 0;
    const auto next = [&] {
        const Field field = nextField(token, COMMA, from);
        from = std::min(field.end + 1, token.size());
        return numberIn(token, field);
    };
    for (Point2D& p : path) {
        p.x = next();
        p.y = next();
    }
    return path;
}

/// Reads the next token; false at the end of the file and where it cannot be
/// read on. Only a lack of memory is passed on, which a stream would otherwise
/// report as the end of the file.
bool readToken(std::istream& file, std::string& token) {
    try {
        return static_cast<bool>(file >> token);
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception&) {
        return false;
    }
}

}  // namespace

Field nextField(const std::string& text, const std::string& delimiters, std::size_t from) {
    const std::size_t begin = std::min(text.find_first_not_of(delimiters, from), text.size());
    return {begin, std::min(text.find_first_of(delimiters, begin), text.size())};
}

void forEachPath(const std::string& fileName,
                 const std::function<void(std::vector<Point2D>)>& visit) {
    std::ifstream file(systemPath(fileName).c_str());
    file.exceptions(std::ios::badbit);
    std::string token;
    while (readToken(file, token)) {
        visit(pathIn(token));
    }
}

}  // namespace Scrivo::detail
