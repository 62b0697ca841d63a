#pragma once

#include "Scrivo/Types.h"

#include <cstddef>
#include <span>
#include <vector>

/// Arguments and answers cross into JavaScript as doubles in the instance's memory.
namespace binding {

#define SCRIVO_EXPORT(name) extern "C" [[clang::export_name(#name)]]

/// Reads arguments in the order in which JavaScript wrote them.
class Reader {
public:
    explicit Reader(const double* numbers) : m_next(numbers) {}

    double number() { return *m_next++; }
    bool boolean() { return number() != 0.0; }
    std::size_t size() { return static_cast<std::size_t>(number()); }
    int integer() { return static_cast<int>(number()); }
    std::span<const double> numbers(std::size_t count);
    /// `count` points of `stride` numbers each: x, y and, with a stride of 3, force.
    std::vector<Scrivo::Point2D> points(std::size_t count, std::size_t stride);
    /// Their number, that of the points of each, then x and y of all points.
    std::vector<std::vector<Scrivo::Point2D>> strokes();

private:
    const double* m_next;
};

/// The answer of the last call, for JavaScript to read before the next one.
class Answer {
public:
    Answer() { s_numbers.clear(); }

    void add(double number) { s_numbers.push_back(number); }
    void add(std::span<const double> numbers);
    void add(std::span<const Scrivo::Point2D> points, std::size_t stride);
    [[nodiscard]] const double* data() const { return s_numbers.data(); }

private:
    static std::vector<double> s_numbers;
};

}  // namespace binding
