#include "lint/definition_linter.h"

#include <algorithm>
#include <memory>
#include <optional>

#include "lint/quoting.h"
#include "lint/word_checks.h"
#include "nqtoken.h"
#include "reader/value_parser.h"

namespace quillet::lint {

namespace {

// The driver's summary of a refusal repeats what the refusal said.
bool isSummaryLine(std::string_view text) {
    return text.starts_with("Error with definition") || text.starts_with("Error processing command on line:") ||
           text.starts_with("Currently processing ");
}

// The message without its line ends and its blanks at either end; a message
// of two lines becomes one.
std::string tidy(std::string_view text) {
    std::string tidied;
    for (char c : text)
        if (c != '\n') tidied.push_back(c);
    tidied.erase(0, tidied.find_first_not_of(' '));
    while (!tidied.empty() && tidied.back() == ' ') tidied.pop_back();
    return tidied;
}

bool isRangeLine(std::string_view text) {
    return text.starts_with("Minimum value :'") || text.starts_with("Maximum value :'");
}

// The column of the quote left open on an untokenizable line.
int openQuoteColumn(const char* text) {
    int open = -1;
    for (int i = 0; text[i] != '\0'; ++i) {
        if (open >= 0) {
            if (text[i] == '"') open = -1;
        } else if (text[i] == '#') {
            break;
        } else if (text[i] == '"') {
            open = i;
        }
    }
    return open + 1;
}

struct TokenListDeleter {
    void operator()(nqtoken_list* list) const { nqtoken_delete(list); }
};

// A limit's value as the tool compares it: the first word as a number, or
// an integer limit as the ID of a lookup entry.
bool limitValue(const DefinitionSet& definitions, const OptionDef& option, std::string_view text, double& value) {
    const std::string copy(text);
    nqtoken_list* made = nullptr;
    if (nqtoken_new(&made, copy.c_str(), " \t\n", nullptr, nullptr, 0, 0) != 0) return false;
    const std::unique_ptr<nqtoken_list, TokenListDeleter> words(made);
    if (option.type == OptionType::NQ_DOUBLE_TYPE) return nqtoken_get_double(words.get(), 0, &value) == 0;
    int parsed = 0;
    std::int32_t entry = 0;
    if (nqtoken_get_int(words.get(), 0, &parsed) == 0) value = parsed;
    else if (definitions.findEntryValueById(text, entry)) value = entry;
    else return false;
    return true;
}

const char* literalWhat(WordRole role) {
    switch (role) {
    case WordRole::KeywordName: return "the keyword name";
    case WordRole::OptionName: return "the option name";
    case WordRole::EntryName: return "the lookup entry name";
    case WordRole::OptionDefault: return "the text default";
    default: return "the summary word";
    }
}

}  // namespace

DefinitionLinter::DefinitionLinter(std::size_t maxErrors) : maxErrors_(maxErrors) {
    report_.listen([this](const Reporter::Message& message) {
        messages_.push_back({message.channel, message.position, std::string(message.text)});
    });
}

void DefinitionLinter::read(LineReader& lines) {
    DefinitionReader reader(definitions_, report_);
    reader_ = &reader;
    reader.observe(this);
    Line line{};
    int number = 0;
    while (lines.next(line)) {
        checkLineEnd(line, ++number);
        bool read = reader.readLine(line, number);
        while (!read) {
            // A refused word that misspells a directive is read as that
            // directive, so that what follows it is not misread too.
            const DirectiveSpec* readAs = nullptr;
            if (reader.refusal() == Refusal::Word)
                if (auto directive = misspeltDirective(pending_.text)) readAs = findDirective(*directive);
            refused(reader.refusal(), &line, number);
            reader.recover(readAs);
            read = reader.readRestOfLine();
        }
        settle();
    }
    if (lines.stoppedAtLongLine())
        warn("long-line", {number + 1, static_cast<int>(LineReader::kMaxLine) + 1},
             "line longer than 254 bytes: quillet stops reading here without a message, and ignores this line "
             "and every line after it");
    if (!reader.finish(number)) {
        refused(reader.refusal(), nullptr, number);
        // Closes the last keyword and option for the checks below.
        reader.recover();
        reader.finish(number);
        messages_.clear();
    }
    settle();
    reader_ = nullptr;

    checkLookupTables();
    if (carriageReturns_ > 1)
        diagnostics_[firstCarriageReturn_].notes.push_back(
            {diagnostics_[firstCarriageReturn_].position,
             std::to_string(carriageReturns_) + " lines of the file end in a carriage return"});
}

std::vector<Diagnostic> DefinitionLinter::takeDiagnostics() {
    // Errors are found in order of position already; warnings found when an
    // option or the file closes are put in their place.
    std::stable_sort(diagnostics_.begin(), diagnostics_.end(), [](const Diagnostic& a, const Diagnostic& b) {
        return std::pair(a.position.line, a.position.column) < std::pair(b.position.line, b.position.column);
    });
    return std::move(diagnostics_);
}

void DefinitionLinter::word(const WordEvent& event) {
    settle();
    pending_ = event;
    hasPending_ = true;
}

// The word read last was accepted: its checks run, and what the tool said
// about it without refusing it becomes a warning.
void DefinitionLinter::settle() {
    followOption();
    if (hasPending_) accepted(pending_);
    hasPending_ = false;
    for (PendingMessage& message : messages_) {
        if (message.channel != Channel::StandardError || !isRangeLine(message.text)) continue;
        warn("default-outside-lookup-range", message.position,
             tidy(message.text) + "; quillet prints this and goes on, leaving the option without that limit",
             {{open_.defaultAt, "the default is given here"}});
    }
    messages_.clear();
}

void DefinitionLinter::accepted(const WordEvent& event) {
    if (event.directive != nullptr) {
        inForceAt_ = event.position;
        if (event.directive->directive == Directive::KEYWORD) optionNames_.clear();
        if (event.directive->secondUseRefusal != nullptr)
            onceGivenAt_[static_cast<std::size_t>(event.directive->directive)] = event.position;
        return;
    }
    checkWord(event);
    // Names are remembered by the model's copies, which live as long.
    switch (event.role) {
    case WordRole::KeywordName: keywordNames_.add(reader_->keyword()->name, event.position); break;
    case WordRole::KeywordId: ids_.add(reader_->keyword()->id, event.position); break;
    case WordRole::OptionName: optionNames_.add(reader_->option()->name, event.position); break;
    case WordRole::OptionId: ids_.add(reader_->option()->id, event.position); break;
    case WordRole::TableName: ids_.add(reader_->lookupTable()->name, event.position); break;
    case WordRole::EntryId: entryIdAt_ = event.position; break;
    case WordRole::EntryValue: ids_.add(reader_->lookupTable()->ids.back(), entryIdAt_); break;
    case WordRole::OptionDefault: open_.defaultAt = event.position; break;
    case WordRole::Limit:
        (event.inForce->directive == Directive::OPT_MINIMUM ? open_.minimumAt : open_.maximumAt) = event.position;
        break;
    case WordRole::TableReference:
        open_.minimumAt = open_.maximumAt = event.position;
        usedTables_.insert(reader_->option()->lookupTableName);
        break;
    default: break;
    }
}

void DefinitionLinter::checkWord(const WordEvent& event) {
    if (auto directive = misspeltDirective(event.text)) {
        const char* fate = event.role == WordRole::Text     ? " is no directive and is read as a word of the text"
                           : event.role == WordRole::Unused ? " is no directive and is ignored"
                                                            : " is no directive and is read as an argument";
        warn("misspelt-directive", event.position, quoted(event.text) + fate + "; did you mean " +
                                                       code(*directive) + "?");
    }
    const OptionDef* option = reader_->option();
    const bool summary = event.role == WordRole::Text && event.inForce->directive == Directive::KEY_SUMMARY;
    const bool textDefault = event.role == WordRole::OptionDefault && option->type == OptionType::NQ_STRING_TYPE;
    const bool literal = event.role == WordRole::KeywordName || event.role == WordRole::OptionName ||
                         event.role == WordRole::EntryName || summary || textDefault;
    if (literal && breaksStringLiteral(event.text))
        warn("string-literal-escape", event.position,
             std::string(literalWhat(event.role)) + " " + quoted(event.text) +
                 " is written into a C++ string literal of nq_command_init.cxx, where a backslash starts an escape "
                 "sequence and a double quote ends the literal");

    std::optional<Finding> finding;
    std::int64_t ignored = 0;
    if (event.role == WordRole::EntryValue) {
        finding = checkInteger(event.text);
    } else if (event.role == WordRole::OptionDefault && option->type == OptionType::NQ_INT_TYPE) {
        if (parseNumber(event.text, ignored)) finding = checkInteger(event.text);
    } else if (event.role == WordRole::OptionDefault && option->type == OptionType::NQ_DOUBLE_TYPE) {
        finding = checkDouble(event.text);
    } else if (event.role == WordRole::Limit) {
        finding = checkLimitWords(event.text);
        if (!finding && option->type == OptionType::NQ_DOUBLE_TYPE) finding = checkDouble(event.text);
    }
    if (finding) add({Severity::Warning, finding->rule, event.position, std::move(finding->message), {}});
}

void DefinitionLinter::checkLineEnd(const Line& line, int number) {
    if (line.size == 0 || line.text[line.size - 1] != '\r') return;
    if (carriageReturns_++ > 0) return;
    firstCarriageReturn_ = diagnostics_.size();
    warn("carriage-return", {number, static_cast<int>(line.size)},
         "line ends in a carriage return (a Windows line end): quillet keeps it in the line's last word, so a "
         "number or boolean there is refused, a directive there is read as an argument, and a name or ID there "
         "carries it into the generated code");
}

void DefinitionLinter::refused(Refusal refusal, const Line* line, int number) {
    Position at = hasPending_ ? pending_.position : inForceAt_;
    if (refusal == Refusal::Line) at = {number, openQuoteColumn(line->text)};
    Diagnostic error{Severity::Error, 0, at, {}, {}};
    for (const PendingMessage& message : messages_) {
        if ((message.channel != Channel::Error && message.channel != Channel::StandardError) ||
            isSummaryLine(message.text))
            continue;
        if (error.message.empty()) {
            error.message = tidy(message.text);
            error.rule = ruleOfMessage(error.message);
        } else {
            error.notes.push_back({at, tidy(message.text)});
        }
    }
    messages_.clear();
    notesForRefusedWord(error, refusal);
    if (error.rule == findRule("unknown-lookup-table")) {
        // A table defined too late counts as used: the error says enough.
        usedTables_.insert(definitions_.keep(pending_.text));
        if (errors_ < maxErrors_) unknownTables_.emplace_back(diagnostics_.size(), std::string(pending_.text));
    }
    add(std::move(error));
    hasPending_ = false;
}

void DefinitionLinter::notesForRefusedWord(Diagnostic& error, Refusal refusal) {
    const bool midFile = hasPending_;
    if ((refusal == Refusal::DirectiveInForce || refusal == Refusal::Leaving) && midFile)
        error.notes.push_back({inForceAt_, code(reader_->directiveInForce()->word) + " is given here"});
    if (isRangeLine(error.message)) error.notes.push_back({open_.defaultAt, "the default is given here"});
    if (refusal == Refusal::Directive && error.rule == findRule("once-per-file"))
        error.notes.push_back({onceGivenAt_[static_cast<std::size_t>(pending_.directive->directive)],
                               "first given here"});
    if (!midFile || pending_.directive != nullptr) return;
    if (error.rule == findRule("duplicate-name")) {
        const NamePositions& names = pending_.role == WordRole::KeywordName  ? keywordNames_
                                     : pending_.role == WordRole::OptionName ? optionNames_
                                                                             : ids_;
        if (std::optional<Position> first = names.find(pending_.text))
            error.notes.push_back({*first, "first defined here"});
    }
    if (auto directive = misspeltDirective(pending_.text))
        error.notes.push_back({pending_.position, "did you mean " + code(*directive) + "?"});
    if (pending_.text.ends_with('\r'))
        error.notes.push_back({pending_.position, "the word ends in the carriage return of a Windows line end"});
}

// Watches for the option in force to change: the one left is complete.
void DefinitionLinter::followOption() {
    if (reader_->option() == open_.option) return;
    closeOption();
    open_ = OpenOption{reader_->option(), {}, {}, {}};
}

void DefinitionLinter::closeOption() {
    const OptionDef* option = open_.option;
    if (option == nullptr || !option->type) return;
    if (option->type == OptionType::NQ_INT_TYPE && !option->hasDefault && !option->defaultText.empty()) {
        const std::string name = quoted(option->defaultText);
        const LookupTableDef* table =
            option->hasLookupTable ? definitions_.findLookupTable(option->lookupTableName) : nullptr;
        std::vector<Note> notes;
        if (table != nullptr) {
            for (std::size_t i = 0; i < table->size(); ++i)
                if (table->ids[i] == option->defaultText)
                    notes.push_back({open_.defaultAt, name + " is the ID of the entry named " +
                                                          quoted(table->names[i]) +
                                                          "; a default names an entry by its name"});
        }
        warn("unresolved-default", open_.defaultAt,
             table != nullptr ? "the default " + name + " is no entry name of lookup table " +
                                    quoted(table->name) + ", so the option gets no default"
                              : "the default " + name + " is no number and the option has no lookup table (" +
                                    code("OPT_LOOKUP:") + ") to give it a value, so the option gets no default",
             std::move(notes));
    }
    double minimum = 0;
    double maximum = 0;
    if (option->hasMinimum && option->hasMaximum && limitValue(definitions_, *option, option->minimumText, minimum) &&
        limitValue(definitions_, *option, option->maximumText, maximum) && minimum > maximum)
        warn("minimum-above-maximum", open_.minimumAt,
             "the minimum " + quoted(option->minimumText) + " is above the maximum " + quoted(option->maximumText) +
                 ", so no value is valid",
             {{open_.maximumAt, "the maximum is given here"}});
}

void DefinitionLinter::checkLookupTables() {
    for (const auto& [index, name] : unknownTables_) {
        if (definitions_.findLookupTable(name) == nullptr) continue;
        diagnostics_[index].notes.push_back(
            {definedAt(name), "a table of this name is defined further down; its " + code("LOOKUP:") +
                                " must come before the first " + code("OPT_LOOKUP:") + " naming it"});
    }
    for (const auto& [name, table] : definitions_.lookupTables) {
        if (usedTables_.contains(name)) continue;
        warn("unused-lookup-table", definedAt(name),
             "lookup table " + quoted(name) + " is used by no option (no " + code("OPT_LOOKUP:") + " names it)");
    }
}

Position DefinitionLinter::definedAt(std::string_view id) const { return ids_.find(id).value_or(Position{}); }

void DefinitionLinter::add(Diagnostic diagnostic) {
    if (diagnostic.severity == Severity::Error && errors_++ >= maxErrors_) {
        if (errorsNotKept_++ == 0) firstErrorNotKept_ = diagnostic.position;
        return;
    }
    diagnostics_.push_back(std::move(diagnostic));
}

void DefinitionLinter::warn(std::string_view rule, Position position, std::string message, std::vector<Note> notes) {
    add({Severity::Warning, findRule(rule), position, std::move(message), std::move(notes)});
}

}  // namespace quillet::lint
