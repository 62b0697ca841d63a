// Prints the core's answers to all cases as JSON with all bits of the coordinates,
// for comparison with the answers of the package.

#include "Cases.h"

#include <cstdio>

int main() {
    nlohmann::json results;
    for (const auto& c : Scrivo::test::loadCases()) {
        const auto answer = Scrivo::test::answerTo(c);
        auto& points = results[c.name]["path"] = nlohmann::json::array();
        for (const auto& p : answer.path) {
            points.push_back({p.x, p.y, p.force});
        }
        results[c.name]["type"] = answer.type;
    }
    std::puts(results.dump().c_str());
}
