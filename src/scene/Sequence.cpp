#include "scene/Sequence.h"

#include "scene/NamingRules.h"
#include "xsheet/XSheet.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <limits>
#include <numeric>

namespace velmor {

namespace {

bool IsDigit(unsigned char c) {
    return std::isdigit(c) != 0;
}

// The number from 1 up that a file's name ends in.
std::optional<int> NumberOf(const Path& file) {
    const std::string stem = Utf8Of(file.stem());
    const auto begin = std::find_if_not(stem.rbegin(), stem.rend(), IsDigit).base();
    int number = 0;
    const auto [end, error] =
        std::from_chars(stem.data() + (begin - stem.begin()), stem.data() + stem.size(), number);
    return error == std::errc() && number > 0 ? std::optional(number) : std::nullopt;
}

std::vector<std::optional<int>> NumbersOf(const CSequence& sequence) {
    std::vector<std::optional<int>> numbers;
    for (const Path& file : sequence.files) {
        const auto index = static_cast<int>(numbers.size());
        if (!sequence.firstNumber)
            numbers.push_back(NumberOf(file));
        else if (*sequence.firstNumber > 0 && *sequence.firstNumber <= std::numeric_limits<int>::max() - index)
            numbers.emplace_back(*sequence.firstNumber + index);
        else
            numbers.emplace_back();
    }
    return numbers;
}

// The first frame behind all of them.
long long EndOf(const CSequence& sequence, const std::vector<CSequenceImage>& images) {
    const std::vector<long long> exposures = ExposuresOf(sequence, images);
    return std::accumulate(exposures.begin(), exposures.end(), static_cast<long long>(sequence.frame));
}

CStatus CheckNames(const CSequence& sequence) {
    if (sequence.kind == SourceMode::Pictures)
        return CheckPictureName(sequence.pictures) ? CStatus() : CStatus::Failure(brokenPictureName);
    return CheckFolderName(sequence.folder);
}

CStatus CheckExposure(const CSequence& sequence, const std::vector<CSequenceImage>& images, const CXSheet& xsheet) {
    if (!sequence.level) {
        if (CStatus name = CheckFreeText(sequence.levelName); !name)
            return name;
        if (xsheet.LevelCount() >= CXSheet::mostLevels)
            return CStatus::Failure("There is no room for another level");
    }
    if (sequence.level && !xsheet.HasLevel(*sequence.level))
        return CStatus::Failure("There is no such level");
    if (sequence.frame < 0 || sequence.hold < 1)
        return CStatus::Failure("Frames are counted from 1, and each image is exposed one frame or more");
    if (EndOf(sequence, images) > CXSheet::mostFrames)
        return CStatus::Failure("The sequence is longer than an xsheet can be");
    return {};
}

} // namespace

std::optional<std::vector<CSequenceImage>> ImagesOf(const CSequence& sequence) {
    const std::vector<std::optional<int>> numbers = NumbersOf(sequence);
    if (!std::ranges::all_of(numbers, [](const auto& number) { return number.has_value(); }))
        return std::nullopt;
    std::vector<CSequenceImage> images;
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        const std::string number = std::to_string(*numbers[i]);
        const std::string name = sequence.kind == SourceMode::Pictures ? sequence.pictures + number : number;
        images.push_back({sequence.files[i], *numbers[i], name});
    }
    std::ranges::sort(images, {}, &CSequenceImage::number);
    const auto twice = std::ranges::adjacent_find(images, {}, &CSequenceImage::number);
    return twice == images.end() ? std::optional(std::move(images)) : std::nullopt;
}

std::string SequenceStem(const std::vector<Path>& files) {
    if (files.empty())
        return {};
    std::string stem = Utf8Of(files.front().stem());
    std::ranges::replace(stem, '_', ' ');
    std::erase_if(stem, [](char c) { return c != ' ' && !IsPlainName({&c, 1}); });
    while (!stem.empty() && (IsDigit(static_cast<unsigned char>(stem.back())) || stem.back() == ' '))
        stem.pop_back();
    return stem.substr(std::min(stem.size(), stem.find_first_not_of(' ')));
}

std::string MissingNumbers(const std::vector<CSequenceImage>& images) {
    constexpr int mostGapsShown = 10;
    std::string text;
    int gaps = 0;
    for (std::size_t i = 1; i < images.size(); ++i) {
        const int first = images[i - 1].number + 1;
        const int last = images[i].number - 1;
        if (first > last)
            continue;
        if (++gaps > mostGapsShown)
            return text + ", ...";
        if (gaps > 1)
            text += ", ";
        text += std::to_string(first);
        if (last > first)
            text.append("-").append(std::to_string(last));
    }
    return text;
}

std::vector<long long> ExposuresOf(const CSequence& sequence, const std::vector<CSequenceImage>& images) {
    std::vector<long long> exposures(images.size(), sequence.hold);
    for (std::size_t i = 1; sequence.holdsGaps && i < images.size(); ++i)
        exposures[i - 1] *= images[i].number - images[i - 1].number;
    return exposures;
}

CStatus CheckSequence(const CSequence& sequence, const CXSheet& xsheet) {
    const auto images = ImagesOf(sequence);
    if (!images || images->empty())
        return CStatus::Failure("Each file of a sequence has to end in a number of its own, from 1 up");
    if (CStatus names = CheckNames(sequence); !names)
        return names;
    if (sequence.kind == SourceMode::Cels &&
        (sequence.lines.threshold < 0 || sequence.lines.threshold > CLineRules::mostThreshold))
        return CStatus::Failure("The threshold must be a whole number from 0 to 255");
    if (sequence.kind == SourceMode::Cels &&
        (sequence.lines.specks < 0 || sequence.lines.specks > CLineRules::mostSpecks))
        return CStatus::Failure("Specks have 0 to " + std::to_string(CLineRules::mostSpecks) + " pixels");
    return sequence.isExposed ? CheckExposure(sequence, *images, xsheet) : CStatus();
}

std::string ExposureText(const CSequence& sequence, const CXSheet& xsheet) {
    if (!sequence.isExposed || !CheckSequence(sequence, xsheet))
        return {};
    const auto end = static_cast<int>(EndOf(sequence, *ImagesOf(sequence)));
    std::string text = "Frames " + std::to_string(sequence.frame + 1) + " to " + std::to_string(end);
    if (sequence.level) {
        int used = 0;
        for (int frame = sequence.frame; frame < std::min(end, xsheet.FrameCount()); ++frame)
            used += xsheet.Cell(*sequence.level, frame).IsUsed() ? 1 : 0;
        if (used > 0)
            text += ", in place of " + std::to_string(used) + (used == 1 ? " cell" : " cells");
    }
    if (end > xsheet.FrameCount())
        text += "; the xsheet grows from " + std::to_string(xsheet.FrameCount()) + " frames";
    return text;
}

} // namespace velmor
