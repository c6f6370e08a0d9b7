#include "platform/sdl/SdlAudio.h"

#include <algorithm>
#include <cstdlib>
#include <new>

namespace velmor {

namespace {

constexpr std::uint8_t silence = 128;
constexpr std::uint16_t wantedBuffer = 512; // 23 ms at the rate of sounds: late enough to be safe, short to the eye
constexpr std::uint16_t wantedStereoBuffer = 1024; // 21 ms at the rate of a mix

} // namespace

CSdlAudio::CSdlAudio() {
    SDL_SetMainReady();
    SDL_SetHint(SDL_HINT_NO_SIGNAL_HANDLERS, "1");
    SDL_SetHint(SDL_HINT_APP_NAME, "Personal Velmor");
    m_isReady = SDL_InitSubSystem(SDL_INIT_AUDIO) == 0;
}

CSdlAudio::~CSdlAudio() {
    if (m_isReady)
        SDL_QuitSubSystem(SDL_INIT_AUDIO);
}

bool CSdlDevice::Exists(bool capture) {
    const CSdlAudio audio;
    // A negative number stands for "some, but they cannot be listed".
    return audio.IsReady() && SDL_GetNumAudioDevices(capture ? 1 : 0) != 0;
}

bool CSdlDevice::Open(bool capture, const CSdlForm& form, Callback callback, void* owner) {
    Close();
    auto audio = std::make_unique<CSdlAudio>();
    if (!audio->IsReady())
        return false;
    SDL_AudioSpec wanted{};
    wanted.freq = form.rate;
    wanted.format = form.format;
    wanted.channels = form.channels;
    wanted.samples = form.buffer;
    wanted.callback = callback;
    wanted.userdata = owner;
    SDL_AudioSpec got{};
    m_device = SDL_OpenAudioDevice(nullptr, capture ? 1 : 0, &wanted, &got, 0);
    if (m_device == 0)
        return false;
    m_audio = std::move(audio);
    m_bufferSamples = got.samples;
    return true;
}

void CSdlDevice::Close() {
    if (m_device != 0)
        SDL_CloseAudioDevice(m_device);
    m_device = 0;
    m_audio.reset();
}

void CSdlDevice::Run(bool runs) {
    if (m_device != 0)
        SDL_PauseAudioDevice(m_device, runs ? 0 : 1);
}

bool CSdlOutput::OpenAs(const CSdlForm& form) {
    m_device.Close(); // whose thread asks which form it is
    m_isStereo = form.channels == 2;
    return m_device.Open(
        false, form,
        [](void* owner, std::uint8_t* bytes, int count) {
            static_cast<CSdlOutput*>(owner)->Fill({bytes, static_cast<std::size_t>(count)});
        },
        this);
}

bool CSdlOutput::Open() {
    return OpenAs({m_rate, AUDIO_U8, 1, wantedBuffer});
}

bool CSdlOutput::OpenStereo(int rate) {
    return OpenAs({rate, AUDIO_F32SYS, 2, wantedStereoBuffer});
}

bool CSdlOutput::Play(std::span<const std::uint8_t> samples) {
    if (!m_device.IsOpen() || m_isStereo)
        return false;
    m_device.Run(false);
    {
        const std::lock_guard lock(m_mutex);
        Forget();
        try {
            m_samples.assign(samples.begin(), samples.end());
        } catch (const std::bad_alloc&) {
            return false;
        }
    }
    m_device.Run(true);
    return true;
}

bool CSdlOutput::PlayStereo(std::vector<float> samples) {
    if (!m_device.IsOpen() || !m_isStereo)
        return false;
    m_device.Run(false);
    {
        const std::lock_guard lock(m_mutex);
        Forget();
        m_stereo = std::move(samples);
    }
    m_device.Run(true);
    return true;
}

std::span<const std::uint8_t> CSdlOutput::Bytes() const {
    if (!m_isStereo)
        return m_samples;
    return {reinterpret_cast<const std::uint8_t*>(m_stereo.data()), m_stereo.size() * sizeof(float)};
}

std::size_t CSdlOutput::Position() const {
    const std::lock_guard lock(m_mutex);
    return std::min(m_consumed, Bytes().size()) / (m_isStereo ? 2 * sizeof(float) : 1);
}

void CSdlOutput::Forget() {
    m_samples.clear();
    m_stereo = {};
    m_handed = 0;
    m_consumed = 0;
}

void CSdlOutput::Reset() {
    m_device.Run(false);
    const std::lock_guard lock(m_mutex);
    Forget();
}

bool CSdlOutput::Close() {
    m_device.Close();
    const std::lock_guard lock(m_mutex);
    Forget();
    return true;
}

void CSdlOutput::Fill(std::span<std::uint8_t> buffer) {
    const std::lock_guard lock(m_mutex);
    // The device asks for the next buffer when it has taken the one before.
    m_consumed = m_handed;
    const std::span<const std::uint8_t> bytes = Bytes();
    const std::size_t first = std::min(m_handed, bytes.size());
    const std::size_t count = std::min(buffer.size(), bytes.size() - first);
    std::ranges::copy(bytes.subspan(first, count), buffer.begin());
    std::ranges::fill(buffer.subspan(count), m_isStereo ? std::uint8_t{0} : silence);
    m_handed += buffer.size();
}

bool CSdlInput::Open() {
    return m_device.Open(
        true, {m_rate, AUDIO_U8, 1, wantedBuffer},
        [](void* owner, std::uint8_t* bytes, int count) {
            static_cast<CSdlInput*>(owner)->Take({bytes, static_cast<std::size_t>(count)});
        },
        this);
}

bool CSdlInput::Start(std::size_t capacity) {
    if (!m_device.IsOpen())
        return false;
    m_device.Run(false);
    {
        const std::lock_guard lock(m_mutex);
        m_samples.clear();
        m_level = 0;
        try {
            m_samples.reserve(capacity); // the recording thread takes no memory
        } catch (const std::exception&) {
            return false;
        }
        m_capacity = capacity;
    }
    m_device.Run(true);
    return true;
}

std::size_t CSdlInput::Position() const {
    const std::lock_guard lock(m_mutex);
    return m_samples.size();
}

int CSdlInput::Level() const {
    const std::lock_guard lock(m_mutex);
    return m_level;
}

std::vector<std::uint8_t> CSdlInput::Stop() {
    m_device.Run(false);
    const std::lock_guard lock(m_mutex);
    m_capacity = 0;
    m_level = 0;
    return std::move(m_samples);
}

void CSdlInput::Take(std::span<const std::uint8_t> bytes) {
    const std::lock_guard lock(m_mutex);
    const std::size_t room = m_capacity > m_samples.size() ? m_capacity - m_samples.size() : 0;
    const std::size_t count = std::min(room, bytes.size());
    m_samples.insert(m_samples.end(), bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(count));
    int level = 0;
    for (const std::uint8_t sample : bytes)
        level = std::max(level, std::abs(sample - silence));
    m_level = level;
}

namespace {

class CSdlDevices final : public IAudioDevices {
public:
    explicit CSdlDevices(int rate) : m_output(rate), m_input(rate) {}
    IAudioOutput& Output() override { return m_output; }
    IAudioInput& Input() override { return m_input; }

private:
    CSdlOutput m_output;
    CSdlInput m_input;
};

class CSdlLibrary final : public IAudioLibrary {
public:
    std::unique_ptr<IAudioDevices> MakeDevices(int samplesPerSecond) const override {
        return std::make_unique<CSdlDevices>(samplesPerSecond);
    }
};

} // namespace

} // namespace velmor

extern "C" void* VelmorAudioLibrary() {
    static const velmor::CSdlLibrary library;
    return const_cast<velmor::CSdlLibrary*>(&library);
}
