// A sounding read from a GEF-CPT, AGS4 or BRO-XML file: its readings in metres and
// MPa (single precision, voids dropped, negated and sorted as the import contract
// says), where it came from, its project information and the record of every
// change the import made to the data.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace pemlo::formats {

enum class FileFormat { PlainAscii, Gef, Ags4, BroXml };

// "GEF", "AGS4", "BRO-XML" or "plain ASCII".
std::string FormatName(FileFormat format);

// The six project fields of the record, as the file states them.
struct ProjectInfo {
    std::string number;
    std::string title;
    std::string date;
    std::string location;
    std::string gwt;
    std::string coneNo;
};

// One column the import used.
struct ColumnUse {
    std::string role;    // "depth", "qc" or "fs"
    std::string source;  // "quantity 1", "SCPT_RES", "penetrationLength"
    std::string unit;    // as the file writes it
    double divisor = 1;  // value / divisor gives metres or MPa
};

// Rows dropped because a used value was void, next to each other in depth order
// (no kept reading between them).
struct VoidRun {
    int rows = 0;
    std::optional<double> top;  // metres; empty when the depths themselves were void
    std::optional<double> bottom;
};

// What the import did, for people and for scripts.
struct ImportRecord {
    std::string encoding;  // "UTF-8" or "Windows-1252"
    std::vector<ColumnUse> columns;
    int rowsRead = 0;
    int voidRows = 0;
    std::vector<VoidRun> voidRuns;
    bool negated = false;
    int sortMoved = 0;  // readings whose place the sort changed
    std::optional<double> predrilled;  // metres, as the header declares it
    int kept = 0;
};

// An AGS4 push: its test number, the depths of its kept readings and the cone it
// was made with.
struct Push {
    std::string testNumber;  // SCPG_TESN
    int readings = 0;
    float top = 0.0f;
    float bottom = 0.0f;
    std::string reference;   // SCPG_REF; empty where the file gives none
    std::optional<double> areaRatio = std::nullopt;  // SCPG_CAR, the cone's net area ratio in this push
};

// Where the sounding stands, as the file states it: plan coordinates in its
// reference system and the surface level above its datum. The log's title block
// prints them; nothing is computed from them.
struct SiteLocation {
    std::optional<double> x, y;   // easting and northing (or as the system orders them)
    std::string system;           // "EPSG:28992", "GEF 31000 (RD)", "OSGB"; empty: not stated
    std::optional<double> level;  // metres
    std::string datum;            // "NAP", "GEF 31000 (NAP)"; empty: not stated
};

struct ImportedSounding {
    FileFormat format = FileFormat::Gef;
    std::string version;  // "1.1.0", "4.0", "1.1"
    std::string id;       // GEF #TESTID, AGS4 LOCA_ID, BRO id
    std::vector<float> depth, qc, fs;  // metres and MPa, depth in increasing order
    ProjectInfo project;
    SiteLocation site;
    ImportRecord record;
    std::string locaId;        // AGS4 only
    std::vector<Push> pushes;  // AGS4 only, in file order

    // What the normalised soil behaviour type takes beyond depth, qc and fs. None of
    // it changes the readings above: a void u2 leaves its reading without u2.
    // u2 in MPa, one per reading in the readings' order when the file has a u2 column
    // (empty when it has none); an empty optional where the reading's u2 is void.
    std::vector<std::optional<float>> u2;
    ColumnUse u2Column;      // role "u2"; source empty when the file has no u2 column
    std::string u2Unread;    // why a u2 column the file has was not read ("" when it was)
    std::optional<double> areaRatio;    // the file's net area ratio (GEF, BRO-XML)
    std::optional<double> groundwater;  // metres below depth 0, as the file states it
    std::string groundwaterSource;      // "#MEASUREMENTVAR 14", "SCPG_WAT of push CPT01"
    std::vector<int> readingPush;       // AGS4: each reading's push, an index into pushes
};

}  // namespace pemlo::formats
