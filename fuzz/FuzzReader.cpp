// One reader under the fuzzer: any input must leave a consistent set, and a
// set read completely must survive a write and a read back.
#include <cstdio>
#include <cstdlib>
#include <string>

#include "RoundTrip.h"

using namespace shd;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const FormatId form = fuzz::FormByName(FUZZ_FORM);
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    const ReadResult result = GetFormat(form).read(bytes);
    if (result.refused()) return 0;
    if (std::string why = CheckConsistent(result.set); !why.empty()) {
        std::fprintf(stderr, "inconsistent set after reading: %s\n", why.c_str());
        std::abort();
    }
    if (result.complete()) {
        if (std::string why = fuzz::CheckRoundTrip(result.set, form); !why.empty()) {
            std::fprintf(stderr, "round trip failed: %s\n", why.c_str());
            std::abort();
        }
    }
    return 0;
}
