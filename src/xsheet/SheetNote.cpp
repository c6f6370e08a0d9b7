#include "xsheet/SheetNote.h"

#include "platform/files/TextEncoding.h"

namespace velmor {

std::string NoteText(std::string text, std::size_t most) {
    if (!IsUtf8(text))
        return {};
    if (text.size() <= most)
        return text;
    std::size_t end = most;
    while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xc0) == 0x80) // inside of a letter
        --end;
    text.resize(end);
    return text;
}

} // namespace velmor
