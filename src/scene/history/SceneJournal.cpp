#include "scene/history/SceneJournal.h"

#include "platform/files/ContentHash.h"
#include "xsheet/XSheetFile.h"

namespace velmor {

namespace {

std::string Hexadecimal(std::uint64_t value) {
    std::string text(16, '0');
    for (auto digit = text.rbegin(); digit != text.rend(); ++digit, value >>= 4)
        *digit = "0123456789abcdef"[value & 15];
    return text;
}

bool CanBeReplayed(CHistory& history, const CScenePaths& paths) {
    CScene scene;
    if (!LoadXSheet(paths.XSheetFile(), scene) || !history.Replay(scene))
        return false;
    const std::string image = history.Session().image;
    CCelImg read;
    if (image.empty())
        return true;
    static_cast<void>(read.Load(paths.SceneFolder() / PathOf(image))); // it only counts if there are strokes on it
    return history.Replay(read, image);
}

} // namespace

Path JournalFile(const Path& journals, const CScenePaths& paths, const std::string& scene) {
    std::error_code error;
    const std::string place = Utf8Of(std::filesystem::weakly_canonical(paths.SceneFolder(), error));
    const std::uint64_t hash = ContentHash({reinterpret_cast<const std::uint8_t*>(place.data()), place.size()});
    return journals / PathOf(scene + "-" + Hexadecimal(hash) + ".journal");
}

CStatus FindUnsavedWork(const Path& journals, const CScenePaths& paths, const std::string& scene,
                        std::optional<CFoundWork>& found) {
    found.reset();
    const Path file = JournalFile(journals, paths, scene);
    if (!FileExists(file))
        return {};
    std::unique_ptr<CJournal> journal;
    CJournalContents contents;
    if (CStatus opened = CJournal::Open(file, journal, contents); !opened)
        return opened;
    CHistory history;
    history.Open(std::move(journal), std::move(contents), Utf8Of(paths.XSheetFile().filename()),
                 paths.SceneFolder());
    if (std::optional<CUnsavedWork> work = history.Unsaved(paths.SceneFolder())) {
        const bool fits = work->misfit.empty();
        found = {std::move(*work), !fits || CanBeReplayed(history, paths)};
    }
    return {};
}

} // namespace velmor
