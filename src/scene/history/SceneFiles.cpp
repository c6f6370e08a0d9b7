#include "scene/history/SceneFiles.h"

#include "image/CelImg.h"

#include <algorithm>
#include <array>

namespace velmor {

namespace {

// The same drawing may be written in several ways.
bool LookAlike(const Path& file, const KeptFile& kept) {
    const std::optional<CFileBytes> bytes = ReadWholeFile(file);
    if (!bytes || !kept)
        return !FileExists(file) && !kept;
    if (std::ranges::equal(bytes->Span(), *kept))
        return true;
    CCelImg now;
    CCelImg then;
    if (!now.LoadBytes(bytes->Span(), file) || !then.LoadBytes(*kept, file) || now.Width() != then.Width() ||
        now.Height() != then.Height() || !std::ranges::equal(now.LineMask(), then.LineMask()))
        return false;
    return std::ranges::all_of(
        std::array{Channel::Red, Channel::Green, Channel::Blue, Channel::Alpha},
        [&](Channel channel) { return std::ranges::equal(now.PlaneOf(channel), then.PlaneOf(channel)); });
}

} // namespace

KeptFile KeepContents(const Path& file, std::uint64_t mostBytes) {
    const std::optional<CFileBytes> bytes = ReadWholeFile(file, mostBytes);
    return bytes ? std::make_shared<const std::vector<std::uint8_t>>(bytes->Span().begin(), bytes->Span().end())
                 : nullptr;
}

bool AreSameContents(const KeptFile& a, const KeptFile& b) {
    return a && b ? *a == *b : !a && !b;
}

bool CSceneFiles::AreAsKept(const std::vector<CFileChange>& files, ChangeDirection direction,
                            std::string& other) const {
    const bool forward = direction == ChangeDirection::Forward;
    for (const CFileChange& change : files) {
        const Path file = PathTo(change.file);
        const bool isMoved = !change.movedFrom.empty();
        const bool fits = isMoved && forward
                              ? FileExists(PathTo(change.movedFrom)) && LookAlike(file, change.before)
                          : isMoved ? FileExists(file) && !FileExists(PathTo(change.movedFrom))
                                    : LookAlike(file, forward ? change.before : change.after);
        if (!fits) {
            other = change.file;
            return false;
        }
    }
    return true;
}

bool CSceneFiles::Put(const std::string& file, const KeptFile& contents) const {
    const Path path = PathTo(file);
    if (!contents)
        return !FileExists(path) || RemoveFile(path);
    return CreateFolder(path.parent_path()) && WriteFileAtomically(path, *contents);
}

bool CSceneFiles::MoveOne(const CFileChange& change, ChangeDirection direction) const {
    const bool forward = direction == ChangeDirection::Forward;
    if (change.movedFrom.empty())
        return Put(change.file, forward ? change.after : change.before);
    if (forward)
        return MoveFile(PathTo(change.movedFrom), PathTo(change.file));
    return MoveFile(PathTo(change.file), PathTo(change.movedFrom)) &&
           (!change.before || Put(change.file, change.before));
}

CStatus CSceneFiles::Move(const std::vector<CFileChange>& files, ChangeDirection direction) const {
    for (std::size_t done = 0; done < files.size(); ++done) {
        if (MoveOne(files[done], direction))
            continue;
        const ChangeDirection back =
            direction == ChangeDirection::Forward ? ChangeDirection::Back : ChangeDirection::Forward;
        for (std::size_t index = done; index-- > 0;)
            static_cast<void>(MoveOne(files[index], back)); // what resists now is beyond help
        return CStatus::Failure("The file could not be written. Disk full or write protected?\n" +
                                Utf8Of(PathTo(files[done].file)));
    }
    return {};
}

CStatus CSceneFiles::TakeBack(const std::vector<CFileChange>& files, ChangeDirection direction) const {
    const bool forward = direction == ChangeDirection::Forward;
    for (const CFileChange& change : files) {
        const bool isMoved = !change.movedFrom.empty();
        const bool isGone =
            isMoved && (forward ? !FileExists(PathTo(change.movedFrom)) : FileExists(PathTo(change.movedFrom)));
        if (isMoved && !isGone)
            continue;
        const bool done = isMoved ? MoveOne(change, forward ? ChangeDirection::Back : ChangeDirection::Forward)
                                  : Put(change.file, forward ? change.before : change.after);
        if (!done)
            return CStatus::Failure("The file could not be written. Disk full or write protected?\n" +
                                    Utf8Of(PathTo(change.file)));
    }
    return {};
}

} // namespace velmor
