#pragma once

#include "scene/DialogRequests.h"
#include "views/dialogs/Dialog.h"

namespace velmor {

class CInbetweenPlot;
class CRadioGroup;

/// "Inbetween Level Data" and "Inbetween Camera Data": what to inbetween and along which curve. The range is that
/// of the selection's keys and is only shown.
class CInbetweenDataDialog final : public CDialog {
public:
    CInbetweenDataDialog(QWidget* parent, const CInbetweenRequest& request);

    CInbetweenChoice Values() const;

private:
    void AddRange(const CInbetweenRequest& request);

    CRadioGroup* m_source;
    CRadioGroup* m_type;
    CInbetweenPlot* m_plot;
};

} // namespace velmor
