#include "image/paint/ImageChange.h"
#include "image/paint/PackedBytes.h"
#include "platform/files/Archive.h"

#include <gtest/gtest.h>
#include <random>

using namespace velmor;

namespace {

CCelImg Blank(bool asCel, int width = 150, int height = 100) {
    CCelImg image;
    EXPECT_TRUE(asCel ? image.CreateCel(width, height, "a.bit") : image.CreatePicture(width, height, "a.rgba"));
    return image;
}

// Paints a rectangle at random and gives what was made.
CImageChange PaintAtRandom(CCelImg& image, std::mt19937& random) {
    const int x = static_cast<int>(random() % 170) - 10;
    const int y = static_cast<int>(random() % 120) - 10;
    const CRect rect =
        Intersection({x, y, x + static_cast<int>(random() % 60), y + static_cast<int>(random() % 60)},
                     {0, 0, image.Width(), image.Height()});
    CKeptTiles kept;
    kept.Keep(image, rect);
    const CColor color{static_cast<std::uint8_t>(random()), 7, 200, static_cast<std::uint8_t>(random())};
    const bool line = random() % 2 == 0;
    for (int row = rect.y; row < rect.endY; ++row)
        for (int column = rect.x; column < rect.endX; ++column) {
            image.SetColorAt(column, row, color);
            if (image.GetLoadState() == LoadState::Cel)
                image.SetLine(column, row, line);
        }
    return {kept, image};
}

bool AreSame(const CCelImg& a, const CCelImg& b) {
    bool same = std::ranges::equal(a.LineMask(), b.LineMask());
    for (const Channel channel : {Channel::Red, Channel::Green, Channel::Blue, Channel::Alpha})
        same = same && std::ranges::equal(a.PlaneOf(channel), b.PlaneOf(channel));
    return same;
}

std::vector<std::uint8_t> Kept(const CImageChange& change) {
    CArchiveWriter writer;
    change.Write(writer);
    return {writer.Bytes().begin(), writer.Bytes().end()};
}

} // namespace

TEST(CImageChangeTest, LeadsThereAndBack) {
    std::mt19937 random(3);
    for (const bool asCel : {true, false}) {
        CCelImg image = Blank(asCel);
        std::vector<CCelImg> states{image};
        std::vector<CImageChange> changes;
        for (int stroke = 0; stroke < 40; ++stroke) {
            const std::vector<std::uint8_t> bytes = Kept(PaintAtRandom(image, random));
            CArchiveReader reader(bytes);
            changes.push_back(CImageChange::Read(reader).value());
            states.push_back(image);
        }
        for (std::size_t step = changes.size(); step-- > 0;) {
            ASSERT_TRUE(changes[step].Apply(image, ChangeDirection::Back));
            ASSERT_TRUE(AreSame(image, states[step])) << step;
        }
        for (std::size_t step = 0; step < changes.size(); ++step) {
            const std::optional<CRect> changed = changes[step].Apply(image, ChangeDirection::Forward);
            ASSERT_TRUE(changed && *changed == changes[step].Bounds());
            ASSERT_TRUE(AreSame(image, states[step + 1])) << step;
        }
    }
}

TEST(CImageChangeTest, TwoBecomeOne) {
    std::mt19937 random(5);
    CCelImg image = Blank(true);
    const CCelImg first = image;
    CImageChange all;
    for (int stroke = 0; stroke < 30; ++stroke)
        if (CImageChange next = PaintAtRandom(image, random); stroke == 0)
            all = std::move(next);
        else
            all.Add(next);
    const CCelImg last = image;
    ASSERT_TRUE(all.Apply(image, ChangeDirection::Back));
    EXPECT_TRUE(AreSame(image, first));
    ASSERT_TRUE(all.Apply(image, ChangeDirection::Forward));
    EXPECT_TRUE(AreSame(image, last));
}

TEST(CImageChangeTest, WorkOfOthersIsNotPaintedOver) {
    std::mt19937 random(6);
    CCelImg image = Blank(true);
    CImageChange change;
    while (change.IsEmpty())
        change = PaintAtRandom(image, random);
    const CRect bounds = change.Bounds();
    CCelImg other = image;
    other.SetColorAt(bounds.x, bounds.y, {1, 2, 3, 4});
    const CCelImg before = other;
    EXPECT_FALSE(change.Apply(other, ChangeDirection::Back));
    EXPECT_FALSE(change.Apply(image, ChangeDirection::Forward)); // it has been made already
    EXPECT_TRUE(AreSame(other, before));
    CCelImg larger = Blank(true, 151);
    CCelImg picture = Blank(false);
    EXPECT_FALSE(change.Apply(larger, ChangeDirection::Forward));
    EXPECT_FALSE(change.Apply(picture, ChangeDirection::Forward));
}

TEST(CImageChangeTest, SurvivesAnyBytes) {
    std::mt19937 random(7);
    CCelImg image = Blank(true);
    const CCelImg before = image;
    CImageChange change = PaintAtRandom(image, random);
    change.Add(PaintAtRandom(image, random));
    const std::vector<std::uint8_t> good = Kept(change);
    for (int round = 0; round < 2000; ++round) {
        std::vector<std::uint8_t> bytes = good;
        bytes[random() % bytes.size()] = static_cast<std::uint8_t>(random());
        if (round % 3 == 0)
            bytes.resize(random() % bytes.size());
        CArchiveReader reader(bytes);
        CCelImg target = before;
        const std::optional<CImageChange> read = CImageChange::Read(reader);
        // A tile may be gone from the list or stand elsewhere, but one that is changed is changed rightly.
        if (read && read->Apply(target, ChangeDirection::Forward) && read->Bounds() == change.Bounds()) {
            EXPECT_TRUE(AreSame(target, image));
        }
    }
}

TEST(CPackedBytesTest, ComeBack) {
    std::mt19937 random(8);
    for (int round = 0; round < 300; ++round) {
        std::vector<std::uint8_t> bytes(random() % 17000);
        for (std::size_t at = 0; at < bytes.size();) {
            const std::size_t length = std::min<std::size_t>(1 + random() % 300, bytes.size() - at);
            const bool isRun = random() % 2 == 0;
            const auto value = static_cast<std::uint8_t>(random());
            for (std::size_t end = at + length; at < end; ++at)
                bytes[at] = isRun ? value : static_cast<std::uint8_t>(random());
        }
        const std::vector<std::uint8_t> packed = PackBytes(bytes);
        EXPECT_EQ(UnpackBytes(packed, bytes.size()), bytes);
        EXPECT_FALSE(UnpackBytes(packed, bytes.size() + 1));
    }
    EXPECT_LT(PackBytes(std::vector<std::uint8_t>(16384)).size(), 8U);
}
