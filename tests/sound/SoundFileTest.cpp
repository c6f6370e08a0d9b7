#include "sound/SoundFile.h"

#include "TempFolder.h"

#include <gtest/gtest.h>

using namespace velmor;
using velmor::testing::CTempFolder;
using velmor::testing::ReadBytes;
using velmor::testing::WriteBytes;

namespace {

using Samples = std::vector<std::uint8_t>;

Samples MakeRamp(std::size_t count) {
    Samples samples(count);
    for (std::size_t i = 0; i < count; ++i)
        samples[i] = static_cast<std::uint8_t>(i * 7 + i / 256);
    return samples;
}

// The conversion literally, sample by sample.
Samples ConvertPlainly(int rate, const Samples& input) {
    const double factor = 22050.0 / rate;
    const int newCount = static_cast<int>(static_cast<double>(input.size()) * factor);
    Samples output;
    for (int i = 0; i < newCount; ++i) {
        int j = static_cast<int>(i / factor);
        if (j < 0)
            j = 0;
        if (j > static_cast<int>(input.size()) - 1)
            j = static_cast<int>(input.size()) - 1;
        output.push_back(input[static_cast<std::size_t>(j)]);
    }
    return output;
}

TEST(SoundFile, ConvertsAsLaidDownAtEveryRate) {
    const Samples input = MakeRamp(1000);
    EXPECT_EQ(ConvertToSoundRate(11025, input).size(), 2000u);
    EXPECT_EQ(ConvertToSoundRate(44100, input).size(), 500u);
    EXPECT_EQ(ConvertToSoundRate(22050, input), input);
    for (const int rate : {1, 7, 4000, 8000, 11025, 16000, 22049, 22051, 32000, 44100, 48000, 96000, 2147483647})
        EXPECT_EQ(ConvertToSoundRate(rate, input), ConvertPlainly(rate, input)) << rate;
}

TEST(SoundFile, WritesCountThenSamples) {
    const CTempFolder folder;
    const Samples input{1, 2, 3};
    ASSERT_TRUE(WriteSound(folder / "a.sound", 22050, input).message.empty());
    EXPECT_EQ(ReadBytes(folder / "a.sound"), (Samples{3, 0, 0, 0, 1, 2, 3}));

    // An existing file is replaced, and a sound of several parts is converted as a whole.
    const Samples longer = MakeRamp(40001);
    ASSERT_TRUE(WriteSound(folder / "a.sound", 8000, longer).message.empty());
    Samples loaded;
    ASSERT_TRUE(LoadSoundFile(folder / "a.sound", "a", loaded));
    EXPECT_EQ(loaded, ConvertPlainly(8000, longer));
}

TEST(SoundFile, NeverMakesASoundThatCannotBeRead) {
    const CTempFolder folder;
    const Samples input{1, 2, 3};
    for (const int rate : {0, -1, -22050}) {
        const CSoundWriteResult result = WriteSound(folder / "a.sound", rate, input);
        EXPECT_FALSE(result.done);
        EXPECT_EQ(result.message, "Corrupt audio file!");
    }
    for (const auto& [rate, samples] : {std::pair{22050, Samples{}}, std::pair{100000, Samples{1, 2}}}) {
        const CSoundWriteResult result = WriteSound(folder / "a.sound", rate, samples);
        EXPECT_FALSE(result.done);
        EXPECT_EQ(result.message, "Empty audio file!");
    }
    // 100000 samples at one a second make more than a count of 31 bits can say.
    const CSoundWriteResult tooLong = WriteSound(folder / "a.sound", 1, MakeRamp(100000));
    EXPECT_TRUE(tooLong.done);
    EXPECT_EQ(tooLong.message, "Unable to write audio file!, Disk Full??");
    EXPECT_TRUE(std::filesystem::is_empty(folder.Path()));
}

TEST(SoundFile, SaysWhenAFileCannotBeOpened) {
    const CTempFolder folder;
    const CSoundWriteResult result = WriteSound(folder / "missing" / "a.sound", 22050, Samples{1});
    EXPECT_FALSE(result.done);
    EXPECT_EQ(result.message, "Unable to open audio file for writing ! Disk Full ??");
    Samples loaded{1, 2};
    const CStatus status = LoadSoundFile(folder / "a.sound", "a", loaded);
    EXPECT_EQ(status.Message(), "Internal Error : Could not find sound a at CVelmorltDoc::LoadSound");
    EXPECT_TRUE(loaded.empty());
}

TEST(SoundFile, RefusesDamagedFiles) {
    const CTempFolder folder;
    Samples whole{5, 0, 0, 0, 10, 20, 30, 40, 50};
    Samples loaded;
    const auto load = [&](const Samples& bytes) {
        WriteBytes(folder / "a.sound", bytes);
        loaded = {99};
        return LoadSoundFile(folder / "a.sound", "a", loaded);
    };
    for (std::size_t length = 0; length < whole.size(); ++length) {
        EXPECT_EQ(load(Samples(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length))).Message(),
                  "Corrupt audio file !");
        EXPECT_TRUE(loaded.empty());
    }
    EXPECT_EQ(load({0, 0, 0, 0, 1, 2}).Message(), "Corrupt audio file !");
    EXPECT_EQ(load({255, 255, 255, 255, 1, 2}).Message(), "Corrupt audio file !");
    EXPECT_EQ(load({255, 255, 255, 127, 1, 2}).Message(), "Corrupt audio file !");
    whole.push_back(60); // what follows the samples does not matter
    ASSERT_TRUE(load(whole));
    EXPECT_EQ(loaded, (Samples{10, 20, 30, 40, 50}));
}

} // namespace
