#include "cli/JsonReport.h"

#include "cli/FileErrorText.h"

#include <cstdio>

namespace kelvora::cli {

std::string JsonString(std::string_view utf8) {
    std::string quoted = "\"";
    for (const char c : utf8) {
        const auto byte = static_cast<unsigned char>(c);
        if (c == '"' || c == '\\') {
            quoted += '\\';
            quoted += c;
        } else if (c == '\n') {
            quoted += "\\n";
        } else if (c == '\t') {
            quoted += "\\t";
        } else if (byte < 0x20 || byte == 0x7F) {
            char escaped[8];
            std::snprintf(escaped, sizeof escaped, "\\u%04x", byte);
            quoted += escaped;
        } else {
            quoted += c;
        }
    }
    quoted += '"';
    return quoted;
}

std::string ListJson(const std::vector<ContainerEntry>& entries) {
    std::string json = "{\"files\":[";
    for (std::size_t i = 0; i < entries.size(); ++i) {
        json += (i == 0 ? "{\"name\":" : ",{\"name\":") + JsonString(entries[i].name) +
                ",\"size\":" + std::to_string(entries[i].plainBytes) + "}";
    }
    return json + "]}\n";
}

std::string TestJson(const std::vector<std::string>& names) {
    std::string json = "{\"ok\":true,\"files\":[";
    for (std::size_t i = 0; i < names.size(); ++i) {
        json += (i == 0 ? "" : ",") + JsonString(names[i]);
    }
    return json + "]}\n";
}

std::string FailureJson(const FileJobResult& result) {
    std::string json = "{\"ok\":false,\"error\":" + JsonString(FileErrorMessage(result));
    if (result.chunk > 0) {
        json += ",\"file\":" + std::to_string(result.fileIndex + 1);
        if (!result.name.empty()) {
            json += ",\"name\":" + JsonString(result.name);
        }
        json += ",\"chunk\":" + std::to_string(result.chunk);
    }
    return json + "}\n";
}

} // namespace kelvora::cli
