// Sends a TI-83 program file to a calculator over a link cable, with
// libticalcs. Nothing else of the program sees the TI libraries.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace shd::link {

// A cable as libticables names it: its model (CableModel) and port (1 to 4).
struct Cable {
    int model = 0;
    int port = 1;
    bool operator==(const Cable&) const = default;
};

// "SilverLink:1"; the form CableByName reads back.
std::string CableName(const Cable& cable);
// "MODEL" or "MODEL:PORT", the model named as libticables names it in any
// case (GrayLink, BlackLink, Parallel, SilverLink, VTi, TiEmu); port 1 when
// none is given. Nothing for anything else.
std::optional<Cable> CableByName(std::string_view name);

// The cables libticables finds plugged in that can reach a TI-83, in its
// order. Takes about a second.
std::vector<Cable> FindCables();

// The one variable of a TI-83 program file: its type, its name (up to 8
// bytes, as the file has it) and its data as the calculator keeps it.
struct Variable {
    int type = 0;
    std::string name;
    std::string data;
};
// Nothing when the bytes are not a TI-83 file of exactly one variable whose
// lengths and checksum agree.
std::optional<Variable> VariableOfProgramFile(std::string_view bytes);

// Called as the transfer goes on with the bytes sent so far and in all;
// returning false cancels.
using Progress = std::function<bool(int done, int total)>;

// Sends the program file's variable to a TI-83 on `cable`. Empty when the
// calculator took it; else what went wrong, as a sentence for the user.
// `timeout` is how long to wait for each answer, in tenths of a second.
std::string SendProgramFile(const Cable& cable, std::string_view programFile, const Progress& progress = {},
                            int timeout = 20);

}  // namespace shd::link
