#include "render/preview/PreviewPictures.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace velmor {

void CPreviewPictures::Want(std::vector<PreviewContent> contents) {
    m_wanted = std::move(contents);
    m_next = 0;
    m_places.clear();
    for (std::size_t place = 0; place < m_wanted.size(); ++place)
        m_places.emplace(m_wanted[place], place); // of frames that are alike the first one counts
}

std::optional<CPreviewPictures::COrder> CPreviewPictures::Begin() {
    while (m_next < m_wanted.size() && (m_kept.contains(m_wanted[m_next]) || m_begun.contains(m_wanted[m_next])))
        ++m_next;
    if (m_next == m_wanted.size() || !MakeRoom(m_wanted[m_next]->ByteCount(), m_next))
        return std::nullopt;
    COrder order{m_wanted[m_next], m_next == 0 && m_begun.empty()};
    m_byteCount += order.content->ByteCount();
    m_begun.insert(order.content);
    return order;
}

void CPreviewPictures::Take(const PreviewContent& content, PreviewPicture picture) {
    if (m_begun.erase(content) != 0) // or all has been forgotten since
        m_kept[content] = {std::move(picture), ++m_uses};
}

PreviewPicture CPreviewPictures::Find(const PreviewContent& content) {
    const auto found = m_kept.find(content);
    if (found == m_kept.end())
        return nullptr;
    found->second.lastUse = ++m_uses;
    return found->second.picture;
}

void CPreviewPictures::Clear() {
    Want({});
    m_kept.clear();
    m_begun.clear();
    m_byteCount = 0;
}

std::size_t CPreviewPictures::PlaceOf(const PreviewContent& content) const {
    const auto found = m_places.find(content);
    return found != m_places.end() ? found->second : std::numeric_limits<std::size_t>::max();
}

bool CPreviewPictures::MakeRoom(std::size_t bytes, std::size_t place) {
    while (m_byteCount + bytes > m_mostBytes) {
        const auto last = NeededLast();
        if (last == m_kept.end())
            return m_begun.empty();
        if (PlaceOf(last->first) <= place)
            return false;
        m_byteCount -= last->first->ByteCount();
        m_kept.erase(last);
    }
    return true;
}

CPreviewPictures::Kept::iterator CPreviewPictures::NeededLast() {
    return std::ranges::max_element(
        m_kept, {}, [this](const auto& kept) { return std::pair(PlaceOf(kept.first), ~kept.second.lastUse); });
}

} // namespace velmor
