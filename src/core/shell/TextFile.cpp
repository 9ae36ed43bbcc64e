#include "shell/TextFile.h"

#include "shell/Error.h"

#include <fstream>
#include <sstream>

namespace zarvion::shell {

std::vector<std::string> SplitLines(std::string_view text)
{
    std::vector<std::string> lines;
    std::size_t start = 0;
    while (start < text.size()) {
        const std::size_t lf = text.find('\n', start);
        const std::size_t end = lf == std::string_view::npos ? text.size() : lf;
        std::size_t lineEnd = end;
        if (lf != std::string_view::npos && lineEnd > start && text[lineEnd - 1] == '\r') {
            --lineEnd; // CR LF
        }
        lines.emplace_back(text.substr(start, lineEnd - start));
        if (lf == std::string_view::npos) {
            break;
        }
        start = lf + 1;
    }
    return lines;
}

std::string ReadFile(const std::filesystem::path& path)
{
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        throw Error("Cannot open the file " + path.string());
    }
    std::ostringstream buffer;
    buffer << in.rdbuf();
    if (in.bad()) {
        throw Error("Cannot read the file " + path.string());
    }
    return std::move(buffer).str();
}

std::vector<std::string> ReadLines(const std::filesystem::path& path)
{
    std::error_code ec;
    if (std::filesystem::is_directory(path, ec)) {
        throw Error("Cannot read the folder " + path.string() + " as a file");
    }
    return SplitLines(ReadFile(path));
}

std::string JoinCrLf(const std::vector<std::string>& lines)
{
    std::string out;
    std::size_t total = 0;
    for (const auto& l : lines) {
        total += l.size() + 2;
    }
    out.reserve(total);
    for (const auto& l : lines) {
        out += l;
        out += "\r\n";
    }
    return out;
}

} // namespace zarvion::shell
