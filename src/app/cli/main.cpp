#include "app/cli/CommandLine.h"
#include "platform/process/Interrupt.h"
#include "platform/process/Memory.h"
#include "platform/process/Parallel.h"

int main(int argc, char** argv) {
    velmor::KeepFreedMemory();
    velmor::StartParallelThreads();
    velmor::RemoveUnfinishedFilesOnInterrupt();
    return velmor::RunCommandLine(argc, argv);
}
