#include "image/select/PieceBytes.h"
#include "image/select/PieceTransform.h"

#include "RandomImages.h"

#include <cmath>
#include <gtest/gtest.h>
#include <optional>
#include <set>

using namespace velmor;

namespace {

constexpr CColor paper{255, 255, 255, 255};
constexpr CSize size{40, 31};

CCelImg RandomImage(std::mt19937& random, bool isPicture) {
    if (isPicture)
        return RandomPicture(random, size.width, size.height);
    CCelImg cel = RandomCel(random, size.width, size.height);
    Sprinkle(cel, random, 30);
    return cel;
}

CSelectionMask RandomMask(std::mt19937& random) {
    CSelectionMask mask(size);
    const int right = RandomBetween(random, 1, size.width), top = RandomBetween(random, 1, size.height);
    for (int y = RandomBetween(random, 0, 9); y < top; ++y)
        for (int x = RandomBetween(random, 0, 9); x < right; ++x)
            if (RandomBetween(random, 0, 3) > 0)
                mask.AddRun(y, x, x + 1);
    mask.Measure();
    return mask;
}

bool IsLifted(const CCelImg& image, const CSelectionMask& mask, SelectWhat what, int x, int y) {
    return mask.Has(x, y) && (image.GetLoadState() == LoadState::Picture || what == SelectWhat::Both ||
                              image.IsLine(x, y) == (what == SelectWhat::Line));
}

/// What stays behind where lines alone are taken: paint grows over them from all sides, a pixel at a time.
void PlainClose(CCelImg& image, std::set<std::pair<int, int>> open) {
    while (!open.empty()) {
        std::vector<std::tuple<int, int, CColor>> closed;
        for (const auto& [x, y] : open)
            for (const auto& [dx, dy] : {std::pair(-1, 0), {1, 0}, {0, -1}, {0, 1}}) {
                const int besideX = x + dx, besideY = y + dy;
                if (besideX < 0 || besideY < 0 || besideX >= size.width || besideY >= size.height ||
                    open.contains({besideX, besideY}) || image.IsLine(besideX, besideY))
                    continue;
                closed.emplace_back(x, y, image.ColorAt(besideX, besideY));
                break;
            }
        for (const auto& [x, y, color] : closed) {
            image.SetColorAt(x, y, color);
            open.erase({x, y});
        }
        if (closed.empty()) {
            for (const auto& [x, y] : open)
                image.SetColorAt(x, y, paper);
            return;
        }
    }
}

void PlainTakeOut(CCelImg& image, const CSelectionMask& mask, SelectWhat what) {
    const CCelImg before = image;
    std::set<std::pair<int, int>> open;
    for (int y = 0; y < size.height; ++y)
        for (int x = 0; x < size.width; ++x) {
            if (!IsLifted(before, mask, what, x, y))
                continue;
            CColor color = before.ColorAt(x, y);
            if (image.GetLoadState() == LoadState::Picture) {
                color.alpha = 0;
                image.SetColorAt(x, y, color);
                continue;
            }
            image.SetLine(x, y, false);
            image.SetColorAt(x, y, paper);
            if (what == SelectWhat::Line)
                open.insert({x, y});
        }
    PlainClose(image, open);
}

CColor PlainOver(CColor upper, CColor lower) {
    const double a = upper.alpha / 255.0, b = lower.alpha / 255.0 * (1 - a);
    if (a + b == 0)
        return upper.alpha == 0 ? lower : upper;
    const auto mix = [&](int u, int l) {
        return static_cast<std::uint8_t>(std::floor((u * a + l * b) / (a + b) + 0.5 + 1e-9));
    };
    return {mix(upper.blue, lower.blue), mix(upper.green, lower.green), mix(upper.red, lower.red),
            static_cast<std::uint8_t>(std::floor((a + b) * 255 + 0.5 + 1e-9))};
}

void PlainDrop(CCelImg& image, const CPiece& piece, CPoint move) {
    const bool blends = image.GetLoadState() == LoadState::Picture || piece.isPicture;
    for (int fromY = 0; fromY < piece.Height(); ++fromY)
        for (int fromX = 0; fromX < piece.Width(); ++fromX) {
            const int x = piece.place.x + move.x + fromX, y = piece.place.y + move.y + fromY;
            const PiecePixel pixel = piece.At(fromX, fromY);
            if (x < 0 || y < 0 || x >= size.width || y >= size.height || pixel == PiecePixel::Nothing)
                continue;
            const CColor color = piece.ColorAt(fromX, fromY);
            const bool covers = pixel == PiecePixel::Line || (piece.what == SelectWhat::Both && !blends);
            if (blends ? image.IsLine(x, y) : !covers && image.IsLine(x, y))
                continue;
            image.SetColorAt(x, y, blends ? PlainOver(color, image.ColorAt(x, y)) : color);
            if (!blends)
                image.SetLine(x, y, pixel == PiecePixel::Line);
        }
}

bool AreSamePixels(const CCelImg& a, const CCelImg& b) {
    return Differences(a, b).IsEmpty();
}

bool AreSamePieces(const CPiece& a, const CPiece& b) {
    if (a.place != b.place || a.pixels != b.pixels || a.what != b.what || a.isPicture != b.isPicture)
        return false;
    for (int y = 0; y < a.Height(); ++y)
        for (int x = 0; x < a.Width(); ++x)
            if (a.At(x, y) != PiecePixel::Nothing && a.ColorAt(x, y) != b.ColorAt(x, y))
                return false;
    return true;
}

/// How many parts the lines of a piece fall into; corners hold together.
int LineParts(const CPiece& piece) {
    std::set<std::pair<int, int>> lines;
    for (int y = 0; y < piece.Height(); ++y)
        for (int x = 0; x < piece.Width(); ++x)
            if (piece.At(x, y) == PiecePixel::Line)
                lines.insert({x, y});
    int parts = 0;
    for (; !lines.empty(); ++parts) {
        std::vector<std::pair<int, int>> open{*lines.begin()};
        while (!open.empty()) {
            const auto [x, y] = open.back();
            open.pop_back();
            if (lines.erase({x, y}) > 0)
                for (int dy = -1; dy <= 1; ++dy)
                    for (int dx = -1; dx <= 1; ++dx)
                        open.emplace_back(x + dx, y + dy);
        }
    }
    return parts;
}

/// A thin line that wanders through corners and along sides.
CPiece ThinLine(std::mt19937& random) {
    CPiece piece({5, 7, 5 + 60, 7 + 45});
    int x = 30, y = 20;
    for (int step = 0; step < 250; ++step) {
        piece.Set(x, y, PiecePixel::Line, {0, 0, 0, 255});
        x = std::clamp(x + RandomBetween(random, -1, 1), 0, 59);
        y = std::clamp(y + RandomBetween(random, -1, 1), 0, 44);
    }
    return piece;
}

} // namespace

TEST(Piece, IsTakenOutAndPutDownAsThePlainRulesSay) {
    std::mt19937 random(12);
    for (int round = 0; round < 300; ++round) {
        const auto what = static_cast<SelectWhat>(RandomBetween(random, 0, 2));
        CCelImg image = RandomImage(random, round % 4 == 0);
        const CCelImg before = image;
        const CSelectionMask mask = RandomMask(random);
        const CPiece piece = LiftedFrom(image, mask, what);
        const CSelectionMask lifted = MaskOf(piece, size);
        for (int y = 0; y < size.height; ++y)
            for (int x = 0; x < size.width; ++x)
                ASSERT_EQ(lifted.Has(x, y), IsLifted(before, mask, what, x, y));
        EXPECT_EQ(lifted.Bounds(), piece.place) << "as small as it can be";

        CCelImg expected = image;
        PlainTakeOut(expected, mask, what);
        const CPaintResult out = TakeOut(image, piece);
        ASSERT_TRUE(AreSamePixels(image, expected)) << round;
        EXPECT_EQ(Intersection(out.changed, Differences(before, image)), Differences(before, image));

        CCelImg back = image;
        static_cast<void>(Drop(back, piece));
        if (what != SelectWhat::Paint || before.GetLoadState() == LoadState::Picture) {
            EXPECT_TRUE(AreSamePixels(back, before)) << "where it came from it is as before";
        }

        CCelImg target = RandomImage(random, round % 3 == 0);
        const CPoint move{RandomBetween(random, -30, 30), RandomBetween(random, -30, 30)};
        CCelImg plain = target;
        PlainDrop(plain, piece, move);
        const CCelImg untouched = target;
        const CPaintResult dropped = Drop(target, piece, move);
        ASSERT_TRUE(AreSamePixels(target, plain)) << round;
        EXPECT_EQ(Intersection(dropped.changed, Differences(untouched, target)), Differences(untouched, target));
    }
}

TEST(Piece, TurnsByQuartersAndMirrorsExactly) {
    std::mt19937 random(2);
    for (int round = 0; round < 60; ++round) {
        const CCelImg image = RandomImage(random, round % 3 == 0);
        const CPiece piece = LiftedFrom(image, RandomMask(random), SelectWhat::Both);
        if (piece.IsEmpty())
            continue;
        const int width = piece.Width(), height = piece.Height();
        const CPoint move{RandomBetween(random, -9, 9), RandomBetween(random, -9, 9)};
        const double mirror = RandomBetween(random, 0, 1) == 0 ? -1 : 1;
        for (const int quarters : {0, 1, 2, 3, 4, -1}) {
            const CPiece placed = Placed(piece, {move, quarters * 90.0, mirror, 1});
            const bool isOnSide = quarters % 2 != 0;
            ASSERT_EQ(placed.Width(), isOnSide ? height : width);
            ASSERT_EQ(placed.Height(), isOnSide ? width : height);
            EXPECT_LE(std::abs(placed.place.x + placed.place.endX - piece.place.x - piece.place.endX - 2 * move.x),
                      1);
            for (int y = 0; y < height; ++y)
                for (int x = 0; x < width; ++x) {
                    CPoint to{mirror < 0 ? width - 1 - x : x, y};
                    int toWidth = width, toHeight = height;
                    for (int turn = 0; turn < (quarters + 4) % 4; ++turn) {
                        to = {toHeight - 1 - to.y, to.x};
                        std::swap(toWidth, toHeight);
                    }
                    ASSERT_EQ(placed.At(to.x, to.y), piece.At(x, y));
                    if (piece.At(x, y) != PiecePixel::Nothing) {
                        ASSERT_EQ(placed.ColorAt(to.x, to.y), piece.ColorAt(x, y));
                    }
                }
        }
        EXPECT_TRUE(AreSamePieces(Placed(piece, {{0, 0}, 360, 1, 1}), piece));
    }
}

TEST(Piece, LinesHangTogetherHoweverTheyAreTurnedAndScaled) {
    std::mt19937 random(8);
    for (int round = 0; round < 150; ++round) {
        const CPiece piece = ThinLine(random);
        ASSERT_EQ(LineParts(piece), 1);
        const CPiecePlacement placement{{3, -4},
                                        RandomBetween(random, 0, 3600) / 10.0,
                                        RandomBetween(random, 10, 250) / 100.0,
                                        RandomBetween(random, -250, -10) / 100.0};
        ASSERT_TRUE(CanPlace(piece, placement, {200, 200}));
        const CPiece placed = Placed(piece, placement);
        EXPECT_EQ(LineParts(placed), 1) << placement.degrees << ' ' << placement.scaleX << ' ' << placement.scaleY;
    }
}

TEST(Piece, KeepsItsColorsWhenItIsTurnedAndBlendsThoseOfPictures) {
    std::mt19937 random(21);
    CPiece piece({0, 0, 20, 14});
    const CColor red{0, 0, 255, 255}, blue{255, 0, 0, 255};
    for (int y = 0; y < 14; ++y)
        for (int x = 0; x < 20; ++x)
            piece.Set(x, y, PiecePixel::Paint, x < 10 ? red : blue);
    int mixed = 0, half = 0;
    for (const bool isPicture : {false, true}) {
        piece.isPicture = isPicture;
        const CPiece placed = Placed(piece, {{}, 33, 1.5, 1.2});
        for (int y = 0; y < placed.Height(); ++y)
            for (int x = 0; x < placed.Width(); ++x) {
                if (placed.At(x, y) == PiecePixel::Nothing)
                    continue;
                const CColor color = placed.ColorAt(x, y);
                if (!isPicture) {
                    ASSERT_TRUE(color == red || color == blue);
                }
                ASSERT_EQ(color.green, 0) << "what is beside it adds no color";
                mixed += color.red > 0 && color.blue > 0 ? 1 : 0;
                half += color.alpha < 255 ? 1 : 0;
            }
    }
    EXPECT_GT(mixed, 10);
    EXPECT_GT(half, 40);
    // A big picture does not grow out of bounds, and nothing vanishes.
    EXPECT_FALSE(CanPlace(piece, {{}, 0, 100, 100}, size));
    EXPECT_FALSE(CanPlace(piece, {{}, 0, 0.01, 1}, size));
    EXPECT_FALSE(CanPlace(piece, {{}, std::nan(""), 1, 1}, size));
    EXPECT_FALSE(CanPlace(piece, {{}, 45, 1e200, 1e200}, size));
}

TEST(Piece, GoesThroughTheClipboardAsItIs) {
    std::mt19937 random(31);
    for (int round = 0; round < 60; ++round) {
        const CCelImg image = RandomImage(random, round % 3 == 0);
        const CPiece piece = LiftedFrom(image, RandomMask(random), static_cast<SelectWhat>(round % 3));
        if (piece.IsEmpty())
            continue;
        const std::optional<CPiece> read = ReadPiece(BytesOf(piece));
        ASSERT_TRUE(read);
        EXPECT_TRUE(AreSamePieces(*read, piece));
        const CPiece pixels =
            PieceOfPixels(PixelsOf(piece), {piece.Width(), piece.Height()}, {piece.place.x, piece.place.y});
        for (int y = 0; y < piece.Height(); ++y)
            for (int x = 0; x < piece.Width(); ++x) {
                const bool isSeen = piece.At(x, y) != PiecePixel::Nothing && piece.ColorAt(x, y).alpha > 0;
                ASSERT_EQ(pixels.At(x, y) != PiecePixel::Nothing, isSeen);
                if (isSeen) {
                    ASSERT_EQ(pixels.ColorAt(x, y), piece.ColorAt(x, y));
                }
            }
    }
}

TEST(Piece, BelievesNoBytes) {
    std::mt19937 random(17);
    CCelImg cel = RandomImage(random, false);
    CSelectionMask mask(size);
    mask.SelectAll();
    const std::vector<std::uint8_t> good = BytesOf(LiftedFrom(cel, mask, SelectWhat::Both));
    ASSERT_TRUE(ReadPiece(good));
    for (std::size_t length = 0; length < good.size(); length += length < 100 ? 1 : 97)
        EXPECT_FALSE(ReadPiece(std::span(good).first(length))) << length;
    std::vector<std::uint8_t> longer = good;
    longer.push_back(1);
    EXPECT_FALSE(ReadPiece(longer));
    for (int round = 0; round < 3000; ++round) {
        std::vector<std::uint8_t> bad = good;
        for (int change = RandomBetween(random, 1, 3); change > 0; --change)
            bad[static_cast<std::size_t>(
                RandomBetween(random, 14, change % 2 == 0 ? 60 : static_cast<int>(bad.size()) - 1))] =
                static_cast<std::uint8_t>(RandomBetween(random, 0, 255));
        if (const std::optional<CPiece> piece = ReadPiece(bad)) {
            CCelImg target = cel;
            static_cast<void>(Drop(target, *piece));
        }
    }
    std::vector<std::uint8_t> huge(good.begin(), good.begin() + 38);
    for (const std::size_t at : {30U, 34U}) // width and height
        huge[at] = 0xff, huge[at + 1] = 0x7f, huge[at + 2] = huge[at + 3] = 0;
    huge.resize(4000);
    EXPECT_FALSE(ReadPiece(huge));
    EXPECT_TRUE(PieceOfPixels(good, {40000, 1}, {}).IsEmpty());
    EXPECT_TRUE(PieceOfPixels(good, {10, 10}, {}).IsEmpty());
}
