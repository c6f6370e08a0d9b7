#include "views/player/RecordSoundDialog.h"

#include "FakeAudio.h"
#include "ScriptedPrompter.h"
#include "qt/ModalDriver.h"
#include "qt/Patience.h"
#include "sound/SoundRecorder.h"

#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTest>

namespace velmor::testing {
namespace {

class CRecordSoundDialogTest : public ::testing::Test {
protected:
    int Run(const std::function<void(CRecordSoundDialog&)>& use) {
        CRecordSoundDialog dialog(nullptr, recorder, prompter);
        int result = -1;
        WithDialog([&] { result = dialog.exec(); }, [&](QDialog&) { use(dialog); });
        return result;
    }
    static QPushButton& Button(QDialog& dialog, const char* name) { return Child<QPushButton>(dialog, name); }
    static QString Status(QDialog& dialog) { return Child<QLabel>(dialog, "status").text(); }
    /// The buttons that can be pressed, by their first letters.
    static std::string Enabled(CRecordSoundDialog& dialog) {
        std::string enabled;
        for (const char* name : {"record", "stop", "play"})
            if (Button(dialog, name).isEnabled())
                enabled += name[0];
        if (dialog.OkButton().isEnabled())
            enabled += "S";
        if (dialog.CancelButton().isEnabled())
            enabled += "C";
        return enabled;
    }

    CFakeAudio audio;
    CSoundRecorder recorder{audio};
    CScriptedPrompter prompter;
};

TEST_F(CRecordSoundDialogTest, RecordsStopsPlaysAndSaves) {
    audio.output.step = 4;
    const int result = Run([&](CRecordSoundDialog& dialog) {
        EXPECT_EQ(Status(dialog), "Idle");
        EXPECT_EQ(Enabled(dialog), "rC");
        Button(dialog, "record").click();
        EXPECT_EQ(Enabled(dialog), "sC");
        const auto& progress = Child<QProgressBar>(dialog, "progress");
        EXPECT_TRUE(WaitFor([&] { return progress.value() >= 1; }));
        EXPECT_EQ(progress.maximum(), 60);
        EXPECT_TRUE(Status(dialog).startsWith("Recording... at 1.")) << Status(dialog).toStdString();
        Button(dialog, "stop").click();
        EXPECT_EQ(Enabled(dialog), "rpSC");
        EXPECT_TRUE(Status(dialog).startsWith("Recorded... at ")) << Status(dialog).toStdString();
        EXPECT_TRUE(Status(dialog).endsWith(" seconds, idle"));
        EXPECT_EQ(progress.value(), 1);
        Button(dialog, "play").click();
        EXPECT_EQ(Enabled(dialog), "sC");
        EXPECT_EQ(Status(dialog), "Playing... at 0.00 seconds");
        Button(dialog, "stop").click();
        EXPECT_EQ(Enabled(dialog), "rpSC");
        audio.output.step = 100000;
        Button(dialog, "play").click();
        EXPECT_TRUE(WaitFor([&] { return Enabled(dialog) == "rpSC"; })) << "the end of the sound ends it";
        dialog.OkButton().click();
    });
    EXPECT_EQ(result, QDialog::Accepted);
    EXPECT_GE(recorder.Samples().size(), 22050u);
    ASSERT_EQ(audio.output.played.size(), 2u);
    EXPECT_EQ(audio.output.played.back(), recorder.Samples());
    EXPECT_TRUE(prompter.messages.empty());
}

TEST_F(CRecordSoundDialogTest, ARecordingEndsByItselfAfterAMinute) {
    audio.input.step = CSoundRecorder::capacity;
    Run([&](CRecordSoundDialog& dialog) {
        Button(dialog, "record").click();
        EXPECT_TRUE(WaitFor([&] { return Enabled(dialog) == "rpSC"; }));
        EXPECT_EQ(Status(dialog), "Recorded... at 60.00 seconds, idle");
        EXPECT_EQ(Child<QProgressBar>(dialog, "progress").value(), 60);
    });
}

TEST_F(CRecordSoundDialogTest, CancellingAndClosingStopFirst) {
    const auto cancel = [](CRecordSoundDialog& dialog) { dialog.CancelButton().click(); };
    const auto close = [](CRecordSoundDialog& dialog) { dialog.close(); };
    for (const std::function<void(CRecordSoundDialog&)>& leave : {std::function(cancel), std::function(close)}) {
        EXPECT_EQ(Run([&](CRecordSoundDialog& dialog) {
                      Button(dialog, "record").click();
                      EXPECT_TRUE(audio.input.isOpen);
                      leave(dialog);
                  }),
                  QDialog::Rejected);
        EXPECT_FALSE(audio.input.isOpen);
        EXPECT_FALSE(recorder.CanStop());
    }
}

TEST_F(CRecordSoundDialogTest, SaysWhyItCannotRecordOrPlay) {
    Run([&](CRecordSoundDialog& dialog) {
        audio.input.opens = false;
        Button(dialog, "record").click();
        EXPECT_EQ(Enabled(dialog), "rC");
        audio.input.opens = true;
        Button(dialog, "record").click();
        EXPECT_TRUE(WaitFor([&] { return Status(dialog) != "Recording... at 0.00 seconds"; }));
        Button(dialog, "stop").click();
        audio.output.opens = false;
        Button(dialog, "play").click();
        EXPECT_EQ(Enabled(dialog), "rpSC");
    });
    EXPECT_EQ(prompter.messages, (std::vector<std::string>{
                                     "Sorry there are no sound devices capable of recording in the desired format",
                                     "Could not open the audio device!"}));
}

} // namespace
} // namespace velmor::testing
