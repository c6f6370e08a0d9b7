#pragma once

#include "scene/DialogRequests.h"
#include "views/dialogs/Dialog.h"

class QComboBox;

namespace velmor {

class CInbetweenPlot;
class CRadioGroup;

/// "Inbetween Level Data" and "Inbetween Camera Data": what to inbetween, along which curve, and how
/// long each value stands. The range is that
/// of the selection's keys and is only shown.
class CInbetweenDataDialog final : public CDialog {
public:
    CInbetweenDataDialog(QWidget* parent, const CInbetweenRequest& request);

    CInbetweenChoice Values() const;

private:
    void AddRange(const CInbetweenRequest& request);
    void AddPace(const CInbetweenRequest& request);
    CInbetweenPace Pace() const;

    CRadioGroup* m_source;
    CRadioGroup* m_type;
    CInbetweenPlot* m_plot;
    QComboBox* m_hold;
};

} // namespace velmor
