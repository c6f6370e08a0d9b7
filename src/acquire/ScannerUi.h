#pragma once

#include "platform/scanner/Scanner.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <span>
#include <string>

namespace velmor {

/// What the scan window opens on.
struct CScanWindowRequest {
    std::string deviceName;
    CScannerAbilities abilities;
    CScanSettings initial;
};

/// What the user does in the scan window.
struct CScanWindowActions {
    std::function<void(const CScanSettings&)> preview; ///< of the whole glass
    std::function<void(const CScanSettings&)> scan;
    std::function<void()> cancel; ///< stops the scan under way
    std::function<void()> close;
};

/// What the scan window shows of the scanner's work.
struct CScanWindowState {
    bool isBusy = false;
    int progress = 0;    ///< in percent; 0 when unknown
    std::string message; ///< for the user; may be empty

    bool operator==(const CScanWindowState&) const = default;
};

/// The way from the built-in source manager to the user.
class IScannerUi {
public:
    virtual ~IScannerUi() = default;
    /// Keeps the program's windows alive until `isDone`; false when the user gave up before.
    virtual bool Wait(const std::string& text, const std::function<bool()>& isDone) = 0;
    /// Lets the user choose; `current` is where the list opens. Nothing when cancelled.
    virtual std::optional<std::size_t> ChooseScanner(std::span<const CScannerDevice> scanners,
                                                     std::size_t current) = 0;
    /// Shows the scan window and returns. The actions are called from it until it is closed.
    virtual void OpenScanWindow(const CScanWindowRequest& request, CScanWindowActions actions) = 0;
    /// Called often, and mostly with what is shown already.
    virtual void ShowState(const CScanWindowState& state) = 0;
    virtual void ShowPreview(const CScannedPage& page) = 0;
    virtual void CloseScanWindow() = 0;
};

} // namespace velmor
