// A keyword with a great many options must not make every later keyword
// slower: the option names are forgotten at each keyword, and forgetting
// must not cost the size the registry once grew to.
#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "quillet/driver.h"
#include "support/tool_process.h"

using namespace quillet;

TEST(RegistryReuse, ManyKeywordsAfterOneHugeKeywordAreReadInLinearTime) {
    std::string definition = "KEYWORD: big BIG\n";
    for (int i = 0; i < 300000; ++i)
        definition += "OPTION: o" + std::to_string(i) + " O" + std::to_string(i) + " NQ_BOOL_TYPE on\n";
    for (int i = 0; i < 200000; ++i) definition += "KEYWORD: k" + std::to_string(i) + " K" + std::to_string(i) + "\n";
    quillet::testing::ScratchDir output;
    RunContext context;
    context.outputDir = output.path();
    LineReader input(definition);

    EXPECT_EQ(runQuillet({}, input, context), 0);
}
