#include "cli/CliIo.h"

#include "cli/FileErrorText.h"
#include "files/FileIo.h"

#include <cerrno>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <iterator>
#include <ostream>
#include <span>
#include <sstream>

namespace kelvora::cli {
namespace {

bool IsStandardStream(const std::optional<std::string>& path) {
    return !path || *path == "-";
}

// Interrupted is true after a stop signal: a read cut short by it is no end of input.
bool Interrupted(const CliContext& context, std::string& error) {
    if (StopRequested(context)) {
        error = "interrupted";
        return true;
    }
    return false;
}

} // namespace

bool ReadAll(CliContext& context, const std::optional<std::string>& path, std::string& data,
             std::string& error) {
    if (IsStandardStream(path)) {
        data.assign(std::istreambuf_iterator<char>(context.in), std::istreambuf_iterator<char>());
        return !Interrupted(context, error);
    }
    std::ifstream file(*path, std::ios::binary);
    if (Interrupted(context, error)) {
        return false;
    }
    if (!file) {
        error = FileFailure(FileError::ReadFailed, *path, errno);
        return false;
    }
    std::ostringstream contents;
    contents << file.rdbuf();
    data = std::move(contents).str();
    return !Interrupted(context, error);
}

bool WriteAll(CliContext& context, const std::optional<std::string>& path, std::string_view data,
              bool replace, std::string& error) {
    if (IsStandardStream(path)) {
        context.out.write(data.data(), static_cast<std::streamsize>(data.size()));
        context.out.flush();
        if (!context.out) {
            error = FileFailure(FileError::WriteFailed, "standard output", 0);
            return false;
        }
        return true;
    }
    if (!replace && PathExists(*path)) {
        error = FileErrorMessage(Failure(FileError::OutputExists, 0, 0, *path));
        return false;
    }
    TempOutputFile file;
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(data.data());
    Result<void, Errno> written = file.Create(*path);
    if (written) {
        written = file.Write(std::span(bytes, data.size()));
    }
    if (!written) {
        error = FileFailure(FileError::WriteFailed, *path, written.error());
        return false;
    }
    if (Interrupted(context, error)) {
        return false;
    }
    if (auto committed = file.Commit(replace); !committed) {
        error = FileFailure(FileError::WriteFailed, *path, committed.error());
        return false;
    }
    return true;
}

} // namespace kelvora::cli
