#include "FuzzTarget.h"
#include "MemoryFile.h"
#include "platform/movie/AviReader.h"

void velmor::fuzz::Read(Bytes input) {
    const CMemoryFile file(input);
    CAviReader reader;
    if (reader.Open(file.File()) != MovieError::None)
        return;
    CMoviePicture picture;
    for (const int position : {0, 1, reader.Stream().frameCount - 1, 0})
        if (reader.ReadFrame(position, picture))
            Require(picture.width == reader.Stream().width && picture.height == reader.Stream().height);
    std::vector<std::uint8_t> samples;
    reader.ReadSound(22050, samples);
}
