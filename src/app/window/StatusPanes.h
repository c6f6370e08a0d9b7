#pragma once

#include <array>
#include <optional>
#include <string>

class QLabel;
class QMenu;
class QStatusBar;

namespace velmor {

class CMenuLabel;
struct CSceneModel;

/// Texts of the value panes of the status bar; all empty while no scene is open.
struct CStatusTexts {
    std::string mode;
    std::string frame;
    std::string total;
    std::string exposing;
};

/// A mode that has no text leaves `current.mode`. `exposing` says how drawings are exposed by typing. While frames
/// are played, `played` is the one that is seen.
CStatusTexts StatusTextsOf(const CSceneModel& model, const CStatusTexts& current, const std::string& exposing = {},
                           std::optional<int> played = std::nullopt);

/// The value panes at the right of the status bar: camera mode, current frame, length, and how drawings
/// are exposed.
class CStatusPanes {
public:
    /// The labels belong to the bar.
    explicit CStatusPanes(QStatusBar& bar);
    /// Shown at a click on how drawings are exposed; belongs to the caller.
    void SetExposingMenu(QMenu& menu);
    void Update(const CSceneModel& model, const std::string& exposing, std::optional<int> played = std::nullopt);

private:
    std::array<QLabel*, 4> m_labels{};
    CMenuLabel* m_exposing = nullptr; ///< the last of them
    CStatusTexts m_texts;
};

} // namespace velmor
