#include "app/cli/ConsoleProgress.h"

#include "app/cli/JsonLog.h"
#include "platform/process/Terminal.h"

#include <algorithm>
#include <iostream>
#include <string>

namespace velmor {

namespace {

std::string InOneLine(std::string text) {
    std::ranges::replace(text, '\n', ' ');
    return text;
}

class CLineProgress final : public IProgress {
public:
    void Report(int percent, const std::string&) override { m_percent = percent; }
    void FrameDone(int frame) override {
        std::cerr << "FRAME: " << frame << "\nPROGRESS: " << m_percent << '%' << std::endl;
    }
    void FrameFailed(int frame, const std::string& why) override {
        std::cerr << "FAILED: " << frame << ' ' << InOneLine(why) << std::endl;
    }
    bool TakeStopRequest() override { return false; }

private:
    int m_percent = 0;
};

class CJsonProgress final : public IProgress {
public:
    void Report(int percent, const std::string&) override { m_percent = percent; }
    void FrameDone(int frame) override { LogJson({{"event", "frame"}, {"frame", frame}, {"percent", m_percent}}); }
    void FrameFailed(int frame, const std::string& why) override {
        LogJson({{"event", "failed"}, {"frame", frame}, {"percent", m_percent}, {"text", why}});
    }
    bool TakeStopRequest() override { return false; }

private:
    int m_percent = 0;
};

class CBarProgress final : public IProgress {
public:
    CBarProgress() = default;
    CBarProgress(const CBarProgress&) = delete;
    CBarProgress& operator=(const CBarProgress&) = delete;
    ~CBarProgress() override { std::cerr << std::endl; }

    void Report(int percent, const std::string& text) override {
        constexpr int columns = 40;
        const int done = std::clamp(percent, 0, 100) * columns / 100;
        std::cerr << "\r[" << std::string(static_cast<std::size_t>(done), '#')
                  << std::string(static_cast<std::size_t>(columns - done), '.') << "] " << percent << "%  " << text
                  << "   " << std::flush;
    }
    void FrameFailed(int frame, const std::string& why) override {
        std::cerr << "\rFAILED: " << frame << ' ' << InOneLine(why) << std::endl;
    }
    bool TakeStopRequest() override { return false; }
};

} // namespace

std::unique_ptr<IProgress> MakeConsoleProgress(LogFormat log) {
    if (log == LogFormat::Json)
        return std::make_unique<CJsonProgress>();
    if (ErrorOutputIsTerminal())
        return std::make_unique<CBarProgress>();
    return std::make_unique<CLineProgress>();
}

} // namespace velmor
