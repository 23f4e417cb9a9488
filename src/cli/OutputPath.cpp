#include "cli/OutputPath.h"

#include <fcntl.h>
#include <limits.h>
#include <sys/stat.h>
#include <unistd.h>

#include <CLI/CLI.hpp>

#include <cerrno>
#include <cstring>
#include <optional>
#include <random>
#include <sstream>

#include "cli/RemovedOnSignal.h"
#include "formats/SafeText.h"

namespace pemlo::cli {

namespace fs = std::filesystem;

namespace {

std::string Why(int error) { return error != 0 ? std::strerror(error) : "the write failed"; }

std::string KindOf(const fs::file_status& status)
{
    switch (status.type()) {
    case fs::file_type::directory: return "a directory";
    case fs::file_type::block:
    case fs::file_type::character: return "a device";
    case fs::file_type::fifo: return "a pipe";
    case fs::file_type::socket: return "a socket";
    default: return "not a regular file";
    }
}

}  // namespace

std::string OutputPathRefusal(const fs::path& target, const std::vector<std::string>& inputs)
{
    std::error_code ec;
    const fs::file_status status = fs::status(target, ec);  // through a symbolic link to what it names
    if (!fs::exists(status)) return {};
    const std::string name = formats::TerminalField(target.string());
    if (!fs::is_regular_file(status)) return name + " is " + KindOf(status) + "; only a regular file is written over";
    for (const std::string& input : inputs)
        if (fs::equivalent(target, input, ec))
            return name + " is the input " + formats::TerminalField(input) + "; it is not written over";
    return {};
}

void CheckOutputPath(const std::string& option, const fs::path& target, const std::vector<std::string>& inputs)
{
    if (const std::string refusal = OutputPathRefusal(target, inputs); !refusal.empty())
        throw CLI::ValidationError(option, refusal);
}

namespace {

// The borrowed part of the target's name keeps the hidden name within NAME_MAX: a
// target of 255 bytes may be written too.
constexpr std::size_t Borrowed = NAME_MAX - 16;

// A hidden name beside the target that nobody can guess: ".NAME.xxxxxxxxxxxx".
fs::path HiddenName(const fs::path& target, std::random_device& random)
{
    constexpr char Hex[] = "0123456789abcdef";
    std::string name = "." + std::string(formats::CutText(target.filename().string(), Borrowed)) + ".";
    for (int i = 0; i < 3; ++i)
        for (unsigned bits = random(), k = 0; k < 4; ++k, bits >>= 4) name += Hex[bits & 15];
    return target.parent_path() / name;
}

// The file being written beside its target, created new (never through whatever
// stands at its name: a planted link or file makes another name be tried), removed
// unless it was renamed into place, and removed too should a signal end the program.
class FileBeside {
public:
    explicit FileBeside(fs::path target) : target_(std::move(target)) {}
    ~FileBeside()
    {
        if (fd_ >= 0) ::close(fd_);
        if (!placed_ && !beside_.empty()) ::unlink(beside_.c_str());
    }
    FileBeside(const FileBeside&) = delete;
    FileBeside& operator=(const FileBeside&) = delete;

    // Empty when the hidden file was created; else why not ("Permission denied").
    std::string Create();
    // Writes all the bytes and closes the file; empty, or why not.
    std::string Write(std::string_view bytes);
    // Renames the written file over the target; empty, or why it could not.
    std::string Place();

private:
    fs::path target_, beside_;
    int fd_ = -1;
    bool placed_ = false;
    std::optional<RemovedOnSignal> guard_;
};

std::string FileBeside::Create()
{
    // A file that may not be written keeps that protection: renaming over it would not ask.
    if (::access(target_.c_str(), F_OK) == 0 && ::access(target_.c_str(), W_OK) != 0) return Why(errno);
    std::random_device random;
    for (int attempt = 0; attempt < 100 && fd_ < 0; ++attempt) {
        const fs::path name = HiddenName(target_, random);
        fd_ = ::open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0666);
        if (fd_ < 0 && errno != EEXIST) return Why(errno);
        if (fd_ >= 0) beside_ = name, guard_.emplace(name.string());
    }
    if (fd_ < 0) return "no hidden name beside it was free";
    // The old file's mode.
    struct stat old {};
    if (::stat(target_.c_str(), &old) == 0 && S_ISREG(old.st_mode)) ::fchmod(fd_, old.st_mode & 07777);
    return {};
}

std::string FileBeside::Write(std::string_view bytes)
{
    while (!bytes.empty()) {
        const ssize_t n = ::write(fd_, bytes.data(), bytes.size());
        if (n < 0 && errno == EINTR) continue;
        if (n <= 0) return Why(n < 0 ? errno : 0);
        bytes.remove_prefix(static_cast<std::size_t>(n));
    }
    const int closed = ::close(fd_);
    fd_ = -1;
    return closed == 0 ? std::string() : Why(errno);
}

std::string FileBeside::Place()
{
    if (::rename(beside_.c_str(), target_.c_str()) != 0) return Why(errno);
    placed_ = true;
    return {};
}

}  // namespace

std::string WriteOutputBytes(const fs::path& target, std::string_view bytes)
{
    FileBeside file(target);
    std::string why = file.Create();
    if (why.empty()) why = file.Write(bytes);
    if (why.empty()) why = file.Place();
    return why.empty() ? std::string() : "could not write " + formats::TerminalField(target.string()) + ": " + why;
}

std::string WriteOutputFile(const fs::path& target, const std::function<void(std::ostream&)>& write)
{
    std::ostringstream out;
    write(out);
    return WriteOutputBytes(target, out.view());
}

}  // namespace pemlo::cli
