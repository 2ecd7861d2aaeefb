#include "cli/CliOutput.h"

#include "common/Printable.h"

#include <ostream>

namespace kelvora::cli {
namespace {

void WriteLine(CliContext& context, std::string_view kind, std::string_view message) {
    context.err << "kelvora-cli: " << kind << Printable(message) << '\n';
}

} // namespace

void Note(CliContext& context, std::string_view message) {
    if (!context.quiet) {
        WriteLine(context, {}, message);
    }
}

void Warn(CliContext& context, std::string_view message) {
    WriteLine(context, "warning: ", message);
}

int Fail(CliContext& context, int status, std::string_view message) {
    WriteLine(context, {}, message);
    return status;
}

} // namespace kelvora::cli
