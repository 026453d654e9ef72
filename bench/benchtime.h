#pragma once

// What the benchmarks share: the median time of an operation over many runs.

#include <QElapsedTimer>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <vector>

namespace vkm::bench {

// Median of `iterations` runs of op, in microseconds; a failing run ends the benchmark.
inline double medianMicros(int iterations, const std::function<bool()>& op) {
    std::vector<double> times;
    times.reserve(std::size_t(iterations));
    QElapsedTimer t;
    for (int i = 0; i < iterations; ++i) {
        t.start();
        if (!op()) {
            std::fprintf(stderr, "operation failed\n");
            std::exit(1);
        }
        times.push_back(double(t.nsecsElapsed()) / 1000.0);
    }
    std::sort(times.begin(), times.end());
    return times[times.size() / 2];
}

} // namespace vkm::bench
