#include "docgen/page_body.h"

#include <algorithm>
#include <string>

#include "output/unknown_type.h"
#include "docgen/page_frame.h"
#include "docgen/text_escape.h"

namespace quillet {

namespace {

// The stream notation the topics have always shown: six significant digits,
// the shorter of fixed and exponent form (0.5, 1e-07, 1e+08).
constexpr const char* kDoubleFormat = "%g";

bool isDocumented(const OptionDef* option) { return !option->readOnly; }

// The option's table, or null after reporting that there is none.
const LookupTableDef* findOptionTable(const OptionDef& option, const DefinitionSet& definitions,
                                      const RunContext& context) {
    const LookupTableDef* table = definitions.findLookupTable(option.lookupTableName);
    if (table == nullptr) context.report.error("Unknown lookup table name: '%s'\n", option.lookupTableName.data());
    return table;
}

// The syntax line leaves out the first entry, which the valid values still
// list; a table of fewer than two entries shows no names.
void writeLookupChoices(OutputFile& out, const LookupTableDef& table) {
    for (std::size_t i = 1; i < table.names.size(); ++i) {
        if (i > 1) out << " | ";
        out << escapeText(table.names[i]);
    }
}

bool writeValuePlaceholder(OutputFile& out, const OptionDef& option, const DefinitionSet& definitions,
                           const RunContext& context) {
    if (option.type) switch (*option.type) {
    case OptionType::NQ_STRING_TYPE: out << "&lt;text&gt;"; return true;
    case OptionType::NQ_BOOL_TYPE: out << "yes | no"; return true;
    case OptionType::NQ_DOUBLE_TYPE: out << "&lt;x&gt;"; return true;
    case OptionType::NQ_INT_TYPE:
        if (!option.hasLookupTable) {
            out << "&lt;n&gt;";
        } else if (const LookupTableDef* table = findOptionTable(option, definitions, context)) {
            writeLookupChoices(out, *table);
        }
        return true;
    }
    return reportUnknownType(option.type, context);
}

// A table without entries writes nothing and leaves the row open.
void writeLookupNames(OutputFile& out, const LookupTableDef& table) {
    for (std::size_t i = 0; i < table.names.size(); ++i) {
        out << "<span class=\"UserType\">" << escapeText(table.names[i])
            << (i + 1 < table.names.size() ? "</span><br/>\r\n" : "</span></td></tr>\r\n");
    }
}

bool writeValidValues(OutputFile& out, const OptionDef& option, const DefinitionSet& definitions,
                      const RunContext& context) {
    if (option.type) switch (*option.type) {
    case OptionType::NQ_STRING_TYPE: out << "text strings<br/></td></tr>\r\n"; return true;
    case OptionType::NQ_BOOL_TYPE:
        out << "boolean (true|false; yes|no; y|n; on|off)<br/></td></tr>\r\n";
        return true;
    case OptionType::NQ_DOUBLE_TYPE: out << "reals<br/></td></tr>\r\n"; return true;
    case OptionType::NQ_INT_TYPE:
        if (!option.hasLookupTable) {
            out << "integers<br/></td></tr>\r\n";
        } else if (const LookupTableDef* table = findOptionTable(option, definitions, context)) {
            writeLookupNames(out, *table);
        }
        return true;
    }
    return reportUnknownType(option.type, context);
}

constexpr const char* kValueStart = "<td valign=\"top\"><b>";
constexpr const char* kValueEnd = "</b><br/></td></tr>\r\n";

// A default that cannot be named leaves its row open.
bool writeDefaultRow(OutputFile& out, const OptionDef& option, const DefinitionSet& definitions,
                     const RunContext& context) {
    out << "<tr align=\"left\"><td valign=\"top\">Default value: </td>\r\n";
    if (option.type) switch (*option.type) {
    case OptionType::NQ_BOOL_TYPE:
        out << kValueStart << (option.boolDefault() ? "true" : "false") << kValueEnd;
        return true;
    case OptionType::NQ_DOUBLE_TYPE:
        out << kValueStart;
        out.writeDouble(kDoubleFormat, option.doubleDefault());
        out << kValueEnd;
        return true;
    case OptionType::NQ_STRING_TYPE: out << kValueStart << escapeText(option.stringDefault()) << kValueEnd; return true;
    case OptionType::NQ_INT_TYPE:
        if (!option.hasLookupTable) {
            out << kValueStart << option.intDefault() << kValueEnd;
        } else if (const LookupTableDef* table = findOptionTable(option, definitions, context)) {
            // The entry name goes in unescaped.
            Text entryName;
            if (table->findNameByValue(option.intDefault(), entryName))
                out << kValueStart << entryName << kValueEnd;
            else
                context.report.error("Default value not in lookup table: '%s'\n", table->name.data());
        }
        return true;
    }
    return reportUnknownType(option.type, context);
}

// Limits are shown as written, except on options tied to a lookup table.
void writeLimitRows(OutputFile& out, const OptionDef& option) {
    if (option.type == OptionType::NQ_INT_TYPE && option.hasLookupTable) return;
    if (option.hasMinimum)
        out << "<tr align=\"left\"><td valign=\"top\">Minimum: </td><td valign=\"top\">"
            << escapeText(option.minimumText) << "<br/></td></tr>\r\n";
    if (option.hasMaximum)
        out << "<tr align=\"left\"><td valign=\"top\">Maximum: </td><td valign=\"top\">"
            << escapeText(option.maximumText) << "<br/></td></tr>\r\n";
}

bool writeOptionEntry(OutputFile& out, const OptionDef& option, const DefinitionSet& definitions,
                      const RunContext& context) {
    out << "<dt><i>" << escapeText(option.name) << "</i></dt><br/>\r\n"
        << "<dd>" << escapeText(option.description) << "</dd><br/>\r\n"
        << "<dd><table summary=\"\"><tr align=\"left\"><td valign=\"top\">Valid values:</td><td>\r\n";
    if (!writeValidValues(out, option, definitions, context)) return false;
    if (option.hasDefault && !writeDefaultRow(out, option, definitions, context)) return false;
    writeLimitRows(out, option);
    out << "</table></dd><br/>\r\n";
    return true;
}

bool writeOptionList(OutputFile& out, const KeywordDef& keyword, const DefinitionSet& definitions,
                     const RunContext& context) {
    if (std::none_of(keyword.options.begin(), keyword.options.end(), isDocumented)) return true;
    out << "<p>Options:</p>\r\n<dl>\r\n";
    for (const OptionDef* option : keyword.options)
        if (isDocumented(option) && !writeOptionEntry(out, *option, definitions, context)) return false;
    out << "</dl>\r\n";
    return true;
}

// A description without a synopsis is not shown. (Escaping never empties a
// text, so the raw texts decide.)
void writeOperands(OutputFile& out, const KeywordDef& keyword) {
    if (keyword.operandSynopsis.empty()) return;
    out << "<p>Operands:</p>\r\n<p>" << escapeText(keyword.operandSynopsis) << "</p>\r\n";
    if (!keyword.operandDescription.empty()) out << "<p>" << escapeText(keyword.operandDescription) << "</p>\r\n";
}

}  // namespace

bool writeSyntax(const DefinitionSet& definitions, const RunContext& context, const KeywordDef& keyword,
                 OutputFile& out) {
    out << "<p>Syntax: <b>" << escapeText(keyword.name) << "</b> ";
    for (const OptionDef* option : keyword.options) {
        if (!isDocumented(option)) continue;
        out << "<i>" << escapeText(option->name) << "</i>= ";
        if (!writeValuePlaceholder(out, *option, definitions, context)) return false;
        out << ' ';
    }
    // Without operands the caller's closing tag follows on the same line.
    if (!keyword.operandSynopsis.empty()) out << '[' << escapeText(keyword.operandSynopsis) << "]\r\n";
    return true;
}

bool writeOptionDetails(const DefinitionSet& definitions, const RunContext& context, const KeywordDef& keyword,
                        OutputFile& out) {
    if (!writeOptionList(out, keyword, definitions, context)) return false;
    writeOperands(out, keyword);
    if (!keyword.aliases.empty()) {
        out << "<p>Aliases:\r\n";
        writeAliasLinks(out, keyword);
        out << "</p>\r\n";
    }
    return true;
}

}  // namespace quillet
