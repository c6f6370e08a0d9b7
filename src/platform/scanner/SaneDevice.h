#pragma once

#include "platform/scanner/ScanAssembler.h"
#include "platform/scanner/Scanner.h"

#include <functional>
#include <sane/sane.h>

namespace velmor {

/// An open scanner of SANE. Every call may take as long as the device likes.
class CSaneDevice {
public:
    enum class Outcome { Page, NoMorePages, Cancelled, Failed };

    CSaneDevice() = default;
    CSaneDevice(const CSaneDevice&) = delete;
    CSaneDevice& operator=(const CSaneDevice&) = delete;
    ~CSaneDevice() { Close(); }

    SANE_Status Open(const std::string& name);
    void Close();
    CScannerAbilities Abilities() const;

    /// Sets what the scanner has an option for, as near as it can.
    void Apply(const CScanSettings& settings);
    /// Scans one page; `report` gets its progress in percent and says whether to stop.
    Outcome ScanPage(const CScanSettings& settings, const std::function<bool(int percent)>& report,
                     CScannedPage& page);
    /// Ends the scan, after the last page or in the middle of one.
    void EndScan();
    /// What the last page failed for, for the user; empty when it did not.
    const std::string& Failure() const { return m_failure; }
    void SetFailure(SANE_Status status);

private:
    struct COption {
        SANE_Int index = 0;
        const SANE_Option_Descriptor* descriptor = nullptr;
        explicit operator bool() const { return descriptor != nullptr; }
    };

    COption Find(const char* name) const;
    void SetNumber(const char* name, double value);
    [[nodiscard]] bool SetText(const char* name, const std::string& value);
    void SetMode(ScanMode mode);
    void SetSource(bool feeder);
    void SetArea(const CScanArea& area, int resolution);
    double ReadNumber(const COption& option, double otherwise) const;
    Outcome ReadFrame(CScanAssembler& page, const std::function<bool(int percent)>& report);
    Outcome Fail(SANE_Status status);

    SANE_Handle m_handle = nullptr;
    std::string m_failure;
};

} // namespace velmor
