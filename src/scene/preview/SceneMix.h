#pragma once

#include "platform/files/Files.h"
#include "sound/SoundMix.h"

#include <atomic>
#include <memory>
#include <optional>
#include <thread>
#include <vector>

namespace velmor {

struct CSceneModel;

/// The sound of the open scene in full quality, mixed on a thread of its own where any sound has an original, and
/// only again when what is heard has changed. Called from one thread.
class CSceneMix {
public:
    CSceneMix() = default;
    CSceneMix(const CSceneMix&) = delete;
    CSceneMix& operator=(const CSceneMix&) = delete;
    ~CSceneMix() { Stop(); }

    /// What is heard of the scene now is needed.
    void Want(const CSceneModel& model);
    /// Gives the memory back.
    void Forget() {
        Stop();
        m_source.reset();
    }
    /// Whether what was wanted last is there.
    bool IsReady() const { return m_done; }
    /// Null while it is not ready, and where the prepared track is all that there is.
    std::shared_ptr<const CMixedSound> Mixed() const { return m_done ? m_mixed : nullptr; }

private:
    /// What a mix is made of.
    struct CSource {
        std::vector<CSoundPlacement> placements;
        int frameCount = 0;
        int frameRate = 0;
        std::vector<Path> files; ///< sounds and their originals
        std::vector<std::optional<CFileIdentity>> states;

        bool operator==(const CSource&) const = default;
    };

    static CSource SourceOf(const CSceneModel& model);
    void Stop();

    std::optional<CSource> m_source;
    std::shared_ptr<const CMixedSound> m_mixed; ///< the thread's until m_done
    std::atomic<bool> m_done = true;
    std::jthread m_thread;
};

} // namespace velmor
