#pragma once
// A file of this process under the system's temporary folder, for the readers that take a
// path: each input is written to it before it is read. It is removed when the program ends.
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <system_error>

#include <unistd.h>

namespace zarvion::fuzz {

class ScratchFile {
public:
    explicit ScratchFile(const std::string& role)
        : m_path(std::filesystem::temp_directory_path() /
                 ("zarvion-fuzz-" + role + "-" + std::to_string(::getpid()) + ".txt"))
    {
    }
    ScratchFile(const ScratchFile&) = delete;
    ScratchFile& operator=(const ScratchFile&) = delete;
    ~ScratchFile()
    {
        std::error_code ec;
        std::filesystem::remove(m_path, ec);
    }

    const std::filesystem::path& path() const { return m_path; }

    //! Replaces the file's content by text, byte for byte.
    const std::filesystem::path& write(std::string_view text) const
    {
        std::ofstream out(m_path, std::ios::binary | std::ios::trunc);
        out.write(text.data(), static_cast<std::streamsize>(text.size()));
        return m_path;
    }

private:
    std::filesystem::path m_path;
};

} // namespace zarvion::fuzz
