#pragma once
// A temporary folder for one test, removed with everything in it at the end.

#include <cstdlib>
#include <filesystem>
#include <iterator>
#include <stdexcept>
#include <string>

class TempFolder {
public:
    TempFolder()
    {
        std::string pattern =
            (std::filesystem::temp_directory_path() / "zarv-test-XXXXXX").string();
        if (::mkdtemp(pattern.data()) == nullptr) {
            throw std::runtime_error("cannot create a temporary folder");
        }
        m_path = pattern;
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;
    ~TempFolder()
    {
        namespace fs = std::filesystem;
        std::error_code ec;
        // Give back write permission so that read-only test files can be removed.
        for (auto& e : fs::recursive_directory_iterator(m_path, ec)) {
            fs::permissions(e.path(), fs::perms::owner_all, fs::perm_options::add, ec);
        }
        fs::remove_all(m_path, ec);
    }
    const std::filesystem::path& path() const { return m_path; }
    std::size_t entryCount() const
    {
        return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(m_path),
                                                      std::filesystem::directory_iterator()));
    }

private:
    std::filesystem::path m_path;
};
