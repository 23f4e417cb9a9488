// libFuzzer target of the GEF-CPT reader.
#include "FuzzImport.h"
#include "formats/GefReader.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    return pemlo::fuzz::Run(data, size, [](std::string_view bytes, pemlo::formats::DepthChoice depth) {
        return std::vector<pemlo::formats::ImportedSounding>{pemlo::formats::ReadGef(bytes, depth)};
    });
}
