#include "diff/definition_loader.h"

#include <cstring>

#include "companion/diagnostic_printer.h"
#include "companion/file_text.h"
#include "docgen/alias_reader.h"
#include "reader/definition_reader.h"

namespace quillet::diff {

namespace {

// Keeps the first error a read reports, and what the aliases reader shows
// of the word it could not find.
class FirstError {
public:
    explicit FirstError(std::string file) { diagnostic_.file = std::move(file); }

    void listen(Reporter& report) {
        report.listen([this](const Reporter::Message& message) {
            if (message.channel == Channel::Error && !seen_) {
                seen_ = true;
                diagnostic_.line = message.position.line;
                diagnostic_.column = message.position.column;
                diagnostic_.message = companion::oneLine(message.text);
            } else if (message.channel == Channel::StandardOutput && seen_) {
                diagnostic_.message += companion::oneLine(message.text);
            }
        });
    }
    Diagnostic take() { return std::move(diagnostic_); }

private:
    Diagnostic diagnostic_;
    bool seen_ = false;
};

Diagnostic cannotRead(const std::string& path, int error) {
    return Diagnostic{.file = path, .message = std::string("cannot read the file: ") + std::strerror(error)};
}

}  // namespace

std::optional<Diagnostic> loadDefinition(const std::string& path, DefinitionSet& definitions) {
    companion::InputFile file;
    int reason = 0;
    if (!file.open(path, reason)) return cannotRead(path, reason);
    LineReader input(file.fd());
    return readDefinition(input, path, definitions);
}

std::optional<Diagnostic> readDefinition(LineReader& input, const std::string& file, DefinitionSet& definitions) {
    Reporter report;
    FirstError error(file);
    error.listen(report);
    DefinitionReader reader(definitions, report);
    if (reader.read(input)) return std::nullopt;
    return error.take();
}

std::optional<Diagnostic> loadAliases(const std::string& path, DefinitionSet& definitions) {
    // Checked here so that the message says why; the reader opens it again.
    companion::InputFile file;
    int reason = 0;
    if (!file.open(path, reason)) return cannotRead(path, reason);
    Reporter report;
    FirstError error(path);
    error.listen(report);
    if (readAliasFileAt(definitions, report, path.c_str())) return std::nullopt;
    return error.take();
}

}  // namespace quillet::diff
