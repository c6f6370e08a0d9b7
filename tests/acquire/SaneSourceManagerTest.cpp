#include "acquire/SaneSourceManager.h"

#include "acquire/TwainSession.h"

#include <gtest/gtest.h>

namespace velmor::testing {
namespace {

using namespace twain;

/// A scanner that does at once what a test has told it.
class CFakeScanner final : public IScanner {
public:
    std::vector<CScannerDevice> devices = {{"usb:1", "Maker One"}, {"usb:2", "Maker Two"}};
    std::string missing; ///< a device that cannot be opened
    std::deque<CScannedPage> pages;
    std::vector<CScanSettings> scans;
    std::vector<std::string> opened;
    int searches = 0;
    int cancels = 0;
    bool isBusy = false;
    std::string failure;

    bool IsBusy() const override { return isBusy; }
    void FindDevices() override { ++searches; }
    std::vector<CScannerDevice> Devices() const override {
        return searches > 0 ? devices : std::vector<CScannerDevice>{};
    }
    void Open(const std::string& name) override {
        opened.push_back(name);
        m_isOpen = name != missing;
    }
    bool IsOpen() const override { return m_isOpen; }
    CScannerAbilities Abilities() const override { return {100, 600, {}, 210, 297, true}; }
    void Scan(const CScanSettings& settings) override { scans.push_back(settings); }
    std::optional<CScannedPage> TakePage() override {
        if (pages.empty())
            return std::nullopt;
        CScannedPage page = pages.front();
        pages.pop_front();
        return page;
    }
    int Progress() const override { return 40; }
    std::string Failure() const override { return failure; }
    void Cancel() override {
        ++cancels;
        pages.clear();
    }
    void Close() override { m_isOpen = false; }

private:
    bool m_isOpen = false;
};

/// A user who has decided beforehand.
class CFakeScannerUi final : public IScannerUi {
public:
    bool isPatient = true;
    std::optional<std::size_t> choice;
    std::vector<std::string> waits;
    std::size_t listOpenedOn = 99;
    bool isWindowOpen = false;
    CScanWindowRequest request;
    CScanWindowActions actions;
    CScanWindowState state;
    int previews = 0;

    bool Wait(const std::string& text, const std::function<bool()>&) override {
        waits.push_back(text);
        return isPatient;
    }
    std::optional<std::size_t> ChooseScanner(std::span<const CScannerDevice>, std::size_t current) override {
        listOpenedOn = current;
        return choice;
    }
    void OpenScanWindow(const CScanWindowRequest& opened, CScanWindowActions given) override {
        isWindowOpen = true;
        request = opened;
        actions = std::move(given);
    }
    void ShowState(const CScanWindowState& shown) override { state = shown; }
    void ShowPreview(const CScannedPage&) override { ++previews; }
    void CloseScanWindow() override { isWindowOpen = false; }
};

const CScannedPage linePage{ScanMode::LineArt, 8, 2, {0xff, 0x00}};
const CScannedPage colorPage{ScanMode::Color, 1, 1, {10, 20, 30}};

class CSaneSourceManagerTest : public ::testing::Test {
protected:
    /// Runs a session in which the user does one thing after the other, and then closes the window.
    bool Acquire(std::vector<std::function<void()>> deeds) {
        deeds.push_back([this] { ui.actions.close(); });
        std::size_t next = 0;
        const MessageStep step = [&](const std::function<bool(void*)>& offer) {
            if (next < deeds.size())
                deeds[next++]();
            offer(nullptr);
            return next < 100;
        };
        CTwainSession session(manager, nullptr);
        return session.Acquire(
            step, [this](std::span<const std::uint8_t> page) { pages.emplace_back(page.begin(), page.end()); });
    }
    bool Select() { return CTwainSession(manager, nullptr).SelectSource(); }

    CFakeScanner scanner;
    CFakeScannerUi ui;
    CSaneSourceManager manager{scanner, ui};
    std::vector<PackedBitmap> pages;
};

} // namespace

TEST_F(CSaneSourceManagerTest, WithoutScannersNothingIsShown) {
    scanner.devices.clear();
    EXPECT_FALSE(Select());
    EXPECT_FALSE(Acquire({}));
    EXPECT_EQ(ui.listOpenedOn, 99U);
    EXPECT_FALSE(ui.isWindowOpen);
    EXPECT_TRUE(scanner.opened.empty());
}

TEST_F(CSaneSourceManagerTest, TheChoiceIsOpenedFromThenOn) {
    EXPECT_FALSE(Select()) << "cancelled";
    EXPECT_EQ(manager.DefaultScanner().name, "");
    ui.choice = 1;
    EXPECT_TRUE(Select());
    EXPECT_EQ(ui.listOpenedOn, 0U);
    EXPECT_EQ(manager.DefaultScanner().name, "usb:2");
    EXPECT_TRUE(Select());
    EXPECT_EQ(ui.listOpenedOn, 1U);
    const int searches = scanner.searches;
    EXPECT_TRUE(Acquire({}));
    EXPECT_EQ(scanner.opened, std::vector<std::string>{"usb:2"});
    EXPECT_EQ(scanner.searches, searches) << "a chosen scanner is not looked for";
    EXPECT_EQ(ui.request.deviceName, "Maker Two");
    EXPECT_FALSE(ui.isWindowOpen);
    EXPECT_FALSE(scanner.IsOpen());

    scanner.missing = "usb:2";
    EXPECT_TRUE(Acquire({}));
    EXPECT_EQ(scanner.opened.back(), "usb:1") << "another takes the place of one that is gone";
    EXPECT_EQ(manager.DefaultScanner().name, "usb:2");
}

TEST_F(CSaneSourceManagerTest, GivingUpTheWaitEndsTheCommand) {
    ui.isPatient = false;
    EXPECT_FALSE(Select());
    EXPECT_FALSE(Acquire({}));
    EXPECT_FALSE(ui.isWindowOpen);
    manager.SetDefaultScanner({"usb:1", "Maker One"});
    EXPECT_FALSE(Acquire({}));
    EXPECT_FALSE(scanner.IsOpen()) << "also when it opens after all";
}

TEST_F(CSaneSourceManagerTest, PagesOfTheFeederArePendingTransfers) {
    CScanSettings settings;
    settings.feeder = true;
    EXPECT_TRUE(Acquire({[&] {
                             ui.actions.scan(settings);
                             scanner.pages = {linePage, linePage, colorPage, linePage};
                         },
                         [] {}}));
    ASSERT_EQ(pages.size(), 4U);
    EXPECT_EQ(pages[0], PackLineArt(8, 2, linePage.rows));
    EXPECT_EQ(pages[2], PackTrueColor(1, 1, colorPage.rows));
    EXPECT_TRUE(manager.Settings().feeder) << "remembered";
}

TEST_F(CSaneSourceManagerTest, APreviewIsOfAllTheGlassAndStaysInTheWindow) {
    CScanSettings settings;
    settings.resolution = 300;
    settings.area = {10, 20, 30, 40};
    settings.feeder = true;
    EXPECT_TRUE(Acquire({[&] {
        ui.actions.preview(settings);
        scanner.pages = {colorPage};
    }}));
    EXPECT_EQ(ui.previews, 1);
    EXPECT_TRUE(pages.empty());
    ASSERT_EQ(scanner.scans.size(), 1U);
    EXPECT_EQ(scanner.scans[0].area, CScanArea());
    EXPECT_EQ(scanner.scans[0].resolution, 100) << "the least that it has";
    EXPECT_FALSE(scanner.scans[0].feeder);
    EXPECT_EQ(manager.Settings().area, settings.area);
}

TEST_F(CSaneSourceManagerTest, StoppingAndClosingDropWhatHasNotBeenTaken) {
    EXPECT_TRUE(Acquire({[&] { ui.actions.scan({}); },
                         [&] {
                             scanner.isBusy = true;
                             ui.actions.scan({});
                         },
                         [&] {
                             EXPECT_EQ(ui.state.message, "Scanning page 1...");
                             EXPECT_EQ(ui.state.progress, 40);
                             scanner.pages = {linePage};
                             ui.actions.cancel();
                         },
                         [&] {
                             EXPECT_EQ(ui.state.message, "Stopping...");
                             scanner.isBusy = false;
                             scanner.failure = "Document feeder jammed";
                         },
                         [&] { EXPECT_EQ(ui.state.message, "Document feeder jammed"); },
                         [&] {
                             ui.actions.scan({});
                             scanner.pages = {linePage};
                             ui.actions.close();
                         }}));
    EXPECT_EQ(scanner.scans.size(), 2U) << "not asked while it is busy";
    EXPECT_TRUE(pages.empty());
    EXPECT_GE(scanner.cancels, 2);
}

TEST_F(CSaneSourceManagerTest, CallsOutOfOrderAreRefusedWithAReason) {
    const DsmEntry entry = manager.Load();
    CIdentity application;
    CIdentity source;
    CStatusRecord status;
    const auto refuses = [&](std::uint32_t group, std::uint16_t type, std::uint16_t message, void* record) {
        EXPECT_EQ(entry(&application, &source, group, type, message, record), TWRC_FAILURE);
        EXPECT_EQ(entry(&application, &source, DG_CONTROL, DAT_STATUS, MSG_GET, &status), TWRC_SUCCESS);
        return status.conditionCode;
    };
    CUserInterface window;
    void* handle = nullptr;
    CPendingTransfers pending;
    EXPECT_EQ(refuses(DG_CONTROL, DAT_USERINTERFACE, MSG_ENABLEDS, &window), TWCC_SEQERROR);
    EXPECT_EQ(refuses(DG_IMAGE, DAT_IMAGENATIVEXFER, MSG_GET, &handle), TWCC_SEQERROR);
    EXPECT_EQ(refuses(DG_IMAGE, DAT_IMAGEFILEXFER, MSG_GET, &handle), TWCC_BADPROTOCOL);
    EXPECT_EQ(refuses(DG_CONTROL, DAT_PENDINGXFERS, MSG_GET, &pending), TWCC_BADPROTOCOL);
    EXPECT_EQ(refuses(DG_CONTROL, DAT_IDENTITY, MSG_GETDEFAULT, &source), TWCC_NODS);
    EXPECT_EQ(refuses(DG_CONTROL, DAT_IDENTITY, MSG_OPENDS, nullptr), TWCC_BADPROTOCOL);
}

} // namespace velmor::testing
