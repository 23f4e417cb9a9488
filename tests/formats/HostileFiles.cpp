#include "formats/HostileFiles.h"

namespace pemlo::formats::test {

std::string ManyPushesAgs4(int pushes)
{
    std::string scpg = "\"GROUP\",\"SCPG\"\r\n\"HEADING\",\"LOCA_ID\",\"SCPG_TESN\",\"SCPG_REF\"\r\n";
    std::string scpt = "\"GROUP\",\"SCPT\"\r\n\"HEADING\",\"LOCA_ID\",\"SCPG_TESN\",\"SCPT_DPTH\",\"SCPT_RES\","
                       "\"SCPT_FRES\"\r\n\"UNIT\",\"\",\"\",\"m\",\"MPa\",\"MPa\"\r\n";
    for (int i = 0; i < pushes; ++i) {
        const std::string push = "\"DATA\",\"L\",\"T" + std::to_string(i) + "\",\"";
        scpg += push + "R" + std::to_string(100000 + i % 100000).substr(1) + std::string(44, 'x') + "\"\r\n";
        scpt += push + std::to_string(0.02 * (i + 1)) + "\",\"5\",\"0.05\"\r\n";
    }
    return scpg + "\r\n" + scpt;
}

std::string WideGroupAgs4(int headings, int rows)
{
    std::string ags = "\"GROUP\",\"SCPG\"\r\n\"HEADING\"";
    for (int i = 0; i < headings - 4; ++i) ags += ",\"X" + std::to_string(i) + "\"";
    ags += ",\"LOCA_ID\",\"SCPG_TESN\",\"SCPG_REF\",\"SCPG_WAT\"\r\n";
    for (int i = 0; i < rows; ++i) ags += "\"DATA\"\r\n";
    return ags + "\r\n\"GROUP\",\"SCPT\"\r\n\"HEADING\",\"LOCA_ID\",\"SCPT_DPTH\",\"SCPT_RES\",\"SCPT_FRES\"\r\n"
                 "\"UNIT\",\"\",\"m\",\"MPa\",\"MPa\"\r\n\"DATA\",\"L\",\"1\",\"5\",\"0.05\"\r\n";
}

std::string ManyRootAttributesBroXml(int cpts, int attributes)
{
    std::string xml = "<?xml version=\"1.0\"?>\n<r";
    for (int i = 0; i < attributes; ++i) xml += " a" + std::to_string(i) + "=\"x\"";
    xml += " xmlns:c=\"http://example.org/xsd/dscpt/1.1\">";
    for (int i = 0; i < cpts; ++i)
        xml += "<c:CPT_O><c:cptResult><c:values>1,1,0.01</c:values></c:cptResult><c:parameters><c:localFriction>ja"
               "</c:localFriction><c:penetrationLength>ja</c:penetrationLength><c:coneResistance>ja</c:coneResistance>"
               "</c:parameters></c:CPT_O>";
    return xml + "</r>";
}

}  // namespace pemlo::formats::test
