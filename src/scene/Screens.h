#pragma once

#include <functional>
#include <string>

namespace velmor {

class CMovie;
class CSceneManager;
class CSoundRecorder;
struct CHistoryRequest;
struct CLineCheckRequest;
struct CRenderedRequest;

/// What is opened to be worked or played with for a while, rather than to be answered. Each returns when it is
/// closed.
class IScreens {
public:
    virtual ~IScreens() = default;

    /// The list of all steps.
    virtual void RunHistory(const CHistoryRequest& request) = 0;
    virtual void RunLineCheck(const CLineCheckRequest& request) = 0;
    virtual void RunSceneManager(CSceneManager& manager) = 0;
    /// The final output is complete: shows where it is and opens it if the user likes.
    virtual void OfferRendered(const CRenderedRequest& request) = 0;
    /// Shows a status text and waits, with the program alive, until `isPlaying` no longer holds or a key is
    /// pressed.
    virtual void WaitWhilePlaying(const std::string& status, const std::function<bool()>& isPlaying) = 0;
    /// The record dialog; true when the recording is to be saved.
    [[nodiscard]] virtual bool RunRecorder(CSoundRecorder& recorder) = 0;
    virtual void PlayMovie(CMovie& movie) = 0;
};

} // namespace velmor
