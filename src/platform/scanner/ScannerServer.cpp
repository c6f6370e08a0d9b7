#include "platform/scanner/ScannerServer.h"

#include "platform/process/ChildProcess.h"
#include "platform/scanner/SaneDevice.h"
#include "platform/scanner/ScannerMessages.h"

#include <exception>
#include <unistd.h>
#include <utility>

namespace velmor {

namespace {

constexpr int connection = 0; // standard input
constexpr int forever = -1;
// A driver that needs longer to end a scan has locked itself out; then the process goes, which the program bears.
constexpr unsigned secondsToEnd = 5;

std::string TextOf(const char* text) {
    return text == nullptr ? "" : text;
}

CScannerDevice DeviceOf(const SANE_Device& device) {
    std::string name = TextOf(device.name);
    std::string label = TextOf(device.vendor);
    const std::string model = TextOf(device.model);
    if (!label.empty() && !model.empty())
        label += ' ';
    label += model;
    if (label.empty())
        label = name;
    return {std::move(name), std::move(label)};
}

std::string FailureOf(SANE_Status status) {
    return status == SANE_STATUS_GOOD ? "" : ::sane_strstatus(status);
}

class CServer {
public:
    void Run() {
        CChannelMessage request;
        while (!m_isGone && m_channel.Receive(request, forever) == CMessageChannel::Result::Message) {
            m_cancelled = false;
            try {
                Carry(request);
            } catch (const std::exception& failure) {
                Send(MessageOf(ScannerMessage::Done, std::string(failure.what())));
            }
        }
    }

private:
    void Carry(const CChannelMessage& request) {
        switch (KindOf(request)) {
        case ScannerMessage::Find:
            return Send(MessageOf(ScannerMessage::Done, Find()));
        case ScannerMessage::Open:
            return Send(MessageOf(ScannerMessage::Done, Open(velmor::TextOf(request))));
        case ScannerMessage::Scan:
            return Send(MessageOf(ScannerMessage::Done, Scan(SettingsOf(request))));
        default:
            return; // a cancel that came too late
        }
    }

    std::string Find() {
        const SANE_Device** list = nullptr;
        std::vector<CScannerDevice> devices;
        const SANE_Status status = ::sane_get_devices(&list, SANE_FALSE);
        if (status == SANE_STATUS_GOOD && list != nullptr)
            for (; *list != nullptr; ++list)
                devices.push_back(DeviceOf(**list));
        Send(MessageOf(devices));
        return FailureOf(status);
    }

    std::string Open(const std::string& name) {
        const SANE_Status status = m_device.Open(name);
        if (status == SANE_STATUS_GOOD)
            Send(MessageOf(m_device.Abilities()));
        return FailureOf(status);
    }

    std::string Scan(const CScanSettings& settings) {
        using Outcome = CSaneDevice::Outcome;
        m_device.Apply(settings);
        Outcome outcome = Outcome::Page;
        for (int pages = 0; outcome == Outcome::Page && (pages == 0 || settings.feeder) && !Report(0); ++pages) {
            CScannedPage page;
            outcome = m_device.ScanPage(
                settings, [this](int percent) { return Report(percent); }, page);
            if (outcome == Outcome::Page)
                Send(MessageOf(page));
            else if (outcome == Outcome::NoMorePages && pages == 0)
                m_device.SetFailure(SANE_STATUS_NO_DOCS);
        }
        Send(MessageOf(ScannerMessage::Ending, m_device.Failure()));
        ::alarm(secondsToEnd);
        m_device.EndScan();
        ::alarm(0);
        return m_device.Failure();
    }

    /// Whether to stop.
    bool Report(int percent) {
        if (std::exchange(m_percent, percent) != percent)
            Send(MessageOf(ScannerMessage::Progress, percent));
        CChannelMessage message;
        const auto result = m_channel.Receive(message, 0);
        m_isGone = m_isGone || result == CMessageChannel::Result::Closed;
        m_cancelled = m_cancelled ||
                      (result == CMessageChannel::Result::Message && KindOf(message) == ScannerMessage::Cancel);
        return m_isGone || m_cancelled;
    }

    void Send(const CChannelMessage& message) { m_isGone = !m_channel.Send(message) || m_isGone; }

    CMessageChannel m_channel{connection};
    CSaneDevice m_device;
    int m_percent = 0;
    bool m_cancelled = false;
    bool m_isGone = false;
};

} // namespace

int ServeScanners() {
    EndWithParent();
    if (::sane_init(nullptr, nullptr) != SANE_STATUS_GOOD)
        return 1;
    CServer().Run(); // closes its device before SANE goes
    ::sane_exit();
    return 0;
}

} // namespace velmor
