#include "image/paint/Fill.h"

#include "RandomImages.h"

#include <deque>
#include <functional>
#include <gtest/gtest.h>
#include <vector>

using namespace velmor;

namespace {

using Plot = std::function<void(int x, int y)>;

/// The seed fill pixel by pixel, as the judge of the fast one.
class CPlainFill {
public:
    explicit CPlainFill(const CCelImg& cel)
        : m_cel(cel), m_visited(static_cast<std::size_t>(cel.Width()) * static_cast<std::size_t>(cel.Height())) {}

    bool HasOverflown() const { return m_hasOverflown; }

    void Run(int seedX, int seedY, const Plot& plot) {
        if (!IsFillable(seedX, seedY))
            return;
        Push(seedY, seedX, seedX, 1);
        Push(seedY + 1, seedX, seedX, -1);
        while (!m_stack.empty()) {
            const CEntry entry = m_stack.back();
            m_stack.pop_back();
            Follow(entry.y + entry.direction, entry.left, entry.right, entry.direction, plot);
        }
    }

private:
    struct CEntry {
        int y, left, right, direction;
    };

    bool IsFillable(int x, int y) const {
        return x >= 0 && y >= 0 && x < m_cel.Width() && y < m_cel.Height() && !m_visited[m_cel.IndexOf(x, y)] &&
               !m_cel.IsLine(x, y);
    }
    void Push(int y, int left, int right, int direction) {
        if (y + direction < 0 || y + direction >= m_cel.Height())
            return;
        m_hasOverflown |= m_stack.size() == 50000;
        if (m_stack.size() < 50000)
            m_stack.push_back({y, left, right, direction});
    }
    void Visit(int x, int y, const Plot& plot) {
        m_visited[m_cel.IndexOf(x, y)] = true;
        plot(x, y);
    }
    void Follow(int y, int left, int right, int direction, const Plot& plot) {
        int x = left;
        for (; IsFillable(x, y); --x)
            Visit(x, y, plot);
        int start = x + 1;
        bool isInRun = x < left;
        if (start < left)
            Push(y, start, left - 1, -direction);
        x = left + 1;
        do {
            if (isInRun) {
                for (; IsFillable(x, y); ++x)
                    Visit(x, y, plot);
                Push(y, start, x - 1, direction);
                if (x > right + 1)
                    Push(y, right + 1, x - 1, -direction);
            }
            while (x <= right && !IsFillable(x, y))
                ++x;
            start = x;
            isInRun = true;
        } while (x <= right);
    }

    const CCelImg& m_cel;
    std::vector<bool> m_visited;
    std::vector<CEntry> m_stack;
    bool m_hasOverflown = false;
};

/// All pixels that can be reached from a seed by single steps; nothing bounds its memory.
void FloodFromSeed(const CCelImg& cel, int seedX, int seedY, const Plot& plot) {
    std::vector<bool> seen(static_cast<std::size_t>(cel.Width()) * static_cast<std::size_t>(cel.Height()));
    std::deque<CPoint> queue;
    const auto visit = [&](int x, int y) {
        if (x < 0 || y < 0 || x >= cel.Width() || y >= cel.Height() || cel.IsLine(x, y) || seen[cel.IndexOf(x, y)])
            return;
        seen[cel.IndexOf(x, y)] = true;
        queue.push_back({x, y});
        plot(x, y);
    };
    visit(seedX, seedY);
    for (; !queue.empty(); queue.pop_front()) {
        const CPoint at = queue.front();
        visit(at.x + 1, at.y);
        visit(at.x - 1, at.y);
        visit(at.x, at.y + 1);
        visit(at.x, at.y - 1);
    }
}

/// A cel of random lines, ragged ones now and then.
CCelImg RandomDrawing(std::mt19937& random, int largestSide) {
    CCelImg cel = RandomCel(random, RandomBetween(random, 2, largestSide), RandomBetween(random, 2, largestSide));
    for (int i = RandomBetween(random, 0, 12); i > 0; --i)
        DrawRandomLine(cel, random);
    Sprinkle(cel, random, RandomBetween(random, 0, 1) * RandomBetween(random, 1, 60));
    return cel;
}

/// Open rows between rows of random holes: each open row leaves hundreds of segments waiting.
CCelImg RaggedCel(std::mt19937& random, int width, int height) {
    CCelImg cel = RandomCel(random, width, height);
    for (int y = 1; y < height; y += 2)
        for (int x = 0; x < width; ++x)
            if (RandomBetween(random, 0, 9) < 5)
                cel.SetLine(x, y, true);
    return cel;
}

const CColor paint{10, 20, 30, 40};

void ExpectSameFill(const CCelImg& before, int x, int y) {
    CCelImg filled = before;
    CCelImg expected = before;
    CCelImg reached = before;
    CPlainFill judge(before);
    CRect changed;
    judge.Run(x, y, [&](int atX, int atY) {
        expected.SetColorAt(atX, atY, paint);
        changed = Union(changed, {atX, atY, atX + 1, atY + 1});
        expected.SetModified(true);
    });
    const CPaintResult result = Fill(filled, x, y, paint);
    EXPECT_TRUE(result.status);
    EXPECT_EQ(result.changed, changed);
    EXPECT_TRUE(AreSame(filled, expected));
    if (!judge.HasOverflown()) {
        FloodFromSeed(before, x, y, [&](int atX, int atY) { reached.SetColorAt(atX, atY, paint); });
        EXPECT_TRUE(Differences(filled, reached).IsEmpty());
    }
}

} // namespace

TEST(FillTest, CoversTheAreaAroundTheSeed) {
    std::mt19937 random(1);
    for (int i = 0; i < 400; ++i) {
        const CCelImg cel = RandomDrawing(random, 150);
        ExpectSameFill(cel, RandomBetween(random, -1, cel.Width()), RandomBetween(random, -1, cel.Height()));
    }
}

TEST(FillTest, LeavesTheSamePartsOutWhenItsStackOverflows) {
    std::mt19937 random(2);
    const CCelImg cel = RaggedCel(random, 2500, 400);
    CPlainFill judge(cel);
    judge.Run(1200, 0, [](int, int) {});
    ASSERT_TRUE(judge.HasOverflown());
    ExpectSameFill(cel, 1200, 0);
}

TEST(FillTest, ADiagonalGapHoldsAndAStraightOneLeaks) {
    CCelImg cel;
    ASSERT_TRUE(cel.CreateCel(9, 9, "a.bit"));
    for (int i = 0; i < 9; ++i)
        cel.SetLine(i, i, true);
    CCelImg leaking = cel;
    EXPECT_EQ(Fill(cel, 8, 0, paint).changed, (CRect{1, 0, 9, 8}));
    EXPECT_EQ(cel.ColorAt(0, 1), (CColor{255, 255, 255, 255}));
    EXPECT_EQ(cel.ColorAt(4, 4), (CColor{255, 255, 255, 255}));

    leaking.SetLine(4, 4, false);
    EXPECT_EQ(Fill(leaking, 8, 0, paint).changed, (CRect{0, 0, 9, 9}));
    EXPECT_EQ(leaking.ColorAt(0, 1), paint);
}

TEST(FillTest, AnImageTooLargeForSixteenBitsStaysAsItIs) {
    for (const CSize size : {CSize{32768, 2}, CSize{2, 40000}}) {
        CCelImg cel;
        ASSERT_TRUE(cel.CreateCel(size.width, size.height, "a.bit"));
        const CCelImg before = cel;
        EXPECT_TRUE(Fill(cel, 0, 0, paint).changed.IsEmpty());
        EXPECT_TRUE(FillGradient(cel, 0, 0, paint, 1, 1, paint).changed.IsEmpty());
        EXPECT_TRUE(FillBox(cel, 0, size.width, 0, size.height, paint).changed.IsEmpty());
        EXPECT_TRUE(AreSame(cel, before));
    }
    CCelImg largest;
    ASSERT_TRUE(largest.CreateCel(2, 32767, "a.bit"));
    EXPECT_EQ(Fill(largest, 1, 32766, paint).changed, (CRect{0, 0, 2, 32767}));
}

TEST(FillTest, GradientRunsFromThePressToTheRelease) {
    std::mt19937 random(3);
    for (int i = 0; i < 150; ++i) {
        CCelImg cel = RandomDrawing(random, 120);
        const int x0 = RandomBetween(random, 0, cel.Width() - 1), y0 = RandomBetween(random, 0, cel.Height() - 1);
        const int x1 = RandomBetween(random, -50, 150), y1 = i % 3 == 0 ? y0 : RandomBetween(random, -50, 150);
        const CColor color1 = RandomColor(random), color2 = i % 4 == 0 ? color1 : RandomColor(random);
        const bool isPoint = x0 == x1 && y0 == y1;
        CCelImg expected = cel;
        CPlainFill(cel).Run(x0, y0, [&](int x, int y) {
            const int projected = (x0 - x1) * x0 + (y0 - y1) * y0 - (x0 - x1) * x - (y0 - y1) * y;
            const int squaredLength = (x0 - x1) * (x0 - x1) + (y0 - y1) * (y0 - y1);
            const double t = isPoint ? 1.0 : static_cast<double>(projected) / squaredLength;
            const double weight1 = t <= 0 ? 0 : t >= 1 ? 1 : t;
            const double weight2 = t <= 0 ? 1 : t >= 1 ? 0 : 1 - t;
            const auto mix = [&](int c1, int c2) { return static_cast<std::uint8_t>(c1 * weight1 + c2 * weight2); };
            expected.SetColorAt(x, y,
                                {mix(color1.blue, color2.blue), mix(color1.green, color2.green),
                                 mix(color1.red, color2.red), mix(color1.alpha, color2.alpha)});
            expected.SetModified(true);
        });
        EXPECT_TRUE(FillGradient(cel, x0, y0, color1, x1, y1, color2).status);
        ASSERT_TRUE(AreSame(cel, expected)) << i;
    }
    CCelImg cel = RandomCel(random, 20, 10);
    static_cast<void>(FillGradient(cel, 3, 5, {0, 0, 0, 0}, 13, 5, {200, 100, 50, 255}));
    EXPECT_EQ(cel.ColorAt(0, 9), (CColor{200, 100, 50, 255}));
    EXPECT_EQ(cel.ColorAt(8, 0), (CColor{100, 50, 25, 127}));
    EXPECT_EQ(cel.ColorAt(13, 2), (CColor{0, 0, 0, 0}));
}

TEST(FillTest, BoxFillsWhatLiesWhollyInside) {
    std::mt19937 random(4);
    for (int i = 0; i < 300; ++i) {
        CCelImg cel = i == 0 ? RaggedCel(random, 1500, 300) : RandomDrawing(random, 150);
        const CCelImg before = cel;
        int x0 = RandomBetween(random, -20, cel.Width()), x1 = RandomBetween(random, x0 - 2, cel.Width() + 9);
        int y0 = RandomBetween(random, -20, cel.Height()), y1 = RandomBetween(random, y0 - 2, cel.Height() + 9);
        const CPaintResult result = FillBox(cel, x0, x1, y0, y1, paint);

        CCelImg expected = before;
        CPlainFill judge(before);
        x0 = std::max(x0, 0), y0 = std::max(y0, 0);
        x1 = x1 > before.Width() ? before.Width() - 1 : x1;
        y1 = y1 > before.Height() ? before.Height() - 1 : y1;
        const auto mark = [](int, int) {};
        CRect changed;
        if (x1 > x0 && y1 > y0) {
            for (int y : {y0, y1})
                for (int x = x0; x <= x1; ++x)
                    judge.Run(x, y, mark);
            for (int x : {x0, x1})
                for (int y = y0; y <= y1; ++y)
                    judge.Run(x, y, mark);
            for (int y = y0; y <= y1; ++y)
                for (int x = x0; x <= x1; ++x)
                    judge.Run(x, y, [&](int atX, int atY) {
                        expected.SetColorAt(atX, atY, paint);
                        changed = Union(changed, {atX, atY, atX + 1, atY + 1});
                    });
            expected.SetModified(true);
        }
        EXPECT_EQ(result.changed, changed);
        ASSERT_TRUE(AreSame(cel, expected)) << i;
    }
}

TEST(FillTest, NeedsACel) {
    CCelImg nothing;
    EXPECT_EQ(Fill(nothing, 0, 0, paint).status.Message(), "Internal Error : cel is not loaded in Fill");
    CCelImg picture;
    ASSERT_TRUE(picture.CreatePicture(4, 4, "a.rgba"));
    EXPECT_EQ(FillGradient(picture, 0, 0, paint, 1, 1, paint).status.Message(),
              "Internal Error : cel is not loaded in FillGradient");
    EXPECT_EQ(FillBox(picture, 0, 3, 0, 3, paint).status.Message(),
              "Internal Error : cel is not loaded in FillBox");
    EXPECT_FALSE(picture.IsModified());
}
