#include "FuzzTarget.h"
#include "MemoryFile.h"
#include "sound/SoundFile.h"

void velmor::fuzz::Read(Bytes input) {
    const CMemoryFile file(input);
    std::vector<std::uint8_t> samples;
    const bool loaded = static_cast<bool>(LoadSoundFile(file.File(), "s", samples));
    Require(loaded == !samples.empty());
}
