#pragma once

#include "scene/ScanOperations.h"
#include "views/scan/ScanUi.h"

class QWidget;

namespace velmor {

class CProfile;
class CVelmorltDoc;
class IPrompter;

/// The scan commands in the window: their dialogs, and the step of the window system's loop with which a session
/// waits.
class CScanning {
public:
    /// All outlive the object.
    CScanning(QWidget& window, CVelmorltDoc& doc, IPrompter& prompter, CProfile& profile);
    CScanning(const CScanning&) = delete;
    CScanning& operator=(const CScanning&) = delete;

    void SelectSource();
    void ScanCels();
    void ScanPicture();

private:
    void Acquire(SourceMode kind);
    void* WindowHandle() const;

    QWidget& m_window;
    CScanUi m_ui;
    CScanOperations m_operations;
};

} // namespace velmor
