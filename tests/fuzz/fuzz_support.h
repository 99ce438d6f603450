#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>

#include "model/run_context.h"

namespace quillet::fuzz {

// A context whose output and error streams go to /dev/null (opened once) and
// whose output directory is a fresh directory of this process, removed at
// exit. Handlers are left for the caller (the driver makes its own).
RunContext quietContext();

// A fresh directory below the system's temporary directory, removed at exit.
std::filesystem::path processTempDir(const char* purpose);

// Removes everything a run left in `dir`, keeping the directory.
void emptyDirectory(const std::filesystem::path& dir);

// Lays out <root>/orrery-src/data/res/alias.cmd with these bytes; returns root.
std::filesystem::path writeAliasTree(const std::filesystem::path& root, const std::string& aliasFile);

// Creates an error handler that prints everything to /dev/null, as the
// driver's would to standard error, for targets that bypass the driver.
int quietErrorHandler(const RunContext& context);

inline std::string bytesOf(const std::uint8_t* data, std::size_t size) {
    return std::string(reinterpret_cast<const char*>(data), size);
}

}  // namespace quillet::fuzz
