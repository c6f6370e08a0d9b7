#include "platform/scanner/ScanAssembler.h"

#include <algorithm>
#include <bit>
#include <gtest/gtest.h>

namespace velmor::testing {
namespace {

using Bytes = std::vector<std::uint8_t>;
constexpr int threshold = 128;

/// The page that a driver's frames make, sent in pieces of a length.
std::optional<CScannedPage> PageOf(ScanMode mode, const std::vector<std::pair<CScanLayout, Bytes>>& frames,
                                   std::size_t piece = 1 << 16) {
    CScanAssembler assembler(mode, threshold);
    for (const auto& [layout, bytes] : frames) {
        if (!assembler.BeginFrame(layout))
            return std::nullopt;
        for (std::size_t at = 0; at < bytes.size(); at += piece)
            assembler.Append(std::span(bytes).subspan(at, std::min(piece, bytes.size() - at)));
    }
    return assembler.Finish();
}

Bytes RowsOf(const std::optional<CScannedPage>& page) {
    return page ? page->rows : Bytes{};
}

} // namespace

TEST(ScanAssemblerTest, EveryFormatBecomesLineArt) {
    // Ten pixels: black, white, and eight that are black but for the last.
    const Bytes expected = {0xbf, 0x80};
    const Bytes grey = {0, 255, 0, 0, 127, 0, 0, 0, 0, 128};
    Bytes wide;
    Bytes color;
    for (const std::uint8_t value : grey) {
        wide.insert(wide.end(), {std::endian::native == std::endian::little ? std::uint8_t{99} : value,
                                 std::endian::native == std::endian::little ? value : std::uint8_t{99}});
        color.insert(color.end(), 3, value);
    }
    using enum ScanFrame;
    EXPECT_EQ(RowsOf(PageOf(ScanMode::LineArt, {{{Gray, 10, 10, 1, 8}, grey}})), expected);
    EXPECT_EQ(RowsOf(PageOf(ScanMode::LineArt, {{{Gray, 20, 10, 1, 16}, wide}})), expected);
    EXPECT_EQ(RowsOf(PageOf(ScanMode::LineArt, {{{Rgb, 30, 10, 1, 8}, color}})), expected);
    // Bits beyond the width are not the page's, padding bytes neither.
    EXPECT_EQ(RowsOf(PageOf(ScanMode::LineArt, {{{Gray, 4, 10, 1, 1}, {0xbf, 0xbf, 0xff, 0xff}}})), expected);
}

TEST(ScanAssemblerTest, EveryFormatBecomesColor) {
    using enum ScanFrame;
    EXPECT_EQ(RowsOf(PageOf(ScanMode::Color, {{{Rgb, 6, 2, 1, 8}, {1, 2, 3, 4, 5, 6}}})),
              (Bytes{3, 2, 1, 6, 5, 4}));
    EXPECT_EQ(RowsOf(PageOf(ScanMode::Color, {{{Gray, 2, 2, 1, 8}, {7, 9}}})), (Bytes{7, 7, 7, 9, 9, 9}));
    EXPECT_EQ(RowsOf(PageOf(ScanMode::Color, {{{Gray, 1, 2, 1, 1}, {0x80}}})), (Bytes{0, 0, 0, 255, 255, 255}));
    // One bit of each colour: eight pixels a byte, a byte for each.
    EXPECT_EQ(RowsOf(PageOf(ScanMode::Color, {{{Rgb, 3, 2, 1, 1}, {0x80, 0x00, 0xc0}}})),
              (Bytes{255, 0, 255, 255, 0, 0}));
    // Three passes, in any order.
    EXPECT_EQ(
        RowsOf(PageOf(ScanMode::Color,
                      {{{Green, 2, 2, 1, 8}, {2, 5}}, {{Blue, 2, 2, 1, 8}, {3, 6}}, {{Red, 2, 2, 1, 8}, {1, 4}}})),
        (Bytes{3, 2, 1, 6, 5, 4}));
}

TEST(ScanAssemblerTest, PiecesOfAnyLengthMakeTheSamePage) {
    Bytes bytes;
    for (int i = 0; i < 7 * 3 * 5; ++i)
        bytes.push_back(static_cast<std::uint8_t>(i * 37));
    const CScanLayout layout{ScanFrame::Rgb, 21, 7, 5, 8};
    const Bytes whole = RowsOf(PageOf(ScanMode::Color, {{layout, bytes}}));
    ASSERT_EQ(whole.size(), bytes.size());
    for (const std::size_t piece : {1u, 2u, 20u, 21u, 22u, 50u})
        EXPECT_EQ(RowsOf(PageOf(ScanMode::Color, {{layout, bytes}}, piece)), whole) << piece;
}

TEST(ScanAssemblerTest, APageIsAsLongAsItsWholeLines) {
    const Bytes bytes(10 * 3 + 7, 50);
    const auto shortPage = PageOf(ScanMode::LineArt, {{{ScanFrame::Gray, 10, 10, 8, 8}, bytes}});
    ASSERT_TRUE(shortPage);
    EXPECT_EQ(shortPage->height, 3) << "data end early";
    EXPECT_EQ(shortPage->rows.size(), 6U);
    const auto unknown = PageOf(ScanMode::LineArt, {{{ScanFrame::Gray, 10, 10, -1, 8}, bytes}});
    ASSERT_TRUE(unknown);
    EXPECT_EQ(unknown->height, 3);
    const auto tooMuch = PageOf(ScanMode::LineArt, {{{ScanFrame::Gray, 10, 10, 2, 8}, bytes}});
    ASSERT_TRUE(tooMuch);
    EXPECT_EQ(tooMuch->height, 2);
    EXPECT_FALSE(PageOf(ScanMode::LineArt, {{{ScanFrame::Gray, 10, 10, 2, 8}, Bytes(9)}})) << "not one line";
    const auto uneven = PageOf(ScanMode::Color, {{{ScanFrame::Red, 10, 10, 3, 8}, Bytes(30)},
                                                 {{ScanFrame::Green, 10, 10, 3, 8}, Bytes(10)},
                                                 {{ScanFrame::Blue, 10, 10, 9, 8}, Bytes(90)}});
    ASSERT_TRUE(uneven);
    EXPECT_EQ(uneven->height, 1) << "as many lines as every colour has";
}

TEST(ScanAssemblerTest, ADriverThatNeverEndsFillsNoMemory) {
    CScanAssembler assembler(ScanMode::LineArt, threshold);
    ASSERT_TRUE(assembler.BeginFrame({ScanFrame::Gray, 1, 8, -1, 1}));
    const Bytes bytes(1 << 16, 0xff);
    assembler.Append(bytes);
    EXPECT_TRUE(assembler.IsFull());
    const auto page = assembler.Finish();
    ASSERT_TRUE(page);
    EXPECT_EQ(page->height, 15000);
}

TEST(ScanAssemblerTest, SenselessLayoutsAreRefused) {
    constexpr int huge = 0x7fffffff;
    using enum ScanFrame;
    const CScanLayout good{Rgb, 30, 10, 4, 8};
    for (CScanLayout layout : {CScanLayout{Rgb, 30, 0, 4, 8},
                               {Rgb, 30, -5, 4, 8},
                               {Rgb, huge, huge, 4, 8},
                               {Rgb, 29, 10, 4, 8},
                               {Rgb, -30, 10, 4, 8},
                               {Rgb, 0, 10, 4, 8},
                               {Rgb, huge, 10, 4, 8},
                               {Rgb, 30, 10, 0, 8},
                               {Rgb, 30, 10, huge, 8},
                               {Rgb, 30, 10, 4, 0},
                               {Rgb, 30, 10, 4, 12},
                               {Rgb, 30, 10, 4, 16},
                               {Rgb, 5, 10, 4, 1},
                               {Gray, 1, 9, 4, 1},
                               {Gray, 30000, 15001, 4, 8}})
        EXPECT_FALSE(CScanAssembler(ScanMode::Color, threshold).BeginFrame(layout))
            << layout.bytesPerLine << ' ' << layout.width << ' ' << layout.lines << ' ' << layout.depth;
    const Bytes line(30);
    EXPECT_FALSE(PageOf(ScanMode::Color, {{good, line}, {good, line}})) << "all colours twice";
    EXPECT_FALSE(PageOf(ScanMode::Color, {{{Red, 10, 10, 4, 8}, line}, {{Green, 9, 9, 4, 8}, line}}))
        << "another size";
    EXPECT_FALSE(PageOf(ScanMode::Color, {{{Red, 10, 10, 4, 8}, line}, {good, line}}));
    EXPECT_FALSE(CScanAssembler(ScanMode::Color, threshold).Finish()) << "no frame at all";
}

} // namespace velmor::testing
