#include "xsheet/exchange/Xdts.h"
#include "FuzzTarget.h"

// What has been read is written and read again the same.
void velmor::fuzz::Read(Bytes input) {
    CExchangeSheet sheet;
    if (!ReadXdts(input, sheet))
        return;
    const std::string written = WriteXdts(sheet);
    CExchangeSheet again;
    Require(static_cast<bool>(
        ReadXdts({reinterpret_cast<const std::uint8_t*>(written.data()), written.size()}, again)));
    for (CExchangeTrack& track : sheet.tracks)
        Require(track.cells.size() == static_cast<std::size_t>(sheet.frameCount));
    Require(again.frameCount == sheet.frameCount && again.tracks == sheet.tracks);
}
