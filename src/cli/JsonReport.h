#pragma once

#include "files/ContainerInspect.h"
#include "files/FileError.h"

#include <string>
#include <string_view>
#include <vector>

namespace kelvora::cli {

// What --json prints, one JSON object on one line, for scripts.

// JsonString quotes UTF-8 text as a JSON string: quotes, backslashes and control characters
// escaped, everything else as it is.
[[nodiscard]] std::string JsonString(std::string_view utf8);

// ListJson: {"files":[{"name":"a/b.txt","size":12},...]}
[[nodiscard]] std::string ListJson(const std::vector<ContainerEntry>& entries);

// TestJson: {"ok":true,"files":["a/b.txt",...]}
[[nodiscard]] std::string TestJson(const std::vector<std::string>& names);

// FailureJson: {"ok":false,"error":"<the error line>","file":N,"name":"...","chunk":N}, file
// counting from 1; file, name and chunk only where the failure names them.
[[nodiscard]] std::string FailureJson(const FileJobResult& result);

} // namespace kelvora::cli
