#include "platform/journal/JournalSeal.h"

namespace velmor {

namespace {

/// FNV-1a with 64 bits.
class CHash {
public:
    explicit CHash(char kindOfRow) { AddByte(static_cast<std::uint8_t>(kindOfRow)); }

    CHash& Add(std::uint64_t number) {
        for (int byte = 0; byte < 8; ++byte)
            AddByte(static_cast<std::uint8_t>(number >> 8 * byte));
        return *this;
    }
    /// Bytes without an end of their own, so for the last part of a row.
    CHash& Add(std::span<const std::uint8_t> bytes) {
        for (const std::uint8_t byte : bytes)
            AddByte(byte);
        return *this;
    }
    /// Mixed, since in a sum the differences of similar rows could make up for one another.
    std::uint64_t Value() const {
        std::uint64_t mixed = m_value;
        mixed = (mixed ^ mixed >> 30) * 0xbf58476d1ce4e5b9;
        mixed = (mixed ^ mixed >> 27) * 0x94d049bb133111eb;
        return mixed ^ mixed >> 31;
    }

private:
    void AddByte(std::uint8_t byte) { m_value = (m_value ^ byte) * 0x100000001b3; }

    std::uint64_t m_value = 0xcbf29ce484222325;
};

} // namespace

std::uint64_t SealOf(std::int64_t step, std::span<const std::uint8_t> heading, const CStoredBody& body) {
    return CHash('s').Add(static_cast<std::uint64_t>(step)).Add(body.size).Add(body.checksum).Add(heading).Value();
}

std::uint64_t SealOf(const CJournalMove& move) {
    return CHash('m')
        .Add(static_cast<std::uint64_t>(move.sequence))
        .Add(static_cast<std::uint64_t>(move.step))
        .Add(std::uint64_t{move.forward})
        .Value();
}

std::uint64_t SealOf(std::string_view note, std::span<const std::uint8_t> value) {
    const std::span name(reinterpret_cast<const std::uint8_t*>(note.data()), note.size());
    return CHash('n').Add(note.size()).Add(name).Add(value).Value();
}

} // namespace velmor
