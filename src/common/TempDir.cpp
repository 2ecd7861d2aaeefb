#include "common/TempDir.h"

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

} // namespace kelvora
