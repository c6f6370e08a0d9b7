#include "render/FrameComposer.h"

#include "platform/process/Parallel.h"
#include "render/FrameStrip.h"

#include <algorithm>
#include <atomic>
#include <cmath>
#include <exception>
#include <memory>
#include <string_view>

namespace velmor {

namespace {

/// Bytes of prepared images that are held at once: a frame of more is drawn in several passes, each of which goes
/// through all of its pixels again.
std::size_t MostBytesHeld(const CFrameRequest& request) {
    constexpr std::size_t least = std::size_t{32} << 20;
    constexpr std::size_t ofPixel = 12; // three levels that fill the frame
    return std::max(least, ofPixel * static_cast<std::size_t>(request.bufferWidth) *
                               static_cast<std::size_t>(request.height));
}

/// A file read for a layer.
struct CReadLayer {
    std::shared_ptr<const CRenderSource> source;
    CStatus status;
};

CStatus Failed(const CStatus& status, std::string_view at, const Path& path) {
    return CStatus::Failure(status.Message() + std::string(at) + Utf8Of(path));
}

/// Composes one frame: reads images until enough are held, draws them all row by row, and goes on.
class CComposition {
public:
    CComposition(const CFrameRequest& request, CImageCache& cache, CFrameBuffer& frame, bool parallel)
        : m_request(request),
          m_cache(cache),
          m_frame(SizedFor(request, frame)),
          m_parts(parallel ? ProcessorCount() : 1),
          m_strips(static_cast<std::size_t>(m_parts), CFrameStrip(request.bufferWidth)) {}

    /// Begins with the lowest `layers`, which are drawn in `kept`.
    void BeginWith(const CFrameBuffer& kept, std::size_t layers) {
        m_kept = &kept;
        m_ground = Ground::Kept;
        m_next = layers;
    }

    /// Draws the layers up to `end` - 1 that are not drawn yet, over the background that there is.
    CStatus DrawTo(std::size_t end) {
        CStatus status;
        do {
            status = ReadLayers(end);
            DrawRead();
        } while (status && m_next < end);
        return status;
    }

private:
    /// What the next layers are drawn over.
    enum class Ground { Background, Kept, Frame };

    /// Gives the frame its size once it has the pixels for it.
    static CFrameBuffer& SizedFor(const CFrameRequest& request, CFrameBuffer& frame) {
        frame.pixels.resize(static_cast<std::size_t>(request.bufferWidth) *
                            static_cast<std::size_t>(request.height) * 3);
        frame.width = request.bufferWidth;
        frame.height = request.height;
        return frame;
    }

    std::size_t RowBytes() const { return static_cast<std::size_t>(m_request.bufferWidth) * 3; }

    /// Reads layers up to `end` - 1, some at a time, until enough are held.
    CStatus ReadLayers(std::size_t end) {
        m_sources.clear();
        m_placed.clear();
        const std::size_t enough = MostBytesHeld(m_request);
        std::size_t held = 0;
        while (m_next < end && held < enough)
            for (CReadLayer& one : ReadSome(end)) {
                const CFrameLayer& layer = m_request.layers[m_next++];
                if (!one.status)
                    return Failed(one.status, " :: Reading file ->", layer.path);
                if (CStatus placed = Place(layer, *one.source); !placed)
                    return Failed(placed, " :: Rendering image ->", layer.path);
                held += one.source->ByteCount();
                m_sources.push_back(std::move(one.source));
            }
        return {};
    }

    /// The next layers, two for each thread: one that is read soon is followed by another.
    std::vector<CReadLayer> ReadSome(std::size_t end) const {
        const std::size_t most = m_parts > 1 ? 2 * static_cast<std::size_t>(m_parts) : 1;
        std::vector<CReadLayer> read(std::min(most, end - m_next));
        std::atomic<std::size_t> next{0};
        ParallelFor(m_parts, 1, [&](int, int) {
            for (std::size_t i = next++; i < read.size(); i = next++) {
                const CFrameLayer& layer = m_request.layers[m_next + i];
                read[i].status = m_cache.Get(layer.path, layer.placement, read[i].source);
            }
        });
        return read;
    }

    CStatus Place(const CFrameLayer& layer, const CRenderSource& source) {
        try {
            m_placed.emplace_back(source, layer.placement, CSize{m_request.bufferWidth, m_request.height});
        } catch (const std::exception&) {
            return CStatus::Failure("Unable to allocate memory for cel!");
        }
        return {};
    }

    void DrawRead() {
        if (m_ground == Ground::Frame && m_placed.empty())
            return;
        for (CFrameStrip& strip : m_strips)
            strip.Reserve(m_placed.size());
        constexpr int most = CFrameStrip::mostRows;
        std::atomic<int> nextRow{0};
        ParallelFor(m_parts, 1, [&](int begin, int) {
            CFrameStrip& strip = m_strips[static_cast<std::size_t>(begin)];
            for (int row = nextRow.fetch_add(most); row < m_request.height; row = nextRow.fetch_add(most)) {
                strip.Begin(row, std::min(most, m_request.height - row));
                DrawStrip(strip, row);
            }
        });
        m_ground = Ground::Frame;
    }

    void DrawStrip(CFrameStrip& strip, int firstRow) {
        const std::size_t begin = static_cast<std::size_t>(firstRow) * RowBytes();
        const std::span<std::uint8_t> bytes = std::span(m_frame.pixels).subspan(begin);
        if (m_ground == Ground::Background)
            strip.FillBackground(m_request.backgroundWidth,
                                 static_cast<std::uint32_t>(BlueOf(m_request.background)) |
                                     static_cast<std::uint32_t>(GreenOf(m_request.background)) << 8 |
                                     static_cast<std::uint32_t>(RedOf(m_request.background)) << 16);
        else
            strip.Unpack(m_ground == Ground::Kept ? std::span(m_kept->pixels).subspan(begin) : bytes);
        strip.Draw(m_placed);
        strip.Pack(bytes);
    }

    const CFrameRequest& m_request;
    CImageCache& m_cache;
    CFrameBuffer& m_frame;
    const CFrameBuffer* m_kept = nullptr;
    Ground m_ground = Ground::Background;
    std::size_t m_next = 0; ///< the first layer that is not read yet
    int m_parts;
    std::vector<CFrameStrip> m_strips; ///< one for each thread
    std::vector<std::shared_ptr<const CRenderSource>> m_sources;
    std::vector<CPlacedImage> m_placed;
};

} // namespace

CPlacement PlaceCell(const CXSheetCell& cell, const CCameraFrame& camera, const COutputGeometry& geometry,
                     bool antialias) {
    const int centreX = geometry.output.width / 2;
    const int centreY = geometry.output.height / 2;
    const double zoom = camera.zoom * geometry.factor;
    // Taken relative to the centre of the scene's frame, of which the output is a scaled copy.
    const double x = cell.PosX() + camera.panX - (geometry.scene.width - geometry.output.width) / 2.0 - centreX;
    const double y = cell.PosY() + camera.panY - (geometry.scene.height - geometry.output.height) / 2.0 - centreY;
    const double c = std::cos(-camera.rotation);
    const double s = std::sin(-camera.rotation);

    CPlacement placement;
    placement.centreX = zoom * (x * c - y * s) + centreX;
    placement.centreY = zoom * (x * s + y * c) + centreY;
    // The point is turned by minus the camera's rotation, the image by plus: existing scenes are drawn for it.
    placement.angle = cell.Rotation() + camera.rotation;
    placement.scaleX = cell.ScaleX() * zoom;
    placement.scaleY = cell.ScaleY() * zoom;
    placement.transparency = cell.Transparency();
    placement.blurX = cell.BlurX();
    placement.blurY = cell.BlurY();
    placement.antialias = antialias;
    return placement;
}

CStatus CFrameComposer::Compose(const CFrameRequest& request, CFrameBuffer& frame, bool parallel) {
    if (request.bufferWidth <= 0 || request.height <= 0) {
        frame = CFrameBuffer{};
        return {};
    }
    try {
        CComposition composition(request, *m_cache, frame, parallel);
        const std::size_t kept = m_held.Begin(request);
        if (kept > 0)
            composition.BeginWith(m_held.Kept(), kept);
        if (m_held.WorthKeeping() > kept) {
            if (CStatus drawn = composition.DrawTo(m_held.WorthKeeping()); !drawn)
                return drawn;
            m_held.Keep(frame, m_held.WorthKeeping());
        }
        return composition.DrawTo(request.layers.size());
    } catch (const std::exception&) {
        m_held = CHeldLayers{};
        frame = CFrameBuffer{};
        return CStatus::Failure("Not enough memory to compose the frame");
    }
}

CStatus ComposeFrame(const CFrameRequest& request, CImageCache& cache, CFrameBuffer& frame, bool parallel) {
    return CFrameComposer(cache).Compose(request, frame, parallel);
}

} // namespace velmor
