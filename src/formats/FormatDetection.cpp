#include "formats/FormatDetection.h"

#include "formats/TextDecoding.h"

namespace pemlo::formats {

namespace {

std::string_view FirstNonBlank(std::string_view bytes)
{
    if (bytes.starts_with("\xEF\xBB\xBF")) bytes.remove_prefix(3);
    const std::size_t start = bytes.find_first_not_of(" \t\r\n");
    return start == std::string_view::npos ? std::string_view() : bytes.substr(start);
}

bool StartsWithGefId(std::string_view text)
{
    if (text.starts_with('"')) text.remove_prefix(1);
    return Lower(text.substr(0, 6)) == "#gefid";
}

}  // namespace

FileFormat DetectFormat(std::string_view bytes)
{
    const std::string_view text = FirstNonBlank(bytes);
    if (StartsWithGefId(text)) return FileFormat::Gef;
    if (text.starts_with("\"GROUP\"")) return FileFormat::Ags4;
    if (text.starts_with('<') &&
        (text.find("<cptResult") != std::string_view::npos || text.find(":cptResult") != std::string_view::npos))
        return FileFormat::BroXml;
    return FileFormat::PlainAscii;
}

bool LooksImported(std::string_view start)
{
    const std::string_view text = FirstNonBlank(start);
    return StartsWithGefId(text) || text.starts_with("\"GROUP\"") || text.starts_with('<');
}

}  // namespace pemlo::formats
