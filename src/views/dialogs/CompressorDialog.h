#pragma once

#include "scene/DialogRequests.h"
#include "views/dialogs/Dialog.h"

class QListWidget;

namespace velmor {

/// "Choose a compressor for render output": what the frames of an AVI are made with.
class CCompressorDialog final : public CDialog {
public:
    CCompressorDialog(QWidget* parent, const CCompressorRequest& request);

    /// The name of the chosen compressor.
    std::string Values() const;

private:
    QListWidget* m_compressors;
};

} // namespace velmor
