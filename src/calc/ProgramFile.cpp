// Placeholder until the program file lands.
#include "calc/ProgramFile.h"
namespace shd {
WriteResult WriteProgramFile(const LevelSet&, std::string_view) { return Refused("not built yet"); }
ReadResult ReadProgramFile(std::string_view) { return Refuse("not built yet"); }
}  // namespace shd
