#include "acquire/SaneSourceManager.h"

#include "platform/scanner/SourceManagerLibrary.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace velmor {

using namespace twain;

namespace {

constexpr int previewResolution = 75;
constexpr std::size_t mostWaitingPages = 2;

void SetText(CText32& text, std::string_view value) {
    std::ranges::fill(text, '\0');
    std::ranges::copy(value.substr(0, sizeof(CText32) - 1), text);
}

void Describe(CIdentity& identity, const std::string& label, std::size_t index) {
    identity = {};
    identity.id = static_cast<std::uint32_t>(index + 1);
    identity.protocolMajor = protocolMajor;
    identity.protocolMinor = protocolMinor;
    identity.supportedGroups = DG_CONTROL | DG_IMAGE;
    SetText(identity.productName, label);
}

PackedBitmap Pack(const CScannedPage& page) {
    return page.mode == ScanMode::LineArt ? PackLineArt(page.width, page.height, page.rows)
                                          : PackTrueColor(page.width, page.height, page.rows);
}

CScanSettings PreviewOf(CScanSettings settings, const CScannerAbilities& abilities) {
    settings.area = {};
    settings.feeder = false;
    settings.resolution = std::clamp(previewResolution, abilities.leastResolution,
                                     std::max(abilities.leastResolution, abilities.mostResolution));
    return settings;
}

} // namespace

DsmEntry CSaneSourceManager::Load() {
    return [this](CIdentity*, CIdentity* source, std::uint32_t group, std::uint16_t type, std::uint16_t message,
                  void* record) { return Answer(source, group, type, message, record); };
}

std::uint16_t CSaneSourceManager::Fail(std::uint16_t conditionCode) {
    m_conditionCode = conditionCode;
    return TWRC_FAILURE;
}

std::uint16_t CSaneSourceManager::Answer(CIdentity*, std::uint32_t group, std::uint16_t type, std::uint16_t message,
                                         void* record) {
    if (record == nullptr)
        return Fail(TWCC_BADPROTOCOL);
    if (group == DG_IMAGE && type == DAT_IMAGENATIVEXFER && message == MSG_GET)
        return TransferImage(static_cast<void**>(record));
    if (group != DG_CONTROL)
        return Fail(TWCC_BADPROTOCOL);
    switch (type) {
    case DAT_PARENT:
        m_scanner.Close();
        return message == MSG_OPENDSM || message == MSG_CLOSEDSM ? TWRC_SUCCESS : Fail(TWCC_BADPROTOCOL);
    case DAT_IDENTITY:
        return AnswerIdentity(message, *static_cast<CIdentity*>(record));
    case DAT_USERINTERFACE:
        return AnswerUserInterface(message);
    case DAT_EVENT:
        return ProcessEvent(*static_cast<CEvent*>(record));
    case DAT_PENDINGXFERS:
        return AnswerPending(message, *static_cast<CPendingTransfers*>(record));
    case DAT_STATUS:
        *static_cast<CStatusRecord*>(record) = {std::exchange(m_conditionCode, TWCC_SUCCESS), 0};
        return TWRC_SUCCESS;
    default:
        return Fail(TWCC_BADPROTOCOL);
    }
}

std::uint16_t CSaneSourceManager::AnswerIdentity(std::uint16_t message, CIdentity& identity) {
    switch (message) {
    case MSG_GETDEFAULT:
        if (m_default.name.empty())
            return Fail(TWCC_NODS);
        Describe(identity, m_default.label, 0);
        return TWRC_SUCCESS;
    case MSG_USERSELECT:
        return SelectByUser(identity);
    case MSG_OPENDS:
        return OpenSource(identity);
    case MSG_CLOSEDS:
        return CloseSource();
    default:
        return Fail(TWCC_BADPROTOCOL);
    }
}

bool CSaneSourceManager::WaitForScanner(const std::string& text) {
    if (m_ui.Wait(text, [this] { return !m_scanner.IsBusy(); }))
        return true;
    m_scanner.Close(); // or what is still to be opened would stay so
    return false;
}

bool CSaneSourceManager::FindScanners() {
    // A driver may not have come back from what was cancelled.
    if (m_scanner.IsBusy() && !WaitForScanner("Waiting for the scanner..."))
        return false;
    m_scanner.FindDevices();
    return WaitForScanner("Looking for scanners...") && !m_scanner.Devices().empty();
}

std::uint16_t CSaneSourceManager::SelectByUser(CIdentity& identity) {
    if (!FindScanners())
        return Fail(TWCC_NODS);
    const std::vector<CScannerDevice> scanners = m_scanner.Devices();
    const auto current = std::ranges::find(scanners, m_default.name, &CScannerDevice::name);
    const std::size_t opensOn =
        current == scanners.end() ? 0 : static_cast<std::size_t>(current - scanners.begin());
    const std::optional<std::size_t> choice = m_ui.ChooseScanner(scanners, opensOn);
    if (!choice || *choice >= scanners.size())
        return TWRC_CANCEL;
    m_default = scanners[*choice];
    Describe(identity, scanners[*choice].label, *choice);
    return TWRC_SUCCESS;
}

bool CSaneSourceManager::OpenScanner(const CScannerDevice& scanner) {
    if (m_scanner.IsBusy() && !WaitForScanner("Waiting for the scanner..."))
        return false;
    m_scanner.Open(scanner.name);
    return WaitForScanner("Opening the scanner...") && m_scanner.IsOpen();
}

std::uint16_t CSaneSourceManager::OpenSource(CIdentity& identity) {
    if (m_scanner.IsOpen())
        return Fail(TWCC_SEQERROR);
    CScannerDevice scanner = m_default;
    // One that was chosen in an earlier run may be gone.
    if (scanner.name.empty() || !OpenScanner(scanner)) {
        if (!FindScanners())
            return Fail(TWCC_NODS);
        scanner = m_scanner.Devices().front();
        if (!OpenScanner(scanner))
            return Fail(TWCC_OPERATIONERROR);
    }
    m_openLabel = scanner.label.empty() ? scanner.name : scanner.label;
    Describe(identity, m_openLabel, 0);
    return TWRC_SUCCESS;
}

std::uint16_t CSaneSourceManager::CloseSource() {
    if (m_isEnabled)
        return Fail(TWCC_SEQERROR);
    m_scanner.Close();
    return TWRC_SUCCESS;
}

std::uint16_t CSaneSourceManager::AnswerUserInterface(std::uint16_t message) {
    const bool enable = message == MSG_ENABLEDS;
    if ((!enable && message != MSG_DISABLEDS) || enable == m_isEnabled || !m_scanner.IsOpen())
        return Fail(TWCC_SEQERROR);
    m_isEnabled = enable;
    if (!enable) {
        CancelJob();
        m_ui.CloseScanWindow();
        return TWRC_SUCCESS;
    }
    m_closeRequested = false;
    m_ui.OpenScanWindow({m_openLabel, m_scanner.Abilities(), m_settings},
                        {[this](const CScanSettings& settings) { StartJob(Job::Preview, settings); },
                         [this](const CScanSettings& settings) { StartJob(Job::Scan, settings); },
                         [this] { CancelJob(); }, [this] { m_closeRequested = true; }});
    return TWRC_SUCCESS;
}

void CSaneSourceManager::StartJob(Job job, const CScanSettings& settings) {
    if (m_scanner.IsBusy())
        return;
    m_settings = settings;
    m_job = job;
    m_pagesOfJob = 0;
    m_scanner.Scan(job == Job::Preview ? PreviewOf(settings, m_scanner.Abilities()) : settings);
}

void CSaneSourceManager::CancelJob() {
    m_scanner.Cancel();
    m_pages.clear();
    m_job = Job::None;
}

std::uint16_t CSaneSourceManager::ProcessEvent(CEvent& event) {
    event.message = MSG_NULL;
    // The window is the program's own: no message of the window system belongs to the source alone.
    if (!m_isEnabled || event.event != nullptr)
        return TWRC_NOTDSEVENT;
    TakePages();
    ShowState();
    if (m_closeRequested) {
        CancelJob();
        event.message = MSG_CLOSEDSREQ;
    } else if (!m_pages.empty()) {
        event.message = MSG_XFERREADY;
    }
    return event.message == MSG_NULL ? TWRC_NOTDSEVENT : TWRC_DSEVENT;
}

void CSaneSourceManager::TakePages() {
    while (m_pages.size() < mostWaitingPages) {
        const std::optional<CScannedPage> page = m_scanner.TakePage();
        if (!page)
            return;
        ++m_pagesOfJob;
        if (m_job == Job::Preview)
            m_ui.ShowPreview(*page);
        else if (PackedBitmap packed = Pack(*page); m_job == Job::Scan && !packed.empty())
            m_pages.push_back(std::move(packed));
    }
}

void CSaneSourceManager::ShowState() {
    CScanWindowState state;
    state.isBusy = m_scanner.IsBusy();
    state.progress = m_scanner.Progress();
    if (!state.isBusy)
        state.message = m_scanner.Failure();
    else if (m_job == Job::None)
        state.message = "Stopping...";
    else if (m_job == Job::Preview)
        state.message = "Scanning the preview...";
    else
        state.message = "Scanning page " + std::to_string(m_pagesOfJob + 1) + "...";
    m_ui.ShowState(state);
}

std::uint16_t CSaneSourceManager::TransferImage(void** handle) {
    if (m_pages.empty())
        return Fail(TWCC_SEQERROR);
    const PackedBitmap page = std::move(m_pages.front());
    m_pages.pop_front();
    *handle = AllocateGlobal(page.size());
    void* memory = LockGlobal(*handle);
    if (memory == nullptr)
        return Fail(TWCC_LOWMEMORY);
    std::ranges::copy(page, static_cast<std::uint8_t*>(memory));
    UnlockGlobal(*handle);
    return TWRC_XFERDONE;
}

std::uint16_t CSaneSourceManager::AnswerPending(std::uint16_t message, CPendingTransfers& pending) {
    if (message == MSG_RESET) {
        CancelJob();
        pending.count = 0;
        return TWRC_SUCCESS;
    }
    if (message != MSG_ENDXFER)
        return Fail(TWCC_BADPROTOCOL);
    TakePages();
    pending.count = static_cast<std::uint16_t>(m_pages.size());
    return TWRC_SUCCESS;
}

} // namespace velmor
