// Placeholder until the readers and writers land.
#include "files/EditorFiles.h"
namespace shd {
WriteResult WriteMyFile(const LevelSet&) { return Refused("not built yet"); }
WriteResult WriteListFile(const LevelSet&) { return Refused("not built yet"); }
ReadResult ReadMyFile(std::string_view) { return Refuse("not built yet"); }
ReadResult ReadOldMyFile(std::string_view) { return Refuse("not built yet"); }
ReadResult ReadListFile(std::string_view) { return Refuse("not built yet"); }
}  // namespace shd
