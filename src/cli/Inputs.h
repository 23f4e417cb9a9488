// The inputs of a command: each FILE argument expanded into its soundings, in
// argument order and then in the order of the soundings within the file. A GEF or
// plain ASCII file is one input named FILE; every sounding of an AGS4 or BRO-XML file
// is an input named FILE#ID. An argument FILE#ID that is no file itself names one
// sounding of FILE.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "formats/ImportContract.h"
#include "formats/ImportedSounding.h"

namespace pemlo::cli {

struct Input {
    std::string name;  // as outputs, summaries and messages name it: terminal-safe text
    std::string path;  // the file
    formats::FileFormat format = formats::FileFormat::PlainAscii;
    std::shared_ptr<const formats::ImportedSounding> sounding;  // null: read by the plain ASCII road
    std::string refusal;  // not empty: the file could not be imported, and why
};

// Reads the files on all cores; a refused file becomes one input carrying its refusal.
std::vector<Input> ExpandInputs(const std::vector<std::string>& arguments, formats::DepthChoice depth);

// The files the inputs are read from, for the output path rule (OutputPath.h).
std::vector<std::string> PathsOf(const std::vector<Input>& inputs);

// The name of the input's result file in an output folder, without extension: the
// file's stem, and for a sounding of an AGS4 or BRO-XML file '#' and its id with
// every character a file name cannot safely hold (and any byte that is no UTF-8)
// replaced by '_'.
std::string ResultStem(const Input& input);

// The lines of the import record, indented, for a summary; and with a heading
// naming the input, for standard error. Nothing for a plain ASCII file.
std::string RecordLines(const Input& input);
std::string RecordBlock(const Input& input);

}  // namespace pemlo::cli
