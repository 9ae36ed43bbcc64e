#pragma once
// Paths of the hand-written fixtures and scratch files for the solver-file tests.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <unistd.h>

namespace zarvion::testing {

inline std::filesystem::path dataFile(const std::string& name)
{
    return std::filesystem::path(ZARVION_SOURCE_DIR) / "tests" / "data" / name;
}

inline std::string readBytes(const std::filesystem::path& p)
{
    std::ifstream in(p, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), {});
}

//! The file split at CR LF or LF, without line ends.
inline std::vector<std::string> readLines(const std::filesystem::path& p)
{
    std::vector<std::string> lines;
    std::ifstream in(p, std::ios::binary);
    for (std::string line; std::getline(in, line);) {
        if (!line.empty() && line.back() == '\r') line.pop_back();
        lines.push_back(line);
    }
    return lines;
}

inline std::string joinCrLf(const std::vector<std::string>& lines)
{
    std::string out;
    for (const auto& l : lines) out += l + "\r\n";
    return out;
}

//! Expects values[slot] for each (slot, value) to 4 units in the last place: integer and real
//! slots of records alike.
template <class Array>
void expectSlots(const Array& values, std::initializer_list<std::pair<int, double>> want)
{
    for (const auto& [slot, value] : want) EXPECT_DOUBLE_EQ(values[slot], value) << "slot " << slot;
}

//! A fresh folder under the system temp folder, removed when the object goes.
class ScratchDir {
public:
    explicit ScratchDir(const std::string& tag)
        : m_path(std::filesystem::temp_directory_path() /
                 ("zarvion-" + tag + "-" + std::to_string(::getpid()) + "-" +
                  std::to_string(s_counter++)))
    {
        std::filesystem::remove_all(m_path);
        std::filesystem::create_directories(m_path);
    }
    ~ScratchDir() { std::filesystem::remove_all(m_path); }
    const std::filesystem::path& path() const { return m_path; }

    //! Writes bytes to a file in the folder and returns its path.
    std::filesystem::path write(const std::string& name, const std::string& bytes) const
    {
        std::ofstream(m_path / name, std::ios::binary) << bytes;
        return m_path / name;
    }

    //! A copy of a fixture with line `lineNo` (1-based) replaced by `text`.
    std::filesystem::path edited(const std::string& source, int lineNo, const std::string& text,
                                 const std::string& name = "edited.txt") const
    {
        auto lines = readLines(dataFile(source));
        lines.at(lineNo - 1) = text;
        return write(name, joinCrLf(lines));
    }

private:
    inline static int s_counter = 0;
    std::filesystem::path m_path;
};

} // namespace zarvion::testing
