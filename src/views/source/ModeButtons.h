#pragma once

#include "scene/ScenePaths.h"

#include <QWidget>
#include <functional>

class QButtonGroup;

namespace velmor {

/// The three buttons that choose what is listed, side by side in thirds; one of them is always pressed.
class CModeButtons final : public QWidget {
public:
    /// `chosen` is called when the user presses a button.
    CModeButtons(QWidget* parent, std::function<void(SourceMode mode)> chosen);

    void Show(SourceMode mode, bool enabled);

protected:
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void Add(const char* text, const char* name, const char* toolTip, SourceMode mode);
    void MarkPressed();

    QButtonGroup* m_group;
};

} // namespace velmor
