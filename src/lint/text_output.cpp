#include "lint/text_output.h"

#include <fstream>
#include <map>
#include <ostream>
#include <sstream>
#include <string_view>

namespace quillet::lint {

namespace {


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

void writeOne(std::ostream& out, bool colour, const std::string& file, Severity severity, std::string_view rule,
              Position position, std::string_view message, const std::string* line) {
    companion::printDiagnostic(out, {file, position.line, position.column}, severity, printable(message), rule, colour);
    if (line == nullptr) return;
    out << printable(*line) << "\n" << caretLine(*line, position.column) << companion::caretMark(colour) << "\n";
}

}  // namespace

void writeText(std::ostream& out, const std::vector<FileReport>& reports, bool colour, bool quiet) {
    const RuleId maxErrors = RuleId::MaxErrors;
    std::size_t errors = 0;
    std::size_t notShown = 0;
    std::size_t warnings = 0;
    std::ostringstream last;  // the --max-errors note, after everything shown
    for (const FileReport& report : reports) {
        const std::map<int, std::string> lines = shownLines(report);
        auto lineAt = [&](Position position) {
            auto found = lines.find(position.line);
            return position.line > 0 && found != lines.end() ? &found->second : nullptr;
        };
        notShown += report.errorsNotShown;
        for (const Diagnostic& diagnostic : report.diagnostics) {
            if (diagnostic.severity == Severity::Error) ++errors;
            if (diagnostic.severity == Severity::Warning) ++warnings;
            const std::string_view rule = lint::rule(diagnostic.rule).name;
            writeOne(diagnostic.rule == maxErrors ? last : out, colour, report.name, diagnostic.severity, rule,
                     diagnostic.position, diagnostic.message, lineAt(diagnostic.position));
            // A note at the place just shown does not show it again.
            Position shown = diagnostic.position;
            for (const Note& note : diagnostic.notes) {
                const bool again = note.position.line == shown.line && note.position.column == shown.column;
                writeOne(out, colour, report.name, Severity::Note, rule, note.position, note.message,
                         again ? nullptr : lineAt(note.position));
                shown = note.position;
            }
        }
    }
    out << last.str();
    if (quiet && errors + notShown + warnings == 0) return;
    const std::size_t found = errors + notShown;
    out << found << (found == 1 ? " error" : " errors");
    if (notShown > 0) out << " (" << errors << " shown)";
    out << ", " << warnings << (warnings == 1 ? " warning" : " warnings") << "\n";
}

}  // namespace quillet::lint
