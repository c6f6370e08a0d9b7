#pragma once

#include "acquire/CaptureSession.h"
#include "scene/ScenePaths.h"

#include <memory>
#include <optional>

namespace velmor {

class CCelImg;
class CGrabOperations;
class CProfile;
class IPrompter;
struct CSceneModel;

/// The capture commands without their windows: sessions with the cameras, the settings behind them, and what
/// becomes of a grabbed frame.
class CCaptureOperations {
public:
    /// What is given outlives the object.
    CCaptureOperations(const CSceneModel& model, CGrabOperations& grabs, IPrompter& prompter, CProfile& profile);
    CCaptureOperations(const CCaptureOperations&) = delete;
    CCaptureOperations& operator=(const CCaptureOperations&) = delete;
    ~CCaptureOperations();

    /// Takes other drivers than those of this machine. Not during a session.
    void UseDrivers(std::unique_ptr<ICaptureDrivers> drivers);
    /// A session that tells the user what goes wrong.
    CCaptureSession Session();

    /// What was chosen in setup. The format is part of it: cameras forget what they were set to.
    CCaptureChoice SavedChoice() const;
    void SaveChoice(const CCaptureChoice& choice);
    /// 0 to 255, for the lines of captured cels.
    int SavedThreshold() const;
    void SaveThreshold(int threshold);

    /// Takes a grabbed frame as a cel of the current folder or as a picture. False when nothing was kept.
    bool TakeFrame(const Path& bitmapFile, SourceMode kind, int threshold);
    /// The highest-numbered cel of the current folder, by which the next drawing is placed; nothing when there is
    /// none.
    std::optional<CCelImg> LastCel() const;

private:
    const CSceneModel& m_model;
    CGrabOperations& m_grabs;
    IPrompter& m_prompter;
    CProfile& m_profile;
    std::unique_ptr<ICaptureDrivers> m_drivers; ///< looked for at the first use
    CCaptureSession::Devices m_toldOf;          ///< for the whole run
};

} // namespace velmor
