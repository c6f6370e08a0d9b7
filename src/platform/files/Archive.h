#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace velmor {

// Little-endian serialisation of the xsheet and palette files. A counted string is one length byte below 255;
// otherwise 255 and a 16-bit length up to 65533; otherwise 255, 65535 and a 32-bit length. The characters follow as
// Windows-1252 bytes without terminator; in memory they are UTF-8.

class CArchiveWriter {
public:
    void WriteByte(std::uint8_t value) { m_bytes.push_back(value); }
    void WriteInt(std::int32_t value);
    void WriteDouble(double value);
    void WriteString(std::string_view utf8);
    // For what files of our own hold besides: 64 bits, and a 32-bit length with as many bytes, texts in UTF-8 among
    // them.
    void WriteWord(std::uint64_t value);
    void WriteBlock(std::span<const std::uint8_t> bytes);
    void WriteText(std::string_view utf8);

    std::span<const std::uint8_t> Bytes() const { return m_bytes; }
    std::vector<std::uint8_t> Take() && { return std::move(m_bytes); }
    void Reserve(std::size_t bytes) { m_bytes.reserve(bytes); }

private:
    template<class T>
    void WriteRaw(T value);

    std::vector<std::uint8_t> m_bytes;
};

/// Reads what CArchiveWriter writes. A read past the end returns zero or an empty string and sets Failed() for
/// good; no read takes memory for bytes that are not there.
class CArchiveReader {
public:
    explicit CArchiveReader(std::span<const std::uint8_t> bytes) : m_bytes(bytes) {}

    std::uint8_t ReadByte();
    std::int32_t ReadInt();
    double ReadDouble();
    std::string ReadString();
    std::uint64_t ReadWord();
    /// What WriteBlock() wrote; valid as long as the bytes that are read.
    std::span<const std::uint8_t> ReadBlock();
    std::string ReadText();

    bool Failed() const { return m_failed; }
    std::size_t Remaining() const { return m_bytes.size() - m_position; }

private:
    std::span<const std::uint8_t> Take(std::size_t count);
    template<class T>
    T ReadRaw();

    std::span<const std::uint8_t> m_bytes;
    std::size_t m_position = 0;
    bool m_failed = false;
};

} // namespace velmor
