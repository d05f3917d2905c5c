#include "RoundTrip.h"

#include <stdexcept>

namespace shd::fuzz {

FormatId FormByName(const std::string& name) {
    for (const Format& format : AllFormats())
        if (name == format.name) return format.id;
    throw std::invalid_argument("unknown form " + name);
}

FormatId WrittenAs(FormatId read) { return read == FormatId::OldMyFile ? FormatId::MyFile : read; }

std::string CheckRoundTrip(const LevelSet& set, FormatId form) {
    const Format& format = GetFormat(WrittenAs(form));
    const WriteResult first = format.write(set, "FUZZ.83p");
    if (!first.ok) return {};  // a set the form cannot carry is refused, and that is fine
    const ReadResult back = format.read(first.bytes);
    if (!back.complete()) return "the written set does not read back: " + back.outcome.Text();
    if (std::string why = CheckConsistent(back.set); !why.empty()) return "read back inconsistent: " + why;
    // Whatever a form leaves out comes back the same way every time, so a
    // second write must give the very same bytes.
    const WriteResult second = format.write(back.set, "FUZZ.83p");
    if (!second.ok || second.bytes != first.bytes) return "a second write differs from the first";
    return {};
}

}  // namespace shd::fuzz
