#include "render/avi/AviWriter.h"

#include "DecodedMovie.h"
#include "TempFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <fstream>
#include <numeric>
#include <sys/resource.h>

using namespace velmor;
using velmor::testing::CTempFolder;
using velmor::testing::DecodeFrameAt;
using velmor::testing::DecodeMovie;
using velmor::testing::ReadBytes;

namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr const char* unknownError = "An unknown error has occured with avi file.";

Bytes MakeSound(std::size_t count) {
    Bytes sound(count);
    for (std::size_t i = 0; i < count; ++i)
        sound[i] = static_cast<std::uint8_t>(i * 31 + i / 251);
    return sound;
}

// A flat frame whose colour tells its position and survives the codec unchanged.
Bytes FlatFrame(const CAviSettings& settings, int position) {
    return Bytes(static_cast<std::size_t>(settings.width * settings.height * 3),
                 static_cast<std::uint8_t>(position % 4 * 0x21));
}

void WriteMovie(const std::filesystem::path& path, const CAviSettings& settings, const std::vector<int>& positions,
                const Bytes& sound) {
    CAviWriter writer;
    ASSERT_TRUE(writer.Open(path, settings));
    ASSERT_TRUE(writer.AddSound(sound));
    for (const int position : positions)
        ASSERT_TRUE(writer.WriteFrame(position, FlatFrame(settings, position)));
    ASSERT_TRUE(writer.Close());
    ASSERT_FALSE(writer.IsOpen());
}

std::uint32_t IntAt(const Bytes& bytes, std::size_t offset, int count = 4) {
    std::uint32_t value = 0;
    for (int i = 0; i < count; ++i)
        value |= static_cast<std::uint32_t>(bytes.at(offset + static_cast<std::size_t>(i))) << 8 * i;
    return value;
}

std::string NameAt(const Bytes& bytes, std::size_t offset) {
    return {bytes.begin() + static_cast<std::ptrdiff_t>(offset),
            bytes.begin() + static_cast<std::ptrdiff_t>(offset) + 4};
}

struct CParsedChunk {
    std::string name; ///< of a list: its type
    std::size_t start = 0;
    std::size_t data = 0;
    std::size_t size = 0;
};

// All chunks of a file in their order, those inside a list after it.
std::vector<CParsedChunk> ParseChunks(const Bytes& bytes, std::size_t from, std::size_t end) {
    std::vector<CParsedChunk> chunks;
    while (from < end) {
        CParsedChunk chunk{NameAt(bytes, from), from, from + 8, IntAt(bytes, from + 4)};
        EXPECT_LE(chunk.data + chunk.size, end);
        const bool isList = chunk.name == "RIFF" || chunk.name == "LIST";
        if (isList)
            chunk.name = NameAt(bytes, chunk.data);
        chunks.push_back(chunk);
        if (isList) {
            const auto inner = ParseChunks(bytes, chunk.data + 4, chunk.data + chunk.size);
            chunks.insert(chunks.end(), inner.begin(), inner.end());
        }
        from = chunk.data + chunk.size + chunk.size % 2;
    }
    EXPECT_EQ(from, end);
    return chunks;
}

class CParsedMovie {
public:
    explicit CParsedMovie(const std::filesystem::path& path)
        : bytes(ReadBytes(path)), chunks(ParseChunks(bytes, 0, bytes.size())) {}

    /// The n-th chunk of a name.
    const CParsedChunk& Find(const std::string& name, int n = 0) const {
        for (const CParsedChunk& chunk : chunks)
            if (chunk.name == name && n-- == 0)
                return chunk;
        throw std::out_of_range(name);
    }
    std::vector<std::uint32_t> Ints(const CParsedChunk& chunk) const {
        std::vector<std::uint32_t> values;
        for (std::size_t offset = 0; offset + 4 <= chunk.size; offset += 4)
            values.push_back(IntAt(bytes, chunk.data + offset));
        return values;
    }
    int CountOf(const std::string& name) const {
        return static_cast<int>(std::ranges::count(chunks, name, &CParsedChunk::name));
    }

    Bytes bytes;
    std::vector<CParsedChunk> chunks;
};

constexpr std::uint32_t FourCharacters(const char (&name)[5]) {
    std::uint32_t value = 0;
    for (std::size_t i = 4; i-- > 0;)
        value = value << 8 | static_cast<std::uint8_t>(name[i]);
    return value;
}

class AviWriter : public ::testing::Test {
protected:
    CTempFolder m_folder;
    const std::filesystem::path m_path = m_folder / "a.avi";
    const CAviSettings m_settings{5000, 12, 52, 39, 0};
    CAviWriter m_writer;
};

TEST_F(AviWriter, PlaysWithSound) {
    const Bytes sound = MakeSound(9181);
    WriteMovie(m_path, m_settings, {0, 1, 2, 3, 4}, sound);
    const auto movie = DecodeMovie(m_path);
    ASSERT_TRUE(movie);
    EXPECT_EQ(movie->videoCodec, "msvideo1");
    EXPECT_EQ(movie->width, 52);
    EXPECT_EQ(movie->height, 40);
    EXPECT_DOUBLE_EQ(movie->rate, 12);
    EXPECT_EQ(movie->videoDuration, 5);
    ASSERT_EQ(movie->frames.size(), 5u);
    for (int i = 0; i < 5; ++i) {
        const auto& frame = movie->frames[static_cast<std::size_t>(i)];
        EXPECT_EQ(frame.position, i);
        EXPECT_TRUE(frame.isKeyFrame);
        const Bytes picture(frame.pixels.begin() + 52 * 3, frame.pixels.end());
        EXPECT_EQ(picture, FlatFrame(m_settings, i));
    }
    EXPECT_EQ(movie->soundCodec, "pcm_u8");
    EXPECT_EQ(movie->soundRate, 22050);
    EXPECT_EQ(movie->soundChannels, 1);
    EXPECT_EQ(movie->sound, sound);
}

TEST_F(AviWriter, LeavesPositionsEmpty) {
    WriteMovie(m_path, m_settings, {0, 3, 6, 9}, MakeSound(22050));
    const auto movie = DecodeMovie(m_path);
    ASSERT_TRUE(movie);
    EXPECT_EQ(movie->videoDuration, 10);
    ASSERT_EQ(movie->frames.size(), 4u);
    for (std::size_t i = 0; i < 4; ++i)
        EXPECT_EQ(movie->frames[i].position, static_cast<int>(i) * 3);
    EXPECT_EQ(CParsedMovie(m_path).CountOf("00dc"), 10);
    const auto sought = DecodeFrameAt(m_path, 6);
    ASSERT_TRUE(sought);
    EXPECT_EQ(sought->position, 6);
    EXPECT_EQ(sought->pixels, movie->frames[2].pixels);
}

TEST_F(AviWriter, WritesTheHeadersAsLaidDown) {
    constexpr std::uint32_t vids = FourCharacters("vids");
    constexpr std::uint32_t auds = FourCharacters("auds");
    constexpr std::uint32_t msvc = FourCharacters("MSVC");
    constexpr std::uint32_t cram = FourCharacters("CRAM");
    using Ints = std::vector<std::uint32_t>;
    WriteMovie(m_path, m_settings, {0, 2}, MakeSound(1001));
    const CParsedMovie movie(m_path);
    EXPECT_EQ(movie.Ints(movie.Find("strh")),
              (Ints{vids, msvc, 0, 0, 0, 1, 12, 0, 3, 0, 5000, 0, 0, 52 | 39 << 16}));
    EXPECT_EQ(movie.Ints(movie.Find("strf")), (Ints{40, 52, 40, 1 | 16 << 16, cram, 52 * 40 * 2, 0, 0, 0, 0}));
    const CParsedChunk& name = movie.Find("strn");
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(&movie.bytes[name.data])), "Velmor Avi Preview");
    EXPECT_EQ(movie.Ints(movie.Find("strh", 1)),
              (Ints{auds, 0, 0, 0, 0, 1, 22050, 0, 1001, 0, 0xffffffffu, 1, 0, 0}));
    EXPECT_EQ(movie.Find("strf", 1).size, 18u);
    EXPECT_EQ(movie.Ints(movie.Find("strf", 1)), (Ints{1 | 1 << 16, 22050, 22050, 1 | 8 << 16}));
    const Ints main = movie.Ints(movie.Find("avih"));
    EXPECT_EQ(main.size(), 14u);
    EXPECT_EQ(main[0], 83333u);
    EXPECT_EQ(main[4], 3u);
    EXPECT_EQ(main[6], 2u);
    EXPECT_EQ(main[8], 52u);
    EXPECT_EQ(main[9], 39u);
}

TEST_F(AviWriter, WorksAtTheEdges) {
    struct CCase {
        CAviSettings settings;
        std::size_t soundSamples;
        std::size_t frames;
    };
    for (const auto& [settings, soundSamples, frames] :
         {CCase{{10000, 24, 324, 243, 0x00ff00}, 0, 1}, CCase{{0, 1, 4, 1, 0}, 100001, 2},
          CCase{{-1, 30, 1, 1, 0}, 1, 3}, CCase{{5000, 100000, 8, 8, 0}, 7, 40},
          CCase{{5000, 0, 8, 8, 0}, 22050, 1}}) {
        std::vector<int> positions(frames);
        std::iota(positions.begin(), positions.end(), 0);
        const Bytes sound = MakeSound(soundSamples);
        WriteMovie(m_path, settings, positions, sound);
        const auto movie = DecodeMovie(m_path);
        ASSERT_TRUE(movie);
        EXPECT_EQ(movie->frames.size(), frames);
        EXPECT_EQ(movie->sound, sound);
        EXPECT_EQ(movie->soundCodec.empty(), sound.empty());
        const CParsedMovie parsed(m_path);
        EXPECT_EQ(IntAt(parsed.bytes, parsed.Find("strh").data + 24),
                  static_cast<std::uint32_t>(std::max(settings.rate, 1)));
    }
}

// Before each frame stands the sound up to the frame's end, and the index names every chunk.
TEST_F(AviWriter, InterleavesSoundAndIndexesAll) {
    WriteMovie(m_path, m_settings, {0, 1, 4, 5}, MakeSound(15001));
    const CParsedMovie movie(m_path);
    const Bytes& bytes = movie.bytes;
    std::size_t entry = movie.Find("idx1").data;
    const std::size_t movi = movie.Find("movi").data;
    std::size_t soundBytes = 0;
    std::size_t frames = 0;
    for (const CParsedChunk& chunk : movie.chunks) {
        if (chunk.name != "00dc" && chunk.name != "01wb")
            continue;
        if (chunk.name == "01wb")
            soundBytes += chunk.size;
        else
            EXPECT_EQ(soundBytes, std::min<std::size_t>(++frames * 22050 / 12, 15001));
        EXPECT_EQ(NameAt(bytes, entry), chunk.name);
        EXPECT_EQ(IntAt(bytes, entry + 4), chunk.size > 0 ? 0x10u : 0u);
        EXPECT_EQ(movi + IntAt(bytes, entry + 8), chunk.start);
        EXPECT_EQ(IntAt(bytes, entry + 12), chunk.size);
        entry += 16;
    }
    EXPECT_EQ(entry, bytes.size());
    EXPECT_EQ(soundBytes, 15001u);
    EXPECT_EQ(frames, 6u);
}

TEST_F(AviWriter, RefusesWhatCannotBeWrittenAndLeavesNothing) {
    const Bytes frame = FlatFrame(m_settings, 0);
    const auto openAnd = [&](auto operation) {
        EXPECT_TRUE(m_writer.Open(m_path, m_settings));
        const CStatus status = operation();
        EXPECT_FALSE(m_writer.IsOpen());
        EXPECT_TRUE(std::filesystem::is_empty(m_folder.Path()));
        return status.Message();
    };
    EXPECT_EQ(openAnd([&] { return m_writer.WriteFrame(0, std::span(frame).first(frame.size() - 1)); }),
              unknownError);
    EXPECT_EQ(openAnd([&] { return m_writer.WriteFrame(-1, frame); }), unknownError);
    for (const int position : {0, 1})
        EXPECT_EQ(openAnd([&] {
                      EXPECT_TRUE(m_writer.WriteFrame(1, frame));
                      return m_writer.WriteFrame(position, frame);
                  }),
                  unknownError);
    EXPECT_EQ(openAnd([&] { return m_writer.WriteFrame(100000000, frame); }), unknownError) << "beyond 2 GB";
    EXPECT_EQ(openAnd([&] {
                  EXPECT_TRUE(m_writer.WriteFrame(0, frame));
                  return m_writer.AddSound(frame);
              }),
              unknownError);
    EXPECT_EQ(m_writer.WriteFrame(0, frame).Message(), unknownError);
    EXPECT_TRUE(m_writer.Close());

    for (const auto& [width, height] : {std::pair{0, 4}, {4, -1}, {32768, 4}})
        EXPECT_EQ(m_writer.Open(m_path, {5000, 25, width, height, 0}).Message(), unknownError);
    EXPECT_EQ(m_writer.Open(m_folder / "missing" / "a.avi", m_settings).Message(),
              "A disk error occurred while opening the avi file.");
}

TEST_F(AviWriter, AppearsOnlyWhenComplete) {
    WriteMovie(m_path, m_settings, {0}, {});
    const Bytes before = ReadBytes(m_path);
    {
        CAviWriter abandoned;
        ASSERT_TRUE(abandoned.Open(m_path, m_settings));
        ASSERT_TRUE(abandoned.WriteFrame(0, FlatFrame(m_settings, 1)));
    }
    EXPECT_EQ(ReadBytes(m_path), before);
}

TEST_F(AviWriter, SaysWhenTheDiskIsFull) {
    rlimit unlimited{};
    ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &unlimited), 0);
    const auto oldHandler = std::signal(SIGXFSZ, SIG_IGN);
    const rlimit limited{1 << 16, unlimited.rlim_max};
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &limited), 0);
    EXPECT_TRUE(m_writer.Open(m_path, m_settings));
    EXPECT_TRUE(m_writer.AddSound(MakeSound(100000)));
    EXPECT_TRUE(m_writer.WriteFrame(0, FlatFrame(m_settings, 0)));
    const CStatus status = m_writer.Close();
    ::setrlimit(RLIMIT_FSIZE, &unlimited);
    std::signal(SIGXFSZ, oldHandler);
    EXPECT_EQ(status.Message(), unknownError);
    EXPECT_FALSE(m_writer.IsOpen());
    EXPECT_TRUE(std::filesystem::is_empty(m_folder.Path()));
}

} // namespace
