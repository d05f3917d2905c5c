#include "formats/Formats.h"

#include <array>
#include <cctype>

#include "calc/ProgramFile.h"
#include "calc/SourceFile.h"
#include "files/EditorFiles.h"
#include "files/Json.h"

namespace shd {

namespace {
WriteResult WriteMy(const LevelSet& set, std::string_view) { return WriteMyFile(set); }
WriteResult WriteList(const LevelSet& set, std::string_view) { return WriteListFile(set); }
WriteResult WriteSource(const LevelSet& set, std::string_view) { return WriteSourceFile(set); }
WriteResult WriteJson(const LevelSet& set, std::string_view) { return WriteJsonFile(set); }
WriteResult WriteProgram(const LevelSet& set, std::string_view fileTitle) {
    const std::string name = CalculatorName(fileTitle);
    if (name.empty()) return Refused("The file name is too short to give the program a name.");
    return WriteProgramFile(set, name);
}

const std::array<Format, 6> kFormats{{
    {FormatId::MyFile, "myfile", "My Files (*.rsx)|*.rsx", "My File (*.rxs)|*.rsx", ReadMyFile, WriteMy, true},
    {FormatId::OldMyFile, "oldmyfile", "Any Readable Files|*.*", "", ReadOldMyFile, nullptr, true},
    {FormatId::List, "list", "TI-83 List File|*.83l", "TI-83 List|*.83l", ReadListFile, WriteList, true},
    {FormatId::Source, "source", "TI-83 Source Files (*.z80, *.asm)|*.z80;*.asm",
     "TI-83 Source Files(*.z80,*.asm)|*.z80;*.asm", ReadSourceFile, WriteSource, false},
    {FormatId::Program, "program", "TI-83 Program files|*.83p", "TI-83 Program File|*.83p", ReadProgramFile,
     WriteProgram, true},
    {FormatId::Json, "json", "JSON files|*.json", "JSON files|*.json", ReadJsonFile, WriteJson, false},
}};
}  // namespace

const Format& GetFormat(FormatId id) { return kFormats[static_cast<std::size_t>(id)]; }

std::string CalculatorName(std::string_view fileTitle) {
    if (fileTitle.size() < 4) return {};
    std::string name(fileTitle.substr(0, fileTitle.size() - 4));
    for (char& c : name) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    return name;
}

}  // namespace shd
