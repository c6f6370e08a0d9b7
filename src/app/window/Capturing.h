#pragma once

#include "scene/CaptureOperations.h"

class QWidget;

namespace velmor {

class CVelmorltDoc;

/// The capture commands in the window: their dialogs.
class CCapturing {
public:
    /// What is given outlives the object.
    CCapturing(QWidget& parent, CVelmorltDoc& doc, IPrompter& prompter, CProfile& profile);

    /// Takes other drivers than those of this machine.
    void UseDrivers(std::unique_ptr<ICaptureDrivers> drivers);

    void Setup();
    /// Cels for the current folder, or pictures.
    void Capture(SourceMode kind);

private:
    QWidget& m_parent;
    CCaptureOperations m_operations;
};

} // namespace velmor
