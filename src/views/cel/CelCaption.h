#pragma once

#include "views/ViewTurn.h"
#include "views/ZoomLevel.h"

#include <QWidget>

namespace velmor {

struct CDrawing;
struct CSceneModel;

/// What the cel editor shows, in the words of its tool row: zoom, how the view is turned, folder, name, an asterisk
/// when there are changes that are not on the disk, and size. Empty without an image.
QString CaptionOf(const CSceneModel& model, CZoomLevel zoom, const CViewTurn& turn);

/// The same while another drawing is shown in its place.
QString FlippedCaptionOf(const CDrawing& drawing, bool isPlaying);

/// A line of text that takes the room that is left and is cut short in less than it needs.
class CCelCaption final : public QWidget {
public:
    CCelCaption();

    void SetText(const QString& text);
    const QString& Text() const { return m_text; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString m_text;
};

} // namespace velmor
