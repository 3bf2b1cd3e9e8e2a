#pragma once
// Inside the library a fault unwinds to the public call that met it, which
// turns it into an IoError for its caller: deep parsing code can stop at the
// first fault without threading a result through every function.

#include "IoError.h"

#include <utility>

namespace Orv::Chart {

struct Fault {
    IoError error;
};

[[noreturn]] inline void fail(const QString& message, IoError::Kind kind = IoError::BadInput)
{
    throw Fault{{kind, message}};
}

// Runs `work`; a fault it raises goes to `error` (when given) and gives `onFault`.
template <class Work, class Result>
auto guarded(Work&& work, IoError* error, Result onFault) -> decltype(work())
{
    try {
        if (error)
            *error = {};
        return std::forward<Work>(work)();
    } catch (const Fault& fault) {
        if (error)
            *error = fault.error;
        return onFault;
    }
}

} // namespace Orv::Chart
