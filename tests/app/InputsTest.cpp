#include "tests/app/Program.h"

namespace ProgramTest {
namespace {

class Inputs : public Shell {};

TEST_F(Inputs, MayBeSequencesOfPictures) {
    // The folder's % begins no number, and other names have another sequence's.
    Run("mkdir fr%d; ff -f lavfi -i testsrc=r=10:d=0.5 -start_number 998 'fr%%d/a%%_%03d.png'; touch "
        "'fr%d/a%_0007.png'");
    const std::string convert = "datahelpers convert --overwrite ";
    const Json report = Run(convert + "'fr%d/a%%_%03d.png' out.mkv --fps 30000/1001 --video mpeg4 --json").AsJson();
    EXPECT_EQ(report["output"]["differences"], Json::array());
    EXPECT_EQ(report["input"]["sequence"], (Json{{"fps", "30000/1001"}, {"first", 998}, {"count", 5}}));
    EXPECT_EQ(Run("datahelpers plan 'fr%d/a%%_%03d.png' out.mkv --fps 5 --json >plan && " + convert +
                  "--plan plan out.mkv >&2; ffprobe -v error -count_packets -of csv=p=0 -show_entries "
                  "stream=avg_frame_rate,nb_read_packets out.mkv")
                  .out,
              "5/1,5\n");
    const Table<2> refused = {
        {"'fr%d/a%%_%03d.png'", "tell how many are shown a second"},
        {"'fr%d/a%%_%02d.png' --fps 10", "is missing"},
        {"'fr%d/b%03d.png' --fps 10", "there is no picture of that name"},
        {"'fr%d/a.png' --fps 10", "has a number in its name"},
        {"'fr%d/%d_%d.png' --fps 10", "has one number in its name"},
        {"'fr%d/%s.png' --fps 10", "has one number in its name"},
        {"'fr%d/a%%_%03d.png' --fps 0", "no film has 0/1 frames/s"},
        {"'fr%d/a%%_%03d.png' --fps fast", "\"fast\" is no rate"},
    };
    Run("mv 'fr%d/a%_999.png' 'fr%d/a%_07.png'");
    for (const auto& [input, why] : refused) {
        const Result result = Run(convert + input + " out.mp4");
        EXPECT_EQ(result.status, 2) << input;
        EXPECT_THAT(result.err, HasSubstr(why)) << input;
    }
}

TEST_F(Inputs, AndOutputsMayBePipes) {
    const std::string pipes = "mkdir t; export TMPDIR=t; cat $clip | datahelpers convert - - --format matroska ";
    EXPECT_EQ(Run(pipes + "--video copy --audio copy >out; ffprobe -v error -of csv=p=0 -show_entries "
                          "stream=codec_name out; ls t")
                  .out,
              "ffv1\npcm_s16le\n");
    // What fails gives nothing, and nothing stays behind.
    EXPECT_EQ(Run("mkdir -p t; export TMPDIR=t; head -c 999 $clip | datahelpers convert - - --format mp4; ls t").out,
              "");
    for (const char* refused : {"$clip -", "$clip - --format mp4 --json", "$clip - --format png --sequence",
                                "- - --format mp4 </dev/null", "- out.mp4 <&-", "$clip - --format mp4 >/dev/full"}) {
        const Result result = Run(std::string("datahelpers convert ") + refused);
        EXPECT_THAT(result.status, ::testing::AnyOf(1, 2)) << refused;
        EXPECT_THAT(result.err, HasSubstr("datahelpers: ")) << refused;
    }
    EXPECT_EQ(Run("datahelpers plan - --format mp4 --commands <$clip").status, 2);
}

}  // namespace
}  // namespace ProgramTest
