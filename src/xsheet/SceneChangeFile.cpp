// The form in which changes of a scene are kept. Texts are UTF-8.

#include "platform/files/Archive.h"
#include "xsheet/SceneChange.h"

#include <algorithm>
#include <cstddef>

namespace velmor {

namespace {

constexpr int mostSide = 32767; ///< of a scene's frame, as its file has it

void WriteCell(CArchiveWriter& writer, const CXSheetCell& cell) {
    writer.WriteByte(cell.IsIdenticalTo({}) ? 0 : 1);
    if (cell.IsIdenticalTo({}))
        return;
    writer.WriteText(cell.FolderName());
    writer.WriteText(cell.CelName());
    for (const double value : {cell.PosX(), cell.PosY(), cell.ScaleX(), cell.ScaleY(), cell.Rotation(),
                               cell.Transparency(), cell.BlurX(), cell.BlurY()})
        writer.WriteDouble(value);
    writer.WriteInt(cell.Size().width);
    writer.WriteInt(cell.Size().height);
}

CXSheetCell ReadCell(CArchiveReader& reader) {
    if (reader.ReadByte() == 0)
        return {};
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

void WriteSounds(CArchiveWriter& writer, const std::vector<CSoundPlacement>& sounds) {
    WriteAll(writer, sounds, [&writer](const CSoundPlacement& sound) {
        writer.WriteInt(sound.frame);
        writer.WriteText(sound.name);
    });
}

std::vector<CSoundPlacement> ReadSounds(CArchiveReader& reader) {
    std::vector<CSoundPlacement> sounds;
    ReadAll(reader, sounds, [&reader] {
        const int frame = reader.ReadInt();
        return CSoundPlacement{frame, reader.ReadText()};
    });
    return sounds;
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
    writer.WriteByte(m_sounds ? 1 : 0);
    if (m_sounds) {
        WriteSounds(writer, m_sounds->first);
        WriteSounds(writer, m_sounds->second);
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
    if (reader.ReadByte() != 0) {
        std::vector<CSoundPlacement> before = ReadSounds(reader);
        change.m_sounds.emplace(std::move(before), ReadSounds(reader));
    }
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
           (!m_geometry || (IsUsable(m_geometry->first) && IsUsable(m_geometry->second))) &&
           (!m_sounds || (std::ssize(m_sounds->first) <= CSoundPlacements::mostPlacements &&
                          std::ssize(m_sounds->second) <= CSoundPlacements::mostPlacements));
}

} // namespace velmor
