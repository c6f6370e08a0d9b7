#include "scene/paper/SkinStack.h"

#include "scene/paper/InkCache.h"

#include <new>

namespace velmor {

bool CSkinStack::Lay(std::vector<CSkinOrder> orders, CSize size, CInkCache& inks) {
    if (orders.empty())
        size = {}; // nothing on sheets of any size looks the same
    if (orders == m_orders && size == m_size)
        return false;
    m_orders = std::move(orders);
    m_size = size;
    std::vector<CSkin> skins;
    for (const CSkinOrder& order : m_orders)
        skins.push_back({inks.Get(order.file, order.identity, order.withPaint), order.placement, order.tint,
                         order.percent, order.over});
    try {
        m_sheet = LaySkins(skins, size);
    } catch (const std::bad_alloc&) {
        m_sheet = {}; // the drawing itself is seen all the same
    }
    return true;
}

} // namespace velmor
