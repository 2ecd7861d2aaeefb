#pragma once

#include "ProcessRunner.h"
#include "cli/Commands.h"

#include <map>
#include <sstream>
#include <string>
#include <vector>

namespace kelvora::testing {

// RunInProcess runs a kelvora-cli command line inside the test with string streams and an
// environment made of env alone, so that no variable of the test's own environment counts.
inline ProcessResult RunInProcess(const std::vector<std::string>& args,
                                  const std::string& input = {},
                                  const std::map<std::string, std::string>& env = {}) {
    std::istringstream in(input);
    std::ostringstream out;
    std::ostringstream err;
    cli::CliContext context{in, out, err, [&env](const char* name) -> std::optional<std::string> {
                                const auto it = env.find(name);
                                return it == env.end() ? std::nullopt
                                                       : std::optional<std::string>(it->second);
                            }};
    ProcessResult result;
    result.status = cli::RunCli(context, args);
    result.out = out.str();
    result.err = err.str();
    return result;
}

} // namespace kelvora::testing
