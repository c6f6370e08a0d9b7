#pragma once

#include "platform/files/Files.h"
#include "render/FrameLayers.h"

#include <cstddef>
#include <optional>
#include <vector>

namespace velmor {

/// What of frames that are composed one after the other lies below the lowest level that changes: a background and
/// held levels, while the camera stands. It is worth keeping once it was the same in three frames.
class CHeldLayers {
public:
    /// Looks at the frame that is composed next. Returns how many of its layers, from the bottom, are drawn in
    /// Kept() already. What was kept of other layers, or of files that have changed since, is dropped.
    std::size_t Begin(const CFrameRequest& request);
    const CFrameBuffer& Kept() const { return m_kept; }
    /// How many of that frame's layers are worth keeping; at least as many as are kept.
    std::size_t WorthKeeping() const { return m_worthKeeping; }
    /// Takes a copy of the frame while nothing but its lowest `layers` are drawn.
    void Keep(const CFrameBuffer& frame, std::size_t layers);

private:
    using FileIdentities = std::vector<std::optional<CFileIdentity>>;

    std::size_t SameAsBefore(const CFrameRequest& request, const FileIdentities& files) const;

    CFrameRequest m_before;
    FileIdentities m_filesBefore; ///< of its layers, taken before they were read
    std::size_t m_sameBefore = 0; ///< of its layers, as in the one before it
    std::size_t m_worthKeeping = 0;
    std::size_t m_keptLayers = 0;
    CFrameBuffer m_kept;
};

} // namespace velmor
