#include "platform/process/Memory.h"

#include <benchmark/benchmark.h>

// Benchmarks run with the memory settings of the programs.
int main(int argc, char** argv) {
    velmor::KeepFreedMemory();
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
