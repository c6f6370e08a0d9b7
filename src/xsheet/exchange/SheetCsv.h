#pragma once

#include "platform/Status.h"
#include "xsheet/exchange/ExchangeSheet.h"

#include <cstdint>
#include <span>
#include <string>

namespace velmor {

/// A sheet as a table of text for spreadsheets: a row a frame, a column a level, the one in front first, and one of
/// dialogue where there is any. A drawing stands in its first row, the rows that hold it are empty; where it ends
/// stands "x". UTF-8 with a byte order mark, by which spreadsheets know it.
std::string WriteSheetCsv(const CExchangeSheet& sheet);

/// Reads such a table; commas, semicolons or tabs between the cells, whichever follows the first one. On failure
/// `sheet` is unchanged.
CStatus ReadSheetCsv(std::span<const std::uint8_t> file, CExchangeSheet& sheet);

} // namespace velmor
