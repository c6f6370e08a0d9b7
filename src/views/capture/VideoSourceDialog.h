#pragma once

#include "platform/camera/CaptureDriver.h"
#include "views/dialogs/Dialog.h"

#include <functional>
#include <vector>

class QFormLayout;

namespace velmor {

/// "Video Source": what can be set of a capture device. Each change takes effect at once, so that it can be judged
/// by the picture.
class CVideoSourceDialog final : public CDialog {
public:
    /// The device outlives the dialog.
    CVideoSourceDialog(QWidget* parent, ICaptureDevice& device, std::vector<CCaptureControl> controls);

private:
    /// A control on the screen: shows what the device says of it.
    struct CRow {
        std::uint32_t id;
        std::function<void(const CCaptureControl&)> show;
    };

    void AddRow(QFormLayout& form, const CCaptureControl& control);
    QWidget* NumberField(const CCaptureControl& control);
    QWidget* SwitchField(const CCaptureControl& control);
    QWidget* MenuField(const CCaptureControl& control);
    void Set(std::uint32_t id, int value);
    void SetUsual();
    /// One control often decides over others: an automatic one switches its manual one off.
    void ShowAll();

    ICaptureDevice& m_device;
    std::vector<CCaptureControl> m_controls;
    std::vector<CRow> m_rows;
    bool m_isShowing = true; ///< fields change because the device says so
};

} // namespace velmor
