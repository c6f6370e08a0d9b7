#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <utility>

namespace velmor {

/// One byte per pixel. A value: copying copies the bytes. Making one may throw std::bad_alloc, which the operations
/// of CCelImg catch.
class CPlane {
public:
    CPlane() = default;
    /// Bytes of no particular value, for readers that overwrite them all.
    explicit CPlane(std::size_t size)
        : m_bytes(std::make_unique_for_overwrite<std::uint8_t[]>(size)), m_size(size) {}
    CPlane(std::size_t size, std::uint8_t value) : CPlane(size) { std::fill_n(m_bytes.get(), size, value); }
    CPlane(const CPlane& other) : CPlane(other.m_size) { std::copy_n(other.m_bytes.get(), m_size, m_bytes.get()); }
    CPlane(CPlane&& other) noexcept : m_bytes(std::move(other.m_bytes)), m_size(std::exchange(other.m_size, 0)) {}
    CPlane& operator=(CPlane other) noexcept {
        m_bytes = std::move(other.m_bytes);
        m_size = other.m_size;
        return *this;
    }
    ~CPlane() = default;

    std::span<std::uint8_t> Span() { return {m_bytes.get(), m_size}; }
    std::span<const std::uint8_t> Span() const { return {m_bytes.get(), m_size}; }
    std::size_t Size() const { return m_size; }
    bool IsEmpty() const { return m_size == 0; }

private:
    std::unique_ptr<std::uint8_t[]> m_bytes;
    std::size_t m_size = 0;
};

} // namespace velmor
