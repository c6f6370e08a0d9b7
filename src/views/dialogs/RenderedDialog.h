#pragma once

#include "scene/DialogRequests.h"
#include "views/dialogs/Dialog.h"

class QHBoxLayout;
class QLabel;

namespace velmor {

/// Says where the final output is, and opens its folder or plays it.
class CRenderedDialog final : public CDialog {
public:
    /// Opens a file or folder with the program that the desktop has for it; false when it has none.
    using Opener = std::function<bool(const Path&)>;
    static bool OpenOnDesktop(const Path& path);

    CRenderedDialog(QWidget* parent, const CRenderedRequest& request, Opener open = OpenOnDesktop);

private:
    QPushButton& AddButton(QHBoxLayout& row, const QString& name, const QString& text, const QString& toolTip);
    void Play();
    /// Says when there is no program for it.
    void Open(const Path& path);

    const CRenderedRequest& m_request;
    Opener m_open;
    QLabel* m_failure;
};

} // namespace velmor
