#include "support/definition_generator.h"

namespace quillet::testing {

Lines generate(std::mt19937& random) {
    Lines lines;
    auto pick = [&](int n) { return static_cast<int>(random() % static_cast<unsigned>(n)); };
    const int tables = 1 + pick(2);
    for (int t = 0; t < tables; ++t) {
        const std::string table = "T" + std::to_string(t);
        lines.push_back({"LOOKUP:", table});
        for (int e = 0; e < 3; ++e)
            lines.push_back({table + "_E" + std::to_string(e), "n" + std::to_string(e), e == 1 ? "0x10" : "1<2"});
    }
    const std::vector<std::string> flags = {"KEY_NO_DEFAULTS:", "KEY_DEPRECATED:", "KEY_NO_OPTIONS:",
                                            "KEY_ALLOW_BLANK_OPERANDS:", "KEY_SHORT_DOCUMENTATION:"};
    for (int k = 0, keywords = 2 + pick(4); k < keywords; ++k) {
        const std::string id = "K" + std::to_string(k);
        lines.push_back({"KEYWORD:", "k" + std::to_string(k), id});
        lines.push_back({"KEY_SUMMARY:", "Does", "\"a thing\""});
        lines.push_back({"KEY_DESCRIPTION:", "Long", "words", "here"});
        if (pick(2) == 0) lines.push_back({flags[static_cast<std::size_t>(pick(5))]});
        if (pick(3) == 0) lines.push_back({"KEY_OPERANDS_ARE_MODEL_NAME:", "2", "KEY_NO_NEW_MODEL:"});
        for (int o = 0, options = pick(4); o < options; ++o) {
            const std::string name = "o" + std::to_string(o);
            const std::string option = id + "_O" + std::to_string(o);
            switch (pick(5)) {
            case 0:
                lines.push_back({"OPTION:", name, option, "NQ_INT_TYPE", "n1"});
                lines.push_back({"OPT_LOOKUP:", "T0", "OPT_LOOKUP_CASE_SENSITIVE:"});
                break;
            case 1:
                lines.push_back({"OPTION:", name, option, "NQ_INT_TYPE", "5"});
                lines.push_back({"OPT_MINIMUM:", "0", "OPT_MAXIMUM:", "T0_E1"});
                break;
            case 2:
                lines.push_back({"OPTION:", name, option, "NQ_DOUBLE_TYPE", "1.5"});
                lines.push_back({"OPT_MINIMUM:", "0", "OPT_MAXIMUM:", "2.5"});
                break;
            case 3: lines.push_back({"OPTION:", name, option, "NQ_BOOL_TYPE", "on", "OPT_READONLY:"}); break;
            default: lines.push_back({"OPTION:", name, option, "NQ_STRING_TYPE", "\"x y\""}); break;
            }
            lines.push_back({"OPT_DESCRIPTION:", "Sets", "it"});
        }
    }
    return lines;
}

void mutate(Lines& lines, std::mt19937& random) {
    auto pick = [&](std::size_t n) { return static_cast<std::size_t>(random() % n); };
    const std::size_t at = pick(lines.size());
    const std::size_t other = pick(lines.size());
    std::vector<std::string>& words = lines[at];
    const std::size_t word = words.empty() ? 0 : pick(words.size());
    const std::vector<std::string> odd = {"x", "1O0", "#", "\"", "\"\"", "12abc", "NQ_INT_TYPE", "KEYWORD:",
                                          "OPTION:", "OPT_LOOKUP:", "LOOKUP:", "OPT_READONLY:", "KEY_IS_DELETE:"};
    switch (pick(9)) {
    case 0: if (!words.empty()) words.erase(words.begin() + static_cast<long>(word)); break;
    case 1: if (!words.empty()) words.insert(words.begin() + static_cast<long>(word), words[word]); break;
    case 2: if (words.size() > 1) std::swap(words[word], words[(word + 1) % words.size()]); break;
    case 3: lines.erase(lines.begin() + static_cast<long>(at)); break;
    case 4: lines.insert(lines.begin() + static_cast<long>(at), lines[other]); break;
    case 5: std::swap(lines[at], lines[other]); break;
    case 6:
        // A misspelt directive: one letter dropped.
        if (!words.empty() && words[word].size() > 2 && words[word].back() == ':')
            words[word].erase(pick(words[word].size() - 1), 1);
        break;
    case 7: words.insert(words.begin() + static_cast<long>(word), odd[pick(odd.size())]); break;
    default:
        if (!words.empty()) words.back() += pick(2) == 0 ? "\r" : std::string(250, 'w');
        break;
    }
    if (lines.empty()) lines.push_back({});
}

std::string join(const Lines& lines) {
    std::string text;
    for (const auto& words : lines) {
        for (std::size_t i = 0; i < words.size(); ++i) text += (i > 0 ? " " : "") + words[i];
        text += "\n";
    }
    return text;
}

}  // namespace quillet::testing
