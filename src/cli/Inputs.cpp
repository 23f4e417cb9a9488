#include "cli/Inputs.h"

#include <exception>
#include <filesystem>

#include "cli/BatchRunner.h"
#include "formats/FileImport.h"
#include "formats/ImportRecord.h"
#include "formats/SafeText.h"

namespace pemlo::cli {

namespace fs = std::filesystem;
using formats::FileFormat;

namespace {

bool IsContainer(FileFormat format) { return format == FileFormat::Ags4 || format == FileFormat::BroXml; }

// FILE#ID: the file and the id, when FILE#ID is not a file itself but FILE is.
bool SplitSoundingName(const std::string& argument, std::string& path, std::string& id)
{
    std::error_code ec;
    const std::size_t hash = argument.rfind('#');
    if (hash == std::string::npos || fs::exists(argument, ec) || !fs::is_regular_file(argument.substr(0, hash), ec))
        return false;
    path = argument.substr(0, hash);
    id = argument.substr(hash + 1);
    return true;
}

std::vector<Input> Expand(const std::string& argument, formats::DepthChoice depth)
{
    std::string path = argument, wanted;
    const bool selects = SplitSoundingName(argument, path, wanted);
    formats::FileImport file = formats::ImportFile(path, depth);
    const Input base{formats::TerminalField(path), path, file.format, nullptr, file.refusal};
    if (file.format == FileFormat::PlainAscii && file.refusal.empty()) {
        if (!selects) return {base};
        return {{formats::TerminalField(argument), path, file.format, nullptr,
                 "a plain ASCII cone data file holds one sounding; no " + formats::TerminalField(wanted)}};
    }
    if (!file.refusal.empty()) return {base};
    std::vector<Input> inputs;
    std::string ids;
    for (formats::ImportedSounding& s : file.soundings) {
        ids += (ids.empty() ? "" : ", ") + formats::TerminalField(s.id);
        if (selects && s.id != wanted) continue;
        const std::string name = formats::TerminalField(IsContainer(file.format) ? path + "#" + s.id : path);
        inputs.push_back(
            {name, path, file.format, std::make_shared<const formats::ImportedSounding>(std::move(s)), {}});
    }
    if (inputs.empty())
        return {{formats::TerminalField(argument), path, file.format, nullptr,
                 "no sounding " + formats::TerminalField(wanted) + " in the file; it holds " + ids}};
    return inputs;
}

}  // namespace

std::vector<Input> ExpandInputs(const std::vector<std::string>& arguments, formats::DepthChoice depth)
{
    std::vector<std::vector<Input>> perFile(arguments.size());
    RunInParallel(
        arguments,
        [&](std::size_t i, const std::string& argument) {
            try {
                perFile[i] = Expand(argument, depth);
            } catch (const std::exception& e) {  // the argument must not vanish from the inputs
                const std::string why = std::string("unexpected failure: ") + e.what();
                perFile[i] = {{formats::TerminalField(argument), argument, FileFormat::PlainAscii, nullptr, why}};
            }
            return FileOutcome{};
        },
        [](std::size_t, FileOutcome&) {}, {});
    std::vector<Input> inputs;
    for (std::vector<Input>& file : perFile)
        for (Input& input : file) inputs.push_back(std::move(input));
    return inputs;
}

std::vector<std::string> PathsOf(const std::vector<Input>& inputs)
{
    std::vector<std::string> paths;
    for (const Input& input : inputs) paths.push_back(input.path);
    return paths;
}

std::string ResultStem(const Input& input)
{
    std::string stem = fs::path(input.path).stem().string();
    if (!input.sounding || !IsContainer(input.format)) return stem;
    return stem + '#' + formats::FileNamePart(input.sounding->id);
}

std::string RecordLines(const Input& input)
{
    if (!input.sounding) return {};
    std::string lines;
    for (const std::string& line : formats::DescribeImport(*input.sounding))
        lines += "  " + formats::TerminalField(line) + "\n";
    return lines;
}

std::string RecordBlock(const Input& input)
{
    return input.sounding ? "pemlo-cli: imported " + input.name + "\n" + RecordLines(input) : std::string();
}

}  // namespace pemlo::cli
