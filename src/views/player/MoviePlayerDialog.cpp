#include "views/player/MoviePlayerDialog.h"

#include "render/Movie.h"
#include "scene/Prompter.h"
#include "scene/Settings.h"
#include "views/Icons.h"
#include "views/player/MovieScreen.h"
#include "views/widgets/FrameSlider.h"
#include "views/widgets/WaitCursor.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QScreen>
#include <QShortcut>
#include <QSignalBlocker>
#include <QToolButton>
#include <QVBoxLayout>
#include <algorithm>

namespace velmor {

namespace {

constexpr int iconSize = 18;
constexpr int rateSize = 22;
constexpr int pageFrames = 10;
constexpr Milliseconds longestNap = 10; // the clock is held to the sound at least this often

constexpr const char* tooSlow =
    "Player can not play at the correct frame rate!\n"
    "You can try these:\n"
    "   1) Close other running programs and stop network transfers.\n"
    "   2) Change the display setting to a lower number of colors.\n"
    "          (32768 colors in NT or 16 bit in 95 will do.)\n"
    "   3) Lower the quality setting when generating the avi movie.\n"
    "   4) Lower the avi movie size when generating the avi movie or not choose x2 when playing it.\n"
    "   5) Lower your screen resolution.\n"
    "for a better frame rate.";
constexpr const char* tooLarge = "The movie does not fit in the window! \n"
                                 "Please prepare at a smaller size or increase your screen resolution.";

} // namespace

CMoviePlayerDialog::CMoviePlayerDialog(QWidget* parent, CMovie& movie, IPrompter& prompter, CProfile& profile)
    : QDialog(parent),
      m_movie(movie),
      m_prompter(prompter),
      m_profile(profile),
      m_player(movie.Stream().frameCount, movie.Rate(), movie.HasSound()),
      m_clock(movie.Rate(), m_player.Timing().Period()),
      m_screen(new CMovieScreen({movie.Stream().width, movie.Stream().height})),
      m_slider(new CFrameSlider) {
    setMinimumSize(CPlayerGeometry::leastWindow);
    auto* all = new QVBoxLayout(this);
    auto* row = new QHBoxLayout;
    row->setSpacing(4);
    BuildControls(*row);
    all->addWidget(m_screen, 1);
    all->addWidget(m_slider);
    all->addLayout(row);
    setTabOrder(m_slider, m_play);
    ConnectControls();
    AddKeys();
    m_play->setFocus();
    m_time.start();
    m_alarm.setTimerType(Qt::PreciseTimer);
    m_alarm.setSingleShot(true);
    m_rewind.setSingleShot(true);
    ShowPlaying();
    ShowRate(true);
}

QToolButton& CMoviePlayerDialog::AddButton(QHBoxLayout& row, const char* name, const QString& text,
                                           const QString& toolTip) {
    auto* button = new QToolButton;
    button->setObjectName(name);
    button->setText(text);
    button->setToolTip(toolTip);
    button->setIconSize({iconSize, iconSize});
    button->setMinimumSize(36, 30);
    // The mouse leaves the focus, and with it the space bar, where it is.
    button->setFocusPolicy(Qt::TabFocus);
    row.addWidget(button);
    return *button;
}

void CMoviePlayerDialog::BuildControls(QHBoxLayout& row) {
    m_slider->setObjectName("frames");
    m_slider->setRange(0, m_player.FrameCount() - 1);
    m_slider->setPageStep(pageFrames);
    m_slider->setToolTip("Frame");
    m_slider->setAccessibleName("Frame");
    m_play = &AddButton(row, "play", ">", {});
    m_back = &AddButton(row, "back", "<<", "Previous frame (Left)");
    m_forward = &AddButton(row, "forward", ">>", "Next frame (Right)");
    for (QToolButton* step : {m_back, m_forward})
        step->setAutoRepeat(true);
    m_loop = &AddButton(row, "loop", "LOOP", "Play over and over (L)");
    m_loop->setCheckable(true);
    row.addSpacing(6);
    m_double = new QCheckBox("x2");
    m_double->setObjectName("double");
    m_double->setToolTip("Double size (X)");
    m_double->setFocusPolicy(Qt::TabFocus);
    row.addWidget(m_double);
    row.addStretch(1);
    m_rate = new QLabel;
    m_rate->setObjectName("rate");
    row.addWidget(m_rate);
}

void CMoviePlayerDialog::ConnectControls() {
    connect(m_play, &QToolButton::clicked, this, [this] { TogglePlaying(); });
    connect(m_back, &QToolButton::clicked, this, [this] { GoTo(m_player.CurrentFrame() - 1); });
    connect(m_forward, &QToolButton::clicked, this, [this] { GoTo(m_player.CurrentFrame() + 1); });
    connect(m_slider, &QSlider::valueChanged, this, [this](int frame) { GoTo(frame); });
    connect(m_loop, &QToolButton::toggled, this, [this](bool loops) { SetLoop(loops); });
    connect(m_double, &QCheckBox::toggled, this, [this](bool doubled) { SetDoubled(doubled); });
    connect(&m_alarm, &QTimer::timeout, this, [this] { Pass(); });
    connect(&m_rewind, &QTimer::timeout, this, [this] { ShowFrame(m_player.CurrentFrame(), false); });
}

void CMoviePlayerDialog::AddKeys() {
    // Ahead of the buttons, for which arrows move the focus.
    const auto add = [this](Qt::Key key, auto action) {
        connect(new QShortcut(key, this), &QShortcut::activated, this, action);
    };
    add(Qt::Key_Left, [this] { GoTo(m_player.CurrentFrame() - 1); });
    add(Qt::Key_Right, [this] { GoTo(m_player.CurrentFrame() + 1); });
    add(Qt::Key_Home, [this] { GoTo(0); });
    add(Qt::Key_End, [this] { GoTo(m_player.FrameCount() - 1); });
    add(Qt::Key_L, [this] { m_loop->toggle(); });
    add(Qt::Key_X, [this] { m_double->toggle(); });
}

void CMoviePlayerDialog::keyPressEvent(QKeyEvent* event) {
    if (event->key() != Qt::Key_Space)
        QDialog::keyPressEvent(event);
    else if (!event->isAutoRepeat())
        TogglePlaying();
}

void CMoviePlayerDialog::Run() {
    resize(sizeHint());
    const CWaitPause pause;
    ShowFrame(0, false);
    if (!FitToMovie())
        return;
    UseAsLeft();
    exec();
}

void CMoviePlayerDialog::UseAsLeft() {
    m_loop->setChecked(Get(m_profile, setting::playerLoop) != 0);
    // Where the last movie had room for its double, this one need not.
    if (Get(m_profile, setting::playerDouble) != 0 && CanDouble(frameGeometry().size(), screen()->size()))
        m_double->setChecked(true);
}

void CMoviePlayerDialog::done(int result) {
    m_rewind.stop();
    Stop();
    m_movie.StopSound();
    QDialog::done(result);
}

void CMoviePlayerDialog::TogglePlaying() {
    if (m_player.IsPlaying())
        Stop();
    else
        Play();
}

void CMoviePlayerDialog::Play() {
    m_rewind.stop();
    m_movie.StopSound();
    m_clock.EndSound();
    m_player.Play(m_clock.Now(Wall()));
    ShowPlaying();
    m_alarm.start(0);
}

void CMoviePlayerDialog::Stop() {
    if (!m_player.IsPlaying())
        return;
    m_alarm.stop();
    m_player.Stop();
    m_player.GoTo(m_shown);
    m_movie.StopSound();
    ShowPlaying();
    ShowTitle(false);
}

void CMoviePlayerDialog::Pass() {
    const Milliseconds wall = Wall();
    FollowSound(wall);
    const CMoviePlayer::CPass pass = m_player.Pass(m_clock.Now(wall));
    if (pass.startSound)
        StartSound();
    if (pass.draw)
        ShowFrame(*pass.draw, true);
    ShowRate(m_player.Timing().IsOnRate());
    if (pass.hasEnded)
        EndOfMovie();
    if (pass.warn)
        Say(tooSlow);
    if (m_player.IsPlaying())
        SetAlarm();
}

void CMoviePlayerDialog::FollowSound(Milliseconds wall) {
    if (m_movie.IsSoundPlaying())
        m_clock.Follow(wall, m_movie.SoundSeconds());
    else
        m_clock.EndSound();
}

void CMoviePlayerDialog::StartSound() {
    if (const CStatus started = m_movie.StartSound(); !started)
        return Say(started.Message());
    m_clock.StartSound(Wall());
}

void CMoviePlayerDialog::EndOfMovie() {
    // The last frame lasts as long as the others, and the sound below it is heard to its end.
    m_rewind.start(static_cast<int>(m_player.Timing().Period()));
    ShowPlaying();
}

void CMoviePlayerDialog::SetAlarm() {
    const Milliseconds left = m_player.Timing().NextDue() - m_clock.Now(Wall());
    m_alarm.start(static_cast<int>(std::clamp<Milliseconds>(left, 0, longestNap)));
}

void CMoviePlayerDialog::GoTo(int frame) {
    m_rewind.stop();
    m_player.GoTo(frame);
    ShowFrame(m_player.CurrentFrame(), m_player.IsPlaying());
}

void CMoviePlayerDialog::ShowFrame(int frame, bool plays) {
    m_shown = frame;
    const CStatus read = m_movie.ReadFrame(frame, m_screen->Picture());
    m_screen->Refresh();
    ShowTitle(plays);
    {
        const QSignalBlocker quiet(m_slider);
        m_slider->setValue(frame);
    }
    if (!read) {
        Stop(); // or the same would be said for every frame
        Say(read.Message());
    }
}

void CMoviePlayerDialog::ShowTitle(bool plays) {
    QString title = QStringLiteral("Velmor Movie Player - FRM : %1").arg(m_shown + 1);
    if (plays)
        title += QStringLiteral("  FPS : %1").arg(static_cast<int>(m_player.Timing().MeasuredRate()));
    setWindowTitle(title);
}

void CMoviePlayerDialog::ShowPlaying() {
    const bool plays = m_player.IsPlaying();
    m_play->setIcon(Icon(plays ? "stop" : "play"));
    m_play->setToolTip(plays ? "Stop (Space)" : "Play (Space)");
    m_play->setAccessibleName(plays ? "Stop" : "Play");
    if (!plays)
        ShowRate(true);
}

void CMoviePlayerDialog::ShowRate(bool isOnRate) {
    if (isOnRate == m_showsOnRate && !m_rate->pixmap().isNull())
        return;
    m_showsOnRate = isOnRate;
    m_rate->setPixmap(Icon(isOnRate ? "on-rate" : "off-rate").pixmap({rateSize, rateSize}, devicePixelRatioF()));
    const QString text =
        isOnRate ? "Plays at the frame rate of the movie" : "Does not play at the right frame rate";
    m_rate->setToolTip(text);
    m_rate->setAccessibleName(text);
}

void CMoviePlayerDialog::SetLoop(bool loops) {
    m_player.SetLoop(loops);
    Set(m_profile, setting::playerLoop, loops ? 1 : 0);
}

void CMoviePlayerDialog::SetDoubled(bool doubled) {
    if (doubled && !CanDouble(frameGeometry().size(), screen()->size())) {
        const QSignalBlocker quiet(m_double);
        m_double->setChecked(false);
        return Say("Zoomed window does not fit to screen!");
    }
    Set(m_profile, setting::playerDouble, doubled ? 1 : 0);
    m_screen->SetDoubled(doubled);
    if (!FitToMovie())
        reject();
}

bool CMoviePlayerDialog::FitToMovie() {
    layout()->activate();
    const QSize frame = frameGeometry().size() - size();
    const QSize window = m_screen->Geometry()
                             .Window(size(), m_screen->contentsRect().size())
                             .expandedTo(layout()->totalMinimumSize());
    const QRect area = screen()->geometry();
    if (window.width() + frame.width() > area.width() || window.height() + frame.height() > area.height()) {
        Say(tooLarge);
        return false;
    }
    resize(window);
    move(CentredOn(area, window + frame));
    return true;
}

void CMoviePlayerDialog::Say(const std::string& text) {
    const Milliseconds before = m_time.elapsed();
    m_prompter.ShowMessage(text);
    m_held += m_time.elapsed() - before;
}

} // namespace velmor
