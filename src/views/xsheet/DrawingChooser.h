#pragma once

#include <QPixmap>
#include <QString>
#include <QWidget>
#include <vector>

class QAbstractScrollArea;

namespace velmor {

/// What a typed line can stand for.
struct CDrawingChoice {
    static constexpr int mostSeen = 5;

    struct CDrawing {
        QString name;
        QPixmap thumbnail; ///< null where there is none
    };

    QString text;
    std::vector<CDrawing> drawings; ///< at most mostSeen
    int chosen = 0;
    int more = 0; ///< that are not seen
};

/// A small window beside a cell, which never has the focus: a line of text, and thumbnails of drawings with the
/// chosen one marked.
class CDrawingChooser final : public QWidget {
public:
    explicit CDrawingChooser(QWidget& owner);

    void Show(CDrawingChoice choice);
    /// At the right of a rectangle of the screen, or at its left where there is no room.
    void PlaceBeside(const QRect& cell);
    const CDrawingChoice& Choice() const { return m_choice; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QRect DrawingRect(int index) const;
    QString Line() const;

    CDrawingChoice m_choice;
};

} // namespace velmor
