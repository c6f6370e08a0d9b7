#pragma once

#include "scene/history/StepChanges.h"

#include <cstdint>

namespace velmor {

/// Most bytes of files that one step keeps.
inline constexpr std::uint64_t mostKeptBytes = std::uint64_t{512} << 20;

/// The contents of a file; nothing when there is none, or it has more than `mostBytes`.
KeptFile KeepContents(const Path& file, std::uint64_t mostBytes);
bool AreSameContents(const KeptFile& a, const KeptFile& b);

/// The files of a step and their way there and back, whole or not at all.
class CSceneFiles {
public:
    explicit CSceneFiles(Path sceneFolder) : m_folder(std::move(sceneFolder)) {}

    /// Whether every file is as the step left it (going back), or as it found it (going forward). Images may be
    /// written otherwise as long as they look the same. The first that is not is told.
    bool AreAsKept(const std::vector<CFileChange>& files, ChangeDirection direction, std::string& other) const;
    /// Goes the way. What fails takes back what was done and tells the file.
    CStatus Move(const std::vector<CFileChange>& files, ChangeDirection direction) const;
    /// Whatever of the way was gone, everything is as before it. For what the death of the program has cut short.
    CStatus TakeBack(const std::vector<CFileChange>& files, ChangeDirection direction) const;

private:
    Path PathTo(const std::string& file) const { return m_folder / PathOf(file); }
    bool MoveOne(const CFileChange& change, ChangeDirection direction) const;
    bool Put(const std::string& file, const KeptFile& contents) const;

    Path m_folder;
};

} // namespace velmor
