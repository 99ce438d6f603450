#include "nq_command.h"

#include <cstdio>

namespace {

std::vector<std::unique_ptr<NQ_Keyword>>& registry() {
    static std::vector<std::unique_ptr<NQ_Keyword>> keywords;
    return keywords;
}

std::string quoted(const char* text) { return '"' + std::string(text) + '"'; }

// Ten significant digits: enough to show the rounding of a default written
// with six, without the noise of a full binary expansion.
std::string number(double value) {
    char text[32];
    std::snprintf(text, sizeof text, "%.10g", value);
    return text;
}

}  // namespace

NQ_Option::NQ_Option(const char* type, const char* name, const NQ_ID& id) {
    note(std::string("option ") + type + ' ' + quoted(name) + " id " + std::to_string(id.number()));
}

void NQ_Option::setDefaultValue(int value) { note("default int " + std::to_string(value)); }
void NQ_Option::setDefaultValue(double value) { note("default double " + number(value)); }
void NQ_Option::setDefaultValue(bool value) { note(std::string("default bool ") + (value ? "true" : "false")); }
void NQ_Option::setDefaultValue(const char* value) { note("default string " + quoted(value)); }
void NQ_Option::addLookupTableValue(const char* name, int value) {
    note("lookup " + quoted(name) + ' ' + std::to_string(value));
}
void NQ_Option::makeLookupCaseSensitive() { note("lookup case sensitive"); }
void NQ_Option::makeReadOnly() { note("read only"); }

void NQ_IntOption::setMinimumValue(int value) { note("minimum int " + std::to_string(value)); }
void NQ_IntOption::setMaximumValue(int value) { note("maximum int " + std::to_string(value)); }
void NQ_DoubleOption::setMinimumValue(double value) { note("minimum double " + number(value)); }
void NQ_DoubleOption::setMaximumValue(double value) { note("maximum double " + number(value)); }

NQ_Keyword::NQ_Keyword(const char* name, const NQ_KeywordID& id, const char* summary)
    : heading_("keyword " + quoted(name) + " id " + std::to_string(id.number()) + " summary " + quoted(summary)) {}

void NQ_Keyword::dump(std::string& out) const {
    out += heading_ + '\n';
    for (const auto& option : options_) {
        const char* indent = "  ";
        for (const std::string& line : option->record()) {
            out += indent + line + '\n';
            indent = "    ";
        }
    }
    for (const std::string& line : flags_) out += "  " + line + '\n';
}

void NQ_Command::addKeyword(NQ_Keyword* keyword) { registry().emplace_back(keyword); }

std::string NQ_Command::dump() {
    std::string out;
    for (const auto& keyword : registry()) keyword->dump(out);
    return out;
}
