#pragma once

#include "platform/Status.h"
#include "scene/ImportedImage.h"

#include <optional>
#include <string>
#include <vector>

namespace velmor {

class CXSheet;

/// Numbered files, and what is to become of them.
struct CSequence {
    std::vector<Path> files; ///< in the order in which they are counted, where their names do not say
    SourceMode kind = SourceMode::Cels;
    std::string folder;             ///< of cels; made if missing
    std::string pictures;           ///< what the names of pictures begin with
    std::optional<int> firstNumber; ///< counts on from here; nothing: the numbers that the files' names end in
    CLineRules lines;               ///< of cels
    bool isExposed = false;
    std::optional<int> level; ///< to be exposed on; nothing for a new one in front
    std::string levelName;    ///< of the new one
    int frame = 0;            ///< the first, from 0
    int hold = 1;             ///< frames that each is exposed
    bool holdsGaps = false;   ///< where numbers are missing, the image before stays as long as they would have

    bool operator==(const CSequence&) const = default;
};

/// An image that a sequence brings.
struct CSequenceImage {
    Path file;
    int number = 0;
    std::string name; ///< of the asset

    bool operator==(const CSequenceImage&) const = default;
};

/// The images by their numbers; nothing when the numbers are to be taken from names that do not end in one from 1
/// up, or when two end in the same.
std::optional<std::vector<CSequenceImage>> ImagesOf(const CSequence& sequence);

/// What the files are called before their numbers, with nothing in it that a folder's name could not have; empty
/// when nothing is left.
std::string SequenceStem(const std::vector<Path>& files);

/// The numbers that are missing between the first and the last, as "3, 7-9"; empty for none. Of many the first.
std::string MissingNumbers(const std::vector<CSequenceImage>& images);

/// The frames that each image stands; as many numbers as images.
std::vector<long long> ExposuresOf(const CSequence& sequence, const std::vector<CSequenceImage>& images);

/// Whether the sequence can be imported, and exposed if that is wanted; otherwise why not.
CStatus CheckSequence(const CSequence& sequence, const CXSheet& xsheet);

/// Where a sequence that can be imported is exposed and what that replaces; empty when it is not.
std::string ExposureText(const CSequence& sequence, const CXSheet& xsheet);

} // namespace velmor
