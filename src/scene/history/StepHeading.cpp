#include "scene/history/StepHeading.h"

#include "image/paint/PackedBytes.h"
#include "platform/files/Archive.h"
#include "scene/ScenePaths.h"
#include "scene/history/StepChanges.h"

#include <algorithm>
#include <set>

namespace velmor {

namespace {

constexpr std::size_t mostSubjects = 100; // a search for more would find every step

void WriteCells(CArchiveWriter& writer, const std::optional<CXSheetSelection>& cells) {
    writer.WriteByte(cells ? 1 : 0);
    if (cells)
        for (const int value : {cells->firstLevel, cells->lastLevel, cells->firstFrame, cells->lastFrame})
            writer.WriteInt(value);
}

std::optional<CXSheetSelection> ReadCells(CArchiveReader& reader) {
    if (reader.ReadByte() == 0)
        return std::nullopt;
    CXSheetSelection cells;
    for (int* value : {&cells.firstLevel, &cells.lastLevel, &cells.firstFrame, &cells.lastFrame})
        *value = reader.ReadInt();
    return cells;
}

void WritePicture(CArchiveWriter& writer, const CHistoryPicture& picture) {
    writer.WriteInt(picture.width);
    writer.WriteInt(picture.height);
    writer.WriteBlock(PackBytes(picture.rgb));
}

CHistoryPicture ReadPicture(CArchiveReader& reader) {
    CHistoryPicture picture;
    picture.width = reader.ReadInt();
    picture.height = reader.ReadInt();
    const auto packed = reader.ReadBlock();
    if (picture.width < 1 || picture.width > CHistoryPicture::mostWidth || picture.height < 1 ||
        picture.height > CHistoryPicture::mostHeight)
        return {};
    auto rgb = UnpackBytes(packed, static_cast<std::size_t>(picture.width * picture.height * 3));
    if (!rgb)
        return {};
    picture.rgb = std::move(*rgb);
    return picture;
}

bool IsInSheet(const CStepHeading& heading) {
    if (heading.levels < 0 || heading.levels > CXSheet::mostLevelsInFile || heading.frames < 0 ||
        heading.frames > CXSheet::mostFramesInFile)
        return false;
    return !heading.cells ||
           (heading.cells->firstLevel >= 0 && heading.cells->firstLevel <= heading.cells->lastLevel &&
            heading.cells->lastLevel < std::max(heading.levels, 1) && heading.cells->firstFrame >= 0 &&
            heading.cells->firstFrame <= heading.cells->lastFrame && heading.cells->lastFrame < heading.frames);
}

} // namespace

std::string TitleOfFile(const std::string& file) {
    const Path path = PathOf(file);
    const std::string folder = Utf8Of(path.parent_path());
    const std::string name = Utf8Of(path.stem());
    return folder.empty() || folder == picturesFolder || folder == soundsFolder || folder == name
               ? name
               : folder + " " + name;
}

void Describe(CStepHeading& heading, const CStepChanges& changes, const CXSheet& sheet) {
    heading.changesScene = !changes.scene.IsEmpty();
    heading.image = changes.painting.IsEmpty() ? std::string() : changes.image;
    heading.changesFiles = !changes.files.empty();
    heading.canComeBack =
        std::ranges::any_of(changes.files, [](const CFileChange& change) { return change.before != nullptr; });
    heading.cells = changes.scene.ChangedCells();
    heading.levels = sheet.LevelCount();
    heading.frames = sheet.FrameCount();
    const bool isInFrame = heading.changesScene && heading.image.empty() && !heading.changesFiles &&
                           heading.cells && changes.scene.IsWithinFrame(heading.cells->firstFrame);
    heading.onlyFrame = isInFrame ? heading.cells->firstFrame : -1;
    std::set<std::string> subjects = changes.scene.AssetNames();
    if (heading.cells)
        for (int level = heading.cells->firstLevel; level <= heading.cells->lastLevel; ++level)
            if (sheet.HasLevel(level))
                subjects.insert(sheet.LevelName(level));
    for (const CFileChange& change : changes.files)
        for (const std::string& file : {change.file, change.movedFrom})
            subjects.insert(TitleOfFile(file));
    subjects.insert(TitleOfFile(changes.image));
    subjects.erase("");
    std::size_t count = 0;
    heading.subjects.clear();
    for (const std::string& subject : subjects)
        if (++count <= mostSubjects)
            heading.subjects += subject + "\n";
}

std::vector<std::uint8_t> WriteHeading(const CStepHeading& heading) {
    CArchiveWriter writer;
    writer.WriteWord(static_cast<std::uint64_t>(heading.time));
    writer.WriteText(heading.name);
    writer.WriteText(heading.subjects);
    writer.WriteByte(static_cast<std::uint8_t>(heading.kind));
    for (const bool flag : {heading.changesScene, heading.changesFiles, heading.canComeBack})
        writer.WriteByte(flag ? 1 : 0);
    writer.WriteText(heading.image);
    writer.WriteInt(static_cast<std::int32_t>(heading.files.size()));
    for (const std::string& file : heading.files)
        writer.WriteText(file);
    for (const int value : {heading.onlyFrame, heading.levels, heading.frames})
        writer.WriteInt(value);
    WriteCells(writer, heading.cells);
    WritePicture(writer, heading.picture);
    return std::move(writer).Take();
}

std::optional<CStepHeading> ReadHeading(std::span<const std::uint8_t> bytes, bool withPicture) {
    CArchiveReader reader(bytes);
    CStepHeading heading;
    heading.time = static_cast<std::int64_t>(reader.ReadWord());
    heading.name = reader.ReadText();
    heading.subjects = reader.ReadText();
    const std::uint8_t kind = reader.ReadByte();
    for (bool* flag : {&heading.changesScene, &heading.changesFiles, &heading.canComeBack})
        *flag = reader.ReadByte() != 0;
    heading.image = reader.ReadText();
    const int files = reader.ReadInt();
    for (int index = 0; index < files && !reader.Failed(); ++index)
        heading.files.push_back(reader.ReadText());
    for (int* value : {&heading.onlyFrame, &heading.levels, &heading.frames})
        *value = reader.ReadInt();
    heading.cells = ReadCells(reader);
    if (reader.Failed() || kind > static_cast<std::uint8_t>(HistoryEntryKind::Break) || !IsInSheet(heading))
        return std::nullopt;
    heading.kind = static_cast<HistoryEntryKind>(kind);
    if (withPicture)
        heading.picture = ReadPicture(reader);
    return heading;
}

} // namespace velmor
