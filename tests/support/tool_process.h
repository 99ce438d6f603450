#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace quillet::testing {

struct ProcessResult {
    int status = -1;  // exit status, or -1 when the process did not exit normally
    std::string out;
    std::string err;
};

struct ProcessRequest {
    std::string program;                       // empty: the quillet executable
    std::vector<std::string> arguments;        // after the program name
    std::string input;                         // written to standard input
    std::filesystem::path workDir;             // must exist
    std::map<std::string, std::optional<std::string>> environment;  // nullopt unsets
};

// Runs the quillet executable built with the tests (or another program) as a
// real process.
ProcessResult runQuilletProcess(const ProcessRequest& request);

std::string readFile(const std::filesystem::path& path);
void writeFile(const std::filesystem::path& path, const std::string& bytes);

// A fresh empty directory below the system's temporary directory, removed
// when the object goes away.
class ScratchDir {
public:
    ScratchDir();
    ~ScratchDir();
    ScratchDir(const ScratchDir&) = delete;
    ScratchDir& operator=(const ScratchDir&) = delete;
    const std::filesystem::path& path() const { return path_; }

private:
    std::filesystem::path path_;
};

}  // namespace quillet::testing
