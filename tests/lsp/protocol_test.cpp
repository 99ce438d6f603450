// The server's answers, compared whole, for a small definition that has
// something for every request.
#include <gtest/gtest.h>

#include <map>

#include "format/formatter.h"
#include "lsp/message_parser.h"
#include "session.h"
#include "support/tool_process.h"

namespace quillet::lsp::testing {
namespace {

const std::string kUri = "file:///work/bodies.def";

// Lines from 0, as the protocol counts them.
const std::string kDefinition =
    "# Bodies\n"                                     // 0
    "LOOKUP: Kind\n"                                 // 1
    "    K_STAR star 1\n"                            // 2
    "    K_MOON moon 2\n"                            // 3
    "KEYWORD: add ADD_KWD\n"                         // 4
    "KEY_SUMMARY: Add a body\n"                      // 5
    "KEY_NO_DEFAULTS:\n"                             // 6
    "    OPTION: kind ADD_KIND NQ_INT_TYPE moon\n"   // 7
    "    OPT_LOOKUP: Kind  # the kinds\n"            // 8
    "    OPTION: mass ADD_MASS NQ_DOUBLE_TYPE 1.5\n" // 9
    "    OPT_MINIMUM: 0\n"                           // 10
    "KEYWORD: drop ADD_KWD\n"                        // 11
    "KEY_SUMARY: Drop it\n";                         // 12

json range(int line, int start, int end) {
    return {{"start", {{"line", line}, {"character", start}}}, {"end", {{"line", line}, {"character", end}}}};
}

class Protocol : public ::testing::Test {
protected:
    void SetUp() override {
        session.initialize();
        session.open(kUri, kDefinition);
    }
    Session session;
};

TEST_F(Protocol, PublishesLintFindingsWithTheirRulesAndNotes) {
    EXPECT_EQ(session.diagnostics(kUri), json::parse(R"({
      "uri": "file:///work/bodies.def", "version": 1,
      "diagnostics": [
        {"range": {"start": {"line": 11, "character": 14}, "end": {"line": 11, "character": 21}},
         "severity": 1, "code": "duplicate-name", "source": "quillet-lint",
         "message": "ID name 'ADD_KWD' is not unique:",
         "relatedInformation": [
           {"location": {"uri": "file:///work/bodies.def",
             "range": {"start": {"line": 11, "character": 14}, "end": {"line": 11, "character": 21}}},
            "message": "Conflict with: 'ADD_KWD'"},
           {"location": {"uri": "file:///work/bodies.def",
             "range": {"start": {"line": 4, "character": 13}, "end": {"line": 4, "character": 20}}},
            "message": "first defined here"}]},
        {"range": {"start": {"line": 12, "character": 0}, "end": {"line": 12, "character": 11}},
         "severity": 2, "code": "misspelt-directive", "source": "quillet-lint",
         "message": "'KEY_SUMARY:' is no directive and is ignored; did you mean `KEY_SUMMARY:`?"}
      ]})"));
}

TEST_F(Protocol, ChangesAreCheckedAgainIncrementally) {
    // Renames the second keyword's ID, then fixes the misspelt directive.
    session.notify("textDocument/didChange",
                   {{"textDocument", {{"uri", kUri}, {"version", 2}}},
                    {"contentChanges", {{{"range", range(11, 14, 17)}, {"text", "DROP"}},
                                        {{"range", range(12, 7, 7)}, {"text", "M"}}}}});
    EXPECT_EQ(session.diagnostics(kUri), json::parse(R"({"uri": "file:///work/bodies.def", "version": 2,
                                                         "diagnostics": []})"));
    EXPECT_EQ(session.at("textDocument/hover", kUri, 11, 10)["contents"]["value"],
              "**keyword** `drop`\n\nID `DROP_KWD`\n\nDrop it\n\n0 options");
    // A whole new text replaces the old.
    session.notify("textDocument/didChange", {{"textDocument", {{"uri", kUri}, {"version", 3}}},
                                              {"contentChanges", {{{"text", "KEYWORD: a\n"}}}}});
    EXPECT_EQ(session.diagnostics(kUri)["diagnostics"][0]["code"], "incomplete-directive");
}

// Changes are applied apart from the thread that reads the messages, yet in
// the order they came: a word typed a letter at a time, with no wait between
// the messages, and a document closed and opened again while a change to
// its first opening may still be waiting, end as they would one by one.
TEST_F(Protocol, ChangesSentTogetherApplyInOrder) {
    Server& server = session.server();
    const auto change = [&](int version, json edit) {
        server.handle(json{{"jsonrpc", "2.0"},
                           {"method", "textDocument/didChange"},
                           {"params", {{"textDocument", {{"uri", kUri}, {"version", version}}},
                                       {"contentChanges", {std::move(edit)}}}}}
                          .dump());
    };
    const std::string letters = "DROP";
    for (std::size_t i = 0; i < letters.size(); ++i)
        change(2 + static_cast<int>(i), {{"range", range(11, 14 + static_cast<int>(i), 15 + static_cast<int>(i))},
                                          {"text", letters.substr(i, 1)}});
    change(6, {{"range", range(12, 7, 7)}, {"text", "M"}});
    server.waitIdle();
    EXPECT_EQ(session.diagnostics(kUri),
              json::parse(R"({"uri": "file:///work/bodies.def", "version": 6, "diagnostics": []})"));

    change(7, {{"range", range(0, 0, 0)}, {"text", "KEYWORD: x\n"}});
    server.handle(json{{"jsonrpc", "2.0"}, {"method", "textDocument/didClose"},
                       {"params", {{"textDocument", {{"uri", kUri}}}}}}.dump());
    session.open(kUri, "KEYWORD: lone LONE_KWD\n");
    EXPECT_EQ(session.diagnostics(kUri),
              json::parse(R"({"uri": "file:///work/bodies.def", "version": 1, "diagnostics": []})"));
    EXPECT_EQ(session.at("textDocument/hover", kUri, 0, 10)["contents"]["value"],
              "**keyword** `lone`\n\nID `LONE_KWD`\n\n0 options");
}

// A whole-document answer waits its turn on a thread of its own; one the
// client cancels before its turn comes gets the cancellation error instead.
// The semantic tokens of a few thousand keywords keep that thread busy while
// the symbols are asked for and cancelled.
TEST(ProtocolWholeDocument, CancelledBeforeItsTurnIsAnsweredAsCancelled) {
    std::string text;
    for (int k = 0; k < 3000; ++k) {
        const std::string n = std::to_string(k);
        text += "KEYWORD: k" + n + " K" + n + "\nKEY_SUMMARY: Keyword " + n + "\n";
        for (int o = 0; o < 10; ++o)
            text += "    OPTION: o" + std::to_string(o) + " K" + n + "_O" + std::to_string(o) + " NQ_INT_TYPE 1\n";
    }
    Session session;
    session.initialize();
    session.open(kUri, text);
    Server& server = session.server();
    const auto ask = [&](int id, const std::string& method) {
        server.handle(json{{"jsonrpc", "2.0"}, {"id", id}, {"method", method}, {"params", {{"textDocument", {{"uri", kUri}}}}}}
                          .dump());
    };
    ask(101, "textDocument/semanticTokens/full");
    ask(102, "textDocument/documentSymbol");
    server.handle(json{{"jsonrpc", "2.0"}, {"method", "$/cancelRequest"}, {"params", {{"id", 102}}}}.dump());
    server.waitIdle();
    std::map<int, json> answers;
    for (const json& message : session.sent())
        if (message.contains("id") && !message.contains("method")) answers[message["id"].get<int>()] = message;
    ASSERT_EQ(answers.size(), 3u);  // the initialize answer too
    EXPECT_EQ(answers[101]["result"]["data"].size(), 5u * 3000 * 54);  // five numbers a word
    EXPECT_EQ(answers[102], json::parse(R"({"jsonrpc": "2.0", "id": 102,
                                            "error": {"code": -32800, "message": "Request cancelled"}})"));
}

TEST_F(Protocol, HoverExplainsEachKindOfWord) {
    const struct {
        int line, character;
        std::string text;
    } cases[] = {
        {4, 10, "**keyword** `add`\n\nID `ADD_KWD`\n\nAdd a body\n\nFlags: `KEY_NO_DEFAULTS:`\n\n2 options"},
        {7, 14, "**option** `kind`\n\nID `ADD_KIND`\n\n- type `NQ_INT_TYPE`\n- default `moon` 2\n- minimum `1`\n"
                "- maximum `2`\n- lookup table `Kind`"},
        {9, 20, "**option** `mass`\n\nID `ADD_MASS`\n\n- type `NQ_DOUBLE_TYPE`\n- default 1.5\n- minimum `0`"},
        {8, 17, "**lookup table** `Kind`, 2 entries\n\n- `K_STAR` `star` = 1\n- `K_MOON` `moon` = 2"},
        {7, 30, "**type** `NQ_INT_TYPE`\n\n" + std::string(kTypeNames[0].accepts)},
        {7, 41, "**lookup entry** `moon` of `Kind`\n\nID `K_MOON`, value 2"},
        {6, 3, "**`KEY_NO_DEFAULTS:`** " + std::string(findDirective("KEY_NO_DEFAULTS:")->synopsis) + "\n\n" +
                   std::string(findDirective("KEY_NO_DEFAULTS:")->description) + "\n\nNeeds a keyword in force."},
    };
    for (const auto& c : cases)
        EXPECT_EQ(session.at("textDocument/hover", kUri, c.line, c.character)["contents"]["value"], c.text)
            << c.line << ":" << c.character;
    EXPECT_EQ(session.at("textDocument/hover", kUri, 7, 14)["range"], range(7, 12, 16));
    // Blanks, comments and texts have nothing to show.
    for (auto [line, character] : {std::pair{0, 3}, {5, 16}, {8, 25}})
        EXPECT_EQ(session.at("textDocument/hover", kUri, line, character), nullptr);
}

TEST_F(Protocol, DefinitionAndReferencesFollowNames) {
    const auto at = [](int line, int start, int end) { return json{{"uri", kUri}, {"range", range(line, start, end)}}; };
    EXPECT_EQ(session.at("textDocument/definition", kUri, 8, 18), at(1, 8, 12));   // table of OPT_LOOKUP:
    EXPECT_EQ(session.at("textDocument/definition", kUri, 7, 40), at(3, 11, 15));  // symbolic default
    EXPECT_EQ(session.at("textDocument/definition", kUri, 11, 16), at(4, 13, 20)); // duplicate ID
    EXPECT_EQ(session.at("textDocument/definition", kUri, 5, 16), nullptr);
    EXPECT_EQ(session.at("textDocument/references", kUri, 1, 9, {{"context", {{"includeDeclaration", true}}}}),
              json::array({at(1, 8, 12), at(8, 16, 20)}));
    EXPECT_EQ(session.at("textDocument/references", kUri, 8, 17, {{"context", {{"includeDeclaration", false}}}}),
              json::array({at(8, 16, 20)}));
}

TEST_F(Protocol, SymbolsNestOptionsAndEntries) {
    EXPECT_EQ(session.request("textDocument/documentSymbol", {{"textDocument", {{"uri", kUri}}}}), json::parse(R"([
      {"name": "Kind", "kind": 10, "range": {"start": {"line": 1, "character": 0}, "end": {"line": 3, "character": 17}},
       "selectionRange": {"start": {"line": 1, "character": 8}, "end": {"line": 1, "character": 12}},
       "children": [
         {"name": "star", "detail": "K_STAR = 1", "kind": 22,
          "range": {"start": {"line": 2, "character": 4}, "end": {"line": 2, "character": 17}},
          "selectionRange": {"start": {"line": 2, "character": 11}, "end": {"line": 2, "character": 15}}},
         {"name": "moon", "detail": "K_MOON = 2", "kind": 22,
          "range": {"start": {"line": 3, "character": 4}, "end": {"line": 3, "character": 17}},
          "selectionRange": {"start": {"line": 3, "character": 11}, "end": {"line": 3, "character": 15}}}]},
      {"name": "add", "detail": "ADD_KWD", "kind": 12,
       "range": {"start": {"line": 4, "character": 0}, "end": {"line": 10, "character": 18}},
       "selectionRange": {"start": {"line": 4, "character": 9}, "end": {"line": 4, "character": 12}},
       "children": [
         {"name": "kind", "detail": "ADD_KIND", "kind": 7,
          "range": {"start": {"line": 7, "character": 4}, "end": {"line": 8, "character": 20}},
          "selectionRange": {"start": {"line": 7, "character": 12}, "end": {"line": 7, "character": 16}}},
         {"name": "mass", "detail": "ADD_MASS", "kind": 7,
          "range": {"start": {"line": 9, "character": 4}, "end": {"line": 10, "character": 18}},
          "selectionRange": {"start": {"line": 9, "character": 12}, "end": {"line": 9, "character": 16}}}]},
      {"name": "drop", "detail": "ADD_KWD", "kind": 12,
       "range": {"start": {"line": 11, "character": 0}, "end": {"line": 11, "character": 21}},
       "selectionRange": {"start": {"line": 11, "character": 9}, "end": {"line": 11, "character": 13}}}
    ])"));
}

std::vector<std::string> labels(const json& items) {
    std::vector<std::string> labels;
    for (const json& item : items) labels.push_back(item["label"]);
    return labels;
}

TEST_F(Protocol, CompletionOffersWhatFitsTheContext) {
    EXPECT_EQ(labels(session.at("textDocument/completion", kUri, 8, 16)), std::vector<std::string>{"Kind"});
    session.notify("textDocument/didChange",
                   {{"textDocument", {{"uri", kUri}, {"version", 2}}},
                    {"contentChanges", {{{"range", range(9, 30, 44)}, {"text", ""}}}}});
    EXPECT_EQ(labels(session.at("textDocument/completion", kUri, 9, 30)),
              (std::vector<std::string>{"NQ_INT_TYPE", "NQ_DOUBLE_TYPE", "NQ_BOOL_TYPE", "NQ_STRING_TYPE"}));
    // Before any keyword: what needs none; in a keyword before its first
    // option: no option directive; with an option in force: all of them.
    std::size_t open = 0;
    std::size_t keyword = 0;
    for (const DirectiveSpec& spec : kDirectives) {
        open += spec.needs == Needs::Nothing;
        keyword += spec.needs != Needs::KeywordAndOption;
    }
    EXPECT_EQ(session.at("textDocument/completion", kUri, 1, 0).size(), open);
    EXPECT_EQ(session.at("textDocument/completion", kUri, 6, 16).size(), keyword);
    EXPECT_EQ(session.at("textDocument/completion", kUri, 10, 18).size(), kDirectives.size());
}

TEST_F(Protocol, QuickFixesComeFromLintsSuggestions) {
    const json actions = session.request(
        "textDocument/codeAction",
        {{"textDocument", {{"uri", kUri}}}, {"range", range(12, 2, 2)}, {"context", {{"diagnostics", json::array()}}}});
    ASSERT_EQ(actions.size(), 1u);
    EXPECT_EQ(actions[0]["title"], "Replace with KEY_SUMMARY:");
    EXPECT_EQ(actions[0]["kind"], "quickfix");
    EXPECT_EQ(actions[0]["diagnostics"][0]["code"], "misspelt-directive");
    EXPECT_EQ(actions[0]["edit"], json::parse(R"({"changes": {"file:///work/bodies.def": [
        {"range": {"start": {"line": 12, "character": 0}, "end": {"line": 12, "character": 11}},
         "newText": "KEY_SUMMARY:"}]}})"));

    // A misspelt type word and table name become the nearest of their kind.
    session.open("file:///typos.def", "LOOKUP: Kind\n K_STAR star 1\nKEYWORD: a A\n OPTION: o O NQ_INTT_TYPE 1\n"
                                      " OPTION: p P NQ_INT_TYPE 1\n OPT_LOOKUP: kind\n");
    for (auto [line, start, end, meant] : {std::tuple{3, 13, 25, "NQ_INT_TYPE"}, {5, 13, 17, "Kind"}}) {
        const json fixes = session.request("textDocument/codeAction",
                                           {{"textDocument", {{"uri", "file:///typos.def"}}},
                                            {"range", range(line, start, start)},
                                            {"context", json::object()}});
        ASSERT_EQ(fixes.size(), 1u) << meant;
        EXPECT_EQ(fixes[0]["edit"]["changes"]["file:///typos.def"],
                  json::array({{{"range", range(line, start, end)}, {"newText", meant}}}));
    }

    session.open("file:///crlf.def", "KEYWORD: a A\r\nKEY_SUMMARY: b\r\n");
    const json lineEnds = session.request(
        "textDocument/codeAction",
        {{"textDocument", {{"uri", "file:///crlf.def"}}}, {"range", range(0, 0, 14)}, {"context", json::object()}});
    ASSERT_EQ(lineEnds.size(), 1u);
    EXPECT_EQ(lineEnds[0]["edit"]["changes"]["file:///crlf.def"], json::parse(R"([
        {"range": {"start": {"line": 0, "character": 12}, "end": {"line": 1, "character": 0}}, "newText": "\n"},
        {"range": {"start": {"line": 1, "character": 14}, "end": {"line": 2, "character": 0}}, "newText": "\n"}])"));
}

TEST_F(Protocol, SemanticTokensColourEveryWordAndComment) {
    // (line delta, start delta, length, type): keyword 0, function 1,
    // property 2, enum 3, macro 4, type 5, number 6, enumMember 7, comment 8.
    const std::vector<int> expected = {
        0, 0, 8, 8,                                          // # Bodies
        1, 0, 7, 0, 0, 8, 4, 3,                              // LOOKUP: Kind
        1, 4, 6, 4, 0, 7, 4, 7, 0, 5, 1, 6,                  // K_STAR star 1
        1, 4, 6, 4, 0, 7, 4, 7, 0, 5, 1, 6,                  // K_MOON moon 2
        1, 0, 8, 0, 0, 9, 3, 1, 0, 4, 7, 4,                  // KEYWORD: add ADD_KWD
        1, 0, 12, 0,                                         // KEY_SUMMARY:
        1, 0, 16, 0,                                         // KEY_NO_DEFAULTS:
        1, 4, 7, 0, 0, 8, 4, 2, 0, 5, 8, 4, 0, 9, 11, 5, 0, 12, 4, 6,
        1, 4, 11, 0, 0, 12, 4, 3, 0, 6, 11, 8,               // OPT_LOOKUP: Kind  # the kinds
        1, 4, 7, 0, 0, 8, 4, 2, 0, 5, 8, 4, 0, 9, 14, 5, 0, 15, 3, 6,
        1, 4, 12, 0, 0, 13, 1, 6,                            // OPT_MINIMUM: 0
        1, 0, 8, 0, 0, 9, 4, 1, 0, 5, 7, 4,                  // KEYWORD: drop ADD_KWD
    };
    std::vector<int> data;
    for (std::size_t i = 0; i < expected.size(); i += 4) {
        data.insert(data.end(), expected.begin() + i, expected.begin() + i + 4);
        data.push_back(0);  // no modifiers
    }
    const json tokens = session.request("textDocument/semanticTokens/full", {{"textDocument", {{"uri", kUri}}}});
    EXPECT_EQ(tokens["data"].get<std::vector<int>>(), data);
}

TEST_F(Protocol, FormattingIsQuilletFormatsLayoutAsOneEdit) {
    session.notify("textDocument/didChange",
                   {{"textDocument", {{"uri", kUri}, {"version", 2}}},
                    {"contentChanges", {{{"range", range(11, 14, 17)}, {"text", "DROP"}},
                                        {{"range", range(12, 7, 7)}, {"text", "M"}}}}});
    std::string formatted;
    std::vector<format::Problem> problems;
    std::string text = kDefinition;
    text.replace(text.find("ADD_KWD", text.find("drop")), 3, "DROP");
    text.insert(text.find("KEY_SUMARY") + 7, "M");
    ASSERT_TRUE(format::formatDefinition(text, formatted, problems));
    const json edits = session.request("textDocument/formatting",
                                       {{"textDocument", {{"uri", kUri}}}, {"options", {{"tabSize", 4}, {"insertSpaces", true}}}});
    if (formatted == text) {
        EXPECT_EQ(edits, json::array());
    } else {
        const json whole = {{"start", {{"line", 0}, {"character", 0}}}, {"end", {{"line", 13}, {"character", 0}}}};
        EXPECT_EQ(edits, json::array({{{"range", whole}, {"newText", formatted}}}));
    }
    EXPECT_EQ(session.request("textDocument/formatting", {{"textDocument", {{"uri", "file:///unknown.def"}}}}), nullptr);
}

TEST_F(Protocol, ErrorsAndUnknownDocuments) {
    EXPECT_EQ(session.call("no/such", json::object()),
              json::parse(R"({"jsonrpc": "2.0", "id": 2, "error": {"code": -32601, "message": "Method not found: no/such"}})"));
    EXPECT_EQ(session.call("textDocument/hover", {{"textDocument", {{"uri", kUri}}}}),
              json::parse(R"({"jsonrpc": "2.0", "id": 3, "error": {"code": -32602, "message": "Invalid params"}})"));
    for (const char* method : {"textDocument/hover", "textDocument/definition", "textDocument/completion",
                               "textDocument/references"})
        EXPECT_EQ(session.at(method, "file:///unknown.def", 0, 0), nullptr) << method;
    session.sent().clear();
    session.server().handle("{\"jsonrpc\": \"2.0\", \"id\": 9, \"method\"");
    session.server().handle("[1, 2]");
    EXPECT_EQ(session.sent(), json::parse(R"([
        {"jsonrpc": "2.0", "id": null, "error": {"code": -32700, "message": "Parse error: the message is not valid JSON"}},
        {"jsonrpc": "2.0", "id": null, "error": {"code": -32600, "message": "Invalid request: no method"}}])")
                                  .get<std::vector<json>>());
    // Shut down, the server answers nothing more but exit.
    EXPECT_EQ(session.request("shutdown", nullptr), nullptr);
    EXPECT_EQ(session.call("textDocument/hover", {})["error"]["code"], kInvalidRequest);
    session.notify("exit", nullptr);
    EXPECT_EQ(session.server().exitStatus(), 0);
}

// The server's own parser, which moves strings out instead of copying them
// and lets go of the body as it reads, reads every body as nlohmann's does,
// and refuses the same ones: large ones, broken at their end, too.
TEST(ProtocolMessages, ParsedAsJsonParseReadsThem) {
    std::string text = R"({"text":")";
    while (text.size() < (std::size_t{5} << 20)) text += R"(    OPT_DESCRIPTION: \"a\" \u00e9\ttext\n)";
    std::vector<std::string> bodies = {text + R"("})", text + R"("},)", text};
    for (const char* body : {R"({"a":1,"b":[true,null,2.5,-3,18446744073709551615,"x\u00e9"],"c":{"d":{}}})",
                             R"({"a":1,"a":[2]})", R"([[],[[1]],{},[{"x":[]}]])", R"("text")", "12", " null ", "",
                             "{", R"({"a":})", "[1,]", "{} x", "\"\xff\"", R"({"a":"b",})", "[1e999]"})
        bodies.emplace_back(body);
    for (const std::string& body : bodies) {
        const json expected = json::parse(body, nullptr, false);
        json got;
        const bool parsed = parseMessage(body, got);
        EXPECT_EQ(parsed, !expected.is_discarded()) << body.substr(0, 80);
        if (parsed) {
            EXPECT_EQ(got, expected) << body.substr(0, 80);
        }
    }
}

TEST(ProtocolStart, RequestsBeforeInitializeAreRefused) {
    Session session;
    EXPECT_EQ(session.call("textDocument/hover", json::object()),
              json::parse(R"({"jsonrpc": "2.0", "id": 1, "error": {"code": -32002, "message": "Server not initialized"}})"));
    session.notify("exit", nullptr);
    EXPECT_EQ(session.server().exitStatus(), 1);
}

// Columns count as the client asked: bytes, UTF-16 units or code points.
TEST(ProtocolEncoding, PositionsCountNonAsciiTextAsNegotiated) {
    const std::string text = "KEYWORD: \xC3\xA9\xF0\x9F\x98\x80 A\nKEYWORD: b A\n";  // é and 😀 in a name
    for (const auto& [name, column] : {std::pair{"utf-8", 6}, {"utf-16", 3}, {"utf-32", 2}}) {
        Session session;
        EXPECT_EQ(session.initialize({{"general", {{"positionEncodings", {name, "utf-16"}}}}})["capabilities"]
                                     ["positionEncoding"],
                  name);
        session.open(kUri, text);
        // The duplicate ID of line 1 notes the first at line 0, after the name.
        const json note = session.diagnostics(kUri)["diagnostics"][0]["relatedInformation"][1]["location"]["range"];
        EXPECT_EQ(note, range(0, 9 + column + 1, 9 + column + 2)) << name;
        EXPECT_EQ(session.at("textDocument/hover", kUri, 0, 9 + column + 1)["range"],
                  range(0, 9 + column + 1, 9 + column + 2))
            << name;
    }
}

TEST(ProtocolAliases, AliasesFileIsCheckedAndReferencesItsKeywords) {
    ::quillet::testing::ScratchDir dir;
    const std::string aliases = (dir.path() / "alias.cmd").string();
    ::quillet::testing::writeFile(aliases, "x plus add\nx gone nothing\n");
    Session session;
    session.initialize(json::object(), {{"aliases", aliases}});
    session.open(kUri, kDefinition);
    const std::string aliasesUri = uriOfPath(aliases);
    const json published = session.diagnostics(aliasesUri)["diagnostics"];
    ASSERT_EQ(published.size(), 1u);
    EXPECT_EQ(published[0]["code"], "alias-unknown-keyword");
    EXPECT_EQ(published[0]["range"], range(1, 7, 14));
    EXPECT_EQ(session.at("textDocument/references", kUri, 4, 10, {{"context", {{"includeDeclaration", false}}}}),
              json::array({{{"uri", aliasesUri}, {"range", range(0, 2, 6)}}}));
}

}  // namespace
}  // namespace quillet::lsp::testing
