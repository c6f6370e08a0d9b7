#include "app/cli/CommandLine.h"
#include "platform/process/Interrupt.h"
#include "platform/process/Memory.h"

int main(int argc, char** argv) {
    velmor::KeepFreedMemory();
    velmor::SurviveFileSizeLimit();
    velmor::RemoveUnfinishedFilesOnInterrupt();
    return velmor::RunCommandLine(argc, argv);
}
