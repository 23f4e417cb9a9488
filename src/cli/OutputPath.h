// The one rule for every file a command writes, and the one way it is written.
//
// An existing path is replaced only when it is a regular file that is none of the
// command's inputs: a directory, a device, a pipe or the sounding being read is never
// removed or written over; the call is refused (exit 2) with a message naming it.
// A file is written beside its target under a name of its own and renamed into place
// when all of it is written, so that a failed write (a full disk) leaves the file that
// was there as it was.
#pragma once

#include <filesystem>
#include <functional>
#include <iosfwd>
#include <string>
#include <string_view>
#include <vector>

namespace pemlo::cli {

// Throws CLI::ValidationError(option, why) when the target may not be written; inputs
// are the paths of the files the command reads.
void CheckOutputPath(const std::string& option, const std::filesystem::path& target,
                     const std::vector<std::string>& inputs);

// The same rule, as the reason the target may not be written; empty when it may.
std::string OutputPathRefusal(const std::filesystem::path& target, const std::vector<std::string>& inputs);

// Writes a file beside its target under a hidden name of its own, then renames it over
// the target: empty when it is all in place, else the message "could not write
// TARGET: why". What the writer produces is held in memory until then, so that the
// hidden file exists only for the time of its write.
std::string WriteOutputFile(const std::filesystem::path& target, const std::function<void(std::ostream&)>& write);
std::string WriteOutputBytes(const std::filesystem::path& target, std::string_view bytes);

}  // namespace pemlo::cli
