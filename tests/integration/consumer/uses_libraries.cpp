// Links the installed error and tokenizer libraries and checks a result of each.
#include <iostream>
#include <string>

#include "nqerr.h"
#include "nqerr_capture.h"
#include "nqtoken.h"

int main() {
    std::string captured;
    {
        vellum::nqlibs::CaptureNQErr capture(NQERR_DEFAULT_HANDLER);
        nqerr_throw(NQERR_DEFAULT_HANDLER, NQERR_FATAL, "captured %d\n", 7);
        captured = capture.getMessages();
    }
    nqtoken_list* words = nullptr;
    if (nqtoken_new(&words, "alpha \"beta gamma\" # comment", " ", "\"", "#", 0, 0) != 0) return 1;
    const int count = nqtoken_num(words);
    const std::string second = nqtoken_get_token(words, 1);
    nqtoken_delete(words);
    std::cout << captured << count << " words, second '" << second << "'\n";
    return captured == "FATAL captured 7\n" && count == 2 && second == "beta gamma" ? 0 : 1;
}
