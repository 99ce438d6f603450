#include "nqtoken.h"

#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <new>
#include <string>
#include <vector>

struct nqtoken_list {
    std::string text;                 // the words, each followed by a NUL
    std::vector<std::size_t> starts;  // offset of each word in `text`
};

namespace {

enum CharClass : unsigned char { Plain = 0, Separator = 1, Quote = 2, Comment = 3 };

void mark(CharClass (&classes)[256], const char* set, CharClass charClass) {
    if (set == nullptr) return;
    for (const unsigned char* c = reinterpret_cast<const unsigned char*>(set); *c != 0; ++c) {
        if (classes[*c] == Plain) classes[*c] = charClass;
    }
}

const char* word(const nqtoken_list* list, int index) {
    if (list == nullptr || index < 0 || static_cast<std::size_t>(index) >= list->starts.size()) return nullptr;
    return list->text.c_str() + list->starts[static_cast<std::size_t>(index)];
}

// Splits `line` into `list`; false when a quoted section is left open.
bool split(nqtoken_list& list, const char* line, const CharClass (&classes)[256]) {
    bool inWord = false;
    auto openWord = [&] {
        if (!inWord) list.starts.push_back(list.text.size());
        inWord = true;
    };
    auto closeWord = [&] {
        if (inWord) list.text.push_back('\0');
        inWord = false;
    };
    for (const char* p = line; *p != 0; ++p) {
        switch (classes[static_cast<unsigned char>(*p)]) {
        case Separator:
            closeWord();
            break;
        case Comment:
            closeWord();
            return true;
        case Quote: {
            const char* close = p + 1;
            while (*close != 0 && *close != *p) ++close;
            if (*close == 0) return false;
            openWord();
            list.text.append(p + 1, close);
            p = close;
            break;
        }
        case Plain:
            openWord();
            list.text.push_back(*p);
            break;
        }
    }
    closeWord();
    return true;
}

}  // namespace

extern "C" {

// Every failure is reported through a result, so the library has no messages
// of its own to send to the caller's handler.
int nqtoken_initialize(int, unsigned int) { return 0; }

int nqtoken_new(nqtoken_list** list, const char* line, const char* separators, const char* quotes,
                const char* comments, int, int) {
    if (list == nullptr) return 1;
    *list = nullptr;
    CharClass classes[256] = {};
    mark(classes, quotes, Quote);
    mark(classes, comments, Comment);
    mark(classes, separators, Separator);
    auto* made = new (std::nothrow) nqtoken_list;
    if (made == nullptr) return 1;
    if (line != nullptr && !split(*made, line, classes)) {
        delete made;
        return 1;
    }
    *list = made;
    return 0;
}

int nqtoken_num(const nqtoken_list* list) { return list == nullptr ? 0 : static_cast<int>(list->starts.size()); }

const char* nqtoken_get_token(const nqtoken_list* list, int index) { return word(list, index); }

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
