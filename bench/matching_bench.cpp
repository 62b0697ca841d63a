// Speed-up by the index: three implementations of the recogniser with the same answers
// on the same strokes and templates.
//
//   literal    every step on copies, every template searched in full
//   copy-free  the library without its index: no copies, turned path never stored
//   indexed    the library
//
// The rows of the benchmark are passes over all strokes; the table at the end
// gives the time per stroke and the ratios, in processor time.

#include "Ink.h"
#include "LiteralRecogniser.h"
#include "Scrivo/TemplatesGraphicsRecognizer.h"

#include <benchmark/benchmark.h>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace {

using Scrivo::RecognitionResult;
using Scrivo::TemplatesGraphicsRecognizer;
using Scrivo::test::Stroke;
namespace ink = Scrivo::test::ink;
namespace literal = Scrivo::test::literal;

constexpr int STROKES = 24;
constexpr int TEMPLATES[] = {400, 2000, 10000};

TemplatesGraphicsRecognizer recogniserWith(int templates) {
    static const char* const NAMES[] = {"rectangle", "triangle", "ellipse"};
    TemplatesGraphicsRecognizer recogniser;
    ink::Hand hand(1);
    for (int k = 0; k < templates; ++k) {
        recogniser.addTemplate(1 + k % 3, NAMES[k % 3],
                               hand.stroke(static_cast<ink::Hand::Shape>(1 + k % 3)));
    }
    return recogniser;
}

const TemplatesGraphicsRecognizer& indexed(int templates) {
    static std::map<int, TemplatesGraphicsRecognizer> made;
    auto found = made.find(templates);
    if (found == made.end()) {
        found = made.emplace(templates, recogniserWith(templates)).first;
    }
    return found->second;
}

/// The index supports the standard settings only. With a precision lower by one bit
/// the search takes the same steps without the index.
TemplatesGraphicsRecognizer copyFree(int templates) {
    TemplatesGraphicsRecognizer recogniser = indexed(templates);
    recogniser.anglePrecision = std::nextafter(recogniser.anglePrecision, 0.0);
    return recogniser;
}

/// Strokes of all families that match one of the smallest set of templates, or
/// curves that match none.
std::vector<Stroke> strokes(bool matching) {
    ink::Hand hand(2);
    std::vector<Stroke> chosen;
    for (int k = 0; chosen.size() < STROKES; ++k) {
        const auto shape = matching ? static_cast<ink::Hand::Shape>(1 + k % 3) : ink::Hand::KNOT;
        const Stroke stroke = hand.stroke(shape);
        const RecognitionResult result = indexed(TEMPLATES[0]).recognize(stroke);
        if ((result.id != 0) == matching && result.score != -1.0) {
            chosen.push_back(stroke);
        }
    }
    return chosen;
}

bool sameBits(const RecognitionResult& a, const RecognitionResult& b) {
    return a.id == b.id && a.name == b.name &&
           std::bit_cast<std::uint64_t>(a.score) == std::bit_cast<std::uint64_t>(b.score);
}

template <typename Recognize>
void run(benchmark::State& state, bool matching, Recognize recognize) {
    const auto templates = static_cast<int>(state.range(0));
    const std::vector<Stroke> all = strokes(matching);
    for (const Stroke& stroke : all) {
        if (!sameBits(recognize(stroke), indexed(templates).recognize(stroke))) {
            state.SkipWithError("the answers differ");
            return;
        }
    }
    for (auto _ : state) {
        for (const Stroke& stroke : all) {
            benchmark::DoNotOptimize(recognize(stroke));
        }
    }
}

void literalForm(benchmark::State& state, bool matching) {
    const auto& recogniser = indexed(static_cast<int>(state.range(0)));
    run(state, matching, [&](const Stroke& s) { return literal::recognize(recogniser, s); });
}

void copyFreeForm(benchmark::State& state, bool matching) {
    const auto recogniser = copyFree(static_cast<int>(state.range(0)));
    run(state, matching, [&](const Stroke& s) { return recogniser.recognize(s); });
}

void indexedForm(benchmark::State& state, bool matching) {
    const auto& recogniser = indexed(static_cast<int>(state.range(0)));
    run(state, matching, [&](const Stroke& s) { return recogniser.recognize(s); });
}

std::string nameOf(const char* strokes, const char* form, int templates) {
    return std::string(strokes) + "/" + form + "/" + std::to_string(templates);
}

/// Prints the runs as usual and keeps their times.
class Reporter : public benchmark::ConsoleReporter {
public:
    Reporter() : ConsoleReporter(OO_Tabular) {}

    void ReportRuns(const std::vector<Run>& runs) override {
        for (const Run& run : runs) {
            if (run.error_occurred) {
                m_failed = true;
            } else if (run.run_type == Run::RT_Iteration) {
                m_time[run.benchmark_name()] = run.GetAdjustedCPUTime();
            }
        }
        ConsoleReporter::ReportRuns(runs);
    }

    [[nodiscard]] bool failed() const { return m_failed; }

    void printRatios(const char* strokes) const {
        const double first = timeOf(strokes, "indexed", TEMPLATES[0]);
        for (const int n : TEMPLATES) {
            const double literal = timeOf(strokes, "literal", n);
            const double copyFree = timeOf(strokes, "copy-free", n);
            const double indexed = timeOf(strokes, "indexed", n);
            std::printf("%-9s %9d %11.1f %11.1f %11.1f %12.0fx %12.0fx %9.1fx %9.0fx\n", strokes, n,
                        literal, copyFree, indexed, literal / indexed, copyFree / indexed,
                        indexed / first, static_cast<double>(n) / TEMPLATES[0]);
        }
    }

private:
    /// Microseconds per stroke; NaN for a run that was filtered out.
    [[nodiscard]] double timeOf(const char* strokes, const char* form, int n) const {
        const auto found = m_time.find(nameOf(strokes, form, n));
        return found == m_time.end() ? std::nan("") : found->second / STROKES;
    }

    std::map<std::string, double> m_time;
    bool m_failed = false;
};

void registerAll(const char* strokes, bool matching) {
    using Form = void (*)(benchmark::State&, bool);
    const std::pair<const char*, Form> forms[] = {
        {"literal", literalForm}, {"copy-free", copyFreeForm}, {"indexed", indexedForm}};
    for (const auto& [name, form] : forms) {
        auto* bench = benchmark::RegisterBenchmark(
            (std::string(strokes) + "/" + name).c_str(),
            [form = form, matching](benchmark::State& state) { form(state, matching); });
        bench->Unit(benchmark::kMicrosecond);
        for (const int n : TEMPLATES) {
            bench->Arg(n);
        }
    }
}

}  // namespace

int main(int argc, char** argv) {
    registerAll("matching", true);
    registerAll("unmatched", false);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return EXIT_FAILURE;
    }
    Reporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    std::printf("\n%-9s %9s %11s %11s %11s %13s %13s %10s %10s\n", "strokes", "templates",
                "literal us", "copy-free", "indexed", "literal/ind.", "copy-free/i.", "growth",
                "templates");
    reporter.printRatios("matching");
    reporter.printRatios("unmatched");
    return reporter.failed() ? EXIT_FAILURE : EXIT_SUCCESS;
}
