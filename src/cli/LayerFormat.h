// A sounding's soil layers as CSV, an aligned table or JSON, beside the intervals'
// own formats. CSV and JSON numbers are the shortest text that reads back to the very
// same double.
#pragma once

#include <cstdint>
#include <iosfwd>
#include <string>
#include <vector>

#include "cli/ResultFormat.h"
#include "profile/SoilLayers.h"
#include "sbtn/SbtnLayers.h"

namespace pemlo::cli {

// What the output states about the layering besides the layers.
struct LayerFacts {
    RunFacts run;
    int numIntervals = 0;
    float intervalSize = 0.0f;
    double minThickness = 0.0;  // T, graph units
    std::int64_t minIntervals = 1;  // N
    // The normalised soil behaviour type of each layer; empty where it could not be
    // computed, and its columns are empty then.
    std::vector<sbtn::LayerSbtn> sbtn;
};

void WriteLayers(std::ostream& out, const std::vector<profile::SoilLayer>& layers, const LayerFacts& facts,
                 OutputFormat format, CsvLayout layout = CsvLayout::OneFile);

// The CSV header of WriteLayers, with or without the file column.
std::string LayerCsvHeader(bool withFileColumn);

}  // namespace pemlo::cli
