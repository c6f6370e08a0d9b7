#pragma once

#include "platform/Status.h"
#include "platform/movie/AviReader.h"
#include "platform/sound/Audio.h"
#include "sound/SoundPlayback.h"

#include <string>

namespace velmor {

/// An open movie file with its sound: what the movie player plays.
class CMovie {
public:
    /// `output` outlives the movie.
    explicit CMovie(IAudioOutput& output) : m_output(output) {}
    CMovie(const CMovie&) = delete;
    CMovie& operator=(const CMovie&) = delete;
    ~CMovie() { Close(); }

    /// Opens an ".avi" file (the extension in any case). A movie whose sound cannot be played here is opened
    /// without it, which `tell` says.
    CStatus Open(const Path& file, const TellUser& tell);
    void Close();

    const CMovieStream& Stream() const { return m_reader.Stream(); }
    double Rate() const;
    bool HasSound() const { return !m_sound.empty(); }
    /// Frames from 0. An empty sample shows the picture before it.
    CStatus ReadFrame(int frame, CMoviePicture& picture);
    /// The sound from its beginning.
    CStatus StartSound();
    void StopSound();
    /// Seconds since StartSound(), as the device has played them.
    double SoundSeconds() const;
    bool IsSoundPlaying() const;

private:
    CStatus OpenSound(const TellUser& tell);

    IAudioOutput& m_output;
    CAviReader m_reader;
    std::vector<std::uint8_t> m_sound;
    bool m_soundStarted = false;
};

} // namespace velmor
