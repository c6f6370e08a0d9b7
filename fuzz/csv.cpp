#include "FuzzTarget.h"
#include "xsheet/exchange/SheetCsv.h"

// What has been read is written and read again the same.
void velmor::fuzz::Read(Bytes input) {
    CExchangeSheet sheet;
    if (!ReadSheetCsv(input, sheet))
        return;
    const std::string written = WriteSheetCsv(sheet);
    CExchangeSheet again;
    Require(static_cast<bool>(
        ReadSheetCsv({reinterpret_cast<const std::uint8_t*>(written.data()), written.size()}, again)));
    Require(again.frameCount == sheet.frameCount && again.tracks == sheet.tracks);
}
