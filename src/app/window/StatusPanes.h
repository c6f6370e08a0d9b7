#pragma once

#include <array>
#include <optional>
#include <string>

class QLabel;
class QStatusBar;

namespace velmor {

struct CSceneModel;

/// Texts of the value panes of the status bar; all empty while no scene is open.
struct CStatusTexts {
    std::string mode;
    std::string frame;
    std::string total;
};

/// A mode that has no text leaves `current.mode`. While frames are played, `played` is the one that is seen.
CStatusTexts StatusTextsOf(const CSceneModel& model, const CStatusTexts& current,
                           std::optional<int> played = std::nullopt);

/// The value panes at the right of the status bar: camera mode, current frame, length.
class CStatusPanes {
public:
    /// The labels belong to the bar.
    explicit CStatusPanes(QStatusBar& bar);
    void Update(const CSceneModel& model, std::optional<int> played = std::nullopt);

private:
    std::array<QLabel*, 3> m_labels{};
    CStatusTexts m_texts;
};

} // namespace velmor
