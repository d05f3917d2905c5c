// Every file kind the editor reads or writes, as one table used by the menu
// handlers and by the converter alike.
#pragma once

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
    ReadResult (*read)(const std::string& bytes);
    // `fileTitle` is the chosen file name without its folder (the program file
    // takes the calculator name from it). nullptr when it is never written.
    WriteResult (*write)(const LevelSet& set, std::string_view fileTitle);
    bool countsBlocksFirst;  // saving runs CountBlocks on every level and refuses missing last blocks
};

const Format& GetFormat(FormatId id);

// The calculator name for a program file title: the last four characters
// dropped, the rest in upper case. Empty when the title is shorter than four.
std::string CalculatorName(std::string_view fileTitle);

}  // namespace shd
