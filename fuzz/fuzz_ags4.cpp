// libFuzzer target of the AGS4 reader.
#include "FuzzImport.h"
#include "formats/Ags4Reader.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    return pemlo::fuzz::Run(data, size, pemlo::formats::ReadAgs4);
}
