#pragma once

#include <QImage>
#include <QObject>
#include <QTimer>
#include <functional>
#include <memory>

namespace velmor {

class CCameraPictures;
struct CSceneModel;

/// Brings camera pictures from the thread that composes them to the view: looks at the clock for the document's
/// orders, and keeps the picture that is to be seen as an image.
class CPictureFeed {
public:
    /// `changed` is called when another picture, or its being late, is to be shown. What is given outlives the
    /// feed.
    CPictureFeed(const CSceneModel& model, CCameraPictures& pictures, std::function<void()> changed);
    CPictureFeed(const CPictureFeed&) = delete;
    CPictureFeed& operator=(const CPictureFeed&) = delete;
    ~CPictureFeed();

    // With a scene open.
    /// Orders a picture in any case: files may have changed.
    void Renew();
    /// Orders a picture when the current frame is no longer what the last one was ordered of.
    void Follow();

    /// Drops the picture and whatever is under way: the scene is closed.
    void Forget();

    /// Null while there is none.
    const QImage& Image() const { return m_image; }
    bool IsLate() const;

private:
    /// The way in for the composing thread, closed when the feed dies.
    struct CDoor;

    void Take();
    void Tick();
    void Refresh();

    const CSceneModel& m_model;
    CCameraPictures& m_pictures;
    std::function<void()> m_changed;
    QObject m_context; ///< receives what is posted from the composing thread
    std::shared_ptr<CDoor> m_door;
    QTimer m_poll;
    QTimer m_lateTimer;
    QImage m_image;
};

} // namespace velmor
