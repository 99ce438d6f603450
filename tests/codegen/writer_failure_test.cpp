// The writer failures that no definition file can cause (the reader never
// stores an unknown option type or names a missing lookup table): each row
// builds a model with the fault, opens one file as the driver does and runs
// one writer; it gives the exact messages and how the file left ends.
// Unopenable files are golden cases.
#include <gtest/gtest.h>

#include <filesystem>

#include "codegen/id_definitions_writer.h"
#include "codegen/id_header_writer.h"
#include "codegen/init_source_writer.h"
#include "docgen/page_body.h"
#include "docgen/page_writer.h"
#include "support/error_capture.h"
#include "support/tool_process.h"

using namespace quillet;

namespace {

OptionDef& addOption(DefinitionSet& model, KeywordDef& keyword, const char* name, const char* id, int type) {
    OptionDef* option = model.newOption();
    option->name = model.keep(name);
    option->id = model.keep(id);
    option->type = static_cast<OptionType>(type);
    keyword.options.push_back(option);
    return *option;
}

KeywordDef& addKeyword(DefinitionSet& model, const char* name, const char* id) {
    KeywordDef* keyword = model.newKeyword();
    keyword->name = model.keep(name);
    keyword->id = model.keep(id);
    model.keywords.push_back(keyword);
    return *keyword;
}

// The sources stop at the read-only option; the topics never look at it.
void unknownTypes(DefinitionSet& model) {
    KeywordDef& draw = addKeyword(model, "draw", "DRAW_KWD");
    addOption(model, draw, "flag", "DRAW_FLAG", 2);
    addOption(model, draw, "hidden", "DRAW_HIDDEN", 9).readOnly = true;
    addOption(model, draw, "odd", "DRAW_ODD", 7);
}

void missingTable(DefinitionSet& model) {
    KeywordDef& paint = addKeyword(model, "paint", "PAINT_KWD");
    OptionDef& colour = addOption(model, paint, "colour", "PAINT_COLOUR", 0);
    const Text colours = model.keep("Colours");
    colour.hasLookupTable = true;
    colour.lookupTableName = colours;
    colour.hasDefault = colour.hasMinimum = true;
    colour.defaultValue.intValue = 2;
    colour.minimumText = model.keep("1");
    OptionDef& shade = addOption(model, paint, "shade", "PAINT_SHADE", 0);
    shade.hasLookupTable = true;
    shade.lookupTableName = colours;
}

using Writer = bool (*)(const DefinitionSet&, const RunContext&, OutputFile&);

bool topic(const DefinitionSet& model, const RunContext& context, OutputFile& out) {
    return writeTopic(model, context, *model.keywords[0], out);
}
bool topicBody(const DefinitionSet& model, const RunContext& context, OutputFile& out) {
    const KeywordDef& keyword = *model.keywords[0];
    return writeSyntax(model, context, keyword, out) && writeOptionDetails(model, context, keyword, out);
}

const std::string kType9 = "FATAL Unknown type: 9\n";
const std::string kNoTable = "FATAL Unknown lookup table name: 'Colours'\n";
const std::string kValues = "<dd><table summary=\"\"><tr align=\"left\"><td valign=\"top\">Valid values:</td><td>\r\n";

const struct {
    void (*build)(DefinitionSet&);
    const char* file;
    Writer writer;
    bool result;
    std::string messages;
    std::string ending;
} kCases[] = {
    {unknownTypes, kIdHeaderFile, writeIdHeader, false, kType9,
     "\textern NQ_BoolOptionID DRAW_FLAG; \n\t//Option: hidden\n"},
    {unknownTypes, kIdDefinitionsFile, writeIdDefinitions, false, kType9,
     "\tNQ_BoolOptionID DRAW_FLAG( 1 );\n\t//Option: hidden\n"},
    {unknownTypes, kInitSourceFile, writeInitSource, false, kType9,
     "\tcurrent_keyword->addOption( current_option );\n\n\t//Option: hidden\n"},
    {unknownTypes, "draw.html", topic, false, "FATAL Unknown type: 7\nFATAL Error writing keyword syntax for draw",
     "<h1 class=\"title\">draw</h1>\r\n<p></p>\r\n<p>Syntax: <b>draw</b> <i>flag</i>= yes | no <i>odd</i>= "},
    // Reported at each use; the rest is written.
    {missingTable, kInitSourceFile, writeInitSource, true, kNoTable + kNoTable,
     "\tcurrent_option = new NQ_IntOption( \"colour\", PAINT_COLOUR );\n\tcurrent_option->setDefaultValue( 2 );\n"
     "\t((NQ_IntOption *)current_option)->setMinimumValue( 1 );\n\tcurrent_keyword->addOption( current_option );\n\n"
     "\t//Option: shade\n\tcurrent_option = new NQ_IntOption( \"shade\", PAINT_SHADE );\n"
     "\tcurrent_keyword->addOption( current_option );\n\n\taddKeyword( current_keyword );\n\n\n\treturn;\n}\n"
     "\n\nvoid NQ_Command::initialize() \n{\n\tinitialize1();\n\treturn;\n}\n"},
    {missingTable, "body", topicBody, true, kNoTable + kNoTable + kNoTable + kNoTable + kNoTable,
     "<p>Syntax: <b>paint</b> <i>colour</i>=  <i>shade</i>=  <p>Options:</p>\r\n<dl>\r\n"
     "<dt><i>colour</i></dt><br/>\r\n<dd></dd><br/>\r\n" + kValues +
     "<tr align=\"left\"><td valign=\"top\">Default value: </td>\r\n</table></dd><br/>\r\n"
     "<dt><i>shade</i></dt><br/>\r\n<dd></dd><br/>\r\n" + kValues + "</table></dd><br/>\r\n</dl>\r\n"},
};

TEST(WriterFailure, ReportsExactlyAndLeavesWhatWasWritten) {
    for (const auto& row : kCases) {
        SCOPED_TRACE(row.file);
        quillet::testing::ErrorCapture capture;
        quillet::testing::ScratchDir scratch;
        capture.context().outputDir = scratch.path();
        DefinitionSet model;
        row.build(model);
        {
            OutputFile out;
            EXPECT_EQ(openOutputFile(out, capture.context(), row.file) && row.writer(model, capture.context(), out),
                      row.result);
        }
        EXPECT_EQ(capture.messages(), row.messages);
        const std::string left = quillet::testing::readFile(scratch.path() / row.file);
        EXPECT_TRUE(left.ends_with(row.ending)) << left;
        EXPECT_EQ(std::distance(std::filesystem::directory_iterator(scratch.path()), {}), 1);
    }
}

}  // namespace
