#include "xsheet/XSheetFile.h"
#include "DamagedFiles.h"
#include "SheetPictures.h"
#include "TempFolder.h"

#include <bit>
#include <cstring>
#include <gtest/gtest.h>

using namespace velmor;
using namespace velmor::testing;

namespace {

using Bytes = std::vector<std::uint8_t>;

const std::string corrupted = "Invalid or corrupted xsheet data file";
constexpr std::size_t frameCountAt = 27, heightAt = 35, widthAt = 39, rateAt = 43, levelCountAt = 47;

// Bytes put together by hand, as the judge of the writer.
class CByteList {
public:
    CByteList& Text(const std::string& text) {
        m_bytes.push_back(static_cast<std::uint8_t>(text.size()));
        m_bytes.insert(m_bytes.end(), text.begin(), text.end());
        return *this;
    }
    CByteList& Int(std::uint32_t value) { return LittleEndian(value, 4); }
    CByteList& Real(double value) { return LittleEndian(std::bit_cast<std::uint64_t>(value), 8); }
    const Bytes& All() const { return m_bytes; }

private:
    CByteList& LittleEndian(std::uint64_t value, int count) {
        for (int i = 0; i < count; ++i)
            m_bytes.push_back(static_cast<std::uint8_t>(value >> 8 * i));
        return *this;
    }
    Bytes m_bytes;
};

CByteList SmallSheet(const std::string& folder, double scaleY) {
    CByteList bytes;
    bytes.Text("VELMORLTXSHEETDATAFILEV1.0").Int(1).Int(0x80332211).Int(480).Int(640).Int(12).Int(1);
    bytes.Real(1.5).Real(-2.5).Real(1.25).Real(0.75); // pan, zoom, rotation
    bytes.Text("Ink").Text(folder).Text("12a").Real(3).Real(4).Real(5).Real(scaleY).Real(7).Real(8).Real(9).Real(
        10);
    return bytes.Int(200).Int(100).Int(2).Int(7).Text("boom").Int(3).Text("");
}

Bytes With(Bytes bytes, std::size_t at, std::int32_t value) {
    std::memcpy(bytes.data() + at, &value, sizeof value);
    return bytes;
}

// Whether the bytes are refused and leave the data as it was.
bool IsRefused(const Bytes& bytes) {
    CScene data;
    data.geometry.frameRate = 99;
    const CScene before = data;
    const CStatus status = DecodeXSheet(bytes, data);
    return !status && status.Message() == corrupted && data == before;
}

} // namespace

TEST(XSheetFile, HoldsEveryFieldInItsPlace) {
    const Bytes file = SmallSheet("walk", 6).All();
    CScene data;
    ASSERT_TRUE(DecodeXSheet(file, data));
    EXPECT_EQ(data.geometry, (CSceneGeometry{640, 480, 12, 0x80332211}));
    EXPECT_EQ(data.camera.At(0), (CCameraFrame{1.5, -2.5, 0.75, 1.25}));
    EXPECT_EQ(data.camera.At(1), CCameraFrame());
    EXPECT_EQ(data.xsheet.LevelName(0), "Ink");
    EXPECT_EQ(data.xsheet.Cell(0, 0), CXSheetCell::FromFile("walk", "12a", {3, 4, 5, 6, 7}, 8, 9, 10, {100, 200}));
    EXPECT_EQ(data.sounds.All(), (std::vector<CSoundPlacement>{{7, "boom"}, {3, ""}}));
    EXPECT_EQ(EncodeXSheet(data), file);
    EXPECT_EQ(EncodeXSheet({}).size(), 10663u);
}

TEST(XSheetFile, KeepsEveryByteOfTextAndNumbers) {
    std::string characters[2];
    for (int c = 0; c < 256; ++c)
        characters[c / 128] += static_cast<char>(c);
    for (const std::uint64_t number : {0x7ff0000000000001u, 0xfff8000000abcdefu, 0x8000000000000000u}) {
        const Bytes file = SmallSheet(characters[number & 1], std::bit_cast<double>(number)).All();
        CScene data;
        ASSERT_TRUE(DecodeXSheet(file, data));
        EXPECT_EQ(EncodeXSheet(data), file);
    }
    CScene data;
    data.xsheet.MutableCell(0, 99) =
        CXSheetCell::FromFile(std::string(255, 'f'), std::string(70000, 'c'), {}, 0, 1, 1, {});
    CScene again;
    ASSERT_TRUE(DecodeXSheet(EncodeXSheet(data), again));
    EXPECT_EQ(again, data);
    // Equal to what an unused place holds, and yet other bytes.
    data = {};
    data.xsheet.MutableCell(0, 3).SetTransform({-0.0, 0, 1, 1, 0});
    data.camera.MutableAt(5).panY = -0.0;
    const Bytes file = EncodeXSheet(data);
    ASSERT_TRUE(DecodeXSheet(file, again));
    EXPECT_EQ(EncodeXSheet(again), file);
}

TEST(XSheetFile, RefusesWhatIsBeyondTheLimits) {
    const Bytes good = EncodeXSheet({});
    const std::size_t soundCountAt = good.size() - 4;
    for (const auto& [at, value] : std::vector<std::pair<std::size_t, std::int32_t>>{{frameCountAt, 0},
                                                                                     {frameCountAt, -1},
                                                                                     {frameCountAt, 2001},
                                                                                     {frameCountAt, 101},
                                                                                     {heightAt, 0},
                                                                                     {heightAt, 32768},
                                                                                     {widthAt, -768},
                                                                                     {widthAt, 32768},
                                                                                     {rateAt, 0},
                                                                                     {rateAt, -25},
                                                                                     {levelCountAt, -1},
                                                                                     {levelCountAt, 2},
                                                                                     {levelCountAt, 0x7fffffff},
                                                                                     {soundCountAt, -1},
                                                                                     {soundCountAt, 1},
                                                                                     {soundCountAt, 2001}})
        EXPECT_TRUE(IsRefused(With(good, at, value))) << at << ": " << value;
    Bytes laterVersion = good;
    ++laterVersion[26];
    EXPECT_TRUE(IsRefused(laterVersion));

    CScene largest;
    largest.xsheet = CXSheet(50, 2000);
    largest.geometry = {32767, 32767, 1, 0};
    largest.sounds.Set(std::vector<CSoundPlacement>(2000, {5, "s"}));
    CScene data;
    EXPECT_TRUE(DecodeXSheet(EncodeXSheet(largest), data));
    EXPECT_EQ(data, largest);
    // One more of each, with all the bytes that it takes.
    CScene tooLarge = largest;
    tooLarge.sounds.Set(std::vector<CSoundPlacement>(2001));
    EXPECT_TRUE(IsRefused(EncodeXSheet(tooLarge)));
    tooLarge.sounds.Clear();
    tooLarge.xsheet = CXSheet(51, 2);
    EXPECT_TRUE(IsRefused(EncodeXSheet(tooLarge)));
    tooLarge.xsheet = CXSheet(0, 2000);
    EXPECT_FALSE(IsRefused(EncodeXSheet(tooLarge)));
}

TEST(XSheetFile, SurvivesDamage) {
    const Bytes good = SmallSheet("walk", 6).All();
    ForEachDamage(good, [&](const Bytes& bytes) {
        if (bytes.size() < good.size()) {
            EXPECT_TRUE(IsRefused(bytes)) << bytes.size();
            return;
        }
        CScene data;
        const CStatus status = DecodeXSheet(bytes, data);
        EXPECT_TRUE(status ? EncodeXSheet(data).size() <= bytes.size() : status.Message() == corrupted);
    });
    Bytes longer = good;
    longer.push_back(1);
    CScene data;
    ASSERT_TRUE(DecodeXSheet(longer, data));
    EXPECT_EQ(EncodeXSheet(data), good);
}

TEST(XSheetFile, SavesAndLoads) {
    const CTempFolder folder;
    CScene data, loaded;
    data.xsheet = SheetOf({"AB.", "CCC"});
    data.sounds.Set({{2, "b"}, {0, "a"}});
    ASSERT_TRUE(SaveXSheet(folder / "s.xsheet", data));
    ASSERT_TRUE(LoadXSheet(folder / "s.xsheet", loaded));
    EXPECT_EQ(loaded, data);
    EXPECT_EQ(LoadXSheet(folder / "none.xsheet", loaded).Message(),
              "Problem opening the xsheet data file for reading");
    EXPECT_EQ(SaveXSheet(folder / "no/s.xsheet", data).Message(),
              "Problem opening the xsheet data file for writing");
    EXPECT_EQ(loaded, data);
}
