#pragma once

#include <QToolBar>

#include <vector>

class QButtonGroup;
class QCheckBox;
class QSpinBox;
class QGridLayout;

namespace velmor {

class CAssetOperations;
class CPaletteOperations;
struct CSceneModel;

/// The bar of brushes, pens and bucket modes, beside the cel editor. In a low, wide pane it takes two columns; what
/// does not fit then can be scrolled to.
class CBrushBar final : public QToolBar {
public:
    /// `updateCamera` may be null; the assets are asked directly then. What is given by reference outlives the bar.
    CBrushBar(const CSceneModel& model, CPaletteOperations& palette, CAssetOperations& assets,
              QAction* updateCamera, QWidget* parent = nullptr);

    /// Shows the document's brush, pen and bucket mode, and which of them the image under edit takes.
    void UpdateBrushesandPens();

    /// Chooses the number of columns for a pane of a size.
    void FitInto(QSize pane);

private:
    /// Puts the parts of the panel below each other, or beside the brushes.
    void Arrange(bool twoColumns);
    QWidget* MakeBrushes();
    QWidget* MakePens();
    QWidget* MakeBucketModes();
    QWidget* MakeFill();
    QWidget* MakeUpdateCamera(QAction* updateCamera, CAssetOperations& assets);

    const CSceneModel& m_model;
    CPaletteOperations& m_palette;
    QButtonGroup* m_brushes; // children, all of them
    QButtonGroup* m_pens;
    QButtonGroup* m_bucketModes;
    QCheckBox* m_rectangle;
    QSpinBox* m_gap;
    QGridLayout* m_layout; ///< the panel's, of the parts in their order
    std::vector<QWidget*> m_parts;
    QWidget* m_area = nullptr; ///< shows the panel
    bool m_hasTwoColumns = false;
    int m_roundBrush = 0; ///< the last one, for leaving the rectangle form
};

} // namespace velmor
