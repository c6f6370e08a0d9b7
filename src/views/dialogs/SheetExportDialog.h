#pragma once

#include "scene/DialogRequests.h"
#include "views/dialogs/Dialog.h"

namespace velmor {

class CRadioGroup;

/// "Export Xsheet": the format, and what of the scene it does not hold.
class CSheetExportDialog final : public CDialog {
public:
    CSheetExportDialog(QWidget* parent, const CSheetExportRequest& request);

    ExchangeFormat Values() const;

private:
    void AddLosses(const std::vector<std::string>& losses);

    CRadioGroup* m_format;
};

} // namespace velmor
