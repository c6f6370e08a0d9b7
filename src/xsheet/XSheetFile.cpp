#include "xsheet/XSheetFile.h"

#include "platform/files/Archive.h"
#include "platform/files/ContentHash.h"
#include "xsheet/SheetNotesFile.h"
#include "xsheet/SheetNotesPlace.h"

#include <exception>
#include <string>
#include <string_view>
#include <utility>

namespace velmor {

namespace {

constexpr std::string_view signature = "VELMORLTXSHEETDATAFILEV1.0";
constexpr int mostFrameSize = 32767;
constexpr std::uint64_t mostFileBytes = std::uint64_t{1} << 30;

// The least that a part of the file takes: its strings empty, one byte each.
constexpr std::size_t cameraBytes = 4 * sizeof(double);
constexpr std::size_t leastCellBytes = 2 + 8 * sizeof(double) + 2 * sizeof(std::int32_t);
constexpr std::size_t leastSoundBytes = sizeof(std::int32_t) + 1;

bool IsWithin(int value, int least, int most) {
    return value >= least && value <= most;
}

CStatus Corrupted() {
    return CStatus::Failure("Invalid or corrupted xsheet data file");
}

void WriteCamera(CArchiveWriter& writer, const CCameraFrame& camera) {
    writer.WriteDouble(camera.panX);
    writer.WriteDouble(camera.panY);
    writer.WriteDouble(camera.zoom);
    writer.WriteDouble(camera.rotation);
}

void WriteCell(CArchiveWriter& writer, const CXSheetCell& cell) {
    writer.WriteString(cell.FolderName());
    writer.WriteString(cell.CelName());
    for (const double value : {cell.PosX(), cell.PosY(), cell.ScaleX(), cell.ScaleY(), cell.Rotation(),
                               cell.Transparency(), cell.BlurX(), cell.BlurY()})
        writer.WriteDouble(value);
    writer.WriteInt(cell.Size().height);
    writer.WriteInt(cell.Size().width);
}

void WriteHeader(CArchiveWriter& writer, const CScene& scene) {
    writer.WriteString(signature);
    writer.WriteInt(scene.xsheet.FrameCount());
    writer.WriteInt(static_cast<std::int32_t>(scene.geometry.background));
    writer.WriteInt(scene.geometry.height);
    writer.WriteInt(scene.geometry.width);
    writer.WriteInt(scene.geometry.frameRate);
    writer.WriteInt(scene.xsheet.LevelCount());
}

CCameraFrame ReadCamera(CArchiveReader& reader) {
    CCameraFrame camera;
    camera.panX = reader.ReadDouble();
    camera.panY = reader.ReadDouble();
    camera.zoom = reader.ReadDouble();
    camera.rotation = reader.ReadDouble();
    return camera;
}

CXSheetCell ReadCell(CArchiveReader& reader) {
    std::string folder = reader.ReadString();
    std::string name = reader.ReadString();
    CCellTransform transform;
    transform.posX = reader.ReadDouble();
    transform.posY = reader.ReadDouble();
    transform.scaleX = reader.ReadDouble();
    transform.scaleY = reader.ReadDouble();
    transform.rotation = reader.ReadDouble();
    const double transparency = reader.ReadDouble();
    const double blurX = reader.ReadDouble();
    const double blurY = reader.ReadDouble();
    CSize size;
    size.height = reader.ReadInt();
    size.width = reader.ReadInt();
    return CXSheetCell::FromFile(std::move(folder), std::move(name), transform, transparency, blurX, blurY, size);
}

bool ReadCamera(CArchiveReader& reader, int frames, CCameraTrack& camera) {
    if (reader.Remaining() / cameraBytes < static_cast<std::size_t>(frames))
        return false;
    for (int frame = 0; frame < frames; ++frame)
        if (const CCameraFrame value = ReadCamera(reader); !value.IsIdenticalTo({}))
            camera.MutableAt(frame) = value;
    return true;
}

bool ReadLevels(CArchiveReader& reader, int levels, int frames, CXSheet& xsheet) {
    const std::size_t leastLevelBytes = 1 + static_cast<std::size_t>(frames) * leastCellBytes;
    if (reader.Remaining() / leastLevelBytes < static_cast<std::size_t>(levels))
        return false;
    xsheet = CXSheet(levels, frames);
    for (int level = 0; level < levels; ++level) {
        xsheet.SetLevelName(level, reader.ReadString());
        for (int frame = 0; frame < frames && !reader.Failed(); ++frame)
            // What was never used stays the piece of empty cells that all levels share.
            if (CXSheetCell cell = ReadCell(reader); !cell.IsIdenticalTo({}))
                xsheet.MutableCell(level, frame) = std::move(cell);
    }
    return !reader.Failed();
}

bool ReadSounds(CArchiveReader& reader, CSoundPlacements& placements) {
    const int count = reader.ReadInt();
    if (reader.Failed() || !IsWithin(count, 0, mostSoundsInFile) ||
        reader.Remaining() / leastSoundBytes < static_cast<std::size_t>(count))
        return false;
    std::vector<CSoundPlacement> sounds(static_cast<std::size_t>(count));
    for (CSoundPlacement& sound : sounds) {
        sound.frame = reader.ReadInt();
        sound.name = reader.ReadString();
    }
    placements.Set(std::move(sounds));
    return !reader.Failed();
}

bool ReadXSheet(std::span<const std::uint8_t> bytes, CScene& scene) {
    CArchiveReader reader(bytes);
    if (reader.ReadString() != signature)
        return false;
    CSceneGeometry& geometry = scene.geometry;
    const int frames = reader.ReadInt();
    geometry.background = static_cast<ColorRef>(reader.ReadInt());
    geometry.height = reader.ReadInt();
    geometry.width = reader.ReadInt();
    geometry.frameRate = reader.ReadInt();
    const int levels = reader.ReadInt();
    // Sound and playback divide by the frame rate.
    const bool withinLimits = IsWithin(frames, 1, CXSheet::mostFramesInFile) &&
                              IsWithin(levels, 0, CXSheet::mostLevelsInFile) &&
                              IsWithin(geometry.height, 1, mostFrameSize) &&
                              IsWithin(geometry.width, 1, mostFrameSize) && geometry.frameRate >= 1;
    return !reader.Failed() && withinLimits && ReadCamera(reader, frames, scene.camera) &&
           ReadLevels(reader, levels, frames, scene.xsheet) && ReadSounds(reader, scene.sounds);
}

CArchiveWriter WriteXSheet(const CScene& scene) {
    CArchiveWriter writer;
    const auto frames = static_cast<std::size_t>(scene.xsheet.FrameCount());
    const auto levels = static_cast<std::size_t>(scene.xsheet.LevelCount());
    constexpr std::size_t usualNameBytes = 16;
    writer.Reserve(1024 + frames * (cameraBytes + levels * (leastCellBytes + usualNameBytes)));
    WriteHeader(writer, scene);
    for (int frame = 0; frame < scene.xsheet.FrameCount(); ++frame)
        WriteCamera(writer, scene.camera.At(frame));
    for (int level = 0; level < scene.xsheet.LevelCount(); ++level) {
        writer.WriteString(scene.xsheet.LevelName(level));
        for (int frame = 0; frame < scene.xsheet.FrameCount(); ++frame)
            WriteCell(writer, scene.xsheet.Cell(level, frame));
    }
    writer.WriteInt(static_cast<std::int32_t>(scene.sounds.Count()));
    for (const CSoundPlacement& sound : scene.sounds.All()) {
        writer.WriteInt(sound.frame);
        writer.WriteString(sound.name);
    }
    return writer;
}

} // namespace

std::vector<std::uint8_t> EncodeXSheet(const CScene& scene) {
    const CArchiveWriter writer = WriteXSheet(scene);
    return {writer.Bytes().begin(), writer.Bytes().end()};
}

CStatus DecodeXSheet(std::span<const std::uint8_t> bytes, CScene& scene) {
    try {
        CScene read;
        if (!ReadXSheet(bytes, read))
            return Corrupted();
        scene = std::move(read);
        return {};
    } catch (const std::exception&) { // no memory
        return Corrupted();
    }
}

CSheetBytes EncodeSheet(const CScene& scene) {
    CSheetBytes bytes;
    bytes.xsheet = WriteXSheet(scene).Take();
    bytes.notes = EncodeSheetNotes(scene, ContentHash(bytes.xsheet));
    bytes.hasNotes = HoldsSheetNotes(bytes.notes);
    return bytes;
}

CStatus SaveXSheet(const Path& path, const CScene& scene) {
    CStatus failure = CStatus::Failure("Problem opening the xsheet data file for writing");
    try {
        const CSheetBytes bytes = EncodeSheet(scene);
        CNotesSaving notes(path);
        if (CStatus prepared = notes.Prepare(bytes.notes, bytes.hasNotes); !prepared)
            return prepared;
        if (!WriteFileAtomically(path, bytes.xsheet))
            return failure;
        notes.Finish();
        return {};
    } catch (const std::exception&) { // no memory
        return failure;
    }
}

CStatus LoadXSheet(const Path& path, CScene& scene, CStatus* notes) {
    const std::optional<CFileBytes> bytes = ReadWholeFile(path, mostFileBytes);
    if (!bytes)
        return CStatus::Failure("Problem opening the xsheet data file for reading");
    CStatus read = DecodeXSheet(bytes->Span(), scene);
    if (!read)
        return read;
    CStatus noted = LoadSheetNotes(SheetNotesInForce(path, ContentHash(bytes->Span())), scene);
    if (notes != nullptr)
        *notes = std::move(noted);
    return {};
}

} // namespace velmor
