#pragma once

#include "platform/files/Files.h"
#include "platform/scanner/Scanner.h"

#include <memory>

namespace velmor {

/// The scanners that SANE knows, one object for the program.
///
/// SANE runs in a process of its own, which is started with the first operation and ended when the scanner is
/// closed. Its drivers come from everywhere: some hang with their device, some crash, and to stop a scan SANE kills
/// threads wherever they are, which can leave the memory of the process they run in locked for good. None of that
/// reaches this program, and a process that does not obey in time is killed. A thread holds the conversation.
class CSaneScanner final : public IScanner {
public:
    /// `process` is the program that calls ServeScanners().
    explicit CSaneScanner(Path process);
    CSaneScanner(const CSaneScanner&) = delete;
    CSaneScanner& operator=(const CSaneScanner&) = delete;
    /// Gives a driver a moment to stop.
    ~CSaneScanner() override;

    /// Where the scanner process is: beside the program.
    static Path UsualProcess();

    bool IsBusy() const override;
    void FindDevices() override;
    std::vector<CScannerDevice> Devices() const override;
    void Open(const std::string& name) override;
    bool IsOpen() const override;
    CScannerAbilities Abilities() const override;
    void Scan(const CScanSettings& settings) override;
    std::optional<CScannedPage> TakePage() override;
    int Progress() const override;
    std::string Failure() const override;
    void Cancel() override;
    void Close() override;

private:
    class CConversation;
    std::unique_ptr<CConversation> m_conversation;
};

} // namespace velmor
