#include <gtest/gtest.h>

#include "calc/CalcTestSupport.h"
#include "calc/ProgramFile.h"
#include "calc/SourceFile.h"

namespace shd {
namespace {

TEST(CalcRoundTrip, BothFormsReadBackWhatTheyWrote) {
    for (const auto& [label, set] : test::GeneratedSets()) {
        SCOPED_TRACE(label);
        const WriteResult file = WriteProgramFile(set, "ROUND");
        const WriteResult source = WriteSourceFile(set);
        ASSERT_TRUE(file.ok && source.ok) << file.message << source.message;
        for (const ReadResult& read : {ReadProgramFile(file.bytes), ReadSourceFile(source.bytes)}) {
            ASSERT_TRUE(read.complete()) << read.outcome.where << ": " << read.outcome.why;
            test::ExpectSameAsImageCarries(set, read.set);
        }
    }
}

}  // namespace
}  // namespace shd
