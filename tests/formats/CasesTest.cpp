// Reader and writer cases kept as files. tests/data/<form>/ holds, per case:
//   NAME.in        bytes to read as the form (NAME.out when the case writes one)
//   NAME.expect    how that read ends, on its first line "complete",
//                  "refused: MESSAGE" or "stopped at WHERE: WHY", then, unless
//                  refused, the set it leaves, as our JSON
//   NAME.set.json  a set to write as the form, named NAME (a program's name
//                  comes from it), with NAME.out the bytes it must give or
//                  NAME.refused the message that refuses it
// SHD_UPDATE_CASES=1 writes .expect, .out and .refused from what the code does.
#include <gtest/gtest.h>

#include <cstdlib>
#include <set>

#include "files/Json.h"
#include "support/Support.h"

namespace shd::test {
namespace {

namespace fs = std::filesystem;

struct Case {
    FormatId form;
    fs::path base;  // the folder and NAME
};

std::vector<Case> AllCases() {
    std::vector<Case> cases;
    for (const Format& format : AllFormats()) {
        std::set<fs::path> names;
        for (const auto& entry : fs::directory_iterator(DataDir() / format.name)) {
            std::string name = entry.path().filename().string();
            name = name.substr(0, name.find('.'));
            names.insert(entry.path().parent_path() / name);
        }
        for (const fs::path& name : names) cases.push_back({format.id, name});
    }
    return cases;
}

fs::path With(const fs::path& base, const char* suffix) { return base.string() + suffix; }

bool Updating() { return std::getenv("SHD_UPDATE_CASES") != nullptr; }

// Compares, or in update mode writes, an expected file.
void Expect(const fs::path& path, const std::string& actual) {
    if (Updating()) return WriteFile(path, actual);
    ASSERT_TRUE(fs::exists(path)) << path;
    EXPECT_EQ(ReadFile(path), actual) << path;
}

std::string Ending(const ReadResult& result) {
    switch (result.outcome.status) {
    case ReadOutcome::Status::Complete: return "complete\n" + JsonOf(result.set);
    case ReadOutcome::Status::Refused: return "refused: " + result.outcome.Text() + "\n";
    case ReadOutcome::Status::Stopped: return "stopped at " + result.outcome.Text() + "\n" + JsonOf(result.set);
    }
    return {};
}

class Cases : public testing::TestWithParam<Case> {};

TEST_P(Cases, ReadAndWriteAsTheFilesSay) {
    const auto& [id, base] = GetParam();
    const Format& format = GetFormat(id);
    if (fs::exists(With(base, ".set.json"))) {
        const ReadResult given = ReadJsonFile(ReadFile(With(base, ".set.json")));
        ASSERT_TRUE(given.complete()) << given.outcome.Text();
        const WriteResult written = format.write(given.set, base.filename().string() + ".83p");
        if (written.ok) Expect(With(base, ".out"), written.bytes);
        else Expect(With(base, ".refused"), written.message + "\n");
    }
    const fs::path input = fs::exists(With(base, ".in")) ? With(base, ".in") : With(base, ".out");
    if (fs::exists(input) && (fs::exists(With(base, ".expect")) || Updating())) {
        const ReadResult read = format.read(ReadFile(input));
        EXPECT_EQ(CheckConsistent(read.set), "");
        Expect(With(base, ".expect"), Ending(read));
    }
}

std::string NameOf(const testing::TestParamInfo<Case>& info) {
    std::string name = GetFormat(info.param.form).name + std::string("_") + info.param.base.filename().string();
    for (char& c : name)
        if (!std::isalnum(static_cast<unsigned char>(c))) c = '_';
    return name;
}

INSTANTIATE_TEST_SUITE_P(Data, Cases, testing::ValuesIn(AllCases()), NameOf);

}  // namespace
}  // namespace shd::test
