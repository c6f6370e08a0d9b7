#include "scene/history/StepChanges.h"

#include "platform/files/Archive.h"
#include "platform/files/Files.h"

#include <algorithm>

namespace velmor {

namespace {

void WriteKept(CArchiveWriter& writer, const KeptFile& file) {
    writer.WriteByte(file ? 1 : 0);
    if (file)
        writer.WriteBlock(*file);
}

KeptFile ReadKept(CArchiveReader& reader) {
    if (reader.ReadByte() == 0)
        return nullptr;
    const auto bytes = reader.ReadBlock();
    return std::make_shared<const std::vector<std::uint8_t>>(bytes.begin(), bytes.end());
}

bool AreSceneFiles(const CStepChanges& changes) {
    return (changes.image.empty() || IsSceneFile(changes.image)) &&
           std::ranges::all_of(changes.files, [](const CFileChange& change) {
               return IsSceneFile(change.file) && (change.movedFrom.empty() || IsSceneFile(change.movedFrom));
           });
}

} // namespace

bool IsSceneFile(const std::string& file) {
    if (file.find('\0') != std::string::npos || file.find('\\') != std::string::npos)
        return false;
    const Path path = PathOf(file);
    const auto parts = std::distance(path.begin(), path.end());
    return path.is_relative() && (parts == 1 || parts == 2) &&
           std::ranges::all_of(path, [](const Path& part) { return !part.empty() && part != "." && part != ".."; });
}

std::vector<std::uint8_t> WriteChanges(const CStepChanges& changes) {
    CArchiveWriter writer;
    changes.scene.Write(writer);
    writer.WriteText(changes.image);
    if (!changes.image.empty())
        changes.painting.Write(writer);
    writer.WriteInt(static_cast<std::int32_t>(changes.files.size()));
    for (const CFileChange& change : changes.files) {
        writer.WriteText(change.file);
        writer.WriteText(change.movedFrom);
        WriteKept(writer, change.before);
        WriteKept(writer, change.after);
    }
    return std::move(writer).Take();
}

std::optional<CStepChanges> ReadChanges(std::span<const std::uint8_t> bytes) {
    CArchiveReader reader(bytes);
    CStepChanges changes;
    std::optional<CSceneChange> scene = CSceneChange::Read(reader);
    if (!scene)
        return std::nullopt;
    changes.scene = std::move(*scene);
    changes.image = reader.ReadText();
    if (!changes.image.empty()) {
        std::optional<CImageChange> painting = CImageChange::Read(reader);
        if (!painting)
            return std::nullopt;
        changes.painting = std::move(*painting);
    }
    const int files = reader.ReadInt();
    for (int index = 0; index < files && !reader.Failed(); ++index) {
        CFileChange& change = changes.files.emplace_back();
        change.file = reader.ReadText();
        change.movedFrom = reader.ReadText();
        change.before = ReadKept(reader);
        change.after = ReadKept(reader);
    }
    if (reader.Failed() || !AreSceneFiles(changes))
        return std::nullopt;
    return changes;
}

} // namespace velmor
