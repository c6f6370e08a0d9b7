#pragma once

#include "render/MoviePlayer.h"

#include <QDialog>
#include <QElapsedTimer>
#include <QTimer>
#include <string>

class QCheckBox;
class QHBoxLayout;
class QLabel;
class QSlider;
class QToolButton;

namespace velmor {

class CMovie;
class CMovieScreen;
class CProfile;
class IPrompter;

/// The dialog that plays a movie, the last flipbook mostly, with its sound.
class CMoviePlayerDialog final : public QDialog {
public:
    /// `movie` is open; all that is given outlives the dialog. `profile` keeps loop and double size.
    CMoviePlayerDialog(QWidget* parent, CMovie& movie, IPrompter& prompter, CProfile& profile);

    /// Shows the dialog until it is closed; says why not where the movie is too large for the screen.
    void Run();
    void done(int result) override;

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void BuildControls(QHBoxLayout& row);
    QToolButton& AddButton(QHBoxLayout& row, const char* name, const QString& text, const QString& toolTip);
    void ConnectControls();
    void AddKeys();
    /// Loop and size as the player was left the last time.
    void UseAsLeft();

    void TogglePlaying();
    void Play();
    /// Stops at the frame that is shown.
    void Stop();
    /// Does what is due while playing, and sets the alarm for the next time.
    void Pass();
    void FollowSound(Milliseconds wall);
    void StartSound();
    void EndOfMovie();
    /// For when the next frame is due, or the clock is to be held to the sound again.
    void SetAlarm();
    /// Wall clock, standing still while a message is up.
    Milliseconds Wall() const { return m_time.elapsed() - m_held; }

    /// Makes a frame the current one and shows it; the movie goes on from there if it plays.
    void GoTo(int frame);
    void ShowFrame(int frame, bool plays);
    void ShowTitle(bool plays);
    void ShowPlaying();
    void ShowRate(bool isOnRate);
    void SetLoop(bool loops);
    void SetDoubled(bool doubled);
    /// Brings the window to the size of the movie; false, said, when the screen is too small for it.
    bool FitToMovie();
    void Say(const std::string& text);

    CMovie& m_movie;
    IPrompter& m_prompter;
    CProfile& m_profile;
    CMoviePlayer m_player;
    CSoundClock m_clock;
    QElapsedTimer m_time;
    Milliseconds m_held = 0;
    QTimer m_alarm;  ///< the next pass
    QTimer m_rewind; ///< the end of the last frame
    int m_shown = 0; ///< the frame on the screen
    bool m_showsOnRate = true;

    CMovieScreen* m_screen;
    QSlider* m_slider;
    QToolButton* m_play = nullptr;
    QToolButton* m_back = nullptr;
    QToolButton* m_forward = nullptr;
    QToolButton* m_loop = nullptr;
    QCheckBox* m_double = nullptr;
    QLabel* m_rate = nullptr;
};

} // namespace velmor
