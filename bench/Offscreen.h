// main() of the benchmarks with windows: offscreen, unless another display is asked for.
#pragma once

#include <QApplication>

#include <benchmark/benchmark.h>

namespace korvane {

inline int runBenchmarks(int argc, char** argv) {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    const QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}

}  // namespace korvane
