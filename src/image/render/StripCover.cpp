#include "image/render/StripCover.h"

namespace velmor {

void CStripCover::FindOpenSpans(std::vector<CColumnSpan>& spans) const {
    spans.clear();
    int begin = 0;
    for (int block = 0; block < BlockCount(); ++block) {
        if (!IsCovered(block))
            continue;
        const int first = block;
        while (block < BlockCount() && IsCovered(block))
            ++block;
        if (block - first < leastBlocks && first > 0 && block < BlockCount())
            continue;
        if (first * blockColumns > begin)
            spans.push_back({begin, first * blockColumns});
        begin = block * blockColumns;
    }
    if (begin < m_width)
        spans.push_back({begin, m_width});
}

} // namespace velmor
