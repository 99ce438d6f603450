#include "lint/text_output.h"

#include <fstream>
#include <map>
#include <ostream>
#include <sstream>
#include <string_view>

namespace quillet::lint {

namespace {

constexpr const char* kBold = "\033[1m";
constexpr const char* kReset = "\033[0m";

struct Style {
    bool colour;
    std::string operator()(const char* code, std::string_view text) const {
        return colour ? code + std::string(text) + kReset : std::string(text);
    }
};

const char* label(Severity severity) {
    switch (severity) {
    case Severity::Error: return "error";
    case Severity::Warning: return "warning";
    case Severity::Note: return "note";
    }
    return "note";
}

const char* labelColour(Severity severity) {
    switch (severity) {
    case Severity::Error: return "\033[1;31m";
    case Severity::Warning: return "\033[1;35m";
    case Severity::Note: return "\033[1;36m";
    }
    return kBold;
}

// The lines the diagnostics point at, read again from the file (or taken
// from the kept standard input).
std::map<int, std::string> shownLines(const FileReport& report) {
    std::map<int, std::string> lines;
    for (const Diagnostic& diagnostic : report.diagnostics) {
        lines[diagnostic.position.line];
        for (const Note& note : diagnostic.notes) lines[note.position.line];
    }
    std::ifstream file;
    std::istringstream kept;
    std::istream& in = report.path.empty() ? static_cast<std::istream&>(kept) : file;
    if (report.path.empty()) kept.str(report.content);
    else file.open(report.path, std::ios::binary);
    std::string line;
    for (int number = 1; !lines.empty() && number <= lines.rbegin()->first && std::getline(in, line); ++number)
        if (auto found = lines.find(number); found != lines.end()) found->second = line;
    return lines;
}

// Control bytes would upset the terminal; a line's final carriage return is
// dropped.
std::string printable(std::string_view text) {
    if (text.ends_with('\r')) text.remove_suffix(1);
    std::string shown;
    for (unsigned char c : text) {
        if (c == '\r') shown += "\\r";
        else if ((c < 0x20 && c != '\t') || c == 0x7f) shown += ' ';
        else shown.push_back(static_cast<char>(c));
    }
    return shown;
}

// Spaces under the line up to the column, tabs where the line has tabs and
// none for the continuation bytes of UTF-8 characters.
std::string caretLine(std::string_view line, int column) {
    std::string under;
    for (std::size_t i = 0; i + 1 < static_cast<std::size_t>(column) && i < line.size(); ++i) {
        const auto c = static_cast<unsigned char>(line[i]);
        if (c == '\t') under.push_back('\t');
        else if ((c & 0xC0) != 0x80) under.push_back(' ');
    }
    return under;
}

void writeOne(std::ostream& out, const Style& style, const std::string& file, Severity severity,
              std::string_view rule, Position position, std::string_view message, const std::string* line) {
    out << style(kBold, file + ":" + std::to_string(position.line) + ":" + std::to_string(position.column) + ":")
        << " " << style(labelColour(severity), std::string(label(severity)) + ":") << " "
        << style(kBold, printable(message)) << " [" << rule << "]\n";
    if (line == nullptr) return;
    out << printable(*line) << "\n" << caretLine(*line, position.column) << style("\033[1;32m", "^") << "\n";
}

}  // namespace

void writeText(std::ostream& out, const std::vector<FileReport>& reports, bool colour) {
    const Style style{colour};
    std::size_t errors = 0;
    std::size_t warnings = 0;
    for (const FileReport& report : reports) {
        const std::map<int, std::string> lines = shownLines(report);
        auto lineAt = [&](Position position) {
            auto found = lines.find(position.line);
            return position.line > 0 && found != lines.end() ? &found->second : nullptr;
        };
        errors += report.errorsNotShown;
        for (const Diagnostic& diagnostic : report.diagnostics) {
            if (diagnostic.severity == Severity::Error) ++errors;
            if (diagnostic.severity == Severity::Warning) ++warnings;
            const std::string_view rule = kRules[diagnostic.rule].name;
            writeOne(out, style, report.name, diagnostic.severity, rule, diagnostic.position, diagnostic.message,
                     lineAt(diagnostic.position));
            // A note at the place just shown does not show it again.
            Position shown = diagnostic.position;
            for (const Note& note : diagnostic.notes) {
                const bool again = note.position.line == shown.line && note.position.column == shown.column;
                writeOne(out, style, report.name, Severity::Note, rule, note.position, note.message,
                         again ? nullptr : lineAt(note.position));
                shown = note.position;
            }
        }
    }
    out << errors << (errors == 1 ? " error, " : " errors, ") << warnings << (warnings == 1 ? " warning" : " warnings")
        << "\n";
}

}  // namespace quillet::lint
