// libFuzzer target of the BRO-XML reader.
#include "FuzzImport.h"
#include "formats/BroXmlReader.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    return pemlo::fuzz::Run(data, size, pemlo::formats::ReadBroXml);
}
