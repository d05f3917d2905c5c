// What the fuzz targets and the seed maker share: the forms by name, and the
// check that a set read completely survives a write and a read back.
#pragma once

#include <string>

#include "formats/Formats.h"

namespace shd::fuzz {

// The form of a converter name ("myfile", ...), and the form its sets are written back in.
FormatId FormByName(const std::string& name);
FormatId WrittenAs(FormatId read);

// Empty when `set`, written in `form` and read back, comes back as it was in
// everything the form carries; else what differs.
std::string CheckRoundTrip(const LevelSet& set, FormatId form);

}  // namespace shd::fuzz
