// The aliases file reader on arbitrary bytes as the aliases file, against a
// small fixed definition, followed by the reference writers when it succeeds.
//
// Input: the aliases file. An input that starts with byte 0x01 instead
// carries a VELLUM_SRC text up to its first line end (taken below this
// process's temporary root, so the read stays there however long it is),
// and the aliases file after it.
#include <algorithm>
#include <cstdlib>
#include <string>

#include "docgen/alias_reader.h"
#include "docgen/command_index_writer.h"
#include "docgen/page_writer.h"
#include "docgen/reference_format.h"
#include "fuzz_support.h"
#include "model/definition_set.h"

namespace fs = std::filesystem;
using namespace quillet;

namespace {

struct Setup {
    RunContext context = fuzz::quietContext();
    fs::path root = fuzz::processTempDir("aliases");
    Setup() { context.report.errorHandler = fuzz::quietErrorHandler(context); }
};

Setup& setup() {
    static Setup instance;
    return instance;
}

// Keywords with options and a description, so that topics have a body.
void defineKeywords(DefinitionSet& definitions) {
    for (const char* name : {"delete", "a", "help", "b"}) {
        KeywordDef* keyword = definitions.newKeyword();
        keyword->name = definitions.keep(name);
        keyword->id = definitions.keep(std::string(name) + "_KWD");
        keyword->description = definitions.keep("Does <things> & ''more''");
        OptionDef* option = definitions.newOption();
        option->name = definitions.keep("all");
        option->type = OptionType::NQ_BOOL_TYPE;
        option->defaultValue.boolValue = true;
        option->hasDefault = true;
        keyword->options.push_back(option);
        definitions.keywords.push_back(keyword);
    }
    definitions.keywords[1]->noDocumentation = true;
}

bool namesStayInside(const DefinitionSet& definitions) {
    return std::none_of(definitions.keywords.begin(), definitions.keywords.end(),
                        [](const KeywordDef* record) { return record->name.view().find('/') != std::string_view::npos; });
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Setup& fixed = setup();
    RunContext context = fixed.context;
    std::string aliasFile = fuzz::bytesOf(data, size);
    context.vellumSrc = fixed.root.string();
    if (!aliasFile.empty() && aliasFile[0] == '\x01') {
        const std::size_t lineEnd = std::min(aliasFile.find('\n'), aliasFile.size());
        context.vellumSrc = fixed.root.string() + "/" + aliasFile.substr(1, lineEnd - 1);
        aliasFile.erase(0, std::min(lineEnd + 1, aliasFile.size()));
    }
    fuzz::writeAliasTree(fixed.root, aliasFile);

    DefinitionSet definitions;
    defineKeywords(definitions);
    if (readAliasFile(definitions, context) && namesStayInside(definitions)) {
        definitions.sortForDocumentation();
        OutputFile index;
        if (!openOutputFile(index, context, reference::kIndexFile) || !writeCommandIndex(definitions, context, index))
            std::abort();
        index.close();
        writeCommandPages(definitions, context);
        fuzz::emptyDirectory(context.outputDir);
    }
    return 0;
}
