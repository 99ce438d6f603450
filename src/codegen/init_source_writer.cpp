#include "codegen/init_source_writer.h"

#include <array>
#include <cstdint>

#include "language/directive.h"
#include "output/unknown_type.h"

namespace quillet {

namespace {

// Keywords are spread over at most this many numbered routines.
constexpr std::uint32_t kMaxRoutines = 20;

// Six significant digits with the decimal point and trailing zeros always
// shown: 1 is 1.00000, and glibc writes 999999.5 as 1.e+06.
constexpr const char* kDoubleFormat = "%#.6g";

// The flags' lines in the byte-exact order of the generated source: these
// as they have always stood, then any other flag's in the table's order.
constexpr auto kKeywordFlagOrder = std::to_array<Directive>({
    Directive::KEY_OPERANDS_ARE_MODEL_NAME, Directive::KEY_NO_NEW_MODEL, Directive::KEY_ALLOW_BLANK_OPERANDS,
    Directive::KEY_OPERANDS_NEED_FORMATTING, Directive::KEY_OPERANDS_REVERSE_FOR_NAME, Directive::KEY_NO_DEFAULTS,
    Directive::KEY_NO_OPTIONS, Directive::KEY_PRESERVE_OPERANDS, Directive::KEY_DEPRECATED, Directive::KEY_IS_DELETE,
    Directive::KEY_IS_RENAME});
constexpr auto kOptionFlagOrder =
    std::to_array<Directive>({Directive::OPT_LOOKUP_CASE_SENSITIVE, Directive::OPT_READONLY});

struct FlagLines {
    std::array<const DirectiveSpec*, kDirectiveCount> rows{};
    std::size_t size = 0;
};

template <std::size_t N>
constexpr FlagLines flagLines(const std::array<Directive, N>& order, bool ofKeyword) {
    FlagLines lines;
    auto add = [&](const DirectiveSpec& row) {
        if ((ofKeyword ? row.keywordFlag == nullptr : row.optionFlag == nullptr) || row.sourceLine.empty()) return;
        for (std::size_t i = 0; i < lines.size; ++i)
            if (lines.rows[i] == &row) return;
        lines.rows[lines.size++] = &row;
    };
    for (Directive directive : order) add(directiveRow(directive));
    for (const DirectiveSpec& row : kDirectives) add(row);
    return lines;
}

constexpr FlagLines kKeywordFlagLines = flagLines(kKeywordFlagOrder, true);
constexpr FlagLines kOptionFlagLines = flagLines(kOptionFlagOrder, false);

void writeRoutineOpening(OutputFile& out, std::int32_t chunkNumber) {
    out << "void NQ_Command::initialize" << chunkNumber
        << "() \n{\n\tNQ_Keyword* current_keyword;\n\tNQ_Option* current_option;\n";
}

void writeRoutineClosing(OutputFile& out) { out << "\treturn;\n}\n"; }

void writeLimits(OutputFile& out, const OptionDef& option, const char* castClass) {
    if (option.hasMinimum)
        out << "\t((" << castClass << " *)current_option)->setMinimumValue( " << option.minimumText << " );\n";
    if (option.hasMaximum)
        out << "\t((" << castClass << " *)current_option)->setMaximumValue( " << option.maximumText << " );\n";
}

void writeConstructor(OutputFile& out, const OptionDef& option, const char* optionClass) {
    out << "\tcurrent_option = new " << optionClass << "( \"" << option.name << "\", " << option.id << " );\n";
}

// The constructor and the typed default and limit lines of one option;
// false for a type outside the four known ones, before anything is written.
bool writeTypedOption(OutputFile& out, const OptionDef& option) {
    if (!option.type) return false;
    switch (*option.type) {
        case OptionType::NQ_INT_TYPE:
            writeConstructor(out, option, "NQ_IntOption");
            if (option.hasDefault) out << "\tcurrent_option->setDefaultValue( " << option.intDefault() << " );\n";
            writeLimits(out, option, "NQ_IntOption");
            return true;
        case OptionType::NQ_DOUBLE_TYPE:
            writeConstructor(out, option, "NQ_DoubleOption");
            if (option.hasDefault) {
                out << "\tcurrent_option->setDefaultValue( ";
                out.writeDouble(kDoubleFormat, option.doubleDefault());
                out << " );\n";
            }
            writeLimits(out, option, "NQ_DoubleOption");
            return true;
        case OptionType::NQ_BOOL_TYPE:
            writeConstructor(out, option, "NQ_BoolOption");
            if (option.hasDefault)
                out << (option.boolDefault() ? "\tcurrent_option->setDefaultValue( true );\n"
                                             : "\tcurrent_option->setDefaultValue( false );\n");
            return true;
        case OptionType::NQ_STRING_TYPE:
            writeConstructor(out, option, "NQ_StringOption");
            if (option.hasDefault)
                out << "\tcurrent_option->setDefaultValue( \"" << option.stringDefault() << "\" );\n";
            return true;
    }
    return false;
}

// By entry name, not entry ID.
void writeLookupValues(const LookupTableDef& table, OutputFile& out) {
    for (std::size_t i = 0; i < table.size(); ++i)
        out << "\tcurrent_option->addLookupTableValue(  \"" << table.names[i] << "\", " << table.values[i] << " );\n";
}

bool writeOption(OutputFile& out, const OptionDef& option, const DefinitionSet& definitions,
                 const RunContext& context) {
    out << "\t//Option: " << option.name << '\n';
    if (!writeTypedOption(out, option)) return reportUnknownType(option.type, context);
    if (option.hasLookupTable) {
        // A missing table is reported but does not stop the generation.
        if (const LookupTableDef* table = definitions.findLookupTable(option.lookupTableName))
            writeLookupValues(*table, out);
        else
            context.report.error("Unknown lookup table name: '%s'\n", option.lookupTableName.data());
    }
    for (std::size_t i = 0; i < kOptionFlagLines.size; ++i) {
        const DirectiveSpec& row = *kOptionFlagLines.rows[i];
        if (option.*row.optionFlag == row.flagValue) out << row.sourceLine;
    }
    out << "\tcurrent_keyword->addOption( current_option );\n\n";
    return true;
}

void writeKeywordFlags(OutputFile& out, const KeywordDef& keyword) {
    for (std::size_t i = 0; i < kKeywordFlagLines.size; ++i) {
        const DirectiveSpec& row = *kKeywordFlagLines.rows[i];
        if (keyword.*row.keywordFlag != row.flagValue) continue;
        out << row.sourceLine;
        if (row.output == FlagOutput::ModelNameLines)
            out << "\tcurrent_keyword->setNumberTokensInModelName(" << keyword.numTokensInModelName << ");\n";
    }
}

bool writeKeyword(OutputFile& out, const KeywordDef& keyword, const DefinitionSet& definitions,
                  const RunContext& context) {
    out << "\n\t// Keyword: " << keyword.name << "\n\tcurrent_keyword = new NQ_Keyword (\"" << keyword.name << "\", "
        << keyword.id << ", \"" << keyword.summary << "\" ); \n\n";
    for (const OptionDef* option : keyword.options)
        if (!writeOption(out, *option, definitions, context)) return false;
    writeKeywordFlags(out, keyword);
    out << "\taddKeyword( current_keyword );\n\n\n";
    return true;
}

}  // namespace

bool writeInitSource(const DefinitionSet& definitions, const RunContext& context, OutputFile& out) {
    out << "//\t This file created by 'quillet'\n"
           "//\t It contains the function NQ_Command::initialize() \n"
           "//\t DO NOT EDIT THIS FILE BY HAND!\n"
           "#include \"nq_command.h\"\n"
           "#include \"nq_command_id.h\"\n"
           "\n\n\n"
           "//***************************************************\n";

    // Keywords per routine, rounded so that there are never more routines than allowed.
    const auto keywordCount = static_cast<std::uint32_t>(definitions.keywords.size());
    const auto chunkSize = static_cast<std::int32_t>(keywordCount / kMaxRoutines + 1);
    std::int32_t chunkNumber = 0;
    std::int32_t keywordsInChunk = 0;
    bool chunkJustClosed = false;
    for (const KeywordDef* keyword : definitions.keywords) {
        chunkJustClosed = false;
        if (keywordsInChunk == 0) writeRoutineOpening(out, ++chunkNumber);
        if (!writeKeyword(out, *keyword, definitions, context)) return false;
        if (++keywordsInChunk == chunkSize) {
            writeRoutineClosing(out);
            keywordsInChunk = 0;
            chunkJustClosed = true;
        }
    }
    // Also taken when there is no keyword at all: an empty definition gets a
    // closing with no routine opened, which is its defined output.
    if (!chunkJustClosed) writeRoutineClosing(out);

    out << "\n\nvoid NQ_Command::initialize() \n{\n";
    for (std::int32_t k = 1; k <= chunkNumber; ++k) out << "\tinitialize" << k << "();\n";
    out << "\treturn;\n}\n";
    return true;
}

}  // namespace quillet
