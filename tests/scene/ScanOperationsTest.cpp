#include "scene/ScanOperations.h"

#include "DocumentFixture.h"
#include "ScriptedSourceManager.h"
#include "acquire/ScannerUi.h"
#include "scene/GrabOperations.h"
#include "scene/Settings.h"

namespace velmor::testing {
namespace {

using Texts = std::vector<std::string>;

/// A user who is never asked: scripted scanners have a window of their own.
class CNoScannerUi final : public IScannerUi {
public:
    bool Wait(const std::string&, const std::function<bool()>&) override { return false; }
    std::optional<std::size_t> ChooseScanner(std::span<const CScannerDevice>, std::size_t) override { return {}; }
    void OpenScanWindow(const CScanWindowRequest&, CScanWindowActions) override {}
    void ShowState(const CScanWindowState&) override {}
    void ShowPreview(const CScannedPage&) override {}
    void CloseScanWindow() override {}
};

class CScanOperationsTest : public CDocumentFixture {
protected:
    CScanOperationsTest() {
        NewScene("S");
        std::filesystem::create_directories(SceneFolder("S") / "walk");
        doc->Scenes().SetFolderName("walk");
        operations.UseManager(manager);
    }

    /// Scans with the events of the script; `atEach` is done before each of them.
    void Scan(SourceMode kind, const std::function<void()>& atEach = nullptr) {
        operations.Acquire(kind, nullptr, [&](const std::function<bool(void*)>& offer) {
            if (atEach)
                atEach();
            const bool hasMore = !manager.events.empty();
            offer(nullptr);
            return hasMore;
        });
    }

    static constexpr const char* notFound = "No scanner was found. Is it connected and switched on?";
    static constexpr const char* notOpened = "The scanner could not be opened. Is another program using it?";
    CScriptedSourceManager manager;
    CNoScannerUi ui;
    CScanOperations operations{doc->Model(), doc->Grabs(), prompter, profile, ui};
};

} // namespace

TEST_F(CScanOperationsTest, EveryPageBecomesACelOrAPicture) {
    manager.image = PackLineArt(8, 2, std::vector<std::uint8_t>{0xf0, 0x0f});
    manager.events = {twain::MSG_XFERREADY, twain::MSG_XFERREADY, twain::MSG_CLOSEDSREQ};
    prompter.Answer(std::string("1"));
    prompter.Answer(std::string("2"));
    Scan(SourceMode::Cels);
    manager.image = PackTrueColor(2, 2, std::vector<std::uint8_t>(12, 30));
    manager.events = {twain::MSG_XFERREADY, twain::MSG_CLOSEDSREQ};
    prompter.Answer(std::string("sky"));
    Scan(SourceMode::Pictures);

    EXPECT_TRUE(prompter.AllAnswersTaken());
    EXPECT_EQ(prompter.TakeMessages(), Texts{});
    EXPECT_EQ(prompter.statusTexts, Texts{});
    for (const char* file : {"walk/1.bit", "walk/2.bit", "_Pictures_/sky.rgba"})
        EXPECT_TRUE(FileExists(SceneFolder("S") / file)) << file;
}

TEST_F(CScanOperationsTest, WhatIsMissingIsSaidInTheStatusBar) {
    manager.answers["open source"] = twain::TWRC_FAILURE;
    Scan(SourceMode::Cels);
    EXPECT_EQ(prompter.statusTexts, Texts{notOpened});
    manager.answers = {{"user select", twain::TWRC_CANCEL}};
    operations.SelectSource(nullptr);
    EXPECT_EQ(prompter.statusTexts.size(), 1U) << "the user has changed his mind";
    manager.answers = {{"user select", twain::TWRC_FAILURE}};
    operations.SelectSource(nullptr);
    EXPECT_EQ(prompter.statusTexts, (Texts{notOpened, notFound}));
    EXPECT_EQ(prompter.TakeMessages(), Texts{});
}

TEST_F(CScanOperationsTest, NothingIsScannedWithoutAPlaceForIt) {
    doc->Scenes().SetFolderName("");
    Scan(SourceMode::Cels);
    EXPECT_EQ(manager.TakeCalls(), Texts{});
    EXPECT_EQ(prompter.TakeMessages().size(), 1U);
}

TEST_F(CScanOperationsTest, OneCommandRunsAtATime) {
    manager.events = {twain::MSG_NULL, twain::MSG_CLOSEDSREQ};
    manager.TakeCalls();
    Scan(SourceMode::Cels, [this] {
        const std::size_t calls = manager.calls.size();
        operations.SelectSource(nullptr);
        operations.Acquire(SourceMode::Pictures, nullptr, [](const auto&) { return false; });
        EXPECT_EQ(manager.calls.size(), calls);
    });
    manager.TakeCalls();
    operations.SelectSource(nullptr);
    EXPECT_FALSE(manager.TakeCalls().empty()) << "and the next one after it";
}

TEST_F(CScanOperationsTest, SettingsOfTheLastScanStay) {
    Set(profile, setting::scannerDevice, "net:desk");
    Set(profile, setting::scannerResolution, 150);
    const std::pair<CIntSetting, int> area[] = {{setting::scannerLeft, 3},
                                                {setting::scannerTop, 29},
                                                {setting::scannerWidth, 2099},
                                                {setting::scannerHeight, 1003}};
    for (const auto& [which, value] : area)
        Set(profile, which, value);
    manager.events = {twain::MSG_CLOSEDSREQ};
    Scan(SourceMode::Cels);
    EXPECT_EQ(Get(profile, setting::scannerDevice), "net:desk");
    EXPECT_EQ(Get(profile, setting::scannerResolution), 150);
    for (const auto& [which, value] : area)
        EXPECT_EQ(Get(profile, which), value) << which.key;
}

} // namespace velmor::testing
