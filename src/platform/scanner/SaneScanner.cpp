#include "platform/scanner/SaneScanner.h"

#include "platform/files/SystemPaths.h"
#include "platform/process/ChildProcess.h"
#include "platform/scanner/ScannerMessages.h"

#include <chrono>
#include <condition_variable>
#include <deque>
#include <exception>
#include <functional>
#include <mutex>
#include <thread>
#include <utility>

namespace velmor {

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::size_t mostWaitingPages = 2; // a page can have a hundred megabytes
constexpr int pollMilliseconds = 10;
constexpr int closeMilliseconds = 2000;
// How long a driver may take to stop. A search has nothing to lose; a scanner has its lamp to bring home.
constexpr auto searchPatience = std::chrono::seconds(0);
constexpr auto openPatience = std::chrono::seconds(2);
constexpr auto scanPatience = std::chrono::seconds(10);
constexpr auto endPatience = std::chrono::seconds(2);
constexpr const char* noAnswer = "The scanner does not answer";

} // namespace

/// The thread that talks to the scanner process, and what it shares with its owner.
class CSaneScanner::CConversation {
public:
    explicit CConversation(Path process) : m_processFile(std::move(process)) {}

    void Start(std::function<void()> operation) {
        const std::scoped_lock lock(m_mutex);
        if (m_isBusy)
            return;
        m_isBusy = true;
        m_stop = false;
        m_failure.clear();
        m_pages.clear();
        m_operation = std::move(operation);
        if (!m_thread.joinable())
            m_thread = std::thread([this] { Serve(); });
        m_changed.notify_all();
    }

    void Stop(bool close, bool end) {
        const std::scoped_lock lock(m_mutex);
        m_stop = true;
        m_pages.clear();
        m_isOpen = m_isOpen && !close;
        m_close = m_close || close;
        m_end = m_end || end;
        m_changed.notify_all();
    }

    void Join() {
        if (m_thread.joinable())
            m_thread.join();
    }

    template<class Value>
    Value Get(Value CConversation::*member) const {
        const std::scoped_lock lock(m_mutex);
        return this->*member;
    }

    std::optional<CScannedPage> TakePage() {
        const std::scoped_lock lock(m_mutex);
        if (m_pages.empty())
            return std::nullopt;
        CScannedPage page = std::move(m_pages.front());
        m_pages.pop_front();
        m_changed.notify_all();
        return page;
    }

    // The operations, on the thread.
    void FindDevices();
    void Open(const std::string& name);
    void Scan(const CScanSettings& settings);

    bool m_isBusy = false;
    bool m_isOpen = false;
    int m_progress = 0;
    std::vector<CScannerDevice> m_devices;
    CScannerAbilities m_abilities;
    std::string m_failure;

private:
    void Serve();
    /// Asks the process, hands its news to `take`, and returns why it failed.
    std::string Ask(const CChannelMessage& request, Clock::duration patience,
                    const std::function<void(const CChannelMessage&)>& take);
    bool IsTooLate(Clock::duration patience);
    void TakeNews(const CChannelMessage& news);
    void Finish(std::string failure);

    mutable std::mutex m_mutex;
    std::condition_variable m_changed;
    std::function<void()> m_operation;
    std::deque<CScannedPage> m_pages;
    bool m_stop = false;
    bool m_close = false;
    bool m_end = false;

    // The thread's alone.
    Path m_processFile;
    CChildProcess m_process;
    std::string m_openName;
    std::optional<Clock::time_point> m_stoppedAt;

    std::thread m_thread; ///< the owner's
};

void CSaneScanner::CConversation::Serve() {
    for (;;) {
        std::unique_lock lock(m_mutex);
        m_changed.wait(lock, [this] { return m_end || m_close || m_operation; });
        const bool close = std::exchange(m_close, false);
        const auto operation = std::exchange(m_operation, nullptr);
        const bool end = m_end;
        lock.unlock();
        if (close || end)
            m_process.End(closeMilliseconds);
        if (end)
            return;
        if (!operation)
            continue;
        try {
            operation();
        } catch (const std::exception& failure) {
            m_process.Kill();
            Finish(failure.what());
        }
    }
}

bool CSaneScanner::CConversation::IsTooLate(Clock::duration patience) {
    const std::scoped_lock lock(m_mutex);
    if (!m_stop)
        return false;
    if (!m_stoppedAt) {
        m_stoppedAt = Clock::now();
        static_cast<void>(
            m_process.Channel().Send(MessageOf(ScannerMessage::Cancel))); // or it has died, which is noticed
    }
    return Clock::now() - *m_stoppedAt >= (m_end ? std::min<Clock::duration>(patience, endPatience) : patience);
}

std::string CSaneScanner::CConversation::Ask(const CChannelMessage& request, Clock::duration patience,
                                             const std::function<void(const CChannelMessage&)>& take) {
    using Result = CMessageChannel::Result;
    m_stoppedAt.reset();
    std::optional<std::string> ending;
    if (!m_process.IsRunning() && !m_process.Start(m_processFile))
        return noAnswer;
    Result result = m_process.Channel().Send(request) ? Result::Nothing : Result::Closed;
    while (result != Result::Closed && !IsTooLate(patience)) {
        CChannelMessage message;
        result = m_process.Channel().Receive(message, pollMilliseconds);
        if (result == Result::Message && KindOf(message) == ScannerMessage::Done)
            return TextOf(message);
        if (result == Result::Message && KindOf(message) == ScannerMessage::Ending)
            ending = TextOf(message);
        else if (result == Result::Message)
            take(message);
    }
    m_process.Kill();
    return ending.value_or(noAnswer);
}

void CSaneScanner::CConversation::Finish(std::string failure) {
    const std::scoped_lock lock(m_mutex);
    m_failure = m_stop ? std::string() : std::move(failure);
    m_isBusy = false;
    m_progress = 0;
}

void CSaneScanner::CConversation::FindDevices() {
    std::vector<CScannerDevice> devices;
    const std::string failure = Ask(MessageOf(ScannerMessage::Find), searchPatience,
                                    [&](const CChannelMessage& news) { devices = DevicesOf(news); });
    {
        const std::scoped_lock lock(m_mutex);
        m_devices = std::move(devices);
    }
    Finish(failure);
}

void CSaneScanner::CConversation::Open(const std::string& name) {
    CScannerAbilities abilities;
    const std::string failure = Ask(MessageOf(ScannerMessage::Open, name), openPatience,
                                    [&](const CChannelMessage& news) { abilities = AbilitiesOf(news); });
    m_openName = name;
    {
        const std::scoped_lock lock(m_mutex);
        m_isOpen = failure.empty() && !m_close;
        m_abilities = abilities;
    }
    Finish(failure);
}

void CSaneScanner::CConversation::TakeNews(const CChannelMessage& news) {
    if (KindOf(news) == ScannerMessage::Progress) {
        const std::scoped_lock lock(m_mutex);
        m_progress = NumberOf(news);
    } else if (KindOf(news) == ScannerMessage::Page) {
        CScannedPage page = PageOf(news);
        std::unique_lock lock(m_mutex);
        m_changed.wait(lock, [this] { return m_stop || m_pages.size() < mostWaitingPages; });
        if (!m_stop)
            m_pages.push_back(std::move(page));
    }
}

void CSaneScanner::CConversation::Scan(const CScanSettings& settings) {
    // A process that had to be killed took the open scanner with it.
    std::string failure;
    if (!m_process.IsRunning())
        failure = Ask(MessageOf(ScannerMessage::Open, m_openName), openPatience, [](const CChannelMessage&) {});
    if (failure.empty())
        failure = Ask(MessageOf(settings), scanPatience, [this](const CChannelMessage& news) { TakeNews(news); });
    Finish(failure);
}

CSaneScanner::CSaneScanner(Path process) : m_conversation(std::make_unique<CConversation>(std::move(process))) {}

CSaneScanner::~CSaneScanner() {
    m_conversation->Stop(true, true);
    m_conversation->Join();
}

Path CSaneScanner::UsualProcess() {
    return ProgramFolder() / "velmor-scanner";
}

bool CSaneScanner::IsBusy() const {
    return m_conversation->Get(&CConversation::m_isBusy);
}

void CSaneScanner::FindDevices() {
    m_conversation->Start([this] { m_conversation->FindDevices(); });
}

std::vector<CScannerDevice> CSaneScanner::Devices() const {
    return m_conversation->Get(&CConversation::m_devices);
}

void CSaneScanner::Open(const std::string& name) {
    m_conversation->Start([this, name] { m_conversation->Open(name); });
}

bool CSaneScanner::IsOpen() const {
    return m_conversation->Get(&CConversation::m_isOpen);
}

CScannerAbilities CSaneScanner::Abilities() const {
    return m_conversation->Get(&CConversation::m_abilities);
}

void CSaneScanner::Scan(const CScanSettings& settings) {
    if (IsOpen())
        m_conversation->Start([this, settings] { m_conversation->Scan(settings); });
}

std::optional<CScannedPage> CSaneScanner::TakePage() {
    return m_conversation->TakePage();
}

int CSaneScanner::Progress() const {
    return m_conversation->Get(&CConversation::m_progress);
}

std::string CSaneScanner::Failure() const {
    return m_conversation->Get(&CConversation::m_failure);
}

void CSaneScanner::Cancel() {
    m_conversation->Stop(false, false);
}

void CSaneScanner::Close() {
    m_conversation->Stop(true, false);
}

} // namespace velmor
