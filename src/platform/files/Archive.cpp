#include "platform/files/Archive.h"

#include "platform/files/TextEncoding.h"

#include <bit>
#include <cstring>

namespace velmor {

static_assert(std::endian::native == std::endian::little, "the archive copies values as they stand in memory");

template<class T>
void CArchiveWriter::WriteRaw(T value) {
    const std::size_t at = m_bytes.size();
    m_bytes.resize(at + sizeof value);
    std::memcpy(m_bytes.data() + at, &value, sizeof value);
}

void CArchiveWriter::WriteInt(std::int32_t value) {
    WriteRaw(value);
}

void CArchiveWriter::WriteDouble(double value) {
    WriteRaw(value);
}

void CArchiveWriter::WriteString(std::string_view utf8) {
    const std::string text = Utf8ToWindows1252(utf8);
    const std::size_t length = text.size();
    if (length < 255) {
        WriteByte(static_cast<std::uint8_t>(length));
    } else {
        WriteByte(255);
        if (length < 65534) {
            WriteRaw(static_cast<std::uint16_t>(length));
        } else {
            WriteRaw(std::uint16_t{65535});
            WriteRaw(static_cast<std::uint32_t>(length));
        }
    }
    m_bytes.insert(m_bytes.end(), text.begin(), text.end());
}

void CArchiveWriter::WriteWord(std::uint64_t value) {
    WriteRaw(value);
}

void CArchiveWriter::WriteBlock(std::span<const std::uint8_t> bytes) {
    WriteRaw(static_cast<std::uint32_t>(bytes.size()));
    m_bytes.insert(m_bytes.end(), bytes.begin(), bytes.end());
}

void CArchiveWriter::WriteText(std::string_view utf8) {
    WriteRaw(static_cast<std::uint32_t>(utf8.size()));
    m_bytes.insert(m_bytes.end(), utf8.begin(), utf8.end());
}

std::span<const std::uint8_t> CArchiveReader::Take(std::size_t count) {
    if (m_failed || count > Remaining()) {
        m_failed = true;
        return {};
    }
    const auto taken = m_bytes.subspan(m_position, count);
    m_position += count;
    return taken;
}

template<class T>
T CArchiveReader::ReadRaw() {
    T value{};
    const auto bytes = Take(sizeof value);
    if (!bytes.empty())
        std::memcpy(&value, bytes.data(), sizeof value);
    return value;
}

std::uint8_t CArchiveReader::ReadByte() {
    return ReadRaw<std::uint8_t>();
}

std::int32_t CArchiveReader::ReadInt() {
    return ReadRaw<std::int32_t>();
}

double CArchiveReader::ReadDouble() {
    return ReadRaw<double>();
}

std::string CArchiveReader::ReadString() {
    std::size_t length = ReadByte();
    if (length == 255)
        length = ReadRaw<std::uint16_t>();
    if (length == 65535)
        length = ReadRaw<std::uint32_t>();
    const auto bytes = Take(length);
    return Windows1252ToUtf8({reinterpret_cast<const char*>(bytes.data()), bytes.size()});
}

std::uint64_t CArchiveReader::ReadWord() {
    return ReadRaw<std::uint64_t>();
}

std::span<const std::uint8_t> CArchiveReader::ReadBlock() {
    return Take(ReadRaw<std::uint32_t>());
}

std::string CArchiveReader::ReadText() {
    const auto bytes = ReadBlock();
    return {bytes.begin(), bytes.end()};
}

} // namespace velmor
