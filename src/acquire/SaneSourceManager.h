#pragma once

#include "acquire/Bitmap.h"
#include "acquire/ScannerUi.h"
#include "acquire/SourceManager.h"

#include <deque>
#include <string>

namespace velmor {

/// The source manager of machines without one: answers the same triplets, with the scanners of the platform as its
/// sources and the scan window as their user interface. Where there is no scanner, there is no source, and nothing
/// is shown.
class CSaneSourceManager final : public ISourceManager {
public:
    /// Scanner and user interface outlive the manager.
    CSaneSourceManager(IScanner& scanner, IScannerUi& ui) : m_scanner(scanner), m_ui(ui) {}

    twain::DsmEntry Load() override;
    void Unload() override {}

    /// The chosen scanner, without a name when none has been chosen. It is opened without being looked for.
    const CScannerDevice& DefaultScanner() const { return m_default; }
    void SetDefaultScanner(CScannerDevice scanner) { m_default = std::move(scanner); }
    /// What the scan window opens on, and what it was left with after a scan.
    const CScanSettings& Settings() const { return m_settings; }
    void SetSettings(const CScanSettings& settings) { m_settings = settings; }

private:
    enum class Job { None, Preview, Scan };

    std::uint16_t Answer(twain::CIdentity* source, std::uint32_t group, std::uint16_t type, std::uint16_t message,
                         void* record);
    std::uint16_t AnswerIdentity(std::uint16_t message, twain::CIdentity& identity);
    std::uint16_t AnswerUserInterface(std::uint16_t message);
    std::uint16_t AnswerPending(std::uint16_t message, twain::CPendingTransfers& pending);
    std::uint16_t SelectByUser(twain::CIdentity& identity);
    std::uint16_t OpenSource(twain::CIdentity& identity);
    std::uint16_t CloseSource();
    std::uint16_t ProcessEvent(twain::CEvent& event);
    std::uint16_t TransferImage(void** handle);
    std::uint16_t Fail(std::uint16_t conditionCode);

    [[nodiscard]] bool FindScanners();
    [[nodiscard]] bool OpenScanner(const CScannerDevice& scanner);
    [[nodiscard]] bool WaitForScanner(const std::string& text);
    void StartJob(Job job, const CScanSettings& settings);
    void CancelJob();
    void TakePages();
    void ShowState();

    IScanner& m_scanner;
    IScannerUi& m_ui;
    CScannerDevice m_default;
    CScanSettings m_settings;
    std::string m_openLabel; ///< of the open scanner, for the user
    std::uint16_t m_conditionCode = twain::TWCC_SUCCESS;
    Job m_job = Job::None;
    std::deque<PackedBitmap> m_pages;
    int m_pagesOfJob = 0;
    bool m_isEnabled = false;
    bool m_closeRequested = false;
};

} // namespace velmor
