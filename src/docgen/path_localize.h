#pragma once

namespace quillet {

// Converts a path in place to the local form: here every backslash becomes a
// forward slash. Returns -1 without touching an empty path or a size below 2,
// 0 otherwise.
int nqfile_path_localize(char* path, int size);

}  // namespace quillet
