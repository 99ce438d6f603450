#include "nqtoken.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <new>
#include <string>
#include <vector>

namespace {

enum CharClass : unsigned char { Plain = 0, Separator, Quote, Comment, End };

using CharClasses = CharClass[256];

}  // namespace

struct nqtoken_list {
    std::string text;                  // the words, each followed by a NUL
    std::vector<std::size_t> starts;   // offset of each word in `text`
    std::vector<std::size_t> offsets;  // offset of each word in the line
    std::vector<std::size_t> ends;     // offset in the line just past each word
    // The character sets of the last refill and their classes: a reader
    // passes the same sets for every line, so the table is built once.
    std::string separators, quotes, comments;
    CharClasses classes = {};
    bool classified = false;
};

namespace {

void mark(CharClasses& classes, const char* set, CharClass charClass) {
    if (set == nullptr) return;
    for (const unsigned char* c = reinterpret_cast<const unsigned char*>(set); *c != 0; ++c) {
        if (classes[*c] == Plain) classes[*c] = charClass;
    }
}

const char* word(const nqtoken_list* list, int index) {
    if (list == nullptr || index < 0 || static_cast<std::size_t>(index) >= list->starts.size()) return nullptr;
    return list->text.c_str() + list->starts[static_cast<std::size_t>(index)];
}

// Splits `line` into `list`; false when a quoted section is left open. This
// is the reader's hot loop: the words are copied straight into a buffer
// sized for the line, as the words with their NULs never outgrow it.
bool split(nqtoken_list& list, const char* line, const CharClasses& classes) {
    const std::size_t length = std::strlen(line);
    list.text.resize(length + 1);
    char* const base = list.text.data();
    char* out = base;
    bool inWord = false;
    const char* p = line;
    auto endWord = [&] {
        if (!inWord) return;
        *out++ = '\0';
        list.ends.push_back(static_cast<std::size_t>(p - line));
    };
    auto startWord = [&] {
        if (!inWord) {
            list.starts.push_back(static_cast<std::size_t>(out - base));
            list.offsets.push_back(static_cast<std::size_t>(p - line));
        }
        inWord = true;
    };
    for (;;) {
        switch (classes[static_cast<unsigned char>(*p)]) {
        case End:
        case Comment:
            endWord();
            list.text.resize(static_cast<std::size_t>(out - base));
            return true;
        case Separator:
            endWord();
            inWord = false;
            ++p;
            break;
        case Quote: {
            const char* close = std::strchr(p + 1, *p);
            if (close == nullptr) return false;
            startWord();
            for (++p; p != close;) *out++ = *p++;
            ++p;
            break;
        }
        case Plain: {
            startWord();
            const char* end = p + 1;
            while (classes[static_cast<unsigned char>(*end)] == Plain) ++end;
            std::memcpy(out, p, static_cast<std::size_t>(end - p));
            out += end - p;
            p = end;
            break;
        }
        }
    }
}

// A null set and an empty one classify alike.
bool same(const std::string& kept, const char* set) { return kept == (set == nullptr ? "" : set); }

void clear(nqtoken_list& list) {
    list.text.clear();
    list.starts.clear();
    list.offsets.clear();
    list.ends.clear();
}

}  // namespace

extern "C" {

// Every failure is reported through a result, so the library has no messages
// of its own to send to the caller's handler.
int nqtoken_initialize(int, unsigned int) { return 0; }

int nqtoken_refill(nqtoken_list* list, const char* line, const char* separators, const char* quotes,
                   const char* comments) {
    if (list == nullptr) return 1;
    clear(*list);
    if (!list->classified || !same(list->separators, separators) || !same(list->quotes, quotes) ||
        !same(list->comments, comments)) {
        CharClasses& classes = list->classes;
        std::fill(std::begin(classes), std::end(classes), Plain);
        classes[0] = End;
        mark(classes, quotes, Quote);
        mark(classes, comments, Comment);
        mark(classes, separators, Separator);
        list->separators = separators == nullptr ? "" : separators;
        list->quotes = quotes == nullptr ? "" : quotes;
        list->comments = comments == nullptr ? "" : comments;
        list->classified = true;
    }
    if (line != nullptr && !split(*list, line, list->classes)) {
        clear(*list);
        return 1;
    }
    return 0;
}

int nqtoken_new(nqtoken_list** list, const char* line, const char* separators, const char* quotes,
                const char* comments, int, int) {
    if (list == nullptr) return 1;
    *list = nullptr;
    nqtoken_list* made = new (std::nothrow) nqtoken_list;
    if (made == nullptr) return 1;
    if (nqtoken_refill(made, line, separators, quotes, comments) != 0) {
        delete made;
        return 1;
    }
    *list = made;
    return 0;
}

int nqtoken_num(const nqtoken_list* list) { return list == nullptr ? 0 : static_cast<int>(list->starts.size()); }

const char* nqtoken_get_token(const nqtoken_list* list, int index) { return word(list, index); }

// The words lie one after another in `text`, each with its NUL.
int nqtoken_get_length(const nqtoken_list* list, int index) {
    if (word(list, index) == nullptr) return -1;
    const auto at = static_cast<std::size_t>(index);
    const std::size_t next = at + 1 < list->starts.size() ? list->starts[at + 1] : list->text.size();
    return static_cast<int>(next - list->starts[at] - 1);
}

int nqtoken_get_offset(const nqtoken_list* list, int index) {
    if (word(list, index) == nullptr) return -1;
    return static_cast<int>(list->offsets[static_cast<std::size_t>(index)]);
}

int nqtoken_get_end(const nqtoken_list* list, int index) {
    if (word(list, index) == nullptr) return -1;
    return static_cast<int>(list->ends[static_cast<std::size_t>(index)]);
}

int nqtoken_get_int(const nqtoken_list* list, int index, int* value) {
    const char* p = word(list, index);
    if (p == nullptr || value == nullptr) return 1;
    bool negative = *p == '-';
    if (*p == '+' || *p == '-') ++p;
    if (*p == 0) return 1;
    std::int64_t magnitude = 0;
    for (; *p != 0; ++p) {
        if (*p < '0' || *p > '9') return 1;
        magnitude = magnitude * 10 + (*p - '0');
        if (magnitude > 2147483648LL) return 1;
    }
    std::int64_t result = negative ? -magnitude : magnitude;
    if (result > 2147483647LL) return 1;
    *value = static_cast<int>(result);
    return 0;
}

int nqtoken_get_double(const nqtoken_list* list, int index, double* value) {
    const char* p = word(list, index);
    if (p == nullptr || value == nullptr || *p == 0) return 1;
    char* end = nullptr;
    int savedErrno = errno;
    double result = std::strtod(p, &end);
    errno = savedErrno;
    if (end == p || *end != 0) return 1;
    *value = result;
    return 0;
}

int nqtoken_delete(nqtoken_list* list) {
    delete list;
    return 0;
}

}  // extern "C"
