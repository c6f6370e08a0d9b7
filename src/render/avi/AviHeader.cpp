#include "render/avi/AviHeader.h"

#include "render/avi/MsVideo1.h"
#include "sound/SoundFile.h"

#include <algorithm>

// The layout is that of Microsoft's AVI RIFF file reference.

namespace velmor {

namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr std::string_view streamName = "Velmor Avi Preview";
constexpr std::uint32_t defaultQuality = 0xffffffffu;

void PutChunk(Bytes& bytes, std::string_view name, const Bytes& data) {
    PutAviName(bytes, name);
    PutAviInt(bytes, static_cast<std::uint32_t>(data.size()));
    bytes.insert(bytes.end(), data.begin(), data.end());
    if (data.size() % 2 != 0)
        bytes.push_back(0);
}

Bytes StartOfList(std::string_view type) {
    Bytes list;
    PutAviName(list, type);
    return list;
}

std::uint32_t RateOf(const CAviSettings& settings) {
    return static_cast<std::uint32_t>(std::max(settings.rate, 1));
}

Bytes MainHeader(const CAviSettings& settings, const CAviCounts& counts) {
    constexpr std::uint32_t hasIndexIsInterleavedTrustKeyFrames = 0x10 | 0x100 | 0x800;
    const std::uint32_t rate = RateOf(settings);
    const auto samples = static_cast<std::uint32_t>(counts.videoSamples);
    const std::uint64_t bytesASecond = counts.moviBytes * rate / std::max(samples, 1u);
    Bytes header;
    PutAviInt(header, 1000000 / rate);
    PutAviInt(header, static_cast<std::uint32_t>(std::min<std::uint64_t>(bytesASecond, 0xffffffffu)));
    PutAviInt(header, 0); // no padding
    PutAviInt(header, hasIndexIsInterleavedTrustKeyFrames);
    PutAviInt(header, samples);
    PutAviInt(header, 0); // initial frames
    PutAviInt(header, counts.soundSamples > 0 ? 2 : 1);
    PutAviInt(header, counts.largestChunk);
    PutAviInt(header, static_cast<std::uint32_t>(settings.width));
    PutAviInt(header, static_cast<std::uint32_t>(settings.height));
    header.resize(header.size() + 16);
    return header;
}

struct CStreamHeader {
    std::string_view type;
    std::string_view handler;
    std::uint32_t rate = 0; ///< samples per second
    std::uint32_t length = 0;
    std::uint32_t quality = 0;
    std::uint32_t sampleSize = 0;
    int width = 0;
    int height = 0;
};

Bytes BytesOf(const CStreamHeader& stream) {
    Bytes header;
    PutAviName(header, stream.type);
    PutAviName(header, stream.handler);
    PutAviInt(header, 0); // flags
    PutAviInt(header, 0); // priority and language
    PutAviInt(header, 0); // initial frames
    PutAviInt(header, 1); // scale
    PutAviInt(header, stream.rate);
    PutAviInt(header, 0); // start
    PutAviInt(header, stream.length);
    PutAviInt(header, 0); // suggested buffer size
    PutAviInt(header, stream.quality);
    PutAviInt(header, stream.sampleSize);
    PutAviInt(header, 0); // left and top of the frame rectangle
    PutAviInt(header, static_cast<std::uint32_t>(stream.width), 2);
    PutAviInt(header, static_cast<std::uint32_t>(stream.height), 2);
    return header;
}

Bytes VideoFormat(const CAviSettings& settings) {
    const auto width = static_cast<std::uint32_t>(CodedWidthOf(settings.width));
    const auto height = static_cast<std::uint32_t>(CodedHeightOf(settings.height));
    Bytes format;
    PutAviInt(format, 40);
    PutAviInt(format, width);
    PutAviInt(format, height);
    PutAviInt(format, 1, 2);  // planes
    PutAviInt(format, 16, 2); // bits per pixel
    PutAviName(format, "CRAM");
    PutAviInt(format, width * height * 2);
    format.resize(40);
    return format;
}

Bytes VideoStream(const CAviSettings& settings, const CAviCounts& counts) {
    Bytes list = StartOfList("strl");
    PutChunk(list, "strh",
             BytesOf({"vids", "MSVC", RateOf(settings), static_cast<std::uint32_t>(counts.videoSamples),
                      static_cast<std::uint32_t>(settings.quality), 0, settings.width, settings.height}));
    PutChunk(list, "strf", VideoFormat(settings));
    Bytes name(streamName.begin(), streamName.end());
    name.push_back(0);
    PutChunk(list, "strn", name);
    return list;
}

Bytes SoundStream(const CAviCounts& counts) {
    constexpr std::string_view noHandler("\0\0\0\0", 4);
    Bytes list = StartOfList("strl");
    PutChunk(list, "strh",
             BytesOf({"auds", noHandler, samplesPerSecond, counts.soundSamples, defaultQuality, 1, 0, 0}));
    Bytes format;
    PutAviInt(format, 1, 2); // PCM
    PutAviInt(format, 1, 2); // channels
    PutAviInt(format, samplesPerSecond);
    PutAviInt(format, samplesPerSecond); // bytes per second
    PutAviInt(format, 1, 2);             // block align
    PutAviInt(format, 8, 2);             // bits per sample
    PutAviInt(format, 0, 2);             // extra bytes
    PutChunk(list, "strf", format);
    return list;
}

} // namespace

void PutAviInt(Bytes& bytes, std::uint32_t value, int count) {
    for (int i = 0; i < count; ++i)
        bytes.push_back(static_cast<std::uint8_t>(value >> 8 * i));
}

void PutAviName(Bytes& bytes, std::string_view name) {
    for (const char character : name)
        bytes.push_back(static_cast<std::uint8_t>(character));
}

Bytes MakeAviHeader(const CAviSettings& settings, const CAviCounts& counts) {
    Bytes streams = StartOfList("hdrl");
    PutChunk(streams, "avih", MainHeader(settings, counts));
    PutChunk(streams, "LIST", VideoStream(settings, counts));
    if (counts.soundSamples > 0)
        PutChunk(streams, "LIST", SoundStream(counts));
    Bytes header;
    PutAviName(header, "RIFF");
    PutAviInt(header, static_cast<std::uint32_t>(counts.fileBytes - 8));
    PutAviName(header, "AVI ");
    PutChunk(header, "LIST", streams);
    PutAviName(header, "LIST");
    PutAviInt(header, static_cast<std::uint32_t>(counts.moviBytes));
    PutAviName(header, "movi");
    return header;
}

} // namespace velmor
