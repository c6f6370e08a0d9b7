#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace velmor {

/// The names that a typed number can stand for: those that begin with it, and those whose number at the end does
/// ("12" for "Fox12", and for "0012"). The likeliest come first: the name itself, those that end in just that
/// number, then the others, shorter ones before longer ones and otherwise in their order.
std::vector<std::string> DrawingsNamed(std::span<const std::string> names, std::string_view typed);

} // namespace velmor
