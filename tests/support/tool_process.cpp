#include "tool_process.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <stdexcept>

#ifndef QUILLET_BINARY
#error "QUILLET_BINARY must name the executable under test"
#endif

namespace quillet::testing {

std::string readFile(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    if (!in) throw std::runtime_error("cannot read " + path.string());
    std::ostringstream bytes;
    bytes << in.rdbuf();
    return bytes.str();
}

void writeFile(const std::filesystem::path& path, const std::string& bytes) {
    std::filesystem::create_directories(path.parent_path());
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out << bytes;
    if (!out) throw std::runtime_error("cannot write " + path.string());
}

ScratchDir::ScratchDir() {
    std::string pattern = (std::filesystem::temp_directory_path() / "quillet-test-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("mkdtemp failed");
    path_ = pattern;
}

ScratchDir::~ScratchDir() {
    std::error_code ignored;
    std::filesystem::permissions(path_, std::filesystem::perms::owner_all, std::filesystem::perm_options::add, ignored);
    std::filesystem::remove_all(path_, ignored);
}

ProcessResult runQuilletProcess(const ProcessRequest& request) {
    ScratchDir io;
    const auto inPath = io.path() / "stdin";
    const auto outPath = io.path() / "stdout";
    const auto errPath = io.path() / "stderr";
    writeFile(inPath, request.input);

    pid_t child = fork();
    if (child < 0) throw std::runtime_error("fork failed");
    if (child == 0) {
        for (const auto& [name, value] : request.environment) {
            if (value) setenv(name.c_str(), value->c_str(), 1);
            else unsetenv(name.c_str());
        }
        int in = open(inPath.c_str(), O_RDONLY);
        int out = open(outPath.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
        int err = open(errPath.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
        if (in < 0 || out < 0 || err < 0 || dup2(in, 0) < 0 || dup2(out, 1) < 0 || dup2(err, 2) < 0 ||
            chdir(request.workDir.c_str()) != 0)
            _exit(127);
        std::vector<char*> argv;
        std::string program = request.program.empty() ? QUILLET_BINARY : request.program;
        argv.push_back(program.data());
        std::vector<std::string> arguments = request.arguments;
        for (auto& argument : arguments) argv.push_back(argument.data());
        argv.push_back(nullptr);
        execv(program.c_str(), argv.data());
        _exit(127);
    }
    int wstatus = 0;
    if (waitpid(child, &wstatus, 0) != child) throw std::runtime_error("waitpid failed");
    ProcessResult result;
    result.status = WIFEXITED(wstatus) ? WEXITSTATUS(wstatus) : -1;
    result.out = readFile(outPath);
    result.err = readFile(errPath);
    return result;
}

}  // namespace quillet::testing
