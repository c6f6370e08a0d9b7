#pragma once

#include "scene/ImportedImage.h"

#include <QImage>
#include <QWidget>

class QLabel;

namespace velmor {

/// Shows a file as it would be imported, and below how large it is, what has been left out of it, or why it cannot
/// be read.
class CSequencePreview final : public QWidget {
public:
    CSequencePreview();

    void Show(const CImportedImage& read);

private:
    class CPicture;

    CPicture* m_picture;
    QLabel* m_text;
};

} // namespace velmor
