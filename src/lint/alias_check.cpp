#include "lint/alias_check.h"

#include <optional>
#include <utility>

#include "lint/quoting.h"

namespace quillet::lint {

namespace {

constexpr std::size_t kLongestWord = 512;     // longer words are read in pieces
constexpr std::size_t kLongestComment = 254;  // after the comment's first word

bool isSpace(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\v' || c == '\f' || c == '\r'; }

struct Word {
    std::string_view text;
    Position position;
    bool startsLine = false;  // no word before it on its line
    bool cut = false;         // a piece of a longer word
};

// The file's words with their positions, read as white-space separated
// extraction in the C locale reads them.
class WordScanner {
public:
    explicit WordScanner(std::string_view content) : content_(content) {}

    std::optional<Word> next() {
        skipSpace();
        if (at_ == content_.size()) return std::nullopt;
        Word word;
        word.position = {line_, static_cast<int>(at_ - lineStart_) + 1};
        word.startsLine = lastWordLine_ != line_;
        const std::size_t start = at_;
        while (at_ < content_.size() && !isSpace(content_[at_]) && at_ - start < kLongestWord) ++at_;
        word.text = content_.substr(start, at_ - start);
        word.cut = at_ < content_.size() && !isSpace(content_[at_]);
        lastWordLine_ = line_;
        return word;
    }

    // Skips the rest of the line after a comment's first word; false when it
    // is too long for the reader, which then stops reading the file.
    bool skipComment() {
        const std::size_t end = content_.find('\n', at_);
        const std::size_t rest = (end == std::string_view::npos ? content_.size() : end) - at_;
        if (rest > kLongestComment) return false;
        at_ += rest;
        return true;
    }

    // Whether the next word stands on the current line and is no comment.
    bool moreOnLine() {
        const std::size_t saved = at_;
        const int line = line_;
        const std::size_t lineStart = lineStart_;
        skipSpace();
        const bool more = at_ < content_.size() && line_ == line && content_[at_] != '#';
        at_ = saved;
        line_ = line;
        lineStart_ = lineStart;
        return more;
    }

private:
    void skipSpace() {
        for (; at_ < content_.size() && isSpace(content_[at_]); ++at_) {
            if (content_[at_] != '\n') continue;
            ++line_;
            lineStart_ = at_ + 1;
        }
    }

    std::string_view content_;
    std::size_t at_ = 0;
    int line_ = 1;
    std::size_t lineStart_ = 0;
    int lastWordLine_ = 0;
};

// Why a whole group is not read as its line suggests, or empty.
std::string misreadGroup(const Word& first, const Word& second, const Word& third, WordScanner& scanner) {
    if (!first.startsLine) return "this alias group begins in the middle of a line";
    if (third.position.line != first.position.line)
        return "this line holds only part of an alias group, so " + quoted(third.text) + " on line " +
               std::to_string(third.position.line) + " is taken as the keyword of alias " + quoted(second.text);
    if (scanner.moreOnLine())
        return "this line holds more than an alias group of three words, so the words after " + quoted(third.text) +
               " begin the next group";
    return {};
}

Diagnostic layout(Position position, std::string message) {
    return {Severity::Warning, RuleId::AliasLayout, position, std::move(message), {}, {}};
}

}  // namespace

std::vector<Diagnostic> checkAliases(std::string_view content, std::unordered_set<std::string> keywords,
                                     std::vector<AliasUse>* uses) {
    std::vector<Diagnostic> found;
    WordScanner scanner(content);
    // The alias word keeps its last value when the file ends inside a group.
    std::string_view alias;
    bool misread = false;  // the group before was not read as its line suggests
    while (std::optional<Word> first = scanner.next()) {
        if (first->text.front() == '#') {
            if (scanner.skipComment()) continue;
            found.push_back(layout(first->position,
                                   "comment longer than 254 characters after its first word: quillet stops "
                                   "reading the aliases file here, without a message, and ignores the rest"));
            break;
        }
        std::optional<Word> second = scanner.next();
        std::optional<Word> third = second ? scanner.next() : std::nullopt;
        if (second) alias = second->text;
        const Word& keyword = third ? *third : *first;

        for (const std::optional<Word>& word : {first, second, third})
            if (word && word->cut)
                found.push_back(layout(word->position, "word longer than 512 characters: quillet reads it as "
                                                       "several words"));
        // A group reported as misread is not checked further.
        bool reported = true;
        const bool wasMisread = std::exchange(misread, false);
        if (!third) {
            found.push_back(layout(first->position,
                                   "the file ends inside an alias group: quillet still makes the alias " +
                                       quoted(alias) + " of " + quoted(keyword.text)));
        } else if (second->text.front() == '#' || third->text.front() == '#') {
            const Word& hash = second->text.front() == '#' ? *second : *third;
            found.push_back(layout(hash.position, quoted(hash.text) + " is read as an alias or keyword, not as a "
                                                  "comment: only the first word of a group starts a comment"));
        } else if (std::string why = misreadGroup(*first, *second, *third, scanner); !why.empty()) {
            misread = true;
            if (!wasMisread)
                found.push_back(layout(first->position, why + ": quillet reads the file in groups of three words "
                                                              "whatever the line ends"));
        } else {
            reported = false;
        }

        keywords.insert(std::string(alias));  // an alias may name itself, and later ones may name it
        if (!reported && uses != nullptr)
            uses->push_back({second->text, second->position, keyword.text, keyword.position});
        if (!reported && !keywords.contains(std::string(keyword.text)))
            found.push_back({Severity::Warning, RuleId::AliasUnknownKeyword, keyword.position,
                             "alias " + quoted(alias) + " stands for " + quoted(keyword.text) +
                                 ", which is no keyword of the definition nor an alias before it: quillet -html "
                                 "fails here",
                             {},
                             {}});
    }
    return found;
}

}  // namespace quillet::lint
