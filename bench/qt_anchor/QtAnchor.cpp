// Composing beside Qt's raster engine, which draws the same picture: prepared images in memory, smooth transforms,
// frame after frame in turns, so that the ratio is one of the same machine at the same moment.

#include "BenchImages.h"
#include "render/FrameComposer.h"

#include <QImage>
#include <QPainter>
#include <algorithm>
#include <benchmark/benchmark.h>
#include <chrono>
#include <sched.h>
#include <thread>

namespace velmor {
namespace {

struct CKind {
    CSize size;
    int levels; ///< of cels, above a picture
};

constexpr int movingFrames = 40;

/// The levels of a scene, as files and as Qt's images.
class CAnchorScene {
public:
    explicit CAnchorScene(const CKind& kind) : m_kind(kind) {
        const CSize back{kind.size.width * 3 / 2, kind.size.height * 3 / 2};
        CCelImg picture;
        static_cast<void>(picture.CreatePicture(back.width, back.height, m_folder.Path() / "back"));
        PaintLandscape(picture);
        Add(picture);
        for (int level = 0; level < kind.levels; ++level) {
            CCelImg cel;
            static_cast<void>(cel.CreateCel(kind.size.width, kind.size.height,
                                            m_folder.Path() / ("cel" + std::to_string(level))));
            PaintCharacter(cel, level + 1);
            Add(cel);
        }
    }

    CSize Size() const { return m_kind.size; }
    const std::vector<QImage>& Images() const { return m_images; }

    CFrameRequest Request(int frame) const {
        CFrameRequest request;
        request.bufferWidth = request.backgroundWidth = m_kind.size.width;
        request.height = m_kind.size.height;
        for (std::size_t i = 0; i < m_paths.size(); ++i)
            request.layers.push_back({m_paths[i], PlacementOf(static_cast<int>(i), frame)});
        return request;
    }

private:
    void Add(CCelImg& image) {
        m_paths.push_back(image.FilePath());
        static_cast<void>(image.Save());
        const CRenderSource source(image, PreparationFor(PlacementOf(0, 0), image.GetLoadState()));
        QImage copy(image.Width(), image.Height(), QImage::Format_ARGB32);
        for (int y = 0; y < copy.height(); ++y)
            for (int x = 0; x < copy.width(); ++x)
                copy.setPixel(x, y, source.Pixels().At(x, y));
        m_images.push_back(
            copy.convertToFormat(source.IsOpaque() ? QImage::Format_RGB32 : QImage::Format_ARGB32_Premultiplied));
    }

    CPlacement PlacementOf(int layer, int frame) const {
        CPlacement at{m_kind.size.width / 2.0 + 0.3 * frame, m_kind.size.height / 2.0 + 0.1 * frame};
        const double zoom = 1 + 0.002 * frame;
        at.scaleX = at.scaleY = zoom;
        at.antialias = true;
        if (layer > 0) {
            at.centreX += (layer - 1) * 20;
            at.centreY -= (layer - 1) * 10;
            at.angle = 0.3 - 0.005 * frame - 0.1 * (layer - 1);
            at.scaleX = at.scaleY = (0.9 + 0.002 * frame + 0.05 * (layer - 1)) * zoom;
        }
        return at;
    }

    CKind m_kind;
    CBenchFolder m_folder;
    std::vector<Path> m_paths;
    std::vector<QImage> m_images;
};

/// Draws rows `first` to `end` - 1 of a frame with Qt, which counts them from the top: both have row 0 first.
void PaintRows(const CAnchorScene& scene, const CFrameRequest& request, QImage& frame, int first, int end) {
    QImage rows(frame.scanLine(first), frame.width(), end - first, frame.bytesPerLine(), frame.format());
    rows.fill(Qt::black);
    QPainter painter(&rows);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    for (std::size_t i = 0; i < request.layers.size(); ++i) {
        const CPlacement& at = request.layers[i].placement;
        const QImage& image = scene.Images()[i];
        QTransform transform;
        transform.translate(at.centreX, at.centreY - first);
        transform.rotateRadians(-at.angle);
        transform.scale(at.scaleX, at.scaleY);
        const QPoint centre(image.width() / 2, image.height() / 2);
        transform.translate(-centre.x(), -centre.y());
        painter.setTransform(transform);
        painter.drawImage(0, 0, image);
    }
}

void Paint(const CAnchorScene& scene, const CFrameRequest& request, QImage& frame, bool parallel) {
    const int middle = parallel ? frame.height() / 2 : frame.height();
    uchar* const pixels = frame.bits(); // its own before threads share it
    benchmark::DoNotOptimize(pixels);
    std::jthread other;
    if (parallel)
        other = std::jthread([&] { PaintRows(scene, request, frame, middle, frame.height()); });
    PaintRows(scene, request, frame, 0, middle);
}

/// Mean difference of a channel, to see that both have drawn the same.
double DifferenceOf(const CFrameBuffer& frame, const QImage& painted) {
    double sum = 0;
    for (int y = 0; y < frame.height; ++y)
        for (int x = 0; x < frame.width; ++x) {
            const std::size_t at = (static_cast<std::size_t>(y) * static_cast<std::size_t>(frame.width) +
                                    static_cast<std::size_t>(x)) *
                                   3;
            const QRgb pixel = painted.pixel(x, y);
            sum += std::abs(frame.pixels[at] - qBlue(pixel)) + std::abs(frame.pixels[at + 1] - qGreen(pixel)) +
                   std::abs(frame.pixels[at + 2] - qRed(pixel));
        }
    return sum / static_cast<double>(frame.pixels.size());
}

/// Lets all threads of the program run on the first `count` processors that it has: Qt divides large areas among
/// threads by itself.
void RunOn(int count) {
    static const cpu_set_t all = [] {
        cpu_set_t set;
        ::sched_getaffinity(0, sizeof(set), &set);
        return set;
    }();
    cpu_set_t some;
    CPU_ZERO(&some);
    for (int cpu = 0; cpu < CPU_SETSIZE && CPU_COUNT(&some) < count; ++cpu)
        if (CPU_ISSET(cpu, &all))
            CPU_SET(cpu, &some);
    for (const auto& thread : std::filesystem::directory_iterator("/proc/self/task"))
        ::sched_setaffinity(std::stoi(thread.path().filename().string()), sizeof(some), &some);
}

template<class Work>
double MillisecondsOf(const Work& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

double MedianOf(std::vector<double> times) {
    const auto middle = times.begin() + static_cast<std::ptrdiff_t>(times.size() / 2);
    std::ranges::nth_element(times, middle);
    return *middle;
}

// The time of the benchmark is ours; Qt's, and the ratio of the medians, stand beside it.
void BesideQt(benchmark::State& state, const CKind& kind) {
    const CAnchorScene scene(kind);
    const bool parallel = state.range(0) > 1;
    RunOn(static_cast<int>(state.range(0)));
    CImageCache cache(std::size_t{512} << 20);
    CFrameBuffer frame;
    QImage painted(kind.size.width, kind.size.height, QImage::Format_RGB32);
    static_cast<void>(ComposeFrame(scene.Request(0), cache, frame, parallel));
    Paint(scene, scene.Request(0), painted, parallel);
    state.counters["difference"] = DifferenceOf(frame, painted);
    std::vector<double> ours;
    std::vector<double> qts;
    int number = 0;
    for (auto _ : state) {
        const CFrameRequest request = scene.Request(number++ % movingFrames);
        ours.push_back(MillisecondsOf([&] { static_cast<void>(ComposeFrame(request, cache, frame, parallel)); }));
        qts.push_back(MillisecondsOf([&] { Paint(scene, request, painted, parallel); }));
        state.SetIterationTime(ours.back() / 1000);
    }
    state.counters["ours_ms"] = MedianOf(ours);
    state.counters["qt_ms"] = MedianOf(qts);
    state.counters["ratio"] = MedianOf(ours) / MedianOf(qts);
}

void Arguments(benchmark::internal::Benchmark* benchmark) {
    benchmark->ArgName("threads")->Arg(1)->Arg(2)->Unit(benchmark::kMillisecond)->UseManualTime()->Iterations(120);
}
BENCHMARK_CAPTURE(BesideQt, Small, CKind{{384, 288}, 3})->Apply(Arguments);
BENCHMARK_CAPTURE(BesideQt, Pal, CKind{{768, 576}, 3})->Apply(Arguments);
BENCHMARK_CAPTURE(BesideQt, Hd, CKind{{1920, 1080}, 5})->Apply(Arguments);
BENCHMARK_CAPTURE(BesideQt, FourK, CKind{{3840, 2160}, 5})->Apply(Arguments);
BENCHMARK_CAPTURE(BesideQt, PalOfManyLevels, CKind{{768, 576}, 48})->Apply(Arguments);

} // namespace
} // namespace velmor
