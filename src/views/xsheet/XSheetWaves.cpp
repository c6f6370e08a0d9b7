#include "views/xsheet/XSheetWaves.h"

#include "sound/SoundFile.h"

#include <new>
#include <utility>
#include <vector>

namespace velmor {

namespace {

std::shared_ptr<const CSoundPeaks> PeaksOf(const Path& file) {
    try {
        std::vector<std::uint8_t> samples;
        static_cast<void>(LoadSoundFile(file, "", samples)); // who plays it is told
        return std::make_shared<const CSoundPeaks>(samples);
    } catch (const std::bad_alloc&) {
        return std::make_shared<const CSoundPeaks>();
    }
}

} // namespace

CXSheetWaves::~CXSheetWaves() {
    {
        const std::lock_guard lock(m_mutex);
        m_ends = true;
    }
    m_ordered.notify_all();
    if (m_thread.joinable())
        m_thread.join();
}

std::shared_ptr<const CSoundPeaks> CXSheetWaves::Find(const Path& file, const CFileIdentity& identity) {
    const std::lock_guard lock(m_mutex);
    const auto known = m_waves.find(file.native());
    if (known != m_waves.end() && known->second.identity == identity)
        return known->second.peaks;
    if (m_waves.size() >= mostKept) {
        m_waves.clear(); // scenes that were looked at before
        m_orders.clear();
    }
    m_waves[file.native()] = {identity, nullptr};
    m_orders.push_back(file.native());
    if (!m_thread.joinable())
        m_thread = std::thread([this] { Work(); });
    m_ordered.notify_one();
    return nullptr;
}

void CXSheetWaves::Work() {
    std::unique_lock lock(m_mutex);
    for (;;) {
        m_ordered.wait(lock, [this] { return m_ends || !m_orders.empty(); });
        if (m_ends)
            return;
        const std::string file = std::move(m_orders.front());
        m_orders.pop_front();
        lock.unlock();
        std::shared_ptr<const CSoundPeaks> peaks = PeaksOf(file);
        lock.lock();
        if (const auto wave = m_waves.find(file); wave != m_waves.end())
            wave->second.peaks = std::move(peaks);
        if (!m_ends)
            QMetaObject::invokeMethod(&m_here, m_ready, Qt::QueuedConnection);
    }
}

} // namespace velmor
