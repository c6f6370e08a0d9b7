#include "platform/scanner/ScannerMessages.h"

#include "platform/files/Archive.h"

#include <algorithm>
#include <cmath>

namespace velmor {

namespace {

constexpr std::size_t pageHeaderBytes = 12;

CChannelMessage Finished(ScannerMessage kind, const CArchiveWriter& archive) {
    return {static_cast<std::uint8_t>(kind), {archive.Bytes().begin(), archive.Bytes().end()}};
}

// As it is: a device's name need not be text.
void WriteRaw(CArchiveWriter& archive, const std::string& text) {
    archive.WriteInt(static_cast<int>(text.size()));
    for (const char c : text)
        archive.WriteByte(static_cast<std::uint8_t>(c));
}

std::string ReadRaw(CArchiveReader& archive) {
    const int length = archive.ReadInt();
    std::string text;
    for (int i = 0; i < length && archive.Remaining() > 0; ++i)
        text += static_cast<char>(archive.ReadByte());
    return text;
}

// 0, which says nothing, for what is no length.
double ReadLength(CArchiveReader& archive) {
    const double length = archive.ReadDouble();
    return std::isfinite(length) && length > 0 ? length : 0;
}

std::size_t RowBytesOf(const CScannedPage& page) {
    const auto width = static_cast<std::size_t>(page.width);
    return page.mode == ScanMode::LineArt ? (width + 7) / 8 : width * 3;
}

} // namespace

CChannelMessage MessageOf(ScannerMessage kind) {
    return {static_cast<std::uint8_t>(kind), {}};
}

CChannelMessage MessageOf(ScannerMessage kind, const std::string& text) {
    return {static_cast<std::uint8_t>(kind), {text.begin(), text.end()}};
}

CChannelMessage MessageOf(ScannerMessage kind, int number) {
    CArchiveWriter archive;
    archive.WriteInt(number);
    return Finished(kind, archive);
}

CChannelMessage MessageOf(const CScanSettings& settings) {
    CArchiveWriter archive;
    archive.WriteInt(static_cast<int>(settings.mode));
    archive.WriteInt(settings.resolution);
    for (const double side : {settings.area.left, settings.area.top, settings.area.width, settings.area.height})
        archive.WriteDouble(side);
    archive.WriteInt(settings.feeder ? 1 : 0);
    archive.WriteInt(settings.threshold);
    return Finished(ScannerMessage::Scan, archive);
}

CChannelMessage MessageOf(const std::vector<CScannerDevice>& devices) {
    CArchiveWriter archive;
    for (const CScannerDevice& device : devices) {
        WriteRaw(archive, device.name);
        WriteRaw(archive, device.label);
    }
    return Finished(ScannerMessage::Devices, archive);
}

CChannelMessage MessageOf(const CScannerAbilities& abilities) {
    CArchiveWriter archive;
    archive.WriteInt(abilities.leastResolution);
    archive.WriteInt(abilities.mostResolution);
    archive.WriteDouble(abilities.width);
    archive.WriteDouble(abilities.height);
    archive.WriteInt(abilities.hasFeeder ? 1 : 0);
    for (const int resolution : abilities.resolutions)
        archive.WriteInt(resolution);
    return Finished(ScannerMessage::Abilities, archive);
}

CChannelMessage MessageOf(const CScannedPage& page) {
    CArchiveWriter archive;
    archive.WriteInt(static_cast<int>(page.mode));
    archive.WriteInt(page.width);
    archive.WriteInt(page.height);
    CChannelMessage message = Finished(ScannerMessage::Page, archive);
    message.bytes.insert(message.bytes.end(), page.rows.begin(), page.rows.end());
    return message;
}

std::string TextOf(const CChannelMessage& message) {
    return {message.bytes.begin(), message.bytes.end()};
}

int NumberOf(const CChannelMessage& message) {
    return CArchiveReader(message.bytes).ReadInt();
}

CScanSettings SettingsOf(const CChannelMessage& message) {
    CArchiveReader archive(message.bytes);
    CScanSettings settings;
    settings.mode = archive.ReadInt() == 0 ? ScanMode::LineArt : ScanMode::Color;
    settings.resolution = archive.ReadInt();
    for (double* side : {&settings.area.left, &settings.area.top, &settings.area.width, &settings.area.height})
        *side = archive.ReadDouble();
    settings.feeder = archive.ReadInt() != 0;
    settings.threshold = archive.ReadInt();
    return settings;
}

std::vector<CScannerDevice> DevicesOf(const CChannelMessage& message) {
    CArchiveReader archive(message.bytes);
    std::vector<CScannerDevice> devices;
    while (archive.Remaining() > 0 && !archive.Failed()) {
        std::string name = ReadRaw(archive);
        devices.push_back({std::move(name), ReadRaw(archive)});
    }
    return devices;
}

CScannerAbilities AbilitiesOf(const CChannelMessage& message) {
    CArchiveReader archive(message.bytes);
    CScannerAbilities abilities;
    abilities.leastResolution = std::max(archive.ReadInt(), 1);
    abilities.mostResolution = std::max(archive.ReadInt(), abilities.leastResolution);
    abilities.width = ReadLength(archive);
    abilities.height = ReadLength(archive);
    abilities.hasFeeder = archive.ReadInt() != 0;
    while (archive.Remaining() > 0 && !archive.Failed())
        abilities.resolutions.push_back(archive.ReadInt());
    std::erase_if(abilities.resolutions, [](int resolution) { return resolution < 1; });
    return abilities;
}

CScannedPage PageOf(const CChannelMessage& message) {
    CArchiveReader archive(message.bytes);
    CScannedPage page;
    page.mode = archive.ReadInt() == 0 ? ScanMode::LineArt : ScanMode::Color;
    page.width = archive.ReadInt();
    page.height = archive.ReadInt();
    if (archive.Failed() || page.width < 1 || page.height < 1 ||
        archive.Remaining() != RowBytesOf(page) * static_cast<std::size_t>(page.height))
        return {};
    page.rows.assign(message.bytes.begin() + pageHeaderBytes, message.bytes.end());
    return page;
}

} // namespace velmor
