#include "lint/definition_linter.h"

#include <algorithm>
#include <optional>

#include "lint/quoting.h"
#include "lint/raw_word.h"
#include "lint/suggestions.h"
#include "lint/word_checks.h"
#include "reader/value_parser.h"

namespace quillet::lint {

namespace {

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

// A limit's value as the tool compares it, read by the reader itself.
bool DefinitionLinter::limitValue(const OptionDef& option, std::string_view text, double& value) {
    const std::string copy(text);
    LimitReading reading;
    if (!reader_->readLimit(option.type, copy.c_str(), reading)) return false;
    value = option.type == OptionType::NQ_DOUBLE_TYPE ? reading.real : reading.integer;
    return true;
}

DefinitionLinter::DefinitionLinter(std::size_t maxErrors) : maxErrors_(maxErrors) {
    report_.listen([this](const Reporter::Message& message) {
        messages_.push_back({message.channel, message.position, std::string(message.text), message.identity});
    });
}

void DefinitionLinter::startReading() {
    reader_ = std::make_unique<DefinitionReader>(definitions_, report_);
    reader_->observe(this);
    reader_->keepFirstDefinitions();
    if (!keepsDescriptions_) reader_->leaveOutDescriptions();
}

void DefinitionLinter::endReading(const LineReader& lines) {
    // What the end of input raised is in its refusal, if any.
    messages_.clear();
    if (lines.stoppedAtLongLine())
        warn(RuleId::LongLine, {lastLine_ + 1, static_cast<int>(LineReader::kMaxLine) + 1},
             "line longer than 254 bytes: quillet stops reading here without a message, and ignores this line "
             "and every line after it");
    settle();
    reader_->observe(nullptr);
    line_ = {};
}

void DefinitionLinter::readPart(LineReader& lines, const TakenNames& earlier, const DefinitionSet& tables,
                                int firstLine, bool toEnd) {
    startReading();
    reader_->readAfter(earlier.keywordNames, earlier.ids, firstLine);
    definitions_.lookBehind(tables, earlier.ids, firstLine);
    if (toEnd) {
        reader_->read(lines, firstLine);
    } else {
        int lineNumber = firstLine - 1;
        bool clean = true;
        reader_->readLines(lines, lineNumber, clean);
    }
    endReading(lines);
}

void DefinitionLinter::read(LineReader& lines) {
    startReading();
    reader_->read(lines);
    endReading(lines);
    // The tables' places are the reader's.
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

void DefinitionLinter::lineStarts(const Line& line, int number) {
    line_ = std::string_view(line.text, line.size);
    lineQuoted_ = line_.find('"') != std::string_view::npos;
    lastLine_ = number;
    checkLineEnd(line, number);
}

void DefinitionLinter::lineEnds() { settle(); }

bool DefinitionLinter::readsOn(Refusal refusal, const Line* line, int number, const DirectiveSpec*& readAs) {
    // A refused word that misspells a directive is read as that directive,
    // so that what follows it is not misread too.
    if (line != nullptr && refusal == Refusal::Word)
        if (auto directive = misspeltDirective(pending_.text)) readAs = findDirective(*directive);
    refused(refusal, line, number);
    return true;
}

void DefinitionLinter::word(const WordEvent& event) {
    settle();
    pending_ = event;
    hasPending_ = true;
    if (forward_ != nullptr) forward_->word(event);
}

// The word read last was accepted: its checks run, and what the tool said
// about it without refusing it becomes a warning.
void DefinitionLinter::settle() {
    followOption();
    if (hasPending_) accepted(pending_);
    hasPending_ = false;
    for (PendingMessage& message : messages_) {
        // The range checks are the reader's only messages straight to standard error.
        if (message.channel != Channel::StandardError) continue;
        warn(RuleId::DefaultOutsideLookupRange, message.position,
             tidy(message.text) + "; quillet prints this and goes on, leaving the option without that limit",
             {{open_.defaultAt, "the default is given here"}});
    }
    messages_.clear();
}

void DefinitionLinter::accepted(const WordEvent& event) {
    if (event.directive != nullptr) {
        inForceAt_ = event.position;
        if (event.directive->secondUseRefusal != nullptr)
            onceGivenAt_[rowIndex(*event.directive)] = event.position;
        return;
    }
    checkWord(event);
    switch (event.role) {
    case WordRole::OptionDefault:
        open_.defaultAt = event.position;
        open_.defaultLength = rawWordAt(line_, event.position.column).text.size();
        break;
    case WordRole::Limit:
        checkReplaced(event);
        (event.inForce->directive == Directive::OPT_MINIMUM ? open_.minimumAt : open_.maximumAt) = event.position;
        break;
    case WordRole::TableReference:
        checkReplaced(event);
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
        warn(RuleId::MisspeltDirective, event.position, quoted(event.text) + fate + "; did you mean " +
                                                       code(*directive) + "?");
        diagnostics_.back().fixes.push_back(fixAt(event.position, *directive));
    }
    const OptionDef* option = reader_->option();
    const bool summary = event.role == WordRole::Text && event.inForce->directive == Directive::KEY_SUMMARY;
    const bool textDefault = event.role == WordRole::OptionDefault && option->type == OptionType::NQ_STRING_TYPE;
    const bool literal = event.role == WordRole::KeywordName || event.role == WordRole::OptionName ||
                         event.role == WordRole::EntryName || summary || textDefault;
    if (literal && breaksStringLiteral(event.text))
        warn(RuleId::StringLiteralEscape, event.position,
             std::string(literalWhat(event.role)) + " " + quoted(event.text) +
                 " is written into a C++ string literal of nq_command_init.cxx, where a backslash starts an escape "
                 "sequence and a double quote ends the literal");

    if (event.role == WordRole::Text) checkQuotes(event);

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
    if (finding) add({Severity::Warning, finding->rule, event.position, std::move(finding->message), {}, {}});
}

// The reader's quote character groups words and is dropped: a word quoted
// to be shown in quotes is shown without them.
void DefinitionLinter::checkQuotes(const WordEvent& event) {
    // Most lines have no quote at all; their words need no second look.
    if (!lineQuoted_) return;
    const RawWord raw = rawWordAt(line_, event.position.column);
    if (!raw.quoted || event.text.empty()) return;
    const bool summary = event.inForce->directive == Directive::KEY_SUMMARY;
    // The documentation marks in place of the quotes: ``opening and closing''.
    std::string marked;
    bool open = false;
    for (char c : raw.text) {
        if (c == '"') marked += (open = !open) ? "``" : "''";
        else marked.push_back(c);
    }
    warn(RuleId::DroppedQuotes, event.position,
         quoted(raw.text) + " loses its quotes: a double quote is quillet's quoting character and is dropped, so "
                            "the text reads " + quoted(event.text) +
             (summary ? "; the summary, written into a C++ string literal, cannot show a double quote"
                      : "; write " + marked + " for quotes in the reference"));
    // In marks, a comment character would end the line.
    if (!summary && raw.text.find('#') == std::string_view::npos)
        diagnostics_.back().fixes.push_back({event.position, raw.text.size(), marked});
}

// A second limit or table of the option replaces the first without a word.
void DefinitionLinter::checkReplaced(const WordEvent& event) {
    const Directive directive = event.inForce->directive;
    const std::size_t setting = directive == Directive::OPT_MINIMUM ? 0 : directive == Directive::OPT_MAXIMUM ? 1 : 2;
    Position& first = open_.settingAt[setting];
    if (first.line == 0) {
        first = event.position;
        return;
    }
    warn(RuleId::ReplacedSetting, event.position,
         code(event.inForce->word) + " is given a second time for the option " + quoted(open_.option->name) +
             ": quillet silently replaces the first with " + quoted(event.text),
         {{first, "the first " + code(event.inForce->word) + " is given here"}});
}

void DefinitionLinter::checkLineEnd(const Line& line, int number) {
    if (line.size == 0 || line.text[line.size - 1] != '\r') return;
    if (carriageReturns_++ > 0) return;
    firstCarriageReturn_ = diagnostics_.size();
    warn(RuleId::CarriageReturn, {number, static_cast<int>(line.size)},
         "line ends in a carriage return (a Windows line end): quillet keeps it in the line's last word, so a "
         "number or boolean there is refused, a directive there is read as an argument, and a name or ID there "
         "carries it into the generated code");
}

void DefinitionLinter::refused(Refusal refusal, const Line* line, int number) {
    Position at = hasPending_ ? pending_.position : inForceAt_;
    if (refusal == Refusal::Line) at = {number, openQuoteColumn(line->text)};
    Diagnostic error{Severity::Error, RuleId::MisplacedDirective, at, {}, {}, {}};
    bool rangeCheck = false;
    for (const PendingMessage& message : messages_) {
        if (message.channel != Channel::Error && message.channel != Channel::StandardError) continue;
        // Only the reader raises here, each message by its row.
        const DiagnosticSpec& row = kDiagnostics.at(static_cast<std::size_t>(message.identity));
        if (row.summary) continue;
        if (error.message.empty()) {
            error.message = tidy(message.text);
            error.rule = ruleOf(row.rule);
            rangeCheck = row.channel == Channel::StandardError;
        } else {
            error.notes.push_back({at, tidy(message.text)});
        }
    }
    messages_.clear();
    notesForRefusedWord(error, refusal, rangeCheck);
    suggest(error);
    if (error.rule == RuleId::UnknownLookupTable) {
        // A table defined too late, or the one meant, counts as used, and the
        // option's default is not blamed on a missing table: the error says
        // enough.
        usedTables_.insert(definitions_.keep(pending_.text));
        open_.lookupRefused = true;
        if (errors_ < maxErrors_) unknownTables_.emplace_back(diagnostics_.size(), std::string(pending_.text));
    }
    add(std::move(error));
    hasPending_ = false;
}

void DefinitionLinter::notesForRefusedWord(Diagnostic& error, Refusal refusal, bool rangeCheck) {
    const bool midFile = hasPending_;
    if ((refusal == Refusal::DirectiveInForce || refusal == Refusal::Leaving) && midFile)
        error.notes.push_back({inForceAt_, code(reader_->directiveInForce()->word) + " is given here"});
    if (rangeCheck) error.notes.push_back({open_.defaultAt, "the default is given here"});
    if (refusal == Refusal::Directive && error.rule == RuleId::OncePerFile)
        error.notes.push_back({onceGivenAt_[rowIndex(*pending_.directive)],
                               "first given here"});
    if (!midFile || pending_.directive != nullptr) return;
    if (error.rule == RuleId::DuplicateName) {
        if (std::optional<Position> first = reader_->firstDefinition(pending_.role, pending_.text))
            error.notes.push_back({*first, "first defined here"});
    }
    if (auto directive = misspeltDirective(pending_.text)) {
        error.notes.push_back({pending_.position, "did you mean " + code(*directive) + "?"});
        error.fixes.push_back(fixAt(pending_.position, *directive));
    }
    if (pending_.text.ends_with('\r'))
        error.notes.push_back({pending_.position, "the word ends in the carriage return of a Windows line end"});
}

// Where the refused word had to be one of a known set: the one meant.
void DefinitionLinter::suggest(Diagnostic& error) {
    if (!hasPending_ || pending_.directive != nullptr) return;
    const OptionDef* option = reader_->option();
    std::optional<std::string_view> meant;
    if (error.rule == RuleId::UnknownLookupTable) {
        std::vector<std::string_view> names;
        for (const LookupTableDef* table : definitions_.tablesByName()) names.push_back(table->name);
        meant = closestWord(pending_.text, names);
        if (meant) usedTables_.insert(*meant);
    } else if (error.rule == RuleId::UnknownType) {
        meant = meantType(pending_.text);
    } else if (error.rule == RuleId::BadDefault && option->type == OptionType::NQ_BOOL_TYPE) {
        meant = meantBoolean(pending_.text);
    } else if (error.rule == RuleId::BadLimit && pending_.role == WordRole::Limit &&
               option->type == OptionType::NQ_INT_TYPE) {
        double ignored = 0;
        if (!limitValue(*option, pending_.text, ignored)) meant = meantEntryId(pending_.text);
    }
    if (!meant) return;
    error.notes.push_back({pending_.position, "did you mean " + quoted(*meant) + "?"});
    error.fixes.push_back(fixAt(pending_.position, *meant));
}

// An integer limit names a lookup entry by its ID, in any table: the ID of
// the entry the word names, or the ID it misspells.
std::optional<std::string_view> DefinitionLinter::meantEntryId(std::string_view word) const {
    std::vector<std::string_view> ids;
    for (const LookupTableDef* table : definitions_.tablesByName()) {
        for (std::size_t i = 0; i < table->size(); ++i) {
            if (sameLetters(word, table->names[i])) return table->ids[i];
            ids.push_back(table->ids[i]);
        }
    }
    return closestWord(word, ids);
}

Fix DefinitionLinter::fixAt(Position position, std::string_view replacement) const {
    // A word that needs quotes to be one word gets them.
    const bool needsQuotes = replacement.empty() || replacement.find_first_of(" \t#") != std::string_view::npos;
    return {position, rawWordAt(line_, position.column).text.size(),
            needsQuotes ? "\"" + std::string(replacement) + "\"" : std::string(replacement)};
}

// Watches for the option in force to change: the one left is complete.
void DefinitionLinter::followOption() {
    if (reader_->option() == open_.option) return;
    closeOption();
    open_ = OpenOption{};
    open_.option = reader_->option();
}

void DefinitionLinter::closeOption() {
    const OptionDef* option = open_.option;
    if (option == nullptr || !option->type) return;
    if (option->type == OptionType::NQ_INT_TYPE && !option->hasDefault && !option->defaultText.empty() &&
        !open_.lookupRefused) {
        const std::string name = quoted(option->defaultText);
        const LookupTableDef* table =
            option->hasLookupTable ? definitions_.findLookupTable(option->lookupTableName) : nullptr;
        std::vector<Note> notes;
        std::vector<Fix> fixes;
        if (table != nullptr) {
            std::vector<std::string_view> names;
            for (std::size_t i = 0; i < table->size(); ++i) {
                names.push_back(table->names[i]);
                if (table->ids[i] != option->defaultText || !fixes.empty()) continue;
                notes.push_back({open_.defaultAt, name + " is the ID of the entry named " + quoted(table->names[i]) +
                                                      "; a default names an entry by its name"});
                fixes.push_back({open_.defaultAt, open_.defaultLength, std::string(table->names[i])});
            }
            if (fixes.empty())
                if (std::optional<std::string_view> meant = closestWord(option->defaultText, names)) {
                    notes.push_back({open_.defaultAt, "did you mean " + quoted(*meant) + "?"});
                    fixes.push_back({open_.defaultAt, open_.defaultLength, std::string(*meant)});
                }
        }
        warn(RuleId::UnresolvedDefault, open_.defaultAt,
             table != nullptr ? "the default " + name + " is no entry name of lookup table " +
                                    quoted(table->name) + ", so the option gets no default"
                              : "the default " + name + " is no number and the option has no lookup table (" +
                                    code("OPT_LOOKUP:") + ") to give it a value, so the option gets no default",
             std::move(notes));
        diagnostics_.back().fixes = std::move(fixes);
    }
    double minimum = 0;
    double maximum = 0;
    if (option->hasMinimum && option->hasMaximum && limitValue(*option, option->minimumText, minimum) &&
        limitValue(*option, option->maximumText, maximum) && minimum > maximum)
        warn(RuleId::MinimumAboveMaximum, open_.minimumAt,
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
        warn(RuleId::UnusedLookupTable, definedAt(name),
             "lookup table " + quoted(name) + " is used by no option (no " + code("OPT_LOOKUP:") + " names it)");
    }
}

Position DefinitionLinter::definedAt(std::string_view id) const {
    return reader_->firstDefinition(WordRole::TableName, id).value_or(Position{});
}

void DefinitionLinter::add(Diagnostic diagnostic) {
    if (diagnostic.severity == Severity::Error && errors_++ >= maxErrors_) {
        if (errorsNotKept_++ == 0) firstErrorNotKept_ = diagnostic.position;
        return;
    }
    diagnostics_.push_back(std::move(diagnostic));
}

void DefinitionLinter::warn(RuleId rule, Position position, std::string message, std::vector<Note> notes) {
    add({Severity::Warning, rule, position, std::move(message), std::move(notes), {}});
}

}  // namespace quillet::lint
