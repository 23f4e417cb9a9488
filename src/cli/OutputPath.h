// The one rule for every file a command writes, and the one way it is written.
//
// An existing path is replaced only when it is a regular file that is none of the
// command's inputs: a directory, a device, a pipe or the sounding being read is never
// removed or written over; the call is refused (exit 2) with a message naming it.
// A file is written beside its target under a name of its own and renamed into place
// when all of it is written, so that a failed write (a full disk, a printer that
// stopped) leaves the file that was there as it was.
#pragma once

#include <filesystem>
#include <functional>
#include <iosfwd>
#include <string>
#include <vector>

namespace pemlo::cli {

// Throws CLI::ValidationError(option, why) when the target may not be written; inputs
// are the paths of the files the command reads.
void CheckOutputPath(const std::string& option, const std::filesystem::path& target,
                     const std::vector<std::string>& inputs);

// The same rule, as the reason the target may not be written; empty when it may.
std::string OutputPathRefusal(const std::filesystem::path& target, const std::vector<std::string>& inputs);

// A file being written beside its target. Whatever writes it (a stream, Qt's PDF
// printer) writes to Path(); Place() then renames it over the target. A file never
// placed is removed when this goes.
class FileBeside {
public:
    explicit FileBeside(std::filesystem::path target);
    ~FileBeside();
    FileBeside(const FileBeside&) = delete;
    FileBeside& operator=(const FileBeside&) = delete;

    const std::filesystem::path& Path() const { return beside_; }
    // Empty when the target could be written; else why not ("Permission denied").
    std::string CanWrite() const;
    // Renames the written file over the target; empty, or why it could not.
    std::string Place();

private:
    std::filesystem::path target_;
    std::filesystem::path beside_;
    bool placed_ = false;
};

// Writes a file through FileBeside: empty when it is all in place, else the message
// "could not write TARGET: why".
std::string WriteOutputFile(const std::filesystem::path& target, const std::function<void(std::ostream&)>& write);

}  // namespace pemlo::cli
