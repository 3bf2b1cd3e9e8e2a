#pragma once
// What went wrong when a chart file, a CSV file or a property path was read
// or written: a message for the user that names the file and line or the
// property path at fault, and whether the input was at fault or the request
// (an option or a path naming nothing there). No call of this library throws;
// each takes an optional IoError to fill and tells by its result whether it
// succeeded.

#include "OrvChartIOExport.h"

#include <QString>

namespace Orv::Chart {

struct IoError {
    enum Kind { None, BadInput, BadRequest };

    Kind kind = None;
    QString message;

    explicit operator bool() const noexcept { return kind != None; }
};

} // namespace Orv::Chart
