#include "docgen/path_localize.h"

namespace quillet {

int nqfile_path_localize(char* path, int size) {
    if (size < 2 || path[0] == '\0') return -1;
    for (int i = 0; i < size && path[i] != '\0'; ++i)
        if (path[i] == '\\') path[i] = '/';
    return 0;
}

}  // namespace quillet
