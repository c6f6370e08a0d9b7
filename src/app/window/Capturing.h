#pragma once

#include "scene/ScenePaths.h"

#include <QImage>
#include <memory>
#include <set>
#include <string>

class QWidget;

namespace velmor {

struct CCaptureChoice;
class CProfile;
class CVelmorltDoc;
class ICaptureDrivers;
class IPrompter;

/// The capture commands: their dialogs, the settings behind them, and the document that takes what is grabbed.
class CCapturing {
public:
    /// What is given outlives the object.
    CCapturing(QWidget& parent, CVelmorltDoc& doc, IPrompter& prompter, CProfile& profile);
    ~CCapturing();

    /// Takes other drivers than those of this machine.
    void UseDrivers(std::unique_ptr<ICaptureDrivers> drivers);

    void Setup();
    /// Cels for the current folder, or pictures.
    void Capture(SourceMode kind);

private:
    ICaptureDrivers& Drivers();
    CCaptureChoice SavedChoice() const;
    void SaveChoice(const CCaptureChoice& choice);
    void Tell(const std::string& text);
    /// The highest-numbered cel of the current folder as an onion skin; null when there is none.
    QImage LastCel() const;

    QWidget& m_parent;
    CVelmorltDoc& m_doc;
    IPrompter& m_prompter;
    CProfile& m_profile;
    std::unique_ptr<ICaptureDrivers> m_drivers; ///< looked for at the first use
    std::set<std::string, std::less<>>
        m_toldOf; ///< the cameras that it was said of in this run that they have no overlay
};

} // namespace velmor
