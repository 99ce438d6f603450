#include <gtest/gtest.h>

#include "model/definition_set.h"
#include "nqtoken.h"
#include "reader/argument_handler.h"
#include "support/error_capture.h"

using namespace quillet;
using quillet::testing::ErrorCapture;

namespace {

// A state the directive checks never let arise: the argument handler still
// refuses a model-name count without a keyword.
TEST(ArgumentHandler, ModelNameCountNeedsAKeyword) {
    ErrorCapture capture;
    DefinitionSet definitions;
    definitions.mode = 9;  // KEY_OPERANDS_ARE_MODEL_NAME:
    nqtoken_list* tokens = nullptr;
    ASSERT_EQ(nqtoken_new(&tokens, "2", " ", nullptr, nullptr, 0, 0), 0);
    EXPECT_FALSE(handleArgumentToken(definitions, capture.context(), tokens, 0));
    nqtoken_delete(tokens);
    EXPECT_EQ(capture.messages(),
              "FATAL The setNumTokensInModelName: command must be specified after   a KEYWORD: command\n");
}

}  // namespace
