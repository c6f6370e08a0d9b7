#include "scene/UsedColors.h"

#include <algorithm>
#include <chrono>
#include <exception>
#include <utility>

namespace velmor {

namespace {

std::uint32_t CodeOf(CColor color) {
    return static_cast<std::uint32_t>(color.alpha) << 24 | MakeColorRef(color.red, color.green, color.blue);
}

void BringInOrder(std::vector<std::uint32_t>& colors) {
    std::ranges::sort(colors);
    colors.erase(std::unique(colors.begin(), colors.end()), colors.end());
}

std::vector<std::uint32_t> ColorsOf(const CCelImg& image) {
    constexpr std::size_t many = 1 << 20; // of a picture that no run is longer than a pixel of
    std::vector<std::uint32_t> colors;
    for (int y = 0; y < image.Height(); ++y)
        for (int x = 0; x < image.Width(); ++x) {
            const std::uint32_t code = CodeOf(image.ColorAt(x, y));
            if (colors.empty() || colors.back() != code)
                colors.push_back(code);
            if (colors.size() == many)
                BringInOrder(colors);
        }
    BringInOrder(colors);
    return colors;
}

} // namespace

CUsedColors::~CUsedColors() {
    if (m_stop)
        *m_stop = true;
}

void CUsedColors::Look(std::vector<Path> files, std::optional<CCelImg> edited) {
    CTask task{std::move(files), std::move(edited)};
    if (m_search.valid()) {
        *m_stop = true;
        m_next = std::move(task);
    } else {
        Start(std::move(task));
    }
}

void CUsedColors::Start(CTask task) {
    m_stop = std::make_shared<std::atomic<bool>>(false);
    try {
        m_search = std::async(std::launch::async, Search, m_files, std::move(task), m_stop);
    } catch (const std::exception&) {
        m_all.reset(); // no thread, no memory: it is not known
    }
}

bool CUsedColors::Poll() {
    if (!m_search.valid() || m_search.wait_for(std::chrono::seconds(0)) != std::future_status::ready)
        return false;
    CResult found = m_search.get();
    m_files = std::move(found.files);
    if (m_next) {
        Start(*std::exchange(m_next, std::nullopt));
        return false;
    }
    const bool isNews = m_all != found.all;
    m_all = std::move(found.all);
    return isNews;
}

std::optional<bool> CUsedColors::IsUsed(CColor color) const {
    if (!m_all)
        return std::nullopt;
    return std::ranges::binary_search(*m_all, CodeOf(color));
}

CUsedColors::CResult CUsedColors::Search(std::map<Path, CFound> known, CTask task,
                                         const std::shared_ptr<std::atomic<bool>>& stop) {
    CResult result{std::move(known), {}};
    const auto add = [&](const Colors& colors) {
        result.all.insert(result.all.end(), colors.begin(), colors.end());
        BringInOrder(result.all);
    };
    try {
        for (const Path& file : task.files) {
            const std::optional<CFileIdentity> identity = *stop ? std::nullopt : IdentifyFile(file);
            if (!identity || (task.edited && task.edited->FilePath() == file))
                continue;
            CFound& found = result.files[file];
            if (CCelImg image; found.identity != *identity) {
                const bool isRead = static_cast<bool>(image.Load(file));
                found = {*identity, isRead ? ColorsOf(image) : Colors()};
            }
            add(found.colors);
        }
        if (task.edited && !*stop)
            add(ColorsOf(*task.edited));
        std::erase_if(result.files, [&](const auto& entry) {
            return std::ranges::find(task.files, entry.first) == task.files.end();
        });
    } catch (const std::exception&) { // no memory: what is known by now counts
    }
    return result;
}

} // namespace velmor
