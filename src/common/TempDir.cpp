#include "common/TempDir.h"

#include <cstdlib>
#include <filesystem>
#include <system_error>

namespace kelvora {

std::string TempDirFrom(const char* temp, const char* tmp) {
    std::string dir = "/tmp";
    if (temp != nullptr && *temp != '\0') {
        dir = temp;
    } else if (tmp != nullptr && *tmp != '\0') {
        dir = tmp;
    }
    if (dir.back() != '/') {
        dir.push_back('/');
    }
    return dir;
}

const std::string& TempDir() {
    static const std::string dir = [] {
        std::string found = TempDirFrom(std::getenv("TEMP"), std::getenv("TMP"));
        std::error_code ignored;
        std::filesystem::create_directories(found, ignored);
        return found;
    }();
    return dir;
}

} // namespace kelvora
