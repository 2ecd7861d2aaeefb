#pragma once

#include <filesystem>
#include <fstream>
#include <string>
#include <system_error>

namespace kelvora::testing {

// TempFolder is a fresh folder below the system's temporary folder, removed with all its
// contents when the test ends.
class TempFolder {
public:
    TempFolder() {
        std::string pattern = (std::filesystem::temp_directory_path() / "kelvora-test-XXXXXX");
        m_path = mkdtemp(pattern.data());
    }
    ~TempFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    const std::filesystem::path& path() const { return m_path; }

    // Write creates a file below the folder (and its parent folders) holding contents.
    std::filesystem::path Write(const std::string& relative, const std::string& contents) const {
        const std::filesystem::path file = m_path / relative;
        std::filesystem::create_directories(file.parent_path());
        std::ofstream(file, std::ios::binary) << contents;
        return file;
    }

    // Read returns the contents of a file.
    static std::string Read(const std::filesystem::path& file) {
        std::ifstream in(file, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
    }

private:
    std::filesystem::path m_path;
};

} // namespace kelvora::testing
