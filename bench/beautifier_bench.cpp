// Time of the beautifier per stroke: median and 99th percentile over many strokes of
// up to 300 points, for figures and other ink, and the growth with the number of
// points.
//
//   beautifier_bench [--strokes=FILE] [Google Benchmark options]
//
// FILE holds one stroke a line, "count x y x y ...", in drawing-area units; those
// with up to 300 points are measured in addition.

#include "Beautifier/Beautifier.h"
#include "Examples.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <limits>
#include <string>
#include <vector>

namespace {

using namespace Scrivo::test;
using namespace Scrivo::test::ink;
using Scrivo::Beautifier;
using Scrivo::Point2D;

constexpr double WIDTH = 800.0;
constexpr double HEIGHT = 600.0;
constexpr std::size_t MAX_POINTS = 300;

using Strokes = std::vector<Path>;

/// Each curve with random tremor and jitter, at 10 to 300 points.
Strokes drawn(const std::vector<Example>& examples) {
    Random random(1);
    Strokes strokes;
    for (const Example& example : examples) {
        for (int i = 0; i < 100; ++i) {
            const double tremor = random.in(0.0, 5.0);
            Path path = sample(shaky(example.curve, tremor), 10 + random.below(290));
            for (Point2D& p : path) {
                p = p + random.jitter(0.5);
            }
            strokes.push_back(fractions(path, WIDTH, HEIGHT));
        }
    }
    return strokes;
}

Strokes readStrokes(const std::string& file) {
    std::ifstream in(file);
    Strokes strokes;
    std::size_t count = 0;
    while (in >> count) {
        Path path(count);
        for (Point2D& p : path) {
            in >> p.x >> p.y;
        }
        if (count <= MAX_POINTS) {
            strokes.push_back(fractions(path, WIDTH, HEIGHT));
        }
    }
    return strokes;
}

double microseconds(const Beautifier& beautifier, const Path& stroke) {
    const auto start = std::chrono::steady_clock::now();
    benchmark::DoNotOptimize(beautifier.beautify(stroke, WIDTH, HEIGHT));
    const auto end = std::chrono::steady_clock::now();
    return std::chrono::duration<double, std::micro>(end - start).count();
}

void everyStroke(benchmark::State& state, const Strokes& strokes) {
    const Beautifier beautifier;
    // The minimum over all passes, to exclude the influence of other processes.
    std::vector<double> times(strokes.size(), std::numeric_limits<double>::infinity());
    for (auto _ : state) {
        for (std::size_t i = 0; i < strokes.size(); ++i) {
            times[i] = std::min(times[i], microseconds(beautifier, strokes[i]));
        }
    }
    std::sort(times.begin(), times.end());
    state.counters["median_us"] = times[times.size() / 2];
    state.counters["p99_us"] = times[times.size() * 99 / 100];
    state.counters["strokes"] = static_cast<double>(strokes.size());
}

void points(benchmark::State& state) {
    const Path path = fractions(
        sample(shaky(ellipse(110, 60, 0.5), 1.0), static_cast<int>(state.range(0))), WIDTH, HEIGHT);
    const Beautifier beautifier;
    for (auto _ : state) {
        benchmark::DoNotOptimize(beautifier.beautify(path, WIDTH, HEIGHT));
    }
    state.SetComplexityN(state.range(0));
}

void add(const std::string& name, const Strokes& strokes) {
    benchmark::RegisterBenchmark(
        name.c_str(), [strokes](benchmark::State& state) { everyStroke(state, strokes); })
        ->Unit(benchmark::kMillisecond)
        ->MinTime(1.0);
}

/// Takes `--strokes=FILE` out of the arguments.
std::string takeFile(int& argc, char** argv) {
    constexpr const char* FLAG = "--strokes=";
    for (int i = 1; i < argc; ++i) {
        if (std::strncmp(argv[i], FLAG, std::strlen(FLAG)) == 0) {
            const std::string file = argv[i] + std::strlen(FLAG);
            std::copy(argv + i + 1, argv + argc, argv + i);
            --argc;
            return file;
        }
    }
    return {};
}

}  // namespace

int main(int argc, char** argv) {
    const std::string file = takeFile(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 1;
    }
    add("figures", drawn(examples()));
    add("other_ink", drawn(others()));
    if (!file.empty()) {
        const Strokes strokes = readStrokes(file);
        if (strokes.empty()) {
            std::fprintf(stderr, "beautifier_bench: no strokes in %s\n", file.c_str());
            return 1;
        }
        add("file", strokes);
    }
    benchmark::RegisterBenchmark("points", points)
        ->RangeMultiplier(10)
        ->Range(1000, 1'000'000)
        ->Complexity(benchmark::oN)
        ->Unit(benchmark::kMicrosecond);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
