// The form in which changes of a scene are kept. Texts are UTF-8.

#include "platform/files/Archive.h"
#include "xsheet/SceneChange.h"

#include <algorithm>
#include <cstddef>

namespace velmor {

namespace {

constexpr int mostSide = 32767; ///< of a scene's frame, as its file has it

// What follows: of a cell, and of the end of a change. Bodies of older versions have no other bits set.
constexpr std::uint8_t hasCell = 1;
constexpr std::uint8_t hasNote = 2;
constexpr std::uint8_t hasSounds = 1;
constexpr std::uint8_t hasSoundTrims = 2;
constexpr std::uint8_t hasFrameNotes = 4;
constexpr std::uint8_t hasDialogue = 8;

void WriteNote(CArchiveWriter& writer, const CSheetNote& note) {
    writer.WriteByte(static_cast<std::uint8_t>(note.mark));
    writer.WriteByte(static_cast<std::uint8_t>(note.color));
    writer.WriteText(note.comment);
}

CSheetNote ReadNote(CArchiveReader& reader) {
    CSheetNote note;
    note.mark = static_cast<SheetMark>(std::min(reader.ReadByte(), static_cast<std::uint8_t>(lastMark)));
    note.color = static_cast<NoteColor>(std::min(reader.ReadByte(), static_cast<std::uint8_t>(lastNoteColor)));
    note.comment = NoteText(reader.ReadText());
    return note;
}

void WriteAsset(CArchiveWriter& writer, const CXSheetCell& cell) {
    writer.WriteText(cell.FolderName());
    writer.WriteText(cell.CelName());
    for (const double value : {cell.PosX(), cell.PosY(), cell.ScaleX(), cell.ScaleY(), cell.Rotation(),
                               cell.Transparency(), cell.BlurX(), cell.BlurY()})
        writer.WriteDouble(value);
    writer.WriteInt(cell.Size().width);
    writer.WriteInt(cell.Size().height);
}

void WriteCell(CArchiveWriter& writer, const CXSheetCell& cell) {
    const bool isCell = !cell.WithoutNote().IsIdenticalTo({});
    const bool isNote = !cell.Note().IsEmpty();
    writer.WriteByte(static_cast<std::uint8_t>((isCell ? hasCell : 0) | (isNote ? hasNote : 0)));
    if (isCell)
        WriteAsset(writer, cell);
    if (isNote)
        WriteNote(writer, cell.Note());
}

CXSheetCell ReadAsset(CArchiveReader& reader) {
    std::string folder = reader.ReadText();
    std::string name = reader.ReadText();
    CCellTransform transform;
    for (double* value :
         {&transform.posX, &transform.posY, &transform.scaleX, &transform.scaleY, &transform.rotation})
        *value = reader.ReadDouble();
    const double transparency = reader.ReadDouble();
    const double blurX = reader.ReadDouble();
    const double blurY = reader.ReadDouble();
    CSize size;
    size.width = reader.ReadInt();
    size.height = reader.ReadInt();
    return CXSheetCell::FromFile(std::move(folder), std::move(name), transform, transparency, blurX, blurY, size);
}

CXSheetCell ReadCell(CArchiveReader& reader) {
    const std::uint8_t parts = reader.ReadByte();
    CXSheetCell cell;
    if ((parts & hasCell) != 0)
        cell = ReadAsset(reader);
    if ((parts & hasNote) != 0)
        cell.SetNote(ReadNote(reader));
    return cell;
}

void WriteCamera(CArchiveWriter& writer, const CCameraFrame& camera) {
    for (const double value : {camera.panX, camera.panY, camera.rotation, camera.zoom})
        writer.WriteDouble(value);
}

CCameraFrame ReadCamera(CArchiveReader& reader) {
    CCameraFrame camera;
    for (double* value : {&camera.panX, &camera.panY, &camera.rotation, &camera.zoom})
        *value = reader.ReadDouble();
    return camera;
}

void WriteGeometry(CArchiveWriter& writer, const CSceneGeometry& geometry) {
    for (const int value :
         {geometry.width, geometry.height, geometry.frameRate, static_cast<int>(geometry.background)})
        writer.WriteInt(value);
}

CSceneGeometry ReadGeometry(CArchiveReader& reader) {
    CSceneGeometry geometry;
    for (int* value : {&geometry.width, &geometry.height, &geometry.frameRate})
        *value = reader.ReadInt();
    geometry.background = static_cast<ColorRef>(reader.ReadInt());
    return geometry;
}

bool IsUsable(const CSceneGeometry& geometry) {
    return geometry.width >= 1 && geometry.width <= mostSide && geometry.height >= 1 &&
           geometry.height <= mostSide && geometry.frameRate >= 1;
}

template<class T, class Write>
void WriteAll(CArchiveWriter& writer, const std::vector<T>& values, Write write) {
    writer.WriteInt(static_cast<std::int32_t>(values.size()));
    for (const T& value : values)
        write(value);
}

// Each value takes a byte at least, so a count beyond the bytes ends the reading before it takes memory.
template<class T, class Read>
void ReadAll(CArchiveReader& reader, std::vector<T>& values, Read read) {
    const auto count = static_cast<std::uint32_t>(reader.ReadInt());
    for (std::uint32_t index = 0; index < count && !reader.Failed() && reader.Remaining() > 0; ++index)
        values.push_back(read());
}

void WriteSounds(CArchiveWriter& writer, const std::vector<CSoundPlacement>& sounds, bool withTrims) {
    WriteAll(writer, sounds, [&](const CSoundPlacement& sound) {
        writer.WriteInt(sound.frame);
        writer.WriteText(sound.name);
        if (withTrims)
            for (const int value : {sound.trimIn, sound.trimOut, sound.level})
                writer.WriteInt(value);
    });
}

std::vector<CSoundPlacement> ReadSounds(CArchiveReader& reader, bool withTrims) {
    std::vector<CSoundPlacement> sounds;
    ReadAll(reader, sounds, [&] {
        CSoundPlacement sound;
        sound.frame = reader.ReadInt();
        sound.name = reader.ReadText();
        if (withTrims) {
            sound.trimIn = std::max(reader.ReadInt(), 0);
            sound.trimOut = std::max(reader.ReadInt(), 0);
            sound.level = std::clamp(reader.ReadInt(), CSoundPlacement::leastLevel, CSoundPlacement::mostLevel);
        }
        return sound;
    });
    return sounds;
}

bool AreTrimmed(const std::vector<CSoundPlacement>& sounds) {
    return !std::ranges::all_of(sounds, &CSoundPlacement::IsPlain);
}

void WriteDialogue(CArchiveWriter& writer, const std::vector<CSpokenLine>& lines) {
    WriteAll(writer, lines, [&writer](const CSpokenLine& line) {
        writer.WriteInt(line.firstFrame);
        writer.WriteInt(line.lastFrame);
        writer.WriteText(line.speaker);
        writer.WriteText(line.text);
    });
}

std::vector<CSpokenLine> ReadDialogue(CArchiveReader& reader) {
    std::vector<CSpokenLine> lines;
    ReadAll(reader, lines, [&reader] {
        CSpokenLine line;
        line.firstFrame = reader.ReadInt();
        line.lastFrame = reader.ReadInt();
        line.speaker = NoteText(reader.ReadText(), CDialogue::mostText);
        line.text = NoteText(reader.ReadText(), CDialogue::mostText);
        return line;
    });
    return lines;
}

} // namespace

void CSceneChange::Write(CArchiveWriter& writer) const {
    const auto run = [&writer](const CCellRun& cells) {
        writer.WriteInt(cells.level);
        writer.WriteInt(cells.frame);
        writer.WriteInt(cells.count);
        WriteCell(writer, cells.cells.first);
        WriteCell(writer, cells.cells.second);
    };
    const auto lone = [&](const CLoneLevel& level) {
        writer.WriteInt(level.level);
        writer.WriteText(level.name);
        WriteAll(writer, level.cells, run);
    };
    for (const int count : {m_levelCounts.first, m_levelCounts.second, m_frameCounts.first, m_frameCounts.second})
        writer.WriteInt(count);
    WriteAll(writer, m_sources, [&writer](int source) { writer.WriteInt(source); });
    WriteAll(writer, m_gone, lone);
    WriteAll(writer, m_made, lone);
    WriteAll(writer, m_names, [&writer](const CLevelName& level) {
        writer.WriteInt(level.level);
        writer.WriteText(level.names.first);
        writer.WriteText(level.names.second);
    });
    WriteAll(writer, m_cells, run);
    WriteAll(writer, m_camera, [&writer](const CCameraChange& change) {
        writer.WriteInt(change.frame);
        WriteCamera(writer, change.cameras.first);
        WriteCamera(writer, change.cameras.second);
    });
    writer.WriteByte(m_geometry ? 1 : 0);
    if (m_geometry) {
        WriteGeometry(writer, m_geometry->first);
        WriteGeometry(writer, m_geometry->second);
    }
    WriteFrameParts(writer);
}

void CSceneChange::WriteFrameParts(CArchiveWriter& writer) const {
    const bool areTrimmed = m_sounds && (AreTrimmed(m_sounds->first) || AreTrimmed(m_sounds->second));
    writer.WriteByte(static_cast<std::uint8_t>((m_sounds ? hasSounds : 0) | (areTrimmed ? hasSoundTrims : 0) |
                                               (m_frameNotes.empty() ? 0 : hasFrameNotes) |
                                               (m_dialogue ? hasDialogue : 0)));
    if (m_sounds) {
        WriteSounds(writer, m_sounds->first, areTrimmed);
        WriteSounds(writer, m_sounds->second, areTrimmed);
    }
    if (!m_frameNotes.empty())
        WriteAll(writer, m_frameNotes, [&writer](const CNoteChange& change) {
            writer.WriteInt(change.frame);
            WriteNote(writer, change.notes.first);
            WriteNote(writer, change.notes.second);
        });
    if (m_dialogue) {
        WriteDialogue(writer, m_dialogue->first);
        WriteDialogue(writer, m_dialogue->second);
    }
}

void CSceneChange::ReadFrameParts(CArchiveReader& reader) {
    const std::uint8_t parts = reader.ReadByte();
    if ((parts & hasSounds) != 0) {
        const bool withTrims = (parts & hasSoundTrims) != 0;
        std::vector<CSoundPlacement> before = ReadSounds(reader, withTrims);
        m_sounds.emplace(std::move(before), ReadSounds(reader, withTrims));
    }
    if ((parts & hasFrameNotes) != 0)
        ReadAll(reader, m_frameNotes, [&reader] {
            CNoteChange change;
            change.frame = reader.ReadInt();
            change.notes.first = ReadNote(reader);
            change.notes.second = ReadNote(reader);
            return change;
        });
    if ((parts & hasDialogue) != 0) {
        std::vector<CSpokenLine> before = ReadDialogue(reader);
        m_dialogue.emplace(std::move(before), ReadDialogue(reader));
    }
}

std::optional<CSceneChange> CSceneChange::Read(CArchiveReader& reader) {
    CSceneChange change;
    const auto run = [&reader] {
        CCellRun cells;
        for (int* value : {&cells.level, &cells.frame, &cells.count})
            *value = reader.ReadInt();
        cells.cells.first = ReadCell(reader);
        cells.cells.second = ReadCell(reader);
        return cells;
    };
    const auto lone = [&] {
        CLoneLevel level;
        level.level = reader.ReadInt();
        level.name = reader.ReadText();
        ReadAll(reader, level.cells, run);
        return level;
    };
    for (int* count : {&change.m_levelCounts.first, &change.m_levelCounts.second, &change.m_frameCounts.first,
                       &change.m_frameCounts.second})
        *count = reader.ReadInt();
    ReadAll(reader, change.m_sources, [&reader] { return reader.ReadInt(); });
    ReadAll(reader, change.m_gone, lone);
    ReadAll(reader, change.m_made, lone);
    ReadAll(reader, change.m_names, [&reader] {
        CLevelName level;
        level.level = reader.ReadInt();
        level.names.first = reader.ReadText();
        level.names.second = reader.ReadText();
        return level;
    });
    ReadAll(reader, change.m_cells, run);
    ReadAll(reader, change.m_camera, [&reader] {
        CCameraChange camera;
        camera.frame = reader.ReadInt();
        camera.cameras.first = ReadCamera(reader);
        camera.cameras.second = ReadCamera(reader);
        return camera;
    });
    if (reader.ReadByte() != 0) {
        const CSceneGeometry before = ReadGeometry(reader);
        change.m_geometry.emplace(before, ReadGeometry(reader));
    }
    change.ReadFrameParts(reader);
    if (reader.Failed() || !change.IsConsistent())
        return std::nullopt;
    return change;
}

bool CSceneChange::IsConsistent() const {
    const auto areCounts = [](const CBeforeAndAfter<int>& counts, int least, int most) {
        return std::min(counts.first, counts.second) >= least && std::max(counts.first, counts.second) <= most;
    };
    if (IsEmpty())
        return true;
    if (!areCounts(m_levelCounts, 0, CXSheet::mostLevelsInFile) ||
        !areCounts(m_frameCounts, 1, CXSheet::mostFramesInFile))
        return false;
    const auto isRun = [this](const CCellRun& run) {
        const int frames = std::max(m_frameCounts.first, m_frameCounts.second);
        return run.frame >= 0 && run.frame < frames && run.count >= 1 && run.count <= frames - run.frame;
    };
    const auto areLone = [&isRun](const std::vector<CLoneLevel>& levels, int count) {
        return std::ranges::all_of(levels, [&](const CLoneLevel& level) {
            return level.level >= 0 && level.level < count && std::ranges::all_of(level.cells, isRun);
        });
    };
    // Of levels that stay: they have a place on both sides.
    const auto stays = [this](int level) {
        return level >= 0 && level < m_levelCounts.second &&
               (m_sources.empty() || m_sources[static_cast<std::size_t>(level)] >= 0);
    };
    const bool sourcesFit = m_sources.empty() ? m_levelCounts.first == m_levelCounts.second
                                              : std::ssize(m_sources) == m_levelCounts.second;
    return sourcesFit &&
           std::ranges::all_of(m_sources,
                               [this](int source) { return source >= -1 && source < m_levelCounts.first; }) &&
           areLone(m_gone, m_levelCounts.first) && areLone(m_made, m_levelCounts.second) &&
           std::ranges::all_of(m_names, [&](const CLevelName& level) { return stays(level.level); }) &&
           std::ranges::all_of(m_cells, [&](const CCellRun& run) { return stays(run.level) && isRun(run); }) &&
           std::ranges::all_of(m_camera,
                               [](const CCameraChange& change) {
                                   return change.frame >= 0 && change.frame < CCameraTrack::capacity;
                               }) &&
           std::ranges::all_of(m_frameNotes,
                               [](const CNoteChange& change) {
                                   return change.frame >= 0 && change.frame < CFrameNotes::capacity;
                               }) &&
           (!m_geometry || (IsUsable(m_geometry->first) && IsUsable(m_geometry->second))) &&
           (!m_sounds || (std::ssize(m_sounds->first) <= CSoundPlacements::mostPlacements &&
                          std::ssize(m_sounds->second) <= CSoundPlacements::mostPlacements)) &&
           (!m_dialogue || (std::ssize(m_dialogue->first) <= CDialogue::mostLines &&
                            std::ssize(m_dialogue->second) <= CDialogue::mostLines));
}

} // namespace velmor
