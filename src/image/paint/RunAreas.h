#pragma once

#include "image/Geometry.h"
#include "image/paint/MaskPlane.h"

#include <cstddef>
#include <numeric>
#include <utility>
#include <vector>

namespace velmor {

/// Sets that are united one by one (union-find).
class CUnions {
public:
    int Add() {
        m_parents.push_back(static_cast<int>(m_parents.size()));
        return m_parents.back();
    }
    int Count() const { return static_cast<int>(m_parents.size()); }
    /// The member that stands for the set of this one.
    int Find(int member) {
        while (Parent(member) != member)
            member = Parent(member) = Parent(Parent(member));
        return member;
    }
    /// Unites two sets; the older one stands for both.
    int Unite(int a, int b) {
        a = Find(a);
        b = Find(b);
        return Parent(std::max(a, b)) = std::min(a, b);
    }

private:
    int& Parent(int member) { return m_parents[static_cast<std::size_t>(member)]; }

    std::vector<int> m_parents;
};

/// Joins runs of pixels, handed over row by row and in each row from left to right, to 4-connected areas.
class CRunJoiner {
public:
    explicit CRunJoiner(CUnions& areas) : m_areas(areas) {}

    void StartRow() {
        m_below.swap(m_row);
        m_row.clear();
        m_next = 0;
    }
    /// The area of columns x to endX - 1 as it is known so far; later rows may unite it with others.
    int Add(int x, int endX) {
        while (m_next < m_below.size() && m_below[m_next].endX <= x)
            ++m_next;
        int area = -1;
        for (std::size_t i = m_next; i < m_below.size() && m_below[i].x < endX; ++i)
            area = area < 0 ? m_areas.Find(m_below[i].area) : m_areas.Unite(area, m_below[i].area);
        if (area < 0)
            area = m_areas.Add();
        m_row.push_back({x, endX, area});
        return area;
    }

private:
    struct CRun {
        int x, endX, area;
    };

    CUnions& m_areas;
    std::vector<CRun> m_below;
    std::vector<CRun> m_row;
    std::size_t m_next = 0; ///< of m_below, the first that may touch what is added
};

/// The rectangle around the 4-connected area of clear pixels that a pixel belongs to; empty for a pixel that is set
/// or outside. May throw std::bad_alloc.
CRect BoundsOfFreeArea(const CMaskPlane& lines, CPoint at);

} // namespace velmor
