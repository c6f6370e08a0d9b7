#pragma once

#include <QStringList>
#include <QWidget>
#include <functional>

class QButtonGroup;

namespace velmor {

/// One choice of several, known by its index.
class CRadioGroup : public QWidget {
public:
    /// Where there is no label of number `chosen`, the first is chosen.
    CRadioGroup(const QStringList& labels, int chosen, Qt::Orientation orientation = Qt::Vertical);

    int Chosen() const;
    /// Makes this what a dialog opens on.
    void BeFirst();

    std::function<void(int)> changed; ///< called with the index after each new choice

private:
    QButtonGroup* m_buttons;
};

} // namespace velmor
