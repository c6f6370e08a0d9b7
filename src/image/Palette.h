#pragma once

#include "image/Color.h"
#include "platform/Status.h"
#include "platform/files/Files.h"

#include <string>
#include <utility>
#include <vector>

namespace velmor {

struct CNamedColor {
    CColor color;
    std::string name; ///< UTF-8

    bool operator==(const CNamedColor&) const = default;
};

/// The ordered list of named colours of a cel folder.
class CPalette {
public:
    static constexpr int mostColors = 499;

    CPalette() = default;
    /// Any number of colours: a file may hold more than can be added.
    explicit CPalette(std::vector<CNamedColor> colors) : m_colors(std::move(colors)) {}
    /// "Black", "White" and "TRANS".
    static CPalette Default();

    int Count() const { return static_cast<int>(m_colors.size()); }
    bool Contains(int index) const { return index >= 0 && index < Count(); }
    bool IsFull() const { return Count() >= mostColors; }
    /// `index` must be one that Contains() accepts.
    const CNamedColor& At(int index) const { return m_colors[static_cast<std::size_t>(index)]; }
    void Set(int index, CNamedColor color) { m_colors[static_cast<std::size_t>(index)] = std::move(color); }
    /// False when the palette is full.
    [[nodiscard]] bool Add(CNamedColor color);
    /// Later entries move down by one.
    void Remove(int index);
    /// This palette's colours followed by all of the other's, without comparing them or holding the limit.
    void Append(const CPalette& other);

    bool operator==(const CPalette&) const = default;

private:
    std::vector<CNamedColor> m_colors;
};

/// The ".colors" file. A failed load leaves `palette` unchanged; a failed save leaves the old file. A count below 1
/// loads as an empty palette.
CStatus SavePalette(const Path& path, const CPalette& palette);
CStatus LoadPalette(const Path& path, CPalette& palette);
/// The entries in front of a file's damage; the default palette when there are none.
CPalette SalvagePalette(const Path& path);

} // namespace velmor
