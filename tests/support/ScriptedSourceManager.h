#pragma once

#include "acquire/Bitmap.h"
#include "acquire/SourceManager.h"
#include "platform/scanner/SourceManagerLibrary.h"

#include <algorithm>
#include <deque>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace velmor::testing {

/// A source manager that answers from a script and writes down what it is asked.
class CScriptedSourceManager final : public ISourceManager {
public:
    bool isInstalled = true;
    /// Return codes of operations that do not succeed, by their names in `calls`.
    std::map<std::string, std::uint16_t> answers;
    /// What the source says at each event, in order.
    std::deque<std::uint16_t> events;
    /// Pending counts after each ended transfer, in order.
    std::deque<std::uint16_t> pending;
    /// The image of each transfer; one without bytes comes without memory.
    PackedBitmap image;
    /// Every call but those for events.
    std::vector<std::string> calls;
    std::vector<void*> seenMessages;
    twain::CIdentity application;
    bool isLoaded = false;

    twain::DsmEntry Load() override {
        isLoaded = isInstalled;
        if (!isInstalled)
            return {};
        return [this](twain::CIdentity* app, twain::CIdentity* source, std::uint32_t group, std::uint16_t type,
                      std::uint16_t message, void* record) {
            application = *app;
            return Answer(source, group, type, message, record);
        };
    }
    void Unload() override { isLoaded = false; }

    std::vector<std::string> TakeCalls() { return std::exchange(calls, {}); }

private:
    static std::string NameOf(std::uint16_t type, std::uint16_t message) {
        using namespace twain;
        static const std::map<std::pair<std::uint16_t, std::uint16_t>, std::string> names = {
            {{DAT_PARENT, MSG_OPENDSM}, "open manager"},     {{DAT_PARENT, MSG_CLOSEDSM}, "close manager"},
            {{DAT_IDENTITY, MSG_GETDEFAULT}, "get default"}, {{DAT_IDENTITY, MSG_USERSELECT}, "user select"},
            {{DAT_IDENTITY, MSG_OPENDS}, "open source"},     {{DAT_IDENTITY, MSG_CLOSEDS}, "close source"},
            {{DAT_USERINTERFACE, MSG_ENABLEDS}, "enable"},   {{DAT_USERINTERFACE, MSG_DISABLEDS}, "disable"},
            {{DAT_EVENT, MSG_PROCESSEVENT}, "event"},        {{DAT_IMAGENATIVEXFER, MSG_GET}, "transfer"},
            {{DAT_IMAGEFILEXFER, MSG_GET}, "transfer file"}, {{DAT_PENDINGXFERS, MSG_ENDXFER}, "end transfer"},
            {{DAT_PENDINGXFERS, MSG_RESET}, "reset"}};
        const auto found = names.find({type, message});
        return found == names.end() ? "unknown" : found->second;
    }

    std::uint16_t Answer(twain::CIdentity* source, std::uint32_t group, std::uint16_t type, std::uint16_t message,
                         void* record) {
        using namespace twain;
        std::string name = NameOf(type, message);
        // Image transfers are image operations, everything else is control; the manager's own have no source.
        const bool isImage = type == DAT_IMAGENATIVEXFER || type == DAT_IMAGEFILEXFER;
        const bool isManagers = type == DAT_PARENT || type == DAT_IDENTITY;
        if (group != (isImage ? DG_IMAGE : DG_CONTROL) || (source == nullptr) != isManagers)
            name = "wrong " + name;
        if (name == "event")
            return AnswerEvent(*static_cast<CEvent*>(record));
        calls.push_back(name);
        if (const auto answer = answers.find(name); answer != answers.end())
            return answer->second;
        if (name == "end transfer") {
            static_cast<CPendingTransfers*>(record)->count = pending.empty() ? std::uint16_t{0} : pending.front();
            if (!pending.empty())
                pending.pop_front();
        }
        if (!isImage)
            return TWRC_SUCCESS;
        if (type == DAT_IMAGENATIVEXFER && !image.empty()) {
            auto* handle = static_cast<void**>(record);
            *handle = AllocateGlobal(image.size());
            std::ranges::copy(image, static_cast<std::uint8_t*>(LockGlobal(*handle)));
        }
        return TWRC_XFERDONE;
    }

    std::uint16_t AnswerEvent(twain::CEvent& event) {
        seenMessages.push_back(event.event);
        if (events.empty())
            return twain::TWRC_NOTDSEVENT;
        event.message = events.front();
        events.pop_front();
        return twain::TWRC_DSEVENT;
    }
};

} // namespace velmor::testing
