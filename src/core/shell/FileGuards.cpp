#include "shell/FileGuards.h"

#include "shell/TextFormat.h"

#include <array>
#include <unistd.h>
#include <sys/stat.h>

namespace zarvion::shell {

void SplitPath(std::string_view path, std::string& name, std::string& extension,
               std::size_t& position)
{
    const std::string trimmed = Trim(path);
    const std::size_t sep = trimmed.find_last_of("/\\");
    position = sep == std::string::npos ? 0 : sep + 1;
    name = sep == std::string::npos ? trimmed : trimmed.substr(sep + 1);
    const std::size_t dot = trimmed.rfind('.');
    extension = dot == std::string::npos ? trimmed : trimmed.substr(dot + 1);
}

bool IsRefusedExtension(std::string_view extension)
{
    static constexpr std::array<std::string_view, 10> Refused = {
        "exe", "pdb", "gif", "msi", "dll", "pdf", "mdb", "bmp", "wmf", "doc"};
    const std::string lower = LCase(extension);
    for (auto r : Refused) {
        if (lower == r) {
            return true;
        }
    }
    return false;
}

std::string ReadOnlyMessage(std::string_view path)
{
    return "File " + std::string(path) +
           " is read-only, remove this attribute. The program has been terminated.";
}

namespace {

//! Whether the running user may write the file according to its mode bits. The superuser's
//! override is deliberately not taken into account, so the state is the same for everyone.
bool writableByUser(const struct stat& st)
{
    if (st.st_uid == ::geteuid()) {
        return (st.st_mode & S_IWUSR) != 0;
    }
    if (st.st_gid == ::getegid()) {
        return (st.st_mode & S_IWGRP) != 0;
    }
    return (st.st_mode & S_IWOTH) != 0;
}

} // namespace

ReadOnlyState GetReadOnlyState(const std::filesystem::path& path, bool clear)
{
    ReadOnlyState result;
    if (path.empty()) {
        return result;
    }
    struct stat st {};
    if (::stat(path.c_str(), &st) != 0) {
        return result; // a missing file: the open that follows reports it
    }
    if (writableByUser(st)) {
        result.state = 0;
        return result;
    }
    result.state = 1;
    if (!clear) {
        result.message = ReadOnlyMessage(path.string());
        return result;
    }
    std::error_code ec;
    std::filesystem::permissions(path, std::filesystem::perms::owner_write,
                                 std::filesystem::perm_options::add, ec);
    struct stat after {};
    if (!ec && ::stat(path.c_str(), &after) == 0 && writableByUser(after)) {
        result.state = 32;
    } else {
        result.message = ReadOnlyMessage(path.string()); // could not be cleared
    }
    return result;
}

void DeleteFile(const std::filesystem::path& path)
{
    std::error_code ec;
    if (!std::filesystem::is_directory(path, ec)) {
        std::filesystem::remove(path, ec);
    }
}

std::string OpenDialogFilter(int filterNumber)
{
    switch (filterNumber) {
    case 1:
        return "All Files (*.*)|*.*|Windows Text (*.txt)|*.txt|Zarvion Charts (*.pg)|*.pg";
    case 6:
        return "Windows Text (*.txt)|*.txt";
    default:
        return {};
    }
}

std::string SaveDialogFilter(int filterNumber)
{
    switch (filterNumber) {
    case 2:
        return "All Files (*.*)|*.*|Windows Text (*.txt)|*.txt";
    case 4:
        return "Zarvion Charts (*.pg)|*.pg";
    case 5:
        return "Windows Bitmap (*.bmp)|*.bmp|Windows MetaFile (*.wmf)|*.wmf";
    case 6:
        return "Windows Text (*.txt)|*.txt";
    default:
        return {};
    }
}

std::vector<DialogFilterEntry> SplitDialogFilter(std::string_view filter)
{
    std::vector<std::string> parts;
    std::size_t start = 0;
    while (start <= filter.size()) {
        const std::size_t bar = filter.find('|', start);
        const std::size_t end = bar == std::string_view::npos ? filter.size() : bar;
        parts.emplace_back(filter.substr(start, end - start));
        if (bar == std::string_view::npos) {
            break;
        }
        start = bar + 1;
    }
    std::vector<DialogFilterEntry> entries;
    for (std::size_t k = 0; k + 1 < parts.size(); k += 2) {
        entries.emplace_back(parts[k], parts[k + 1]);
    }
    return entries;
}

std::string FilterPattern(std::string_view filter, int filterIndex)
{
    const auto entries = SplitDialogFilter(filter);
    if (filterIndex < 1 || filterIndex > static_cast<int>(entries.size())) {
        return "*.*";
    }
    const std::string& pattern = entries[static_cast<std::size_t>(filterIndex - 1)].second;
    return pattern.substr(0, pattern.find(';'));
}

OpenDecision DecideOpen(const std::filesystem::path& path)
{
    OpenDecision decision;
    const std::string text = path.string();
    std::string name;
    std::size_t position = 0;
    SplitPath(text, name, decision.extension, position);
    decision.extension = LCase(decision.extension);
    if (IsRefusedExtension(decision.extension)) {
        decision.kind = OpenKind::Refused;
        decision.refusal = {"The specified Path/File name " + text +
                                " cannot be accessed or is invalid.",
                            StyleWarning, DefaultTitle};
        return decision;
    }
    const ReadOnlyState ro = GetReadOnlyState(path, false);
    if (ro.state == 1) {
        decision.readOnlyNotice = {"The file " + text + " is read-only.", StyleInformation,
                                   DefaultTitle};
    }
    decision.kind = decision.extension == "pg" ? OpenKind::Chart : OpenKind::ByContent;
    return decision;
}

Message ChartOpenFailedMessage(std::string_view path)
{
    return {"The file " + std::string(path) +
                " cannot be opened. Make sure you open a chart file and the file name is correct.",
            StyleWarning, DefaultTitle};
}

} // namespace zarvion::shell
