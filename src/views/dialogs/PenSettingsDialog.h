#pragma once

#include "scene/DialogRequests.h"
#include "views/dialogs/Dialog.h"

class QCheckBox;
class QGridLayout;

namespace velmor {

class CNumberEdit;
class CPenTest;
class CPressurePlot;
class CRadioGroup;

/// "Pen Settings": what the pressure of a tablet's pen does, and how strokes are stabilized.
class CPenSettingsDialog final : public CDialog {
public:
    CPenSettingsDialog(QWidget* parent, const CPenSettingsRequest& request);

    /// A number is 0 when it cannot be read.
    CPenSettings Values() const;

protected:
    bool Accepts() override;

private:
    struct CRangeRow {
        QCheckBox* isOn;
        CNumberEdit* least;
        CNumberEdit* largest;
    };

    static CRangeRow NewRow(const QString& name, const QString& text, const CPressureRange& range);
    static CPressureRange RangeOf(const CRangeRow& row);
    QWidget* MakePressure();
    QWidget* MakeStabilizer();
    QWidget* MakeCurve();
    void EnableFields();
    double TestWidth(double pressure) const;

    AcceptRule<CPenSettings> m_accept;
    CRangeRow m_pens;
    CRangeRow m_brushes;
    CPressurePlot* m_curve;
    CPenTest* m_test;
    CRadioGroup* m_stabilizer;
    CNumberEdit* m_length;
};

} // namespace velmor
