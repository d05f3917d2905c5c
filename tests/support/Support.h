// What the tests share: files in a folder of their own, generated level
// sets, and what each form carries of a set.
#pragma once

#include <filesystem>
#include <string>

#include "formats/Formats.h"
#include "model/LevelSet.h"

namespace shd::test {

// A fresh folder, removed with everything in it at the end.
class TempDir {
public:
    TempDir();
    ~TempDir();
    TempDir(const TempDir&) = delete;
    TempDir& operator=(const TempDir&) = delete;
    std::string operator/(const std::string& name) const { return (path / name).string(); }
    std::filesystem::path path;
};

std::string ReadFile(const std::filesystem::path& path);
void WriteFile(const std::filesystem::path& path, const std::string& bytes);
// The names of the files in `folder`, sorted, a blank between two.
std::string FileNames(const std::filesystem::path& folder);
// Text from a case file, where \r \n \t \0 and \xHH stand for their bytes.
std::string Unescaped(const std::string& text);

// The folder of the case files, tests/data.
std::filesystem::path DataDir();

// A set of random cells, ball starts, counts and records, settings from the
// editor's lists, a title that every form carries, and at least one last
// block a level; Shardles with `pictures` carries random pictures.
LevelSet RandomSet(GameKind kind, int levels, bool pictures, unsigned seed);

// What `set` comes back as from a file of `form` that was opened as the
// editor opens one: what the form leaves out is as a new set has it.
LevelSet Carried(const LevelSet& set, FormatId form);

// Makes the process use a German locale, whose decimal point is a comma,
// the way Qt sets the locale from the environment; false when it cannot.
// UseTheCLocale goes back.
bool UseADecimalCommaLocale();
void UseTheCLocale();

// The set as our JSON writer writes it: readable in a failure message.
std::string JsonOf(const LevelSet& set);

}  // namespace shd::test
