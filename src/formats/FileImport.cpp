#include "formats/FileImport.h"

#include <filesystem>
#include <fstream>
#include <new>

#include "formats/Ags4Reader.h"
#include "formats/BroXmlReader.h"
#include "formats/FormatDetection.h"
#include "formats/GefReader.h"
#include "formats/SafeText.h"

namespace pemlo::formats {

namespace {

// Enough of a file's start to tell an imported format from the plain ASCII layout.
constexpr std::size_t DetectionBytes = 64 * 1024;

bool ReadStart(const std::string& path, std::size_t limit, std::string& bytes)
{
    std::ifstream in(path, std::ios::binary);
    if (!in) return false;
    bytes.resize(limit);
    in.read(bytes.data(), static_cast<std::streamsize>(limit));
    bytes.resize(static_cast<std::size_t>(in.gcount()));
    return !in.bad();
}

std::vector<ImportedSounding> Read(FileFormat format, std::string_view bytes, DepthChoice depth)
{
    switch (format) {
    case FileFormat::Gef: return {ReadGef(bytes, depth)};
    case FileFormat::Ags4: return ReadAgs4(bytes, depth);
    case FileFormat::BroXml: return ReadBroXml(bytes, depth);
    case FileFormat::PlainAscii: break;
    }
    return {};
}

void CheckHasReadings(const ImportedSounding& s)
{
    const std::string of = s.id.empty() ? std::string() : " of " + TerminalField(s.id);
    if (s.record.rowsRead == 0) Refuse("no CPT data" + of + ": the file holds no data rows");
    if (s.record.kept == 0)
        Refuse("no CPT data" + of + ": every one of its " + std::to_string(s.record.rowsRead) +
               " rows has a void depth, qc or fs");
}

}  // namespace

FileImport ImportBytes(std::string_view bytes, DepthChoice depth)
{
    FileImport result;
    result.format = DetectFormat(bytes);
    try {
        result.soundings = Read(result.format, bytes, depth);
        for (const ImportedSounding& s : result.soundings) CheckHasReadings(s);
    } catch (const ImportRefusal& e) {
        result.soundings.clear();
        result.refusal = e.what();
    } catch (const std::bad_alloc&) {
        result.soundings.clear();
        result.refusal = "not enough memory to read the file";
    }
    return result;
}

FileImport ImportFile(const std::string& path, DepthChoice depth)
{
    namespace fs = std::filesystem;
    std::error_code ec;
    if (!fs::is_regular_file(path, ec)) return {};
    const std::uintmax_t size = fs::file_size(path, ec);
    if (ec) return {};
    // The start tells a plain ASCII file, which goes its own way unread here.
    std::string bytes;
    if (!ReadStart(path, DetectionBytes, bytes) || !LooksImported(bytes)) return {};
    if (size > MaxImportBytes) {
        FileImport refused;
        refused.format = DetectFormat(bytes);
        refused.refusal = "the file holds " + std::to_string(size / (1024 * 1024)) +
                          " MB; files of more than 64 MB are not imported";
        return refused;
    }
    if (size > bytes.size() && !ReadStart(path, static_cast<std::size_t>(size), bytes)) return {};
    return ImportBytes(bytes, depth);
}

}  // namespace pemlo::formats
