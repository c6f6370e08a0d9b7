#include "render/Movie.h"

#include "sound/SoundFile.h"

#include <algorithm>
#include <cctype>

namespace velmor {

namespace {

constexpr std::size_t leastName = 5; // a letter and ".avi"
constexpr std::string_view extension = ".avi";

const char* TextOf(MovieError error) {
    switch (error) {
    case MovieError::NoHandler:
        return "AVIERROR : According to the registry, the type of file specified in AVIFileOpen does not have a "
               "handler to process it.";
    case MovieError::BadFormat:
        return "AVIERROR : The file couldn't be read, indicating a corrupt file or an unrecognized format.";
    case MovieError::NoMemory:
        return "AVIERROR : The file could not be opened because of insufficient memory.";
    case MovieError::FileRead:
        return "AVIERROR : A disk error occurred while reading the file.";
    case MovieError::FileOpen:
        return "AVIERROR : A disk error occurred while opening the file.";
    case MovieError::NoVideo:
        return "AVIERROR : The file does not contain a stream corresponding to the VIDEO";
    case MovieError::NoDecompressor:
        return "No Decompressors found for the video stream";
    case MovieError::NoInformation:
        return "AVI ERROR : Could not get stream information!";
    case MovieError::None:
    case MovieError::Unknown:
        break;
    }
    return "AVIERROR : Unknown error code";
}

CStatus CheckName(const std::string& name) {
    if (name.size() < leastName)
        return CStatus::Failure("Invalid avi filename!");
    std::string end = name.substr(name.size() - extension.size());
    std::ranges::transform(end, end.begin(), [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return end == extension ? CStatus() : CStatus::Failure("Invalid avi filename extension!");
}

} // namespace

CStatus CMovie::Open(const Path& file, const TellUser& tell) {
    Close();
    if (CStatus named = CheckName(Utf8Of(file)); !named)
        return named;
    if (const MovieError error = m_reader.Open(file); error != MovieError::None)
        return CStatus::Failure(TextOf(error));
    if (Stream().frameCount < 1) {
        Close();
        return CStatus::Failure("Empty Movie File!");
    }
    CStatus withSound = OpenSound(tell);
    if (!withSound)
        Close();
    return withSound;
}

CStatus CMovie::OpenSound(const TellUser& tell) {
    if (!m_reader.HasSound())
        return {};
    if (!m_output.CanPlay()) {
        tell("There are no audio devices to play the sound in the flipbook!");
        return {};
    }
    if (!m_output.Open()) {
        tell("Could not open the audio device!");
        return {};
    }
    const MovieError error = m_reader.ReadSound(samplesPerSecond, m_sound);
    if (m_sound.empty())
        m_output.Close();
    return error == MovieError::None ? CStatus() : CStatus::Failure(TextOf(error));
}

void CMovie::Close() {
    StopSound();
    if (HasSound())
        m_output.Close();
    m_sound.clear();
    m_reader = CAviReader();
}

double CMovie::Rate() const {
    return static_cast<double>(Stream().rate) / Stream().scale;
}

CStatus CMovie::ReadFrame(int frame, CMoviePicture& picture) {
    if (Stream().frameCount < 1)
        return CStatus::Failure("Internal Error in DrawFrame: Video Stream not ready!");
    if (frame < 0 || frame >= Stream().frameCount)
        return CStatus::Failure("Internal Error in DrawFrame: Invalid Frame no!");
    if (!m_reader.ReadFrame(frame, picture))
        return CStatus::Failure("Internal Error in DrawFrame: Could not get start sample!");
    return {};
}

CStatus CMovie::StartSound() {
    if (!HasSound())
        return {};
    m_output.Reset();
    m_soundStarted = m_output.Play(m_sound);
    return m_soundStarted ? CStatus() : CStatus::Failure("Could not write wave header");
}

void CMovie::StopSound() {
    if (m_soundStarted)
        m_output.Reset();
    m_soundStarted = false;
}

double CMovie::SoundSeconds() const {
    return m_soundStarted ? static_cast<double>(m_output.Position()) / samplesPerSecond : 0;
}

bool CMovie::IsSoundPlaying() const {
    return m_soundStarted && m_output.Position() < m_sound.size();
}

} // namespace velmor
