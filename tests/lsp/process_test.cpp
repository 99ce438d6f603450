// quillet-lsp as an editor runs it: framed messages on standard input, the
// answers' bytes on standard output, and the exit status.
#include <gtest/gtest.h>

#include "support/tool_process.h"

namespace {

using namespace quillet::testing;

std::string framed(const std::string& body) {
    return "Content-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body;
}

ProcessResult serve(const std::string& input) {
    const ScratchDir dir;
    ProcessRequest request;
    request.workDir = dir.path();
    request.input = input;
    return runProcess(QUILLET_LSP_BINARY, request);
}

const std::string kInitialize = framed(R"({"jsonrpc":"2.0","id":1,"method":"initialize","params":{"capabilities":{}}})");
const std::string kShutdown = framed(R"({"jsonrpc":"2.0","id":2,"method":"shutdown"})");
const std::string kExit = framed(R"({"jsonrpc":"2.0","method":"exit"})");

// The initialize answer, taken from the run itself: its content is the
// in-process tests' business.
std::string firstMessage(const std::string& out) {
    const std::size_t body = out.find("\r\n\r\n") + 4;
    return out.substr(0, body + std::stoul(out.substr(16)));
}

TEST(Process, BrokenMessagesAreAnsweredAndReadingGoesOn) {
    const std::string input = kInitialize + "Content-Length: twelve\r\n\r\n{\"x\": 1}" + framed("{not json") +
                              framed(R"({"jsonrpc":"2.0","id":"a","method":"no/such"})") + kShutdown + kExit;
    const ProcessResult result = serve(input);
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "");
    const std::string rest = result.out.substr(firstMessage(result.out).size());
    EXPECT_EQ(rest, framed(R"({"error":{"code":-32700,"message":"Parse error: malformed message header"},"id":null,"jsonrpc":"2.0"})") +
                        framed(R"({"error":{"code":-32700,"message":"Parse error: the message is not valid JSON"},"id":null,"jsonrpc":"2.0"})") +
                        framed(R"({"error":{"code":-32601,"message":"Method not found: no/such"},"id":"a","jsonrpc":"2.0"})") +
                        framed(R"({"id":2,"jsonrpc":"2.0","result":null})"));
}

// A body longer than what one read of the pipe gives is read on into the
// body itself: the messages before and after it stay whole.
TEST(Process, ALargeBodyLeavesTheNextMessageWhole) {
    std::string text;
    while (text.size() < 300000) text += "# a comment line of the definition\\n";
    const std::string open = R"({"jsonrpc":"2.0","method":"textDocument/didOpen","params":{"textDocument":{)"
                             R"("uri":"file:///big.def","languageId":"quillet","version":1,"text":")" +
                             text + "\"}}}";
    // Formatting answers from the text as opened, not from a check, which
    // the exit may cut short: nothing to change means the text was whole.
    const std::string format =
        R"({"jsonrpc":"2.0","id":3,"method":"textDocument/formatting","params":{"textDocument":{"uri":"file:///big.def"},)"
        R"("options":{"tabSize":4,"insertSpaces":true}}})";
    const ProcessResult result = serve(kInitialize + framed(open) + framed(format) + kShutdown + kExit);
    EXPECT_EQ(result.status, 0);
    EXPECT_NE(result.out.find(framed(R"({"id":3,"jsonrpc":"2.0","result":[]})")), std::string::npos);
    EXPECT_NE(result.out.find(framed(R"({"id":2,"jsonrpc":"2.0","result":null})")), std::string::npos);
    EXPECT_EQ(result.out.find("-32700"), std::string::npos);
}

TEST(Process, ExitStatusTellsWhetherTheClientShutItDown) {
    EXPECT_EQ(serve(kInitialize + kShutdown + kExit).status, 0);
    EXPECT_EQ(serve(kInitialize + kExit).status, 1);
    // The client's pipe closing ends the server too.
    EXPECT_EQ(serve(kInitialize).status, 1);
    EXPECT_EQ(serve(kInitialize + "Content-Length: 100\r\n\r\n{\"cut\"").status, 1);
}

TEST(Process, VersionAndHelp) {
    const ScratchDir dir;
    ProcessRequest request;
    request.workDir = dir.path();
    request.arguments = {"--version"};
    const ProcessResult version = runProcess(QUILLET_LSP_BINARY, request);
    EXPECT_EQ(version.out, "quillet-lsp 1.0.0\n");
    EXPECT_EQ(version.status, 0);
    request.arguments = {"--help"};
    const ProcessResult help = runProcess(QUILLET_LSP_BINARY, request);
    EXPECT_EQ(help.status, 0);
    EXPECT_NE(help.out.find("Exit status: 0 after the client's shutdown"), std::string::npos);
    request.arguments = {"--tcp"};
    const ProcessResult wrong = runProcess(QUILLET_LSP_BINARY, request);
    EXPECT_EQ(wrong.status, 2);
    EXPECT_EQ(wrong.out, "");
}

}  // namespace
