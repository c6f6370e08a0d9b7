#pragma once

#include "platform/files/Files.h"
#include "sound/SoundPeaks.h"

#include <QObject>
#include <condition_variable>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <thread>

namespace velmor {

/// What is drawn of sounds. Each is computed once, on a thread of its own that begins with the first, and again
/// only when its file has changed.
class CXSheetWaves {
public:
    /// `ready` is called on this thread, by its event loop, when what Find() did not have is there.
    explicit CXSheetWaves(std::function<void()> ready) : m_ready(std::move(ready)) {}
    CXSheetWaves(const CXSheetWaves&) = delete;
    CXSheetWaves& operator=(const CXSheetWaves&) = delete;
    ~CXSheetWaves();

    /// A ".sound" file as it is now. Null while it is being computed; of a file that cannot be read there is
    /// nothing to draw.
    std::shared_ptr<const CSoundPeaks> Find(const Path& file, const CFileIdentity& identity);

private:
    static constexpr std::size_t mostKept = 256;

    struct CWave {
        CFileIdentity identity;
        std::shared_ptr<const CSoundPeaks> peaks; ///< null while it is being computed
    };

    void Work();

    std::function<void()> m_ready;
    QObject m_here; ///< whose thread `ready` is called on
    std::mutex m_mutex;
    std::condition_variable m_ordered;
    std::map<std::string, CWave> m_waves; ///< by file
    std::deque<std::string> m_orders;
    bool m_ends = false;
    std::thread m_thread;
};

} // namespace velmor
