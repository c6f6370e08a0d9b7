#pragma once

#include <memory>

class QWidget;

namespace velmor {

class CProfile;
class CTwainSession;
class CVelmorltDoc;
class IPrompter;
enum class ScanMode;
enum class SourceMode;

/// The scan commands: a session with a scanner for each, whose pages go to the document. Where there is no scanner
/// they do nothing but say so in the status bar. The scanner that was chosen and the settings of the last scan are
/// remembered.
class CScanning {
public:
    /// All outlive the object.
    CScanning(QWidget& window, CVelmorltDoc& doc, IPrompter& prompter, CProfile& profile);
    CScanning(const CScanning&) = delete;
    CScanning& operator=(const CScanning&) = delete;
    ~CScanning();

    void SelectSource();
    void ScanCels();
    void ScanPicture();

private:
    struct CScanners;

    void Acquire(SourceMode kind, ScanMode mode);
    void* WindowHandle() const;
    CScanners& Scanners();
    void Remember();

    QWidget& m_window;
    CVelmorltDoc& m_doc;
    IPrompter& m_prompter;
    CProfile& m_profile;
    std::unique_ptr<CScanners> m_scanners; ///< made at the first use
    bool m_isRunning = false;
};

} // namespace velmor
