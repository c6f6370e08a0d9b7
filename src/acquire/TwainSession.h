#pragma once

#include "acquire/SourceManager.h"

#include <cstdint>
#include <functional>
#include <span>

namespace velmor {

/// The states of the TWAIN standard.
enum class TwainState {
    PreSession = 1,
    ManagerLoaded = 2,
    ManagerOpen = 3,
    SourceOpen = 4,
    SourceEnabled = 5,
    TransferReady = 6,
    Transferring = 7
};

/// Waits for one message of the window system, shows it to `offer`, and dispatches it unless `offer` took it. A
/// window system that has no message to show offers null. False when there will be no more messages.
using MessageStep = std::function<bool(const std::function<bool(void* message)>& offer)>;
/// Takes a page: a packed bitmap, empty when its memory could not be locked.
using ImageHandler = std::function<void(std::span<const std::uint8_t> packedBitmap)>;

/// One conversation with a scanner: walks the states in order and takes everything down at its end. Operations
/// return whether their state was reached and leave the state alone when not.
class CTwainSession {
public:
    /// `manager` outlives the session. `parentWindow` is the window system's handle.
    CTwainSession(ISourceManager& manager, void* parentWindow);
    CTwainSession(const CTwainSession&) = delete;
    CTwainSession& operator=(const CTwainSession&) = delete;
    ~CTwainSession();

    TwainState State() const { return m_state; }
    /// Of the last call to the source manager.
    std::uint16_t ReturnCode() const { return m_returnCode; }
    /// Why the last call that failed did, as the source manager says.
    std::uint16_t ConditionCode();

    [[nodiscard]] bool LoadSourceManager();
    [[nodiscard]] bool OpenSourceManager();
    /// Lets the user choose the scanner that the next session opens.
    [[nodiscard]] bool SelectSource();
    [[nodiscard]] bool OpenSource();
    [[nodiscard]] bool EnableSource();
    [[nodiscard]] bool DisableSource();
    [[nodiscard]] bool CloseSource();
    [[nodiscard]] bool CloseSourceManager();
    [[nodiscard]] bool UnloadSourceManager();
    [[nodiscard]] bool EndTransfer();
    [[nodiscard]] bool ResetTransfers();
    /// Goes down until the state is `state` or lower; stops at a step that fails.
    [[nodiscard]] bool DropToState(TwainState state);

    /// Images go to files from now on, until a source is opened again.
    void UseFileTransfer() { m_fileTransfer = true; }
    /// Fetches the next image and hands it over; false when there was none.
    [[nodiscard]] bool TransferImage(const ImageHandler& handle);
    /// Shows a message to the enabled source; true when it was the source's own.
    bool ProcessEvent(void* message);

    /// From opening to closing: shows the source's window, waits with `step`, and hands over every page, until the
    /// user closes that window or the messages end. False when the source could not be shown.
    [[nodiscard]] bool Acquire(const MessageStep& step, const ImageHandler& handle);

private:
    [[nodiscard]] bool CallManager(std::uint32_t group, std::uint16_t type, std::uint16_t message, void* record);
    [[nodiscard]] bool CallSource(std::uint32_t group, std::uint16_t type, std::uint16_t message, void* record);
    [[nodiscard]] bool Call(twain::CIdentity* source, std::uint32_t group, std::uint16_t type,
                            std::uint16_t message, void* record);
    void FollowControl(std::uint16_t type, std::uint16_t message);
    void FollowEvent(const twain::CEvent& event);
    [[nodiscard]] bool SetUserInterface(std::uint16_t message);
    [[nodiscard]] bool StepDown();
    void TransferImages(const ImageHandler& handle);

    ISourceManager& m_manager;
    void* m_parentWindow;
    twain::DsmEntry m_entry;
    twain::CIdentity m_application;
    twain::CIdentity m_source;
    twain::CPendingTransfers m_pending;
    TwainState m_state = TwainState::PreSession;
    std::uint16_t m_returnCode = twain::TWRC_SUCCESS;
    bool m_fileTransfer = false;
    bool m_closeRequested = false; ///< the user has closed the source's window
};

} // namespace velmor
