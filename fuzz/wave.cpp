#include "FuzzTarget.h"
#include "sound/SoundFile.h"
#include "sound/WaveFile.h"

void velmor::fuzz::Read(Bytes input) {
    CWaveSound sound;
    if (DecodeWave(input, sound))
        Require(sound.rate >= 1 && ConvertedCount(sound.rate, sound.samples.size()) > 0);
}
