#include "Scrivo/detail/TemplateFile.h"

#include <algorithm>
#include <cstdlib>
#include <exception>
#include <fstream>
#include <istream>
#include <new>
#include <utility>

namespace Scrivo::detail {

namespace {

const std::string COMMA = ",";

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
    std::ifstream file(fileName);
    file.exceptions(std::ios::badbit);
    std::string token;
    while (readToken(file, token)) {
        visit(pathIn(token));
    }
}

}  // namespace Scrivo::detail
