#pragma once

#include "platform/movie/AviReader.h"
#include "views/player/PlayerGeometry.h"

#include <QFrame>

namespace velmor {

/// The movie player's drawing area: shows a decoded picture as it stands, pixel for pixel or two by two.
class CMovieScreen final : public QFrame {
public:
    explicit CMovieScreen(QSize movie);

    /// The picture shown, to be decoded into; then Refresh().
    CMoviePicture& Picture() { return m_picture; }
    /// Repaints the picture and nothing else.
    void Refresh();
    void SetDoubled(bool doubled);
    const CPlayerGeometry& Geometry() const { return m_geometry; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QRect PictureRect() const;

    CPlayerGeometry m_geometry;
    CMoviePicture m_picture;
};

} // namespace velmor
