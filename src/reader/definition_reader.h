#pragma once

#include <array>
#include <string>
#include <string_view>

#include "model/definition_set.h"
#include "model/reporter.h"
#include "model/text_registry.h"
#include "nqtoken.h"
#include "reader/directive.h"
#include "reader/line_reader.h"

namespace quillet {

// Reads a definition into a DefinitionSet, one line at a time. It owns all
// that only reading needs: the directive in force, the records being
// defined, the argument count, the name registries. Every refusal is
// reported through the reporter, positioned at the word that caused it.
class DefinitionReader {
public:
    // `expectedBytes`, the definition's size where known, sizes the registries
    // once instead of growing them.
    DefinitionReader(DefinitionSet& definitions, Reporter& report, std::size_t expectedBytes = 0);
    ~DefinitionReader();
    DefinitionReader(const DefinitionReader&) = delete;
    DefinitionReader& operator=(const DefinitionReader&) = delete;

    // Reads every word of the line in turn; false, after reporting, at the
    // first word refused.
    bool readLine(const Line& line, int lineNumber);
    // The check at end of input: closes the last keyword and its last option.
    bool finish(int lastLine);

private:
    bool handleWord(int index, int lineNumber);

    // Entering a directive, in the order the steps must run.
    bool enter(const DirectiveSpec* next, int line);
    bool checkPreviousDirective();
    bool applyOnArrival(const DirectiveSpec& spec);
    bool checkLeaving();
    void closeOption();
    void closeKeyword();

    bool handleArgument(const char* word, int index);
    bool meets(Needs needs) const;
    bool fail(const char* message);
    bool conflict(const char* first, const char* second, const char* word);
    bool keywordArgument(const char* word);
    bool optionArgument(const char* word, int index);
    bool textArgument(std::string_view word);
    bool modelNameArgument(const char* word);
    bool optLookupArgument(const char* word);
    bool limitArgument(const char* word);
    bool lookupArgument(const char* word);

    DefinitionSet& definitions_;
    Reporter& report_;
    nqtoken_list* tokens_ = nullptr;

    const DirectiveSpec* mode_ = nullptr;  // the directive in force; none before the first
    KeywordDef* keyword_ = nullptr;        // none before the first KEYWORD:
    OptionDef* option_ = nullptr;          // none from each KEYWORD: to the next OPTION:
    LookupTableDef* lookupTable_ = nullptr;  // of the LOOKUP: in force, once it is named
    int arguments_ = 0;                    // words the directive in force has taken
    Text pendingEntryId_;
    Text pendingEntryName_;
    std::array<bool, 29> usedOnce_{};  // by directive number: applied to a keyword already

    // The texts of the open keyword and option, kept in the model when the
    // record closes, by TextField.
    std::array<std::string, 6> openTexts_;

    TextRegistry keywordNames_;
    TextRegistry optionNames_;  // of the current keyword only
    TextRegistry idNames_;      // keyword IDs, option IDs, table names and entry IDs alike
};

}  // namespace quillet
