#include "FuzzTarget.h"
#include "MemoryFile.h"
#include "platform/files/Profile.h"

void velmor::fuzz::Read(Bytes input) {
    const CMemoryFile file(input);
    const CProfile profile(file.File());
    profile.GetString("Settings", "Database Dir", "");
    profile.GetString("Remember", "Last Scene", "");
    profile.GetInt("Settings", "ImportThres", 128);
}
