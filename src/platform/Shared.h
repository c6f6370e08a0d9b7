#pragma once

#include <algorithm>
#include <array>
#include <atomic>
#include <cstddef>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace velmor {

/// A value whose copies are one and the same in memory until one of them is changed. Copies may be read on several
/// threads at once; one copy is used by one thread at a time, as any value is.
template<class T>
class CShared {
public:
    explicit CShared(T value = {}) : m_value(std::make_shared<T>(std::move(value))) {}

    const T& operator*() const { return *m_value; }
    const T* operator->() const { return m_value.get(); }
    /// The value to be written: this copy's own from here on. Valid until this copy is copied.
    T& Change() {
        if (m_value.use_count() > 1)
            m_value = std::make_shared<T>(*m_value);
        else
            std::atomic_thread_fence(std::memory_order_acquire); // what others have read they have read before
        return *m_value;
    }

    bool operator==(const CShared& other) const { return IsSharedWith(other) || *m_value == *other.m_value; }
    /// Whether both are the same in memory: then they are equal without a look at them.
    bool IsSharedWith(const CShared& other) const { return m_value == other.m_value; }

private:
    std::shared_ptr<T> m_value;
};

/// A sequence that is kept in pieces of `pieceSize` elements, which copies share: a copy costs a pointer a piece,
/// and changing an element copies its piece only.
template<class T, std::size_t pieceSize>
class CSharedVector {
public:
    std::size_t size() const { return m_size; }
    const T& operator[](std::size_t index) const { return (*m_pieces[index / pieceSize])[index % pieceSize]; }
    /// The element to be written, valid until this sequence is copied.
    T& Change(std::size_t index) { return m_pieces[index / pieceSize].Change()[index % pieceSize]; }

    /// New elements are T{}.
    void resize(std::size_t size) {
        m_pieces.resize((size + pieceSize - 1) / pieceSize, CShared<Piece>());
        // Behind the end every piece is as a new one, so that sequences can be compared and grown piece by piece.
        if (size < m_size && size % pieceSize != 0) {
            Piece& last = m_pieces.back().Change();
            std::fill(last.begin() + static_cast<std::ptrdiff_t>(size % pieceSize), last.end(), T{});
        }
        m_size = size;
    }

    std::vector<T> All() const {
        std::vector<T> all;
        all.reserve(m_size);
        for (std::size_t index = 0; index < m_size; ++index)
            all.push_back((*this)[index]);
        return all;
    }
    /// Pieces in which same(old, new) holds for every element stay as they are, and shared.
    template<class Same = std::equal_to<T>>
    void Assign(std::vector<T> elements, Same same = {}) {
        resize(elements.size());
        for (std::size_t begin = 0; begin < m_size; begin += pieceSize) {
            const std::size_t count = std::min(pieceSize, m_size - begin);
            CShared<Piece>& piece = m_pieces[begin / pieceSize];
            const auto from = elements.begin() + static_cast<std::ptrdiff_t>(begin);
            const auto end = from + static_cast<std::ptrdiff_t>(count);
            if (!std::equal(from, end, piece->begin(), same))
                std::move(from, end, piece.Change().begin());
        }
    }

    /// Calls visit(index) for each element, of those that both have, in which same(element, other) does not hold.
    /// Pieces that are shared are not looked at.
    template<class Same, class Visit>
    void ForEachDifference(const CSharedVector& other, Same same, Visit visit) const {
        const std::size_t end = std::min(m_size, other.m_size);
        for (std::size_t begin = 0; begin < end; begin += pieceSize) {
            if (m_pieces[begin / pieceSize].IsSharedWith(other.m_pieces[begin / pieceSize]))
                continue;
            for (std::size_t index = begin; index < std::min(begin + pieceSize, end); ++index)
                if (!same((*this)[index], other[index]))
                    visit(index);
        }
    }

    bool operator==(const CSharedVector&) const = default;

private:
    using Piece = std::array<T, pieceSize>;

    std::vector<CShared<Piece>> m_pieces;
    std::size_t m_size = 0;
};

} // namespace velmor
