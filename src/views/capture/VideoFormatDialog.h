#pragma once

#include "platform/camera/CaptureDriver.h"
#include "views/dialogs/Dialog.h"

#include <vector>

class QListWidget;

namespace velmor {

/// A format as users read it: "640 x 480, 25 frames a second".
QString FormatText(const CCaptureFormat& format);

/// "Video Format": size and rate of a capture device's pictures.
class CVideoFormatDialog final : public CDialog {
public:
    CVideoFormatDialog(QWidget* parent, std::vector<CCaptureFormat> formats, const CCaptureFormat& current);

    /// The chosen format.
    CCaptureFormat Values() const;

protected:
    bool Accepts() override;

private:
    std::vector<CCaptureFormat> m_formats;
    QListWidget* m_list;
};

} // namespace velmor
