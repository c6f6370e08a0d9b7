#include "scene/DropType.h"

#include "scene/Settings.h"

#include <algorithm>

namespace velmor {

CDropType::CDropType(CProfile& profile)
    : m_profile(profile),
      m_type(std::clamp(Get(profile, setting::lastDropType), 0, free)),
      m_insert(Get(profile, setting::insertCels) != 0) {
    m_step = HasFreeStep() ? std::clamp(Get(profile, setting::lastOnWhich), 1, mostStep) : m_type + 1;
}

void CDropType::ChooseType(int type) {
    if (type < 0 || type > free)
        return;
    m_type = type;
    Set(m_profile, setting::lastDropType, type);
    if (!HasFreeStep())
        m_step = type + 1;
}

bool CDropType::EnterStep(int step) {
    if (!HasFreeStep() || step < 1 || step > mostStep)
        return false;
    m_step = step;
    Set(m_profile, setting::lastOnWhich, step);
    return true;
}

void CDropType::ChooseInsert(bool insert) {
    m_insert = insert;
    Set(m_profile, setting::insertCels, insert ? 1 : 0);
}

} // namespace velmor
