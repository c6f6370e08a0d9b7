#pragma once

#include <string>

namespace velmor {

/// How long work tells where it stands and learns that it is to stop. Served by dialogs, the command line and
/// tests.
class IProgress {
public:
    virtual ~IProgress() = default;
    /// `percent` 0 to 100; `text` is what the progress dialog shows.
    virtual void Report(int percent, const std::string& text) = 0;
    /// A frame, counted from 1, is done.
    virtual void FrameDone(int frame) { static_cast<void>(frame); }
    /// A frame, counted from 1, could not be made, and the work goes on with the others.
    virtual void FrameFailed(int frame, const std::string& why) {
        static_cast<void>(frame);
        static_cast<void>(why);
    }
    /// True when the user has asked to stop since the last call (the request is cleared by asking).
    virtual bool TakeStopRequest() = 0;
};

/// For work that nobody watches.
class CNoProgress final : public IProgress {
public:
    void Report(int, const std::string&) override {}
    bool TakeStopRequest() override { return false; }
};

} // namespace velmor
