#pragma once

#include "image/CelImg.h"
#include "image/Color.h"
#include "platform/files/Files.h"

#include <atomic>
#include <cstdint>
#include <future>
#include <map>
#include <memory>
#include <optional>
#include <vector>

namespace velmor {

/// Which colours a folder's cels are painted with, found on a thread of its own. What a file holds is remembered by
/// the file's identity, so that only changed ones are read again. Cels that cannot be read have no colours.
class CUsedColors {
public:
    CUsedColors() = default;
    CUsedColors(const CUsedColors&) = delete;
    CUsedColors& operator=(const CUsedColors&) = delete;
    /// Waits for the cel that is being read.
    ~CUsedColors();

    /// Looks through files; `edited` is an image that takes the place of its file. What was being looked through
    /// before is given up.
    void Look(std::vector<Path> files, std::optional<CCelImg> edited);
    /// Whether it is still being looked.
    bool IsLooking() const { return m_search.valid(); }
    /// To be called now and then while it is: takes what has been found. True when it is news.
    bool Poll();
    /// Nothing while that is not known.
    std::optional<bool> IsUsed(CColor color) const;

private:
    using Colors = std::vector<std::uint32_t>; ///< in order
    struct CFound {
        CFileIdentity identity;
        Colors colors;
    };
    struct CResult {
        std::map<Path, CFound> files;
        Colors all;
    };

    struct CTask {
        std::vector<Path> files;
        std::optional<CCelImg> edited;
    };

    void Start(CTask task);
    static CResult Search(std::map<Path, CFound> known, CTask task, const std::shared_ptr<std::atomic<bool>>& stop);

    std::map<Path, CFound> m_files;
    std::optional<Colors> m_all;
    std::optional<CTask> m_next; ///< when the one that goes on has stopped
    std::shared_ptr<std::atomic<bool>> m_stop;
    std::future<CResult> m_search;
};

} // namespace velmor
