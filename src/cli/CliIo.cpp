#include "cli/CliIo.h"

#include <cerrno>
#include <cstring>
#include <fstream>
#include <iterator>
#include <ostream>
#include <sstream>

namespace kelvora::cli {
namespace {

bool IsStandardStream(const std::optional<std::string>& path) {
    return !path || *path == "-";
}

} // namespace

bool ReadAll(CliContext& context, const std::optional<std::string>& path, std::string& data,
             std::string& error) {
    if (IsStandardStream(path)) {
        data.assign(std::istreambuf_iterator<char>(context.in), std::istreambuf_iterator<char>());
        return true;
    }
    std::ifstream file(*path, std::ios::binary);
    if (!file) {
        error = "cannot read " + *path + ": " + std::strerror(errno);
        return false;
    }
    std::ostringstream contents;
    contents << file.rdbuf();
    data = std::move(contents).str();
    return true;
}

bool WriteAll(CliContext& context, const std::optional<std::string>& path, std::string_view data,
              std::string& error) {
    if (IsStandardStream(path)) {
        context.out.write(data.data(), static_cast<std::streamsize>(data.size()));
        context.out.flush();
        if (!context.out) {
            error = "cannot write to standard output";
            return false;
        }
        return true;
    }
    std::ofstream file(*path, std::ios::binary | std::ios::trunc);
    file.write(data.data(), static_cast<std::streamsize>(data.size()));
    file.close();
    if (!file) {
        error = "cannot write " + *path + ": " + std::strerror(errno);
        return false;
    }
    return true;
}

} // namespace kelvora::cli
