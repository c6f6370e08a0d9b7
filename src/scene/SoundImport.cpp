#include "scene/DialogRequests.h"
#include "scene/NamingRules.h"
#include "scene/SoundOperations.h"
#include "sound/ForeignSound.h"
#include "sound/OriginalSound.h"
#include "sound/SoundFile.h"
#include "sound/WaveFile.h"

#include <utility>

namespace velmor {

namespace {

constexpr const char* importWithoutScene = "Internal Error : OnSourcesImportsound called with no scene open";

// A wave file of our own form that is refused is damaged; converting it would hide that.
bool IsOfOurForm(const Path& file, const CSoundForm& form) {
    return file.extension() == ".wav" && form.coding == "pcm_u8" && form.channels == 1;
}

} // namespace

/// A sound on its way into the scene.
struct CSoundOperations::CReadSound {
    int rate = samplesPerSecond;
    std::vector<std::uint8_t> samples;
    std::optional<COriginalSource> original; ///< of one that was converted
};

// What cannot be converted, or is not to be, is refused with the text of our own form.
bool CSoundOperations::ReadSound(const Path& file, const AcceptForm& accept, CReadSound& sound) const {
    CWaveSound wave;
    const CStatus read = ReadWaveFile(file, wave);
    if (read) {
        sound = {wave.rate, std::move(wave.samples), {}};
        return true;
    }
    CSoundReader reader;
    if (reader.Open(file) != MovieError::None || IsOfOurForm(file, reader.Form()) || !accept(reader.Form()))
        return m_context.Report(read);
    std::unique_ptr<IProgress> progress = m_context.prompter.BeginProgress("Importing Sound");
    CConvertedSound converted = ConvertSound(reader, *progress);
    progress.reset();
    if (!m_context.Report(converted.status) || converted.stopped)
        return false;
    sound = {samplesPerSecond, std::move(converted.samples), COriginalSource{file, reader.Form()}};
    return true;
}

bool CSoundOperations::StoreRead(const std::string& name, const CReadSound& sound) {
    return StoreSound(name, sound.rate, sound.samples, sound.original ? &*sound.original : nullptr);
}

void CSoundOperations::AskAndImportSound() {
    if (!m_context.Require(m_context.model.sceneOpen, importWithoutScene))
        return;
    const std::vector<Path> files = m_context.prompter.Ask(COpenFilesRequest{
        {"Select an audio file",
         "Audio Files (*.wav) |*.wav|"
         "All readable sounds (*.wav;*.aif;*.aiff;*.flac;*.ogg;*.opus;*.mp3;*.m4a;*.mp4;*.mov;*.mkv;*.avi)"
         "|*.wav;*.WAV;*.aif;*.aiff;*.flac;*.ogg;*.oga;*.opus;*.mp3;*.m4a;*.aac;*.wma;*.mka;"
         "*.mp4;*.mov;*.mkv;*.webm;*.avi||",
         ".wav", "", false, 1}});
    if (files.empty())
        return;
    const auto ask = [this](const CSoundForm& form) {
        return m_context.prompter.Confirm("The sound is " + DescriptionOf(form) +
                                              ".\nDo you want to convert it ? What it is now is kept beside it.",
                                          Consequence::Undoable);
    };
    CReadSound sound;
    if (!ReadSound(files.front(), ask, sound) ||
        !m_context.Require(!m_canPlay || m_canPlay(), "There are no audio devices to play this sound!"))
        return;
    if (const std::optional<std::string> name = AskSoundName())
        static_cast<void>(StoreRead(*name, sound)); // it has said why not
}

bool CSoundOperations::ImportSound(const Path& file, const std::string& name, bool convert) {
    CReadSound sound;
    return m_context.Require(m_context.model.sceneOpen, importWithoutScene) &&
           ReadSound(
               file, [convert](const CSoundForm&) { return convert; }, sound) &&
           m_context.Require(static_cast<bool>(CheckSoundName(name)), brokenPictureName) && StoreRead(name, sound);
}

} // namespace velmor
