#include "acquire/TwainSession.h"

#include "acquire/Bitmap.h"
#include "platform/scanner/SourceManagerLibrary.h"

#include <algorithm>
#include <string_view>

namespace velmor {

using namespace twain;

namespace {

void SetText(CText32& text, std::string_view value) {
    std::ranges::copy(value.substr(0, sizeof(CText32) - 1), text);
}

CIdentity ApplicationIdentity() {
    CIdentity identity;
    identity.version.major = 1;
    identity.version.language = languageEnglish;
    identity.version.country = countryUsa;
    SetText(identity.version.info, "1.0");
    identity.protocolMajor = protocolMajor;
    identity.protocolMinor = protocolMinor;
    identity.supportedGroups = DG_CONTROL | DG_IMAGE;
    SetText(identity.manufacturer, "Independent");
    SetText(identity.productFamily, "Drawing");
    SetText(identity.productName, "Drawing Scan");
    return identity;
}

// Locks an image's memory while it is handed over, then frees it.
void HandOver(void* handle, const ImageHandler& image) {
    const auto* bytes = static_cast<const std::uint8_t*>(LockGlobal(handle));
    if (bytes == nullptr) {
        image({});
    } else {
        image({bytes, PackedBytes(bytes)});
        UnlockGlobal(handle);
    }
    FreeGlobal(handle);
}

} // namespace

CTwainSession::CTwainSession(ISourceManager& manager, void* parentWindow)
    : m_manager(manager), m_parentWindow(parentWindow), m_application(ApplicationIdentity()) {}

CTwainSession::~CTwainSession() {
    static_cast<void>(DropToState(TwainState::PreSession)); // nobody is left to be told
}

std::uint16_t CTwainSession::ConditionCode() {
    CStatusRecord status;
    static_cast<void>(CallManager(DG_CONTROL, DAT_STATUS, MSG_GET, &status)); // else it says nothing
    return status.conditionCode;
}

bool CTwainSession::LoadSourceManager() {
    if (m_state >= TwainState::ManagerLoaded)
        return true;
    m_entry = m_manager.Load();
    if (m_entry)
        m_state = TwainState::ManagerLoaded;
    return m_state == TwainState::ManagerLoaded;
}

bool CTwainSession::OpenSourceManager() {
    if (m_state >= TwainState::ManagerOpen)
        return true;
    return LoadSourceManager() && CallManager(DG_CONTROL, DAT_PARENT, MSG_OPENDSM, &m_parentWindow);
}

bool CTwainSession::SelectSource() {
    if (!OpenSourceManager() || m_state != TwainState::ManagerOpen)
        return false;
    // The dialog opens on the default; where there is none yet, it has nothing to open on.
    CIdentity choice;
    static_cast<void>(CallManager(DG_CONTROL, DAT_IDENTITY, MSG_GETDEFAULT, &choice));
    if (!CallManager(DG_CONTROL, DAT_IDENTITY, MSG_USERSELECT, &choice))
        return false;
    m_source = choice;
    return true;
}

bool CTwainSession::OpenSource() {
    m_fileTransfer = false;
    return m_state == TwainState::ManagerOpen && CallManager(DG_CONTROL, DAT_IDENTITY, MSG_OPENDS, &m_source);
}

bool CTwainSession::EnableSource() {
    return m_state == TwainState::SourceOpen && SetUserInterface(MSG_ENABLEDS);
}

bool CTwainSession::DisableSource() {
    return m_state == TwainState::SourceEnabled && SetUserInterface(MSG_DISABLEDS);
}

bool CTwainSession::CloseSource() {
    if (m_state == TwainState::SourceEnabled)
        static_cast<void>(DisableSource()); // the state says what came of it
    return m_state == TwainState::SourceOpen && CallManager(DG_CONTROL, DAT_IDENTITY, MSG_CLOSEDS, &m_source);
}

bool CTwainSession::CloseSourceManager() {
    if (m_state > TwainState::ManagerOpen)
        static_cast<void>(DropToState(TwainState::ManagerOpen)); // the state says what came of it
    return m_state == TwainState::ManagerOpen && CallManager(DG_CONTROL, DAT_PARENT, MSG_CLOSEDSM, &m_parentWindow);
}

bool CTwainSession::UnloadSourceManager() {
    if (m_state != TwainState::ManagerLoaded)
        return false;
    m_entry = nullptr;
    m_manager.Unload();
    m_state = TwainState::PreSession;
    return true;
}

bool CTwainSession::EndTransfer() {
    m_pending = {};
    return m_state == TwainState::Transferring && CallSource(DG_CONTROL, DAT_PENDINGXFERS, MSG_ENDXFER, &m_pending);
}

bool CTwainSession::ResetTransfers() {
    return m_state == TwainState::TransferReady && CallSource(DG_CONTROL, DAT_PENDINGXFERS, MSG_RESET, &m_pending);
}

bool CTwainSession::SetUserInterface(std::uint16_t message) {
    CUserInterface window;
    window.showUi = 1;
    window.parent = m_parentWindow;
    return CallSource(DG_CONTROL, DAT_USERINTERFACE, message, &window);
}

bool CTwainSession::StepDown() {
    switch (m_state) {
    case TwainState::PreSession:
        return true;
    case TwainState::ManagerLoaded:
        return UnloadSourceManager();
    case TwainState::ManagerOpen:
        return CloseSourceManager();
    case TwainState::SourceOpen:
        return CloseSource();
    case TwainState::SourceEnabled:
        return DisableSource();
    case TwainState::TransferReady:
        return ResetTransfers();
    case TwainState::Transferring:
        return EndTransfer();
    }
    return false;
}

bool CTwainSession::DropToState(TwainState state) {
    while (m_state > state)
        if (!StepDown())
            return false;
    return true;
}

bool CTwainSession::TransferImage(const ImageHandler& handle) {
    if (m_state != TwainState::TransferReady)
        return false;
    void* image = nullptr;
    const std::uint16_t type = m_fileTransfer ? DAT_IMAGEFILEXFER : DAT_IMAGENATIVEXFER;
    // The return code says what came of it.
    static_cast<void>(CallSource(DG_IMAGE, type, MSG_GET, m_fileTransfer ? nullptr : static_cast<void*>(&image)));
    const bool done = m_entry && m_returnCode == TWRC_XFERDONE;
    if (done && !m_fileTransfer)
        HandOver(image, handle);
    return done;
}

bool CTwainSession::ProcessEvent(void* message) {
    if (m_state < TwainState::SourceEnabled)
        return false;
    CEvent event;
    event.event = message;
    static_cast<void>(CallSource(DG_CONTROL, DAT_EVENT, MSG_PROCESSEVENT, &event)); // likewise
    return m_returnCode == TWRC_DSEVENT;
}

void CTwainSession::TransferImages(const ImageHandler& handle) {
    while (m_state == TwainState::TransferReady) {
        static_cast<void>(TransferImage(handle)); // the state says what came of it
        // A transfer that failed has not begun and cannot be ended: what is pending is given up.
        if (m_state == TwainState::Transferring ? !EndTransfer() : !ResetTransfers())
            return;
    }
}

bool CTwainSession::Acquire(const MessageStep& step, const ImageHandler& handle) {
    const bool enabled = OpenSourceManager() && OpenSource() && EnableSource();
    m_closeRequested = false;
    // After the first message of note the rest of the step is not the source's to see.
    const auto offer = [this](void* message) {
        return m_state == TwainState::SourceEnabled && !m_closeRequested && ProcessEvent(message);
    };
    while (m_state == TwainState::SourceEnabled && step(offer)) {
        TransferImages(handle);
        if (m_closeRequested)
            break;
    }
    static_cast<void>(DropToState(TwainState::ManagerLoaded)); // the state says what came of it
    return enabled;
}

bool CTwainSession::CallManager(std::uint32_t group, std::uint16_t type, std::uint16_t message, void* record) {
    return Call(nullptr, group, type, message, record);
}

bool CTwainSession::CallSource(std::uint32_t group, std::uint16_t type, std::uint16_t message, void* record) {
    return Call(&m_source, group, type, message, record);
}

bool CTwainSession::Call(CIdentity* source, std::uint32_t group, std::uint16_t type, std::uint16_t message,
                         void* record) {
    if (!m_entry)
        return false;
    m_returnCode = m_entry(&m_application, source, group, type, message, record);
    if (type == DAT_EVENT)
        FollowEvent(*static_cast<CEvent*>(record));
    else if (group == DG_IMAGE && (m_returnCode == TWRC_XFERDONE || m_returnCode == TWRC_CANCEL))
        m_state = TwainState::Transferring;
    else if (group == DG_CONTROL && m_returnCode == TWRC_SUCCESS)
        FollowControl(type, message);
    return m_returnCode == TWRC_SUCCESS;
}

void CTwainSession::FollowControl(std::uint16_t type, std::uint16_t message) {
    if (type == DAT_PARENT)
        m_state = message == MSG_OPENDSM ? TwainState::ManagerOpen : TwainState::ManagerLoaded;
    else if (type == DAT_IDENTITY && message == MSG_OPENDS)
        m_state = TwainState::SourceOpen;
    else if (type == DAT_IDENTITY && message == MSG_CLOSEDS)
        m_state = TwainState::ManagerOpen;
    else if (type == DAT_USERINTERFACE)
        m_state = message == MSG_ENABLEDS ? TwainState::SourceEnabled : TwainState::SourceOpen;
    else if (type == DAT_PENDINGXFERS && message == MSG_ENDXFER && m_pending.count != 0)
        m_state = TwainState::TransferReady;
    else if (type == DAT_PENDINGXFERS)
        m_state = TwainState::SourceEnabled;
}

void CTwainSession::FollowEvent(const CEvent& event) {
    if (event.message == MSG_XFERREADY) {
        m_state = TwainState::TransferReady;
    } else if (event.message == MSG_CLOSEDSREQ) {
        m_state = TwainState::SourceEnabled;
        m_closeRequested = true;
    }
}

} // namespace velmor
