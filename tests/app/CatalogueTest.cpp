#include "tests/app/Program.h"

namespace ProgramTest {
namespace {

class Catalogue : public Shell {};

// What the pages show is for the tests of pages (tests/pages); this is what becomes of the folder.
TEST_F(Catalogue, IsWrittenWholeOrNotAtAll) {
    const Table<3> rows = {
        {"0", "datahelpers catalogue -o site && ls site/formats/mp4.html site/video/h264.html",
         "open site/index.html\n"},
        {"0", "datahelpers catalogue -o site/ && datahelpers catalogue --output again && diff -r site again", ""},
        {"0", "mkdir empty && datahelpers catalogue -o empty && ls empty/index.html", ""},
        {"0", "ln -s site link && rm site/lists.html && datahelpers catalogue -o link && ls site/lists.html", ""},
        {"0", R"(datahelpers catalogue -o json --json | grep '"index": "json/index.html"')", "index"},
        {"2", "mkdir other && echo mine >other/index.html && datahelpers catalogue -o other", "--overwrite"},
        {"0", "ls -A other && cat other/index.html", "index.html\nmine\n"},
        {"0", "echo mine >other/notes && datahelpers catalogue -o other --overwrite && cat other/notes", "mine\n"},
        {"0", "ls other/index.html other/plan.html && ! ls -d other/.data*", ""},
        {"2", "datahelpers catalogue -o other/notes", "no folder"},
        {"2", "datahelpers catalogue -o new --proof nothing.jsonl", "Cannot read nothing.jsonl: No such file"},
        {"2", "echo '{\"proof\":2}' >p && datahelpers catalogue -o new --proof p", "p is no proof file: see line 1"},
        {"2", R"(printf '{"proof":1}\n{"id":"x","result":"y"}\n' >p; datahelpers catalogue -o new --proof p)",
         "p is no proof file: see line 2"},
        {"1", "(ulimit -f 100; datahelpers catalogue -o new)", "File too large"},
        {"1", "cp -r site before && (ulimit -f 100; datahelpers catalogue -o site)", "File too large"},
        {"0", "diff -r site before && ! ls -d new* .data* site/.data*", ""},
        {"0", R"(printf '{"proof":1}\n{"id":"x","resu' >p; datahelpers catalogue -o site --proof p)", "files"},
        {"0", "grep -c 'The run was broken off' site/proof.html", "1\n"},
    };
    for (const auto& [status, line, says] : rows) {
        const Result result = Run(line);
        EXPECT_EQ(std::to_string(result.status), status) << line << "\n" << result.err;
        EXPECT_THAT(result.out + result.err, HasSubstr(says)) << line;
    }
}

}  // namespace
}  // namespace ProgramTest
