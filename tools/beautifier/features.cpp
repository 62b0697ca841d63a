#include "Beautifier/Features.h"

#include <cstdio>
#include <iostream>
#include <vector>

using namespace Scrivo;
using namespace Scrivo::beautifier;

int main() {
    std::printf("extent length n closed");
    for (int i = 0; i < FEATURE_COUNT; ++i) std::printf(" %s", featureName(i));
    std::printf("\n");
    std::size_t n;
    std::ios::sync_with_stdio(false);
    while (std::cin >> n) {
        std::vector<Point2D> s(n);
        for (auto& p : s) std::cin >> p.x >> p.y;
        Frame fr = measure(s, 1, 1);
        if (!fr.finite || fr.extent <= 0) {
            std::printf("%.17g %.17g %zu -1\n", fr.extent, fr.length, n);
            continue;
        }
        Evidence e = examine(resample(s, 1, 1, fr));
        Features f = featuresOf(e);
        std::printf("%.17g %.17g %zu %d", fr.extent, fr.length, n, e.closed ? 1 : 0);
        for (double v : f) std::printf(" %.9g", v);
        std::printf("\n");
    }
}
