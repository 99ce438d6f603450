#include "format/formatter.h"

#include <algorithm>

#include "companion/diagnostic_printer.h"
#include "format/layout.h"
#include "format/line_place.h"
#include "model/definition_set.h"
#include "model/reporter.h"
#include "reader/definition_reader.h"
#include "reader/line_reader.h"

namespace quillet::format {

namespace {

bool isBlank(char c) { return c == ' ' || c == '\t'; }

// The bytes that make quillet read a line otherwise than it looks. A file
// saved with Windows line ends has them on every line: the first is named,
// with the count. A carriage return inside a line would end up at its end
// once trailing blanks go, which then looks like a line end too.
class LineBytesCheck {
public:
    explicit LineBytesCheck(std::vector<Problem>& problems) : problems_(problems) {}

    void check(std::string_view line, int number) {
        if (const std::size_t nul = line.find('\0'); nul != std::string_view::npos)
            problems_.push_back({number, column(nul), "NUL byte: quillet ignores the rest of the line"});
        if (line.ends_with('\r')) {
            if (carriageReturns_++ == 0) {
                first_ = problems_.size();
                problems_.push_back({number, column(line.size() - 1),
                                     "line ends in a carriage return (a Windows line end): quillet keeps it in the "
                                     "line's last word"});
            }
        } else if (const std::size_t cr = line.find('\r'); cr != std::string_view::npos) {
            problems_.push_back({number, column(cr), "carriage return in the line: quillet keeps it in a word"});
        }
    }

    void finish() {
        if (carriageReturns_ > 1)
            problems_[first_].message += "; " + std::to_string(carriageReturns_) + " lines of the file end so";
    }

private:
    static int column(std::size_t index) { return static_cast<int>(index) + 1; }

    std::vector<Problem>& problems_;
    int carriageReturns_ = 0;
    std::size_t first_ = 0;
};

// Hands a line the reader has just read to the layout: its words as
// written, from the places the tokenizer found them, and its comment.
void layOut(Layout& layout, std::string_view source, int number, const nqtoken_list* list,
            const DirectiveSpec* inForce, const void* table, std::vector<std::string_view>& words) {
    words.clear();
    const int count = nqtoken_num(list);
    for (int i = 0; i < count; ++i) {
        const auto begin = static_cast<std::size_t>(nqtoken_get_offset(list, i));
        words.push_back(source.substr(begin, static_cast<std::size_t>(nqtoken_get_end(list, i)) - begin));
    }
    // After the last word come blanks, then the comment if there is one.
    std::size_t rest = count > 0 ? static_cast<std::size_t>(nqtoken_get_end(list, count - 1)) : 0;
    while (rest < source.size() && isBlank(source[rest])) ++rest;
    std::string_view comment = source.substr(rest);
    while (!comment.empty() && isBlank(comment.back())) comment.remove_suffix(1);

    if (count == 0) {
        if (comment.empty()) layout.blank(number);
        else layout.comment(number, source, comment);
        return;
    }
    const LinePlace place = placeLine(findDirective(nqtoken_get_token(list, 0)), inForce);
    layout.words({number, source, words, comment}, place, table);
}

}  // namespace

bool formatDefinition(std::string_view definition, std::string& formatted, std::vector<Problem>& problems,
                      std::vector<int>* origins) {
    formatted.clear();
    formatted.reserve(definition.size() + definition.size() / 8);
    problems.clear();
    if (origins != nullptr) origins->clear();

    // quillet stops at its first error; so does the check.
    Reporter report;
    bool refused = false;
    report.listen([&](const Reporter::Message& message) {
        if (message.channel != Channel::Error || refused) return;
        refused = true;
        problems.push_back({message.position.line, message.position.column, companion::oneLine(message.text)});
    });
    DefinitionSet definitions;
    DefinitionReader reader(definitions, report, definition.size());
    LineReader input(definition);
    LineBytesCheck bytes(problems);
    Layout layout(formatted, origins);
    std::vector<std::string_view> words;

    Line line{};
    int number = 0;
    std::size_t offset = 0;
    while (input.next(line)) {
        // The reader's copy of the line ends at its first NUL; the layout takes the bytes from the definition.
        const std::string_view source = definition.substr(offset, line.size);
        offset += line.size + 1;
        bytes.check(source, ++number);
        if (refused) continue;
        const DirectiveSpec* inForce = reader.directiveInForce();
        const LookupTableDef* table = reader.lookupTable();
        if (reader.readLine(line, number) && problems.empty())
            layOut(layout, source, number, reader.lineWords(), inForce, table, words);
    }
    if (input.stoppedAtLongLine())
        problems.push_back({number + 1, static_cast<int>(LineReader::kMaxLine) + 1,
                            "line longer than 254 bytes: quillet stops reading the definition here"});
    if (!refused) reader.finish(number);
    bytes.finish();

    if (!problems.empty()) {
        std::stable_sort(problems.begin(), problems.end(),
                         [](const Problem& a, const Problem& b) { return a.line < b.line; });
        formatted.clear();
        if (origins != nullptr) origins->clear();
        return false;
    }
    layout.finish();
    return true;
}

}  // namespace quillet::format
