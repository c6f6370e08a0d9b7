#include "FuzzTarget.h"
#include "sound/OriginalSound.h"

#include <algorithm>

// What has been read is written again as it was.
void velmor::fuzz::Read(Bytes input) {
    const std::optional<COriginalHead> head = ReadOriginalHead(input);
    if (!head)
        return;
    const auto written = WriteOriginalHead(*head);
    Require(ReadOriginalHead(written) == head);
    Require(std::equal(written.begin(), written.begin() + 24, input.begin()));
}
