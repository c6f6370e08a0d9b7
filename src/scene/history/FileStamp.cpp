#include "scene/history/FileStamp.h"

#include "platform/files/Archive.h"
#include "platform/files/ContentHash.h"

namespace velmor {

CFileStamp CFileStamp::Of(const Path& file) {
    const std::optional<CFileIdentity> identity = IdentifyFile(file);
    const std::optional<CFileBytes> bytes = ReadWholeFile(file);
    if (!identity || !bytes)
        return {};
    return {true, identity->modifiedNanoseconds, bytes->Size(), identity->inode, ContentHash(bytes->Span())};
}

bool CFileStamp::IsOf(const Path& file) const {
    const std::optional<CFileIdentity> identity = IdentifyFile(file);
    if (!identity || !exists)
        return !identity && !exists;
    if (identity->size != size)
        return false;
    return (identity->modifiedNanoseconds == modifiedNanoseconds && identity->inode == inode) ||
           Of(file).hash == hash;
}

void CFileStamp::Write(CArchiveWriter& writer) const {
    writer.WriteByte(exists ? 1 : 0);
    for (const std::uint64_t value : {static_cast<std::uint64_t>(modifiedNanoseconds), size, inode, hash})
        writer.WriteWord(value);
}

CFileStamp CFileStamp::Read(CArchiveReader& reader) {
    CFileStamp stamp;
    stamp.exists = reader.ReadByte() != 0;
    stamp.modifiedNanoseconds = static_cast<std::int64_t>(reader.ReadWord());
    for (std::uint64_t* value : {&stamp.size, &stamp.inode, &stamp.hash})
        *value = reader.ReadWord();
    return stamp;
}

} // namespace velmor
