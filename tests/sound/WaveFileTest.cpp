#include "sound/WaveFile.h"

#include "TempFolder.h"

#include <gtest/gtest.h>

#include <random>

using namespace velmor;
using velmor::testing::CTempFolder;
using velmor::testing::WriteBytes;

namespace {

using Bytes = std::vector<std::uint8_t>;

void Put(Bytes& bytes, std::uint32_t value, int count) {
    for (int i = 0; i < count; ++i)
        bytes.push_back(static_cast<std::uint8_t>(value >> 8 * i));
}

Bytes Chunk(const std::string& name, const Bytes& data) {
    Bytes chunk(name.begin(), name.end());
    Put(chunk, static_cast<std::uint32_t>(data.size()), 4);
    chunk.insert(chunk.end(), data.begin(), data.end());
    if (data.size() % 2 != 0)
        chunk.push_back(0);
    return chunk;
}

Bytes Format(std::uint32_t tag, std::uint32_t channels, std::uint32_t rate, std::uint32_t bits,
             std::size_t size = 16) {
    Bytes format;
    Put(format, tag, 2);
    Put(format, channels, 2);
    Put(format, rate, 4);
    Put(format, rate, 4);
    Put(format, 1, 2);
    Put(format, bits, 2);
    format.resize(size);
    return Chunk("fmt ", format);
}

Bytes Riff(const std::vector<Bytes>& chunks, const std::string& form = "WAVE") {
    Bytes data(form.begin(), form.end());
    for (const Bytes& chunk : chunks)
        data.insert(data.end(), chunk.begin(), chunk.end());
    return Chunk("RIFF", data);
}

class WaveFile : public ::testing::Test {
protected:
    std::string Read(const Bytes& bytes) {
        WriteBytes(m_folder / "a.wav", bytes);
        m_sound = {7, {7}};
        return ReadWaveFile(m_folder / "a.wav", m_sound).Message();
    }

    CTempFolder m_folder;
    CWaveSound m_sound;
    const Bytes m_format = Format(1, 1, 11025, 8);
    const Bytes m_data = Chunk("data", {1, 2, 3});
};

TEST_F(WaveFile, ReadsPlainAndOddlyLaidOutFiles) {
    const Bytes unknown = Chunk("LIST", {9, 9, 9});
    const std::vector<Bytes> files{
        Riff({m_format, m_data}),
        Riff({unknown, m_format, unknown, m_data, unknown}),
        Riff({Format(1, 1, 11025, 8, 18), m_data}),
        Riff({Format(1, 1, 11025, 8, 41), m_data}),
    };
    for (const Bytes& file : files) {
        ASSERT_EQ(Read(file), "");
        EXPECT_EQ(m_sound.rate, 11025);
        EXPECT_EQ(m_sound.samples, (Bytes{1, 2, 3}));
    }
}

TEST_F(WaveFile, NamesWhatIsWrongInOrder) {
    const std::string unsupported = "Unsupported audio file!\n(8bit Mono PCM encoded wave files are supported)";
    const Bytes empty = Chunk("data", {});
    EXPECT_EQ(Read(Riff({m_format, m_data}, "AVI ")), "Incorrect audio file format!");
    EXPECT_EQ(Read({}), "Incorrect audio file format!");
    EXPECT_EQ(Read(Riff({m_data})), "Corrupt audio file!");
    EXPECT_EQ(Read(Riff({Format(1, 1, 11025, 8, 15), m_data})), "Corrupt audio file!");
    EXPECT_EQ(Read(Riff({Format(1, 1, 11025, 16), empty})), unsupported);
    EXPECT_EQ(Read(Riff({Format(1, 2, 11025, 8)})), unsupported);
    EXPECT_EQ(Read(Riff({Format(2, 1, 0, 8)})), unsupported);
    EXPECT_EQ(Read(Riff({m_data, m_format})), "Corrupt audio file!");
    EXPECT_EQ(Read(Riff({m_format})), "Corrupt audio file!");
    EXPECT_EQ(Read(Riff({m_format, empty})), "Empty audio file!");
    EXPECT_EQ(m_sound.samples, Bytes{7}) << "a failure leaves the sound as it was";
}

TEST_F(WaveFile, RefusesRatesThatCannotBeConverted) {
    EXPECT_EQ(Read(Riff({Format(1, 1, 0, 8), m_data})), "Corrupt audio file!");
    EXPECT_EQ(Read(Riff({Format(1, 1, 0x80000000u, 8), m_data})), "Corrupt audio file!");
    EXPECT_EQ(Read(Riff({Format(1, 1, 1, 8), Chunk("data", Bytes(100000))})), "Corrupt audio file!");
    EXPECT_EQ(Read(Riff({Format(1, 1, 100000, 8), m_data})), "Empty audio file!");
}

TEST_F(WaveFile, ChecksTheExtensionBeforeTheFile) {
    const std::string invalid = "Invalid Audio File extension";
    EXPECT_EQ(ReadWaveFile(m_folder / "missing.wav", m_sound).Message(), "Could not open audio file!");
    EXPECT_EQ(ReadWaveFile(m_folder / "missing.WAV", m_sound).Message(), invalid);
    EXPECT_EQ(ReadWaveFile(m_folder / "missing.wave", m_sound).Message(), invalid);
    EXPECT_EQ(ReadWaveFile(".wav", m_sound).Message(), invalid);
}

TEST_F(WaveFile, SurvivesAnyBytes) {
    const Bytes whole = Riff({Chunk("LIST", {9}), m_format, m_data});
    for (std::size_t length = 0; length + 1 < whole.size(); ++length) { // the last byte only pads
        EXPECT_NE(Read(Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length))), "") << length;
        EXPECT_EQ(m_sound.samples, Bytes{7});
    }
    std::mt19937 random(1);
    for (int round = 0; round < 500; ++round) {
        Bytes damaged = whole;
        for (int change = 0; change < 3; ++change)
            damaged[random() % damaged.size()] = static_cast<std::uint8_t>(round % 2 != 0 ? 255 : random());
        if (Read(damaged).empty()) {
            EXPECT_GE(m_sound.rate, 1);
            EXPECT_TRUE(!m_sound.samples.empty() && m_sound.samples.size() < damaged.size());
        }
    }
}

} // namespace
