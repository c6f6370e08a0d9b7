#include "platform/movie/AviFrameRectangle.h"

#include <algorithm>
#include <cstdint>
#include <fstream>
#include <string_view>
#include <vector>

namespace velmor {

namespace {

// The header comes first and is small; streams with rows of tags stay below this.
constexpr std::streamsize headerBytes = 65536;
constexpr std::size_t streamHeaderBytes = 56;
constexpr std::size_t rectangleOffset = 48;

int SignedWord(std::string_view bytes, std::size_t offset) {
    const auto low = static_cast<std::uint8_t>(bytes[offset]);
    const auto high = static_cast<std::uint8_t>(bytes[offset + 1]);
    return static_cast<std::int16_t>(low | high << 8);
}

} // namespace

std::optional<CFrameRectangle> FrameRectangleOf(const Path& path) {
    std::ifstream file(path, std::ios::binary);
    std::vector<char> buffer(static_cast<std::size_t>(headerBytes));
    file.read(buffer.data(), headerBytes);
    const std::string_view header(buffer.data(), static_cast<std::size_t>(file.gcount()));
    for (std::size_t chunk = header.find("strh"); chunk != std::string_view::npos;
         chunk = header.find("strh", chunk + 4)) {
        const std::size_t data = chunk + 8;
        if (data + streamHeaderBytes > header.size())
            return std::nullopt;
        if (header.substr(data, 4) != "vids")
            continue;
        const std::size_t corners = data + rectangleOffset; // left, top, right, bottom
        return CFrameRectangle{SignedWord(header, corners + 4) - SignedWord(header, corners),
                               SignedWord(header, corners + 6) - SignedWord(header, corners + 2)};
    }
    return std::nullopt;
}

} // namespace velmor
