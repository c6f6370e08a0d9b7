#include "image/CelImg.h"
#include "image/RunLength.h"

#include "DamagedFiles.h"

#include <gtest/gtest.h>

using namespace velmor;
using velmor::testing::CTempFolder;
using velmor::testing::ForEachDamage;
using velmor::testing::ReadBytes;
using velmor::testing::WriteBytes;

namespace {

using Bytes = std::vector<std::uint8_t>;
constexpr std::array channels{Channel::Red, Channel::Green, Channel::Blue, Channel::Alpha};

// The coding as the format defines it, a byte at a time.
Bytes CodedByTheRule(std::span<const std::uint8_t> plane) {
    Bytes coded;
    std::uint8_t value = plane[0];
    std::uint8_t count = 1;
    for (const std::uint8_t next : plane.subspan(1)) {
        if (next != value) {
            coded.insert(coded.end(), {value, count});
            value = next;
            count = 1;
        } else if (++count == 255) {
            coded.insert(coded.end(), {value, 254});
            count = 1;
        }
    }
    coded.insert(coded.end(), {value, count});
    return coded;
}

Bytes Coded(std::span<const std::uint8_t> plane) {
    std::vector<CRun> runs;
    EncodeRuns(plane, runs);
    Bytes coded;
    for (const CRun& run : runs)
        coded.insert(coded.end(), {run.value, run.count});
    return coded;
}

void PaintNoise(CCelImg& image, unsigned seed) {
    std::mt19937 random(seed);
    for (const Channel channel : channels)
        for (std::uint8_t& value : image.PlaneOf(channel))
            value = static_cast<std::uint8_t>(random());
    for (std::uint8_t& value : image.LineMask())
        value = static_cast<std::uint8_t>(random());
}

void ExpectSamePixels(const CCelImg& a, const CCelImg& b) {
    EXPECT_EQ(a.GetLoadState(), b.GetLoadState());
    EXPECT_EQ(a.StrideBits(), b.StrideBits());
    EXPECT_TRUE(std::ranges::equal(a.LineMask(), b.LineMask()));
    for (const Channel channel : channels)
        EXPECT_TRUE(std::ranges::equal(a.PlaneOf(channel), b.PlaneOf(channel)));
}

Bytes Header(const std::string& signature, std::initializer_list<std::uint8_t> rest) {
    Bytes bytes(signature.begin(), signature.end());
    bytes.insert(bytes.end(), rest);
    return bytes;
}

class CelFileTest : public ::testing::Test {
protected:
    std::string LoadError(const Bytes& bytes) {
        WriteBytes(file, bytes);
        CCelImg image;
        const CStatus status = image.Load(file);
        EXPECT_EQ(image.GetLoadState() == LoadState::Nothing, !status);
        EXPECT_EQ(image.Width() == 0 && image.FilePath().empty(), !status);
        return status.Message();
    }
    std::string DimensionsError(const Bytes& bytes) {
        WriteBytes(file, bytes);
        CSize size{7, 7};
        const CStatus status = CCelImg::GetDimensions(file, size);
        EXPECT_TRUE(status || size == (CSize{7, 7}));
        return status.Message();
    }
    Bytes SavedBytes(CCelImg& image) {
        EXPECT_TRUE(image.Save());
        return ReadBytes(file);
    }

    CTempFolder folder;
    Path file = folder / "a.bit";
};

} // namespace

TEST(RunLengthTest, CodesAsTheRuleAndBack) {
    std::mt19937 random(7);
    for (std::size_t size = 1; size < 1400; size += 1 + random() % 5) {
        Bytes plane(size);
        std::uint8_t value = 0;
        std::size_t left = 0;
        for (std::uint8_t& byte : plane) {
            if (left == 0) {
                left = 1 + random() % (random() % 2 == 0 ? 3 : 700);
                value = static_cast<std::uint8_t>(random());
            }
            byte = value;
            --left;
        }
        const Bytes coded = Coded(plane);
        ASSERT_EQ(coded, CodedByTheRule(plane));
        std::span<const std::uint8_t> rest = coded;
        Bytes decoded(size, 0xcc);
        ASSERT_TRUE(DecodeRuns(rest, decoded));
        ASSERT_EQ(decoded, plane);
        ASSERT_TRUE(rest.empty());
    }
    EXPECT_EQ(Coded(Bytes(600, 9)), (Bytes{9, 254, 9, 254, 9, 92}));
}

TEST(RunLengthTest, ReadsEmptyRunsAndCutsLongOnes) {
    const Bytes coded{1, 0, 2, 3, 4, 255, 5, 1};
    std::span<const std::uint8_t> rest = coded;
    Bytes plane(20, 0);
    ASSERT_TRUE(DecodeRuns(rest, plane));
    EXPECT_EQ(plane, (Bytes{2, 2, 2, 4, 4, 4, 4, 4, 4, 4, 4, 4, 4, 4, 4, 4, 4, 4, 4, 4}));
    EXPECT_EQ(rest.size(), 2u);
    EXPECT_FALSE(DecodeRuns(rest, plane)); // one pixel is there, 20 are asked
}

TEST(RunLengthTest, ReadsAndSkipsInPiecesOfAnyLength) {
    std::mt19937 random(3);
    for (int round = 0; round < 200; ++round) {
        Bytes coded;
        Bytes values;
        for (std::size_t runs = 1 + random() % 300; runs > 0; --runs) {
            const auto value = static_cast<std::uint8_t>(random());
            const auto count = static_cast<std::uint8_t>(random() % 3 == 0 ? random() : random() % 3);
            coded.insert(coded.end(), {value, count});
            values.insert(values.end(), count, value);
        }
        CRunReader reader(coded);
        std::size_t at = 0;
        while (at < values.size()) {
            const std::size_t length =
                std::min<std::size_t>(random() % (random() % 4 == 0 ? 20000 : 60), values.size() - at);
            if (random() % 2 == 0) {
                ASSERT_TRUE(reader.Skip(length));
            } else {
                Bytes read(length);
                ASSERT_TRUE(reader.Read(read));
                ASSERT_TRUE(std::ranges::equal(read, std::span(values).subspan(at, length)));
            }
            at += length;
        }
        Bytes oneMore(1);
        CRunReader copy = reader;
        ASSERT_FALSE(copy.Read(oneMore));
        ASSERT_FALSE(reader.Skip(1));

        // Skipping ends at the same run as reading, of which empty ones follow.
        CRunReader skipping(coded);
        std::span<const std::uint8_t> rest = coded;
        const std::size_t part = random() % (values.size() + 1);
        Bytes read(part);
        ASSERT_TRUE(DecodeRuns(rest, read));
        ASSERT_TRUE(skipping.Skip(part));
        ASSERT_EQ(skipping.Rest().data(), rest.data());
    }
}

TEST_F(CelFileTest, WritesACelToTheByte) {
    CCelImg cel;
    ASSERT_TRUE(cel.CreateCel(3, 2, file));
    cel.SetLine(0, 0, true);
    cel.SetLine(2, 1, true);
    cel.SetColorAt(2, 1, {10, 20, 30, 40});
    Bytes expected = Header("VELMORBITFILE1.0", {0, 3, 0, 2, 0x80, 0, 0, 0, 0x20, 0, 0, 0});
    for (const std::uint8_t last : Bytes{30, 20, 10, 40})
        expected.insert(expected.end(), {255, 5, last, 1});
    cel.SetModified(true);
    EXPECT_EQ(SavedBytes(cel), expected);
    EXPECT_FALSE(cel.IsModified());
}

TEST_F(CelFileTest, WritesAlphaOfAPictureOnlyBelow253) {
    CCelImg picture;
    ASSERT_TRUE(picture.CreatePicture(2, 2, file));
    picture.SetColorAt(1, 0, {1, 2, 3, 253});
    EXPECT_EQ(SavedBytes(picture),
              Header("VELMORPICFILE1.0", {0, 2, 0, 2, 3, 255, 3, 255, 255, 255, 2, 255, 255, 255, 1, 255, 255}));
    CCelImg loaded;
    ASSERT_TRUE(loaded.Load(file));
    EXPECT_EQ(loaded.ColorAt(1, 0), (CColor{1, 2, 3, 255}));

    picture.SetColorAt(0, 1, {1, 2, 3, 252});
    const Bytes bytes = SavedBytes(picture);
    EXPECT_EQ(bytes[20], 4);
    EXPECT_EQ(Bytes(bytes.end() - 4, bytes.end()), (Bytes{255, 253, 252, 255}));
}

TEST_F(CelFileTest, ReadsBackWhatItWrote) {
    for (const auto& [width, height] : {CSize{2, 2}, CSize{31, 5}, CSize{32, 3}, CSize{33, 70}, CSize{300, 258}}) {
        for (const bool isCel : {true, false}) {
            CCelImg image;
            ASSERT_TRUE(isCel ? image.CreateCel(width, height, file) : image.CreatePicture(width, height, file));
            PaintNoise(image, static_cast<unsigned>(width));
            ASSERT_TRUE(image.Save());
            CCelImg loaded;
            ASSERT_TRUE(loaded.Load(file));
            ExpectSamePixels(loaded, image);
            EXPECT_FALSE(loaded.IsModified());
            EXPECT_EQ(loaded.FilePath(), file);
            CSize size;
            EXPECT_TRUE(CCelImg::GetDimensions(file, size));
            EXPECT_EQ(size, (CSize{width, height}));
        }
    }
}

TEST_F(CelFileTest, CutsGreatSizesToTheirLow16Bits) {
    CCelImg image;
    ASSERT_TRUE(image.CreateCel(65536 + 258, 2, file));
    const Bytes bytes = SavedBytes(image);
    EXPECT_EQ(Bytes(bytes.begin() + 16, bytes.begin() + 20), (Bytes{1, 2, 0, 2}));
}

TEST_F(CelFileTest, SavesAModifiedImageBeforeLoadingOver) {
    CCelImg image;
    ASSERT_TRUE(image.CreateCel(5, 5, file));
    image.SetColorAt(4, 4, {1, 2, 3, 4});
    image.SetModified(true);
    ASSERT_TRUE(image.Load(image.FilePath()));
    EXPECT_EQ(image.ColorAt(4, 4), (CColor{1, 2, 3, 4}));
    EXPECT_EQ(image.FilePath(), file);
}

TEST_F(CelFileTest, NamesWhatIsWrongWithAFile) {
    const std::string cel = "VELMORBITFILE1.0", picture = "VELMORPICFILE1.0";
    const std::string sizes = "Invalid cel dimensions ::  corrupted cel file";
    const std::string cutCel = "Unable to read cel file :: Truncated cel file";
    const std::string cutPicture = "Unable to read picture file :: Truncated picture file";
    EXPECT_EQ(LoadError({}), "Invalid file format!");
    EXPECT_EQ(LoadError(Header("VELMORBITFILE1.1", {0, 2, 0, 2})), "Invalid file format!");
    EXPECT_EQ(LoadError(Header(cel, {0, 2, 0})), cutCel);
    EXPECT_EQ(LoadError(Header(picture, {0, 2, 0})), cutPicture);
    EXPECT_EQ(LoadError(Header(cel, {0, 1, 0, 100})), sizes);
    EXPECT_EQ(LoadError(Header(picture, {0, 100, 0, 1, 3})), sizes);
    EXPECT_EQ(LoadError(Header(cel, {255, 255, 255, 255, 0, 0, 0, 0, 0, 0})), cutCel);
    EXPECT_EQ(LoadError(Header(picture, {255, 255, 255, 255, 3, 0, 0, 0, 0, 0})), cutPicture);
    EXPECT_EQ(LoadError(Header(picture, {0, 2, 0, 2})), cutPicture);
    EXPECT_EQ(LoadError(Header(picture, {0, 2, 0, 2, 5, 0, 0, 0, 0})),
              "Unable to read picture file :: Invalid picture file");
    EXPECT_EQ(DimensionsError({}), "Invalid file format!, in GetDimensions");
    EXPECT_EQ(DimensionsError(Header(picture, {0, 2, 0})), cutCel + ", in GetDimensions");
    EXPECT_EQ(DimensionsError(Header(cel, {0, 1, 0, 2})), sizes + ", in GetDimensions");
    CSize size;
    for (const Path& unreadable : {folder / "none.bit", folder.Path()}) {
        EXPECT_EQ(CCelImg().Load(unreadable).Message(), "Unable to open cel file for reading");
        EXPECT_EQ(CCelImg::GetDimensions(unreadable, size).Message(),
                  "Unable to open cel file for reading, in GetDimensions");
    }
}

TEST_F(CelFileTest, NamesWhatStopsASave) {
    CCelImg image;
    EXPECT_EQ(image.Save().Message(), "Internal Error : nothing loaded in Save");
    ASSERT_TRUE(image.CreatePicture(2, 2, folder / "none" / "a.rgba"));
    image.SetModified(true);
    EXPECT_EQ(image.SaveCel().Message(), "Internal Error : no cel image loaded in SaveCel");
    EXPECT_EQ(image.Save().Message(), "Problem opening file for writing");
    EXPECT_TRUE(image.IsModified());
    ASSERT_TRUE(image.CreateCel(2, 2, folder / "a.bit"));
    EXPECT_EQ(image.SavePicture().Message(), "Internal Error : no picture image loaded in SavePicture");
}

TEST_F(CelFileTest, SurvivesDamagedFiles) {
    for (const bool isCel : {true, false}) {
        CCelImg image;
        ASSERT_TRUE(isCel ? image.CreateCel(9, 7, file) : image.CreatePicture(9, 7, file));
        PaintNoise(image, 3);
        const Bytes good = SavedBytes(image);
        ForEachDamage(good, [&](const Bytes& bad) {
            const std::string error = LoadError(bad);
            EXPECT_TRUE(bad.size() == good.size() || !error.empty());
            DimensionsError(bad);
        });
    }
}
