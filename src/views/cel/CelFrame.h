#pragma once

#include "scene/PaintTools.h"
#include "scene/UsedColors.h"
#include "scene/ViewList.h"
#include "views/ActionList.h"

#include <QMainWindow>
#include <QTimer>

#include <array>
#include <vector>

class QAction;
class QLineEdit;
class QToolButton;

namespace velmor {

class CBrushBar;
class CCelCaption;
class CCelView;
class CColorList;
class CColorPair;
class CProfile;
class CVelmorltDoc;
class IPrompter;

/// The actions of the cel editor's bars; they belong to the main frame and outlive the pane. All may be missing.
struct CCelActions {
    ActionList toolBar;
    std::array<QAction*, paintTools.size()>
        tools{}; ///< those of the tool bar that choose tools, in the order of paintTools
    QAction* updateCamera = nullptr;
};

/// The cel editor's pane: the view, the tool bar with the colour list, and the brush bar.
class CCelFrame final : public QMainWindow, public IDocView {
public:
    CCelFrame(CVelmorltDoc& doc, IPrompter& prompter, CProfile& profile, const CCelActions& actions,
              QWidget* parent = nullptr);
    ~CCelFrame() override;

    CCelView& View() { return *m_view; }

    void OnUpdate(UpdateHint hint) override;

    /// Far below what the bars would like: they give way.
    QSize minimumSizeHint() const override { return {20, 20}; }

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void AddToolBar(const ActionList& actions);
    void AddColorBar();
    QWidget* MakeColorPanel();
    QToolButton* MakePaletteButton(const char* text, const char* icon, const char* tip);
    void UpdateBrushesandPens();
    void UpdateColors();
    void UpdateCaption();
    QLineEdit* MakeColorSearch();
    void LookForUsedColors();
    void ShowUsedColors();

    CVelmorltDoc& m_doc;
    CCelView* m_view; // children, all of them
    CColorList* m_colors;
    CColorPair* m_colorPair;
    CBrushBar* m_brushBar;
    CCelCaption* m_caption;
    std::array<QAction*, paintTools.size()> m_tools; ///< see CCelActions
    std::vector<QToolButton*> m_paletteButtons;
    CUsedColors m_usedColors;
    QTimer m_beforeLook; ///< at the cels' colours, so that nothing waits for it while one paints
    QTimer m_whileLooking;
    int m_foregroundEntry = -1; ///< the palette's, when it was shown last
};

} // namespace velmor
