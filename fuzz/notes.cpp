#include "FuzzTarget.h"
#include "xsheet/SheetNotesFile.h"
#include "xsheet/XSheetFile.h"

// What has been read is written and read again the same.
void velmor::fuzz::Read(Bytes input) {
    CScene bare;
    bare.xsheet = CXSheet(3, 9);
    bare.sounds.Set({{2, "Meow"}, {4, "Bell"}});
    CScene scene = bare;
    if (!DecodeSheetNotes(input, scene))
        return;
    Require(EncodeXSheet(scene) == EncodeXSheet(bare));
    const std::vector<std::uint8_t> written = EncodeSheetNotes(scene, 5);
    CScene again = bare;
    Require(static_cast<bool>(DecodeSheetNotes(written, again)));
    Require(again == scene);
}
