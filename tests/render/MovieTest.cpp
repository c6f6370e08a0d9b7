#include "render/Movie.h"

#include "FakeAudio.h"
#include "TempFolder.h"
#include "render/avi/AviWriter.h"

#include <gtest/gtest.h>

namespace velmor::testing {
namespace {

class CMovieTest : public ::testing::Test {
protected:
    void Write(const Path& file, int frames, std::span<const std::uint8_t> sound) {
        CAviWriter writer;
        ASSERT_TRUE(writer.Open(file, {5000, 12, 16, 8, 0}));
        ASSERT_TRUE(writer.AddSound(sound));
        for (int position = 0; position < frames; ++position)
            ASSERT_TRUE(writer.WriteFrame(position, std::vector<std::uint8_t>(16 * 8 * 3, 40)));
        ASSERT_TRUE(writer.Close());
    }

    CTempFolder folder;
    CFakeOutput output;
    std::vector<std::string> told;
    TellUser tell = [this](const std::string& text) { told.push_back(text); };
    CMovie movie{output};
};

} // namespace

TEST_F(CMovieTest, OpensPlaysItsSoundAndCloses) {
    const std::vector<std::uint8_t> sound(4000, 30);
    Write(folder / "walk.AVI", 5, sound);
    ASSERT_TRUE(movie.Open(folder / "walk.AVI", tell));
    EXPECT_EQ(movie.Stream().frameCount, 5);
    EXPECT_EQ(movie.Rate(), 12);
    EXPECT_TRUE(movie.HasSound());
    CMoviePicture picture;
    EXPECT_TRUE(movie.ReadFrame(4, picture));
    EXPECT_EQ(movie.ReadFrame(5, picture).Message(), "Internal Error in DrawFrame: Invalid Frame no!");
    EXPECT_TRUE(movie.StartSound());
    EXPECT_EQ(output.played, std::vector<std::vector<std::uint8_t>>{sound});
    EXPECT_TRUE(movie.IsSoundPlaying());
    movie.Close();
    EXPECT_FALSE(output.isOpen);
    EXPECT_EQ(movie.ReadFrame(0, picture).Message(), "Internal Error in DrawFrame: Video Stream not ready!");
    EXPECT_TRUE(told.empty());
}

TEST_F(CMovieTest, IsSilentWhereThereIsNoDevice) {
    Write(folder / "walk.avi", 2, std::vector<std::uint8_t>(4000, 30));
    output.exists = false;
    ASSERT_TRUE(movie.Open(folder / "walk.avi", tell));
    EXPECT_FALSE(movie.HasSound());
    output.exists = true;
    output.opens = false;
    ASSERT_TRUE(movie.Open(folder / "walk.avi", tell));
    EXPECT_FALSE(movie.HasSound());
    EXPECT_TRUE(movie.StartSound());
    EXPECT_EQ(told, (std::vector<std::string>{"There are no audio devices to play the sound in the flipbook!",
                                              "Could not open the audio device!"}));
}

TEST_F(CMovieTest, RefusesWhatIsNoMovie) {
    EXPECT_EQ(movie.Open("a.av", tell).Message(), "Invalid avi filename!");
    EXPECT_EQ(movie.Open("walk.mov", tell).Message(), "Invalid avi filename extension!");
    EXPECT_EQ(movie.Open(folder / "missing.avi", tell).Message(),
              "AVIERROR : A disk error occurred while opening the file.");
    WriteBytes(folder / "text.avi", std::vector<std::uint8_t>(3000, 'a'));
    EXPECT_EQ(movie.Open(folder / "text.avi", tell).Message(),
              "AVIERROR : The file couldn't be read, indicating a corrupt file or an unrecognized format.");
}

} // namespace velmor::testing
