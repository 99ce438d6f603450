#include "companion/diagnostic_printer.h"

#include <algorithm>

namespace quillet::companion {

namespace {

constexpr std::string_view kBold = "\033[1m";
constexpr std::string_view kReset = "\033[0m";

std::string_view severityColour(Severity severity) {
    switch (severity) {
    case Severity::Error: return "\033[1;31m";
    case Severity::Warning: return "\033[1;35m";
    case Severity::Note: return "\033[1;36m";
    }
    return kBold;
}

void append(std::string& line, std::string_view style, std::string_view text, bool colour) {
    if (colour) line += style;
    line += text;
    if (colour) line += kReset;
}

}  // namespace

std::string_view severityName(Severity severity) {
    switch (severity) {
    case Severity::Error: return "error";
    case Severity::Warning: return "warning";
    case Severity::Note: return "note";
    }
    return "note";
}

std::string formatDiagnostic(const SourcePlace& place, Severity severity, std::string_view message,
                             std::string_view rule, bool colour) {
    std::string where(place.file);
    if (place.line > 0) where.append(":").append(std::to_string(place.line));
    if (place.column > 0) where.append(":").append(std::to_string(place.column));
    where += ':';
    std::string line;
    append(line, kBold, where, colour);
    line += ' ';
    append(line, severityColour(severity), std::string(severityName(severity)) + ":", colour);
    line += ' ';
    append(line, kBold, message, colour);
    if (!rule.empty()) line.append(" [").append(rule).append("]");
    line += '\n';
    return line;
}

void printDiagnostic(std::ostream& out, const SourcePlace& place, Severity severity, std::string_view message,
                     std::string_view rule, bool colour) {
    out << formatDiagnostic(place, severity, message, rule, colour);
}

std::string caretMark(bool colour) {
    std::string mark;
    append(mark, "\033[1;32m", "^", colour);
    return mark;
}

std::string oneLine(std::string_view text) {
    while (!text.empty() && (text.back() == '\n' || text.back() == ' ')) text.remove_suffix(1);
    std::string line(text);
    std::replace(line.begin(), line.end(), '\n', ' ');
    return line;
}

}  // namespace quillet::companion
