#pragma once

#include "render/preview/PreviewClock.h"
#include "render/preview/PreviewComposer.h"
#include "scene/SceneContext.h"
#include "scene/preview/PreviewChoices.h"
#include "scene/preview/PreviewContents.h"
#include "scene/preview/SceneMix.h"
#include "sound/SoundPlayback.h"

#include <optional>
#include <string>

namespace velmor {

class CXSheetCursor;

/// Plays the sheet in place, with its sound: frames are composed ahead and kept, the sound device is the clock,
/// what is not ready when it is due is dropped. While it plays, the cursor stays where it is and what is edited is
/// played as it is then. Time is handed in; the views are told with UpdateHint::Preview.
class CScenePreview final : private IDocView {
public:
    /// What is given outlives the object.
    CScenePreview(CSceneContext context, CXSheetCursor& cursor, CImageCache& cache, IAudioOutput& output);
    ~CScenePreview() override;
    CScenePreview(const CScenePreview&) = delete;
    CScenePreview& operator=(const CScenePreview&) = delete;

    /// Begins to play what RangeToPlay() says, as soon as its first picture is there. Writes the image under edit
    /// before, whose file is played.
    void Play();
    /// Ends it with the cursor at the frame that was seen last.
    void Stop();
    /// Ends it with the cursor where it began.
    void GoBack();
    bool IsPlaying() const { return m_run.has_value(); }
    /// The cursor to an end of what is played, and by frames within the sheet; playing stops.
    void GoToFirst();
    void GoToLast();
    void Step(int frames);
    /// To be called every few milliseconds while it plays.
    void Pass(Milliseconds now);

    /// The frame that is seen; nothing while none is played.
    std::optional<int> Frame() const { return m_run ? m_run->shown : std::nullopt; }
    /// Its picture, which may be empty without memory for it; null while there is none.
    PreviewPicture Picture() const { return m_run ? m_run->picture : nullptr; }
    /// Frames of this run that were due and could not be shown.
    std::int64_t Dropped() const { return m_dropped; }
    /// Pictures composed so far.
    std::int64_t Composed() const { return m_composer.Made(); }
    std::size_t ByteCount() const { return m_composer.ByteCount(); }

    /// Whether any pictures are kept, and whether that of a frame is among them.
    bool HoldsFrames() const { return !m_composer.IsEmpty(); }
    bool IsReady(int frame);
    /// Forgets all pictures.
    void Free();
    /// The sound in full quality; null while it is mixed, and where the track is all that there is.
    std::shared_ptr<const CMixedSound> Mixed();

    const CPreviewChoices& Choices() const { return m_choices; }
    void SetChoices(const CPreviewChoices& choices);
    /// The scale at which the camera view shows the frame.
    void SetViewFactor(double factor);

    bool HasSetRange() const { return m_set.has_value(); }
    /// Sets an end of the range to the frame that is seen, or to that end of the selection; the other end comes
    /// along if it has to.
    void SetIn();
    void SetOut();
    /// From now on the whole sheet, or what is selected.
    void ClearRange();
    /// What is played, or would be.
    CPreviewRange Range() const;

private:
    struct CRun {
        CPreviewRange range;
        CPreviewPlayer player;
        double rate;                        ///< frames a second, as they are played
        std::optional<CPreviewClock> clock; ///< nothing while the first picture is waited for
        bool hasSound = false;
        double framesPerSecond = 0;     ///< of what is heard, by the device's clock
        std::int64_t droppedBefore = 0; ///< before it was begun again
        std::optional<int> shown;
        PreviewPicture picture;
        std::optional<int> again; ///< it goes on from there with another range, speed or sound
        int orderedAt = -1;       ///< the frame that was due then; -1 when there is more to be ordered
    };
    /// What is heard depends on it.
    struct CHeard {
        CSoundPlacements sounds;
        int frameCount = 0;
        int frameRate = 0;

        bool operator==(const CHeard&) const = default;
    };

    void OnUpdate(UpdateHint hint) override;
    CRun RunFrom(int frame) const;
    CHeard HeardNow() const;
    void End();
    void MoveCursor(int frame);
    void GoOnFrom(int frame);
    void PlayRange(const std::optional<CPreviewRange>& range);
    bool BeginClock(Milliseconds now);
    void BeginSound();
    CStatus StartSound();
    void FollowSound(Milliseconds now);
    void Order();
    void Show(int frame);
    void TellState(const char* state) const;
    void LookAgain();

    CSceneContext m_context;
    CXSheetCursor& m_cursor;
    CSoundPlayback m_sound;
    CSceneMix m_mix;
    CPreviewChoices m_choices;
    double m_viewFactor = 1;
    std::optional<CPreviewRange> m_set;
    CPreviewContents m_contents;
    std::string m_scene; ///< the one that is open
    CHeard m_heard;
    std::optional<CRun> m_run;
    std::int64_t m_dropped = 0;
    std::string m_soundFault;
    CPreviewComposer m_composer;
};

} // namespace velmor
