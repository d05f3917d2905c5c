// Every file kind the editor reads or writes, as one table used by the
// editor's file commands and by the converter alike.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "model/ReadResult.h"

namespace shd {

enum class FormatId { MyFile, OldMyFile, List, Source, Program, Json };

struct Format {
    FormatId id;
    const char* name;        // the converter's name for it: "myfile", "program", ...
    const char* openFilter;  // the open dialog's filter
    const char* saveFilter;  // the save dialog's filter; "" when it is never written
    // The extensions that name the form, the first one the one a saved file
    // gets; none for the older file, which is never told by its name.
    std::array<std::string_view, 2> extensions;
    ReadResult (*read)(const std::string& bytes);
    // `fileTitle` is the chosen file name without its folder (the program file
    // takes the calculator name from it). nullptr when it is never written.
    WriteResult (*write)(const LevelSet& set, std::string_view fileTitle);
    bool countsBlocksFirst;  // saving runs CountBlocks on every level and refuses missing last blocks
};

const Format& GetFormat(FormatId id);
const std::array<Format, 6>& AllFormats();

// The form whose extension a file name ends in, in any case; nothing for an
// extension no form has.
std::optional<FormatId> FormOfFileName(std::string_view fileName);

// The form a command line names: "myfile", "list", "json" ...
std::optional<FormatId> FormatByName(std::string_view name);

// The calculator name for a program file title: the last four characters
// dropped, the rest in upper case (so "abcd" names none). Nothing when the
// title is shorter than four.
std::optional<std::string> CalculatorName(std::string_view fileTitle);

// The save dialog's rule for program files: a title of more than 12
// characters gets the message the editor shows, since the calculator shows
// at most eight and ".83p" takes the other four.
std::optional<std::string> ProgramTitleFault(std::string_view fileTitle);

// Reads `bytes` as `format` and leaves the set as every open leaves it:
// level 1 current, its piece counts recounted.
ReadResult OpenBytes(const Format& format, const std::string& bytes);

// The same for the file at `path`; one that cannot be read is refused
// without a word and its `why` says so.
ReadResult OpenFile(const Format& format, const std::string& path);

}  // namespace shd
