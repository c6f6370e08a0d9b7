#pragma once

#include "views/xsheet/XSheetLook.h"
#include "views/xsheet/XSheetSounds.h"

#include <QAbstractScrollArea>
#include <memory>

namespace velmor {

class COtherSheet;
class CSheetDisplay;
class CXSheetStyle;

/// The sheet of another scene, in which cells can be selected and copied, and nothing changed.
class COtherSheetView final : public QAbstractScrollArea {
public:
    /// Both outlive the view.
    COtherSheetView(COtherSheet& sheet, const CSheetDisplay& display, QWidget* parent = nullptr);
    ~COtherSheetView() override;

    /// Another sheet is there, or it is to be shown otherwise.
    void Follow();
    const CXSheetGeometry& Geometry() const { return m_geometry; }

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void SetScrolls();
    void Show(CSheetCell cell);

    COtherSheet& m_sheet;
    const CSheetDisplay& m_display;
    CXSheetGeometry m_geometry;
    CXSheetSounds m_noSounds;
    std::unique_ptr<CXSheetStyle> m_style;
};

} // namespace velmor
