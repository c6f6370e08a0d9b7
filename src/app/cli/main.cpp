#include "app/cli/CommandLine.h"
#include "platform/Interrupt.h"
#include "platform/Memory.h"

int main(int argc, char** argv) {
    velmor::KeepFreedMemory();
    velmor::RemoveUnfinishedFilesOnInterrupt();
    return velmor::RunCommandLine(argc, argv);
}
