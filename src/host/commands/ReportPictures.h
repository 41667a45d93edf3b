#pragma once

#include <string>

#include "host/environment/Environment.h"
#include "report/Report.h"

namespace bukorval::host {

/// Draws a report in the terminal, instead of its table; for a sink as SVG documents, "trend" and "deltas", each also
/// "-narrow".
void plotReport(Environment& environment, const report::Query& query);
/// Writes a report with its pictures as a page, whole or not at all. Throws dati::Refused when that cannot be done.
void writeReportPage(Environment& environment, const report::Query& query, const report::Result& result,
                     const std::string& file);

}  // namespace bukorval::host
