#pragma once

#include "image/paint/Recolor.h"
#include "scene/DialogRequests.h"
#include "scene/SceneContext.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace velmor {

/// One colour in the place of another, in the image under edit or in the files of many. A batch is done whole, as
/// one step of the history, or, when a file resists or the user stops, not at all.
class CRecolorOperations {
public:
    explicit CRecolorOperations(CSceneContext context) : m_context(context) {}

    /// Asks which colour becomes which, and where. Starts with a colour that was found, if there is one, otherwise
    /// with the foreground.
    void AskAndReplace(std::optional<CColor> from = std::nullopt);

    /// Recolours files of the scene's images, the image under edit among them if its file is. `step` is what undo
    /// calls it. Returns how many pixels have changed; nothing, and all is as it was, after a message or a stop.
    std::optional<std::int64_t> Replace(std::span<const Path> files, const CRecoloring& recoloring,
                                        const std::string& step = "Replace Color");
    /// The same in memory, for the image under edit alone. Returns how many pixels have changed.
    std::int64_t ReplaceEdited(const CRecoloring& recoloring, const std::string& step = "Replace Color");

    /// Repaints what has a colour of the palette that has become another: in the chosen cels or, with none chosen,
    /// in the image under edit. The question says where; it is empty where there is nothing to repaint.
    std::string RepaintQuestion() const;
    void Repaint(CColor from, CColor to);

    /// The files of the images of the shown kind: pictures, or the cels of the current folder.
    std::vector<Path> ChosenFiles() const;
    std::vector<Path> AllFiles() const;

private:
    /// What is to be written of the files that change; nothing after a message or a stop.
    std::optional<std::vector<CFileChange>> Prepare(std::span<const Path> files, const CRecoloring& recoloring,
                                                    std::int64_t& pixels);
    std::optional<std::string> PrepareOne(const Path& file, const CRecoloring& recoloring,
                                          std::vector<CFileChange>& changes, std::int64_t& pixels);
    bool Write(const std::vector<CFileChange>& changes, const std::string& step);
    SourceMode Kind() const;

    CSceneContext m_context;
};

} // namespace velmor
