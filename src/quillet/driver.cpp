#include "quillet/driver.h"


#include "codegen/id_definitions_writer.h"
#include "codegen/id_header_writer.h"
#include "codegen/init_source_writer.h"
#include "output/output_file.h"
#include "docgen/alias_reader.h"
#include "docgen/command_index_writer.h"
#include "docgen/page_writer.h"
#include "docgen/reference_format.h"
#include "model/definition_set.h"
#include "nqerr.h"
#include "nqtoken.h"
#include "reader/definition_reader.h"

namespace quillet {

namespace {

constexpr int kFailure = 255;

// Releases the error library when the run ends, so that a process may run
// the tool again (tests, benchmarks, fuzzers).
struct ErrorLibrarySession {
    ~ErrorLibrarySession() { nqerr_terminate(); }
};

int fatal(const RunContext& context, const char* message) {
    context.report.error("%s", message);
    return kFailure;
}

int startUp(RunContext& context) {
    if (nqerr_initialize() != 1) {
        context.report.standardError("Problem initializing NQERR \n");
        return kFailure;
    }
    if (nqerr_new(&context.report.debugHandler) != 1) {
        context.report.standardError("Problem creating NQERR handler for debug\n");
        return kFailure;
    }
    if (nqerr_new(&context.report.errorHandler) != 1) {
        context.report.standardError("Problem creating NQERR handler for errors\n");
        return kFailure;
    }
    if (nqerr_level(context.report.errorHandler, NQERR_DEBUG) != 1) {
        context.report.standardError("Problem setting level for error handler\n");
        return kFailure;
    }
    // The one start-up failure that does not end the run.
    if (nqerr_file(context.report.errorHandler, context.report.err) != 1)
        context.report.standardError("Problem setting file for error handler\n");
    if (nqerr_level(context.report.debugHandler, NQERR_OFF) != 1)
        return fatal(context, "Error setting level for debug error handler ");
    if (nqtoken_initialize(context.report.errorHandler, NQERR_OFF) != 0)
        return fatal(context, "Could not initialize the NQTOKEN libray \n");
    return 0;
}

int readDefinition(DefinitionSet& definitions, RunContext& context, LineReader& input) {
    DefinitionReader reader(definitions, context.report, input.sizeHint());
    return reader.read(input) ? 0 : kFailure;
}

int writeSources(const DefinitionSet& definitions, const RunContext& context) {
    // Each file is closed when the next is opened; one that failed keeps what
    // was written, and the files after it are not touched.
    OutputFile out;
    if (!openOutputFile(out, context, kIdHeaderFile) || !writeIdHeader(definitions, context, out))
        return fatal(context, "Error with writing ID file\n");
    if (!openOutputFile(out, context, kIdDefinitionsFile) || !writeIdDefinitions(definitions, context, out) ||
        !openOutputFile(out, context, kInitSourceFile) || !writeInitSource(definitions, context, out))
        return fatal(context, "Error with writing code file\n");
    return 0;
}

int writeReference(DefinitionSet& definitions, const RunContext& context) {
    if (!readAliasFile(definitions, context)) return fatal(context, "Error processing alias file\n");
    definitions.sortForDocumentation();
    OutputFile index;
    if (!openOutputFile(index, context, reference::kIndexFile) || !writeCommandIndex(definitions, context, index))
        return fatal(context, "Error writing command index\n");
    index.close();
    if (!writeCommandPages(definitions, context)) return fatal(context, "Error writing command html\n");
    return 0;
}

}  // namespace

int runQuillet(const std::vector<std::string>& arguments, LineReader& definition, RunContext context) {
    bool htmlMode = false;
    for (const std::string& argument : arguments) {
        if (argument == "-h") {
            // The unclosed bracket and trailing blank are the usage text as
            // users' scripts know it.
            context.report.standardError("usage: quillet [-h] ");
            context.report.standardError("[-html] <infile \n");
            return kFailure;
        }
        if (argument == "-html") htmlMode = true;
        else context.report.standardOutput("quillet: Ignoring unrecognized argument:" + argument + "\n");
    }

    ErrorLibrarySession errorLibrary;
    if (int status = startUp(context); status != 0) return status;

    DefinitionSet definitions;
    if (int status = readDefinition(definitions, context, definition); status != 0) return status;
    return htmlMode ? writeReference(definitions, context) : writeSources(definitions, context);
}

}  // namespace quillet
