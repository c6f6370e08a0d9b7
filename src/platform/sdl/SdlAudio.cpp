#include "platform/sdl/SdlAudio.h"

#include <algorithm>
#include <cstdlib>
#include <new>

namespace velmor {

namespace {

constexpr std::uint8_t silence = 128;
constexpr std::uint16_t wantedBuffer = 512; // 23 ms at the rate of sounds: late enough to be safe, short to the eye

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

bool CSdlDevice::Open(bool capture, int rate, Callback callback, void* owner) {
    Close();
    auto audio = std::make_unique<CSdlAudio>();
    if (!audio->IsReady())
        return false;
    SDL_AudioSpec wanted{};
    wanted.freq = rate;
    wanted.format = AUDIO_U8;
    wanted.channels = 1;
    wanted.samples = wantedBuffer;
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

bool CSdlOutput::Open() {
    return m_device.Open(
        false, m_rate,
        [](void* owner, std::uint8_t* bytes, int count) {
            static_cast<CSdlOutput*>(owner)->Fill({bytes, static_cast<std::size_t>(count)});
        },
        this);
}

bool CSdlOutput::Play(std::span<const std::uint8_t> samples) {
    if (!m_device.IsOpen())
        return false;
    m_device.Run(false);
    {
        const std::lock_guard lock(m_mutex);
        try {
            m_samples.assign(samples.begin(), samples.end());
        } catch (const std::bad_alloc&) {
            m_samples.clear();
            return false;
        }
        m_handed = 0;
        m_consumed = 0;
    }
    m_device.Run(true);
    return true;
}

std::size_t CSdlOutput::Position() const {
    const std::lock_guard lock(m_mutex);
    return std::min(m_consumed, m_samples.size());
}

void CSdlOutput::Reset() {
    m_device.Run(false);
    const std::lock_guard lock(m_mutex);
    m_samples.clear();
    m_handed = 0;
    m_consumed = 0;
}

bool CSdlOutput::Close() {
    m_device.Close();
    const std::lock_guard lock(m_mutex);
    m_samples.clear();
    return true;
}

void CSdlOutput::Fill(std::span<std::uint8_t> buffer) {
    const std::lock_guard lock(m_mutex);
    // The device asks for the next buffer when it has taken the one before.
    m_consumed = m_handed;
    const std::size_t first = std::min(m_handed, m_samples.size());
    const std::size_t count = std::min(buffer.size(), m_samples.size() - first);
    std::copy_n(m_samples.begin() + static_cast<std::ptrdiff_t>(first), count, buffer.begin());
    std::fill(buffer.begin() + static_cast<std::ptrdiff_t>(count), buffer.end(), silence);
    m_handed += buffer.size();
}

bool CSdlInput::Open() {
    return m_device.Open(
        true, m_rate,
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
