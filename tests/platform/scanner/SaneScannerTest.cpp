#include "platform/scanner/SaneScanner.h"

#include "SaneTestDevice.h"

#include <chrono>
#include <gtest/gtest.h>
#include <set>
#include <thread>

namespace velmor::testing {
namespace {

constexpr CScanArea smallArea{10, 20, 30, 40};

class CSaneScannerTest : public ::testing::Test {
protected:
    void SetUpScanner(const std::map<std::string, std::string>& options) {
        CSaneTestDevice::Configure(options);
        scanner = std::make_unique<CSaneScanner>(CSaneScanner::UsualProcess());
    }
    /// Opens the device, with options of its own.
    void Open(const std::map<std::string, std::string>& options = {}) {
        SetUpScanner(options);
        scanner->Open("test:1");
        Finish();
        ASSERT_TRUE(scanner->IsOpen()) << scanner->Failure();
    }
    /// Waits for the operation under way and collects its pages.
    std::vector<CScannedPage> Finish() {
        std::vector<CScannedPage> pages;
        for (int polls = 0; polls < 60000; ++polls) {
            const bool isBusy = scanner->IsBusy();
            while (auto page = scanner->TakePage())
                pages.push_back(std::move(*page));
            if (!isBusy)
                return pages;
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
        ADD_FAILURE() << "the scanner does not come to an end";
        return pages;
    }
    std::vector<CScannedPage> Scan(ScanMode mode, int resolution = 100, bool feeder = false) {
        CScanSettings settings;
        settings.mode = mode;
        settings.resolution = resolution;
        settings.area = smallArea;
        settings.feeder = feeder;
        scanner->Scan(settings);
        return Finish();
    }

    CSaneTestDevice device;
    std::unique_ptr<CSaneScanner> scanner;
};

bool HasSeveralColors(const CScannedPage& page) {
    return std::set(page.rows.begin(), page.rows.end()).size() > 1;
}

} // namespace

TEST_F(CSaneScannerTest, ScannersAreListedAndOpened) {
    SetUpScanner({});
    EXPECT_FALSE(scanner->IsBusy()) << "nothing is started unasked";
    scanner->FindDevices();
    Finish();
    ASSERT_EQ(scanner->Devices().size(), 2U);
    EXPECT_EQ(scanner->Devices()[1].name, "test:1");
    EXPECT_EQ(scanner->Devices()[1].label, "Noname frontend-tester");
    scanner->Open("nobody:0");
    Finish();
    EXPECT_FALSE(scanner->IsOpen());
    EXPECT_NE(scanner->Failure(), "");
    EXPECT_TRUE(Scan(ScanMode::Color).empty()) << "not open";
    scanner->Open("test:0");
    Finish();
    EXPECT_TRUE(scanner->IsOpen());
    const CScannerAbilities abilities = scanner->Abilities();
    EXPECT_EQ(abilities.width, 200);
    EXPECT_EQ(abilities.leastResolution, 1);
    EXPECT_EQ(abilities.mostResolution, 1200);
    EXPECT_TRUE(abilities.hasFeeder);
    scanner->Close();
    EXPECT_FALSE(scanner->IsOpen());
}

TEST_F(CSaneScannerTest, NoScannerIsNoFailure) {
    CSaneTestDevice::Remove();
    scanner = std::make_unique<CSaneScanner>(CSaneScanner::UsualProcess());
    scanner->FindDevices();
    Finish();
    EXPECT_TRUE(scanner->Devices().empty());
    EXPECT_EQ(scanner->Failure(), "");
}

TEST_F(CSaneScannerTest, PagesHaveTheModeAndAreaAskedFor) {
    Open();
    const auto color = Scan(ScanMode::Color);
    ASSERT_EQ(color.size(), 1U);
    EXPECT_EQ(color[0].mode, ScanMode::Color);
    EXPECT_NEAR(color[0].width, 118, 1);
    EXPECT_NEAR(color[0].height, 157, 1);
    EXPECT_TRUE(HasSeveralColors(color[0]));
    const auto lineArt = Scan(ScanMode::LineArt, 200);
    ASSERT_EQ(lineArt.size(), 1U);
    EXPECT_EQ(lineArt[0].mode, ScanMode::LineArt);
    EXPECT_NEAR(lineArt[0].width, 236, 1);
    EXPECT_EQ(lineArt[0].rows.size(),
              static_cast<std::size_t>((lineArt[0].width + 7) / 8) * static_cast<std::size_t>(lineArt[0].height));
    EXPECT_TRUE(HasSeveralColors(lineArt[0]));
    EXPECT_EQ(scanner->Failure(), "");
}

TEST_F(CSaneScannerTest, OddDriversGiveTheSamePicture) {
    Open();
    const auto plain = Scan(ScanMode::Color, 50);
    ASSERT_EQ(plain.size(), 1U);
    for (const auto& [option, value] : std::map<std::string, std::string>{
             {"read-limit", "true"}, {"fuzzy-parameters", "true"}, {"non-blocking", "true"}}) {
        scanner.reset();
        Open({{option, value}, {"read-limit-size", "7"}});
        const auto odd = Scan(ScanMode::Color, 50);
        ASSERT_EQ(odd.size(), 1U) << option << ": " << scanner->Failure();
        EXPECT_EQ(odd[0].rows, plain[0].rows) << option;
    }
    scanner.reset();
    Open({{"mode", "Color"}, {"three-pass", "true"}, {"three-pass-order", "BRG"}});
    const auto threePasses = Scan(ScanMode::Color, 50);
    ASSERT_EQ(threePasses.size(), 1U) << scanner->Failure();
    EXPECT_EQ(threePasses[0].height, plain[0].height);
    EXPECT_TRUE(HasSeveralColors(threePasses[0]));
}

TEST_F(CSaneScannerTest, AHandScannersPageEndsWithItsData) {
    Open({{"hand-scanner", "true"}});
    const auto pages = Scan(ScanMode::LineArt, 50);
    ASSERT_EQ(pages.size(), 1U) << scanner->Failure();
    EXPECT_GT(pages[0].height, 0);
}

TEST_F(CSaneScannerTest, AllPagesOfTheFeederComeInTurn) {
    Open();
    EXPECT_EQ(Scan(ScanMode::LineArt, 50, true).size(), 10U);
    EXPECT_EQ(scanner->Failure(), "") << "an empty feeder is the end, not a fault";
    EXPECT_EQ(Scan(ScanMode::LineArt, 50, false).size(), 1U);
}

TEST_F(CSaneScannerTest, DriversFailuresAreReported) {
    for (const auto& [code, text] :
         std::map<std::string, std::string>{{"\"SANE_STATUS_IO_ERROR\"", "Error during device I/O"},
                                            {"\"SANE_STATUS_JAMMED\"", "Document feeder jammed"},
                                            {"\"SANE_STATUS_COVER_OPEN\"", "Scanner cover is open"},
                                            {"\"SANE_STATUS_NO_MEM\"", "Out of memory"},
                                            {"\"SANE_STATUS_CANCELLED\"", ""}}) {
        scanner.reset();
        Open({{"read-status-code", code}});
        EXPECT_TRUE(Scan(ScanMode::Color).empty()) << code;
        EXPECT_EQ(scanner->Failure(), text) << code;
        EXPECT_TRUE(scanner->IsOpen());
    }
    scanner.reset();
    Open({{"read-status-code", "\"SANE_STATUS_EOF\""}});
    EXPECT_TRUE(Scan(ScanMode::Color).empty()) << "data that end before they begin make no page";
    EXPECT_NE(scanner->Failure(), "");
}

TEST_F(CSaneScannerTest, AScanCanBeStoppedAndAnotherStarted) {
    // Slow: each piece of the page takes a fifth of a second.
    Open({{"read-delay", "true"}, {"read-delay-duration", "200000"}});
    CScanSettings settings;
    settings.mode = ScanMode::Color;
    settings.resolution = 600;
    scanner->Scan(settings);
    EXPECT_TRUE(scanner->IsBusy());
    scanner->Cancel();
    EXPECT_TRUE(Finish().empty());
    EXPECT_EQ(scanner->Failure(), "");
    EXPECT_EQ(Scan(ScanMode::LineArt, 20).size(), 1U);

    scanner->Scan(settings);
    scanner->Close();
    EXPECT_FALSE(scanner->IsOpen());
    Finish();
    scanner->Open("test:0");
    Finish();
    EXPECT_TRUE(scanner->IsOpen());
    scanner->Scan(settings);
    scanner.reset(); // in the middle of a page
}

TEST_F(CSaneScannerTest, AProcessThatDoesNotAnswerIsGivenUp) {
    // Programs of the system that know nothing of scanners: one waits for more, one ends, one is not there.
    scanner = std::make_unique<CSaneScanner>("/usr/bin/sort");
    scanner->FindDevices();
    EXPECT_TRUE(scanner->IsBusy());
    scanner->Cancel();
    Finish();
    EXPECT_TRUE(scanner->Devices().empty());
    scanner->FindDevices();
    EXPECT_TRUE(scanner->IsBusy());
    for (const char* program : {"/usr/bin/true", "/there/is/none"}) {
        scanner = std::make_unique<CSaneScanner>(program); // ends the one that waits
        scanner->Open("test:0");
        Finish();
        EXPECT_FALSE(scanner->IsOpen()) << program;
        EXPECT_NE(scanner->Failure(), "") << program;
    }
}

} // namespace velmor::testing
