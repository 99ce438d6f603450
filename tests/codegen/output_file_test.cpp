#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <sstream>

#include "output/output_file.h"
#include "support/tool_process.h"

using namespace quillet;
using quillet::testing::readFile;

namespace {

// No golden output comes near the buffer's size, so only this test crosses
// its boundary: texts, bytes and numbers of every size, one text bigger than
// the buffer, and a file closed by the next open, which truncates.
TEST(OutputFile, FilesBeyondTheBufferComeOutWholeAndInOrder) {
    quillet::testing::ScratchDir scratch;
    quillet::testing::writeFile(scratch.path() / "second", "older and longer content");
    const std::int32_t numbers[] = {0, -1, 7, std::numeric_limits<std::int32_t>::min(),
                                    std::numeric_limits<std::int32_t>::max()};
    const std::string big((3 << 20) + 5, 'b');
    std::string expected;
    {
        OutputFile out;
        ASSERT_TRUE(out.open(scratch.path() / "first"));
        for (int round = 0; round < 60000; ++round) {
            const std::string text = round == 30000 ? big : std::string(static_cast<std::size_t>(round % 97), 't');
            out << numbers[round % 5] << ';' << text;
            expected += std::to_string(numbers[round % 5]) + ';' + text;
        }
        ASSERT_TRUE(out.open(scratch.path() / "second"));
        out << "new";
    }
    EXPECT_TRUE(readFile(scratch.path() / "first") == expected);
    EXPECT_EQ(readFile(scratch.path() / "second"), "new");
    EXPECT_FALSE(OutputFile().open(scratch.path()));
}

// The writers' two notations give what the streams that wrote doubles before
// gave: showpoint in the sources, the plain default in the topics.
TEST(OutputFile, DoublesMatchTheStreamNotations) {
    constexpr double kInf = std::numeric_limits<double>::infinity();
    constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
    const double values[] = {999999.5, 1e-7, 0.1, 100000, 1e21, -0.0, kInf, -kInf, kNan, -kNan, 0, 1, 123456.5,
                             0.0001, 1e-5, 9.9999996, -0.000123456789, 5e-324, 1.7976931348623157e308};
    quillet::testing::ScratchDir scratch;
    std::ostringstream expected;
    {
        OutputFile out;
        ASSERT_TRUE(out.open(scratch.path() / "doubles"));
        for (double value : values) {
            expected << std::showpoint << value << ' ' << std::noshowpoint << value << '\n';
            out.writeDouble("%#.6g", value);
            out << ' ';
            out.writeDouble("%g", value);
            out << '\n';
        }
    }
    EXPECT_EQ(readFile(scratch.path() / "doubles"), expected.str());
}

}  // namespace
