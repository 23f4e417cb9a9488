// A PDF of logs: the pages of one or more soundings, each starting on a new page,
// drawn into memory and handed back as bytes with the date and id set (PdfStamp.h).
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "log/LogData.h"
#include "log/LogLayout.h"

namespace pemlo::log {

struct LogOptions {
    Paper paper = Paper::A4;
    int scale = 0;           // 0: each sounding on one page
    std::string program;     // "Pemlo CPT 3.0", for the document's producer field
    std::optional<std::int64_t> creation;  // seconds since 1970; empty: now
};

// The pages a sounding's log takes: its log pages and the chart page.
int PageCount(const LogSounding& s, const LogOptions& options);

// The PDF of the soundings' logs; empty when the writer failed.
std::string DrawLogs(const std::vector<const LogSounding*>& soundings, const LogOptions& options);

}  // namespace pemlo::log
