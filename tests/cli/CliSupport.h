// Runs the converter as a separate process, the way a script would.
#pragma once

#include <string>
#include <vector>

#include "model/LevelSet.h"

namespace shd::cli_test {

struct Outcome {
    int status = -1;  // exit status, -1 when the process did not exit normally
    std::string out;
    std::string err;
};

Outcome Convert(const std::vector<std::string>& args);

// A fresh, empty folder for one test, removed when the object goes.
class Folder {
public:
    Folder();
    ~Folder();
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;
    std::string operator/(const std::string& name) const { return path_ + "/" + name; }
    // The names of the files in it, sorted.
    std::vector<std::string> Files() const;

private:
    std::string path_;
};

void WriteBytes(const std::string& path, const std::string& bytes);
std::string ReadBytes(const std::string& path);

// The set written as JSON by the library, for a test's input.
void WriteJson(const std::string& path, const LevelSet& set);
// The JSON file read back by the library; fails the test when it does not read.
LevelSet ReadJson(const std::string& path);
// The set a file of any form holds, converted to JSON by the program and read
// back; fails the test when either step fails.
LevelSet ConvertBack(const std::string& path);

// A Shardles set every form carries whole: settings from the editor's lists,
// pictures of 0 and 1, the options the calculator forms bring back on, no
// per-level records, stored counts that CountBlocks agrees with, and a title
// with letters from the upper half of Windows-1252.
LevelSet PortableSet(GameKind kind, int levels, unsigned seed);

}  // namespace shd::cli_test
