#include "model/TextOut.h"

#include <gtest/gtest.h>

#include <climits>
#include <string>

namespace shd {
namespace {

// The writers size the buffer from what a set can hold; when that guess is
// short the text must still come out whole.
TEST(TextOut, GrowsPastItsExpectedSizeWithoutLosingText) {
    for (std::size_t expected : {std::size_t{0}, std::size_t{1}, std::size_t{100}, std::size_t{1} << 20}) {
        TextOut out(expected);
        std::string want;
        for (long i = -3000; i < 3000; ++i) {
            out.Number(i * 7919) << ',' << std::string_view("ab");
            want += std::to_string(i * 7919) + ",ab";
        }
        out.Number(LONG_MIN).Number(LONG_MAX).Line("end").Line();
        want += std::to_string(LONG_MIN) + std::to_string(LONG_MAX) + "end\r\n\r\n";
        EXPECT_EQ(out.Take(), want) << expected;
    }
}

}  // namespace
}  // namespace shd
