#include "formats/Formats.h"

#include <cctype>

#include "calc/ProgramFile.h"
#include "calc/SourceFile.h"
#include "files/EditorFiles.h"
#include "files/FileIo.h"
#include "files/Json.h"

namespace shd {

namespace {
WriteResult WriteMy(const LevelSet& set, std::string_view) { return WriteMyFile(set); }
WriteResult WriteList(const LevelSet& set, std::string_view) { return WriteListFile(set); }
WriteResult WriteSource(const LevelSet& set, std::string_view) { return WriteSourceFile(set); }
WriteResult WriteJson(const LevelSet& set, std::string_view) { return WriteJsonFile(set); }
WriteResult WriteProgram(const LevelSet& set, std::string_view fileTitle) {
    const auto name = CalculatorName(fileTitle);
    if (!name) return RefusedWrite("The file name is too short to give the program a name.");
    return WriteProgramFile(set, *name);
}

const std::array<Format, 6> kFormats{{
    {FormatId::MyFile, "myfile", "My Files (*.rsx)|*.rsx", "My File (*.rsx)|*.rsx", {".rsx"}, ReadMyFile, WriteMy,
     true},
    {FormatId::OldMyFile, "oldmyfile", "Any Readable Files|*.*", "", {}, ReadOldMyFile, nullptr, true},
    {FormatId::List, "list", "TI-83 List File|*.83l", "TI-83 List|*.83l", {".83l"}, ReadListFile, WriteList, true},
    {FormatId::Source, "source", "TI-83 Source Files (*.z80, *.asm)|*.z80;*.asm",
     "TI-83 Source Files(*.z80,*.asm)|*.z80;*.asm", {".z80", ".asm"}, ReadSourceFile, WriteSource, false},
    {FormatId::Program, "program", "TI-83 Program files|*.83p", "TI-83 Program File|*.83p", {".83p"},
     ReadProgramFile, WriteProgram, true},
    {FormatId::Json, "json", "JSON files|*.json", "JSON files|*.json", {".json"}, ReadJsonFile, WriteJson, false},
}};

bool EndsWithIgnoringCase(std::string_view text, std::string_view end) {
    if (end.empty() || text.size() <= end.size()) return false;
    text.remove_prefix(text.size() - end.size());
    for (std::size_t i = 0; i < end.size(); ++i)
        if (std::tolower(static_cast<unsigned char>(text[i])) != end[i]) return false;
    return true;
}
}  // namespace

const Format& GetFormat(FormatId id) { return kFormats[static_cast<std::size_t>(id)]; }

const std::array<Format, 6>& AllFormats() { return kFormats; }

std::optional<FormatId> FormOfFileName(std::string_view fileName) {
    for (const Format& format : kFormats)
        for (std::string_view extension : format.extensions)
            if (EndsWithIgnoringCase(fileName, extension)) return format.id;
    return std::nullopt;
}

std::optional<std::string> CalculatorName(std::string_view fileTitle) {
    if (fileTitle.size() < 4) return std::nullopt;
    std::string name(fileTitle.substr(0, fileTitle.size() - 4));
    for (char& c : name) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    return name;
}

std::optional<std::string> ProgramTitleFault(std::string_view fileTitle) {
    if (fileTitle.size() <= 12) return std::nullopt;
    return "This name has to be 8 characters long because this is the name that is shown in the Calculator!";
}

ReadResult OpenFile(const Format& format, const std::string& path) {
    std::string error;
    const auto bytes = ReadWholeFile(path, &error);
    return bytes ? OpenBytes(format, *bytes) : StoppedBeforeReplacing({}, error);
}

ReadResult OpenBytes(const Format& format, const std::string& bytes) {
    ReadResult result = format.read(bytes);
    result.set.CurrentLevel = 1;
    RecountCurrentLevel(result.set);
    return result;
}

std::optional<FormatId> FormatByName(std::string_view name) {
    for (const Format& format : AllFormats())
        if (name == format.name) return format.id;
    return std::nullopt;
}

}  // namespace shd
