// The import contract all three readers share: units scaled to metres and MPa, void
// rows dropped, depths negated when all are at or above zero, rows sorted stably by
// depth, at most 32767 readings, and the record of each of these steps. A reader
// finds its columns and hands every row over as it reads it.
#pragma once

#include <array>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

#include "formats/ImportedSounding.h"

namespace pemlo::formats {

// Why a file cannot be imported, with the line or element where it shows. Readers
// throw it; ImportBytes catches it, so it never leaves the import.
class ImportRefusal : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};
[[noreturn]] void Refuse(const std::string& message);

enum class Dimension { Length, Stress };

// The divisor that takes a value in the unit to metres or MPa: none for any other
// unit, which UnitDivisor refuses with a message naming the column.
std::optional<double> FindDivisor(std::string_view unit, Dimension dimension);
double UnitDivisor(std::string_view unit, Dimension dimension, const std::string& column);

// Which depth the import takes: the penetration length or the corrected depth.
enum class DepthChoice { Penetration, Corrected };

// Values of one row as written (before scaling); an empty value is void.
using RowValues = std::array<std::optional<double>, 3>;  // depth, qc, fs

class SoundingBuilder {
public:
    // columns: depth, qc and fs as the reader found them; `place` names where rows
    // stand in messages ("line", "row").
    SoundingBuilder(std::array<ColumnUse, 3> columns, std::string place);

    // The file's u2 column, read beside the three: its values follow their rows
    // through the sort, and a void one leaves its reading without u2, never voids the row.
    void TakeU2(ColumnUse column);

    // One row; `at` is its line or row number, `push` an index into the pushes (AGS4),
    // `u2` the row's u2 as written (empty: void or not a number).
    void AddRow(long long at, const RowValues& values, int push = 0, std::optional<double> u2 = std::nullopt);

    // Negation, sort and record; the sounding's other fields are the caller's.
    ImportedSounding Finish(std::vector<Push> pushes = {});

private:
    std::array<ColumnUse, 3> columns_;
    std::string place_;
    std::vector<float> depth_, qc_, fs_;
    std::vector<int> push_;
    std::optional<ColumnUse> u2Column_;
    std::vector<std::optional<float>> u2_;
    ImportRecord record_;
    bool inVoidRun_ = false;
    std::optional<double> lastVoidDepth_;
};

}  // namespace pemlo::formats
