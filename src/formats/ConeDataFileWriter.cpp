#include "formats/ConeDataFileWriter.h"

#include <ostream>

#include <array>
#include <charconv>
#include <cstdio>
#include <cstring>
#include <vector>

#include "core/Declarations.h"
#include "formats/ImportRecord.h"
#include "formats/NumberText.h"
#include "formats/TextDecoding.h"  // the titles go out in the reader's byte encoding
#include "runtime/FileChannels.h"
#include "runtime/RunTimeError.h"

namespace pemlo::formats {

namespace {

// The reader parses a field as a double and stores it in single precision, which
// can round twice: the text is checked through the reader itself.
bool ReadsBackAs(const std::string& text, float value)
{
    try {
        TextChannel channel(text);
        const float back = channel.InputNumber();
        return std::memcmp(&back, &value, sizeof value) == 0;
    } catch (const RunTimeError&) {
        return false;
    }
}

std::string Title(const std::string& text) { return ToTitleBytes(text) + "\r\n"; }

std::string Field(const char* name, const std::string& value) { return std::string(name) + ": " + value; }

// The deepest depth that keeps at most 4000 readings from the start of the selection.
std::string DepthSuggestion(const std::vector<float>& depths)
{
    std::size_t last = MaxReadings;  // readings 1..last
    while (last > 1 && depths[last] == depths[last - 1]) --last;
    return ShortestText(depths.front()) + " to " + ShortestText(depths[last - 1]) + " m (--from " +
           ShortestText(depths.front()) + " --to " + ShortestText(depths[last - 1]) + ")";
}

}  // namespace

std::string RoundTripText(float value)
{
    std::array<char, 64> buffer{};
    const auto shortest = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value).ptr;
    std::string text(buffer.data(), shortest);
    if (ReadsBackAs(text, value)) return text;
    std::snprintf(buffer.data(), buffer.size(), "%.9g", static_cast<double>(value));
    text = buffer.data();
    if (ReadsBackAs(text, value)) return text;
    // The double nearest the single value is the value itself: no rounding at all.
    const auto exact = std::to_chars(buffer.data(), buffer.data() + buffer.size(), static_cast<double>(value)).ptr;
    return std::string(buffer.data(), exact);
}

ConeDataFile ConeDataFileOf(const ImportedSounding& s, const ProjectInfo& project, const std::string& source,
                            std::optional<double> from, std::optional<double> to)
{
    // The range ends as the readings hold depths, in single precision, so that a
    // depth written in the file is inside a range that names it.
    const std::optional<float> top = from ? std::optional<float>(static_cast<float>(*from)) : std::nullopt;
    const std::optional<float> bottom = to ? std::optional<float>(static_cast<float>(*to)) : std::nullopt;
    ConeDataFile file;
    std::vector<float>& depth = file.depth;
    for (std::size_t i = 0; i < s.depth.size(); ++i) {
        if ((top && s.depth[i] < *top) || (bottom && s.depth[i] > *bottom)) continue;
        depth.push_back(s.depth[i]);
        file.qc.push_back(s.qc[i]);
        file.fs.push_back(s.fs[i]);
    }
    const std::string range = from || to ? " between " + (from ? ShortestText(*from) : std::string("the top")) + " and " +
                                                (to ? ShortestText(*to) + " m" : std::string("the bottom"))
                                         : std::string();
    if (depth.empty()) {
        file.refusal = "no readings" + range + " to write";
        return file;
    }
    if (depth.size() > static_cast<std::size_t>(MaxReadings)) {
        file.refusal = std::to_string(depth.size()) + " readings" + range +
                       "; a plain ASCII cone data file holds at most " + std::to_string(MaxReadings) +
                       ": choose a depth range, e.g. " + DepthSuggestion(depth);
        file.depth.clear(), file.qc.clear(), file.fs.clear();
        return file;
    }
    std::vector<std::string> titles = {
        "Converted from " + source + " (" + FormatName(s.format) + "), sounding " + s.id,
        Field("Project number", project.number) + "; " + Field("title", project.title),
        Field("Date", project.date) + "; " + Field("location", project.location),
        Field("Ground water table", project.gwt) + "; " + Field("cone", project.coneNo)};
    // The header has ten lines, the count the desktop program is told to skip, and a
    // converted file must not change when the import learns to report more: where the
    // sounding stands is left to the source file and to the import record.
    for (const std::string& line : DescribeImport(s))
        if (!line.starts_with("site: ")) titles.push_back("Import: " + line);
    titles.push_back("SI Units: depth m, qc MPa, fs MPa" +
                     (from || to ? "; written " + std::to_string(depth.size()) + " readings" + range : std::string()));
    titles.push_back("One reading per line: depth,qc,fs");
    titles.resize(ConeDataTitleLines);  // the layout the desktop program is told to skip
    file.titles = std::move(titles);
    return file;
}

void WriteConeDataFile(std::ostream& out, const ConeDataFile& file)
{
    for (const std::string& title : file.titles) out << Title(title);
    for (std::size_t i = 0; i < file.depth.size(); ++i)
        out << RoundTripText(file.depth[i]) + "," + RoundTripText(file.qc[i]) + "," + RoundTripText(file.fs[i]) +
                   "\r\n";
}

}  // namespace pemlo::formats
