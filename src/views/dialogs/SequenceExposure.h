#pragma once

#include "scene/Sequence.h"

#include <QGroupBox>
#include <functional>
#include <string>
#include <vector>

class QCheckBox;
class QComboBox;
class QLabel;

namespace velmor {

class CNumberEdit;

/// Whether and where the images of a sequence are exposed.
class CSequenceExposure final : public QGroupBox {
public:
    /// Level 0 first.
    explicit CSequenceExposure(const std::vector<std::string>& levelNames);

    void Show(const CSequence& sequence);
    void Put(CSequence& sequence) const;
    /// Says what exposing would do.
    void ShowResult(const std::string& text);
    /// Leads to a number that cannot be read, if there is one.
    void RefuseUnreadable();

    std::function<void()> changed; ///< called after each change by the user

private:
    QComboBox* m_level; ///< the last one is a new one
    CNumberEdit* m_frame;
    CNumberEdit* m_hold;
    QCheckBox* m_holdsGaps;
    QLabel* m_result;
};

} // namespace velmor
