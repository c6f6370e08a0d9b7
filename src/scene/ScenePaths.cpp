#include "scene/ScenePaths.h"

#include "platform/files/ClaimedFile.h"
#include "scene/NamingRules.h"
#include "xsheet/XSheetCell.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <limits>
#include <optional>

namespace velmor {

namespace {

constexpr std::string_view sceneSuffix = ".scene";

std::vector<std::string> ListTitles(const Path& folder, std::string_view extension) {
    std::vector<std::string> titles = ListFiles(folder, extension);
    for (std::string& title : titles)
        title.resize(title.size() - extension.size());
    return titles;
}

// A cel's name as listing order takes it: the number, then the letter (0 for none).
struct CCelNumber {
    int number = 0;
    char letter = 0;

    // NOLINTNEXTLINE(modernize-use-nullptr): it takes the 0 that the compiler compares with for a pointer
    auto operator<=>(const CCelNumber&) const = default;
};

std::optional<CCelNumber> ParseCelName(const std::string& name) {
    CCelNumber parsed;
    const auto [end, error] = std::from_chars(name.data(), name.data() + name.size(), parsed.number);
    if (error != std::errc() || parsed.number < 0)
        return std::nullopt;
    const char last = name.back();
    if ((last >= 'a' && last <= 'z') || (last >= 'A' && last <= 'Z'))
        parsed.letter = last;
    return parsed;
}

std::string TextOf(const CCelNumber& cel) {
    std::string text = std::to_string(cel.number);
    if (cel.letter != 0)
        text += cel.letter;
    return text;
}

} // namespace

Path CScenePaths::SceneFolder() const {
    return PathOf(m_databaseFolder + m_scene + std::string(sceneSuffix));
}

Path CScenePaths::XSheetFile() const {
    return SceneFolder() / PathOf(m_scene + ".xsheet");
}

Path CScenePaths::CelFolder(const std::string& folder) const {
    return SceneFolder() / PathOf(folder);
}

Path CScenePaths::PaletteFile(const std::string& folder) const {
    return CelFolder(folder) / PathOf(folder + ".colors");
}

Path CScenePaths::CelFile(const std::string& folder, const std::string& cel) const {
    return CelFolder(folder) / PathOf(cel + ".bit");
}

Path CScenePaths::PicturesFolder() const {
    return SceneFolder() / PathOf(picturesFolder);
}

Path CScenePaths::PictureFile(const std::string& picture) const {
    return PicturesFolder() / PathOf(picture + ".rgba");
}

Path CScenePaths::SoundsFolder() const {
    return SceneFolder() / PathOf(soundsFolder);
}

Path CScenePaths::SoundFile(const std::string& sound) const {
    return SoundsFolder() / PathOf(sound + ".sound");
}

Path CScenePaths::OriginalFile(const std::string& sound) const {
    return SoundsFolder() / PathOf(sound + ".original");
}

Path CScenePaths::AssetFile(SourceMode kind, const std::string& folder, const std::string& name) const {
    switch (kind) {
    case SourceMode::Sounds:
        return SoundFile(name);
    case SourceMode::Pictures:
        return PictureFile(name);
    case SourceMode::Cels:
        break;
    }
    return CelFile(folder, name);
}

std::string ReferenceFolder(SourceMode kind, const std::string& folder) {
    return kind == SourceMode::Pictures ? std::string(picturesFolder) : folder;
}

std::string WithSeparator(std::string folder) {
    constexpr char separator = static_cast<char>(Path::preferred_separator);
    if (folder.empty() || folder.back() != separator)
        folder += separator;
    return folder;
}

std::vector<std::string> ListScenes(const std::string& databaseFolder) {
    std::vector<std::string> scenes;
    for (std::string& folder : ListFolders(PathOf(databaseFolder))) {
        const std::size_t at = folder.find(sceneSuffix);
        if (at == std::string::npos || at == 0)
            continue;
        folder.erase(at, sceneSuffix.size());
        scenes.push_back(std::move(folder));
    }
    return scenes;
}

std::vector<std::string> ListCelFolders(const CScenePaths& paths) {
    std::vector<std::string> folders = ListFolders(paths.SceneFolder());
    std::erase_if(folders, [](const std::string& folder) { return !IsPlainName(folder); });
    return folders;
}

std::vector<std::string> ListCelTitles(const CScenePaths& paths, const std::string& folder) {
    std::vector<std::string> titles = ListTitles(paths.CelFolder(folder), ".bit");
    std::ranges::stable_sort(titles, {}, [](const std::string& title) {
        return ParseCelName(title).value_or(CCelNumber{std::numeric_limits<int>::max(), 0});
    });
    return titles;
}

std::vector<std::string> ListPictures(const CScenePaths& paths) {
    return ListTitles(paths.PicturesFolder(), ".rgba");
}

std::vector<std::string> ListSounds(const CScenePaths& paths) {
    return ListTitles(paths.SoundsFolder(), ".sound");
}

std::vector<CListedAsset> ListAssets(const CScenePaths& paths, SourceMode kind, const std::string& folder) {
    std::vector<CListedAsset> assets;
    if (kind == SourceMode::Cels) {
        for (std::string& title : ListCelTitles(paths, folder))
            if (const std::optional<CCelNumber> number = ParseCelName(title))
                assets.push_back({std::move(title), TextOf(*number)});
    } else {
        for (const std::string& title : kind == SourceMode::Sounds ? ListSounds(paths) : ListPictures(paths))
            assets.push_back({title, title});
    }
    return assets;
}

int NextCelNumber(const CScenePaths& paths, const std::string& folder) {
    int largest = 0;
    for (const std::string& title : ListTitles(paths.CelFolder(folder), ".bit"))
        if (const std::optional<CCelNumber> number = ParseCelName(title))
            largest = std::max(largest, number->number);
    return largest == std::numeric_limits<int>::max() ? largest : largest + 1;
}

void RemoveAbandoned(const CScenePaths& paths) {
    RemoveAbandoned(paths.SceneFolder());
    for (const std::string& folder : ListFolders(paths.SceneFolder()))
        RemoveAbandoned(paths.SceneFolder() / PathOf(folder));
}

std::string NextFreeName(const CScenePaths& paths, SourceMode kind, const std::string& name) {
    const std::size_t stemLength = name.find_last_not_of("0123456789") + 1;
    int number = 1;
    std::from_chars(name.data() + stemLength, name.data() + name.size(), number); // stays when there is none
    for (;;) {
        number = number < std::numeric_limits<int>::max() ? number + 1 : 1;
        std::string next = name.substr(0, stemLength) + std::to_string(number);
        if (!FileExists(paths.AssetFile(kind, "", next)))
            return next;
    }
}

} // namespace velmor
