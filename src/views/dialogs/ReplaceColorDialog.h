#pragma once

#include "scene/DialogRequests.h"
#include "views/dialogs/Dialog.h"

class QCheckBox;
class QComboBox;
class QLabel;

namespace velmor {

class CColorSwatch;
class CNumberSlider;
class CRadioGroup;

/// "Replace Color": which colour becomes which, how near and where, with the number of pixels that are found.
class CReplaceColorDialog final : public CDialog {
public:
    CReplaceColorDialog(QWidget* parent, const CReplaceColorRequest& request);

    /// The tolerance is -1 when it cannot be read.
    CReplaceColorValues Values() const;

protected:
    bool Accepts() override;

private:
    void AddColors();
    void AddChoices();
    void AddPlaces();
    /// A list of the colours to choose from, which sets a swatch.
    QComboBox* NewList(const QString& name, CColorSwatch& swatch);
    void ShowCount();

    CReplaceColorRequest m_request;
    CColorSwatch* m_from; // children, all of them
    CColorSwatch* m_to;
    CNumberSlider* m_tolerance;
    CRadioGroup* m_what;
    QCheckBox* m_keepsAlpha;
    QComboBox* m_where; ///< its data are numbers of RecolorWhere
    QLabel* m_count;
};

} // namespace velmor
