#include "FuzzTarget.h"
#include "xsheet/XSheetFile.h"

// What has been read is written and read again the same.
void velmor::fuzz::Read(Bytes input) {
    CScene sheet;
    if (!DecodeXSheet(input, sheet))
        return;
    const std::vector<std::uint8_t> written = EncodeXSheet(sheet);
    CScene again;
    Require(static_cast<bool>(DecodeXSheet(written, again)));
    Require(EncodeXSheet(again) == written);
}
