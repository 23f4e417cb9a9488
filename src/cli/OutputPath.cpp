#include "cli/OutputPath.h"

#include <fcntl.h>
#include <unistd.h>

#include <CLI/CLI.hpp>

#include <cerrno>
#include <cstring>
#include <fstream>

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
    if (!fs::is_regular_file(status))
        return target.string() + " is " + KindOf(status) + "; only a regular file is written over";
    for (const std::string& input : inputs)
        if (fs::equivalent(target, input, ec))
            return target.string() + " is the input " + input + "; it is not written over";
    return {};
}

void CheckOutputPath(const std::string& option, const fs::path& target, const std::vector<std::string>& inputs)
{
    if (const std::string refusal = OutputPathRefusal(target, inputs); !refusal.empty())
        throw CLI::ValidationError(option, refusal);
}

FileBeside::FileBeside(fs::path target) : target_(std::move(target))
{
    // Hidden, in the same folder (a rename never crosses file systems), with the
    // target's extension (the PDF printer goes by it).
    beside_ = target_.parent_path() / ("." + std::to_string(::getpid()) + "." + target_.filename().string());
}

FileBeside::~FileBeside()
{
    std::error_code ec;
    if (!placed_) fs::remove(beside_, ec);
}

std::string FileBeside::CanWrite() const
{
    // A file that may not be written keeps that protection: renaming over it would not ask.
    if (::access(target_.c_str(), F_OK) == 0 && ::access(target_.c_str(), W_OK) != 0) return Why(errno);
    const int fd = ::open(beside_.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
    if (fd < 0) return Why(errno);
    ::close(fd);
    std::error_code ec;
    const fs::file_status old = fs::status(target_, ec);
    if (fs::is_regular_file(old)) fs::permissions(beside_, old.permissions(), ec);  // the old file's mode
    return {};
}

std::string FileBeside::Place()
{
    std::error_code ec;
    fs::rename(beside_, target_, ec);
    if (ec) return ec.message();
    placed_ = true;
    return {};
}

std::string WriteOutputFile(const fs::path& target, const std::function<void(std::ostream&)>& write)
{
    FileBeside file(target);
    std::string why = file.CanWrite();
    if (why.empty()) {
        std::ofstream out(file.Path(), std::ios::binary | std::ios::trunc);
        errno = 0;
        write(out);
        out.close();
        why = out ? file.Place() : Why(errno);
    }
    return why.empty() ? std::string() : "could not write " + target.string() + ": " + why;
}

}  // namespace pemlo::cli
