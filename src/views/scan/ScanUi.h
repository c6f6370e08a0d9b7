#pragma once

#include "acquire/ScannerUi.h"

#include <memory>

class QWidget;

namespace velmor {

class CScanDialog;

/// The scanners' way to the user through the window.
class CScanUi final : public IScannerUi {
public:
    /// `parent` outlives the object.
    explicit CScanUi(QWidget& parent);
    ~CScanUi() override;

    /// A window with a cancel button appears when the wait turns out to be longer than a moment; until then nothing
    /// can be done in the program's windows.
    bool Wait(const std::string& text, const std::function<bool()>& isDone) override;
    std::optional<std::size_t> ChooseScanner(std::span<const CScannerDevice> scanners,
                                             std::size_t current) override;
    void OpenScanWindow(const CScanWindowRequest& request, CScanWindowActions actions) override;
    void ShowState(const CScanWindowState& state) override;
    void ShowPreview(const CScannedPage& page) override;
    void CloseScanWindow() override;

private:
    QWidget& m_parent;
    std::unique_ptr<CScanDialog> m_window;
};

} // namespace velmor
