#pragma once

#include <optional>
#include <sane/sane.h>
#include <string>
#include <vector>

namespace velmor {

// What the description of a scanner's option says, made easy to ask. A description that contradicts itself counts
// as one without limits.

struct CNumberRange {
    double least = 0;
    double most = 0;
};

/// Whether the option is a single number.
bool IsNumber(const SANE_Option_Descriptor& option);
double FromWord(const SANE_Option_Descriptor& option, SANE_Word word);
SANE_Word ToWord(const SANE_Option_Descriptor& option, double value);
/// The limits of a number; both 0 when it has none.
CNumberRange RangeOf(const SANE_Option_Descriptor& option);
/// The permitted value that is closest to `value`.
double NearestValue(const SANE_Option_Descriptor& option, double value);
/// The values of a list of numbers, as whole ones, ascending.
std::vector<int> ResolutionsOf(const SANE_Option_Descriptor& option);
/// The values of a list of texts.
std::vector<std::string> TextsOf(const SANE_Option_Descriptor& option);
/// The text that is the first of `words` that any is, or contains the first that any contains; `words` are in lower
/// case, `texts` need not be.
std::optional<std::string> FirstWith(const std::vector<std::string>& texts, const std::vector<std::string>& words);

} // namespace velmor
