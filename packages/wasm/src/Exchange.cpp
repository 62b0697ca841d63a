#include "Exchange.h"

#include <cstdlib>
#include <new>

/// Throws a JavaScript error through the call. The instance is not used after that.
extern "C" [[clang::import_module("scrivo"), clang::import_name("outOfMemory"), noreturn]] void
outOfMemory();

void* operator new(std::size_t size) {
    if (void* memory = std::malloc(size)) {
        return memory;
    }
    outOfMemory();
}

void operator delete(void* memory) noexcept {
    std::free(memory);
}

void operator delete(void* memory, std::size_t /*size*/) noexcept {
    std::free(memory);
}

namespace binding {

std::vector<double> Answer::s_numbers;

std::span<const double> Reader::numbers(std::size_t count) {
    const std::span result(m_next, count);
    m_next += count;
    return result;
}

std::vector<Scrivo::Point2D> Reader::points(std::size_t count, std::size_t stride) {
    std::vector<Scrivo::Point2D> result(count);
    for (Scrivo::Point2D& p : result) {
        p.x = number();
        p.y = number();
        if (stride > 2) p.force = number();
    }
    return result;
}

std::vector<std::vector<Scrivo::Point2D>> Reader::strokes() {
    std::vector<std::vector<Scrivo::Point2D>> result(size());
    const std::span<const double> lengths = numbers(result.size());
    for (std::size_t i = 0; i < result.size(); ++i) {
        result[i] = points(static_cast<std::size_t>(lengths[i]), 2);
    }
    return result;
}

void Answer::add(std::span<const double> numbers) {
    s_numbers.insert(s_numbers.end(), numbers.begin(), numbers.end());
}

void Answer::add(std::span<const Scrivo::Point2D> points, std::size_t stride) {
    s_numbers.reserve(s_numbers.size() + stride * points.size());
    for (const Scrivo::Point2D& p : points) {
        add(p.x);
        add(p.y);
        if (stride > 2) add(p.force);
    }
}

/// A place for `count` numbers, valid until the next call of this function.
SCRIVO_EXPORT(reserve) double* reserve(std::size_t count) {
    static std::vector<double> s_arguments;
    if (s_arguments.size() < count) {
        s_arguments = {};  // so that the two do not exist at once
        s_arguments.resize(count);
    }
    return s_arguments.data();
}

}  // namespace binding
