#include "shell/AtomicFile.h"

#include "shell/Error.h"
#include "shell/FileGuards.h"

#include <cerrno>
#include <cstring>
#include <string>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace zarvion::shell {

namespace {

std::function<void()>& atomicWriteHook()
{
    static std::function<void()> hook;
    return hook;
}

//! Owns a temporary file: closes it and removes it unless released.
class TempFile {
public:
    explicit TempFile(const std::filesystem::path& target)
    {
        std::filesystem::path folder = target.parent_path();
        if (folder.empty()) {
            folder = ".";
        }
        std::string pattern = (folder / ("." + target.filename().string() + ".XXXXXX")).string();
        m_fd = ::mkstemp(pattern.data());
        if (m_fd < 0) {
            throw Error("Cannot create a temporary file beside " + target.string() + ": " +
                        std::strerror(errno));
        }
        m_path = pattern;
    }
    TempFile(const TempFile&) = delete;
    TempFile& operator=(const TempFile&) = delete;
    ~TempFile()
    {
        closeFd();
        if (!m_released) {
            std::error_code ec;
            std::filesystem::remove(m_path, ec);
        }
    }
    int fd() const { return m_fd; }
    const std::filesystem::path& path() const { return m_path; }
    //! Closes the descriptor once; returns the result of close().
    int closeFd()
    {
        int rc = 0;
        if (m_fd >= 0) {
            rc = ::close(m_fd);
            m_fd = -1;
        }
        return rc;
    }
    void release() { m_released = true; }

private:
    int m_fd = -1;
    std::filesystem::path m_path;
    bool m_released = false;
};

void fail(const std::filesystem::path& target, const char* what)
{
    throw Error(std::string("Cannot write the file ") + target.string() + ": " + what + " (" +
                std::strerror(errno) + ")");
}

} // namespace

void WriteFileAtomically(const std::filesystem::path& target, std::string_view content)
{
    std::error_code ec;
    if (std::filesystem::is_directory(target, ec)) {
        throw Error("Cannot write the file " + target.string() + ": it is a folder");
    }
    if (GetReadOnlyState(target, false).state == 1) {
        // Replacing by rename would get around the read-only state; a plain write could not.
        throw Error("Cannot write the file " + target.string() + ": it is read-only");
    }
    TempFile temp(target);

    // A rewritten file keeps the permissions it had; a new one gets the usual 0666 & ~umask.
    struct stat st {};
    if (::stat(target.c_str(), &st) == 0) {
        ::fchmod(temp.fd(), st.st_mode & 07777);
    } else {
        const mode_t mask = ::umask(0);
        ::umask(mask);
        ::fchmod(temp.fd(), 0666 & ~mask);
    }

    const char* data = content.data();
    std::size_t left = content.size();
    while (left > 0) {
        const ssize_t n = ::write(temp.fd(), data, left);
        if (n < 0) {
            if (errno == EINTR) {
                continue;
            }
            fail(target, "write failed");
        }
        data += n;
        left -= static_cast<std::size_t>(n);
    }
    if (::fsync(temp.fd()) != 0) {
        fail(target, "flush failed");
    }
    if (temp.closeFd() != 0) {
        fail(target, "close failed");
    }

    if (auto& hook = atomicWriteHook()) {
        hook(); // may throw: the temporary file is removed, the target untouched
    }
    if (::rename(temp.path().c_str(), target.c_str()) != 0) {
        fail(target, "rename failed");
    }
    temp.release();

    // Make the rename itself durable.
    std::filesystem::path folder = target.parent_path();
    if (folder.empty()) {
        folder = ".";
    }
    const int dirFd = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY);
    if (dirFd >= 0) {
        ::fsync(dirFd);
        ::close(dirFd);
    }
}

void SetAtomicWriteHookForTesting(std::function<void()> hook)
{
    atomicWriteHook() = std::move(hook);
}

} // namespace zarvion::shell
