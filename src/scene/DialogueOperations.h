#pragma once

#include "scene/DialogRequests.h"
#include "scene/SceneContext.h"

#include <optional>
#include <string>

namespace velmor {

class CSheetExchange;

/// What is spoken along the frames of the open scene, and the mouths made of it. Every operation shows what is
/// wrong.
class CDialogueOperations {
public:
    CDialogueOperations(CSceneContext context, const CSheetExchange& exchange)
        : m_context(context), m_exchange(exchange) {}

    /// Asks what is spoken over the selected frames, or what is spoken at the cursor is to be.
    void AskLine();
    /// Puts a line over its frames in the place of what is spoken there and, given that, of the line at `instead`;
    /// without a text these frames are left without one. False when it is no line of the sheet.
    bool PutLine(const CSpokenLine& line, std::optional<int> instead = std::nullopt);
    /// Asks for a file of text and takes what is spoken from it.
    void AskAndImport();
    /// The import without its dialog; a text without frames is spread over those that are selected, or the whole.
    [[nodiscard]] bool Import(const Path& file);

    /// Asks for a chart of mouths and fills a level by it.
    void AskAndFillMouths();
    /// What a level would show; its frames are the selected ones, or all where only one is.
    CStatus PlanMouths(const CMouthChoices& choices, CSheetImport& planned) const;
    /// Fills the level, and remembers chart and folder. False when nothing has changed.
    bool FillMouths(const CMouthChoices& choices);
    /// The chart that was used last with a folder; where there is none, one of the usual sounds in the order of the
    /// folder's drawings.
    std::string ChartOf(const std::string& folder) const;

private:
    struct CFrames {
        int first = 0;
        int last = 0;
    };

    /// The selected frames, where several are, or all.
    CFrames Chosen() const;
    bool AcceptLine(const CSpokenLine& line) const;
    std::vector<std::string> Mouths(const CMouthChoices& choices, const CFrames& frames) const;
    CMouthPreview Preview(const CMouthChoices& choices) const;

    CSceneContext m_context;
    const CSheetExchange& m_exchange;
};

} // namespace velmor
