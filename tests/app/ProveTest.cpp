#include <set>

#include "tests/app/Program.h"

namespace ProgramTest {
namespace {

class Proofs : public Shell {
protected:
    /// The lines of a proof file.
    static std::vector<Json> Lines(const std::string& name) {
        std::istringstream text(Read(name));
        std::vector<Json> lines;
        for (std::string line; std::getline(text, line);) lines.push_back(Json::parse(line, nullptr, false));
        return lines;
    }
    /// An ffmpeg that makes of Sun's sound files something of its own.
    static std::string FakeFor(const std::string& script) {
        return R"(real=$(command -v ffmpeg); fake "case \"\$*\" in *' -f au '*) )" + script +
               R"(;; *) exec $real \"\$@\";; esac")"
               "\n";
    }
};

TEST_F(Proofs, GoOnWhereTheyWereBrokenOff) {
    const std::string prove = "datahelpers prove --only 'copy format=au ' -o proof ";
    const Result whole = Run(prove);
    EXPECT_EQ(whole.status, 0) << whole.err;
    const std::vector<Json> before = Lines("proof");
    ASSERT_GT(before.size(), 4U);
    EXPECT_EQ(before[0]["proof"], 1);
    // The second row is half written.
    Run("head -n 2 proof >part; sed -n 3p proof | head -c 40 >>part; mv part proof");
    EXPECT_EQ(Run(prove).out, whole.out);
    std::multiset<std::string> ids;
    for (const Json& line : Lines("proof")) {
        ASSERT_TRUE(line.is_object());
        if (line.contains("id")) ids.insert(line["id"].get<std::string>());
    }
    EXPECT_EQ(ids.size(), before.size() - 1);
    EXPECT_EQ(ids.size(), std::set<std::string>(ids.begin(), ids.end()).size());
    EXPECT_EQ(Run("sed -i '1s/\"ffmpeg\":\"/&0./' proof; " + prove).status, 2) << "of another FFmpeg";
    EXPECT_EQ(Run("echo '{\"id\":1}' >proof; " + prove).status, 2);
}

TEST_F(Proofs, FindWhatIsNotAsPlanned) {
    const std::string prove = "datahelpers prove --json --only 'default format=au ' ";
    const Table<3> rows = {
        {"exec $real -v error -y -f lavfi -i sine=r=11025:d=1 -f au \\$output", "sample rate", ""},
        {"exec $real -v error -y -f lavfi -i sine=r=8192:d=0.4 -ac 2 -f au \\$output", "audio of 0.40 s", ""},
        {"echo text >\\$output", "cannot be read", ""},
        {"exit 1", "ended with status 1", ""},
        {"sleep 9", "longer than 1 s", "--timeout 1"},
    };
    EXPECT_EQ(Run(prove + "-o good").status, 0);
    for (const auto& [script, why, options] : rows) {
        const Result result = Run(FakeFor(script) + prove + options);
        EXPECT_EQ(result.status, 1) << script;
        EXPECT_EQ(result.AsJson()["counts"]["contradicts"], 1) << script;
        EXPECT_THAT(result.AsJson()["contradictions"].dump(), HasSubstr(why));
    }
    const std::string against = prove + "--against good";
    EXPECT_EQ(Run(against).AsJson()["lost"], Json::array());
    EXPECT_EQ(Run(FakeFor("exit 1") + against).AsJson()["lost"].size(), 1U);
    EXPECT_EQ(Run("sed -i s/proven/refused/ good\n" + FakeFor("exit 1") + against).status, 0) << "it never was";
    EXPECT_TRUE(Run("sed -i '1s/\"libavformat\":\"/&0./' good; " + against).AsJson().contains("skipped"));
}

TEST_F(Proofs, EndWhenTheyAreAskedTo) {
    const Result result = Run(FakeFor("sleep 60") +
                              "mkdir tmp; TMPDIR=$PWD/tmp datahelpers prove --only 'default format=au ' -o proof & "
                              "while ! ls tmp/*/0 2>/dev/null >&2; do sleep 0.05; done; "
                              "kill -INT $!; wait $!; echo $?; ls -A tmp");
    EXPECT_EQ(result.out, "130\n");
    EXPECT_THAT(result.err, HasSubstr("the same command goes on"));
}

TEST_F(Proofs, BecomeAPage) {
    Run("datahelpers prove --only 'default format=au ' -o proof; cp proof bad; "
        "sed -i 's/\"proven\",\"by\":\"\",\"why\":\"/\"contradicts\",\"by\":\"\",\"why\":\"odd/' bad");
    const Result page = Run("datahelpers prove --page proof");
    EXPECT_EQ(page.status, 0) << page.err;
    EXPECT_THAT(page.out, HasSubstr("| au | 1 · 0 · 0 · 0 |"));
    const Result unexplained = Run("datahelpers prove --page proof bad");
    EXPECT_EQ(unexplained.status, 1);
    EXPECT_THAT(unexplained.out, HasSubstr("**Not explained:**\n\n- `format=au`"));
    Run(R"(echo '[{"ids":["=au"],"why":"odd","explanation":"It is so."}]' >why)");
    const Result explained = Run("datahelpers prove --page proof bad --explained why");
    EXPECT_EQ(explained.status, 0);
    EXPECT_THAT(explained.out, HasSubstr("It is so.\n\n- `format=au`"));
}

}  // namespace
}  // namespace ProgramTest
