#pragma once

#include "xsheet/CameraTrack.h"
#include "xsheet/XSheetCell.h"
#include "xsheet/XSheetFile.h"

#include <QElapsedTimer>
#include <QImage>
#include <QObject>
#include <QTimer>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace velmor {

class CVelmorltDoc;
class IPrompter;

/// Has the document compose camera pictures and takes them as they come. One picture at a time is composed; what is
/// ordered meanwhile waits for it and is then composed as things stand, so that pictures keep appearing however
/// fast the orders come. The last picture stays until the next one is there.
class CPictureFeed {
public:
    /// `changed` is called when another picture, or its being late, is to be shown.
    CPictureFeed(CVelmorltDoc& doc, IPrompter& prompter, std::function<void()> changed);
    CPictureFeed(const CPictureFeed&) = delete;
    CPictureFeed& operator=(const CPictureFeed&) = delete;
    ~CPictureFeed();

    // With a scene open.
    /// Orders a picture in any case: files may have changed. What goes wrong with it is shown to the user.
    void Renew();
    /// Orders a picture when the current frame is no longer what the last one was ordered of. What goes wrong with
    /// such pictures is not shown: they follow the mouse.
    void Follow();

    /// Drops the picture and whatever is under way: the scene is closed.
    void Forget();

    /// Null while there is none.
    const QImage& Image() const { return m_image; }
    bool IsLate() const { return m_late; }

private:
    enum class Order { None, Follow, Renew };

    /// What a picture shows, files aside.
    struct CContents {
        CSceneGeometry geometry;
        CCameraFrame camera;
        bool antialias = false;
        std::vector<CXSheetCell> cells;

        bool operator==(const CContents&) const = default;
    };
    struct CScene {
        std::string folder;
        std::string name;
        CSize frame;

        bool operator==(const CScene&) const = default;
    };
    /// The way in for the composing thread, closed when the feed dies.
    struct CDoor;

    CContents CurrentContents() const;
    void ForgetOtherScene();
    void Start(Order order);
    void StartPending();
    void Take();
    bool IsStuck() const;

    CVelmorltDoc& m_doc;
    IPrompter& m_prompter;
    std::function<void()> m_changed;
    QObject m_context; ///< receives what is posted from the composing thread
    std::shared_ptr<CDoor> m_door;
    QTimer m_poll;
    QTimer m_lateTimer;
    Order m_running = Order::None;
    Order m_pending = Order::None;
    QElapsedTimer m_runningSince;
    std::optional<CContents> m_contents; ///< what the last picture was ordered of
    std::optional<CScene> m_scene;
    QImage m_image;
    bool m_late = false;
};

} // namespace velmor
