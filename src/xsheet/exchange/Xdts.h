#pragma once

#include "platform/Status.h"
#include "xsheet/exchange/ExchangeSheet.h"

#include <cstdint>
#include <span>
#include <string>

namespace velmor {

/// A sheet as an exchange digital time sheet (".xdts"), a text file of UTF-8.
std::string WriteXdts(const CExchangeSheet& sheet);

/// Reads the first time table of such a file. Inbetween marks leave a drawing as it is, and are kept; entries
/// before the first frame count as its state, those behind the last one and whatever makes no sense are left out. A
/// sheet of more tracks or frames than ours can have is refused. On failure `sheet` is unchanged.
CStatus ReadXdts(std::span<const std::uint8_t> file, CExchangeSheet& sheet);

} // namespace velmor
