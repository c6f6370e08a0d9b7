#include "app/cli/CommandLine.h"
#include "platform/Interrupt.h"
#include "platform/Memory.h"
#include "platform/Parallel.h"

int main(int argc, char** argv) {
    velmor::KeepFreedMemory();
    velmor::StartParallelThreads();
    velmor::RemoveUnfinishedFilesOnInterrupt();
    return velmor::RunCommandLine(argc, argv);
}
