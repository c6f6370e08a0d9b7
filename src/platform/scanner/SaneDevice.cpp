#include "platform/scanner/SaneDevice.h"

#include "platform/scanner/SaneOption.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <thread>

namespace velmor {

namespace {

constexpr double millimetresPerInch = 25.4;
constexpr std::size_t readBytes = 1 << 16;
constexpr auto idleWait = std::chrono::milliseconds(5); // of a driver that has nothing to read yet
constexpr int mostSurplusReads = 100;                   // after the last line, of a driver that finds no end
constexpr int lineArtDepth = 1;
constexpr int colorDepth = 8;

// Drivers name their options' values as they please.
const std::vector<std::string> lineArtModes = {"lineart",         "line art", "binary",    "black & white",
                                               "black and white", "b&w",      "monochrome"};
const std::vector<std::string> greyModes = {"gray", "grey"};
const std::vector<std::string> colorModes = {"color", "colour", "rgb"};
const std::vector<std::string> feederSources = {"document feeder", "adf", "feeder"};
const std::vector<std::string> glassSources = {"flatbed", "glass", "platen", "normal"};

ScanFrame FrameOf(SANE_Frame format) {
    switch (format) {
    case SANE_FRAME_RGB:
        return ScanFrame::Rgb;
    case SANE_FRAME_RED:
        return ScanFrame::Red;
    case SANE_FRAME_GREEN:
        return ScanFrame::Green;
    case SANE_FRAME_BLUE:
        return ScanFrame::Blue;
    case SANE_FRAME_GRAY:
        break;
    }
    return ScanFrame::Gray;
}

bool IsKnown(SANE_Frame format) {
    return static_cast<int>(format) >= SANE_FRAME_GRAY && static_cast<int>(format) <= SANE_FRAME_BLUE;
}

} // namespace

SANE_Status CSaneDevice::Open(const std::string& name) {
    Close();
    const SANE_Status status = ::sane_open(name.c_str(), &m_handle);
    if (status != SANE_STATUS_GOOD)
        m_handle = nullptr;
    return status;
}

void CSaneDevice::Close() {
    if (m_handle != nullptr)
        ::sane_close(m_handle);
    m_handle = nullptr;
}

CSaneDevice::COption CSaneDevice::Find(const char* name) const {
    // Option 0 holds the number of options. It can change with every value that is set.
    SANE_Int count = 0;
    if (m_handle == nullptr ||
        ::sane_control_option(m_handle, 0, SANE_ACTION_GET_VALUE, &count, nullptr) != SANE_STATUS_GOOD)
        return {};
    for (SANE_Int index = 1; index < count; ++index) {
        const SANE_Option_Descriptor* option = ::sane_get_option_descriptor(m_handle, index);
        if (option != nullptr && option->name != nullptr && std::string_view(option->name) == name &&
            SANE_OPTION_IS_ACTIVE(option->cap) && SANE_OPTION_IS_SETTABLE(option->cap))
            return {index, option};
    }
    return {};
}

void CSaneDevice::SetNumber(const char* name, double value) {
    const COption option = Find(name);
    if (!option || !IsNumber(*option.descriptor))
        return;
    SANE_Word word = ToWord(*option.descriptor, NearestValue(*option.descriptor, value));
    ::sane_control_option(m_handle, option.index, SANE_ACTION_SET_VALUE, &word, nullptr);
}

bool CSaneDevice::SetText(const char* name, const std::string& value) {
    const COption option = Find(name);
    if (!option || option.descriptor->type != SANE_TYPE_STRING || option.descriptor->size <= 0)
        return false;
    std::vector<char> text(static_cast<std::size_t>(option.descriptor->size), '\0');
    std::copy_n(value.begin(), std::min(value.size(), text.size() - 1), text.begin());
    return ::sane_control_option(m_handle, option.index, SANE_ACTION_SET_VALUE, text.data(), nullptr) ==
           SANE_STATUS_GOOD;
}

void CSaneDevice::SetMode(ScanMode mode) {
    const COption option = Find("mode");
    const std::vector<std::string> offered = option ? TextsOf(*option.descriptor) : std::vector<std::string>{};
    const auto set = [&](const std::vector<std::string>& words) {
        const std::optional<std::string> value = FirstWith(offered, words);
        return value && SetText("mode", *value);
    };
    if (mode == ScanMode::Color) {
        set(colorModes);
        SetNumber("depth", colorDepth);
    } else if (!set(lineArtModes)) {
        // Grey of one bit, or else of eight, which the threshold divides.
        set(greyModes);
        SetNumber("depth", lineArtDepth);
    }
}

void CSaneDevice::SetSource(bool feeder) {
    const COption option = Find("source");
    if (!option)
        return;
    if (const auto value = FirstWith(TextsOf(*option.descriptor), feeder ? feederSources : glassSources))
        static_cast<void>(SetText("source", *value)); // a scanner that refuses keeps its own
}

void CSaneDevice::SetArea(const CScanArea& area, int resolution) {
    const struct {
        const char* name;
        double value;
        bool isFar;
    } edges[] = {{"tl-x", area.left, false},
                 {"tl-y", area.top, false},
                 {"br-x", area.left + area.width, true},
                 {"br-y", area.top + area.height, true}};
    const bool isAll = area.width <= 0 || area.height <= 0;
    for (const auto& edge : edges) {
        const COption option = Find(edge.name);
        if (!option)
            continue;
        const double perMillimetre =
            option.descriptor->unit == SANE_UNIT_PIXEL ? resolution / millimetresPerInch : 1;
        const CNumberRange range = RangeOf(*option.descriptor);
        SetNumber(edge.name, isAll ? (edge.isFar ? range.most : range.least) : edge.value * perMillimetre);
    }
}

double CSaneDevice::ReadNumber(const COption& option, double otherwise) const {
    SANE_Word word = 0;
    if (!option || !IsNumber(*option.descriptor) ||
        ::sane_control_option(m_handle, option.index, SANE_ACTION_GET_VALUE, &word, nullptr) != SANE_STATUS_GOOD)
        return otherwise;
    return FromWord(*option.descriptor, word);
}

CScannerAbilities CSaneDevice::Abilities() const {
    CScannerAbilities abilities;
    if (const COption option = Find("resolution")) {
        abilities.resolutions = ResolutionsOf(*option.descriptor);
        const CNumberRange range = RangeOf(*option.descriptor);
        if (range.most > 0) {
            abilities.leastResolution = std::max(static_cast<int>(std::ceil(range.least)), 1);
            abilities.mostResolution = std::max(static_cast<int>(range.most), abilities.leastResolution);
        }
    }
    const double resolution = ReadNumber(Find("resolution"), 0);
    const auto extent = [&](const char* name) {
        const COption option = Find(name);
        if (!option)
            return 0.0;
        const double most = RangeOf(*option.descriptor).most;
        if (option.descriptor->unit == SANE_UNIT_PIXEL)
            return resolution > 0 ? most * millimetresPerInch / resolution : 0.0;
        return option.descriptor->unit == SANE_UNIT_MM ? most : 0.0;
    };
    abilities.width = extent("br-x");
    abilities.height = extent("br-y");
    if (const COption option = Find("source"))
        abilities.hasFeeder = FirstWith(TextsOf(*option.descriptor), feederSources).has_value();
    return abilities;
}

void CSaneDevice::Apply(const CScanSettings& settings) {
    // In this order: what comes later may depend on what comes first.
    SetSource(settings.feeder);
    SetMode(settings.mode);
    SetNumber("resolution", settings.resolution);
    SetArea(settings.area, settings.resolution);
}

void CSaneDevice::SetFailure(SANE_Status status) {
    m_failure = ::sane_strstatus(status);
}

CSaneDevice::Outcome CSaneDevice::Fail(SANE_Status status) {
    if (status == SANE_STATUS_CANCELLED)
        return Outcome::Cancelled;
    SetFailure(status);
    return Outcome::Failed;
}

CSaneDevice::Outcome CSaneDevice::ScanPage(const CScanSettings& settings,
                                           const std::function<bool(int percent)>& report, CScannedPage& page) {
    m_failure.clear();
    CScanAssembler assembler(settings.mode, settings.threshold);
    bool isLast = false;
    while (!isLast) {
        const SANE_Status started = ::sane_start(m_handle);
        if (started == SANE_STATUS_NO_DOCS)
            return Outcome::NoMorePages;
        SANE_Parameters parameters{};
        const SANE_Status known =
            started == SANE_STATUS_GOOD ? ::sane_get_parameters(m_handle, &parameters) : started;
        if (known != SANE_STATUS_GOOD)
            return Fail(known);
        const CScanLayout layout{FrameOf(parameters.format), parameters.bytes_per_line, parameters.pixels_per_line,
                                 parameters.lines, parameters.depth};
        if (!IsKnown(parameters.format) || !assembler.BeginFrame(layout))
            return Fail(SANE_STATUS_UNSUPPORTED);
        if (const Outcome outcome = ReadFrame(assembler, report); outcome != Outcome::Page)
            return outcome;
        isLast = parameters.last_frame != SANE_FALSE;
    }
    std::optional<CScannedPage> finished = assembler.Finish();
    if (!finished)
        return Fail(SANE_STATUS_IO_ERROR);
    page = std::move(*finished);
    return Outcome::Page;
}

CSaneDevice::Outcome CSaneDevice::ReadFrame(CScanAssembler& page, const std::function<bool(int percent)>& report) {
    std::array<SANE_Byte, readBytes> buffer;
    for (int surplus = 0; surplus < mostSurplusReads; surplus += page.IsFull() ? 1 : 0) {
        if (report(page.Progress()))
            return Outcome::Cancelled;
        SANE_Int count = 0;
        const SANE_Status status =
            ::sane_read(m_handle, buffer.data(), static_cast<SANE_Int>(buffer.size()), &count);
        if (status == SANE_STATUS_EOF)
            return Outcome::Page;
        if (status != SANE_STATUS_GOOD)
            return Fail(status);
        if (count <= 0)
            std::this_thread::sleep_for(idleWait);
        else
            page.Append(std::span(buffer).first(std::min(static_cast<std::size_t>(count), buffer.size())));
    }
    return Outcome::Page;
}

void CSaneDevice::EndScan() {
    if (m_handle != nullptr)
        ::sane_cancel(m_handle);
}

} // namespace velmor
